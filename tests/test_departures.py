"""Bindings that depart from the plain pattern, as scripts see them."""
import struct
import unittest

import QuorelApiNew as q
import binding
from binding import error_of
from console import printed
from recording import recording
from type_table import freed_after, pointer_of_type, retyped


class Departures(unittest.TestCase):
    def test_messages(self):
        type_error = "in method '%s', argument %d of type '%s'"
        null = 'invalid null reference ' + type_error
        cases = [
            (q.bcm_port_advert_set, (0, 1, None), ValueError, null, 3, 'bcm_port_abil_t'),
            (q.bcm_port_interface_set, (0, 1, None), ValueError, null, 3, 'bcm_port_if_t'),
            (q.bcm_port_ifg_set, (0, 1, 1000, None, 0), ValueError, null, 4, 'bcm_port_duplex_t'),
            (q.bcm_port_phy_reset_register, (0, 1, None, None), ValueError, null, 3, 'bcm_port_phy_reset_cb_t'),
            (q.bcm_vlan_control_vlan_set, (0, 10, None), ValueError, null, 3, 'bcm_vlan_control_vlan_t'),
            (q.bcm_cosq_service_pool_set, (0, 1, None), ValueError, null, 3, 'bcm_cosq_service_pool_t'),
            (q.bcm_field_qualify_Snap, (0, 1, None, None), ValueError, null, 3, 'bcm_field_snap_header_t'),
            (q.bcm_field_group_create, (0, None, 1), ValueError, null, 2, 'bcm_field_qset_t'),
            (q.bcm_field_qset_add, (None, 5), ValueError, null, 1, 'bcm_field_qset_t &'),
            (q.bcm_cosq_sched_set, (0, 1, 5, 0), TypeError, type_error, 3, 'int const [8]'),
            (q.bcm_cosq_port_sched_get, (0, [1], q.intp(), 5, q.intp()), TypeError, type_error, 4, 'int [8]'),
            (q.bcm_trunk_pool_set, (0, 1, 5), TypeError, type_error, 3, 'int const [256]'),
            (q.bcm_l3_ip6_prefix_map_add, (0, 'fe80::1'), TypeError, type_error, 2, 'unsigned char [16]'),
            (q.bcm_field_qualify_SrcIp6, (0, 1, 'fe80::1', None), TypeError, type_error, 3, 'unsigned char [16]'),
            (q.bcm_field_qualify_DstMac, (0, -1, '0:1:2:3:4:5', 'f:f:f:f:f:f'), OverflowError, type_error, 2,
             'bcm_field_entry_t'),
            (q.bcm_vlan_vector_flags_set, (0, 5, 0, 0), TypeError, type_error, 2,
             'unsigned int [_SHR_BITDCLSIZE((4095 - 0 + 1))]'),
            (q.bcm_petra_port_tpid_profile_alloc, (0, 5, None), TypeError, type_error, 2, 'uint16 [(2)]')]
        for call, arguments, exception, text, position, kind in cases:
            self.assertEqual(error_of(call, *arguments), (exception, text % (call.__name__, position, kind)))

    def test_appended_outputs_come_whatever_the_status(self):
        qset = q.bcm_field_qset_t()
        calls = [(q.bcm_field_entry_create, (1,)), (q.bcm_field_group_default_entry_get, (1,)),
                 (q.bcm_field_group_create, (qset, 1)), (q.bcm_field_group_create_mode, (qset, 1, 0)),
                 (q.bcm_field_group_port_create_mode, (1, qset, 1, 0)),
                 (q.bcm_field_group_ports_create_mode, ([1, 2], qset, 1, 0)),
                 (q.bcm_field_group_wlan_create_mode, (qset, 1, 0)),
                 (q.bcm_field_qualify_ExactMatchGroupClassId_get, (1, 2))]
        for call, arguments in calls:
            self.assertIn(call(99, *arguments), ([q.BCM_E_UNIT, 0], [q.BCM_E_UNAVAIL, 0]), call.__name__)
            self.assertEqual([type(value) for value in call(0, *arguments)], [int, int], call.__name__)
        for unit, expected in ((0, q.BCM_E_NONE), (99, q.BCM_E_UNIT)):
            status, config = q.bcm_port_config_get(unit)
            self.assertEqual(status, expected)
            self.assertIs(type(config), q.bcm_port_config_t)
            self.assertTrue(config.thisown)

    def test_a_vlan_is_passed_as_its_low_16_bits(self):
        for vid, passed in ((65536 + 4095, 4095), (-1, 65535), (-2 ** 31, 0), (True, 1)):
            with recording() as calls:
                q.bcm_l2_addr_get(99, '02:00:5e:00:00:01', vid)
            (_, arguments), = calls()
            self.assertEqual(struct.unpack('=H', arguments[2]), (passed,))
        for vid, exception in ((2 ** 31, OverflowError), ('1', TypeError)):
            self.assertEqual(error_of(q.bcm_l2_addr_get, 99, '02:00:5e:00:00:01', vid),
                             (exception, "in method 'bcm_l2_addr_get', argument 3 of type 'bcm_vlan_t'"))

    def test_a_pointer_given_in_and_out_comes_back(self):
        cell = q.new_intp()
        q.intp_assign(cell, 0)
        _, returned = q.bcm_trunk_create(0, 0, cell)
        self.assertIs(returned, cell)
        self.assertTrue(cell.own())
        q.bcm_trunk_destroy(0, q.intp_value(cell))
        proxy = q.intp()
        proxy.assign(0)
        _, returned = q.bcm_trunk_create(0, 0, proxy)
        self.assertEqual((returned == proxy.this, type(returned)), (True, type(cell)))
        q.bcm_trunk_destroy(0, proxy.value())
        q.delete_intp(cell)

    def test_text_functions_answer_null(self):
        functions = [function for function in binding.read()[0]
                     if any(argument.kind == 'nullable_string' for argument in function.arguments)]
        self.assertGreater(len(functions), 50)
        objects = binding.Objects()
        self.addCleanup(objects.release)
        for function in functions:
            names = function.doc[function.doc.index('(') + 1:function.doc.index(')')].split(', ')
            for place, argument in enumerate(function.arguments):
                if argument.kind != 'nullable_string':
                    continue
                values = [0 if name == 'unit' else objects.value(other, 1)
                          for name, other in zip(names, function.arguments)]
                values[place] = None
                result, _ = printed(function, *values)
                if function.result == 'string' and names[place] != 'separator':
                    self.assertIsNone(result, function.doc)
        self.assertEqual((q.parse_port(0, None, q.intp()) != 0, q.isint(None), q.parse_integer(None)), (True, 0, 0))
        self.assertEqual(error_of(q.sh_process_command, 0, None)[0], TypeError)

    def test_an_opaque_value_goes_from_a_getter_to_a_call(self):
        info = q.bcm_port_info_t()
        advert, interface = freed_after(self, info.local_advert), freed_after(self, info.interface)
        for call, value in ((q.bcm_port_advert_set, advert), (q.bcm_port_interface_set, interface)):
            with recording() as calls:
                call(99, 1, value)
            self.assertEqual([name for name, _ in calls()], [call.__name__])
        info.local_advert = freed_after(self, info.remote_advert)
        self.assertEqual(error_of(q.bcm_port_advert_set, 99, 1, interface)[0], TypeError)

    def test_records_by_value_are_copied_out(self):
        config = q.bcm_vlan_control_vlan_t()
        config.vrf, config.egress_vlan = 7, 9
        with recording() as calls:
            q.bcm_vlan_control_vlan_set(99, 10, config)
        (_, arguments), = calls()
        config.vrf = 8
        self.assertEqual(struct.unpack_from('=i', arguments[2]), (7,))

    def test_bitmaps_and_macs_go_by_value(self):
        okay = pointer_of_type('_p__shr_pbmp_t')
        with recording() as calls:
            q.bcm_port_probe(99, [1, 575], okay)
            q.bcm_port_pause_addr_get(99, 1, '1:2:3:4:5:6')
        (_, probe), (_, pause) = calls()
        self.assertEqual((probe[1][0], probe[1][-1]), ('\x02', '\x80'))
        self.assertEqual(pause[2], '\1\2\3\4\5\6')
        self.assertEqual(type(q.bcm_port_pause_addr_get(0, 1, '1:2:3:4:5:6')), int)
        q.delete_uint8Array(retyped(okay, '_p_unsigned_char'))

    def test_tuples_and_texts(self):
        self.assertEqual(q.bcm_port_pause_get(0, 1), (0, False, False))
        self.assertEqual(q.bcm_port_pause_set(0, 1, 1, 0), 0)
        self.assertEqual(q.bcm_port_pause_get(0, 1), (0, True, False))
        q.bcm_port_pause_set(0, 1, 0, 0)
        self.assertEqual(len(q.bcm_port_pause_get(0, 99)), 3)
        self.assertEqual(q.bcm_port_untagged_vlan_get(0, 1), (0, 1))
        self.assertEqual(q.bcm_vlan_port_get(0, 4000), (q.BCM_E_NOT_FOUND, None, None))
        self.assertIsNone(q.bcm_port_name(99, 1))
        self.assertIsNone(q.bcm_module_name(99, 1))

    def test_ip_addresses_are_numbers(self):
        self.assertEqual(error_of(q.bcm_ip_mask_length, -1),
                         (OverflowError, "in method 'bcm_ip_mask_length', argument 1 of type 'bcm_ip_t'"))
        host = q.bcm_l3_host_t()
        host.l3a_ip_addr = 0xc0a80001
        self.assertEqual(host.l3a_ip_addr, 0xc0a80001)
        address = q.new_uint8Array(16)
        q.uint8Array_setitem(address, 15, 1)
        host.l3a_ip6_addr = address
        self.assertEqual(q.uint8Array_getitem(host.l3a_ip6_addr, 15), 1)
        self.assertEqual(error_of(setattr, host, 'l3a_ip6_addr', None), (
            ValueError, "invalid null reference in variable 'l3a_ip6_addr' of type 'unsigned char [16]'"))
        q.delete_uint8Array(address)


if __name__ == '__main__':
    unittest.main()
