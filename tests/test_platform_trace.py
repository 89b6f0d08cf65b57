"""The platform's trace and log, and the output of shell commands as text."""
import ctypes
import subprocess
import sys
import unittest

import QuorelApiNew as q
from binding import error_of
from console import printed, run
from platform_stand_in import PlatformTest
from recording import library

# Told when a unit is attached.
attach_callback = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)

REGISTER, WIDE = q.EGQ_AGEING_CTRLr, q.EGQ_FIELD_SELECT_MAPr


def log(severity, layer=0, source=0, unit=-1, text='text', where=('file.c', 12, 'caller')):
    args = where + (severity, layer, source, unit, text)
    return printed(q.BelvokWriteBslLogMsg, *args)[1]


class Trace(PlatformTest):
    def test_what_is_done_while_it_captures(self):
        self.assertEqual(q.getTrace(), '')
        q.mapSandDevice(0)
        q.captureTrace(True)
        q.addSandDevice(1, 2, 3, 4)
        self.set(REGISTER, 0x101, port=1)
        self.get(WIDE, 0, 2)
        self.done(q.soc_mem_write(0, q.STC_COUNTERm, -1, 3, self.array(5)))
        address = q.soc_reg_addr(0, REGISTER, 1, 0)
        q.belvok_read_low(0, address)
        q.captureTrace(False)
        q.mapSandDevice(0)
        lines = q.getTrace().splitlines()
        self.assertEqual(lines[0], 'addSandDevice(0001:02:03.4, 0) = 1')
        self.assertEqual(lines[1], 'unit 0 write %08x EGQ_AGEING_CTRL.1 = 0x00000101' % address)
        self.assertRegexpMatches(lines[2], r'^unit 0 read [0-9a-f]{8} EGQ_FIELD_SELECT_MAP\[2\].0 = 0x0{32}$')
        self.assertRegexpMatches(lines[3], r'^unit 0 write [0-9a-f]{8} STC_COUNTER\[0\]\[3\] = 0x0{15}5$')
        self.assertEqual(lines[4], 'unit 0 read %08x EGQ_AGEING_CTRL.1 = 0x00000101' % address)
        self.assertEqual(lines[5:], ['belvok_read_low(0, 0x%x) = 0x101' % address])
        q.captureTrace(True)
        self.assertEqual(q.getTrace(), '')

    def test_a_line_says_which_of_several_memories(self):
        def name(mem, array, copy):
            q.captureTrace(True)
            self.done(q.soc_mem_array_write(0, mem, array, copy, 5, self.array(5)))
            return [line.split()[4] for line in q.getTrace().splitlines()]
        self.assertEqual(name(q.STC_COUNTERm, 3, -1), ['STC_COUNTER[3][5]'])
        self.assertEqual(name(q.FQP_CALENDARm, 0, 0), ['FQP_CALENDAR[0].0[5]'])
        self.assertEqual(name(q.FQP_CALENDARm, 1, 1), ['FQP_CALENDAR[1].1[5]'])
        self.assertEqual(name(q.IHP_MAC_TABLEm, 0, -1), ['IHP_MAC_TABLE.0[5]', 'IHP_MAC_TABLE.1[5]'])

    def test_the_first_access_to_a_chip_is_one_line(self):
        script = ('import QuorelApiNew as q; q.captureTrace(True); '
                  'q.soc_reg32_get(0, q.CMIC_LED_CTRLr, q.REG_PORT_ANY, 0, q.uintp()); print q.getTrace()')
        self.assertEqual(len(subprocess.check_output([sys.executable, '-c', script]).split('\n')), 3)
        self.done(q.bcm_attach(5, '', '', -1))
        q.captureTrace(True)
        self.done(q.soc_reg32_get(5, q.CMIC_LED_CTRLr, q.REG_PORT_ANY, 0, q.uintp()))
        self.assertEqual(len(q.getTrace().splitlines()), 1)

    def test_it_ends_at_a_nul_and_somewhere(self):
        q.captureTrace(True)
        library.platform_trace('before\0after', 12)
        self.assertEqual(q.getTrace(), 'before')
        q.captureTrace(True)
        block = 'x' * 300000
        for _ in range(5):
            library.platform_trace(block, len(block))
        self.assertEqual(len(q.getTrace()), 2 ** 20)

    def test_it_goes_to_the_log(self):
        q.traceToLogIs(True)
        self.assertEqual(printed(q.mapSandDevice, 0)[1], 'trace: mapSandDevice(0)\n')
        self.assertIn('trace: unit 0 write ', printed(self.set, REGISTER, 0x101)[1])
        self.assertEqual(printed(q.unmapSandDevice, 0)[1], 'trace: unmapSandDevice(0)\n')
        long_name = 'n' * 5000
        self.assertLess(len(printed(q.setSandAgentName, long_name)[1]), 1100)
        q.traceToLogIs(False)
        self.assertEqual((printed(q.mapSandDevice, 0)[1], q.getTrace()), ('', ''))

    def test_only_booleans_switch_it(self):
        self.assertEqual(error_of(q.captureTrace, 1),
                         (TypeError, "in method 'captureTrace', argument 1 of type 'bool'"))


