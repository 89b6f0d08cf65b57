"""A slow and obvious model of how packets meet entries of the field processor.

It takes packets apart byte by byte and compares one qualifier after another; of the switch it knows only what is
written here. Facts are what a packet has, by the name of the qualifier: a number; a set of kinds, of which an entry
names one; or a set of ports. What a packet lacks is not among its facts.
"""
ARP, RARP, IP4, IP6 = 0x0806, 0x8035, 0x0800, 0x86dd
ICMP, IGMP, TCP, UDP, GRE, ESP, AH, ICMP6, OSPF, SCTP = 1, 2, 6, 17, 47, 50, 51, 58, 89, 132
HOP_BY_HOP, ROUTING, FRAGMENT, OPTIONS = 0, 43, 44, 60
VLAN = 0x8100

KINDS_OF_PROTOCOL = {TCP: ['Tcp', 'TcpUdp'], UDP: ['Udp', 'TcpUdp'], IGMP: ['Igmp'], ICMP: ['Icmp'],
                     ICMP6: ['Ip6Icmp'], SCTP: ['Sctp'], GRE: ['Gre'], ESP: ['Esp'], AH: ['Ah'], OSPF: ['Ospf']}
KINDS_OF_ARP = {1: 'Request', 2: 'Reply', 3: 'ReverseRequest', 4: 'ReverseReply', 8: 'InverseRequest',
                9: 'InverseReply'}
IP_TYPES = {0x8847: 'MplsUnicast', 0x8848: 'MplsMulticast', 0x22f3: 'Trill', 0x88e7: 'Mim', 0x8906: 'FibreChan'}
FORMATS = {0x88e7: 'Mim', 0x8863: 'PPPoE', 0x8864: 'PPPoE', 0x22e9: 'CnTag', 0x8906: 'FibreChan'}


def number(octets):
    value = 0
    for octet in octets:
        value = value << 8 | octet
    return value


class Tags(object):
    """How a port reads tags."""

    def __init__(self, outer=VLAN, inner=VLAN):
        self.outer, self.inner = outer, inner


def tags_of(frame, tags):
    """([(TPID, tag) or None, of the outer and the inner], place of the type behind them)"""
    found, place = [None, None], 12
    for which, tpid in enumerate((tags.outer, tags.inner)):
        if number(frame[place:place + 2]) == tpid and len(frame) >= place + 6:
            found[which] = tpid, number(frame[place + 2:place + 4])
            place += 4
    return found, place


def facts_of(frame, tags=Tags()):
    """What the bytes of a frame say, which has no checksum."""
    frame = bytearray(frame)
    facts = dict(DstMac=number(frame[:6]), SrcMac=number(frame[6:12]), Dhcp=0, IpType=set(['Any']),
                 L2Format=set(['Any']), PacketLength=len(frame) + 4, PacketSize=len(frame) + 4, VlanFormat=0)
    found, place = tags_of(frame, tags)
    for name, bit, tag in (('Outer', 2, found[0]), ('Inner', 1, found[1])):
        if tag is not None:
            tpid, content = tag
            facts['VlanFormat'] |= bit
            facts.update({name + 'Tpid': tpid, name + 'Vlan': content, name + 'VlanId': content & 0xfff,
                          name + 'VlanPri': content >> 13, name + 'VlanCfi': content >> 12 & 1})
            if name == 'Outer':
                facts['OuterVlanPriCfi'] = content >> 12
    kind, payload = number(frame[place:place + 2]), frame[place + 2:]
    if len(payload) >= 8:
        facts['L2PayloadFirstEightBytes'] = number(payload[:8])
    if kind < 0x600:
        kind, payload = _logical_link(kind, payload, facts)
    else:
        facts['L2Format'].add('EthII')
    if kind is not None:
        facts['EtherType'] = kind
        facts['IpType'].update([IP_TYPES[kind]] if kind in IP_TYPES else [])
        facts['L2Format'].update([FORMATS[kind]] if kind in FORMATS else [])
        reader = {IP4: _ip4, IP6: _ip6, ARP: _arp, RARP: _arp}.get(kind)
        if reader is not None:
            reader(payload, facts)
    if 'Ip' not in facts['IpType']:
        facts['IpType'].add('NonIp')
    return facts


