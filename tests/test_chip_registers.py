"""Registers: access of every width, fields, addresses, text, those who watch them."""
import ctypes
import itertools
import unittest

import QuorelApiNew as q
from chip import ANY, ChipTest, FIELDS, REGISTERS, Words, iterate_callback, library, snoop_callback

READ_ONLY = 1
ALL_ONES = 2 ** 640 - 1


def fields_of(reg):
    return [number for number in FIELDS.values() if q.soc_reg_field_valid(0, reg, number)]


class Registers(ChipTest):
    def test_addresses_lead_back_to_their_registers(self):
        seen = set()
        info = q.soc_regaddrinfo_t()
        for reg, port, index, address in self.instances():
            size = q.soc_reg_bytes(0, reg)
            for word in range(size // 4):
                self.assertNotIn(address + word, seen, REGISTERS[reg])
                seen.add(address + word)
                q.soc_regaddrinfo_get(0, info, address + word)
                self.assertEqual((info.valid, info.reg, info.idx, info.addr, info.acc_type),
                                 (1, reg, index, address, 0), REGISTERS[reg])
                self.assertIn((port, info.port), ((port, port), (0, ANY), (1, ANY)))
            self.assertTrue(q.soc_reg_port_idx_valid(0, reg, port, index))
            text = ' ' * 256
            q.soc_reg_sprint_addr(0, text, info)
            self.assertEqual(text[:text.index('\0')].split('.')[0].split('[')[0] + 'r', REGISTERS[reg])
        self.assertEqual(set(row[0] for row in self.instances()), set(REGISTERS))
        self.assertEqual(sorted(REGISTERS), range(len(REGISTERS)))
        for address in (0, 0xffffffff, q.soc_reg_addr(0, q.NIF_PORT_CTRLr, 64, 0) + 0x10000):
            q.soc_regaddrinfo_get(0, info, address)
            self.assertEqual((info.valid, info.addr), (0, address))

    def test_every_instance_has_its_own_value_and_no_bits_but_its_fields(self):
        rows = [row[:3] for row in self.instances()]
        at_reset = dict((row, self.get(*row)) for row in rows)
        for number, (reg, port, index) in enumerate(rows):
            value = number * 0x9e3779b97f4a7c15f39cc0605cedc835 & self.mask(reg)
            self.set(reg, value | ALL_ONES & ~self.mask(reg), port, index)
        for number, row in enumerate(rows):
            value = number * 0x9e3779b97f4a7c15f39cc0605cedc835
            changed = self.mask(row[0], READ_ONLY)
            self.assertEqual(self.get(*row), at_reset[row] & ~changed | value & changed, REGISTERS[row[0]])
        self.done(q.soc_reset_init(0))
        self.done(q.soc_misc_init(0))
        self.assertEqual(dict((row, self.get(*row)) for row in rows), at_reset)
        self.assertEqual(self.get(q.CMIC_DEVICE_IDr), 0x114a10)

    def test_widths(self):
        narrow, wide, widest = q.CMIC_SBUS_TIMEOUTr, q.CGM_CGM_GENERAL_DB_THr, q.CCS_MAILBOXr
        self.assertEqual([q.soc_reg_bytes(0, reg) for reg in (narrow, wide, widest, -1)], [4, 8, 32, 0])
        word, long_word = q.uintp(), q.uint64p()
        for reg, fitting in ((narrow, (0, 2)), (wide, (1, 2)), (widest, ())):
            getters = ((q.soc_reg32_get, word), (q.soc_reg64_get, long_word.cast()),
                       (q.soc_reg_get, long_word.cast()))
            setters = (q.soc_reg32_set, q.soc_reg64_set, q.soc_reg_set)
            for number, ((getter, output), setter) in enumerate(zip(getters, setters)):
                status = q.SOC_E_NONE if number in fitting else q.SOC_E_PARAM
                self.assertStatus(status, setter(0, reg, 0, 0, 0x1234), REGISTERS[reg])
                self.assertStatus(status, getter(0, reg, 0, 0, output), REGISTERS[reg])
                if not status:
                    self.assertEqual((word if number == 0 else long_word).value(), 0x1234)
        self.done(q.soc_reg64_set(0, wide, 0, 0, 2 ** 64 - 1))
        self.assertEqual(self.get(wide, 0), 0xfffff000fffff)

    def test_raw_access_sees_the_words(self):
        reg, long_word, word = q.CGM_CGM_GENERAL_DB_THr, q.uint64p(), q.uintp()
        address = q.soc_reg_addr(0, reg, 1, 0)
        self.done(q.soc_reg64_write(0, address, 0x0001234500054321))
        self.assertEqual((self.get(reg, 1), self.get(reg, 0)), (0x0001234500054321, 0x80000001000))
        self.done(q.soc_reg32_read(0, address + 1, word))
        self.assertEqual(word.value(), 0x12345)
        self.done(q.soc_reg32_write(0, address + 1, 0xfff00007))
        self.done(q.soc_reg_read(0, reg, address, long_word.cast()))
        self.assertEqual(long_word.value(), 0x0000000700054321)
        self.done(q.soc_reg_write(0, reg, address, 5))
        self.done(q.soc_reg64_read(0, address, long_word.cast()))
        self.assertEqual(long_word.value(), 5)
        for status in (q.soc_reg64_write(0, address + 1, 0), q.soc_reg32_write(0, 0xffffffff, 0),
                       q.soc_reg_write(0, reg, address + 1, 0),
                       q.soc_reg_read(0, reg + 1, address, long_word.cast())):
            self.assertStatus(q.SOC_E_NOT_FOUND, status)
        mailbox = q.soc_reg_addr(0, q.CCS_MAILBOXr, 0, 1)
        for number in range(8):
            self.done(q.soc_reg32_write(0, mailbox + number, number + 1))
        self.assertEqual(self.get(q.CCS_MAILBOXr, 0, 1), sum(n + 1 << 32 * n for n in range(8)))

    def test_fields_tile_their_registers(self):
        for reg in REGISTERS:
            bits = 0
            for field in fields_of(reg):
                length = q.soc_reg_field_length(0, reg, field)
                value = Words(ALL_ONES)
                cleared = Words(ALL_ONES)
                q.soc_reg_above_64_field_set(0, reg, cleared.array, field, self.array(0))
                place = ALL_ONES & ~cleared.value()
                self.assertEqual(bin(place).count('1'), length)
                self.assertEqual(bits & place, 0)
                bits |= place
                q.soc_reg_above_64_field_get(0, reg, self.array(place), field, value.array)
                self.assertEqual(value.value(), 2 ** length - 1)
                self.assertEqual(q.soc_reg_above_64_field32_get(0, reg, self.array(place), field),
                                 2 ** min(length, 32) - 1)
                if length <= 32:
                    q.soc_reg_above_64_field32_set(0, reg, cleared.array, field, 2 ** length - 1)
                    self.assertEqual(cleared.value(), ALL_ONES)
                self.assertEqual(q.soc_reg_above_64_field64_get(0, reg, self.array(place), field),
                                 2 ** min(length, 64) - 1)
                low = place & 2 ** 64 - 1
                self.assertEqual(q.soc_reg64_field_get(0, reg, low, field),
                                 q.soc_reg_above_64_field64_get(0, reg, self.array(low), field))
                if length < 32:
                    self.assertStatus(0, q.soc_reg_field_validate(0, reg, field, 2 ** length - 1))
                    self.assertStatus(q.SOC_E_PARAM, q.soc_reg_field_validate(0, reg, field, 2 ** length))
                if length < 64:
                    self.assertStatus(0, q.soc_reg64_field_validate(0, reg, field, 2 ** length - 1))
                    self.assertStatus(q.SOC_E_PARAM, q.soc_reg64_field_validate(0, reg, field, 2 ** length))
            self.assertEqual(bits, self.mask(reg))
            self.assertEqual(q.soc_reg_datamask(0, reg, 0), bits & 0xffffffff)
            self.assertEqual(q.soc_reg64_datamask(0, reg, 0), bits & 2 ** 64 - 1)

    def test_fields_of_values(self):
        reg, speed = q.NIF_PORT_CTRLr, FIELDS['SPEEDf']
        value, long_value = q.uintp(), q.uint64p()
        value.assign(3)
        long_value.assign(0)
        q.soc_reg_field_set(0, reg, value, speed, 0xf00000 + 25000)
        self.assertEqual(value.value(), 3 | 25000 << 8)
        self.assertEqual(q.soc_reg_field_get(0, reg, value.value(), speed), 25000)
        threshold = FIELDS['DB_SET_THf']
        for setter in (q.soc_reg64_field_set, q.soc_reg64_field32_set):
            setter(0, q.CGM_CGM_GENERAL_DB_THr, long_value.cast(), threshold, 0x54321)
            self.assertEqual(long_value.value(), 0x54321 << 32)
            long_value.assign(0)
        got = q.soc_reg64_field32_get(0, q.CGM_CGM_GENERAL_DB_THr, 0x54321 << 32, threshold)
        self.assertEqual(got, 0x54321)
        for number, kind in ((2 ** 31 - 1, int), (2 ** 31, long), (2 ** 64 - 1, long)):
            got = q.soc_reg64_field_get(0, q.CMIC_DMA_DESC_ADDRr, number, FIELDS['ADDRESSf'])
            self.assertEqual((got, type(got)), (number, kind))
        for value_in, expected in ((-1, 0xfffff), (0x7ffff, 0x7ffff), (-0x80000, 0x80000), (0x80000, None)):
            status = q.soc_reg_signed_field_mask(0, reg, speed, value_in, value)
            self.assertStatus(q.SOC_E_PARAM if expected is None else q.SOC_E_NONE, status)
            self.assertEqual(value.value(), 0x80000 if expected is None else expected)
        for field in (threshold, -1, 2 ** 31 - 1):
            q.soc_reg_field_set(0, reg, value, field, 1)
            self.assertEqual((value.value(), q.soc_reg_field_get(0, reg, 0xffffffff, field)), (0x80000, 0))

    def test_modifying_is_of_the_fields_alone_and_of_all_or_none(self):
        reg, speed, receive = q.NIF_PORT_CTRLr, FIELDS['SPEEDf'], FIELDS['RX_ENABLEf']
        self.done(q.soc_reg_field32_modify(0, reg, 9, speed, 40000))
        self.assertEqual((self.get(reg, 9), self.get(reg, 8)), (3 | 40000 << 8, 3 | 100000 << 8))
        numbers = (ctypes.c_int * 2)(speed, receive)
        for limits, status in (((10000, 0), q.SOC_E_NONE), ((25000, 2), q.SOC_E_PARAM)):
            self.assertStatus(status, library.soc_reg_fields32_modify(0, reg, 9, 2, numbers,
                                                                      (ctypes.c_uint32 * 2)(*limits)))
            self.assertEqual(self.get(reg, 9), 2 | 10000 << 8)
        for count in (-1, 2 ** 31 - 1):
            status = library.soc_reg_fields32_modify(0, reg, 9, count, numbers, numbers)
            self.assertStatus(q.SOC_E_PARAM, status, count)
        reg, seed, program = q.IHB_PROGRAM_SELECT_KEYr, FIELDS['KEY_MASKf'], FIELDS['PROGRAMf']
        self.done(q.soc_reg_above_64_field64_modify(0, reg, 1, 7, seed, 2 ** 47 + 1))
        self.done(q.soc_reg_above_64_field32_modify(0, reg, 1, 7, program, 0xa5))
        self.assertStatus(q.SOC_E_PARAM, q.soc_reg_above_64_field32_modify(0, reg, 1, 7, program, 0x100))
        self.assertEqual(self.get(reg, 1, 7), 2 ** 47 + 1 << 64 | 0xa5 << 112)
        word, long_word, words = q.uintp(), q.uint64p(), Words(ALL_ONES)
        self.done(q.soc_reg_above_64_field32_read(0, reg, 1, 7, program, word))
        self.done(q.soc_reg_above_64_field64_read(0, reg, 1, 7, seed, long_word.cast()))
        self.done(q.soc_reg_above_64_field_read(0, reg, 1, 7, seed, words.array))
        self.assertEqual((word.value(), long_word.value(), words.value()), (0xa5, 2 ** 47 + 1, 2 ** 47 + 1))
        self.assertStatus(q.SOC_E_PARAM, q.soc_reg_above_64_field32_read(0, reg, 1, 7, seed, word))

    def test_all_cores_at_once(self):
        reg, block, access = q.EGQ_AGEING_CTRLr, q.intp(), q.new_uint8Array(1)
        self.set(reg, 0x10005, 1)
        self.set(reg, 0x7, ANY)
        self.assertEqual([self.get(reg, port) for port in (0, 1, ANY)], [7, 7, 7])
        self.set(reg, 0x9, 1)
        self.assertEqual([self.get(reg, port) for port in (0, 1, ANY)], [7, 9, 7])
        both = q.soc_reg_addr_get(0, reg, ANY, 0, 0, block, access)
        self.assertEqual((block.value(), q.uint8Array_getitem(access, 0)), (6, 1))
        self.assertEqual(q.soc_reg_addr_get(0, reg, ANY, 0, 1, block, access), q.soc_reg_addr(0, reg, 0, 0))
        self.assertEqual((block.value(), q.uint8Array_getitem(access, 0)), (4, 0))
        self.done(q.soc_reg32_write(0, both, 3))
        self.assertEqual([self.get(reg, port) for port in (0, 1)], [3, 3])
        info = q.soc_regaddrinfo_t()
        q.soc_regaddrinfo_extended_get(0, info, 5, 0, both)
        self.assertEqual((info.valid, info.addr), (1, q.soc_reg_addr(0, reg, 1, 0)))
        q.soc_regaddrinfo_extended_get(0, info, 4, 1, both)
        self.assertEqual((info.valid, info.addr, info.block, info.acc_type), (1, both, 6, 1))
        for block_number in (-1, 3, 64):
            q.soc_regaddrinfo_extended_get(0, info, block_number, 0, both)
            self.assertEqual(info.valid, 0)
        q.delete_uint8Array(access)

    def text_of(self, writer, *args):
        text = ' ' * 256
        writer(0, text, *args)
        return text[:text.index('\0')] if '\0' in text else text.strip()

    def test_text(self):
        info = q.soc_regaddrinfo_t()
        for (reg, port, index), expected in (((q.NIF_PORT_CTRLr, 7, 0), 'NIF_PORT_CTRL.7'),
                                             ((q.EGQ_AGEING_CTRLr, 1, 0), 'EGQ_AGEING_CTRL.1'),
                                             ((q.EGQ_AGEING_CTRLr, ANY, 0), 'EGQ_AGEING_CTRL.*'),
                                             ((q.CMIC_IRQ_MASKr, ANY, 3), 'CMIC_IRQ_MASK[3]')):
            q.soc_regaddrinfo_get(0, info, q.soc_reg_addr(0, reg, port, index))
            self.assertEqual(self.text_of(q.soc_reg_sprint_addr, info), expected)
        info.reg, info.block = q.EGQ_AGEING_CTRLr, -2 ** 31
        self.assertEqual(self.text_of(q.soc_reg_sprint_addr, info), 'EGQ_AGEING_CTRL.-2147483652')
        value = 25000 << 8 | 2
        self.assertEqual(self.text_of(q.soc_reg_sprint_data, ', ', q.NIF_PORT_CTRLr, value),
                         'RX_ENABLE=0, TX_ENABLE=1, SPEED=61a8')
        buffer = ctypes.create_string_buffer(256)
        library.soc_reg_sprint_data(0, buffer, None, q.NIF_PORT_CTRLr, 0)
        self.assertEqual(buffer.value, 'RX_ENABLE=0,TX_ENABLE=0,SPEED=0')
        self.assertEqual(self.text_of(q.soc_reg_sprint_data, ',', q.CCS_MAILBOXr, 0), '')
        library.soc_reg_sprint_addr(0, None, None)
        library.soc_reg_sprint_data(0, None, None, q.NIF_PORT_CTRLr, 0)

    def snooped(self, reg, flags):
        events = []
        callback = snoop_callback(lambda unit, number, info, access, value, _: events.append(
            (number, info[0].addr, access, value[0])))
        library.soc_reg_snoop_register(0, reg, flags, callback, None)
        self.addCleanup(lambda: callback and q.soc_reg_snoop_unregister(0, reg))
        return events

    def test_snoops_see_accesses_of_every_kind(self):
        reg, word = q.EGQ_AGEING_CTRLr, q.uintp()
        address = q.soc_reg_addr(0, reg, 1, 0)
        events = self.snooped(reg, 3)
        self.done(q.soc_reg32_set(0, reg, 1, 0, 0xfffffff0))
        self.done(q.soc_reg32_read(0, address, word))
        self.assertStatus(q.SOC_E_PORT, q.soc_reg32_set(0, reg, 2, 0, 5))
        self.assertEqual(events, [(reg, address, 2, 0x1fff0), (reg, address, 1, 0x1fff0)])
        events = self.snooped(reg, 2)
        self.done(q.soc_reg32_read(0, address, word))
        self.assertEqual(events, [])
        self.done(q.soc_reg_field32_modify(0, reg, 1, FIELDS['ENABLEf'], 0))
        self.assertEqual(events, [(reg, address, 2, 0xfff0)])
        q.soc_reg_snoop_unregister(0, reg)
        self.done(q.soc_reg32_set(0, reg, 1, 0, 1))
        self.assertEqual(len(events), 1)

    def test_stand_ins_carry_out_accesses_by_identifier(self):
        log = []

        def read(unit, reg, port, index, data):
            log.append((reg, port, index))
            status = library.soc_reg32_get(unit, reg, port, index, data)
            data[0] += 1
            return status
        callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_int,
                                    ctypes.POINTER(ctypes.c_uint32))(read)
        functions = (ctypes.c_void_p * 8)(ctypes.cast(callback, ctypes.c_void_p).value)
        self.done(library.soc_reg_access_func_register(0, functions))
        self.assertEqual(self.get(q.CMIC_SBUS_TIMEOUTr), 0x1007d1)
        self.assertEqual(self.get(q.CGM_CGM_GENERAL_DB_THr), 0x80000001000)
        self.assertEqual(log, [(q.CMIC_SBUS_TIMEOUTr, ANY, 0)])
        self.done(q.soc_reg_access_func_register(0, q.soc_reg_access_t()))
        self.assertEqual(self.get(q.CMIC_SBUS_TIMEOUTr), 0x1007d0)
        self.assertStatus(q.SOC_E_PARAM, q.soc_reg_access_func_register(0, None))

    def test_a_walk_ends_at_the_first_error(self):
        counter = itertools.count()
        callback = iterate_callback(lambda unit, info, data: -11 if next(counter) == 9 else 0)
        self.assertEqual((library.soc_reg_iterate(0, callback, None), next(counter)), (q.SOC_E_FAIL, 10))
        self.assertStatus(q.SOC_E_PARAM, q.soc_reg_iterate(0, None, None))

    def test_iterating_ends_with_the_chip(self):
        self.addCleanup(q.bcm_detach, 5)
        for end, status in ((q.bcm_detach, q.SOC_E_UNIT), (q.soc_deinit, q.SOC_E_INIT)):
            self.done(q.bcm_attach(5, '', '', -1))
            visited = []

            def visit(unit, info, data):
                visited.append(unit)
                return end(unit)
            self.assertStatus(status, library.soc_reg_iterate(5, iterate_callback(visit), None))
            self.assertEqual(visited, [5])
            q.bcm_detach(5)

    def test_lists_own_their_room(self):
        addresses = q.soc_regaddrlist_t()
        self.assertStatus(q.SOC_E_PARAM, q.soc_regaddrlist_free(addresses))
        self.done(q.soc_regaddrlist_alloc(addresses))
        self.assertEqual((addresses.count, addresses.ainfo.valid), (0, 0))
        self.assertStatus(q.SOC_E_PARAM, q.soc_regaddrlist_alloc(addresses))
        self.done(q.soc_regaddrlist_free(addresses))
        self.assertIsNone(addresses.ainfo)
        own = q.soc_regaddrinfo_t()
        addresses.ainfo = own
        self.assertStatus(q.SOC_E_PARAM, q.soc_regaddrlist_free(addresses))
        for status in (q.soc_regaddrlist_alloc(None), q.soc_regaddrlist_free(None)):
            self.assertStatus(q.SOC_E_PARAM, status)

    def test_what_is_not_there(self):
        word, reg = q.uintp(), q.NIF_PORT_CTRLr
        word.assign(77)
        for status, args in ((q.SOC_E_UNIT, (1, reg, 5, 0)), (q.SOC_E_UNIT, (-1, reg, 5, 0)),
                             (q.SOC_E_PARAM, (0, len(REGISTERS), 5, 0)), (q.SOC_E_PARAM, (0, -1, 5, 0)),
                             (q.SOC_E_PORT, (0, reg, 65, 0)), (q.SOC_E_PORT, (0, reg, ANY, 0)),
                             (q.SOC_E_PORT, (0, q.EGQ_AGEING_CTRLr, 2, 0)), (q.SOC_E_PARAM, (0, reg, 5, 1)),
                             (q.SOC_E_PARAM, (0, q.CMIC_IRQ_MASKr, ANY, 4)),
                             (q.SOC_E_PARAM, (0, reg, 5, -1))):
            self.assertStatus(status, q.soc_reg32_get(*(args + (word,))), args)
            self.assertStatus(status, q.soc_reg32_set(*(args + (1,))), args)
            self.assertEqual(q.soc_reg_addr(*args), 0)
        self.assertEqual(word.value(), 77)
        self.assertStatus(q.SOC_E_PARAM, q.soc_reg32_get(0, reg, 5, 0, None))
        self.assertStatus(q.SOC_E_PARAM, q.soc_reg_above_64_set(0, reg, 5, 0, None))
        self.done(q.soc_deinit(0))
        for status in (q.soc_reg32_get(0, reg, 5, 0, word), q.soc_reset_init(0), q.soc_misc_init(0),
                       q.soc_deinit(0)):
            self.assertStatus(q.SOC_E_INIT, status)
        self.assertEqual([q.sysconf_attach(device) for device in (0, 1, -1)],
                         [q.SOC_E_NONE, q.SOC_E_NOT_FOUND, q.SOC_E_NOT_FOUND])


if __name__ == '__main__':
    unittest.main()
