"""The hardware shadow, and the policy of access to tables."""
import ctypes
import re
import unittest

import QuorelApiNew as q
from binding import error_of
from chip import Words
from console import printed
from platform_stand_in import PlatformTest, carried
from recording import library
from type_table import pointer_at

REGISTER, WIDE = q.EGQ_AGEING_CTRLr, q.EGQ_FIELD_SELECT_MAPr
TABLE = q.IHB_PORT_INFOm
ALL = -1


class Bus(ctypes.Structure):
    """ibde_t"""
    read_call = ctypes.CFUNCTYPE(ctypes.c_uint32, ctypes.c_int, ctypes.c_uint32)
    _fields_ = [('name', ctypes.c_char_p), ('read', read_call), ('write', ctypes.c_void_p),
                ('pci_conf_read', read_call), ('pci_conf_write', ctypes.c_void_p)]


def low_32_signed(number):
    return ctypes.c_int32(number).value


class ShadowTest(PlatformTest):
    def shadow(self, unit=0):
        """The address of the unit's shadow, or None."""
        pointer = q.getHwShadow(unit)
        self.assertTrue(pointer.own())
        self.assertIn("'Hardware::HardwareShadow::Ptr *'", repr(pointer))
        return ctypes.c_void_p.from_address(int(pointer)).value

    def block(self, reg, core=0, offset=0, words=1, unit=0):
        """[words] of a register in the shadow, or a status."""
        number = q.soc_reg_addr(0, reg, core, 0) >> 26
        data, size = Words(2 ** 640 - 1), q.new_uint32p()
        q.uint32p_assign(size, 4 * words)
        status = q.getRegisterBlockFromShadow(unit, reg, number, offset, data.array, size)
        count = q.uint32p_value(size) // 4
        q.delete_uint32p(size)
        self.assertLessEqual(count, max(words, 1))
        self.assertEqual(data.value() >> 32 * count, 2 ** (640 - 32 * count) - 1)
        self.assertEqual(status == q.SOC_E_NONE, count > 0)
        return [data.value() >> 32 * word & 0xffffffff for word in range(count)] or status

    def sync(self, update, dump=False, unit=0):
        return carried(q.syncRegisters(self.number(unit & 0xffffffff, '_p_uint'), dump, update))

    def write(self, mem, index, value, array=0):
        self.done(q.soc_mem_array_write(0, mem, array, ALL, index, self.array(value)))

    def read(self, mem, index, array=0):
        words = Words()
        self.done(q.soc_mem_array_read(0, mem, array, ALL, index, words.array))
        return words.value()


