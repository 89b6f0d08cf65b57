"""quorel.array and quorel.cell: what they hold, what they refuse, and that functions take them."""
import ctypes
import gc
import os
import StringIO
import subprocess
import sys
import unittest
import weakref

import QuorelApiNew as q
import binding
import recording
from quorel import Array, array, cell, checked, fields

# C type, values that fit, values that do not.
SCALARS = [
    ('int', [-2 ** 31, 0, 2 ** 31 - 1], [2 ** 31, -2 ** 31 - 1]),
    ('bcm_port_t', [0, 17], [2 ** 40]),
    ('uint8', [0, 255], [256, -1]),
    ('uint16', [0, 65535], [65536, -1]),
    ('uint32', [0, 2 ** 32 - 1], [2 ** 32, -1]),
    ('uint64', [0, 2 ** 64 - 1], [2 ** 64, -1]),
]


def error_of(call, *arguments):
    try:
        call(*arguments)
    except Exception as error:
        return type(error), str(error)


class Values(unittest.TestCase):
    def test_scalars_keep_what_fits(self):
        for name, good, bad in SCALARS:
            values = array(name, good)
            self.assertEqual((list(values), len(values), values.type), (good, len(good), name))
            for value in bad:
                self.assertEqual(error_of(array, name, [value]),
                                 (OverflowError, "element 0: %r does not fit in '%s'" % (value, name)))
                self.assertEqual(error_of(cell, name, value)[0], OverflowError)
            for value in ('1', 1.5, None, [1]):
                self.assertEqual(error_of(array, name, [value])[0], TypeError, (name, value))
            self.assertEqual(list(array(name, 3)), [0, 0, 0])
            self.assertEqual(list(values), good)

    def test_addresses_ports_and_characters(self):
        macs = array('bcm_mac_t', ['02:00:00:00:00:01', '02:00:00:00:00:02'])
        self.assertEqual((macs[1], bytes(macs)[5], len(bytes(macs))), ('02:00:00:00:00:02', '\1', 12))
        self.assertEqual(error_of(macs.__setitem__, 0, 5), (TypeError, 'Expected a string'))
        ports = cell('bcm_pbmp_t', [1, 3, 64])
        self.assertEqual(ports.value, [1, 3, 64])
        self.assertEqual(set(map(type, ports.value)), set([int]))
        self.assertEqual(cell('bcm_pbmp_t', map(long, ports.value)).value, [1, 3, 64])
        self.assertEqual(error_of(cell, 'bcm_pbmp_t', [2 ** 31])[0], TypeError)
        text = array('char', 8)
        text[:] = 'abc'
        self.assertEqual((bytes(text), text[1]), ('abc\0\0\0\0\0', 'b'))
        self.assertEqual(error_of(text.__setitem__, slice(None), 'a' * 9), (ValueError, '8 bytes are wanted, not 9'))

    def test_records_are_in_the_memory_and_keep_it(self):
        for of in (q.bcm_l2_addr_t, 'bcm_l2_addr_t', 'bcm_l2_addr_s'):
            addresses = array(of, 3)
            record = addresses[2]
            record.port = 7
            self.assertEqual([address.port for address in addresses], [0, 0, 7])
            other = q.bcm_l2_addr_t()
            other.vid = 5
            addresses[0] = other
            other.vid = 6
            self.assertEqual((addresses[0].vid, type(record)), (5, q.bcm_l2_addr_t))
            again = array(of, addresses)
            self.assertEqual([address.port for address in again], [0, 0, 7])
            memory = weakref.ref(addresses)
            del addresses, address
            self.assertIsNone(memory())
            gc.collect()
            self.assertEqual(record.port, 7)
        self.assertEqual(error_of(array, q.bcm_l2_addr_t, [q.bcm_vlan_data_t()]),
                         (TypeError, "element 0: a value of type 'bcm_l2_addr_t' is wanted, not bcm_vlan_data_t"))

    def test_pointers_keep_what_they_point_to(self):
        records = [q.bcm_vlan_data_t(), None]
        records[0].vlan_tag = 9
        pointers = array('bcm_vlan_data_t *', records)
        kept = weakref.ref(records[0])
        del records
        self.assertEqual((pointers[0].vlan_tag, pointers[1]), (9, None))
        self.assertEqual(kept().vlan_tag, 9)
        del pointers
        self.assertIsNone(kept())
        texts = array('char *', ['one', 'two'])
        self.assertEqual(list(texts), ['one', 'two'])

    def test_sizes_are_the_compilers(self):
        sizes = dict(line.split()[:2] for line in subprocess.check_output([os.environ['QUOREL_LAYOUT']]).splitlines()
                     if len(line.split()) == 2)
        checked_sizes = 0
        for name, size in sizes.items():
            if hasattr(q, name):
                self.assertEqual(len(bytes(array(getattr(q, name), 2))), 2 * int(size), name)
                checked_sizes += 1
        self.assertGreater(checked_sizes, 300)


