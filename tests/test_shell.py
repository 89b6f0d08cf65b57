"""The diagnostic shell."""
import ctypes
import os
import pty
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

import QuorelApiNew as q
from console import printed, run, text_cells, text_in
from recording import library
from simulator import SwitchTest, pointer

SETTINGS = ['rcload', 'rcerror', 'lperror', 'iferror', 'rctest', 'more_lines', 'report_time', 'report_status']


class ShellTest(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        q.diag_init()
        before = [getattr(q.cvar, 'sh_set_' + name) for name in SETTINGS]
        self.addCleanup(lambda: [setattr(q.cvar, 'sh_set_' + name, value)
                                 for name, value in zip(SETTINGS, before)])
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)

    def file(self, name, text):
        path = os.path.join(self.directory, name)
        with open(path, 'wb') as out:
            out.write(text)
        return path

    def assertRuns(self, line, output, result=q.CMD_OK, unit=0):
        self.assertEqual(run(line, unit), (result, output), line)


class Words(ctypes.Structure):
    """args_t"""
    _fields_ = [('count', ctypes.c_int), ('next', ctypes.c_int), ('word', ctypes.c_uint16 * 64),
                ('text', ctypes.c_char * 4096)]


def words(*texts):
    record = Words(len(texts), 1)
    for number, text in enumerate(texts):
        record.word[number] = 16 * number
        ctypes.memmove(ctypes.addressof(record) + Words.text.offset + 16 * number, text, len(text))
    return record


