"""quorel.Chip: registers and memories by name, compared with the SDK's own answers."""
import unittest

import QuorelApiNew as q
import chip as known
from quorel import Chip, StatusError, callback
from quorel.chip import _Field


def error_of(call, *arguments, **keywords):
    try:
        call(*arguments, **keywords)
    except Exception as error:
        return type(error), str(error)


def pattern(width):
    """A value in which no two fields are alike."""
    return int(sum(0x9e3779b97f4a7c15 * (i + 1) % 2 ** 64 << 64 * i for i in range(-(-width // 64))) & (1 << width) - 1)


class Names(known.ChipTest):
    def test_all_of_the_headers(self):
        chip = Chip(0)
        self.assertEqual(list(chip.regs), [known.REGISTERS[number][:-1] for number in sorted(known.REGISTERS)])
        self.assertEqual(list(chip.mems), [known.MEMORIES[number][:-1] for number in sorted(known.MEMORIES)])
        self.assertEqual((len(chip.mems), 'NIF_PORT_CTRL' in chip.regs, 'NIF_PORT_CTRL' in chip.mems),
                         (len(known.MEMORIES), True, False))
        self.assertIn('NIF_PORT_CTRL', dir(chip.regs))
        self.assertEqual(repr(chip.regs['NIF_PORT_CTRL']), repr(chip.regs.NIF_PORT_CTRL))

    def test_misspelt(self):
        chip = Chip(0)
        self.assertRegexpMatches(error_of(getattr, chip.regs, 'NIF_PORT_CTL')[1],
                                 r'^the chip has no NIF_PORT_CTL: is it NIF_PORT_CTRL\b')
        self.assertEqual(error_of(getattr, chip.regs.NIF_PORT_CTRL[1], 'RX_ENABEL')[0], AttributeError)
        self.assertIn('RX_ENABLE', error_of(getattr, chip.regs.NIF_PORT_CTRL[1], 'RX_ENABEL')[1])
        self.assertEqual(error_of(setattr, chip.regs.NIF_PORT_CTRL[1], 'nothing', 1)[0], AttributeError)
        for wrong in (lambda: chip.regs.snapshot('nif_port_ctrl'), lambda: chip.regs['NIF_PORT_CTL']):
            with self.assertRaises(KeyError) as raised:
                wrong()
            self.assertIn('is it NIF_PORT_CTRL', str(raised.exception))


class Registers(known.ChipTest):
    def test_places_are_all_there_are(self):
        chip = Chip(0)
        self.assertEqual(sum(len(chip.regs[name]) for name in chip.regs), len(self.instances()))

    def test_fields_are_where_the_sdk_has_them(self):
        chip = Chip(0)
        for name in chip.regs:
            number = getattr(q, name + 'r')
            place = list(chip.regs[name])[-1]
            fields = [field for field, field_number in known.FIELDS.items()
                      if q.soc_reg_field_valid(0, number, field_number)]
            self.assertEqual(sorted(place.lengths()), sorted(field[:-1] for field in fields))
            value = pattern(8 * q.soc_reg_bytes(0, number))
            decoded = place.decode(value)
            for field in fields:
                words = known.Words()
                q.soc_reg_above_64_field_get(0, number, self.array(value), known.FIELDS[field], words.array)
                length = place.lengths()[field[:-1]]
                self.assertEqual(decoded[field[:-1]] & (1 << length) - 1, words.value(), (name, field))
                self.assertEqual(length, q.soc_reg_field_length(0, number, known.FIELDS[field]))
            writable = dict(pair for pair in decoded.items() if place.lengths() and error_of(
                place.encode, 0, **dict([pair])) is None)
            self.assertEqual(place.encode(0, **writable), value & self.mask(number, q.SOCF_RO), name)

    def test_reading_and_writing(self):
        chip = Chip(0)
        for name, subscripts, where in [('CMIC_LED_CTRL', (), (known.ANY, 0)), ('NIF_PORT_CTRL', (3,), (3, 0)),
                                        ('EGQ_AGEING_CTRL', (1,), (1, 0)), ('CMIC_IRQ_MASK', (2,), (known.ANY, 2)),
                                        ('IHP_MY_MAC_ADDRESS', (1, 7), (1, 7)),
                                        ('IHP_VRRP_MAC_MATCH', (0, 3), (0, 3))]:
            number, place = getattr(q, name + 'r'), chip.regs[name]
            for subscript in subscripts:
                place = place[subscript]
            value = pattern(8 * q.soc_reg_bytes(0, number)) & self.mask(number, q.SOCF_RO)
            before = place.read()
            place.write(value)
            self.assertEqual((place.read(), self.get(number, *where)), (value | before & ~self.mask(number, q.SOCF_RO),
                                                                        place.read()))
            self.assertEqual(place.as_dict(), place.decode(place.read()))
            place.write(before)
            self.assertEqual(len(list(place)), 1)

    def test_modify_reads_and_writes_once(self):
        accesses = []
        snoop = callback('soc_reg_snoop_cb_t', lambda unit, reg, info, flags, words, data: accesses.append(flags))
        q.soc_reg_snoop_register(0, q.NIF_PORT_CTRLr, q.SOC_REG_SNOOP_READ | q.SOC_REG_SNOOP_WRITE, snoop, None)
        self.addCleanup(q.soc_reg_snoop_unregister, 0, q.NIF_PORT_CTRLr)
        place = Chip(0).regs.NIF_PORT_CTRL[3]
        before = place.as_dict()
        del accesses[:]
        place.modify(RX_ENABLE=0, TX_ENABLE=1 - before['TX_ENABLE'])
        self.assertEqual(accesses, [q.SOC_REG_SNOOP_READ, q.SOC_REG_SNOOP_WRITE])
        after = dict(before, RX_ENABLE=0, TX_ENABLE=1 - before['TX_ENABLE'])
        self.assertEqual((place.as_dict(), place.compare(**before)),
                         (after, [(name, before[name], after[name]) for name in ('RX_ENABLE', 'TX_ENABLE')]))
        del accesses[:]
        length = place.lengths()['RX_ENABLE']
        for wrong, fields in [(OverflowError, {'RX_ENABLE': 2 ** length}), (OverflowError, {'RX_ENABLE': -1}),
                              (AttributeError, {'SOMETHING': 1})]:
            self.assertEqual(error_of(place.modify, TX_ENABLE=0, **fields)[0], wrong)
        self.assertEqual(error_of(place.write, 1 << 32)[0], OverflowError)
        self.assertEqual(accesses, [])
        self.assertEqual(place.as_dict(), after)
        place.RX_ENABLE = 1
        self.assertEqual(place.RX_ENABLE, 1)

    def test_subscripts(self):
        regs = Chip(0).regs
        self.assertEqual(error_of(regs.NIF_PORT_CTRL.read),
                         (TypeError, 'NIF_PORT_CTRL is 65 places: 1 more subscript says which'))
        self.assertEqual(error_of(regs.NIF_PORT_CTRL.__getitem__, 65),
                         (IndexError, 'NIF_PORT_CTRL[65] is not there: subscripts are 0 to 64'))
        for wrong in (-1, 'ENABLE', None):
            self.assertEqual(error_of(regs.NIF_PORT_CTRL.__getitem__, wrong)[0], IndexError)
        self.assertEqual(error_of(regs.CMIC_LED_CTRL.__getitem__, 0)[0], TypeError)
        self.assertEqual(repr(regs.IHP_MY_MAC_ADDRESS[1, 7]), repr(regs.IHP_MY_MAC_ADDRESS[1][7]))
        regs.IHP_MY_MAC_ADDRESS[None][7].ADDRESS = 5
        self.assertEqual([regs.IHP_MY_MAC_ADDRESS[core, 7].ADDRESS for core in range(known.CORES)], [5, 5])
        self.assertEqual(error_of(regs.NIF_PORT_CTRL[1].at_copy, 0)[0], TypeError)

    def test_read_only(self):
        place = Chip(0).regs.CMIC_DEVICE_ID
        for name in place.lengths():
            self.assertEqual(error_of(setattr, place, name, 0),
                             (AttributeError, '%s of CMIC_DEVICE_ID is read-only' % name))

    def test_signed_fields(self):
        chip, signed = Chip(0), {}
        for name in chip.regs:
            number = getattr(q, name + 'r')
            place = list(chip.regs[name])[-1]
            whole = (1 << 8 * q.soc_reg_bytes(0, number)) - 1
            unsigned = self.mask(number, q.SOCF_SIGNED)
            for field, value in place.decode(whole & ~unsigned).items():
                if value:
                    signed[name, field] = value
            self.assertTrue(all(value >= 0 for value in place.decode(unsigned).values()), name)
        # All of their bits are set.
        self.assertEqual(signed, {('CCS_TEMPERATURE_MONITOR', 'TEMPERATURE'): -1})
        temperature = chip.regs.CCS_TEMPERATURE_MONITOR[0]
        self.assertEqual([temperature.decode(value)['TEMPERATURE'] for value in (0x1ff, 0x200, 0x3f4)],
                         [511, -512, -12])
        for bits in range(3, 7), [9, 4, 6, 1]:
            field = _Field('BALANCE', bits, True, signed=True)
            self.assertEqual([number for number in range(-20, 20) if field.fits(number)], range(-8, 8))
            for number in range(-8, 8):
                self.assertEqual([(field.get(field.put(value, number)), field.put(value, number) & ~field.mask)
                                  for value in (0, 0xffff)], [(number, 0), (number, 0xffff & ~field.mask)])

    def test_what_the_sdk_refuses(self):
        place = Chip(0).regs.NIF_PORT_CTRL[3]
        self.addCleanup(self.reset)
        self.assertEqual(q.soc_deinit(0), 0)
        self.assertRaises(StatusError, place.read)

    def test_snapshots(self):
        regs = Chip(0).regs
        before = regs.snapshot('NIF_PORT_*')
        self.assertEqual(before.differences(), [])
        self.assertEqual(before.values['NIF_PORT_CTRL[7]'], regs.NIF_PORT_CTRL[7].read())
        was = regs.NIF_PORT_CTRL[7].RX_ENABLE
        regs.NIF_PORT_CTRL[7].RX_ENABLE = 1 - was
        later = regs.snapshot('NIF_PORT_*')
        regs.NIF_PORT_CTRL[7].RX_ENABLE = was
        changed = [('NIF_PORT_CTRL[7]', 'RX_ENABLE', was, 1 - was)]
        self.assertEqual((before.differences(later), later.differences(before)),
                         (changed, [changed[0][:2] + (1 - was, was)]))
        self.assertEqual(before.differences(), [])
        self.assertRaises(KeyError, before.differences, regs.snapshot('CMIC_*'))
        lines = regs.NIF_PORT_CTRL.table().splitlines()
        self.assertEqual((len(lines), lines[7]), (65, str(regs.NIF_PORT_CTRL[7]).replace(' ', '  ', 1)))
        self.assertRegexpMatches(lines[7], r'^NIF_PORT_CTRL\[7\] +0x[0-9a-f]{8} .*RX_ENABLE=0x[01]\b')
        self.assertEqual(str(regs.NIF_PORT_CTRL), '<register NIF_PORT_CTRL of unit 0>')


class Memories(known.ChipTest):
    def test_fields_are_where_the_sdk_has_them(self):
        chip = Chip(0)
        for name in chip.mems:
            number, place = getattr(q, name + 'm'), list(chip.mems[name])[-1]
            before = place.read()
            width = place._kind.width
            value = pattern(width)
            decoded, used = place.decode(value), 0
            for field, field_number in known.FIELDS.items():
                low = q.soc_mem_field32_get(0, number, self.array(value), field_number)
                self.assertEqual(decoded.get(field[:-1], 0) & 0xffffffff, low, (name, field))
                if q.soc_mem_field32_get(0, number, self.array((1 << 640) - 1), field_number):
                    used += 1
            self.assertEqual(len(decoded), used)
            place.write((1 << width) - 1)
            full = place.read()
            # All that it keeps belongs to a field, and fields overlap nowhere.
            self.assertEqual(sum(value.bit_length() for value in place.as_dict().values()), bin(full).count('1'), name)
            place.write(before)

    def test_entries(self):
        table = Chip(0).mems.IHP_MAC_TABLE
        self.assertEqual((len(table), table.lengths()['ADDRESS']), (4096, 48))
        table[5].modify(ADDRESS=0x02005e100001, VSI=7, VALID=1)
        self.assertEqual(table[5].compare(ADDRESS=0x02005e100001, VSI=7, VALID=1, STATIC=1), [('STATIC', 1, 0)])
        words = known.Words()
        self.done(q.soc_mem_read(0, q.IHP_MAC_TABLEm, -1, 5, words.array))
        self.assertEqual(table[5].read(), words.value())
        table.at_copy(1)[5].VSI = 9
        self.assertEqual([table.at_copy(core)[5].VSI for core in range(known.CORES)] + [table[5].VSI], [7, 9, 7])
        table[5].write(0)
        self.assertEqual([table.at_copy(core)[5].read() for core in range(known.CORES)], [0, 0])
        self.assertEqual(error_of(table.__getitem__, 4096)[0], IndexError)
        self.assertRaises(StatusError, table.at_copy(99).__getitem__, 5)

    def test_arrays_of_memories(self):
        counters = Chip(0).mems.STC_COUNTER
        self.assertEqual((len(counters), len(counters[3])), (16 * 2048, 2048))
        field = sorted(counters.lengths())[0]
        setattr(counters[3, 17], field, 5)
        self.assertEqual([getattr(counters[array][17], field) for array in (2, 3)], [0, 5])
        before = counters[3].snapshot()
        setattr(counters[3, 17], field, 6)
        self.assertEqual(before.differences(), [('STC_COUNTER[3][17]', field, 5, 6)])
        self.assertEqual(len(Chip(0).mems.table('EGQ_PORT_*').splitlines()), 256)


if __name__ == '__main__':
    unittest.main()
