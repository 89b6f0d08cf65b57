"""What the shell says of words that it refuses, and what it tells of its commands."""
import os
import re
import shutil
import tempfile
import unittest

import QuorelApiNew as q
from console import run
from simulator import SwitchTest

# A line, what is wrong with it, and how the command is used.
REFUSALS = [
    ('ps 99', "no port '99'", 'ps [PORTS]'),
    ('ps 1-', "'1-' is no set of ports", 'ps [PORTS]'),
    ('ps 1 2', "'2' is one word too many", 'ps [PORTS]'),
    ('port', 'PORTS is missing', 'port PORTS SETTING=VALUE...'),
    ('port 1', 'SETTING=VALUE is missing', 'port PORTS SETTING=VALUE...'),
    ('port 1 colour=1', "'colour=1' sets none of enable, speed, pause, vlan, learn",
     'port PORTS SETTING=VALUE...'),
    ('port 1 enable=0 speed=1x', "speed '1x' is no number", 'port PORTS SETTING=VALUE...'),
    ('port 1 speed', "'speed' sets nothing: no '='", 'port PORTS SETTING=VALUE...'),
    ('port 1-4,70,3 enable=1', "no port '70'", 'port PORTS SETTING=VALUE...'),
    ('port 1 enable=2', "enable is on or off, not '2'", 'port PORTS SETTING=VALUE...'),
    ('vlan create', 'ID is missing', 'vlan create ID'),
    ('vlan create 65536', "'65536' is no VLAN", 'vlan create ID'),
    ('vlan create 0x', "'0x' is no VLAN", 'vlan create ID'),
    ('vlan add 1 2 untaged', "'untaged' is not untagged", 'vlan add ID PORTS [untagged]'),
    ('l2 add 02:00:00:00:00:0g 1 1', "'02:00:00:00:00:0g' is no MAC address",
     'l2 add MAC VLAN PORT [static|dynamic]'),
    ('l2 add 02:00:00:00:00:01 1 1-2', "'1-2' is not one port", 'l2 add MAC VLAN PORT [static|dynamic]'),
    ('l2 add 02:00:00:00:00:01 1 1 sticky', "'sticky' is none of static, dynamic",
     'l2 add MAC VLAN PORT [static|dynamic]'),
    ('getreg NOTHING', "no register 'NOTHING'", 'getreg REGISTER'),
    ('getreg EGQ_PORT_PROFILE[1', "'EGQ_PORT_PROFILE[1' is no register", 'getreg REGISTER'),
    ('getreg NIF_PORT_MAX_SIZE.65', "'NIF_PORT_MAX_SIZE.65': no such port or core", 'getreg REGISTER'),
    ('setreg EGQ_AGEING_CTRL ENABLE=2', "ENABLE has 1 bit: '2' does not fit",
     'setreg REGISTER VALUE|FIELD=VALUE...'),
    ('setreg EGQ_AGEING_CTRL PERIOD=2', "EGQ_AGEING_CTRL has no field 'PERIOD'",
     'setreg REGISTER VALUE|FIELD=VALUE...'),
    ('setreg EGQ_AGEING_CTRL 0x100000000', "EGQ_AGEING_CTRL has 32 bits: '0x100000000' does not fit",
     'setreg REGISTER VALUE|FIELD=VALUE...'),
    ('setreg EGQ_AGEING_CTRL ENABLE=yes', "'yes' is no value", 'setreg REGISTER VALUE|FIELD=VALUE...'),
    ('setreg EGQ_AGEING_CTRL 1 2', "'2' is one word too many", 'setreg REGISTER VALUE|FIELD=VALUE...'),
    ('setreg CMIC_DEVICE_ID DEVICE=5', 'DEVICE is read-only', 'setreg REGISTER VALUE|FIELD=VALUE...'),
    ('setreg CMIC_DEVICE_ID 5', 'CMIC_DEVICE_ID is read-only', 'setreg REGISTER VALUE|FIELD=VALUE...'),
    ('dump NOTHING 0', "no table 'NOTHING'", 'dump TABLE FIRST [LAST]'),
    ('dump EGQ_PORT_CONFIG 256', "EGQ_PORT_CONFIG has no entry '256', only 0 to 255",
     'dump TABLE FIRST [LAST]'),
    ('dump EGQ_PORT_CONFIG 4 3', "'3' comes before '4'", 'dump TABLE FIRST [LAST]'),
    ('dump EGQ_PORT_CONFIG.2 4', "'EGQ_PORT_CONFIG.2': no such copy or array", 'dump TABLE FIRST [LAST]'),
    ('modify EGQ_PORT_CONFIG 3 TTL=4', "EGQ_PORT_CONFIG has no field 'TTL'",
     'modify TABLE INDEX FIELD=VALUE...'),
    ('phy read 34 0x10000', "'0x10000' is no register", 'phy read PORTS REGISTER [internal]'),
    ('phy set 34 NOTHING=1', "no control 'NOTHING'", 'phy set PORTS CONTROL=VALUE...'),
    ('config get', 'NAME is missing', 'config get NAME'),
    ('config set a_name', "'a_name' sets nothing: no '='", 'config set NAME=VALUE...'),
    ('set report_time maybe', "report_time is a number, on or off, not 'maybe'", 'set [NAME VALUE...]'),
    ('set 1x 3', "'1x' cannot be a variable", 'set [NAME VALUE...]'),
    ('set x', 'VALUE is missing', 'set [NAME VALUE...]'),
    ('test 1 = 1', "'=' is none of ==, !=, <, <=, >, >=", 'test A RELATION B'),
    ('loop -1 ps', "COUNT '-1' is no number from 0 on", "loop COUNT 'COMMANDS'"),
    ("for i 1 x 'ps'", "HIGH 'x' is no number", "for NAME LOW HIGH 'COMMANDS'"),
    ("for 1x 1 0 'ps'", "'1x' cannot be a variable", "for NAME LOW HIGH 'COMMANDS'"),
    ('sleep soon', "MILLISECONDS 'soon' is no number from 0 on", 'sleep MILLISECONDS'),
    ('attach x', "UNIT 'x' is no number", 'attach [UNIT]'),
    ('pw print maybe', "'maybe' is none of on, off", 'pw print on|off'),
    ('units 3', "'3' is one word too many", 'units'),
]

