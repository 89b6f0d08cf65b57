"""What entries of the field processor do with packets: each action by what it changes, for packets of which colours, in
which stages, and against entries of other groups."""
import os
import random
import re
import struct
import unittest

import QuorelApiNew as q
from quorel import array, as_dict, callback, checked, OUT, sim, StatusError
from router_model import IP4, IP6
import router

A, B, NEW = ['02:00:00:00:00:0%d' % number for number in (1, 2, 3)]
VLAN, INNER, CPU = 10, 7, 0
COLORS = 'Green', 'Yellow', 'Red'
FORMS = {'Gp': 'Green', 'Yp': 'Yellow', 'Rp': 'Red'}
STAGES = 'lookup', 'ingress', 'egress'
DOCS = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), 'docs', 'simulated-switch.md')

# Packets as they are sent: with two tags, the priority of the outer one gives the colour.
PRECEDENCE, INNER_PRIORITY = 3, 4

DROP, COPY, TO_FLOOD = ('Drop',), ('CopyToCpu',), ('RedirectPbmp', [2, 3])
FILTER = dict(reasons=['FilterMatch'], match='upper', cpu_queue=0, cpu_priority=0)
# What an entry does, what one of a group of lower priority wants, and what is different from what that does alone.
CASES = [
    (DROP, None, dict(ports=[])),
    (('RedirectBlackHole',), None, dict(ports=[])),
    (('DropCancel',), DROP, dict(ports=[2])),
    (('DropCancel',), ('RedirectBlackHole',), dict(ports=[2])),
    (COPY, None, dict(FILTER, ports=[CPU, 2])),
    (('CopyToCpuCancel',), COPY, dict(ports=[2], reasons=None, match=None, cpu_queue=None, cpu_priority=None)),
    (('SwitchToCpuCancel',), COPY, {}),
    (('Trap',), None, dict(FILTER, ports=[CPU])),
    (('Trap',), DROP, dict(FILTER, ports=[CPU])),
    (('Trap',), ('RedirectPort', 0, 3), dict(FILTER, ports=[CPU])),
    (('TrapCancel',), ('Trap',), dict(ports=[2], reasons=None, match=None, cpu_queue=None, cpu_priority=None)),
    (('CpuReasonNew', q.bcmRxReasonArp), COPY, dict(reasons=['Arp'])),
    (('CpuReasonNew', q.bcmRxReasonArp), None, {}),
    (('CpuReasonCancel',), ('CpuReasonNew', q.bcmRxReasonArp), {}),
    (('CpuMatchIdNew', 77), COPY, dict(match=77)),
    (('CosQCpuNew', 5), COPY, dict(cpu_queue=5)),
    (('CosQNew', 5), None, dict(queue=5)),
    (('UcastCosQNew', 5), None, dict(queue=5)),
    (('McastCosQNew', 5), None, {}),
    (('CosQNew', 5), TO_FLOOD, dict(queue=5)),
    (('UcastCosQNew', 5), TO_FLOOD, {}),
    (('McastCosQNew', 5), TO_FLOOD, dict(queue=5)),
    (('CosQNew', 5), COPY, dict(queue=5)),
    (('PrioIntNew', 6), ('CosQNew', 5), {}),
    (('PrioIntNew', 6), None, dict(queue=6)),
    (('PrioIntNew', 6), COPY, dict(queue=6, cpu_priority=6)),
    (('PrioIntTos',), None, dict(queue=PRECEDENCE)),
    (('PrioPktNew', 6), None, dict(priority=6)),
    (('PrioPktTos',), None, dict(priority=PRECEDENCE)),
    (('PrioPktCopy',), None, dict(priority=INNER_PRIORITY)),
    (('PrioPktAndIntNew', 6), None, dict(priority=6, queue=6)),
    (('PrioPktAndIntTos',), None, dict(priority=PRECEDENCE, queue=PRECEDENCE)),
    (('OuterVlanPrioNew', 6), ('PrioPktNew', 2), dict(priority=6)),
    (('OuterVlanPrioCopyInner',), None, dict(priority=INNER_PRIORITY)),
    (('OuterVlanCfiNew', 1), None, dict(cfi=1)),
    (('DropPrecedence', q.bcmColorRed), None, dict(color='Red')),
    (('DropPrecedence', q.bcmColorYellow), ('DropPrecedence', q.bcmColorRed), dict(color='Yellow')),
    (('RedirectPort', 0, CPU), None, dict(FILTER, ports=[CPU])),
    (('RedirectCancel',), ('RedirectPort', 0, 3), dict(ports=[2])),
    (('EgressPortMaskClear',), ('EgressMask', [2]), dict(ports=[2])),
    (('EgressPortsAdd', [4]), None, dict(ports=[2, 4])),
]
BEFORE_TABLES = [
    (DROP, None, dict(ports=[])),
    (('PrioIntNew', 6), None, dict(queue=6)),
    (('PrioIntTos',), None, dict(queue=PRECEDENCE)),
    (('PrioPktAndIntNew', 6), ('PrioIntNew', 2), dict(priority=6, queue=6)),
    (('DropPrecedence', q.bcmColorRed), None, dict(color='Red')),
]
WHEN_LEAVING = [
    (DROP, None, dict(ports=[])),
    (('DropCancel',), DROP, dict(ports=[2])),
    (('PrioIntNew', 6), None, dict(queue=6)),
    (('PrioIntTos',), None, dict(queue=PRECEDENCE)),
    (('PrioPktNew', 6), None, dict(priority=6)),
    (('PrioPktTos',), None, dict(priority=PRECEDENCE)),
    (('PrioPktCopy',), None, dict(priority=INNER_PRIORITY)),
    (('PrioPktAndIntNew', 6), ('PrioIntNew', 2), dict(priority=6, queue=6)),
    (('OuterVlanPrioCopyInner',), ('PrioPktNew', 2), dict(priority=INNER_PRIORITY)),
    (('OuterVlanCfiNew', 1), None, dict(cfi=1)),
    (('DropPrecedence', q.bcmColorRed), None, dict(color='Red')),
]


class FieldActionTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_field_init, 0)
        self.addCleanup(q.bcm_field_init, 0)
        checked(q.bcm_vlan_create, 0, VLAN)
        checked(q.bcm_vlan_port_add, 0, VLAN, range(1, 65), [])
        for mac, port in ((A, 1), (B, 2)):
            checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(port=port, vid=VLAN, mac=mac, flags=q.BCM_L2_STATIC))
        for color in range(3):
            checked(q.bcm_port_vlan_priority_map_set, 0, 1, color, 0, 0, color)
        self.groups, self.told, self.names = {}, [], {}
        checked(q.bcm_rx_register, 0, 'test', callback('bcm_rx_cb_f', self.take), 10, None, 0)
        checked(q.bcm_rx_start, 0, None)

    def take(self, unit, packet, cookie):
        self.told.append(as_dict(packet))
        return q.BCM_RX_HANDLED

    def group(self, priority, stage='ingress'):
        if (priority, stage) not in self.groups:
            qset = q.bcm_field_qset_t()
            q.bcm_field_qset_add(qset, q.bcmFieldQualifyInPort)
            if stage != 'ingress':
                q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualifyStage' + stage.capitalize()))
            self.groups[priority, stage] = checked(q.bcm_field_group_create, 0, qset, priority)
        return self.groups[priority, stage]

    def entry(self, group, *actions):
        """One that is not installed, for all packets. Of an action the name comes first, then its parameters."""
        entry = checked(q.bcm_field_entry_create, 0, group)
        for action in actions:
            self.add(entry, *action)
        return entry

    def add(self, entry, name, *parameters):
        action = getattr(q, 'bcmFieldAction' + name)
        if parameters and isinstance(parameters[0], list):
            checked(q.bcm_field_action_ports_add, 0, entry, action, *parameters)
        elif parameters and isinstance(parameters[0], str):
            checked(q.bcm_field_action_mac_add, 0, entry, action, *parameters)
        else:
            checked(q.bcm_field_action_add, 0, entry, action, *(parameters + (0, 0, 0))[:3])

    def installed(self, name, priority, stage, *actions):
        entry = self.entry(self.group(priority, stage), *actions)
        checked(q.bcm_field_entry_install, 0, entry)
        self.names[entry] = name
        return entry

    def ports(self, port, frame):
        return [to for to, _ in self.switch.send(port, frame)]

    def queues(self):
        """Packets by queue and colour of what leaves port 2."""
        return dict(((queue, color), checked(q.bcm_cosq_stat_get, 0, 2, queue,
                                             getattr(q, 'bcmCosqStatOut%sPackets' % color), OUT))
                    for queue in range(8) for color in COLORS)

    def becomes(self, frame):
        """What becomes of a frame that arrives at port 1."""
        del self.told[:]
        before = self.queues()
        left = self.switch.send(1, frame)
        counted = [place for place, packets in sorted(self.queues().items()) if packets != before[place]]
        queue, color = counted[0] if counted else (None, None)
        sent = bytearray(dict(left).get(2, bytes(bytearray(16))))
        told = self.told[0] if self.told else None
        return dict(ports=sorted(port for port, _ in left), queue=queue, color=color, priority=sent[14] >> 5,
                    cfi=sent[14] >> 4 & 1,
                    reasons=told and [reason[len('bcmRxReason'):] for reason in told['rx_reasons']],
                    match=told and self.names.get(told['rx_matched'], told['rx_matched']),
                    cpu_queue=told and told['rx_cpu_cos'], cpu_priority=told and told['prio_int'])

    def frame(self, color='Green'):
        inner = sim.tagged(sim.ethernet(B, A, sim.udp4('10.0.0.1', '10.0.0.2', dscp=PRECEDENCE << 3)), INNER,
                           INNER_PRIORITY)
        return sim.tagged(inner, VLAN, COLORS.index(color))

    def check(self, action, lower, changed, stage, colors=COLORS):
        """Packets of the colours are changed by the entry, and others are not."""
        other = lower and self.installed('lower', 1, stage, lower)
        without = dict((color, self.becomes(self.frame(color))) for color in COLORS)
        entry = self.installed('upper', 2, stage, action)
        for color in COLORS:
            expected = dict(without[color], **(changed if color in colors else {}))
            if not {2} & set(expected['ports']):
                expected.update(queue=None, color=None, priority=0, cfi=0)
            elif expected['queue'] is None:
                expected.update((name, value) for name, value in self.plain[color].items()
                                if name in ('queue', 'color', 'priority', 'cfi'))
            self.assertEqual(self.becomes(self.frame(color)), expected, (action, lower, color, stage))
        for each in (entry, other):
            if each:
                checked(q.bcm_field_entry_destroy, 0, each)

    def check_all(self, cases, stage):
        self.plain = dict((color, self.becomes(self.frame(color))) for color in COLORS)
        for number, color in enumerate(COLORS):
            self.assertEqual(self.plain[color], dict(
                ports=[2], queue=0, color=color, priority=number, cfi=0, reasons=None, match=None, cpu_queue=None,
                cpu_priority=None))
        for action, lower, changed in cases:
            self.check(action, lower, changed, stage)
            for form, color in FORMS.items():
                name = form + action[0]
                if hasattr(q, 'bcmFieldAction' + name):
                    self.check((name,) + action[1:], lower, changed, stage, [color])

    def route_to_b(self):
        """All routed packets go to it: the address of the router."""
        mac = router.router_mac(VLAN)
        interface = q.bcm_l3_intf_t(l3a_mac_addr=mac, l3a_vid=VLAN)
        checked(q.bcm_l3_intf_create, 0, interface)
        egress = q.bcm_l3_egress_t(mac_addr=B, port=2, intf=interface.l3a_intf_id)
        way = checked(q.bcm_l3_egress_create, 0, 0, egress, OUT)
        for kind in (IP4, IP6):
            checked(q.bcm_l3_route_add, 0, router.RouterTest.route_record(0, kind, 0, 0, way))
        return mac