def _logical_link(length, payload, facts):
    """(type, payload) of a frame that has its length in place of a type; None for no type."""
    payload = payload[:length]
    facts['L2Format'].add('802dot3')
    if len(payload) >= 8 and payload[:3] == b'\xaa\xaa\x03':
        organisation, kind = number(payload[3:6]), number(payload[6:8])
        facts['L2Format'].add('SnapPrivate' if organisation else 'Snap')
        return (None if organisation or kind < 0x600 else kind), payload[8:]
    if len(payload) >= 3:
        facts['L2Format'].add('Llc')
    return None, payload


def _service(octet, facts):
    facts.update(Tos=octet, DSCP=octet >> 2, TosLower4Bits=octet & 15, EcnValue=octet & 3)


def _protocol(protocol, facts):
    facts['IpProtocol'] = protocol
    facts['IpProtocolCommon'] = set(KINDS_OF_PROTOCOL.get(protocol, []))


def _fragment(offset, more, facts):
    kinds = ['NotFirst', 'Any'] if offset else ['First', 'NonOrFirst', 'Any'] if more else ['Non', 'NonOrFirst']
    facts['IpFrag'], facts['IpFragNonOrFirst'] = set(kinds), int(offset == 0)


def _ip4(packet, facts):
    words = packet[0] & 15 if len(packet) >= 20 and packet[0] >> 4 == 4 else 0
    if words < 5 or len(packet) < 4 * words:
        return
    facts['IpType'].update(['Ip', 'Ipv4Any', 'Ipv4Not6', 'Ipv4WithOpts' if words > 5 else 'Ipv4NoOpts'])
    _service(packet[1], facts)
    source, to = number(packet[12:16]), number(packet[16:20])
    facts.update(SrcIp=source, DstIp=to, SrcIpEqualDstIp=int(source == to), Ttl=packet[8], IpFlags=packet[6] >> 5 & 3)
    _protocol(packet[9], facts)
    offset = number(packet[6:8]) & 0x1fff
    _fragment(offset, packet[6] & 0x20, facts)
    if offset == 0:
        _layer4(packet[9], packet[4 * words:number(packet[2:4])], False, facts)


def _ip6(packet, facts):
    if len(packet) < 40 or packet[0] >> 4 != 6:
        return
    _service(number(packet[:2]) >> 4 & 255, facts)
    source, to = number(packet[8:24]), number(packet[24:40])
    low = (1 << 64) - 1
    facts.update(SrcIp6=source, DstIp6=to, SrcIp6High=source >> 64, DstIp6High=to >> 64, SrcIp6Low=source & low,
                 DstIp6Low=to & low, SrcIpEqualDstIp=int(source == to), Ip6TrafficClass=facts['Tos'],
                 Ip6FlowLabel=number(packet[:4]) & 0xfffff, Ttl=packet[7], Ip6HopLimit=packet[7])
    _fragment(0, 0, facts)
    first = kind = packet[6]
    offset, extensions, rest = 0, 0, packet[40:40 + number(packet[4:6])]
    while offset == 0 and len(rest) >= 8 and kind in (HOP_BY_HOP, ROUTING, FRAGMENT, OPTIONS):
        size = 8 if kind == FRAGMENT else 8 * (rest[1] + 1)
        if len(rest) < size:
            break
        if kind == FRAGMENT:
            offset = number(rest[2:4]) >> 3
            _fragment(offset, rest[3] & 1, facts)
        kind, rest, extensions = rest[0], rest[size:], extensions + 1
    facts['IpType'].update(['Ip', 'Ipv6', 'Ipv6Not4', 'Ipv6%sExtHdr' % ('No', 'One', 'Two')[min(extensions, 2)]])
    facts['ExtensionHeaderType'] = first if extensions else 0
    _protocol(kind, facts)
    facts['Ip6NextHeader'] = kind
    if first == HOP_BY_HOP:
        facts['IpProtocolCommon'].add('Ip6HopByHop')
    if offset == 0:
        _layer4(kind, rest, True, facts)


