"""Generating from headers that are not the development-host SDK's own."""
import os
import re
import shutil
import subprocess
import tempfile
import unittest

from files import files_of

GENERATE = os.environ['QUOREL_GENERATE'].split('|')
HEADERS = os.environ['QUOREL_SDK_INCLUDE']
SOURCES = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

# What is not in the SDK's own headers, and can be bound.
VENDOR = '''
#pragma once
#define VENDOR_BEGIN {
#define VENDOR_END }
#define VENDOR_SCALE 0.5
#define VENDOR_LOWEST (-2147483647 - 1)
#define VENDOR_BIT(n) (1u << (n))
#define VENDOR_TOP_BIT VENDOR_BIT(31)
enum { vendorNone = -1, vendorFirst = 7, vendorAlias = vendorFirst };
#define vendorAlias vendorAlias
typedef unsigned char vendor_mac_t[6], vendor_ip_t[4];
struct vendor_ahead_s;
typedef struct vendor_ahead_s vendor_ahead_t;
typedef vendor_ahead_t *vendor_handle_t;
typedef int (*vendor_walk_cb)(const vendor_ahead_t *ahead, void *user_data);
union vendor_word_u { unsigned int word; unsigned char bytes[4]; };
typedef struct {
    signed char level, levels[3];
    enum { vendorDown, vendorUp } state;
    union { int number; struct { unsigned char low; vendor_ip_t *ip; }; };
    union vendor_word_u word;
    float rates[2][4];
    const char *name;
    vendor_walk_cb walk;
    vendor_handle_t ahead;
} vendor_record_t;
extern const int vendor_limit;
long vendor_open(long a, unsigned long b, signed char c, vendor_handle_t handle, const vendor_record_t *record);
const vendor_record_t *vendor_walk(const char *const *names, vendor_walk_cb walk, const void *user_data);
vendor_record_t vendor_last(const vendor_mac_t mac, vendor_record_t by_value);
int vendor_names(char names[4][16], int rows[][3], void (*done)(int), vendor_record_t **records);
static inline int vendor_twice(int a) { return 2 * a; }
'''


