"""The log of what the SDK's functions received."""
import ctypes
import struct
import unittest

import QuorelApiNew as q
from recording import calls, library, recording

NO_UNIT = 9


class Recording(unittest.TestCase):
    def test_arguments_as_received(self):
        address = q.bcm_l2_addr_t()
        with recording():
            q.bcm_vlan_port_add(NO_UNIT, 4094, [0, 31, 32, 575], [7])
            q.bcm_l2_addr_delete(NO_UNIT, 'a1:b2:c3:d4:e5:f6', 258)
            q.bcm_l2_addr_t_init(address, '01:02:03:04:05:06', 0)
            q.bcm_l2_stat_set(NO_UNIT, address, 3, 2 ** 64 - 2)
        ports = '\x01\0\0\x80\x01' + '\0' * 66 + '\x80'
        untagged = '\x80' + '\0' * 71
        pointer = struct.pack('P', int(address.this))
        unit = struct.pack('i', NO_UNIT)
        self.assertEqual(calls(), [
            ('bcm_vlan_port_add', [unit, struct.pack('H', 4094), ports, untagged]),
            ('bcm_l2_addr_delete', [unit, '\xa1\xb2\xc3\xd4\xe5\xf6', '\x02\x01']),
            ('bcm_l2_addr_t_init', [pointer, '\1\2\3\4\5\6', '\0\0']),
            ('bcm_l2_stat_set', [unit, pointer, '\3\0\0\0', '\xfe' + '\xff' * 7])])

    def test_null_pointers_and_null_arrays(self):
        with recording():
            library.bcm_l2_addr_delete_by_mac(0, None, 5)
            q.bcm_l2_addr_add(0, None)
        (_, by_mac), (_, add) = calls()
        self.assertEqual(by_mac, ['\0' * 4, '', '\5\0\0\0'])
        self.assertEqual(add, ['\0' * 4, '\0' * ctypes.sizeof(ctypes.c_void_p)])
        size = ctypes.c_size_t(99)
        self.assertTrue(library.sim_call_log_argument(0, 1, ctypes.byref(size)))
        self.assertEqual(size.value, 0)

    def test_an_output_array_is_noted_as_it_was_before(self):
        octets = (ctypes.c_uint8 * 6)(*range(6))
        with recording():
            library.bcm_port_pause_addr_get(0, 1, octets)
        self.assertEqual(calls()[0][1][2], '\0\1\2\3\4\5')
        self.assertNotEqual(list(octets), list(range(6)))

    def test_what_is_not_there(self):
        with recording():
            q.bcm_vlan_create(NO_UNIT, 1)
        for call in (-2 ** 31, -1, 1, 2 ** 31 - 1):
            self.assertIsNone(library.sim_call_log_function(call))
            self.assertEqual(library.sim_call_log_arguments(call), -1)
        for call, argument in ((0, -1), (0, 2), (0, 2 ** 31 - 1), (1, 0), (-1, 0)):
            size = ctypes.c_size_t(99)
            self.assertIsNone(library.sim_call_log_argument(call, argument, ctypes.byref(size)))
            self.assertEqual(size.value, 0)
            self.assertIsNone(library.sim_call_log_argument(call, argument, None))

    def test_start_and_stop(self):
        with recording():
            q.bcm_vlan_create(NO_UNIT, 1)
            first = library.sim_call_log_argument(0, 1, None)
            for vid in range(5000):
                q.bcm_vlan_destroy(NO_UNIT, vid)
        q.bcm_vlan_create(NO_UNIT, 2)
        self.assertEqual(library.sim_call_log_count(), 5001)
        self.assertEqual([struct.unpack('H', args[1])[0] for _, args in calls()], [1] + list(range(5000)))
        self.assertEqual(ctypes.string_at(first, 2), '\1\0')  # held still through all later calls
        with recording():
            self.assertEqual(calls(), [])


if __name__ == '__main__':
    unittest.main()
