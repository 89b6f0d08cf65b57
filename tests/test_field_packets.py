"""Actions of the field processor that only some packets meet, by protocol or by what bridging made of them, and those that
switch off what the switch would do by itself."""
import struct
import unittest

import QuorelApiNew as q
from quorel import array, checked, sim
from test_field_actions import A, B, CPU, NEW, VLAN, FieldActionTest, made

GROUP, ALL = '01:00:5e:01:01:01', 'ff:ff:ff:ff:ff:ff'


def arp(operation):
    return sim.ethernet(B, A, struct.pack('>HHBBH', 1, 0x800, 6, 4, operation) + b'\0' * 20, 0x806, VLAN)


def ip4(protocol, data, to=B):
    header = struct.pack('>BBHHHBBH', 0x45, 0, 20 + len(data), 1, 0, 64, protocol, 0)
    return sim.ethernet(to, A, header + b'\x0a\0\0\1\x0a\0\0\2' + data, 0x800, VLAN)


def ip6(protocol, data):
    header = struct.pack('>IHBB', 6 << 28, len(data), protocol, 255) + b'\xfe\x80' + b'\0' * 30
    return sim.ethernet(B, A, header + data, 0x86dd, VLAN)


def udp(source, to):
    return struct.pack('>HHHH', source, to, 8, 0)


def icmp6(kind):
    return ip6(58, struct.pack('>BBHI', kind, 0, 0, 0))


PACKETS = {
    'ARP request': arp(1), 'ARP reply': arp(2), 'DHCP': ip4(17, udp(68, 67)), 'DHCPv6': ip6(17, udp(546, 547)),
    'IGMP query': ip4(2, b'\x11\0\0\0' + b'\0' * 4), 'IGMP report': ip4(2, b'\x16\0\0\0' + b'\0' * 4),
    'IGMP leave': ip4(2, b'\x17\0\0\0' + b'\0' * 4), 'MLD': icmp6(131), 'solicitation': icmp6(135),
    'advertisement': icmp6(136), 'router': icmp6(133), 'redirect': icmp6(137), 'echo': icmp6(128),
    'PTP': sim.ethernet(B, A, b'\0' * 46, 0x88f7, VLAN), 'PTP in UDP': ip4(17, udp(9, 319)), 'UDP': ip4(17, udp(9, 9))}
# Which packets an action gives the CPU a copy of, and why.
TO_CPU = {
    'ArpToCpu': {'ARP request': 'Arp', 'ARP reply': 'ArpReply'},
    'DhcpToCpu': {'DHCP': 'Dhcp', 'DHCPv6': 'Dhcp6'},
    'IgmpToCpu': {'IGMP query': 'IgmpQuery', 'IGMP report': 'IgmpReport', 'IGMP leave': 'IgmpLeave'},
    'PtpToCpu': {'PTP': 'Timesync', 'PTP in UDP': 'Timesync'},
    'NeighborDiscoveryToCpu': {'solicitation': 'NeighborSolicit', 'advertisement': 'NeighborAdvert',
                               'router': 'RouterSolicit', 'redirect': 'IcmpRedirect'}}


class Protocols(FieldActionTest):
    def reasons(self):
        """Why the CPU gets a copy, by packet, of those of which it does."""
        told = dict((name, self.becomes(frame)['reasons']) for name, frame in PACKETS.items())
        return dict((name, reasons[0]) for name, reasons in told.items() if reasons is not None)

    def test_copies_for_the_cpu(self):
        for action, wanted in TO_CPU.items():
            entry = self.installed('lower', 1, 'ingress', (action,))
            self.assertEqual(self.reasons(), wanted, action)
            upper = self.installed('upper', 2, 'ingress', ('CopyToCpuCancel',))
            self.assertEqual(self.reasons(), {}, action)
            for each in entry, upper:
                checked(q.bcm_field_entry_destroy, 0, each)
        for number, action in enumerate(TO_CPU):
            self.installed('several', number, 'ingress', (action,))
        self.assertEqual(self.reasons(), dict(sum((list(wanted.items()) for wanted in TO_CPU.values()), [])))

    def test_drops(self):
        for stage in 'lookup', 'ingress':
            for action, dropped in (('ArpDrop', 'ArpToCpu'), ('DhcpDrop', 'DhcpToCpu')):
                entry = self.installed('lower', 1, stage, (action,))
                lost = set(name for name, frame in PACKETS.items() if not self.switch.send(1, frame))
                self.assertEqual(lost, set(TO_CPU[dropped]), (action, stage))
                checked(q.bcm_field_entry_destroy, 0, entry)

    def test_what_the_switch_copies_by_itself(self):
        for control in 'Igmp', 'Mld':
            checked(q.bcm_switch_control_set, 0, getattr(q, 'bcmSwitch%sPktToCpu' % control), 1)
        copied = set(['IGMP query', 'IGMP report', 'IGMP leave', 'MLD'])
        self.assertEqual(set(self.reasons()), copied)
        for action, names in (('IgmpSnoopDisable', copied - set(['MLD'])), ('MldSnoopDisable', set(['MLD']))):
            entry = self.installed('lower', 1, 'lookup', (action,))
            self.assertEqual(set(self.reasons()), copied - names)
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_what_bridges_say(self):
        bpdu, lacp = [sim.ethernet('01:80:c2:00:00:0%d' % last, A, b'\x42\x42\3' + b'\0' * 43, 46, VLAN)
                      for last in (0, 2)]
        self.installed('lower', 1, 'lookup', ('BpduForward',))
        self.assertEqual([self.becomes(frame)['ports'] for frame in (bpdu, lacp)], [list(range(2, 65)), [CPU]])


