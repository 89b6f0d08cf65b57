"""The example programs, run as a user would."""
import collections
import os
import re
import subprocess
import sys
import tempfile
import unittest

EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'examples')


# Runs the program and says what the switch then has.
AND_WHAT_CAME_OF_IT = """
import runpy, sys
import QuorelApiNew as q
sys.argv[:] = sys.argv[1:]
try:
    runpy.run_path(sys.argv[0], run_name='__main__')
finally:
    print '%d VLANs' % q.sdc(0, 'vlan').count('vlan ')
    print '%d addresses' % len(q.getHwMacTable(0))
"""


def run(program, *args, **options):
    """(exit code, standard output, standard error's lines)"""
    command = [sys.executable] + options.get('flags', []) + [os.path.join(EXAMPLES, program)] + list(args)
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    output, errors = process.communicate()
    # A debug interpreter ends with a line about its references.
    return process.returncode, output, [line for line in errors.splitlines() if not line.startswith('[')]


class Counts(object):
    """What a report has to say of a dump, worked out from its text alone."""

    LINE = re.compile(r'((?:[0-9a-f]{2}:){5}[0-9a-f]{2}) dev (br0|swp[0-9]{1,2}) vlan ([0-9]{2}) (.*)$')

    def __init__(self, text):
        self.entries = {}
        for line in text.splitlines():
            match = self.LINE.match(line)
            if match:
                mac, device, vlan, words = match.groups()
                kind = 0 if re.search(r'\b(static|permanent)\b', words) else 1
                port = 'cpu' if 'permanent' in words else device
                self.entries.setdefault((mac, int(vlan)), (port, kind))

    def vlans(self):
        """{VLAN: [static, dynamic, members, untagged]}"""
        vlans_of = collections.defaultdict(set)
        rows = collections.defaultdict(lambda: [0, 0, 1, 0])  # the CPU is a member of all
        for (_, vlan), (port, kind) in self.entries.items():
            rows[vlan][kind] += 1
            if port != 'cpu':
                vlans_of[port].add(vlan)
        for vlans in vlans_of.values():
            for vlan in vlans:
                rows[vlan][2] += 1
                rows[vlan][3] += len(vlans) == 1
        return dict(rows)

    def ports(self):
        """{port: [static, dynamic]}"""
        cells = collections.defaultdict(lambda: [0, 0])
        for port, kind in self.entries.values():
            cells[port][kind] += 1
        return dict(cells)


def reported(output):
    """The same two tables as a report prints them."""
    vlans = dict((int(row.split()[0]), [int(cell) for cell in row.split()[1:]])
                 for row in re.findall(r'(?m)^\d+(?: +\d+){4}$', output))
    ports = dict((port, [int(static), int(dynamic)])
                 for port, static, dynamic in re.findall(r'(swp\d+|cpu) +(\d+)\+(\d+)', output))
    return vlans, ports


