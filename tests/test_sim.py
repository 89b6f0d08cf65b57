"""The door to the simulated switch: packets, cables, and test cases with readable failures."""
import array
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

import QuorelApiNew as q
import _quorel_sim
from quorel import StatusError, checked, sim

A, B, C = ['02:00:5e:00:00:0%d' % number for number in (1, 2, 3)]


class SwitchDoor(unittest.TestCase):
    def setUp(self):
        self.switch = sim.Switch()
        self.switch.fresh()
        self.addCleanup(self.switch.fresh)

    def test_what_left_is_told_in_order(self):
        frame = sim.ethernet(B, A)
        self.assertEqual(self.switch.send(1, frame), [(port, frame) for port in range(2, 65)])
        self.assertEqual(self.switch.send(2, sim.ethernet(A, B)), [(1, sim.ethernet(A, B))])
        self.assertEqual(self.switch.send(1, frame), [(2, frame)])

    def test_frames_are_whatever_has_bytes(self):
        self.switch.send(2, sim.ethernet(A, B))
        frame = sim.ethernet(B, A)
        for kind in (bytearray, buffer, memoryview, lambda octets: array.array('B', octets)):
            self.assertEqual(self.switch.send(1, kind(frame)), [(2, frame)])
        for wrong in (u'text', 5, None, [frame]):
            with self.assertRaises(TypeError):
                self.switch.send(1, wrong)
        resized = bytearray(frame)
        self.switch.send(1, resized)
        resized.extend(b'more')  # nobody holds its memory any more

    def test_what_is_refused_raises(self):
        frame = sim.ethernet(B, A)
        for unit, port, octets, status in ((0, 0, frame, 'BCM_E_PORT'), (0, 99, frame, 'BCM_E_PORT'),
                                           (5, 1, frame, 'BCM_E_UNIT'), (0, 1, frame[:13], 'BCM_E_PARAM'),
                                           (0, 1, b'', 'BCM_E_PARAM'), (0, 1, frame * 300, 'BCM_E_PARAM')):
            with self.assertRaises(StatusError) as raised:
                sim.Switch(unit).send(port, octets)
            self.assertEqual(raised.exception.name, status)

    def test_cables(self):
        self.switch.send(2, sim.ethernet(A, B))
        frame = sim.ethernet(B, A)
        self.switch.pull(2)
        self.assertEqual(self.switch.send(1, frame), [])
        with self.assertRaises(StatusError) as raised:
            self.switch.send(2, frame)
        self.assertEqual(raised.exception.name, 'BCM_E_DISABLED')
        self.switch.plug(2)
        self.assertEqual(self.switch.send(1, frame), [(2, frame)])
        self.switch.flap(40)
        self.assertEqual(len(self.switch.send(40, sim.ethernet(C, A))), 63)
        with self.assertRaises(StatusError):
            self.switch.plug(99)

    def test_fresh(self):
        checked(q.bcm_vlan_create, 0, 10)
        self.switch.send(1, sim.ethernet(B, A))
        self.switch.pull(7)
        self.switch.fresh()
        self.assertEqual(q.getHwMacTable(0), [])
        self.assertEqual(q.bcm_vlan_create(0, 10), q.BCM_E_NONE)
        self.assertEqual(len(self.switch.send(7, sim.ethernet(B, A))), 63)
        self.assertEqual(self.switch.statistics(7)['snmpIfInUcastPkts'], 1)
        other = sim.Switch(3)
        other.fresh()
        self.assertEqual(len(other.send(1, sim.ethernet(B, A))), 63)
        checked(q.bcm_detach, 3)

    def test_watchers(self):
        seen = []
        with self.switch.watched(lambda port, frame: seen.append((port, frame))):
            self.switch.arrive(1, sim.ethernet(B, A))
        self.switch.arrive(2, sim.ethernet(A, B))
        self.assertEqual(seen, [(port, sim.ethernet(B, A)) for port in range(2, 65)])
        with self.switch.watched(lambda port, frame: seen.append('outer')):
            with self.switch.watched(lambda port, frame: seen.append('inner')):
                self.switch.arrive(2, sim.ethernet(A, B))
            self.switch.arrive(1, sim.ethernet(B, A))
        self.assertEqual(seen[63:], ['outer', 'inner', 'outer'])

    def test_what_a_watcher_raises_comes_out(self):
        def fails(port, frame):
            seen.append(port)
            raise KeyError(port)
        seen = []
        with self.switch.watched(fails):
            with self.assertRaises(KeyError):
                self.switch.arrive(1, sim.ethernet(B, A))
        self.assertEqual(seen, [2])
        for wrong in (5, 'text'):
            with self.assertRaises(TypeError):
                _quorel_sim.sim_packet_watch(wrong)

    def test_a_watcher_lives_as_long_as_it_is_called(self):
        class Watcher(object):
            def __call__(self, *arguments):
                seen.append(arguments)

            def __del__(self):
                gone.append(True)

        seen, gone = [], []
        self.addCleanup(_quorel_sim.sim_packet_watch, None)
        _quorel_sim.sim_packet_watch(Watcher())
        self.switch.arrive(1, sim.ethernet(B, A))
        self.assertEqual((len(seen), gone), (63, []))
        _quorel_sim.sim_packet_watch(None)
        self.assertEqual(gone, [True])

    def test_time_passes_when_it_is_told_to(self):
        checked(q.bcm_l2_age_timer_set, 0, 300)
        self.switch.send(1, sim.ethernet(B, A))
        start = sim.now()
        sim.advance(300.5)
        self.assertEqual(len(q.getHwMacTable(0)), 1)
        sim.advance(300)
        self.assertEqual(q.getHwMacTable(0), [])
        self.assertAlmostEqual(sim.now() - start, 600.5)
        with self.assertRaises(StatusError):
            sim.advance(18446744000)

    def test_cables_join_switches(self):
        other = sim.Switch(1)
        other.fresh()
        self.addCleanup(q.bcm_detach, 1)
        self.switch.join(10, other, 20)
        seen = []
        with other.watched(lambda port, frame: seen.append(port)):
            self.assertEqual(len(self.switch.send(1, sim.ethernet(B, A))), 63)
        self.assertEqual(len(seen), 63)
        self.assertNotIn(20, seen)
        self.assertEqual(other.send(2, sim.ethernet(A, B)), [(20, sim.ethernet(A, B))])
        self.switch.flap(10, 2)
        self.switch.pull(10)
        with self.assertRaises(StatusError):
            other.send(20, sim.ethernet(A, B))

    def test_a_way_is_told(self):
        text = self.switch.trace(1, sim.ethernet(B, A, vlan=9))
        self.assertIn('no such VLAN', text)
        self.assertEqual(self.switch.drops(1, sim.ethernet(B, A)), [])

    def test_captures_and_replay(self):
        directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, directory)
        file = os.path.join(directory, 'frames.pcapng')
        with self.switch.captured(file, [1, 2]):
            self.switch.send(1, sim.ethernet(B, A))
        self.switch.fresh()
        self.assertEqual(self.switch.replay(file, 5), (2, 0))
        self.assertEqual(self.switch.statistics(1)['snmpIfInUcastPkts'], 1)
        for function, argument, words in ((self.switch.replay, __file__, ''),
                                          (self.switch.replay, file + '.gone', 'gone')):
            with self.assertRaises(sim.CaptureError) as raised:
                function(argument, 1)
            self.assertIn(words, str(raised.exception))
        with self.assertRaises(sim.CaptureError):
            with self.switch.captured(directory):
                pass

    def test_without_a_simulated_switch(self):
        code = 'import sys; sys.modules["_quorel_sim"] = None\ntry:\n    import quorel.sim\n' \
               'except ImportError as error:\n    print(error)'
        self.assertIn('quorel.sim is for the simulated switch, which is not here',
                      subprocess.check_output([sys.executable, '-c', code]))


