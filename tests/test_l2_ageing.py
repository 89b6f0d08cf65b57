"""How long entries of the address table live: the ageing sweep, its timer, freezing."""
import unittest

import QuorelApiNew as q
from simulator import SwitchTest, age_step

A, B, C = ['02:00:5e:00:00:0%d' % number for number in (1, 2, 3)]


class Ageing(SwitchTest):
    def test_a_dynamic_entry_goes_at_the_second_sweep_without_a_packet(self):
        self.enter(A, port=5)
        self.enter(B, port=5, flags=q.BCM_L2_STATIC)
        self.done(self.learn(6, C))
        events = self.watch_changes()
        self.assertEqual(age_step(), 0)
        self.assertFalse(self.find(C).flags & q.BCM_L2_HIT)
        self.done(self.learn(6, C))
        self.assertTrue(self.find(C).flags & q.BCM_L2_SRC_HIT)
        self.assertEqual((age_step(), self.macs()), (1, [B, C]))
        self.assertEqual((age_step(), self.macs()), (1, [B]))
        self.assertEqual([age_step() for _ in range(3)], [0, 0, 0])
        aged = q.BCM_L2_CALLBACK_AGE_EVENT
        self.assertEqual(events, [(aged, A, 1, 5), (aged, C, 1, 6)])

    def test_a_replaced_entry_counts_as_new(self):
        self.enter(A, port=5)
        self.assertEqual(age_step(), 0)
        self.enter(A, port=5)
        self.assertEqual([age_step(), age_step()], [0, 1])

    def test_being_a_destination_does_not_keep_an_entry(self):
        for members in ({}, dict(encap_id=3)):
            self.enter(A, port=5, flags=q.BCM_L2_DES_HIT, **members)
            self.assertEqual((age_step(), self.find(A).flags, age_step()), (0, 0, 1))

    def test_the_timer(self):
        timer = q.bcm_l2_age_timer_get
        self.assertEqual(self.value(timer), 300)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_age_timer_set(0, -1))
        self.assertEqual(self.value(timer), 300)
        self.enter(A, port=5)
        self.done(q.bcm_l2_age_timer_set(0, 0))
        self.assertEqual(([age_step() for _ in range(3)], self.macs()), ([0, 0, 0], [A]))
        self.done(q.bcm_l2_age_timer_set(0, 2 ** 31 - 1))
        self.assertEqual(self.value(timer), 2 ** 31 - 1)
        self.assertEqual([age_step(), age_step()], [0, 1])

    def test_a_frozen_table_neither_ages_nor_learns(self):
        self.assertStatus(q.BCM_E_FAIL, q.bcm_l2_addr_thaw(0))
        self.enter(A, port=5)
        self.assertEqual(age_step(), 0)
        self.done(q.bcm_l2_addr_freeze(0))
        self.done(q.bcm_l2_addr_freeze(0))
        self.done(q.bcm_l2_addr_thaw(0))
        self.assertEqual((age_step(), self.macs()), (0, [A]))
        self.assertStatus(q.BCM_E_DISABLED, self.learn(6, B))
        self.assertStatus(q.BCM_E_DISABLED, self.learn(6, A))
        self.assertEqual(self.port_of(A), 5)
        self.enter(C, port=5)  # calls are not held up
        self.done(q.bcm_l2_addr_delete(0, C, 1))
        self.done(q.bcm_l2_addr_thaw(0))
        self.assertStatus(q.BCM_E_FAIL, q.bcm_l2_addr_thaw(0))
        self.done(self.learn(6, B))
        self.assertEqual((age_step(), self.macs()), (1, [B]))


if __name__ == '__main__':
    unittest.main()
