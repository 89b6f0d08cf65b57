"""Cables between ports, of one unit and of several: links, packets, loops; and units made new."""
import ctypes
import unittest

import QuorelApiNew as q
from packets import A, ALL, ARP, B, C, frame, packet_watcher, PacketTest
from recording import library
from simulator import CPU_PORT

MAXIMUM = 1000
BRIDGE = '01:80:c2:00:00:00'


class Network(PacketTest):
    """Each test has fresh units 0 to 3."""
    units = range(4)

    def setUp(self):
        PacketTest.setUp(self)
        for unit in self.units:
            if unit != 0:
                self.done(library.bcm_attach(unit, None, None, 0))
            self.done(library.sim_switch_reset(unit))  # cables stay when a unit is detached
        for unit in reversed(self.units):
            self.addCleanup(library.bcm_detach, unit) if unit else self.addCleanup(library.sim_switch_reset, 0)

    def join(self, unit, port, other_unit, other_port):
        self.done(library.sim_cable_join(unit, port, other_unit, other_port, 5))

    def link(self, unit, port):
        result = q.intp()
        self.done(q.bcm_port_link_status_get(unit, port, result))
        return result.value()

    def partner(self, unit, port):
        other_unit, other_port = ctypes.c_int(-1), ctypes.c_int(-1)
        status = library.sim_cable_partner_get(unit, port, ctypes.byref(other_unit), ctypes.byref(other_port))
        return (other_unit.value, other_port.value) if status == q.SOC_E_NONE else status

    def send(self, unit, port, *args, **members):
        """(status, {(unit, port)} that a packet leaves)"""
        left = []
        collector = packet_watcher(lambda to, at, data, size, _: left.append((to, at)))
        data = frame(*args, **members)
        status = library.sim_packet_send(unit, port, data, len(data), collector, None)
        self.assertEqual(len(left), len(set(left)))
        return status, set(left)

    def ends(self, unit, port, *args):
        """The ports without a cable to a port that a packet leaves."""
        status, left = self.send(unit, port, *args)
        self.done(status)
        return set(place for place in left if not isinstance(self.partner(*place), tuple))


class Cables(Network):
    def test_a_link_needs_both_ends(self):
        self.join(0, 5, 1, 7)
        self.assertEqual((self.partner(0, 5), self.partner(1, 7)), ((1, 7), (0, 5)))
        changes = [
            (q.bcm_port_enable_set, 1, 7, 0), (q.bcm_port_enable_set, 1, 7, 1),
            (q.bcm_port_speed_set, 1, 7, 40000), (q.bcm_port_speed_set, 0, 5, 40000),
            (q.soc_phyctrl_reg_write, 1, 7, 0, 0, 1 << 11), (q.soc_phyctrl_reg_write, 1, 7, 0, 0, 1 << 15),
            (q.bcm_port_speed_set, 0, 5, 100000), (library.bcm_detach, 1),
            (library.bcm_attach, 1, None, None, 0), (library.sim_cable_pull, 1, 7)]
        links = []
        for call in changes:
            self.done(call[0](*call[1:]))
            links.append(self.link(0, 5))
        self.assertEqual(links, [0, 1, 0, 1, 0, links[5], 1, 0, 1, 0])
        self.assertEqual((self.partner(0, 5), self.partner(1, 7)), (q.SOC_E_NOT_FOUND, q.SOC_E_NOT_FOUND))

    def test_copper_negotiates_what_both_can(self):
        self.join(0, 34, 1, 40)
        self.assertEqual((self.link(0, 34), self.link(1, 40)), (1, 1))
        self.done(q.bcm_port_speed_set(1, 40, 100))
        speed = q.intp()
        self.done(q.soc_phyctrl_speed_get(0, 34, speed))
        self.assertEqual((self.link(0, 34), speed.value()), (1, 100))

    def test_packets_cross(self):
        self.join(0, 5, 1, 7)
        status, left = self.send(0, 1, B, A, ARP)
        self.done(status)
        self.assertEqual(left, set([(0, port) for port in range(2, 65)] + [(1, port) for port in range(1, 65)
                                                                          if port != 7]))
        self.assertEqual(self.send(1, 2, A, B, ARP), (0, set([(1, 7), (0, 1)])))
        self.assertEqual(self.send(0, 1, B, A, ARP), (0, set([(0, 5), (1, 2)])))
        self.done(q.bcm_port_enable_set(1, 7, 0))
        self.assertEqual(self.send(0, 1, B, A, ARP), (0, set()))

    def test_what_is_refused(self):
        self.assertStatus(q.SOC_E_PARAM, library.sim_cable_join(0, 5, 0, 5, 1))
        self.assertStatus(q.SOC_E_PARAM, library.sim_cable_join(0, 5, 1, 5, 0))
        self.assertStatus(q.SOC_E_UNIT, library.sim_cable_join(0, 5, 9, 5, 1))
        self.assertStatus(q.SOC_E_UNAVAIL, library.sim_cable_join(0, 5, 1, CPU_PORT, 1))
        self.assertStatus(q.SOC_E_PARAM, library.sim_cable_flap(0, 5, 0))
        self.done(library.sim_cable_pull(0, 5))
        self.assertStatus(q.SOC_E_NOT_FOUND, library.sim_cable_flap(0, 5, 1))
        self.assertEqual(self.link(0, 5), 0)

    def test_flapping_is_told_and_leaves_all_as_it_was(self):
        handler = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)
        told = []
        call = handler(lambda unit, port, _: told.append((unit, port, self.link(unit, port))))
        for unit in (0, 1):
            self.done(library.bcm_linkscan_register(unit, call))
            self.done(q.bcm_linkscan_enable_set(unit, 250000))
        self.join(0, 5, 1, 7)
        del told[:]
        self.done(library.sim_cable_flap(0, 5, 2))
        self.assertEqual([step for step in told if step[0] == 0], [(0, 5, 0), (0, 5, 1)] * 2)
        self.assertEqual([step for step in told if step[0] == 1], [(1, 7, 0), (1, 7, 1)] * 2)
        for unit in (0, 1):
            self.done(q.bcm_linkscan_enable_set(unit, 0))
            self.done(library.bcm_linkscan_unregister(unit, call))


