"""Every member of every record: place and size as the C compiler has them, values, neighbours, refusals."""
import collections
import ctypes
import os
import subprocess
import unittest

import QuorelApiNew as q
import binding
from type_table import BLOCK_SIZE, freed_after, pointer_of_type, retyped


def layout():
    """{record: size} and {(record, member): (offset, size)}, as a C program prints them."""
    sizes, places = {}, {}
    for line in subprocess.check_output([os.environ['QUOREL_LAYOUT']]).splitlines():
        words = line.split()
        if len(words) == 2:
            sizes[words[0]] = int(words[1])
        else:
            places[words[0], words[1]] = int(words[2]), int(words[3])
    return sizes, places


def initialised(function, fill):
    """The block that an initialiser leaves where every byte was that number."""
    block = pointer_of_type(function.arguments[0].descriptor)
    ctypes.memset(int(block), fill, BLOCK_SIZE)
    function(block, *['00:00:00:00:00:00', 0][:len(function.arguments) - 1])
    found = ctypes.string_at(int(block), BLOCK_SIZE)
    q.delete_uint8Array(retyped(block, '_p_unsigned_char'))
    return found


class SweepInitialisers(unittest.TestCase):
    def test_they_set_every_member_of_a_record_and_nothing_behind_it(self):
        functions, (sizes, places) = binding.read()[0], layout()
        initialisers = [function for function in functions if function.name.endswith('_t_init')]
        self.assertEqual(len(initialisers), 171)
        members = collections.defaultdict(list)
        for (record, _), place in places.items():
            members[record].append(place)
        others = []
        for function in initialisers:
            ones, zeros = initialised(function, 0xff), initialised(function, 0)
            record = function.name[:-len('_init')]
            # Three records have no members that are bound, so that their size is not reported.
            size = sizes.get(record, len(os.path.commonprefix([ones, zeros])))
            for offset, length in members.get(record, [(0, size)]):
                self.assertEqual(ones[offset:offset + length], zeros[offset:offset + length], function.name)
            self.assertGreater(size, 0, function.name)
            self.assertEqual((ones[size:].strip('\xff'), zeros[size:].strip('\0')), ('', ''), function.name)
            if zeros.strip('\0'):
                others.append(function.name)
        self.assertEqual(sorted(others), ['bcm_attach_info_t_init', 'bcm_detach_retry_t_init',
                                          'bcm_trunk_info_t_init', 'bcm_trunk_member_t_init'])


