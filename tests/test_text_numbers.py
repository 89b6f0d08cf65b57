"""Numbers, ranges and IPv4 addresses from text and back, and arithmetic on integers of several words."""
import random
import unittest

import QuorelApiNew as q
from recording import library
from text_buffer import Memory, buffer_of, formatted, null_calls, text_in, untouched_from

HUGE = '9' * 1000000
NO_NUMBERS = ['', ' ', '-', '+', '0x', '0b', '0xg', '0b2', '08', '1 2', '12a', '1.5', '--1', '+-1', 'abc',
              '0x-1',
              '\xff' * 100, '1,2', '(1)', '%s%n']
ALL_ONES = 2 ** 32 - 1


class LongInteger(object):
    """An entrydata array with one word more, to see that it stays as it is."""
    GUARD = 0xdeadbeef

    def __init__(self, test, words, value=0):
        self.words, self.array = words, q.new_entrydata(words + 1)
        test.addCleanup(q.delete_entrydata, self.array)
        q.entrydata_setitem(self.array, words, self.GUARD)
        self.set(value)

    def set(self, value):
        for word in range(self.words):
            q.entrydata_setitem(self.array, word, value >> 32 * word & ALL_ONES)

    def value(self):
        assert q.entrydata_getitem(self.array, self.words) == self.GUARD
        return sum(q.entrydata_getitem(self.array, word) << 32 * word for word in range(self.words))