class OtherHeaders(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)
        self.headers = os.path.join(self.directory, 'include')
        shutil.copytree(HEADERS, self.headers)

    def edit(self, header, old, new):
        path = os.path.join(self.headers, header)
        with open(path) as file:
            text = file.read()
        self.assertEqual(text.count(old), 1, old)
        with open(path, 'w') as file:
            file.write(text.replace(old, new))

    def generate(self, name, *options):
        output = os.path.join(self.directory, name)
        if not os.path.isdir(output):
            os.mkdir(output)
        status, log = run(command_for({HEADERS: self.headers}) + ['--output', output] + list(options))
        return status, log, output

    def binding(self, output):
        with open(os.path.join(output, 'binding.tsv')) as file:
            return set(file.read().splitlines())

    def version(self, output):
        with open(os.path.join(output, 'QuorelApiNew.py')) as file:
            return re.search(r"^__version__ = '(.*)'$", file.read(), re.M).group(1)

    def test_the_binding_follows_the_headers(self):
        status, log, output = self.generate('as_it_is')
        self.assertEqual((status, log), (0, ''))
        # Wherever the headers are: the same as the build's own.
        built = os.path.dirname(os.environ['QUOREL_BINDING'])
        for name in files_of(output):
            with open(os.path.join(output, name)) as ours, open(os.path.join(built, name)) as theirs:
                self.assertTrue(ours.read() == theirs.read(), name)
        times = dict((name, os.stat(os.path.join(output, name)).st_mtime) for name in files_of(output))
        before, version = self.binding(output), self.version(output)
        self.assertEqual(self.generate('as_it_is')[0], 0)
        self.assertEqual(dict((name, os.stat(os.path.join(output, name)).st_mtime) for name in files_of(output)),
                         times)

        self.edit('bcm/l2.h', 'typedef struct bcm_l2_addr_s {\n', 'typedef struct bcm_l2_addr_s {\n    uint64 generation;\n')
        self.edit('bcm/l2.h', 'int bcm_l2_clear(int unit);', 'int bcm_l2_recount(int unit, uint64 *count);')
        self.edit('bcm/l2.h', '#define BCM_L2_DELETE_STATIC ', '#define BCM_L2_SECURE 1\n#define BCM_L2_DELETE_STATIC ')
        self.edit('bcm/l2.h', '    BCM_L2_STATIC = ', '    BCM_L2_STICKY = 0x4000,\n    BCM_L2_STATIC = ')
        status, log, output = self.generate('edited')
        self.assertEqual((status, log), (0, ''))
        after = self.binding(output)
        self.assertEqual((self.version(output) == version, self.version(output)[:10]), (False, version[:10]))
        self.assertEqual(before - after, {'function\tl2\tbcm_l2_clear(unit) -> int\tsdk\tint32\tint32\tint\t-'})
        self.assertEqual(after - before, {
            'member\tl2\tbcm_l2_addr_t\tgeneration\tuint64\tuint64\t-\tbcm_l2_addr_s *',
            'function\tl2\tbcm_l2_recount(unit, count) -> int\tsdk\tint32\tint32\tint\t-\t'
            'pointer\tuint64 *\t_p_unsigned_long_long',
            'constant\t-\tBCM_L2_SECURE', 'constant\tbcm_l2_addr_flag_e\tBCM_L2_STICKY'})

    def test_definitions_reach_the_headers(self):
        self.edit('bcm/l2.h', 'int bcm_l2_clear(int unit);',
                  '#if LEVEL > 2\nint bcm_l2_recount(int unit);\n#endif\nint bcm_l2_clear(int unit);')
        outputs = []
        for level in '23':
            status, log, output = self.generate('level_' + level, '--flag', '-DLEVEL=' + level)
            self.assertEqual((status, log), (0, ''))
            outputs.append(output)
        self.assertEqual(self.binding(outputs[1]) - self.binding(outputs[0]),
                         {'function\tl2\tbcm_l2_recount(unit) -> int\tsdk\tint32\tint32\tint\t-'})
        self.assertNotEqual(*map(self.version, outputs))

    def test_what_does_not_fit_is_said(self):
        self.edit('bcm/l2.h', 'int bcm_l2_clear(int unit);', 'int bcm_l2_clear(int unit, __float128 share);')
        status, log, output = self.generate('wrong')
        self.assertEqual((status, os.listdir(output)), (1, []))
        self.assertIn("no conversion for a value of type '__float128'", log)


def start(command):
    # The generator and the compiler are run as they are, without a sanitizer.
    environment = dict(os.environ)
    environment.pop('LD_PRELOAD', None)
    return subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


def run(command):
    process = start(command)
    log = process.communicate()[0]
    return process.returncode, log


def command_for(replaced):
    """The command with which the build generates, some of its words replaced."""
    return [replaced.get(word, word) for word in GENERATE]


def values_of(option):
    return [value for name, value in zip(GENERATE, GENERATE[1:]) if name == option]


