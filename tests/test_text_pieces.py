"""Characters, pieces of text, packet buffers and printed entries."""
import ctypes
import os
import random
import tempfile
import unittest

import QuorelApiNew as q
from recording import library
from simulator import SwitchTest
from text_buffer import FILLER, buffer_of, formatted, null_calls, text_in, untouched_from


class Pieces(unittest.TestCase):
    def test_hexadecimal_digits(self):
        for value, digit in enumerate('0123456789abcdef'):
            self.assertEqual((q.xdigit2i(ord(digit)), q.xdigit2i(ord(digit.upper()))), (value, value))
            self.assertEqual(q.i2xdigit(value), ord(digit))
        for wrong in (-1, 16, ord('g'), ord('/'), ord(':'), ord('@'), ord('`'), 256 + ord('1'), 2 ** 31 - 1,
                      -2 ** 31):
            self.assertEqual((q.xdigit2i(wrong), q.i2xdigit(wrong)), (-1, -1))

    def test_finding_in_either_case(self):
        for text, sub, found in (
                ('Hello World', 'WORLD', 'World'), ('abcABC', 'Abc', 'abcABC'), ('aab', 'AB', 'ab'),
                ('abc', '', 'abc'), ('', '', ''), ('abc', 'abcd', None), ('', 'a', None), ('a[b', '{', None),
                ('x\0hidden', 'hidden', None)):
            self.assertEqual(q.strcaseindex(text, sub), found, (text, sub))
        null_calls(['strcaseindex', 'strrepl', 'tabify_line'])

    def test_replacing_in_place(self):
        numbers = random.Random(5)
        cases = [('hello', 1, 3, 'EY'), ('hello', 0, 5, ''), ('hello', 5, 0, '!'), ('hello', -3, 2, 'J'),
                 ('hello', 99, 99, '?'),
                 ('hello', 2, -1, '_'), ('', 0, 1, 'x'), ('hello', 1, 2 ** 31 - 1, 'i'), ('hello', -2 ** 31,
                                                                                          -2 ** 31, '>')]
        cases += [('abcdefghij', numbers.randint(-2, 12), numbers.randint(-2, 12),
                   'X' * numbers.randint(0, 20)) for _ in range(300)]
        for text, start, length, replacement in cases:
            first, removed = max(0, min(start, len(text))), max(0, length)
            expected = text[:first] + replacement + text[first + removed:]
            buffer = ''.join([text, '\0', FILLER * 60])
            self.assertEqual(q.strrepl(buffer, start, length, replacement), expected)
            self.assertEqual(text_in(buffer), expected)
            used = max(len(text), len(expected)) + 1
            self.assertEqual(buffer[used:], FILLER * (len(buffer) - used))

    def test_tabs_look_like_the_blanks_they_replace(self):
        numbers = random.Random(6)
        lines = ['', ' ', '  ', 'a' + ' ' * 7 + 'b', 'a' * 7 + ' b', ' ' * 16 + 'x', 'x' + ' ' * 9, 'a\t  b',
                 'a\n' + ' ' * 8 + 'b']
        lines += [''.join(numbers.choice('  \t\nab') for _ in range(numbers.randint(0,
                                                                                    60))) for _ in range(500)]
        for line in lines:
            for width in (1, 2, 4, 8, 1000):
                buffer = buffer_of(100)
                q.tabify_line(buffer, line + '\0', width)
                self.assertTrue(untouched_from(buffer, len(line) + 1))
                short = text_in(buffer)
                self.assertEqual(short.expandtabs(width), line.expandtabs(width), (line, width))
                self.assertLessEqual(len(short), len(line))
            for width in (0, -1, -2 ** 31):
                self.assertEqual(formatted(q.tabify_line, line + '\0', width), line)
        line = ''.join([' ' * 20, 'z\0'])
        q.tabify_line(line, line, 8)
        self.assertEqual(text_in(line), '\t\t    z')


