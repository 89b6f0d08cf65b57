"""Router interfaces, hosts, routes, egress objects and groups: what is kept, found and refused, and what refers to what."""
import ctypes
import unittest

import QuorelApiNew as q
from recording import library
from simulator import pointer, SwitchTest

MISSING, EXISTS, BUSY, FULL, PARAM, UNAVAILABLE = (q.BCM_E_NOT_FOUND, q.BCM_E_EXISTS, q.BCM_E_BUSY, q.BCM_E_FULL,
                                                   q.BCM_E_PARAM, q.BCM_E_UNAVAIL)
MAC = '02:aa:00:00:00:%02x'
BY_ID, REPLACE, IP6 = q.BCM_L3_WITH_ID, q.BCM_L3_REPLACE, q.BCM_L3_IP6


def of(kind, **members):
    record = getattr(q, 'bcm_l3_%s_t' % kind)()
    for name, value in members.items():
        setattr(record, name, value)
    return record





class L3Test(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        self.done(q.bcm_l3_init(0))

    def interface(self, vid=1, mac=1, **members):
        record = of('intf', l3a_vid=vid, l3a_mac_addr=MAC % mac, **members)
        self.done(q.bcm_l3_intf_create(0, record))
        return record.l3a_intf_id

    def egress(self, how=0, number=0, **members):
        """(status, id)"""
        found, record = ctypes.c_int(number), of('egress', **members)
        return library.bcm_l3_egress_create(0, how, pointer(record), ctypes.byref(found)), found.value

    def object(self, **members):
        status, number = self.egress(**members)
        self.done(status)
        return number

    def group(self, members, flags=0, number=0, most=None):
        """(status, id)"""
        ids, found = (ctypes.c_int * len(members))(*members), ctypes.c_int(number)
        if most is None:
            status = library.bcm_l3_egress_multipath_create(0, flags, len(members), ids, ctypes.byref(found))
        else:
            status = library.bcm_l3_egress_multipath_max_create(0, flags, most, len(members), ids, ctypes.byref(found))
        return status, found.value

    def members(self, group, room=8):
        array, count = (ctypes.c_int * room)(), ctypes.c_int()
        self.done(library.bcm_l3_egress_multipath_get(0, group, room, array, ctypes.byref(count)))
        return count.value, list(array)[:min(room, count.value)]

    def info(self, name):
        record = of('info')
        self.done(q.bcm_l3_info(0, record))
        return getattr(record, 'l3info_' + name)

    def visited(self, function, flags=0, start=0, end=2 ** 32 - 1, result=lambda index: 0):
        """The numbers that a traversal of hosts or routes visits, and its status."""
        seen = []
        callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(
            lambda unit, index, *_: seen.append(index) or result(index))
        return seen, getattr(library, function)(0, ctypes.c_uint32(flags), ctypes.c_uint32(start),
                                                ctypes.c_uint32(end), callback, None)


class Interfaces(L3Test):
    def test_found_by_id_address_and_vlan(self):
        self.done(q.bcm_vlan_create(0, 20))
        first, second, third = self.interface(1, 1), self.interface(20, 1, l3a_mtu=1500), self.interface(20, 2)
        self.assertEqual([first, second, third], [1, 2, 3])
        record = of('intf', l3a_vid=20, l3a_mac_addr=MAC % 2)
        self.done(q.bcm_l3_intf_find(0, record))
        self.assertEqual(record.l3a_intf_id, third)
        self.done(q.bcm_l3_intf_find_vlan(0, record))
        self.assertEqual((record.l3a_intf_id, record.l3a_mtu), (second, 1500))
        record.l3a_mac_addr = MAC % 3
        self.assertStatus(MISSING, q.bcm_l3_intf_find(0, record))
        record.l3a_intf_id = 4
        self.assertStatus(MISSING, q.bcm_l3_intf_get(0, record))

    def test_refusals_leave_all_as_it_is(self):
        number = self.interface(1, 1)
        for status, members in (
                (PARAM, dict(l3a_vid=0)), (PARAM, dict(l3a_vid=4095)), (MISSING, dict(l3a_vid=77)),
                (PARAM, dict(l3a_vrf=1024)), (PARAM, dict(l3a_vrf=-1)), (PARAM, dict(l3a_mac_addr='01:00:00:00:00:01')),
                (PARAM, dict(l3a_ttl=256)), (PARAM, dict(l3a_mtu=-1)), (UNAVAILABLE, dict(l3a_flags=q.BCM_L3_UNTAG)),
                (UNAVAILABLE, dict(l3a_tunnel_idx=1)), (UNAVAILABLE, dict(l3a_inner_vlan=5)),
                (EXISTS, dict(l3a_mac_addr=MAC % 1)), (EXISTS, dict(l3a_flags=BY_ID, l3a_intf_id=number)),
                (PARAM, dict(l3a_flags=BY_ID, l3a_intf_id=0)), (MISSING, dict(l3a_flags=REPLACE, l3a_intf_id=9))):
            record = of('intf', **dict(dict(l3a_vid=1, l3a_mac_addr=MAC % 9), **members))
            self.assertStatus(status, q.bcm_l3_intf_create(0, record), members)
            self.assertEqual(self.info('used_intf'), 1)
        record = of('intf', l3a_vid=1, l3a_mac_addr=MAC % 9, l3a_flags=REPLACE, l3a_intf_id=number)
        self.done(q.bcm_l3_intf_create(0, record))
        self.done(q.bcm_l3_intf_get(0, record))
        self.assertEqual(record.l3a_mac_addr, MAC % 9)

    def test_what_is_used_stays(self):
        number, other = self.interface(1, 1), self.interface(1, 2)
        egress = self.object(intf=number, port=5)
        gone = of('intf', l3a_intf_id=number)
        self.assertStatus(BUSY, q.bcm_l3_intf_delete(0, gone))
        self.assertStatus(BUSY, q.bcm_l3_intf_delete_all(0))
        self.assertEqual(self.info('used_intf'), 2)
        # Replaced, the object uses another one.
        self.assertEqual(self.egress(REPLACE, egress, intf=other, port=5), (0, egress))
        self.done(q.bcm_l3_intf_delete(0, gone))
        self.assertStatus(MISSING, q.bcm_l3_intf_delete(0, gone))
        self.done(q.bcm_l3_egress_destroy(0, egress))
        self.done(q.bcm_l3_intf_delete_all(0))

    def test_as_many_as_there_can_be(self):
        for number in range(8192):
            record = of('intf', l3a_vid=1)
            self.done(q.bcm_l3_intf_create(0, record))
        self.assertStatus(FULL, q.bcm_l3_intf_create(0, of('intf', l3a_vid=1)))
        self.assertEqual((self.info('used_intf'), self.info('max_intf')), (8192, 8192))


class Egress(L3Test):
    def test_one_space_of_ids(self):
        interface = self.interface()
        egress = self.object(intf=interface, port=3)
        status, group = self.group([egress])
        self.assertEqual((interface, egress, status, group), (1, 2, 0, 3))
        for number in (interface, group):
            self.assertEqual(self.egress(BY_ID, number), (EXISTS, number))
            self.assertStatus(MISSING, q.bcm_l3_egress_destroy(0, number))
        self.assertEqual(self.group([egress], BY_ID, egress), (EXISTS, egress))
        self.assertEqual(self.egress(BY_ID, 2 ** 31 - 1)[0], 0)
        self.done(q.bcm_l3_egress_multipath_destroy(0, group))
        self.assertEqual([self.object(intf=interface) for _ in range(2)], [3, 4])

    def test_refusals(self):
        interface = self.interface()
        for status, members in (
                (MISSING, dict(intf=99)), (q.BCM_E_PORT, dict(port=65)), (q.BCM_E_BADID, dict(module=-7, port=3)),
                (q.BCM_E_BADID, dict(flags=q.BCM_L3_TGID, trunk=-1)), (PARAM, dict(mac_addr='01:00:00:00:00:01')),
                (PARAM, dict(flags=q.BCM_L3_L2ONLY, vlan=0)), (UNAVAILABLE, dict(flags=q.BCM_L3_ROUTE_LABEL)),
                (UNAVAILABLE, dict(mpls_label=5)), (UNAVAILABLE, dict(failover_id=1))):
            self.assertEqual(self.egress(**dict(dict(intf=interface), **members)), (status, 0), members)
        self.assertEqual(self.info('used_nexthop'), 0)


class Groups(L3Test):
    def setUp(self):
        L3Test.setUp(self)
        self.ids = [self.object(port=number) for number in range(4)]

    def test_members(self):
        one, two, three, four = self.ids
        status, group = self.group([three, one], most=3)
        self.assertEqual((status, self.members(group), self.members(group, 1)), (0, (2, [one, three]), (2, [one])))
        self.done(q.bcm_l3_egress_multipath_add(0, group, two))
        self.assertStatus(FULL, q.bcm_l3_egress_multipath_add(0, group, two))
        self.assertStatus(MISSING, q.bcm_l3_egress_multipath_delete(0, group, four))
        self.assertStatus(BUSY, q.bcm_l3_egress_destroy(0, two))
        self.done(q.bcm_l3_egress_multipath_delete(0, group, two))
        self.done(q.bcm_l3_egress_destroy(0, two))
        found, wanted = ctypes.c_int(), (ctypes.c_int * 2)(three, one)
        self.done(library.bcm_l3_egress_multipath_find(0, 2, wanted, ctypes.byref(found)))
        self.assertEqual(found.value, group)
        self.assertStatus(MISSING, library.bcm_l3_egress_multipath_find(0, 1, wanted, ctypes.byref(found)))

    def test_refusals(self):
        group = self.group(self.ids[:1])[1]
        free = group + 1
        for status, given in (
                (MISSING, ([99],)), (PARAM, (self.ids, 0, 0, 3)), (PARAM, (self.ids, 0, 0, 1025)),
                (PARAM, (self.ids, 0, 0, 0)), (PARAM, (self.ids, q.BCM_L3_IP6)), (EXISTS, (self.ids, BY_ID, group)),
                (MISSING, (self.ids, REPLACE, free))):
            self.assertEqual(self.group(*given)[0], status, given)
            self.assertEqual(self.members(group), (1, self.ids[:1]))
        self.assertStatus(PARAM, library.bcm_l3_egress_multipath_create(0, 0, 1, None, ctypes.byref(ctypes.c_int())))
        for status, members in ((UNAVAILABLE, dict(dynamic_mode=q.BCM_L3_ECMP_DYNAMIC_MODE_OPTIMAL)),
                                (PARAM, dict(max_paths=-1))):
            record = of('egress_ecmp', **members)
            self.assertStatus(status, library.bcm_l3_egress_ecmp_create(0, pointer(record), 0, None), members)
        host = of('host', l3a_ip_addr=1, l3a_intf=group)
        self.done(q.bcm_l3_host_add(0, host))
        self.assertStatus(BUSY, q.bcm_l3_egress_multipath_destroy(0, group))
        self.done(q.bcm_l3_host_delete(0, host))
        self.done(q.bcm_l3_egress_multipath_destroy(0, group))
        self.assertStatus(MISSING, q.bcm_l3_egress_multipath_destroy(0, group))

    def test_one_group_in_three_vocabularies(self):
        ids = (ctypes.c_int * 2)(self.ids[2], self.ids[0])
        record = of('egress_ecmp', ecmp_group_flags=q.BCM_L3_ECMP_PATH_NO_SORTING, max_paths=4)
        self.done(library.bcm_l3_egress_ecmp_create(0, pointer(record), 2, ids))
        group = record.ecmp_intf
        self.assertEqual(self.members(group), (2, [self.ids[2], self.ids[0]]))
        member = of('ecmp_member', egress_if=self.ids[1])
        self.done(q.bcm_l3_ecmp_member_add(0, group, member))
        self.assertEqual(self.members(group), (3, [self.ids[2], self.ids[0], self.ids[1]]))
        got, count = of('egress_ecmp', ecmp_intf=group), ctypes.c_int()
        self.done(library.bcm_l3_ecmp_get(0, pointer(got), 0, None, ctypes.byref(count)))
        self.assertEqual((got.max_paths, count.value), (4, 3))
        self.done(q.bcm_l3_ecmp_member_delete_all(0, group))
        self.assertEqual(self.members(group), (0, []))
        self.done(q.bcm_l3_egress_ecmp_destroy(0, record))
        self.assertStatus(MISSING, q.bcm_l3_ecmp_destroy(0, group))


class Entries(L3Test):
    def test_refusals(self):
        egress = self.object()
        for status, members in ((PARAM, dict(l3a_vrf=1024)), (PARAM, dict(l3a_vrf=-1)), (MISSING, dict(l3a_intf=99)),
                                (UNAVAILABLE, dict(l3a_flags=q.BCM_L3_ROUTE_LABEL))):
            self.assertStatus(status, q.bcm_l3_host_add(0, of('host', **members)), members)
            self.assertStatus(status, q.bcm_l3_route_add(0, of('route', **members)), members)
        for mask in (0xff00ff00, 1, 0x7fffffff):
            for function in (q.bcm_l3_route_add, q.bcm_l3_route_get, q.bcm_l3_route_delete,
                             q.bcm_l3_host_delete_by_network):
                self.assertStatus(PARAM, function(0, of('route', l3a_ip_mask=mask, l3a_intf=egress)), mask)
        self.assertEqual((self.info('used_host'), self.info('used_route')), (0, 0))

    def test_a_network_is_the_same_whatever_its_other_bits(self):
        self.done(q.bcm_l3_route_add(0, of('route', l3a_subnet=0x0a010203, l3a_ip_mask=0xffff0000, l3a_lookup_class=7)))
        record = of('route', l3a_subnet=0x0a01ffff, l3a_ip_mask=0xffff0000)
        self.assertStatus(EXISTS, q.bcm_l3_route_add(0, record))
        self.done(q.bcm_l3_route_get(0, record))
        self.assertEqual(record.l3a_lookup_class, 7)
        self.done(q.bcm_l3_route_delete(0, record))
        self.assertStatus(MISSING, q.bcm_l3_route_get(0, record))

    def test_which_route_leads_to_a_host(self):
        for network, length, flags in ((0x0a000000, 8, q.BCM_L3_DEFLOCAL), (0x0a010000, 16, 0), (0, 0, 0)):
            self.done(q.bcm_l3_route_add(0, of('route', l3a_subnet=network, l3a_flags=flags,
                                               l3a_ip_mask=0xffffffff << (32 - length) & 0xffffffff)))
        found = of('route')
        for address, network in ((0x0a010203, 0x0a010000), (0x0a020304, 0x0a000000), (0x0b000000, 0)):
            self.done(q.bcm_l3_route_find(0, of('host', l3a_ip_addr=address), found))
            self.assertEqual(found.l3a_subnet, network)
        self.done(q.bcm_l3_subnet_route_find(0, of('host', l3a_ip_addr=0x0a010203), found))
        self.assertEqual(found.l3a_subnet, 0x0a000000)
        self.assertStatus(MISSING, q.bcm_l3_subnet_route_find(0, of('host', l3a_ip_addr=0x0b000000), found))
        self.assertStatus(MISSING, q.bcm_l3_route_find(0, of('host', l3a_vrf=1), found))

    def test_removed_by_network_interface_and_all(self):
        first, second = self.object(), self.object()
        for address in range(0x0a000000, 0x0a000400, 0x80):
            self.done(q.bcm_l3_host_add(0, of('host', l3a_ip_addr=address, l3a_intf=(first, second)[address >> 7 & 1])))
            self.done(q.bcm_l3_route_add(0, of('route', l3a_subnet=address, l3a_ip_mask=0xffffff80,
                                               l3a_intf=(first, second)[address >> 7 & 1])))
        self.done(q.bcm_l3_host_delete_by_network(0, of('route', l3a_subnet=0x0a000100, l3a_ip_mask=0xffffff00)))
        self.assertEqual(self.info('used_host'), 6)
        self.done(q.bcm_l3_host_delete_by_interface(0, of('host', l3a_intf=first)))
        self.done(q.bcm_l3_route_delete_by_interface(0, of('route', l3a_intf=first)))
        self.assertEqual((self.info('used_host'), self.info('used_route')), (3, 4))
        self.done(q.bcm_l3_egress_destroy(0, first))
        self.assertStatus(BUSY, q.bcm_l3_egress_destroy(0, second))
        self.done(q.bcm_l3_host_delete_all(0, None))
        self.done(q.bcm_l3_route_delete_all(0, None))
        self.done(q.bcm_l3_egress_destroy(0, second))

    def test_traversals_say_what_is_there_at_its_turn(self):
        for number in range(8):
            self.done(q.bcm_l3_host_add(0, of('host', l3a_ip_addr=number)))
        self.assertEqual(self.visited('bcm_l3_host_traverse'), (list(range(8)), 0))
        self.assertEqual(self.visited('bcm_l3_host_traverse', 0, 2, 4), ([2, 3, 4], 0))
        self.assertEqual(self.visited('bcm_l3_host_traverse', 0, 4, 2), ([], PARAM))
        self.assertEqual(self.visited('bcm_l3_host_traverse', IP6), ([], 0))
        gone = self.visited('bcm_l3_host_traverse', result=lambda index: q.bcm_l3_host_delete(
            0, of('host', l3a_ip_addr=index ^ 1)) and 0)
        self.assertEqual(gone, ([0, 2, 4, 6], 0))
        self.assertEqual(self.visited('bcm_l3_host_traverse', result=lambda index: -5), ([0], -5))
        # The unit may go meanwhile.
        self.done(library.bcm_attach(1, None, None, 0))
        self.assertEqual(self.visited('bcm_l3_host_traverse', result=lambda index: q.bcm_l3_init(0)), ([0], 0))

    def test_full(self):
        host = of('host')
        for number in range(65536):
            host.l3a_ip_addr = number * 65537 & 0xffffffff
            self.done(q.bcm_l3_host_add(0, host))
        host.l3a_ip_addr = 3
        self.assertStatus(FULL, q.bcm_l3_host_add(0, host))
        for number in range(0, 65536, 7):
            host.l3a_ip_addr = number * 65537 & 0xffffffff
            self.done(q.bcm_l3_host_delete(0, host))
        for number in range(65536):
            host.l3a_ip_addr = number * 65537 & 0xffffffff
            self.assertStatus(0 if number % 7 else MISSING, q.bcm_l3_host_find(0, host))
            host.l3a_flags = 0

    def test_virtual_routers(self):
        for status, vlan, vrid in ((PARAM, 1, 0), (PARAM, 1, 256), (MISSING, 9, 1), (0, 1, 255), (EXISTS, 1, 255)):
            self.assertStatus(status, q.bcm_l3_vrrp_add(0, vlan, vrid), (vlan, vrid))
        self.assertStatus(MISSING, q.bcm_l3_vrrp_config_delete(0, IP6, 1, 255))
        self.done(q.bcm_l3_vrrp_config_delete(0, 0, 1, 255))
        self.assertStatus(MISSING, q.bcm_l3_vrrp_delete(0, 1, 255))
        self.assertStatus(PARAM, q.bcm_l3_vrrp_config_add(0, REPLACE, 1, 1))

    def test_the_module(self):
        self.object(intf=self.interface())
        self.done(q.bcm_l3_cleanup(0))
        self.assertStatus(q.BCM_E_INIT, q.bcm_l3_route_delete_all(0, None))
        self.assertStatus(q.BCM_E_INIT, q.bcm_l3_cleanup(0))
        self.assertStatus(q.BCM_E_UNIT, q.bcm_l3_init(9))
        self.done(q.bcm_l3_init(0))
        self.assertEqual((self.info('used_intf'), self.info('used_nexthop')), (0, 0))


if __name__ == '__main__':
    unittest.main()
