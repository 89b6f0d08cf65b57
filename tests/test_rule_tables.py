"""How functions of one table, and tables beside each other, go together if they are answered by rule."""
import ctypes
import unittest

import QuorelApiNew as q
from recording import library
from simulator import LOCAL_PORT, SYSTEM_PORT, SwitchTest, TRUNK, pointer

UNIT, OTHER_UNIT = 1, 2
MISSING = q.BCM_E_NOT_FOUND
translation_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_uint16,
                                        ctypes.c_uint16, ctypes.c_int, ctypes.c_void_p)
object_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)


class TableTest(SwitchTest):
    def reset(self):
        for unit in (UNIT, OTHER_UNIT):
            library.bcm_detach(unit)

    def setUp(self):
        SwitchTest.setUp(self)
        for unit in (UNIT, OTHER_UNIT):
            self.done(library.bcm_attach(unit, None, None, 0))


class Translations(TableTest):
    TABLES = 'bcm_vlan_translate', 'bcm_vlan_translate_egress', 'bcm_vlan_dtag'

    def call(self, table, action, *args):
        return getattr(library, table + '_' + action)(UNIT, *args)

    def get(self, table, port, old):
        """(new VLAN, priority), or the status."""
        new, priority = ctypes.c_uint16(), ctypes.c_int()
        status = self.call(table, 'get', port, old, ctypes.byref(new), ctypes.byref(priority))
        return status or (new.value, priority.value)

    def visited(self, react=lambda old: 0):
        """(status, [(port, old VLAN, new VLAN)]) of a traversal."""
        seen = []

        def visit(unit, port, old, new, priority, _):
            seen.append((port, old, new))
            return react(old) or 0
        return self.call(self.TABLES[0], 'traverse', translation_callback(visit), None), seen

    def fill(self, count):
        for old in range(1, count + 1):
            self.done(q.bcm_vlan_translate_add(UNIT, 5, old, 100 + old, 0))

    def test_equal_keys_in_several_tables(self):
        for number, table in enumerate(self.TABLES):
            self.done(self.call(table, 'add', 5, 10, 20 + number, number))
        self.done(self.call(self.TABLES[0], 'delete', 5, 10))
        self.assertEqual([self.get(table, 5, 10) for table in self.TABLES], [MISSING, (21, 1), (22, 2)])
        self.assertEqual(self.call(self.TABLES[0], 'delete', 5, 10), MISSING)
        self.done(self.call(self.TABLES[0], 'add', 5, 10, 40, 4))
        for _ in range(2):
            self.done(self.call(self.TABLES[2], 'delete_all'))
        self.assertEqual([self.get(table, 5, 10) for table in self.TABLES], [(40, 4), (21, 1), MISSING])

    def test_a_port_has_many_names_and_one_entry(self):
        self.done(q.bcm_vlan_translate_add(UNIT, LOCAL_PORT + 64, 10, 20, 3))
        self.assertEqual(q.bcm_vlan_translate_add(UNIT, SYSTEM_PORT + 64, 10, 21, 3), q.BCM_E_EXISTS)
        self.assertEqual(self.visited(), (0, [(64, 10, 20)]))
        for port in (65, TRUNK + 64, -2 ** 31):
            self.assertStatus(q.BCM_E_PORT, q.bcm_vlan_translate_delete(UNIT, port, 10), port)
        self.done(q.bcm_vlan_translate_delete(UNIT, 64, 10))

    def test_a_callback_visits_what_is_there_at_its_turn(self):
        self.fill(6)
        inner = []
        status, seen = self.visited(lambda old: inner.append(self.visited(lambda old: -old)))
        self.assertEqual((status, len(seen), inner), (0, 6, [(-seen[0][1], seen[:1])] * 6))
        order = [old for _, old, _ in seen]
        following = dict(zip(order[::2], order[1::2]))
        status, seen = self.visited(lambda old: q.bcm_vlan_translate_delete(UNIT, 5, following[old]))
        self.assertEqual((status, [old for _, old, _ in seen]), (0, order[::2]))
        status, seen = self.visited(lambda old: q.bcm_vlan_translate_delete(UNIT, 5, old))
        self.assertEqual((status, [old for _, old, _ in seen], self.visited()), (0, order[::2], (0, [])))

    def test_the_first_key_alone_removes_all_that_have_it(self):
        action, ports = q.bcm_vlan_action_set_t(), [7, 8, 64]
        for port in ports:
            for ether in (0x800, 0x806):
                self.done(library.bcm_vlan_port_protocol_action_add(UNIT, port, 1, ether, pointer(action)))
        for number, port in enumerate(ports):
            self.done(library.bcm_vlan_port_protocol_action_delete_all(UNIT, port))
            found = [library.bcm_vlan_port_protocol_action_get(UNIT, other, 1, 0x806, pointer(action))
                     for other in ports]
            self.assertEqual(found, [MISSING] * (number + 1) + [0] * (2 - number))