class Bridging(FieldActionTest):
    def test_addresses_that_move(self):
        seen = []
        for action in 'MacMoveToCpu', 'MacMoveDrop':
            entry = self.installed('lower', 1, 'ingress', (action,))
            frame = sim.tagged(sim.ethernet(B, NEW), VLAN)
            for port in 3, 3, 4:
                del self.told[:]
                left = [to for to, _ in self.switch.send(port, frame)]
                seen.append((port, left, [told['rx_reasons'][0][len('bcmRxReason'):] for told in self.told]))
            checked(q.bcm_field_entry_destroy, 0, entry)
            checked(q.bcm_l2_addr_delete, 0, NEW, VLAN)
        moved = 'L2SourceDynamicMove'
        self.assertEqual(seen, [(3, [2], []), (3, [2], []), (4, [CPU, 2], [moved]),
                                (3, [2], []), (3, [2], []), (4, [], [])])

    def test_floods(self):
        checked(q.bcm_vlan_port_remove, 0, VLAN, range(6, 65))
        known, unicast, multicast, broadcast = [made(to=to, kind=0) for to in (B, NEW, GROUP, ALL)]
        everywhere = [2, 3, 4, 5]
        for action, unknown in ((('FloodDisable',), [[], [], []]),
                                (('UnknownUcastMaskNew', [3, 4]), [[2, 5], everywhere, everywhere]),
                                (('UnknownMcastMaskNew', [3, 4]), [everywhere, [2, 5], everywhere]),
                                (('BroadcastMaskNew', [3, 4]), [everywhere, everywhere, [2, 5]]),
                                (('RedirectBcastPbmp', [3, 9]), [everywhere, everywhere, [3, 9]])):
            entry = self.installed('lower', 1, 'ingress', action)
            self.assertEqual([self.ports(1, frame) for frame in (known, unicast, multicast, broadcast)],
                             [[2]] + unknown, action)
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_back_to_where_it_came_from(self):
        frame = made(to=ALL, kind=0)
        checked(q.bcm_vlan_port_remove, 0, VLAN, range(4, 65))
        entry = self.installed('lower', 1, 'ingress', ('SourcePruneDisable',))
        self.assertEqual(self.ports(1, frame), [1, 2, 3])
        self.assertEqual(self.ports(2, made()), [2])
        checked(q.bcm_field_entry_destroy, 0, entry)
        self.installed('lower', 1, 'ingress', ('ForwardToSourcePort',))
        self.assertEqual([self.switch.send(port, frame) for port in (1, 3)], [[(1, frame)], [(3, frame)]])

    def test_members_of_trunks(self):
        checked(q.bcm_trunk_create, 0, q.BCM_TRUNK_FLAG_WITH_ID, 7)
        members = array('bcm_trunk_member_t', 3)
        for place, port in enumerate((11, 12, 13)):
            checked(q.bcm_trunk_member_add, 0, 7, q.bcm_trunk_member_t(gport=port))
        for action in (('RedirectTrunk', 7), ('RedirectPbmp', [11, 12, 13])):
            for place, port in enumerate((11, 12, 13)):
                entry = self.installed('lower', 1, 'ingress', action, ('TrunkMemberSelect', place))
                self.assertEqual(set(self.ports(1, made(number=number))[0] for number in range(8)), set([port]))
                checked(q.bcm_field_entry_destroy, 0, entry)
        self.switch.pull(12)
        self.installed('lower', 1, 'ingress', ('RedirectTrunk', 7), ('TrunkMemberSelect', 1))
        self.assertIn(self.ports(1, made()), [[11], [13]])

    def test_what_is_not_checked(self):
        blocked, stranger = made(), made(tags=((0x8100, 20, 0),))
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_add, 0, 20, [2], [])
        checked(q.bcm_port_vlan_member_set, 0, 1, q.BCM_PORT_VLAN_MEMBER_INGRESS)
        checked(q.bcm_stg_stp_set, 0, 1, 1, q.BCM_STG_STP_BLOCK)
        checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(port=3, vid=VLAN, mac=NEW,
                                                      flags=q.BCM_L2_STATIC | q.BCM_L2_DISCARD_SRC))
        refused = made(source=NEW)
        for frame, port, reason, actions in (
                (blocked, 1, 'tree_state', [('DoNotCheckStp',)]),
                (blocked, 1, 'tree_state', [('StpStateOverride', q.BCM_STG_STP_FORWARD)]),
                (stranger, 1, 'vlan_filter', [('DoNotCheckVlan',), ('DoNotCheckStp',)]),
                (refused, 3, 'source_address', [('DoNotCheckSourceMac',)])):
            self.assertEqual(self.switch.drops(port, frame), [(port, reason)])
            entry = self.installed('lower', 1, 'lookup', *actions)
            self.assertEqual(self.ports(port, frame), [2], actions)
            checked(q.bcm_field_entry_destroy, 0, entry)
        self.installed('lower', 1, 'lookup', ('StpStateOverride', q.BCM_STG_STP_LEARN))
        self.assertEqual(self.switch.drops(4, made()), [(4, 'tree_state')])

    def test_the_vlan_in_which_it_is_forwarded(self):
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_add, 0, 20, [5], [])
        self.installed('lower', 1, 'lookup', ('ForwardingVlanNew', 20))
        self.assertEqual(self.switch.send(1, made()), [(5, made(tags=((0x8100, 20, 0),)))])


