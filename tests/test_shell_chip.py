"""The shell's commands on registers and tables."""
import unittest

import QuorelApiNew as q
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

    def test_tables(self):
        self.assertEqual(run('modify EGQ_PORT_CONFIG 3 DEFAULT_VLAN=7 MIRROR_PROFILE=2'), (q.CMD_OK, ''))
        shown = self.fields('dump EGQ_PORT_CONFIG 3')
        self.assertEqual((shown['DEFAULT_VLAN'], shown['MIRROR_PROFILE'], shown['SPLIT_HORIZON']), (7, 2, 0))
        self.assertEqual(run('modify EGQ_PORT_CONFIG.1 3 DEFAULT_VLAN=8')[0], q.CMD_OK)
        self.assertEqual(self.fields('dump EGQ_PORT_CONFIG.0 3')['DEFAULT_VLAN'], 7)
        self.assertEqual(self.fields('dump EGQ_PORT_CONFIG.1 3')['DEFAULT_VLAN'], 8)
        self.assertEqual(len(run('dump EGQ_PORT_CONFIG 0 255')[1].splitlines()), 256 * 6)


if __name__ == '__main__':
    unittest.main()
