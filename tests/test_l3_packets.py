"""What becomes of packets to a router: each as the slow and plain model says, over random tables.

ROUTER_PACKETS=100000 python2.7 run.py test_l3_packets compares that many packets; ROUTER_SEED begins elsewhere.
"""
import os
import random
import struct
import sys
import unittest

import QuorelApiNew as q
from quorel import array, checked, OUT, sim
from router import HOST, RandomRouterTest, router_mac, RouterTest, udp
from router_model import BITS, Frame, Hop, IP4, IP6, ip4_header, ip6_header, random_prefixes, text


# A debug interpreter is slow, and repeats each test.
PACKETS = int(os.environ.get('ROUTER_PACKETS', 1000 if hasattr(sys, 'gettotalrefcount') else 6000))
FIRST_SEED = int(os.environ.get('ROUTER_SEED', 1))
ROUND = 3000  # packets that meet the same tables


class Random(RandomRouterTest):
    """Tables and packets are those of a seed, so a failure comes again."""

    def compare(self, port, frame):
        expected, data = self.router.outcomes(port, frame), frame.bytes()
        if isinstance(expected, str):
            found = self.switch.drops(port, data)
            if found == [(port, expected)]:
                return expected
        else:
            found = self.switch.send(port, data)
            if len(found) == 1 and found[0] in expected:
                return 'cpu' if found[0][0] == 0 else 'sent'
        self.fail('expected %s\nfound %s\n%s' % (
            expected if isinstance(expected, str) else [(to, one.encode('hex')) for to, one in expected], found,
            self.switch.trace(port, data)))

    def one_round(self, seed, packets):
        chance, became = random.Random(seed), {}
        self.build(chance)
        for _ in range(packets):
            port = self.router.ports[chance.choice(sorted(self.router.ports))]
            interface = self.router.interfaces[port.vlan]
            kind, data = self.packet(chance, interface)
            tagged = port.tagged or chance.random() < 0.1
            frame = Frame(interface.mac, HOST % (100 + port.number), kind, data, port.vlan if tagged else None,
                          chance.randrange(8) if tagged else 0)
            what = self.compare(port.number, frame)
            became[what] = became.get(what, 0) + 1
        self.assertGreater(min(became.get(what, 0) for what in (
            'sent', 'cpu', 'ip_header', 'ip_source', 'no_route', 'null_route', 'unresolved', 'ttl', 'mtu')),
            packets // 500, became)

    def test_random_tables_and_packets(self):
        for start in range(0, PACKETS, ROUND):
            self.setUp()
            self.one_round(FIRST_SEED + start // ROUND, min(ROUND, PACKETS - start))


class Changes(RouterTest):
    """Tables while they change: after each the longest prefix is found as among those that are there."""

    def test_routes_come_and_go(self):
        chance = random.Random(3)
        self.add_vlan(10, 1)
        hops = [Hop('forward', 20 + number, HOST % number, 10 + number) for number in range(6)]
        for hop in hops:
            self.add_vlan(hop.vlan, hop.port)
        for kind in (IP4, IP6):
            networks, there = random_prefixes(chance, kind, 150), {}
            for step in range(1500):
                network, length = chance.choice(networks)
                if (network, length) in there:
                    checked(q.bcm_l3_route_delete, 0, self.route_record(0, kind, network, length))
                    del there[network, length]
                else:
                    there[network, length] = chance.choice(hops)
                    checked(q.bcm_l3_route_add, 0, self.route_record(0, kind, network, length,
                                                                     self.egress(there[network, length])))
                to = chance.choice(networks)[0] | chance.getrandbits(BITS[kind] // chance.choice([1, 2, 4, 8]))
                if to >> (BITS[kind] - 4) in (14, 15):
                    continue  # groups
                best = max([prefix for prefix in there if to >> (BITS[kind] - prefix[1]) == prefix[0] >> (
                    BITS[kind] - prefix[1])] or [None], key=lambda prefix: prefix and prefix[1])
                head = ip4_header(1, to, 8, 64) if kind == IP4 else ip6_header(1, to, 8, 64)
                sent = self.switch.send(1, Frame(router_mac(10), HOST % 99, kind, head + udp()).bytes())
                self.assertEqual([port for port, _ in sent], [there[best].port] if best else [],
                                 (step, text(kind, to), best))

    def test_many_routes(self):
        self.add_vlan(10, 1)
        self.add_vlan(20, 2)
        away = self.egress(Hop('forward', 20, HOST % 2, 2))
        for kind, count, length in ((IP4, 20000, 28), (IP6, 20000, 64)):
            shift = BITS[kind] - length
            networks = [number * 7919 % (1 << 27) << shift for number in range(count)]
            for network in networks:
                checked(q.bcm_l3_route_add, 0, self.route_record(0, kind, network, length, away))
            for network in networks[::97]:
                for to, ports in ((network, [2]), (network | (1 << shift) - 1, [2])):
                    head = ip4_header(1, to, 8, 64) if kind == IP4 else ip6_header(1, to, 8, 64)
                    sent = self.switch.send(1, Frame(router_mac(10), HOST % 9, kind, head + udp()).bytes())
                    self.assertEqual([port for port, _ in sent], ports, text(kind, to))
        info = q.bcm_l3_info_t()
        checked(q.bcm_l3_info, 0, info)
        self.assertEqual(info.l3info_used_route, 40000)
        checked(q.bcm_l3_route_delete_all, 0, None)
        checked(q.bcm_l3_info, 0, info)
        self.assertEqual(info.l3info_used_route, 0)


class Routing(RouterTest):
    def setUp(self):
        RouterTest.setUp(self)
        self.first, self.second = self.add_vlan(10, 1, 2), self.add_vlan(20, 3, 4)
        self.away = Hop('forward', 20, HOST % 3, 3)
        self.add_route(0, IP4, 0x0a140000, 16, [self.away])
        self.add_route(0, IP6, 0x20 << 120, 8, [self.away])

    def frame(self, to=0x0a140001, mac=None, kind=IP4, ttl=64, vlan=None, ports=(1000, 2000)):
        packet = ip4_header(0x0a0a0001, to, 8, ttl) if kind == IP4 else ip6_header(1, to, 8, ttl)
        return Frame(mac or router_mac(10), HOST % 1, kind, packet + udp(8, ports), vlan)

    def routed(self, frame, port=1):
        sent = self.router.outcomes(port, frame)
        self.assertEqual(len(sent), 1)
        return dict(sent)

    def test_only_what_is_addressed_to_the_router(self):
        bridged = self.frame(mac=HOST % 2)
        self.assertSends(1, bridged.bytes(), {2: sim.tagged(bridged.bytes(), 10)})
        # The address of another VLAN's interface is none of the router's here.
        other = self.frame(mac=router_mac(20))
        self.assertSends(1, other.bytes(), {2: sim.tagged(other.bytes(), 10)})
        self.assertSends(1, self.frame().bytes(), self.routed(self.frame()))
        for function, value in ((q.bcm_l3_enable_set, 0), (q.bcm_l3_enable_set, 1)):
            checked(function, 0, value)
            self.assertEqual([port for port, _ in self.switch.send(1, self.frame().bytes())], [3] if value else [2])
        one = q.bcm_l3_intf_t(l3a_intf_id=self.first)
        checked(q.bcm_l3_intf_delete, 0, one)
        self.assertEqual([port for port, _ in self.switch.send(1, self.frame().bytes())], [2])

    def test_virtual_routers_and_stations(self):
        cases = [('00:00:5e:00:01:07', IP4, lambda: q.bcm_l3_vrrp_add(0, 10, 7), lambda: q.bcm_l3_vrrp_delete(0, 10, 7)),
                 ('00:00:5e:00:02:07', IP6, lambda: q.bcm_l3_vrrp_config_add(0, q.BCM_L3_IP6, 10, 7),
                  lambda: q.bcm_l3_vrrp_config_delete_all(0, q.BCM_L3_IP6, 10))]
        for flag, kind in ((q.BCM_L2_STATION_IPV4, IP4), (q.BCM_L2_STATION_IPV6, IP6)):
            station = q.bcm_l2_station_t(flags=flag, dst_mac='02:bb:00:00:00:00', dst_mac_mask='ff:ff:ff:00:00:00')
            cases.append(('02:bb:00:01:02:03', kind, lambda station=station: q.bcm_l2_station_add(0, q.intp(), station),
                          lambda: q.bcm_l2_station_delete_all(0)))
        for mac, kind, add, remove in cases:
            for version, to in ((IP4, 0x0a140001), (IP6, 0x20 << 120 | 5)):
                frame = self.frame(to, mac, version)
                self.assertEqual([port for port, _ in self.switch.send(1, frame.bytes())], [2], mac)
                self.assertEqual(add(), 0)
                taken = version == kind
                self.assertEqual(3 in dict(self.switch.send(1, frame.bytes())), taken, (mac, version))
                self.assertEqual(remove(), 0)

    def test_what_is_left_out_of_a_rewrite(self):
        frame, sent = self.frame(), self.routed(self.frame())[3]
        data = frame.bytes()
        for flag, expected in (
                (q.BCM_L3_KEEP_DSTMAC, data[:6] + sent[6:]), (q.BCM_L3_KEEP_SRCMAC, sent[:6] + data[6:12] + sent[12:]),
                (q.BCM_L3_KEEP_TTL, sent[:12] + data[12:]), (q.BCM_L3_L2ONLY, data)):
            egress = q.bcm_l3_egress_t(flags=flag, intf=self.second, mac_addr=self.away.mac, port=3, vlan=20)
            number = checked(q.bcm_l3_egress_create, 0, 0, egress, OUT)
            checked(q.bcm_l3_route_add, 0, self.route_record(0, IP4, 0x0a140000, 16, number, q.BCM_L3_REPLACE))
            self.assertSends(1, data, {3: expected}, flag)

    def test_out_where_it_came_in_and_over_trunks(self):
        back = Hop('forward', 10, HOST % 8, 1)
        self.add_host(0, IP4, 0x0a140002, [back])
        frame = self.frame(0x0a140002)
        self.assertSends(1, frame.bytes(), self.routed(frame))
        checked(q.bcm_trunk_create, 0, q.BCM_TRUNK_FLAG_WITH_ID, 5)
        for port in (3, 4):
            checked(q.bcm_trunk_member_add, 0, 5, q.bcm_trunk_member_t(gport=port))
        egress = q.bcm_l3_egress_t(flags=q.BCM_L3_TGID, intf=self.second, mac_addr=self.away.mac, trunk=5)
        number = checked(q.bcm_l3_egress_create, 0, 0, egress, OUT)
        checked(q.bcm_l3_host_add, 0, self.host_record(0, IP4, 0x0a140003, number))
        sent = self.switch.send(1, self.frame(0x0a140003).bytes())
        self.assertEqual([port in (3, 4) for port, _ in sent], [True])

    def test_a_host_behind_an_interface_and_an_address(self):
        host = self.host_record(0, IP4, 0x0a140004, self.second)
        host.l3a_nexthop_mac, host.l3a_port_tgid = HOST % 4, 4
        checked(q.bcm_l3_host_add, 0, host)
        found = self.host_record(0, IP4, 0x0a140004)
        checked(q.bcm_l3_host_find, 0, found)
        self.assertEqual((found.l3a_nexthop_mac, found.l3a_port_tgid, found.l3a_intf), (HOST % 4, 4, self.second))
        sent = self.switch.send(1, self.frame(0x0a140004).bytes())
        self.assertEqual([(port, data[:12]) for port, data in sent],
                         [(4, sim.ethernet(HOST % 4, router_mac(20))[:12])])
        self.assertEqual(q.bcm_l3_intf_delete(0, q.bcm_l3_intf_t(l3a_intf_id=self.second)), q.BCM_E_BUSY)
        # What is not valid is not found; a shorter prefix is.
        checked(q.bcm_l3_host_invalidate_entry, 0, 0, 0x0a140004)
        self.assertSends(1, self.frame(0x0a140004).bytes(), self.routed(self.frame(0x0a140004)))
        checked(q.bcm_l3_host_validate_entry, 0, 0, 0x0a140004)
        self.assertEqual([port for port, _ in self.switch.send(1, self.frame(0x0a140004).bytes())], [4])

    def test_flags_of_entries(self):
        number = self.egress(self.away)
        replace = q.BCM_L3_REPLACE
        data = self.frame().bytes()
        for flags, ports, drops in (
                (q.BCM_L3_DST_DISCARD, [], [(1, 'null_route')]), (q.BCM_L3_COPY_TO_CPU, [0, 3], []), (0, [3], [])):
            checked(q.bcm_l3_route_add, 0, self.route_record(0, IP4, 0x0a140000, 16, number, flags | replace))
            self.assertEqual([port for port, _ in self.switch.send(1, data)], ports)
            self.assertEqual(self.switch.drops(1, data), drops)
        source = self.host_record(0, IP4, 0x0a0a0001, 0, q.BCM_L3_SRC_DISCARD)
        checked(q.bcm_l3_host_add, 0, source)
        self.assertDropped(1, data, 'ip_source')
        checked(q.bcm_l3_host_delete, 0, source)
        self.assertSends(1, data, self.routed(self.frame()))

    def test_what_goes_to_the_cpu_in_place_of_being_dropped(self):
        self.add_host(0, IP4, 0x0a140009, [Hop('unresolved', None, None, None)])
        self.add_host(0, IP4, 0x0a14000a, [Hop('discard', 20, None, 0)])
        wrong = bytearray(self.frame().bytes())
        wrong[25] ^= 1
        for control, data, reason in (
                (q.bcmSwitchUnknownL3DestToCpu, self.frame(0x0b000000).bytes(), 'no_route'),
                (q.bcmSwitchUnknownL3DestToCpu, self.frame(0x0a140009).bytes(), 'unresolved'),
                (q.bcmSwitchL3NullRouteToCpu, self.frame(0x0a14000a).bytes(), 'null_route'),
                (q.bcmSwitchL3UcTtlErrToCpu, self.frame(ttl=1).bytes(), 'ttl'),
                (q.bcmSwitchL3HeaderErrorToCpu, bytes(wrong), 'ip_header')):
            self.assertDropped(1, data, reason)
            checked(q.bcm_switch_control_set, 0, control, 1)
            # As it came, but for the tag that tells the VLAN.
            self.assertSends(1, data, {0: sim.tagged(data, 10)}, reason)
            checked(q.bcm_switch_control_set, 0, control, 0)
            self.assertDropped(1, data, reason)

    def test_routing_tables_are_apart(self):
        self.add_vlan(30, 5, vrf=7)
        data = Frame(router_mac(30), HOST % 5, IP4, ip4_header(1, 0x0a140001, 8, 64) + udp()).bytes()
        self.assertDropped(5, data, 'no_route')
        self.add_route(7, IP4, 0, 0, [Hop('forward', 10, HOST % 1, 1)])
        self.assertEqual([port for port, _ in self.switch.send(5, data)], [1])
        self.assertSends(1, self.frame().bytes(), self.routed(self.frame()))
        # An ingress interface of the VLAN says another one.
        ingress = checked(q.bcm_l3_ingress_create, 0, q.bcm_l3_ingress_t(vrf=0), OUT)
        settings = q.bcm_vlan_control_vlan_t()
        checked(q.bcm_vlan_control_vlan_get, 0, 30, settings)
        settings.ingress_if = ingress
        checked(q.bcm_vlan_control_vlan_set, 0, 30, settings)
        self.assertEqual([port for port, _ in self.switch.send(5, data)], [3])

    def test_flows_stay_on_their_path_and_paths_share_them(self):
        hops = [Hop('forward', 20, HOST % number, 3) for number in (3, 4, 5, 6)]
        ids = [self.egress(hop) for hop in hops]
        group = q.bcm_l3_egress_ecmp_t()
        members = ids[:3] + ids[:1]  # the first has twice the weight
        checked(q.bcm_l3_egress_ecmp_create, 0, group, 4, array('bcm_if_t', members))
        checked(q.bcm_l3_route_add, 0, self.route_record(0, IP4, 0x0a140000, 16, group.ecmp_intf,
                                                         q.BCM_L3_REPLACE | q.BCM_L3_MULTIPATH))

        def paths():
            taken = []
            for flow in range(400):
                frame = self.frame(0x0a140000 + flow, ports=(flow, 80)).bytes()
                sent = [data[:6] for _, data in self.switch.send(1, frame) + self.switch.send(1, frame)]
                self.assertEqual((len(sent), len(set(sent))), (2, 1))
                taken.append(ord(sent[0][5]))
            return [taken.count(number) for number in (3, 4, 5, 6)]
        shares = paths()
        self.assertEqual(sum(shares), 400)
        for share, expected in zip(shares, (200, 100, 100, 0)):
            self.assertLess(abs(share - expected), 50, shares)
        checked(q.bcm_l3_egress_ecmp_add, 0, group, ids[3])
        checked(q.bcm_l3_egress_ecmp_delete, 0, group, ids[0])
        self.assertGreater(min(paths()), 60)
        for number in ids[:3]:
            checked(q.bcm_l3_egress_ecmp_member_status_set, 0, number, q.BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_DOWN)
        self.assertEqual(paths(), [0, 0, 0, 400])
        checked(q.bcm_l3_egress_ecmp_member_status_set, 0, ids[3], q.BCM_L3_ECMP_DYNAMIC_MEMBER_FORCE_DOWN)
        self.assertDropped(1, self.frame().bytes(), 'unresolved')

    def test_hits_and_age(self):
        self.add_host(0, IP4, 0x0a140009, [self.away])
        self.switch.send(1, self.frame(0x0a140009).bytes())
        host = self.host_record(0, IP4, 0x0a140009, flags=q.BCM_L3_HIT_CLEAR)
        for hit in (True, False):
            host.l3a_flags |= q.BCM_L3_HIT_CLEAR
            checked(q.bcm_l3_host_find, 0, host)
            self.assertEqual(bool(host.l3a_flags & q.BCM_L3_HIT), hit)
        route = self.route_record(0, IP4, 0x0a140000, 16)
        checked(q.bcm_l3_route_get, 0, route)
        self.assertFalse(route.l3a_flags & q.BCM_L3_HIT)
        self.switch.send(1, self.frame(0x0a140001).bytes())
        for there in (True, False):
            self.assertEqual(q.bcm_l3_route_age(0, 0, None, None), 0)
            self.assertEqual(q.bcm_l3_route_get(0, route), 0 if there else q.BCM_E_NOT_FOUND)
        checked(q.bcm_l3_route_get, 0, self.route_record(0, IP6, 0x20 << 120, 8))  # of the other version
        self.assertEqual(q.bcm_l3_host_age(0, 0, None, None), 0)
        self.assertEqual(q.bcm_l3_host_find(0, host), q.BCM_E_NOT_FOUND)


if __name__ == '__main__':
    unittest.main()
