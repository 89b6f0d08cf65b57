"""quorel.checked: statuses that raise, outputs as values, and what it says of wrong use."""
import pickle
import unittest

import QuorelApiNew as q
import simulator
from quorel import OUT, StatusError, array, callback, cell, checked, parameters


def error_of(*arguments):
    """(class, text) of what checked() raises, or None."""
    try:
        checked(*arguments)
    except Exception as error:
        return type(error), str(error)


class Statuses(unittest.TestCase):
    def test_a_good_status_is_nothing_and_another_raises(self):
        self.assertIsNone(checked(q.bcm_attach_check, 0))
        with self.assertRaises(StatusError) as raised:
            checked(q.bcm_port_speed_get, 0, 999, OUT)
        error = raised.exception
        self.assertEqual((error.status, error.name, error.function, error.arguments),
                         (q.BCM_E_PORT, 'BCM_E_PORT', q.bcm_port_speed_get, (0, 999, OUT)))
        self.assertEqual(str(error), 'bcm_port_speed_get(0, 999, OUT) returned BCM_E_PORT (-18)')

    def test_an_error_of_another_function_is_told_as_well(self):
        self.assertEqual(error_of(lambda port: -4, 'text'),
                         (StatusError, "<lambda>('text') returned BCM_E_PARAM (-4)"))
        self.assertEqual(error_of(lambda: -1234), (StatusError, '<lambda>() returned -1234'))
        self.assertEqual(error_of(q.soc_reg_bytes, 0, q.CMIC_LED_CTRLr), (
            StatusError, 'soc_reg_bytes(0, %d) returned 4, which is no status' % q.CMIC_LED_CTRLr))
        # Arguments as they were given, and short.
        self.assertEqual(error_of(lambda *arguments: -4, q.bcm_l2_addr_t(), array('uint8', 9), 'x' * 100, None)[1],
                         "<lambda>(<bcm_l2_addr_t>, <array of 9 uint8>, '%s...%s', None) returned BCM_E_PARAM (-4)" % (
                             'x' * 49, 'x' * 6))
        self.assertIsNone(checked(lambda *arguments: 0 * len(arguments), 1, 2))
        self.assertEqual(checked(lambda *arguments: arguments, 1, 2), (1, 2))

    def test_a_result_that_is_no_status_is_returned(self):
        self.assertEqual(checked(q.bcm_port_name, 0, 1), q.bcm_port_name(0, 1))
        self.assertEqual(checked(q.parse_integer, '17'), 17)
        self.assertEqual(checked(q.getHwMacTable, 0), q.getHwMacTable(0))

    def test_what_the_caller_passed_stays_as_it_was(self):
        arguments = (q.bcm_port_learn_set, 0, 1, 5)
        for _ in range(2):
            self.assertIsNone(checked(*arguments))
            self.assertIsNone(apply(checked, arguments))
        self.assertEqual(arguments, (q.bcm_port_learn_set, 0, 1, 5))
        self.assertEqual(error_of(q.bcm_port_learn_set, 0, 1), (
            TypeError, 'bcm_port_learn_set expected 3 arguments, got 2'))


