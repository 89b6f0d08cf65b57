"""Counters of the field processor that count packets by what becomes of them."""
import unittest

import QuorelApiNew as q
from quorel import array, callback, checked, OUT, sim, StatusError
from test_field_actions import A, B, CPU, DROP, COPY, NEW, VLAN, FieldActionTest, made

FATES = 'Forwarded Dropped CopiedToCpu Mirrored Redirected Replicated'.split()
ALL, GROUP = 'ff:ff:ff:ff:ff:ff', '01:00:5e:01:01:01'
GONE = 9  # a port without link


class Fates(FieldActionTest):
    def setUp(self):
        FieldActionTest.setUp(self)
        self.switch.pull(GONE)
        mirror = q.bcm_mirror_destination_t(gport=60)
        checked(q.bcm_mirror_destination_create, 0, mirror)
        self.mirror = mirror.mirror_dest_id
        policer = q.bcm_policer_config_t(mode=q.bcmPolicerModeRed, flags=q.BCM_POLICER_DROP_RED)
        self.policer = checked(q.bcm_policer_create, 0, policer, OUT)

    def counting(self, stage, *actions, **more):
        """(entry, its counters) of an installed entry"""
        kinds = more.get('kinds', FATES)
        numbers = [getattr(q, 'bcmFieldStat%s%s' % (kind, what)) for kind in kinds for what in ('Packets', 'Bytes')]
        stat = checked(q.bcm_field_stat_create, 0, self.group(1, stage), len(numbers),
                       array('bcm_field_stat_t', numbers), OUT)
        entry = self.entry(self.group(1, stage), *actions)
        checked(q.bcm_field_entry_stat_attach, 0, entry, stat)
        checked(q.bcm_field_entry_install, 0, entry)
        return entry, stat

    def read(self, stat, kinds=FATES, length=None):
        """{kind: packets} of those that are not 0; the bytes agree with them."""
        found = {}
        for kind in kinds:
            packets, octets = [checked(q.bcm_field_stat_get, 0, stat, getattr(q, 'bcmFieldStat%s%s' % (kind, what)), OUT)
                               for what in ('Packets', 'Bytes')]
            self.assertEqual(octets, packets * (length or len(self.frame) + 4), kind)
            if packets:
                found[kind] = packets
        return found

    def becomes(self, frame, stage, *actions):
        """What an entry counts of a frame that arrives at port 1."""
        entry, stat = self.counting(stage, *actions)
        self.frame = frame
        self.switch.send(1, frame)
        found = self.read(stat)
        checked(q.bcm_field_stat_all_set, 0, stat, 0)
        self.assertEqual(self.read(stat), {})
        checked(q.bcm_field_entry_destroy, 0, entry)
        checked(q.bcm_field_stat_destroy, 0, stat)
        return found

    def test_when_it_is_known_where_packets_go(self):
        known, flooded = made(), made(to=ALL)
        for frame, actions, fates in (
                (known, [], 'Forwarded'), (flooded, [], 'Forwarded Replicated'), (known, [DROP], 'Dropped'),
                (known, [DROP, COPY], 'Dropped CopiedToCpu'),
                (known, [COPY], 'Forwarded CopiedToCpu Replicated'),
                (known, [('Trap',)], 'Forwarded CopiedToCpu'),
                (known, [('RedirectPort', 0, 3)], 'Forwarded Redirected'),
                (known, [('RedirectPort', 0, CPU)], 'Forwarded CopiedToCpu Redirected'),
                (known, [('RedirectPort', 0, GONE)], 'Dropped'),
                (known, [('MirrorIngress', self.mirror)], 'Forwarded Mirrored'),
                (known, [('MirrorEgress', self.mirror)], 'Forwarded Mirrored'),
                (known, [('MirrorIngress', self.mirror), DROP], 'Dropped Mirrored'),
                (known, [('PolicerLevel0Set', self.policer)], 'Dropped'),
                (known, [('InnerVlanAdd', 30)], 'Forwarded'), (known, [('DestMacNew', NEW)], 'Forwarded')):
            self.assertEqual(self.becomes(frame, 'ingress', *actions), dict.fromkeys(fates.split(), 1), actions)

    def test_before_the_tables(self):
        for frame, actions, fates in (
                (made(), [], 'Forwarded'), (made(), [DROP], 'Dropped'), (made(to=ALL), [], 'Forwarded Replicated'),
                (made(tags=((0x8100, 99, 0),)), [], 'Dropped'), (made(source=GROUP), [], 'Dropped')):
            self.assertEqual(self.becomes(frame, 'lookup', *actions), dict.fromkeys(fates.split(), 1), actions)
        self.installed('later', 1, 'ingress', ('RedirectPbmp', [3, 4]), COPY)
        self.assertEqual(self.becomes(made(), 'lookup'), dict(Forwarded=1, CopiedToCpu=1, Redirected=1, Replicated=1))

    def test_of_each_copy(self):
        checked(q.bcm_vlan_port_remove, 0, VLAN, range(4, 65))
        checked(q.bcm_vlan_port_add, 0, VLAN, [CPU], [])
        frame = made(to=ALL)
        self.assertEqual(self.becomes(frame, 'egress'), dict(Forwarded=3, CopiedToCpu=1))
        self.assertEqual(self.becomes(frame, 'egress', DROP), dict(Dropped=3))
        self.assertEqual(self.becomes(frame, 'egress', ('MirrorEgress', self.mirror)),
                         dict(Forwarded=3, CopiedToCpu=1, Mirrored=2))
        self.assertEqual(self.becomes(made(), 'egress', ('DscpNew', 2)), dict(Forwarded=1))

    def test_what_waits_is_forwarded_and_what_finds_no_room_dropped(self):
        checked(q.bcm_port_rate_egress_pps_set, 0, 2, 1, 1)
        checked(q.bcm_cosq_gport_size_set, 0, 2, 0, 0, 250)
        self.frame = made()
        stats = [self.counting(stage)[1] for stage in ('lookup', 'ingress', 'egress')]
        for _ in range(5):
            self.switch.send(1, self.frame)
        lost = checked(q.bcm_cosq_stat_get, 0, 2, 0, q.bcmCosqStatDroppedPackets, OUT)
        self.assertGreater(lost, 0)
        for stat in stats:
            self.assertEqual(self.read(stat), dict(Forwarded=5 - lost, Dropped=lost))

    def test_copies_that_are_routed(self):
        """One port sends two copies."""
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_remove, 0, VLAN, range(3, 65))
        checked(q.bcm_vlan_port_add, 0, 20, [2], [])
        for vid in VLAN, 20:
            interface = q.bcm_l3_intf_t(l3a_vid=vid, l3a_mac_addr='02:aa:00:00:00:%02x' % vid)
            checked(q.bcm_l3_intf_create, 0, interface)
        packet = sim.tagged(sim.ethernet(GROUP, A, sim.udp4('10.0.0.1', '225.1.1.1', ttl=64)), VLAN)
        checked(q.bcm_ipmc_add, 0, q.bcm_ipmc_addr_t(mc_ip_addr=0xe1010101, group=7), OUT)
        checked(q.bcm_ipmc_egress_intf_add, 0, 7, 2, interface.l3a_intf_id)
        entry, stat = self.counting('ingress', ('DscpNew', 1))
        self.frame = packet
        self.assertEqual([port for port, _ in self.switch.send(1, packet)], [2, 2])
        self.assertEqual(self.read(stat), dict(Forwarded=1, Replicated=1))

    def test_colours(self):
        kinds = [color + fate for color in ('Green', 'Yellow', 'Red') for fate in ('Forwarded', 'Dropped')]
        entry, stat = self.counting('ingress', ('RpDrop',), kinds=kinds)
        self.frame = FieldActionTest.frame(self, 'Green')
        for color in 'Green', 'Green', 'Yellow', 'Red':
            self.switch.send(1, FieldActionTest.frame(self, color))
        self.assertEqual(self.read(stat, kinds), dict(GreenForwarded=2, YellowForwarded=1, RedDropped=1))

    def test_of_policers(self):
        kinds = ['InProfile', 'OutProfile']
        policer = checked(q.bcm_policer_create, 0, q.bcm_policer_config_t(
            flags=q.BCM_POLICER_BEGIN_WITH_BUCKET_FULL | q.BCM_POLICER_MODE_PACKETS, ckbits_sec=1, ckbits_burst=3), OUT)
        self.frame = made()
        for actions, wanted in (([], {}), ([('PolicerLevel0Set', policer)], dict(InProfile=3, OutProfile=2))):
            entry, stat = self.counting('ingress', *actions, kinds=kinds)
            for _ in range(5):
                self.switch.send(1, self.frame)
            self.assertEqual(self.read(stat, kinds), wanted)
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_counters_that_go_while_a_packet_is_on_its_way(self):
        entry, stat = self.counting('lookup')
        def forget(unit, address, operation, data):
            q.bcm_field_entry_destroy(0, entry)
            q.bcm_field_stat_destroy(0, stat)
        learnt = callback('bcm_l2_addr_callback_t', forget)
        checked(q.bcm_l2_addr_register, 0, learnt, None)
        self.addCleanup(q.bcm_l2_addr_unregister, 0, learnt, None)
        self.assertEqual(self.ports(1, made(source=NEW)), [2])
        with self.assertRaisesRegexp(StatusError, 'NOT_FOUND'):
            checked(q.bcm_field_stat_size, 0, stat, OUT)

    def test_kinds_of_which_there_are_no_packets(self):
        for kind in 'EcnMarked', 'Error':
            kinds = array('bcm_field_stat_t', [getattr(q, 'bcmFieldStat%sPackets' % kind)])
            status = q.bcm_field_stat_create_id(0, self.group(1), 1, kinds, 3)
            self.assertEqual(status, q.BCM_E_UNAVAIL, kind)


if __name__ == '__main__':
    unittest.main()
