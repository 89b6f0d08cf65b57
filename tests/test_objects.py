"""Tables that the interface files describe: objects with ids, entries with keys, lists, and what refers to what."""
import ctypes
import unittest

import QuorelApiNew as q
import rules
from recording import library
from simulator import SwitchTest, call_with_nulls, pointer

UNIT = 1
MISSING, EXISTS, BUSY, FULL, PARAM = (q.BCM_E_NOT_FOUND, q.BCM_E_EXISTS, q.BCM_E_BUSY, q.BCM_E_FULL, q.BCM_E_PARAM)


class Record(object):
    """A record of the SDK by the name of its class, with members; made anew for each call."""

    def __init__(self, kind, **members):
        self.kind, self.members = kind, members

    def made(self):
        record = getattr(q, self.kind)()
        for name, value in self.members.items():
            setattr(record, name, value)
        return record


class ObjectTest(SwitchTest):
    def reset(self):
        library.bcm_detach(UNIT)

    def setUp(self):
        SwitchTest.setUp(self)
        self.attach_afresh()

    def attach_afresh(self):
        library.bcm_detach(UNIT)
        self.done(library.bcm_attach(UNIT, None, None, 0))

    def call(self, name, *args):
        """(status, what became of the records and numbers that went by address)"""
        given = [arg.made() if isinstance(arg, Record) else arg for arg in args]
        passed = [pointer(arg) if hasattr(arg, 'this') else arg for arg in given]
        status = getattr(library, 'bcm_' + name)(UNIT, *passed)
        return status, [arg for arg in given if hasattr(arg, 'this')]

    def status(self, name, *args):
        return self.call(name, *args)[0]

    def number(self, name, *args):
        """What is written to the last argument, an int."""
        result = ctypes.c_int(-99)
        self.done(self.status(name, *(args + (ctypes.byref(result),))))
        return result.value

    def visited(self, name, *args):
        """How many records a traversal visits."""
        visits = []
        callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int)(lambda unit: visits.append(unit) or 0)
        self.done(getattr(library, 'bcm_' + name)(UNIT, *(args + (callback, None))))
        return len(visits)


# Objects whose record has the id: create, get, destroy, the record, its id, flags that choose and replace, a member
# to tell records by, and how many there can be.
OBJECTS = [
    ('mpls_vpn_id_create', 'mpls_vpn_id_get', 'mpls_vpn_id_destroy', 'bcm_mpls_vpn_config_t', 'vpn',
     q.BCM_MPLS_VPN_WITH_ID, 0, 'lookup_id', 4096),
    ('mim_vpn_create', 'mim_vpn_get', 'mim_vpn_destroy', 'bcm_mim_vpn_config_t', 'vpn', q.BCM_MIM_VPN_WITH_ID,
     q.BCM_MIM_VPN_REPLACE, 'lookup_id', 4096),
    ('trill_vpn_create', 'trill_vpn_get', 'trill_vpn_destroy', 'bcm_trill_vpn_config_t', 'vpn',
     q.BCM_TRILL_VPN_WITH_ID, q.BCM_TRILL_VPN_REPLACE, 'if_class', 4096),
    ('niv_port_add', 'niv_port_get', 'niv_port_delete', 'bcm_niv_port_t', 'niv_port_id', q.BCM_NIV_PORT_WITH_ID,
     q.BCM_NIV_PORT_REPLACE, 'if_class', 4096),
    ('wlan_port_add', 'wlan_port_get', 'wlan_port_delete', 'bcm_wlan_port_t', 'wlan_port_id',
     q.BCM_WLAN_PORT_WITH_ID, q.BCM_WLAN_PORT_REPLACE, 'radio', 4096),
    ('oam_group_create', 'oam_group_get', 'oam_group_destroy', 'bcm_oam_group_info_t', 'id',
     q.BCM_OAM_GROUP_WITH_ID, q.BCM_OAM_GROUP_REPLACE, 'lowest_alarm_priority', 1024),
    ('oam_pm_profile_create', 'oam_pm_profile_get', 'oam_pm_profile_delete', 'bcm_oam_pm_profile_info_t', 'id',
     q.BCM_OAM_PM_PROFILE_WITH_ID, 0, 'interval', 64),
    ('mirror_destination_create', 'mirror_destination_get', 'mirror_destination_destroy',
     'bcm_mirror_destination_t', 'mirror_dest_id', q.BCM_MIRROR_DEST_WITH_ID, q.BCM_MIRROR_DEST_REPLACE,
     'truncate_length', 64),
    ('ipfix_rate_create', 'ipfix_rate_get', 'ipfix_rate_destroy', 'bcm_ipfix_rate_t', 'rate_id',
     q.BCM_IPFIX_RATE_WITH_ID, 0, 'burst', 256),
    ('switch_agm_create', 'switch_agm_get', 'switch_agm_destroy', 'bcm_switch_agm_info_t', 'agm_id',
     q.BCM_SWITCH_AGM_WITH_ID, 0, 'window', 64),
    ('time_interface_add', 'time_interface_get', 'time_interface_delete', 'bcm_time_interface_t', 'id',
     q.BCM_TIME_WITH_ID, q.BCM_TIME_REPLACE, 'heartbeat_hz', 8),
]