class Sequences(unittest.TestCase):
    def test_indices_and_slices(self):
        values = array('uint16', range(10))
        self.assertEqual((values[-1], values[2:4], values[::3], values[8:20], len(values[5:5])),
                         (9, [2, 3], [0, 3, 6, 9], [8, 9], 0))
        part = values[4:6]
        part[0] = 99
        values[5:7] = [55, 66]
        values[-1] = 1
        self.assertEqual((list(part), list(values)), ([99, 55], [0, 1, 2, 3, 99, 55, 66, 7, 8, 1]))
        for index in (10, -11, 2 ** 40):
            self.assertEqual(error_of(lambda: values[index])[0], IndexError)
            self.assertEqual(error_of(values.__setitem__, index, 1)[0], IndexError)
        self.assertEqual(error_of(lambda: values['1'])[0], TypeError)
        self.assertEqual(error_of(values.__setitem__, slice(0, 2), [1]), (ValueError, '2 values are wanted, not 1'))
        self.assertEqual(error_of(values.__setitem__, slice(0, 4, 2), [1, 2])[0], TypeError)
        # All values or none.
        self.assertEqual(error_of(values.__setitem__, slice(0, 2), [5, 'x'])[0], TypeError)
        self.assertEqual(error_of(array, 'int', [1, 'x']),
                         (TypeError, "element 1: a value of type 'int' is wanted, not str"))
        self.assertEqual((values[0], values == list(values), values != range(10)), (0, True, True))
        self.assertEqual(error_of(hash, values)[0], TypeError)
        self.assertEqual(error_of(setattr, values, 'size', 3), (AttributeError, "an array has no attribute 'size'"))

    def test_bytes(self):
        data = array('uint8', 'packet')
        self.assertEqual((bytes(data), bytes(data[1:3]), data == 'packet'), ('packet', 'ac', True))
        data[:] = bytearray('PACKET')
        data[0:2] = buffer('xy')
        self.assertEqual((str(buffer(data)), memoryview(data).tobytes(), bytearray(data)), ('xyCKET',) * 3)
        memoryview(data)[0] = 'z'
        self.assertEqual(data[0], ord('z'))
        words = array('uint32', data[:4])
        self.assertEqual(bytes(words), bytes(data[:4]))
        self.assertEqual(error_of(array, 'uint32', 'abcde')[0], ValueError)
        self.assertEqual(error_of(data.__setitem__, slice(None), 'short'), (ValueError, '6 bytes are wanted, not 5'))

    def test_what_cannot_be_made(self):
        for arguments, error in [(('nothing_t', 1), ValueError), ((5, 1), TypeError), (('int', -1), ValueError),
                                 (('int', 2 ** 31), MemoryError), (('int', None), TypeError), (('int',), TypeError),
                                 (('int', 2 ** 70), MemoryError), (('bcm_l2_addr_t', 2 ** 30), MemoryError)]:
            self.assertEqual(error_of(array, *arguments)[0], error, arguments)
        self.assertRaises(TypeError, Array)
        self.assertEqual(repr(cell('int', 5)), '<quorel array of 1 int: [5]>')

    def test_a_list_that_changes_under_the_assignment(self):
        values = []

        class Sly(object):
            __slots__ = ()
            this = property(lambda self: values.__delitem__(slice(None)) or kept.this)
        kept = q.bcm_l2_addr_t()
        values[:] = [kept, Sly(), kept]
        self.assertIn(error_of(array, q.bcm_l2_addr_t, values)[0], (TypeError, ValueError))


