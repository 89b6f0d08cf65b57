"""The tables beside the address table: stations, egress objects, MAC ports, cache, and where gports lead."""
import ctypes
import unittest

import QuorelApiNew as q
from simulator import LOCAL_PORT, MODULE_PORT, SYSTEM_PORT, SwitchTest, TRUNK, library

A, B = '02:00:5e:00:00:01', '02:00:5e:00:00:02'
object_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)


class Objects(SwitchTest):
    def stations(self, station_id, flags=0, mac=A):
        """(status, id) of adding a station."""
        station = q.bcm_l2_station_t()
        station.flags, station.dst_mac = flags | q.BCM_L2_STATION_ARP_RARP, mac
        pointer = q.intp()
        pointer.assign(station_id)
        return q.bcm_l2_station_add(0, pointer, station), pointer.value()

    def egress(self, intf, flags=0, mac=A):
        egress = q.bcm_l2_egress_t()
        egress.dest_mac, egress.dest_port = mac, 5
        pointer = q.intp()
        pointer.assign(intf)
        return q.bcm_l2_egress_create(0, flags, egress, pointer), pointer.value()

    def mac_ports(self, mac_port_id, flags=0, mac=A):
        mac_port = q.bcm_l2_mac_port_t()
        mac_port.flags, mac_port.mac, mac_port.port, mac_port.mac_port_id = flags, mac, 5, mac_port_id
        return q.bcm_l2_mac_port_create(0, mac_port), mac_port.mac_port_id

    def test_ids(self):
        for add, delete, get, record, mac, with_id, replace in [
                (self.stations, q.bcm_l2_station_delete, q.bcm_l2_station_get, q.bcm_l2_station_t, 'dst_mac',
                 q.BCM_L2_STATION_WITH_ID, q.BCM_L2_STATION_REPLACE),
                (self.egress, q.bcm_l2_egress_destroy, q.bcm_l2_egress_get, q.bcm_l2_egress_t, 'dest_mac',
                 q.BCM_L2_EGRESS_WITH_ID, q.BCM_L2_EGRESS_REPLACE),
                (self.mac_ports, q.bcm_l2_mac_port_destroy, q.bcm_l2_mac_port_get, q.bcm_l2_mac_port_t, 'mac',
                 q.BCM_L2_MAC_PORT_WITH_ID, q.BCM_L2_MAC_PORT_REPLACE)]:
            found = record()

            def mac_of(number):
                self.done(get(0, number, found))
                return getattr(found, mac)

            self.assertEqual([add(77), add(77), add(4, with_id), add(77), add(77)],
                             [(0, 1), (0, 2), (0, 4), (0, 3), (0, 5)])
            self.assertEqual(add(4, with_id, B), (q.BCM_E_EXISTS, 4))
            self.assertEqual(mac_of(4), A)
            self.assertEqual(add(4, with_id | replace, B), (0, 4))
            self.assertEqual((mac_of(4), mac_of(3)), (B, A))
            self.assertFalse(found.flags & (with_id | replace))
            self.assertEqual(add(9, replace), (q.BCM_E_NOT_FOUND, 9))
            self.done(delete(0, 2))
            self.assertStatus(q.BCM_E_NOT_FOUND, delete(0, 2))
            self.assertStatus(q.BCM_E_NOT_FOUND, get(0, 2, found))
            self.assertEqual(getattr(found, mac), A)
            self.assertEqual(add(77), (0, 2))

    def test_full_tables(self):
        auth, octets = q.bcm_l2_auth_addr_t(), (ctypes.c_uint8 * 6)(2)
        auth.src_port, auth.vlan = 5, 1

        def tunnel(number):
            octets[4:6] = divmod(number, 256)
            return library.bcm_l2_tunnel_add(0, octets, 1)

        def authorise(number):
            auth.sa_mac = '02:00:00:00:%02x:%02x' % divmod(number, 256)
            return q.bcm_l2_auth_add(0, auth)
        self.done(tunnel(0))
        self.assertStatus(q.BCM_E_EXISTS, tunnel(0))
        for add, size, empty in ((lambda number: self.stations(0)[0], self.value(q.bcm_l2_station_size_get),
                                  q.bcm_l2_station_delete_all),
                                 (lambda number: self.mac_ports(0)[0], 1024, q.bcm_l2_mac_port_destroy_all),
                                 (tunnel, 1024, q.bcm_l2_tunnel_delete_all),
                                 (authorise, 4096, q.bcm_l2_auth_delete_all)):
            self.done(empty(0))
            self.assertEqual([add(number) for number in range(size + 1)], [0] * size + [q.BCM_E_FULL])
            self.done(empty(0))
            self.done(add(0))
        self.done(authorise(0))  # replaces

    def test_traversals_while_objects_come_and_go(self):
        for add, delete, traverse in (
                (self.stations, q.bcm_l2_station_delete, library.bcm_l2_station_traverse),
                (self.egress, q.bcm_l2_egress_destroy, library.bcm_l2_egress_traverse)):
            for mac in (A, B, A, A):
                add(0, mac=mac)
            seen = []

            def visit(unit, number, *_):
                seen.append(number)
                if number == 1:
                    self.done(delete(0, 2))
                    self.assertEqual([add(0)[1], add(0)[1]], [2, 5])
                    self.done(delete(0, 3))
                return -7 if number == 5 else delete(0, number)
            self.assertEqual(traverse(0, object_callback(visit), None), -7)
            self.assertEqual(seen, [1, 2, 4, 5])
        wanted, found = q.bcm_l2_egress_t(), q.intp()
        wanted.dest_mac, wanted.dest_port = A, 5
        self.assertEqual(self.value(q.bcm_l2_egress_find, wanted), 5)
        wanted.dest_mac = B
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_l2_egress_find(0, wanted, found))

    def test_the_cache(self):
        size, cached = self.value(q.bcm_l2_cache_size_get), q.bcm_l2_cache_addr_t()
        cached.mac, cached.dest_port = A, 5
        add = q.bcm_l2_cache_set
        self.assertEqual(self.value(add, 1, cached), 1)
        self.assertEqual([self.value(add, -1, cached) for _ in range(size - 1)], [0] + list(range(2, size)))
        index = q.intp()
        index.assign(-9)
        cached.mac = B
        self.assertStatus(q.BCM_E_FULL, add(0, -1, cached, index))
        for wrong in (-2, size):
            self.assertStatus(q.BCM_E_PARAM, add(0, wrong, cached, index))
            self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_cache_get(0, wrong, cached))
        cached.dest_port = 65
        self.assertStatus(q.BCM_E_PORT, add(0, 3, cached, index))
        self.assertEqual(index.value(), -9)
        self.done(q.bcm_l2_cache_get(0, 3, cached))
        self.assertEqual((cached.mac, cached.dest_port), (A, 5))
        self.done(q.bcm_l2_cache_delete(0, 3))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_l2_cache_delete(0, 3))
        self.assertEqual(self.value(add, -1, cached), 3)

    def test_where_gports_lead(self):
        info = q.bcm_l2_gport_forward_info_t()
        for gport, leads in [(LOCAL_PORT + 64, LOCAL_PORT + 64), (SYSTEM_PORT + 3, LOCAL_PORT + 3),
                             (MODULE_PORT + 4, LOCAL_PORT + 4), (MODULE_PORT + (9 << 11) + 4,) * 2]:
            self.done(q.bcm_l2_gport_forward_info_get(0, gport, info))
            self.assertEqual(info.phy_gport, leads)
        for status, gport in ((q.BCM_E_PARAM, TRUNK + 4), (q.BCM_E_PORT, LOCAL_PORT + 65)):
            self.assertStatus(status, q.bcm_l2_gport_forward_info_get(0, gport, info))
        self.assertEqual(info.phy_gport, MODULE_PORT + (9 << 11) + 4)
        native = [q.bcm_l2_port_native(0, module, port)
                  for module, port in ((0, 5), (-1, 5), (3, 5), (3, LOCAL_PORT + 5), (0, 65))]
        self.assertEqual(native, [1, 1, 0, 1, q.BCM_E_PORT])


if __name__ == '__main__':
    unittest.main()