class Shadow(ShadowTest):
    def test_one_per_unit(self):
        first = self.shadow()
        self.assertTrue(first)
        self.assertEqual(self.shadow(), first)
        self.assertNotEqual(self.shadow(15), first)
        self.assertEqual([self.shadow(unit) for unit in (-1, 16, 2 ** 31 - 1)], [None] * 3)

    def test_registers_as_they_were_written(self):
        self.set(REGISTER, 0x101)
        self.assertEqual(self.block(REGISTER), q.SOC_E_NOT_FOUND)
        self.shadow()
        self.assertEqual(self.block(REGISTER), q.SOC_E_NOT_FOUND)
        self.set(REGISTER, 0x102, port=1)
        self.assertEqual((self.block(REGISTER, 0), self.block(REGISTER, 1)), (q.SOC_E_NOT_FOUND, [0x102]))
        # All cores at once; by raw address; read-only bits as they are in the chip.
        self.set(REGISTER, 0x103)
        self.assertEqual((self.block(REGISTER, 0), self.block(REGISTER, 1)), ([0x103], [0x103]))
        self.done(q.belvok_write_low(0, q.soc_reg_addr(0, REGISTER, 0, 0), 0x104))
        self.assertEqual(self.block(REGISTER), [0x104])
        self.set(q.CMIC_DEVICE_IDr, 0)
        self.assertEqual(self.block(q.CMIC_DEVICE_IDr), [self.get(q.CMIC_DEVICE_IDr)])

    def test_blocks_of_words(self):
        self.shadow()
        for index in (0, 1, 3):
            self.set(WIDE, 0x44444444333333332222222211111111 + index, index=index)
        mask = self.mask(WIDE)
        words = [(0x44444444333333332222222211111111 + index & mask) >> 32 * word & 0xffffffff
                 for index in range(4) for word in range(4)]
        # Up to the element that was not written; where it was; and never more than there is room for.
        self.assertEqual(self.block(WIDE, words=20), words[:8])
        self.assertEqual(self.block(WIDE, offset=12, words=20), words[12:])
        self.assertEqual(self.block(WIDE, offset=2, words=3), words[2:5])
        self.assertEqual(self.block(WIDE, words=0), words[:1])
        self.assertEqual(self.block(WIDE, offset=8), q.SOC_E_NOT_FOUND)
        self.set(q.NIF_PORT_CTRLr, 1, port=2)
        self.assertEqual(self.block(q.NIF_PORT_CTRLr, offset=2 << 16), [self.get(q.NIF_PORT_CTRLr, 2)])

    def test_blocks_that_cannot_be(self):
        self.shadow()
        for status, changes in ((q.SOC_E_PARAM, {'offset': 16}), (q.SOC_E_PARAM, {'offset': -1}),
                                (q.SOC_E_PARAM, {'offset': 2 ** 31 - 1}), (q.SOC_E_UNIT, {'unit': -1}),
                                (q.SOC_E_UNIT, {'unit': 16}), (q.SOC_E_PARAM, {'unit': 2})):
            self.assertStatus(status, self.block(WIDE, **changes), changes)
        size = self.number(4)
        for reg, number in ((-1, 0), (10 ** 6, 0), (REGISTER, -1), (REGISTER, 63), (REGISTER, 2 ** 31 - 1)):
            self.assertStatus(q.SOC_E_PARAM, q.getRegisterBlockFromShadow(0, reg, number, 0, size, size))
        self.assertStatus(q.SOC_E_PARAM, q.getRegisterBlockFromShadow(0, REGISTER, 0, 0, None, None))
        self.assertStatus(q.SOC_E_PARAM, q.getRegisterBlockFromShadow(0, REGISTER, 2, 0, None, size))

    def test_synchronising(self):
        self.assertEqual(self.sync(True), 0)
        self.shadow()
        self.assertEqual(self.sync(False), 0)
        self.set(REGISTER, 0x105)
        self.set(WIDE, 5, index=2)
        self.done(q.soc_init(0))
        self.assertEqual(self.block(REGISTER), [0x105])
        # The reset changed both in both cores.
        count, text = printed(self.sync, False, True)
        self.assertEqual(count, 4)
        self.assertEqual(sorted(re.findall(r' (\S+): shadow', text)),
                         ['EGQ_AGEING_CTRL.0', 'EGQ_AGEING_CTRL.1', 'EGQ_FIELD_SELECT_MAP[2].0',
                          'EGQ_FIELD_SELECT_MAP[2].1'])
        self.assertIn('shadow 0x00000105, hardware 0x%08x\n' % self.get(REGISTER), text)
        self.assertEqual(self.sync(False), 4)
        everything = self.sync(True)
        self.assertGreater(everything, 1000)
        self.assertEqual((self.sync(True), self.block(REGISTER)), (0, [self.get(REGISTER)]))
        self.assertEqual([self.sync(True, unit=unit) for unit in (1, 16, -1)], [0] * 3)

    def test_the_bus_that_is_configured(self):
        base = q.soc_reg_addr(0, REGISTER, 0, 0)
        reads = []

        def read(dev, address):
            reads.append(dev)
            return 0xbeef if address == base else 0x105
        read_config = Bus.read_call(lambda dev, offset: 0x1000 * dev + offset)
        bus = Bus('test', Bus.read_call(read), None, read_config, None)
        self.addCleanup(q.configureHwShadow, None)
        q.configureHwShadow(pointer_at(ctypes.addressof(bus), '_p_ibde_s'))
        q.addSandDevice(0, 2, 0, 0)
        self.set(REGISTER, 0x105)
        self.assertEqual((self.sync(False), reads), (1, [0, 0]))
        q.configureHwPciConfigShadow()
        self.assertEqual([library.platform_pci_config(unit, offset) for unit, offset in
                          ((0, 0), (0, 252), (1, 8), (0, 256), (2, 0), (-1, 0))], [0, 252, 0x1008, 0, 0, 0])
        q.configureHwShadow(None)
        self.assertEqual(self.sync(False), 0)
        q.configureHwPciConfigShadow()
        self.assertEqual([library.platform_pci_config(0, offset) for offset in (0, 8)],
                         [carried(q.getDevId(0)) << 16, 0x02800000 | carried(q.getDevRev(0))])

    def test_initialisation(self):
        self.assertTrue(q.initShadowDestroyed(0))
        for is_diags in (False, True):
            self.set(REGISTER, 0x106)
            q.setupShadowForHwInit(0, is_diags)
            self.assertFalse(q.initShadowDestroyed(0))
            self.assertEqual(self.block(REGISTER), q.SOC_E_NOT_FOUND if is_diags else [0x106])
            self.set(REGISTER, 0x107)
            self.assertEqual(self.block(REGISTER), [0x107])
            q.teardownShadowForHwInit(0)
            self.assertTrue(q.initShadowDestroyed(0))
            self.assertEqual(self.block(REGISTER), q.SOC_E_NOT_FOUND)
        # Only what initialisation began ends with it.
        self.shadow()
        self.set(REGISTER, 0x108)
        q.teardownShadowForHwInit(0)
        self.assertEqual(self.block(REGISTER), [0x108])
        for unit in (16, 2 ** 32 - 1):
            q.setupShadowForHwInit(unit, False)
            q.teardownShadowForHwInit(unit)
            self.assertTrue(q.initShadowDestroyed(unit))

    def test_messages(self):
        for call, args, error in (
                (q.configureHwShadow, (1,), "in method 'configureHwShadow', argument 1 of type 'ibde_t *'"),
                (q.tableNotManagedBySdk, (1,),
                 "in method 'tableNotManagedBySdk', argument 1 of type 'Hardware::ChipMemory const *'")):
            self.assertEqual(error_of(call, *args), (TypeError, error))
        text = "invalid null reference in method 'syncRegisters', argument 1 of type 'uint'"
        self.assertEqual(error_of(q.syncRegisters, None, True, True), (ValueError, text))


