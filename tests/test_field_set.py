"""Sets of field qualifiers and actions."""
import ctypes
import unittest

import QuorelApiNew as q
import type_table
from binding import error_of

ENDS = ('init', 'add', 'remove', 'test')


class Kind(object):
    """The helpers and the record of one kind of set."""

    def __init__(self, name, long_name, words, size, record):
        self.name, self.long_name, self.words, self.size, self.record = name, long_name, words, size, record
        self.init, self.add, self.remove, self.test = map(self.function, ENDS)

    def function(self, end):
        return getattr(q, 'bcm_field_%s_%s' % (self.name, end))

    def bits(self, record):
        return list((ctypes.c_uint32 * (self.size / 4)).from_address(int(record.this)))


KINDS = [Kind('qset', 'qualifier', 22, 100, q.bcm_field_qset_t),
         Kind('aset', 'action', 14, 56, q.bcm_field_aset_t)]


class FieldSets(unittest.TestCase):
    def test_elements_are_bits_of_the_words(self):
        for kind in KINDS:
            record, last = kind.record(), 32 * kind.words - 1
            for element in (0, 4, 5, 31, 32, last):
                expected = [0] * (kind.size / 4)
                expected[element / 32] = 1 << element % 32
                for _ in range(2):
                    self.assertIsNone(kind.add(record, element))
                    self.assertEqual(kind.bits(record), expected)
                self.assertEqual(kind.test(record, element), 1 << element % 32)
                self.assertEqual(kind.test(record, (element + 1) % last), 0)
                for _ in range(2):
                    self.assertIsNone(kind.remove(record, element))
                    self.assertEqual(kind.bits(record), [0] * (kind.size / 4))
                self.assertEqual(kind.test(record, element), 0)
            kind.add(record, 30)
            kind.add(record, 31)
            self.assertIs(type(kind.test(record, 30)), int)
            self.assertIs(type(kind.test(record, 31)), long)

    def test_init_clears_the_whole_record(self):
        for kind in KINDS:
            record = kind.record()
            ctypes.memset(int(record.this), 0xff, kind.size)
            self.assertIsNone(kind.init(record))
            self.assertEqual(kind.bits(record), [0] * (kind.size / 4))

    def test_every_named_element_fits(self):
        for kind, prefix, count in ((KINDS[0], 'bcmFieldQualify', q.bcmFieldQualifyCount),
                                    (KINDS[1], 'bcmFieldAction', q.bcmFieldActionCount)):
            record = kind.record()
            names = [name for name in dir(q) if name.startswith(prefix) and type(getattr(q, name)) is int
                     and 0 <= getattr(q, name) < count]
            self.assertGreater(len(names), 5)
            for name in names:
                kind.add(record, getattr(q, name))
                self.assertTrue(kind.test(record, getattr(q, name)), name)

    def test_elements_outside_are_refused_and_nothing_is_written(self):
        for kind in KINDS:
            # The set has memory on both sides that a stray write would change.
            memory = ctypes.create_string_buffer('\xa5' * 3 * kind.size)
            record = type_table.pointer_at(ctypes.addressof(memory) + kind.size,
                                           '_p_bcm_field_%s_s' % kind.name)
            for element in (-1, -31, -32, -2 ** 31, 32 * kind.words, 2 ** 31 - 1):
                for call in (kind.add, kind.remove, kind.test):
                    self.assertEqual(error_of(call, record, element), (
                        ValueError, 'Element %d is outside the %s set (0 to %d)' % (
                            element, kind.long_name, 32 * kind.words - 1)))
            self.assertEqual(memory.raw[:-1], '\xa5' * 3 * kind.size)

    def test_refused_arguments(self):
        for kind in KINDS:
            for end in ENDS:
                call, more = kind.function(end), () if end == 'init' else ('x',)
                text = "in method 'bcm_field_%s_%s', argument 1 of type 'bcm_field_%s_t &'" % (
                    kind.name, end, kind.name)
                self.assertEqual(error_of(call, q.new_uint32p(), *more), (TypeError, text))
                self.assertEqual(error_of(call, None, *more), (ValueError, 'invalid null reference ' + text))
            for end in ('add', 'remove', 'test'):
                # The test of an action is declared with a qualifier, and scripts know its message.
                action = kind.name == 'aset' and end != 'test'
                text = "in method 'bcm_field_%s_%s', argument 2 of type 'bcm_field_%s_e'" % (
                    kind.name, end, 'action' if action else 'qualify')
                for value, exception in (('x', TypeError), (2 ** 31, OverflowError)):
                    self.assertEqual(error_of(kind.function(end), kind.record(), value), (exception, text))


if __name__ == '__main__':
    unittest.main()
