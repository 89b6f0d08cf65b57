"""MAC addresses as text and port bitmaps as lists."""
import ctypes
import gc
import os
import sys
import unittest

import QuorelApiNew as q
from binding import error_of

FORM = (ValueError, "Expected a string of the form 'AA:BB:CC:DD:EE:FF'")


class MacAddresses(unittest.TestCase):
    def setUp(self):
        self.entry = q.bcm_l2_addr_t()

    def test_accepted_forms(self):
        cases = [('0:1:2:3:4:5', '00:01:02:03:04:05'), ('AA:bb:Cc:dD:ee:FF', 'aa:bb:cc:dd:ee:ff'),
                 ('00:11:22:33:44:55:66', '00:11:22:33:44:55'), ('00:11:22:33:44:556', '00:11:22:33:44:55'),
                 (' 00: 11:22:33:44:55', '00:11:22:33:44:55'), ('+1:-1:0x:22:33:44', '01:ff:00:22:33:44'),
                 ('\t\n\v\f\r0:1:2:3:4:5 tail', '00:01:02:03:04:05'), (u'0:1:2:3:4:5', '00:01:02:03:04:05')]
        for text, read in cases:
            self.entry.mac = text
            self.assertEqual(self.entry.mac, read)

    def test_refused_forms_change_nothing(self):
        self.entry.mac = '01:02:03:04:05:06'
        for text in ('00:11:22', '00-11-22-33-44-55', '', 'g0:11:22:33:44:55', '000:11:22:33:44:55',
                     '00:11:22:33:44:', '00:11:22:33:44 :55', '00\0:11:22:33:44:55', '-:1:2:3:4:5'):
            self.assertEqual(error_of(setattr, self.entry, 'mac', text), FORM, text)
        for value in (5, [], None, u'\xe4'):
            self.assertEqual(error_of(setattr, self.entry, 'mac', value), (TypeError, 'Expected a string'))
        self.assertEqual(self.entry.mac, '01:02:03:04:05:06')

    def test_agrees_with_the_c_library(self):
        compare = ctypes.PyDLL(os.environ['QUOREL_MAC_TEXT']).compare_mac_text
        compare.restype, compare.argtypes = ctypes.py_object, [ctypes.py_object] * 3 + [ctypes.c_int]
        texts = 1200000
        accepted, different = compare(q.bcm_l2_addr_t_mac_set, q.bcm_l2_addr_t_mac_get, self.entry, texts)
        self.assertIsNone(different)
        # Both outcomes have to be common, or little was compared.
        self.assertGreater(accepted, texts / 4)
        self.assertLess(accepted, texts * 3 / 4)


class PortLists(unittest.TestCase):
    def setUp(self):
        self.data = q.bcm_vlan_data_t()

    def test_lists_become_sorted_longs(self):
        for ports, read in (([], []), ([3, 3, 1], [1, 3]), ([True], [1]), (range(559), range(559)),
                            ([31, 32, 558], [31, 32, 558])):
            self.data.port_bitmap = ports
            self.assertEqual(self.data.port_bitmap, read)
            self.assertTrue(all(type(port) is long for port in self.data.port_bitmap))

        class Ports(list):
            pass
        self.data.port_bitmap = Ports([5])
        self.assertEqual(self.data.port_bitmap, [5])

    def test_the_last_ports_are_kept_but_not_listed(self):
        self.data.port_bitmap = [558, 559, 575]
        self.assertEqual(self.data.port_bitmap, [558])
        copy = q.bcm_vlan_data_t()
        address = int(self.data.this)
        self.assertEqual(ctypes.string_at(address + 4 + 71, 1), '\x80')
        self.assertEqual(copy.port_bitmap, [])

    def test_refusals_change_nothing(self):
        self.data.port_bitmap = [7]
        for value, error in (((1, 2), (TypeError, 'Expected a list')), (None, (TypeError, 'Expected a list')),
                             ([1, long(2)], (TypeError, 'Port list must contain integers')),
                             ([1, 2.0], (TypeError, 'Port list must contain integers')),
                             ([int(2 ** 31)], (TypeError, 'Port list must contain integers')),
                             ([int(-2 ** 31) - 1], (TypeError, 'Port list must contain integers')),
                             ([576], (ValueError, 'Port 576 is outside the port bitmap (0 to 575)')),
                             ([int(2 ** 31 - 1)], (ValueError,
                                                   'Port 2147483647 is outside the port bitmap (0 to 575)'))):
            self.assertEqual(error_of(setattr, self.data, 'port_bitmap', value), error)
        self.assertEqual(error_of(setattr, self.data, 'port_bitmap', [3, -1])[0], OverflowError)
        self.assertEqual(self.data.port_bitmap, [7])

    def test_references_are_counted(self):
        # Lists share their numbers; one more list holds one more reference to each, and gives it back.
        self.data.port_bitmap = [300, 558]
        ports = self.data.port_bitmap
        before = [sys.getrefcount(port) for port in ports]
        more = [self.data.port_bitmap for _ in range(10)]
        self.assertEqual([sys.getrefcount(port) for port in ports], [count + 10 for count in before])
        del more
        self.assertEqual([sys.getrefcount(port) for port in ports], before)
        status, members, untagged = q.bcm_vlan_port_get(0, 1)
        self.assertEqual(status, q.BCM_E_NONE)
        for port_list in (members, untagged):
            self.assertEqual(sys.getrefcount(port_list), 4)

        gc.collect()
        before = sys.getrefcount(None)
        results = [q.bcm_vlan_port_get(0, 4000) for _ in xrange(1000)]
        self.assertEqual(results[0], (q.BCM_E_NOT_FOUND, None, None))
        self.assertEqual(sys.getrefcount(None), before + 2000)
        del results
        self.assertEqual(sys.getrefcount(None), before)

    def test_a_null_self_is_written_silently(self):
        self.assertIsNone(q.bcm_vlan_data_t_port_bitmap_set(None, [1]))
        self.assertIsNone(q.bcm_l2_addr_t_mac_set(None, '0:1:2:3:4:5'))


if __name__ == '__main__':
    unittest.main()
