"""quorel_add_binding() in a project that has nothing of this repository but what was installed of it."""
import os
import subprocess
import sys
import unittest

from files import FolderTest
from test_constructs import FLAGS, GENERATE
from test_install import environment, install

HEADER = '''#ifndef LAMP_H
#define LAMP_H
#include "lamp/level.h"
/** Switches it on, and says how bright it was. */
int lamp_on(lamp_t *lamp, int *before);
int lamp_level(const lamp_t *lamp);
int lamp_gone(int a);
#endif
'''
LEVEL = '#pragma once\n#define LAMP_MAX 7\ntypedef struct lamp_s { short class_of; int level; } lamp_t;\n'
BODY = '''#include "lamp.h"
int lamp_on(lamp_t *lamp, int *before) { *before = lamp->level; lamp->level = BRIGHT; return BRIGHT; }
int lamp_level(const lamp_t *lamp) { return lamp->level; }
'''
PROJECT = '''cmake_minimum_required(VERSION 3.25)
project(lamp VERSION 2.5 LANGUAGES C CXX)
add_compile_options(-Wall -Wextra -Werror)
add_subdirectory(bound)
add_library(lamp SHARED lamp.c)
target_include_directories(lamp PUBLIC include)
target_compile_definitions(lamp PUBLIC BRIGHT=5)
quorel_add_binding(plain MODULE plain HEADERS lamp.h LIBRARIES lamp)
quorel_add_binding(described MODULE described INTERFACE interface LIBRARIES lamp
                   OUTPUT_DIRECTORY made GENERATED_DIRECTORY made/generated)
'''
INTERFACE = ('headers = ["lamp.h", "lamp/level.h"]\nfunctions = ["lamp_on"]\nrecords = ["*", "!lamp_t.class_of"]\n'
             'constants = ["LAMP_*"]\n[appended]\nlamp_on = "before"\n')


