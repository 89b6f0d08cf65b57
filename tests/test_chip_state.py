"""The chip and the API say the same: what calls set is in registers and memories, what is written there is obeyed."""
import ctypes
import unittest

import QuorelApiNew as q
from quorel import OUT, Chip, checked, sim
from simulator import library

A, B, C = ['02:00:00:00:00:0%d' % number for number in (1, 2, 3)]


def mask(*numbers):
    return sum(1 << number for number in numbers)


def state_of(port):
    """In the first spanning tree group; the module has no name for one of them."""
    state = ctypes.c_int()
    status = library.bcm_stg_stp_get(0, 1, port, ctypes.byref(state))
    return state.value if status == 0 else status


class ChipState(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        self.chip = Chip(0)
        self.mems, self.regs = self.chip.mems, self.chip.regs

    def vlan(self, vid):
        entry = self.mems.EGQ_VLAN_MEMBERSHIP[vid]
        return self.mems.IHP_VLAN_TO_VSI_MAP[vid].VALID, entry.MEMBERS, entry.UNTAGGED

    def test_vlans(self):
        self.assertEqual(self.vlan(1), (1, mask(*range(1, 65)), 2 ** 64 - 1))
        self.assertEqual(self.vlan(10), (0, 0, 0))
        checked(q.bcm_vlan_create, 0, 10)
        checked(q.bcm_vlan_port_add, 0, 10, [0, 3, 64], [3])
        self.assertEqual(self.vlan(10), (1, mask(0, 3, 64), mask(2)))
        self.assertEqual(self.mems.IHP_VLAN_TO_VSI_MAP[10].VSI, 10)
        checked(q.bcm_vlan_destroy, 0, 10)
        self.assertEqual(self.vlan(10), (0, 0, 0))
        # And the other way round.
        self.mems.IHP_VLAN_TO_VSI_MAP[20].VALID = 1
        entry = self.mems.EGQ_VLAN_MEMBERSHIP[20]
        entry.MEMBERS = mask(1, 2, 5)
        entry.UNTAGGED = mask(1)
        self.assertEqual(q.bcm_vlan_port_get(0, 20), (0, [1, 2, 5], [2]))
        frame = sim.ethernet(B, A, vlan=20)
        self.assertSends(1, frame, {2: sim.ethernet(B, A), 5: frame})
        self.mems.IHP_VLAN_TO_VSI_MAP[20].VALID = 0
        self.assertDropped(1, frame, 'vlan_unknown')
        # The default VLAN stays.
        self.mems.IHP_VLAN_TO_VSI_MAP[1].VALID = 0
        self.assertEqual(self.vlan(1)[0], 1)

    def test_learning_and_trees_of_vlans(self):
        config = self.mems.IHP_VSI_CONFIG[1]
        self.assertEqual((config.LEARN_ENABLE, config.STP_INSTANCE), (1, 1))
        config.LEARN_ENABLE = 0
        self.switch.send(2, sim.ethernet(A, B))
        self.assertEqual(q.getHwMacTable(0), [])
        config.LEARN_ENABLE = 1
        group = checked(q.bcm_stg_create, 0, OUT)
        config.STP_INSTANCE = group
        self.assertEqual(q.bcm_stg_vlan_list(0, group), (0, [1]))
        checked(q.bcm_stg_vlan_add, 0, 1, 1)
        self.assertEqual(config.STP_INSTANCE, 1)
        config.STP_INSTANCE = 200
        self.assertEqual(config.STP_INSTANCE, 1)

    def test_states_of_trees(self):
        states = self.mems.IHP_SPANNING_TREE_STATE[1]

        def code(port):
            return states.PORT_STATE >> 2 * port & 3
        self.assertEqual([code(port) for port in (1, 64)], [3, 3])
        for state, expected in ((q.BCM_STG_STP_DISABLE, 0), (q.BCM_STG_STP_BLOCK, 1), (q.BCM_STG_STP_LISTEN, 1),
                                (q.BCM_STG_STP_LEARN, 2), (q.BCM_STG_STP_FORWARD, 3)):
            checked(q.bcm_stg_stp_set, 0, 1, 7, state)
            self.assertEqual((code(7), code(8)), (expected, 3))
        checked(q.bcm_stg_stp_set, 0, 1, 7, q.BCM_STG_STP_LISTEN)
        states.PORT_STATE = states.PORT_STATE & ~(3 << 2 * 9) | 2 << 2 * 9
        self.assertEqual([state_of(port) for port in (7, 9)], [q.BCM_STG_STP_LISTEN, q.BCM_STG_STP_LEARN])
        self.assertDropped(9, sim.ethernet(B, A), 'tree_state')

    def test_ports(self):
        info = self.mems.IHP_VLAN_PORT_INFO
        self.assertEqual((info[4].DEFAULT_VLAN, info[4].INGRESS_FILTER), (1, 0))
        checked(q.bcm_vlan_create, 0, 10)
        checked(q.bcm_port_untagged_vlan_set, 0, 4, 10)
        checked(q.bcm_port_vlan_member_set, 0, 4, q.BCM_PORT_VLAN_MEMBER_INGRESS)
        self.assertEqual((info[4].DEFAULT_VLAN, info[4].INGRESS_FILTER), (10, 1))
        info[5].DEFAULT_VLAN = 10
        info[5].INGRESS_FILTER = 1
        self.assertDropped(5, sim.ethernet(B, A), 'vlan_filter')
        info[5].DEFAULT_VLAN = 0
        self.assertEqual(info[5].DEFAULT_VLAN, 10)
        self.mems.EGQ_PORT_CONFIG[6].EGRESS_FILTER = 1
        self.assertEqual(checked(q.bcm_port_vlan_member_get, 0, 6, OUT), q.BCM_PORT_VLAN_MEMBER_EGRESS)
        size = self.regs.NIF_PORT_MAX_SIZE
        checked(q.bcm_port_frame_max_set, 0, 3, 1600)
        self.assertEqual((size[3].MAX_SIZE, size[2].MAX_SIZE), (1600, 9216))
        size[2].MAX_SIZE = 100
        self.assertEqual(checked(q.bcm_port_frame_max_get, 0, 2, OUT), 100)
        self.assertDropped(2, sim.ethernet(B, A, b'\1' * 90), 'too_long')

    def test_addresses(self):
        rows = self.mems.IHP_MAC_TABLE

        def shown(row):
            entry = rows[row]
            return entry.VALID, entry.ADDRESS, entry.VSI, entry.DESTINATION, entry.STATIC, entry.HIT
        self.assertEqual([shown(row)[0] for row in (0, 1)], [0, 0])
        self.switch.send(2, sim.ethernet(A, B))
        static = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(static, A, 1)
        static.port, static.flags = 7, q.BCM_L2_STATIC
        checked(q.bcm_l2_addr_add, 0, static)
        self.assertEqual([shown(row) for row in (0, 1, 2)],
                         [(1, 0x020000000002, 1, 2, 0, 1), (1, 0x020000000001, 1, 7, 1, 0), (0, 0, 0, 0, 0, 0)])
        # A row stays its address's, and a free one is the next one's.
        checked(q.bcm_l2_addr_delete, 0, B, 1)
        self.assertEqual([shown(row)[0] for row in (0, 1)], [0, 1])
        rows[1].DESTINATION = 5
        self.assertSends(1, sim.ethernet(A, C), {5: sim.ethernet(A, C)})
        # A whole row at once, at a place of one's own; then another address, and none.
        rows[4000].modify(ADDRESS=0x020000000002, VSI=1, DESTINATION=9, VALID=1)
        self.assertEqual(shown(4000), (1, 0x020000000002, 1, 9, 0, 0))
        self.assertSends(1, sim.ethernet(B, C), {9: sim.ethernet(B, C)})
        rows[4000].ADDRESS = 0x020000000004
        self.assertEqual(sorted(entry[0] for entry in q.getHwMacTable(0)), sorted([A, C, '02:00:00:00:00:04']))
        rows[4000].VALID = 0
        self.assertEqual((shown(4000), len(q.getHwMacTable(0))), ((0, 0x020000000004, 1, 9, 0, 1), 2))
        # What cannot be is kept, and leads nowhere.
        for members in (dict(VSI=99), dict(DESTINATION=65), dict(DESTINATION=4 << 16)):
            rows[4000].modify(**dict(dict(ADDRESS=9, VSI=1, DESTINATION=1, VALID=1), **members))
            self.assertEqual((shown(4000)[0], len(q.getHwMacTable(0))), (1, 2))
        rows[4000].VALID = 0

    def test_more_addresses_than_rows(self):
        address = q.bcm_l2_addr_t()
        for number in range(4100):
            q.bcm_l2_addr_t_init(address, '02:00:00:01:%02x:%02x' % divmod(number, 256), 1)
            address.port = 3
            checked(q.bcm_l2_addr_add, 0, address)
        rows = self.mems.IHP_MAC_TABLE
        self.assertEqual((rows[4095].ADDRESS & 0xffff, rows[4095].VALID), (4095, 1))
        checked(q.bcm_l2_addr_delete, 0, '02:00:00:01:00:05', 1)
        self.assertEqual((rows[5].ADDRESS & 0xffff, rows[5].VALID), (4096, 1))

    def test_members_of_trunks(self):
        trunk = checked(q.bcm_trunk_create, 0, 0, OUT)
        members = self.mems.IHB_LAG_MEMBER

        def shown():
            rows = [members[8 * trunk + number] for number in range(4)]
            return [row.SYSTEM_PORT for row in rows if row.VALID]
        for port in (5, 6):
            checked(q.bcm_trunk_member_add, 0, trunk, q.bcm_trunk_member_t(gport=port))
        self.assertEqual(shown(), [5, 6])
        members[8 * trunk + 3].modify(SYSTEM_PORT=9, VALID=1)    # behind the others
        self.assertEqual(shown(), [5, 6, 9])
        members[8 * trunk].VALID = 0
        members[8 * trunk].SYSTEM_PORT = 7
        self.assertEqual(shown(), [7, 9])
        self.switch.arrive(9, sim.ethernet(A, B))
        self.assertIn(self.switch.send(1, sim.ethernet(B, C))[0][0], (7, 9))
        members[8 * trunk].SYSTEM_PORT = 77
        self.assertEqual(shown(), [7, 9])
        members[8 * 127].modify(SYSTEM_PORT=9, VALID=1)          # there is no such trunk
        self.assertEqual(members[8 * 127].VALID, 1)

    def test_next_hops(self):
        interface = q.bcm_l3_intf_t(l3a_mac_addr='02:aa:00:00:00:01', l3a_vid=1)
        checked(q.bcm_l3_intf_create, 0, interface)
        hop = q.bcm_l3_egress_t(intf=interface.l3a_intf_id, mac_addr=B, port=5)
        number = checked(q.bcm_l3_egress_create, 0, 0, hop, OUT)
        checked(q.bcm_l3_route_add, 0, q.bcm_l3_route_t(l3a_intf=number))
        packet = sim.ethernet('02:aa:00:00:00:01', C, sim.udp4('10.0.0.1', '10.0.0.2', ttl=9))
        way, rewrite = self.mems.IHB_FEC_ENTRY[number], self.mems.EPE_ENCAPSULATION[number]

        def sent():
            return [(port, frame[:6]) for port, frame in self.switch.send(1, packet)]
        self.assertEqual((way.DESTINATION, way.OUT_LIF, rewrite.ENCAPSULATION_TYPE, rewrite.ADDRESS),
                         (5, number, 1, 0x020000000002))
        self.assertEqual(sent(), [(5, b'\2\0\0\0\0\2')])
        way.DESTINATION = 6
        rewrite.ADDRESS = 0x020000000004
        self.assertEqual(sent(), [(6, b'\2\0\0\0\0\4')])
        checked(q.bcm_l3_egress_get, 0, number, hop)
        self.assertEqual((hop.port, hop.mac_addr), (6, '02:00:00:00:00:04'))
        way.DESTINATION = 3 << 16
        self.assertEqual((sent(), way.DESTINATION), ([], 3 << 16))
        for impossible in (65, 2 << 16 | 1, 4 << 16):
            way.DESTINATION = impossible
            self.assertEqual(way.DESTINATION, 3 << 16)
        way.DESTINATION = 7
        self.assertEqual(sent()[0][0], 7)

    def test_counters(self):
        self.switch.send(2, sim.ethernet(A, B))
        frame = sim.ethernet(B, A, b'\1' * 100)
        self.switch.send(1, frame)
        self.switch.arrive(1, frame[:20])
        self.assertEqual([(self.regs.NIF_PORT_RX_PACKETS[port].PACKETS, self.regs.NIF_PORT_TX_PACKETS[port].PACKETS,
                           self.regs.NIF_PORT_RX_OCTETS[port].OCTETS, self.regs.NIF_PORT_TX_OCTETS[port].OCTETS,
                           self.regs.NIF_PORT_RX_ERRORS[port].LENGTH_ERRORS) for port in (1, 2)],
                         [(2, 1, checked(q.bcm_stat_get, 0, 1, q.snmpIfInOctets, OUT), 64, 1),
                          (1, 1, 64, len(frame) + 4, 0)])
        checked(q.bcm_stat_clear, 0, 1)
        self.assertEqual(self.regs.NIF_PORT_RX_PACKETS[1].PACKETS, 0)


if __name__ == '__main__':
    unittest.main()
