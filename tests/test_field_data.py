"""Data qualifiers of the field processor: bytes of packets that no named qualifier reaches, against the same bytes as
Python finds them."""
import random
import unittest

import QuorelApiNew as q
from field_model import IP4, UDP, VLAN, facts_of, tags_of
from quorel import array, checked, OUT, sim, StatusError
from test_field_random import Maker

PARAM, MISSING, EXISTS, BUSY = q.BCM_E_PARAM, q.BCM_E_NOT_FOUND, q.BCM_E_EXISTS, q.BCM_E_BUSY
BASES = 'PacketStart L2Header OuterL3Header OuterL4Header MplsHeader TcpPayload UdpPayload IcmpPayload'.split()


def base(name):
    return getattr(q, 'bcmFieldDataOffsetBase' + name)


def layer4_of(frame, place):
    """What is behind the IP header, with its own end; of an untagged type at the place."""
    packet = frame[place + 2:]
    if frame[place:place + 2] != b'\x08\0' or packet[0] >> 4 != 4 or packet[6] & 0x1f or packet[7]:
        return None
    header = 4 * (packet[0] & 15)
    return packet[header:max(packet[2] << 8 | packet[3], header)] if 20 <= header <= len(packet) else None


def bytes_from(name, frame, facts):
    """The packet from the base on; None if it has not got that."""
    _, place = tags_of(frame, MatchingTags)
    if name in ('PacketStart', 'L2Header'):
        return frame
    if name == 'OuterL3Header':
        return frame[place + 2:] if facts.get('EtherType') == frame[place] << 8 | frame[place + 1] else None
    if name == 'MplsHeader':
        return frame[place + 2:] if 'MplsLabel1' in facts else None
    layer4 = layer4_of(frame, place)
    is_there, skipped = {
        'OuterL4Header': (True, 0), 'TcpPayload': ('TcpHeaderSize' in facts, 4 * facts.get('TcpHeaderSize', 0)),
        'UdpPayload': ('is UDP' in facts, 8), 'IcmpPayload': ('IcmpTypeCode' in facts, 8)}[name]
    return layer4[skipped:] if layer4 is not None and is_there and len(layer4) >= skipped else None


class MatchingTags(object):
    outer = inner = VLAN


class DataTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_field_init, 0)
        self.addCleanup(q.bcm_field_init, 0)

    def make(self, base_name='PacketStart', **members):
        record = q.bcm_field_data_qualifier_t(offset_base=base(base_name), **members)
        checked(q.bcm_field_data_qualifier_create, 0, record)
        return record.qual_id

    def group(self, *ids):
        qset = q.bcm_field_qset_t()
        q.bcm_field_qset_add(qset, q.bcmFieldQualifyStageLookup)  # where VLANs do not matter yet
        for id in ids:
            checked(q.bcm_field_qset_data_qualifier_add, 0, qset, id)
        return checked(q.bcm_field_group_create, 0, qset, 1)

    def entry(self, group, **values):
        """One that drops what has those bytes: {'_id': (value, mask)}"""
        entry = checked(q.bcm_field_entry_create, 0, group)
        for name, pair in values.items():
            value, mask = [array('uint8', list(bytearray(each))) for each in pair]
            checked(q.bcm_field_qualify_data, 0, entry, int(name[1:]), value, mask, len(value))
        checked(q.bcm_field_action_add, 0, entry, q.bcmFieldActionDrop, 0, 0, 0)
        checked(q.bcm_field_entry_install, 0, entry)
        return entry

    def drops(self, frame):
        return bool(self.switch.drops(1, frame))


