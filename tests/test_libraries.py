"""What was built, as files: it needs nothing of the folder that it was built in, and lacks no symbol."""
import glob
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

LIBRARIES = os.environ['QUOREL_LIBRARIES']

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


if __name__ == '__main__':
    unittest.main()
