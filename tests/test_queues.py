"""Queues of ports: which packet waits, which goes first, which is dropped, and what is counted."""
import random
import unittest

import QuorelApiNew as q
import _quorel_sim
from quorel import OUT, checked, sim
from rate_model import PortModel

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
MILLISECOND = 10 ** 6
MODES = {'strict': q.BCM_COSQ_STRICT, 'round robin': q.BCM_COSQ_ROUND_ROBIN,
         'by packets': q.BCM_COSQ_WEIGHTED_ROUND_ROBIN, 'fair': q.BCM_COSQ_WEIGHTED_FAIR_QUEUING,
         'by bytes': q.BCM_COSQ_DEFICIT_ROUND_ROBIN}


def advance(nanoseconds):
    assert _quorel_sim.sim_clock_advance(nanoseconds) == 0


class QueueTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        for mac, port in ((A, 1), (B, 2)):
            checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(port=port, vid=1, mac=mac, flags=q.BCM_L2_STATIC))
        checked(q.bcm_vlan_port_remove, 0, 1, [2])
        checked(q.bcm_vlan_port_add, 0, 1, [2], [])

    def frame(self, priority=0, size=100, number=0):
        return sim.ethernet(B, A, (b'%05d' % number).ljust(size - 22, b'x'), vlan=1, priority=priority)

    def rate(self, kbits, burst=0):
        checked(q.bcm_port_rate_egress_set, 0, 2, kbits, burst)

    def close(self):
        """From now on nothing leaves port 2, until it is opened."""
        checked(q.bcm_cosq_gport_enable_set, 0, 2, -1, 0)

    def open(self):
        checked(q.bcm_cosq_gport_enable_set, 0, 2, -1, 1)

    def leaving(self, function):
        """Frames that leave port 2 while a function runs."""
        left = []
        with self.switch.watched(lambda port, frame: left.append(bytes(frame)) if port == 2 else None):
            function()
        return left

    def stat(self, name, queue=-1):
        return checked(q.bcm_cosq_stat_get, 0, 2, queue, getattr(q, 'bcmCosqStat' + name), OUT)


