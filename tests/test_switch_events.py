"""What a unit tells without being asked: to whom, of what, when, and what it does by itself about damaged memory."""
import os
import subprocess
import sys
import unittest

import QuorelApiNew as q
from quorel import OUT, Chip, StatusError, array, callback, checked, events, sim

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
DAMAGED, CORRECTED = q.bcmSwitchEventParityError, q.bcmSwitchEventParityCorrected
MEMORY = q.IHP_LIF_TABLEm
FAULT = q.bcmSwitchEventErrorMemParity, MEMORY, 7


class SwitchEvents(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        told = events(q.bcm_switch_event_register, 0)
        self.told = told.__enter__()
        self.addCleanup(told.__exit__, None, None, None)
        self.entry = Chip(0).mems.IHP_LIF_TABLE[7]

    def seen(self):
        return [each[1:5] for each in self.told.waiting()]

    def control(self, event, action, value, only=0):
        which = q.bcm_switch_event_control_t(event_id=only, action=getattr(q, 'bcmSwitchEventControl' + action))
        checked(q.bcm_switch_event_control_set, 0, event, which, value)
        self.assertEqual(checked(q.bcm_switch_event_control_get, 0, event, which, OUT), value)

    def test_what_is_injected(self):
        checked(q.bcm_switch_event_inject, 0, q.bcmSwitchEventGpioInput, 3, 0, 2 ** 32 - 1)
        self.assertEqual(self.seen(), [(q.bcmSwitchEventGpioInput, 3, 0, 2 ** 32 - 1)])
        which = q.bcm_switch_event_control_t()
        for event in (-1, q.bcmSwitchEventModuleRemoved + 1):
            self.assertEqual(q.bcm_switch_event_inject(0, event, 0, 0, 0), q.BCM_E_PARAM)
            self.assertEqual(q.bcm_switch_event_control_set(0, event, which, 0), q.BCM_E_PARAM)
        which.action = q.bcmSwitchEventControlCorrect + 1
        self.assertEqual(q.bcm_switch_event_control_set(0, 0, which, 0), q.BCM_E_PARAM)

    def test_who_is_told_of_what(self):
        inject = q.bcm_switch_event_inject
        for action in ('Enable', 'Callback'):
            self.control(q.bcmSwitchEventMmuError, action, 0, only=2)
            self.assertEqual([inject(0, q.bcmSwitchEventMmuError, pipe, 0, 0) for pipe in (1, 2)], [0, 0])
            self.assertEqual(self.seen(), [(q.bcmSwitchEventMmuError, 1, 0, 0)])
            # What is said of all is said of each.
            self.control(q.bcmSwitchEventMmuError, action, 1)
            inject(0, q.bcmSwitchEventMmuError, 2, 0, 0)
            self.assertEqual(self.seen(), [(q.bcmSwitchEventMmuError, 2, 0, 0)])

    def test_storms(self):
        self.control(q.bcmSwitchEventBusError, 'StormLimit', 2)
        self.control(q.bcmSwitchEventBusError, 'StormWindow', 50)

        def burst():
            for _ in range(4):
                checked(q.bcm_switch_event_inject, 0, q.bcmSwitchEventBusError, 1, 0, 0)
            return len(self.seen())
        self.assertEqual((burst(), burst()), (2, 0))
        sim.advance(0.051)
        self.assertEqual((burst(), burst()), (2, 0))
        checked(q.bcm_switch_event_inject, 0, q.bcmSwitchEventWatchdog, 0, 0, 0)
        self.assertEqual(len(self.seen()), 1)

    def test_printed(self):
        text = subprocess.check_output([sys.executable, '-c', '\n'.join((
            'import QuorelApiNew as q',
            'which = q.bcm_switch_event_control_t(); which.action = q.bcmSwitchEventControlLog',
            'q.bcm_switch_event_control_set(0, q.bcmSwitchEventWatchdog, which, 1)',
            'q.bcm_switch_event_inject(0, q.bcmSwitchEventWatchdog, 1, 2, 3)'))], env=os.environ)
        self.assertEqual(text, 'unit 0: event Watchdog 1 2 3\n')

    def test_full_tables(self):
        """One that is refused is told of, with what it is one of."""
        hop = checked(q.bcm_l3_egress_create, 0, 0, q.bcm_l3_egress_t(), OUT)
        single, number = array('bcm_if_t', [hop]), q.intp()
        host, route, hops = q.bcm_l3_host_t(l3a_intf=hop), q.bcm_l3_route_t(l3a_intf=hop, l3a_ip_mask=0xffffff00), q.bcm_l3_egress_t()
        entry, label = q.bcm_ipmc_addr_t(mc_ip_addr=0xe1010101), q.bcm_mpls_tunnel_switch_t()

        def station(n):
            return q.bcm_l2_station_add(0, number, q.bcm_l2_station_t(dst_mac='02:00:00:00:%02x:%02x' % divmod(n, 256)))

        def add_host(n):
            host.l3a_ip_addr = n + 1
            return q.bcm_l3_host_add(0, host)

        def add_route(n):
            route.l3a_subnet = n << 8
            return q.bcm_l3_route_add(0, route)

        def multicast(n):
            entry.s_ip_addr = n + 1
            return q.bcm_ipmc_add(0, entry, number)

        def add_label(n):
            label.label = n
            return q.bcm_mpls_tunnel_switch_add(0, label)
        for add, size, kind in (
                (station, 512, q.bcmSwitchObjectL2StationMax),
                (add_host, 65536, q.bcmSwitchObjectL3HostMax), (add_route, 524288, q.bcmSwitchObjectL3RouteIp4Max),
                (lambda n: q.bcm_l3_egress_create(0, 0, hops, number), 65536 - 1, q.bcmSwitchObjectL3EgressMax),
                (lambda n: q.bcm_l3_egress_multipath_create(0, 0, 1, single, number), 4096, q.bcmSwitchObjectEcmpGroupMax),
                (multicast, 8192, q.bcmSwitchObjectIpmcEntryMax),
                (lambda n: q.bcm_niv_port_add(0, q.bcm_niv_port_t()), 4096, q.bcmSwitchObjectVirtualPortMax),
                (add_label, 16384, q.bcmSwitchObjectMplsLabelMax)):
            self.assertEqual((set(add(n) for n in range(size)), self.seen()), ({0}, []), kind)
            self.assertEqual((add(size), self.seen()), (q.BCM_E_FULL, [(q.bcmSwitchEventTableFull, kind, 0, 0)]))

    def test_a_damaged_entry_is_read(self):
        self.entry.VSI = 4
        self.switch.damage(MEMORY, 7)
        self.assertEqual(self.seen(), [])
        self.assertEqual((self.entry.VSI, self.seen()), (4, [(DAMAGED,) + FAULT, (CORRECTED,) + FAULT]))
        self.assertEqual((self.entry.VSI, self.seen()), (4, []))
        self.control(DAMAGED, 'Correct', 0)
        self.switch.damage(MEMORY, 7)
        self.assertEqual([self.entry.VSI, self.entry.VSI], [5, 5])
        self.assertEqual(self.seen(), [(DAMAGED,) + FAULT] * 2)
        self.entry.VSI = 8
        self.assertEqual((self.entry.VSI, self.seen()[1:]), (8, []))
        # Nobody looks.
        self.control(DAMAGED, 'Correct', 1)
        self.control(DAMAGED, 'Enable', 0)
        self.switch.damage(MEMORY, 7)
        self.assertEqual((self.entry.VSI, self.seen()), (9, []))
        for memory, index in ((-1, 0), (MEMORY, 4096), (MEMORY, -1)):
            self.assertRaises(StatusError, self.switch.damage, memory, index)

    def test_a_scan_finds_it_in_its_time(self):
        checked(q.bcm_switch_control_set, 0, q.bcmSwitchMemScanInterval, 20000)
        self.assertEqual(checked(q.bcm_switch_control_get, 0, q.bcmSwitchMemScanEnable, OUT), 1)
        self.switch.damage(MEMORY, 7)
        sim.advance(0.019)
        self.assertEqual(self.seen(), [])
        sim.advance(0.001)
        self.assertEqual([each[0] for each in self.seen()], [DAMAGED, CORRECTED])
        self.control(DAMAGED, 'Correct', 0)
        self.switch.damage(MEMORY, 7)
        sim.advance(0.04)
        self.assertEqual([each[0] for each in self.seen()], [DAMAGED] * 2)
        checked(q.bcm_switch_control_set, 0, q.bcmSwitchMemScanEnable, 0)
        sim.advance(1)
        self.assertEqual(self.seen(), [])
        sim.run_clock(False)
        checked(q.bcm_switch_control_set, 0, q.bcmSwitchMemScanEnable, 1)
        self.switch.damage(MEMORY, 9)
        self.assertEqual(self.seen(), [(DAMAGED,) + FAULT[:2] + (index,) for index in (7, 9)])

    def test_links_tables_and_resets(self):
        checked(q.bcm_linkscan_enable_set, 0, 1000)
        for pause, expected in ((0.5, [(q.bcmSwitchEventLinkFlap, 5, 0, 0)]), (1.1, [])):
            self.switch.pull(5)
            sim.advance(pause)
            self.switch.plug(5)
            sim.advance(5)
            self.assertEqual(self.seen(), expected)
        limit = q.bcm_l2_learn_limit_t(flags=q.BCM_L2_LEARN_LIMIT_PORT, port=3, limit=1)
        checked(q.bcm_l2_learn_limit_set, 0, limit)
        for address in (A, B):
            self.switch.arrive(3, sim.ethernet('02:00:00:00:00:09', address))
        self.assertEqual(self.seen(), [(q.bcmSwitchEventLearnOverflow, 0, 0, 0)])
        checked(q.soc_reset_init, 0)
        self.assertEqual(self.seen(), [(q.bcmSwitchEventDeviceReset, 0, 0, 0)])

    def test_who_is_told_may_have_the_unit_detached(self):
        other = sim.Switch(3)
        other.fresh()
        self.addCleanup(q.bcm_detach, 3)

        def leave(unit, *_):
            q.bcm_detach(unit)
        checked(q.bcm_switch_event_register, 3, callback('bcm_switch_event_cb_t', leave), None)
        other.damage(MEMORY, 7)
        entry = Chip(3).mems.IHP_LIF_TABLE[7]
        with self.assertRaises(StatusError) as raised:
            entry.VSI
        self.assertEqual(raised.exception.status, q.BCM_E_UNIT)
        self.assertEqual(q.bcm_attach_check(3), q.BCM_E_UNIT)


if __name__ == '__main__':
    unittest.main()
