"""Single-value pointer classes and arrays."""
import ctypes
import unittest

import QuorelApiNew as q
from binding import error_of, wrong_counts


class PointerClasses(unittest.TestCase):
    def test_values_and_their_limits(self):
        cases = [('intp', 'int', -2 ** 31, 2 ** 31 - 1), ('uintp', 'unsigned int', 0, 2 ** 32 - 1),
                 ('uint16p', 'unsigned short', 0, 65535), ('uint32p', 'uint32', 0, 2 ** 32 - 1),
                 ('uint64p', 'uint64', 0, 2 ** 64 - 1)]
        for name, element, least, greatest in cases:
            pointer = getattr(q, name)()
            text = "in method '%s_assign', argument 2 of type '%s'" % (name, element)
            for value in (least, greatest, 7, 2 ** 15):
                pointer.assign(value)
                self.assertEqual(pointer.value(), value)
                self.assertIs(type(pointer.value()), int if value < 2 ** 31 else long)
            for value, exception in ((least - 1, OverflowError), (greatest + 1, OverflowError), (1.0, TypeError)):
                self.assertEqual(error_of(pointer.assign, value), (exception, text))
            self.assertEqual(pointer.value(), 2 ** 15)

    def test_cast_and_frompointer_alias_the_element(self):
        pointer = q.uint32p()
        pointer.assign(5)
        alias = q.uint32p.frompointer(pointer.cast())
        self.assertIs(type(alias), q.uint32p)
        alias.assign(6)
        self.assertEqual(pointer.value(), 6)
        self.assertFalse(alias.thisown or pointer.cast().own())
        self.assertIsNone(q.uint32p_frompointer(None))
        self.assertEqual(error_of(q.intp_frompointer, q.uint32p()),
                         (TypeError, "in method 'intp_frompointer', argument 1 of type 'int *'"))

    def test_only_equivalent_classes_are_accepted_directly(self):
        accepted = [(q.bcm_port_enable_get, q.intp), (q.bcm_vlan_default_get, q.uint16p)]
        for call, make in accepted:
            arguments = (0, 1) if call is q.bcm_port_enable_get else (0,)
            pointer = make()
            self.assertEqual(call(*arguments + (pointer,)), 0)
            self.assertEqual(call(*arguments + (pointer.cast(),)), 0)
        entry = q.bcm_l2_addr_t()
        for refused, cast in ((q.uint32p(), 'uint32 *'), (q.uint64p(), 'uint64 *')):
            call = q.bcm_l2_stat_get32 if cast == 'uint32 *' else q.bcm_l2_stat_get
            text = "in method '%s', argument 4 of type '%s'" % (call.__name__, cast)
            self.assertEqual(error_of(call, 0, entry, 0, refused), (TypeError, text))
            self.assertEqual(error_of(call, 0, entry, 0, refused.cast()), None)
        self.assertIsNone(error_of(q.bcm_l2_stat_get32, 0, entry, 0, q.uintp()))

    def test_null_and_foreign_selves(self):
        self.assertEqual(error_of(q.intp_value, None),
                         (ValueError, "invalid null reference in method 'intp_value', argument 1 of type 'intp *'"))
        self.assertIsNone(q.intp_assign(None, 5))
        self.assertEqual(error_of(q.delete_intp, q.uintp()),
                         (TypeError, "in method 'delete_intp', argument 1 of type 'intp *'"))
        self.assertEqual(error_of(q.new_intp, 1), (TypeError, 'new_intp expected 0 arguments, got 1'))

    def test_elements_that_are_records_hold_copies(self):
        pointer, record = q.appl_dcmn_init_param_tp(), q.appl_dcmn_init_param_t()
        record.base_modid = 7
        pointer.assign(record)
        record.base_modid = 8
        copy = pointer.value()
        self.assertIs(type(copy), q.appl_dcmn_init_param_t)
        self.assertTrue(copy.thisown)
        copy.base_modid += 1
        self.assertEqual((copy.base_modid, pointer.value().base_modid), (8, 7))
        pointer.cast().base_modid = 9
        self.assertEqual(pointer.value().base_modid, 9)
        where = "in method 'appl_dcmn_init_param_tp_assign', argument 2 of type 'appl_dcmn_init_param_t'"
        self.assertEqual(error_of(pointer.assign, None), (ValueError, 'invalid null reference ' + where))
        self.assertEqual(error_of(pointer.assign, q.intp()), (TypeError, where))
        self.assertEqual(pointer.value().base_modid, 9)
        del pointer
        self.assertEqual(copy.base_modid, 8)

    def test_numbers_of_arguments(self):
        pointer_class = [('new_', '', 0), ('delete_', '', 1), ('', '_assign', 2), ('', '_value', 1),
                         ('', '_cast', 1), ('', '_frompointer', 1), ('', '_swigregister', 1)]
        array = [('new_', '', 1), ('delete_', '', 1), ('', '_getitem', 2), ('', '_setitem', 3)]
        for names, methods in ((('intp', 'uint64p', 'appl_dcmn_init_param_tp'), pointer_class),
                               (('uint8Array', 'entrydata', 'trunkMember'), array)):
            for name in names:
                for before, after, count in methods:
                    for error, expected in wrong_counts(before + name + after, count):
                        self.assertEqual(error, expected)

    def test_docstrings(self):
        docs = ['new_intp() -> intp', 'delete_intp(self)', 'intp_assign(self, value)', 'intp_value(self) -> int',
                'intp_cast(self) -> int *', 'intp_frompointer(t) -> intp', 'new_uint8Array(nelements) -> uint8 *',
                'uint8Array_getitem(ary, index) -> uint8', 'uint8Array_setitem(ary, index, value)',
                'delete_uint8Array(ary)', 'new_entrydata(nelements) -> unsigned int *',
                'entrydata_getitem(ary, index) -> unsigned int',
                'new_trunkMember(nelements) -> bcm_trunk_member_t']
        for doc in docs:
            self.assertEqual(getattr(q, doc[:doc.index('(')]).__doc__, doc)
        self.assertEqual(q.intp_swigregister.__doc__, '')


