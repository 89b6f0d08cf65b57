"""Why packets went where they went, step by step, from the code that takes the steps."""
import ctypes
import unittest

import QuorelApiNew as q
from console import run
from packets import A, ALL, ARP, B, CONTROL, frame, PacketTest, VLAN
from recording import library
from simulator import CPU_PORT, TRUNK


class Step(ctypes.Structure):
    """sim_trace_step_t"""
    _fields_ = [('unit', ctypes.c_int), ('stage', ctypes.c_int), ('drop', ctypes.c_int), ('port', ctypes.c_int),
                ('vid', ctypes.c_uint16), ('text', ctypes.c_char_p)]


listener_type = ctypes.CFUNCTYPE(None, ctypes.POINTER(Step), ctypes.c_void_p)
for text in ('sim_stage_name', 'sim_drop_name', 'sim_trace_text'):
    getattr(library, text).restype = ctypes.c_char_p


class Trace(PacketTest):
    def traced(self, port, *args, **members):
        """[(stage, drop, port, text)]"""
        library.sim_trace_begin()
        self.sent(port, frame(*args, **members))
        library.sim_trace_end()
        steps = []
        for index in range(library.sim_trace_count()):
            step = Step()
            self.done(library.sim_trace_step(index, ctypes.byref(step)))
            steps.append((library.sim_stage_name(step.stage), library.sim_drop_name(step.drop), step.port, step.text))
        return steps

    def reason(self, port, *args, **members):
        """(stage, drop, port) of the only step that drops."""
        drops = [step[:3] for step in self.traced(port, *args, **members) if step[1] != 'none']
        self.assertEqual(len(drops), 1)
        return drops[0]

    def test_a_way_through(self):
        self.vlan(20, tagged=[1, 2], untagged=[3])
        self.enter(B, 20, port=3, flags=q.BCM_L2_STATIC)
        self.assertEqual(self.traced(1, B, A, VLAN, 20, ARP), [
            ('arrive', 'none', 1, '64 bytes from %s to %s, tag of VLAN 20 at priority 0, type 0x0806' % (A, B)),
            ('vlan', 'none', 1, 'VLAN 20, of the tag'),
            ('tree', 'none', 1, 'in spanning tree group 1: forward'),
            ('source', 'none', 1, A + ' is learnt here, or moved'),
            ('destination', 'none', 1, B + ' leads to port 3, static'),
            ('leave', 'none', 3, '64 bytes, without tag')])
        self.assertEqual([step[2:] for step in self.traced(3, A, B, ARP)[:1]],
                         [(3, '64 bytes from %s to %s, type 0x0806' % (B, A))])
        self.trunk(4, (10, 11))
        self.enter(B, flags=q.BCM_L2_TRUNK_MEMBER, tgid=4)
        steps = self.traced(1, B, A, ARP)
        self.assertEqual([step[0] for step in steps[-2:]], ['replicate', 'leave'])
        self.assertIn(steps[-1][2], (10, 11))
        self.assertEqual(steps[-2][2:], (steps[-1][2], 'chosen of 2 members of trunk 4'))

    def test_each_reason(self):
        self.vlan(20, tagged=[1, 2])
        self.assertEqual(self.reason(1, B, A, ARP, size=60), ('arrive', 'undersize', 1))
        self.assertEqual(self.reason(1, B, A, ARP, size=9300), ('arrive', 'too_long', 1))
        self.assertEqual(self.reason(1, B, A, CONTROL, 1), ('arrive', 'control', 1))
        self.assertEqual(self.reason(1, B, A, VLAN, 30, ARP), ('vlan', 'vlan_unknown', 1))
        self.assertEqual(self.reason(1, B, ALL, ARP), ('source', 'source_address', 1))
        settings = [
            (('port', 'port_takes_none', 1), q.bcm_port_discard_set, 1, q.BCM_PORT_DISCARD_ALL,
             q.BCM_PORT_DISCARD_NONE),
            (('port', 'tag_type', 1), q.bcm_port_discard_set, 1, q.BCM_PORT_DISCARD_UNTAG, q.BCM_PORT_DISCARD_NONE),
            (('tree', 'tree_state', 1), q.bcm_port_stp_set, 1, q.BCM_STG_STP_LISTEN, q.BCM_STG_STP_FORWARD),
            (('tree', 'tree_state', 1), q.bcm_port_stp_set, 1, q.BCM_STG_STP_LEARN, q.BCM_STG_STP_FORWARD)]
        for expected, setter, port, value, normal in settings:
            self.done(setter(0, port, value))
            self.assertEqual(self.reason(1, B, A, ARP), expected)
            self.done(setter(0, port, normal))
        self.enter(B, port=2)
        self.done(q.bcm_port_enable_set(0, 2, 0))
        self.assertEqual(self.reason(1, B, A, ARP), ('leave', 'no_link', 2))
        self.done(q.bcm_port_enable_set(0, 2, 1))
        self.done(q.bcm_port_stp_set(0, 2, q.BCM_STG_STP_BLOCK))
        self.assertEqual(self.reason(1, B, A, ARP), ('leave', 'tree_state_to_send', 2))
        self.done(q.bcm_port_stp_set(0, 2, q.BCM_STG_STP_FORWARD))
        self.done(q.bcm_port_frame_max_set(0, 2, 100))
        self.assertEqual(self.reason(1, B, A, ARP, size=101), ('leave', 'too_long_to_send', 2))
        self.enter(B, 20, port=9)
        self.done(q.bcm_port_vlan_member_set(0, 9, q.BCM_PORT_VLAN_MEMBER_EGRESS))
        self.assertEqual(self.reason(1, B, A, VLAN, 20, ARP), ('leave', 'vlan_filter_to_send', 9))
        self.done(q.bcm_port_ifilter_set(0, 9, 1))
        self.assertEqual(self.reason(9, B, A, VLAN, 20, ARP), ('vlan', 'vlan_filter', 9))
        self.enter(B, port=1)
        self.assertEqual(self.reason(1, B, A, ARP), ('replicate', 'no_destination', 1))
        self.enter(B, port=1, flags=q.BCM_L2_DISCARD_DST)
        self.assertEqual(self.reason(1, B, A, ARP), ('destination', 'destination_address', 1))

    def test_a_listener_hears_the_same(self):
        heard = []
        listener = listener_type(lambda step, _: heard.append((step[0].unit, step[0].stage, step[0].text)))
        library.sim_trace_listen(listener, None)
        self.addCleanup(library.sim_trace_listen, None, None)
        kept = self.traced(1, B, A, ARP)
        library.sim_trace_listen(None, None)
        self.assertEqual([(library.sim_stage_name(stage), text) for _, stage, text in heard],
                         [(step[0], step[3]) for step in kept])
        self.sent(1, frame(B, A, ARP))
        self.assertEqual((len(heard), library.sim_trace_count()), (len(kept), len(kept)))
        self.assertStatus(q.BCM_E_NOT_FOUND, library.sim_trace_step(len(kept), ctypes.byref(Step())))
        self.assertStatus(q.BCM_E_PARAM, library.sim_trace_step(0, None))
        self.assertEqual((library.sim_drop_name(-1), library.sim_stage_name(99)), ('?', '?'))

    def test_tracing_changes_nothing(self):
        plain = [self.sent(port, frame(to, source, ARP)) for port, to, source in ((1, B, A), (2, A, B), (1, B, A))]
        self.done(q.bcm_l2_clear(0))
        library.sim_trace_begin()
        traced = [self.sent(port, frame(to, source, ARP)) for port, to, source in ((1, B, A), (2, A, B), (1, B, A))]
        library.sim_trace_end()
        self.assertEqual(traced, plain)

    def test_in_the_shell(self):
        self.enter(B, port=7, flags=q.BCM_L2_STATIC)
        words = ''.join('%02x' % ord(byte) for byte in frame(B, A, ARP))
        self.assertEqual(run('packet send 1 ' + words), (q.CMD_OK, 'unit 0 port 7: %s\n' % words))
        status, output = run('packet trace 1 ' + words)
        self.assertEqual((status, output.splitlines()[-1]), (q.CMD_OK, 'unit 0 port 7 leave: 64 bytes, without tag'))
        self.assertEqual(run('packet send 1 abc')[0], q.CMD_USAGE)
        self.done(q.bcm_port_enable_set(0, 7, 0))
        self.assertIn('[no_link]', run('packet trace 1 ' + words)[1])


if __name__ == '__main__':
    unittest.main()
