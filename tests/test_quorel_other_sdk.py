"""The package with a module that was made of other headers: it knows nothing but what the build tells it."""
import os
import sys
import unittest

# In front of the development host's SDK.
sys.path.insert(0, os.environ['QUOREL_OTHER_SDK'])

import QuorelApiNew as q
from quorel import (OUT, StatusError, array, callback, cell, checked, constants, copy, events, flags, name_of, parameters,
                    status_name, traverse)

MACS = ['02:00:5e:00:00:0%d' % number for number in range(3)]


def error_of(*arguments):
    try:
        checked(*arguments)
    except Exception as error:
        return type(error), str(error)


class OtherSdk(unittest.TestCase):
    def setUp(self):
        for number, mac in enumerate(MACS):
            laser = q.other_laser_t()
            laser.photons, laser.mac = 2 ** 40 + number, mac
            laser.label = array('char', ('laser %d' % number).ljust(10, '\0'))
            laser.ports, laser.flags = [number, 70 + number], q.OTHER_LASER_ON if number != 1 else 0
            checked(q.other_laser_set, 0, number, laser)

    def test_it_is_another(self):
        self.assertFalse(hasattr(q, 'bcm_port_speed_get'))
        self.assertTrue(os.path.samefile(os.path.dirname(q.__file__), os.environ['QUOREL_OTHER_SDK']))

    def test_statuses_have_its_names(self):
        self.assertEqual([status_name(status) for status in (0, -71, -4)], ['BCM_E_NONE', 'BCM_E_NOWHERE', '-4'])
        # The enumeration has no tag.
        self.assertEqual(constants('other_status_t'), constants('BCM_E_'))
        self.assertEqual(name_of('other_status_t', -72), 'BCM_E_SMALL')
        self.assertEqual(error_of(q.other_laser_photons_get, 0, 3, OUT), (
            StatusError, 'other_laser_photons_get(0, 3, OUT) returned BCM_E_NOWHERE (-71)'))
        self.assertEqual(flags('OTHER_LASER_', 0x80000003), 'OTHER_LASER_ON|OTHER_LASER_COLD|0x2')
        self.assertEqual(flags('OTHER_LASER_', 'BOTH'), 0x80000001)

    def test_outputs(self):
        self.assertEqual(checked(q.other_laser_photons_get, 0, 2, OUT), 2 ** 40 + 2)
        self.assertEqual(checked(q.other_laser_label_get, 0, 1, OUT, 10), 'laser 1')
        self.assertEqual(error_of(q.other_laser_label_get, 0, 1, OUT, 3)[1],
                         'other_laser_label_get(0, 1, OUT, 3) returned BCM_E_SMALL (-72)')
        self.assertEqual(checked(q.other_laser_mac_get, 0, 1, OUT), MACS[1])
        self.assertEqual(checked(q.other_laser_ports_get, 0, 2, OUT), [2, 72])
        self.assertEqual(checked(q.other_lit_get, 0, 5, OUT, OUT), ([0, 2], 2))
        self.assertEqual(checked(q.other_laser_get, 0, 1, OUT).mac, MACS[1])
        self.assertEqual(checked(q.other_laser_find, 0, 2, OUT).mac, MACS[2])

    def test_memory(self):
        lasers = array(q.other_laser_t, 2)
        checked(q.other_laser_get, 0, 2, lasers[1:])
        self.assertEqual([laser.photons for laser in lasers], [0, 2 ** 40 + 2])
        found = cell('other_laser_t *')
        checked(q.other_laser_find, 0, 0, found)
        self.assertEqual(copy(found.value).ports, [0, 70])
        numbers = array('short', 1)
        self.assertEqual(error_of(q.other_lit_get, 0, 1, numbers, cell('int'))[1],
                         'other_lit_get(0, 1, <array of 1 short>, <array of 1 int>) returned BCM_E_SMALL (-72)')
        self.assertEqual(list(numbers), [0])
        wear = q.other_laser_t().wear
        self.assertRaises(ValueError, array, 'bcm_l2_addr_t', 1)
        self.assertEqual(parameters(q.other_lit_get)[2], ('lasers', 'short', 'pointer', 0))
        self.assertEqual((wear.grade, len(bytes(array(type(wear), 1)))), (0, 6))

    def test_callbacks(self):
        self.assertEqual([laser.mac for laser in traverse(q.other_laser_traverse, 0)], MACS)
        seen = []
        called = callback(q.other_laser_traverse, lambda unit, laser, data: seen.append(laser.mac) or -72)
        self.assertEqual(error_of(q.other_laser_traverse, 0, called, None)[0], StatusError)
        self.assertEqual(seen, MACS[:1])
        with events(q.other_change_register, 0) as changes:
            self.setUp()
            self.assertEqual([event[:3] for event in changes.waiting()],
                             [(0, number, 2 ** 40 + number) for number in range(3)])
        self.assertEqual(error_of(q.other_change_unregister, 0, callback(q.other_change_register, max), None)[1][-20:],
                         'BCM_E_NOWHERE (-71)'.rjust(20))


if __name__ == '__main__':
    unittest.main()
