"""The shell's commands on registers and tables."""
import unittest

import QuorelApiNew as q
from chip import REGISTERS
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
                ('EGQ_AGEING_CTRL', q.EGQ_AGEING_CTRLr, {'AGE_PERIOD': 0x55, 'ENABLE': 1}),
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
        for line, result in (('getreg NOTHING', q.CMD_FAIL), ('getreg CMIC_IRQ_MASK[4]', q.CMD_FAIL),
                             ('getreg CMIC_IRQ_MASK[', q.CMD_FAIL), ('getreg', q.CMD_USAGE),
                             ('getreg EGQ_AGEING_CTRL.9', q.CMD_FAIL), ('listreg NOTHING*', q.CMD_FAIL),
                             ('setreg EGQ_AGEING_CTRL ENABLE=2', q.CMD_FAIL),
                             ('setreg EGQ_AGEING_CTRL 0x100000000', q.CMD_USAGE),
                             ('setreg EGQ_AGEING_CTRL AGE_PERIOD=1 NOTHING=1', q.CMD_FAIL),
                             ('setreg EGQ_AGEING_CTRL 0x' + 'f' * 161, q.CMD_USAGE),
                             ('dump NOTHING 0', q.CMD_USAGE), ('dump EGQ_PORT_CONFIG 0 256', q.CMD_USAGE),
                             ('modify EGQ_PORT_CONFIG -1 SPLIT_HORIZON=1', q.CMD_FAIL)):
            self.assertEqual(run(line)[0], result, line)
        self.assertEqual(run('getreg EGQ_AGEING_CTRL'), before)

    def whole(self, name):
        """What getreg shows of the whole register."""
        result, output = run('getreg ' + name)
        self.assertEqual(result, q.CMD_OK, output)
        return int(output.splitlines()[0].split(' = ')[1], 16)

    def test_registers_are_listed_by_pattern(self):
        names = dict((line.split()[0], line.split()[1:]) for line in run('listreg')[1].splitlines())
        self.assertEqual(sorted(names), sorted(name[:-1] for name in REGISTERS.values()))
        for pattern, expected in (('CCS_MAILBOX', ['CCS_MAILBOX']), ('*_MAILBO?', ['CCS_MAILBOX']),
                                  ('CMIC_DMA_[!C]*', ['CMIC_DMA_STAT', 'CMIC_DMA_DESC_ADDR'])):
            listed = run('listreg ' + pattern)[1].splitlines()
            self.assertEqual([line.split()[0] for line in listed], expected)
        self.assertEqual(names['CCS_MAILBOX'], '256 bits, 2 of them'.split())
        self.assertEqual((run('listreg ccs*')[0], run('listreg A* B*')[0]), (q.CMD_FAIL, q.CMD_USAGE))

    def test_instances_by_port_core_and_index(self):
        for name in ('NIF_PORT_MAX_SIZE.5', 'EGQ_PORT_PROFILE.1[7]', 'EGQ_PORT_PROFILE[6].0'):
            self.assertEqual(run('setreg %s 0x123' % name), (q.CMD_OK, ''))
        for name, value in (('NIF_PORT_MAX_SIZE.5', 0x123), ('NIF_PORT_MAX_SIZE.6', 0x2400),
                            ('EGQ_PORT_PROFILE[7].1', 0x123), ('EGQ_PORT_PROFILE.0[7]', 0),
                            ('EGQ_PORT_PROFILE.0[6]', 0x123), ('EGQ_PORT_PROFILE[6]', 0x123)):
            self.assertEqual(self.whole(name), value, name)
        self.assertEqual(run('setreg EGQ_PORT_PROFILE.*[6] STRIP_SIZE=9')[0], q.CMD_OK)
        self.assertEqual([self.whole('EGQ_PORT_PROFILE.%d[6]' % core) for core in (0, 1)], [0x93] * 2)
        for name, message in (
                ('NIF_PORT_MAX_SIZE', 'BCM_E_PORT'), ('NIF_PORT_MAX_SIZE.65', 'BCM_E_PORT'),
                ('EGQ_PORT_PROFILE.2', 'BCM_E_PORT'), ('EGQ_PORT_PROFILE[-1]', 'BCM_E_PARAM'),
                ('EGQ_PORT_PROFILE[]', 'no register'), ('EGQ_PORT_PROFILE[1][2]', 'no register'),
                ('EGQ_PORT_PROFILE[1]x', 'no register'), ('EGQ_PORT_PROFILE.0.1', 'no register'),
                ('EGQ_PORT_PROFILE[99999999999]', 'no register'), ('[1]', 'no register')):
            for line in ('getreg ' + name, 'setreg %s 1' % name, 'setreg %s STRIP_SIZE=1' % name):
                result, output = run(line)
                self.assertEqual(result, q.CMD_FAIL, line)
                self.assertIn(message, output, line)

    def test_what_cannot_be_written_stays(self):
        self.assertEqual(run('setreg CMIC_DEVICE_ID DEVICE=1 REVISION=2'), (q.CMD_OK, ''))
        self.assertEqual(self.whole('CMIC_DEVICE_ID'), 0x114a10)
        run('setreg EGQ_AGEING_CTRL 0xffffffff')  # and bits without a field are 0
        self.assertEqual(self.whole('EGQ_AGEING_CTRL'), 0x1ffff)
        for words in ('ENABLE=2', 'AGE_PERIOD=65536', 'AGE_PERIOD=-1', '=1', 'AGE_PERIOD', 'AGE_PERIOD=',
                      'AGE_PERIOD=1x', 'enable=0'):
            self.assertEqual(run('setreg EGQ_AGEING_CTRL ENABLE=0 ' + words)[0], q.CMD_FAIL, words)
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
        for words in ('', ' 4 3', ' 3 4 5', ' x', '.x 3', 's 3'):
            self.assertEqual(run('dump EGQ_PORT_CONFIG' + words)[0], q.CMD_USAGE, words)
        for words in (' -1 3', '.2 3', '.-2 3'):
            self.assertEqual(run('dump EGQ_PORT_CONFIG' + words)[0], q.CMD_FAIL, words)
        for words in ('', ' 3', ' DEFAULT_VLAN=1', ' x DEFAULT_VLAN=1'):
            self.assertEqual(run('modify EGQ_PORT_CONFIG' + words)[0], q.CMD_USAGE, words)
        for words in ('256 DEFAULT_VLAN=1', '3 DEFAULT_VLAN=1 SPLIT_HORIZON=4', '3 DEFAULT_VLAN=1 TTL=4'):
            self.assertEqual(run('modify EGQ_PORT_CONFIG ' + words)[0], q.CMD_FAIL, words)
        self.assertEqual(run('dump EGQ_PORT_CONFIG 2 4'), before)
        wide = 2 ** 64 + 1
        run('modify EGQ_VLAN_MEMBERSHIP 4095 MEMBERS=%#x UNTAGGED=%#x' % (wide, 2 ** 64 - 1))
        self.assertEqual(self.fields('dump EGQ_VLAN_MEMBERSHIP 4095'),
                         {'MEMBERS': wide, 'UNTAGGED': 2 ** 64 - 1})
        self.assertEqual(len(run('dump EGQ_PORT_CONFIG 0 255')[1].splitlines()), 256 * 6)


if __name__ == '__main__':
    unittest.main()