class Actions(FieldActionTest):
    def test_when_it_is_known_where_packets_go(self):
        self.check_all(CASES, 'ingress')

    def test_before_the_tables(self):
        self.check_all(BEFORE_TABLES, 'lookup')

    def test_when_packets_leave(self):
        self.check_all(WHEN_LEAVING, 'egress')

    def test_what_is_for_one_colour_counts_before_what_is_for_all(self):
        self.installed('upper', 1, 'ingress', DROP, ('YpDropCancel',), ('CosQNew', 3), ('YpCosQNew', 4))
        self.assertEqual([self.becomes(self.frame(color))['queue'] for color in COLORS], [None, 4, None])

    def test_what_the_switch_has_for_the_cpu(self):
        bridges = sim.ethernet('01:80:c2:00:00:00', A, b'\1' * 46, kind=0x26)
        self.assertEqual(self.becomes(bridges)['ports'], [CPU])
        self.installed('upper', 1, 'ingress', ('SwitchToCpuCancel',))
        self.assertEqual(self.switch.drops(1, bridges), [(1, 'field_rule')])
        checked(q.bcm_vlan_port_add, 0, VLAN, [CPU], [])
        self.assertEqual(self.becomes(sim.tagged(sim.ethernet(NEW, A), VLAN))['ports'], range(2, 65))
        self.installed('lower', 0, 'ingress', COPY)
        told = self.becomes(sim.tagged(sim.ethernet(NEW, A), VLAN))
        self.assertEqual(told['ports'], [CPU] + range(2, 65))
        self.assertEqual((told['reasons'], told['match']), (['FilterMatch'], 'lower'))

    def test_learning(self):
        def leads_to():
            return [port for port, _ in self.switch.send(3, sim.tagged(sim.ethernet(NEW, B), VLAN))]
        frame = sim.tagged(sim.ethernet(B, NEW), VLAN)
        lower = self.installed('lower', 1, 'lookup', ('DoNotLearn',))
        self.assertEqual((self.becomes(frame)['ports'], len(leads_to())), ([2], 63))
        self.assertIn('is not to be learnt', self.switch.trace(1, frame))
        upper = self.installed('upper', 2, 'lookup', ('DoLearn',))
        self.assertEqual((self.becomes(frame)['ports'], leads_to()), ([2], [1]))
        for entry in (upper, lower):
            checked(q.bcm_field_entry_remove, 0, entry)

    def test_filters_of_vlans(self):
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_add, 0, 20, [2], [])
        checked(q.bcm_port_vlan_member_set, 0, 1, q.BCM_PORT_VLAN_MEMBER_INGRESS)
        frame = sim.tagged(sim.ethernet(B, A), 20)
        self.assertEqual(self.switch.drops(1, frame), [(1, 'vlan_filter')])
        self.installed('upper', 1, 'lookup', ('IngressVlanFilterDisable',))
        self.assertEqual(self.ports(1, frame), [2])
        checked(q.bcm_port_vlan_member_set, 0, 5, q.BCM_PORT_VLAN_MEMBER_EGRESS)
        out = self.installed('upper', 1, 'ingress', ('RedirectPort', 0, 5))
        self.assertEqual(self.switch.drops(1, frame), [(5, 'vlan_filter_to_send')])
        checked(q.bcm_field_action_add, 0, out, q.bcmFieldActionEgressVlanFilterDisable, 0, 0, 0)
        checked(q.bcm_field_entry_reinstall, 0, out)
        self.assertEqual(self.ports(1, frame), [5])

    def test_the_vlan_of_the_inner_tag(self):
        self.installed('upper', 1, 'lookup', ('OuterVlanCopyInner',))
        self.assertEqual(self.switch.drops(1, self.frame()), [(1, 'vlan_unknown')])
        checked(q.bcm_vlan_create, 0, INNER)
        checked(q.bcm_vlan_port_add, 0, INNER, [1, 8], [])
        self.assertEqual(self.ports(1, self.frame()), [8])
        self.assertEqual(self.ports(1, sim.tagged(sim.ethernet(B, A), VLAN)), [2])

    def test_what_is_limited_as_a_storm(self):
        frame = made(to='ff:ff:ff:ff:ff:ff')
        checked(q.bcm_rate_bcast_set, 0, 1, 1, q.BCM_RATE_ENABLE)
        self.switch.send(1, frame)
        self.assertEqual(self.switch.drops(1, frame), [(1, 'storm_limit')])
        self.installed('upper', 1, 'lookup', ('StormControlDisable',))
        self.assertEqual([len(self.switch.send(1, frame)) > 0 for _ in range(3)], [True] * 3)

    def test_parameters_that_no_packet_can_have(self):
        for action in (('CosQNew', 8), ('CosQCpuNew', 8), ('PrioIntNew', 8), ('GpPrioPktNew', 8), ('DropPrecedence', 3),
                       ('CpuReasonNew', 0), ('CpuReasonNew', q.bcmRxReasonCount), ('OuterVlanCfiNew', 2),
                       ('EgressMask', 1), ('PrioIntNew', 0xffffffff)):
            self.assertEqual(q.bcm_field_entry_install(0, self.entry(self.group(1), action)), q.BCM_E_PARAM, action)
        for vlan in (0, 4095):
            entry = self.entry(self.group(1, 'lookup'), ('VlanNew', vlan))
            self.assertEqual(q.bcm_field_entry_install(0, entry), q.BCM_E_PARAM, vlan)