class Objects(ObjectTest):
    def got(self, get, kind, member, number):
        """A member of the object, or the status."""
        status, records = self.call(get, number, Record(kind), ctypes.byref(ctypes.c_int()))
        return getattr(records[0], member) if status == 0 else status

    def test_the_life_of_each_kind(self):
        for create, get, destroy, kind, id_name, with_id, replace, member, capacity in OBJECTS:
            ids = []
            for value in (11, 12, 13):
                status, records = self.call(create, Record(kind, **{member: value}))
                self.assertStatus(0, status, create)
                ids.append(getattr(records[0], id_name))
            self.assertEqual([number - ids[0] for number in ids], [0, 1, 2], create)
            self.assertEqual([self.got(get, kind, member, number) for number in ids], [11, 12, 13], create)
            self.assertEqual(self.got(get, kind, id_name, ids[1]), ids[1], create)
            self.assertStatus(0, self.status(destroy, ids[1]), destroy)
            self.assertStatus(MISSING, self.status(destroy, ids[1]), destroy)
            self.assertStatus(MISSING, self.got(get, kind, member, ids[1]), get)
            # The lowest free id comes back, and a caller can choose one.
            self.assertEqual(getattr(self.call(create, Record(kind))[1][0], id_name), ids[1], create)
            chosen = ids[0] + capacity - 1
            self.assertStatus(0, self.status(create, Record(kind, flags=with_id, **{id_name: chosen, member: 14})))
            self.assertStatus(EXISTS, self.status(create, Record(kind, flags=with_id, **{id_name: chosen})), create)
            self.assertStatus(PARAM, self.status(create, Record(kind, flags=with_id, **{id_name: ids[0] - 1})), create)
            if replace:
                for number, expected in ((chosen, 0), (ids[0] + 5, MISSING)):
                    record = Record(kind, flags=with_id | replace, **{id_name: number, member: 15})
                    self.assertStatus(expected, self.status(create, record), create)
                self.assertEqual(self.got(get, kind, member, chosen), 15, create)

    def test_each_kind_has_its_room(self):
        for create, _, destroy, kind, id_name, _, _, _, capacity in OBJECTS:
            if capacity > 256:  # filling the others takes long, and is the same
                continue
            self.attach_afresh()
            numbers = [getattr(self.call(create, Record(kind))[1][0], id_name) for _ in range(capacity)]
            self.assertEqual(len(set(numbers)), capacity, create)
            self.assertStatus(FULL, self.status(create, Record(kind)), create)
            self.done(self.status(destroy, numbers[7]))
            self.assertStatus(0, self.status(create, Record(kind)), create)

    def test_found_by_what_they_are(self):
        for length in (100, 200):
            self.call('mirror_destination_create', Record('bcm_mirror_destination_t', truncate_length=length))
        first = self.number('mirror_destination_find', Record('bcm_mirror_destination_t', truncate_length=100))
        # The id that the record says does not matter.
        again = self.number('mirror_destination_find',
                            Record('bcm_mirror_destination_t', truncate_length=200, mirror_dest_id=first))
        self.assertEqual(again, first + 1)
        self.assertStatus(MISSING, self.status('mirror_destination_find', Record('bcm_mirror_destination_t'),
                                               ctypes.byref(ctypes.c_int())))

    def test_ids_that_are_results(self):
        self.assertEqual([self.number('ipmc_rp_create', 0) for _ in range(8)], list(range(1, 9)))
        self.assertStatus(FULL, self.status('ipmc_rp_create', 0, ctypes.byref(ctypes.c_int())))
        self.assertEqual([self.number('vlan_queue_map_create', 0) for _ in range(2)], [1, 2])
        vsi = ctypes.c_uint16()
        self.done(self.status('vswitch_create', ctypes.byref(vsi)))
        self.assertEqual([self.status('vswitch_create_with_id', number) for number in
                          (vsi.value, vsi.value + 1, 4095, 8192)], [EXISTS, 0, PARAM, PARAM])


