"""Entries of the field processor act: what their actions do in each stage, and when they do nothing. Which packets
they are for is compared in test_field_random.py."""
import unittest

import QuorelApiNew as q
from quorel import checked, sim

SOURCE, UNKNOWN, BROADCAST = '02:00:00:00:00:00', '02:00:00:00:01:00', 'ff:ff:ff:ff:ff:ff'
VLANS = 10, 20


class Actions(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_field_init, 0)
        for vlan in VLANS:
            checked(q.bcm_vlan_create, 0, vlan)
            checked(q.bcm_vlan_port_add, 0, vlan, range(1, 65), [])

    def group(self, priority, *extra):
        qset = q.bcm_field_qset_t()
        for name in ('InPort', 'SrcMac') + extra:
            q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualify' + name))
        return checked(q.bcm_field_group_create, 0, qset, priority)

    def entry(self, group, priority=0, actions=(), **qualifiers):
        entry = checked(q.bcm_field_entry_create, 0, group)
        checked(q.bcm_field_entry_prio_set, 0, entry, priority)
        for name, values in qualifiers.items():
            checked(getattr(q, 'bcm_field_qualify_' + name), 0, entry, *values)
        for action in actions:
            parameters = (action[1:] + (0,) * 3)[:3]
            checked(q.bcm_field_action_add, 0, entry, getattr(q, 'bcmFieldAction' + action[0]), *parameters)
        checked(q.bcm_field_entry_install, 0, entry)
        return entry

    def test_where_packets_go(self):
        group, frame = self.group(1), sim.ethernet(UNKNOWN, SOURCE)
        for action, ports in ((('RedirectPort', 0, 7), [7]), (('Redirect', 9), [9]), (('RedirectBlackHole',), []),
                              (('CopyToCpu',), [0] + range(2, 65)), (('RedirectPort', 0, 1), []), (('RedirectSystemPort', 8), [8])):
            entry = self.entry(group, actions=[action], InPort=(1, 0xff))
            self.assertEqual([port for port, _ in self.switch.send(1, frame)], ports, action)
            checked(q.bcm_field_entry_destroy, 0, entry)
        for action, ports in (('RedirectPbmp', [5, 6]), ('EgressMask', [2, 3, 4] + range(7, 65))):
            entry = checked(q.bcm_field_entry_create, 0, group)
            checked(q.bcm_field_action_ports_add, 0, entry, getattr(q, 'bcmFieldAction' + action), [5, 6])
            checked(q.bcm_field_entry_install, 0, entry)
            self.assertEqual([port for port, _ in self.switch.send(1, frame)], ports, action)
            checked(q.bcm_field_entry_destroy, 0, entry)

    def test_a_vlan_before_the_tables(self):
        group, frame = self.group(1, 'StageLookup'), sim.ethernet(UNKNOWN, SOURCE)
        entry = self.entry(group, actions=[('OuterVlanNew', 20)], SrcMac=(SOURCE, 'ff:ff:ff:ff:ff:ff'))
        self.assertEqual(self.switch.send(1, frame)[0], (2, sim.tagged(frame, 20)))
        self.assertIn('entry %d of group %d' % (entry, group), self.switch.trace(1, frame))
        checked(q.bcm_field_entry_enable_set, 0, entry, 0)
        self.assertEqual(self.switch.send(1, frame)[0], (2, frame))

    def test_copies_that_ports_may_not_send(self):
        frame = sim.ethernet(BROADCAST, SOURCE)
        entry = self.entry(self.group(1, 'StageEgress', 'OutPort'), actions=[('Drop',)], OutPort=(7, 0xff))
        self.assertEqual([port for port, _ in self.switch.send(1, frame)], range(2, 7) + range(8, 65))
        self.assertEqual(self.switch.drops(1, frame), [(7, 'field_rule_to_send')])
        checked(q.bcm_field_entry_remove, 0, entry)
        self.assertEqual(len(self.switch.send(1, frame)), 63)

    def test_groups_of_ports_and_groups_that_are_off(self):
        frame, qset = sim.ethernet(UNKNOWN, SOURCE), q.bcm_field_qset_t()
        group = checked(q.bcm_field_group_port_create_mode, 0, 3, qset, 1, q.bcmFieldGroupModeAuto)
        self.entry(group, actions=[('Drop',)])
        self.assertEqual([bool(self.switch.send(port, frame)) for port in (1, 3)], [True, False])
        self.assertEqual(self.switch.drops(3, frame), [(3, 'field_rule')])
        checked(q.bcm_field_group_enable_set, 0, group, 0)
        self.assertTrue(self.switch.send(3, frame))

    def test_translated_tags(self):
        checked(q.bcm_vlan_control_port_set, 0, 1, q.bcmVlanTranslateIngressEnable, 1)
        checked(q.bcm_vlan_translate_add, 0, 1, 10, 20, 0)
        plain = sim.ethernet(UNKNOWN, SOURCE)
        for stage in (), ('StageEgress',):
            entry = self.entry(self.group(1, 'VlanTranslationHit', *stage), actions=[('Drop',)], VlanTranslationHit=(1, 1))
            self.assertEqual([bool(self.switch.send(1, sim.tagged(plain, vlan))) for vlan in VLANS], [False, True], stage)
            checked(q.bcm_field_entry_destroy, 0, entry)
        self.assertTrue(self.switch.send(1, sim.tagged(plain, 10)))

    def test_what_the_switch_has_not_got_cannot_be_installed(self):
        group = self.group(1, 'MplsForwardingLabel', 'OutPort')
        early = self.group(2, 'StageLookup', 'OutPort')
        for where, qualifier, action in ((group, 'MplsForwardingLabel', 'Drop'), (early, 'OutPort', 'Drop'),
                                         (group, None, 'MplsLabelPush'), (early, None, 'CopyToCpu')):
            entry = checked(q.bcm_field_entry_create, 0, where)
            if qualifier:
                checked(getattr(q, 'bcm_field_qualify_' + qualifier), 0, entry, 1, 1)
            checked(q.bcm_field_action_add, 0, entry, getattr(q, 'bcmFieldAction' + action), 0, 0, 0)
            self.assertEqual(q.bcm_field_entry_install(0, entry), q.BCM_E_UNAVAIL, (qualifier, action))


if __name__ == '__main__':
    unittest.main()
