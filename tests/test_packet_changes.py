"""Packets go by what is set at the moment: each thing that can change their way does so for the next packet."""
import unittest

import QuorelApiNew as q
from packets import A, ALL, ARP, B, frame, PacketTest, VLAN
from phy import COPPER, medium_callback, PhyTest, SERDES
from recording import library

FIBER, TWISTED = 1 << q.SOC_PHY_MEDIUM_FIBER, 1 << q.SOC_PHY_MEDIUM_COPPER
POWER_DOWN, RESET = 1 << 11, 1 << 15


class Links(PacketTest, PhyTest):
    def reset(self):
        PhyTest.reset(self)
        PacketTest.reset(self)

    def test_each_thing_that_breaks_or_makes_a_link(self):
        bus, address = divmod(q.soc_phy_addr_of_port(0, COPPER), 32)
        internal = q.soc_phy_addr_int_of_port(0, SERDES)
        changes = [
            (COPPER, (q.bcm_port_enable_set, COPPER, 0), (q.bcm_port_enable_set, COPPER, 1)),
            (COPPER, (q.soc_phyctrl_enable_set, COPPER, 0), (q.soc_phyctrl_enable_set, COPPER, 1)),
            (COPPER, (q.soc_phyctrl_reg_write, COPPER, 0, 0, POWER_DOWN), (q.soc_phyctrl_reset, COPPER, None)),
            (COPPER, (q.soc_phyctrl_reg_modify, COPPER, 0, 0, POWER_DOWN, POWER_DOWN),
             (q.soc_phyctrl_reg_modify, COPPER, 0, 0, 0, POWER_DOWN)),
            (COPPER, (q.soc_mdio_write, bus, address, 0, POWER_DOWN), (q.soc_mdio_write, bus, address, 0, RESET)),
            (SERDES, (q.soc_phyctrl_reg_write, internal, q.SOC_PHY_NOMAP, 0, POWER_DOWN),
             (q.bcm_port_phy_set, SERDES, 0, 0, 1 << 12)),
            (COPPER, (q.soc_phyctrl_notify, COPPER, q.phyEventStop, 1), (q.soc_phyctrl_notify, COPPER, q.phyEventResume, 1)),
            (SERDES, (q.soc_phyctrl_control_set, SERDES, q.SOC_PHY_CONTROL_PRBS_TX_ENABLE, 1),
             (q.soc_phyctrl_control_set, SERDES, q.SOC_PHY_CONTROL_PRBS_TX_ENABLE, 0)),
            (COPPER, (library.sim_cable_plug, COPPER, 0, 1), (library.sim_cable_plug, COPPER, TWISTED, 1)),
            (SERDES, (library.sim_cable_plug, SERDES, 0, 1), (library.sim_cable_plug, SERDES, FIBER, 1)),
            (COPPER, (q.bcm_port_enable_set, COPPER, 0), (q.bcm_port_init,)),
        ]
        for port, breaks, makes in changes:
            for linked, call in ((False, breaks), (True, makes)):
                self.done(call[0](0, *call[1:]))
                status = self.value(q.bcm_port_link_status_get, port)
                self.assertEqual((status, port in self.ports(1, ALL, A, ARP)), (linked, linked), call)

    def test_settings_that_the_cable_does_not_carry(self):
        open_pair = 3, 1, 2  # the fourth pair, open, two metres away
        self.done(library.sim_cable_pair_set(0, COPPER, *open_pair))
        for speed, linked in ((100, True), (1000, False), (10, True)):
            self.done(q.bcm_port_speed_set(0, COPPER, speed))
            self.assertEqual(COPPER in self.ports(1, ALL, A, ARP), linked, speed)

    def test_while_those_who_are_told_send(self):
        def forward(*_):
            seen.append(self.ports(1, ALL, A, ARP))
        seen, watcher = [], medium_callback(forward)
        self.done(library.soc_phy_medium_status_register(0, COPPER, watcher, None))
        self.addCleanup(library.soc_phy_medium_status_unregister, 0, COPPER, watcher, None)
        self.done(library.sim_cable_plug(0, COPPER, 0, 1))
        self.done(library.sim_cable_plug(0, COPPER, TWISTED, 1))
        self.assertEqual([COPPER in ports for ports in seen], [False, True])


