"""The example that diagnoses a chip, run as a user would, on switches in better and worse condition."""
import os
import re
import shutil
import tempfile
import unittest

import QuorelApiNew as q
from test_example import EXAMPLES, run

# Runs the program, with what happens to the switch before, once it is started, and at the end.
AROUND = """
import runpy, sys
import QuorelApiNew as q
from recording import library
%s
start = q.system_init
def start_and_happen(unit):
    status = start(unit)
    %s
    return status
q.system_init = start_and_happen
sys.argv[:] = sys.argv[1:]
try:
    runpy.run_path(sys.argv[0], run_name='__main__')
finally:
    %s
"""
CONFIG, COMMANDS = [os.path.join(EXAMPLES, 'diagnose.' + end) for end in ('config', 'rc')]


def section(report, title):
    """The lines below a title."""
    lines = report.splitlines() + ['']
    below = [number for number, line in enumerate(lines) if line.startswith(title)][0] + 2
    return lines[below:lines.index('', below)]


def rows(report, title):
    """{first cell: the other cells} of a table."""
    return dict((line.split()[0], line.split()[1:]) for line in section(report, title)[1:])


class Diagnose(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)

    def file(self, name, text):
        path = os.path.join(self.directory, name)
        with open(path, 'w') as output:
            output.write(text)
        return path

    def diagnosed(self, code, *args, **around):
        """(report, standard error) of a run that has to end with that code."""
        code_around = AROUND % tuple(around.get(when, 'pass') for when in ('first', 'happens', 'at_end'))
        found, report, errors = run('diagnose.py', *args, flags=['-c', code_around] if around else [])
        self.assertEqual(found, code, '\n'.join([report] + errors))
        return report, errors

    def test_a_healthy_switch(self):
        path = os.path.join(self.directory, 'report')
        self.assertEqual(self.diagnosed(0, CONFIG, COMMANDS, '--output', path), ('', []))
        with open(path) as written:
            report = written.read()
        self.assertEqual(section(report, 'Findings'), ['none'])
        self.assertIn('port_init_speed_ce62=40000', section(report, 'Properties'))
        self.assertEqual(section(report, 'Commands')[-1], 'rcload: CMD_OK')
        info = q.bcm_info_t()
        self.assertEqual(q.bcm_info_get(0, info), 0)
        self.assertIn('device    %04x:%04x, revision %#x' % (info.vendor, info.device, info.revision),
                      section(report, 'Chip'))
        ports = rows(report, 'Ports')
        self.assertEqual(len(ports), 64)
        self.assertEqual([ports[port][1:5] for port in ('34', '60', '62', '63')],
                         [['1', 'up', '10000', 'done'], ['0', 'down', '100000', 'off'],
                          ['1', 'up', '100000', 'off'], ['1', 'up', '40000', 'off']])
        for port, cells in ports.items():
            number = q.soc_phy_id0reg_get(0, int(port)) << 16 | q.soc_phy_id1reg_get(0, int(port))
            self.assertIn(' '.join(cells[7:-3]), q.soc_phy_name_get(0, int(port)))
            self.assertEqual(cells[-3:], ['%08x' % number, hex(q.soc_phy_addr_of_port(0, int(port))),
                                          hex(q.soc_phy_addr_int_of_port(0, int(port)))])
        self.assertEqual(section(report, 'Egress')[1:], ['0     1-32   0-31', '1     33-64  0-31'])
        self.assertEqual(rows(report, 'Address')['02:00:5e:00:64:01'], ['100', 'port', '63', 'static'])

    def test_fields_of_all_widths_are_inverted_and_restored(self):
        settings = [('CMIC_LED_CTRL', 'REFRESH_RATE', 0x5a, 8),
                    ('IHP_MY_MAC_ADDRESS[0][7]', 'ADDRESS', 0x25e001122, 48),
                    ('IHB_PROGRAM_SELECT_KEY[0][7]', 'KEY_MASK', 0x800000000001, 48)]
        places = ['CMIC_LED_CTRL', 'IHP_MY_MAC_ADDRESS.0[7]', 'IHB_PROGRAM_SELECT_KEY.0[7]']
        poke = '; '.join('setreg %s %s=%#x' % (place, row[1], row[2]) for place, row in zip(places, settings))
        show = 'print q.sdc(0, %r)' % '; '.join('getreg ' + place for place in places)
        report, _ = self.diagnosed(0, CONFIG, happens='q.sdc(0, %r); %s' % (poke, show), at_end=show)
        shown = report[:report.index('Unit 0')].strip()
        self.assertIn('KEY_MASK                 0x800000000001', shown)
        self.assertEqual(report.count(shown), 2)
        changes = rows(report, 'Fields')
        for name, field, value, length in settings:
            inverse = value ^ 2 ** length - 1
            self.assertEqual(changes[name], [field] + ['%#x' % number for number in (value, inverse, value)])
        accesses = [line.split()[2:] for line in report.splitlines() if line.startswith('unit 0 ')]
        self.assertEqual([access[0] for access in accesses], ['read', 'write', 'read', 'write', 'read'] * 3)
        self.assertEqual([access[-1] for access in accesses[10:12]],
                         ['0x%032x' % (value << 64) for value in (0x800000000001, 0x7ffffffffffe)])
        in_use = 'q.sdc(0, "setreg IHB_PROGRAM_SELECT_KEY.0[7] VALID=1")'
        report, _ = self.diagnosed(0, CONFIG, happens=in_use)
        self.assertIn('IHB_PROGRAM_SELECT_KEY[0][7] is in use and left alone', report)
        self.assertNotIn('IHB_PROGRAM_SELECT_KEY[7].0 = ', report)

    def test_cables(self):
        happens = ('library.sim_cable_plug(0, 5, 0, 10); library.sim_cable_plug(0, 34, 0, 10); '
                   'library.sim_cable_pair_set(0, 36, 3, %d, 7)' % q.SOC_PHY_CABLE_STATE_OPEN)
        gateway = self.file('rc', 'l2 add 02:00:00:00:00:05 1 5\nl2 add 02:00:00:00:00:06 1 6\n')
        report, _ = self.diagnosed(1, CONFIG, gateway, '--loopback', '34', happens=happens)
        self.assertEqual(section(report, 'Findings'), [
            '2 of 64 ports are down: 5,34', 'port 36 has negotiated 100 Mbit/s and could do 10000',
            'port 34 has a link in loopback: look for the cable and the other end',
            '1 addresses are behind ports that are down: 5'])
        ports = rows(report, 'Ports')
        self.assertEqual([ports[port][2:7] for port in ('5', '34', '35', '36')],
                         [['down', '100000', 'off', '0', '1'], ['down', '0', 'unfinished', '0', '1'],
                          ['up', '10000', 'done', '0', '0'], ['up', '100', 'done', '0', '0']])
        loopback = rows(report, 'Loopback')
        self.assertEqual([loopback[state][:2] for state in ('before', 'meanwhile', 'after')],
                         [['0', '0'], ['1', '1'], ['0', '0']])
        report, _ = self.diagnosed(1, CONFIG, '--loopback', '60')  # which is disabled
        self.assertEqual(section(report, 'Findings'),
                         ['port 60 has no link even in loopback: BCM_E_TIMEOUT'])
        self.assertEqual([cells[0] for _, cells in sorted(rows(report, 'Loopback').items())], ['0', '0', '1'])
        report, _ = self.diagnosed(0, CONFIG, '--ports', '6-7,35', happens=happens)
        self.assertEqual(sorted(rows(report, 'Ports')), ['35', '6', '7'])

    def test_what_commands_break_is_found(self):
        for command, finding in (
                ('setreg CMIC_SOFT_RESET DATA_PATH_RESET=1',
                 'CMIC_SOFT_RESET: DATA_PATH_RESET is 0x1'),
                ('setreg CCS_BLOCK_SOFT_RESET BLOCK_MASK=0x8000000000000000',
                 'CCS_BLOCK_SOFT_RESET: BLOCK_MASK is 0x8000000000000000'),
                ('modify EGQ_TM_PORT_TO_INTERFACE.1 3 VALID=0', 'ports without an egress interface: 35')):
            report, _ = self.diagnosed(1, CONFIG, self.file('rc', command))
            self.assertEqual(section(report, 'Findings'), [finding])
        wide = self.file('rc', 'setreg IHP_VRRP_MAC_MATCH.1[2] ADDRESS=0x5e000101 '
                         'ADDRESS_MASK=0xffffffffffff')
        report, _ = self.diagnosed(0, CONFIG, wide)
        self.assertEqual(rows(report, 'Registers')['IHP_VRRP_MAC_MATCH[1][2]'], [
            '0xffffffffffff00005e000101', 'ADDRESS=0x5e000101', 'ADDRESS_MASK=0xffffffffffff'])

    def test_a_command_file_that_fails(self):
        path = self.file("it's $1; a file", 'echo first\nvlan create 1\necho never\n')
        report, _ = self.diagnosed(1, CONFIG, path, '--ports', '1')
        self.assertEqual(section(report, 'Commands'), [
            'first', 'echo: CMD_OK', 'vlan: create 1: BCM_E_EXISTS', 'vlan: CMD_FAIL', path + ':2: CMD_FAIL',
            'rcload: CMD_FAIL'])
        finding = 'command file %s was not carried out to its end'
        self.assertEqual(section(report, 'Findings'), [finding % path])

    def test_a_command_file_that_succeeds_in_its_own_way(self):
        for commands in ('echo one & echo two', 'set report_status off\necho quiet', 'echo a\nexit\nnothing',
                         'set report_time on\necho slow', 'set rcerror off\nvlan create 1'):
            report, _ = self.diagnosed(0, CONFIG, self.file('rc', commands + '\n'), '--ports', '1')
            self.assertEqual(section(report, 'Findings'), ['none'], report)
            self.assertNotIn('carried out', report)

    def test_what_cannot_be_done_is_said(self):
        self.addCleanup(re.purge)  # its cache would keep the patterns with names of files
        damaged = self.file('damaged', 'l2_age_timer=5\nno property\n')
        impossible = self.file('impossible', 'port_init_speed_ce5=17\n')
        for args, reason in (([damaged], 'property file %s is damaged' % re.escape(damaged)),
                             ([impossible], 'unit 0 does not start: a property has a value that cannot be'),
                             ([CONFIG, '--unit', '16'], r'system_init\(16\) returned BCM_E_UNIT \(-3\)'),
                             ([CONFIG, '--unit', '1', '--ports', '65'], "the unit has ports 1-64, not '65'"),
                             ([CONFIG, '--output', '/dev/full'], 'No space left')):
            self.assertRefused(reason, args)
        _, errors = self.diagnosed(2, damaged)
        self.assertEqual(errors[0], damaged + ':2: not a property')

    def assertRefused(self, reason, args, **around):
        report, errors = self.diagnosed(2, *args, **around)
        self.assertRegexpMatches(errors[-1], '^diagnose(.py: error)?: .*' + reason)
        self.assertNotIn('Traceback', ''.join(errors))
        return report

    def test_arguments_are_judged_before_the_unit_is_reset(self):
        missing = os.path.join(self.directory, 'missing')
        for args, reason in ((['no/such/file'], "No such file or directory: 'no/such/file'"),
                             ([self.directory], 'Is a directory'),
                             ([CONFIG, missing], 'No such file or directory: .*missing'),
                             ([CONFIG, self.directory], 'Is a directory'),
                             ([CONFIG, '--unit', '99999999999'], 'there can be no unit 99999999999'),
                             ([CONFIG, '--ports', '1-65'], "the unit has ports 1-64, not '1-65'"),
                             ([CONFIG, '--ports', '1-'], "'1-' are no ports"),
                             ([CONFIG, '--ports', '3-1'], "'3-1' is no range"),
                             ([CONFIG, '--loopback', '0'], 'there is no port 0'),
                             ([CONFIG, '--output', self.directory], 'Is a directory')):
            report = self.assertRefused(reason, args, first='q.sdc(0, "vlan create 77")',
                                        happens='print "reset"', at_end='print q.sdc(0, "vlan")')
            self.assertNotIn('reset', report)
            self.assertIn('vlan 77:', report)

    def test_a_report_stays_until_there_is_a_better_one(self):
        path = self.file('report', 'of yesterday\n')
        new = os.path.join(self.directory, 'new')
        for output in (path, new):
            self.assertRefused('BCM_E_UNIT', [CONFIG, '--unit', '16', '--output', output])
            self.assertRefused("not '65'", [CONFIG, '--ports', '65', '--output', output])
        self.assertFalse(os.path.exists(new))
        with open(path) as report:
            self.assertEqual(report.read(), 'of yesterday\n')
        self.diagnosed(0, CONFIG, '--output', path)
        with open(path) as report:
            self.assertEqual(section(report.read(), 'Findings'), ['none'])

    def test_it_needs_no_file_beside_it(self):
        alone = os.path.join(self.directory, 'diagnose.py')
        shutil.copy(os.path.join(EXAMPLES, 'diagnose.py'), alone)
        code, report, errors = run(alone, CONFIG, COMMANDS)
        self.assertEqual((code, errors, section(report, 'Findings')), (0, [], ['none']))

    def test_units_that_it_attached_are_detached_again(self):
        for first, units in (('pass', 'unit 0: attached\n'), ('q.bcm_detach(0)', '')):
            report, _ = self.diagnosed(0, CONFIG, first=first,
                                       at_end='print repr(q.sdc(0, "units"))')
            self.assertEqual(report.splitlines()[-1], repr(units))


if __name__ == '__main__':
    unittest.main()
