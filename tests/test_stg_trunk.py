"""Spanning tree groups and trunks, and the shapes of their results."""
import unittest

import QuorelApiNew as q
from binding import error_of
from simulator import SwitchTest


class SpanningTreeGroups(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        self.done(q.bcm_stg_init(0))
        self.addCleanup(q.bcm_stg_init, 0)

    def test_lists_come_as_tuples(self):
        self.assertEqual(q.bcm_stg_list(0), (0, [1]))
        self.done(q.bcm_stg_create_id(0, 7))
        stg = q.intp()
        self.done(q.bcm_stg_create(0, stg))
        self.assertEqual((stg.value(), q.bcm_stg_list(0)), (2, (0, [1, 2, 7])))
        self.assertEqual(q.bcm_stg_list(9), (q.BCM_E_UNIT,))
        self.assertEqual(q.bcm_stg_vlan_list(0, 7), (0, []))
        self.done(q.bcm_vlan_create(0, 20))
        self.done(q.bcm_stg_vlan_add(0, 7, 20))
        self.assertEqual(q.bcm_stg_vlan_list(0, 7), (0, [20]))
        self.assertEqual(q.bcm_stg_vlan_list(0, 1), (0, [1]))
        self.assertEqual(q.bcm_stg_vlan_list(0, 8), (q.BCM_E_NOT_FOUND,))
        self.done(q.bcm_stg_destroy(0, 7))
        self.assertEqual(q.bcm_stg_vlan_list(0, 1), (0, [1, 20]))
        self.assertEqual(q.bcm_stg_destroy(0, 1), q.BCM_E_BUSY)

    def test_states_have_names_but_for_the_kept_gap(self):
        self.assertEqual(q.bcm_stg_stp_get(0, 1, 5), (0, 'forwarding'))
        for state, name in ((0, 'disable'), (1, 'discarding'), (3, 'learning'), (4, 'forwarding')):
            self.done(q.bcm_stg_stp_set(0, 1, 5, state))
            self.assertEqual(q.bcm_stg_stp_get(0, 1, 5), (0, name))
        self.done(q.bcm_stg_stp_set(0, 1, 5, 2))
        unnamed = q.bcm_stg_stp_get(0, 1, 5)
        self.assertEqual((len(unnamed), unnamed[0], repr(unnamed)), (2, 0, '(0, <NULL>)'))
        self.assertEqual(q.bcm_stg_stp_get(0, 1, 65), (q.BCM_E_PORT,))
        self.assertEqual(q.bcm_stg_stp_get(0, 3, 5), (q.BCM_E_NOT_FOUND,))


class Trunks(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        self.done(q.bcm_trunk_init(0))
        self.addCleanup(q.bcm_trunk_init, 0)

    def test_the_id_goes_in_and_out(self):
        self.assertEqual(q.bcm_trunk_create.__doc__, 'bcm_trunk_create(arg1, arg2, INOUT) -> int')
        self.assertEqual(q.bcm_trunk_create(0, 0, 5), [0, 0])
        self.assertEqual(q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, 5), [0, 5])
        self.assertEqual(q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, 5), [q.BCM_E_EXISTS, 5])
        cell = q.intp()
        cell.assign(9)
        rc, pointer = q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, cell)
        self.assertEqual((rc, cell.value(), int(pointer), pointer.own()), (0, 9, int(cell.this), False))
        self.assertEqual(q.bcm_trunk_create(0, 0, None), [q.BCM_E_PARAM, None])
        text = "in method 'bcm_trunk_create', argument 3 of type 'bcm_trunk_t *'"
        self.assertEqual(error_of(q.bcm_trunk_create, 0, 0, 'x'), (TypeError, text))
        self.assertEqual(error_of(q.bcm_trunk_create, 0, 0, 2 ** 31), (OverflowError, text))

    def test_members_and_criteria_join_the_result(self):
        self.assertEqual(q.bcm_trunk_get.__doc__, 'bcm_trunk_get(arg1, arg2, arg3, arg4, arg5) -> int')
        q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, 3)
        members = q.new_trunkMember(4)
        member = q.bcm_trunk_member_t()
        for index, gport in enumerate((11, 12)):
            member.gport = gport
            q.trunkMember_setitem(members, index, member)
        info = q.bcm_trunk_info_t()
        q.bcm_trunk_info_t_init(info)
        info.psc = q.BCM_TRUNK_PSC_DSTIP
        self.done(q.bcm_trunk_set(0, 3, info, 2, members))
        found, room = q.bcm_trunk_info_t(), q.new_trunkMember(4)
        self.assertEqual(q.bcm_trunk_get(0, 3, found, 4, room), [0, 2])
        self.assertEqual([q.trunkMember_getitem(room, i).gport for i in range(3)], [11, 12, 0])
        copy = q.trunkMember_getitem(room, 0)
        copy.gport = 99
        self.assertEqual((copy.thisown, q.trunkMember_getitem(room, 0).gport), (True, 11))
        self.assertEqual(q.bcm_trunk_get(0, 3, None, 0, None), [0, 2])
        self.assertEqual(q.bcm_trunk_get(0, 3, found, 1, room), [0, 1])
        self.assertEqual(q.bcm_trunk_get(0, 4, None, 0, None)[0], q.BCM_E_NOT_FOUND)
        self.assertEqual(q.bcm_trunk_psc_get.__doc__, 'bcm_trunk_psc_get(arg1, arg2) -> int')
        self.assertEqual(q.bcm_trunk_psc_get(0, 3), [0, q.BCM_TRUNK_PSC_DSTIP])
        self.assertEqual(error_of(q.trunkMember_setitem, room, 0, None), (
            ValueError, "invalid null reference in method 'trunkMember_setitem', argument 3 of type "
            "'bcm_trunk_member_t'"))
        for array in (members, room):
            q.delete_trunkMember(array)


if __name__ == '__main__':
    unittest.main()
