"""Settings of ports."""
import ctypes
import unittest

import QuorelApiNew as q
from simulator import (BLACK_HOLE, CPU_PORT, FRONT_PORTS, LOCAL_PORT, SYSTEM_PORT, SwitchTest, TRUNK,
                       call_with_nulls, library)

PORTS = [CPU_PORT] + FRONT_PORTS
SPEEDS = [10, 100, 1000, 10000, 25000, 40000, 50000, 100000]


class Ports(SwitchTest):
    def learning(self, port):
        flags = q.uint32p()
        self.done(q.bcm_port_learn_get(0, port, q.uint32p_cast(flags)))
        return flags.value()

    def pause_address(self, port):
        octets = (ctypes.c_uint8 * 6)()
        self.done(library.bcm_port_pause_addr_get(0, port, octets))
        return ':'.join('%02x' % octet for octet in octets)

    def settings(self, port):
        return (self.value(q.bcm_port_enable_get, port), self.value(q.bcm_port_speed_get, port),
                q.bcm_port_pause_get(0, port), self.pause_address(port), self.learning(port),
                q.bcm_port_untagged_vlan_get(0, port))

    def test_each_port_has_its_own(self):
        expected = {}
        for port in PORTS:
            self.done(q.bcm_vlan_create(0, 100 + port))
            values = (port & 1, SPEEDS[port % 4], (0, bool(port & 2), bool(port & 4)),
                      '02:00:00:00:00:%02x' % port, port & 15, (0, 100 + port))
            self.done(q.bcm_port_enable_set(0, port, values[0]))
            self.done(q.bcm_port_speed_set(0, port, values[1]))
            self.done(q.bcm_port_pause_set(0, port, port & 2, port & 4))
            self.done(q.bcm_port_pause_addr_set(0, port, values[3]))
            self.done(q.bcm_port_learn_set(0, port, values[4]))
            self.done(q.bcm_port_untagged_vlan_set(0, port, 100 + port))
            expected[port] = values
        for port in PORTS:
            self.assertEqual(self.settings(port), expected[port], port)
            self.assertEqual(self.value(q.bcm_port_link_status_get, port), port & 1)

    def test_which_ports_there_are(self):
        status, config = q.bcm_port_config_get(0)
        self.assertEqual((status, config.all, config.cpu, config.port), (0, PORTS, [CPU_PORT], FRONT_PORTS))
        self.assertEqual(sorted(config.ce + config.xe), FRONT_PORTS)
        for port in config.ce + config.xe:
            self.assertEqual(self.value(q.bcm_port_speed_max, port), 100000 if port in config.ce else 10000)
        self.assertEqual([q.bcm_port_name(0, port) for port in (1, 64, 65)], ['ce0', 'ce63', None])

    def test_the_drivers_register_shows_the_settings(self):
        def shown(port):
            word = q.uintp()
            self.done(q.soc_reg32_get(0, q.NIF_PORT_CTRLr, port, 0, word))
            return word.value() >> 8 & 0xfffff, word.value() & 3
        for port, speed, enable in ((1, 1000, 1), (7, 40000, 0), (40, 100, 1), (CPU_PORT, 10000, 1)):
            self.done(q.bcm_port_speed_set(0, port, speed))
            self.done(q.bcm_port_enable_set(0, port, enable))
            self.assertEqual(shown(port), (self.value(q.bcm_port_speed_get, port), 3 * enable), port)
        self.assertEqual(shown(1), (1000, 3))
        for seconds, expected in ((600, 600 | 1 << 20), (0, 0), (2 ** 31 - 1, 0xfffff | 1 << 20)):
            self.done(q.bcm_l2_age_timer_set(0, seconds))
            for core in (0, 1):
                word = q.uintp()
                self.done(q.soc_reg32_get(0, q.IHP_MAC_AGEINGr, core, 0, word))
                self.assertEqual(word.value(), expected)
        self.done(q.bcm_l2_init(0))
        self.assertEqual(self.value(q.bcm_l2_age_timer_get), 300)
        self.done(q.soc_reg32_get(0, q.IHP_MAC_AGEINGr, 0, 0, word))
        self.assertEqual(word.value(), 300 | 1 << 20)
        self.done(q.bcm_port_init(0))
        for port in (1, 7, 40, CPU_PORT):
            self.assertEqual(shown(port), (self.value(q.bcm_port_speed_get, port), 3), port)

    def test_speeds(self):
        for port, highest in ((CPU_PORT, 10000), (1, 100000), (64, 100000)):
            self.assertEqual(self.value(q.bcm_port_speed_max, port), highest)
            for speed in SPEEDS:
                status = q.BCM_E_NONE if speed <= highest else q.BCM_E_PARAM
                self.assertStatus(status, q.bcm_port_speed_set(0, port, speed), (port, speed))
            for speed in (-10, 0, 11, 200000):
                self.assertStatus(q.BCM_E_PARAM, q.bcm_port_speed_set(0, port, speed), (port, speed))
            self.assertEqual(self.value(q.bcm_port_speed_get, port), highest)

    def test_pause_in_both_directions_at_once(self):
        for tx, rx, both in ((1, 0, 0), (0, 1, 0), (1, 1, 1), (0, 0, 0)):
            self.done(q.bcm_port_pause_set(0, 7, tx, rx))
            self.assertEqual(self.value(q.bcm_port_pause_sym_get, 7), both)
        for both in (True, False):
            self.done(q.bcm_port_pause_sym_set(0, 7, both))
            self.assertEqual(q.bcm_port_pause_get(0, 7), (0, both, both))

    def test_names_of_ports(self):
        before = self.settings(64)
        for gport in (LOCAL_PORT + 64, SYSTEM_PORT + 64):
            self.done(q.bcm_port_speed_set(0, gport, 1000))
            self.assertEqual(self.value(q.bcm_port_speed_get, 64), 1000)
            self.done(q.bcm_port_speed_set(0, 64, before[1]))
        output = q.intp()
        output.assign(-77)
        for port in (-1, 65, 2 ** 31 - 1, -2 ** 31, LOCAL_PORT + 65, SYSTEM_PORT + 65, TRUNK + 1, BLACK_HOLE):
            for setter, values in ((q.bcm_port_enable_set, (0,)), (q.bcm_port_speed_set, (1000,)),
                                   (q.bcm_port_pause_set, (1, 1)), (q.bcm_port_pause_sym_set, (1,)),
                                   (q.bcm_port_pause_addr_set, ('02:00:00:00:00:01',)),
                                   (q.bcm_port_untagged_vlan_set, (1,)), (q.bcm_port_learn_set, (0,)),
                                   (q.bcm_port_enable_get, (output,)), (q.bcm_port_speed_max, (output,))):
                self.assertStatus(q.BCM_E_PORT, setter(0, port, *values), (setter, port))
            self.assertEqual(q.bcm_port_untagged_vlan_get(0, port)[0], q.BCM_E_PORT)
            self.assertEqual(q.bcm_port_pause_get(0, port)[0], q.BCM_E_PORT)
        self.assertEqual((output.value(), self.settings(64)), (-77, before))

    def test_units_nulls_and_unknown_flags(self):
        for setting in 'enable speed pause pause_addr pause_sym untagged_vlan learn'.split():
            for action in ('_get', '_set'):
                name = 'bcm_port_' + setting + action
                self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, 1), name)
            self.assertStatus(q.BCM_E_PARAM, call_with_nulls('bcm_port_%s_get' % setting, 0), setting)
        for name in ('bcm_port_speed_max', 'bcm_port_link_status_get'):
            self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, -1), name)
            self.assertStatus(q.BCM_E_PARAM, call_with_nulls(name, 0), name)
        before = self.learning(5)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_port_learn_set(0, 5, 16))
        self.assertEqual(self.learning(5), before)


if __name__ == '__main__':
    unittest.main()
