"""What tools/bind says to mistakes on its command line and in an interface: what is wrong and where, before it builds."""
import os
import shutil
import tempfile
import unittest

from test_constructs import SOURCES, run


class BindMistakes(unittest.TestCase):
    def setUp(self):
        self.directory = os.path.realpath(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.directory)
        self.write('a.h', 'int a_get(int *value);\n')
        self.write('text', 'no library')
        self.write('good/binding.toml', 'families = []\n')

    def write(self, name, text):
        path = os.path.join(self.directory, name)
        if not os.path.isdir(os.path.dirname(path)):
            os.makedirs(os.path.dirname(path))
        with open(path, 'w') as file:
            file.write(text)

    def bind(self, *words):
        return run([os.path.join(SOURCES, 'tools/bind')] + list(words), cwd=self.directory)

    def test_on_the_command_line(self):
        for words, said in (
                ([], 'a module is wanted'), (['a.h'], 'a module is wanted'),
                (['--module=1a', 'a.h'], 'a module is wanted'), (['--module=a-b', 'a.h'], 'a module is wanted'),
                (['--module', 'a', 'a.h'], '--module wants a value: --module=...'),
                (['--module=', 'a.h'], '--module wants a value: --module=...'),
                (['--module=a'], 'headers to bind are wanted'),
                (['--modul=a', 'a.h'], 'there is no option --modul'),
                (['--module=a', '-Iinclude', 'a.h'], 'there is no option -Iinclude'),
                (['--module=a', '--library=gone.so', 'a.h'], "--library: there is no file '%s/gone.so'"),
                (['--module=a', '--include=gone', 'a.h'], "--include: there is no folder '%s/gone'"),
                (['--module=a', '--define=1=2', 'a.h'], "--define: '1=2' is not of the form NAME or NAME=VALUE"),
                (['--module=a', '--interface=gone'], "--interface: there is no file '%s/gone/binding.toml'"),
                (['--module=a', '--interface=good', 'a.h'], 'which headers are bound, the interface says')):
            status, log = self.bind(*words)
            first, usage = log.splitlines()
            self.assertEqual((status, usage[:18]), (2, 'usage: tools/bind '), words)
            self.assertTrue(first.startswith('bind: ' + said.replace('%s', self.directory)), (words, log))
        self.assertEqual(self.bind('--module=a', '--output=text', 'a.h'),
                         (1, "bind: --output: '%s/text' cannot be a folder\n" % self.directory))

    def test_of_what_is_read(self):
        self.write('wrong/binding.toml', 'families = ["a"]\nfamilys = []\n')
        self.write('unfit/binding.toml', 'families = ["a"]\n')
        self.write('unfit/a.toml', 'headers = ["a.h"]\nfunctions = ["b_*"]\n[appended]\na_get = 3\n')
        for words, said in ((['gone.h'], "the header gone.h: 'gone.h': 'gone.h' file not found"),
                            (['--library=text', 'a.h'], '%s/text is not a shared library'),
                            (['--interface=wrong'], "%s/wrong/binding.toml:2: familys: there is no such key"),
                            (['--interface=unfit'], '%s/unfit/a.toml:4: appended.a_get: a string is wanted here')):
            status, log = self.bind('--module=a', '--include=.', *words)
            said = 'generate: ' + said.replace('%s', self.directory) + '\n'
            self.assertEqual((status, log[:len(said)]), (1, said), words)
            self.assertEqual(log[len(said):].count('\n'), 1, log)

    def test_all_that_is_there_may_be_nothing(self):
        status, log = self.bind('--module=a', '--include=.', '--strict', 'a.h')
        self.assertEqual((status, log), (0, 'functions: 1 of 1 bound, 0 refused, 0 left out\n'))


if __name__ == '__main__':
    unittest.main()