class Language(ShellTest):
    def test_words_quotes_and_variables(self):
        run('set x 5')
        for line, output in (
                ('', ''), ('   # nothing', ''), (';; ;', ''), ('echo', '\n'), ('echo a   b', 'a b\n'),
                ('echo "a  b" \'c  d\' e"f"\'g\'', 'a  b c  d efg\n'), ('echo $x ${x}y $xy.', '5 5y .\n'),
                ("echo '$x' \"$x\" \\$x", '$x 5 $x\n'), ('echo a;echo b', 'a\nb\n'), ('echo a#b #c', 'a#b\n'),
                ('echo "a;b" a\\;b', 'a;b a;b\n'), ('echo $ ${x $', '$ ${x $\n'),
                ('echo $unit; 3:echo $unit; 4: echo "$unit:"', '0\n3\n4:\n'),
                ('set y=$x$x; echo $y', '55\n'), ('unset y; echo "$y"', '\n'), ('ec hi', 'hi\n')):
            self.assertRuns(line, output)
        for line, result in (("echo 'a", q.CMD_USAGE), ('echo "', q.CMD_USAGE), ('&', q.CMD_USAGE),
                             ('0:', q.CMD_USAGE), ('nothing', q.CMD_NFND), ('u', q.CMD_NFND),
                             ('exit', q.CMD_EXIT), ('0:;', q.CMD_USAGE), ('3:4:echo', q.CMD_NFND),
                             ('set unit 3', q.CMD_USAGE), ('set 1x 3', q.CMD_USAGE), ('unset y', q.CMD_FAIL),
                             ('set report_time maybe', q.CMD_USAGE), ('sleep -1', q.CMD_USAGE)):
            self.assertEqual(run(line)[0], result, line)
            self.assertEqual(run(line + '\necho after')[1].count('after\n'), 0)

    def test_hostile_lines(self):
        for line, result in (('x' * 1000000, q.CMD_NFND), ('echo ' + 'x' * 4096, q.CMD_USAGE),
                             (';' * 1000000, q.CMD_OK),
                             ('echo' + ' x' * 64, q.CMD_USAGE), ('99999999999:echo', q.CMD_NFND),
                             ('\xff\x01', q.CMD_NFND),
                             ('$x' * 1000, q.CMD_NFND), ("'" * 999999, q.CMD_USAGE),
                             ('${' * 1000, q.CMD_NFND)):
            self.assertEqual(run(line)[0], result, line[:20])
        run('set b0 "echo deep"')
        for level in range(40):
            run("set b%d 'loop 1 \"$b%d\"'" % (level + 1, level))
        self.assertEqual((run('loop 1 "$b20"'), run('loop 1 "$b40"')[0]), ((q.CMD_OK, 'deep\n'), q.CMD_FAIL))
        self.assertEqual(library.sh_process_command(0, None), q.CMD_USAGE)
        for unit in (-1, 16, 2 ** 31 - 1, -2 ** 31):
            self.assertRuns('echo $unit', '%d\n' % unit, unit=unit)
            self.assertRuns('ps', 'ps: unit %d is not attached\n' % unit, q.CMD_FAIL, unit)

    def test_the_text_is_not_written_to(self):
        line = ''.join(['set x ', '1; echo "$x" # end'])
        copy = line[:1] + line[1:]
        run(line)
        self.assertEqual(line, copy)
        for text, result in (('echo "a', q.CMD_USAGE), ('', q.CMD_OK), ('detach; nothing', q.CMD_OK),
                             ('nothing', q.CMD_NFND)):
            self.assertEqual(q.sh_process_command_check(0, text), result)
        self.assertEqual(q.sh_check_attached('', 0), 0)

    def test_tests_conditions_and_loops(self):
        for test, holds in (('5 == 0x5', 1), ('a != b', 1), ('9 < 10', 1), ('9 > 10', 0),
                            ('b < a', 0), ('-1 <= 0', 1)):
            self.assertRuns("if 'test %s' 'echo yes' 'echo no'" % test, 'yes\n' if holds else 'no\n')
        self.assertEqual(run('test 1 = 1')[0], q.CMD_USAGE)
        self.assertRuns("for i 2 4 'echo $i'", '2\n3\n4\n')
        self.assertRuns("loop 2 'loop 2 \"echo x\"'", 'x\n' * 4)
        failing = "loop 3 'echo x; test 1 == 2'"
        self.assertRuns(failing, 'x\n', q.CMD_FAIL)
        q.cvar.sh_set_lperror = 0
        self.assertRuns(failing, 'x\n' * 3)
        self.assertRuns("loop 3 'echo x; exit'", 'x\n', q.CMD_EXIT)
        self.assertEqual(run("if 'test 1 == 1' 'test 1 == 2'")[0], q.CMD_FAIL)
        run('set iferror off')
        self.assertEqual((q.cvar.sh_set_iferror, run("if 'test 1 == 1' 'test 1 == 2'")[0]), (0, q.CMD_OK))

    def test_reports_help_and_version(self):
        q.cvar.sh_set_report_status = 1
        self.assertRuns('echo x', 'x\necho: CMD_OK\n')
        q.cvar.sh_set_report_status, q.cvar.sh_set_report_time = 0, 1
        self.assertRegexpMatches(run('echo x')[1], r'^x\necho: 0\.\d{6} s\n$')
        q.cvar.sh_set_report_time = 0
        names = [line.split()[0] for line in run('help')[1].splitlines() if line.startswith('  ')]
        self.assertTrue(set(['help', 'set', 'ps', 'rcload', 'config']) <= set(names))
        for name in names:
            self.assertEqual(run('help ' + name)[0], q.CMD_OK, name)
        self.assertEqual(run('help nothing')[0], q.CMD_FAIL)
        brief, full = printed(q.sh_print_version, 0)[1], printed(q.sh_print_version, 1)[1]
        self.assertIn(q.cvar._build_release, brief)
        self.assertTrue(full.startswith(brief) and len(full) > len(brief))

    def test_variables_of_units(self):
        run('set x of-0')
        q.sh_swap_unit_vars(1)
        self.assertRuns('set x of-1; echo $x', 'of-1\n')
        for unit, output in ((0, 'of-0\n'), (-1, 'of-0\n'), (16, 'of-0\n'), (1, 'of-1\n'), (0, 'of-0\n')):
            q.sh_swap_unit_vars(unit)
            self.assertRuns('echo $x', output)

    def test_background_commands_wait_for_the_line(self):
        result, output = run('echo one & echo two')
        self.assertEqual(result, q.CMD_OK)
        self.assertRegexpMatches(output, r'^two\n\[(\d+)\] echo one\none\n\[\1\] CMD_OK\n$')
        self.assertIn('CMD_OK       echo one', run('jobs')[1])


