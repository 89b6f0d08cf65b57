"""What is in use stays, what is full takes no more, what is there is not made again: refusals that headers promise and
that take more than one wrong argument."""
import unittest

import QuorelApiNew as q
from quorel import OUT, StatusError, array, checked, sim, status_name
from simulator import SwitchTest


class RefusalTest(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        sim.Switch(0).fresh()
        self.addCleanup(sim.Switch(0).fresh)

    def status(self, name, *arguments):
        """The name of the status of a call whose outputs do not matter."""
        try:
            checked(getattr(q, 'bcm_' + name), 0, *arguments)
        except StatusError as error:
            return status_name(error.status)
        return 'BCM_E_NONE'

    def refused(self, status, *calls):
        self.assertEqual([(call[0], self.status(*call)) for call in calls], [(call[0], status) for call in calls])

    def hop(self):
        return checked(q.bcm_l3_egress_create, 0, 0, q.bcm_l3_egress_t(), OUT)


class Full(RefusalTest):
    def fill(self, status, room, name, arguments):
        """`arguments`: what makes those of the call by its number."""
        for number in range(room):
            checked(getattr(q, 'bcm_' + name), 0, *arguments(number))
        self.assertEqual(self.status(name, *arguments(room)), status, name)

    def test_groups_of_ways(self):
        hops = array('bcm_if_t', [self.hop()])
        member, empty = q.bcm_l3_ecmp_member_t(egress_if=hops[0]), q.bcm_l3_egress_ecmp_t
        self.fill('BCM_E_FULL', 4096, 'l3_egress_multipath_max_create', lambda _: (0, 4, 1, hops, OUT))
        self.refused('BCM_E_FULL', ('l3_egress_ecmp_create', empty(), 1, hops), ('l3_ecmp_create', 0, empty(), 1, member))

    def test_members_of_one(self):
        group = q.bcm_l3_egress_ecmp_t(max_paths=2)
        checked(q.bcm_l3_egress_ecmp_create, 0, group, 2, array('bcm_if_t', [self.hop(), self.hop()]))
        other = self.hop()
        self.refused('BCM_E_FULL', ('l3_egress_ecmp_add', group, other),
                     ('l3_ecmp_member_add', group.ecmp_intf, q.bcm_l3_ecmp_member_t(egress_if=other)))

    def test_virtual_routers(self):
        for vlan in range(2, 11):
            checked(q.bcm_vlan_create, 0, vlan)
        self.fill('BCM_E_FULL', 2048, 'l3_vrrp_add', lambda number: (2 + number // 255, 1 + number % 255))

    def test_what_is_kept_by_number(self):
        self.fill('BCM_E_FULL', 4096, 'policer_create', lambda _: (q.bcm_policer_config_t(), OUT))
        self.fill('BCM_E_FULL', 4096, 'vswitch_create', lambda _: (OUT,))
        self.fill('BCM_E_FULL', 256, 'l3_ip6_prefix_map_add', lambda number: (array('uint8', divmod(number, 256) + (1,) * 14),))
        self.fill('BCM_E_FULL', 16, 'switch_tpid_add',
                  lambda number: (0, q.bcm_switch_tpid_info_t(tpid_value=0x9000 + number)))

    def test_mirrors_of_a_vlan(self):
        destinations = [q.bcm_mirror_destination_t(gport=5 + number) for number in range(9)]
        for destination in destinations:
            checked(q.bcm_mirror_destination_create, 0, destination)

        def add(number):
            return 1, 1, q.BCM_MIRROR_PORT_INGRESS, destinations[number].mirror_dest_id, q.bcm_mirror_options_t()
        self.fill('BCM_E_FULL', 8, 'mirror_port_vlan_destination_add', add)
        self.refused('BCM_E_EXISTS', ('mirror_port_vlan_destination_add',) + add(7))

    def test_what_fields_look_at(self):
        self.fill('BCM_E_RESOURCE', 64, 'field_range_group_create', lambda _: (OUT, q.BCM_FIELD_RANGE_SRCPORT, 1, 2, 0))
        self.fill('BCM_E_RESOURCE', 8, 'field_data_qualifier_create', lambda number: (q.bcm_field_data_qualifier_t(length=2),))


class InUse(RefusalTest):
    def test_groups_of_ways(self):
        group = q.bcm_l3_egress_ecmp_t()
        checked(q.bcm_l3_egress_ecmp_create, 0, group, 1, array('bcm_if_t', [self.hop()]))
        checked(q.bcm_l3_host_add, 0, q.bcm_l3_host_t(l3a_ip_addr=1, l3a_intf=group.ecmp_intf))
        calls = ('l3_egress_ecmp_destroy', group), ('l3_ecmp_destroy', group.ecmp_intf)
        self.refused('BCM_E_BUSY', *calls)
        checked(q.bcm_l3_host_delete_all, 0, None)
        self.refused('BCM_E_NONE', calls[0])
        self.refused('BCM_E_NOT_FOUND', *calls)

    def test_meters_of_flows(self):
        meter = q.bcm_ipfix_rate_t()
        checked(q.bcm_ipfix_rate_create, 0, meter)
        checked(q.bcm_ipfix_rate_mirror_add, 0, meter.rate_id, q.bcm_ipfix_mirror_config_t())
        self.refused('BCM_E_BUSY', ('ipfix_rate_destroy', meter.rate_id))

    def test_predicates(self):
        predicate = checked(q.bcm_fabric_predicate_create, 0, 0, q.bcm_fabric_predicate_info_t(), OUT)
        action = checked(q.bcm_fabric_action_create, 0, 0, q.bcm_fabric_action_info_t(), OUT)
        both = q.bcm_fabric_predicate_action_info_t(predicate_id=predicate, action_id=action)
        checked(q.bcm_fabric_predicate_action_add, 0, both)
        self.refused('BCM_E_EXISTS', ('fabric_predicate_action_add', both))
        self.refused('BCM_E_BUSY', ('fabric_predicate_destroy', predicate))
        checked(q.bcm_fabric_predicate_action_delete, 0, predicate, action)
        self.refused('BCM_E_NONE', ('fabric_predicate_destroy', predicate))

    def test_profiles_of_measurement(self):
        group = q.bcm_oam_group_info_t()
        checked(q.bcm_oam_group_create, 0, group)
        endpoint = q.bcm_oam_endpoint_info_t(group=group.id, name=1, vlan=1, gport=5)
        checked(q.bcm_oam_endpoint_create, 0, endpoint)
        profile = q.bcm_oam_pm_profile_info_t()
        checked(q.bcm_oam_pm_profile_create, 0, profile)
        checked(q.bcm_oam_pm_profile_attach, 0, endpoint.id, profile.id)
        self.refused('BCM_E_BUSY', ('oam_pm_profile_delete', profile.id))
        checked(q.bcm_oam_pm_profile_detach, 0, endpoint.id, profile.id)
        self.refused('BCM_E_NONE', ('oam_pm_profile_delete', profile.id))


class There(RefusalTest):
    def test_again(self):
        number = array('bcm_trunk_t', [3])
        mirror = q.bcm_mirror_destination_t(gport=5)
        checked(q.bcm_mirror_destination_create, 0, mirror)
        mirror.flags |= q.BCM_MIRROR_DEST_WITH_ID
        station = q.bcm_mcast_addr_t(mac='01:00:5e:00:00:01', vid=1)
        action = q.bcm_vlan_action_set_t()
        ways = q.bcm_l3_egress_ecmp_t(), q.bcm_l3_ecmp_member_t(egress_if=self.hop())
        checked(q.bcm_l3_ecmp_create, 0, 0, ways[0], 1, ways[1])
        twice = (('trunk_create', q.BCM_TRUNK_FLAG_WITH_ID, number), ('mcast_addr_add', station),
                 ('vlan_translate_action_create', 5, q.bcmVlanTranslateKeyOuter, 7, 0, action))
        self.refused('BCM_E_NONE', *twice)
        self.refused('BCM_E_EXISTS', *(twice + (('mirror_destination_create', mirror),
                                                ('l3_ecmp_create', q.BCM_L3_ECMP_O_CREATE_WITH_ID, ways[0], 1, ways[1]))))


class NoSuch(RefusalTest):
    def test_trunks_to_which_ways_lead(self):
        interface = q.bcm_l3_intf_t(l3a_vid=1)
        checked(q.bcm_l3_intf_create, 0, interface)
        way = dict(l3a_intf=interface.l3a_intf_id, l3a_flags=q.BCM_L3_TGID, l3a_nexthop_mac='02:00:00:00:00:01')
        hop = q.bcm_l3_egress_t(intf=interface.l3a_intf_id, flags=q.BCM_L3_TGID, trunk=100000, mac_addr='02:00:00:00:00:01')
        self.refused('BCM_E_BADID', ('l3_egress_create', 0, hop, OUT),
                     ('l3_host_add', q.bcm_l3_host_t(l3a_ip_addr=1, l3a_port_tgid=100000, **way)),
                     ('l3_route_add', q.bcm_l3_route_t(l3a_subnet=0x0a000000, l3a_ip_mask=0xff000000,
                                                       l3a_port_tgid=100000, **way)))

    def test_counters_that_do_not_count(self):
        station, counted = q.bcm_l2_addr_t(mac='02:00:00:00:00:05', vid=1, port=5), q.bcmL2StatInPackets
        checked(q.bcm_l2_addr_add, 0, station)
        calls = (('l2_stat_get', station, counted, OUT), ('l2_stat_get32', station, counted, OUT),
                 ('l2_stat_set', station, counted, 1), ('l2_stat_set32', station, counted, 1))
        self.refused('BCM_E_DISABLED', *calls)
        checked(q.bcm_l2_stat_enable_set, 0, station, 1)
        self.refused('BCM_E_NONE', *calls)


if __name__ == '__main__':
    unittest.main()
