#!/usr/bin/env python2.7
"""Tests of what a configuration does with packets, on the simulated switch.

    python2.7 examples/test_packets.py -v

The configuration is a small access switch: two customers, each in a VLAN with two ports without tags, and two uplinks
with tags that are one trunk. The tests show how to
  - say where a frame goes, and why it does not (assertSends, assertDropped);
  - learn and forget addresses, and let time pass (sim.advance);
  - pull a cable, and wait until link scan has told of it (events).
"""

import unittest

import QuorelApiNew as q
from quorel import OUT, array, checked, events, sim

UNIT = 0
CUSTOMERS = {100: [1, 2], 200: [3, 4]}
UPLINKS = [61, 62]
AGE = 300  # seconds
SCAN = 250000  # microseconds


def configure(unit):
    ports = UPLINKS + sum(CUSTOMERS.values(), [])
    checked(q.bcm_vlan_port_remove, unit, 1, ports)
    for vid, untagged in CUSTOMERS.items():
        checked(q.bcm_vlan_create, unit, vid)
        checked(q.bcm_vlan_port_add, unit, vid, untagged + UPLINKS, untagged)
        for port in untagged:
            checked(q.bcm_port_untagged_vlan_set, unit, port, vid)
    for port in ports:
        checked(q.bcm_port_vlan_member_set, unit, port, q.BCM_PORT_VLAN_MEMBER_INGRESS)
    members = array(q.bcm_trunk_member_t, len(UPLINKS))
    for member, port in zip(members, UPLINKS):
        member.gport = port
    info = q.bcm_trunk_info_t()
    q.bcm_trunk_info_t_init(info)
    info.psc = q.BCM_TRUNK_PSC_SRCDSTMAC
    trunk = checked(q.bcm_trunk_create, unit, 0, OUT)
    checked(q.bcm_trunk_set, unit, trunk, info, len(members), members)
    checked(q.bcm_l2_age_timer_set, unit, AGE)
    checked(q.bcm_linkscan_enable_set, unit, SCAN)


def mac(number):
    return '02:00:5e:00:00:%02x' % number


class AccessSwitch(sim.TestCase):
    unit = UNIT

    def setUp(self):
        sim.TestCase.setUp(self)
        configure(self.unit)

    def uplink(self, frame, port=1):
        """The uplink that the frame leaves by."""
        left = [to for to, _ in self.switch.send(port, frame) if to in UPLINKS]
        self.assertEqual(len(left), 1, self.switch.trace(port, frame))
        return left[0]

    def test_customers_are_apart(self):
        frame = sim.ethernet(mac(9), mac(1))
        uplink = self.uplink(frame)
        self.assertSends(1, frame, {2: frame, uplink: sim.tagged(frame, 100)})
        self.assertDropped(1, sim.ethernet(mac(9), mac(1), vlan=200), 'vlan_filter')
        self.assertDropped(61, sim.ethernet(mac(9), mac(8)), 'vlan_filter')

    def test_known_addresses_are_not_flooded_until_they_age(self):
        answer, frame = sim.ethernet(mac(1), mac(2)), sim.ethernet(mac(2), mac(1))
        self.switch.send(2, answer)
        self.assertSends(1, frame, {2: frame})
        sim.advance(AGE)
        self.switch.send(1, frame)
        sim.advance(AGE)
        self.assertEqual([row[0] for row in q.getHwMacTable(self.unit)], [mac(1)])

    def test_what_comes_down_an_uplink_does_not_go_up_the_other(self):
        frame = sim.ethernet('ff:ff:ff:ff:ff:ff', mac(9))
        for uplink in UPLINKS:
            self.assertSends(uplink, sim.tagged(frame, 200), {3: frame, 4: frame})

    def test_an_uplink_fails(self):
        frames = [sim.ethernet(mac(100 + number), mac(1)) for number in range(16)]
        self.assertEqual(set(self.uplink(frame) for frame in frames), set(UPLINKS))
        with events(q.bcm_linkscan_register, self.unit) as changes:
            self.switch.pull(UPLINKS[0])
            self.assertEqual(changes.waiting(), [])
            sim.advance(SCAN / 1e6)
            self.assertEqual([(port, info.linkstatus) for _, port, info in changes.waiting()], [(UPLINKS[0], 0)])
        self.assertEqual(set(self.uplink(frame) for frame in frames), set(UPLINKS[1:]))

    def test_counters_tell_what_was_dropped(self):
        self.assertCounts(2, sim.ethernet(mac(9), mac(2), vlan=200), {2: all})
        self.assertEqual(self.switch.statistics(2)['snmpIfInDiscards'], 1)


if __name__ == '__main__':
    unittest.main()