class Objects(TableTest):
    def create(self, vlan, flags=0, interface=0, unit=UNIT):
        """(status, id)"""
        egress, interface = q.bcm_l3_egress_t(), ctypes.c_int(interface)
        egress.vlan = vlan
        return (library.bcm_l3_egress_create(unit, flags, pointer(egress), ctypes.byref(interface)),
                interface.value)

    def objects(self, unit=UNIT, react=lambda interface: 0):
        """[(id, VLAN)] as a traversal visits them."""
        seen, egress = [], q.bcm_l3_egress_t()

        def visit(unit, interface, _, __):
            self.done(library.bcm_l3_egress_get(unit, interface, pointer(egress)))
            seen.append((interface, egress.vlan))
            return react(interface)
        self.status = library.bcm_l3_egress_traverse(unit, object_callback(visit), None)
        return seen

    def test_which_id_is_taken(self):
        given, replace, highest = q.BCM_L3_WITH_ID, q.BCM_L3_REPLACE, 2 ** 31 - 1
        self.assertEqual(self.create(1, given, highest), (0, highest))
        self.assertEqual([self.create(vlan, interface=77) for vlan in (2, 3)], [(0, 1), (0, 2)])
        for flags, interface, status in (
                (given, -1, q.BCM_E_PARAM), (given, -2 ** 31, q.BCM_E_PARAM), (replace, 0, q.BCM_E_PARAM),
                (replace, 9, MISSING), (given | replace, 9, MISSING), (given, highest, q.BCM_E_EXISTS)):
            self.assertEqual(self.create(9, flags, interface), (status, interface))
        self.assertEqual(self.create(7, replace, 2), (0, 2))
        self.assertEqual(self.create(8, given | replace, highest), (0, highest))
        self.assertEqual(self.objects(), [(1, 2), (2, 7), (highest, 8)])

    def test_ids_are_visited_in_order_while_objects_come_and_go(self):
        for interface in (300, 2, 65536, 255, 256, 1):
            self.create(9, q.BCM_L3_WITH_ID, interface)

        def react(interface):
            if interface == 2:
                library.bcm_l3_egress_destroy(UNIT, 255)
                self.create(3)  # the lowest free id is ahead
            if interface == 256:
                library.bcm_l3_egress_destroy(UNIT, 1)
                self.create(4)  # and this one has been passed
            return -5 if interface == 300 else 1
        self.assertEqual(self.objects(react=react), [(1, 9), (2, 9), (3, 3), (256, 9), (300, 9)])
        self.assertEqual(self.status, -5)
        self.assertEqual(self.objects(), [(1, 4), (2, 9), (3, 3), (256, 9), (300, 9), (65536, 9)])

    def test_a_detached_unit_leaves_nothing_and_others_all(self):
        for unit in (UNIT, OTHER_UNIT):
            self.assertEqual([self.create(vlan, unit=unit) for vlan in (10, 20)], [(0, 1), (0, 2)])
        library.bcm_detach(UNIT)
        self.assertStatus(q.BCM_E_UNIT, self.create(30)[0])
        self.done(library.bcm_attach(UNIT, None, None, 0))
        self.assertEqual((self.objects(), self.create(30)), ([], (0, 1)))
        self.assertEqual(self.objects(OTHER_UNIT), [(1, 10), (2, 20)])
        self.done(q.bcm_clear(OTHER_UNIT))
        self.assertEqual((self.objects(), self.objects(OTHER_UNIT)), ([(1, 30)], []))


class KeysWithinRecords(TableTest):
    def call(self, action, port, mode, server=77):
        record = q.bcm_proxy_server_t()
        record.port, record.mode, record.server = port, mode, server
        status = getattr(library, 'bcm_proxy_server_' + action)(UNIT, pointer(record))
        return status, record.server

    def test_servers_by_port_and_mode(self):
        for key, server in (((5, 0), 11), ((5, 1), 12), ((6, 0), 13), ((5, 0), 14)):  # the last one replaces
            self.assertEqual(self.call('set', *key, server=server)[0], 0)
        self.assertEqual([self.call('get', *key)[1] for key in ((5, 0), (5, 1), (6, 0))], [14, 12, 13])
        self.assertEqual([library.bcm_proxy_server_delete(UNIT, 5, 0) for _ in range(2)], [0, MISSING])
        self.assertEqual([self.call('get', *key) for key in ((5, 0), (5, 1))], [(MISSING, 77), (0, 12)])


if __name__ == '__main__':
    unittest.main()