# Entries with keys: add, get, delete, the record, members that make a key, another key, a member that tells records
# apart, and the flag by which add replaces.
ENTRIES = [
    ('l3_host_add', 'l3_host_find', 'l3_host_delete', 'bcm_l3_host_t', dict(l3a_vrf=1, l3a_ip_addr=0x0a000001),
     dict(l3a_vrf=2), 'l3a_lookup_class', ('l3a_flags', q.BCM_L3_REPLACE)),
    ('l3_route_add', 'l3_route_get', 'l3_route_delete', 'bcm_l3_route_t',
     dict(l3a_subnet=0x0a000000, l3a_ip_mask=0xff000000), dict(l3a_ip_mask=0xffff0000), 'l3a_vid',
     ('l3a_flags', q.BCM_L3_REPLACE)),
    ('trill_multicast_entry_add', 'trill_multicast_entry_get', 'trill_multicast_entry_delete',
     'bcm_trill_multicast_entry_t', dict(root_name=7, c_vlan=20), dict(c_vlan=21), 'lookup_class', None),
    ('tunnel_terminator_add', 'tunnel_terminator_get', 'tunnel_terminator_delete', 'bcm_tunnel_terminator_t',
     dict(sip=1, dip=2), dict(dip=3), 'if_class', None),
    ('cosq_subscriber_map_add', 'cosq_subscriber_map_get', 'cosq_subscriber_map_delete',
     'bcm_cosq_subscriber_map_t', dict(port=5, vlan=20), dict(encap_id=9), 'queue_id', None),
]


class Entries(ObjectTest):
    def test_keys_within_records(self):
        for add, get, delete, kind, key, other, member, replace in ENTRIES:
            def record(keys, **members):
                return Record(kind, **dict(keys, **members))

            def found(keys):
                status, records = self.call(get, record(keys))
                return getattr(records[0], member) if status == 0 else status
            second = dict(key, **other)
            self.assertStatus(MISSING, found(key), get)
            self.assertStatus(0, self.status(add, record(key, **{member: 3})), add)
            self.assertStatus(EXISTS, self.status(add, record(key, **{member: 4})), add)
            self.assertEqual((found(key), found(second)), (3, MISSING), add)
            if replace:
                self.assertStatus(0, self.status(add, record(key, **{member: 5, replace[0]: replace[1]})), add)
                self.assertEqual(found(key), 5, add)
            self.assertStatus(0, self.status(add, record(second, **{member: 6})), add)
            self.assertStatus(0, self.status(delete, record(key)), delete)
            self.assertEqual((found(key), found(second)), (MISSING, 6), delete)
            self.assertStatus(MISSING, self.status(delete, record(key)), delete)

    def test_those_of_a_port_or_all(self):
        def fill():
            for port in (5, 5, 6):
                self.done(self.status('niv_port_add', Record('bcm_niv_port_t', port=port)))
        fill()
        self.assertEqual(self.visited('niv_port_traverse'), 3)
        self.done(self.status('niv_port_delete_all', 5))
        self.assertEqual(self.visited('niv_port_traverse'), 1)
        fill()
        self.done(self.status('niv_port_delete_all', -1))
        self.assertEqual(self.visited('niv_port_traverse'), 0)
        groups = [self.call('oam_group_create', Record('bcm_oam_group_info_t'))[1][0].id for _ in range(2)]
        for group in groups + groups:
            self.done(self.status('oam_endpoint_create', Record('bcm_oam_endpoint_info_t', group=group)))
        self.assertEqual([self.visited('oam_endpoint_traverse', group) for group in groups], [2, 2])
        self.done(self.status('oam_endpoint_destroy_all', groups[0]))
        self.assertEqual([self.visited('oam_endpoint_traverse', group) for group in groups], [0, 2])

    def test_first_keys_that_begin_and_end_alike(self):
        vlans = [7, 0x107, 0x700, 0x707]
        for vlan in vlans:
            self.done(library.bcm_vlan_create(UNIT, vlan))
            self.done(self.status('l3_vrrp_add', vlan, 7))
        for number, vlan in enumerate(vlans):
            self.done(self.status('l3_vrrp_delete_all', vlan))
            self.assertEqual([self.number('l3_vrrp_get', other, 0, None) for other in vlans],
                             [0] * (number + 1) + [1] * (3 - number))

    def test_ranges(self):
        for vrid, status in ((0, PARAM), (1, 0), (255, 0), (256, PARAM)):
            self.assertStatus(status, self.status('l3_vrrp_add', 1, vrid), vrid)
        for label, status in ((1048575, 0), (1048576, PARAM)):
            record = Record('bcm_mpls_tunnel_switch_t', label=label)
            self.assertStatus(status, self.status('mpls_tunnel_switch_add', record), label)
        for name, status in ((0, PARAM), (65536, PARAM), (65535, 0)):
            self.assertStatus(status, self.status('trill_rbridge_add', Record('bcm_trill_rbridge_t', name=name)), name)