class Numbers(unittest.TestCase):
    def setUp(self):
        self.random = random.Random(1)

    def some_numbers(self, bits):
        edges = [0, 1, 2 ** 31 - 1, 2 ** 31, 2 ** 32 - 1, 2 ** bits - 1, 2 ** (bits - 1), 0xf0000000]
        return edges + [self.random.getrandbits(self.random.randint(1, bits)) for _ in range(200)]

    def test_every_base_and_sign(self):
        for text, value in (('0', 0), ('12', 12), (' +12\n', 12), ('0x1F', 31), ('0X1f', 31), ('0b101', 5),
                            ('017', 15),
                            ('-1', ALL_ONES), ('-0', 0), ('-2147483648', 2 ** 31), ('4294967295', ALL_ONES),
                            ('0' * 100 + '7', 7)):
            for parse in (q.parse_integer, q.parse_address):
                self.assertEqual(parse(text), value, text)
            self.assertEqual(q.isint(text), 1, text)
        self.assertEqual(q.parse_uint64('-1'), 2 ** 64 - 1)

    def test_what_is_no_number_and_what_does_not_fit(self):
        for text in NO_NUMBERS:
            for parse in (q.parse_integer, q.parse_address, q.parse_uint64, q.isint):
                self.assertEqual(parse(text), 0, text)
        for text in ('4294967296', '-2147483649', '0x100000000', '0' + '4' * 12, '0b1' + '0' * 32, HUGE,
                     '-' + HUGE):
            self.assertEqual((q.parse_integer(text), q.parse_address(text), q.isint(text)),
                             (ALL_ONES, ALL_ONES, 0))
        self.assertEqual(q.parse_uint64('18446744073709551615'), 2 ** 64 - 1)
        for text in ('18446744073709551616', '-9223372036854775809', HUGE):
            self.assertEqual(q.parse_uint64(text), 2 ** 64 - 1)

    def test_formats_of_64_bits_are_read_back(self):
        for number in self.some_numbers(64):
            self.assertEqual(formatted(q.format_uint64, number), '0x%x' % number)
            self.assertEqual(formatted(q.format_uint64_decimal, number, 0), '%d' % number)
            grouped = formatted(q.format_uint64_decimal, number, 1)
            self.assertEqual(grouped, format(number, ','))
            for text in (grouped, '0x%x' % number):
                self.assertEqual(q.parse_uint64(text), number, text)
        for text in (',1', '1,', '1,23', '1234,567', '1,,234', '1,234,56', '0x1,234', '0,123', ',,,',
                     '1,2345'):
            self.assertEqual(q.parse_uint64(text), 0, text)

    def test_formats_of_long_integers_are_read_back(self):
        for words in (1, 2, 3, 20):
            cell = LongInteger(self, words)
            for number in self.some_numbers(32 * words):
                cell.set(number)
                number &= 2 ** (32 * words) - 1
                short = formatted(q.format_long_integer, cell.array, words)
                padded = formatted(q.format_spec_long_integer, cell.array, words)
                self.assertEqual((short, padded), ('0x%x' % number, '0x%0*x' % (8 * words, number)))
                for text in (short, padded, '%d' % number):
                    cell.set(5)
                    q.parse_long_integer(cell.array, words, text)
                    self.assertEqual(cell.value(), number, text)
            for text, value in [(text, 0) for text in NO_NUMBERS] + [(HUGE, -1), ('-1', -1),
                                                                     ('0x1' + '0' * 8 * words, -1)]:
                q.parse_long_integer(cell.array, words, text)
                self.assertEqual(cell.value(), value & 2 ** (32 * words) - 1, text[:40])

    def test_nothing_happens_without_words_or_pointers(self):
        cell, buffer = LongInteger(self, 2, 77), buffer_of(10)
        for words in (0, -1, -2 ** 31):
            q.parse_long_integer(cell.array, words, '5')
            q.add_long_integer(cell.array, cell.array, words)
            q.sub_long_integer(cell.array, cell.array, words)
            q.neg_long_integer(cell.array, words)
            q.format_long_integer(buffer, cell.array, words)
            q.format_spec_long_integer(buffer, cell.array, words)
        self.assertEqual(cell.value(), 77)
        self.assertTrue(untouched_from(buffer, 0))
        q.parse_long_integer(None, 2, '5')
        q.add_long_integer(cell.array, None, 2)
        q.neg_long_integer(None, 2)
        null_calls('parse_integer parse_uint64 parse_address isint parse_ipaddr format_uint64 '
                   'format_uint64_decimal format_ipaddr format_ipaddr_mask'.split())

    def test_arithmetic(self):
        for words in (1, 2, 5):
            modulus = 2 ** (32 * words)
            a, b = LongInteger(self, words), LongInteger(self, words)
            numbers = self.some_numbers(32 * words)
            for x, y in zip(numbers, reversed(numbers)):
                for operation, expected in ((q.add_long_integer, x + y), (q.sub_long_integer, x - y)):
                    a.set(x)
                    b.set(y)
                    operation(a.array, b.array, words)
                    self.assertEqual((a.value(), b.value()), (expected % modulus, y % modulus))
                a.set(x)
                q.neg_long_integer(a.array, words)
                self.assertEqual(a.value(), -x % modulus)
                q.add_long_integer(a.array, a.array, words)
                self.assertEqual(a.value(), -2 * x % modulus)

    def test_ranges(self):
        low, high = q.intp(), q.intp()
        for text, expected in (('5', (5, 5)), ('3-7', (3, 7)), (' 3 - 7 ', (3, 7)), ('-5--2', (-5, -2)),
                               ('-5-2', (-5, 2)),
                               ('0x3-0b111', (3, 7)), ('all', (-10, 100)), ('*', (-10, 100)), ('-10-100',
                                                                                               (-10, 100))):
            self.assertEqual(q.parse_num_range(0, text, low, high, -10, 100), q.BCM_E_NONE, text)
            self.assertEqual((low.value(), high.value()), expected, text)
        low.assign(1)
        high.assign(2)
        wrong = """7-3 101 -11 1-101 -11-1 1-2-3 1- - 1-- (1-3) 1-(2-3) [1-3] 4294967297 1-4294967297 all-1
                   **""".split()
        for text in NO_NUMBERS + wrong + [HUGE, HUGE + '-' + HUGE]:
            self.assertEqual(q.parse_num_range(0, text, low, high, -10, 100), q.BCM_E_PARAM, text[:40])
        self.assertEqual(q.parse_num_range(0, 'all', low, high, 5, 4), q.BCM_E_PARAM)
        self.assertEqual(q.parse_num_range(0, '1', None, high, 0, 9), q.BCM_E_PARAM)
        self.assertEqual(q.parse_num_range(9, '1', low, high, 0, 9), q.BCM_E_UNIT)
        self.assertEqual((low.value(), high.value()), (1, 2))
        edges = (-2 ** 31, 2 ** 31 - 1)
        self.assertEqual(q.parse_num_range(0, '%d-%d' % edges, low, high, *edges), q.BCM_E_NONE)
        self.assertEqual((low.value(), high.value()), edges)


