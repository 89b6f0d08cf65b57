"""Actions of the field processor that change addresses, ports and types of packets, with all checksums."""
import itertools
import random
import struct
import unittest

import QuorelApiNew as q
from quorel import array, checked, OUT, sim
from test_field_actions import A, B, VLAN, FieldActionTest

TCP, UDP = 6, 17
TYPES = {4: 0x800, 6: 0x86dd}


def checksum(octets):
    octets = bytes(octets)
    words = struct.unpack('>%dH' % ((len(octets) + 1) // 2), octets + b'\0' * (len(octets) % 2))
    total = sum(words)
    while total >> 16:
        total = (total & 0xffff) + (total >> 16)
    return ~total & 0xffff


def addresses(packet):
    if packet['version'] == 4:
        return struct.pack('>II', packet['source'], packet['to'])
    return b'\x20\1\x0d\xb8' + b'\0' * 11 + b'\1' + b'\x20\1\x0d\xb8' + b'\0' * 11 + b'\2'


def made(**packet):
    """A frame with a tag, of IPv4 or IPv6, with TCP or UDP, whose checksum may be left out."""
    packet = dict(dict(version=4, protocol=UDP, source=0x0a000001, to=0x0a000002, from_port=1000, to_port=80, ttl=64,
                       label=5, macs=(B, A), vlan=VLAN, type=None, data=b'abc', has_checksum=True, number=0), **packet)
    ports, data = struct.pack('>HH', packet['from_port'], packet['to_port']), packet['data']
    if packet['protocol'] == UDP:
        pieces = ports + struct.pack('>H', 8 + len(data)), data
    else:
        pieces = ports + struct.pack('>IIBBH', 1, 2, 0x50, 0x10, 512), b'\0\0' + data
    length = sum(map(len, pieces)) + 2
    pseudo = addresses(packet) + struct.pack('>HH', packet['protocol'], length)
    summed = checksum(pseudo + pieces[0] + b'\0\0' + pieces[1])
    summed = (summed or 0xffff if packet['protocol'] == UDP else summed) if packet['has_checksum'] else 0
    carried = pieces[0] + struct.pack('>H', summed) + pieces[1]
    if packet['version'] == 4:
        head = struct.pack('>BBHHHBBH', 0x45, 0, 20 + length, packet['number'], 0, packet['ttl'], packet['protocol'], 0)
        head += addresses(packet)
        head = head[:10] + struct.pack('>H', checksum(head)) + head[12:]
    else:
        head = struct.pack('>IHBB', 6 << 28 | packet['label'], length, packet['protocol'], packet['ttl'])
        head += addresses(packet)
    return sim.ethernet(packet['macs'][0], packet['macs'][1], head + carried,
                        packet['type'] or TYPES[packet['version']], packet['vlan'])


# Actions, and what they change of a packet of which version.
CASES = [
    ([('SrcIpNew', 0xc0a80105)], lambda version: dict(source=0xc0a80105) if version == 4 else {}),
    ([('DestIpNew', 0xffffffff)], lambda version: dict(to=0xffffffff) if version == 4 else {}),
    ([('SrcL4PortNew', 0)], lambda version: dict(from_port=0)),
    ([('DestL4PortNew', 65535), ('SrcIpNew', 0)],
     lambda version: dict(dict(source=0) if version == 4 else {}, to_port=65535)),
    ([('FlowLabelNew', 0xabcde)], lambda version: dict(label=0xabcde) if version == 6 else {}),
    ([('EtherTypeNew', 0x88b5)], lambda version: dict(type=0x88b5)),
]
KINDS = [dict(version=version, protocol=protocol, has_checksum=has_checksum)
         for version, (protocol, has_checksum) in itertools.product((4, 6), ((TCP, True), (UDP, True), (UDP, False)))]


class Flows(FieldActionTest):
    def check(self, came, leaves):
        for stage, (actions, change) in itertools.product(('ingress', 'egress'), CASES):
            entry = self.installed('lower', 1, stage, *actions)
            for kind in KINDS:
                sent = dict(self.switch.send(1, made(**dict(kind, **came))))[2]
                expected = made(**dict(kind, **dict(leaves, **change(kind['version']))))
                self.assertEqual(sim.difference(expected, sent) if sent != expected else None, None, (stage, actions, kind))
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_of_bridged_packets(self):
        self.check({}, {})

    def test_of_routed_packets(self):
        mac = self.route_to_b()
        self.check(dict(macs=(mac, A)), dict(macs=(B, mac), ttl=63))

    def test_any_checksum(self):
        chance = random.Random(5)
        for _ in range(300):
            packet = dict(source=chance.getrandbits(32), to=chance.getrandbits(32), number=chance.getrandbits(16),
                          protocol=chance.choice([TCP, UDP]), from_port=chance.getrandbits(16))
            now = dict(source=chance.choice([0, 0xffffffff, chance.getrandbits(32)]), from_port=chance.getrandbits(16))
            entry = self.installed('lower', 1, 'ingress', ('SrcIpNew', now['source']), ('SrcL4PortNew', now['from_port']))
            self.assertEqual(dict(self.switch.send(1, made(**packet)))[2], made(**dict(packet, **now)), (packet, now))
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_what_has_none_of_it(self):
        self.installed('lower', 1, 'ingress', ('SrcIpNew', 1), ('SrcL4PortNew', 1), ('FlowLabelNew', 1))
        for frame in (sim.ethernet(B, A, b'\0' * 46, 0x88b5, VLAN), sim.ethernet(B, A, b'\x42\x42\3' + b'\0' * 43, 46, VLAN)):
            self.assertEqual(self.switch.send(1, frame), [(2, frame)])
        later = made(protocol=UDP)
        later = later[:24] + b'\0\x10' + later[26:]  # a fragment behind the first one has no ports
        sent = dict(self.switch.send(1, later))[2]
        self.assertEqual((sent[30:34], sent[38:]), (b'\0\0\0\1', later[38:]))

    def test_stages_that_are_not_asked(self):
        for early, stage in (('LookupDisable', 'ingress'), ('EgressLookupDisable', 'egress')):
            entries = [self.installed('late', 1, stage, ('Drop',))]
            self.assertEqual(self.ports(1, made()), [])
            entries.append(self.installed('early', 1, 'lookup', (early,)))
            self.assertEqual(self.ports(1, made()), [2])
            for entry in entries:
                checked(q.bcm_field_entry_destroy, 0, entry)
        self.installed('late', 1, 'egress', ('Drop',))
        self.installed('early', 1, 'ingress', ('EgressLookupDisable',))
        self.assertEqual(self.ports(1, made()), [2])

    def test_policers_that_see_no_colours(self):
        policer = checked(q.bcm_policer_create, 0, q.bcm_policer_config_t(
            flags=q.BCM_POLICER_BEGIN_WITH_BUCKET_FULL | q.BCM_POLICER_MODE_PACKETS, ckbits_sec=1, ckbits_burst=3), OUT)
        red = FieldActionTest.frame(self, 'Red')
        for actions, queues in (([], [6] * 2), ([('PolicerColorBlind',)], [6] * 2),
                                ([('PolicerLevel0Set', policer)], [6] * 2),
                                ([('PolicerLevel0Set', policer), ('PolicerColorBlind',)], [5] * 2)):
            entry = self.installed('lower', 1, 'ingress', ('GpCosQNew', 5), ('RpCosQNew', 6), *actions)
            self.assertEqual([self.becomes(red)['queue'] for _ in range(2)], queues, actions)
            checked(q.bcm_field_entry_destroy, 0, entry)


class Extractions(FieldActionTest):
    """Parameters that are put together of what the packet has."""

    def setUp(self):
        FieldActionTest.setUp(self)
        qset = q.bcm_field_qset_t()
        for name in 'InPort', 'L4DstPort', 'SrcIp', 'MplsLabel1Id', 'OutPorts':
            q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualify' + name))
        self.groups[1, 'ingress'] = checked(q.bcm_field_group_create, 0, qset, 1)

    def pieces(self, *given):
        """Of (qualifier or None, lsb or constant, bits)"""
        made = array('bcm_field_extraction_field_t', len(given))
        for piece, (name, number, bits) in zip(made, given):
            piece.bits = bits
            if name is None:
                piece.flags, piece.value = q.BCM_FIELD_EXTRACTION_FIELD_CONSTANT, number
            else:
                piece.qualifier, piece.lsb = getattr(q, 'bcmFieldQualify' + name), number
        return made

    def add_pieces(self, entry, name, bias, *given):
        action = q.bcm_field_extraction_action_t(action=getattr(q, 'bcmFieldAction' + name), bias=bias)
        return q.bcm_field_direct_extraction_action_add(0, entry, action, len(given), self.pieces(*given))

    def extracting(self, name, bias, *given):
        entry = self.entry(self.group(1))
        self.assertEqual(self.add_pieces(entry, name, bias, *given), 0)
        checked(q.bcm_field_entry_install, 0, entry)
        return entry

    def test_numbers_of_packets(self):
        entry = self.extracting('CosQNew', 1, ('L4DstPort', 4, 3))
        for to_port, queue in ((0x10, 2), (0x5f, 6), (0x70, 0), (0, 1)):  # 8 is none
            self.assertEqual(self.becomes(made(to_port=to_port))['queue'], queue)
        self.assertEqual(self.becomes(sim.ethernet(B, A, b'\0' * 46, 0x88b5, VLAN))['queue'], 0)
        checked(q.bcm_field_entry_destroy, 0, entry)
        self.extracting('SrcIpNew', 0, ('L4DstPort', 0, 16), (None, 5, 8), ('SrcIp', 24, 8))
        self.assertEqual(dict(self.switch.send(1, made(to_port=0x1234)))[2], made(to_port=0x1234, source=0x0a051234))

    def test_what_is_further_in(self):
        label = sim.ethernet(B, A, struct.pack('>I', 5 << 12 | 0x140) + b'\0' * 42, 0x8847, VLAN)
        self.extracting('PrioIntNew', 0, ('MplsLabel1Id', 0, 3))
        self.assertEqual([self.becomes(frame)['queue'] for frame in (label, made())], [5, 0])

    def test_what_is_kept_and_refused(self):
        entry = self.entry(self.group(1))
        for wrong in ([], [('L4SrcPort', 0, 3)], [('L4DstPort', 0, 0)], [('L4DstPort', 0, 16), ('L4DstPort', 0, 17)],
                      [(None, 8, 3)]):
            self.assertEqual(self.add_pieces(entry, 'CosQNew', 0, *wrong), q.BCM_E_PARAM, wrong)
        given = ('L4DstPort', 1, 2), (None, 1, 1)
        self.assertEqual([self.add_pieces(entry, 'CosQNew', 3, *given) for _ in range(2)], [0, q.BCM_E_EXISTS])
        found = self.pieces(*[(None, 0, 1)] * 3)
        self.assertEqual(tuple(checked(q.bcm_field_direct_extraction_action_get, 0, entry, q.bcmFieldActionCosQNew, OUT, 3,
                                       found, OUT)), (3, 2))
        self.assertEqual([(piece.qualifier, piece.lsb, piece.bits, piece.value) for piece in list(found)[:2]],
                         [(q.bcmFieldQualifyL4DstPort, 1, 2, 0), (0, 0, 1, 1)])
        for status, name, piece in ((q.BCM_E_UNAVAIL, 'Drop', ('L4DstPort', 0, 3)),
                                    (q.BCM_E_UNAVAIL, 'RedirectVlan', ('L4DstPort', 0, 3)),
                                    (q.BCM_E_UNAVAIL, 'CosQNew', ('OutPorts', 0, 3)),
                                    (q.BCM_E_PARAM, 'CosQNew', ('L4DstPort', 14, 3))):
            other = self.entry(self.group(1))
            self.assertEqual(self.add_pieces(other, name, 0, piece), 0)
            self.assertEqual(q.bcm_field_entry_install(0, other), status, name)


if __name__ == '__main__':
    unittest.main()