def made(to=B, source=A, tags=((0x8100, VLAN, 0),), kind=4, service=0, ttl=64, number=0):
    """A frame. Tags are TPID, VLAN, and priority with the bit that follows it; kind is the version of IP, or 0."""
    head = bytes(bytearray(int(part, 16) for mac in (to, source) for part in mac.split(':')))
    for tpid, vlan, priority in tags:
        head += struct.pack('>HH', tpid, priority << 12 | vlan)
    if kind == 4:
        words = [0x4500 | service, 28, number, 0, ttl << 8 | 17, 0, 0x0a00, 1, 0x0a00, 0x0100]
        total = sum(words)
        total = (total & 0xffff) + (total >> 16)
        words[5] = ~((total & 0xffff) + (total >> 16)) & 0xffff
        rest = struct.pack('>H10H', 0x800, *words)
    elif kind == 6:
        rest = struct.pack('>HIHBB', 0x86dd, 6 << 28 | service << 20 | number, 8, 17, ttl)
        rest += struct.pack('>8H8H', 0x2001, 0xdb8, 0, 0, 0, 0, 0, 1, 0x2001, 0xdb8, 0, 1, 0, 0, 0, 1)
    else:
        rest = struct.pack('>H', 0x88b5)
    return head + (rest + struct.pack('>HHHH', 1, 2, 8, 0)).ljust(56, b'\0')


MAC, GROUP = '02:00:00:00:00:99', '01:00:5e:00:00:09'


def inner(change):
    """What becomes of the inner tag, if there is one."""
    return lambda packet: dict(tags=packet['tags'][:1] + tuple(change(*tag) for tag in packet['tags'][1:]))


def routed(**changes):
    return lambda packet: changes if packet['routed'] else {}


def of_ip(change):
    return lambda packet: dict(service=change(packet['service'])) if packet['kind'] else {}


# Actions, and what they change of a packet. Its members are those of made() as it leaves without them, and whether it
# is routed.
HEADER_CASES = [
    ([('DscpNew', 46)], of_ip(lambda service: 46 << 2 | service & 3)),
    ([('TosNew', 5)], of_ip(lambda service: 5 << 5 | service & 31)),
    ([('EcnNew', 1)], of_ip(lambda service: service & ~3 | 1)),
    ([('DscpNew', 0), ('EcnNew', 3)], of_ip(lambda service: 3)),
    ([('TtlSet', 255)], routed(ttl=255)),
    ([('TtlSet', 0), ('DscpNew', 1)], lambda packet: dict(of_ip(lambda service: 4 | service & 3)(packet),
                                                          **routed(ttl=0)(packet))),
    ([('TtlDecrementDisable',)], routed(ttl=64)),
    ([('TosCopy',)], lambda packet: of_ip(lambda service: packet['tags'][0][2] >> 1 << 5 | service & 31)(packet)),
    ([('SrcMacNew', MAC)], lambda packet: dict(source=MAC)),
    ([('DestMacNew', MAC), ('EcnNew', 2)],
     lambda packet: dict(of_ip(lambda service: service & ~3 | 2)(packet), to=MAC)),
    ([('OuterTpidNew', 0x9100)], lambda packet: dict(tags=((0x9100,) + packet['tags'][0][1:],) + packet['tags'][1:])),
    ([('InnerVlanNew', 30)], inner(lambda tpid, vlan, priority: (tpid, 30, priority))),
    ([('InnerVlanDelete',)], lambda packet: dict(tags=packet['tags'][:1])),
    ([('InnerVlanPrioNew', 6)], inner(lambda tpid, vlan, priority: (tpid, vlan, 12 | priority & 1))),
    ([('InnerVlanCfiNew', 1)], inner(lambda tpid, vlan, priority: (tpid, vlan, priority | 1))),
    ([('InnerVlanCopyOuter',)], inner(lambda tpid, vlan, priority: (tpid, VLAN, priority))),
    ([('InnerVlanPrioCopyOuter',)], inner(lambda tpid, vlan, priority: (tpid, vlan, 2 | priority & 1))),
    ([('InnerTpidNew', 0x88a8)], inner(lambda tpid, vlan, priority: (0x88a8, vlan, priority))),
    ([('InnerVlanNew', 31), ('SrcMacNew', MAC), ('PrioPktNew', 5)], lambda packet: dict(
        inner(lambda tpid, vlan, priority: (tpid, 31, priority))(packet), source=MAC,
        tags=((0x8100, packet['tags'][0][1], 10),) + inner(lambda tpid, vlan, priority: (tpid, 31, priority))(
            packet)['tags'][1:])),
]

# Those that come too late when a packet leaves, and one that comes too late before.
NOT_TO_SEND = {'TtlSet', 'TtlDecrementDisable', 'InnerVlanDelete'}
ONLY_TO_SEND = [
    ([('OuterVlanNew', 30)], lambda packet: dict(tags=((0x8100, 30, packet['tags'][0][2]),) + packet['tags'][1:])),
]


