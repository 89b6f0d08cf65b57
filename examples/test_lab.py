#!/usr/bin/env python2.7
"""Tests of a switch in a lab, for its continuous integration.

    LAB_PORTS=1-4 python2.7 examples/test_lab.py -v

LAB_PORTS are the ports that are cabled, LAB_UNIT is the unit (0), LAB_VLAN a
VLAN that may be created and destroyed (4000). Everything else is left as it
was. The tests show how to
  - read settings as outputs, and compare them (OUT);
  - expect a status (StatusError);
  - wait for what the SDK tells (events).
"""

import os
import unittest

import QuorelApiNew as q
from quorel import (OUT, StatusError, checked, constants, events, name_of,
                    traverse)

UNIT = int(os.environ.get('LAB_UNIT', 0))
VLAN = int(os.environ.get('LAB_VLAN', 4000))
PORTS = checked(q.parse_bcm_pbmp, UNIT, os.environ.get('LAB_PORTS', '1-4'), OUT)
STATION = '02:00:5e:00:00:fe'
PATIENCE = 5  # seconds


class LabTest(unittest.TestCase):
    longMessage = True

    def assertStatus(self, status, function, *arguments):
        """The call has to end with that status."""
        with self.assertRaises(StatusError) as raised:
            checked(function, *arguments)
        self.assertEqual(raised.exception.name, name_of('BCM_E_', status))


class Ports(LabTest):
    def test_cabled_ports_have_a_link_at_full_speed(self):
        for port in PORTS:
            name = 'port %d' % port
            self.assertTrue(checked(q.bcm_port_link_status_get, UNIT, port,
                                    OUT), name + ' has no link')
            self.assertEqual(checked(q.bcm_port_speed_get, UNIT, port, OUT),
                             checked(q.bcm_port_speed_max, UNIT, port, OUT),
                             name)

    def test_cables_are_good(self):
        """No packet has been damaged since the counters were cleared."""
        for port in PORTS:
            for name, counter in constants('snmpIf'):
                if name.endswith('Errors'):
                    self.assertEqual(
                        checked(q.bcm_stat_get, UNIT, port, counter, OUT), 0,
                        '%s of port %d' % (name, port))

    def test_there_is_no_port_beyond_the_last(self):
        self.assertStatus(q.BCM_E_PORT, q.bcm_port_speed_get, UNIT, 999, OUT)


class Vlans(LabTest):
    def setUp(self):
        checked(q.bcm_vlan_create, UNIT, VLAN)
        self.addCleanup(q.bcm_vlan_destroy, UNIT, VLAN)

    def test_members_are_kept(self):
        checked(q.bcm_vlan_port_add, UNIT, VLAN, PORTS, PORTS[:1])
        self.assertEqual(checked(q.bcm_vlan_port_get, UNIT, VLAN),
                         (PORTS, PORTS[:1]))
        checked(q.bcm_vlan_port_remove, UNIT, VLAN, PORTS[1:])
        self.assertEqual(checked(q.bcm_vlan_port_get, UNIT, VLAN),
                         (PORTS[:1], PORTS[:1]))

    def test_it_is_there_once(self):
        self.assertStatus(q.BCM_E_EXISTS, q.bcm_vlan_create, UNIT, VLAN)


class Addresses(LabTest):
    def setUp(self):
        checked(q.bcm_vlan_create, UNIT, VLAN)
        self.addCleanup(q.bcm_vlan_destroy, UNIT, VLAN)
        self.address = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(self.address, STATION, VLAN)
        self.address.port = PORTS[0]
        self.address.flags = q.BCM_L2_STATIC
        self.addCleanup(q.bcm_l2_addr_delete, UNIT, STATION, VLAN)

    def test_a_static_one_is_found_until_it_is_deleted(self):
        checked(q.bcm_l2_addr_add, UNIT, self.address)
        found = checked(q.bcm_l2_addr_get, UNIT, STATION, VLAN)
        self.assertEqual((found.port, found.flags & q.BCM_L2_STATIC),
                         (PORTS[0], q.BCM_L2_STATIC))
        self.assertIn((STATION, VLAN), [
            (address.mac, address.vid)
            for address in traverse(q.bcm_l2_traverse, UNIT)])
        checked(q.bcm_l2_addr_delete, UNIT, STATION, VLAN)
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_l2_addr_get, UNIT, STATION,
                          VLAN)

    def test_the_switch_tells_of_it(self):
        with events(q.bcm_l2_addr_register, UNIT) as told:
            checked(q.bcm_l2_addr_add, UNIT, self.address)
            while True:
                event = told.get(PATIENCE)
                self.assertIsNotNone(event, 'nothing was told')
                _, address, operation, _ = event
                if address.mac == STATION:
                    break
        self.assertEqual(operation, q.BCM_L2_CALLBACK_ADD)


if __name__ == '__main__':
    unittest.main()
