"""What was built, as files: it is the same in whichever folder, needs nothing of that folder, and lacks no symbol."""
import glob
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from files import files_of

LIBRARIES = os.environ['QUOREL_LIBRARIES']
GENERATED = os.path.dirname(os.environ['QUOREL_BINDING'])
GENERATE = os.environ['QUOREL_GENERATE'].split('|')
SOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# Of the files in that folder, those that the generator does not write, and its rule for the build, which names places.
NOT_GENERATED = set(['stamp', 'stamp.d', 'answers.tsv', 'answers.md', 'families.tsv'])


# Prints which files of the folder named last, and of the one before it, the process has mapped.
MAPPED = '''
import sys
with open('/proc/self/maps') as file:
    files = set(line.split(None, 5)[-1].strip() for line in file)
for path in sorted(files):
    for folder in sys.argv[-2:]:
        if path.startswith(folder + '/'):
            print path
'''


class Libraries(unittest.TestCase):
    def setUp(self):
        self.directory = os.path.realpath(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.directory)
        self.moved = os.path.join(self.directory, 'moved')
        shutil.copytree(LIBRARIES, self.moved, symlinks=True)

    def mapped_by(self, code):
        """What a process has mapped of both folders after `code`, with every symbol bound at once."""
        environment = dict(os.environ, LD_BIND_NOW='1', PYTHONPATH=self.moved)
        output = subprocess.check_output([sys.executable, '-B', '-c', code + MAPPED, LIBRARIES, self.moved],
                                         cwd='/', env=environment, stderr=subprocess.STDOUT)
        return [os.path.relpath(path, self.moved) for path in output.splitlines()]

    def test_each_loads_from_a_moved_tree_without_a_symbol_missing(self):
        libraries = sorted(set(os.path.basename(os.path.realpath(path))
                               for path in glob.glob(os.path.join(self.moved, '*.so*'))))
        self.assertEqual(self.mapped_by('import quorel.sim'), libraries)
        self.assertIn('libQuorelApiNew.so.0', libraries)
        for library in libraries:
            mapped = self.mapped_by('import ctypes; ctypes.PyDLL(%r)' % os.path.join(self.moved, library))
            self.assertIn(library, mapped)
            self.assertLessEqual(set(mapped), set(libraries))

    def test_each_is_looked_for_beside_the_others(self):
        for path in glob.glob(os.path.join(self.moved, '*.so*')):
            dynamic = subprocess.check_output(['readelf', '-d', path])
            self.assertEqual(re.findall(r'\((?:RPATH|RUNPATH)\).*\[(.*)\]', dynamic), ['$ORIGIN'], path)

    @unittest.skipIf('ASAN_OPTIONS' in os.environ, 'sanitizers report the places of the sources')
    def test_none_names_the_folder_of_its_sources_or_its_build(self):
        # What an import compiled names the place of what was compiled.
        paths = [os.path.join(self.moved, name) for name in files_of(self.moved) if not name.endswith('.pyc')]
        self.assertGreater(len(paths), 6)
        for path in paths:
            if '.so' in os.path.basename(path) or path.endswith('.a'):
                # Debuggers have to find the sources.
                subprocess.check_call(['objcopy', '--strip-debug', path])
            with open(path, 'rb') as file:
                content = file.read()
            for folder in (SOURCES, os.path.dirname(LIBRARIES)):
                self.assertNotIn(folder, content, path)

    def test_the_generator_writes_the_same_in_other_folders(self):
        sources = os.path.join(self.directory, 'some', 'where', 'else')
        os.makedirs(os.path.dirname(sources))
        os.symlink(SOURCES, sources)
        output = os.path.join(self.directory, 'out')
        os.mkdir(output)
        command = [sources + word[len(SOURCES):] if (word + '/').startswith(SOURCES + '/') else word for word in GENERATE]
        self.assertNotEqual(command[1:], GENERATE[1:])
        # The generator itself may be of a build in the sources.
        subprocess.check_call(GENERATE[:1] + command[1:] + ['--output', output], cwd=self.directory)
        names = files_of(GENERATED) - NOT_GENERATED
        self.assertEqual(files_of(output), names)
        for name in sorted(names):
            with open(os.path.join(GENERATED, name), 'rb') as here, open(os.path.join(output, name), 'rb') as there:
                self.assertTrue(here.read() == there.read(), name)


if __name__ == '__main__':
    unittest.main()
