"""What can be said in several ways is one state: what one way writes, the others read, and packets meet it."""
import ctypes
import unittest

import QuorelApiNew as q
from recording import library
from simulator import SwitchTest, pointer
from test_packets import ALL, ARP, A, B, PacketTest, frame

PORT, VLAN, GROUP = 5, 20, 3
UNTAGGED = q.BCM_VLAN_GPORT_ADD_UNTAGGED
INGRESS, EGRESS = q.BCM_PORT_VLAN_MEMBER_INGRESS, q.BCM_PORT_VLAN_MEMBER_EGRESS


def vector(*vlans):
    words = (ctypes.c_uint32 * 128)()
    for vlan in vlans:
        words[vlan // 32] |= 1 << vlan % 32
    return words


def returned(kind, name, *keys):
    """What a getter writes to its last argument, or its status."""
    result = kind(123)
    status = getattr(library, name)(0, *(keys + (ctypes.byref(result),)))
    return status or result.value


def setter(name, *keys):
    return lambda value: getattr(library, name)(0, *(keys + (value,)))


def getter(name, *keys):
    return lambda: returned(ctypes.c_int, name, *keys)


def control_way(prefix, *keys):
    return setter(prefix + '_set', *keys), getter(prefix + '_get', *keys)


def record_way(prefix, record, member, *keys):
    """Members of a record that is read before it is written."""
    def read():
        info = record()
        return getattr(library, prefix + '_get')(0, *(keys + (pointer(info),))), info

    def write(value):
        status, info = read()
        setattr(info, member, value)
        return status or library_set(info)

    def library_set(info):
        if prefix == 'bcm_vlan_control_vlan':
            return q.bcm_vlan_control_vlan_set(0, *(keys + (info,)))
        return getattr(library, prefix + '_set')(0, *(keys + (pointer(info),)))
    return write, lambda: getattr(read()[1], member)


def vlan_setting(member, field):
    """Of the functions that take some members of the record of a VLAN's settings."""
    def write(value):
        info = q.bcm_vlan_control_vlan_t()
        setattr(info, member, value)
        return library.bcm_vlan_control_vlan_selective_set(0, VLAN, 1 << field, pointer(info))

    def read():
        info = q.bcm_vlan_control_vlan_t()
        return library.bcm_vlan_control_vlan_selective_get(0, VLAN, 1 << field, pointer(info)) or getattr(info, member)
    return write, read


def rate_way(kind):
    def read():
        rate, flags = ctypes.c_int(), ctypes.c_uint32()
        getattr(library, 'bcm_rate_%s_get' % kind)(0, PORT, ctypes.byref(rate), ctypes.byref(flags))
        return rate.value if flags.value == q.BCM_RATE_ENABLE else 0
    return lambda value: getattr(library, 'bcm_rate_%s_set' % kind)(0, PORT, value, q.BCM_RATE_ENABLE), read


def rate_record_way(kind, flag):
    limits = q.bcm_rate_limit_t

    def write(value):
        record = limits()
        record.flags = flag
        setattr(record, kind + '_limit', value)
        return library.bcm_rate_limit_set(0, PORT, pointer(record))

    def read():
        record = limits()
        library.bcm_rate_limit_get(0, PORT, pointer(record))
        return getattr(record, kind + '_limit') if record.flags & flag else 0
    return write, read


def rate_info_way(kind, mask):
    info = q.bcm_port_info_t

    def write(value):
        record = info()
        record.action_mask = mask
        setattr(record, kind + '_limit', value)
        setattr(record, kind + '_limit_enable', 1)
        return library.bcm_port_selective_set(0, PORT, pointer(record))

    def read():
        record = info()
        record.action_mask = mask
        library.bcm_port_selective_get(0, PORT, pointer(record))
        return getattr(record, kind + '_limit') if getattr(record, kind + '_limit_enable') else 0
    return write, read


def member_ways():
    """VLAN membership of a port: -1 for none, 1 untagged, 0 tagged."""
    def by_bitmap(value):
        status = q.bcm_vlan_port_remove(0, VLAN, [PORT])
        return status or (q.bcm_vlan_port_add(0, VLAN, [PORT], [PORT] if value else []) if value >= 0 else 0)

    def bitmap():
        _, members, untagged = q.bcm_vlan_port_get(0, VLAN)
        return (PORT in untagged) if PORT in members else -1

    def by_gport(value):
        if value < 0:
            return library.bcm_vlan_gport_delete(0, VLAN, PORT)
        return library.bcm_vlan_gport_add(0, VLAN, PORT, UNTAGGED * value)

    def gport():
        flags = returned(ctypes.c_uint32, 'bcm_vlan_gport_get', VLAN, PORT)
        return -1 if flags == q.BCM_E_NOT_FOUND else int(flags == UNTAGGED)

    def all_gports():
        gports, flags, count = (ctypes.c_int * 65)(), (ctypes.c_uint32 * 65)(), ctypes.c_int()
        library.bcm_vlan_gport_get_all(0, VLAN, 65, gports, flags, ctypes.byref(count))
        found = dict(zip(gports[:count.value], flags))
        return int(found[PORT] == UNTAGGED) if PORT in found else -1
    return [(by_bitmap, bitmap), (by_gport, gport), (None, all_gports)]


def stp_ways():
    vlan_state = getter('bcm_vlan_stp_get', VLAN, PORT)
    return [
        control_way('bcm_stg_stp', GROUP, PORT), control_way('bcm_vlan_stp', VLAN, PORT),
        (lambda state: library.bcm_vlan_vector_stp_set(0, vector(VLAN), PORT, state), vlan_state),
        (setter('bcm_port_stp_set', PORT), None)]


def counter_way(prefix, counter):
    return (None if prefix == 'bcm_stat' else
            lambda value: getattr(library, prefix + '_set')(0, PORT, counter, ctypes.c_uint64(value)),
            lambda: returned(ctypes.c_uint64, prefix + '_get', PORT, counter))


def discard_way(untagged, tagged):
    """Two controls that together say what one mode says."""
    modes = {(0, 0): q.BCM_PORT_DISCARD_NONE, (1, 0): q.BCM_PORT_DISCARD_UNTAG, (0, 1): q.BCM_PORT_DISCARD_TAG,
             (1, 1): q.BCM_PORT_DISCARD_ALL}

    def write(mode):
        values = [key for key, value in modes.items() if value == mode][0]
        return (library.bcm_vlan_control_port_set(0, PORT, untagged, values[0])
                or library.bcm_vlan_control_port_set(0, PORT, tagged, values[1]))
    read = [getter('bcm_vlan_control_port_get', PORT, control) for control in (untagged, tagged)]
    return write, lambda: modes[tuple(one() for one in read)]


# What is said, the values it can have, and the ways to say it: (write, read), either of which may be missing.
WAYS = [
    ('membership in a VLAN', (1, -1, 0), member_ways()),
    ('spanning tree state', (4, 1, 0), stp_ways()),
    ('learning of a port', (0, q.BCM_PORT_LEARN_ARL), [
        control_way('bcm_port_learn', PORT), control_way('bcm_port_control', PORT, q.bcmPortControlL2Learn)]),
    ('filter of foreign VLANs', (0, 1), [
        control_way('bcm_port_ifilter', PORT), control_way('bcm_port_vlan_member', PORT),
        (lambda value: library.bcm_vlan_control_port_set(0, PORT, q.bcmVlanPortIngressFilterBypass, 1 - value),
         lambda: 1 - returned(ctypes.c_int, 'bcm_vlan_control_port_get', PORT, q.bcmVlanPortIngressFilterBypass))]),
    ('packets dropped by their tag', range(4), [
        control_way('bcm_port_discard', PORT),
        discard_way(q.bcmVlanPortUntaggedDrop, q.bcmVlanPortTaggedDrop)]),
    ('flood of multicasts', (0, 2, 1), [
        control_way('bcm_vlan_mcast_flood', VLAN), vlan_setting('l2_mcast_flood_mode', 7),
        record_way('bcm_vlan_control_vlan', q.bcm_vlan_control_vlan_t, 'l2_mcast_flood_mode', VLAN)]),
    ('flags of a VLAN', (0, 1, 0x1fff), [
        record_way('bcm_vlan_control_vlan', q.bcm_vlan_control_vlan_t, 'flags', VLAN), vlan_setting('flags', 4),
        (lambda value: library.bcm_vlan_vector_flags_set(0, vector(VLAN), 0x1fff, value), None)]),
    ('limit of broadcasts', (0, 70), [
        rate_way('bcast'), rate_record_way('bcast', q.BCM_RATE_BCAST),
        rate_info_way('bcast', q.BCM_PORT_ATTR_RATE_BCAST_MASK)]),
    ('limit of multicasts', (0, 70), [
        rate_way('mcast'), rate_record_way('mcast', q.BCM_RATE_MCAST),
        rate_info_way('mcast', q.BCM_PORT_ATTR_RATE_MCAST_MASK)]),
    ('limit of unknown unicasts', (0, 70), [
        rate_way('dlf'), rate_record_way('dlf', q.BCM_RATE_DLF)]),
    ('received octets', (0, 7, 1 << 40), [
        counter_way('bcm_stat', q.snmpIfInOctets), counter_way('bcm_port_stat', q.bcmPortStatIngressBytes)]),
    ('sent broadcasts', (0, 7), [
        counter_way('bcm_stat', q.snmpIfOutBroadcastPkts),
        counter_way('bcm_port_stat', q.bcmPortStatEgressBroadcastPackets)]),
]


class EveryWay(PacketTest):
    def setUp(self):
        PacketTest.setUp(self)
        self.done(q.bcm_vlan_create(0, VLAN))
        self.done(library.bcm_stg_create_id(0, GROUP))
        self.done(q.bcm_vlan_stg_set(0, VLAN, GROUP))
        self.addCleanup(self.reset)

    def test_what_one_way_writes_all_ways_read(self):
        for name, values, ways in WAYS:
            checked = 0
            for number, (write, _) in enumerate(ways):
                for value in values if write else ():
                    self.assertStatus(q.BCM_E_NONE, write(value), (name, number, value))
                    found = [read() for _, read in ways if read]
                    self.assertEqual(found, [value] * len(found), (name, number))
                    checked += len(found)
            self.assertGreater(checked, 3, name)

    def test_what_is_refused_changes_nothing(self):
        refused = [
            (q.BCM_E_NOT_FOUND, library.bcm_vlan_stp_set, VLAN + 1, PORT, 4),
            (q.BCM_E_PARAM, library.bcm_vlan_stp_set, VLAN, PORT, 5),
            (q.BCM_E_PORT, library.bcm_vlan_stp_set, VLAN, 65, 4),
            (q.BCM_E_NOT_FOUND, library.bcm_vlan_vector_stp_set, vector(VLAN, VLAN + 1), PORT, 4),
            (q.BCM_E_PARAM, library.bcm_vlan_vector_stp_set, vector(0, VLAN), PORT, 4),
            (q.BCM_E_NOT_FOUND, library.bcm_vlan_gport_add, VLAN + 1, PORT, 0),
            (q.BCM_E_PORT, library.bcm_vlan_gport_add, VLAN, 65, 0),
            (q.BCM_E_PARAM, library.bcm_vlan_gport_add, VLAN, PORT, 8),
            (q.BCM_E_UNAVAIL, library.bcm_vlan_gport_add, VLAN, PORT, q.BCM_VLAN_GPORT_ADD_EGRESS_ONLY),
            (q.BCM_E_NOT_FOUND, library.bcm_vlan_gport_delete, VLAN, PORT),
            (q.BCM_E_NOT_FOUND, library.bcm_vlan_mcast_flood_set, VLAN + 1, 0),
            (q.BCM_E_PARAM, library.bcm_vlan_mcast_flood_set, VLAN, 3),
            (q.BCM_E_PARAM, library.bcm_vlan_vector_flags_set, vector(VLAN), 0x2000, 0),
            (q.BCM_E_PARAM, library.bcm_rate_bcast_set, PORT, -7, q.BCM_RATE_ENABLE),
            (q.BCM_E_PARAM, library.bcm_rate_bcast_set, PORT, 7, 1),
            (q.BCM_E_PORT, library.bcm_rate_bcast_set, 65, 7, 0),
            (q.BCM_E_PARAM, library.bcm_port_control_set, PORT, q.bcmPortControlCount, 1),
            (q.BCM_E_PARAM, library.bcm_port_control_set, PORT, q.bcmPortControlL2Learn, 1 << 20),
            (q.BCM_E_UNAVAIL, library.bcm_port_control_set, PORT, q.bcmPortControlL2Move, 0),
            (q.BCM_E_PARAM, library.bcm_switch_control_set, -1, 1),
            (q.BCM_E_PARAM, library.bcm_switch_control_set, q.bcmSwitchStpStateDefault, 5),
            (q.BCM_E_PARAM, library.bcm_port_stat_set, PORT, q.bcmPortStatCount, ctypes.c_uint64(1)),
            (q.BCM_E_UNAVAIL, library.bcm_port_stat_set, PORT, q.bcmPortStatEgressRedPackets, ctypes.c_uint64(1))]
        before = [read() for _, _, ways in WAYS for _, read in ways if read]
        for case in refused:
            self.assertStatus(case[0], case[1](0, *case[2:]), case[1:])
        self.assertEqual([read() for _, _, ways in WAYS for _, read in ways if read], before)

    def test_a_group_that_is_made_has_the_state_of_new_ones(self):
        self.addCleanup(library.bcm_switch_control_set, 0, q.bcmSwitchStpStateDefault, 0)
        self.done(library.bcm_switch_control_set(0, q.bcmSwitchStpStateDefault, q.BCM_STG_STP_BLOCK))
        self.done(library.bcm_stg_create_id(0, GROUP + 1))
        self.assertEqual([getter('bcm_stg_stp_get', group, PORT)() for group in (GROUP, GROUP + 1)],
                         [q.BCM_STG_STP_DISABLE, q.BCM_STG_STP_BLOCK])


class Packets(PacketTest):
    """The same as packets meet it."""

    def test_a_vlan_blocks_a_port(self):
        request = frame(ALL, A, ARP)
        self.assertIn(PORT, [port for port, _ in self.sent(1, request)])
        self.done(library.bcm_vlan_stp_set(0, 1, PORT, q.BCM_STG_STP_BLOCK))
        self.assertNotIn(PORT, [port for port, _ in self.sent(1, request)])
        self.assertEqual(self.sent(PORT, request), [])

    def test_members_that_were_added_as_gports(self):
        self.done(q.bcm_vlan_create(0, VLAN))
        for port, flags in ((1, UNTAGGED), (2, UNTAGGED), (3, 0)):
            self.done(library.bcm_vlan_gport_add(0, VLAN, port, flags))
        self.done(q.bcm_port_untagged_vlan_set(0, 1, VLAN))
        left = self.sent(1, frame(ALL, A, ARP))
        self.assertEqual([(port, len(data)) for port, data in left], [(2, 60), (3, 64)])

    def test_learning_off_in_each_way(self):
        def control(value):
            return library.bcm_port_control_set(0, PORT, q.bcmPortControlL2Learn,
                                                value * (q.BCM_PORT_LEARN_ARL | q.BCM_PORT_LEARN_FWD))

        def switch(value):
            return library.bcm_switch_control_set(0, q.bcmSwitchL2LearnEnable, value)

        def vlan(value):
            return library.bcm_vlan_vector_flags_set(0, vector(1), q.BCM_VLAN_LEARN_DISABLE, 1 - value)
        for off_and_on in (control, switch, vlan):
            self.addCleanup(off_and_on, 1)
            self.done(off_and_on(0))
            self.sent(PORT, frame(B, A, ARP))
            self.assertIsNone(self.find(A), off_and_on)
            self.done(off_and_on(1))
            self.sent(PORT, frame(B, A, ARP))
            self.assertEqual(self.port_of(A), PORT)
            self.done(q.bcm_l2_addr_delete(0, A, 1))

    def test_ageing_off(self):
        self.addCleanup(library.bcm_switch_control_set, 0, q.bcmSwitchL2AgeEnable, 1)
        self.enter(A, port=PORT)
        self.done(library.bcm_switch_control_set(0, q.bcmSwitchL2AgeEnable, 0))
        self.assertEqual([library.sim_l2_age_step(0) for _ in range(3)], [0, 0, 0])
        self.done(library.bcm_switch_control_set(0, q.bcmSwitchL2AgeEnable, 1))
        self.assertEqual([library.sim_l2_age_step(0) for _ in range(2)], [0, 1])

    def test_counters_of_the_port_family_count(self):
        self.sent(1, frame(ALL, A, ARP))
        kinds = (ctypes.c_int * 3)(q.bcmPortStatIngressPackets, q.bcmPortStatIngressBytes,
                                   q.bcmPortStatIngressBroadcastPackets)
        for name, kind in (('bcm_port_stat_multi_get', ctypes.c_uint64), ('bcm_port_stat_multi_get32', ctypes.c_uint32)):
            values = (kind * 3)()
            self.done(getattr(library, name)(0, 1, 3, kinds, values))
            self.assertEqual(list(values), [1, 64, 1])
        kinds[1] = q.bcmPortStatIngressDropBytes
        self.assertStatus(q.BCM_E_UNAVAIL, library.bcm_port_stat_multi_get(0, 1, 3, kinds, values))
        self.done(library.bcm_stat_clear(0, 1))
        self.assertEqual(counter_way('bcm_port_stat', q.bcmPortStatIngressBytes)[1](), 0)


if __name__ == '__main__':
    unittest.main()