class LeafAndSpine(Network):
    """Units 0 and 1 are leaves, 2 and 3 spines; leaf N is at port N+1 of each spine, spine N at port N+61 of a leaf."""

    def setUp(self):
        Network.setUp(self)
        for leaf in (0, 1):
            for spine in (2, 3):
                self.join(leaf, 60 + spine, spine, leaf + 1)

    def test_a_loop_ends_by_the_limit_which_is_reported(self):
        storms = library.sim_storm_count()
        data = frame(ALL, A, ARP)
        self.assertStatus(q.BCM_E_RESOURCE, library.sim_packet_arrive(0, 1, data, len(data)))
        self.assertEqual((library.sim_storm_count(), library.sim_storm_limit_get()), (storms + 1, MAXIMUM))
        self.addCleanup(library.sim_storm_limit_set, MAXIMUM)
        self.done(library.sim_storm_limit_set(0))
        self.assertStatus(q.BCM_E_RESOURCE, self.send(0, 1, ALL, A, ARP)[0])
        self.assertStatus(q.BCM_E_PARAM, library.sim_storm_limit_set(-1))
        self.assertEqual(self.send(0, 1, BRIDGE, A, ARP), (q.BCM_E_NONE, set([(0, CPU_PORT)])))

    def test_spanning_tree_states_cut_it(self):
        hosts = set((unit, port) for unit in self.units for port in range(1, 65)
                    if not isinstance(self.partner(unit, port), tuple))
        for end, leaf in ((62, 1), (63, 1)):
            for state in (q.BCM_STG_STP_BLOCK, q.BCM_STG_STP_FORWARD):
                self.done(q.bcm_stg_stp_set(leaf, 1, end, state))
                if state == q.BCM_STG_STP_BLOCK:
                    for unit in self.units:
                        self.done(q.bcm_l2_clear(unit))
                    self.assertEqual(self.ends(0, 1, ALL, A, ARP), hosts - set([(0, 1)]))
                    self.assertEqual(self.ends(1, 5, A, B, ARP), set([(0, 1)]))
                    self.assertEqual(self.ends(0, 1, B, A, ARP), set([(1, 5)]))

    def test_the_same_again(self):
        self.done(q.bcm_stg_stp_set(1, 1, 62, q.BCM_STG_STP_BLOCK))

        def run():
            seen = []
            collector = packet_watcher(lambda unit, port, data, size, _: seen.append((unit, port, data[:size])))
            for port, data in ((1, frame(B, A, ARP)), (2, frame(A, C, ARP)), (3, frame(ALL, B, ARP))):
                self.done(library.sim_packet_send(0, port, data, len(data), collector, None))
            return seen
        first = run()
        for unit in self.units:
            self.done(q.bcm_l2_clear(unit))
        self.assertEqual(run(), first)


class Reset(Network):
    def test_a_unit_becomes_as_it_was(self):
        self.vlan(20, tagged=[1])
        self.join(0, 5, 1, 7)
        self.enter(A, port=3)
        events = self.watch_changes()
        for call in ((q.bcm_port_enable_set, 3, 0), (q.bcm_port_speed_set, 2, 40000), (q.bcm_l2_age_timer_set, 7),
                     (library.sim_cable_pull, 9), (q.bcm_trunk_create, q.BCM_TRUNK_FLAG_WITH_ID, 5)):
            call[0](0, *call[1:])
        del events[:]
        self.done(library.sim_switch_reset(0))
        self.assertEqual((events, self.macs(), self.value(q.bcm_l2_age_timer_get)), ([], [], 300))
        self.assertEqual([self.link(0, port) for port in (2, 3, 5, 9)], [1] * 4)
        self.assertEqual((self.partner(0, 5), self.partner(1, 7), self.link(1, 7)),
                         (q.SOC_E_NOT_FOUND, q.SOC_E_NOT_FOUND, 0))
        self.assertEqual(len(self.ports(1, ALL, A, ARP)), 63)
        self.assertStatus(q.BCM_E_EXISTS, q.bcm_vlan_create(0, 1))
        self.done(q.bcm_vlan_create(0, 20))
        self.assertStatus(q.BCM_E_UNIT, library.sim_switch_reset(9))

    def test_within_a_callback(self):
        from simulator import change_callback
        callback = change_callback(lambda unit, *_: self.done(library.sim_switch_reset(unit)))
        self.done(library.bcm_l2_addr_register(0, callback, None))
        self.assertEqual(self.ports(1, B, A, ARP), [])
        self.assertEqual(self.macs(), [])


if __name__ == '__main__':
    unittest.main()
