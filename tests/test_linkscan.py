"""Link scan: which changes are told, to whom and when."""
import ctypes
import os
import subprocess
import sys
import time
import unittest

import QuorelApiNew as q
import clock
from phy import COPPER, COPPER_PORTS, PhyTest, SERDES
from simulator import call_with_nulls, CPU_PORT, FRONT_PORTS, library, PortBitmap
from type_table import pointer_at

NONE, SW, HW = q.BCM_LINKSCAN_MODE_NONE, q.BCM_LINKSCAN_MODE_SW, q.BCM_LINKSCAN_MODE_HW
INTERVAL = 250000
handler = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)
port_handler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)


def record(address):
    return pointer_at(address, '_p_bcm_port_info_s')


class LinkScanTest(PhyTest):
    def reset(self):
        self.done(q.bcm_linkscan_init(0))
        PhyTest.reset(self)

    def watch(self, *react):
        """A list that gets (port, link, speed) of each change; react are called with the port."""
        seen = []

        def tell(unit, port, info):
            info = record(info)
            seen.append((port, q.bcm_port_info_t_linkstatus_get(info), q.bcm_port_info_t_speed_get(info)))
            for one in react:
                one(port)
        callback = handler(tell)
        self.done(library.bcm_linkscan_register(0, callback))
        # A registered callback has to live until the link scan is made anew.
        self.addCleanup(lambda: callback)
        return seen, callback

    def start(self):
        self.done(q.bcm_linkscan_enable_set(0, INTERVAL))

    def drain(self, seen):
        told = list(seen)
        del seen[:]
        return told


