"""The shell's commands on registers and tables."""
import unittest

import QuorelApiNew as q
from chip import FIELDS, MEMORIES, REGISTERS
from console import run
from simulator import SwitchTest


class ChipCommands(SwitchTest):
    def tearDown(self):
        q.soc_reset_init(0)

    def fields(self, line):
        """{field: value} as the command prints them."""
        result, output = run(line)
        self.assertEqual(result, q.CMD_OK, output)
        return dict((words[0], int(words[1], 16)) for words in map(str.split, output.splitlines()[1:]))

    def test_registers_of_all_widths(self):
        for name, identifier, setting in (
                ('EGQ_AGEING_CTRL.*', q.EGQ_AGEING_CTRLr, {'AGE_PERIOD': 0x55, 'ENABLE': 1}),
                ('CCS_BLOCK_SOFT_RESET', q.CCS_BLOCK_SOFT_RESETr, {'BLOCK_MASK': 2 ** 63 + 5}),
                ('CCS_MAILBOX[1]', q.CCS_MAILBOXr, {'OPCODE': 7, 'PAYLOAD': 2 ** 223 + 9})):
            words = ' '.join('%s=0x%x' % pair for pair in setting.items())
            self.assertEqual(run('setreg %s %s' % (name, words)), (q.CMD_OK, ''))
            shown = self.fields('getreg ' + name)
            self.assertEqual(dict((field, shown[field]) for field in setting), setting)
            value = q.new_entrydata(20)
            self.assertEqual(q.soc_reg_above_64_get(0, identifier, q.REG_PORT_ANY, '[' in name, value), 0)
            whole = sum(q.entrydata_getitem(value, word) << 32 * word for word in range(20))
            self.assertIn('%s = 0x%x\n' % (name, whole), run('getreg ' + name)[1])
            q.delete_entrydata(value)

    def test_what_cannot_be(self):
        before = run('getreg EGQ_AGEING_CTRL')
        for line in ('getreg NOTHING', 'getreg CMIC_IRQ_MASK[4]', 'getreg CMIC_IRQ_MASK[', 'getreg',
                     'getreg EGQ_AGEING_CTRL.9', 'setreg EGQ_AGEING_CTRL ENABLE=2',
                     'setreg EGQ_AGEING_CTRL 0x100000000', 'setreg EGQ_AGEING_CTRL AGE_PERIOD=1 NOTHING=1',
                     'setreg EGQ_AGEING_CTRL 0x' + 'f' * 161, 'dump NOTHING 0', 'dump EGQ_PORT_CONFIG 0 256',
                     'modify EGQ_PORT_CONFIG -1 SPLIT_HORIZON=1'):
            self.assertEqual(run(line)[0], q.CMD_USAGE, line)
        self.assertEqual(run('getreg EGQ_AGEING_CTRL'), before)

    def whole(self, name):
        """What getreg shows of the whole register."""
        result, output = run('getreg ' + name)
        self.assertEqual(result, q.CMD_OK, output)
        return int(output.splitlines()[0].split(' = ')[1], 16)

    def rows(self, line):
        """{name: the other cells} of what a command lists."""
        result, output = run(line)
        self.assertEqual(result, q.CMD_OK, output)
        return dict((row.split()[0], row.split()[1:]) for row in output.splitlines()[1:])

    def test_registers_and_tables_are_listed_by_pattern(self):
        registers, tables = self.rows('listreg'), self.rows('listmem')
        self.assertEqual(sorted(registers), sorted(name[:-1] for name in REGISTERS.values()))
        self.assertEqual(sorted(tables), sorted(name[:-1] for name in MEMORIES.values()))
        for name, row in (('CCS_MAILBOX', 'CCS generic 256 2 1'),
                          ('NIF_PORT_MAX_SIZE', 'NIF per-port 32 1 65'),
                          ('EGQ_AGEING_CTRL', 'EGQ generic 32 1 2')):
            self.assertEqual(registers[name], row.split())
        for number, name in MEMORIES.items():
            block, bits, entries, arrays, copies = tables[name[:-1]]
            words = q.new_entrydata(20)
            for array, copy, index, status in (
                    (arrays, copies, entries, 0), (arrays + '1', copies, entries, q.BCM_E_PARAM),
                    (arrays, '99', entries, q.BCM_E_PARAM),
                    (arrays, copies, entries + '1', q.BCM_E_PARAM)):
                place = [int(array) - 1, int(copy) - 1, int(index) - 1]
                self.assertEqual(q.soc_mem_array_read(0, number, *place + [words]), status, (name, place))
            q.delete_entrydata(words)
        for pattern, expected in (('CCS_MAILBOX', ['CCS_MAILBOX']), ('*_mailbo?', ['CCS_MAILBOX']),
                                  ('CMIC_DMA_[!C]*', ['CMIC_DMA_DESC_ADDR', 'CMIC_DMA_STAT'])):
            self.assertEqual(sorted(self.rows('listreg ' + pattern)), expected)
        for what in ('listreg', 'listmem', 'fields'):
            self.assertEqual((run(what + ' NO*')[0], run(what + ' A* B*')[0]), (q.CMD_FAIL, q.CMD_USAGE))

    def test_fields_are_listed_with_their_numbers(self):
        lines = [line.split() for line in run('fields')[1].splitlines()[1:]]
        self.assertEqual(set(row[0] for row in lines),
                         set(name[:-1] for name in REGISTERS.values() + MEMORIES.values()))
        for row in lines:
            self.assertEqual(int(row[4]), FIELDS[row[1] + 'f'])
            register = getattr(q, row[0] + 'r', None)
            if register is not None:
                self.assertEqual(q.soc_reg_field_length(0, register, int(row[4])), int(row[3]), row)
        self.assertEqual([row.split()[1:] for row in run('fields cmic_device_id')[1].splitlines()[1:]],
                         [[name, bit, length, str(FIELDS[name + 'f']), 'read-only'] for name, bit, length in (
                             ('DEVICE', '0', '16'), ('REVISION', '16', '8'))])

    def test_references_to_several_registers(self):
        """The same that parse_symbolic_reference() takes."""
        def shown(name):
            result, output = run('getreg ' + name)
            self.assertEqual(result, q.CMD_OK, output)
            return [line.split(' = ') for line in output.splitlines() if ' = ' in line]

        registers = q.soc_regaddrlist_t()
        self.done(q.soc_regaddrlist_alloc(registers))
        for name in ('NIF_PORT_MAX_SIZE.ce0-ce3', 'nif_port_max_size.5', 'CMIC_IRQ_MASKr',
                     'CMIC_IRQ_MASK[1-2]', 'EGQ_PORT_PROFILE[6-7].1', '0x10000010'):
            self.done(q.parse_symbolic_reference(0, registers, name))
            info = registers.ainfo
            text = ' ' * 80
            q.soc_reg_sprint_addr(0, text, info)
            rows = shown(name)
            self.assertEqual((len(rows), rows[0][0]), (registers.count, text[:text.index('\0')]), name)
        q.soc_regaddrlist_free(registers)
        self.assertEqual(len(shown('NIF_PORT_MAX_SIZE')), 65)
        self.assertEqual(run('setreg NIF_PORT_MAX_SIZE.ce0-ce2 0x123'), (q.CMD_OK, ''))
        self.assertEqual([value for _, value in shown('NIF_PORT_MAX_SIZE.1-4')], ['0x123'] * 3 + ['0x2400'])

    def test_cores_that_differ_are_shown_and_changed_each(self):
        run('setreg EGQ_AGEING_CTRL.1 AGE_PERIOD=9')
        before = [self.whole('EGQ_AGEING_CTRL.%d' % core) for core in (0, 1)]
        self.assertEqual([line.split()[0] for line in run('getreg EGQ_AGEING_CTRL')[1].splitlines()[::3]],
                         ['EGQ_AGEING_CTRL.0', 'EGQ_AGEING_CTRL.1'])
        run('setreg EGQ_AGEING_CTRL ENABLE=1')
        self.assertEqual([self.whole('EGQ_AGEING_CTRL.%d' % core) for core in (0, 1)],
                         [value | 1 << 16 for value in before])
        run('modify EGQ_PORT_CONFIG.1 3 DEFAULT_VLAN=8; modify EGQ_PORT_CONFIG 3 MIRROR_PROFILE=2')
        self.assertTrue(run('dump EGQ_PORT_CONFIG.1 3')[1].startswith('EGQ_PORT_CONFIG.1[3] = '))
        self.assertEqual([self.fields('dump EGQ_PORT_CONFIG.%d 3' % core)['DEFAULT_VLAN'] for core in (0, 1)],
                         [0, 8])
        self.assertEqual(run('dump EGQ_PORT_CONFIG 3')[1].count(' = '), 2)

    def test_instances_by_port_core_and_index(self):
        for name in ('NIF_PORT_MAX_SIZE.5', 'EGQ_PORT_PROFILE.1[7]', 'EGQ_PORT_PROFILE[6].0'):
            self.assertEqual(run('setreg %s 0x123' % name), (q.CMD_OK, ''))
        for name, value in (('NIF_PORT_MAX_SIZE.5', 0x123), ('NIF_PORT_MAX_SIZE.6', 0x2400),
                            ('EGQ_PORT_PROFILE[7].1', 0x123), ('EGQ_PORT_PROFILE.0[7]', 0),
                            ('EGQ_PORT_PROFILE.0[6]', 0x123), ('EGQ_PORT_PROFILE[6]', 0x123)):
            self.assertEqual(self.whole(name), value, name)
        self.assertEqual(run('setreg EGQ_PORT_PROFILE.*[6] 0x93')[0], q.CMD_OK)
        self.assertEqual([self.whole('EGQ_PORT_PROFILE.%d[6]' % core) for core in (0, 1)], [0x93] * 2)
        for name in ('NIF_PORT_MAX_SIZE.65', 'EGQ_PORT_PROFILE.2', 'EGQ_PORT_PROFILE[-1]',
                     'EGQ_PORT_PROFILE[]', 'EGQ_PORT_PROFILE[1][2]', 'EGQ_PORT_PROFILE[1]x',
                     'EGQ_PORT_PROFILE.0.1', 'EGQ_PORT_PROFILE[99999999999]', '[1]'):
            for line in ('getreg ' + name, 'setreg %s 1' % name, 'setreg %s STRIP_SIZE=1' % name):
                result, output = run(line)
                self.assertEqual(result, q.CMD_USAGE, line)
                self.assertIn("'%s'" % name, output, line)

    def test_what_cannot_be_written_stays(self):
        for words in ('DEVICE=1 REVISION=2', '0x12345'):
            self.assertEqual(run('setreg CMIC_DEVICE_ID ' + words)[0], q.CMD_USAGE)
        self.assertEqual(self.whole('CMIC_DEVICE_ID'), 0x114a10)
        run('setreg EGQ_AGEING_CTRL 0xffffffff')  # and bits without a field are 0
        self.assertEqual(self.whole('EGQ_AGEING_CTRL'), 0x1ffff)
        for words in ('ENABLE=2', 'AGE_PERIOD=65536', 'AGE_PERIOD=-1', '=1', 'AGE_PERIOD', 'AGE_PERIOD=',
                      'AGE_PERIOD=1x', 'enabled=0'):
            self.assertEqual(run('setreg EGQ_AGEING_CTRL ENABLE=0 ' + words)[0], q.CMD_USAGE, words)
        for words in ('', '1 2', '-1', '0x', '0x1g', '1 ENABLE=0'):
            self.assertEqual(run('setreg EGQ_AGEING_CTRL ' + words)[0], q.CMD_USAGE, words)
        self.assertEqual(self.whole('EGQ_AGEING_CTRL'), 0x1ffff)
        run('setreg EGQ_AGEING_CTRL ENABLE=0 AGE_PERIOD=0b101 ENABLE=1 AGE_PERIOD=7')
        self.assertEqual(self.whole('EGQ_AGEING_CTRL'), 0x10007)

    def test_a_chip_that_is_not_there(self):
        lines = ('getreg CMIC_LED_CTRL', 'setreg CMIC_LED_CTRL 1', 'setreg CMIC_LED_CTRL ENABLE=1',
                 'dump EGQ_PORT_CONFIG 0', 'modify EGQ_PORT_CONFIG 0 SPLIT_HORIZON=1')
        self.done(q.soc_deinit(0))
        self.addCleanup(q.soc_init, 0)
        for unit, message in ((0, 'BCM_E_INIT'), (7, 'not attached')):
            for line in lines:
                result, output = run(line, unit)
                self.assertEqual((result, message in output), (q.CMD_FAIL, True), output)

    def test_tables(self):
        self.assertEqual(run('modify EGQ_PORT_CONFIG 3 DEFAULT_VLAN=7 MIRROR_PROFILE=2'), (q.CMD_OK, ''))
        shown = self.fields('dump EGQ_PORT_CONFIG 3')
        self.assertEqual((shown['DEFAULT_VLAN'], shown['MIRROR_PROFILE'], shown['SPLIT_HORIZON']), (7, 2, 0))
        self.assertEqual(run('modify EGQ_PORT_CONFIG.1 3 DEFAULT_VLAN=8')[0], q.CMD_OK)
        self.assertEqual(self.fields('dump EGQ_PORT_CONFIG.0 3')['DEFAULT_VLAN'], 7)
        self.assertEqual(self.fields('dump EGQ_PORT_CONFIG.1 3')['DEFAULT_VLAN'], 8)
        before = run('dump EGQ_PORT_CONFIG 2 4')
        for words in ('', ' 4 3', ' 3 4 5', ' x', '.x 3', 's 3', ' -1 3', '.2 3', '.-2 3', '[1] 3'):
            self.assertEqual(run('dump EGQ_PORT_CONFIG' + words)[0], q.CMD_USAGE, words)
        for words in ('', ' 3', ' DEFAULT_VLAN=1', ' x DEFAULT_VLAN=1'):
            self.assertEqual(run('modify EGQ_PORT_CONFIG' + words)[0], q.CMD_USAGE, words)
        for words in ('256 DEFAULT_VLAN=1', '3 DEFAULT_VLAN=1 SPLIT_HORIZON=4', '3 DEFAULT_VLAN=1 TTL=4'):
            self.assertEqual(run('modify EGQ_PORT_CONFIG ' + words)[0], q.CMD_USAGE, words)
        self.assertEqual(run('dump EGQ_PORT_CONFIG 2 4'), before)
        wide = 2 ** 64 + 1
        run('modify EGQ_VLAN_MEMBERSHIP 4095 MEMBERS=%#x UNTAGGED=%#x' % (wide, 2 ** 64 - 1))
        self.assertEqual(self.fields('dump EGQ_VLAN_MEMBERSHIP 4095'),
                         {'MEMBERS': wide, 'UNTAGGED': 2 ** 64 - 1})
        self.assertEqual(len(run('dump EGQ_PORT_CONFIG.0 min max')[1].splitlines()), 256 * 6)

    def test_elements_of_arrays_of_tables(self):
        arrays = [name for name, row in self.rows('listmem').items() if row[3] != '1']
        self.assertTrue(arrays)
        for name in arrays:
            field = run('fields ' + name)[1].splitlines()[1].split()[1]
            self.assertEqual(run('modify %s[1].0 2 %s=1' % (name, field)), (q.CMD_OK, ''))
            self.assertEqual([self.fields('dump %s%s.0 2' % (name, element))[field]
                              for element in ('', '[0]', '[1]')], [0, 0, 1])


if __name__ == '__main__':
    unittest.main()
