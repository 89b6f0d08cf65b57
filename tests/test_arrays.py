"""Arrays of one element type, made and used by functions."""
import ctypes
import unittest

import QuorelApiNew as q
from binding import error_of, wrong_counts


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

    def test_numbers_of_arguments(self):
        for name in ('uint8Array', 'entrydata', 'trunkMember'):
            for before, after, count in (('new_', '', 1), ('delete_', '', 1), ('', '_getitem', 2),
                                         ('', '_setitem', 3)):
                for error, expected in wrong_counts(before + name + after, count):
                    self.assertEqual(error, expected)

    def test_docstrings(self):
        for doc in ('new_uint8Array(nelements) -> uint8 *', 'uint8Array_getitem(ary, index) -> uint8',
                    'uint8Array_setitem(ary, index, value)', 'delete_uint8Array(ary)',
                    'new_entrydata(nelements) -> unsigned int *', 'entrydata_getitem(ary, index) -> unsigned int',
                    'new_trunkMember(nelements) -> bcm_trunk_member_t'):
            self.assertEqual(getattr(q, doc[:doc.index('(')]).__doc__, doc)


if __name__ == '__main__':
    unittest.main()
