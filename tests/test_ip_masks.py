"""Masks of IP prefixes."""
import unittest

import QuorelApiNew as q


class IpMasks(unittest.TestCase):
    def test_a_mask_has_the_length_that_it_was_made_with(self):
        address = q.new_uint8Array(16)
        self.addCleanup(q.delete_uint8Array, address)
        for length in range(129):
            self.assertEqual(q.bcm_ip6_mask_create(address, length), q.BCM_E_NONE)
            bits = ''.join('{:08b}'.format(q.uint8Array_getitem(address, byte)) for byte in range(16))
            self.assertEqual((bits.count('1'), q.bcm_ip6_mask_length(address)), (length, length))
            if length <= 32:
                mask = q.bcm_ip_mask_create(length)
                self.assertEqual((mask, q.bcm_ip_mask_length(mask)), (int(bits[:32], 2), length))

    def test_what_is_no_mask_is_refused(self):
        self.assertEqual([q.bcm_ip_mask_create(length) for length in (-1, 33, 2 ** 31 - 1)], [0, 0, 0])
        for mask in (1, 0x7fffffff, 0xff00ff00, 0xfffffffd):
            self.assertEqual(q.bcm_ip_mask_length(mask), q.BCM_E_PARAM)
        address = q.new_uint8Array(16)
        self.addCleanup(q.delete_uint8Array, address)
        self.assertEqual(q.bcm_ip6_mask_create(address, 64), q.BCM_E_NONE)
        for length in (-1, 129):
            self.assertEqual(q.bcm_ip6_mask_create(address, length), q.BCM_E_PARAM)
        self.assertEqual(q.bcm_ip6_mask_length(address), 64)
        q.uint8Array_setitem(address, 15, 1)
        self.assertEqual(q.bcm_ip6_mask_length(address), q.BCM_E_PARAM)
        self.assertEqual((q.bcm_ip6_mask_create(None, 1), q.bcm_ip6_mask_length(None)), (q.BCM_E_PARAM,) * 2)


if __name__ == '__main__':
    unittest.main()
