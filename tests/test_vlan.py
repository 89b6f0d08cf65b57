"""VLANs: which exist, their members, lists of them, and the VLAN of untagged packets."""
import ctypes
import unittest

import QuorelApiNew as q
from simulator import CPU_PORT, FRONT_PORTS, PortBitmap, SwitchTest, Vlan, call_with_nulls, functions, library

A = '02:00:5e:00:00:01'


class Vlans(SwitchTest):
    def members(self, vid):
        """(members, untagged members)"""
        status, members, untagged = q.bcm_vlan_port_get(0, vid)
        self.done(status)
        return members, untagged

    def listed(self, function=library.bcm_vlan_list, *args):
        """[(VLAN, members, untagged members)] from one of the list functions."""
        vlans, count = ctypes.POINTER(Vlan)(), ctypes.c_int(-1)
        self.done(function(0, *(args + (ctypes.byref(vlans), ctypes.byref(count)))))
        result = [(vlan.id, vlan.members.ports(), vlan.untagged.ports()) for vlan in vlans[:count.value]]
        self.assertEqual(bool(vlans), count.value > 0)
        self.done(library.bcm_vlan_list_destroy(0, vlans, count))
        return result

    def default(self):
        vid = q.uint16p()
        self.done(q.bcm_vlan_default_get(0, vid))
        return vid.value()

    def test_every_id_can_be_had_once(self):
        for vid in (0, 4095, 65535):
            self.assertStatus(q.BCM_E_PARAM, q.bcm_vlan_create(0, vid), vid)
            self.assertStatus(q.BCM_E_PARAM, q.bcm_vlan_destroy(0, vid), vid)
            self.assertEqual(q.bcm_vlan_port_get(0, vid), (q.BCM_E_PARAM, None, None))
        self.assertEqual([q.bcm_vlan_create(0, vid) for vid in range(1, 4095)], [q.BCM_E_EXISTS] + [0] * 4093)
        self.assertStatus(q.BCM_E_EXISTS, q.bcm_vlan_create(0, 4094))
        self.assertEqual([vid for vid, _, _ in self.listed()], list(range(1, 4095)))
        self.done(q.bcm_vlan_destroy(0, 2000))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_vlan_destroy(0, 2000))
        self.assertEqual(len(self.listed()), 4093)
        self.done(q.bcm_vlan_destroy_all(0))
        self.assertEqual(self.listed(), [(1, FRONT_PORTS, FRONT_PORTS)])

    def test_members(self):
        self.done(q.bcm_vlan_create(0, 20))
        self.assertEqual(self.members(20), ([], []))
        self.done(q.bcm_vlan_port_add(0, 20, [64, 32, 31, CPU_PORT, 31], [31, 64]))
        self.assertEqual(self.members(20), ([0, 31, 32, 64], [31, 64]))
        self.done(q.bcm_vlan_port_add(0, 20, [31, 32, 33], [32]))  # 31 becomes tagged, 32 untagged, 64 stays
        self.assertEqual(self.members(20), ([0, 31, 32, 33, 64], [32, 64]))
        self.done(q.bcm_vlan_port_remove(0, 20, [5, 32, 33]))
        self.assertEqual(self.members(20), ([0, 31, 64], [64]))
        self.assertEqual(self.members(1), (FRONT_PORTS, FRONT_PORTS))

        for status, function, args in [
                (q.BCM_E_PARAM, q.bcm_vlan_port_add, (20, [1], [1, 2])),
                (q.BCM_E_PORT, q.bcm_vlan_port_add, (20, [1, 65], [])),
                (q.BCM_E_PORT, q.bcm_vlan_port_add, (20, [1, 575], [])),
                (q.BCM_E_PORT, q.bcm_vlan_port_remove, (20, [64, 65])),
                (q.BCM_E_NOT_FOUND, q.bcm_vlan_port_add, (21, [1], [])),
                (q.BCM_E_NOT_FOUND, q.bcm_vlan_port_remove, (21, [1])),
                (q.BCM_E_PARAM, q.bcm_vlan_port_add, (4095, [1], []))]:
            self.assertStatus(status, function(0, *args), args)
        self.assertEqual(self.members(20), ([0, 31, 64], [64]))
        self.assertEqual(q.bcm_vlan_port_get(0, 21), (q.BCM_E_NOT_FOUND, None, None))
        self.done(q.bcm_vlan_destroy(0, 20))
        self.done(q.bcm_vlan_create(0, 20))
        self.assertEqual(self.members(20), ([], []))

    def test_lists_by_ports(self):
        for vid, members in ((4094, [3, 64]), (20, [3]), (30, [])):
            self.done(q.bcm_vlan_create(0, vid))
            self.done(q.bcm_vlan_port_add(0, vid, members, members[1:]))
        self.done(q.bcm_vlan_port_remove(0, 1, [3]))
        by_ports = library.bcm_vlan_list_by_pbmp
        self.assertEqual(self.listed(by_ports, PortBitmap([3, 0])), [(20, [3], []), (4094, [3, 64], [64])])
        self.assertEqual([vid for vid, _, _ in self.listed(by_ports, PortBitmap([64]))], [1, 4094])
        self.assertEqual(self.listed(by_ports, PortBitmap([CPU_PORT])), [])
        self.assertStatus(q.BCM_E_PORT, by_ports(0, PortBitmap([65]), *self.outputs()))

    def outputs(self):
        return ctypes.byref(ctypes.POINTER(Vlan)()), ctypes.byref(ctypes.c_int())

    def test_the_default_vlan(self):
        self.assertEqual(self.default(), 1)
        self.assertStatus(q.BCM_E_BADID, q.bcm_vlan_destroy(0, 1))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_vlan_default_set(0, 20))
        self.assertEqual(self.default(), 1)
        self.done(q.bcm_vlan_create(0, 20))
        self.done(q.bcm_vlan_default_set(0, 20))
        self.assertStatus(q.BCM_E_BADID, q.bcm_vlan_destroy(0, 20))
        self.done(q.bcm_vlan_destroy_all(0))
        self.assertEqual(self.listed(), [(20, [], [])])

    def test_untagged_packets_belong_to_the_vlan_of_their_port(self):
        self.done(q.bcm_vlan_create(0, 20))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_port_untagged_vlan_set(0, 5, 21))
        self.assertStatus(q.BCM_E_PARAM, q.bcm_port_untagged_vlan_set(0, 5, 4095))
        self.done(q.bcm_port_untagged_vlan_set(0, 5, 20))
        self.assertEqual([q.bcm_port_untagged_vlan_get(0, port) for port in (4, 5)], [(0, 1), (0, 20)])
        self.assertEqual(self.members(20), ([], []))
        self.done(self.learn(5, A))
        self.done(self.learn(6, A))
        self.done(self.learn(5, A, 1))
        self.assertEqual((self.port_of(A, 20), self.port_of(A, 1)), (5, 5))

        self.done(q.bcm_vlan_destroy(0, 20))
        self.assertEqual(self.port_of(A, 20), 5)  # stays until deleted
        self.assertStatus(q.BCM_E_NOT_FOUND, self.learn(5, A))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_l2_addr_add(0, self.address(A, 20, port=6)))
        self.done(q.bcm_l2_addr_delete_by_vlan(0, 20, 0))
        self.assertIsNone(self.find(A, 20))

    def test_units_and_nulls(self):
        names = functions('bcm_vlan_')
        self.assertGreater(len(names), 8)
        for name in names:
            for unit in (-1, 1, 16):
                self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, unit), name)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_vlan_default_get(0, None))
        vlans, count = self.outputs()
        for outputs in ((None, count), (vlans, None)):
            self.assertStatus(q.BCM_E_PARAM, library.bcm_vlan_list(0, *outputs))
            self.assertStatus(q.BCM_E_PARAM, library.bcm_vlan_list_by_pbmp(0, PortBitmap(), *outputs))
            self.assertStatus(q.BCM_E_PARAM, library.bcm_vlan_port_get(0, 1, *outputs))
        self.done(q.bcm_vlan_list_destroy(0, None, 0))


if __name__ == '__main__':
    unittest.main()