class Bytes(DataTest):
    def test_random_bytes_of_random_packets(self):
        """Each base, with a packet that has the bytes that are asked for, and others."""
        chance = random.Random(5)
        maker, found, wanted, seen = Maker(chance), [], [], dict.fromkeys(BASES, 0)
        frames = [frame for frame in (bytearray(maker.frame()) for _ in range(1500)) if frame[12:14] != b'\x88\xa8'
                  and 'Snap' not in facts_of(frame) and 'Ip6NextHeader' not in facts_of(frame)]
        for name in BASES:
            having = [frame for frame in frames if bytes_from(name, frame, facts_of(frame))]
            for _ in range(6):
                offset, length = chance.choice([0, 1, 12, 13, 30]), chance.choice([1, 2, 8, 9, 16])
                taken = [(frame, bytes_from(name, frame, facts_of(frame))[offset:offset + length]) for frame in having]
                taken = [(frame, data) for frame, data in taken if len(data) == length]
                if not taken:
                    continue
                id = self.make(name, offset=offset, length=length)
                source, value = chance.choice(taken)
                mask = bytearray(chance.choice([255, 255, 255, 0x0f, 0]) for _ in range(length))
                group = self.group(id)
                entry = self.entry(group, **{'_%d' % id: (value, mask)})
                for frame in [source] + chance.sample(frames, 40):
                    data = bytes_from(name, frame, facts_of(frame))
                    data = data[offset:offset + length] if data is not None else b''
                    meets = not any(mask) or len(data) == length and all(
                        (one ^ other) & bits == 0 for one, other, bits in zip(data, value, mask))
                    self.assertEqual('field_rule' in [why for _, why in self.switch.drops(1, bytes(frame))], meets,
                                     (name, offset, length, value, mask, frame))
                    seen[name] += meets
                checked(q.bcm_field_entry_destroy, 0, entry)
                checked(q.bcm_field_group_destroy, 0, group)
                checked(q.bcm_field_data_qualifier_destroy, 0, id)
        self.assertEqual([name for name in BASES if not seen[name]], [])

    def test_packets_for_which_it_holds(self):
        id = self.make('OuterL3Header', offset=9, length=1)
        self.entry(self.group(id), **{'_%d' % id: ('\x11', '\xff')})
        udp = sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01', sim.udp4('10.0.0.17', '10.0.0.2'))
        longer = sim.tagged(udp, 1)
        self.assertEqual([self.drops(udp), self.drops(longer)], [True, True])
        kind = q.bcm_field_data_ethertype_t(ethertype=IP4, vlan_tag=q.bcmFieldDataVlanTagSingle)
        for status in 0, EXISTS:
            self.assertEqual(q.bcm_field_data_qualifier_ethertype_add(0, id, kind), status)
        self.assertEqual([self.drops(udp), self.drops(longer)], [False, True])
        # The last byte of the source address, too, but only of UDP.
        protocol = q.bcm_field_data_ip_protocol_t(ip=UDP, relative_offset=6)
        checked(q.bcm_field_data_qualifier_ip_protocol_add, 0, id, protocol)
        self.assertTrue(self.drops(udp))
        for status in 0, MISSING:
            self.assertEqual(q.bcm_field_data_qualifier_ip_protocol_delete(0, id, protocol), status)
        checked(q.bcm_field_data_qualifier_ethertype_delete, 0, id, kind)
        tunnel = q.bcm_field_data_packet_format_t(tunnel=q.bcmFieldTunnelTypeIp4InIp4, mpls=-1)
        checked(q.bcm_field_data_qualifier_packet_format_add, 0, id, tunnel)
        self.assertFalse(self.drops(udp))
        tunnel.tunnel = q.bcmFieldTunnelTypeNone
        checked(q.bcm_field_data_qualifier_packet_format_add, 0, id, tunnel)
        self.assertTrue(self.drops(udp))


