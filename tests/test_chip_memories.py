"""Memories (tables), the platform's view of them, and the tables that say where ports are."""
import ctypes
import subprocess
import sys
import unittest

import QuorelApiNew as q
from chip import CORES, ChipTest, FIELDS, MEMORIES, Words
from type_table import freed_after, pointer_of_type, retyped

free = ctypes.CDLL(None).free
ALL = -1
ALL_ONES = 2 ** 640 - 1


def unsigned(pointer):
    """The number behind a `U32 *`, of which nothing else becomes known in Python. What it points to is freed."""
    address = ctypes.c_void_p(int(owned(pointer)))
    value = ctypes.cast(address, ctypes.POINTER(ctypes.c_uint32)).contents.value
    free(address)
    return value


def owned(pointer):
    """The pointer object, without the warning at its end: no class for it can be registered."""
    pointer.disown()
    return pointer


class Memories(ChipTest):
    def read(self, mem, index, copy=ALL, array=0):
        words = Words()
        self.done(q.soc_mem_array_read(0, mem, array, copy, index, words.array))
        return words.value()

    def write(self, mem, index, value, copy=ALL, array=0):
        self.done(q.soc_mem_array_write(0, mem, array, copy, index, self.array(value)))

    def entries(self, mem):
        """By the first index that is refused."""
        low, high = 0, 2 ** 20
        while high - low > 1:
            middle = (low + high) // 2
            fits = q.soc_mem_read(0, mem, ALL, middle, self.array()) == 0
            low, high = (middle, high) if fits else (low, middle)
        return high

    def test_entries_are_their_fields_and_apart_from_each_other(self):
        self.assertEqual(sorted(MEMORIES), range(len(MEMORIES)))
        for mem in MEMORIES:
            last = self.entries(mem) - 1
            before = self.read(mem, last - 1)
            self.write(mem, last, ALL_ONES)
            full = self.read(mem, last)
            self.assertTrue(full, MEMORIES[mem])
            self.assertEqual(self.read(mem, last - 1), before)
            lengths = 0
            for field in FIELDS.values():
                value = q.soc_mem_field32_get(0, mem, self.array(full), field)
                self.assertEqual(value & value + 1, 0)
                lengths += bin(value).count('1')
            self.assertLessEqual(lengths, bin(full).count('1'))
            for index in (-1, last + 1, 2 ** 31 - 1):
                self.assertStatus(q.SOC_E_PARAM, q.soc_mem_read(0, mem, ALL, index, self.array()))

    def test_copies_and_arrays(self):
        mem, counters = q.IHP_MAC_TABLEm, q.STC_COUNTERm
        self.write(mem, 5, 0x1234, 0)
        self.write(mem, 5, 0x5678, 1)
        self.assertEqual([self.read(mem, 5, copy) for copy in (0, 1, ALL)], [0x1234, 0x5678, 0x1234])
        self.done(q.soc_mem_write(0, mem, q.get_copyno_ihp(0, -17), 5, self.array(9)))
        self.assertEqual([self.read(mem, 5, copy) for copy in range(CORES)], [9, 9])
        self.done(q.soc_mem_write(0, mem, q.get_copyno_ihp(0, 1), 5, self.array(8)))
        self.assertEqual([self.read(mem, 5, copy) for copy in (0, 1, -17)], [9, 8, 9])
        for array in range(16):
            self.write(counters, 2047, array + 1, 0, array)
        self.assertEqual([self.read(counters, 2047, 0, array) for array in range(16)], range(1, 17))
        for copy, array in ((1, 0), (-2, 0), (47, 0), (0, 16), (0, 2 ** 32 - 1)):
            self.assertStatus(q.SOC_E_PARAM, q.soc_mem_array_read(0, counters, array, copy, 0, self.array()))
        self.assertStatus(q.SOC_E_PARAM, q.soc_mem_write(0, mem, 0, 5, None))
        for number in (-1, len(MEMORIES)):
            self.assertStatus(q.SOC_E_PARAM, q.soc_mem_read(0, number, 0, 0, self.array()))
        self.assertStatus(q.SOC_E_UNIT, q.soc_mem_read(1, mem, 0, 0, self.array()))

    def test_where_ports_are(self):
        core, tm_port, interface = q.intp(), q.uintp(), q.uintp()
        seen = set()
        for port in range(65):
            self.done(q.soc_port_sw_db_core_get(0, port, core))
            expected = core.value()
            self.done(q.soc_port_sw_db_local_to_tm_port_get(0, port, tm_port, core))
            self.assertEqual((core.value(), expected), (int(port > 32), int(port > 32)))
            self.done(q.soc_jer_egr_port2egress_offset(0, core.value(), tm_port.value(), interface))
            seen.add((core.value(), interface.value()))
        self.assertEqual(len(seen), 65)
        for port in (-1, 65):
            self.assertStatus(q.SOC_E_PORT, q.soc_port_sw_db_core_get(0, port, core))
        self.write(q.EGQ_TM_PORT_TO_INTERFACEm, 7, 0x1c8, 1)
        self.done(q.soc_jer_egr_port2egress_offset(0, 1, 7, interface))
        self.assertEqual(interface.value(), 0xc8)
        self.write(q.EGQ_TM_PORT_TO_INTERFACEm, 7, 0, 1)
        self.assertStatus(q.SOC_E_NOT_FOUND, q.soc_jer_egr_port2egress_offset(0, 1, 7, interface))
        for where in ((0, 256), (2, 1), (-1, 1), (0, 2 ** 32 - 1)):
            status = q.soc_jer_egr_port2egress_offset(0, where[0], where[1], interface)
            self.assertStatus(q.SOC_E_PARAM, status, where)


