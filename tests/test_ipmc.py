"""Routed multicasts: which copies a packet has, as a slow and plain model says, and what functions promise."""
import random
import unittest

import QuorelApiNew as q
from quorel import OUT, array, callback, checked, sim
from router import ip6_list, RouterTest
from router_model import Frame, Group, IP4, IP6, ip4_header, ip6_header
from simulator import TRUNK

SENDER = '02:00:00:00:00:77'
GROUPS = {IP4: [0xe1000000 + number for number in range(6)] + [0xe0000005],
          IP6: [0xff0e << 112 | number for number in range(6)] + [0xff02 << 112 | 5]}
SOURCES = {IP4: [0x0a000001, 0x0a000002], IP6: [0x20010db8 << 96 | 1, 0x20010db8 << 96 | 2]}


def group_mac(kind, group):
    low = group & 0x7fffff if kind == IP4 else group & 0xffffffff
    text = '01005e%06x' % low if kind == IP4 else '3333%08x' % low
    return ':'.join(text[place:place + 2] for place in range(0, 12, 2))


MASKS = {IP4: [(0xfffffffe, 0xffffffff), (0, 0xfffffffc), (0xffffffff, 0xfffffffe), (0xffffff00, 0xf0000000)],
         IP6: [(1, (1 << 128) - 1), (0, (1 << 128) - 4), ((1 << 128) - 1, (1 << 128) - 2)]}


def record(entry, **members):
    flags, masks = members.pop('flags', 0), entry.masks or (0, 0)
    if entry.kind == IP6:
        members.update(s_ip6_addr=ip6_list(entry.source), mc_ip6_addr=ip6_list(entry.group),
                       s_ip6_mask=ip6_list(masks[0]), mc_ip6_mask=ip6_list(masks[1]))
        flags |= q.BCM_IPMC_IP6
    else:
        members.update(s_ip_addr=entry.source, mc_ip_addr=entry.group, s_ip_mask=masks[0], mc_ip_mask=masks[1])
    return q.bcm_ipmc_addr_t(vrf=entry.vrf, vid=entry.vid, flags=flags, priority=entry.priority, **members)


class MulticastTest(RouterTest):
    def add(self, entry, **members):
        return checked(q.bcm_ipmc_add, 0, record(entry, **members), OUT)

    def packet(self, kind, source, group, ttl, payload=b'\x5a' * 60, vlan=None):
        header = ip4_header if kind == IP4 else ip6_header
        packet = header(source, group, len(payload), ttl) + payload
        return Frame(group_mac(kind, group), SENDER, kind, packet, vlan)


