"""What tests of routers share: a switch with VLANs, interfaces and ways, told to the switch and to the model."""
import struct

import QuorelApiNew as q
from quorel import array, checked, OUT, sim
from router_model import BITS, Hop, Interface, IP4, ip4_header, IP6, ip6_header, Port, random_prefixes, Route, Router

ARP = 0x806
HOST = '02:00:00:00:00:%02x'
MASK = {kind: (1 << bits) - 1 for kind, bits in BITS.items()}


def ip6_list(address):
    return [int(address >> shift & 255) for shift in range(120, -8, -8)]


def mask_of(kind, length):
    return MASK[kind] >> (BITS[kind] - length) << (BITS[kind] - length) if length else 0


def router_mac(vlan):
    return '02:aa:00:00:%02x:%02x' % divmod(vlan, 256)


def udp(length=8, ports=(1000, 2000)):
    return struct.pack('>HHHH', ports[0], ports[1], length, 0) + b'\x5a' * (length - 8)


class RouterTest(sim.TestCase):
    """VLANs with two ports each, an untagged and a tagged one, and an interface."""

    def setUp(self):
        sim.TestCase.setUp(self)
        self.router, self.interface_ids, self.egress_ids, self.ways = Router(), {}, {}, {}

    def add_vlan(self, vlan, untagged, tagged=None, vrf=0, mtu=0, ttl=0, check=0, mac=None, interface_class=0):
        ports = [port for port in (untagged, tagged) if port]
        checked(q.bcm_vlan_port_remove, 0, 1, ports)
        checked(q.bcm_vlan_create, 0, vlan)
        checked(q.bcm_vlan_port_add, 0, vlan, ports, [untagged])
        checked(q.bcm_port_untagged_vlan_set, 0, untagged, vlan)
        mac = mac or router_mac(vlan)
        record = q.bcm_l3_intf_t(l3a_mac_addr=mac, l3a_vid=vlan, l3a_vrf=vrf, l3a_mtu=mtu, l3a_ttl=ttl,
                                l3a_intf_class=interface_class)
        checked(q.bcm_l3_intf_create, 0, record)
        if check:
            settings = q.bcm_vlan_control_vlan_t()
            checked(q.bcm_vlan_control_vlan_get, 0, vlan, settings)
            settings.urpf_mode = check
            checked(q.bcm_vlan_control_vlan_set, 0, vlan, settings)
        self.interface_ids[vlan] = record.l3a_intf_id
        self.router.interfaces[vlan] = Interface(vlan, mac, vrf, mtu, ttl, check)
        for port in ports:
            self.router.ports[port] = Port(port, vlan, port != untagged)
        return record.l3a_intf_id

    def egress(self, hop):
        """The id of the egress object of a hop; one for each."""
        if hop not in self.egress_ids:
            record = q.bcm_l3_egress_t()
            if hop.kind == 'forward':
                record.mac_addr, record.port = hop.mac, hop.port
            if hop.kind != 'unresolved':
                record.intf = self.interface_ids[hop.vlan]
            record.flags = q.BCM_L3_DST_DISCARD if hop.kind == 'discard' else 0
            self.egress_ids[hop] = checked(q.bcm_l3_egress_create, 0, 0, record, OUT)
        return self.egress_ids[hop]

    def way(self, hops):
        """The id to which a host or route leads: of an egress object, or a group of them."""
        if len(hops) == 1:
            return self.egress(hops[0])
        ids = [self.egress(hop) for hop in hops]
        return checked(q.bcm_l3_egress_multipath_create, 0, 0, len(ids), array('bcm_if_t', ids), OUT)

    def add_route(self, vrf, kind, network, length, hops):
        network &= mask_of(kind, length)
        way = self.ways[vrf, kind, network, length] = self.way(hops)
        checked(q.bcm_l3_route_add, 0, self.route_record(vrf, kind, network, length, way))
        self.router.routes.append(Route(vrf, kind, network, length, hops))

    def add_host(self, vrf, kind, address, hops):
        checked(q.bcm_l3_host_add, 0, self.host_record(vrf, kind, address, self.way(hops)))
        self.router.hosts[vrf, kind, address] = hops

    @staticmethod
    def route_record(vrf, kind, network, length, interface=0, flags=0):
        if kind == IP4:
            return q.bcm_l3_route_t(l3a_flags=flags, l3a_vrf=vrf, l3a_intf=interface, l3a_subnet=network,
                                    l3a_ip_mask=mask_of(kind, length))
        return q.bcm_l3_route_t(l3a_flags=flags | q.BCM_L3_IP6, l3a_vrf=vrf, l3a_intf=interface,
                                l3a_ip6_net=ip6_list(network), l3a_ip6_mask=ip6_list(mask_of(kind, length)))

    @staticmethod
    def host_record(vrf, kind, address, interface=0, flags=0):
        if kind == IP4:
            return q.bcm_l3_host_t(l3a_flags=flags, l3a_vrf=vrf, l3a_intf=interface, l3a_ip_addr=address)
        return q.bcm_l3_host_t(l3a_flags=flags | q.BCM_L3_IP6, l3a_vrf=vrf, l3a_intf=interface,
                               l3a_ip6_addr=ip6_list(address))


