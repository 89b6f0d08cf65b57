"""Packed objects: small binary values with a type."""
import os
import sys
import unittest

sys.path.insert(0, os.environ['QUOREL_PROBE'])
import packed_probe


class PackedObjects(unittest.TestCase):
    def test_text_and_type(self):
        packed = packed_probe.pack('\x00\x9f\xff')
        self.assertEqual(type(packed).__name__, 'SwigPyPacked')
        self.assertEqual(str(packed), '_009fff_p_probe')
        self.assertEqual(repr(packed), '<Swig Packed at _009fff_p_probe>')
        self.assertEqual(str(packed_probe.pack('')), '__p_probe')

    def test_the_value_is_a_copy_and_comes_out_whole_or_not_at_all(self):
        packed = packed_probe.pack('value')
        self.assertEqual(packed_probe.unpack(packed, 5), 'value')
        self.assertIsNone(packed_probe.unpack(packed, 4))
        self.assertIsNone(packed_probe.unpack('value', 5))

    def test_order_is_by_size_then_bytes(self):
        pack = packed_probe.pack
        self.assertEqual(cmp(pack('abc'), pack('abc')), 0)
        self.assertEqual([str(p) for p in sorted([pack('\xff'), pack('ab'), pack('\x01'), pack('aa')])],
                         [str(pack(v)) for v in ('\x01', '\xff', 'aa', 'ab')])


if __name__ == '__main__':
    unittest.main()
