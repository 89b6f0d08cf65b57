"""Copies for those who look: mirrored packets, how they are wrapped, and samples for the CPU."""
import struct
import unittest

import QuorelApiNew as q
from quorel import OUT, as_dict, callback, checked, sim

A, B, C, D = ['02:00:00:00:00:0%d' % number for number in (1, 2, 3, 4)]
IN, EGRESS, SAMPLED = q.BCM_MIRROR_PORT_INGRESS, q.BCM_MIRROR_PORT_EGRESS, q.BCM_MIRROR_PORT_SFLOW
L2, GRE, UDP = q.BCM_MIRROR_DEST_TUNNEL_L2, q.BCM_MIRROR_DEST_TUNNEL_IP_GRE, q.BCM_MIRROR_DEST_TUNNEL_UDP
LOOKER = 9


def octets(mac):
    return bytearray(int(part, 16) for part in mac.split(':'))


def checksum(data):
    """Of the Internet; 0 over what has a right one."""
    total = sum(struct.unpack('>%dH' % (len(data) // 2), bytes(data)))
    while total >> 16:
        total = (total & 0xffff) + (total >> 16)
    return ~total & 0xffff


class MirrorTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        self.frame, self.answer = sim.ethernet(B, A).ljust(100, b'x'), sim.ethernet(A, B)
        for mac, port in ((A, 1), (B, 2)):
            checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(port=port, vid=1, mac=mac, flags=q.BCM_L2_STATIC))

    def destination(self, **members):
        record = q.bcm_mirror_destination_t(**dict(dict(gport=LOOKER), **members))
        checked(q.bcm_mirror_destination_create, 0, record)
        return record.mirror_dest_id

    def use(self, destination, direction=IN, port=1, **options):
        return q.bcm_mirror_port_destination_add(0, port, direction, destination, q.bcm_mirror_options_t(**options))

    def looks(self, port, frame):
        """What the looker gets."""
        return [bytes(copy) for to, copy in self.switch.send(port, frame) if to == LOOKER]


class Mirrors(MirrorTest):
    def test_one_port_of_the_unit(self):
        checked(q.bcm_mirror_to_set, 0, LOOKER)
        checked(q.bcm_mirror_ingress_set, 0, 1, 1)
        self.assertSends(1, self.frame, {2: self.frame})
        checked(q.bcm_mirror_mode_set, 0, q.BCM_MIRROR_L2)
        self.assertSends(1, self.frame, {2: self.frame, LOOKER: self.frame})
        self.assertSends(2, self.answer, {1: self.answer})
        checked(q.bcm_mirror_egress_set, 0, 1, 1)
        self.assertSends(2, self.answer, {1: self.answer, LOOKER: self.answer})
        # It sees what goes no further, too, and is no part of any VLAN.
        checked(q.bcm_port_discard_set, 0, 1, q.BCM_PORT_DISCARD_ALL)
        checked(q.bcm_vlan_port_remove, 0, 1, [LOOKER])
        self.assertSends(1, self.frame, {LOOKER: self.frame})
        checked(q.bcm_mirror_to_pbmp_set, 0, 1, [10, 11])
        self.assertSends(1, self.frame, {10: self.frame, 11: self.frame})
        checked(q.bcm_mirror_mode_set, 0, q.BCM_MIRROR_DISABLE)
        self.assertSends(1, self.frame, {})

    def test_as_it_leaves(self):
        checked(q.bcm_vlan_port_remove, 0, 1, [2])
        checked(q.bcm_vlan_port_add, 0, 1, [2], [])
        tagged = sim.tagged(self.frame, 1)
        checked(q.bcm_mirror_port_set, 0, 1, -1, LOOKER, IN)
        checked(q.bcm_mirror_port_set, 0, 2, -1, 10, q.BCM_MIRROR_PORT_EGRESS_TRUE)
        self.assertSends(1, self.frame, {2: tagged, LOOKER: self.frame, 10: tagged})
        self.assertEqual(checked(q.bcm_mirror_port_get, 0, 2, OUT, OUT, OUT), (0, 10, q.BCM_MIRROR_PORT_EGRESS_TRUE))
        checked(q.bcm_mirror_port_set, 0, 2, -1, 0, 0)
        self.assertSends(1, self.frame, {2: tagged, LOOKER: self.frame})

    def test_the_looker_counts_and_refuses_as_others_do(self):
        destination = self.destination()
        self.assertEqual(self.use(destination), 0)
        self.assertEqual(self.looks(1, self.frame), [self.frame])
        self.assertEqual(self.switch.statistics(LOOKER)['snmpIfOutUcastPkts'], 1)
        checked(q.bcm_port_frame_max_set, 0, LOOKER, 100)
        self.assertIn((LOOKER, 'too_long_to_send'), self.switch.drops(1, self.frame))
        checked(q.bcm_port_enable_set, 0, LOOKER, 0)
        self.assertIn((LOOKER, 'no_link'), self.switch.drops(1, self.frame))
        stat = lambda kind: checked(q.bcm_mirror_stat_get, 0, destination, kind, OUT)
        self.assertEqual([stat(kind) for kind in range(3)], [1, 104, 2])
        checked(q.bcm_mirror_stat_set, 0, destination, q.bcmMirrorStatBytes, 7)
        self.assertEqual(checked(q.bcm_mirror_stat_get32, 0, destination, q.bcmMirrorStatBytes, OUT), 7)
        checked(q.bcm_mirror_destination_enable_set, 0, destination, 0)
        self.assertEqual(self.switch.drops(1, self.frame), [])
        checked(q.bcm_port_enable_set, 0, LOOKER, 1)
        checked(q.bcm_port_frame_max_set, 0, LOOKER, 9216)
        checked(q.bcm_mirror_destination_enable_set, 0, destination, 1)
        self.assertIn('port 9 leave: 104 bytes, a mirrored copy of what arrived', self.switch.trace(1, self.frame))

    def test_vlans_of_ports(self):
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_add, 0, 20, [1, 2], [])
        destination, tagged = self.destination(), sim.tagged(sim.ethernet(B, A), 20)
        options = q.bcm_mirror_options_t()
        checked(q.bcm_mirror_port_vlan_destination_add, 0, 1, 20, IN, destination, options)
        checked(q.bcm_mirror_port_vlan_destination_add, 0, 2, 20, EGRESS, destination, options)
        self.assertEqual(self.looks(1, self.frame), [])
        self.assertEqual(self.looks(1, tagged), [tagged] * 2)
        checked(q.bcm_mirror_port_vlan_destination_delete, 0, 1, 20, IN, destination)
        checked(q.bcm_mirror_port_vlan_destination_delete_all, 0, 2, 20, IN | EGRESS)
        self.assertEqual(self.looks(1, tagged), [])
        self.assertEqual(q.bcm_mirror_port_vlan_destination_add(0, 1, 0, IN, destination, options), q.BCM_E_PARAM)
        self.assertEqual(q.bcm_mirror_destination_destroy(0, destination), 0)

    def test_uses(self):
        first, second = self.destination(), self.destination(truncate_length=64)
        self.assertEqual([self.use(first), self.use(first), self.use(first, EGRESS), self.use(second, IN | EGRESS)],
                         [0, q.BCM_E_EXISTS, 0, 0])
        listed = lambda flags, size=9: checked(q.bcm_mirror_port_destination_get, 0, 1, flags, size, OUT[9], OUT[9], OUT)
        ids, flags, count = listed(IN | EGRESS)
        self.assertEqual((count, list(zip(ids, flags))[:3]), (3, [(first, IN), (first, EGRESS), (second, IN | EGRESS)]))
        self.assertEqual((listed(IN)[2], listed(EGRESS, 1)[2]), (2, 1))
        self.assertEqual(checked(q.bcm_mirror_destination_get, 0, second, OUT, OUT)[1], 1)
        self.assertEqual(q.bcm_mirror_destination_destroy(0, second), q.BCM_E_BUSY)
        self.assertEqual(len(self.looks(1, self.frame)), 2)
        checked(q.bcm_mirror_port_destination_delete, 0, 1, IN, second)
        self.assertEqual(self.looks(1, self.frame), [self.frame])
        self.assertEqual(q.bcm_mirror_port_destination_delete(0, 1, IN, second), q.BCM_E_NOT_FOUND)
        checked(q.bcm_mirror_port_destination_delete_all, 0, 1, IN | EGRESS)
        self.assertEqual(q.bcm_mirror_destination_destroy(0, second), 0)
        self.assertEqual([self.use(self.destination()) for _ in range(9)], [0] * 8 + [q.BCM_E_FULL])
        add, options = q.bcm_mirror_port_destination_add, q.bcm_mirror_options_t()
        self.assertEqual([add(0, 1, 0, first, options), add(0, 1, 64, first, options), add(0, 99, IN, first, options),
                          add(0, 1, IN, 5, options)],
                         [q.BCM_E_PARAM, q.BCM_E_PARAM, q.BCM_E_PORT, q.BCM_E_NOT_FOUND])

    def test_shares_and_priorities(self):
        destination = self.destination(sample_rate_dividend=2, sample_rate_divisor=5)
        self.use(destination)
        self.assertEqual([len(self.looks(1, self.frame)) for _ in range(10)], [0, 0, 1, 0, 1] * 2)
        q.bcm_mirror_port_destination_delete_all(0, 1, IN)
        low, high = self.destination(truncate_length=60), self.destination(truncate_length=64)
        for number, priority in ((low, 1), (high, 2)):
            self.use(number, flags=q.BCM_MIRROR_OPTION_PRIORITY, priority=priority)
        self.assertEqual([len(copy) for copy in self.looks(1, self.frame)], [64])
        self.use(destination, port=2, flags=q.BCM_MIRROR_OPTION_SAMPLE, sample_rate_dividend=1, sample_rate_divisor=3)
        self.assertEqual([len(self.looks(2, self.answer)) for _ in range(6)], [0, 0, 1] * 2)

    def test_module(self):
        self.use(self.destination())
        checked(q.bcm_mirror_init, 0)
        self.assertEqual(self.looks(1, self.frame), [])
        checked(q.bcm_mirror_detach, 0)
        self.assertEqual([q.bcm_mirror_mode_set(0, 1), q.bcm_mirror_to_get(0, q.intp()), q.bcm_mirror_detach(0)],
                         [q.BCM_E_INIT] * 3)
        checked(q.bcm_mirror_init, 0)
        self.assertEqual([q.bcm_mirror_mode_set(0, mode) for mode in (-1, 4, 3)], [q.BCM_E_PARAM] * 2 + [0])
        self.assertEqual([q.bcm_mirror_to_set(0, 99), q.bcm_mirror_port_set(0, 1, -1, 2, 64),
                          q.bcm_mirror_port_set(0, 1, 5, 2, IN)], [q.BCM_E_PORT, q.BCM_E_PARAM, q.BCM_E_UNAVAIL])


class Wrappings(MirrorTest):
    def copy(self, **members):
        self.use(self.destination(**members))
        copies = self.looks(1, self.frame)
        self.assertEqual(len(copies), 1)
        return copies[0]

    def test_tags(self):
        self.assertEqual(self.copy(flags=L2, vlan_id=99, vlan_prio=5), sim.tagged(self.frame, 99, 5))
        q.bcm_mirror_init(0)
        checked(q.bcm_mirror_port_set, 0, 1, -1, LOOKER, IN)
        checked(q.bcm_mirror_vlan_set, 0, LOOKER, 0x88a8, 30, 6)
        outer = sim.tagged(self.frame, 30, 6, 0x88a8)
        self.assertEqual(self.looks(1, self.frame), [outer])
        self.assertEqual(checked(q.bcm_mirror_vlan_get, 0, LOOKER, OUT, OUT, OUT), (0x88a8, 30, 6))
        info = q.bcm_mirror_port_info_t(flags=IN, tpid=0x8100, vlan=31, vlan_prio=2)
        checked(q.bcm_mirror_port_info_set, 0, 1, info)
        self.assertEqual(self.looks(1, self.frame), [sim.tagged(sim.tagged(self.frame, 31, 2), 30, 6, 0x88a8)])
        checked(q.bcm_mirror_vlan_set, 0, LOOKER, 0, 0, 0)
        self.assertEqual(self.looks(1, self.frame), [sim.tagged(self.frame, 31, 2)])
        self.assertEqual([q.bcm_mirror_vlan_set(0, 1, 1, 4096, 0), q.bcm_mirror_vlan_set(0, 1, 1, 1, 8)],
                         [q.BCM_E_PARAM] * 2)

    def test_gre_over_ip4(self):
        copy = bytearray(self.copy(flags=GRE, version=4, src_mac=C, dst_mac=D, src_addr=0x0a000001, dst_addr=0x0a000002,
                                   tos=0x20, ttl=17, df=1, gre_protocol=0x6558, tpid=0x8100, vlan_id=40, vlan_prio=3))
        self.assertEqual(copy[:18], octets(D) + octets(C) + bytearray(b'\x81\x00\x60\x28\x08\x00'))
        ip = copy[18:38]
        self.assertEqual(checksum(ip), 0)
        self.assertEqual(struct.unpack('>BBHHHBB2xII', bytes(ip)),
                         (0x45, 0x20, 24 + len(self.frame), 0, 0x4000, 17, 47, 0x0a000001, 0x0a000002))
        self.assertEqual(copy[38:42], bytearray(b'\0\0\x65\x58'))
        self.assertEqual(bytes(copy[42:]), self.frame)
        second = bytearray(self.looks(1, self.frame)[0])
        self.assertEqual(second[22:24], bytearray(b'\0\1'))  # datagrams are numbered

    def test_sessions(self):
        numbers = []
        self.use(self.destination(flags=GRE, span_id=0x155, sequence_number=7, vlan_id=9, vlan_prio=2))
        for _ in range(2):
            copy = bytearray(self.looks(1, self.frame)[0])
            self.assertEqual(copy[38:42], bytearray(b'\x10\0\x88\xbe'))
            numbers.append(struct.unpack('>I', bytes(copy[42:46]))[0])
            self.assertEqual(struct.unpack('>HHI', bytes(copy[46:54])), (0x1009, 0x4155, 0))
            self.assertEqual(bytes(copy[54:]), self.frame)
        self.assertEqual(numbers, [7, 8])

    def test_over_ip6(self):
        source, to = bytearray(range(16)), bytearray(range(100, 116))
        members = dict(version=6, src6_addr=list(source), dst6_addr=list(to), hop_limit=9, tos=0x12, flow_label=0x34567)
        copy = bytearray(self.copy(flags=GRE, **members))
        self.assertEqual(copy[12:14], bytearray(b'\x86\xdd'))
        self.assertEqual(struct.unpack('>IHBB', bytes(copy[14:22])), (0x61234567, 4 + len(self.frame), 47, 9))
        self.assertEqual((copy[22:38], copy[38:54]), (source, to))
        self.assertEqual(bytes(copy[58:]), self.frame)
        q.bcm_mirror_init(0)
        copy = bytearray(self.copy(flags=UDP, udp_src_port=5, udp_dst_port=6, **members))
        self.assertEqual(struct.unpack('>HHH', bytes(copy[54:60])), (5, 6, 8 + len(self.frame)))
        pseudo = copy[22:54] + bytearray(struct.pack('>II', len(copy) - 54, 17))
        self.assertEqual(checksum(pseudo + copy[54:]), 0)
        q.bcm_mirror_init(0)
        copy = bytearray(self.copy(flags=UDP, udp_src_port=5, udp_dst_port=6, truncate_length=20))
        self.assertEqual(copy[23], 17)
        self.assertEqual(bytes(copy[42:62]), self.frame[:20])

    def test_refusals(self):
        create = lambda **members: q.bcm_mirror_destination_create(0, q.bcm_mirror_destination_t(**members))
        param, unavail = q.BCM_E_PARAM, q.BCM_E_UNAVAIL
        for members, status in ((dict(flags=1 << 20), param), (dict(flags=L2 | GRE), param), (dict(flags=L2), param),
                                (dict(flags=L2, vlan_id=1, vlan_prio=8), param), (dict(flags=GRE, version=5), param),
                                (dict(flags=GRE, span_id=1024), param), (dict(truncate_length=-1), param),
                                (dict(sample_rate_dividend=1), param), (dict(gport=99), q.BCM_E_PORT),
                                (dict(flags=q.BCM_MIRROR_DEST_TUNNEL_VNTAG), unavail), (dict(policer_id=1), unavail)):
            self.assertEqual(create(**members), status, members)


class Samples(MirrorTest):
    def rates(self, port, ingress, egress):
        checked(q.bcm_port_sample_rate_set, 0, port, ingress, egress)

    def sampled(self, port, frame, count):
        """Which of so many packets are samples for the CPU."""
        copies = [[bytes(copy) for to, copy in self.switch.send(port, frame) if to == sim.CPU_PORT] for _ in range(count)]
        self.assertLessEqual(set(map(tuple, copies)), {(), (frame,)})
        return [number for number, copy in enumerate(copies) if copy]

    def test_one_in_so_many(self):
        self.rates(1, 4, 5)
        self.assertEqual(checked(q.bcm_port_sample_rate_get, 0, 1, OUT, OUT), (4, 5))
        count, sent = 2000, 0
        for port, frame, rate in ((1, self.frame, 4), (2, self.answer, 5)):
            taken = self.sampled(port, frame, count)
            # Within four standard deviations, and not evenly: the distances are of all kinds.
            expected = float(count) / rate
            self.assertLess(abs(len(taken) - expected), 4 * (expected * (1 - 1.0 / rate)) ** 0.5)
            self.assertGreater(len({after - before for before, after in zip(taken, taken[1:])}), rate)
            sent += len(taken)
        self.assertEqual(self.switch.statistics(sim.CPU_PORT)['snmpIfOutUcastPkts'], sent)
        self.rates(1, 1, 0)
        self.assertEqual(self.sampled(1, self.frame, 6), list(range(6)))
        self.rates(1, 0, 0)
        self.assertEqual([len(self.switch.send(1, self.frame)) for _ in range(6)], [1] * 6)
        self.assertEqual([q.bcm_port_sample_rate_set(0, 1, -1, 0), q.bcm_port_sample_rate_set(0, 1, 0, -1),
                          q.bcm_port_sample_rate_set(0, 99, 0, 0)], [q.BCM_E_PARAM] * 2 + [q.BCM_E_PORT])

    def test_the_same_seed_takes_the_same(self):
        set_to = lambda control, value: checked(q.bcm_switch_control_set, 0, control, value)
        self.rates(1, 7, 3)
        at_first = self.sampled(1, self.frame, 100)
        set_to(q.bcmSwitchSampleIngressRandomSeed, 5)
        self.assertEqual(checked(q.bcm_switch_control_get, 0, q.bcmSwitchSampleIngressRandomSeed, OUT), 5)
        others = self.sampled(1, self.frame, 100)
        self.assertNotEqual(others, at_first)
        set_to(q.bcmSwitchSampleIngressRandomSeed, 0)
        self.sampled(2, self.answer, 10)    # those of what leaves are others'
        self.assertEqual(self.sampled(1, self.frame, 100), at_first)

    def test_where_they_go(self):
        set_to = lambda control, value: checked(q.bcm_switch_control_set, 0, control, value)
        seen = []
        take = callback('bcm_rx_cb_f', lambda unit, packet, cookie: seen.append(
            (packet.rx_port, packet.vlan, packet.pkt_len, [name[len('bcmRxReason'):] for name in as_dict(packet)['rx_reasons']]))
            or q.BCM_RX_HANDLED)
        checked(q.bcm_rx_register, 0, 'test', take, 10, None, 0)
        checked(q.bcm_rx_start, 0, None)
        self.rates(1, 1, 1)
        self.switch.arrive(1, sim.tagged(self.frame, 1, 3))
        self.switch.arrive(2, self.answer)
        self.assertEqual(seen, [(1, 1, 104, ['SampleSource']), (2, 1, 60, ['SampleDest'])])
        set_to(q.bcmSwitchSampleHeaderLength, 70)
        self.switch.arrive(1, self.frame)
        self.assertEqual(seen[2:], [(1, 0, 70, ['SampleSource'])])
        self.use(self.destination(), IN | SAMPLED)
        self.assertEqual(self.looks(1, self.frame), [self.frame])
        set_to(q.bcmSwitchSampleIngressToCpu, 0)
        del seen[:]
        self.assertEqual((self.looks(1, self.frame), seen), ([self.frame], []))
        set_to(q.bcmSwitchSampleIngressMirror, 0)
        self.assertEqual(self.looks(1, self.frame), [])
        # Of what leaves they still come; the CPU is a place for mirrored copies, too.
        self.switch.arrive(2, self.answer)
        checked(q.bcm_mirror_port_set, 0, 2, -1, sim.CPU_PORT, IN)
        self.switch.arrive(2, self.answer)
        self.assertEqual([reasons for _, _, _, reasons in seen], [['SampleDest'], ['Mirror'], ['SampleDest']])


if __name__ == '__main__':
    unittest.main()