class AddBinding(FolderTest):
    @classmethod
    def make(cls):
        installed = install(cls.path('there'), '--component', 'binding')
        cls.prefix = cls.path('moved')
        os.rename(installed, cls.prefix)
        cls.write('CMakeLists.txt', PROJECT)
        # Found in a folder below, it is there in those above.
        cls.write('bound/CMakeLists.txt', 'find_package(QuorelBinding 1 REQUIRED)\n')
        cls.write('include/lamp.h', HEADER)
        cls.write('include/lamp/level.h', LEVEL)
        cls.write('lamp.c', BODY)
        cls.write('interface/binding.toml', 'families = ["lamp"]\n')
        cls.write('interface/lamp.toml', INTERFACE)
        status, log = cls.configure('build')
        assert status == 0, log
        status, log = cls.build()
        assert status == 0 and 'warning' not in log, log

    @classmethod
    def write(cls, name, text):
        if not os.path.isdir(os.path.dirname(cls.path(name))):
            os.makedirs(os.path.dirname(cls.path(name)))
        with open(cls.path(name), 'w') as file:
            file.write(text)

    @classmethod
    def run_command(cls, *command):
        process = subprocess.Popen(command, env=environment(), cwd=cls.directory, stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT)
        return process.communicate()[0], process.returncode

    @classmethod
    def configure(cls, build, source='.'):
        log, status = cls.run_command(
            os.environ['QUOREL_CMAKE'], '-G', 'Ninja', '-S', source, '-B', build, '-DCMAKE_PREFIX_PATH=' + cls.prefix,
            '-DCMAKE_C_FLAGS=' + ' '.join(FLAGS), '-DQUOREL_TARGET_FLAGS=' + ';'.join(FLAGS),
            '-DPYTHON2_INCLUDE_DIR=' + GENERATE[GENERATE.index('--system-include') + 1])
        return status, log

    @classmethod
    def build(cls):
        log, status = cls.run_command(os.environ['QUOREL_CMAKE'], '--build', cls.path('build'))
        return status, log

    def in_python(self, folder, script):
        log, status = self.run_command(sys.executable, '-B', '-c', 'import sys\nsys.path.insert(0, %r)\n%s' % (folder, script))
        self.assertEqual(status, 0, log)
        return log

    def test_modules_of_headers_and_of_an_interface(self):
        self.assertEqual(self.in_python('build', "import plain as m\nlamp = m.lamp_t()\nlamp.class_of = 3\n"
                                        'print m.lamp_level(lamp), lamp.class_of, m.LAMP_MAX, hasattr(m, "lamp_gone"), '
                                        'm.__version__[:4], m.__doc__[:9]'), '0 3 7 False 2.5+ plain in \n')
        self.assertEqual(self.in_python('build/made', "import described as m\nlamp = m.lamp_t()\nlamp.level = 4\n"
                                        'print m.lamp_on(lamp), lamp.level, hasattr(lamp, "class_of"), '
                                        'hasattr(m, "lamp_level")'), '[5, 4] 5 False False\n')

    def test_what_is_made_besides(self):
        self.assertEqual(set(name for name in os.listdir(self.path('build/made')) if name.endswith(('.so', '.py', '.pyi'))),
                         set(['_described.so', 'described.py', 'described.pyi', '_described.pyi']))
        with open(self.path('build/plain_generated/report.tsv')) as file:
            report = [line.split('\t') for line in file]
        self.assertEqual([row[3] for row in report if row[1] == 'lamp_gone'], ['refused'])
        with open(self.path('build/made/generated/reference.tsv')) as file:
            self.assertIn('Switches it on, and says how bright it was.', file.read())

    def test_what_is_touched_is_made_anew(self):
        status, log = self.build()
        self.assertEqual((status, 'no work to do' in log), (0, True), log)
        self.write('include/lamp/level.h', LEVEL.replace('7', '8'))
        self.assertEqual(self.build()[0], 0)
        for folder, module in (('build', 'plain'), ('build/made', 'described')):
            self.assertEqual(self.in_python(folder, 'import %s as m\nprint m.LAMP_MAX' % module), '8\n')
        self.write('interface/lamp.toml', INTERFACE + 'lamp_off = "before"\n')
        status, log = self.build()
        self.assertEqual((status != 0, self.path('interface/lamp.toml') + ":7: appended.lamp_off: 'lamp_off'" in log), (True, True), log)
        self.write('interface/lamp.toml', INTERFACE)
        self.assertEqual(self.build()[0], 0)

    def test_wrong_arguments(self):
        for words, said in (('MODULE a', 'either HEADERS or INTERFACE says what is bound'),
                            ('MODULE a HEADERS a.h INTERFACE b', 'either HEADERS or INTERFACE says what is bound'),
                            ('MODULE 1a HEADERS a.h', "MODULE is '1a'; a name in C and Python is wanted"),
                            ('HEADERS a.h', "MODULE is ''; a name in C and Python is wanted"),
                            ('MODULE _a HEADERS a.h', "MODULE is '_a'; a name in C and Python is wanted"),
                            ('MODULE a HEADERS', 'HEADERS has no value'),
                            ('a.h MODULE a HEADERS a.h', "'a.h' belongs to no keyword"),
                            ('MODULE a HEADERS a.h LIBRARIES liba.so', "liba.so', neither as a target nor as a file"),
                            ('MODULE a INTERFACE nowhere', "there is no interface '")):
            self.write('wrong/CMakeLists.txt', 'cmake_minimum_required(VERSION 3.25)\nproject(wrong LANGUAGES CXX)\n'
                       'find_package(QuorelBinding REQUIRED)\nquorel_add_binding(a %s)\n' % words)
            status, log = self.configure('wrong/build', 'wrong')
            self.assertEqual((status, said in ' '.join(log.split())), (1, True), log)


if __name__ == '__main__':
    unittest.main()
