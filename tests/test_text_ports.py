"""Ports, sets of ports and their abilities from text and back."""
import ctypes
import random
import unittest

import QuorelApiNew as q
from recording import library
from simulator import BLACK_HOLE, CPU_PORT, FRONT_PORTS, LOCAL_PORT, MODULE_PORT, SYSTEM_PORT, TRUNK
from text_buffer import Memory, buffer_of, formatted, null_calls, text_in, untouched_from

ALL_PORTS = [CPU_PORT] + FRONT_PORTS
NO_PORTS = ['', ' ', '-', ',', 'x', '5x', '1.5', '--', '0x', 'ce-', 'ce0-', '-ce0', '\xff\xfe', '1-2-3',
            '(1-2)', '3-1',
            'ce3-ce1', '%s%n', '0xg']
MISSING_PORTS = ['65', '-1', 'ce64', 'cpu1', 'xe0', '2147483647', 'ce' + '9' * 100000]
INVALID_GPORT = -1


class SinglePorts(unittest.TestCase):
    def setUp(self):
        self.cell = q.intp()

    def parse(self, parser, text, unit=0):
        """The port, or None if the status says there is none; the cell then has to stay as it was."""
        self.cell.assign(-77)
        status = parser(unit, text, self.cell)
        if status != q.BCM_E_NONE:
            self.assertEqual(self.cell.value(), -77)
            return {q.BCM_E_PORT: 'port', q.BCM_E_PARAM: 'text', q.BCM_E_UNIT: 'unit'}[status]
        return self.cell.value()

    def test_numbers_and_names(self):
        for parser in (q.parse_port, q.parse_bcm_port):
            for port in ALL_PORTS:
                name = q.mod_port_name(0, -1, port)
                for text in (str(port), name, name.upper(), ' %s ' % name, hex(port)):
                    self.assertEqual(self.parse(parser, text), port, text)
            for text in NO_PORTS:
                self.assertEqual(self.parse(parser, text), 'text', text)
            for text in MISSING_PORTS:
                self.assertEqual(self.parse(parser, text), 'port', text[:40])
            self.assertEqual(self.parse(parser, '1', unit=3), 'unit')
            self.assertEqual(parser(0, '1', None), q.BCM_E_PARAM)

    def test_gports_are_read_back(self):
        texts = {
            5: '5', LOCAL_PORT + 5: 'local=5', MODULE_PORT + (3 << 11) + 7: 'modport=3.7',
            TRUNK + 9: 'trunk=9', SYSTEM_PORT + 7: 'system-port=7', BLACK_HOLE: 'black-hole',
            (10 << 26) + 3: 'gport=0x28000003',
            LOCAL_PORT + 0x800: 'gport=0x04000800', SYSTEM_PORT + 0x1000000: 'gport=0x6d000000',
        }
        for gport, text in texts.items():
            self.assertEqual(formatted(q.format_gport, gport), text)
            self.assertEqual(self.parse(q.parse_bcm_port, text.upper()), gport)
        numbers = random.Random(2)
        for _ in range(2000):
            gport = numbers.randint(-2 ** 31, 2 ** 31 - 1)
            text = formatted(q.format_gport, gport)
            self.assertLess(len(text), 24)
            self.assertEqual(self.parse(q.parse_bcm_port, text), gport, text)
        self.assertEqual(formatted(q.format_gport, INVALID_GPORT), 'invalid')
        for text in """
                invalid local= local=2048 local=-1 local=ce0 trunk=x modport=3 modport=32768.1 modport=1.2.3
                modport=. gport= gport=0x1ffffffff gport=-1 system-port=0x1000000""".split():
            self.assertEqual(self.parse(q.parse_bcm_port, text), 'text', text)
        self.assertEqual(self.parse(q.parse_port, 'local=5'), 'text')
        null_calls('parse_port parse_bcm_port format_gport'.split())


class ModulePorts(unittest.TestCase):
    def test_module_and_port(self):
        memory = Memory(self, '_p_bcm_mod_port_s')
        own = [(str(port), (0, port)) for port in ALL_PORTS]
        own += [('ce3', (0, 4)), ('0:CE3', (0, 4)), (' 5 ', (0, 5))]
        for text, expected in own + [('0:64', (0, 64)), ('127:500', (127, 500)), ('0x7f:0x10', (127, 16))]:
            self.assertEqual(q.parse_mod_port(0, text, memory.pointer), q.BCM_E_NONE, text)
            self.assertEqual(tuple(map(ord, (memory.bytes(8)[0], memory.bytes(8)[4]))),
                             tuple(value & 255 for value in expected), text)
        before = memory.bytes(8)
        for status, texts in ((q.BCM_E_PARAM, NO_PORTS + [':', '1:', ':1', '1:2:3', 'x:1', '1:ce0', '1:x']),
                              (q.BCM_E_PORT, MISSING_PORTS + ['0:65', '5:576', '5:-1', '0:ce64']),
                              (q.BCM_E_BADID, ['128:1', '-1:1', '-2:1', '2147483647:0'])):
            for text in texts:
                self.assertEqual(q.parse_mod_port(0, text, memory.pointer), status, text[:40])
        self.assertEqual(memory.bytes(8), before)
        self.assertEqual(q.parse_mod_port(2, '1', memory.pointer), q.BCM_E_UNIT)
        null_calls(['parse_mod_port'])