class Outputs(simulator.SwitchTest):
    def test_scalars(self):
        cells = q.intp()
        self.assertEqual(q.bcm_port_speed_get(0, 1, cells), 0)
        self.assertEqual(checked(q.bcm_port_speed_get, 0, 1, OUT), cells.value())
        # An opaque enumeration is a number too.
        self.assertEqual(checked(q.bcm_port_medium_get, 0, 1, OUT), 2)
        self.assertEqual(checked(q.bcm_stat_get, 0, 1, 0, OUT), 0)

    def test_mac_addresses_and_text(self):
        mac = '02:00:5e:10:00:07'
        checked(q.bcm_port_pause_addr_set, 0, 1, mac)
        self.assertEqual(checked(q.bcm_port_pause_addr_get, 0, 1, OUT), mac)
        checked(q.bcm_port_pause_addr_set, 0, 1, '00:00:00:00:00:00')
        for marker in (OUT, OUT[64], OUT[99]):
            self.assertEqual(checked(q.bcm_port_phy_drv_name_get, 0, 1, marker, 64),
                             checked(q.soc_phyctrl_drv_name, 0, 1))

    def test_records_and_pointers(self):
        info = checked(q.bcm_port_info_get, 0, 1, OUT)
        self.assertIsInstance(info, q.bcm_port_info_t)
        self.assertEqual(info.speed, checked(q.bcm_port_speed_get, 0, 1, OUT))
        vlans, count = checked(q.bcm_vlan_list, 0, OUT, OUT)
        self.assertIsInstance(vlans, q.bcm_vlan_data_t)
        self.assertEqual((vlans.vlan_tag, count), (1, 1))
        checked(q.bcm_vlan_list_destroy, 0, vlans, count)

    def test_what_the_binding_adds(self):
        address = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(address, '02:00:5e:10:00:01', 1)
        address.port = 3
        checked(q.bcm_l2_addr_add, 0, address)
        self.assertEqual(checked(q.bcm_l2_addr_get, 0, '02:00:5e:10:00:01', 1).port, 3)
        self.assertEqual(error_of(q.bcm_l2_addr_get, 0, '02:00:5e:10:00:02', 1)[0], StatusError)
        members, untagged = checked(q.bcm_vlan_port_get, 0, 1)
        self.assertEqual((members[0], len(untagged)), (1, len(members)))
        # What comes back can be passed on, which the module alone does not allow.
        checked(q.bcm_vlan_port_add, 0, 1, members, untagged)
        checked(q.bcm_vlan_port_add, 0, 1, *[checked(q.parse_bcm_pbmp, 0, '1-64', OUT)] * 2)
        self.assertEqual(error_of(q.bcm_stg_list, 77)[0], StatusError)

    def test_an_array_has_as_many_values_as_were_written(self):
        trunk = checked(q.bcm_trunk_create, 0, 0, OUT)
        members = array(q.bcm_trunk_member_t, 2)
        for port, member in enumerate(members):
            member.gport = port + 3
        info = q.bcm_trunk_info_t()
        info.psc = q.BCM_TRUNK_PSC_SRCMAC
        checked(q.bcm_trunk_set, 0, trunk, info, 2, members)
        _, found, count = checked(q.bcm_trunk_get, 0, trunk, OUT, 8, OUT[8])
        self.assertEqual([member.gport for member in found], [member.gport for member in members])
        self.assertEqual(count, 2)
        # Where a number before says how many there may be, OUT has room for as many.
        for room in (8, long(8)):
            self.assertEqual(len(checked(q.bcm_trunk_get, 0, trunk, OUT, room, OUT)[1]), 2)
        self.assertEqual(len(checked(q.bcm_trunk_get, 0, trunk, OUT, 1, OUT)[1]), 1)
        self.assertEqual(checked(q.bcm_trunk_get, 0, trunk, OUT, 0, OUT)[1:], ([], 2))
        # A cell of the caller's own is no output, so nothing is known of a count.
        _, found = checked(q.bcm_trunk_local_members_get, 0, trunk, 8, OUT[8], OUT[8], cell('int'))
        self.assertEqual(len(found), 8)
        self.assertEqual(len(checked(q.bcm_trunk_local_members_get, 0, trunk, 8, OUT[8], OUT[8], OUT)[0]), 2)

    def test_an_array_of_the_callers_has_the_room(self):
        ids, values = array('bcm_stat_val_t', [q.snmpIfInOctets, q.snmpIfOutOctets]), array('uint64', 2)
        checked(q.bcm_stat_multi_get, 0, 1, 2, ids, values)
        self.assertEqual(checked(q.bcm_stat_multi_get, 0, 1, 2, ids, OUT), list(values))
        for arguments, text in [
                ((q.bcm_stat_multi_get, 0, 1, 3, ids, values),
                 'argument 4 (stat_arr): the function may use 3 elements, and the array has 2'),
                ((q.bcm_stat_multi_get, 0, 1, 2, ids, values[1:]),
                 'argument 5 (value_arr): the function may use 2 elements, and the array has 1'),
                ((q.bcm_stat_multi_get, 0, 1, 2, ids, OUT[1]),
                 'argument 5 (value_arr): the function may write 2 elements, and OUT[1] has not the room'),
                ((q.bcm_trunk_get, 0, 1, OUT, 8, array(q.bcm_trunk_member_t, 7)),
                 'argument 5 (arg5): the function may use 8 elements, and the array has 7'),
                ((q.bcm_trunk_set, 0, 1, q.bcm_trunk_info_t(), 2, cell(q.bcm_trunk_member_t)),
                 'argument 5 (member_array): the function may use 2 elements, and the array has 1'),
                ((q.bcm_port_phy_drv_name_get, 0, 1, array('char', 10), 64),
                 'argument 3 (name): the function may use 64 elements, and the array has 10'),
                ((q.bcm_cosq_sched_get, 0, OUT, array('int', 7), OUT),
                 'argument 3 (weights): the function may use 8 elements, and the array has 7'),
                ((q.bcm_pkt_memcpy, q.bcm_pkt_s(), 0, array('uint8', 'four'), 5),
                 'argument 3 (src): the function may use 5 elements, and the array has 4')]:
            self.assertEqual(error_of(*arguments), (TypeError, '%s(), %s' % (arguments[0].__name__, text)))
        # Neither is an array: a number beside it says something else.
        for arguments in ((q.bcm_ip6_mask_create, array('uint8', 16), 64),
                          (q.bcm_cosq_gport_add, 0, 1, 8, 0, cell('int')),
                          (q.bcm_stat_multi_get, 0, 1, 0, array('bcm_stat_val_t', 0), values)):
            error = error_of(*arguments)
            self.assertTrue(error is None or error[0] is StatusError, error)

    def test_wrong_use(self):
        for arguments, text in [
                ((q.bcm_port_speed_get, 0, OUT), 'bcm_port_speed_get(unit, port, speed) takes 3 arguments, not 2'),
                ((q.bcm_port_speed_get, OUT, 1, OUT),
                 'bcm_port_speed_get(), argument 1 (unit): a value that is passed in is no output'),
                ((q.bcm_port_phy_drv_name_get, 0, 1, OUT[63], 64),
                 'bcm_port_phy_drv_name_get(), argument 3 (name): the function may write 64 bytes, and OUT[63] has not '
                 'the room'),
                ((q.bcm_trunk_local_members_get, 0, 1, 8, OUT[8], OUT[7], OUT),
                 'bcm_trunk_local_members_get(), argument 5 (status_array): the function may write 8 elements, and '
                 'OUT[7] has not the room'),
                ((q.bcm_cosq_sched_get, 0, OUT, OUT[7], OUT),
                 'bcm_cosq_sched_get(), argument 3 (weights): the function may write 8 elements, and OUT[7] has not '
                 'the room'),
                ((q.bcm_l2_addr_get, 0, OUT, 1),
                 'bcm_l2_addr_get(), argument 2 (mac_addr): a value that is passed in is no output'),
                ((q.bcm_l2_traverse, 0, OUT, None),
                 'bcm_l2_traverse(), argument 2 (trav_fn): a value that is passed in is no output'),
                ((q.bcm_l2_traverse, 0, None, OUT),
                 'bcm_l2_traverse(), argument 3 (user_data): memory without a type is no output: give it an array'),
                ((q.parse_integer, OUT),
                 'parse_integer(), argument 1 (str): the room for the text is missing: OUT[size]'),
                ((q.sh_check_attached, OUT, 0),
                 'sh_check_attached(), argument 1 (pfx): the function only reads it, so it is no output'),
                ((len, OUT), 'OUT stands for outputs of the SDK\'s functions, and <built-in function len> is none'),
                ((), 'checked() takes a function and its arguments'),
                ((q.bcm_port_speed_get, 0, '1', OUT), "in method 'bcm_port_speed_get', argument 2 of type 'bcm_port_t'"),
                ((q.bcm_port_pause_addr_get, 0, 'x', OUT),
                 "bcm_port_pause_addr_get(), argument 2 (port): a value of type 'bcm_port_t' is wanted, not str"),
                ((3,), "'int' object is not callable")]:
            self.assertEqual(error_of(*arguments), (TypeError, text))
        for index, error in ((-1, ValueError), ('2', TypeError), (2 ** 70, MemoryError)):
            self.assertRaises(error, lambda: OUT[index])
        self.assertRaises(MemoryError, checked, q.bcm_trunk_local_members_get, 0, 0, 8, OUT[2 ** 30], OUT, OUT)
        self.assertEqual((repr(OUT), repr(OUT[3])), ('OUT', 'OUT[3]'))

    def test_what_the_module_says_too_shortly(self):
        for arguments, error in [
                ((q.bcm_vlan_port_add, 0, 1, 1, []),
                 (TypeError, 'bcm_vlan_port_add(), argument 3 (pbmp): Expected a list')),
                ((q.bcm_vlan_port_add, 0, 1, [], [1, 'x']),
                 (TypeError, 'bcm_vlan_port_add(), argument 4 (ubmp): Port list must contain integers')),
                ((q.bcm_l2_addr_get, 0, 'here', 1), (
                    ValueError, "bcm_l2_addr_get(), argument 2 (mac_addr): "
                    "Expected a string of the form 'AA:BB:CC:DD:EE:FF'")),
                ((q.bcm_l2_addr_register, 0, max, None), (
                    TypeError, "in method 'bcm_l2_addr_register', argument 2 of type 'bcm_l2_addr_callback_t': "
                    "callback('bcm_l2_addr_callback_t', f) makes one of a function f")),
                ((q.bcm_stat_multi_get, 0, 1, 2, [1, 2], OUT), (
                    TypeError, "in method 'bcm_stat_multi_get', argument 4 of type 'bcm_stat_val_t *': "
                    "array('bcm_stat_val_t', values) makes one of values")),
                ((q.bcm_port_speed_get, 0, 1, 0), (
                    TypeError, "in method 'bcm_port_speed_get', argument 3 of type 'int *': "
                    "OUT stands for what is written, cell('int') is memory"))]:
            self.assertEqual(error_of(*arguments), error)

        def fails(*_):
            raise TypeError('Expected a list')
        checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(mac='02:00:5e:10:00:09', vid=1, port=3))
        self.assertEqual(error_of(q.bcm_l2_traverse, 0, callback(q.bcm_l2_traverse, fails), None),
                         (TypeError, 'Expected a list'))

    def test_an_error_can_be_kept(self):
        try:
            checked(q.bcm_port_learn_set, 0, 999, 1)
        except StatusError as error:
            again = pickle.loads(pickle.dumps(error, 2))
        self.assertEqual((str(again), again.status), ('bcm_port_learn_set(0, 999, 1) returned BCM_E_PORT (-18)', -18))


class Parameters(unittest.TestCase):
    def test_they_are_told_as_the_header_has_them(self):
        self.assertEqual(parameters(q.bcm_port_phy_drv_name_get), [
            ('unit', 'int', 'value', 0), ('port', 'bcm_port_t', 'value', 0), ('name', 'char', 'text', 0),
            ('len', 'int', 'value', 0)])
        self.assertEqual(parameters(q.bcm_l2_traverse)[1:], [
            ('trav_fn', 'bcm_l2_traverse_cb', 'callback', 0), ('user_data', '', 'any_pointer', 0)])
        for other in (len, q.bcm_l2_addr_t_port_get, None, q.SWIG_PyInstanceMethod_New):
            self.assertRaises(TypeError, parameters, other)


if __name__ == '__main__':
    unittest.main()
