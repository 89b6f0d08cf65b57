"""What tests of routers share: a switch with VLANs, interfaces and ways, told to the switch and to the model."""
import QuorelApiNew as q
from quorel import array, checked, OUT, sim
from router_model import BITS, Interface, IP4, Port, Route, Router

MASK = {kind: (1 << bits) - 1 for kind, bits in BITS.items()}


def ip6_list(address):
    return [int(address >> shift & 255) for shift in range(120, -8, -8)]


def mask_of(kind, length):
    return MASK[kind] >> (BITS[kind] - length) << (BITS[kind] - length) if length else 0


def router_mac(vlan):
    return '02:aa:00:00:%02x:%02x' % divmod(vlan, 256)


class RouterTest(sim.TestCase):
    """VLANs with two ports each, an untagged and a tagged one, and an interface."""

    def setUp(self):
        sim.TestCase.setUp(self)
        self.router, self.interface_ids, self.egress_ids = Router(), {}, {}

    def add_vlan(self, vlan, untagged, tagged=None, vrf=0, mtu=0, ttl=0, check=0, mac=None):
        ports = [port for port in (untagged, tagged) if port]
        checked(q.bcm_vlan_port_remove, 0, 1, ports)
        checked(q.bcm_vlan_create, 0, vlan)
        checked(q.bcm_vlan_port_add, 0, vlan, ports, [untagged])
        checked(q.bcm_port_untagged_vlan_set, 0, untagged, vlan)
        mac = mac or router_mac(vlan)
        record = q.bcm_l3_intf_t(l3a_mac_addr=mac, l3a_vid=vlan, l3a_vrf=vrf, l3a_mtu=mtu, l3a_ttl=ttl)
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
        checked(q.bcm_l3_route_add, 0, self.route_record(vrf, kind, network, length, self.way(hops)))
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