class IpAddresses(unittest.TestCase):
    def setUp(self):
        self.address = Memory(self, '_p_ip_addr_t')

    def parse(self, text):
        status = q.parse_ipaddr(text, self.address.pointer)
        return self.address.word() if status == q.BCM_E_NONE else status

    def mask_text(self, address, mask):
        pointers = [Memory(self, '_p_ip_addr_t', text).pointer for text in (address, mask)]
        return formatted(q.format_ipaddr_mask, *pointers)

    def test_addresses(self):
        for text, value in (('10.1.2.255', 0x0a0102ff), ('255.255.255.255', ALL_ONES), (' 0.0.0.0 ', 0),
                            ('010.001.002.003', 0x0a010203), ('0x0a000001', 0x0a000001), ('5', 5)):
            self.assertEqual(self.parse(text), value, text)
        for text in NO_NUMBERS + ['1.2.3', '1.2.3.', '.1.2.3', '1.2.3.256', '1.2.3.4.5', '1.2.3.4/8',
                                  '1..2.3', '1.2.3.-4',
                                  '0x1.2.3.4', '1.2.3.1000', HUGE, '1.2.3.' + HUGE]:
            self.assertEqual(self.parse(text), q.BCM_E_PARAM, text[:40])
            self.assertEqual(self.address.word(), 5)

    def test_text_is_read_back(self):
        for octets in ((0, 0, 0, 0), (10, 0, 0, 1), (255, 255, 255, 255), (1, 20, 255, 128)):
            buffer = buffer_of(40)
            library.format_ipaddr(buffer, sum(octet << 24 - 8 * place for place, octet in enumerate(octets)))
            self.assertEqual(text_in(buffer), '%d.%d.%d.%d' % octets)
            self.assertTrue(untouched_from(buffer, 16))
            self.parse(text_in(buffer))
            self.assertEqual(self.address.bytes(4), ''.join(map(chr, octets))[::-1])

    def test_masks(self):
        address = '\x01\x00\x00\x0a'
        for mask, text in (('\0\0\0\xff', '8'), ('\xff' * 4, '32'), ('\0' * 4, '0'), ('\0\xf0\xff\xff', '20'),
                           ('\0\xff\0\xff', '255.0.255.0'), ('\xff\0\0\0', '0.0.0.255')):
            self.assertEqual(self.mask_text(address, mask), '10.0.0.1/' + text)
        self.assertEqual(self.mask_text('\xff' * 4, '\xfe\xff\xff\x7f'), '255.255.255.255/127.255.255.254')

    def test_the_buffer_of_an_address_is_a_copy(self):
        for buffer in ('', '1', buffer_of(15), buffer_of(16)):
            before = ''.join(buffer)
            self.assertIsNone(q.format_ipaddr(buffer, self.address.pointer))
            self.assertEqual(buffer, before)
        for wrong in (buffer_of(17), buffer_of(5000), None, u'1', 5, []):
            with self.assertRaises(TypeError) as raised:
                q.format_ipaddr(wrong, self.address.pointer)
            self.assertEqual(str(raised.exception),
                             "in method 'format_ipaddr', argument 1 of type 'char [IPADDR_STR_LEN]'")
        with self.assertRaises(ValueError) as raised:
            q.format_ipaddr(' ' * 16, None)
        self.assertEqual(str(raised.exception),
                         "invalid null reference in method 'format_ipaddr', argument 2 of type 'ip_addr_t'")


if __name__ == '__main__':
    unittest.main()
