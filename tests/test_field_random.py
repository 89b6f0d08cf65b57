"""Random entries of the field processor and random packets, against the model of field_model.py: which entry acts in
each group of all three stages, what it counts, and whether the packet goes on.

FIELD_PACKETS=100000 python2.7 run.py test_field_random compares that many packets; FIELD_SEED begins elsewhere.
"""
import ctypes
import os
import random
import re
import sys
import unittest

import QuorelApiNew as q
from field_model import (ARP, CLASSES, CN_TAG, E_TAG, ESP, FCOE, FRAGMENT, GPORT_KINDS, GRE, HOP_BY_HOP, ICMP, ICMP6, IGMP,
                         IP4, IP4_IN_IP, IP6, IP6_IN_IP, MIM, MPLS, MPLS_MULTICAST, OAM, OPTIONS, OSPF, RARP, ROUTED,
                         ROUTING, SCTP, TCP, TEB, TRILL, UDP, VLAN, VN_TAG, VXLAN, AnyKind, Bridge, Bytes, Entry, Kind,
                         Masked, Ports, Range, Single, Tags, acting, is_met)
from quorel import array, checked, OUT, sim
from simulator import TRUNK

# A debug interpreter is slow, and repeats each test.
PACKETS = int(os.environ.get('FIELD_PACKETS', 500 if hasattr(sys, 'gettotalrefcount') else 3000))
FIRST_SEED = int(os.environ.get('FIELD_SEED', 0))
ROUND = 250  # packets that meet the same entries
ENTRIES = 10  # of each of two groups of each stage

MEMBERS = 1, 2, 3  # of all VLANs; the others only take packets
SERVICE_TAGS, IN_TRUNK, SENDER, YELLOW = 4, 5, 6, 40
ARRIVALS = MEMBERS + (SERVICE_TAGS, IN_TRUNK, YELLOW)
TRUNK_ID, GROUP = 7, 9
VLANS = 1, 10, 20
SERVICE_TPID = 0x88a8
MODULE = 0
STATIC, MOVING = '02:00:00:00:00:01', '02:00:00:00:00:02'
TO_PORT, TO_TRUNK, TO_NOWHERE = '02:00:00:00:01:01', '02:00:00:00:01:02', '02:00:00:00:01:03'
TO_GROUP = '01:00:5e:01:01:01'
TARGETS = [TO_PORT, TO_TRUNK, TO_NOWHERE, TO_GROUP, '02:00:00:00:01:09', 'ff:ff:ff:ff:ff:ff', '01:00:5e:00:00:05']
IPS = [0x0a000001, 0x0a000102, 0x0a010203, 0xc0a80001, 0xffffffff, 0]
IP6S = [0x20010db8 << 96 | 1, 0x20010db8 << 96 | 1 << 64 | 1, 0xfe80 << 112 | 7]
APPLICATION_PORTS = 179, 319, 320, 520, 521, 646, 3503, 3784, 3784, 4784, 6784
L4_PORTS = 0, 53, 67, 68, 80, 443, 546, 547, 1023, 1024, 40000, 65535

# Qualifiers with a value and a mask, and how many bits they have.
MASKED = dict(
    InPort=8, SrcPort=16, SrcTrunk=16, OutPort=8, DstPort=16, DstTrunk=16, DstL2MulticastGroup=16, DstMulticastGroups=16,
    EtherType=16, SrcMac=48, DstMac=48, L2PayloadFirstEightBytes=64, OuterVlan=16, OuterVlanId=12, OuterVlanPri=3,
    OuterVlanCfi=1, OuterVlanPriCfi=4, InnerVlan=16, InnerVlanId=12, InnerVlanPri=3, InnerVlanCfi=1, VlanFormat=2,
    ForwardingVlanId=12, IngressStpState=3, L2SrcHit=1, L2SrcStatic=1, L2DestHit=1, Drop=1, SrcIp=32, DstIp=32,
    SrcIp6=128, DstIp6=128, SrcIp6High=64, DstIp6High=64, SrcIp6Low=64, DstIp6Low=64, IpProtocol=8, Ip6NextHeader=8,
    DSCP=6, Tos=8, TosLower4Bits=4, EcnValue=2, Ip6TrafficClass=8, Ip6FlowLabel=20, Ttl=8, Ip6HopLimit=8, IpFlags=2,
    IpFragNonOrFirst=1, ExtensionHeaderType=8, PacketLength=16, PacketSize=16, L4SrcPort=16, L4DstPort=16, TcpControl=8,
    TcpHeaderSize=4, Dhcp=1, IcmpTypeCode=16, IgmpTypeMaxRespTime=16, ArpSenderIp4=32, ArpTargetIp4=32,
    ExtensionHeader2Type=8, IcmpError=1, Llc=24, Snap=40, MplsControlWordValid=1, MplsControlWord=32,
    RouterAlertLabelValid=1, GenericAssociatedChannelLabelValid=1, VxlanFlags=8, VxlanHeaderBits8_31=24,
    VxlanNetworkId=24, VxlanHeaderBits56_63=8, L2GreProtocolType=16, L2GreVsid=24, L2GreFlowId=8, ISid=24,
    InnerDstMac=48, InnerSrcMac=48, InnerEtherType=16, InnerSrcIp=32, InnerDstIp=32, InnerSrcIp6=128, InnerDstIp6=128,
    InnerSrcIp6High=64, InnerDstIp6High=64, InnerIpProtocol=8, InnerIp6NextHeader=8, InnerTos=8, InnerDSCP=6,
    InnerTtl=8, InnerIp6HopLimit=8, InnerIp6FlowLabel=20, InnerL4SrcPort=16, InnerL4DstPort=16, IntPriority=8,
    L3Routable=1, ForwardingVlanValid=1, PacketRes=8, TranslatedVlanFormat=2, TrunkMemberSourceModuleId=31, SrcGports=31,
    SrcModPortGports=31, DstGports=31, L3Ingress=31, InterfaceClassL2=32, InterfaceClassL3=32, IncomingIpIfClass=32,
    L2StationMove=1, L2Learn=1, LearnSrcMac=48, LearnVlan=12, ReplicantAny=1, ReplicantFirst=1)
