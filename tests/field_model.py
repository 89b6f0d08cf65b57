"""A slow and obvious model of how packets meet entries of the field processor.

It takes packets apart byte by byte and compares one qualifier after another; of the switch it knows only what is
written here. Facts are what a packet has, by the name of the qualifier: a number; a set of kinds, of which an entry
names one; or a set of ports. What a packet lacks is not among its facts.
"""
ARP, RARP, IP4, IP6 = 0x0806, 0x8035, 0x0800, 0x86dd
ICMP, IGMP, TCP, UDP, GRE, ESP, AH, ICMP6, OSPF, SCTP = 1, 2, 6, 17, 47, 50, 51, 58, 89, 132
IP4_IN_IP, IP6_IN_IP = 4, 41
HOP_BY_HOP, ROUTING, FRAGMENT, OPTIONS = 0, 43, 44, 60
MPLS, MPLS_MULTICAST, TRILL, MIM, TEB, FCOE = 0x8847, 0x8848, 0x22f3, 0x88e7, 0x6558, 0x8906
VXLAN = 4789
OTHER_UDP_TUNNELS = {6081: 'Geneve', 2152: 'Gtp', 5246: 'Capwap', 5247: 'Capwap'}
VLAN = 0x8100

KINDS_OF_PROTOCOL = {TCP: ['Tcp', 'TcpUdp'], UDP: ['Udp', 'TcpUdp'], IGMP: ['Igmp'], ICMP: ['Icmp'],
                     ICMP6: ['Ip6Icmp'], SCTP: ['Sctp'], GRE: ['Gre'], ESP: ['Esp'], AH: ['Ah'], OSPF: ['Ospf']}
KINDS_OF_ARP = {1: 'Request', 2: 'Reply', 3: 'ReverseRequest', 4: 'ReverseReply', 8: 'InverseRequest',
                9: 'InverseReply'}
# What a packet that another carries can have.
CARRIED = ('IpType SrcIp DstIp SrcIp6 DstIp6 SrcIp6High DstIp6High IpProtocol Ip6NextHeader Tos DSCP Ttl Ip6HopLimit '
           'Ip6FlowLabel IpFrag IpProtocolCommon L4SrcPort L4DstPort').split()
PACKET_RESULTS = dict(UcastKnown=6, UcastUnknown=7, McastKnown=8, McastUnknown=9, Broadcast=10)
# Classes that entries give packets, by the action's name.
CLASSES = dict(ClassSourceSet='SrcClassField', ClassDestSet='DstClassField', ClassFieldNew='ClassId',
               IngressClassNew='IngressClassField', EgressClassNew='EgressClass', L2SrcClassNew='SrcClassL2',
               L2DestClassNew='DstClassL2', L3SrcClassNew='SrcClassL3', L3DestClassNew='DstClassL3',
               PortClassNew='InterfaceClassPort', UdfClassNew='UdfClass')
GPORT_KINDS = dict(port=2, trunk=3)
# What only packets to a router have, of which there is none here.
ROUTED = ('MyStationHit L3DestHostHit L3DestRouteHit L3SrcHostHit L3SrcRouteHit DstIpLocal '
          'EgressClassL3Interface').split()
APPLICATIONS_BY_TYPE = {ARP: 'Arp', RARP: 'Rarp', 0x88cc: 'Lldp', 0x888e: 'Eapol', 0x8809: 'SlowProtocol',
                        0x8902: 'Cfm', 0x88f5: 'Mvrp', 0x88f6: 'Mmrp', 0x22ea: 'Msrp', 0x88f7: 'Ptp'}
APPLICATIONS_BY_PROTOCOL = {OSPF: 'Ospf', 103: 'Pim', 112: 'Vrrp', 46: 'Rsvp'}
ICMP6_APPLICATIONS = {130: 'Mld', 131: 'Mld', 132: 'Mld', 143: 'Mld', 133: 'RouterSolicitation',
                      134: 'RouterAdvertisement', 135: 'NeighborSolicitation', 136: 'NeighborAdvertisement'}
OAM_BY_OPCODE = {1: 'Ccm', 2: 'Loopback', 3: 'Loopback', 4: 'Linktrace', 5: 'Linktrace', 33: 'Ais', 35: 'Lock',
                 37: 'Test', 42: 'LossMeasurement', 43: 'LossMeasurement', 45: 'DelayMeasurement',
                 46: 'DelayMeasurement', 47: 'DelayMeasurement'}
