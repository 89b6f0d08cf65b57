"""The simulator's clock: it stands still, passes when told to, and what waits for it happens in order."""
import ctypes
import time
import unittest

import QuorelApiNew as q
import quorel
from clock import advance, next_event, now, RUNS, SECOND, STANDS, STEPS
from console import run
from recording import library
from simulator import SwitchTest, change_callback

A, B = '02:00:5e:00:00:01', '02:00:5e:00:00:02'


class Clock(SwitchTest):
    def test_it_stands_still_unless_told(self):
        before = now()
        time.sleep(0.01)
        self.assertEqual((now(), library.sim_clock_mode_get()), (before, STANDS))
        self.done(advance(2.5))
        self.assertEqual(now() - before, 5 * SECOND // 2)
        self.assertStatus(q.BCM_E_PARAM, library.sim_clock_advance(ctypes.c_uint64(2 ** 64 - 1)))
        self.assertStatus(q.BCM_E_PARAM, library.sim_clock_next(None))
        self.assertStatus(q.BCM_E_PARAM, library.sim_clock_mode_set(3))

    def test_it_runs_with_the_machine(self):
        self.addCleanup(library.sim_clock_mode_set, STANDS)
        before, begin = now(), time.time()
        self.done(library.sim_clock_mode_set(RUNS))
        time.sleep(0.02)
        self.assertEqual(now(), before)  # nobody has looked
        self.done(library.sim_clock_catch_up())
        passed = now() - before
        self.assertTrue(20000000 <= passed <= (time.time() - begin + 1) * SECOND, passed)
        self.done(library.sim_clock_mode_set(STANDS))
        stopped = now()
        time.sleep(0.01)
        self.done(library.sim_clock_catch_up())
        self.assertEqual(now(), stopped)

    def test_any_function_notices_that_it_has_run(self):
        self.addCleanup(library.sim_clock_mode_set, STANDS)
        self.done(q.bcm_l2_age_timer_set(0, 1))
        self.enter(A, port=5)
        self.done(library.sim_clock_mode_set(RUNS))
        self.done(advance(1.98))
        time.sleep(0.03)
        self.assertEqual(self.macs(), [])

    def test_the_shell_sleeps(self):
        self.addCleanup(library.sim_clock_mode_set, STANDS)
        before, begin = now(), time.time()
        run('sleep 30')
        self.assertEqual(now() - before, 30000000)
        self.assertGreater(time.time() - begin, 0.025)
        self.assertIn('is stepped', run('clock step; sleep 3600000; clock show')[1])
        self.assertEqual(now() - before, 30000000 + 3600 * SECOND)
        self.assertLess(time.time() - begin, 60)

    def test_who_waits_for_events_lets_time_pass(self):
        self.addCleanup(library.sim_clock_mode_set, STANDS)
        for mode, period in ((STANDS, 1), (RUNS, 1), (STEPS, 3600)):
            self.done(library.sim_clock_mode_set(mode))
            begin = time.time()
            with quorel.events(q.bcm_l2_addr_register, 0) as told:
                self.done(q.bcm_l2_age_timer_set(0, period))
                self.enter(A, port=5)
                self.assertEqual(told.get(0)[2], q.BCM_L2_CALLBACK_ADD)
                self.done(advance(2 * period - 0.04))
                before = now()
                self.assertIsNone(told.get(0.01))
                self.assertEqual(told.get(60)[2], q.BCM_L2_CALLBACK_AGE_EVENT)
                # At the moment when it happens, or as soon as a real wait has seen it.
                self.assertTrue(40000000 <= now() - before < 10 * SECOND or mode == RUNS, now() - before)
                self.assertEqual(now() - before == 40000000, mode != RUNS)
                self.done(q.bcm_l2_age_timer_set(0, 0))
            self.assertLess(time.time() - begin, 30)
        self.assertStatus(q.BCM_E_NONE, library.sim_clock_wait(ctypes.c_uint64(0)))

    def test_a_wait_for_events_in_a_callback_ends(self):
        waited = []
        with quorel.events(q.bcm_l2_addr_register, 0) as others:
            def wait(*_):
                others.waiting()
                waited.append(others.get(0.01))
            called = quorel.callback(q.bcm_l2_addr_register, wait)
            self.enter(A, port=5)
            quorel.checked(q.bcm_l2_addr_register, 0, called, None)
            self.done(q.bcm_l2_age_timer_set(0, 1))
            self.done(advance(3))
            quorel.checked(q.bcm_l2_addr_unregister, 0, called, None)
            self.done(q.bcm_l2_age_timer_set(0, 0))
        self.assertEqual(waited, [None])

    def test_ageing(self):
        self.done(q.bcm_l2_age_timer_set(0, 10))
        self.enter(A, port=5)
        self.done(advance(9))
        self.enter(B, port=6)
        events = self.watch_changes()
        self.assertEqual(next_event(), (q.BCM_E_NONE, 1.0))
        self.done(advance(10))  # a sweep at 10
        self.assertEqual(self.macs(), [A, B])
        self.done(advance(1))  # and at 20
        self.assertEqual((self.macs(), events), ([], [(q.BCM_L2_CALLBACK_AGE_EVENT, A, 1, 5),
                                                      (q.BCM_L2_CALLBACK_AGE_EVENT, B, 1, 6)]))
        self.enter(A, port=5)
        self.done(q.bcm_l2_age_timer_set(0, 0))
        self.assertNotEqual(next_event()[1], 10.0)
        self.done(advance(1000))
        self.assertEqual(self.macs(), [A])
        self.done(q.bcm_l2_age_timer_set(0, 2 ** 31 - 1))
        self.done(advance(1000))
        self.assertEqual(self.macs(), [A])

    def test_callbacks_see_their_own_time_and_let_none_pass(self):
        seen = []
        callback = change_callback(lambda *_: seen.append((now(), advance(1), library.sim_clock_mode_set(RUNS))))
        self.done(q.bcm_l2_age_timer_set(0, 10))
        start = now()
        self.enter(A, port=5)
        self.done(library.bcm_l2_addr_register(0, callback, None))
        self.addCleanup(library.bcm_l2_addr_unregister, 0, callback, None)
        self.done(advance(100))
        self.assertEqual(seen, [(start + 20 * SECOND, q.BCM_E_BUSY, q.BCM_E_BUSY)])
        self.assertEqual(now(), start + 100 * SECOND)

    def test_units_age_by_themselves_in_the_order_in_which_they_asked(self):
        seen = []
        callback = change_callback(lambda unit, *_: seen.append((unit, now())))
        for unit in (1, 2):
            self.done(library.bcm_attach(unit, None, None, 0))
            self.addCleanup(library.bcm_detach, unit)
        start = now()
        for unit in (2, 0, 1):
            self.done(q.bcm_l2_age_timer_set(unit, 10))
            self.done(q.bcm_l2_addr_add(unit, self.address(A, port=3)))
            self.done(library.bcm_l2_addr_register(unit, callback, None))
            self.addCleanup(library.bcm_l2_addr_unregister, unit, callback, None)
        self.done(advance(15))
        self.done(library.bcm_detach(0) or library.bcm_attach(0, None, None, 0))
        self.done(advance(15))
        self.assertEqual(seen, [(2, start + 20 * SECOND), (1, start + 20 * SECOND)])


if __name__ == '__main__':
    unittest.main()