class Lists(ObjectTest):
    def listed(self, name, *args):
        """(how many there are, the first two) of what a function writes to its array."""
        array, count = (ctypes.c_int * 3)(-1, -1, -1), ctypes.c_int()
        self.done(self.status(name, *(args + (2, array, ctypes.byref(count)))))
        self.assertEqual(array[2], -1)
        return count.value, sorted(array[:min(count.value, 2)])

    def test_members_one_by_one_and_all_at_once(self):
        point = self.number('ipmc_rp_create', 0)
        for interface in (30, 10):
            self.done(self.status('ipmc_rp_add', point, interface))
        self.assertStatus(EXISTS, self.status('ipmc_rp_add', point, 30))
        self.assertEqual(self.listed('ipmc_rp_get', point), (2, [10, 30]))
        self.done(self.status('ipmc_rp_delete', point, 30))
        self.assertStatus(MISSING, self.status('ipmc_rp_delete', point, 30))
        self.done(self.status('ipmc_rp_set', point, 3, (ctypes.c_int * 3)(7, 8, 9)))
        self.assertEqual(self.listed('ipmc_rp_get', point)[0], 3)
        # What is refused leaves all as it is.
        for status, count, values in ((EXISTS, 2, (5, 5)), (PARAM, -1, (5, 6))):
            self.assertStatus(status, self.status('ipmc_rp_set', point, count, (ctypes.c_int * 2)(*values)))
        self.assertStatus(PARAM, self.status('ipmc_rp_set', point, 1, None))
        self.assertStatus(MISSING, self.status('ipmc_rp_set', point + 1, 2, (ctypes.c_int * 2)(5, 6)))
        self.assertEqual(self.listed('ipmc_rp_get', point)[0], 3)
        self.done(self.status('ipmc_rp_delete_all', point))
        self.assertEqual(self.listed('ipmc_rp_get', point), (0, []))

    def test_columns_and_what_belongs_to_a_group(self):
        group = self.number('multicast_create', 2)
        for port, encap in ((5, 50), (6, 60)):
            self.done(self.status('multicast_egress_add', group, port, encap))
        ports, encaps, count = (ctypes.c_int * 4)(), (ctypes.c_int * 4)(), ctypes.c_int()
        self.done(self.status('multicast_egress_get', group, 4, ports, encaps, ctypes.byref(count)))
        self.assertEqual(sorted(zip(ports[:2], encaps[:2])), [(5, 50), (6, 60)])
        self.assertEqual(count.value, 2)
        flags, members = ctypes.c_uint32(), ctypes.c_int()
        self.done(self.status('multicast_group_get', group, ctypes.byref(flags), ctypes.byref(members)))
        self.assertEqual((flags.value, members.value), (2, 2))
        self.done(self.status('multicast_destroy', group))  # and its members with it
        self.assertStatus(MISSING, self.status('multicast_egress_delete', group, 5, 50))
        self.assertStatus(MISSING, self.status('multicast_egress_add', group, 5, 50))

    def test_the_order_of_labels_is_kept(self):
        interface = self.call('l3_intf_create', Record('bcm_l3_intf_t', l3a_vid=1))[1][0].l3a_intf_id
        size = int([line for line in rules.record_sizes().items() if line[0] == 'bcm_mpls_egress_label_s'][0][1])
        labels = ctypes.create_string_buffer(''.join(chr(65 + number) * size for number in (2, 0, 1)), 3 * size)
        self.done(self.status('mpls_tunnel_initiator_set', interface, 3, labels))
        found, count = ctypes.create_string_buffer(3 * size), ctypes.c_int()
        self.done(self.status('mpls_tunnel_initiator_get', interface, 3, found, ctypes.byref(count)))
        self.assertEqual((count.value, found.raw), (3, labels.raw))
        self.assertStatus(MISSING, self.status('mpls_tunnel_initiator_set', interface + 1, 3, labels))