OAM, VN_TAG, E_TAG, CN_TAG = 0x8902, 0x8926, 0x893f, 0x22e9
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
    facts['L2PayLoad'] = payload
    if len(payload) >= 8:
        facts['L2PayloadFirstEightBytes'] = number(payload[:8])
    if kind < 0x600:
        kind, payload = _logical_link(kind, payload, facts)
    else:
        facts['L2Format'].add('EthII')
    facts.update(TunnelType=set(), IcmpError=0, OamType=set(), MplsOamControlPktType=set(), L4Ports=0,
                 FibreChanOuter=set(['Any']), FibreChanInner=set(['Any']), ForwardHdrSrcMac=facts['SrcMac'],
                 ForwardHdrDstMac=facts['DstMac'])
    if 'OuterVlanId' in facts:
        facts['ForwardHdrVlanId'] = facts['OuterVlanId']
    if kind is not None:
        _payload(kind, payload, facts)
        _maintenance(kind, payload, facts)
        _other_tag(kind, payload, facts)
        _tunnel(kind, payload, facts)
    facts['L4Ports'] = int('L4SrcPort' in facts)
    facts['AppType'] = _applications(kind, payload, facts)
    facts['HeaderFormat'] = facts['HeaderFormatSet'] = set([_format(kind, facts)])
    for name in 'OamType', 'MplsOamControlPktType':
        facts[name].update([] if facts[name] else ['None'])
    for name in 'FibreChanOuter', 'FibreChanInner':
        facts[name].update([] if len(facts[name]) > 1 else ['None'])
    facts['TunnelType'].update(['Any'] if facts['TunnelType'] else ['Any', 'None'])
    if 'Ip' not in facts['IpType']:
        facts['IpType'].add('NonIp')
    return facts


def _applications(kind, payload, facts):
    """The protocols that the packet is one of."""
    found = set()

    def add(name, is_one):
        found.update([name] if is_one else [])

    first = number(payload[:2]) if kind is not None and len(payload) >= 2 else None
    add(APPLICATIONS_BY_TYPE.get(kind), kind in APPLICATIONS_BY_TYPE)
    for operation in 'Request', 'Reply':
        add('Arp' + operation, kind == ARP and 'Arp' + operation in facts['IpType'])
    add('Stp', facts.get('Llc') == 0x424203 and facts['DstMac'] == 0x0180c2000000)
    add('IsIs', facts.get('Llc') == 0xfefe03)
    add('Lacp', kind == 0x8809 and first is not None and first >> 8 == 1)
    add('EthernetAps', kind == OAM and first is not None and first & 255 == 39)
    version = 4 if 'SrcIp' in facts else 6
    add(APPLICATIONS_BY_PROTOCOL.get(facts.get('IpProtocol')), facts.get('IpProtocol') in APPLICATIONS_BY_PROTOCOL)
    add('Igmp', 'IgmpTypeMaxRespTime' in facts)
    if 'IcmpTypeCode' in facts:
        add('Icmp%d' % version, True)
        message = facts['IcmpTypeCode'] >> 8
        add(ICMP6_APPLICATIONS.get(message), version == 6 and message in ICMP6_APPLICATIONS)
    source, to = facts.get('L4SrcPort'), facts.get('L4DstPort')
    is_udp, is_tcp = 'is UDP' in facts, 'TcpControl' in facts
    add('PtpOverIp%d' % version, is_udp and to in (319, 320))
    add('Dhcp%d' % version, facts['Dhcp'])
    add('Rip', is_udp and to == {4: 520, 6: 521}[version])
    add('Bgp', is_tcp and 179 in (source, to))
    add('Ldp', is_tcp and 646 in (source, to) or is_udp and to == 646)
    add('Dns', (is_tcp or is_udp) and 53 in (source, to))
    add('Bfd', 'BfdYourDiscriminator' in facts)
    return found