class SweepMembers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        _, cls.members = binding.read()
        cls.sizes, cls.places = layout()

    def setUp(self):
        self.objects = binding.Objects()
        self.addCleanup(self.objects.release)

    def test_a_write_changes_the_member_and_nothing_else(self):
        for member in self.members:
            size = self.sizes[member.record]
            offset, length = self.places[member.record, member.name]
            record = getattr(q, 'new_' + member.record)()
            address = int(record)
            self.assertEqual(ctypes.string_at(address, size), '\0' * size)
            # What a string member holds is released when it is replaced.
            for fill in '\0' if member.kind == 'string' else '\0\xff':
                for value in self.values(member, length):
                    ctypes.memset(address, ord(fill), size)
                    self.assertIsNone(member.set(record, value))
                    data = ctypes.string_at(address, size)
                    name = '%s.%s' % (member.record, member.name)
                    self.assertEqual(data[:offset] + data[offset + length:], fill * (size - length), name)
                    if member.kind == 'string':
                        self.assertEqual(ctypes.string_at(self.pointer_in(data, offset)), value, name)
                    else:
                        self.assertEqual(data[offset:offset + length], self.expected(member, value, length), name)
                    self.check_read(member, record, value, address + offset)

    def values(self, member, length):
        if member.kind in binding.INTEGERS:
            least, greatest, _ = binding.INTEGERS[member.kind]
            return [greatest, least, 5]
        if member.kind == 'bool':
            return [True, False]
        if member.kind == 'mac_address':
            return ['ff:fe:fd:fc:fb:fa', '00:00:00:00:00:00']
        if member.kind == 'port_list':
            return [[0, 31, 32, 558], []]
        if member.kind in ('array', 'record', 'value'):
            return [self.filled(member, length)]
        if member.kind == 'string':
            return ['text', 'another\ttext']
        return [self.objects.value(member, 1), None]

    def filled(self, member, length):
        """A pointer object to `length` bytes of the member's type, with a pattern in them."""
        holder = getattr(q, 'new_' + member.record)()
        self.objects.keep(holder)
        pointer = member.get(holder)
        self.free_copy(member, pointer)
        for index in range(length):
            ctypes.memset(int(getattr(pointer, 'this', pointer)) + index, (index * 11 + 1) % 256, 1)
        return pointer

    def free_copy(self, member, pointer):
        """What is read of an opaque type is a copy, which no class in Python releases."""
        if member.kind == 'value':
            self.assertTrue(pointer.own())
            freed_after(self, pointer)

    @staticmethod
    def pointer_in(data, offset):
        return ctypes.c_void_p.from_buffer_copy(data, offset).value

    def expected(self, member, value, length):
        if member.kind in ('array', 'record', 'value'):
            return ''.join(chr((index * 11 + 1) % 256) for index in range(length))
        return binding.packed(member.kind, value)

    def check_read(self, member, record, value, address):
        read = member.get(record)
        if member.kind in ('array', 'record'):
            self.assertEqual(int(getattr(read, 'this', read)), address)
            self.assertFalse(getattr(read, 'this', read).own())
        elif member.kind == 'value':
            self.free_copy(member, read)
            self.assertNotEqual(int(read), address)
            length = self.places[member.record, member.name][1]
            self.assertEqual(ctypes.string_at(int(read), length), self.expected(member, value, length))
        elif member.kind == 'port_list':
            self.assertEqual(read, value)
            self.assertTrue(all(type(port) is long for port in read))
        elif member.kind in binding.INTEGERS:
            self.assertEqual(read, value)
            self.assertIs(type(read), int if -2 ** 31 <= value < 2 ** 31 else long)
        elif value is None or member.kind in ('bool', 'mac_address', 'string'):
            self.assertEqual(read, value)
        else:
            self.assertEqual(int(getattr(read, 'this', read)), int(getattr(value, 'this', value)))

    def test_refused_values_change_nothing(self):
        for member in self.members:
            record = getattr(q, 'new_' + member.record)()
            prefix = "in method '%s_%s_" % (member.record, member.name)
            text = prefix + "set', argument 2 of type '%s'" % member.text
            argument = binding.Argument({'array': 'pointer', 'record': 'pointer'}.get(member.kind, member.kind),
                                        member.text, member.descriptor)
            for value, exception, other_text in binding.wrong_values(argument):
                self.assertEqual(binding.error_of(member.set, record, value), (exception, other_text or text))
            if member.kind == 'array':
                null = "invalid null reference in variable '%s' of type '%s'" % (member.name, member.text)
                self.assertEqual(binding.error_of(member.set, record, None), (ValueError, null))
            elif member.kind in ('record', 'value'):
                self.assertEqual(binding.error_of(member.set, record, None),
                                 (ValueError, 'invalid null reference ' + text))
            size = self.sizes[member.record]
            self.assertEqual(ctypes.string_at(int(record), size), '\0' * size)

    def test_self_is_checked_first_and_may_be_null_in_a_write_only(self):
        for member in self.members:
            prefix = "in method '%s_%s_" % (member.record, member.name)
            argument = "', argument 1 of type '%s'" % member.self_text
            for wrong in (5, q.new_uint32p(), 'text'):
                self.assertEqual(binding.error_of(member.get, wrong), (TypeError, prefix + 'get' + argument))
                self.assertEqual(binding.error_of(member.set, wrong, object()),
                                 (TypeError, prefix + 'set' + argument))
            self.assertEqual(binding.error_of(member.get, None),
                             (ValueError, 'invalid null reference ' + prefix + 'get' + argument))
            length = self.places[member.record, member.name][1]
            self.assertIsNone(member.set(None, self.values(member, length)[0]))

    def test_numbers_of_arguments(self):
        functions = set()
        for member in self.members:
            prefix = '%s_%s_' % (member.record, member.name)
            functions.update([(prefix + 'get', 1), (prefix + 'set', 2), ('new_' + member.record, 0),
                              ('delete_' + member.record, 1), (member.record + '_swigregister', 1)])
        for name, count in functions:
            for error, expected in binding.wrong_counts(name, count):
                self.assertEqual(error, expected)

    def test_records_are_complete(self):
        bound = collections.defaultdict(list)
        for member in self.members:
            bound[member.record].append(member.name)
        for record, names in bound.items():
            offsets = [self.places[record, name][0] for name in names]
            self.assertEqual(offsets, sorted(offsets), record)
            self.assertEqual(getattr(q, 'new_' + record).__doc__, 'new_%s() -> %s' % (record, record))
            self.assertEqual(getattr(q, record + '_swigregister').__doc__, '')


if __name__ == '__main__':
    unittest.main()
