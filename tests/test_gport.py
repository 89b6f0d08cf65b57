"""Global port numbers, and the SDK's own names and numbers of ports."""
import unittest

import QuorelApiNew as q
from binding import error_of


class GlobalPorts(unittest.TestCase):
    def test_system_ports_there_and_back(self):
        for port, gport in ((0, 0x6c000000), (5, 0x6c000005), (0xffffff, 0x6cffffff), (0x1000007, 0x6c000007),
                            (-1, 0x6cffffff), (-2 ** 31, 0x6c000000)):
            self.assertEqual(q.bcm_get_gport_from_sys_port_id(port), gport)
            self.assertEqual(q.bcm_get_sys_port_id_from_gport(gport), port & 0xffffff)
        # Bits 24 and 25 belong to neither type nor number.
        self.assertEqual(q.bcm_get_sys_port_id_from_gport(0x6f000007), 7)
        for gport in (0x04000005, 0x68000005, 0x70000005, 0, -1, -2 ** 31):
            self.assertEqual(q.bcm_get_sys_port_id_from_gport(gport), -1)

    def test_types(self):
        types = {'local': (0x04000000, 0x04000005, 0x041fffff), 'lag': (0x0c000000, 0x0c000002, 0x0fffffff),
                 'blackhole': (0x10000000,),
                 'unknown': (0, 0x04200005, 0x06000000, 0x07ffffff, 0x08000001, 0x10000001, 0x14000000,
                             0x6c000005, 2 ** 32 - 1)}
        for name, gports in types.items():
            for gport in gports:
                self.assertEqual(q.getGPortType(gport), name, hex(gport))
                self.assertEqual(q.getGPortType(long(gport)), name)
        for value, exception in ((-1, OverflowError), (2 ** 32, OverflowError), ('x', TypeError),
                                 (None, TypeError)):
            self.assertEqual(error_of(q.getGPortType, value),
                             (exception, "in method 'getGPortType', argument 1 of type 'unsigned long'"))

    def test_ports_of_devices(self):
        for device, port, number in ((0, 7, 7), (2, 7, 2055), (0, 1024, 0xffffffff)):
            self.assertEqual(q.fapToSystemPhyPortId(device, port), number)
        for device, port, name in ((0, 0, 'cpu0'), (-1, 64, 'ce63'), (0, 65, None), (3, 1, None)):
            self.assertEqual(q.mod_port_name(0, device, port), name)
        self.assertIsNone(q.mod_port_name(9, 0, 1))


if __name__ == '__main__':
    unittest.main()