# Malformed addresses, each but for one thing like 02:00:5e:00:00:01.
MALFORMED = ['+2:00:5e:00:00:01', '-2:00:5e:00:00:01', '0x2:00:5e:00:00:01', '02:00:5e:00:00:0x',
             ' 2:00:5e:00:00:01', '02: 0:5e:00:00:01', '02:00:5e:00:00:01 ', '02:00:5e:00:00',
             '02:00:5e:00:00:01:02', '02:00:5e:00::01', '02:00:5e:00:00:001', '02-00-5e-00-00-01',
             '02:00:5e:00:00:01:', ':02:00:5e:00:00:01', '02005e000001', '']


class Refusals(SwitchTest):
    def test_the_reason_the_word_and_the_use_are_told(self):
        for line, reason, usage in REFUSALS:
            output = '%s: %s\nusage: %s\n' % (line.split()[0], reason, usage)
            self.assertEqual(run(line), (q.CMD_USAGE, output))

    def test_an_unknown_form_shows_all(self):
        result, output = run('vlan rename 9')
        self.assertEqual((result, output.splitlines()[:3]), (q.CMD_USAGE, [
            "vlan: 'rename' is none of show, create, destroy, add, remove", 'usage: vlan [show] [ID]',
            '       vlan create ID']))

    def test_a_form_without_words_takes_none(self):
        self.assertEqual(run('version short'), (
            q.CMD_USAGE, "version: 'short' is not all\nusage: version\n       version all\n"))

    def test_a_failure_says_what_it_is_about(self):
        for line, what in (('l2 add 2:0:0:0:0:1 999 1', 'l2: add 2:0:0:0:0:1 999: BCM_E_NOT_FOUND'),
                           ('l2 remove 2:0:0:0:0:1 1', 'l2: remove 2:0:0:0:0:1 1: BCM_E_NOT_FOUND'),
                           ('vlan show 9', 'vlan: show 9: BCM_E_NOT_FOUND'),
                           ('rcload /nowhere', 'rcload: /nowhere cannot be read')):
            self.assertEqual(run(line), (q.CMD_FAIL, what + '\n'))
        for word, what in (('modid=x', "'modid=x' is no value of the parameter"),
                           ('colour=1', "'colour=1' sets no parameter")):
            self.assertEqual(run('init appl ' + word), (q.CMD_USAGE, 'init: %s\n' % what))

    def test_only_the_refused_command_tells_its_use(self):
        directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, directory)
        path = os.path.join(directory, 'commands')
        with open(path, 'w') as commands:
            commands.write('ps 99\n')
        for line in ("loop 2 'ps 99'", "for i 1 2 'ps 99'", 'rcload ' + path, "if 'ps 1' 'ps 99'",
                     "if 'ps 99' 'ps 1'"):
            output = run(line)[1]
            self.assertEqual(re.findall('usage: .*', output), ['usage: ps [PORTS]'], line)

    def test_addresses_have_six_numbers_of_one_or_two_digits(self):
        for text in MALFORMED:
            for line in ("l2 add '%s' 1 3", "l2 remove '%s' 1"):
                result, output = run(line % text)
                self.assertEqual((result, output.splitlines()[0]),
                                 (q.CMD_USAGE, "l2: '%s' is no MAC address" % text))
        self.assertEqual(run('l2 count'), (q.CMD_OK, '0 addresses\n'))
        self.assertEqual(run('l2 add 2:0:5E:a:00:1 1 3; l2 remove 02:00:5e:0A:0:01 1'), (q.CMD_OK, ''))

    def test_a_line_that_can_be_no_command_is_told_before_it_runs(self):
        for line, result in (('vlan create 7', q.CMD_OK), ('vlan create', q.CMD_USAGE),
                             ('vlan rename', q.CMD_USAGE), ('ps 1 2', q.CMD_USAGE), ('vlan', q.CMD_OK),
                             ('exit 1', q.CMD_USAGE)):
            self.assertEqual(q.sh_process_command_check(0, line), result, line)
        self.assertEqual(len(run('vlan')[1].splitlines()), 1)