class Log(PlatformTest):
    def test_a_message_says_where_it_comes_from(self):
        self.assertEqual(log(2, 3, 4, 5), 'error: layer 3 source 4 unit 5: file.c:12: caller(): text\n')
        self.assertEqual(log(1, text='two\nlines\n\n', where=('', 0, '')),
                         'fatal: layer 0 source 0: 0: two\nlines\n')
        q.setSandAgentName('agent 7')
        self.assertTrue(log(3).startswith('agent 7: warning: '))
        q.setSandAgentName('')
        self.assertTrue(log(3).startswith('warning: '))
        self.assertEqual(len(log(3, text='x' * 100000)), len(log(3, text='')) + 100000)

    def passing(self, layer, source):
        return [severity for severity in range(-1, 9) if log(severity, layer, source)]

    def test_thresholds(self):
        self.assertEqual(self.passing(0, 0), [1, 2, 3])
        q.BelvokSetTraceLevel(3, 255, 5)
        self.assertEqual([self.passing(3, 255), self.passing(3, 254), self.passing(2, 255)],
                         [[1, 2, 3, 4, 5], [1, 2, 3], [1, 2, 3]])
        for level, severities in ((0, []), (1, [1]), (6, range(1, 7)), (-5, []), (10 ** 9, range(1, 7))):
            q.BelvokSetAllTraceLevel(level)
            self.assertEqual([self.passing(3, 255), self.passing(15, 0)], [severities] * 2)
        for layer, source in ((-1, 0), (16, 0), (0, -1), (0, 256), (2 ** 31 - 1, 2 ** 31 - 1)):
            q.BelvokSetTraceLevel(layer, source, 6)
            self.assertEqual(self.passing(layer, source), [])


class ShellCommands(PlatformTest):
    def test_output_is_the_result(self):
        self.assertEqual(printed(q.sdc, 0, 'echo some words'), ('some words\n', ''))
        self.assertEqual(q.sdc(0, 'echo a; echo b'), 'a\nb\n')
        self.assertEqual(q.sdc(0, ''), '')
        self.assertEqual(q.sdc(0, 'help'), run('help')[1])
        self.assertIn('no such command', q.sdc(0, 'no_such_command'))
        self.assertIn('unit 9 is not attached', q.sdc(9, 'ps'))
        self.assertEqual(q.sdc(0, 'echo ' + 'x' * 1000), 'x' * 1000 + '\n')

    def test_output_ends_at_a_nul(self):
        put = ctypes.CDLL(None).putchar

        @attach_callback
        def told(unit, attach, info, user_data):
            for character in 'seen\0unseen':
                put(ord(character))
        self.done(library.bcm_attach_register(3, told, None))
        self.addCleanup(library.bcm_attach_unregister, 3, told, None)
        self.assertEqual(q.sdc(0, 'attach 3'), 'seen')


if __name__ == '__main__':
    unittest.main()