class Forwarding(sim.TestCase):
    """What sim.TestCase offers, used and failing."""

    def setUp(self):
        sim.TestCase.setUp(self)
        self.addCleanup(self.switch.fresh)
        for port, mac in ((1, A), (2, B)):
            self.switch.send(port, sim.ethernet(C, mac))
        self.frame = sim.ethernet(B, A, sim.udp4('10.0.0.1', '10.0.0.2', data=b'hello'))

    def failure(self, function, *arguments):
        with self.assertRaises(AssertionError) as raised:
            function(*arguments)
        return str(raised.exception)

    def test_sends(self):
        self.assertSends(1, self.frame, {2: self.frame})
        self.assertSends(1, bytearray(self.frame), {2: [self.frame]})
        checked(q.bcm_vlan_create, 0, 7)
        checked(q.bcm_vlan_port_add, 0, 7, [1, 2, 3], [3])
        self.assertSends(1, sim.tagged(self.frame, 7, 5), {2: sim.tagged(self.frame, 7, 5), 3: self.frame})

    def test_a_wrong_frame_is_told_field_by_field(self):
        text = self.failure(self.assertSends, 1, self.frame, {2: sim.tagged(self.frame, 7), 5: self.frame})
        for line in ('of this frame, which arrives at port 1:', 'port 2 sends another frame (- expected, + sent):',
                     '    - eth.type                 0x8100', '    + eth.type                 0x0800',
                     '    - vlan.id                  7', '      ip.dst                   10.0.0.2',
                     'port 5 sends nothing where this was expected:', 'its way:'):
            self.assertIn(line, text.splitlines())
        self.assertIn('each of the ports 2-64 sends what was not expected:',
                      self.failure(self.assertSends, 1, sim.ethernet(C, A), {}))

    def test_drops(self):
        self.assertDropped(1, sim.tagged(self.frame, 9))
        self.assertDropped(1, sim.tagged(self.frame, 9), 'vlan_unknown')
        self.assertIn("it was not dropped for 'tree_state', but for: vlan_unknown",
                      self.failure(self.assertDropped, 1, sim.tagged(self.frame, 9), 'tree_state'))
        self.assertIn('port 2 sends what was not expected:', self.failure(self.assertDropped, 1, self.frame))
        checked(q.bcm_port_discard_set, 0, 1, q.BCM_PORT_DISCARD_UNTAG)
        self.assertDropped(1, self.frame, 'tag_type')
        checked(q.bcm_port_frame_max_set, 0, 3, 64)
        self.assertDropped(3, self.frame.ljust(61, b'\0'), 'too_long')
        self.assertDropped(4, self.frame[:40], 'undersize')
        checked(q.bcm_port_stp_set, 0, 4, q.BCM_STG_STP_BLOCK)
        self.assertDropped(4, self.frame, 'tree_state')
        self.assertDropped(2, sim.ethernet(B, C), 'no_destination')
        self.assertEqual(self.switch.drops(1, sim.tagged(self.frame, 9)), [(1, 'vlan_unknown')])

    def test_counts(self):
        counts = dict((name, self.dropped_counts()[name]) for name in self.dropped_counts())
        self.assertCounts(1, sim.tagged(self.frame, 9), {1: counts})
        self.assertCounts(1, sim.tagged(self.frame, 9), {1: all})
        del counts['snmpBcmRxVlanUnknownDiscards']
        text = self.failure(self.assertCounts, 1, sim.tagged(self.frame, 9), {1: counts, 2: {'snmpIfOutOctets': 5}})
        self.assertIn('port 1: snmpBcmRxVlanUnknownDiscards moved by 1, not by 0', text)
        self.assertIn('port 2: snmpIfOutOctets moved by 0, not by 5', text)

    def dropped_counts(self):
        names = {1: ['BcmReceivedPkts65to127Octets', 'BcmRxVlanTagFrame', 'BcmRxVlanUnknownDiscards',
                     'Dot1dTpHCPortInDiscards', 'Dot1dTpHCPortInFrames', 'Dot1dTpPortInDiscards',
                     'Dot1dTpPortInFrames', 'EtherStatsPkts', 'EtherStatsPkts65to127Octets', 'EtherStatsRXNoErrors',
                     'IfHCInUcastPkts', 'IfInDiscards', 'IfInUcastPkts'],
                 68: ['EtherStatsOctets', 'IfHCInOctets', 'IfInOctets']}
        return dict(('snmp' + name, by) for by, of in names.items() for name in of)


class OwnModule(unittest.TestCase):
    """The second module that the generator makes."""

    def test_its_names(self):
        self.assertEqual(_quorel_sim.__name__, '_quorel_sim')
        self.assertEqual(_quorel_sim._Proxy.__module__, '_quorel_sim')
        self.assertEqual(_quorel_sim.sim_packet_watch.__doc__, 'sim_packet_watch(watcher)')
        self.assertFalse([name for name in dir(q) if name.startswith('sim_')])
        path = os.path.join(os.environ['QUOREL_LIBRARIES'], '_quorel_sim.so')
        self.assertEqual(os.path.realpath(_quorel_sim.__file__), os.path.realpath(path))


if __name__ == '__main__':
    unittest.main()
