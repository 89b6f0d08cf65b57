"""Registers, memories and blocks from text, in the forms in which they are printed."""
import ctypes
import unittest

import QuorelApiNew as q
from text_buffer import Memory, formatted, null_calls

NO_NAMES = ['', ' ', '.', '[', ']', 'X', 'EGQ_', '[1]', '.1', '\xff', 'A' * 1000000]


class Registers(unittest.TestCase):
    def setUp(self):
        self.list = q.soc_regaddrlist_t()
        self.assertEqual(q.soc_regaddrlist_alloc(self.list), q.SOC_E_NONE)
        self.addCleanup(q.soc_regaddrlist_free, self.list)

    def found(self, text):
        """[(register, port, element, block)], or the status."""
        self.list.count = -7
        status = q.parse_symbolic_reference(0, self.list, text)
        if status != q.BCM_E_NONE:
            self.assertEqual(self.list.count, -7)
            return status
        return [(info.reg, info.port, info.idx, info.block) for info in self.infos()]

    def infos(self):
        size = self.record_size()
        first = int(self.list.ainfo.this)
        for place in range(self.list.count):
            info = q.soc_regaddrinfo_t()
            ctypes.memmove(int(info.this), first + place * size, size)
            yield info

    @staticmethod
    def record_size():
        return 40

    def test_what_is_printed_is_read_back(self):
        seen = set()
        for reg in (q.CMIC_DEVICE_IDr, q.CMIC_IRQ_MASKr, q.EGQ_AGEING_CTRLr, q.EGQ_PORT_PROFILEr,
                    q.NIF_PORT_CTRLr):
            for port in (q.REG_PORT_ANY, 0, 1, 64):
                for index in (0, 1, 3):
                    address = q.soc_reg_addr(0, reg, port, index)
                    if not q.soc_reg_port_idx_valid(0, reg, port, index):
                        continue
                    given = q.soc_regaddrinfo_t()
                    q.soc_regaddrinfo_get(0, given, address)
                    text = formatted(lambda buffer: q.soc_reg_sprint_addr(0, buffer, given))
                    for form in (text, text.lower(), '0x%x' % address):
                        self.found(form)
                        self.assertIn(address, [info.addr for info in self.infos()], form)
                    seen.add(text)
        self.assertGreater(len(seen), 10)

    def test_sets_of_registers(self):
        ports, reg = range(65), q.NIF_PORT_CTRLr
        for text, wanted in (('NIF_PORT_CTRL', ports), ('nif_port_ctrlr.*', ports),
                             ('NIF_PORT_CTRL.ce0-ce3', range(1, 5)),
                             ('NIF_PORT_CTRL.7', [7]), (' NIF_PORT_CTRL.0-64 ',
                                                        ports), ('NIF_PORT_CTRL.cpu0', [0])):
            self.assertEqual([row[:2] for row in self.found(text)], [(reg, port) for port in wanted], text)
        reg = q.CMIC_IRQ_MASKr
        for text, wanted in (('CMIC_IRQ_MASK', range(4)), ('CMIC_IRQ_MASK[2]', [2]),
                             ('CMIC_IRQ_MASKR[0-2]', [0, 1, 2]),
                             ('CMIC_IRQ_MASK[*].*', range(4)), ('CMIC_IRQ_MASK.*[1]', [1])):
            self.assertEqual([(row[0], row[2]) for row in self.found(text)],
                             [(reg, index) for index in wanted], text)
        one, all_cores = self.found('EGQ_AGEING_CTRL.0-1'), self.found('EGQ_AGEING_CTRL')
        self.assertEqual([row[3] for row in one], [4, 5])
        self.assertEqual((len(all_cores), self.found('EGQ_AGEING_CTRL.*')), (1, all_cores))

    def test_hostile_references(self):
        texts = {
            q.BCM_E_PORT: """
                NIF_PORT_CTRL.65 NIF_PORT_CTRL.ce64 NIF_PORT_CTRL.-1 EGQ_AGEING_CTRL.2 EGQ_AGEING_CTRL.x""",
            q.BCM_E_PARAM: """
                CMIC_IRQ_MASK[4] CMIC_IRQ_MASK[-1] CMIC_IRQ_MASK[2-1] CMIC_IRQ_MASK[1 CMIC_IRQ_MASK[]
                CMIC_IRQ_MASK[1][1] CMIC_IRQ_MASK[[1]] CMIC_IRQ_MASK[0-1-2] CMIC_IRQ_MASK[1]x NIF_PORT_CTRL.
                NIF_PORT_CTRL.1.2 NIF_PORT_CTRL.4-2 CMIC_IRQ_MASK[""" + '9' * 100000 + ']',
            q.BCM_E_NOT_FOUND: 'X EGQ_AGEING 0xfffffff0 ' + 'A' * 1000000,
        }
        for status in texts:
            for text in texts[status].split():
                self.assertEqual(self.found(text), status, text[:40])
        for text in NO_NAMES:
            self.assertIn(self.found(text), (q.BCM_E_PARAM, q.BCM_E_NOT_FOUND))
        empty = q.soc_regaddrlist_t()
        self.assertEqual(q.parse_symbolic_reference(0, empty, 'EGQ_AGEING_CTRL'), q.BCM_E_PARAM)
        self.assertEqual(q.parse_symbolic_reference(7, self.list, 'EGQ_AGEING_CTRL'), q.BCM_E_UNIT)
        null_calls('parse_symbolic_reference parse_cmic_regname parse_memory_name parse_memory_index '
                   'parse_memory_array_index parse_block_range'.split())

    def test_host_interface(self):
        offset = q.uintp()
        for text, index in (('CMIC_IRQ_MASK', 0), ('cmic_irq_maskr[3]', 3)):
            self.assertEqual(q.parse_cmic_regname(0, text, offset), q.BCM_E_NONE)
            self.assertEqual(offset.value(), q.soc_reg_addr(0, q.CMIC_IRQ_MASKr, q.REG_PORT_ANY, index))
        offset.assign(99)
        for text in NO_NAMES + ['EGQ_AGEING_CTRL', 'CMIC_IRQ_MASK[4]', 'CMIC_IRQ_MASK.1', 'CMIC_IRQ_MASK[x]']:
            self.assertLess(q.parse_cmic_regname(0, text, offset), 0, text[:40])
        self.assertEqual(offset.value(), 99)

    def test_names_are_still_known_after_the_table_is_made_anew(self):
        before = self.found('EGQ_AGEING_CTRL')
        for _ in range(3):
            self.assertIsNone(q.init_symtab())
            self.assertEqual(self.found('EGQ_AGEING_CTRL'), before)


