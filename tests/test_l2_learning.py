"""What the switch learns from packets: modes, moves, limits, classes, authorised addresses, counters."""
import unittest

import QuorelApiNew as q
from simulator import LOCAL_PORT, SwitchTest, age_step

A, B, C = ['02:00:5e:00:00:0%d' % number for number in (1, 2, 3)]


class Learning(SwitchTest):
    def test_addresses_are_learnt_and_move(self):
        events = self.watch_changes()
        self.done(self.learn(5, A))
        self.done(self.learn(5, A))
        self.done(self.learn(6, A))
        self.assertEqual(q.getHwMacTable(0), [(A, 1, LOCAL_PORT + 6, 'dynamic')])
        self.enter(A, port=7, flags=q.BCM_L2_STATIC)
        self.assertStatus(q.BCM_E_EXISTS, self.learn(6, A))
        self.done(self.learn(7, A))
        self.assertEqual(self.port_of(A), 7)
        self.assertEqual([event[::3] for event in events], [
            (q.BCM_L2_CALLBACK_LEARN_EVENT, 5), (q.BCM_L2_CALLBACK_MOVE_EVENT, 6),
            (q.BCM_L2_CALLBACK_DELETE, 6), (q.BCM_L2_CALLBACK_ADD, 7)])

    def test_the_mode_of_the_port(self):
        arl, cpu, pending = q.BCM_PORT_LEARN_ARL, q.BCM_PORT_LEARN_CPU, q.BCM_PORT_LEARN_PENDING
        events = self.watch_changes()
        for flags, status, told in [(q.BCM_PORT_LEARN_FWD, q.BCM_E_DISABLED, []),
                                    (cpu, q.BCM_E_DISABLED, [q.BCM_L2_CALLBACK_REPORT]),
                                    (arl | pending, q.BCM_E_NONE, [q.BCM_L2_CALLBACK_LEARN_EVENT])]:
            del events[:]
            self.done(q.bcm_port_learn_set(0, 5, flags))
            self.assertStatus(status, self.learn(5, A), flags)
            self.assertEqual([event[0] for event in events], told)
            self.assertEqual(self.find(A) is None, status != q.BCM_E_NONE)
        self.assertTrue(self.find(A).flags & q.BCM_L2_PENDING)
        self.done(q.bcm_port_enable_set(0, 6, 0))
        self.assertStatus(q.BCM_E_DISABLED, self.learn(6, B))
        self.done(self.learn(7, B))
        self.assertFalse(self.find(B).flags & q.BCM_L2_PENDING)

    def test_what_is_no_packet(self):
        for status, args in [(q.BCM_E_PORT, (65, A)), (q.BCM_E_PARAM, (5, '01' + A[2:])),
                             (q.BCM_E_PARAM, (5, A, 4095)), (q.BCM_E_NOT_FOUND, (5, A, 2))]:
            self.assertStatus(status, self.learn(*args), args)
        self.assertEqual(self.macs(), [])

    def limit(self, selector, number=None, **ids):
        limit = q.bcm_l2_learn_limit_t()
        limit.flags = selector
        for name, value in ids.items():
            setattr(limit, name, value)
        if number is None:
            self.done(q.bcm_l2_learn_limit_get(0, limit))
            return limit.limit
        limit.limit = number
        return q.bcm_l2_learn_limit_set(0, limit)

    def test_limits(self):
        self.done(q.bcm_vlan_create(0, 2))
        for selector, ids in [(q.BCM_L2_LEARN_LIMIT_SYSTEM, {}), (q.BCM_L2_LEARN_LIMIT_VLAN, dict(vlan=1)),
                              (q.BCM_L2_LEARN_LIMIT_PORT, dict(port=5))]:
            self.assertEqual(self.limit(selector, **ids), -1)
            self.enter(C, port=5)  # does not count, as it was entered by a call
            self.done(self.limit(selector, 1, **ids))
            self.done(self.learn(5, A))
            self.assertStatus(q.BCM_E_RESOURCE, self.learn(5, B), selector)
            # Another VLAN and another port are free, unless the whole system is limited.
            elsewhere = q.BCM_E_RESOURCE if selector == q.BCM_L2_LEARN_LIMIT_SYSTEM else q.BCM_E_NONE
            self.assertStatus(elsewhere, self.learn(6, B, 2), selector)
            self.done(self.learn(6, A))  # moving takes no room ...
            if 'port' in ids:            # ... but frees it
                self.done(self.learn(5, B))
                self.assertStatus(q.BCM_E_RESOURCE, self.learn(5, A))
            else:
                self.assertEqual(age_step(), 0)
                age_step()
                self.done(self.learn(5, B))
            self.done(self.limit(selector, -1, **ids))
            self.done(q.bcm_l2_clear(0))
            self.done(self.learn(5, A))
            self.done(self.learn(5, B))
            self.done(q.bcm_l2_clear(0))

    def test_an_address_entered_by_a_call_counts_once_it_is_learnt(self):
        for selector, ids in [(q.BCM_L2_LEARN_LIMIT_SYSTEM, {}), (q.BCM_L2_LEARN_LIMIT_VLAN, dict(vlan=1))]:
            for mac in (A, B):
                self.enter(mac, port=5)
            self.done(self.limit(selector, 1, **ids))
            self.done(self.learn(6, A))
            self.assertStatus(q.BCM_E_RESOURCE, self.learn(6, B))
            self.done(self.limit(selector, -1, **ids))
            self.done(q.bcm_l2_clear(0))

    def test_limits_refused(self):
        port, vlan, trunk = q.BCM_L2_LEARN_LIMIT_PORT, q.BCM_L2_LEARN_LIMIT_VLAN, q.BCM_L2_LEARN_LIMIT_TRUNK
        for status, selector, number, ids in [
                (q.BCM_E_PARAM, 0, 1, {}), (q.BCM_E_PARAM, port | vlan, 1, dict(vlan=1)),
                (q.BCM_E_PARAM, vlan, 1, dict(vlan=4095)), (q.BCM_E_PARAM, port, -2, dict(port=5)),
                (q.BCM_E_PORT, port, 1, dict(port=65)), (q.BCM_E_BADID, trunk, 1, dict(trunk=-1)),
                (q.BCM_E_UNAVAIL, q.BCM_L2_LEARN_LIMIT_TUNNEL, 1, {})]:
            self.assertStatus(status, self.limit(selector, number, **ids), (selector, ids))
        self.assertEqual(self.limit(port, port=5), -1)

    def test_moves_between_classes(self):
        priority, flags = q.intp(), q.uint32p()
        self.done(q.bcm_l2_learn_class_set(0, 31, 2, 0))
        for port, lclass in ((5, 31), (LOCAL_PORT + 6, 31)):
            self.done(q.bcm_l2_learn_port_class_set(0, port, lclass))
        self.done(self.learn(5, A))
        self.assertStatus(q.BCM_E_EXISTS, self.learn(7, A))
        self.done(self.learn(6, A))
        self.done(q.bcm_l2_learn_class_set(0, 31, 2, q.BCM_L2_LEARN_CLASS_MOVE))
        self.done(self.learn(7, A))
        self.done(self.learn(6, A))  # upwards is always open
        for args in ((32, 1, 0), (-1, 1, 0), (31, -1, 0), (31, 1, 2)):
            self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_learn_class_set(0, *args))
        self.done(q.bcm_l2_learn_class_get(0, 31, priority, q.uint32p_cast(flags)))
        self.assertEqual((priority.value(), flags.value()), (2, q.BCM_L2_LEARN_CLASS_MOVE))

    def test_an_authorised_address_is_learnt_on_its_port_only(self):
        allowed = q.bcm_l2_auth_addr_t()
        allowed.sa_mac, allowed.vlan, allowed.src_port = A, 1, 5
        self.done(q.bcm_l2_auth_add(0, allowed))
        self.assertStatus(q.BCM_E_EXISTS, self.learn(6, A))
        self.assertIsNone(self.find(A))
        self.done(self.learn(5, A))
        self.assertStatus(q.BCM_E_EXISTS, self.learn(6, A))
        self.done(q.bcm_l2_auth_delete(0, allowed))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_l2_auth_delete(0, allowed))
        self.done(self.learn(6, A))

    def test_counters_of_an_address(self):
        subject, wide, narrow = self.address(A), q.uint64p(), q.uint32p()

        def get(stat):
            return q.bcm_l2_stat_get(0, subject, stat, q.uint64p_cast(wide))

        def counters():
            return [(get(stat), wide.value())[1] for stat in range(q.bcmL2StatCount)]

        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_l2_stat_enable_set(0, subject, 1))
        self.done(self.learn(5, A))
        self.assertStatus(q.BCM_E_DISABLED, get(q.bcmL2StatInBytes))
        self.done(q.bcm_l2_stat_enable_set(0, subject, 1))
        self.assertEqual(counters(), [0, 0, 0, 0])
        for _ in range(3):
            self.done(self.learn(5, A))
        self.assertEqual(counters(), [192, 3, 0, 0])
        self.done(q.bcm_l2_stat_set(0, subject, q.bcmL2StatInBytes, 2 ** 64 - 64 + 5))
        self.done(q.bcm_l2_stat_get32(0, subject, q.bcmL2StatInBytes, q.uint32p_cast(narrow)))
        self.assertEqual(narrow.value(), 2 ** 32 - 64 + 5)
        self.done(self.learn(5, A))
        self.assertEqual(counters(), [5, 4, 0, 0])
        self.assertStatus(q.BCM_E_PARAM, get(q.bcmL2StatCount))
        self.done(q.bcm_l2_addr_delete(0, A, 1))
        self.done(self.learn(5, A))
        self.assertStatus(q.BCM_E_DISABLED, get(q.bcmL2StatInBytes))


if __name__ == '__main__':
    unittest.main()