MASKED.update(
    TrillEgressRbridge=16, TrillIngressRbridge=16, TrillIVersion=2, TrillMultiDestination=1, TrillOpLength=5,
    TrillHopCount=6, FcoeSOF=8, FcoeVersionIsZero=1, FibreChanRCtl=8, FibreChanDstId=24, FibreChanCSCtl=8,
    FibreChanSrcId=24, FibreChanType=8, FibreChanFCtl=24, FibreChanDFCtl=8, FcoeOxID=16, FcoeRxID=16,
    FibreChanVFTValid=1, FibreChanVFTVersion=2, FibreChanVFTPri=3, FibreChanVFTFabricId=12, FibreChanVFTHopCount=8,
    MplsBos=1, TrillPayload=64)
MASKED.update(
    ExtensionHeaderSubCode=8, L4Ports=1, ForwardHdrSrcMac=48, ForwardHdrDstMac=48, ForwardHdrVlanId=12, VnTag=32,
    CnTag=16, ITag=32, ETag=48, ECid=22, IngressECid=20, OamMdl=3, MplsOamACH=32, MplsOamGALLabelOnly=1,
    BfdYourDiscriminator=32)
MASKED.update(('%sOamHeaderBits%s' % (of, bits), 32) for of in ('', 'Ethernet', 'Mpls') for bits in ('0_31', '32_63'))
MASKED.update((name, 32 if 'Class' in name else 1) for name in ROUTED)
for end, bits in (('', 32), ('Id', 20), ('Exp', 3), ('Bos', 1), ('Ttl', 8)):
    MASKED.update(('MplsLabel%d%s' % (label, end), bits) for label in (1, 2, 3))
for end, bits in (('', 16), ('Id', 12), ('Pri', 3), ('Cfi', 1)):
    MASKED.update(('Translated%sVlan%s' % (which, end), bits) for which in ('Outer', 'Inner'))
MASKED.update((name, 16) for name in CLASSES.values())
MASKED.update(InterfaceClassPort=32, SrcClassL3=32, DstClassL3=32, InterfaceLookupClassPort=32,
              IngressInterfaceClassPort=32, InterfaceClassProcessingPort=32, VlanTranslationHit=1)
SINGLE = ('OuterTpid InnerTpid EqualL4Port SrcIpEqualDstIp TcpSequenceZero Color StpState DstMulticastGroup').split()
GPORTS = 'SrcGport SrcModPortGport SrcTrunkMemberGport DstGport LearnSrcPort SrcModuleGport'.split()
KINDS = ('IpType IpFrag IpProtocolCommon L2Format ArpOpcode TunnelType InnerIpType InnerIpFrag '
         'ForwardingType Stage InnerIpProtocolCommon OamType MplsOamControlPktType AppType HeaderFormat '
         'FibreChanOuter FibreChanInner').split()
PORT_SETS = 'InPorts InterfaceInPorts DevicePortBitmap SystemPortBitmap SourceGportBitmap OutPorts'.split()
FORMATS = [name[len('bcmFieldHeaderFormat'):] for name in dir(q) if name.startswith('bcmFieldHeaderFormat')
           and not name.endswith('Count')]
RANGES = 'RangeCheck L4PortRangeCheck PacketLengthRangeCheck'.split()
DROPS = 'Drop', 'DropCancel', 'ArpDrop', 'DhcpDrop', 'MacMoveDrop', 'FloodDisable'
# What each entry counts: all, and by what becomes of packets.
COUNTED = [getattr(q, 'bcmFieldStat' + kind) for kind in (
    'Packets', 'Bytes', 'ForwardedPackets', 'ForwardedBytes', 'DroppedPackets', 'YellowDroppedPackets',
    'ReplicatedPackets')]
