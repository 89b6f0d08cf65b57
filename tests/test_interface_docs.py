"""docs/interface-files.md: it has what the generator accepts, and its examples are bound and run as they stand."""
import os
import re
import shutil
import subprocess
import sys
import unittest

from test_constructs import FLAGS, GENERATE, SOURCES, bind, run

BODY = '''#include "lamp.h"
#include <string.h>
int lamp_count = 2;
int lamp_open(lamp_t *lamp, lamp_handle_t *handle) { *handle = 7 + strlen(lamp->name); return 0; }
int lamp_close(lamp_handle_t handle) { return handle == 0; }
lamp_mark_t lamp_mark(lamp_mark_t mark) { return mark; }
int lamp_level(int *level) { ++*level; return 0; }
int lamp_channel(unsigned char channel) { return channel; }
int lamp_play(const void *pattern, int length)
{
    int sum = 0;
    for (int i = 0; i < length; ++i) {
        sum += ((const char *)pattern)[i];
    }
    return sum;
}
int lamp_watch(int (*watcher)(int level, void *datum), void *datum) { return watcher(5, datum); }
int lamp_say(const char *text) { return text ? (int)strlen(text) : -1; }
int lamp_next(int *level) { ++*level; return 0; }
int lamp_sum(const unsigned int *levels, int count)
{
    int sum = 0;
    for (int i = 0; i < count; ++i) {
        sum += levels[i];
    }
    return sum;
}
int lamp_print(const char *format, ...) { return (int)strlen(format); }
int lamp_reset(void) { return 0; }
'''


class InterfaceDocs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(os.path.join(SOURCES, 'docs/interface-files.md')) as file:
            cls.text = file.read()
        cls.blocks = re.findall(r'(?ms)^```(.*?)\n(.*?)^```$', cls.text)

    def test_it_has_what_the_generator_accepts(self):
        accepted = set(subprocess.check_output([GENERATE[0], '--keys'], env=dict(os.environ, LD_PRELOAD='')).splitlines())
        of_binding, families = self.text.split('## FAMILY.toml', 1)
        documented = set('binding.toml: ' + key for key in re.findall(r'(?m)^\| `(\w+)` \|', of_binding))
        for heading, body in re.findall(r'(?ms)^### ([a-z_, ]+)\n(.*?)(?=^##|\Z)', families):
            documented.update(heading.split(', '))
            if heading == 'tables':
                for row in re.findall(r'(?m)^\| (`.*?`) \|', body):
                    documented.update('tables.' + key for key in re.findall('`(.*?)`', row))
            # Entries with keys of their own are shown as inline tables.
            for entry in re.findall(r'(?m)^\w+ = \{ (.*) \}$', body):
                documented.update('%s.%s' % (heading, key) for key in re.findall(r'(\w+) = ', entry))
        self.assertEqual(sorted(documented ^ accepted), [])

    def test_examples_of_our_own_stand_in_its_interface(self):
        ours = [re.match(r'# (interface/\S*)\n([^\0]*)', block) for kind, block in self.blocks if kind == 'toml']
        ours = [match.groups() for match in ours if match]
        self.assertGreater(len(ours), 8)
        for name, block in ours:
            with open(os.path.join(SOURCES, name)) as file:
                text = file.read()
            for line in block.splitlines():
                self.assertIn('\n' + line + '\n', text, name)

    def test_the_others_are_bound_and_run(self):
        # It stays: at the end of the process the leak sanitizer looks up there what lost memory.
        directory = os.path.join(os.environ['QUOREL_BUILD'], 'tests', 'interface_docs')
        shutil.rmtree(directory, ignore_errors=True)
        os.makedirs(os.path.join(directory, 'interface'))

        def write(name, text):
            with open(os.path.join(directory, name), 'w') as file:
                file.write(text)
        (header,) = [block for kind, block in self.blocks if kind == 'c']
        write('lamp.h', header)
        write('lamp.c', BODY)
        shown = [block for kind, block in self.blocks if kind == 'toml' and not block.startswith('# interface/')]
        (binding,) = [block for block in shown if block.startswith('# binding.toml')]
        write('interface/binding.toml', binding)
        write('interface/lamp.toml', ''.join(block for block in shown if block != binding))
        status, log = run([os.environ.get('CC', 'cc'), '-shared', '-fPIC', '-o', 'liblamp.so', 'lamp.c'] + FLAGS, cwd=directory)
        self.assertEqual(status, 0, log)
        words = ['--module=lamp', '--include=.', '--library=liblamp.so', '--interface=interface', '--output=made']
        self.assertIn('functions: 11 of 12 bound, 0 refused, 1 left out\n', bind(directory, *words))
        self.assertEqual(set(os.listdir(os.path.join(directory, 'made'))),
                         set(['_lamp.so', 'lamp.py', '_lamp.pyi', 'lamp.pyi', '_lamp_stubs', 'report.tsv', 'reference.tsv',
                              'work']))
        write('session.txt', re.sub('(?m)^```.*$', '', self.text))
        process = subprocess.Popen([sys.executable, '-m', 'doctest', '-v', os.path.join(directory, 'session.txt')],
                                   env=dict(os.environ, PYTHONPATH=os.path.join(directory, 'made')), stdout=subprocess.PIPE)
        output = process.communicate()[0]
        self.assertEqual(process.returncode, 0, output)
        self.assertEqual(output.count('Trying:\n'), len(re.findall('(?m)^>>> ', self.text)))
        # What was bound and is not any more is said.
        write('lamp.h', header.replace('#define LAMP_MAX 7\n', ''))
        self.assertEqual(re.findall('vanished since: .*', bind(directory, *words)), ['vanished since: constant LAMP_MAX'])


if __name__ == '__main__':
    unittest.main()