class Headers(FieldActionTest):
    def check_headers(self, packets):
        """Of each packet: how it arrives, how it leaves port 2 without entries."""
        for came, leaves in packets:
            self.assertEqual(dict(self.switch.send(1, made(**came)))[2], self.left(leaves))
        cases = [('ingress',) + case for case in HEADER_CASES]
        cases += [('egress',) + case for case in HEADER_CASES + ONLY_TO_SEND
                  if not NOT_TO_SEND & set(action[0] for action in case[0])]
        for stage, actions, change in cases:
            entry = self.installed('upper', 1, stage, *actions)
            for came, leaves in packets:
                expected = dict(leaves, **change(leaves))
                self.assertEqual(dict(self.switch.send(1, made(**came)))[2], self.left(expected),
                                 (stage, actions, came))
            checked(q.bcm_field_entry_destroy, 0, entry)

    @staticmethod
    def left(packet):
        return made(**dict((name, value) for name, value in packet.items() if name != 'routed'))

    def test_of_bridged_packets(self):
        one, two = ((0x8100, VLAN, 0),), ((0x8100, VLAN, 2), (0x8100, INNER, 8))
        came = [dict(tags=tags, kind=kind, service=0x6a) for tags in (one, two) for kind in (4, 6, 0)]
        self.check_headers([(packet, dict(packet, routed=False)) for packet in came])

    def test_of_routed_packets(self):
        mac = self.route_to_b()
        came = [dict(to=mac, kind=kind, service=0x6a) for kind in (4, 6)]
        self.check_headers([(packet, dict(packet, to=B, source=mac, ttl=63, routed=True,
                                          tags=((0x8100, VLAN, 0),))) for packet in came])

    def test_copies_that_leave_changed(self):
        checked(q.bcm_vlan_port_remove, 0, VLAN, [3])
        checked(q.bcm_vlan_port_add, 0, VLAN, [3], [3])
        checked(q.bcm_vlan_port_add, 0, VLAN, [CPU], [])
        record = q.bcm_mirror_destination_t(gport=9)
        checked(q.bcm_mirror_destination_create, 0, record)
        entry = self.installed('upper', 1, 'egress', ('OuterVlanNew', 30), ('DscpNew', 2),
                               ('MirrorEgress', record.mirror_dest_id))
        checked(q.bcm_field_entry_remove, 0, entry)
        checked(q.bcm_field_qualify_InPort, 0, entry, 1, 0xff)
        checked(q.bcm_field_entry_install, 0, entry)
        checked(q.bcm_vlan_port_remove, 0, VLAN, range(4, 65))
        tagged, untagged = made(to=NEW, tags=((0x8100, 30, 0),), service=8), made(to=NEW, tags=(), service=8)
        left = self.switch.send(1, made(to=NEW))
        self.assertEqual(sorted(left), sorted([(CPU, made(to=NEW)), (2, tagged), (3, untagged), (9, tagged),
                                               (9, untagged)]))
        counted = [checked(q.bcm_stat_get, 0, port, q.snmpIfOutUcastPkts, OUT) for port in (2, 3)]
        self.assertEqual(counted, [1, 1])

    def test_a_tag_that_is_added(self):
        self.installed('upper', 1, 'ingress', ('InnerVlanAdd', 30))
        checked(q.bcm_vlan_port_remove, 0, VLAN, [3])
        checked(q.bcm_vlan_port_add, 0, VLAN, [3], [3])
        checked(q.bcm_vlan_port_add, 0, VLAN, [CPU], [])
        tags = (0x8100, VLAN, 0), (0x8100, 30, 0)
        left = dict(self.switch.send(1, made(to=NEW)))
        self.assertEqual([left[port] for port in (CPU, 2, 3)], [
            made(to=NEW, tags=tags), made(to=NEW, tags=tags), made(to=NEW, tags=tags[1:])])

    def test_checksums(self):
        chance = random.Random(7)
        for _ in range(200):
            packet = dict(service=chance.randrange(256), number=chance.randrange(1 << 16), ttl=chance.randrange(256))
            dscp = chance.randrange(64)
            entry = self.installed('upper', 1, 'ingress', ('DscpNew', dscp))
            self.assertEqual(dict(self.switch.send(1, made(**packet)))[2],
                             made(**dict(packet, service=dscp << 2 | packet['service'] & 3)), (packet, dscp))
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_cancels(self):
        for action, cancel in ((('DscpNew', 1), 'DscpCancel'), (('GpTosNew', 1), 'GpTosCancel'),
                               (('EcnNew', 1), 'EcnCancel')):
            entries = [self.installed('lower', 1, 'ingress', action), self.installed('upper', 2, 'ingress', (cancel,))]
            self.assertEqual(dict(self.switch.send(1, made()))[2], made(), action)
            for entry in entries:
                checked(q.bcm_field_entry_destroy, 0, entry)

    def test_a_packet_counts_by_the_address_with_which_it_leaves(self):
        self.installed('upper', 1, 'ingress', ('DestMacNew', GROUP))
        before = self.switch.statistics(2)
        self.assertEqual(dict(self.switch.send(1, made()))[2], made(to=GROUP))
        after = self.switch.statistics(2)
        self.assertEqual([after.get(name, 0) - before.get(name, 0) for name in ('snmpIfOutUcastPkts', 'snmpIfOutMulticastPkts')],
                         [0, 1])

    def test_addresses_are_given_back(self):
        entry = self.entry(self.group(1), ('DestMacNew', MAC), DROP)
        found = checked(q.bcm_field_action_mac_get, 0, entry, q.bcmFieldActionDestMacNew, OUT)
        self.assertEqual(str(found), MAC)
        with self.assertRaisesRegexp(StatusError, 'NOT_FOUND'):
            checked(q.bcm_field_action_mac_get, 0, entry, q.bcmFieldActionDrop, OUT)
        self.assertEqual(q.bcm_field_entry_install(0, self.entry(self.group(1), ('DestMacNew', 1))), q.BCM_E_PARAM)


