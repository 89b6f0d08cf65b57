"""Headers and interface files with a small fault: what is said names a line that their author has, briefly and soon."""
import os
import random
import re
import shutil
import tempfile
import threading
import unittest

from test_other_headers import HEADERS, command_for, start, values_of

SECONDS = 60
LINES = 42

HEADER = '''\
#ifndef LAMP_H
#define LAMP_H
#include "bulb.h"
#define LAMP_MAX (2 + BULB_MAX) /* per room */
#define LAMP_NAME "lamp"
typedef unsigned char lamp_mac_t[6];
typedef enum lamp_colour_e { lampRed, lampGreen = 7 } lamp_colour_t;
typedef struct lamp_s {
    int colour; // of the light
    lamp_mac_t mac;
    union { unsigned int word; unsigned char bytes[4]; };
    bulb_t bulbs[BULB_MAX];
} lamp_t;
/* Asks. */
typedef int (*lamp_cb)(int unit, lamp_t *lamp, void *user_data);
int lamp_level_set(int unit, lamp_colour_t colour, int level);
int lamp_level_get(int unit, lamp_colour_t colour, int *level);
int lamp_find(int unit, const char *name, lamp_t *lamp);
int lamp_set(int unit, lamp_t *lamp);
int lamp_get(int unit, lamp_t *lamp);
int lamp_delete(int unit, int colour);
int lamp_walk(int unit, lamp_cb cb, void *user_data);
int lamp_count(int unit, unsigned int *count);
extern int lamp_limit;
#endif
'''
BULB_HEADER = '''\
#ifndef BULB_H
#define BULB_H
enum { BULB_MAX = 3 };
typedef struct bulb_s { unsigned short watts; } bulb_t;
int bulb_next(int unit, int *bulb);
int bulb_create(int unit, bulb_t *bulb, int *id);
int bulb_get(int unit, int id, bulb_t *bulb);
int bulb_destroy(int unit, int id);
#endif
'''
INTERFACE = '''\
# Lamps.
headers = ["lamp.h"]
functions = ["lamp_*", "!lamp_walk"]
records = ["lamp_t"]
constants = ["LAMP_*", "lamp*", "!lampRed"]
variables = ["lamp_limit"]
opaque_here = ["lamp_colour_t"]
named = ["lamp_colour_e"]
raises = ["lamp_find"]
throws = ["lamp_find"]
unserved = ["lamp_find"]
[typemaps.lamp_mac_t]
header = "typemaps/mac.h"
name = "mac"
[pointer_classes]
intp = { element = "int", equivalent = true }
[arrays]
lamps = "lamp_t"
[appended]
lamp_count = "count"
[replaced]
lamp_delete = "lamp_delete"
[identified_by]
lamp = "colour"
[key_checks]
lamp_colour_t = "key"
[unavailable]
"lamp_*" = "nothing shines"
[text]
lamp_mac_t = "mac"
'''
BULB_INTERFACE = '''\
headers = ["bulb.h"]
functions = ["bulb_*"]
records = ["bulb_t"]
constants = ["BULB_MAX"]
[in_and_out]
bulb_next = "bulb"
[created_with]
bulb = ""
'''
BINDING = 'families = [\n    "bulb",\n    "lamp",\n]\n'
FILES = {'lamp.h': HEADER, 'bulb.h': BULB_HEADER, 'lamp.toml': INTERFACE, 'bulb.toml': BULB_INTERFACE,
         'binding.toml': BINDING}


def mutated(text, chance):
    """The text with one fault."""
    lines = text.splitlines(True)
    words = sorted(set(re.findall(r'\w+', text)))
    number, other = chance.randrange(len(lines)), chance.randrange(len(lines))
    place = chance.randrange(len(text))
    kind = chance.randrange(7)
    if kind == 0:
        lines[number], lines[other] = lines[other], lines[number]
    elif kind == 1:
        lines[number] = ''
    elif kind == 2:
        lines.insert(other, lines[number])
    elif kind == 3:
        return text[:place] + text[place + 1:]
    elif kind == 4:
        mark = chance.choice(['/*', '*/', '{', '}', '[', ']', '"', "'", '(', '#', ',', '=', '\n', '\\', '\0', '\xe9',
                              '#if 0\n', 'extern "C" {', 'namespace x {'])
        return text[:place] + mark + text[place:]
    elif kind == 5:
        word = chance.choice(words)
        ends = [match.span() for match in re.finditer(r'\b%s\b' % word, text)]
        begin, end = chance.choice(ends)
        return text[:begin] + chance.choice(words + ['', 'double', 'long', 'gone']) + text[end:]
    else:
        return text[:place]
    return ''.join(lines)


def lines_in(path):
    with open(path) as file:
        return file.read().count('\n') + 1


class MutatedInputs(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)
        self.output = os.path.join(self.directory, 'output')
        os.mkdir(self.output)

    def write(self, name, text):
        with open(os.path.join(self.directory, name), 'w') as file:
            file.write(text)

    def refusal(self, replaced):
        """What is said, or '' if the binding is made. Checks that its reader can do something with it."""
        process = start(command_for(replaced) + ['--output', self.output])
        end = threading.Timer(SECONDS, process.kill)
        end.start()
        log = process.communicate()[0]
        end.cancel()
        self.assertIn(process.returncode, (0, 1), log)
        self.assertEqual(process.returncode == 1, log != '')
        said = log[len('generate: '):].splitlines()
        self.assertLess(len(said), LINES)
        for line in said:
            place = re.match(r'(/[^:]*):([0-9]+):', line)
            if place is None:
                self.assertRegexpMatches(line, '^and [0-9]+ more$')
                self.assertIs(line, said[-1])
            else:
                path, number = place.group(1), int(place.group(2))
                self.assertTrue(os.path.isfile(path), line)
                self.assertTrue(1 <= number <= lines_in(path), line)
        return log

    def test_small_faults_of_a_small_binding(self):
        replaced = {HEADERS: self.directory, values_of('--interface')[0]: self.directory}
        for name, text in FILES.items():
            self.write(name, text)
        self.assertEqual(self.refusal(replaced), '')
        refused, faults = 0, []
        for name, text in sorted(FILES.items()):
            for seed in range(25):
                self.write(name, mutated(text, random.Random('%s %d' % (name, seed))))
                try:
                    refused += self.refusal(replaced) != ''
                except AssertionError as fault:
                    faults.append('%s, seed %d: %s' % (name, seed, fault))
            self.write(name, text)
        self.assertEqual('\n'.join(faults), '')
        self.assertGreater(refused, 60)

    def test_a_comment_that_is_not_closed_among_many_headers(self):
        headers = os.path.join(self.directory, 'include')
        shutil.copytree(HEADERS, headers)
        path = os.path.join(headers, 'sal', 'types.h')
        with open(path) as file:
            lines = file.read().splitlines(True)
        number = 1 + max(number for number, line in enumerate(lines) if '*/' in line)
        lines.insert(number, '/*\n')
        with open(path, 'w') as file:
            file.write(''.join(lines))
        self.assertIn('%s:%d:1: error: unterminated /* comment' % (path, number + 1), self.refusal({HEADERS: headers}))


if __name__ == '__main__':
    unittest.main()