class Numbers(ObjectTest):
    """What is numbered, counted, and told apart by more than a key."""

    def encap(self, kind, *args):
        return self.number('multicast_%s_encap_get' % kind, *args)

    def test_the_same_has_one_number(self):
        first, second = [self.number('multicast_create', 0) for _ in range(2)]
        asked = [('l2', first, 5, 1), ('l3', first, 5, 1), ('l2', second, 5, 1), ('l2', first, 6, 1), ('niv', first, 5, 1),
                 ('egress_object', first, 5)]
        numbers = [self.encap(*args) for args in asked]
        self.assertEqual(len(set(numbers)), len(asked))
        self.assertEqual([self.encap(*args) for args in asked], numbers)
        self.assertStatus(MISSING, self.status('multicast_l2_encap_get', second + 1, 5, 1, ctypes.byref(ctypes.c_int())))
        self.done(self.status('multicast_destroy', first))
        self.assertEqual(self.encap('l2', second, 5, 1), numbers[2])

    def test_how_many_there_can_be_and_are(self):
        size, used = ctypes.c_int(), ctypes.c_int()
        for name, capacity, add in (
                ('mpls_tunnel_switch', 16384, ('mpls_tunnel_switch_add', Record('bcm_mpls_tunnel_switch_t', label=7))),
                ('ipmc_range', 256, ('ipmc_range_add', Record('bcm_ipmc_range_t', mc_ip_addr=7)))):
            self.done(self.status(*add))
            self.done(self.status(name + '_size_get', ctypes.byref(size), ctypes.byref(used)))
            self.assertEqual((size.value, used.value), (capacity, 1))
            self.assertStatus(PARAM, self.status(name + '_size_get', ctypes.byref(size), None))

    def test_subports_have_tags_of_their_own(self):
        def made(name, record):
            gport = ctypes.c_int()
            status = self.status(name, record, ctypes.byref(gport))
            return gport.value if status == 0 else status

        def subport(group, vlan):
            return made('subport_port_add', Record('bcm_subport_config_t', group=group, pkt_vlan=vlan))
        first, second = [made('subport_group_create', Record('bcm_subport_group_config_t')) for _ in range(2)]
        one, other, same = subport(first, 7), subport(first, 8), subport(second, 7)
        self.assertEqual(len(set([first, second, one, other, same])), 5)
        self.assertEqual((subport(first, 7), subport(second + 1, 7)), (EXISTS, MISSING))
        self.assertEqual(self.number('subport_group_get', first, Record('bcm_subport_group_config_t')), 2)
        self.assertEqual([self.visited('subport_group_traverse', group) for group in (first, second)], [2, 1])
        self.done(self.status('subport_group_destroy', first))
        self.assertEqual(self.visited('subport_port_traverse'), 1)
        self.assertStatus(MISSING, self.status('subport_port_get', one, Record('bcm_subport_config_t')))

    def test_a_port_is_in_one_instance(self):
        instances = []
        for _ in range(2):
            vsi = ctypes.c_uint16()
            self.done(self.status('vswitch_create', ctypes.byref(vsi)))
            instances.append(vsi.value)
        self.assertEqual([self.status('vswitch_port_add', vsi, 5) for vsi in instances + [8000]], [0, EXISTS, MISSING])
        found = ctypes.c_uint16()
        self.done(self.status('vswitch_port_get', 5, ctypes.byref(found)))
        self.assertEqual((found.value, self.visited('vswitch_port_traverse', instances[0])), (instances[0], 1))
        self.assertStatus(MISSING, self.status('vswitch_port_delete', instances[1], 5))
        self.done(self.status('vswitch_destroy', instances[0]))
        self.assertStatus(MISSING, self.status('vswitch_port_get', 5, ctypes.byref(found)))
        self.assertStatus(0, self.status('vswitch_port_add', instances[1], 5))

    def test_counters_of_what_does_not_pass(self):
        vpn = self.call('mim_vpn_create', Record('bcm_mim_vpn_config_t'))[1][0].vpn
        kinds, values = (ctypes.c_int * 2)(0, 1), (ctypes.c_uint64 * 2)(5, 5)
        self.assertStatus(MISSING, self.status('mim_stat_multi_get', vpn + 1, 5, -1, 2, kinds, values))
        self.done(self.status('mim_stat_multi_get', vpn, 5, -1, 2, kinds, values))
        self.assertEqual(list(values), [0, 0])
        for count, array in ((-1, kinds), (2, None)):
            self.assertStatus(PARAM, self.status('mim_stat_multi_get', vpn, 5, -1, count, array, values))

    def test_profiles_and_their_mappings(self):
        profile = self.number('switch_profile_create', 0, 1)
        mappings, count = ctypes.create_string_buffer('map' * 20, 200), ctypes.c_int()
        self.done(self.status('switch_profile_mapping_set', 1, profile, 2, mappings))
        self.assertStatus(MISSING, self.status('switch_profile_mapping_set', 2, profile, 2, mappings))
        found = ctypes.create_string_buffer(200)
        self.done(self.status('switch_profile_mapping_get', 1, profile, 2, found, ctypes.byref(count)))
        self.assertEqual((count.value, found.raw[:4]), (2, 'mapm'))
        self.done(self.status('switch_profile_destroy', 1, profile))
        self.assertStatus(MISSING, self.status('switch_profile_mapping_get', 1, profile, 2, found, ctypes.byref(count)))

    def test_callbacks_once_each(self):
        functions = [ctypes.CFUNCTYPE(ctypes.c_int)(lambda: 0) for _ in range(2)]
        for name in ('ipfix_%s', 'fabric_control_redundancy_%s', 'stk_update_callback_%s'):
            add, remove = name % 'register', name % 'unregister'
            statuses = [self.status(add, function, datum) for function, datum in (
                (functions[0], None), (functions[1], None), (functions[0], 7), (functions[0], None), (None, None))]
            self.assertEqual(statuses, [0, 0, 0, EXISTS, PARAM], add)
            self.assertEqual([self.status(remove, functions[0], datum) for datum in (7, 7, None)], [0, MISSING, 0], remove)

    def test_settings_of_an_application(self):
        calls = []

        def take(unit, port, setget, kind, length, args, actual, datum):
            calls.append((unit, port, setget, kind, args[:length]))
            args[0], actual[0] = 99, 1
            return -7
        words = ctypes.POINTER(ctypes.c_uint32)
        function = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_int,
                                    words, ctypes.POINTER(ctypes.c_int), ctypes.c_void_p)(take)
        args, actual = (ctypes.c_uint32 * 2)(3, 4), ctypes.c_int()
        self.assertStatus(q.BCM_E_UNAVAIL, self.status('custom_port_set', 5, 1, 2, args))
        self.assertStatus(PARAM, self.status('custom_register', None, None))
        self.done(self.status('custom_register', function, None))
        self.assertEqual([self.status('custom_port_set', port, 1, length, args) for port, length in
                          ((5, 2), (65, 2), (5, -1), (5, 257))], [-7, q.BCM_E_PORT, PARAM, PARAM])
        self.assertEqual(self.status('custom_port_get', 6, 2, 2, args, ctypes.byref(actual)), -7)
        self.assertEqual((calls, args[0], actual.value), ([(UNIT, 5, 1, 1, [3, 4]), (UNIT, 6, 0, 2, [99, 4])], 99, 1))
        self.done(self.status('custom_unregister'))
        self.assertStatus(q.BCM_E_UNAVAIL, self.status('custom_unregister'))