class Tables(PacketTest):
    def flooded(self):
        """Which of the ports 2 to 5 get a packet to all in VLAN 20, and which with a tag."""
        copies = self.sent(1, frame(ALL, A, VLAN, 20, ARP))
        return [(port, len(data) == 64 - 4 and data[12:14] == '\x81\0') for port, data in copies]

    def test_spanning_tree_vlans_and_trunks(self):
        self.vlan(20, tagged=[1, 2, 3], untagged=[4])
        self.done(q.bcm_stg_create_id(0, 7))
        two, three, four = (2, True), (3, True), (4, False)
        every = [two, three, four]

        def member(port):
            record = q.bcm_trunk_member_t()
            record.gport = port
            return record
        block, forward = q.BCM_STG_STP_BLOCK, q.BCM_STG_STP_FORWARD
        steps = [
            (every, ()),
            ([three, four], (q.bcm_stg_stp_set, 1, 2, block)), (every, (q.bcm_stg_stp_set, 1, 2, forward)),
            ([two, four], (q.bcm_port_stp_set, 3, block)), (every, (q.bcm_port_stp_set, 3, forward)),
            ([], (q.bcm_vlan_stg_set, 20, 7)), ([three], (q.bcm_stg_stp_set, 7, 1, forward)),
            ([two, three], (q.bcm_stg_stp_set, 7, 2, forward)), (every, (q.bcm_stg_destroy, 7)),
            ([three, four], (q.bcm_vlan_port_remove, 20, [2])), (every, (q.bcm_vlan_port_add, 20, [2], [])),
            ([two, (3, False), four], (q.bcm_vlan_port_add, 20, [3], [3])),
            (every, (q.bcm_vlan_port_add, 20, [3], [])),
            ([three, four], (q.bcm_port_enable_set, 2, 0)), (every, (q.bcm_port_enable_set, 2, 1)),
            (every, (q.bcm_trunk_create, q.BCM_TRUNK_FLAG_WITH_ID, 5)),
            (every, (q.bcm_trunk_member_add, 5, member(2))),
        ]
        for expected, call in steps:
            if call:
                status = call[0](0, *call[1:])
                self.done(status[0] if isinstance(status, list) else status)
            self.assertEqual(self.flooded(), expected, call)
        self.done(q.bcm_trunk_member_add(0, 5, member(3)))
        self.assertEqual(len(self.flooded()), 2)
        for port, other in ((2, 3), (3, 2)):
            self.done(q.bcm_trunk_member_status_set(0, 5, port, q.BCM_TRUNK_MEMBER_STATUS_INACTIVE))
            self.assertEqual(self.flooded(), [(other, True), four])
            self.done(q.bcm_trunk_member_status_set(0, 5, port, q.BCM_TRUNK_MEMBER_STATUS_ACTIVE))
        self.done(q.bcm_trunk_min_links_set(0, 5, 3))
        self.assertEqual(self.flooded(), [four])
        self.done(q.bcm_trunk_member_delete(0, 5, member(3)))
        self.assertEqual(self.flooded(), [three, four])
        self.done(q.bcm_trunk_member_add(0, 5, member(1)))
        self.assertEqual(self.flooded(), [three, four])  # 2 is where 1 is
        self.done(q.bcm_trunk_destroy(0, 5))
        self.assertEqual(self.flooded(), every)

    def test_what_a_port_takes_and_sends(self):
        plain = frame(B, A, ARP)
        for call in ((q.bcm_port_discard_set, 1, q.BCM_PORT_DISCARD_ALL), (q.bcm_port_frame_max_set, 1, 64),
                     (q.bcm_port_untagged_vlan_set, 1, 1)):
            self.done(call[0](0, *call[1:]))
        self.assertEqual(self.sent(1, plain), [])
        self.done(q.bcm_port_discard_set(0, 1, q.BCM_PORT_DISCARD_NONE))
        self.assertEqual(len(self.sent(1, plain)), 63)
        self.assertEqual(self.sent(1, plain + '12345678'), [])
        self.done(q.bcm_port_frame_max_set(0, 1, 9216))
        self.done(q.bcm_port_frame_max_set(0, 2, 64))
        self.assertEqual(len(self.sent(1, plain + '12345678')), 62)


if __name__ == '__main__':
    unittest.main()