class DynamicShadow(ShadowTest):
    def memory(self, mem, array=0):
        """The arguments that name a memory."""
        return 0, mem, array, low_32_signed(carried(q.tableBaseAddr(0, mem, array)))

    def test_reads_come_from_the_shadow(self):
        memory = self.memory(q.STC_COUNTERm, 3)
        self.assertFalse(q.dynamicShadowEnable(*memory))
        q.dynamicShadowEnableIs(*(memory + (True,)))
        self.assertTrue(q.dynamicShadowEnable(*memory))
        self.assertFalse(q.dynamicShadowEnable(*self.memory(q.STC_COUNTERm, 2)))
        for array in (2, 3):
            self.write(q.STC_COUNTERm, 2047, 99, array)
        self.done(q.soc_init(0))
        self.assertEqual([self.read(q.STC_COUNTERm, 2047, array) for array in (2, 3)], [0, 99])
        self.assertEqual([self.read(q.STC_COUNTERm, index, 3) for index in (0, 2046)], [0, 0])
        q.forceReadFromHardwareIs(True)
        self.assertEqual((q.forceReadFromHardware(), self.read(q.STC_COUNTERm, 2047, 3)), (True, 0))
        q.forceReadFromHardwareIs(False)
        self.assertEqual((q.forceReadFromHardware(), self.read(q.STC_COUNTERm, 2047, 3)), (False, 99))
        q.dynamicShadowEnableIs(*(memory + (False,)))
        self.assertEqual((q.dynamicShadowEnable(*memory), self.read(q.STC_COUNTERm, 2047, 3)), (False, 0))

    def test_memories_that_are_not_there(self):
        unit, mem, array, base = self.memory(TABLE)
        for other in ((1, mem, array, base), (unit, mem + 1, array, base), (unit, mem, 1, base),
                      (unit, mem, array, base + 1), (-1, -1, -1, -1), (0, 10 ** 6, 0, 0)):
            q.dynamicShadowEnableIs(*(other + (True,)))
            self.assertFalse(q.dynamicShadowEnable(*other))


