"""Entries of the field processor act on the packets that they are for: random rules and packets, against a slow and
obvious matcher that knows what it put into each packet."""
import random
import unittest

import QuorelApiNew as q
from quorel import array, checked, OUT, sim

PORTS = (1, 2, 3, 40)
MACS = ['02:00:00:00:00:%02x' % number for number in range(4)]
TARGETS = ['02:00:00:00:01:%02x' % number for number in range(3)] + ['ff:ff:ff:ff:ff:ff', '01:00:5e:00:00:05']
VLANS = 10, 20
IPS = [0x0a000001, 0x0a000102, 0x0a010203, 0xc0a80001, 0]
IP6S = ['20010db8000000000000000000000001', '20010db8000000010000000000000001', 'fe800000000000000000000000000007']
L4_PORTS = 0, 53, 80, 443, 1023, 1024, 40000
TCP, UDP, ICMP, ICMP6, IGMP = 6, 17, 1, 58, 2


def number(text):
    return int(text.replace(':', ''), 16)


def octets(value, count):
    return bytearray(value >> 8 * place & 255 for place in reversed(range(count)))


class Packet(object):
    """Random bytes, the port at which they arrive, and the values of all qualifiers that the packet has."""

    def __init__(self, chance):
        self.chance, self.has = chance, {}
        self.port = self.put('InPort', chance.choice(PORTS))
        to, source = chance.choice(TARGETS), chance.choice(MACS)
        self.put('DstMac', number(to)), self.put('SrcMac', number(source))
        self.put('L2Format', q.bcmFieldL2FormatEthII)
        kind, payload = chance.choice([self.ip4, self.ip4, self.ip6, self.arp, self.other])()
        self.put('EtherType', kind)
        tags = bytearray()
        for name in chance.choice([(), (), ('Outer',), ('Outer', 'Inner')]):
            vlan, priority, dei = chance.choice(VLANS), chance.randrange(8), chance.randrange(2)
            tpid = 0x8100 if name == 'Outer' else chance.choice([0x8100, 0x88a8])
            tag = priority << 13 | dei << 12 | vlan
            for end, value in (('Vlan', tag), ('VlanId', vlan), ('VlanPri', priority), ('VlanCfi', dei),
                               ('Tpid', tpid)):
                self.put(name + end, value)
            tags += octets(tpid, 2) + octets(tag, 2)
        self.put('VlanFormat', len(tags) // 4 and (2, 3)[len(tags) // 4 - 1])
        self.put('ForwardingVlanId', self.has.get('OuterVlanId', 1))
        frame = octets(number(to), 6) + octets(number(source), 6) + tags + octets(kind, 2) + payload
        self.frame = frame.ljust(60, b'\0')
        self.put('PacketLength', len(self.frame) + 4)

    def put(self, name, value):
        self.has[name] = value
        return value

    def l4(self, protocol):
        chance = self.chance
        self.put('IpProtocol', protocol)
        if protocol in (TCP, UDP):
            source = self.put('L4SrcPort', chance.choice(L4_PORTS))
            to = self.put('L4DstPort', chance.choice(L4_PORTS))
            self.put('EqualL4Port', int(source == to))
            ports = octets(source, 2) + octets(to, 2)
            if protocol == UDP:
                return ports + octets(8, 2) + octets(0, 2)
            sequence, flags = chance.choice([0, 7]), self.put('TcpControl', chance.randrange(64))
            self.put('TcpSequenceZero', int(sequence == 0)), self.put('TcpHeaderSize', 5)
            return ports + octets(sequence, 4) + octets(9, 4) + bytearray([0x50, flags]) + octets(0, 6)
        if protocol in (ICMP, ICMP6):
            return octets(self.put('IcmpTypeCode', chance.choice([0x0800, 0x0000, 0x0301, 0x8700])), 2) + octets(0, 6)
        return octets(0, 8)

    def ip4(self):
        chance = self.chance
        source, to = self.put('SrcIp', chance.choice(IPS)), self.put('DstIp', chance.choice(IPS))
        tos, ttl = self.put('Tos', chance.randrange(256)), self.put('Ttl', chance.choice([0, 1, 64, 255]))
        self.put('DSCP', tos >> 2), self.put('SrcIpEqualDstIp', int(source == to))
        flags, offset = self.put('IpFlags', chance.choice([0, 0, 1, 2])), chance.choice([0, 0, 0, 185])
        words = chance.choice([5, 5, 6])
        self.types = ['Ip', 'Ipv4Any', 'Ipv4Not6', 'Ipv4WithOpts' if words > 5 else 'Ipv4NoOpts']
        self.fragments = (['NonOrFirst', 'First', 'Any'] if flags & 1 and not offset else
                          ['NotFirst', 'Any'] if offset else ['Non', 'NonOrFirst'])
        protocol = chance.choice([TCP, UDP, ICMP, 89])
        self.put('IpProtocol', protocol)
        payload = octets(0, 20) if offset else self.l4(protocol)
        header = (bytearray([0x40 | words, tos]) + octets(4 * words + len(payload), 2) + octets(77, 2)
                  + octets(flags << 13 | offset, 2) + bytearray([ttl, protocol, 0, 0]) + octets(source, 4)
                  + octets(to, 4) + octets(0, 4 * words - 20))
        return 0x0800, header + payload

    def ip6(self):
        chance = self.chance
        source, to = chance.choice(IP6S), chance.choice(IP6S)
        self.put('SrcIp6', int(source, 16)), self.put('DstIp6', int(to, 16))
        self.put('SrcIpEqualDstIp', int(source == to))
        service = self.put('Ip6TrafficClass', self.put('Tos', chance.randrange(256)))
        self.put('DSCP', service >> 2)
        label, hops = self.put('Ip6FlowLabel', chance.choice([0, 5, 0xfffff])), self.put('Ttl', 64)
        self.put('Ip6HopLimit', hops)
        protocol, extended = chance.choice([TCP, UDP, ICMP6]), chance.choice([False, False, True])
        self.types = ['Ip', 'Ipv6', 'Ipv6Not4', 'Ipv6OneExtHdr' if extended else 'Ipv6NoExtHdr']
        self.fragments = ['Non', 'NonOrFirst']
        payload = (bytearray([protocol]) + octets(0, 7) if extended else bytearray()) + self.l4(protocol)
        first = 0 if extended else protocol
        return 0x86dd, (octets(6 << 28 | service << 20 | label, 4) + octets(len(payload), 2) + bytearray([first, hops])
                        + bytearray.fromhex(source) + bytearray.fromhex(to) + payload)

    def arp(self):
        chance = self.chance
        operation = chance.choice([1, 2])
        sender, target = self.put('ArpSenderIp4', chance.choice(IPS)), self.put('ArpTargetIp4', chance.choice(IPS))
        self.put('ArpOpcode', operation - 1)
        self.types, self.fragments = ['NonIp', 'Arp', ('ArpRequest', 'ArpReply')[operation - 1]], []
        return 0x0806, (bytearray([0, 1, 8, 0, 6, 4, 0, operation]) + octets(0, 6) + octets(sender, 4) + octets(0, 6)
                        + octets(target, 4))

    def other(self):
        self.types, self.fragments = ['NonIp'], []
        return self.chance.choice([0x88b5, 0x8847]), octets(0, 30)


# Qualifiers with a value and a mask, and how many bits they have; those with a value alone.
MASKED = dict(InPort=8, DstMac=48, SrcMac=48, EtherType=16, OuterVlan=16, OuterVlanId=12, OuterVlanPri=3,
              OuterVlanCfi=1,
              InnerVlan=16, InnerVlanId=12, InnerVlanPri=3, InnerVlanCfi=1, VlanFormat=2, ForwardingVlanId=12,
              PacketLength=16, IpProtocol=8, L4SrcPort=16, L4DstPort=16, TcpControl=8, TcpHeaderSize=4, IcmpTypeCode=16,
              SrcIp=32, DstIp=32, Tos=8, DSCP=6, Ttl=8, IpFlags=2, SrcIp6=128, DstIp6=128, Ip6TrafficClass=8,
              Ip6FlowLabel=20,
              Ip6HopLimit=8, ArpSenderIp4=32, ArpTargetIp4=32)
SINGLE = 'OuterTpid', 'InnerTpid', 'EqualL4Port', 'SrcIpEqualDstIp', 'TcpSequenceZero', 'ArpOpcode'
QUALIFIERS = sorted(MASKED) + sorted(SINGLE) + ['InPorts', 'IpType', 'IpFrag', 'L4PortRangeCheck']


def argument(name, value):
    """As the function of the qualifier takes it."""
    width = MASKED.get(name)
    if width == 48:
        return ':'.join('%02x' % octet for octet in octets(value, 6))
    if width == 128:
        return array('uint8', list(octets(value, 16)))
    return value


class Condition(object):
    """One qualifier of an entry: how it is set, and whether a packet meets it."""

    def __init__(self, chance, packet, ranges):
        self.name = chance.choice(QUALIFIERS)
        if self.name == 'InPorts':
            self.ports = chance.sample(PORTS, 2)
            self.arguments = self.ports, range(65)
        elif self.name in ('IpType', 'IpFrag'):
            kind = {'IpType': ['NonIp', 'Ip', 'Ipv4Any', 'Ipv4NoOpts', 'Ipv6', 'Arp', 'ArpReply', 'Ipv6OneExtHdr'],
                    'IpFrag': ['Non', 'First', 'NonOrFirst', 'NotFirst', 'Any']}[self.name]
            self.kind = chance.choice(kind)
            self.arguments = getattr(q, 'bcmField%s%s' % (self.name, self.kind)),
        elif self.name == 'L4PortRangeCheck':
            self.range = chance.choice(sorted(ranges))
            self.low, self.high, self.side = ranges[self.range]
            self.inverted = chance.randrange(2)
            self.arguments = self.range, self.inverted
        else:
            # Mostly what some packet has, so that entries match.
            self.value = packet.has.get(self.name, 1)
            width = MASKED.get(self.name)
            ones = (1 << (width or 64)) - 1
            self.mask = chance.choice([ones, ones, ones, ones >> width // 2 << width // 2, chance.getrandbits(width), 0]
                                      if width else [ones])
            self.arguments = (argument(self.name, self.value),)
            if width:
                self.arguments += argument(self.name, self.mask),

    def meets(self, packet):
        if self.name == 'InPorts':
            return packet.port in self.ports
        if self.name == 'IpType':
            return self.kind in packet.types
        if self.name == 'IpFrag':
            return self.kind in packet.fragments
        if self.name == 'L4PortRangeCheck':
            port = packet.has.get(self.side)
            return (port is not None and self.low <= port <= self.high) != bool(self.inverted)
        return not self.mask or (self.name in packet.has
                                 and packet.has[self.name] & self.mask == self.value & self.mask)


class Rule(object):
    def __init__(self, entry, priority, conditions, action, stat):
        self.entry, self.priority, self.conditions, self.action = entry, priority, conditions, action
        self.stat, self.packets, self.bytes = stat, 0, 0

    def matches(self, packet):
        return all(condition.meets(packet) for condition in self.conditions)


class Matching(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_field_init, 0)
        for vlan in VLANS:
            checked(q.bcm_vlan_create, 0, vlan)
            checked(q.bcm_vlan_port_add, 0, vlan, range(1, 65), [])

    def group(self, priority, *extra):
        qset = q.bcm_field_qset_t()
        for name in QUALIFIERS + list(extra):
            q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualify' + name))
        return checked(q.bcm_field_group_create, 0, qset, priority)

    def entry(self, group, priority=0, actions=(), **qualifiers):
        entry = checked(q.bcm_field_entry_create, 0, group)
        checked(q.bcm_field_entry_prio_set, 0, entry, priority)
        for name, values in qualifiers.items():
            checked(getattr(q, 'bcm_field_qualify_' + name), 0, entry, *values)
        for action in actions:
            parameters = (action[1:] + (0,) * 3)[:3]
            checked(q.bcm_field_action_add, 0, entry, getattr(q, 'bcmFieldAction' + action[0]), *parameters)
        checked(q.bcm_field_entry_install, 0, entry)
        return entry

    def stat(self, group):
        kinds = array('bcm_field_stat_t', [q.bcmFieldStatPackets, q.bcmFieldStatBytes])
        return checked(q.bcm_field_stat_create, 0, group, 2, kinds, OUT)

    def counted(self, stat, kind):
        return checked(q.bcm_field_stat_get, 0, stat, kind, OUT)

    def random_rule(self, chance, group, ranges):
        conditions = {}
        sample = Packet(chance)
        for _ in range(chance.choice([0, 1, 1, 2, 2, 3, 4])):
            condition = Condition(chance, sample, ranges)
            conditions[condition.name] = condition
        entry, priority = checked(q.bcm_field_entry_create, 0, group), chance.randrange(5)
        for condition in conditions.values():
            checked(getattr(q, 'bcm_field_qualify_' + condition.name), 0, entry, *condition.arguments)
        action = chance.choice([None, 'Drop', 'DropCancel'])
        if action:
            checked(q.bcm_field_action_add, 0, entry, getattr(q, 'bcmFieldAction' + action), 0, 0, 0)
        stat = self.stat(group)
        checked(q.bcm_field_entry_prio_set, 0, entry, priority)
        checked(q.bcm_field_entry_stat_attach, 0, entry, stat)
        checked(q.bcm_field_entry_install, 0, entry)
        return Rule(entry, priority, conditions.values(), action, stat)

    def one_round(self, seed, rules, packets):
        chance = random.Random(seed)
        checked(q.bcm_field_init, 0)
        ranges = {}
        for number_of_range, (low, high, side) in enumerate([(80, 443, 'L4DstPort'), (1024, 65535, 'L4SrcPort')], 1):
            flag = q.BCM_FIELD_RANGE_DSTPORT if side == 'L4DstPort' else q.BCM_FIELD_RANGE_SRCPORT
            checked(q.bcm_field_range_create_id, 0, number_of_range, flag, low, high)
            ranges[number_of_range] = low, high, side
        groups = []
        for priority in chance.sample(range(100), 3):
            group = self.group(priority)
            groups.append((priority, [self.random_rule(chance, group, ranges) for _ in range(rules)]))
        groups.sort(key=lambda group: -group[0])
        # Some entries go again, and some are changed.
        for _, of_group in groups:
            gone = of_group.pop(chance.randrange(len(of_group)))
            checked(q.bcm_field_entry_remove, 0, gone.entry)
            changed = chance.choice(of_group)
            changed.priority = 9
            checked(q.bcm_field_entry_prio_set, 0, changed.entry, 9)
            checked(q.bcm_field_entry_reinstall, 0, changed.entry)
        for _ in range(packets):
            packet, action = Packet(chance), None
            for _, of_group in groups:
                matching = [rule for rule in of_group if rule.matches(packet)]
                if matching:
                    best = min(matching, key=lambda rule: (-rule.priority, rule.entry))
                    best.packets += 1
                    best.bytes += len(packet.frame) + 4
                    action = action or best.action
            left = self.switch.send(packet.port, packet.frame)
            self.assertEqual(bool(left), action != 'Drop', (seed, packet.has))
        for _, of_group in groups:
            for rule in of_group:
                counted = self.counted(rule.stat, q.bcmFieldStatPackets), self.counted(rule.stat, q.bcmFieldStatBytes)
                self.assertEqual(counted, (rule.packets, rule.bytes),
                                 (seed, rule.entry, [(each.name, each.arguments) for each in rule.conditions]))

    def test_where_packets_go(self):
        group, frame = self.group(1), sim.ethernet(TARGETS[0], MACS[0])
        for action, ports in ((('RedirectPort', 0, 7), [7]), (('Redirect', 9), [9]), (('RedirectBlackHole',), []),
                              (('CopyToCpu',), [0] + range(2, 65)), (('RedirectPort', 0, 1), [])):
            entry = self.entry(group, actions=[action], InPort=(1, 0xff))
            self.assertEqual([port for port, _ in self.switch.send(1, frame)], ports, action)
            checked(q.bcm_field_entry_destroy, 0, entry)
        for action, ports in (('RedirectPbmp', [5, 6]), ('EgressMask', [2, 3, 4] + range(7, 65))):
            entry = checked(q.bcm_field_entry_create, 0, group)
            checked(q.bcm_field_action_ports_add, 0, entry, getattr(q, 'bcmFieldAction' + action), [5, 6])
            checked(q.bcm_field_entry_install, 0, entry)
            self.assertEqual([port for port, _ in self.switch.send(1, frame)], ports, action)
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_a_vlan_before_the_tables(self):
        group, frame = self.group(1, 'StageLookup'), sim.ethernet(TARGETS[0], MACS[0])
        entry = self.entry(group, actions=[('OuterVlanNew', 20)], SrcMac=(MACS[0], 'ff:ff:ff:ff:ff:ff'))
        self.assertEqual(self.switch.send(1, frame)[0], (2, sim.tagged(frame, 20)))
        self.assertIn('entry %d of group %d' % (entry, group), self.switch.trace(1, frame))
        checked(q.bcm_field_entry_enable_set, 0, entry, 0)
        self.assertEqual(self.switch.send(1, frame)[0], (2, frame))

    def test_copies_that_ports_may_not_send(self):
        frame = sim.ethernet(TARGETS[3], MACS[0])
        entry = self.entry(self.group(1, 'StageEgress', 'OutPort'), actions=[('Drop',)], OutPort=(7, 0xff))
        self.assertEqual([port for port, _ in self.switch.send(1, frame)], range(2, 7) + range(8, 65))
        self.assertEqual(self.switch.drops(1, frame), [(7, 'field_rule_to_send')])
        checked(q.bcm_field_entry_remove, 0, entry)
        self.assertEqual(len(self.switch.send(1, frame)), 63)

    def test_groups_of_ports_and_groups_that_are_off(self):
        frame, qset = sim.ethernet(TARGETS[0], MACS[0]), q.bcm_field_qset_t()
        group = checked(q.bcm_field_group_port_create_mode, 0, 3, qset, 1, q.bcmFieldGroupModeAuto)
        self.entry(group, actions=[('Drop',)])
        self.assertEqual([bool(self.switch.send(port, frame)) for port in (1, 3)], [True, False])
        self.assertEqual(self.switch.drops(3, frame), [(3, 'field_rule')])
        checked(q.bcm_field_group_enable_set, 0, group, 0)
        self.assertTrue(self.switch.send(3, frame))

    def test_what_the_switch_has_not_got_cannot_be_installed(self):
        group = self.group(1, 'MplsLabel1', 'OutPort')
        early = self.group(2, 'StageLookup', 'OutPort')
        for where, qualifier, action in ((group, 'MplsLabel1', 'Drop'), (early, 'OutPort', 'Drop'),
                                         (group, None, 'MplsLabelPush'), (early, None, 'CopyToCpu')):
            entry = checked(q.bcm_field_entry_create, 0, where)
            if qualifier:
                checked(getattr(q, 'bcm_field_qualify_' + qualifier), 0, entry, 1, 1)
            checked(q.bcm_field_action_add, 0, entry, getattr(q, 'bcmFieldAction' + action), 0, 0, 0)
            self.assertEqual(q.bcm_field_entry_install(0, entry), q.BCM_E_UNAVAIL, (qualifier, action))

    def test_random_rules_and_packets(self):
        for seed in range(12):
            self.one_round(seed, 15, 250)


if __name__ == '__main__':
    unittest.main()