class Redirects(FieldActionTest):
    def setUp(self):
        FieldActionTest.setUp(self)
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_add, 0, 20, [1, 5, 6], [])
        self.mac = router.router_mac(20)
        record = q.bcm_l3_intf_t(l3a_mac_addr=self.mac, l3a_vid=20)
        checked(q.bcm_l3_intf_create, 0, record)
        self.interface = record.l3a_intf_id

    def object(self, **members):
        record = q.bcm_l3_egress_t(intf=self.interface, **members)
        return checked(q.bcm_l3_egress_create, 0, 0, record, OUT)

    def leaves(self, **packet):
        return self.switch.send(1, made(**packet))

    def test_egress_objects(self):
        hop, nowhere = self.object(mac_addr=NEW, port=5), self.object(flags=q.BCM_L3_DST_DISCARD)
        for action in ('RedirectEgrNextHop', 'L3Switch'):
            entry = self.installed('upper', 1, 'ingress', (action, hop), ('PrioPktNew', 3))
            for kind in (4, 6):
                self.assertEqual(self.leaves(kind=kind), [
                    (5, made(kind=kind, to=NEW, source=self.mac, ttl=63, tags=((0x8100, 20, 6),)))])
            self.assertEqual([port for port, _ in self.leaves(kind=0)], [2])
            self.assertEqual(self.switch.drops(1, made(ttl=1)), [(1, 'ttl')])
            checked(q.bcm_field_entry_destroy, 0, entry)
        entry = self.installed('upper', 1, 'ingress', ('RedirectEgrNextHop', nowhere), COPY)
        for reason in 'null_route', 'unresolved':
            self.assertEqual(self.switch.drops(1, made()), [(1, reason)])
            self.assertEqual([port for port, _ in self.leaves()], [CPU])
            checked(q.bcm_l3_init, 0)  # does not ask who uses what

    def test_objects_stay_as_long_as_installed_entries_lead_there(self):
        way = self.object(mac_addr=NEW, port=5)
        group = checked(q.bcm_l3_egress_multipath_create, 0, 0, 1, array('bcm_if_t', [way]), OUT)
        alone = self.object(mac_addr=NEW, port=6)
        for action, target, destroy in (('RedirectEgrNextHop', alone, q.bcm_l3_egress_destroy),
                                        ('L3Switch', alone, q.bcm_l3_egress_destroy),
                                        ('RedirectEcmp', group, q.bcm_l3_egress_multipath_destroy)):
            missing = self.entry(self.group(1), (action, 9999))
            self.assertEqual(q.bcm_field_entry_install(0, missing), q.BCM_E_NOT_FOUND)
            entry, other = self.installed('upper', 1, 'ingress', (action, target)), self.entry(self.group(1))
            checked(q.bcm_field_entry_install, 0, other)
            self.assertEqual(destroy(0, target), q.BCM_E_BUSY)
            checked(q.bcm_field_action_remove, 0, entry, getattr(q, 'bcmFieldAction' + action))
            self.assertEqual(destroy(0, target), q.BCM_E_BUSY)  # until it is taken over
            checked(q.bcm_field_entry_reinstall, 0, entry)
            checked(destroy, 0, target)
            if target == alone:
                alone = self.object(mac_addr=NEW, port=6)

    def test_packets_that_are_not_to_be_routed(self):
        checked(q.bcm_l3_route_add, 0, router.RouterTest.route_record(0, IP4, 0, 0, self.object(mac_addr=NEW, port=5)))
        frame = made(to=self.mac, tags=((0x8100, 20, 0),))
        self.assertEqual(self.ports(6, frame), [5])
        entry = self.installed('upper', 1, 'lookup', ('L3RouteDisable',))
        self.assertEqual(self.switch.send(6, frame), [(1, frame), (5, frame)])  # flooded
        checked(q.bcm_field_entry_destroy, 0, entry)

    def test_which_table_routes_and_which_sources_are_expected(self):
        for vrf, port in (0, 5), (7, 6):
            checked(q.bcm_l3_route_add, 0,
                    router.RouterTest.route_record(vrf, IP4, 0, 0, self.object(mac_addr=NEW, port=port)))
        frame = made(to=self.mac, tags=((0x8100, 20, 0),))
        self.installed('table', 1, 'lookup', ('VrfSet', 7))
        self.assertEqual(self.ports(3, frame), [6])
        self.installed('another', 2, 'lookup', ('VrfSet', 0), ('L3UrpfModeNew', q.bcmL3IntfUrpfLoose))
        self.assertEqual(self.ports(3, frame), [])
        self.assertEqual(self.switch.drops(3, frame), [(3, 'ip_source')])  # a default route expects nobody
        self.installed('no check', 3, 'lookup', ('L3UrpfDisable',))
        self.assertEqual(self.ports(3, frame), [5])

    def test_groups_of_them(self):
        ways = array('bcm_if_t', [self.object(mac_addr=NEW, port=port) for port in (5, 6)])
        group = checked(q.bcm_l3_egress_multipath_create, 0, 0, 2, ways, OUT)
        self.installed('lower', 1, 'ingress', ('RedirectEcmp', group))
        flows = [sim.tagged(sim.ethernet(B, A, sim.udp4('10.0.0.1', '10.0.0.2', port)), VLAN) for port in range(40)]
        ports = [[port for port, _ in self.switch.send(1, flow)] for flow in flows]
        self.assertEqual(ports, [[port for port, _ in self.switch.send(1, flow)] for flow in flows])
        self.assertEqual(set(map(tuple, ports)), {(5,), (6,)})
        self.installed('upper', 2, 'ingress', ('L3SwitchCancel',))
        self.assertEqual([port for port, _ in self.switch.send(1, flows[0])], [2])

    def test_members_of_a_vlan(self):
        entry = self.installed('upper', 1, 'ingress', ('RedirectVlan', 20))
        self.assertEqual(self.leaves(), [(5, made()), (6, made())])
        checked(q.bcm_vlan_destroy, 0, 20)
        self.assertEqual(self.switch.drops(1, made()), [(1, 'no_destination')])
        checked(q.bcm_field_entry_destroy, 0, entry)