class Help(SwitchTest):
    """help, held against what the commands do."""

    def commands(self):
        """{command: the line that help has for it}"""
        lines = [line.split(None, 1) for line in run('help')[1].splitlines() if line.startswith('    ')]
        return dict(lines)

    def told(self, name):
        """(purpose, forms, example)"""
        result, output = run('help ' + name)
        self.assertEqual(result, q.CMD_OK)
        lines = output.splitlines()
        forms = [re.split('  +', line.strip())[0] for line in lines[1:-1]]
        self.assertEqual(lines[0].split(': ')[0], name)
        self.assertEqual(lines[-1].split(': ')[0], 'example')
        return lines[0].split(': ', 1)[1], forms, lines[-1].split(': ', 1)[1]

    def test_each_command_has_its_purpose_and_its_forms(self):
        commands = self.commands()
        self.assertTrue(set('help ps vlan l2 listmem phy rcload config'.split()) <= set(commands))
        for name, purpose in commands.items():
            told, forms, _ = self.told(name)
            self.assertEqual(told, purpose)
            self.assertTrue(forms and all(form.split()[0] == name for form in forms), forms)
            # More words than any form has, but for those that take any number of them.
            result, output = run(name + ' x' * 60)
            if result == q.CMD_USAGE:
                usage = re.findall('(?m)^(?:usage: |       )(.*)$', output)
                self.assertTrue(usage and set(usage) <= set(forms), output)

    def test_the_examples_run(self):
        q.diag_init()
        directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, directory)
        self.addCleanup(os.chdir, os.getcwd())
        self.addCleanup(q.sal_config_file_set, '', '')
        os.chdir(directory)
        with open('uplinks.soc', 'w') as commands:
            commands.write('echo $1\n')
        for name in sorted(self.commands()):
            example = self.told(name)[2]
            self.assertIn(name, re.findall('[a-z0-9]+', example))
            expected = q.CMD_EXIT if name == 'exit' else q.CMD_OK
            result, output = run(example)
            self.assertEqual(result, expected, (example, output))
            self.reset()

    def test_help_of_nothing_and_of_a_beginning(self):
        self.assertEqual(run('help nothing')[0], q.CMD_FAIL)
        self.assertEqual(run('help vl'), run('help vlan'))
        self.assertEqual(run('help u'), (q.CMD_FAIL, "help: 'u' may be unset, units\n"))


if __name__ == '__main__':
    unittest.main()