def _format(kind, facts):
    """What the packet is by its headers, from the most particular to the least."""
    tunnels = facts['TunnelType']
    version = '4' if 'SrcIp' in facts else '6' if 'SrcIp6' in facts else None
    if version is not None:
        if 'Vxlan' in tunnels:
            return 'Vxlan'
        if 'GreIp' + version in tunnels:
            return 'Gre'
        for inner in '46':
            if 'Ip%sInIp%s' % (inner, version) in tunnels:
                return 'Ip%sInIp%s' % (inner, version)
        return 'Ip' + version
    if 'MplsLabel1' in facts:
        inner = 'Ip4' if 'InnerSrcIp' in facts else 'Ip6' if 'InnerSrcIp6' in facts else ''
        is_wire = facts['MplsControlWordValid'] or 'MplsOamACH' in facts
        return 'MplsPseudowire' if is_wire else 'Mpls' + inner
    for name, fact in (('Fcoe', 'FcoeSOF'), ('Trill', 'TrillHopCount'), ('Mim', 'ISid'), ('ETag', 'ETag'),
                       ('VnTag', 'VnTag'), ('Oam', 'OamMdl'), ('EthernetSnap', 'Snap'), ('EthernetLlc', 'Llc')):
        if fact in facts:
            return name
    return {0: 'Ethernet', 1: 'EthernetVlan', 2: 'EthernetVlan', 3: 'EthernetDoubleVlan'}[facts['VlanFormat']]


def _maintenance(kind, payload, facts):
    """Ethernet OAM, and BFD over UDP; what is behind labels is told with them."""
    if kind == OAM and len(payload) >= 8:
        facts['OamMdl'] = payload[0] >> 5
        facts['OamType'].add('Ethernet' + OAM_BY_OPCODE.get(payload[1], 'Other'))
        _message('Ethernet', payload, facts)
    elif 'is UDP' in facts:
        session = facts['in IP'][1][8:]
        name = {3784: 'Ip4' if 'SrcIp' in facts else 'Ip6', 4784: 'Multihop', 6784: 'Micro'}.get(facts['L4DstPort'])
        if name is not None and len(session) >= 24:
            facts['OamType'].add('Bfd' + name)
            facts['BfdYourDiscriminator'] = number(session[8:12])


def _message(of, data, facts):
    for prefix in '', of:
        facts.update({prefix + 'OamHeaderBits0_31': number(data[:4]), prefix + 'OamHeaderBits32_63': number(data[4:8])})


def _channel(data, is_labelled, facts):
    """What is beside the packets that labels carry."""
    facts['MplsOamACH'] = number(data[:4])
    kind, rest = number(data[2:4]), data[4:]
    if len(rest) >= 8:
        _message('Mpls', rest, facts)
    if kind == 7 and len(rest) >= 24:
        facts['BfdYourDiscriminator'] = number(rest[8:12])
    if not is_labelled:
        facts['OamType'].add('BfdPseudowire' if kind == 7 else 'PseudowireControlWord')
    elif kind == OAM and len(rest) >= 2 and rest[1] == 1:
        facts['OamType'].add('MplsTpCcm')
    else:
        facts['OamType'].add({7: 'BfdMpls', 10: 'MplsTpLossMeasurement', 11: 'MplsTpLossMeasurement',
                              12: 'MplsTpDelayMeasurement'}.get(kind, 'MplsTpOther'))


def _other_tag(kind, data, facts):
    if kind == VN_TAG and len(data) >= 4:
        facts['VnTag'] = number(data[:4])
    elif kind == CN_TAG and len(data) >= 2:
        facts['CnTag'] = number(data[:2])
    elif kind == E_TAG and len(data) >= 6:
        # priority (4 bits), channel in (12), two bits, channel out with its group (14), extensions of both (8 each)
        facts.update(ETag=number(data[:6]), ECid=(number(data[2:4]) & 0x3fff) << 8 | data[5],
                     IngressECid=(number(data[:2]) & 0xfff) << 8 | data[4])


def _payload(kind, payload, facts):
    facts['EtherType'] = kind
    facts['IpType'].update([IP_TYPES[kind]] if kind in IP_TYPES else [])
    facts['L2Format'].update([FORMATS[kind]] if kind in FORMATS else [])
    reader = {IP4: _ip4, IP6: _ip6, ARP: _arp, RARP: _arp}.get(kind)
    if reader is not None:
        reader(payload, facts)


def _tunnel(kind, payload, facts):
    """What headers of tunnels say, and what is in them."""
    types = facts['TunnelType']
    if 'in IP' in facts:
        _in_ip(facts.pop('in IP'), 'SrcIp' in facts, facts)
    elif kind in (MPLS, MPLS_MULTICAST):
        types.add('Mpls')
        _labels(payload, facts)
    elif kind == TRILL:
        types.add('Trill')
        _trill(payload, facts)
    elif kind == FCOE and len(payload) >= 14:
        facts.update(FcoeVersionIsZero=int(payload[0] < 16), FcoeSOF=payload[13])
        _fibre_channel(payload[14:], facts)
    elif kind == MIM and len(payload) >= 4:
        types.add('Mim')
        facts.update(ISid=number(payload[1:4]), ITag=number(payload[:4]))
        _carried_frame(payload[4:], facts)