class TableAccess(ShadowTest):
    def memory_object(self, mem, call):
        """call(a chip memory), which lives as long"""
        found = q.findChipMemory(0, mem, low_32_signed(carried(q.tableBaseAddr(0, mem, 0))))
        found.disown()
        return call(pointer_at(ctypes.c_void_p.from_address(int(found)).value, '_p_Hardware__ChipMemory'))

    def test_tables_of_the_chip_and_of_the_sdk(self):
        self.assertFalse(self.memory_object(TABLE, q.tableNotManagedBySdk))
        self.assertTrue(self.memory_object(q.STC_COUNTERm, q.tableNotManagedBySdk))
        self.assertFalse(q.tableNotManagedBySdk(None))

    def raw(self, mem, index, word, value):
        """Status of a write at the raw address of a word, and what is read there then."""
        first = carried(q.tableBaseAddr(0, mem, 0)) + 2 * index + word
        return q.belvok_write_low(0, first, value), q.belvok_read_low(0, first)

    def test_raw_access_needs_leave(self):
        denied = q.BCM_E_DISABLED, 0xffffffff
        self.assertEqual(self.raw(TABLE, 5, 1, 1), denied)
        self.assertEqual(self.raw(q.STC_COUNTERm, 5, 1, 7), (0, 7))
        self.write(TABLE, 5, 0x5)
        for allow in (q.simAllowAllTableAccess, lambda is_on: q.allowAllTableAccess(0, is_on)):
            allow(True)
            self.assertEqual(q.simTableAccessOk(), allow == q.simAllowAllTableAccess)
            self.assertEqual(self.raw(TABLE, 5, 1, 1), (0, 1))
            self.assertEqual(self.read(TABLE, 5), 0x100000005)
            allow(False)
            self.assertFalse(q.simTableAccessOk())
            self.assertEqual(self.raw(TABLE, 5, 1, 1), denied)
        for unit in (-1, 1, 16, 2 ** 31 - 1):
            q.allowAllTableAccess(unit, True)
        self.assertEqual(self.raw(TABLE, 5, 1, 1), denied)

    def test_raw_registers_agree_with_the_sdk(self):
        data = self.number(0, '_p_unsigned_int')
        for reg in (REGISTER, WIDE, q.EGQ_UNSCHEDULED_DROP_THr):
            address = q.soc_reg_addr(0, reg, 0, 0)
            value = 0x5a5a5a5a & self.mask(reg)
            self.done(q.belvok_write_low(0, address, value))
            self.done(q.soc_reg32_read(0, address, data))
            self.assertEqual(q.belvok_read_low(0, address), ctypes.c_uint32.from_address(int(data)).value)
            self.assertEqual(self.get(reg, 0) & 0xffffffff, value)
        for unit, address, status in ((0, 2 ** 32 - 1, q.BCM_E_NOT_FOUND), (0, 0, q.BCM_E_NOT_FOUND),
                                      (-1, 0, q.BCM_E_UNIT), (5, 0x10, q.BCM_E_UNIT)):
            self.assertStatus(status, q.belvok_write_low(unit, address, 1))
            self.assertEqual(q.belvok_read_low(unit, address), 0xffffffff)


if __name__ == '__main__':
    unittest.main()
