"""Spanning tree groups and trunks, and the shapes of their results."""
import ctypes
import unittest

import QuorelApiNew as q
from binding import error_of
from recording import library
from simulator import (BLACK_HOLE, LOCAL_PORT, MODULE_PORT, PortBitmap, SYSTEM_PORT, SwitchTest, TRUNK,
                       call_with_nulls, functions)


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

    def vlans(self, stg):
        status, vlans = q.bcm_stg_vlan_list(0, stg)
        self.done(status)
        return vlans

    def test_a_vlan_is_always_in_one_group(self):
        for vid, stg in ((20, 7), (30, 8)):
            self.done(q.bcm_vlan_create(0, vid))
            self.done(q.bcm_stg_create_id(0, stg))
            self.done(q.bcm_vlan_stg_set(0, vid, 7))
        self.done(q.bcm_stg_vlan_add(0, 8, 20))  # moves it
        self.assertEqual([self.vlans(stg) for stg in (1, 7, 8)], [[1], [30], [20]])
        for status, stg, vid in ((q.BCM_E_NOT_FOUND, 7, 21), (q.BCM_E_NOT_FOUND, 9, 20),
                                 (q.BCM_E_PARAM, 256, 20), (q.BCM_E_PARAM, 7, 4095)):
            for call in (q.bcm_stg_vlan_add, q.bcm_stg_vlan_remove):
                self.assertStatus(status, call(0, stg, vid), (call, stg, vid))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_stg_vlan_remove(0, 7, 20))
        self.done(q.bcm_stg_vlan_remove(0, 8, 20))
        self.assertEqual([self.value(q.bcm_vlan_stg_get, vid) for vid in (1, 20, 30)], [1, 1, 7])
        # A destroyed VLAN leaves its group, and the next one of its number starts in the default one.
        self.done(q.bcm_vlan_destroy(0, 30))
        self.assertEqual(self.vlans(7), [])
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_vlan_stg_get(0, 30, q.intp()))
        self.done(q.bcm_vlan_create(0, 30))
        self.assertEqual(self.value(q.bcm_vlan_stg_get, 30), 1)

    def test_another_default_group(self):
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_stg_default_set(0, 7))
        self.done(q.bcm_stg_create_id(0, 7))
        self.done(q.bcm_vlan_create(0, 20))
        self.done(q.bcm_stg_default_set(0, 7))
        self.assertEqual((self.value(q.bcm_stg_default_get), self.vlans(1), self.vlans(7)), (7, [1, 20], []))
        self.done(q.bcm_vlan_create(0, 30))
        self.assertEqual(self.value(q.bcm_vlan_stg_get, 30), 7)
        self.done(q.bcm_stg_vlan_remove(0, 1, 20))
        self.assertStatus(q.BCM_E_BUSY, q.bcm_stg_destroy(0, 7))
        self.done(q.bcm_stg_destroy(0, 1))
        self.done(q.bcm_vlan_destroy(0, 30))
        self.done(q.bcm_vlan_create(0, 30))
        self.assertEqual(q.bcm_stg_list(0), (0, [7]))
        self.assertEqual(self.vlans(7), [1, 20, 30])
        self.done(q.bcm_vlan_init(0))
        self.assertEqual(self.vlans(7), [1])
        self.done(q.bcm_stg_clear(0))
        self.assertEqual((self.value(q.bcm_stg_default_get), self.vlans(1)), (1, [1]))

    def test_as_many_as_there_can_be(self):
        stg, most = q.intp(), self.value(q.bcm_stg_count_get)
        for expected in range(2, most + 1):
            self.done(q.bcm_stg_create(0, stg))
            self.assertEqual(stg.value(), expected)
        self.assertStatus(q.BCM_E_FULL, q.bcm_stg_create(0, stg))
        self.assertEqual(stg.value(), most)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_stg_create_id(0, most + 1))
        self.done(q.bcm_stg_stp_set(0, 100, LOCAL_PORT + 5, q.BCM_STG_STP_LEARN))
        shown = [q.bcm_stg_stp_get(0, *place)[1] for place in ((100, SYSTEM_PORT + 5), (100, 6), (99, 5))]
        self.assertEqual(shown, ['learning', 'disable', 'disable'])
        self.assertStatus(q.BCM_E_PARAM, q.bcm_stg_stp_set(0, 100, 5, 5))
        self.assertStatus(q.BCM_E_PORT, q.bcm_stg_stp_set(0, 100, TRUNK + 5, 1))
        self.done(q.bcm_stg_destroy(0, 100))
        self.done(q.bcm_stg_create(0, stg))
        self.assertEqual((stg.value(), q.bcm_stg_stp_get(0, 100, 5)), (100, (0, 'disable')))

    def test_units_and_nulls(self):
        for name in functions('bcm_stg_') + functions('bcm_trunk_'):
            for unit in (-1, 1, 16):
                self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, unit), name)
        for name in 'stg_count_get stg_create stg_list stg_default_get trunk_create'.split():
            self.assertStatus(q.BCM_E_PARAM, call_with_nulls('bcm_' + name, 0), name)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_vlan_stg_get(0, 1, None))

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

    def create(self, *trunks):
        for trunk in trunks:
            self.assertEqual(q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, trunk), [0, trunk])

    def change(self, call, trunk, gport):
        member = q.bcm_trunk_member_t()
        member.gport = gport
        return call(0, trunk, member)

    def set(self, trunk, *gports):
        """Status; the selection criterion becomes the number of members."""
        members, member, info = q.new_trunkMember(len(gports)), q.bcm_trunk_member_t(), q.bcm_trunk_info_t()
        for index, gport in enumerate(gports):
            member.gport = gport
            q.trunkMember_setitem(members, index, member)
        info.psc = len(gports)
        status = q.bcm_trunk_set(0, trunk, info, len(gports), members)
        q.delete_trunkMember(members)
        return status

    def gports(self, trunk):
        room = q.new_trunkMember(256)
        status, count = q.bcm_trunk_get(0, trunk, None, 256, room)
        self.done(status)
        gports = [q.trunkMember_getitem(room, index).gport for index in range(count)]
        q.delete_trunkMember(room)
        return gports

    def test_a_port_is_in_one_trunk_once_under_all_its_names(self):
        add, delete = q.bcm_trunk_member_add, q.bcm_trunk_member_delete
        far = MODULE_PORT + (3 << 11) + 5
        self.create(3, 4)
        for gport in (9, far, LOCAL_PORT + 5, 7):
            self.done(self.change(add, 3, gport))
        self.assertEqual(self.gports(3), [9, far, LOCAL_PORT + 5, 7])  # in the order in which they came
        for trunk, gport in ((3, 5), (3, SYSTEM_PORT + 9), (4, 5), (4, far), (4, MODULE_PORT + 7)):
            self.assertStatus(q.BCM_E_EXISTS, self.change(add, trunk, gport), gport)
        self.assertStatus(q.BCM_E_NOT_FOUND, self.change(delete, 4, 5))
        self.done(self.change(delete, 3, SYSTEM_PORT + 5))
        self.done(self.change(add, 4, 5))
        self.done(self.change(add, 3, 6))
        self.assertEqual((self.gports(3), self.gports(4)), ([9, far, 7, 6], [5]))
        for status, gport in ((q.BCM_E_PORT, 65), (q.BCM_E_PORT, -1), (q.BCM_E_PORT, TRUNK + 1),
                              (q.BCM_E_PORT, BLACK_HOLE), (q.BCM_E_BADID, MODULE_PORT + (200 << 11) + 5)):
            for call in (add, delete):
                self.assertStatus(status, self.change(call, 4, gport), gport)
        self.done(q.bcm_trunk_destroy(0, 3))  # what it had is free
        self.done(self.change(add, 4, far))
        self.create(3)
        self.assertEqual((self.gports(3), self.gports(4)), ([], [5, far]))

    def status(self, trunk):
        up, count = q.intp(), q.intp()
        self.done(q.bcm_trunk_status_get(0, trunk, up, count))
        return up.value(), count.value()

    def local_members(self, trunk, room=8):
        """[(port, status)]"""
        ports, statuses, count = (ctypes.c_int * 8)(), (ctypes.c_int * 8)(), ctypes.c_int()
        self.done(library.bcm_trunk_local_members_get(0, trunk, room, ports, statuses, ctypes.byref(count)))
        return zip(ports, statuses)[:count.value]

    def test_who_is_in_which_trunk_and_takes_traffic(self):
        far = MODULE_PORT + (3 << 11) + 5
        self.create(3, 4)
        self.assertEqual((self.status(3), self.local_members(3)), ((0, 0), []))
        for trunk, gport in ((3, 9), (3, far), (3, LOCAL_PORT + 5), (4, 20)):
            self.done(self.change(q.bcm_trunk_member_add, trunk, gport))
        trunk, index, status, links = q.intp(), q.intp(), q.intp(), q.intp()
        for module, port, found in ((-1, 5, (3, 2)), (0, 9, (3, 0)), (3, 5, (3, 1)), (-1, SYSTEM_PORT + 20, (4, 0))):
            self.done(q.bcm_trunk_find(0, module, port, trunk, index))
            self.assertEqual((trunk.value(), index.value()), found)
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_trunk_find(0, -1, 6, trunk, index))
        self.assertStatus(q.BCM_E_PORT, q.bcm_trunk_find(0, -1, 65, trunk, index))
        self.assertEqual((self.local_members(3), self.local_members(3, 1)), ([(9, 1), (5, 1)], [(9, 1)]))
        self.done(q.bcm_trunk_min_links_get(0, 3, links))
        self.assertEqual((links.value(), self.status(3)), (1, (1, 3)))

        self.done(q.bcm_trunk_member_status_set(0, 3, SYSTEM_PORT + 5, q.BCM_TRUNK_MEMBER_STATUS_INACTIVE))
        self.done(q.bcm_trunk_member_status_get(0, 3, 5, status))
        self.assertEqual((status.value(), self.status(3), self.local_members(3)), (0, (1, 2), [(9, 1), (5, 0)]))
        self.done(q.bcm_trunk_min_links_set(0, 3, 3))
        self.assertEqual(self.status(3), (0, 2))
        self.done(self.change(q.bcm_trunk_member_delete, 3, 5))
        self.done(self.change(q.bcm_trunk_member_add, 3, 5))  # who comes back is active
        self.assertEqual(self.status(3), (1, 3))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_trunk_member_status_set(0, 3, 20, 0))
        for call, value in ((q.bcm_trunk_min_links_set, -1), (q.bcm_trunk_min_links_set, 257)):
            self.assertStatus(q.BCM_E_PARAM, call(0, 3, value))
        self.assertStatus(q.BCM_E_PARAM, q.bcm_trunk_member_status_set(0, 3, 5, 2))

        ports = PortBitmap([9, 30])
        self.done(library.bcm_trunk_bitmap_expand(0, ctypes.byref(ports)))
        self.assertEqual(ports.ports(), [5, 9, 30])

    def test_members_are_set_all_or_none(self):
        self.create(3, 4)
        self.done(self.change(q.bcm_trunk_member_add, 4, 20))
        self.done(self.set(3, 5, 6))
        self.done(self.set(3, 6, LOCAL_PORT + 5, 7))  # what it has may stay
        for status, gports in ((q.BCM_E_EXISTS, (8, 9, 8)), (q.BCM_E_EXISTS, (8, LOCAL_PORT + 8)),
                               (q.BCM_E_EXISTS, (8, 20)), (q.BCM_E_PORT, (8, 65)), (q.BCM_E_PORT, (TRUNK,))):
            self.assertStatus(status, self.set(3, *gports), gports)
            self.assertEqual((self.gports(3), q.bcm_trunk_psc_get(0, 3)), ([6, LOCAL_PORT + 5, 7], [0, 3]))
        self.done(q.bcm_trunk_member_delete_all(0, 3))
        for port in range(256):
            self.done(self.change(q.bcm_trunk_member_add, 3, MODULE_PORT + (9 << 11) + port))
        self.assertStatus(q.BCM_E_FULL, self.change(q.bcm_trunk_member_add, 3, 5))
        self.assertEqual(len(self.gports(3)), 256)

    def test_which_trunks_there_are(self):
        self.create(0, 2, q.BCM_TRUNK_MAX)
        self.assertEqual([q.bcm_trunk_create(0, 0, 9) for _ in range(2)], [[0, 1], [0, 3]])
        for trunk in (-1, q.BCM_TRUNK_MAX + 1, 2 ** 31 - 1):
            for status in (q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, trunk)[0], self.set(trunk, 5),
                           q.bcm_trunk_destroy(0, trunk), q.bcm_trunk_psc_get(0, trunk)[0]):
                self.assertStatus(q.BCM_E_PARAM, status, trunk)
        self.assertEqual(q.bcm_trunk_create(0, 0x80, 9), [q.BCM_E_PARAM, 9])
        self.assertStatus(q.BCM_E_PARAM, q.bcm_trunk_psc_set(0, 2, 13))
        self.assertEqual(q.bcm_trunk_psc_get(0, 2), [0, q.BCM_TRUNK_PSC_DEFAULT])
        self.done(q.bcm_trunk_destroy(0, 2))
        for status in (q.bcm_trunk_destroy(0, 2), self.change(q.bcm_trunk_member_add, 2, 5), self.set(2, 5)):
            self.assertStatus(q.BCM_E_NOT_FOUND, status)


if __name__ == '__main__':
    unittest.main()