def _layer4(protocol, data, is_ip6, facts):
    if protocol in (TCP, UDP, SCTP) and len(data) >= 4:
        source, to = number(data[:2]), number(data[2:4])
        facts.update(L4SrcPort=source, L4DstPort=to, EqualL4Port=int(source == to))
    if protocol == TCP and len(data) >= 20:
        facts.update(TcpSequenceZero=int(number(data[4:8]) == 0), TcpHeaderSize=data[12] >> 4, TcpControl=data[13])
    if protocol == UDP and len(data) >= 8:
        servers_and_clients = (546, 547) if is_ip6 else (67, 68)
        facts['Dhcp'] = int(source in servers_and_clients and to in servers_and_clients)
        facts['is UDP'] = 1
    if protocol == (ICMP6 if is_ip6 else ICMP) and len(data) >= 4:
        facts['IcmpTypeCode'] = number(data[:2])
    if protocol == IGMP and not is_ip6 and len(data) >= 8:
        facts['IgmpTypeMaxRespTime'] = number(data[:2])


def _arp(packet, facts):
    if len(packet) < 28 or packet[:6] != b'\0\1\x08\0\6\4':
        return
    operation = number(packet[6:8])
    facts['IpType'].update(['Arp'] + {1: ['ArpRequest'], 2: ['ArpReply']}.get(operation, []))
    facts.update(ArpSenderIp4=number(packet[14:18]), ArpTargetIp4=number(packet[24:28]))
    facts['ArpOpcode'] = set([KINDS_OF_ARP[operation]] if operation in KINDS_OF_ARP else [])


class Masked(object):
    """A number, of which the bits of the mask count. None of them: whatever the packet is."""

    def __init__(self, name, value, mask):
        self.name, self.value, self.mask = name, value, mask

    def meets(self, facts):
        return not self.mask or (self.name in facts and facts[self.name] & self.mask == self.value & self.mask)


class Single(object):
    """A number without a mask."""

    def __init__(self, name, value):
        self.name, self.value = name, value

    def meets(self, facts):
        return facts.get(self.name) == self.value


class Kind(object):
    """One of the kinds that a packet is of."""

    def __init__(self, name, kind):
        self.name, self.kind = name, kind

    def meets(self, facts):
        return self.kind in facts.get(self.name, ())


class Ports(object):
    """Each port of the packet's that is in the mask has to be among these."""

    def __init__(self, name, ports, mask):
        self.name, self.ports, self.mask = name, ports, mask

    def meets(self, facts):
        return facts[self.name] & set(self.mask) <= set(self.ports)


class Range(object):
    """All of `sides`, facts, in one of the pieces; `protocols` are those that may have the ports."""

    def __init__(self, name, id, sides, pieces, protocols, inverted):
        self.name, self.id, self.sides, self.pieces = name, id, sides, pieces
        self.protocols, self.inverted = protocols, inverted

    def is_within(self, facts):
        if any(side.startswith('L4') for side in self.sides):
            protocol = 'Tcp' if 'TcpControl' in facts else 'Udp' if 'is UDP' in facts else None
            if protocol not in (self.protocols or ('Tcp', 'Udp')):
                return False
        return all(any(low <= facts.get(side, -1) <= high for low, high in self.pieces) for side in self.sides)

    def meets(self, facts):
        return self.is_within(facts) != self.inverted


class Entry(object):
    def __init__(self, id, priority, conditions, action):
        self.id, self.priority, self.conditions, self.action = id, priority, conditions, action

    def matches(self, facts):
        return all(condition.meets(facts) for condition in self.conditions)

    def __repr__(self):
        return 'entry %d, priority %d: %s' % (self.id, self.priority, ', '.join(
            '%s %r' % (type(each).__name__, sorted(vars(each).items())) for each in self.conditions))


def acting(groups, facts):
    """The entry of each group that acts, groups by descending priority: lists of entries."""
    found = []
    for entries in groups:
        matching = [entry for entry in entries if entry.matches(facts)]
        if matching:
            found.append(min(matching, key=lambda entry: (-entry.priority, entry.id)))
    return found


