"""The examples that watch and test a switch, run as a user would; and what they work out."""
import os
import re
import subprocess
import sys
import unittest

EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'examples')
sys.path.append(EXAMPLES)

import counters
import QuorelApiNew as q
import watch_moves

# Changes the switch of the process, then runs a program in it.
AFTER = """
import os, runpy, sys
import QuorelApiNew as q
sys.argv[:] = sys.argv[1:]
sys.path.insert(0, os.path.dirname(sys.argv[0]))
%s
runpy.run_path(sys.argv[0], run_name='__main__')
"""


def run(program, *args, **options):
    """(exit code, output, errors)"""
    command = [sys.executable, '-c', AFTER % options.get('first', ''), os.path.join(EXAMPLES, program)] + list(args)
    environment = dict(os.environ, **options.get('environment', {}))
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment)
    output, errors = process.communicate()
    # A debug interpreter ends with a line about its references.
    return process.returncode, output, ''.join(line for line in errors.splitlines(True) if not line.startswith('['))


class Counters(unittest.TestCase):
    def show(self, *args):
        code, output, errors = run('counters.py', *args, environment={'LC_ALL': 'C'})
        self.assertEqual((code, errors), (0, ''))
        return [[re.split(' +', line.strip()) for line in block.splitlines()[1:]]
                for block in output.strip().split('\n\n')]

    def test_totals_are_those_of_the_packets(self):
        blocks = self.show('1,3', '--demo', '--rounds', '3', '--interval', '0.01', '--counters',
                           'snmpIfInOctets,snmpIfInN')
        rows = dict(((row[0], row[1]), row[2:]) for row in blocks[-1])
        self.assertEqual(sorted(rows), [(port, name) for port in '13' for name in ('snmpIfInNUcastPkts', 'snmpIfInOctets')])
        for port in '13':
            packets, octets = [rows[port, name] for name in ('snmpIfInNUcastPkts', 'snmpIfInOctets')]
            # Each is a broadcast of 64 bytes.
            self.assertEqual(int(octets[0].replace(',', '')), 64 * int(packets[0]))
            self.assertGreater(int(packets[0]), 20)
            self.assertEqual((len(packets[2]), octets[2]), (3, packets[2]))
        self.assertEqual(len(blocks), 3)
        # Nothing comes, nothing counts.
        for row in self.show('5', '--rounds', '2', '--interval', '0.01')[-1]:
            self.assertEqual((row[2:4], row[4]), (['0', '0'], '__'))

    def test_what_cannot_be_shown(self):
        for args, text in [(['70'], 'BCM_E_PORT'), (['x'], 'BCM_E_PARAM'), (['1', '--unit', '9'], 'BCM_E_UNIT'),
                           (['1', '--counters', 'snmpNothing'], "no counter begins with 'snmpNothing'")]:
            code, output, errors = run('counters.py', *args)
            self.assertEqual((code != 0, output), (True, ''))
            self.assertIn(text, errors)

    def test_a_course_is_drawn_to_scale(self):
        self.assertEqual(counters.sparkline([0, 1, 50, 51, 100], '_.-=#'), '_.-=#')
        self.assertEqual(counters.sparkline([0, 0], '_.'), '__')
        self.assertEqual(counters.sparkline([0.1, 0.7], '_.-'), '.-')

    def test_a_counter_that_is_cleared_begins_anew(self):
        series = counters.Series(100)
        series.update(300, 2.0)
        series.update(50, 2.0)
        self.assertEqual((list(series.rates), series.total), ([100, 25], 50))

    def test_numbers_are_short(self):
        self.assertEqual([counters.short(number) for number in (0, 999, 1000, 12345, 7.25, 2.5e9, 4e15)],
                         ['0', '999', '1k', '12.3k', '7.2', '2.5G', '4000T'])