class PacketBuffers(unittest.TestCase):
    GUARD = 0xa5

    def buffer(self, size, content=''):
        array = q.new_uint8Array(size + 1)
        self.addCleanup(q.delete_uint8Array, array)
        ctypes.memmove(int(array), content + chr(self.GUARD), len(content) + 1)
        q.uint8Array_setitem(array, size, self.GUARD)
        return array

    def content(self, array, size):
        self.assertEqual(q.uint8Array_getitem(array, size), self.GUARD)
        return ctypes.string_at(int(array), size)

    def test_patterns(self):
        for size in (1, 2, 3, 4, 5, 64, 1000):
            for start, step in ((0x01020304, 1), (0xffffffff, 1), (5, 0), (0x10, 0xfffffff0)):
                array = self.buffer(size)
                words = [(start + step * place) % 2 ** 32 for place in range((size + 3) / 4 + 1)]
                self.assertEqual(q.packet_store(array, size, start, step), words[-1])
                self.assertEqual(self.content(array, size), ''.join(
                    chr(word >> shift & 255) for word in words for shift in (24, 16, 8, 0))[:size])
                self.assertEqual(q.packet_load(array, size), start >> 8 * max(0, 4 - size))

    def test_random_packets_differ(self):
        packets = [self.buffer(1500) for _ in range(3)]
        for packet in packets:
            q.packet_random_store(packet, 1500)
        self.assertEqual(len(set(self.content(packet, 1500) for packet in packets)), 3)
        self.assertGreater(len(set(self.content(packets[0], 1500))), 200)

    def test_first_difference(self):
        one = self.buffer(100, 'x' * 100)
        for place in (0, 1, 50, 99):
            other = self.buffer(100, 'x' * 100)
            q.uint8Array_setitem(other, place, 0)
            self.assertEqual((q.packet_compare(one, other, 100), q.packet_compare(other, one, 100)),
                             (place + 1, place + 1))
            self.assertEqual(q.packet_compare(one, other, place), 0)
        self.assertEqual(q.packet_compare(one, one, 100), 0)

    def test_no_bytes_and_no_pointers(self):
        array = self.buffer(4, 'abcd')
        for size in (0, -1, -2 ** 31):
            self.assertEqual((q.packet_store(array, size, 7, 1), q.packet_load(array, size),
                              q.packet_compare(array, None, size)), (7, 0, 0))
            q.packet_random_store(array, size)
        self.assertEqual(self.content(array, 4), 'abcd')
        self.assertEqual((q.packet_store(None, 4, 7, 1), q.packet_load(None, 4),
                          q.packet_compare(array, None, 4)), (7, 0, 0))
        q.packet_random_store(None, 4)


class PrintedEntries(SwitchTest):
    def printed(self, call, *args):
        """What the call leaves on standard output."""
        library.fflush(None)
        saved = os.dup(1)
        with tempfile.TemporaryFile() as output:
            os.dup2(output.fileno(), 1)
            try:
                call(*args)
                library.fflush(None)
            finally:
                os.dup2(saved, 1)
                os.close(saved)
            output.seek(0)
            return output.read()

    def test_addresses(self):
        entry = self.address('02:00:00:00:00:2a', 7, port=3)
        text = self.printed(q.dump_l2_addr, 0, '  >> ', entry)
        self.assertEqual(text.count('\n'), 1)
        self.assertTrue(text.startswith('  >> '), text)
        for part in ('02:00:00:00:00:2a', 'vlan=7', 'port=3'):
            self.assertIn(part, text)
        entry = q.bcm_l2_cache_addr_t()
        entry.mac, entry.vlan, entry.dest_port = '01:80:c2:00:00:00', 9, 12
        text = self.printed(q.dump_l2_cache_addr, 0, '', entry)
        self.assertTrue(text.endswith('port=12\n'), text)
        for part in ('mac=01:80:c2:00:00:00', 'vlan=9'):
            self.assertIn(part, text)
        entry.flags = q.BCM_L2_CACHE_DISCARD
        self.assertIn(' discard\n', self.printed(q.dump_l2_cache_addr, 0, '', entry))

    def test_nothing_is_printed_of_nothing(self):
        entry, cached = self.address('02:00:00:00:00:2a'), q.bcm_l2_cache_addr_t()
        for call, args in ((q.dump_l2_addr, (1, 'x', entry)), (q.dump_l2_addr, (0, 'x', None)),
                           (q.dump_l2_cache_addr, (1, 'x', cached)),
                           (q.dump_l2_cache_addr, (0, 'x', None))):
            self.assertEqual(self.printed(call, *args), '')

    def test_what_is_wrong_with_a_set_of_ports(self):
        def parse(text):
            self.status = library.parse_pbmp(0, text, ctypes.create_string_buffer(72))
        self.assertEqual(self.printed(parse, '1,ce3'), '')
        for text, part in (('1,ce99', "no such port: 'ce99'"), ('1,3-2', "'3-2'"), ('', "''"),
                           ('z' * 100000, "zzz'")):
            printed = self.printed(parse, text)
            self.assertIn(part, printed)
            self.assertLess(len(printed), 200)
            self.assertLess(self.status, 0)


if __name__ == '__main__':
    unittest.main()
