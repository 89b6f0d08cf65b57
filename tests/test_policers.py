"""Policers: how they colour packets, what becomes of each colour, and where they stand."""
import random
import unittest

import QuorelApiNew as q
from quorel import OUT, checked, sim
from rate_model import Meter

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
GREEN, YELLOW, RED = q.bcmColorGreen, q.bcmColorYellow, q.bcmColorRed
NAMES = {GREEN: 'Green', YELLOW: 'Yellow', RED: 'Red'}
FULL, PACKETS, DROP_RED = q.BCM_POLICER_BEGIN_WITH_BUCKET_FULL, q.BCM_POLICER_MODE_PACKETS, q.BCM_POLICER_DROP_RED
METERS = {'committed': q.bcmPolicerModeCommitted, 'single rate': q.bcmPolicerModeSrTcm,
          'two rates': q.bcmPolicerModeTrTcm, 'differentiated': q.bcmPolicerModeTrTcmDs,
          'coupled': q.bcmPolicerModeCoupledTrTcmDs}


class PolicerTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        for mac, port in ((A, 1), (B, 2)):
            checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(port=port, vid=1, mac=mac, flags=q.BCM_L2_STATIC))
        self.frame = sim.ethernet(B, A)

    def policer(self, **members):
        return checked(q.bcm_policer_create, 0, q.bcm_policer_config_t(**members), OUT)

    def stat(self, policer, name):
        return checked(q.bcm_policer_stat_get, 0, policer, -1, getattr(q, 'bcmPolicerStat' + name), OUT)

    def passed(self, port, frame, times):
        return sum(bool(self.switch.send(port, frame)) for _ in range(times))

    def color(self, policer, frame):
        """What the policer makes of a frame."""
        before = dict((color, self.stat(policer, name + 'Packets')) for color, name in NAMES.items())
        self.switch.arrive(1, frame)
        changed = [color for color, name in NAMES.items() if self.stat(policer, name + 'Packets') != before[color]]
        self.assertEqual(len(changed), 1)
        return changed[0]