class Samples(FieldActionTest):
    """Packets of which a part is taken."""

    def taken(self, *actions, **more):
        """(ports, reasons) of each of 60 packets to port 2 that has a copy"""
        entry = self.installed('lower', 1, more.get('stage', 'ingress'), *actions)
        found = []
        for _ in range(60):
            del self.told[:]
            ports = sorted(port for port, _ in self.switch.send(1, made()))
            if ports != [2]:
                found.append((ports, [told['rx_reasons'] for told in self.told]))
        checked(q.bcm_field_entry_destroy, 0, entry)
        return found

    def test_for_the_cpu(self):
        for direction, reason, stages in (('Ingress', 'SampleSource', ['ingress']),
                                          ('Egress', 'SampleDest', ['ingress', 'egress'])):
            enable, rate = (direction + 'SampleEnable',), (direction + 'SampleRateNew', 4)
            for stage in stages:
                each = self.taken(enable, stage=stage)
                self.assertEqual(each, [([CPU, 2], [['bcmRxReason' + reason]])] * 60)
                self.assertTrue(3 <= len(self.taken(enable, rate, stage=stage)) <= 30)
                self.assertEqual(self.taken(rate, stage=stage), [])
                self.installed('upper', 2, stage, ('SampleCancel',))
                self.assertEqual(self.taken(enable, stage=stage), [])
                for entry in [entry for entry, name in self.names.items() if name == 'upper']:
                    checked(q.bcm_field_entry_destroy, 0, entry)
                    del self.names[entry]

    def test_for_a_destination_of_mirrors(self):
        record = q.bcm_mirror_destination_t(gport=9)
        checked(q.bcm_mirror_destination_create, 0, record)
        to_mirror = 'SampleToMirror', record.mirror_dest_id
        for direction in 'Ingress', 'Egress':
            self.assertEqual(self.taken((direction + 'SampleEnable',), to_mirror), [([2, 9], [])] * 60)
        self.installed('lower', 0, 'ingress', to_mirror)
        self.assertEqual(q.bcm_mirror_destination_destroy(0, record.mirror_dest_id), q.BCM_E_BUSY)
        self.assertEqual(self.taken(('IngressSampleEnable',), ('SampleToCpu',))[0][0], [CPU, 2])
        missing = self.entry(self.group(1), ('SampleToMirror', record.mirror_dest_id + 1))
        self.assertEqual(q.bcm_field_entry_install(0, missing), q.BCM_E_NOT_FOUND)


if __name__ == '__main__':
    unittest.main()