class PortSets(unittest.TestCase):
    def setUp(self):
        self.sets = dict((name, Memory(self, name)) for name in ('_p_soc_pbmp_t', '_p__shr_pbmp_t'))

    def parse(self, parser, text, unit=0, start=''):
        """The ports, or the status; the set then has to stay as it was."""
        memory = self.sets['_p__shr_pbmp_t' if parser == q.parse_bcm_pbmp else '_p_soc_pbmp_t']
        ctypes.memset(memory.address, 0x5a, 72)
        status = parser(unit, text, memory.pointer)
        if status != q.BCM_E_NONE:
            self.assertEqual(memory.bytes(72), '\x5a' * 72)
            return status
        return [port for port, byte in ((port, ord(memory.bytes(72)[port / 8])) for port in range(576))
                if byte >> port % 8 & 1]

    def test_lists_of_ports(self):
        expected = {
            '5': [5], 'none': [], 'all': ALL_PORTS, '*': ALL_PORTS, '1-4,8': [1, 2, 3, 4, 8],
            '8 1-4\n': [1, 2, 3, 4, 8], 'ce0-CE2,cpu0': [0, 1, 2, 3], 'ce': FRONT_PORTS, 'CPU': [0],
            '0x1e': [1, 2, 3, 4], '0x6,ce9,5-5': [1, 2, 5, 10], 'none,,3,': [3], '1,1,1-2,2': [1, 2],
            '0-64': ALL_PORTS, '0x0': [], ','.join(map(str, ALL_PORTS)): ALL_PORTS,
        }
        for parser in (q.parse_pbmp_no_error, q.parse_bcm_pbmp, q.parse_pbmp):
            for text, ports in expected.items():
                self.assertEqual(self.parse(parser, text), ports, text)
        for parser in (q.parse_pbmp_no_error, q.parse_bcm_pbmp):
            for text in NO_PORTS + ['5,' + text for text in NO_PORTS if text.strip(' ,')]:
                self.assertEqual(self.parse(parser, text), q.BCM_E_PARAM, text)
            for text in MISSING_PORTS[2:] + ['65', '1-65', '1,65', '0x1' + '0' * 17, '0x1' + '0' * 144,
                                             '0x' + 'f' * 100000]:
                self.assertEqual(self.parse(parser, text), q.BCM_E_PORT, text[:40])
            self.assertEqual(self.parse(parser, '5', unit=1), q.BCM_E_UNIT)
            self.assertEqual(parser(0, '5', None), q.BCM_E_PARAM)
        null_calls('parse_pbmp_no_error parse_bcm_pbmp parse_pp_pbmp parse_small_integers'.split())

    def test_lists_of_numbers(self):
        for parser, most in ((q.parse_pp_pbmp, 255), (q.parse_small_integers, 575)):
            self.assertEqual(self.parse(parser, '0,3-5,%d' % most), [0, 3, 4, 5, most])
            self.assertEqual(self.parse(parser, 'all'), range(most + 1))
            self.assertEqual(self.parse(parser, '0x' + '0' * 200 + '3'), [0, 1])
            for text in ('%d' % (most + 1), '0-%d' % (most + 1), '0x1' + '0' * 144):
                self.assertEqual(self.parse(parser, text), q.BCM_E_PORT, text)
            for text in ('ce0', 'ce', '', '4294967296', '1-', '5-4', '1-2-3'):
                self.assertEqual(self.parse(parser, text), q.BCM_E_PARAM, text)

    def test_masks_are_read_back(self):
        numbers = random.Random(3)
        for ports in [[], [0], [31], [32], [575], range(576)] + [numbers.sample(range(576),
                                                                                n) for n in range(1, 200, 7)]:
            memory = self.sets['_p_soc_pbmp_t']
            self.parse(q.parse_small_integers, 'none,' + ','.join(map(str, ports)))
            expected = hex(sum(1 << port for port in ports)).rstrip('L')
            for formatter, argument in ((q.format_pbmp, memory.pointer), (q.format_bcm_pbmp, ports)):
                buffer = buffer_of(200)
                self.assertEqual(formatter(0, buffer, 200, argument), expected)
                self.assertEqual(text_in(buffer), expected)
            self.assertEqual(self.parse(q.parse_small_integers, expected), sorted(ports))

    def test_no_size_is_exceeded(self):
        full = '0x' + 'f' * 144
        for size in (-2 ** 31, -1, 0, 1, 2, 145, 146, 147, 148):
            buffer = buffer_of(200)
            fits = size > len(full)
            self.assertEqual(q.format_bcm_pbmp(0, buffer, size, range(576)), full if fits else None)
            self.assertTrue(untouched_from(buffer, max(0, len(full) + 1 if fits else min(size, 1))))
        buffer = buffer_of(200)
        self.assertIsNone(q.format_bcm_pbmp(1, buffer, 200, [1]))
        self.assertEqual(text_in(buffer), '')
        with self.assertRaises(ValueError):
            q.format_pbmp(0, buffer, 200, None)
        self.assertIsNone(library.format_bcm_pbmp(0, None, 200) or None)


