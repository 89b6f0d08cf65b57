"""The chip and the API say the same: what calls set is in registers and memories, what is written there is obeyed."""
import ctypes
import unittest

import QuorelApiNew as q
from quorel import OUT, Chip, checked, sim
from simulator import library

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'


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