class Arguments(unittest.TestCase):
    def test_functions_take_them(self):
        speed = cell('int')
        checked(q.bcm_port_speed_get, 0, 1, speed)
        self.assertEqual(q.bcm_port_speed_get(0, 1, speed.this), 0)
        self.assertGreater(speed.value, 0)
        # The pointer object alone keeps the memory.
        pointer = cell('int', 77).this
        gc.collect()
        self.assertEqual(ctypes.c_int.from_address(int(pointer)).value, 77)
        text = "in method 'bcm_port_speed_get', argument 3 of type 'int *'"
        self.assertEqual(error_of(q.bcm_port_speed_get, 0, 1, cell('uint32')), (TypeError, text))

    def test_a_name_that_stands_for_two_types(self):
        """One family has a type of its own under the name of a number's."""
        port = cell('soc_port_t')
        port.value = 7
        with recording.recording() as calls:
            q.parse_port(99, 'xe3', port)
            q._bcm_petra_port_nrdy_thresh_free(99, port)
        self.assertEqual([arguments[-1] for _, arguments in calls()],
                         [binding.packed('pointer', int(port.this)), binding.packed('int32', 7)])

    def test_nobody_else_frees_it(self):
        numbers, records = array('unsigned char', [1, 2]), array('bcm_l2_addr_t', 2)
        for free, memory in [(q.delete_uint8Array, numbers), (q.delete_bcm_l2_addr_t, records),
                             (q.delete_bcm_l2_addr_t, records[1])]:
            self.assertEqual(error_of(free, memory), (
                ValueError, "in method '%s', argument 1 is memory of something else, which frees it" % free.__name__))
        part = records[1]
        part.port, part.thisown = 7, True
        self.addCleanup(setattr, sys, 'stderr', sys.stderr)
        sys.stderr = said = StringIO.StringIO()
        del part
        self.assertIn('argument 1 is memory of something else', said.getvalue())
        self.assertEqual((records[1].port, list(numbers)), (7, [1, 2]))

    def test_a_part_of_a_record_goes_with_it_alone(self):
        packet = q.bcm_pkt_s()
        for part in (packet._pkt_data, dict(fields(packet))['oam_counter'].this):
            free = getattr(q, 'delete_' + type(part).__name__, q.delete_bcm_pkt_oam_counter_t)
            self.assertEqual(error_of(free, part), (
                ValueError, "in method '%s', argument 1 is memory of something else, which frees it" % free.__name__))
        # What it merely points to is somebody's to free.
        packet.next = other = q.bcm_pkt_s()
        other.thisown = False
        q.delete_bcm_pkt_s(packet.next)

    def test_empty_ones_are_taken_for_single_ones(self):
        """C cannot tell: what it writes must not be anyone's."""
        for empty in (array('bcm_port_info_t', 0), array('bcm_port_info_t', 3)[3:]):
            self.assertEqual((len(empty), bytes(empty), q.bcm_port_info_get(0, 1, empty)), (0, '', 0))

    def test_a_part_is_a_pointer_into_the_whole(self):
        words = array('uint32', 4)
        with recording.recording() as calls:
            q.parse_long_integer(words[2:], 2, '0x12')
        self.assertEqual(calls()[0][1][0], binding.packed('pointer', int(words.this) + 8))

    def test_opaque_values(self):
        medium = cell('bcm_port_medium_t', 3)
        with recording.recording() as calls:
            q.bcm_port_medium_config_get(99, 1, medium, None)
        self.assertEqual(calls()[0][1][2], binding.packed('int32', 3))


if __name__ == '__main__':
    unittest.main()
