"""What `cmake --install` puts where, and that it works from wherever it is moved to."""
import os
import re
import shlex
import subprocess
import sys
import unittest

from files import FolderTest, files_of

TESTS = os.path.dirname(os.path.abspath(__file__))
SITE = os.environ['QUOREL_SITE']
LIBRARIES = ('libQuorelApiNew.so.0', 'libQuorelApiPythonMdioAccess.so.0', 'libQuorelApiTypes.so.0', 'libvey.so.0')


def environment(**changed):
    """Without what a sanitizer needs in Python's process: compilers and CMake are run as they are."""
    return dict((name, value) for name, value in dict(os.environ, **changed).items() if name != 'LD_PRELOAD')


def install(destination, *options):
    subprocess.check_output([os.environ['QUOREL_CMAKE'], '--install', os.environ['QUOREL_BUILD'], '--prefix', '/opt/q']
                            + list(options), env=environment(DESTDIR=destination))
    return os.path.join(destination, 'opt/q')


class Install(FolderTest):
    @classmethod
    def make(cls):
        cls.whole = install(cls.path('whole'))
        cls.moved = cls.path('elsewhere')
        os.rename(cls.whole, cls.moved)

    def run_python(self, *arguments, **options):
        return subprocess.check_output([sys.executable, '-B'] + list(arguments), cwd='/',
                                       env=dict(os.environ, PYTHONPATH=os.path.join(self.moved, SITE)), **options)

    def test_each_component_is_what_its_users_need(self):
        parts = {}
        for component in 'module', 'simulator', 'headers', 'documentation':
            destination = self.path(component)
            parts[component] = files_of(install(destination, '--component', component))
            self.assertEqual(os.listdir(destination), ['opt'])
        everything = files_of(self.moved)
        self.assertEqual(sum(map(len, parts.values())), len(everything))
        self.assertEqual(set().union(*parts.values()), everything)
        for names in parts.values():
            copyright, = [name for name in names if name.endswith('/copyright')]
            names.remove(copyright)
        self.assertEqual(parts['simulator'], set(os.path.join(SITE, name)
                                                 for name in LIBRARIES + ('_quorel_sim.so', 'quorel/answers.tsv')))
        package = set('quorel/' + name for name in files_of(os.path.join(TESTS, '../quorel')) if name.endswith('.py'))
        built = os.environ['QUOREL_LIBRARIES']
        libraries = set(name for name in os.listdir(built)
                        if '.so' in name and not os.path.islink(os.path.join(built, name)))
        data = set(['QuorelApiNew.py', 'quorel/reference.tsv', 'quorel/answers.tsv'])
        stubs = set(name for name in files_of(built) if name.endswith('.pyi'))
        self.assertTrue(stubs >= set(['QuorelApiNew.pyi', '_QuorelApiNew.pyi', '_quorel.pyi', '_quorel_sim.pyi']))
        self.assertEqual(parts['module'] | parts['simulator'],
                         set(os.path.join(SITE, name) for name in package | libraries | data | stubs))
        for name in 'bcm/l2.h', 'sim/traffic.h', 'vey/exception.h', 'quorel_api/trace.h':
            self.assertIn('include/quorelapinew/' + name, parts['headers'])
        for name in 'README.md', 'docs/architecture.md', 'examples/load_fdb.py':
            self.assertIn('share/doc/python-quorelapinew/' + name, parts['documentation'])
        self.assertFalse([name for name in everything if name.endswith(('.pyc', '.o', '.cpp'))])

    def test_python_runs_all_of_it_where_it_is(self):
        mapped = self.run_python('-c', 'import quorel; print open("/proc/self/maps").read()')
        for name in LIBRARIES + ('_QuorelApiNew.so', '_quorel.so'):
            self.assertEqual(set(re.findall('/.*/' + re.escape(name), mapped)),
                             set([os.path.join(self.moved, SITE, name)]))
        script = 'import ctypes, sys; print ctypes.CDLL(sys.argv[1]).bcm_attach_check(0)'
        self.assertEqual(self.run_python('-c', script, os.path.join(self.moved, SITE, LIBRARIES[0])), '0\n')
        examples = os.path.join(self.moved, 'share/doc/python-quorelapinew/examples')
        dump = self.run_python(os.path.join(examples, 'make_fdb_dump.py'))
        with open(self.path('dump'), 'w') as file:
            file.write(dump)
        self.run_python(os.path.join(examples, 'load_fdb.py'), file.name, stderr=subprocess.STDOUT)

    def test_c_programs_are_built_against_it(self):
        with open(os.path.join(self.moved, 'lib/pkgconfig/simulated_switch.pc')) as file:
            text = file.read().replace('${prefix}', self.moved)
        compile_flags, libraries = re.search(r'^Cflags: (.*)\nLibs: (.*)$', text, re.M).groups()
        self.assertIn('prefix=${pcfiledir}/../..\n', text)
        program = self.path('program')
        target = shlex.split(os.environ['QUOREL_TARGET_FLAGS'])
        subprocess.check_call([os.environ['CC']] + target + shlex.split(compile_flags) +
                              [os.path.join(TESTS, 'simulated_switch.c'), '-o', program] + shlex.split(libraries),
                              env=environment())
        subprocess.check_call([program], env=environment())


if __name__ == '__main__':
    unittest.main()