class Changes(LinkScanTest):
    def test_all_ways_to_change_a_link(self):
        seen, _ = self.watch()
        self.plug(SERDES)
        self.assertEqual(seen, [])
        self.start()
        self.assertEqual(self.drain(seen), [(port, 1, 10000 if port in COPPER_PORTS else 100000)
                                            for port in FRONT_PORTS if port != SERDES])
        self.plug(SERDES, q.SOC_PHY_MEDIUM_FIBER)
        self.done(q.bcm_port_speed_set(0, SERDES, 40000))
        self.assertEqual(self.drain(seen), [(SERDES, 1, 100000)])
        down, up = [(COPPER, 0)], [(COPPER, 1)]
        bus, address = divmod(q.soc_phy_addr_of_port(0, COPPER), 32)
        for told, calls in (
                (down, [(q.bcm_port_enable_set, COPPER, 0)]), (up, [(q.bcm_port_enable_set, COPPER, 1)]),
                (down, [(q.soc_phyctrl_enable_set, COPPER, 0)]),
                (up, [(q.soc_phyctrl_enable_set, COPPER, 1)]),
                (down, [(q.soc_mdio_write, bus, address, 0, 1 << 11)]),
                (up, [(q.bcm_port_phy_set, COPPER, 0, 0, 1 << 12)]),
                (down, [(library.sim_cable_plug, COPPER, 0, 1)]),
                (up, [(q.bcm_port_loopback_set, COPPER, q.BCM_PORT_LOOPBACK_MAC)]),
                (down, [(q.bcm_port_loopback_set, COPPER, q.BCM_PORT_LOOPBACK_NONE)]),
                ([], [(library.sim_cable_plug, COPPER, 0, 5), (q.bcm_port_enable_set, COPPER, 0)])):
            for call in calls:
                self.done(call[0](0, *call[1:]))
            self.assertEqual([(port, link) for port, link, _ in self.drain(seen)], told, calls)

    def test_all_ports_made_anew(self):
        self.done(q.bcm_port_enable_set(0, SERDES, 0))
        self.start()
        seen, _ = self.watch()
        self.done(q.bcm_port_init(0))
        self.assertEqual(seen, [(SERDES, 1, 100000)])

    def test_off_until_the_next_scan(self):
        self.start()
        seen, _ = self.watch()
        self.done(q.bcm_linkscan_enable_set(0, 0))
        for port in (SERDES, COPPER):
            self.plug(port)
        self.assertEqual((seen, self.value(q.bcm_linkscan_enable_get)), ([], 0))
        self.done(q.bcm_linkscan_update(0, [SERDES, CPU_PORT]))
        self.assertEqual([told[:2] for told in self.drain(seen)], [(SERDES, 0)])
        self.start()
        self.assertEqual([told[:2] for told in self.drain(seen)], [(COPPER, 0)])
        self.assertEqual(self.value(q.bcm_linkscan_enable_get), INTERVAL)

    def test_modes(self):
        self.start()
        seen, _ = self.watch()
        self.done(q.bcm_linkscan_mode_set_pbm(0, [SERDES, COPPER, CPU_PORT], NONE))
        self.assertEqual([self.value(q.bcm_linkscan_mode_get, port) for port in (SERDES, COPPER, COPPER + 1)],
                         [NONE, NONE, SW])
        self.assertStatus(q.BCM_E_DISABLED, q.bcm_linkscan_enable_port_get(0, SERDES))
        self.done(q.bcm_linkscan_enable_port_get(0, COPPER + 1))
        for port in (SERDES, COPPER):
            self.plug(port)
        self.done(q.bcm_linkscan_update(0, [SERDES, COPPER]))
        self.assertEqual(seen, [])
        self.done(q.bcm_linkscan_mode_set(0, COPPER, HW))
        self.done(q.bcm_port_linkscan_set(0, SERDES, SW))
        self.assertEqual([told[:2] for told in self.drain(seen)], [(COPPER, 0), (SERDES, 0)])
        self.assertEqual([self.value(q.bcm_port_linkscan_get, port) for port in (SERDES, COPPER)], [SW, HW])
        for mode in (-1, 3):
            self.assertStatus(q.BCM_E_PARAM, q.bcm_linkscan_mode_set(0, SERDES, mode))
            self.assertStatus(q.BCM_E_PARAM, q.bcm_linkscan_mode_set_pbm(0, [SERDES], mode))
        self.done(q.bcm_linkscan_enable_set(0, 0))
        self.assertStatus(q.BCM_E_DISABLED, q.bcm_linkscan_enable_port_get(0, SERDES))

    def test_links_taken_for_changed(self):
        self.start()
        seen, _ = self.watch()
        self.done(q.bcm_link_change(0, [SERDES]))
        self.assertEqual(self.drain(seen), [(SERDES, 1, 100000)])
        self.done(q.bcm_linkscan_enable_set(0, 0))
        self.done(q.bcm_link_change(0, [COPPER]))
        self.assertEqual(seen, [])
        self.done(q.bcm_linkscan_update(0, FRONT_PORTS))
        self.assertEqual([told[:2] for told in self.drain(seen)], [(COPPER, 1)])

    def test_waiting(self):
        ports = PortBitmap([SERDES, COPPER])
        self.done(library.bcm_link_wait(0, ctypes.byref(ports), 1))
        self.plug(SERDES)
        began, start = clock.now(), time.time()
        self.assertStatus(q.BCM_E_TIMEOUT, library.bcm_link_wait(0, ctypes.byref(ports), 30000))
        self.assertEqual((ports.ports(), clock.now() - began), ([COPPER], 30000000))
        self.assertGreater(time.time() - start, 0.025)
        self.assertStatus(q.BCM_E_PARAM, library.bcm_link_wait(0, ctypes.byref(ports), -1))

    def test_driver_and_phy_hear_of_it(self):
        self.start()
        self.plug(COPPER)
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER)
        # The driver has looked at the link, so that the register does not show the interruption any more.
        self.assertEqual(self.read(COPPER, q.SOC_PHY_REGISTER_STATUS) >> 2 & 1, 1)
        self.done(q.bcm_port_update(0, COPPER, 0))
        self.assertEqual(self.read(COPPER, q.SOC_PHY_REGISTER_STATUS) >> 2 & 1, 0)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_port_update(0, COPPER, 2))
        seen, _ = self.watch()
        self.done(q.soc_phyctrl_detach(0, COPPER))
        self.plug(COPPER)
        self.assertEqual(seen, [])
        self.done(q.soc_phy_port_init(0, COPPER))
        self.assertEqual(seen, [(COPPER, 0, 0)])