class Moves(unittest.TestCase):
    def setUp(self):
        self.now, self.told = 1000.0, []
        self.watcher = watch_moves.Watcher(3, 10.0, lambda: self.now, self.told.append)

    def note(self, port, operation, mac='02:00:5e:00:00:01', flags=0):
        address = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(address, mac, 7)
        address.port, address.flags, address.tgid = port, flags, port
        self.watcher.note(0, address, operation, None)
        return len(self.told)

    def test_only_moves_are_told(self):
        learnt, moved, added = q.BCM_L2_CALLBACK_LEARN_EVENT, q.BCM_L2_CALLBACK_MOVE_EVENT, q.BCM_L2_CALLBACK_ADD
        self.assertEqual([self.note(1, learnt), self.note(1, added), self.note(2, moved)], [0, 0, 1])
        self.assertIn('02:00:5e:00:00:01 in VLAN 7: port 1 -> port 2 (BCM_L2_CALLBACK_MOVE_EVENT)', self.told[0])
        # Some switches delete and learn where others move; and what has aged out may come back anywhere.
        self.assertEqual([self.note(2, q.BCM_L2_CALLBACK_DELETE), self.note(3, learnt)], [1, 2])
        self.assertEqual([self.note(3, q.BCM_L2_CALLBACK_AGE_EVENT), self.note(4, learnt)], [2, 2])
        self.assertEqual(self.note(4, moved, flags=q.BCM_L2_TRUNK_MEMBER), 3)
        self.assertIn('port 4 -> trunk 4', self.told[2])

    def test_an_address_flaps_that_moves_often_within_the_window(self):
        for seconds, port in enumerate([1, 2, 1]):
            self.now += seconds
            self.note(port, q.BCM_L2_CALLBACK_MOVE_EVENT)
        self.assertEqual(self.watcher.flapping, set())
        self.now += 100
        self.note(2, q.BCM_L2_CALLBACK_MOVE_EVENT)
        self.assertEqual(self.watcher.flapping, set())
        self.now += 1
        self.note(1, q.BCM_L2_CALLBACK_MOVE_EVENT)
        self.now += 9
        self.note(2, q.BCM_L2_CALLBACK_MOVE_EVENT)
        self.assertEqual(self.watcher.flapping, set([('02:00:5e:00:00:01', 7)]))
        self.assertTrue(self.told[-1].endswith('FLAPPING: 3 moves in 10.0 s'), self.told)

    def test_the_program(self):
        code, output, errors = run('watch_moves.py', '--demo', '--seconds', '0.5', '--pause', '0.01', '--limit', '4')
        self.assertEqual((code, errors), (1, ''))
        lines = output.splitlines()
        self.assertEqual(lines[0], 'watching, 0 addresses known')
        self.assertIn('port 1 -> port 2 (BCM_L2_CALLBACK_MOVE_EVENT)', lines[1])
        self.assertIn('FLAPPING', lines[4])
        self.assertNotIn('02:00:5e:00:00:03', output)
        self.assertEqual(run('watch_moves.py', '--seconds', '0.01', '--pause', '0.01')[0], 0)


class Packets(unittest.TestCase):
    def test_a_good_configuration_passes_and_a_bad_one_does_not(self):
        self.assertEqual(run('test_packets.py')[0], 0)
        code, _, errors = run('test_packets.py', first='q.bcm_port_vlan_member_set = lambda *_: 0')
        self.assertNotEqual(code, 0)
        self.assertIn('each of the ports 3-4 sends what was not expected:', errors)


class Lab(unittest.TestCase):
    def test_a_good_switch_passes_and_a_bad_one_does_not(self):
        for first, ports, failing in [
                ('', '1-64', []),
                ('q.bcm_port_enable_set(0, 2, 0)', '1,2', ['port 2 has no link']),
                ('q.bcm_port_enable_set(0, 2, 0)', '1,3', []),
                ('q.bcm_port_speed_set(0, 40, 100)', '40', ['port 40']),
                ('from quorel import sim; sim.Switch().arrive(3, b"too short to be a frame".ljust(36))', '3',
                 ['snmpIfInErrors of port 3']),
                ('q.bcm_l2_addr_freeze(0)', '1', []),
                ('q.bcm_vlan_create(0, 4000)', '1', ['bcm_vlan_create(0, 4000) returned BCM_E_EXISTS'])]:
            code, _, errors = run('test_lab.py', first=first,
                                  environment={'LAB_PORTS': ports})
            self.assertEqual(code != 0, bool(failing), errors)
            for text in failing:
                self.assertIn(text, errors)


if __name__ == '__main__':
    unittest.main()