@unittest.skipUnless(hasattr(q, 'findChipMemory'), 'the platform is not bound')
class PlatformView(ChipTest):
    def test_base_addresses(self):
        bases = [unsigned(q.tableBaseAddr(0, mem, 0)) for mem in MEMORIES]
        self.assertEqual(len(set(bases)), len(MEMORIES))
        arrays = [unsigned(q.tableBaseAddr(0, q.STC_COUNTERm, array)) for array in range(17)]
        self.assertEqual(len(set(arrays)), 17)
        self.assertEqual(arrays[16], 0)
        for unit, mem in ((1, 0), (0, -1), (0, len(MEMORIES))):
            self.assertEqual(unsigned(q.tableBaseAddr(unit, mem, 0)), 0)
        array = freed_after(self, q.tableBaseAddr(0, q.STC_COUNTERm, 0))
        bus_address = q.sbusFormatAddress(0, array)
        self.assertEqual(unsigned(bus_address), (arrays[0] << 6 | arrays[0] >> 26) & 0xffffffff)

    def test_which_of_the_two_finds(self):
        base = unsigned(q.tableBaseAddr(0, q.IHB_PORT_INFOm, 0))
        if base >= 2 ** 31:
            base -= 2 ** 32
        size = self.zeros('_p_U32', 4)
        address = self.zeros('_p_Hardware__ChipAddress', 8)
        for found in (q.findChipMemory(0, q.IHB_PORT_INFOm, base),
                      q.findChipMemory(0, q.IHB_PORT_INFOm, address, size)):
            self.assertIn("'Hardware::ChipMemory::Ptr *'", repr(owned(found)))
        # What a counted pointer holds is its object, or null.
        memory = self.pointee(q.findChipMemory(0, q.IHB_PORT_INFOm, base))
        self.assertTrue(memory)
        words = ctypes.cast(int(address), ctypes.POINTER(ctypes.c_uint32))
        for entry, size_bytes, is_there in ((0, 65 * 8, True), (64, 8, True), (0, 65 * 8 + 1, False),
                                            (64, 9, False), (65, 0, False), (2 ** 32 - 1, 0, False)):
            words[0], words[1] = base & 0xffffffff, entry
            ctypes.c_uint32.from_address(int(size)).value = size_bytes
            found = self.pointee(q.findChipMemory(0, q.IHB_PORT_INFOm, address, size))
            self.assertEqual(bool(found), is_there, (entry, size_bytes))
        for args in ((0, q.IHB_PORT_INFOm, base + 1), (0, q.IHB_FEC_ENTRYm, base), (1, 0, base),
                     (0, -1, base)):
            self.assertFalse(self.pointee(q.findChipMemory(*args)), args)

    def zeros(self, mangled_name, size):
        """A pointer object of that type to zero bytes, which are freed after the test."""
        pointer = pointer_of_type(mangled_name, size)
        self.addCleanup(lambda: q.delete_uint8Array(retyped(pointer, '_p_unsigned_char')))
        return pointer

    def pointee(self, pointer):
        return ctypes.c_void_p.from_address(int(owned(pointer))).value

    def test_what_neither_of_the_two_takes(self):
        size = self.zeros('_p_U32', 4)
        address = self.zeros('_p_Hardware__ChipAddress', 8)
        message = ("Wrong number or type of arguments for overloaded function 'findChipMemory'.\n"
                   "  Possible C/C++ prototypes are:\n"
                   "    QuorelApi::findChipMemory(int,int,Hardware::ChipAddress,U32)\n"
                   "    QuorelApi::findChipMemory(int,int,int)\n")
        for args in ((0, 1), (0, 1, 'x'), (0, 1, 2 ** 31), (0, 1, size, size), (0, 1, address, 4),
                     (0, 1, 2, 3, 4)):
            with self.assertRaises(NotImplementedError) as raised:
                q.findChipMemory(*args)
            self.assertEqual(str(raised.exception), message)
        for args, position, kind in (((None, size), 3, 'Hardware::ChipAddress'), ((address, None), 4, 'U32')):
            with self.assertRaises(ValueError) as raised:
                q.findChipMemory(0, 1, *args)
            self.assertEqual(str(raised.exception), "invalid null reference in method 'findChipMemory', "
                             "argument %d of type '%s'" % (position, kind))

    def test_all_registers_as_text(self):
        script = ('import QuorelApiNew as q\n'
                  'from type_table import pointer_of_type, retyped\n'
                  'q.soc_reg_field32_modify(0, q.NIF_PORT_CTRLr, 9, %d, 40000)\n'
                  'unit = pointer_of_type("_p_uint", 4)\n'
                  'q.printAllRegisters(unit)\n'
                  'q.delete_uint8Array(retyped(unit, "_p_unsigned_char"))\n' % FIELDS['SPEEDf'])
        lines = subprocess.check_output([sys.executable, '-c', script]).splitlines()
        self.assertEqual(len(lines), len(self.instances()))
        self.assertIn('NIF_PORT_CTRL.9=0x009c4003 RX_ENABLE=1,TX_ENABLE=1,SPEED=9c40',
                      [line.split(' ', 1)[1] for line in lines])


if __name__ == '__main__':
    unittest.main()
