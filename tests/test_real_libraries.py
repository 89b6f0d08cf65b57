"""A build against a real SDK and platform: what is found, linked and loaded is theirs, and no stand-in is made.

Renamed copies of the stand-ins are the real ones here. Nothing is compiled anew: what the compiler would be told is
looked at, and the modules are linked of the objects that there are.
"""
import glob
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import unittest

from files import FolderTest
SOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.environ['QUOREL_BUILD']
LIBRARIES = os.environ['QUOREL_LIBRARIES']
STAND_INS = {'QUOREL_SDK_LIBRARY': 'libQuorelApiNew.so.0', 'QUOREL_VEY_LIBRARY': 'libvey.so.0',
             'QUOREL_TYPES_LIBRARY': 'libQuorelApiTypes.so.0',
             'QUOREL_MDIO_ACCESS_LIBRARY': 'libQuorelApiPythonMdioAccess.so.0'}
KEPT = re.compile(r'((?:CMAKE_(?:BUILD_TYPE|CX*_COMPILER|CX*_COMPILER_LAUNCHER|CX*_FLAGS\w*|MAKE_PROGRAM)|PYTHON2_\w+|'
                  r'QUOREL_(?:PYTHON_SITE_DIR|TARGET_FLAGS|SYSROOT|PACK_RELOCATIONS)|COMPILER_HAS_\w+)):(\w+)=(.*)')


def run(command, **options):
    # Compilers and CMake are run as they are, without a sanitizer.
    environment = dict((name, value) for name, value in os.environ.items() if name != 'LD_PRELOAD')
    process = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    log = process.communicate()[0]
    return process.returncode, log


def runpaths(path):
    return re.findall(r'\((?:RPATH|RUNPATH)\).*\[(.*)\]', subprocess.check_output(['readelf', '-d', path]))