class Bridge(object):
    """Where packets go that no entry leads elsewhere.

    members: {VLAN: its ports}; untagged: {VLAN: those that send without tag}. trunk: its id, its ports, and the one
    that sends. module: the switch's number. addresses: {(MAC, VLAN): (kind, number)} of 'port', 'trunk', 'group' and
    'nowhere'; static: those of them that are; groups: {id: ports}. tags: {port: Tags}. yellow: ports where a tag's CFI
    makes packets yellow. forwarding: the state of all ports.
    """
    def __init__(self, **settings):
        self.static = set()
        self.yellow = ()
        self.tags = {}
        vars(self).update(settings)
        self.learnt = set()

    def tags_at(self, port):
        return self.tags.get(port, Tags())

    def arrival(self, port, frame):
        """Facts before anything is known of its VLAN."""
        facts = facts_of(frame, self.tags_at(port))
        facts.update(InPort=port, InPorts=set([port]), InterfaceInPorts=set([port]), DevicePortBitmap=set([port]),
                     SrcPort=self.module << 8 | port, SrcModPortGport=set([port]), SrcGport=set([port]))
        trunk, ports, _ = self.trunk
        if port in ports:
            facts.update(SrcTrunk=trunk, SrcTrunkMemberGport=set([port]))
            facts['SrcGport'].add(('trunk', trunk))
        return facts

    def vlan(self, facts):
        return facts.get('OuterVlanId') or 1

    def color(self, facts):
        return int(facts['InPort'] in self.yellow and facts.get('OuterVlanCfi', 0))

    def destination(self, facts, vlan):
        """Facts when it is known where the packet goes, and the ports that send it; None if that is never known."""
        if vlan not in self.members:
            return None
        port = facts['InPort']
        source, to = (facts['SrcMac'], vlan), (facts['DstMac'], vlan)
        kind, place = self.addresses.get(to, ('members', None))
        trunk, trunk_ports, sender = self.trunk
        origin = set(trunk_ports) if port in trunk_ports else set([port])
        ports = {'port': [place], 'trunk': [sender], 'group': self.groups.get(place), 'nowhere': [],
                 'members': self.members[vlan]}[kind]
        found = dict(facts, ForwardingVlanId=vlan, StpState=self.forwarding, IngressStpState=self.forwarding,
                     L2SrcHit=int(source in self.addresses or source in self.learnt),
                     L2SrcStatic=int(source in self.static), L2DestHit=int(to in self.addresses),
                     Drop=int(kind == 'nowhere'), Color=self.color(facts),
                     OutPorts=set(ports) - (origin if kind in ('members', 'group') else set()))
        if kind == 'port':
            found.update(OutPort=place, DstPort=self.module << 8 | place, DstGport=set([place]))
        elif kind == 'trunk':
            found.update(DstTrunk=trunk, DstGport=set([('trunk', trunk)]))
        elif kind == 'group':
            found.update(DstL2MulticastGroup=place, DstMulticastGroup=place, DstMulticastGroups=place)
        self.learnt.add(source)
        return found, sorted(set(ports) - origin)

    def copy(self, facts, frame, vlan, port):
        """The frame as it leaves a port, which has but one kind of tags, and its facts."""
        frame, came = bytes(frame), facts['InPort']
        tag, place = tags_of(bytearray(frame), self.tags_at(came))
        # Ports that read tags in their own way take one without VLAN for none.
        is_inner_kept = tag[1] is not None and (tag[1][1] & 0xfff or came not in self.yellow and came not in self.tags)
        place -= 4 if is_inner_kept else 0
        content = (tag[0][1] & 0xf000 if tag[0] is not None else 0) | vlan
        new = b'' if port in self.untagged[vlan] else bytes(bytearray([0x81, 0, content >> 8, content & 255]))
        frame = (frame[:12] + new + frame[place:]).ljust(60, b'\0')
        found = facts_of(frame)
        for name in ('InPort', 'InPorts', 'InterfaceInPorts', 'DevicePortBitmap', 'SrcPort', 'SrcModPortGport',
                     'SrcGport', 'SrcTrunk', 'SrcTrunkMemberGport'):
            if name in facts:
                found[name] = facts[name]
        found.update(ForwardingVlanId=vlan, Color=self.color(facts), OutPort=port, DstPort=self.module << 8 | port,
                     OutPorts=set([port]), DstGport=set([port]))
        return frame, found
