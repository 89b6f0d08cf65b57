"""What arguments accept and what results are, where it is more than the sweeps can see."""
import struct
import unittest

import QuorelApiNew as q
from binding import error_of
from recording import recording
from type_table import pointer_of_type, retyped


class Integers(unittest.TestCase):
    def setUp(self):
        self.entry = q.bcm_l2_addr_t()

    def test_subclasses_bools_and_longs_are_numbers(self):
        class Port(int):
            pass

        class Wide(long):
            pass
        for value, stored in ((Port(9), 9), (True, 1), (False, 0), (long(5), 5), (Wide(-6), -6), (-2 ** 31, -2 ** 31),
                              (long(2 ** 31 - 1), 2 ** 31 - 1)):
            self.entry.port = value
            self.assertEqual(self.entry.port, stored)

    def test_things_that_could_become_numbers_are_not(self):
        class Index(object):
            def __int__(self):
                return 5
            __long__ = __index__ = __int__
        for value in (3.0, '5', u'5', Index(), [5], None, 5j):
            self.assertEqual(error_of(setattr, self.entry, 'port', value),
                             (TypeError, "in method 'bcm_l2_addr_t_port_set', argument 2 of type 'int'"))

    def test_unsigned_results_are_longs_above_the_largest_int_of_the_target(self):
        for value, kind in ((2 ** 31 - 1, int), (2 ** 31, long), (2 ** 32 - 1, long)):
            for given in (value, long(value)):
                self.entry.flags = given
                self.assertEqual(self.entry.flags, value)
                self.assertIs(type(self.entry.flags), kind)
        union = q.any_t()
        for value, kind in ((5, int), (2 ** 31 - 1, int), (2 ** 31, long), (2 ** 63, long), (2 ** 64 - 1, long)):
            union.u64 = value
            self.assertEqual(union.u64, value)
            self.assertIs(type(union.u64), kind)

    def test_no_error_is_left_behind_by_a_range_check(self):
        for value in (-1, long(-1), 2 ** 32, 2 ** 70, -2 ** 70):
            self.assertEqual(error_of(setattr, self.entry, 'flags', value),
                             (OverflowError, "in method 'bcm_l2_addr_t_flags_set', argument 2 of type 'uint32'"))
        union = q.any_t()
        for value in (-1, long(-1), 2 ** 64, -2 ** 70):
            self.assertEqual(error_of(setattr, union, 'u64', value)[0], OverflowError)


class Calls(unittest.TestCase):
    def test_messages_as_scripts_know_them(self):
        p = q.intp()
        cases = [(q.bcm_port_enable_get, (0, '1', p), TypeError,
                  "in method 'bcm_port_enable_get', argument 2 of type 'bcm_port_t'"),
                 (q.bcm_port_enable_get, (0, 1, q.uint32p()), TypeError,
                  "in method 'bcm_port_enable_get', argument 3 of type 'int *'"),
                 (q.bcm_port_enable_get, (0, 1), TypeError, 'bcm_port_enable_get expected 3 arguments, got 2'),
                 (q.bcm_l2_traverse, (0, len, None), TypeError,
                  "in method 'bcm_l2_traverse', argument 2 of type 'bcm_l2_traverse_cb'"),
                 (q.bcm_l2_traverse, (0, None, []), TypeError,
                  "in method 'bcm_l2_traverse', argument 3 of type 'void *'"),
                 (q.bcm_l2_key_dump, (0, u'a', None, 'b'), TypeError,
                  "in method 'bcm_l2_key_dump', argument 2 of type 'char *'"),
                 (q.bcm_l2_addr_add, (0, 7), TypeError,
                  "in method 'bcm_l2_addr_add', argument 2 of type 'bcm_l2_addr_t *'"),
                 (q.bcm_vlan_create, (0, 65536), OverflowError,
                  "in method 'bcm_vlan_create', argument 2 of type 'bcm_vlan_t'")]
        for call, arguments, exception, text in cases:
            self.assertEqual(error_of(call, *arguments), (exception, text))

    def test_keywords_are_refused(self):
        self.assertRaises(TypeError, lambda: q.bcm_vlan_create(unit=0, vid=5))

    def test_conversion_goes_left_to_right_and_stops_at_the_first_failure(self):
        looked_at = []

        class Watched(object):
            __slots__ = ('name',)

            def __init__(self, name):
                self.name = name

            @property
            def this(self):
                looked_at.append(self.name)
                raise KeyError('this')
        with recording() as calls:
            error = error_of(q.bcm_l2_match_masked_traverse, 0, 0, Watched('match'), Watched('mask'), None, None)
        self.assertEqual(error[1], "in method 'bcm_l2_match_masked_traverse', argument 3 of type 'bcm_l2_addr_t *'")
        self.assertEqual((looked_at, calls()), (['match'], []))

    def test_statuses_are_plain_ints_and_never_raised(self):
        self.assertEqual(q.bcm_port_enable_get(99, 1, q.intp()), q.BCM_E_UNIT)
        self.assertEqual(q.bcm_port_enable_get(0, 1, None), q.BCM_E_PARAM)
        self.assertIs(type(q.bcm_vlan_destroy(0, 4000)), int)

    def test_strings_are_passed_without_a_copy(self):
        text = 'prefix'
        with recording() as calls:
            q.bcm_l2_key_dump(99, text, None, text)
        _, arguments = calls()[0]
        self.assertEqual(arguments[1], arguments[3])
        # What points to characters is as good.
        pointer = pointer_of_type('_p_char', 16)
        with recording() as calls:
            q.bcm_l2_key_dump(99, pointer, None, text)
        self.assertEqual(calls()[0][1][3], arguments[3])
        self.assertEqual(calls()[0][1][1], struct.pack('P', int(pointer)))
        q.delete_uint8Array(retyped(pointer, '_p_unsigned_char'))


class AppendedOutputs(unittest.TestCase):
    def test_the_record_is_owned_and_comes_whatever_the_status(self):
        for unit in (0, 99):
            result = q.bcm_l2_addr_get(unit, '02:00:5e:77:77:77', 1)
            self.assertIs(type(result), list)
            status, entry = result
            self.assertLess(status, 0)
            self.assertIs(type(entry), q.bcm_l2_addr_t)
            self.assertTrue(entry.thisown)
            self.assertEqual(entry.port, 0)


if __name__ == '__main__':
    unittest.main()