OTHERS = ['L2PayLoad', 'HeaderFormatSet']
ALL = sorted(MASKED) + OTHERS + SINGLE + GPORTS + KINDS + PORT_SETS + RANGES
# What is not known before the tables have been looked up, and what is not any more for a copy that leaves.
LATER = ('OutPort OutPorts DstPort DstGport ForwardingVlanId Color DstTrunk DstL2MulticastGroup DstMulticastGroup '
         'DstMulticastGroups StpState IngressStpState L2SrcHit L2SrcStatic L2DestHit Drop IntPriority L3Routable '
         'ForwardingVlanValid ForwardingType PacketRes SrcGports SrcModPortGports DstGports L3Ingress InterfaceClassL2 '
         'InterfaceClassL3 IncomingIpIfClass VlanTranslationHit').split() + list(CLASSES.values()) + ROUTED
LEARNING = 'L2StationMove L2Learn LearnSrcMac LearnVlan LearnSrcPort'.split()
REPLICATION = ['ReplicantAny', 'ReplicantFirst']
TRANSLATED = [name for name in MASKED if name.startswith('Translated')]
LATER += TRANSLATED + LEARNING + REPLICATION
NOT_TO_SEND = ('DstTrunk DstL2MulticastGroup DstMulticastGroup DstMulticastGroups StpState IngressStpState L2SrcHit '
               'L2SrcStatic L2DestHit Drop PacketRes').split() + TRANSLATED + LEARNING
STAGES = [('StageLookup', [name for name in ALL if name not in LATER]),
          ('StageIngress', [name for name in ALL if name not in REPLICATION]),
          ('StageEgress', [name for name in ALL if name not in NOT_TO_SEND])]
SIDES = dict(L4SrcPort=q.BCM_FIELD_RANGE_SRCPORT, L4DstPort=q.BCM_FIELD_RANGE_DSTPORT,
             OuterVlanId=q.BCM_FIELD_RANGE_OUTER_VLAN, InnerVlanId=q.BCM_FIELD_RANGE_INNER_VLAN,
             PacketLength=q.BCM_FIELD_RANGE_PACKET_LENGTH)
PROTOCOLS = dict(Tcp=q.BCM_FIELD_RANGE_TCP, Udp=q.BCM_FIELD_RANGE_UDP)


def octets(value, count):
    return bytearray(value >> 8 * place & 255 for place in reversed(range(count)))


def mac_octets(text):
    return bytearray.fromhex(text.replace(':', ''))


def mac_text(value):
    return ':'.join('%02x' % octet for octet in octets(value, 6))


def mac_number(text):
    return int(text.replace(':', ''), 16)