class Queues(QueueTest):
    def test_a_shaper_spreads_packets(self):
        checked(q.bcm_port_rate_egress_pps_set, 0, 2, 10, 2)
        frames = [self.frame(number=number) for number in range(5)]
        self.assertEqual([self.leaving(lambda: self.switch.arrive(1, frame)) for frame in frames],
                         [[frames[0]], [frames[1]], [], [], []])
        self.assertEqual([self.stat('CurrentPackets'), self.stat('CurrentBytes'), self.stat('OutPackets')], [3, 300, 2])
        self.assertEqual(self.leaving(lambda: advance(99 * MILLISECOND)), [])
        self.assertEqual(self.leaving(lambda: advance(MILLISECOND)), [frames[2]])
        self.assertEqual(self.leaving(lambda: sim.advance(1)), frames[3:])
        self.assertEqual([self.stat('CurrentPackets'), self.stat('OutPackets'), self.stat('MaxPackets')], [0, 5, 3])
        self.assertEqual(self.switch.statistics(2)['snmpIfOutUcastPkts'], 5)
        self.assertEqual(checked(q.bcm_port_rate_egress_pps_get, 0, 2, OUT, OUT), (10, 2))
        self.assertEqual(checked(q.bcm_port_rate_egress_get, 0, 2, OUT, OUT), (0, 0))

    def test_what_waits_leaves_when_the_limit_goes(self):
        self.close()
        frames = [self.frame(number=number) for number in range(3)]
        self.assertEqual(self.leaving(lambda: [self.switch.arrive(1, frame) for frame in frames]), [])
        self.assertEqual(self.leaving(self.open), frames)
        self.assertEqual(self.leaving(lambda: self.switch.arrive(1, frames[0])), frames[:1])

    def test_a_full_queue_drops(self):
        self.close()
        checked(q.bcm_cosq_gport_size_set, 0, 2, 3, 0, 250)
        frame = self.frame(priority=3)
        for _ in range(4):
            self.switch.arrive(1, frame)
        self.assertEqual(self.switch.drops(1, frame), [(2, 'queue_full')])
        self.assertEqual([self.stat(name, 3) for name in ('DroppedPackets', 'DroppedBytes', 'GreenDroppedPackets',
                                                          'CurrentPackets', 'EnqueuedPackets')], [3, 300, 3, 2, 2])
        self.assertEqual(self.stat('DroppedPackets', 2), 0)
        self.assertEqual(self.switch.statistics(2)['snmpIfOutDiscards'], 3)
        self.switch.pull(2)
        self.open()
        self.assertEqual([self.stat('FlushedPackets', 3), self.stat('CurrentPackets', 3)], [2, 0])

    def test_priorities_have_queues(self):
        for priority in range(8):
            self.switch.arrive(1, self.frame(priority))
        self.assertEqual([self.stat('OutPackets', queue) for queue in range(8)], [1] * 8)
        checked(q.bcm_cosq_mapping_set, 0, 7, 2)
        checked(q.bcm_cosq_port_mapping_set, 0, 2, 0, 5)
        self.switch.arrive(1, self.frame(7))
        self.switch.arrive(1, self.frame(0))
        self.assertEqual([self.stat('OutPackets', queue) for queue in range(8)], [1, 1, 2, 1, 1, 2, 1, 1])
        self.assertEqual([self.stat('OutBytes', 5), self.stat('OutBytes')], [200, 1000])
        checked(q.bcm_stat_clear, 0, 2)
        self.switch.arrive(1, self.frame(0))
        self.assertEqual(self.stat('OutPackets', 5), 3)
        checked(q.bcm_cosq_stat_set, 0, 2, 5, q.bcmCosqStatOutPackets, 0)
        self.assertEqual([self.stat('OutPackets', 5), self.stat('OutBytes', 5)], [0, 300])
        checked(q.bcm_cosq_config_set, 0, 2)
        self.assertEqual([checked(q.bcm_cosq_mapping_get, 0, priority, OUT) for priority in range(8)], [0] * 4 + [1] * 4)
        self.assertEqual(q.bcm_cosq_mapping_set(0, 0, 2), q.BCM_E_PARAM)

    def test_a_pause_stops_a_port(self):
        pause = sim.ethernet('01:80:c2:00:00:01', B, b'\0\1\x00\x64', kind=0x8808)    # 100 times 512 bits
        self.switch.arrive(2, pause)
        frame = self.frame()
        self.assertEqual(self.leaving(lambda: self.switch.arrive(1, frame)), [frame])
        checked(q.bcm_port_pause_set, 0, 2, 0, 1)
        self.switch.arrive(2, pause)
        self.assertEqual(self.leaving(lambda: self.switch.arrive(1, frame)), [])
        self.assertEqual(self.leaving(lambda: advance(511)), [])    # of 100 Gbit/s
        self.assertEqual(self.leaving(lambda: advance(1)), [frame])
        self.switch.arrive(2, pause)
        self.switch.arrive(1, frame)
        resume = pause.replace(b'\0\1\x00\x64', b'\0\1\0\0')
        self.assertEqual(self.leaving(lambda: self.switch.arrive(2, resume)), [frame])

    def test_queues_have_rates(self):
        checked(q.bcm_cosq_port_bandwidth_set, 0, 2, 7, 0, 10, q.BCM_COSQ_BW_PACKET_MODE)
        frames = [self.frame(priority, number=number) for number, priority in enumerate((7, 7, 3, 7))]
        left = self.leaving(lambda: [self.switch.arrive(1, frame) for frame in frames])
        self.assertEqual(left[:1], frames[:1])
        self.assertEqual(self.leaving(lambda: sim.advance(1)) and self.stat('OutPackets', 7), 3)
        self.assertEqual(checked(q.bcm_cosq_gport_bandwidth_get, 0, 2, 7, OUT, OUT, OUT),
                         (0, 10, q.BCM_COSQ_BW_PACKET_MODE))

    def test_schedulers_choose_as_the_model_does(self):
        chance = random.Random(3)
        for name, mode in sorted(MODES.items()):
            most = checked(q.bcm_cosq_sched_weight_max_get, 0, mode, OUT)
            weights = [chance.randrange(0, min(most, 3000) + 1) if most else 1 for _ in range(8)]
            for place, weight in enumerate(weights):
                checked(q.bcm_cosq_gport_sched_set, 0, 2, place, mode, weight if most else 0)
            self.close()
            model, numbers = PortModel(name, weights), {}
            for number in range(120):
                priority, size = chance.randrange(8), chance.randrange(64, 1500)
                frame = self.frame(priority, size, number)
                numbers[bytes(frame)] = number
                self.switch.arrive(1, frame)
                model.arrive(priority, len(frame) + 4, number)
            left = [numbers[frame] for frame in self.leaving(self.open)]
            self.assertEqual(left, model.all_in_order(), (name, weights))


if __name__ == '__main__':
    unittest.main()