class OnTheClock(LinkScanTest):
    """What link scan tells where a test lets time pass."""

    def setUp(self):
        LinkScanTest.setUp(self)
        self.addCleanup(library.sim_clock_mode_set, clock.STANDS)
        self.done(library.sim_clock_mode_set(clock.STEPS))
        self.began = clock.now()
        self.start()

    def watch(self, *react):
        """A list of (milliseconds since the scan was switched on, port, link)."""
        seen = []
        LinkScanTest.watch(self, lambda port: seen.append(
            ((clock.now() - self.began) // 10 ** 6, port, self.link(port))), *react)
        return seen

    def test_changes_are_seen_when_an_interval_is_over(self):
        seen = self.watch()
        self.done(clock.advance(0.1))
        for port in (SERDES, COPPER):
            self.plug(port)
        self.done(clock.advance(0.149))
        self.assertEqual(seen, [])
        self.done(clock.advance(0.3))
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER)
        self.assertEqual(clock.next_event(), (q.BCM_E_NONE, 0.201))
        self.done(clock.advance(0.201))
        self.assertEqual(self.drain(seen), [(250, SERDES, 0), (250, COPPER, 0), (750, COPPER, 1)])
        # What has been put right by then is not seen.
        self.done(library.sim_cable_flap(0, COPPER, 3))
        self.done(clock.advance(1))
        self.assertEqual(seen, [])
        self.done(q.bcm_link_change(0, [COPPER]))
        self.done(clock.advance(0.25))
        self.assertEqual(seen, [(2000, COPPER, 1)])

    def test_the_chip_sees_them_at_once(self):
        seen = self.watch()
        self.done(q.bcm_linkscan_mode_set(0, COPPER, HW))
        self.done(library.sim_cable_flap(0, COPPER, 2))
        self.assertEqual(seen, [(0, COPPER, 0), (0, COPPER, 1)] * 2)

    def test_handlers_change_links_for_the_next_scan(self):
        seen = self.watch(lambda port: q.bcm_port_enable_set(
            0, port, 1 - self.value(q.bcm_port_enable_get, port)))
        self.done(q.bcm_link_change(0, [SERDES]))
        self.done(clock.advance(1))
        self.assertEqual(seen, [(250, SERDES, 1), (500, SERDES, 0), (750, SERDES, 1), (1000, SERDES, 0)])

    def test_nothing_is_seen_of_what_has_ended(self):
        for end in (lambda: q.bcm_linkscan_init(0), lambda: q.bcm_linkscan_enable_set(0, 0)):
            self.done(end())
            seen = self.watch()
            self.start()
            self.drain(seen)
            self.plug(SERDES)
            self.done(end())
            self.plug(SERDES, q.SOC_PHY_MEDIUM_FIBER)
            self.done(clock.advance(1))
            self.assertEqual(seen, [])
        self.done(library.bcm_attach(3, None, None, 0))
        self.done(q.bcm_linkscan_enable_set(3, INTERVAL))
        self.done(q.bcm_port_enable_set(3, SERDES, 0))
        self.done(q.bcm_detach(3))
        self.done(clock.advance(1))

    def test_waiting_advances_the_clock_until_it_is_over(self):
        self.plug(SERDES)
        ports = PortBitmap([SERDES])
        start = time.time()
        self.assertStatus(q.BCM_E_TIMEOUT, library.bcm_link_wait(0, ctypes.byref(ports), 600 * 10 ** 6))
        self.assertEqual((clock.now() - self.began, ports.ports()), (600 * clock.SECOND, []))
        # Somebody who is told of something else on the way plugs the cable in.
        self.plug(COPPER)
        self.watch(lambda port: self.plug(SERDES, q.SOC_PHY_MEDIUM_FIBER))
        ports = PortBitmap([SERDES])
        self.done(library.bcm_link_wait(0, ctypes.byref(ports), 600 * 10 ** 6))
        self.assertEqual((clock.now() - self.began, ports.ports()), (600.25 * clock.SECOND, [SERDES]))
        self.assertLess(time.time() - start, 60)

    def test_it_runs_with_the_machine(self):
        seen = self.watch()
        self.done(library.sim_clock_mode_set(clock.RUNS))
        self.plug(SERDES)
        ports = PortBitmap([COPPER, SERDES])
        self.assertStatus(q.BCM_E_TIMEOUT, library.bcm_link_wait(0, ctypes.byref(ports), INTERVAL))
        self.assertEqual([told[1:] for told in seen], [(SERDES, 0)])
        self.plug(SERDES, q.SOC_PHY_MEDIUM_FIBER)
        time.sleep(INTERVAL / 1e6)
        self.value(q.bcm_port_speed_max, SERDES)  # the next function, whichever it is
        self.assertEqual([told[1:] for told in seen], [(SERDES, 0), (SERDES, 1)])


class Handlers(LinkScanTest):
    def test_of_one_port(self):
        seen = []
        callback = port_handler(lambda unit, port, info, data: seen.append((port, data)) or -1)
        for port, data in ((SERDES, 1), (SERDES, 2), (COPPER, 3)):
            self.done(library.bcm_linkscan_port_register(0, port, callback, data))
        self.start()
        self.assertEqual(self.drain(seen), [(SERDES, 1), (SERDES, 2), (COPPER, 3)])
        self.done(library.bcm_linkscan_port_unregister(0, SERDES, callback, 1))
        self.plug(SERDES)
        self.assertEqual(self.drain(seen), [(SERDES, 2)])
        for status, call, data in ((q.BCM_E_EXISTS, 'register', 2), (q.BCM_E_NOT_FOUND, 'unregister', 1)):
            function = getattr(library, 'bcm_linkscan_port_' + call)
            self.assertStatus(status, function(0, SERDES, callback, data), call)
        self.done(q.bcm_linkscan_init(0))
        self.start()
        self.assertEqual(seen, [])

    def test_each_at_most_once(self):
        seen, callback = self.watch()
        self.assertStatus(q.BCM_E_EXISTS, library.bcm_linkscan_register(0, callback))
        self.done(library.bcm_linkscan_unregister(0, callback))
        self.assertStatus(q.BCM_E_NOT_FOUND, library.bcm_linkscan_unregister(0, callback))
        self.start()
        self.assertEqual(seen, [])

    def test_they_may_change_what_they_hear_of(self):
        self.start()
        seen, _ = self.watch(lambda port: q.bcm_port_enable_set(0, port, 0))
        others, _ = self.watch()
        self.done(q.bcm_link_change(0, [SERDES]))
        self.assertEqual([[told[:2] for told in one] for one in (seen, others)],
                         [[(SERDES, 1), (SERDES, 0)]] * 2)

    def test_one_that_never_lets_go(self):
        self.start()
        seen, _ = self.watch(lambda port: q.bcm_port_enable_set(
            0, port, 1 - self.value(q.bcm_port_enable_get, port)))
        self.done(q.bcm_link_change(0, [SERDES]))
        self.assertTrue(2 < len(seen) < 100)

    def test_they_may_leave_and_end_it_all(self):
        for last in (lambda port: library.bcm_linkscan_unregister(0, later),
                     lambda port: q.bcm_linkscan_detach(0)):
            seen, first = self.watch(last)
            told, later = self.watch()
            self.start()
            self.assertEqual((len(seen) > 0, told), (True, []))
            self.done(q.bcm_linkscan_init(0))
        # A unit that goes away in the middle of a scan of many ports.
        self.done(library.bcm_attach(3, None, None, 0))
        seen = []
        callback = handler(lambda unit, port, info: seen.append(port) or q.bcm_detach(3))
        self.done(library.bcm_linkscan_register(3, callback))
        self.done(q.bcm_linkscan_enable_set(3, INTERVAL))
        self.assertEqual(seen, [1])
        self.assertStatus(q.BCM_E_UNIT, q.bcm_linkscan_enable_set(3, INTERVAL))


class Life(LinkScanTest):
    NAMES = ('enable_set enable_get enable_port_get mode_set mode_set_pbm mode_get register unregister '
             'port_register port_unregister update dump detach').split()

    def test_units_init_and_nulls(self):
        names = ['bcm_linkscan_' + name for name in self.NAMES] + ['bcm_link_change', 'bcm_link_wait']
        for name in names + ['bcm_linkscan_init']:
            self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, 15), name)
        for name in 'enable_get mode_get register unregister port_register port_unregister'.split():
            self.assertStatus(q.BCM_E_PARAM, call_with_nulls('bcm_linkscan_' + name, 0), name)
        self.done(q.bcm_linkscan_detach(0))
        for name in names:
            self.assertStatus(q.BCM_E_INIT, call_with_nulls(name, 0), name)
        self.plug(SERDES)
        self.done(q.bcm_port_info_get(0, SERDES, q.bcm_port_info_t()))

    def test_ports(self):
        for port, status in ((CPU_PORT, q.BCM_E_UNAVAIL), (65, q.BCM_E_PORT), (-1, q.BCM_E_PORT)):
            self.assertStatus(status, q.bcm_linkscan_mode_set(0, port, SW))
            self.assertStatus(status, q.bcm_linkscan_enable_port_get(0, port))
        for call in (q.bcm_linkscan_update, q.bcm_link_change):
            self.assertStatus(q.BCM_E_PORT, call(0, [1, 65]))
        self.assertStatus(q.BCM_E_PORT, q.bcm_linkscan_mode_set_pbm(0, [SERDES, 575], NONE))
        self.assertEqual(self.value(q.bcm_linkscan_mode_get, SERDES), SW)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_linkscan_enable_set(0, -1))

    def test_dump(self):
        text = subprocess.check_output([sys.executable, '-c', '\n'.join((
            'import QuorelApiNew as q', 'q.bcm_linkscan_enable_set(0, 7)', 'q.bcm_linkscan_mode_set(0, 5, 0)',
            'q.bcm_port_enable_set(0, 6, 0)', 'q.bcm_linkscan_dump(0)'))], env=os.environ)
        rows = [line.split() for line in text.splitlines()]
        self.assertEqual((rows[0], len(rows)), ('link scan every 7 us'.split(), 2 + len(FRONT_PORTS)))
        self.assertEqual(rows[6:8], [['5', 'none', 'up'], ['6', 'sw', 'down']])


if __name__ == '__main__':
    unittest.main()