class References(ObjectTest):
    def egress(self):
        result = ctypes.c_int()
        self.done(self.status('l3_egress_create', 0, Record('bcm_l3_egress_t'), ctypes.byref(result)))
        return result.value

    def test_what_is_referred_to_exists_and_stays(self):
        egress = self.egress()
        host = Record('bcm_l3_host_t', l3a_ip_addr=1, l3a_intf=egress)
        self.assertStatus(MISSING, self.status('l3_host_add', Record('bcm_l3_host_t', l3a_intf=egress + 1)))
        for add, delete, record in (
                ('l3_host_add', 'l3_host_delete', host),
                ('l3_route_add', 'l3_route_delete', Record('bcm_l3_route_t', l3a_subnet=1, l3a_intf=egress))):
            self.done(self.status(add, record))
            self.assertStatus(BUSY, self.status('l3_egress_destroy', egress), add)
            self.done(self.status(delete, record))
        # A reference that is replaced by another one counts no longer.
        other = self.egress()
        self.done(self.status('l3_host_add', host))
        self.done(self.status('l3_host_add', Record('bcm_l3_host_t', l3a_ip_addr=1, l3a_intf=other,
                                                    l3a_flags=q.BCM_L3_REPLACE)))
        self.assertEqual([self.status('l3_egress_destroy', number) for number in (egress, other)], [0, BUSY])
        self.done(self.status('l3_host_delete_all', None))
        self.done(self.status('l3_egress_destroy', other))

    def test_a_radio_with_clients(self):
        radio = self.call('wlan_port_add', Record('bcm_wlan_port_t'))[1][0].wlan_port_id
        macs = [(ctypes.c_uint8 * 6)(2, 0, 0, 0, 0, number) for number in (1, 2)]
        for mac in macs:
            client = Record('bcm_wlan_client_t', wlan_port_id=radio,
                            mac=':'.join('%02x' % byte for byte in mac))
            self.done(self.status('wlan_client_add', client))
        self.assertEqual(self.number('wlan_port_get', radio, Record('bcm_wlan_port_t')), 2)
        self.assertStatus(BUSY, self.status('wlan_port_delete', radio))
        for mac in macs:
            self.done(self.status('wlan_client_delete', mac))
        self.done(self.status('wlan_port_delete', radio))

    def test_what_an_object_owns_goes_with_it(self):
        vpn = self.call('mpls_vpn_id_create', Record('bcm_mpls_vpn_config_t'))[1][0].vpn
        self.assertStatus(MISSING, self.status('mpls_port_add', vpn + 1, Record('bcm_mpls_port_t')))
        ports = [self.call('mpls_port_add', vpn, Record('bcm_mpls_port_t'))[1][0].mpls_port_id for _ in range(2)]
        self.assertEqual(self.number('mpls_vpn_id_get', vpn, Record('bcm_mpls_vpn_config_t')), 2)
        self.done(self.status('mpls_port_delete', vpn, ports[0]))
        self.assertEqual(self.number('mpls_vpn_id_get', vpn, Record('bcm_mpls_vpn_config_t')), 1)
        self.done(self.status('mpls_vpn_id_destroy', vpn))
        self.assertStatus(MISSING, self.status('mpls_port_delete', vpn, ports[1]))

        group = self.call('oam_group_create', Record('bcm_oam_group_info_t'))[1][0].id
        local = self.call('oam_endpoint_create', Record('bcm_oam_endpoint_info_t', group=group))[1][0].id
        remote = self.call('oam_endpoint_create',
                           Record('bcm_oam_endpoint_info_t', group=group, local_id=local))[1][0].id
        self.done(self.status('oam_loss_add', Record('bcm_oam_loss_t', id=local, remote_id=remote)))
        self.assertStatus(BUSY, self.status('oam_endpoint_destroy', local))
        self.done(self.status('oam_endpoint_destroy', remote))
        self.done(self.status('oam_endpoint_destroy', local))
        self.assertStatus(MISSING, self.status('oam_loss_delete', local, remote))
        for _ in range(2):
            self.done(self.status('oam_endpoint_create', Record('bcm_oam_endpoint_info_t', group=group)))
        self.done(self.status('oam_group_destroy', group))
        self.assertStatus(MISSING, self.status('oam_endpoint_destroy_all', group))

    def test_what_belongs_to_an_object_is_asked_for_by_one_that_exists(self):
        value, count, ids = ctypes.c_int(), ctypes.c_int(), (ctypes.c_int * 4)()
        group = self.number('multicast_create', 0)
        for name, args in (('multicast_egress_get', (4, ids, ids, ctypes.byref(count))), ('multicast_egress_delete_all', ()),
                           ('multicast_control_set', (0, 7)), ('multicast_control_get', (0, ctypes.byref(value)))):
            self.assertEqual([self.status(name, number, *args) for number in (group + 1, group)], [MISSING, 0], name)
        self.assertEqual(value.value, 7)
        # What is asked for by a member, and what is visited.
        group = self.call('oam_group_create', Record('bcm_oam_group_info_t'))[1][0].id
        self.assertEqual([self.status('oam_endpoint_destroy_all', number) for number in (group, group + 1)], [0, MISSING])
        visit = ctypes.CFUNCTYPE(ctypes.c_int)(lambda: 0)
        self.assertEqual([self.status('oam_endpoint_traverse', number, visit, None) for number in (group, group + 1)],
                         [0, MISSING])

    def test_offsets_of_queues(self):
        first, second = [self.number('fabric_qsel_offset_create', 0, 8) for _ in range(2)]
        self.done(self.status('fabric_qsel_offset_entry_set', second, 7, 1, 5))
        self.assertEqual([self.number('fabric_qsel_offset_entry_get', number, 7, 1) for number in (first, second)], [0, 5])
        self.assertStatus(PARAM, self.status('fabric_qsel_offset_entry_set', second, 8, 1, 5))
        self.done(self.status('fabric_qsel_offset_destroy', second))
        self.assertStatus(MISSING, self.status('fabric_qsel_offset_entry_set', second, 7, 1, 5))
        self.assertEqual(self.visited('fabric_qsel_offset_traverse'), 1)

    def test_rooms_say_what_exists(self):
        for vlan, status in ((1, 0), (20, MISSING)):
            self.assertStatus(status, self.status('l3_vrrp_add', vlan, 1), vlan)
            self.assertStatus(status, self.status('l3_intf_create', Record('bcm_l3_intf_t', l3a_vid=vlan)), vlan)
        entry = Record('bcm_trunk_resilient_entry_t', tid=3)
        self.assertStatus(MISSING, self.status('trunk_resilient_add', entry))
        tid = ctypes.c_int(3)
        self.done(library.bcm_trunk_create(UNIT, q.BCM_TRUNK_FLAG_WITH_ID, ctypes.byref(tid)))
        self.assertStatus(0, self.status('trunk_resilient_add', entry))

    def test_lines_of_a_map(self):
        queue, color = ctypes.c_int(9), ctypes.c_int(9)
        results = ctypes.byref(queue), ctypes.byref(color)
        self.assertStatus(MISSING, self.status('vlan_queue_map_get', 1, 3, 0, *results))
        number = self.number('vlan_queue_map_create', 0)
        self.done(self.status('vlan_queue_map_get', number, 3, 0, *results))
        self.assertEqual((queue.value, color.value), (0, 0))
        self.done(self.status('vlan_queue_map_set', number, 3, 0, 5, 1))
        self.assertStatus(PARAM, self.status('vlan_queue_map_set', number, 8, 0, 5, 1))
        self.done(self.status('vlan_queue_map_attach', 1, number))
        self.assertEqual(self.number('vlan_queue_map_attach_get', 1), number)
        self.assertStatus(BUSY, self.status('vlan_queue_map_destroy', number))
        self.done(self.status('vlan_queue_map_detach', 1))
        self.done(self.status('vlan_queue_map_destroy', number))
        self.assertEqual(self.number('vlan_queue_map_create', 0), number)
        self.done(self.status('vlan_queue_map_get', number, 3, 0, *results))
        self.assertEqual((queue.value, color.value), (0, 0))