class Random(MulticastTest):
    """Tables and packets are those of a seed, so a failure comes again."""
    PACKETS = 1500

    def build(self, chance):
        for number in range(8):
            self.add_vlan(10 + number, 1 + 2 * number, 2 + 2 * number, vrf=number % 2, mtu=(0, 0, 0, 90)[number % 4],
                          ttl=(0, 0, 20)[number % 3])
        for number in range(1, 80):
            kind = chance.choice((IP4, IP6))
            members = {(port.number, port.vlan) for port in self.router.ports.values() if chance.random() < 0.4}
            entry = Group(chance.randrange(2), kind, chance.choice([0, 0, 10, 11, 12, 13]),
                          chance.choice(SOURCES[kind] + [0]), chance.choice(GROUPS[kind]), members,
                          chance.choice([0, 0, 0, 0, 0, 10, 11]))
            if number % 3 == 0:
                masks = chance.choice(MASKS[kind])
                entry = entry._replace(masks=masks, priority=chance.randrange(4), source=entry.source if masks[0] else 0)
            if self.key(entry) in [self.key(known) for known in self.router.groups]:
                continue
            self.add(entry, group=number, ing_intf=self.interface_ids.get(entry.expected_in, 0))
            self.router.groups.append(entry)
            for port, vlan in members:
                if number % 2:
                    checked(q.bcm_ipmc_egress_intf_add, 0, number, port, self.interface_ids[vlan])
                else:
                    self.enter(number, port, self.interface_ids[vlan])

    @staticmethod
    def key(entry):
        of = entry.masks or (-1, -1)
        return entry[:3] + (entry.source & of[0], entry.group & of[1], entry.masks)

    def test_copies(self):
        chance = random.Random(20)
        self.build(chance)
        routed = 0
        for _ in range(self.PACKETS):
            port = chance.choice(sorted(self.router.ports.values()))
            kind = chance.choice((IP4, IP6))
            frame = self.packet(kind, chance.choice(SOURCES[kind]), chance.choice(GROUPS[kind]),
                                chance.choice([0, 1, 2, 20, 21, 64]), b'\x5a' * chance.choice([30, 60, 100]),
                                port.vlan if port.tagged else None)
            expected = self.router.copies(port.number, frame)
            sent = self.switch.send(port.number, frame.bytes())
            self.assertEqual(sorted(sent), sorted(expected), (port, vars(frame)))
            routed += len(expected) > 1
        self.assertGreater(routed, self.PACKETS // 6)

    def enter(self, group, port, interface):
        """The same as members of a group."""
        q.bcm_multicast_create(0, q.BCM_MULTICAST_TYPE_L3 | q.BCM_MULTICAST_WITH_ID, array('int', [group]))
        number = checked(q.bcm_multicast_l3_encap_get, 0, group, port, interface, OUT)
        checked(q.bcm_multicast_egress_add, 0, group, port, number)


class Promises(MulticastTest):
    ENTRY = Group(0, IP4, 0, SOURCES[IP4][0], GROUPS[IP4][0], (), 0)

    def setUp(self):
        MulticastTest.setUp(self)
        self.add_vlan(10, 1, 2)
        self.add_vlan(20, 3, 4)
        self.frame = self.packet(IP4, self.ENTRY.source, self.ENTRY.group, 64).bytes()

    def ports(self, port=1):
        return sorted(at for at, _ in self.switch.send(port, self.frame))

    def test_entries_come_and_go(self):
        index = self.add(self.ENTRY, group=5)
        self.assertEqual(q.bcm_ipmc_add(0, record(self.ENTRY), array('int', [0])), q.BCM_E_EXISTS)
        self.assertEqual(self.add(self.ENTRY, group=6, flags=q.BCM_IPMC_REPLACE), index)
        found = record(self.ENTRY)
        self.assertEqual((checked(q.bcm_ipmc_find, 0, found, OUT), found.group, found.flags), (index, 6, 0))
        for members, status in ((dict(mc_ip_addr=0x0a000001), 'PARAM'), (dict(vrf=-1), 'PARAM'),
                                (dict(vid=4095), 'PARAM'),
                                (dict(flags=0x1000), 'PARAM'), (dict(group=-1), 'PARAM')):
            address = record(self.ENTRY._replace(source=3))
            for name, value in members.items():
                setattr(address, name, value)
            self.assertEqual(q.bcm_ipmc_add(0, address, array('int', [0])), getattr(q, 'BCM_E_' + status), members)
        other = self.add(self.ENTRY._replace(vrf=1, source=0))
        seen = []
        visit = callback('bcm_ipmc_traverse_cb', lambda unit, info, data: seen.append(info.group) or 0)
        checked(q.bcm_ipmc_traverse, 0, 0, visit, None)
        checked(q.bcm_ipmc_traverse, 0, q.BCM_IPMC_IP6, visit, None)
        self.assertEqual(seen, [6, 0])
        checked(q.bcm_ipmc_remove_all, 0, 1)
        self.assertEqual([q.bcm_ipmc_get_by_index(0, place, found) for place in (index, other, -1, 8192)],
                         [0, q.BCM_E_NOT_FOUND, q.BCM_E_PARAM, q.BCM_E_PARAM])
        checked(q.bcm_ipmc_remove, 0, found)
        self.assertEqual(q.bcm_ipmc_remove(0, found), q.BCM_E_NOT_FOUND)
        for number in range(8192):
            self.add(self.ENTRY._replace(source=number + 1))
        self.assertEqual(q.bcm_ipmc_add(0, record(self.ENTRY._replace(source=9000)), array('int', [0])), q.BCM_E_FULL)
        checked(q.bcm_ipmc_detach, 0)
        self.assertEqual(q.bcm_ipmc_get_by_index(0, 0, found), q.BCM_E_INIT)
        checked(q.bcm_ipmc_init, 0)
        self.assertEqual(q.bcm_ipmc_get_by_index(0, 0, found), q.BCM_E_NOT_FOUND)

    def test_what_is_used_stays(self):
        used, unused = self.add(self.ENTRY, group=5), self.add(self.ENTRY._replace(source=9))
        self.ports()
        found = q.bcm_ipmc_addr_t()
        checked(q.bcm_ipmc_get_by_index, 0, used, found)
        self.assertEqual(found.flags, q.BCM_IPMC_HIT)
        gone = []
        tell = callback('bcm_ipmc_traverse_cb', lambda unit, info, data: gone.append(info.s_ip_addr) or 0)
        checked(q.bcm_ipmc_age, 0, 0, tell, None)
        self.assertEqual((gone, q.bcm_ipmc_get_by_index(0, unused, found)), ([9], q.BCM_E_NOT_FOUND))
        checked(q.bcm_ipmc_age, 0, 0, None, None)
        self.assertEqual(q.bcm_ipmc_get_by_index(0, used, found), q.BCM_E_NOT_FOUND)

    def test_what_changes_where_copies_go(self):
        out = self.interface_ids[20]
        self.add(self.ENTRY, group=5)
        checked(q.bcm_ipmc_egress_intf_add, 0, 5, 3, out)
        self.assertEqual(self.ports(), [2, 3])
        checked(q.bcm_ipmc_enable, 0, 0)
        self.assertEqual(self.ports(), [2])
        checked(q.bcm_ipmc_enable, 0, 1)
        trunk = checked(q.bcm_trunk_create, 0, 0, OUT)
        checked(q.bcm_trunk_member_add, 0, trunk, q.bcm_trunk_member_t(gport=4))
        group = array('int', [5])
        checked(q.bcm_multicast_create, 0, q.BCM_MULTICAST_TYPE_L3 | q.BCM_MULTICAST_WITH_ID, group)
        to_trunk = TRUNK | trunk
        number = checked(q.bcm_multicast_l3_encap_get, 0, 5, to_trunk, out, OUT)
        checked(q.bcm_multicast_egress_add, 0, 5, to_trunk, number)
        self.assertEqual(self.ports(), [2, 3, 4])
        checked(q.bcm_multicast_destroy, 0, 5)
        self.assertEqual(self.ports(), [2, 3])
        # Bridged copies go where the entry says, and the CPU gets one.
        line = q.bcm_mcast_addr_t(mac='01:00:5e:7f:00:00', vid=10, pbmp=[1], l2mc_index=7,
                                  flags=q.BCM_MCAST_L2_INDEX_GIVEN)
        checked(q.bcm_mcast_addr_add, 0, line)
        self.add(self.ENTRY, group=5, group_l2=7, flags=q.BCM_IPMC_REPLACE | q.BCM_IPMC_COPY_TO_CPU)
        self.assertEqual(self.ports(), [0, 3])
        # An interface that is gone gets nothing.
        checked(q.bcm_l3_intf_delete, 0, q.bcm_l3_intf_t(l3a_intf_id=out))
        self.assertEqual(self.ports(), [0])

    def test_masked_ones_come_and_go(self):
        """By masks of their own, which count with the addresses."""
        entry = self.ENTRY._replace(masks=(0xffffff00, 0xffffffff), source=0x0a000063)
        index = self.add(entry, group=5)
        checked(q.bcm_ipmc_egress_intf_add, 0, 5, 3, self.interface_ids[20])
        self.assertEqual(q.bcm_ipmc_add(0, record(entry._replace(source=0x0a000007)), array('int', [0])), q.BCM_E_EXISTS)
        self.assertEqual(self.ports(), [2, 3])
        self.add(self.ENTRY)                                        # goes before it
        self.assertEqual(self.ports(), [2])
        checked(q.bcm_ipmc_remove, 0, record(self.ENTRY))
        found = record(entry._replace(source=0x0a000001))
        self.assertEqual((checked(q.bcm_ipmc_find, 0, found, OUT), found.group), (index, 5))
        self.assertEqual(q.bcm_ipmc_remove(0, record(entry._replace(masks=(0xffff0000, 0xffffffff)))), q.BCM_E_NOT_FOUND)
        checked(q.bcm_ipmc_remove, 0, found)
        self.assertEqual(self.ports(), [2])

    def test_rendezvous_points(self):
        """Packets of a group in a range come in by any interface of its point, others by that of the entry."""
        self.add_vlan(30, 5)
        point = checked(q.bcm_ipmc_rp_create, 0, 0, OUT)
        self.add(self.ENTRY._replace(source=0), group=5, rp_id=point, ing_intf=self.interface_ids[20])
        for port, vlan in ((1, 10), (3, 20), (5, 30)):
            checked(q.bcm_ipmc_egress_intf_add, 0, 5, port, self.interface_ids[vlan])

        def routed():
            """By port of arrival: whether copies leave in other VLANs."""
            return [self.ports(port)[-1] != 2 if port == 1 else 1 in self.ports(port) for port in (1, 3, 5)]
        self.assertEqual(routed(), [False, True, False])
        given = q.bcm_ipmc_range_t(mc_ip_addr=0xe1000000, mc_ip_addr_mask=0xff000000)
        checked(q.bcm_ipmc_range_add, 0, given)
        self.assertEqual(routed(), [False] * 3)
        checked(q.bcm_ipmc_rp_set, 0, point, 2, array('bcm_if_t', [self.interface_ids[vlan] for vlan in (10, 30)]))
        self.assertEqual(routed(), [True, False, True])
        checked(q.bcm_ipmc_rp_delete, 0, point, self.interface_ids[10])
        self.assertEqual(routed(), [False, False, True])
        checked(q.bcm_ipmc_range_delete, 0, given)
        checked(q.bcm_ipmc_range_add, 0, q.bcm_ipmc_range_t(mc_ip_addr=0xe2000000, mc_ip_addr_mask=0xff000000))
        checked(q.bcm_ipmc_range_add, 0, q.bcm_ipmc_range_t(flags=q.BCM_IPMC_IP6))    # all of the other kind
        self.assertEqual(routed(), [False, True, False])

    def test_lines_and_how_ports_send_their_copies(self):
        own = '02:bb:00:00:00:03'
        self.add(self.ENTRY, group=5)
        checked(q.bcm_ipmc_bitmap_set, 0, 5, [3, 4])
        self.assertEqual(checked(q.bcm_ipmc_bitmap_get, 0, 5, OUT), [3, 4])
        self.assertEqual(self.ports(), [2])                         # nobody has said how
        for port, untag in ((3, 0), (4, 1)):
            checked(q.bcm_ipmc_egress_port_set, 0, port, own, untag, 20, 64)
        self.assertEqual(checked(q.bcm_ipmc_egress_port_get, 0, 3, own, OUT, OUT, OUT), (0, 20, 64))
        sent = dict(self.switch.send(1, self.frame))
        # Whatever the VLAN says of tags.
        packet = sent[4][14:]
        self.assertEqual(sent[4][6:12], bytes(bytearray(int(part, 16) for part in own.split(':'))))
        self.assertEqual((sent[3], bytearray(packet)[8]), (sent[4][:12] + b'\x81\0\0\x14\x08\0' + packet, 63))
        self.frame = self.packet(IP4, self.ENTRY.source, self.ENTRY.group, 63).bytes()
        self.assertEqual(self.ports(), [2])
        checked(q.bcm_ipmc_egress_port_set, 0, 4, own, 1, 20, 0)
        self.assertEqual(self.ports(), [2, 4])
        checked(q.bcm_ipmc_bitmap_del, 0, 5, [1, 4])
        self.assertEqual((checked(q.bcm_ipmc_bitmap_get, 0, 5, OUT), self.ports()), ([3], [2]))
        self.assertEqual([q.bcm_ipmc_bitmap_set(0, -1, [1]), q.bcm_ipmc_egress_port_set(0, 3, own, 0, 4095, 1),
                          q.bcm_ipmc_egress_port_set(0, 3, own, 0, 20, 256), q.bcm_ipmc_egress_port_set(0, 99, own, 0, 20, 1)],
                         [q.BCM_E_PARAM] * 3 + [q.BCM_E_PORT])
        checked(q.bcm_ipmc_init, 0)
        self.assertEqual(checked(q.bcm_ipmc_bitmap_get, 0, 5, OUT), [])

    def test_counters(self):
        self.add(self.ENTRY, group=5, port_tgid=1)
        checked(q.bcm_ipmc_egress_intf_add, 0, 5, 3, self.interface_ids[20])
        self.switch.send(1, self.frame)
        self.switch.send(2, self.packet(IP4, self.ENTRY.source, self.ENTRY.group, 64, vlan=10).bytes())
        self.switch.send(1, self.packet(IP4, self.ENTRY.source, self.ENTRY.group, 1).bytes())
        self.switch.send(1, self.packet(IP4, self.ENTRY.source, GROUPS[IP4][1], 64).bytes())

        def counted(port):
            counters = q.bcm_ipmc_counters_t()
            checked(q.bcm_ipmc_counters_get, 0, port, counters)
            return [getattr(counters, name) for name in (
                'in_packets', 'in_bytes', 'out_packets', 'out_bytes', 'no_entry_packets', 'wrong_interface_packets',
                'ttl_expired_packets', 'mtu_exceeded_packets')]
        length = len(self.frame) + 4
        self.assertEqual([counted(port) for port in (1, 2, 3)],
                         [[1, length, 0, 0, 1, 0, 1, 0], [0, 0, 0, 0, 0, 1, 0, 0], [0, 0, 1, length, 0, 0, 0, 0]])
        checked(q.bcm_ipmc_counters_clear, 0, 1)
        self.assertEqual(counted(1), [0] * 8)
        self.assertEqual(q.bcm_ipmc_counters_clear(0, 65), q.BCM_E_PORT)


if __name__ == '__main__':
    unittest.main()