class RandomRouterTest(RouterTest):
    """Tables and packets that chance chooses."""

    def hop(self, chance, kinds=('forward',) * 6 + ('cpu', 'discard', 'unresolved')):
        kind = chance.choice(kinds)
        vlan = chance.choice(sorted(self.router.interfaces))
        port = chance.choice([port.number for port in self.router.ports.values() if port.vlan == vlan])
        return {'forward': lambda: Hop(kind, vlan, HOST % chance.randrange(1, 40), port),
                'cpu': lambda: Hop(kind, vlan, None, 0), 'discard': lambda: Hop(kind, vlan, None, 0),
                'unresolved': lambda: Hop(kind, None, None, None)}[kind]()

    def build(self, chance):
        for number in range(8):
            self.add_vlan(10 + number, 1 + 2 * number, 2 + 2 * number, vrf=number % 3,
                          mtu=(0, 0, 0, 100)[number % 4], ttl=(0, 0, 20)[number % 3], check=(0, 0, 0, 1, 2)[number % 5],
                          interface_class=100 + number)
        for vrf in range(3):
            for kind in (IP4, IP6):
                for network, length in random_prefixes(chance, kind, 60):
                    several = [hop for hop in {self.hop(chance, ('forward',)) for _ in range(3)}
                               if self.router.interfaces[hop.vlan][3:5] == (0, 0)]
                    hops = several if chance.random() < 0.2 and several else [self.hop(chance)]
                    self.add_route(vrf, kind, network, length, hops)
                for address in {self.address(chance, vrf, kind) for _ in range(20)}:
                    self.add_host(vrf, kind, address, [self.hop(chance)])

    def address(self, chance, vrf, kind):
        """Mostly one that a table knows, its edges too."""
        if chance.random() < 0.1:
            return chance.getrandbits(BITS[kind])
        known = [route for route in self.router.routes if (route.vrf, route.kind) == (vrf, kind)]
        hosts = [host for host in self.router.hosts if host[:2] == (vrf, kind)]
        if hosts and chance.random() < 0.2:
            return chance.choice(hosts)[2] ^ chance.choice([0, 0, 1])
        route = chance.choice(known)
        rest = (1 << (BITS[kind] - route.length)) - 1
        return route.network | chance.choice([0, rest, chance.getrandbits(BITS[kind]) & rest])

    def packet(self, chance, interface):
        kind = chance.choice([IP4, IP6])
        source, to = [self.address(chance, interface.vrf, kind) for _ in range(2)]
        ttl, payload = chance.choice([0, 1, 2, 20, 21, 64, 255]), udp(chance.choice([8, 30, 61, 100, 300]))
        if kind == IP4:
            head = ip4_header(source, to, len(payload), ttl, options=b'\1' * chance.choice([0, 0, 0, 4, 40]))
        else:
            head = ip6_header(source, to, len(payload), ttl)
        data = head + payload
        fault = chance.random()
        if fault < 0.04:  # a bit of the header is wrong
            place = chance.randrange(len(head) * 8)
            spoilt = bytearray(data)
            spoilt[place // 8] ^= 1 << place % 8
            data = bytes(spoilt)
        elif fault < 0.06:
            data = data[:chance.randrange(len(data))]
        return chance.choice([kind] * 30 + [ARP, IP4 ^ IP6 ^ kind]), data