def _trill(data, facts):
    if len(data) < 6:
        return
    facts.update(TrillIVersion=data[0] >> 6, TrillMultiDestination=data[0] >> 3 & 1,
                 TrillOpLength=number(data[:2]) >> 6 & 31, TrillHopCount=data[1] & 63,
                 TrillEgressRbridge=number(data[2:4]), TrillIngressRbridge=number(data[4:6]))
    if len(data) >= 14:
        facts['TrillPayload'] = number(data[6:14])
    _carried_frame(data[6 + 4 * facts['TrillOpLength']:], facts)


def _fibre_channel_kind(data):
    """(kind of a header, what follows if others do)"""
    kind, size = {0x50: ('Virtual', 8), 0x51: ('Routed', 8), 0x52: ('Encap', 24)}.get(data[0] if data else None,
                                                                                     (None, 0))
    if kind is not None and len(data) >= size:
        return kind, data[size:]
    return 'Standard' if len(data) >= 24 else 'None', None


def _fibre_channel(data, facts):
    outer, rest = _fibre_channel_kind(data)
    facts['FibreChanOuter'].add(outer)
    facts['FibreChanInner'].add(_fibre_channel_kind(rest)[0] if rest is not None else 'None')
    tag = data[:8] if len(data) >= 8 and data[0] == 0x50 else None
    if tag is not None:
        facts.update(FibreChanVFTVersion=tag[1] >> 6, FibreChanVFTPri=tag[2] >> 5,
                     FibreChanVFTFabricId=number(tag[2:4]) >> 1 & 0xfff, FibreChanVFTHopCount=tag[4])
        data = data[8:]
    if len(data) >= 24:
        facts.update(FibreChanVFTValid=int(tag is not None), FibreChanRCtl=data[0], FibreChanDstId=number(data[1:4]),
                     FibreChanCSCtl=data[4], FibreChanSrcId=number(data[5:8]), FibreChanType=data[8],
                     FibreChanFCtl=number(data[9:12]), FibreChanDFCtl=data[13], FcoeOxID=number(data[16:18]),
                     FcoeRxID=number(data[18:20]))


def _in_ip(found, is_ip4, facts):
    protocol, data = found
    types, version = facts['TunnelType'], '4' if is_ip4 else '6'
    if protocol in (IP4_IN_IP, IP6_IN_IP):
        kind, inner = (IP4, '4') if protocol == IP4_IN_IP else (IP6, '6')
        types.update(['Ip', 'Ip%sInIp%s' % (inner, version)])
        _carried(kind, data, facts)
    elif protocol == GRE and len(data) >= 4 and not number(data[:2]) & 0x4fff:
        flags, kind = number(data[:2]), number(data[2:4])
        key = 8 if flags & 0x8000 else 4
        end = key + sum(4 for flag in (0x2000, 0x1000) if flags & flag)
        if len(data) < end:
            return
        rest = data[end:]
        types.add('GreIp' + version)
        if kind != TEB:
            _carried(kind, rest, facts)
            return
        types.add('L2Gre')
        facts.update(L2GreProtocolType=kind, L2GreVsid=0, L2GreFlowId=0)
        if flags & 0x2000:
            types.add('Nvgre')
            facts.update(L2GreVsid=number(data[key:key + 3]), L2GreFlowId=data[key + 3])
        _carried_frame(rest, facts)
    elif 'is UDP' in facts:
        port = facts['L4DstPort']
        if port in OTHER_UDP_TUNNELS:
            types.add(OTHER_UDP_TUNNELS[port])
        elif port == VXLAN and len(data) >= 16:
            types.add('Vxlan')
            facts.update(VxlanFlags=data[8], VxlanHeaderBits8_31=number(data[9:12]), VxlanNetworkId=number(data[12:15]),
                         VxlanHeaderBits56_63=data[15])
            _carried_frame(data[16:], facts)


