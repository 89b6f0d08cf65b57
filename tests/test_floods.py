"""Where packets may go from a port: floods that stop, private ports, what a VLAN says, and what a port is forced to."""
import itertools
import unittest

import QuorelApiNew as q
from quorel import checked, OUT, sim

A, B, ALL, GROUP = '02:00:00:00:00:01', '02:00:00:00:00:02', 'ff:ff:ff:ff:ff:ff', '01:00:5e:00:00:01'
PORTS = range(1, 7)
BCAST, UCAST, MCAST, EVERY = (q.BCM_PORT_FLOOD_BLOCK_BCAST, q.BCM_PORT_FLOOD_BLOCK_UNKNOWN_UCAST,
                              q.BCM_PORT_FLOOD_BLOCK_UNKNOWN_MCAST, q.BCM_PORT_FLOOD_BLOCK_ALL)
KINDS = {ALL: BCAST, B: UCAST, GROUP: MCAST}


class FloodTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_vlan_port_remove, 0, 1, [port for port in sim.FRONT_PORTS if port not in PORTS])

    def ports(self, port, to=ALL, source=A):
        return [left for left, _ in self.switch.send(port, sim.ethernet(to, source))]

    def but(self, *ports):
        return [port for port in PORTS if port not in ports]


class Blocks(FloodTest):
    def test_by_kind_between_two_ports(self):
        for flags in range(16):
            checked(q.bcm_port_flood_block_set, 0, 1, 3, flags)
            self.assertEqual(checked(q.bcm_port_flood_block_get, 0, 1, 3, OUT), flags)
            for to, kind in KINDS.items():
                blocked = flags & (kind | EVERY)
                self.assertEqual(self.ports(1, to), self.but(1, 3) if blocked else self.but(1), (flags, to))
                self.assertEqual(self.ports(2, to), self.but(2))
        self.ports(3, source=B)
        self.assertEqual(self.ports(1, B), [])  # known, and blocked with all the rest
        checked(q.bcm_port_flood_block_set, 0, 1, 3, BCAST | UCAST | MCAST)
        self.assertEqual(self.ports(1, B), [3])
        self.assertEqual(q.bcm_port_flood_block_set(0, 1, 3, 16), q.BCM_E_PARAM)
        checked(q.bcm_port_init, 0)
        self.assertEqual(self.ports(1), self.but(1))

    def test_by_kind_in_a_vlan(self):
        block = q.bcm_vlan_block_t(broadcast=[2], unknown_unicast=[3], unknown_multicast=[4], known_multicast=[5])
        checked(q.bcm_vlan_block_set, 0, 1, block)
        blocked = {ALL: 2, B: 3, GROUP: 4}
        for to in KINDS:
            self.assertEqual(self.ports(1, to), self.but(1, blocked[to]))
        checked(q.bcm_mcast_addr_add, 0, q.bcm_mcast_addr_t(mac=GROUP, vid=1, pbmp=[4, 5, 6]))
        self.assertEqual(self.ports(1, GROUP), [4, 6])
        checked(q.bcm_mcast_init, 0)
        block.broadcast = [65]
        self.assertEqual(q.bcm_vlan_block_set(0, 1, block), q.BCM_E_PORT)
        checked(q.bcm_vlan_block_set, 0, 1, q.bcm_vlan_block_t())
        settings = q.bcm_vlan_control_vlan_t()
        for flags, mode, refused in ((q.BCM_VLAN_UNKNOWN_UCAST_DROP, 0, [B]), (0, q.bcmVlanMcastFloodNone, [GROUP]),
                                     (0, q.bcmVlanMcastFloodUnknown, [])):
            settings.flags, settings.l2_mcast_flood_mode = flags, mode
            checked(q.bcm_vlan_control_vlan_set, 0, 1, settings)
            for to in KINDS:
                self.assertEqual(self.ports(1, to), [] if to in refused else self.but(1), (flags, mode, to))

    def test_what_a_vlan_does_with_all_its_packets(self):
        self.ports(3, source=B)
        settings = q.bcm_vlan_control_vlan_t(flags=q.BCM_VLAN_L2_LOOKUP_DISABLE)
        checked(q.bcm_vlan_control_vlan_set, 0, 1, settings)
        self.assertEqual(self.ports(1, B), self.but(1))
        settings.flags = q.BCM_VLAN_COPY_TO_CPU
        checked(q.bcm_vlan_control_vlan_set, 0, 1, settings)
        self.assertEqual(self.ports(1, B), [sim.CPU_PORT, 3])
        settings.flags = 0
        checked(q.bcm_vlan_control_vlan_set, 0, 1, settings)
        self.assertEqual(self.ports(1, B), [3])

    def test_unregistered_groups_at_a_port(self):
        for mode in (q.bcmPortPfmForwardAll, q.bcmPortPfmForwardUnregistered, q.bcmPortPfmForwardRegistered):
            checked(q.bcm_port_pfm_set, 0, 1, mode)
            refused = mode == q.bcmPortPfmForwardRegistered
            self.assertEqual(self.ports(1, GROUP), [] if refused else self.but(1))
            self.assertEqual((self.ports(1, B), self.ports(2, GROUP)), (self.but(1), self.but(2)))
        self.assertEqual(q.bcm_port_pfm_set(0, 1, 3), q.BCM_E_PARAM)