class Objects(DataTest):
    def test_what_there_can_be(self):
        for status, name, members in ((PARAM, 'PacketStart', dict(length=0)), (PARAM, 'PacketStart', dict(length=17)),
                                      (PARAM, 'PacketStart', dict(length=1, offset=-1)),
                                      (PARAM, 'PacketStart', dict(length=1, offset=128)),
                                      (PARAM, 'Count', dict(length=1)), (PARAM, 'PacketStart', dict(length=1, flags=2)),
                                      (q.BCM_E_UNAVAIL, 'HiGigHeader', dict(length=1))):
            with self.assertRaises(StatusError) as raised:
                self.make(name, **members)
            self.assertEqual(raised.exception.status, status, (name, members))
        made = [self.make(length=16) for _ in range(4)]
        self.assertEqual(made, [1, 2, 3, 4])
        with self.assertRaises(StatusError) as raised:
            self.make(length=1)
        self.assertEqual(raised.exception.name, 'BCM_E_RESOURCE')
        checked(q.bcm_field_data_qualifier_destroy, 0, 2)
        self.assertEqual(self.make(length=8, qual_id=9, flags=q.BCM_FIELD_DATA_QUALIFIER_WITH_ID), 9)
        all_of_them = array('bcm_field_data_qualifier_t', 9)
        count = checked(q.bcm_field_data_qualifier_multi_get, 0, 9, all_of_them, OUT)
        self.assertEqual([(each.qual_id, each.length) for each in all_of_them][:count], [(1, 16), (3, 16), (4, 16), (9, 8)])

    def test_who_has_it(self):
        id, other = self.make(length=2), self.make('OuterL3Header', length=4, offset=12)
        group = self.group(id)
        self.assertEqual(q.bcm_field_data_qualifier_destroy(0, id), BUSY)
        self.assertEqual(q.bcm_field_data_qualifier_destroy_all(0), BUSY)
        checked(q.bcm_field_data_qualifier_destroy, 0, other)
        entry = self.entry(group, **{'_%d' % id: ('\1\2', '\xff\xff')})
        two, three = array('uint8', [1, 2]), array('uint8', [1, 2, 3])
        self.assertEqual(q.bcm_field_qualify_data(0, entry, id, three, three, 3), PARAM)
        self.assertEqual(q.bcm_field_qualify_data(0, entry, other, two, two, 2), MISSING)
        third = self.make(length=2)
        self.assertEqual(q.bcm_field_qualify_data(0, entry, third, two, two, 2), PARAM)  # not in the group's set
        value, mask, room = array('uint8', 4), array('uint8', 4), array('uint16', [4])
        twin = checked(q.bcm_field_entry_copy, 0, entry, OUT)
        checked(q.bcm_field_qualify_data_get, 0, twin, id, value, mask, room)
        self.assertEqual((list(value)[:2], list(mask)[:2], room[0]), ([1, 2], [255, 255], 2))
        self.assertEqual(q.bcm_field_qualify_data_get(0, twin, third, value, mask, room), MISSING)
        # A user-defined field is the same by another name.
        length = array('int', [4])
        for status, size in ((PARAM, -1), (PARAM, 1), (PARAM, 65538), (0, 2)):
            self.assertEqual(q.bcm_field_qualify_udf(0, twin, id, size, three, two), status, size)
        checked(q.bcm_field_qualify_udf_get, 0, twin, id, length, value, mask)
        self.assertEqual((list(value)[:2], list(mask)[:2], length[0]), ([1, 2], [1, 2], 2))
        self.assertEqual(q.bcm_field_group_set(0, group, q.bcm_field_qset_t()), BUSY)
        found, qset = array('int', 4), q.bcm_field_qset_t()
        checked(q.bcm_field_group_get, 0, group, qset)
        self.assertEqual(checked(q.bcm_field_qset_data_qualifier_get, 0, qset, 4, found, OUT), 1)
        self.assertEqual(found[0], id)
        for status in 0, MISSING:
            self.assertEqual(q.bcm_field_qset_data_qualifier_delete(0, qset, id), status)
        checked(q.bcm_field_group_flush, 0, group)
        checked(q.bcm_field_group_destroy, 0, group)
        checked(q.bcm_field_data_qualifier_destroy_all, 0)
        self.assertEqual(q.bcm_field_data_qualifier_destroy(0, id), MISSING)


if __name__ == '__main__':
    unittest.main()
