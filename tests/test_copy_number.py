"""Copy numbers from the SDK's control record, which the tests give a pattern of their own."""
import ctypes
import unittest

import QuorelApiNew as q
from binding import error_of
from recording import library, recording

UNITS, BLOCKS = 66, 64
BROADCAST = -17


class CoreBlocks(ctypes.Structure):
    """soc_core_blocks_t"""
    _fields_ = [('block', ctypes.c_int * 2), ('broadcast', ctypes.c_int)]


class Control(ctypes.Structure):
    """soc_control_t"""
    _fields_ = ([('block_copyno', ctypes.c_int * BLOCKS)] +
                [(name, CoreBlocks) for name in ('egq', 'ihb', 'ihp', 'iqm')])


class CopyNumbers(unittest.TestCase):
    def setUp(self):
        control = (ctypes.POINTER(Control) * UNITS).in_dll(library, 'soc_control')[0]
        before = Control.from_buffer_copy(control.contents)
        self.addCleanup(lambda: ctypes.memmove(control, ctypes.byref(before), ctypes.sizeof(Control)))
        numbers = ctypes.c_int * (ctypes.sizeof(Control) / 4)
        self.numbers = numbers.from_address(ctypes.addressof(control.contents))
        for index in range(len(self.numbers)):
            self.numbers[index] = 1000 - 7 * index

    def test_each_reads_its_own_entry(self):
        with recording() as calls:
            for block in range(BLOCKS):
                self.assertEqual(q.get_copyno_any(0, block), self.numbers[block])
            for kind, name in enumerate(('egq', 'ihb', 'ihp', 'iqm')):
                read = getattr(q, 'get_copyno_' + name)
                self.assertEqual([read(0, core) for core in (0, 1, BROADCAST)],
                                 self.numbers[BLOCKS + 3 * kind:BLOCKS + 3 * kind + 3])
                for core in (2, -1, -16, -18, 2 ** 31 - 1, -2 ** 31):
                    self.assertEqual(read(0, core), -1)
        self.assertEqual(calls(), [])

    def test_an_entry_of_minus_one_is_no_failure(self):
        self.numbers[5] = -1
        self.assertEqual(q.get_copyno_any(0, 5), -1)

    def test_what_has_no_entry_raises(self):
        for block in (-1, BLOCKS, 2 ** 31 - 1):
            self.assertEqual(error_of(q.get_copyno_any, 0, block), (
                ValueError, 'Block %d is outside the copy-number table (0 to 63)' % block))
        for name in ('any', 'egq', 'ihb', 'ihp', 'iqm'):
            read = getattr(q, 'get_copyno_' + name)
            for unit in (-1, UNITS, 2 ** 31 - 1):
                self.assertEqual(error_of(read, unit, 0), (
                    ValueError, 'Unit %d is outside the units (0 to 65)' % unit))
            self.assertEqual(error_of(read, 65, 0), (ValueError, 'Unit 65 is not attached'))


if __name__ == '__main__':
    unittest.main()