class Memories(unittest.TestCase):
    def parse(self, text):
        self.cells = q.intp(), q.intp(), q.uintp()
        for cell in self.cells:
            cell.assign(77)
        mem, copy, array = self.cells
        status = q.parse_memory_name(0, mem, text, copy, array)
        values = tuple(cell.value() for cell in self.cells)
        if status != q.BCM_E_NONE:
            self.assertEqual(values, (77, 77, 77))
            return status
        return values

    def test_names(self):
        names = [name for name in dir(q) if name.endswith('m') and name.upper()[:-1] == name[:-1]
                 and isinstance(getattr(q, name), int) and '_' in name]
        self.assertGreater(len(names), 20)
        for name in names:
            for text in (name, name[:-1], name.lower()):
                self.assertEqual(self.parse(text), (getattr(q, name), -1, 0), text)
        mac, counter = q.IHP_MAC_TABLEm, q.STC_COUNTERm
        for text, expected in (('IHP_MAC_TABLE.1', (mac, 1, 0)), ('IHP_MAC_TABLE.*', (mac, -1, 0)),
                               ('STC_COUNTER[15]', (counter, -1, 15)),
                               ('STC_COUNTERm[0x3].0', (counter, 0, 3)),
                               ('STC_COUNTER.0[3]', (counter, 0, 3))):
            self.assertEqual(self.parse(text), expected, text)
        for text in """
                IHP_MAC_TABLE.2 IHP_MAC_TABLE.-1 IHP_MAC_TABLE. IHP_MAC_TABLE.0.0 IHP_MAC_TABLE[1]
                STC_COUNTER[16] STC_COUNTER[-1] STC_COUNTER[] STC_COUNTER[1 STC_COUNTER[1-2]
                STC_COUNTER[4294967296]""".split():
            self.assertEqual(self.parse(text), q.BCM_E_PARAM, text)
        for text in NO_NAMES:
            self.assertIn(self.parse(text), (q.BCM_E_PARAM, q.BCM_E_NOT_FOUND))
        self.assertEqual(q.parse_memory_name(0, self.cells[0], 'IHP_MAC_TABLE', None, None), q.BCM_E_NONE)
        self.assertEqual(q.parse_memory_name(0, self.cells[0], 'IHP_MAC_TABLE.1', None, None), q.BCM_E_PARAM)

    def test_indices_are_those_that_the_memory_has(self):
        entry = q.new_entrydata(20)
        self.addCleanup(q.delete_entrydata, entry)
        mem = q.IHP_MAC_TABLEm
        last = q.parse_memory_index(0, mem, 'max')
        self.assertEqual(q.soc_mem_read(0, mem, 0, last, entry), q.SOC_E_NONE)
        self.assertNotEqual(q.soc_mem_read(0, mem, 0, last + 1, entry), q.SOC_E_NONE)
        for text, index in (('min', 0), ('MAX ', last), (str(last), last), ('0x10', 16)):
            self.assertEqual(q.parse_memory_index(0, mem, text), index)
        for text in NO_NAMES + [str(last + 1), '-1', '4294967296', '1-2', 'minmax']:
            self.assertEqual(q.parse_memory_index(0, mem, text), q.BCM_E_PARAM, text[:40])
            self.assertEqual(q.parse_memory_array_index(0, q.STC_COUNTERm, text), 2 ** 32 - 1)
        for text, index in (('min', 0), ('max', 15), ('7', 7)):
            self.assertEqual(q.parse_memory_array_index(0, q.STC_COUNTERm, text), index)
        for mem in (-1, 10000, 2 ** 31 - 1):
            self.assertEqual(q.parse_memory_index(0, mem, '0'), q.BCM_E_NOT_FOUND)
            self.assertEqual(q.parse_memory_array_index(0, mem, '0'), 2 ** 32 - 1)

    def test_blocks(self):
        egq, ihp, none = 2, 4, -1
        low, high = q.intp(), q.intp()
        for kind, mask, text, expected in (
                (egq, none, '1', (5, 5)), (egq, none, '0-1', (4, 5)), (egq, none, 'egq', (4, 5)),
                (egq, none, 'EGQ1', (5, 5)), (egq, none, 'egq0-1', (4, 5)), (egq, none, '*', (4, 5)),
                (egq, none, ' all', (4, 5)), (egq, ihp, 'ihp1', (13, 13)), (ihp, egq, '0', (12, 12)),
                (egq, none, 'egq*', (4, 5))):
            self.assertEqual(q.parse_block_range(0, kind, text, low, high, mask), q.BCM_E_NONE, text)
            self.assertEqual((low.value(), high.value()), expected, text)
        wrong = ['', '2', '1-0', '-1', 'ihp0', 'egq2', 'egq-', 'xyz1', 'none', 'count', 'egqegq', 'egq0,1']
        for kind, text in [(egq, text) for text in wrong] + [(-1, '0'), (-1, 'all'), (99, '0'), (99, 'all')]:
            self.assertLess(q.parse_block_range(0, kind, text, low, high, none), 0, (kind, text))
        self.assertEqual((low.value(), high.value()), (4, 5))
        self.assertEqual(q.parse_block_range(1, egq, '0', low, high, none), q.BCM_E_UNIT)


if __name__ == '__main__':
    unittest.main()