class Abilities(unittest.TestCase):
    RATES = [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 16, 17, 18, 19, 20]

    def parse(self, parser, pointer_type, text):
        memory = Memory(self, pointer_type, '\x5a' * 36)
        status = parser(text, memory.pointer)
        if status != q.BCM_E_NONE:
            self.assertEqual(memory.bytes(36), '\x5a' * 36)
            return None if status == q.BCM_E_PARAM else status
        return memory

    def mode_text(self, mode, abbreviated):
        buffer = buffer_of(512)
        self.assertIsNone(q.format_port_mode(buffer, 512, mode, abbreviated))
        return text_in(buffer)

    def test_modes_are_read_back(self):
        numbers = random.Random(4)
        modes = [0, 0x20, sum(1 << bit for bit in self.RATES)] + [1 << bit for bit in self.RATES]
        modes += [sum(1 << bit for bit in numbers.sample(self.RATES, 5)) for _ in range(50)]
        for mode in modes:
            for abbreviated in (0, 1, -5):
                text = self.mode_text(mode, abbreviated)
                for given in (text, text.upper().replace(',', ' '), ',' + text + ', '):
                    self.assertEqual(self.parse(q.parse_port_mode, '_p_unsigned_int', given).word(), mode,
                                     given)
        self.assertEqual((self.mode_text(0x30020, 0), self.mode_text(0x30020, 1)),
                         ('1000mb-full,pause-tx,pause-rx', '1000fd,ptx,prx'))
        self.assertEqual((self.mode_text(0, 1), self.mode_text(2 ** 31, 1)), ('none', 'none'))

    def test_abilities_go_where_the_record_has_them(self):
        memory = self.parse(q.parse_port_ability, '_p__shr_port_ability_s',
                            '10hd,100mb-half,10gfd,pause-rx,lbp,SGMII,xfi,fiber,an')
        words = [ctypes.c_uint32.from_address(memory.address + 4 * word).value for word in range(9)]
        self.assertEqual(words, [0x5, 0x80, 0x20000, 1 << 4 | 1 << 10, 1 << 2, 0x100000, 0x40000, 0, 0])

    def test_longreach_abilities_are_read_back(self):
        flags = [0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x100, 0x200, 0x400, 0x1000, 0x2000]
        for ability in flags + [0, sum(flags), 0x1141]:
            source = Memory(self, '_p_soc_phy_control_longreach_ability_t',
                            chr(ability & 255) + chr(ability >> 8))
            buffer = buffer_of(512)
            q.format_phy_control_longreach_ability(buffer, 512, source.pointer)
            read = self.parse(q.parse_phy_control_longreach_ability,
                              '_p_soc_phy_control_longreach_ability_t', text_in(buffer))
            self.assertEqual(read.word(), ability, text_in(buffer))

    def test_hostile_text_and_sizes(self):
        for parser, pointer_type, name in (
                (q.parse_port_mode, '_p_unsigned_int', 'parse_port_mode'),
                (q.parse_port_ability, '_p__shr_port_ability_s', 'parse_port_ability'),
                (q.parse_phy_control_longreach_ability, '_p_soc_phy_control_longreach_ability_t',
                 'parse_phy_control_longreach_ability')):
            for text in ('', ',', ' ,\t', 'x', '10', 'pause-', 'none,x', '1000fd;ptx', 'all',
                         'x' * 1000000) + (
                    () if 'longreach' in name else ('10mb', 'pair1')):
                if (text, name) != ('10', 'parse_phy_control_longreach_ability'):
                    self.assertIsNone(self.parse(parser, pointer_type, text), (name, text[:40]))
            self.assertEqual(parser('none', None), q.BCM_E_PARAM)
            null_calls([name])
        text = self.mode_text(0x30020, 0)
        for size in (-5, 0, 1, len(text), len(text) + 1):
            buffer = buffer_of(60)
            q.format_port_mode(buffer, size, 0x30020, 0)
            fits = size > len(text)
            self.assertTrue(untouched_from(buffer, len(text) + 1 if fits else max(0, min(size, 1))))
            if size > 0:
                self.assertEqual(text_in(buffer), text if fits else '')


if __name__ == '__main__':
    unittest.main()