def _labels(data, facts):
    place, is_last, labels = 0, False, []
    while not is_last:
        if len(data) < place + 4:
            facts.update(_label_facts(labels))
            return
        labels.append(number(data[place:place + 4]))
        is_last = labels[-1] >> 8 & 1
        place += 4
    rest = data[place:]
    facts.update(_label_facts(labels))
    version = rest[0] >> 4 if len(rest) >= 4 else None
    tells_channel, control = labels[-1] >> 12 == 13, facts['MplsOamControlPktType']
    facts['MplsOamGALLabelOnly'] = int(tells_channel and len(labels) == 1)
    control.update(['Gal'] if tells_channel else [])
    control.update(['RouterAlert'] if facts['RouterAlertLabelValid'] else [])
    control.update(['TtlExpired'] if labels[0] & 255 <= 1 else [])
    if version == 1:
        control.add('GalAndAch' if tells_channel else 'Ach')
        _channel(rest, tells_channel, facts)
    if version == 0:
        facts.update(MplsControlWordValid=1, MplsControlWord=number(rest[:4]))
    elif version in (4, 6):
        _carried(IP4 if version == 4 else IP6, rest, facts)
        control.update(['LspPing'] if (facts.get('InnerIpProtocol'), facts.get('InnerL4DstPort')) == (UDP, 3503) else [])


def _label_facts(labels):
    found = {}
    for place, label in enumerate(labels[:3]):
        name = 'MplsLabel%d' % (place + 1)
        found.update({name: label, name + 'Id': label >> 12, name + 'Exp': label >> 9 & 7, name + 'Bos': label >> 8 & 1,
                      name + 'Ttl': label & 255})
    if labels:
        found.update(MplsControlWordValid=0, MplsControlWord=0,
                     RouterAlertLabelValid=int(any(label >> 12 == 1 for label in labels)),
                     MplsOamGALLabelOnly=0,
                     GenericAssociatedChannelLabelValid=int(any(label >> 12 == 13 for label in labels)),
                     MplsBos=labels[0] >> 8 & 1)
    return found


def _carried_frame(frame, facts):
    if len(frame) < 14:
        return
    facts.update(InnerDstMac=number(frame[:6]), InnerSrcMac=number(frame[6:12]))
    kind, rest = number(frame[12:14]), frame[14:]
    if kind == VLAN and len(rest) >= 4:
        kind, rest = number(rest[2:4]), rest[4:]
    facts['InnerEtherType'] = kind
    if kind >= 0x600:
        _carried(kind, rest, facts)


def _carried(kind, payload, facts):
    inner = dict(IpType=set(['Any']), L2Format=set())
    _payload(kind, payload, inner)
    inner['IpType'].update([] if 'Ip' in inner['IpType'] else ['NonIp'])
    facts.update(('Inner' + name, inner[name]) for name in CARRIED if name in inner)


def _logical_link(length, payload, facts):
    """(type, payload) of a frame that has its length in place of a type; None for no type."""
    payload = payload[:length]
    facts['L2Format'].add('802dot3')
    if len(payload) >= 3:
        facts['Llc'] = number(payload[:3])
    if len(payload) >= 8 and payload[:3] == b'\xaa\xaa\x03':
        organisation, kind = number(payload[3:6]), number(payload[6:8])
        facts['L2Format'].add('SnapPrivate' if organisation else 'Snap')
        facts['Snap'] = number(payload[3:8])
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
    facts.update(ExtensionHeader2Type=0, ExtensionHeaderSubCode=0)
    first = kind = packet[6]
    offset, extensions, rest = 0, 0, packet[40:40 + number(packet[4:6])]
    while offset == 0 and len(rest) >= 8 and kind in (HOP_BY_HOP, ROUTING, FRAGMENT, OPTIONS):
        size = 8 if kind == FRAGMENT else 8 * (rest[1] + 1)
        if len(rest) < size:
            break
        if kind == FRAGMENT:
            offset = number(rest[2:4]) >> 3
            _fragment(offset, rest[3] & 1, facts)
        if extensions == 1:
            facts['ExtensionHeader2Type'] = kind
        elif extensions == 0 and kind != FRAGMENT:
            facts['ExtensionHeaderSubCode'] = rest[2]
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
    facts['in IP'] = protocol, data
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
        facts['IcmpError'] = int(data[0] < 128 if is_ip6 else data[0] in (3, 4, 5, 11, 12))
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


class AnyKind(object):
    """One or several kinds of which the packet is one."""

    def __init__(self, name, kinds):
        self.name, self.kinds = name, kinds

    def meets(self, facts):
        return bool(facts[self.name] & set(self.kinds))