class Arrays(unittest.TestCase):
    def test_elements(self):
        for name, size, greatest in (('uint8Array', 1, 255), ('entrydata', 4, 2 ** 32 - 1)):
            new, delete = getattr(q, 'new_' + name), getattr(q, 'delete_' + name)
            get, put = getattr(q, name + '_getitem'), getattr(q, name + '_setitem')
            array = new(4)
            self.assertFalse(array.own())
            self.assertEqual([get(array, i) for i in range(4)], [0] * 4)
            put(array, 2, greatest)
            put(array, 1, 1)
            self.assertEqual([get(array, i) for i in range(4)], [0, 1, greatest, 0])
            self.assertEqual(ctypes.string_at(int(array) + 2 * size, size), '\xff' * size)
            self.assertEqual(error_of(put, array, 0, greatest + 1)[0], OverflowError)
            self.assertIsNone(delete(array))

    def test_indices_are_used_as_given(self):
        array = q.new_entrydata(3)
        inner = q.uintp_cast(q.uintp_frompointer(array))
        q.entrydata_setitem(array, 2, 9)
        last = q.any_t()
        self.assertEqual(q.entrydata_getitem(inner, 2), 9)
        ring = q.bcm_l2_ring_t()
        q.entrydata_setitem(ring.vlan_vector, 5, 11)
        self.assertEqual(q.entrydata_getitem(ring.vlan_vector, 5), 11)
        self.assertEqual(last.u64, 0)
        q.delete_entrydata(array)

    def test_refusals(self):
        array = q.new_uint8Array(1)
        cases = [(q.new_uint8Array, (1.0,), "in method 'new_uint8Array', argument 1 of type 'int'"),
                 (q.delete_uint8Array, (q.new_intp(),), "in method 'delete_uint8Array', argument 1 of type 'uint8 *'"),
                 (q.uint8Array_setitem, (array, 0, 'x'), "in method 'uint8Array_setitem', argument 3 of type 'uint8'"),
                 (q.uint8Array_getitem, (array, 'x'), "in method 'uint8Array_getitem', argument 2 of type 'int'")]
        for call, arguments, text in cases:
            self.assertEqual(error_of(call, *arguments), (TypeError, text))
        # On every host, what 32 bits cannot hold.
        for new, counts in ((q.new_entrydata, (2 ** 29, 2 ** 30 - 1, 2 ** 31 - 1, -1)),
                            (q.new_trunkMember, (2 ** 31 - 1, -1)), (q.new_uint8Array, (-2 ** 31, -1))):
            for count in counts:
                self.assertEqual(error_of(new, count), (MemoryError, ''))
        for call, arguments in ((q.uint8Array_getitem, (None, 0)), (q.uint8Array_setitem, (None, 0, 1))):
            self.assertEqual(error_of(call, *arguments)[0], ValueError)
        self.assertIsNone(q.delete_uint8Array(None))
        q.delete_uint8Array(array)


if __name__ == '__main__':
    unittest.main()