class CommandFiles(ShellTest):
    def load(self, path, words=None):
        return printed(q.sh_rcload_file, 0, words, path, 0)

    def test_lines_words_and_depth(self):
        q.cvar.sh_rcload_depth = 0
        inner = self.file('inner', 'echo inner $1 $2.\nexit\necho never\n')
        outer = self.file('outer.soc', '# comment\r\necho one\\\n two\nrcload %s a "b c"\n'
                          'echo $1 end' % inner)
        self.assertEqual(printed(library.sh_rcload_file, 0, None, outer[:-4], 1),
                         (q.CMD_OK, 'one two\ninner a b c.\n end\n'))
        self.assertEqual(q.cvar.sh_rcload_depth, 0)
        endless = self.file('endless', '')
        self.file('endless', 'set depth 1\nrcload ' + endless)
        q.cvar.sh_rcload_depth = -2 ** 31
        result, output = run('rcload ' + endless)
        self.assertEqual((result, q.cvar.sh_rcload_depth), (q.CMD_FAIL, 0))
        self.assertIn('more than', output)

    def test_words_in_records(self):
        path = self.file('commands', 'echo $1/$2/$3')

        def load(record):
            return printed(library.sh_rcload_file, 0, ctypes.byref(record), path, 0)

        self.assertEqual(load(words('name', 'one', 'two')), (q.CMD_OK, 'one/two/\n'))
        for member, value in (('count', -1), ('count', 65), ('count', 2 ** 31 - 1), ('next', -1),
                              ('next', 4)):
            record = words('name', 'one', 'two')
            setattr(record, member, value)
            self.assertEqual(load(record), (q.CMD_OK, '//\n'), (member, value))
        unending = words('name', 'one')
        unending.word[1] = 4096
        self.assertEqual(load(unending)[1], '//\n')
        unending.word[1] = 4000
        ctypes.memset(ctypes.addressof(unending) + Words.text.offset + 4000, 65, 96)
        self.assertEqual(load(unending)[1], '//\n')
        parameters = q.appl_dcmn_init_param_t()
        self.assertEqual(library.appl_dcmn_init_usage_parse(0, ctypes.byref(unending), pointer(parameters)),
                         q.CMD_USAGE)
        self.assertEqual(library.appl_dcmn_init_usage_parse(3, ctypes.byref(words('init', 'modid=-5')),
                                                            pointer(parameters)), q.CMD_OK)
        self.assertEqual((parameters.unit, parameters.modid, parameters.nof_devices), (3, -5, 1))

    def test_what_ends_a_file(self):
        commands = self.file('commands', 'nothing\necho after\n')
        tests = self.file('tests', 'test 1 == 2\necho after\n')
        for path, setting, result in ((commands, 'rcerror', q.CMD_NFND), (tests, 'rctest', q.CMD_FAIL)):
            ended = run('rcload ' + path)
            self.assertEqual(ended[0], result)
            self.assertEqual(('after' in ended[1], path + ':1: ' in ended[1]), (False, True))
            run('set %s off' % setting)
            went_on = run('rcload ' + path)
            self.assertEqual((went_on[0], 'after' in went_on[1]), (q.CMD_OK, True))
        q.cvar.sh_set_rcload = 0
        self.assertEqual(run('rcload ' + tests)[0], q.CMD_FAIL)

    def test_files_that_cannot_be_read(self):
        for path in (self.directory, self.directory + '/none', '/dev/zero', self.file('nul', 'echo a\0b\n')):
            self.assertEqual(run('rcload ' + path)[0], q.CMD_FAIL)
        self.assertEqual(library.sh_rcload_file(0, None, None, 0), q.CMD_USAGE)

    def test_the_file_of_a_unit(self):
        def name(unit=0):
            with text_cells(1) as (cell,):
                q.diag_rc_get(unit, cell)
                return text_in(cell)

        self.addCleanup(q.diag_rc_set, 0, '')
        self.assertIs(name(), None)
        self.done(q.diag_rc_load(0))
        self.done(q.sal_config_set('rcload.0', self.file('property', 'port 1 speed=1000')))
        self.addCleanup(library.sal_config_set, 'rcload.0', None)
        self.done(q.diag_rc_load(0))
        self.assertEqual(self.value(q.bcm_port_speed_get, 1), 1000)
        q.diag_rc_set(0, self.file('own', 'port 1 speed=10'))
        self.assertEqual(name(), os.path.join(self.directory, 'own'))
        q.cvar.sh_set_rcload = 0
        self.assertStatus(q.BCM_E_DISABLED, q.diag_rc_load(0))
        q.cvar.sh_set_rcload = 1
        self.done(q.diag_rc_load(0))
        self.assertEqual(self.value(q.bcm_port_speed_get, 1), 10)
        q.diag_rc_set(0, self.directory + '/none')
        self.assertStatus(q.BCM_E_NOT_FOUND, q.diag_rc_load(0))
        q.diag_rc_set(0, self.file('bad', 'port 1 speed=11'))
        self.assertStatus(q.BCM_E_FAIL, printed(q.diag_rc_load, 0)[0])
        self.assertStatus(q.BCM_E_UNIT, q.diag_rc_load(7))