class Bytes(object):
    """Bytes from the first on, of which the bits of the mask count."""

    def __init__(self, name, value, mask):
        self.name, self.value, self.mask = name, value, mask

    def meets(self, facts):
        there = facts[self.name]
        return all(not bits or place < len(there) and (there[place] ^ value) & bits == 0
                   for place, (value, bits) in enumerate(zip(self.value, self.mask)))


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


# Which packets meet an action that is not for all.
FOR_SOME = dict(ArpDrop=lambda facts: facts.get('EtherType') == ARP and 'ArpOpcode' in facts,
                DhcpDrop=lambda facts: facts['Dhcp'],
                MacMoveDrop=lambda facts: facts['L2StationMove'],
                FloodDisable=lambda facts: not facts['L2DestHit'])


def is_met(action, facts):
    return action not in FOR_SOME or bool(FOR_SOME[action](facts))


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
    port_classes: {port: (for lookups before its VLAN is known, after, of packet processing)}.
    classes: {VLAN: (its own, that of what comes in)}; incoming: {VLAN: the id of the object for what comes in}.
    """
    def __init__(self, **settings):
        self.static = set()
        self.yellow = ()
        self.port_classes = {}
        self.tags = {}
        vars(self).update(settings)
        self.learnt = {}  # the place of what was learnt

    def tags_at(self, port):
        return self.tags.get(port, Tags())

    def arrival(self, port, frame):
        """Facts before anything is known of its VLAN."""
        facts = facts_of(frame, self.tags_at(port))
        facts.update(InPort=port, InPorts=set([port]), InterfaceInPorts=set([port]), DevicePortBitmap=set([port]),
                     SystemPortBitmap=set([port]), SourceGportBitmap=set([port]), SrcPort=self.module << 8 | port,
                     SrcModPortGport=set([port]), SrcGport=set([port]), SrcModuleGport=set([self.module]),
                     Stage=set(['Lookup']))
        lookup, ingress, processing = self.port_classes.get(port, (0, 0, 0))
        facts.update(InterfaceLookupClassPort=lookup, IngressInterfaceClassPort=ingress,
                     InterfaceClassProcessingPort=processing)
        trunk, ports, _ = self.trunk
        if port in ports:
            facts.update(SrcTrunk=trunk, SrcTrunkMemberGport=set([port]), TrunkMemberSourceModuleId=self.module)
            facts['SrcGport'].add(('trunk', trunk))
        return facts

    def place(self, port):
        """Where what comes in at the port is learnt."""
        trunk, ports, _ = self.trunk
        return ('trunk', trunk) if port in ports else ('port', port)

    def gport(self, kind, number):
        """Of a port or a trunk, as a number."""
        return GPORT_KINDS[kind] << 26 | (self.module << 11 if kind == 'port' else 0) | number

    def known_later(self, facts, vlan, stage):
        """What entries may ask for after the tables."""
        port = facts['InPort']
        l2_class, l3_class = self.classes.get(vlan, (0, 0))
        facts.update(Stage=set([stage]), SrcGports=self.gport(*self.place(port)),
                     SrcModPortGports=self.gport('port', port), InterfaceClassL2=l2_class,
                     InterfaceClassL3=l3_class, IncomingIpIfClass=l3_class)
        facts.update((name, 0) for name in ROUTED)
        if vlan in self.incoming:
            facts['L3Ingress'] = self.incoming[vlan]

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
        at = self.addresses.get(source) or self.learnt.get(source)
        kind, place = self.addresses.get(to, ('members', None))
        trunk, trunk_ports, sender = self.trunk
        origin = set(trunk_ports) if port in trunk_ports else set([port])
        ports = {'port': [place], 'trunk': [sender], 'group': self.groups.get(place), 'nowhere': [],
                 'members': self.members[vlan]}[kind]
        found = dict(facts, ForwardingVlanId=vlan, StpState=self.forwarding, IngressStpState=self.forwarding,
                     L2SrcHit=int(at is not None),
                     L2SrcStatic=int(source in self.static), L2DestHit=int(to in self.addresses),
                     Drop=int(kind == 'nowhere'), Color=self.color(facts),
                     OutPorts=set(ports) - (origin if kind in ('members', 'group') else set()))
        self.known_later(found, vlan, 'Ingress')
        found.update(L2StationMove=int(at is not None and at != self.place(port)), L2Learn=0)
        if source not in self.static and at != self.place(port):
            found.update(L2Learn=1, LearnSrcMac=facts['SrcMac'], LearnVlan=vlan, LearnSrcPort=facts['SrcGport'])
        octet = facts['DstMac'] >> 40
        known = 'Known' if to in self.addresses else 'Unknown'
        found['PacketRes'] = PACKET_RESULTS['Broadcast' if facts['DstMac'] == 0xffffffffffff
                                            else 'Mcast' + known if octet & 1 else 'Ucast' + known]
        self.treated(found)
        self.translated(found, vlan)
        if kind == 'port':
            found.update(OutPort=place, DstPort=self.module << 8 | place, DstGport=set([place]),
                         DstGports=self.gport('port', place))
        elif kind == 'trunk':
            found.update(DstTrunk=trunk, DstGport=set([('trunk', trunk)]), DstGports=self.gport('trunk', trunk))
        elif kind == 'group':
            found.update(DstL2MulticastGroup=place, DstMulticastGroup=place, DstMulticastGroups=place)
        if source not in self.static:
            self.learnt[source] = self.place(port)
        return found, sorted(set(ports) - origin)

    def treated(self, facts):
        """Facts of what was decided so far; classes are those of the actions before."""
        facts.update(IntPriority=facts.get('OuterVlanPri', 0), L3Routable=0, ForwardingVlanValid=1, VlanTranslationHit=0,
                     ForwardingType=set(['Any', 'L2']))
        for name in CLASSES.values():
            facts.setdefault(name, 0)
        facts['InterfaceClassPort'] = facts['InterfaceClassPort'] or facts['IngressInterfaceClassPort']

    def inner_is_kept(self, tag, came):
        """Ports that read tags in their own way take one without VLAN for none."""
        return tag is not None and (tag[1] & 0xfff or came not in self.yellow and came not in self.tags)

    def translated(self, facts, vlan):
        """The tags that the packet has in the switch."""
        outer = (facts.get('OuterVlan', 0) & 0xf000) | vlan
        inner = facts.get('InnerVlan')
        is_kept = self.inner_is_kept(None if inner is None else (0, inner), facts['InPort'])
        facts['TranslatedVlanFormat'] = 2 | int(bool(is_kept))
        for name, content in ('Outer', outer), ('Inner', inner if is_kept else 0):
            name = 'Translated%sVlan' % name
            facts.update({name: content, name + 'Id': content & 0xfff, name + 'Pri': content >> 13,
                          name + 'Cfi': content >> 12 & 1})

    def copy(self, facts, frame, vlan, port, ports):
        """The frame as it leaves a port, one of those, which has but one kind of tags, and its facts."""
        frame, came = bytes(frame), facts['InPort']
        tag, place = tags_of(bytearray(frame), self.tags_at(came))
        place -= 4 if self.inner_is_kept(tag[1], came) else 0
        content = (tag[0][1] & 0xf000 if tag[0] is not None else 0) | vlan
        new = b'' if port in self.untagged[vlan] else bytes(bytearray([0x81, 0, content >> 8, content & 255]))
        frame = (frame[:12] + new + frame[place:]).ljust(60, b'\0')
        found = facts_of(frame)
        for name in ('InPort', 'InPorts', 'InterfaceInPorts', 'DevicePortBitmap', 'SystemPortBitmap',
                     'SourceGportBitmap', 'SrcPort', 'SrcModPortGport', 'SrcGport', 'SrcModuleGport', 'SrcTrunk',
                     'SrcTrunkMemberGport', 'TrunkMemberSourceModuleId', 'InterfaceLookupClassPort',
                     'IngressInterfaceClassPort', 'InterfaceClassProcessingPort'):
            if name in facts:
                found[name] = facts[name]
        for name in CLASSES.values():
            found[name] = facts.get(name, 0)
        self.treated(found)
        found['IntPriority'] = facts.get('OuterVlanPri', 0)
        found.update(ForwardingVlanId=vlan, Color=self.color(facts), OutPort=port, DstPort=self.module << 8 | port,
                     OutPorts=set([port]), DstGport=set([port]), DstGports=self.gport('port', port),
                     ReplicantAny=int(len(ports) > 1), ReplicantFirst=int(len(ports) > 1 and port == min(ports)))
        self.known_later(found, vlan, 'Egress')
        return frame, found
