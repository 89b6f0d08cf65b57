"""What a unit keeps across bcm_detach and bcm_attach, and what it does not."""
import unittest

import QuorelApiNew as q
import rules
from quorel import OUT, Chip, callback, checked, events, sim

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
UNIT = 2
KEPT_BY_RULE = q.bcmPortClassFieldLookup


class WarmBoot(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        self.unit = sim.Switch(UNIT)
        self.unit.fresh()
        self.addCleanup(q.bcm_detach, UNIT)

    def configure(self):
        checked(q.bcm_vlan_create, UNIT, 10)
        checked(q.bcm_vlan_port_add, UNIT, 10, [1, 2], [1, 2])
        checked(q.bcm_port_untagged_vlan_set, UNIT, 1, 10)
        checked(q.bcm_port_enable_set, UNIT, 3, 0)
        checked(q.bcm_port_class_set, UNIT, 5, KEPT_BY_RULE, 7)    # kept by rule
        self.unit.arrive(4, sim.ethernet(A, B))
        Chip(UNIT).mems.IHP_LIF_TABLE[7].VSI = 4

    def state(self):
        """All of it, as far as it is not as it is at first."""
        return (q.bcm_vlan_port_get(UNIT, 10), q.bcm_port_untagged_vlan_get(UNIT, 1),
                checked(q.bcm_port_enable_get, UNIT, 3, OUT), checked(q.bcm_port_class_get, UNIT, 5, KEPT_BY_RULE, OUT),
                q.getHwMacTable(UNIT), Chip(UNIT).mems.IHP_LIF_TABLE[7].VSI,
                checked(q.bcm_port_link_status_get, UNIT, 3, OUT), checked(q.bcm_stat_get, UNIT, 4, q.snmpIfInOctets, OUT))

    def again(self):
        checked(q.bcm_detach, UNIT)
        self.assertEqual(q.bcm_vlan_create(UNIT, 11), q.BCM_E_UNIT)
        sim.advance(700)
        checked(q.bcm_attach, UNIT, '', '', 0)

    def test_what_is_kept(self):
        at_first = self.state()
        self.configure()
        self.again()
        self.assertEqual(self.state(), at_first)
        checked(q.bcm_switch_control_set, UNIT, q.bcmSwitchWarmBootSupport, 1)
        self.configure()
        configured = self.state()
        self.assertNotEqual(configured, at_first)
        for _ in range(2):
            self.again()
            self.assertEqual(self.state(), configured)
        self.assertEqual([port for port, _ in self.unit.send(1, sim.ethernet(A, B))], [2])
        # Time goes on: addresses age.
        sim.advance(700)
        self.assertEqual(q.getHwMacTable(UNIT), [])
        # Others begin anew.
        for anew in (lambda: q.bcm_clear(UNIT), self.unit.fresh):
            self.unit.fresh()
            checked(q.bcm_switch_control_set, UNIT, q.bcmSwitchWarmBootSupport, 1)
            self.configure()
            anew()
            self.assertEqual(self.state(), at_first)

    def test_nobody_is_told_any_more(self):
        checked(q.bcm_switch_control_set, UNIT, q.bcmSwitchWarmBootSupport, 1)
        told = []
        checked(q.bcm_l2_addr_register, UNIT, callback('bcm_l2_addr_callback_t', lambda *_: told.append('address')), None)
        checked(q.bcm_switch_event_register, UNIT,
                callback('bcm_switch_event_cb_t', lambda *_: told.append('event')), None)
        checked(q.bcm_linkscan_enable_set, UNIT, 1000)
        checked(q.bcm_linkscan_register, UNIT, callback('bcm_linkscan_handler_t', lambda *_: told.append('link')))
        self.unit.pull(9)
        sim.advance(1)
        del told[:]
        self.again()
        self.unit.arrive(4, sim.ethernet(A, B))
        self.unit.plug(9)
        checked(q.bcm_switch_event_inject, UNIT, q.bcmSwitchEventWatchdog, 0, 0, 0)
        sim.advance(1)
        self.assertEqual(told, [])
        with events(q.bcm_l2_addr_register, UNIT) as again:
            self.unit.arrive(4, sim.ethernet(A, '02:00:00:00:00:09'))
            self.assertEqual(len(again.waiting()), 1)

    def registrations(self):
        """Of all functions that register one of the caller's: (name, arguments, those of the one that takes it off)."""
        values = dict(unit=UNIT, port=3, name='test', priority=10, cosq=2, flags=0, id=1, reg_default=0, user_data=None,
                      userdata=None, cookie=None)
        answered = set(row[0] for row in rules.report('answers.tsv') if row[2] != 'unavailable')
        declared = dict((row[0], row) for row in rules.report('reference.tsv')
                        if row[0] in answered and row[1] == 'function' and row[5].endswith('-> int'))
        for name in sorted(declared):
            off = name.replace('_register', '_unregister')
            # What belongs to the process outlasts its units.
            if off == name or off not in declared or name == 'bcm_attach_register':
                continue
            parameters = [row[6::4] for row in (declared[name], declared[off])]
            kinds = dict(zip(declared[name][6::4], zip(declared[name][7::4], declared[name][8::4])))
            given = dict(values)
            for parameter, (kind, declared_type) in kinds.items():
                if kind == 'callback':
                    given[parameter] = callback(declared_type, lambda *_: None)
            # Those of ports' callbacks that Python cannot make are those of PHYs, which it can.
            if all(one in given for names in parameters for one in names):
                yield name, off, [[given[one] for one in names] for names in parameters]

    def test_no_function_is_left(self):
        """Taking one off is refused as if it had never been there."""
        seen = 0
        for name, off, (registered, taken_off) in self.registrations():
            self.unit.fresh()
            checked(q.bcm_time_interface_add, UNIT, q.bcm_time_interface_t())
            on, off = getattr(q, name), getattr(q, off)
            refused = off(*taken_off)
            self.assertNotEqual(refused, 0, name)
            self.assertEqual([on(*registered), off(*taken_off)], [0, 0], name)
            checked(q.bcm_switch_control_set, UNIT, q.bcmSwitchWarmBootSupport, 1)
            checked(on, *registered)
            self.again()
            self.assertEqual(off(*taken_off), refused, name)
            seen += 1
        self.assertGreater(seen, 12)

    def test_from_within_its_own_callback(self):
        checked(q.bcm_switch_control_set, UNIT, q.bcmSwitchWarmBootSupport, 1)

        def leave(unit, *_):
            q.bcm_detach(unit)
            q.bcm_attach(unit, '', '', 0)
        checked(q.bcm_l2_addr_register, UNIT, callback('bcm_l2_addr_callback_t', leave), None)
        self.unit.send(4, sim.ethernet(A, B))
        self.assertEqual(len(q.getHwMacTable(UNIT)), 1)


if __name__ == '__main__':
    unittest.main()