class Maker(object):
    """Random frames: mostly sound ones, some with bytes that chance has changed."""

    def __init__(self, chance):
        self.chance = chance

    def frame(self):
        chance = self.chance
        source = chance.choice([STATIC, MOVING, '02:00:00:00:02:%02x' % chance.randrange(40)])
        head = mac_octets(chance.choice(TARGETS)) + mac_octets(source)
        tpids = chance.choice([(), (), (VLAN,), (VLAN, VLAN), (SERVICE_TPID,), (SERVICE_TPID, VLAN),
                               (VLAN, SERVICE_TPID), (0x9100, VLAN), (VLAN, VLAN, VLAN)])
        for tpid in tpids:
            vlan = chance.choice(VLANS + VLANS + (30, 4095))
            head += octets(tpid, 2) + octets(chance.randrange(16) << 12 | vlan, 2)
        if len(tpids) == 1 and chance.random() < 0.1:
            head[-2:] = octets(chance.randrange(16) << 12, 2)  # a tag for its priority alone
        kind, payload = chance.choice([self.ip4, self.ip4, self.ip6, self.ip6, self.arp, self.logical_link,
                                       self.other, self.labels, self.mac_in_mac, self.trill, self.control])()
        body = octets(kind, 2) + payload
        if chance.random() < 0.25:
            for _ in range(chance.randrange(1, 4)):
                body[chance.randrange(2, len(body))] = chance.choice([0, 1, 255, chance.randrange(256)])
        return bytes((head + body).ljust(60, b'\0'))

    def l4(self, protocol):
        chance = self.chance
        ports = octets(chance.choice(L4_PORTS), 2) + octets(chance.choice(L4_PORTS), 2)
        if protocol == TCP:
            return (ports + octets(chance.choice([0, 7]), 4) + octets(9, 4)
                    + bytearray([chance.choice([0x50, 0x60]), chance.randrange(256)]) + octets(0, 6))
        if protocol in (UDP, TCP) and chance.random() < 0.2:
            ports[2:] = octets(chance.choice(APPLICATION_PORTS), 2)
            return ports + octets(0, 4) + self.some(chance.choice([23, 24, 40]))
        if protocol == UDP and chance.random() < 0.3:
            ports[2:] = octets(chance.choice([VXLAN, VXLAN, VXLAN, 6081, 2152, 5247]), 2)
            return ports + octets(0, 4) + octets(chance.choice([8, 0x0c]), 1) + self.some(7) + self.carried_frame()
        if protocol in (UDP, SCTP):
            return ports + octets(8, 2) + octets(0, 2)
        if protocol in (IP4_IN_IP, IP6_IN_IP):
            return (self.ip4 if protocol == IP4_IN_IP else self.ip6)()[1]
        if protocol == GRE:
            return self.gre()
        return octets(chance.choice([0x0800, 0x0000, 0x0301, 0x8700, 0x1164, 0x8200, 0x8500, 0x8800]), 2) + octets(0, 6)

    def some(self, count):
        return bytearray(self.chance.choice([0, 1, 7, 255]) for _ in range(count))

    def gre(self):
        chance = self.chance
        flags = chance.choice([0, 0x2000, 0x2000, 0x8000, 0xb000, 0x1000, 0x2001])
        more = self.some(4 * bin(flags & 0xb000).count('1'))
        kind, payload = chance.choice([self.ip4, self.ip6, lambda: (TEB, self.carried_frame()),
                                       lambda: (TEB, self.carried_frame())])()
        return octets(flags, 2) + octets(kind, 2) + more + payload

    def carried_frame(self):
        chance = self.chance
        kind, payload = chance.choice([self.ip4, self.ip6, self.arp])()
        tag = chance.choice([bytearray(), bytearray(), octets(VLAN, 2) + octets(77, 2)])
        return mac_octets(chance.choice(TARGETS)) + mac_octets(STATIC) + tag + octets(kind, 2) + payload

    def labels(self):
        chance = self.chance
        count = chance.choice([1, 1, 2, 3, 4])
        labels = [chance.choice([0, 1, 13, 16, 0xfffff]) << 12 | chance.randrange(8) << 9 | chance.choice([1, 64])
                  for _ in range(count)]
        labels[-1] |= 0x100
        if chance.random() < 0.3:
            labels[-1] = 13 << 12 | labels[-1] & 0xfff
        _, inner = chance.choice([self.ip4, self.ip6, lambda: (None, octets(0x1234, 4)), self.other, self.channel])()
        return chance.choice([MPLS, MPLS, MPLS_MULTICAST]), bytearray().join(octets(each, 4) for each in labels) + inner

    def mac_in_mac(self):
        return MIM, self.some(4) + self.carried_frame()

    def channel(self):
        kind = self.chance.choice([7, 7, 10, 12, 0x21, OAM])
        return None, octets(0x1000 << 16 | kind, 4) + octets(self.chance.choice([0x2001, 0x2002]), 2) + self.some(30)

    def control(self):
        """What protocols of bridges send, and tags that stand in place of a type."""
        chance = self.chance
        kind = chance.choice([0x88cc, 0x888e, 0x8809, 0x88f5, 0x88f6, 0x22ea, 0x88f7, VN_TAG, E_TAG, CN_TAG] + [OAM] * 5)
        first = octets(chance.choice([0x0101, 0x0105, 0xe027]), 2)
        if kind == OAM:
            first = bytearray([chance.randrange(8) << 5, chance.choice([1, 2, 3, 4, 5, 33, 35, 37, 39, 43, 47, 50])])
        return kind, first + bytearray(chance.randrange(256) for _ in range(chance.choice([2, 5, 40])))

    def filled(self):
        return bytearray(self.chance.choice([0, 0, 0, 1, 20, 500]))

    def ip4(self):
        chance = self.chance
        words = chance.choice([5, 5, 5, 6, 15])
        protocol = chance.choice([TCP, TCP, UDP, UDP, ICMP, IGMP, OSPF, SCTP, GRE, IP4_IN_IP, IP6_IN_IP])
        payload = self.l4(protocol) + self.filled()
        flags, offset = chance.choice([0, 0, 2, 2, 1]), chance.choice([0, 0, 0, 0, 185])
        length = 4 * words + len(payload)
        return IP4, (bytearray([0x40 | words, chance.randrange(256)])
                     + octets(chance.choice([length] * 9 + [length - len(payload) + 3, 0]), 2) + octets(77, 2)
                     + octets(flags << 13 | offset, 2) + bytearray([chance.choice([0, 1, 64, 255]), protocol, 0, 0])
                     + octets(chance.choice(IPS), 4) + octets(chance.choice(IPS), 4) + octets(0, 4 * words - 20)
                     + payload)

    def ip6(self):
        chance = self.chance
        protocol = chance.choice([TCP, TCP, UDP, UDP, ICMP6, SCTP, ESP, 59, GRE, IP4_IN_IP, IP6_IN_IP])
        kinds = chance.choice([(), (), (HOP_BY_HOP,), (FRAGMENT,), (OPTIONS, FRAGMENT),
                               (HOP_BY_HOP, ROUTING, OPTIONS)])
        payload = bytearray()
        for place, kind in enumerate(kinds):
            following = (kinds + (protocol,))[place + 1]
            if kind == FRAGMENT:
                piece = octets(chance.choice([0, 0, 1, 8 << 3, 8 << 3 | 1]), 2)
                payload += bytearray([following, 0]) + piece + octets(5, 4)
            else:
                longer = chance.choice([0, 0, 1])
                payload += bytearray([following, longer]) + bytearray(6 + 8 * longer)
        payload += self.l4(protocol) + self.filled()
        length = chance.choice([len(payload)] * 9 + [len(payload) // 2])
        return IP6, (octets(6 << 28 | chance.randrange(256) << 20 | chance.choice([0, 5, 0xfffff]), 4)
                     + octets(length, 2)
                     + bytearray([(kinds + (protocol,))[0], chance.choice([1, 64])])
                     + octets(chance.choice(IP6S), 16) + octets(chance.choice(IP6S), 16) + payload)

    def arp(self):
        chance = self.chance
        kind, operation = chance.choice([ARP, ARP, RARP]), chance.choice([1, 1, 2, 3, 4, 8, 9, 7])
        return kind, (bytearray([0, 1, 8, 0, 6, 4, 0, operation]) + octets(0, 6) + octets(chance.choice(IPS), 4)
                      + octets(0, 6) + octets(chance.choice(IPS), 4))

    def logical_link(self):
        chance = self.chance
        header = chance.choice([bytearray([0x42, 0x42, 3]), bytearray([0xfe, 0xfe, 3]), bytearray([0xaa, 0xaa, 3, 0, 0, 0]),
                                bytearray([0xaa, 0xaa, 3, 0, 0, 0]), bytearray([0xaa, 0xaa, 3, 0, 0, 12])])
        kind, payload = chance.choice([self.ip4, self.ip6, self.arp, self.other])()
        if len(header) > 3:
            payload = octets(kind, 2) + payload
        length = chance.choice([len(header) + len(payload)] * 5 + [2, 7])
        return min(length, 0x5ff), header + payload

    def other(self):
        kind = self.chance.choice([0x88b5, 0x8847, 0x8848, TRILL, 0x88e7, 0x8863, 0x8864, 0x22e9, FCOE])
        payload = bytearray(self.chance.randrange(256) for _ in range(self.chance.choice([1, 30, 60])))
        if kind == FCOE and len(payload) > 30:
            payload[0], payload[14] = self.chance.choice([0, 0x10]), self.chance.choice([0x50, 0x50, 0x51, 0x52, 6])
            payload[22] = self.chance.choice([0x50, 0x51, 6])
        return kind, payload

    def trill(self):
        options = self.chance.choice([0, 0, 1, 2])
        head = octets(self.chance.choice([0, 0, 0x0800, 0x4000]) | options << 6 | self.chance.randrange(64), 2)
        return TRILL, head + self.some(4 + 4 * options) + self.carried_frame()


class Conditions(object):
    """Random conditions, most of which some packet meets."""

    def __init__(self, chance):
        self.chance = chance
        self.ranges = []

    def make_ranges(self):
        chance = self.chance
        for id in range(1, 9):
            sides = chance.choice([('L4DstPort',), ('L4SrcPort',), ('L4SrcPort', 'L4DstPort'), ('OuterVlanId',),
                                   ('OuterVlanId', 'InnerVlanId'), ('PacketLength',), ('PacketLength',)])
            is_l4 = sides[0].startswith('L4')
            most = 65535 if is_l4 else 4095 if 'Vlan' in sides[0] else 700
            pieces = [sorted(chance.choice(L4_PORTS) % (most + 1) if is_l4 else chance.randrange(most + 1)
                             for _ in range(2)) for _ in range(chance.choice([1, 1, 3]))]
            protocols = chance.choice([(), ('Tcp',), ('Udp',), ('Tcp', 'Udp')]) if is_l4 else ()
            flags = sum(SIDES[side] for side in sides) + sum(PROTOCOLS[protocol] for protocol in protocols)
            if len(pieces) == 1:
                checked(q.bcm_field_range_create_id, 0, id, flags, *pieces[0])
            else:
                ends = [array('bcm_l4_port_t', column) for column in zip(*pieces)]
                made = checked(q.bcm_field_range_multi_create, 0, OUT, flags, len(pieces), *ends)
                assert made == id, 'the lowest id that is free'
            self.ranges.append((id, sides, pieces, protocols))

    def one(self, name, facts):
        """A condition on the qualifier; by chance one that these facts meet."""
        chance = self.chance
        if name in RANGES:
            fitting = [each for each in self.ranges
                       if name == 'RangeCheck' or each[1][0].startswith('L4' if name.startswith('L4') else 'Packet')]
            return fitting and Range(name, *(chance.choice(fitting) + (chance.random() < 0.4,))) or None
        if name in PORT_SETS:
            ports = set(chance.sample(ARRIVALS, 3)) | (facts.get(name, set()) if chance.random() < 0.7 else set())
            return Ports(name, sorted(ports), chance.choice([range(65), chance.sample(range(1, 65), 32)]))
        if name in GPORTS or name in KINDS:
            kinds = sorted(facts.get(name, ()))
            others = ARRIVALS if name in GPORTS else {
                'IpType': ['NonIp', 'Ip', 'Ipv4NoOpts'], 'IpFrag': ['Non', 'Any'], 'L2Format': ['EthII', 'Llc'],
                'IpProtocolCommon': ['TcpUdp', 'Gre', 'Esp'], 'ArpOpcode': ['Reply'], 'TunnelType': ['None', 'Vxlan'],
                'InnerIpType': ['Ip'], 'InnerIpFrag': ['Non'], 'ForwardingType': ['L3'],
                'Stage': ['Lookup', 'Ingress'], 'InnerIpProtocolCommon': ['TcpUdp', 'Igmp'],
                'OamType': ['None', 'EthernetCcm'], 'MplsOamControlPktType': ['None', 'Ach'], 'AppType': ['Dns'],
                'HeaderFormat': ['Ip4', 'Ip6'], 'FibreChanOuter': ['None'], 'FibreChanInner': ['None']}[name]
            return Kind(name, chance.choice(kinds if kinds and chance.random() < 0.8 else others))
        if name == 'HeaderFormatSet':
            kinds = set(chance.sample(FORMATS, 3)) | (facts['HeaderFormat'] if chance.random() < 0.5 else set())
            return AnyKind(name, sorted(kinds))
        if name == 'L2PayLoad':
            value = facts[name][:chance.choice([1, 2, 8, 9, 32])]
            if chance.random() < 0.1:
                value[chance.randrange(len(value))] ^= 1
            return Bytes(name, value, bytearray(chance.choice([255, 255, 0xf0, 0]) for _ in value))
        value = facts.get(name, 1)
        if name in SINGLE:
            return Single(name, value if chance.random() < 0.8 else 0)
        width = MASKED[name]
        ones = (1 << width) - 1
        mask = chance.choice([ones, ones, ones, ones >> width // 2 << width // 2, ones >> width // 2,
                              chance.getrandbits(width), 0])
        return Masked(name, value ^ (1 << chance.randrange(width) if chance.random() < 0.1 else 0), mask)


def arguments(condition):
    """As the function of the qualifier takes the condition."""
    name = condition.name
    if isinstance(condition, Range):
        return condition.id, int(condition.inverted)
    if isinstance(condition, Ports):
        return condition.ports, condition.mask
    if isinstance(condition, Kind):
        kind = condition.kind
        if name in KINDS:
            return getattr(q, 'bcmField%s%s' % (re.sub('Inner|Outer|PktType', '', name), kind)),
        if name == 'SrcModuleGport':
            return GPORT_KINDS['port'] << 26 | kind << 11 | 5,  # the port does not count
        return kind if isinstance(kind, int) else TRUNK | kind[1],
    if isinstance(condition, Single):
        return condition.value,
    if isinstance(condition, Bytes):
        return (len(condition.value),) + tuple(array('uint8', list(each)) for each in (condition.value, condition.mask))
    if isinstance(condition, AnyKind):
        formats = q.bcm_field_header_format_set_t()
        ctypes.c_uint32.from_address(int(formats.this)).value = sum(
            1 << getattr(q, 'bcmFieldHeaderFormat' + kind) for kind in condition.kinds)
        return formats,
    pair, width = (condition.value, condition.mask), MASKED[name]
    if name in ('SrcPort', 'DstPort'):
        return (pair[0] >> 8, pair[1] >> 8, pair[0] & 255, pair[1] & 255)
    if name == 'L2PayloadFirstEightBytes':
        return tuple(number >> shift & 0xffffffff for number in pair for shift in (32, 0))
    if name.endswith('Mac'):
        return tuple(map(mac_text, pair))
    if name == 'Snap':
        return tuple(q.bcm_field_snap_header_t(org_code=number >> 16, type=number & 0xffff) for number in pair)
    if name == 'Llc':
        return tuple(q.bcm_field_llc_header_t(dsap=number >> 16, ssap=number >> 8 & 255, control=number & 255)
                     for number in pair)
    if name.endswith(('Ip6', 'Ip6High', 'Ip6Low')):
        # The other half does not count.
        return tuple(array('uint8', list(octets(number << 64 | 0xa5a5 if name.endswith('High') else number, 16)))
                     for number in pair)
    return pair


class Matching(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_field_init, 0)

    def bridge(self):
        """Configures the switch, and says how."""
        self.switch.fresh()
        for vlan in VLANS[1:]:
            checked(q.bcm_vlan_create, 0, vlan)
        checked(q.bcm_vlan_port_remove, 0, 1, [port for port in [0] + list(sim.FRONT_PORTS) if port not in MEMBERS])
        checked(q.bcm_vlan_port_add, 0, 10, list(MEMBERS), [3])
        checked(q.bcm_vlan_port_add, 0, 20, list(MEMBERS), [])
        checked(q.bcm_port_tpid_set, 0, SERVICE_TAGS, SERVICE_TPID)
        for priority in range(8):
            checked(q.bcm_port_vlan_priority_map_set, 0, YELLOW, priority, 1, priority, q.bcmColorYellow)
        checked(q.bcm_trunk_create, 0, q.BCM_TRUNK_FLAG_WITH_ID, TRUNK_ID)
        for port, flags in ((IN_TRUNK, q.BCM_TRUNK_MEMBER_EGRESS_DISABLE), (SENDER, 0)):
            checked(q.bcm_trunk_member_add, 0, TRUNK_ID, q.bcm_trunk_member_t(gport=port, flags=flags))
        port_classes = dict((port, (port, 0x10000 + port, port % 2)) for port in (1, IN_TRUNK))
        for port, of_port in port_classes.items():
            for name, number in zip(('Lookup', 'Ingress', 'IngressPacketProcessing'), of_port):
                checked(q.bcm_port_class_set, 0, port, getattr(q, 'bcmPortClassField' + name), number)
        classes, addresses = {10: (5, 7), 20: (0xffffff, 0x10007)}, {}
        own = checked(q.bcm_l3_ingress_create, 0, q.bcm_l3_ingress_t(intf_class=0x10007), OUT)
        for vlan, (l2_class, l3_class) in classes.items():
            settings = q.bcm_vlan_control_vlan_t()
            checked(q.bcm_vlan_control_vlan_get, 0, vlan, settings)
            settings.if_class, settings.l3_if_class = l2_class, l3_class & 0xff
            settings.ingress_if = own if vlan == 20 else 0
            checked(q.bcm_vlan_control_vlan_set, 0, vlan, settings)
        for vlan in VLANS:
            for mac, kind, place, members in ((STATIC, 'port', 1, dict(port=1)), (TO_PORT, 'port', 2, dict(port=2)),
                                              (TO_TRUNK, 'trunk', TRUNK_ID,
                                               dict(tgid=TRUNK_ID, flags=q.BCM_L2_STATIC | q.BCM_L2_TRUNK_MEMBER)),
                                              (TO_NOWHERE, 'nowhere', None,
                                               dict(port=2, flags=q.BCM_L2_STATIC | q.BCM_L2_DISCARD_DST))):
                members.setdefault('flags', q.BCM_L2_STATIC)
                checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(mac=mac, vid=vlan, **members))
                addresses[mac_number(mac), vlan] = kind, place
            checked(q.bcm_mcast_addr_add, 0, q.bcm_mcast_addr_t(mac=TO_GROUP, vid=vlan, l2mc_index=GROUP, pbmp=[1, 3],
                                                                flags=q.BCM_MCAST_L2_INDEX_GIVEN))
            addresses[mac_number(TO_GROUP), vlan] = 'group', GROUP
        return Bridge(members=dict((vlan, set(MEMBERS)) for vlan in VLANS), untagged={1: set(MEMBERS), 10: set([3]),
                                                                                     20: set()},
                      trunk=(TRUNK_ID, [IN_TRUNK, SENDER], SENDER), addresses=addresses, groups={GROUP: [1, 3]},
                      static=set((mac_number(STATIC), vlan) for vlan in VLANS), yellow=[YELLOW],
                      classes=classes, incoming={20: own}, port_classes=port_classes,
                      tags={SERVICE_TAGS: Tags(outer=SERVICE_TPID)}, forwarding=q.BCM_STG_STP_FORWARD, module=MODULE)

    def entry(self, group, names, actions, conditions, first, facts):
        """An installed entry with a counter, for packets such as that: (entry of the model, counter)"""
        chance = self.chance
        chosen = {}
        # Mostly of what the packet has, or all would be of nothing.
        having = [name for name in names if name in facts or name in RANGES]
        for name in [first] + [chance.choice(having if chance.random() < 0.85 else names)
                               for _ in range(chance.choice([-1, 0, 0, 1, 1, 2, 3]))]:
            condition = conditions.one(name, facts)
            if condition is not None:
                chosen[name] = condition
        entry, priority = checked(q.bcm_field_entry_create, 0, group), chance.randrange(-2, 3)
        for name, condition in chosen.items():
            checked(getattr(q, 'bcm_field_qualify_' + name), 0, entry, *arguments(condition))
        action = chance.choice(actions)
        if action is not None:
            checked(q.bcm_field_action_add, 0, entry, getattr(q, 'bcmFieldAction' + action[0]), action[1], 0, 0)
        stat = checked(q.bcm_field_stat_create, 0, group, len(COUNTED), array('bcm_field_stat_t', COUNTED), OUT)
        checked(q.bcm_field_entry_stat_attach, 0, entry, stat)
        checked(q.bcm_field_entry_prio_set, 0, entry, priority)
        checked(q.bcm_field_entry_install, 0, entry)
        self.compared.update((name, self.stage) for name in chosen)
        return Entry(entry, priority, chosen.values(), action), stat

    def change_some(self, entries):
        """Some entries go, some get another priority."""
        chance = self.chance
        gone, changed = chance.sample(range(len(entries)), 2)
        checked(q.bcm_field_entry_prio_set, 0, entries[changed].id, 9)
        checked(q.bcm_field_entry_reinstall, 0, entries[changed].id)
        entries[changed].priority = 9
        chance.choice([lambda id: checked(q.bcm_field_entry_remove, 0, id),
                       lambda id: checked(q.bcm_field_entry_enable_set, 0, id, 0),
                       lambda id: checked(q.bcm_field_entry_destroy, 0, id)])(entries[gone].id)
        del entries[gone]

    def sample(self, stage, names, maker, bridge):
        """(a qualifier, the facts of some packet in the stage that has it); all qualifiers take turns"""
        if not self.turns[stage]:
            self.turns[stage] = self.chance.sample(names, len(names))
        name = self.turns[stage].pop()
        while True:
            frame = maker.frame()
            facts = bridge.arrival(self.chance.choice(ARRIVALS), frame)
            vlan = bridge.vlan(facts)
            found = bridge.destination(facts, vlan) if stage > 0 else None
            if stage == 1 and found is not None:
                facts = found[0]
            elif stage == 2 and found is not None and found[1]:
                facts = bridge.copy(facts, frame, vlan, found[1][0], found[1])[1]
            elif stage > 0:
                continue
            if name in facts or name in RANGES:
                return name, facts

    def one_round(self, seed, packets):
        chance = self.chance = random.Random(seed)
        maker, bridge, conditions = Maker(chance), self.bridge(), Conditions(chance)
        conditions.make_ranges()
        stages, stats = [], []
        for stage, (qualifier, names) in enumerate(STAGES):
            self.stage = stage
            groups = []
            for priority in sorted(chance.sample(range(100), 2), reverse=True):
                qset = q.bcm_field_qset_t()
                for name in names + [qualifier]:
                    q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualify' + name))
                group = checked(q.bcm_field_group_create, 0, qset, priority)
                actions = [None, None, None, ('Drop', 0), ('DropCancel', 0)]
                actions += [[('OuterVlanNew', 20), ('ClassSourceSet', 5), ('UdfClassNew', 3), ('PortClassNew', 9),
                             ('DhcpDrop', 0)],
                            [('ClassDestSet', 5), ('EgressClassNew', 3), ('ClassSourceSet', 6), ('ArpDrop', 0),
                             ('DhcpDrop', 0), ('MacMoveDrop', 0), ('FloodDisable', 0)], []][stage]
                made = [self.entry(group, names, actions, conditions, *self.sample(stage, names, maker, bridge))
                        for _ in range(ENTRIES)]
                entries = [entry for entry, _ in made]
                stats += [(stat, entry) for entry, stat in made]
                self.change_some(entries)
                groups.append(entries)
            stages.append(groups)
        bridge.learnt.clear()
        kinds, nothing = array('bcm_field_stat_t', COUNTED), (0,) * len(COUNTED)
        counts = dict((entry, nothing) for _, entry in stats)
        for number in range(packets):
            port, frame = chance.choice(ARRIVALS), maker.frame()
            counted, copies = self.met(bridge, stages, port, frame)
            left = self.switch.send(port, frame)
            for stat, entry in stats:
                found = tuple(checked(q.bcm_field_stat_multi_get, 0, stat, len(COUNTED), kinds, OUT))
                wanted = tuple(map(sum, zip(counts[entry], counted.get(entry, nothing))))
                if found != wanted:
                    self.fail('seed %d, packet %d at port %d: %s\n%r\ncounts %s and not %s; of the packet\n%s\n%s'
                              % (seed, number, port, frame.encode('hex'), entry, found, wanted,
                                 sorted(bridge.arrival(port, frame).items()), self.switch.trace(port, frame)))
                counts[entry] = found
            self.assertEqual([(to, sent.encode('hex')) for to, sent in left], copies, (seed, number, port, frame))

    def met(self, bridge, stages, port, frame):
        """({entry: numbers of COUNTED} of what counts the packet, [(port, frame in hex)] that leave)"""
        counted, classes, copies = {}, {}, []

        def count(entry, length, colour, sent):
            is_sent, is_yellow = int(sent > 0), int(colour == 1)
            now = (1, length, is_sent, is_sent * length, 1 - is_sent, (1 - is_sent) * is_yellow, int(sent > 1))
            counted[entry] = tuple(map(sum, zip(now, counted.get(entry, (0,) * len(now)))))

        def meet(stage, facts, waiting):
            verdict = {}
            for entry in acting(stages[stage], facts):
                waiting.append((entry, facts['PacketLength']))
                if entry.action is not None and is_met(entry.action[0], facts):
                    kind = 'drop' if entry.action[0] in DROPS else entry.action[0]
                    verdict.setdefault(kind, entry.action)
            classes.update((CLASSES[name], number) for name, number in verdict.values() if name in CLASSES)
            return verdict.get('drop', ('DropCancel',))[0] != 'DropCancel', verdict.get('OuterVlanNew', (None, None))[1]

        of_packet, facts = [], bridge.arrival(port, frame)
        colour = bridge.color(facts)
        is_dropped, new_vlan = meet(0, facts, of_packet)
        vlan = new_vlan or bridge.vlan(facts)
        found = None if is_dropped else bridge.destination(dict(facts, **classes), vlan)
        if found is not None and not meet(1, found[0], of_packet)[0]:
            for to in found[1]:
                sent, leaving = bridge.copy(dict(facts, **classes), frame, vlan, to, found[1])
                of_copy = []
                is_dropped, _ = meet(2, leaving, of_copy)
                for entry, length in of_copy:
                    count(entry, length, colour, int(not is_dropped))
                if not is_dropped:
                    copies.append((to, sent.encode('hex')))
        for entry, length in of_packet:
            count(entry, length, colour, len(copies))
        return counted, copies

    def test_random_entries_and_packets(self):
        self.compared, self.turns = set(), [[], [], []]
        for start in range(0, PACKETS, ROUND):
            self.one_round(FIRST_SEED + start // ROUND, min(ROUND, PACKETS - start))
        if PACKETS >= 3000:
            missing = set((name, stage) for stage, (_, names) in enumerate(STAGES) for name in names) - self.compared
            self.assertEqual(missing, set())


if __name__ == '__main__':
    unittest.main()