class PrivatePorts(FloodTest):
    def reaches(self):
        """The pairs of ports between which packets to all go."""
        return set((port, to) for port in PORTS for to in self.ports(port))

    def test_each_way_to_keep_ports_apart(self):
        free = set(itertools.permutations(PORTS, 2))
        self.assertEqual(self.reaches(), free)
        within = set(itertools.permutations([2, 3, 4], 2))
        for control, value in ((q.bcmPortControlPvlanIsolated, 1), (q.bcmPortControlProtectedGroup, 5),
                               (q.bcmPortControlSplitHorizonGroup, 2)):
            for port in (2, 3, 4):
                checked(q.bcm_port_control_set, 0, port, control, value)
            self.assertEqual(self.reaches(), free - within, control)
            self.ports(3, source=B)
            self.assertEqual((self.ports(2, B), self.ports(1, B)), ([], [3]))
            if value != 1:
                checked(q.bcm_port_control_set, 0, 4, control, value + 1)
                self.assertEqual(self.reaches(), free - set([(2, 3), (3, 2)]), control)
            for port in (2, 3, 4):
                checked(q.bcm_port_control_set, 0, port, control, 0)
            self.assertEqual(self.reaches(), free)

    def test_where_a_port_may_send(self):
        every = [sim.CPU_PORT] + sim.FRONT_PORTS
        checked(q.bcm_port_egress_set, 0, 1, -1, [2, 5])
        self.assertEqual((self.ports(1), self.ports(2)), ([2, 5], self.but(2)))
        self.ports(3, source=B)
        self.assertEqual(self.ports(1, B), [])
        self.assertEqual(q.bcm_port_egress_set(0, 1, 0, [2, 65]), q.BCM_E_PORT)
        self.assertEqual(q.bcm_port_egress_set(0, 65, 0, [2]), q.BCM_E_PORT)
        checked(q.bcm_port_modid_egress_set, 0, 1, 0, every)
        self.assertEqual(self.ports(1), self.but(1))

    def test_back_to_where_it_came_from(self):
        checked(q.bcm_port_control_set, 0, 1, q.bcmPortControlBridge, 1)
        self.assertEqual(self.ports(1), PORTS)
        self.ports(1, source=B)
        self.assertEqual(self.ports(1, B), [1])

    def test_trunks_that_not_all_may_use(self):
        trunk = q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, 7)[1]
        for port in (5, 6):
            checked(q.bcm_trunk_member_add, 0, trunk, q.bcm_trunk_member_t(gport=port))
        checked(q.bcm_trunk_egress_set, 0, trunk, [1, 2])
        self.assertEqual(len(self.ports(1)), 4)
        self.assertEqual(self.ports(3), [1, 2, 4])
        checked(q.bcm_trunk_egress_set, 0, trunk, [3])
        self.assertEqual((len(self.ports(3)), self.ports(1)), (4, [2, 3, 4]))
        self.assertEqual(q.bcm_trunk_egress_set(0, 9, [1]), q.BCM_E_NOT_FOUND)


class Forced(FloodTest):
    def test_everything_goes_to_one_port(self):
        checked(q.bcm_stg_stp_set, 0, 1, 1, q.BCM_STG_STP_BLOCK)
        checked(q.bcm_port_force_forward_set, 0, 1, 60, 1)
        for to in KINDS:
            self.assertEqual(self.ports(1, to), [60])
        self.switch.pull(60)
        self.assertEqual(self.ports(1), [])
        self.assertEqual(q.bcm_port_force_forward_set(0, 1, 65, 1), q.BCM_E_PORT)
        checked(q.bcm_port_force_forward_set, 0, 1, 0, 0)
        checked(q.bcm_stg_stp_set, 0, 1, 1, q.BCM_STG_STP_FORWARD)
        self.assertEqual(self.ports(1), self.but(1))

    def test_a_snake_through_all_ports(self):
        """In at port 1, from each even port over a cable to the next, or back by a loopback, and out at the last."""
        frame, last = sim.ethernet(B, A), 32  # all of one kind
        self.switch.fresh()
        for port in range(1, last, 2):
            checked(q.bcm_port_force_forward_set, 0, port, port + 1, 1)
        for port in range(2, last, 2):
            self.switch.join(port, self.switch, port + 1)
        self.assertSends(1, frame, dict([(port, frame) for port in range(2, last + 1, 2)]))
        for mode, kind in ((q.BCM_PORT_LOOPBACK_MAC, 'mac'), (q.BCM_PORT_LOOPBACK_PHY, 'phy')):
            self.switch.fresh()
            for port in range(2, 64, 2):
                checked(q.bcm_port_loopback_set, 0, port, mode)
            # What comes back to a port goes on to the next one.
            checked(q.bcm_port_force_forward_set, 0, 1, 2, 1)
            for port in range(2, 64, 2):
                checked(q.bcm_port_force_forward_set, 0, port, port + 2, 1)
            self.assertSends(1, frame, {64: frame}, kind)
            self.assertCounts(1, frame, dict((port, all) for port in [1] + range(2, 65, 2)))


if __name__ == '__main__':
    unittest.main()
