"""Every construct of C that a header can have is bound, and right, or refused with a reason: tools/bind on all of them.

Prints how many, by group.
"""
import collections
import ctypes
import os
import shutil
import subprocess
import sys
import unittest

import constructs

SOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
GENERATE = os.environ['QUOREL_GENERATE'].split('|')
# What is bound here runs here, whatever systems the rest is built for.
FLAGS = [flag for flag in os.environ['QUOREL_TARGET_FLAGS'].split() if flag.startswith('-m')]


def run(command, **options):
    # Compilers and tools are run as they are, without a sanitizer.
    environment = dict((name, value) for name, value in os.environ.items() if name != 'LD_PRELOAD')
    environment.update(QUOREL_GENERATOR=GENERATE[0], QUOREL_TARGET_FLAGS=' '.join(FLAGS),
                       QUOREL_PYTHON_INCLUDE=GENERATE[GENERATE.index('--system-include') + 1],
                       QUOREL_RUNTIME=os.path.join(os.environ['QUOREL_BUILD'], 'bind_runtime'))
    process = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)
    log = process.communicate()[0]
    return process.returncode, log


def bind(directory, *words):
    """What tools/bind says; what it makes can be imported."""
    status, log = run([os.path.join(SOURCES, 'tools/bind')] + list(words), cwd=directory)
    assert status == 0, log
    return log


class Constructs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # It stays: at the end of the process the leak sanitizer looks up there what lost memory.
        cls.directory = os.path.join(os.environ['QUOREL_BUILD'], 'tests', 'constructs')
        shutil.rmtree(cls.directory, ignore_errors=True)
        os.makedirs(cls.directory)
        cls.probes = constructs.probes(8 * ctypes.sizeof(ctypes.c_long))
        cls.build()

    @classmethod
    def build(cls):
        constructs.write(cls.directory, cls.probes)
        library = os.path.join(cls.directory, 'libprobes.so')
        status, log = run([os.environ.get('CC', 'cc'), '-w', '-shared', '-fPIC', '-o', library,
                           os.path.join(cls.directory, 'probes.c')] + FLAGS)
        assert status == 0, log
        cls.log = bind(cls.directory, '--module=probes', '--include=.', '--library=libprobes.so', '--interface=interface',
                       '--output=made')
        sys.path.insert(0, os.path.join(cls.directory, 'made'))
        cls.report = constructs.report(os.path.join(cls.directory, 'made'))
        cls.names = constructs.names('probes', lambda name: cls.report[name][3] == 'refused')

    def test_each(self):
        groups, wrong = collections.OrderedDict(), []
        for group, name, _, _, check in self.probes:
            good, refused, total = groups.get(group, (0, 0, 0))
            try:
                if check.startswith('refused: '):
                    row = self.report[name]
                    self.assertEqual((row[3], check[9:] in row[4]), ('refused', True), row)
                    self.assertNotIn(name, vars(self.names['m']))
                    refused += 1
                else:
                    exec(check, dict(self.names))
                    good += 1
            except Exception as error:
                wrong.append('%s: %s: %s' % (name, type(error).__name__, error))
            groups[group] = good, refused, total + 1
        for group, counts in list(groups.items()) + [('all', tuple(map(sum, zip(*groups.values()))))]:
            print('%-13s%4d of %3d bound and right, %d refused with a reason' % (group, counts[0], counts[2], counts[1]))
        self.assertEqual(wrong, [])

    def test_the_compiler_warns_of_nothing(self):
        """With -Wall and -Wextra; tools/bind passes on what it says."""
        self.assertNotIn('warning:', self.log)

    def test_nothing_is_silent(self):
        """Each declaration of the header is in the report, and what is not bound has a reason."""
        self.assertEqual([row for row in self.report.values() if row[3] not in ('outcome', 'bound', 'refused')], [])
        self.assertEqual([row for row in self.report.values() if row[3] == 'refused' and row[4] == '-'], [])
        for _, name, header, _, _ in self.probes:
            self.assertTrue([declared for declared in self.report if declared.startswith(name)] or
                            header.startswith('#define ' + name + ' do'), name)


if __name__ == '__main__':
    unittest.main()