class Commands(ShellTest):
    def test_ports(self):
        self.assertRuns('port 1-2,ce4 speed=1000 enable=0', '')
        speeds = [self.value(q.bcm_port_speed_get, port) for port in (1, 2, 3, 5)]
        self.assertEqual(speeds, [1000, 1000, 100000, 1000])
        rows = [line.split() for line in run('ps 2,3')[1].splitlines()[1:]]
        self.assertEqual([row[:5] for row in rows], [['ce1', '2', 'disabled', 'down', '1000'],
                                                     ['ce2', '3', 'enabled', 'up', '100000']])
        self.assertEqual(len(run('ps')[1].splitlines()), 65)
        for words in ('65 speed=1000', '2-1 speed=1', 'ce99 speed=1', '1 speed',
                      '1 colour=1', '-1 speed=1'):
            self.assertEqual(run('port ' + words)[0], q.CMD_USAGE, words)
        self.assertEqual(run('port 1 speed=11'), (q.CMD_FAIL, 'port: speed=11 of port 1: BCM_E_PARAM\n'))
        self.assertEqual(run('port 1 vlan=65537')[0], q.CMD_FAIL)

    def test_vlans_and_addresses(self):
        self.assertRuns('vlan create 5; vlan add 5 1-3,7; vlan add 5 9 untagged; vlan remove 5 2', '')
        self.assertIn('vlan 5: ports 1,3,7,9; untagged 9\n', run('vlan show')[1])
        self.assertRuns('vlan create 5', 'vlan: create 5: BCM_E_EXISTS\n', q.CMD_FAIL)
        self.assertRuns('l2 add 02:00:00:00:00:01 5 ce6 static; l2 add 02:00:00:00:00:02 1 3; l2 count',
                        '2 addresses\n')
        self.assertEqual(self.port_of('02:00:00:00:00:01', 5), 7)
        self.assertIn('mac=02:00:00:00:00:01 vlan=5 port=7 static\n', run('l2 show')[1])
        self.assertRuns('l2 remove 02:00:00:00:00:01 5; l2 count', '1 addresses\n')
        for words in ('add 02:00 1 1', 'add 02:00:00:00:00:01 65536 1', 'add 02:00:00:00:00:01 1 1-2',
                      'nothing'):
            self.assertEqual(run('l2 ' + words)[0], q.CMD_USAGE, words)

    def test_properties_and_units(self):
        self.assertRuns('config set a_name=some value; config get a_name; config remove a_name',
                        'some value\n')
        self.assertRuns('config get a_name', 'config: no property a_name\n', q.CMD_FAIL)
        path = os.path.join(self.directory, 'saved')
        self.assertRuns('config save %s l2_*; config append %s l2_*' % (path, path), '')
        with open(path) as saved:
            self.assertEqual(saved.read(), 'l2_age_timer=300\n' * 2)
        self.assertRuns('attach 4; units; detach 4', 'unit 0: attached\nunit 4: attached\n')
        self.assertRuns('6:init', '')
        self.assertRuns('6:shutdown', '')
        self.assertEqual(run('attach 16')[0], q.CMD_FAIL)

    def test_packet_watcher(self):
        self.assertEqual((q.pw_running(0), q.pw_stop(0, 1), q.pw_running(99)), (0, q.CMD_FAIL, 0))
        self.assertEqual(run('pw start')[0], q.CMD_OK)
        self.assertEqual((q.pw_running(0), run('pw start')[0]), (1, q.CMD_FAIL))
        self.assertIn('runs, 0 packets', run('pw')[1])
        self.assertEqual((q.pw_stop(0, 0), q.pw_running(0)), (q.CMD_OK, 0))

    def test_ranges(self):
        low, high = q.intp(), q.intp()
        for first, last, expected in (('1', '5', (1, 5)), ('*', '0x7', (0, 7)), ('3', '', (3, 9)),
                                      ('0b11', '3', (3, 3)), ('5', '1', None), ('-1', '2', None),
                                      ('1', '10', None), ('x', '2', None), ('1', '2 x', None),
                                      ('99999999999999999999', '2', None)):
            low.assign(-7)
            status = q.diag_parse_range(first, last, low, high, 0, 9)
            self.assertEqual((low.value(), high.value()) if status == 0 else None, expected, (first, last))
            self.assertTrue(status == 0 or low.value() == -7)
        self.assertEqual(library.diag_parse_range(None, None, None, None, 0, 9), -1)