class Policers(PolicerTest):
    def test_red_packets_can_be_dropped(self):
        policer = self.policer(flags=FULL | PACKETS | DROP_RED, ckbits_sec=10, ckbits_burst=3)
        checked(q.bcm_port_policer_set, 0, 1, policer)
        self.assertEqual(self.passed(1, self.frame, 5), 3)
        self.assertEqual(self.switch.drops(1, self.frame), [(1, 'policer')])
        sim.advance(0.2)
        self.assertEqual(self.passed(1, self.frame, 5), 2)
        self.assertEqual([self.stat(policer, name) for name in (
            'GreenPackets', 'RedPackets', 'NotRedBytes', 'DroppedPackets', 'AcceptedPackets', 'Packets',
            'GreenToRedPackets')], [5, 6, 320, 6, 5, 11, 6])
        self.assertEqual(self.switch.statistics(1)['snmpBcmRxPolicerDiscards'], 6)
        checked(q.bcm_policer_stat_set, 0, policer, -1, q.bcmPolicerStatRedPackets, 2)
        self.assertEqual(self.stat(policer, 'RedPackets'), 2)
        checked(q.bcm_policer_control_set, 0, -1, q.bcmPolicerControlEnable, 0)
        self.assertEqual(self.passed(1, self.frame, 9), 9)
        checked(q.bcm_policer_control_set, 0, -1, q.bcmPolicerControlEnable, 1)
        checked(q.bcm_port_policer_set, 0, 1, 0)
        self.assertEqual(self.passed(1, self.frame, 9), 9)

    def test_where_they_stand(self):
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_add, 0, 20, [1, 2, 3], [])
        checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(port=2, vid=20, mac=B, flags=q.BCM_L2_STATIC))
        tagged = sim.tagged(sim.ethernet(B, A), 20)
        policer = self.policer(mode=q.bcmPolicerModeRed, flags=DROP_RED)
        places = [((q.bcm_port_policer_set, 1), (1, self.frame), (3, self.frame)),
                  ((q.bcm_port_egress_policer_set, 2), (1, self.frame), (2, sim.ethernet(A, B))),
                  ((q.bcm_vlan_policer_set, 20), (1, tagged), (1, self.frame)),
                  ((q.bcm_vlan_egress_policer_set, 20), (1, tagged), (1, self.frame)),
                  ((q.bcm_vlan_port_policer_set, 20, 1), (1, tagged), (3, tagged)),
                  ((q.bcm_vlan_port_egress_policer_set, 20, 2), (1, tagged), (2, sim.tagged(sim.ethernet(A, B), 20)))]
        for setting, dropped, passed in places:
            function, arguments = setting[0], setting[1:]
            self.assertTrue(self.switch.send(*dropped), setting)
            self.assertEqual(function(0, *(arguments + (policer,))), 0)
            self.assertEqual(self.switch.send(*dropped), [], setting)
            self.assertTrue(self.switch.send(*passed), setting)
            self.assertEqual(q.bcm_policer_destroy(0, policer), q.BCM_E_BUSY)
            getter = getattr(q, function.__name__.replace('_set', '_get'), None)
            if getter is not None:
                self.assertEqual(checked(getter, *((0,) + arguments + (OUT,))), policer)
            self.assertEqual(function(0, *(arguments + (99,))), q.BCM_E_NOT_FOUND)
            self.assertEqual(function(0, *(arguments + (0,))), 0)
            self.assertTrue(self.switch.send(*dropped), setting)
        self.assertEqual(q.bcm_policer_destroy(0, policer), 0)

    def test_meters_colour_as_the_model_does(self):
        chance = random.Random(8)
        for name, mode in sorted(METERS.items()):
            # A policer in front gives packets their colours.
            front = self.policer(mode=q.bcmPolicerModePassThrough)
            policer = self.policer(mode=mode, flags=FULL, ckbits_sec=64, ckbits_burst=30, pkbits_sec=100, pkbits_burst=50)
            checked(q.bcm_vlan_policer_set, 0, 1, front)
            checked(q.bcm_port_policer_set, 0, 1, policer)
            model = Meter(name, 64000, 30000, 100000, 50000)
            for _ in range(60):
                wait = chance.choice((0, 1, 10, 100))    # milliseconds: whole tokens
                sim.advance(wait / 1000.0)
                model.pass_time(wait * 10 ** 6)
                came = chance.choice((GREEN, YELLOW, RED))
                config = q.bcm_policer_config_t(mode=q.bcmPolicerModeGreen + came)
                checked(q.bcm_policer_set, 0, front, config)
                size = chance.randrange(60, 1500)
                found = self.color(policer, self.frame.ljust(size, b'x'))
                self.assertEqual(NAMES[found], model.color(NAMES[came], 8 * (size + 4)), name)

    def test_actions(self):
        action = checked(q.bcm_policer_action_create, 0, OUT)
        checked(q.bcm_policer_action_add, 0, action, RED, q.bcmPolicerActionCopyToCpu, 0, 0)
        policer = self.policer(mode=q.bcmPolicerModeRed, action_id=action)
        checked(q.bcm_port_policer_set, 0, 1, policer)
        self.assertEqual(sorted(port for port, _ in self.switch.send(1, self.frame)), [sim.CPU_PORT, 2])
        checked(q.bcm_policer_action_add, 0, action, RED, q.bcmPolicerActionDrop, 0, 0)
        self.assertEqual([port for port, _ in self.switch.send(1, self.frame)], [sim.CPU_PORT])
        add = q.bcm_policer_action_add
        self.assertEqual([add(0, action, RED, q.bcmPolicerActionDrop, 0, 0), add(0, 99, RED, 1, 0, 0),
                          add(0, action, 3, 1, 0, 0), add(0, action, RED, 99, 0, 0),
                          add(0, action, RED, q.bcmPolicerActionDscpNew, 0, 0),
                          q.bcm_policer_action_destroy(0, action)],
                         [q.BCM_E_EXISTS, q.BCM_E_NOT_FOUND, q.BCM_E_PARAM, q.BCM_E_PARAM, q.BCM_E_UNAVAIL,
                          q.BCM_E_BUSY])

    def test_refusals(self):
        create = lambda **members: q.bcm_policer_create(0, q.bcm_policer_config_t(**members), q.intp())
        self.assertEqual([create(flags=1 << 20), create(mode=99), create(action_id=5),
                          create(flags=PACKETS | q.BCM_POLICER_MODE_BYTES), create(share_with=1)],
                         [q.BCM_E_PARAM] * 2 + [q.BCM_E_NOT_FOUND, q.BCM_E_PARAM, q.BCM_E_UNAVAIL])
        stat = q.bcm_policer_stat_get32
        policer = self.policer()
        self.assertEqual([stat(0, policer, 3, 0, q.uintp()), stat(0, policer, 0, 99, q.uintp()),
                          stat(0, 77, 0, 0, q.uintp()), q.bcm_policer_control_set(0, 0, 99, 0)],
                         [q.BCM_E_PARAM, q.BCM_E_PARAM, q.BCM_E_NOT_FOUND, q.BCM_E_PARAM])


if __name__ == '__main__':
    unittest.main()
