"""What routing finds, as entries of the field processor ask for it: random packets to a router and beside it, and random
entries, against the plain models of both."""
import random
import unittest

import QuorelApiNew as q
from field_model import acting, Entry, Masked, Single
from quorel import array, checked, OUT
from router import HOST, RandomRouterTest
from router_model import BITS, Frame, IP4, IP6, Router

BITS_OF = dict(MyStationHit=1, Vrf=16, L3Ingress=31, L3DestHostHit=1, L3DestRouteHit=1, L3SrcHostHit=1,
               L3SrcRouteHit=1, DstIpLocal=1, DstL3EgressNextHops=32, InterfaceClassL2=32, InterfaceClassL3=32,
               IncomingIpIfClass=32, EgressClassL3Interface=32, L3Routable=1, SrcClassL3=32, DstClassL3=32)
SINGLE = 'DstL3Egress', 'DstMultipath'
NAMES = sorted(BITS_OF) + list(SINGLE)
STAGES = (), ('StageEgress',)


def class_of(length, is_host):
    """Of a host, or of a route to a network."""
    return 0x10005 if is_host else 1000 + length if length % 3 else 0


class Lookups(RandomRouterTest):
    @staticmethod
    def route_record(vrf, kind, network, length, interface=0, flags=0):
        record = RandomRouterTest.route_record(vrf, kind, network, length, interface, flags)
        record.l3a_lookup_class = class_of(length, False)
        return record

    @staticmethod
    def host_record(vrf, kind, address, interface=0, flags=0):
        record = RandomRouterTest.host_record(vrf, kind, address, interface, flags)
        record.l3a_lookup_class = class_of(None, True)
        return record

    def settings(self):
        """What the tables give besides ways: (class of the VLAN, class of what comes in, its object or None) by VLAN."""
        found = {}
        for vlan, interface in sorted(self.router.interfaces.items()):
            settings, own = q.bcm_vlan_control_vlan_t(), None
            checked(q.bcm_vlan_control_vlan_get, 0, vlan, settings)
            settings.if_class = vlan * 3
            settings.l3_if_class = 77  # nobody asks, where an interface says it
            incoming = vlan + 90
            if not interface.check and vlan % 2:
                incoming = vlan + 1000
                own = checked(q.bcm_l3_ingress_create, 0,
                              q.bcm_l3_ingress_t(vrf=interface.vrf, intf_class=incoming), OUT)
                settings.ingress_if = own
            checked(q.bcm_vlan_control_vlan_set, 0, vlan, settings)
            found[vlan] = vlan * 3, incoming, own
        return found

    def facts(self, port, frame, left):
        """What entries of both stages may ask for, or None of a packet that no entry meets."""
        vlan = frame.vlan or self.router.ports[port].vlan
        interface = self.router.interfaces[vlan]
        is_for_router = frame.to == interface.mac
        l2_class, incoming, own = self.of_vlans[vlan]
        facts = dict.fromkeys(('L3DestHostHit', 'L3DestRouteHit', 'L3SrcHostHit', 'L3SrcRouteHit', 'DstIpLocal',
                               'EgressClassL3Interface', 'L3Routable', 'SrcClassL3', 'DstClassL3'), 0)
        facts.update(MyStationHit=int(is_for_router), InterfaceClassL2=l2_class)
        facts.update(dict(L3Ingress=own) if own is not None else {})
        facts['InterfaceClassL3'] = incoming if is_for_router or own is not None else 77
        facts['IncomingIpIfClass'] = facts['InterfaceClassL3']
        if not is_for_router:
            return facts
        if isinstance(self.router.outcomes(port, frame), str):
            return None
        if frame.kind not in (IP4, IP6):
            return facts
        source, to, _, _ = Router._parse(frame.kind, frame.packet.ljust(46, b'\0'))
        if frame.kind == IP6 and to >> 118 == 0x3fa:
            return facts
        facts['Vrf'] = interface.vrf
        for side, address in ('Src', source), ('Dest', to):
            way = self.router.way_to(interface.vrf, frame.kind, address)
            is_host = (interface.vrf, frame.kind, address) in self.router.hosts
            facts.update({'L3%sHostHit' % side: int(is_host), 'L3%sRouteHit' % side: int(way is not None and not is_host)})
            if way is not None:
                facts[dict(Src='SrcClassL3', Dest='DstClassL3')[side]] = class_of(way[1], is_host)
        (hops, length), is_host = way, is_host
        if hops[0].kind == 'cpu':
            facts['DstIpLocal'] = 1
            return facts
        (to_port, sent), = left
        hop, = [hop for hop in hops if (hop.port, hop.mac) == (to_port, ':'.join(
            '%02x' % octet for octet in bytearray(sent[:6])))]
        facts.update(L3Routable=1, DstL3Egress=self.egress_ids[hop], DstL3EgressNextHops=self.egress_ids[hop],
                     EgressClassL3Interface=hop.vlan + 90)
        if len(hops) > 1:
            shift = BITS[frame.kind] - length
            facts['DstMultipath'] = self.ways[interface.vrf, frame.kind, to >> shift << shift, length]
        return facts

    def frame(self, chance):
        port = self.router.ports[chance.choice(sorted(self.router.ports))]
        interface = self.router.interfaces[port.vlan]
        kind, data = self.packet(chance, interface)
        to = interface.mac if chance.random() < 0.9 else HOST % 77
        return port.number, Frame(to, HOST % (100 + port.number), kind, data, port.vlan if port.tagged else None)

    def entry(self, chance, group, facts):
        conditions = []
        for name in chance.sample(NAMES, chance.choice([1, 1, 2, 3])):
            value = facts.get(name, 1)
            if name in SINGLE:
                conditions.append(Single(name, value))
            else:
                ones = (1 << BITS_OF[name]) - 1
                flipped = 1 << chance.randrange(BITS_OF[name]) if chance.random() < 0.1 else 0
                conditions.append(Masked(name, value ^ flipped, chance.choice([ones] * 9 + [ones & 0xff] * 3 + [0])))
        entry = checked(q.bcm_field_entry_create, 0, group)
        for condition in conditions:
            values = (condition.value,) if isinstance(condition, Single) else (condition.value, condition.mask)
            checked(getattr(q, 'bcm_field_qualify_' + condition.name), 0, entry, *values)
            self.compared.add(condition.name)
        priority = chance.randrange(3)
        checked(q.bcm_field_entry_prio_set, 0, entry, priority)
        stat = checked(q.bcm_field_stat_create, 0, group, 1, array('bcm_field_stat_t', [q.bcmFieldStatPackets]), OUT)
        checked(q.bcm_field_entry_stat_attach, 0, entry, stat)
        checked(q.bcm_field_entry_install, 0, entry)
        return Entry(entry, priority, conditions, None), stat

    def test_random_entries_and_packets(self):
        chance = random.Random(5)
        self.build(chance)
        self.of_vlans, self.compared, matches = self.settings(), set(), 0
        samples = []
        while len(samples) < 120:
            port, frame = self.frame(chance)
            facts = self.facts(port, frame, self.switch.send(port, frame.bytes()))
            if facts is not None:
                samples.append(facts)
        checked(q.bcm_field_init, 0)
        stages = []
        for extra in STAGES:
            qset = q.bcm_field_qset_t()
            for name in NAMES + list(extra):
                q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualify' + name))
            groups = [checked(q.bcm_field_group_create, 0, qset, priority) for priority in range(10, 0, -1)]
            stages.append([[self.entry(chance, group, chance.choice(samples)) for _ in range(12)] for group in groups])
        counts = {}
        for number in range(1500):
            port, frame = self.frame(chance)
            left = self.switch.send(port, frame.bytes())
            facts = self.facts(port, frame, left)
            for stage, groups in enumerate(stages):
                met = acting([[entry for entry, _ in group] for group in groups], facts) if facts is not None else []
                # Of each copy that leaves.
                times = 1 if stage == 0 else len(left)
                for entry in met:
                    counts[entry] = counts.get(entry, 0) + times
                    matches += times
            if number % 50 == 0 or number == 1499:
                for entry, stat in sum(stages[0] + stages[1], []):
                    found = checked(q.bcm_field_stat_get, 0, stat, q.bcmFieldStatPackets, OUT)
                    self.assertEqual(found, counts.get(entry, 0), (number, entry))
        self.assertEqual(self.compared, set(NAMES))
        self.assertGreater(matches, 1000)
        self.assertGreater(len(counts), 50)


if __name__ == '__main__':
    unittest.main()
