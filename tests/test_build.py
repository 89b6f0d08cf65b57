"""What the build keeps up: warnings that find mistakes, rooms that see no others, headers that few files read."""
import json
import os
import re
import shlex
import subprocess
import unittest

from test_other_headers import HEADERS, SOURCES, run

BUILD = os.environ['QUOREL_BUILD']
# Types and codes that nearly every header is made of, and the clock, which the core's precompiled header has.
BASIC = {'sal/types.h', 'bcm/types.h', 'bcm/error.h', 'bcm/stat_types.h', 'soc/types.h', 'soc/error.h', 'shared/bitop.h',
         'shared/pbmp.h', 'shared/port.h', 'sim/clock.h'}


def compiled():
    with open(os.path.join(BUILD, 'compile_commands.json')) as file:
        return [(os.path.relpath(entry['file'], SOURCES), entry) for entry in json.load(file)]


class Compiler(unittest.TestCase):
    def said_of(self, text, place):
        """What it says of a source with this text that belongs to the place of another."""
        entry = dict(compiled())[place]
        words = shlex.split(entry['command'])
        del words[words.index('-o'):]
        process = subprocess.Popen(words + ['-fsyntax-only', '-Werror', '-xc++', '-'], cwd=entry['directory'],
                                   env=dict(os.environ, LD_PRELOAD=''), stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return process.communicate(text)[0]

    @unittest.skipIf('clang' in os.environ['CXX'], 'clang warns of functions without a declaration in C only')
    def test_a_misspelt_function_is_found(self):
        text = '#include "sim_l2.h"\nextern "C" int sim_bcm_l2_%s(int) { return 0; }\n'
        self.assertEqual(self.said_of(text % 'clear', 'sdk/src/l2/l2.cpp'), '')
        self.assertIn('sim_bcm_l2_celar', self.said_of(text % 'celar', 'sdk/src/l2/l2.cpp'))

    def test_all_sources_have_the_warnings(self):
        for name, entry in compiled():
            if not name.startswith(('..', 'build/')):
                lacking = {'-Wall', '-Wextra', '-Wmissing-declarations', '-Wshadow'} - set(entry['command'].split())
                self.assertEqual(lacking, set(), name)

    def test_a_room_sees_those_below_it_alone(self):
        for place, header, is_seen in [('sdk/src/l2/l2.cpp', 'port.h', True), ('sdk/src/l2/l2.cpp', 'shell.h', False),
                                       ('sdk/src/vlan/vlan.cpp', 'l2.h', False),
                                       ('sdk/src/core/clock.cpp', 'l2.h', False),
                                       ('sdk/src/chip/chip.cpp', 'vlan.h', False),
                                       ('sdk/src/rules/rules.cpp', 'config.h', False)]:
            said = self.said_of('#include "%s"\n' % header, place)
            self.assertEqual('%s: No such file' % header not in said and "'%s' file not found" % header not in said,
                             is_seen, (place, header, said))


class Headers(unittest.TestCase):
    def test_a_change_compiles_few_files(self):
        status, log = run(['ninja', '-C', BUILD, '-t', 'deps'])
        self.assertEqual(status, 0)
        read = dict((output, set(os.path.normpath(os.path.join(BUILD, line.strip())) for line in lines.splitlines()))
                    for output, lines in re.findall(r'(?m)^(\S+): #deps.*\n((?: .*\n)+)', log))
        # GCC does not tell of an object what its precompiled header has.
        precompiled = dict((re.search(r' -o (\S+)', entry['command']).group(1),
                            re.findall(r' -include %s/(\S+)' % re.escape(BUILD), entry['command']))
                           for _, entry in compiled())
        readers, files = {}, 0
        for output in read:
            if output.endswith('.o'):
                files += 1
                headers = [read.get(name + '.gch', set()) for name in precompiled.get(output, ())]
                for path in read[output].union(*headers):
                    readers[path] = readers.get(path, 0) + 1
        counts = dict((os.path.relpath(path, HEADERS), count) for path, count in readers.items()
                      if path.startswith(HEADERS + '/'))
        ordered = sorted(counts.values())
        print('of %d files a header of the SDK compiles %d (median), %d (nine of ten), %d (the most)' % (
            files, ordered[len(ordered) // 2], ordered[len(ordered) * 9 // 10], ordered[-1]))
        self.assertGreater(len(counts), 100)
        self.assertEqual(set(name for name, count in counts.items() if 4 * count >= files) - BASIC, set())


if __name__ == '__main__':
    unittest.main()