class Modules(ObjectTest):
    def test_detached_and_initialised_again(self):
        answers = dict((row[0], row) for row in rules.report('answers.tsv'))
        detaching = dict((row[1], row[0]) for row in rules.report('rules.tsv') if row[2] == 'module detach')
        kept = {}
        for row in rules.report('rules.tsv'):
            if row[3] != '-' and row[1] in detaching and answers[row[0]][2] == 'by rule':
                kept.setdefault(row[1], []).append(row[0])
        self.assertGreater(len(kept), 15)
        for family, names in sorted(kept.items()):
            self.done(getattr(library, detaching[family])(UNIT))
            for name in names:
                self.assertStatus(q.BCM_E_INIT, call_with_nulls(name, UNIT), name)
            self.done(getattr(library, 'bcm_%s_init' % family)(UNIT))
            for name in names:
                self.assertNotEqual(call_with_nulls(name, UNIT), q.BCM_E_INIT, name)
        for family in kept:
            self.done(getattr(library, detaching[family])(UNIT))
        self.done(library.bcm_init(UNIT))
        for names in kept.values():
            self.assertNotEqual(call_with_nulls(names[0], UNIT), q.BCM_E_INIT, names[0])

    def test_init_empties_the_tables_of_its_family_alone(self):
        self.done(self.status('trill_rbridge_add', Record('bcm_trill_rbridge_t', name=7)))
        self.done(self.status('trill_multicast_source_add', 7, 8))
        self.done(self.status('niv_port_add', Record('bcm_niv_port_t')))
        self.done(library.bcm_trill_init(UNIT))
        self.assertStatus(MISSING, self.status('trill_rbridge_delete', 7))
        self.assertStatus(MISSING, self.status('trill_multicast_source_delete', 7, 8))
        self.assertEqual(self.visited('niv_port_traverse'), 1)


if __name__ == '__main__':
    unittest.main()