class RealLibraries(FolderTest):
    @classmethod
    def make(cls):
        cls.tree = cls.path('tree')
        os.mkdir(cls.path('real'))
        cls.options = {'QUOREL_SDK_DEFINITIONS': 'SWITCH_LEVEL=3;SWITCH_TRACE'}
        for option, name in STAND_INS.items():
            with open(os.path.join(LIBRARIES, name), 'rb') as file:
                data = file.read()
            for old in STAND_INS.values():
                data = data.replace(old, old[:-1] + '7')
            cls.options[option] = cls.path('real', name[:-1] + '7')
            with open(cls.options[option], 'wb') as file:
                file.write(data)
        shutil.copytree(os.path.join(SOURCES, 'sdk/include'), cls.path('sdk'))
        os.mkdir(cls.path('shared'))
        os.rename(cls.path('sdk/shared'), cls.path('shared/shared'))
        shutil.copytree(os.path.join(SOURCES, 'platform/include'), cls.path('platform'))
        cls.options['QUOREL_SDK_INCLUDE_DIR'] = cls.path('sdk') + ';' + cls.path('shared')
        cls.options['QUOREL_PLATFORM_INCLUDE_DIR'] = cls.path('platform')
        # What the build has found out of the system is not asked again.
        with open(os.path.join(BUILD, 'CMakeCache.txt')) as cache, open(cls.path('cache.cmake'), 'w') as kept:
            for line in cache:
                match = KEPT.match(line)
                if match:
                    kept.write('set(%s "%s" CACHE %s "")\n' % (match.group(1), match.group(3), match.group(2)))
        status, log = cls.configure()
        assert status == 0, log
        os.makedirs(os.path.join(cls.tree, 'lib', 'quorel'))
        for name in 'QuorelApiNew.py', 'quorel/reference.tsv':
            shutil.copy(os.path.join(LIBRARIES, name), os.path.join(cls.tree, 'lib', name))
        shutil.copytree(os.path.join(BUILD, 'generated', 'stubs'), os.path.join(cls.tree, 'generated', 'stubs'))
        cls.link('CMakeFiles', 'lib/_QuorelApiNew.so')
        cls.link('quorel/CMakeFiles', 'lib/_quorel.so')

    @classmethod
    def configure(cls, **changed):
        options = dict(cls.options, BUILD_TESTING='OFF', QUOREL_GENERATOR=os.environ['QUOREL_GENERATE'].split('|')[0],
                       **changed)
        status, log = run([os.environ['QUOREL_CMAKE'], '-GNinja', '-S', SOURCES, '-B', cls.tree,
                           '-C', cls.path('cache.cmake')] + ['-D%s=%s' % option for option in options.items()])
        return status, ' '.join(log.split())

    @classmethod
    def commands(cls, target):
        return subprocess.check_output(['ninja', '-C', cls.tree, '-t', 'commands', target]).splitlines()

    @classmethod
    def link(cls, objects, module):
        """As this tree would, with the objects of the other."""
        for folder in glob.glob(os.path.join(cls.tree, objects, '*.dir')):
            shutil.rmtree(folder)
            os.symlink(os.path.join(BUILD, os.path.relpath(folder, cls.tree)), folder)
        status, log = run(cls.commands(module)[-1], shell=True, cwd=cls.tree)
        assert status == 0, log

    def test_functions_that_the_library_lacks_are_named_when_it_is_built(self):
        words = shlex.split(self.commands('generation')[-1])
        begin = [word.endswith('/generate') for word in words].index(True)
        command = words[begin:words.index('&&', begin)]
        self.assertEqual(command.count('--library'), 1)
        place = command.index('--library') + 1
        self.assertEqual(command[place], self.options['QUOREL_SDK_LIBRARY'])
        command[place] = self.options['QUOREL_VEY_LIBRARY']
        status, log = run(command, cwd=self.tree)
        self.assertEqual(status, 1, log)
        self.assertRegexpMatches(log, r"h:\d+: bcm_port_init: no library exports 'bcm_port_init'")

    def test_what_is_compiled(self):
        with open(os.path.join(self.tree, 'compile_commands.json')) as file:
            compiled = json.load(file)
        self.assertFalse([entry['file'] for entry in compiled
                          if re.match(re.escape(SOURCES) + '/(sdk|platform)/', entry['file'])])
        words = shlex.split(self.commands('generation')[-1])
        for folder in 'sdk', 'shared', 'platform':
            self.assertIn(('--include', self.path(folder)), zip(words, words[1:]))
        for definition in '-DSWITCH_LEVEL=3', '-DSWITCH_TRACE':
            self.assertIn(('--flag', definition), zip(words, words[1:]))
            self.assertFalse([entry['file'] for entry in compiled if definition not in entry['command'].split()])
        self.assertFalse([entry['file'] for entry in compiled if self.path('shared') not in entry['command']])

    def test_what_is_linked(self):
        for name in '_QuorelApiNew.so', '_quorel.so':
            module = os.path.join(self.tree, 'lib', name)
            self.assertEqual([path.rstrip(':') for path in runpaths(module)], [self.path('real')])
            needed = subprocess.check_output(['readelf', '-d', module])
            self.assertIn('[libQuorelApiNew.so.7]', needed)
            self.assertNotIn('.so.0]', needed)

    def test_what_is_installed(self):
        prefix = self.path('installed')
        self.assertEqual(run([os.environ['QUOREL_CMAKE'], '--install', self.tree, '--prefix', prefix])[0], 0)
        site = os.path.join(prefix, os.environ['QUOREL_SITE'])
        self.assertEqual(sorted(os.listdir(site)), ['QuorelApiNew.py', 'QuorelApiNew.pyi', '_QuorelApiNew.pyi', '_QuorelApiNew.so',
                                                    '_QuorelApiNew_stubs', '_quorel.pyi', '_quorel.so', 'quorel'])
        self.assertFalse(os.path.exists(os.path.join(prefix, 'include')))
        self.assertEqual(runpaths(os.path.join(site, '_QuorelApiNew.so')), [])
        environment = dict(os.environ, PYTHONPATH=site, LD_LIBRARY_PATH=self.path('real'))
        script = 'import quorel; print open("/proc/self/maps").read()'
        mapped = subprocess.check_output([sys.executable, '-B', '-c', script], cwd='/', env=environment)
        self.assertEqual(set(re.findall(r'/\S*/lib(?:Quorel\w+|vey)\.so.*', mapped)),
                         set(path for option, path in self.options.items() if option in STAND_INS))

    def test_what_does_not_fit_is_said(self):
        text, other = self.path('text'), self.path('other')
        with open(self.options['QUOREL_SDK_LIBRARY'], 'rb') as file:
            header = file.read(64)
        with open(text, 'w') as file:
            file.write('INPUT(libvey.so.0)\n')
        with open(other, 'wb') as file:
            file.write(header[:4] + {'\1': '\2', '\2': '\1'}[header[4]] + header[5:])
        for option, value, said in (
                ('QUOREL_SDK_LIBRARY', '', 'empty, and belongs to what is set: QUOREL_SDK_INCLUDE_DIR='),
                ('QUOREL_VEY_LIBRARY', '', 'empty, and belongs to what is set: QUOREL_PLATFORM_INCLUDE_DIR='),
                ('QUOREL_TYPES_LIBRARY', self.path('none'), "there is no file '%s'" % self.path('none')),
                ('QUOREL_MDIO_ACCESS_LIBRARY', text, "'%s' is not a shared library" % text),
                ('QUOREL_SDK_LIBRARY', other, "'%s' is for another system (" % other),
                ('QUOREL_SDK_INCLUDE_DIR', self.path('sdk') + ';' + text, "there is no folder '%s'" % text),
                ('QUOREL_SDK_DEFINITIONS', 'A=1;-DB', "'-DB' is not of the form NAME or NAME=VALUE")):
            status, log = self.configure(**{option: value})
            self.assertEqual((status, option + ': ' + said in log), (1, True), log)


if __name__ == '__main__':
    unittest.main()