class Policers(FieldActionTest):
    THREE = dict(flags=q.BCM_POLICER_BEGIN_WITH_BUCKET_FULL | q.BCM_POLICER_MODE_PACKETS, ckbits_sec=1, ckbits_burst=3)

    def policer(self, **members):
        return checked(q.bcm_policer_create, 0, q.bcm_policer_config_t(**members), OUT)

    def test_what_an_entry_does_goes_by_the_colour_that_its_policer_gives(self):
        kinds = array('bcm_field_stat_t', [q.bcmFieldStatGreenPackets, q.bcmFieldStatRedPackets])
        stat = checked(q.bcm_field_stat_create, 0, self.group(1), 2, kinds, OUT)
        entry = self.entry(self.group(1), ('GpCosQNew', 5), ('RpDrop',))
        checked(q.bcm_field_entry_stat_attach, 0, entry, stat)
        checked(q.bcm_field_entry_policer_attach, 0, entry, 0, self.policer(**self.THREE))
        checked(q.bcm_field_entry_install, 0, entry)
        self.installed('lower', 0, 'ingress', ('RpCopyToCpu',))
        told = [self.becomes(self.frame()) for _ in range(5)]
        self.assertEqual([(each['queue'], each['ports']) for each in told], [(5, [2])] * 3 + [(None, [CPU])] * 2)
        self.assertEqual(self.switch.drops(1, self.frame()), [(1, 'field_rule')])
        self.assertEqual([checked(q.bcm_field_stat_get, 0, stat, kind, OUT) for kind in kinds], [3, 3])
        self.assertIn('policer', self.switch.trace(1, self.frame()))

    def test_a_policer_may_drop(self):
        one = self.policer(**dict(self.THREE, flags=self.THREE['flags'] | q.BCM_POLICER_DROP_RED))
        two = self.policer(mode=q.bcmPolicerModeCommitted, **self.THREE)
        entry = self.installed('upper', 1, 'ingress', ('PolicerLevel0Set', one), ('PolicerLevel1Set', two), COPY)
        self.assertEqual([self.becomes(self.frame())['ports'] for _ in range(4)], [[CPU, 2]] * 3 + [[]])
        self.assertEqual(self.switch.drops(1, self.frame()), [(1, 'policer')])
        packets = [checked(q.bcm_policer_stat_get, 0, policer, -1, q.bcmPolicerStatPackets, OUT)
                   for policer in (one, two)]
        self.assertEqual(packets, [5, 3])
        self.assertEqual([q.bcm_policer_destroy(0, policer) for policer in (one, two)], [q.BCM_E_BUSY] * 2)
        checked(q.bcm_field_entry_destroy, 0, entry)
        self.assertEqual([q.bcm_policer_destroy(0, policer) for policer in (one, two)], [0, 0])

    def test_what_they_are_attached_to(self):
        entry, policer = self.entry(self.group(1)), self.policer(mode=q.bcmPolicerModeRed, flags=q.BCM_POLICER_DROP_RED)
        for status, function, arguments in (
                (q.BCM_E_NOT_FOUND, q.bcm_field_entry_policer_attach, (entry, 0, policer + 1)),
                (q.BCM_E_PARAM, q.bcm_field_entry_policer_attach, (entry, 2, policer)),
                (q.BCM_E_PARAM, q.bcm_field_entry_policer_attach, (entry, -1, policer)),
                (q.BCM_E_NOT_FOUND, q.bcm_field_entry_policer_attach, (entry + 1, 0, policer)),
                (q.BCM_E_NOT_FOUND, q.bcm_field_entry_policer_detach, (entry, 1)),
                (0, q.bcm_field_entry_policer_attach, (entry, 1, policer)),
                (q.BCM_E_EXISTS, q.bcm_field_entry_policer_attach, (entry, 1, policer))):
            self.assertEqual(function(0, *arguments), status, arguments)
        self.assertEqual(checked(q.bcm_field_entry_policer_get, 0, entry, 1, OUT), policer)
        with self.assertRaisesRegexp(StatusError, 'NOT_FOUND'):
            checked(q.bcm_field_entry_policer_get, 0, entry, 0, OUT)
        self.assertEqual(self.becomes(self.frame())['ports'], [2])  # it is not installed yet
        checked(q.bcm_field_entry_install, 0, entry)
        self.assertEqual(self.becomes(self.frame())['ports'], [])
        checked(q.bcm_field_entry_policer_detach_all, 0, entry)
        self.assertEqual(q.bcm_policer_destroy(0, policer), q.BCM_E_BUSY)  # installed with it
        checked(q.bcm_field_entry_reinstall, 0, entry)
        self.assertEqual(self.becomes(self.frame())['ports'], [2])
        self.assertEqual(q.bcm_policer_destroy(0, policer), 0)

    def test_where_there_are_none(self):
        policer = self.policer(**self.THREE)
        early = self.entry(self.group(1, 'lookup'))
        checked(q.bcm_field_entry_policer_attach, 0, early, 0, policer)
        self.assertEqual(q.bcm_field_entry_install(0, early), q.BCM_E_UNAVAIL)
        missing = self.entry(self.group(1), ('PolicerLevel0Set', policer + 1))
        self.assertEqual(q.bcm_field_entry_install(0, missing), q.BCM_E_NOT_FOUND)

    def test_policers_that_all_go_at_once(self):
        red = dict(mode=q.bcmPolicerModeRed, flags=q.BCM_POLICER_DROP_RED)
        policer = self.policer(**red)
        entry = self.installed('upper', 1, 'ingress', ('PolicerLevel0Set', policer))
        self.assertEqual(self.becomes(self.frame())['ports'], [])
        checked(q.bcm_policer_destroy_all, 0)
        self.assertEqual(self.becomes(self.frame())['ports'], [2])
        self.assertEqual(self.policer(**red), policer)  # another one of the same id
        self.assertEqual(self.becomes(self.frame())['ports'], [2])
        checked(q.bcm_field_entry_destroy, 0, entry)
        self.assertEqual(q.bcm_policer_destroy(0, policer), 0)