class Example(unittest.TestCase):
    def setUp(self):
        code, self.dump, errors = run('make_fdb_dump.py')
        self.assertEqual((code, errors), (0, []))
        self.path = self.written(self.dump)

    def written(self, text):
        handle, path = tempfile.mkstemp('.txt')
        self.addCleanup(os.remove, path)
        with os.fdopen(handle, 'w') as dump:
            dump.write(text)
        return path

    def test_the_dump_is_the_same_at_every_run(self):
        self.assertEqual(run('make_fdb_dump.py', flags=['-R'])[1], self.dump)

    def test_the_report_has_the_counts_of_the_dump(self):
        counts = Counts(self.dump)
        code, output, errors = run('load_fdb.py', self.path)
        self.assertEqual(code, 0, errors)
        self.assertGreater(len(counts.entries), 400)
        self.assertEqual(reported(output), (counts.vlans(), counts.ports()))
        self.assertEqual(output.splitlines()[0], '%s: %d lines, 7 bad, %d addresses' % (
            self.path, self.dump.count('\n'), len(counts.entries)))
        self.assertIn('\n%d addresses in the hardware, 0 differences' % len(counts.entries), output)
        lines = self.dump.splitlines()
        self.assertEqual(len(errors), 7)
        for error in errors:  # each names its line and quotes what is wrong there
            path, number, quoted = re.match(r"(.*):(\d+): .*'(.*)'", error).groups()
            self.assertEqual(path, self.path)
            self.assertIn(quoted, lines[int(number) - 1])
            self.assertIsNone(Counts.LINE.match(lines[int(number) - 1]))

    def test_a_port_goes_down_and_an_address_is_forgotten(self):
        for port in ('swp7', 'swp38', 'swp50'):
            counts = Counts(self.dump)
            gone = [key for key, (where, kind) in counts.entries.items() if where == port and kind == 1]
            self.assertEqual(bool(gone), port != 'swp38')  # which has static addresses only
            for key in gone + [('02:00:5e:0a:08:01', 10)]:
                del counts.entries[key]
            code, output, errors = run('load_fdb.py', '--down', port, '--forget', '02:00:5E:0A:08:01', '10',
                                       self.path)
            self.assertEqual(code, 0, errors)
            self.assertIn('%s is down: %d dynamic addresses deleted\n' % (port, len(gone)), output)
            self.assertEqual(reported(output)[1], counts.ports())
            self.assertIn('\n%d addresses in the hardware, 0 diff' % len(counts.entries), output)

    def test_bad_lines_are_told_by_file_and_line_and_skipped(self):
        path = self.written('\n'.join([
            '02:00:00:00:00:01 dev swp1 vlan 7 master br0', '', '   ',
            '02:00:00:00:00:01 dev swp2 vlan 7 master br0', '02:00:00:00:00:02 vlan 7',
            '02:00:00:00:00:03 dev swp0 vlan 7', '02:00:00:00:00:04 dev swp65 vlan 7',
            '02:00:00:00:00:05 dev swp64 vlan 0', '02:00:00:00:00:06 dev',
            '02-00-00-00-00-07 dev swp1 vlan 7', '02:00:00:00:00:FF dev swp64 vlan 4094 static']))
        code, output, errors = run('load_fdb.py', path)
        self.assertEqual(code, 0)
        self.assertEqual(errors, [path + ':' + text for text in [
            '4: 02:00:00:00:00:01 is on two ports', '5: names no interface',
            "6: the switch has no interface 'swp0'", "7: the switch has no interface 'swp65'",
            "8: '0' is not a VLAN", "9: ends after 'dev'", "10: '02-00-00-00-00-07' is not a MAC address"]])
        self.assertEqual(reported(output), ({7: [0, 1, 2, 1], 4094: [1, 0, 2, 1]},
                                            {'swp1': [0, 1], 'swp64': [1, 0]}))

    def test_what_cannot_be_done_ends_with_a_reason(self):
        for args, reason in [
                (['no/such/file'], 'No such file'),
                (['--forget', '02:00:00:00:00:01', '10', self.path], 'bcm_l2_addr_delete.*BCM_E_NOT_FOUND')]:
            code, _, errors = run('load_fdb.py', *args)
            self.assertEqual(code, 1, args)
            self.assertRegexpMatches(errors[-1], '^load_fdb: .*' + reason)

    def test_an_option_is_refused_before_the_switch_changes(self):
        for args, reason in [(['--down', 'swp65'], "no interface 'swp65'"),
                             (['--forget', '02:00', '10'], "'02:00' is not a MAC address"),
                             (['--forget', '02:00:00:00:00:01', '4095'], "'4095' is not a VLAN")]:
            code, output, errors = run('load_fdb.py', self.path, *args, flags=['-c', AND_WHAT_CAME_OF_IT])
            self.assertEqual(code, 1, args)
            self.assertRegexpMatches(errors[-1], '^load_fdb: .*' + reason)
            self.assertEqual(output.splitlines()[-2:], ['1 VLANs', '0 addresses'])


if __name__ == '__main__':
    unittest.main()
