"""Limits on what ports let in: storm control and the rate of a port, on the simulator's clock."""
import random
import unittest

import QuorelApiNew as q
import _quorel_sim
from quorel import OUT, checked, sim
from rate_model import Bucket

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
ALL, GROUP, BRIDGES = 'ff:ff:ff:ff:ff:ff', '01:00:5e:00:00:01', '01:80:c2:00:00:00'
ENABLE, BYTES = q.BCM_RATE_ENABLE, q.BCM_RATE_MODE_BYTES
KINDS = {'dlf': (q.BCM_RATE_DLF, B, 'UnknownUcast'), 'mcast': (q.BCM_RATE_MCAST, GROUP, 'Multicast'),
         'bcast': (q.BCM_RATE_BCAST, ALL, 'Broadcast')}


def advance(nanoseconds):
    assert _quorel_sim.sim_clock_advance(nanoseconds) == 0


def limit(kind, rate, flags=ENABLE, port=1):
    checked(getattr(q, 'bcm_rate_%s_set' % kind), 0, port, rate, flags)


class Rates(sim.TestCase):
    def passes(self, port, frame):
        return bool(self.switch.send(port, frame))

    def passed(self, port, frame, times):
        return sum(self.passes(port, frame) for _ in range(times))

    def test_each_kind_has_its_limit(self):
        for kind, (flag, to, statistic) in sorted(KINDS.items()):
            frame = sim.ethernet(to, A)
            limit(kind, 10, 0)
            self.assertEqual(self.passed(1, frame, 20), 20, 'kept, not applied')
            limit(kind, 10)
            checked(q.bcm_rate_burst_set, 0, 1, flag, 3)
            self.assertEqual(checked(q.bcm_rate_burst_get, 0, 1, flag, OUT), 3)
            self.assertEqual(self.passed(1, frame, 20), 3)
            self.assertEqual(self.switch.drops(1, frame), [(1, 'storm_limit')])
            self.assertEqual(self.switch.statistics(1)['snmpBcmRxStorm%sDiscards' % statistic], 18)
            for other, (_, address, _) in KINDS.items():
                if other != kind:
                    self.assertTrue(self.passes(1, sim.ethernet(address, A)), other)
            self.assertTrue(self.passes(2, frame), 'another port')
            sim.advance(0.2)
            self.assertEqual(self.passed(1, frame, 20), 2)
            limit(kind, 0, 0)
        self.switch.send(2, sim.ethernet(A, B))
        limit('dlf', 0)
        limit('mcast', 0)
        self.assertEqual(self.passed(1, sim.ethernet(B, A), 5), 5, 'its address is known')
        self.assertEqual(self.passed(1, sim.ethernet(BRIDGES, A), 5), 5, 'bridges keep it')

    def test_kinds_can_share_the_lowest_limit(self):
        limit('bcast', 100)
        limit('mcast', 10)
        for kind in ('bcast', 'mcast'):
            checked(q.bcm_rate_burst_set, 0, 1, KINDS[kind][0], 4)
        checked(q.bcm_rate_type_set, 0, 1, q.BCM_RATE_BCAST | q.BCM_RATE_MCAST | q.BCM_RATE_DLF)
        self.assertEqual(checked(q.bcm_rate_type_get, 0, 1, OUT), 7)
        frames = [sim.ethernet(to, A) for to in (ALL, GROUP, B)]
        self.assertEqual([self.passes(1, frame) for frame in frames * 2], [True] * 4 + [False] * 2)
        sim.advance(0.1)
        self.assertEqual([self.passes(1, frame) for frame in frames], [True, False, False])
        checked(q.bcm_rate_type_set, 0, 1, 0)
        self.assertEqual([self.passed(1, frame, 9) for frame in frames], [4, 4, 9])

    def test_limits_measure_as_the_model_does(self):
        chance = random.Random(5)
        for flags, rate, burst in ((0, 7, 3), (0, 123457, 5), (BYTES, 64, 2), (BYTES, 99991, 1)):
            limit('bcast', rate, ENABLE | flags)
            checked(q.bcm_rate_burst_set, 0, 1, q.BCM_RATE_BCAST, burst)
            model = Bucket(rate * 1000, burst * 1518 * 8) if flags else Bucket(rate, burst)
            for _ in range(150):
                wait = chance.choice((0, 1, chance.randrange(10 ** 6), chance.randrange(10 ** 9)))
                advance(wait)
                model.pass_time(wait)
                size = chance.randrange(60, 1514)
                expected = model.take(8 * (size + 4) if flags else 1)
                self.assertEqual(self.passes(1, sim.ethernet(ALL, A).ljust(size, b'\0')), expected,
                                 (flags, rate, wait, size))

    def test_a_port_has_a_rate(self):
        checked(q.bcm_port_rate_ingress_set, 0, 1, 1000, 8)    # 1000 bytes at once
        self.assertEqual(checked(q.bcm_port_rate_ingress_get, 0, 1, OUT, OUT), (1000, 8))
        self.switch.send(2, sim.ethernet(A, B))
        frame = sim.ethernet(B, A).ljust(96, b'\0')
        self.assertEqual(self.passed(1, frame, 20), 10)
        self.assertDropped(1, frame, 'rate_in')
        self.assertEqual(self.switch.statistics(1)['snmpIfInDiscards'], 11)
        advance(800000 - 1)
        self.assertFalse(self.passes(1, frame))
        advance(1)
        self.assertTrue(self.passes(1, frame))
        checked(q.bcm_port_rate_ingress_set, 0, 1, 1, 0)
        self.assertTrue(self.passes(1, frame.ljust(9000)), 'a packet of any length')
        checked(q.bcm_port_rate_ingress_set, 0, 1, 0, 0)
        self.assertEqual(self.passed(1, frame, 2000), 2000)

    def test_centuries_do_not_overflow(self):
        for setting in ((0xffffffff, 0xffffffff), (1, 0xffffffff), (0xffffffff, 1)):
            checked(q.bcm_port_rate_ingress_set, 0, 1, *setting)
            self.assertTrue(self.passes(1, sim.ethernet(ALL, A)))
            sim.advance(10 ** 9)
            self.assertTrue(self.passes(1, sim.ethernet(ALL, A)))

    def test_refusals(self):
        for kind in KINDS:
            setter = getattr(q, 'bcm_rate_%s_set' % kind)
            self.assertEqual([setter(0, 1, -1, 0), setter(0, 1, 1, 1), setter(0, 99, 1, 0), setter(9, 1, 1, 0)],
                             [q.BCM_E_PARAM, q.BCM_E_PARAM, q.BCM_E_PORT, q.BCM_E_UNIT])
        burst = q.bcm_rate_burst_set
        self.assertEqual([burst(0, 1, 3, 1), burst(0, 1, 0, 1), burst(0, 1, 1, -1), burst(0, 99, 1, 1),
                          q.bcm_rate_burst_get(0, 1, 8, q.intp()), q.bcm_rate_type_set(0, 1, 8)],
                         [q.BCM_E_PARAM] * 3 + [q.BCM_E_PORT] + [q.BCM_E_PARAM] * 2)
        record = q.bcm_rate_limit_t(bcast_limit=-1)
        self.assertEqual(q.bcm_rate_limit_set(0, 1, record), q.BCM_E_PARAM)


if __name__ == '__main__':
    unittest.main()