class Mirrors(FieldActionTest):
    def test_copies_of_what_arrives_and_of_what_leaves(self):
        record = q.bcm_mirror_destination_t(gport=9)
        checked(q.bcm_mirror_destination_create, 0, record)
        came, leaves = made(service=4), made(service=8)
        for actions, mirrored in (([('MirrorIngress', record.mirror_dest_id)], came),
                                  ([('MirrorEgress', record.mirror_dest_id)], leaves)):
            entry = self.installed('lower', 1, 'ingress', ('DscpNew', 2), *actions)
            self.assertEqual(sorted(self.switch.send(1, came)), [(2, leaves), (9, mirrored)])
            for cancel in (actions[0][0] + 'Cancel', 'MirrorCancel'):
                other = self.installed('upper', 2, 'ingress', (cancel,))
                self.assertEqual(self.switch.send(1, came), [(2, leaves)])
                checked(q.bcm_field_entry_destroy, 0, other)
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_a_destination_stays_as_long_as_entries_name_it(self):
        record = q.bcm_mirror_destination_t(gport=9)
        checked(q.bcm_mirror_destination_create, 0, record)
        id = record.mirror_dest_id
        for name in 'MirrorIngress', 'MirrorEgress':
            missing = self.entry(self.group(1), (name, id + 1))
            self.assertEqual(q.bcm_field_entry_install(0, missing), q.BCM_E_NOT_FOUND)
            entries = [self.installed('upper', 1, 'ingress', (name, id)) for _ in range(2)]
            self.assertEqual(checked(q.bcm_mirror_destination_get, 0, id, record, OUT), 2)
            self.assertEqual(q.bcm_mirror_destination_destroy(0, id), q.BCM_E_BUSY)
            checked(q.bcm_field_entry_remove, 0, entries[0])
            checked(q.bcm_field_entry_destroy, 0, entries[1])
            self.assertEqual(checked(q.bcm_mirror_destination_get, 0, id, record, OUT), 0)
        self.installed('upper', 1, 'ingress', ('MirrorIngress', id), ('MirrorEgress', id))
        checked(q.bcm_mirror_init, 0)  # does not ask who uses what
        self.assertEqual([port for port, _ in self.switch.send(1, made())], [2])


def action_table():
    text = open(DOCS).read()
    return text[text.index('| Action |'):text.index('| Qualifier |')]


class Documented(FieldActionTest):
    """docs/simulated-switch.md says which actions there are."""

    def test_colour_forms_follow_their_action(self):
        names = dict((name[len('bcmFieldAction'):], getattr(q, name)) for name in dir(q)
                     if name.startswith('bcmFieldAction'))
        forms = [name for name in names if name.startswith('Gp')]
        for name in forms:
            self.assertEqual([names[form + name[2:]] - names[name[2:]] for form in ('Gp', 'Yp', 'Rp')], [1, 2, 3])
        self.assertGreater(len(forms), 20)

    def test_all_others_are_refused(self):
        done, _, refused = action_table().partition('| Refused actions |')
        refused = set(re.findall(r'`(\w+)`', ''.join(re.findall(r'(?m)^\| (`[^|]*) \|', refused))))
        documented, rows = {}, re.findall(r'(?m)^\| (`[^|]*`\*?) \| ([a-z, ]+) \|', done)
        for actions, stages in rows:
            for name, has_forms in re.findall(r'`(\w+)`(\*?)', actions):
                documented[name] = set(stages.split(', ')), bool(has_forms)
        for name in sorted(name[len('bcmFieldAction'):] for name in dir(q) if name.startswith('bcmFieldAction')):
            if name == 'Count':
                continue
            base = name[2:] if name[:2] in FORMS else name
            self.assertNotEqual(base in documented or name in documented, base in refused, name)
            stages, has_forms = documented.get(base, (set(), False))
            expected = stages if base == name or has_forms else set()
            served = set()
            for stage in STAGES:
                status = q.bcm_field_entry_install(0, self.entry(self.group(1, stage), (name,)))
                if status != q.BCM_E_UNAVAIL:
                    served.add(stage)
            self.assertEqual(served, expected, name)


if __name__ == '__main__':
    unittest.main()