class VendorHeaders(unittest.TestCase):
    """What is generated of them has to compile."""

    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)
        self.write('vendor.h', VENDOR)
        self.write('binding.toml', 'families = ["vendor"]')
        self.write('vendor.toml', 'headers = ["vendor.h"]\nfunctions = ["*"]\nrecords = ["*"]\nconstants = ["*"]\n'
                                  'variables = ["*"]\n')

    def write(self, name, text):
        with open(os.path.join(self.directory, name), 'w') as file:
            file.write(text)

    def generate(self):
        return run(command_for({HEADERS: self.directory, values_of('--interface')[0]: self.directory}) +
                   ['--output', self.directory])

    def test_the_bindings_compile(self):
        self.assertEqual(self.generate(), (0, ''))
        names = ('shapes', 'variables', 'tables', 'constants', 'values', 'families_throwing') + tuple(
            'families_%d' % (unit + 1) for unit in range(int(values_of('--units')[0])))
        self.write('all.cpp', ''.join('#include "%s.cpp"\n' % name for name in names))
        for source, language in (('all.cpp', '-std=gnu++17'), ('layout.c', '-xc')):
            command = [os.environ.get('CXX', 'c++'), language, '-fsyntax-only', '-w', '-I', self.directory, '-I', SOURCES]
            command += values_of('--flag') + ['-isystem' + path for path in values_of('--system-include')]
            self.assertEqual(run(command + [os.path.join(self.directory, source)]), (0, ''))

    def test_a_build_need_not_read_the_interface_files(self):
        """Which files are made depends on their names alone, and the rule beside the stamp names those that were read."""
        self.assertEqual(self.generate(), (0, ''))
        made = set(os.listdir(self.directory))
        other = os.path.join(self.directory, 'with a blank')
        os.mkdir(other)
        shutil.copy(os.path.join(self.directory, 'vendor.h'), other)
        self.directory = other
        self.write('helper.h', '#pragma once\n#include "inner.h"\n')
        self.write('inner.h', '#pragma once\nint vendor_help(int a);\n')
        self.write('binding.toml', '# not "gone"\nfamilies = ["vendor",  # nor "gone"\n    "helper"]')
        self.write('vendor.toml', 'headers = ["vendor.h"]\nfunctions = ["*"]\nrecords = ["*"]\nconstants = ["*"]\n'
                                  'variables = ["*"]\n')
        self.write('helper.toml', 'cxx_headers = [\n    "helper.h", "inner.h",\n]\nfunctions = ["vendor_help"]\n')
        stamp = os.path.join(other, 'stamp')
        command = command_for({HEADERS: other, values_of('--interface')[0]: other})
        self.assertEqual(run(command + ['--output', other, '--stamp', stamp]), (0, ''))
        self.assertEqual(made | set(['sim_helper.h']), set(os.listdir(other)) - set(['helper.h', 'inner.h', 'helper.toml', 'stamp', 'stamp.d']))
        with open(stamp + '.d') as file:
            target, inputs = file.read().replace('\\ ', '?').split(':', 1)
        self.assertEqual(target, stamp.replace(' ', '?'))
        read = set(inputs.replace('\\\n', ' ').split())
        for name in ('binding.toml', 'vendor.toml', 'helper.toml', 'vendor.h', 'helper.h', 'inner.h'):
            self.assertIn(os.path.join(other, name).replace(' ', '?'), read)
        self.assertIn(values_of('--companion')[0], read)
        self.assertFalse([name for name in read if 'gone' in name or not os.path.isabs(name)])

    def test_where_nothing_can_be_written(self):
        self.assertEqual(self.generate(), (0, ''))
        taken = os.path.join(self.directory, 'shapes.h')
        os.remove(taken)
        os.mkdir(taken)
        self.assertEqual(self.generate(), (1, 'generate: cannot write %s\n' % taken))
        self.assertFalse(os.path.exists(taken + '.new'))
        command = command_for({HEADERS: self.directory, values_of('--interface')[0]: self.directory})
        for output in (os.path.join(self.directory, 'none'), os.path.join(self.directory, 'vendor.h')):
            self.assertEqual(run(command + ['--output', output])[0], 1)
        for words in ([], ['--output'], ['--outputs', 'x', '--output', 'x'], ['--output', 'x', '--units', '-1'],
                      ['--output', 'x', '--module', 'no name'], ['--output', 'x', '--module', '_'],
                      ['--output', 'x', '--module', '_1']):
            status, log = run(command + words)
            self.assertEqual((status, log[:15]), (2, 'usage: generate'))

    def test_faults_of_both_sides_leave_what_was_there(self):
        self.assertEqual(self.generate(), (0, ''))
        before = os.listdir(self.directory)
        self.write('vendor.h', 'int vendor_log(const char *, ...);\nstruct vendor_bits_s { __float128 bit; };\n')
        self.write('vendor.toml', 'headers = ["vendor.h"]\nfunctions = ["*"]\nrecords = ["*", "vendor_gone_t"]\n')
        status, log = self.generate()
        self.assertEqual(status, 1)
        for text in ('vendor.h:2: vendor_bits_s.bit: no conversion', 'vendor.h:1: vendor_log: a variable number',
                     "vendor.toml:3: records: 'vendor_gone_t' fits"):
            self.assertIn(text, log)
        self.assertEqual(os.listdir(self.directory), before)


if __name__ == '__main__':
    unittest.main()