class Sessions(ShellTest):
    def session(self, code, typed):
        """(exit code, output) of a process that runs the code with that standard input."""
        process = subprocess.Popen([sys.executable, '-c', 'import _QuorelApiNew as q\n' + code],
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        return process.communicate(typed)[0], process.returncode

    def test_standard_input_until_its_end(self):
        for entry in ('sh_process(0, "p", 0)', 'belvok_sh_process(0, "p", 0)'):
            self.assertEqual(self.session('print q.%s' % entry, 'echo a\nnothing\necho b'),
                             ('a\nnothing: no such command\nb\n%d\n' % q.CMD_OK, 0))
        self.assertEqual(self.session('print q.sh_process(0, "p", 1)', ''), ('%d\n' % q.CMD_EXIT, 0))
        self.assertEqual(self.session('print q.diag_shell()\nprint raw_input()', 'echo a\nexit\nrest\n'),
                         ('a\nNone\nrest\n', 0))
        self.assertEqual(printed(q.belvok_sh_process_command, 0, 'echo a'), (q.CMD_OK, 'a\n'))

    def test_background_commands_are_allowed_first(self):
        code = 'for _ in 1, 2: print q.sh_process_command(0, "echo a &"), q.sh_bg_init()'
        output, status = self.session(code, '')
        self.assertRegexpMatches(output, r'^.*\n%d None\n\[1\] echo a\na\n\[1\] CMD_OK\n%d None\n$'
                                 % (q.CMD_NOTIMPL, q.CMD_OK))
        self.assertEqual(status, 0)

    def test_prompt_and_pages_on_a_terminal(self):
        terminal, other_end = pty.openpty()
        code = 'import _QuorelApiNew as q\nq.sh_process(3, "p", 0)'
        process = subprocess.Popen([sys.executable, '-c', code], stdin=other_end, stdout=other_end,
                                   close_fds=True)
        os.close(other_end)
        os.write(terminal, "set more_lines 2\nfor i 1 7 'echo line$i'\n\nq\nexit\n")
        shown = ''
        try:
            while True:
                shown += os.read(terminal, 4096)
        except OSError:  # the other end is closed
            os.close(terminal)
        self.assertEqual(process.wait(), 0)
        self.assertEqual([shown.count(text) for text in ('p.3> ', 'more? ', 'line4', 'line5')], [3, 2, 1, 0])

    def interrupt_soon(self):
        """A process that sends this one Ctrl-C."""
        code = 'import os, signal, sys, time; time.sleep(.2); os.kill(int(sys.argv[1]), signal.SIGINT)'
        return subprocess.Popen([sys.executable, '-c', code, str(os.getpid())])

    def test_ctrl_c(self):
        # Whoever started this in the background may have had it ignored.
        before = signal.signal(signal.SIGINT, signal.default_int_handler)
        self.addCleanup(signal.signal, signal.SIGINT, before)
        q.sh_ctrl_c_take()
        child = self.interrupt_soon()
        self.assertRuns('sleep 30000; echo never', '', q.CMD_INTR)
        child.wait()
        self.assertRuns('echo again', 'again\n')
        q.sh_block_ctrl_c(1)
        child = self.interrupt_soon()
        self.assertRuns('sleep 500; echo blocked', 'blocked\n')
        child.wait()
        # Unblocked, it goes on to Python, who had it before.
        with self.assertRaises(KeyboardInterrupt):
            q.sh_block_ctrl_c(0)
            for _ in range(1000):
                pass


class Records(unittest.TestCase):
    def test_an_entry_of_the_command_table(self):
        entry = q.cmd_t()
        for name in ('c_cmd', 'c_usage', 'c_help'):
            self.assertIs(getattr(entry, name), None)
            setattr(entry, name, name + ' text')
            self.assertEqual(getattr(entry, name), name + ' text')
        self.assertIs(entry.c_f, None)
        self.assertRaises(TypeError, setattr, entry, 'c_f', lambda unit, args: 0)
        results = [getattr(q, 'CMD_' + name) for name in 'OK FAIL USAGE NFND EXIT INTR NOTIMPL'.split()]
        self.assertEqual(results, range(0, -7, -1))
        self.assertRaises(TypeError, setattr, q.cvar, 'sh_set_more_lines', '1')


if __name__ == '__main__':
    unittest.main()
