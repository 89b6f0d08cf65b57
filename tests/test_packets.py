"""Packets that pass the switch: where they go, with which tag, and what the ports count."""
import ctypes
import unittest

import QuorelApiNew as q
from console import run
from packets import (A, ALL, ARP, arrive, B, BRIDGES, C, CONTROL, frame, GROUP, IP4, packet_watcher, PacketTest,
                     STATISTICS, VLAN)
from recording import library
from simulator import CPU_PORT, FRONT_PORTS, TRUNK, call_with_nulls, change_callback, functions


class Forwarding(PacketTest):
    def test_an_unknown_address_is_flooded_then_learnt(self):
        request, answer, value = frame(B, A, ARP), frame(A, B, ARP), q.uint64p()
        self.assertEqual(self.sent(1, request), [(port, request) for port in FRONT_PORTS if port != 1])
        self.assertEqual(self.sent(2, answer), [(1, answer)])
        self.done(q.bcm_l2_stat_enable_set(0, self.address(B), 1))
        self.assertEqual(self.sent(1, request), [(2, request)])
        self.assertEqual([self.find(mac).flags & q.BCM_L2_HIT for mac in (A, B)], [q.BCM_L2_HIT] * 2)
        self.assertEqual(self.ports(3, A, B, ARP), [1])  # B has moved
        self.assertEqual(self.ports(1, B, A, ARP), [3])
        self.assertEqual(self.ports(3, B, C, ARP), [])
        self.assertEqual(self.counted(3)['IfInDiscards'], 1)
        counters = [(q.bcm_l2_stat_get(0, self.address(B), stat, q.uint64p_cast(value)), value.value())[1]
                    for stat in range(q.bcmL2StatCount)]
        self.assertEqual(counters, [64, 1, 192, 3])
        self.assertEqual(len(self.ports(1, ALL, A, ARP)), 63)

    def test_vlans_are_apart(self):
        self.vlan(20, tagged=[1, 2], untagged=[3])
        self.vlan(30, tagged=[1])
        self.assertEqual(self.ports(1, B, A, VLAN, 30, ARP), [])
        self.enter(C, 30, port=5, modid=1)
        self.assertEqual(self.ports(1, C, A, VLAN, 30, ARP), [])
        self.assertEqual(self.counted(1)['IfInDiscards'], 2)
        self.assertEqual(self.ports(1, B, A, VLAN, 20, ARP), [2, 3])
        self.done(self.learn(5, A))  # in VLAN 1
        self.assertEqual(self.ports(2, A, B, VLAN, 20, ARP), [1])
        self.assertEqual(self.ports(2, A, B, ARP), [5])
        # A port of another VLAN may come in unless it filters, and be led to unless it filters there.
        self.assertEqual(self.ports(9, A, C, VLAN, 20, ARP), [1])
        self.enter(B, 20, port=9)
        self.assertEqual(self.ports(1, B, A, VLAN, 20, ARP), [9])
        self.done(q.bcm_port_ifilter_set(0, 9, 1))
        self.assertEqual(self.ports(9, A, C, VLAN, 20, ARP), [])
        self.done(q.bcm_port_vlan_member_set(0, 9, q.BCM_PORT_VLAN_MEMBER_EGRESS))
        self.assertEqual(self.value(q.bcm_port_ifilter_get, 9), 0)
        self.assertEqual(self.ports(1, B, A, VLAN, 20, ARP), [])
        counted = self.counted(9)
        self.assertEqual([counted[name] for name in ('BcmRxVlanFilterDiscards', 'BcmTxVlanFilterDiscards',
                                                     'IfInDiscards', 'IfOutDiscards')], [1] * 4)

    def test_tags(self):
        self.vlan(20, tagged=[1, 2, CPU_PORT], untagged=[3])
        plain, tagged = frame(B, A, ARP, 7, size=70), frame(B, A, VLAN, 20, ARP, 7, size=74)
        urgent = frame(B, A, VLAN, 0xe014, ARP, 7, size=74)
        self.assertEqual(self.sent(1, tagged), [(0, tagged), (2, tagged), (3, plain)])
        self.assertEqual(self.sent(1, urgent), [(0, urgent), (2, urgent), (3, plain)])
        self.done(q.bcm_port_untagged_vlan_set(0, 3, 20))
        self.assertEqual(self.sent(3, plain), [(port, tagged) for port in (0, 1, 2)])
        self.assertEqual(self.sent(3, frame(B, A, VLAN, 0xe000, ARP, 7, size=74)),
                         [(port, urgent) for port in (0, 1, 2)])
        # Without the tag it would be too short.
        self.assertEqual(self.sent(1, frame(B, A, VLAN, 20, ARP))[-1], (3, frame(B, A, ARP)))
        # The inner tag stays.
        self.assertEqual(self.sent(1, frame(B, A, VLAN, 20, VLAN, 30, size=68))[-1], (3, frame(B, A, VLAN, 30)))
        self.assertEqual(self.counted(1)['BcmRxDoubleVlanTagFrame'], 1)

    def test_spanning_tree(self):
        self.vlan(20, tagged=[CPU_PORT, 1, 2, 3])
        self.done(q.bcm_stg_create_id(0, 7))
        self.done(q.bcm_stg_vlan_add(0, 7, 20))
        for port in (2, 3):
            self.done(q.bcm_stg_stp_set(0, 7, port, q.BCM_STG_STP_FORWARD))
        for state in range(5):
            self.done(q.bcm_stg_stp_set(0, 7, 1, state))
            self.done(q.bcm_l2_clear(0))
            forwards = state == q.BCM_STG_STP_FORWARD
            self.assertEqual(self.ports(1, B, A, VLAN, 20, ARP), [CPU_PORT, 2, 3] if forwards else [])
            self.assertEqual(self.find(A, 20) is not None, state >= q.BCM_STG_STP_LEARN)
            self.assertEqual(self.ports(2, B, C, VLAN, 20, ARP), [0, 1, 3] if forwards else [0, 3])
            self.enter(A, 20, port=1)
            self.assertEqual(self.ports(2, A, C, VLAN, 20, ARP), [1] if forwards else [])
            self.assertEqual(self.ports(1, BRIDGES, A, VLAN, 20, ARP),
                             [] if state == q.BCM_STG_STP_DISABLE else [CPU_PORT])
            self.assertEqual(len(self.ports(1, C, A, ARP)), 63)  # another group
        self.assertEqual(self.counted(1)['BcmRxStpStateDiscards'], 5)
        self.assertEqual(self.counted(1)['IfOutDiscards'], 4)
        self.assertEqual(self.value(q.bcm_port_stp_get, 1), q.BCM_STG_STP_FORWARD)
        self.done(q.bcm_port_stp_set(0, 1, q.BCM_STG_STP_BLOCK))  # in all groups
        self.assertEqual(self.ports(1, C, A, ARP) + self.ports(1, B, A, VLAN, 20, ARP), [])
        self.assertStatus(q.BCM_E_PARAM, q.bcm_port_stp_set(0, 1, 5))

    def test_ports_without_link(self):
        self.addCleanup(library.sim_cable_plug, 0, 3, 1 << q.SOC_PHY_MEDIUM_FIBER, 10)
        self.done(library.sim_cable_plug(0, 3, 0, 10))
        self.done(q.bcm_port_enable_set(0, 2, 0))
        flooded = [port for port in FRONT_PORTS if port > 3]
        self.assertEqual(self.ports(1, B, A, ARP), flooded)
        for port in (2, 3):
            self.assertStatus(q.BCM_E_DISABLED, arrive(port, frame(A, B, ARP)))
            self.enter(B, port=port)
            self.assertEqual(self.ports(1, B, A, ARP), [])
            self.assertEqual(self.counted(port), {'IfOutDiscards': 1})
        self.assertEqual(self.find(B).port, 3)
        self.done(library.sim_cable_plug(0, 3, 1 << q.SOC_PHY_MEDIUM_FIBER, 10))
        self.assertEqual(self.ports(1, B, A, ARP), [3])

    def test_what_the_cpu_gets(self):
        for flags, ports in ((q.BCM_L2_LOCAL_CPU, [CPU_PORT]), (q.BCM_L2_COPY_TO_CPU, [CPU_PORT, 5]),
                             (q.BCM_L2_LOCAL_CPU | q.BCM_L2_COPY_TO_CPU, [CPU_PORT]),
                             (q.BCM_L2_COPY_TO_CPU | q.BCM_L2_DISCARD_DST, [CPU_PORT])):
            self.enter(B, port=5, flags=flags)
            self.assertEqual(self.ports(1, B, A, ARP), ports)
        self.done(q.bcm_vlan_port_add(0, 1, [CPU_PORT], [CPU_PORT]))
        self.assertEqual(self.ports(1, ALL, A, ARP)[:2], [CPU_PORT, 2])
        self.done(q.bcm_port_enable_set(0, CPU_PORT, 0))
        self.assertEqual(self.ports(1, B, A, ARP), [])
        self.assertEqual([self.counted(CPU_PORT)[name] for name in ('IfOutUcastPkts', 'IfOutDiscards')], [4, 1])
        self.assertEqual(self.counted(CPU_PORT)['IfOutBroadcastPkts'], 1)

    def test_groups(self):
        self.addCleanup(q.bcm_mcast_bitmap_set, 0, 6, [])
        self.done(q.bcm_mcast_bitmap_set(0, 6, [1, 4, 5]))
        self.assertEqual(len(self.ports(1, GROUP, A, ARP)), 63)
        self.assertEqual([len(self.ports(1, BRIDGES[:-2] + end, A, ARP)) for end in ('0f', '10')], [1, 63])
        self.enter(GROUP, flags=q.BCM_L2_MCAST | q.BCM_L2_STATIC, l2mc_group=6)
        self.assertEqual([self.ports(port, GROUP, A, ARP) for port in (1, 2)], [[4, 5], [1, 4, 5]])

    def test_watchers_may_call_anything(self):
        def detach(unit, port, data, size, _):
            seen.append((unit, port))
            if len(seen) == 1:
                library.bcm_detach(1)
                arrive(port, frame(A, B, ARP))
        seen, watcher = [], packet_watcher(detach)
        self.done(library.bcm_attach(1, None, None, 0))
        library.sim_packet_watch(watcher, None)
        self.enter(A, port=9)
        self.done(arrive(1, frame(B, A, ARP), 1))
        self.assertEqual((len(seen), seen[:3]), (64, [(1, 2), (0, 9), (1, 3)]))
        self.assertStatus(q.BCM_E_UNIT, arrive(1, frame(B, A, ARP), 1))
        # One that is told of the address that a packet brings may do so too.
        self.done(library.bcm_attach(1, None, None, 0))
        callback = change_callback(lambda unit, *_: self.done(library.bcm_detach(unit)))
        self.done(library.bcm_l2_addr_register(1, callback, None))
        self.done(arrive(1, frame(B, A, ARP), 1))
        self.assertEqual(len(seen), 64)


class Trunks(PacketTest):
    def test_a_trunk_is_one_place(self):
        self.trunk(3, (10, 11, 12))
        self.assertEqual([len(self.ports(port, B, A, ARP)) for port in (1, 10)], [61, 61])
        self.assertEqual((self.find(A).flags & q.BCM_L2_TRUNK_MEMBER, self.find(A).tgid),
                         (q.BCM_L2_TRUNK_MEMBER, 3))
        self.assertEqual(self.ports(11, A, B, ARP), [])
        limit = q.bcm_l2_learn_limit_t()
        limit.flags, limit.trunk, limit.limit = q.BCM_L2_LEARN_LIMIT_TRUNK, 3, 1
        self.done(q.bcm_l2_learn_limit_set(0, limit))
        self.assertStatus(q.BCM_E_RESOURCE, self.learn(12, C))
        sources = ['02:00:00:00:00:%02x' % number for number in range(64)]
        used = [self.ports(1, A, mac, ARP)[0] for mac in sources]
        self.assertEqual(set(used), set((10, 11, 12)))
        self.done(q.bcm_port_enable_set(0, 11, 0))
        self.assertEqual(set(self.ports(1, A, mac, ARP)[0] for mac in sources), set((10, 12)))
        for port in (10, 12):
            self.done(q.bcm_port_enable_set(0, port, 0))
        self.assertEqual(self.ports(1, A, B, ARP), [])

    def test_criteria(self):
        self.trunk(3, (10, 11, 12, 13))
        self.enter(A, flags=q.BCM_L2_TRUNK_MEMBER, tgid=3)
        macs = ['02:00:00:00:00:%02x' % number for number in range(32)]

        def used(criterion, flows):
            self.done(q.bcm_trunk_psc_set(0, 3, getattr(q, 'BCM_TRUNK_PSC_' + criterion)))
            return [self.sent(port, data)[0][0] for port, data in flows]

        by_source = [(1, frame(A, mac, ARP)) for mac in macs]
        by_ip = [(1, frame(A, B, IP4, *[0] * 8 + [number, 10])) for number in range(32)]
        by_port = [(port, frame(A, B, ARP)) for port in range(1, 9)]
        for criterion, varying, constant in (('SRCMAC', by_source, by_ip), ('SRCDSTMAC', by_source, by_ip),
                                             ('DSTIP', by_ip, by_source), ('PORTFLOW', by_ip, by_port)):
            self.assertGreater(len(set(used(criterion, varying))), 2, criterion)
            self.assertEqual(len(set(used(criterion, constant))), 1, criterion)
        for criterion, constant in (('DSTMAC', by_source), ('SRCIP', by_ip)):
            self.assertEqual(len(set(used(criterion, constant))), 1, criterion)
        self.assertEqual(sorted(used('PORTINDEX', by_port)), sorted([10, 11, 12, 13] * 2))
        turns = used('ROUND_ROBIN', by_port)
        self.assertEqual((turns[:4], sorted(turns[:4])), (turns[4:], [10, 11, 12, 13]))
        self.assertEqual(set(used('RANDOM', by_source)), set((10, 11, 12, 13)))

    def test_members_for_floods_and_disabled_members(self):
        self.trunk(3, (10, 11), q.BCM_TRUNK_MEMBER_INGRESS_DISABLE)
        self.done(self.learn(10, A))
        self.assertEqual(self.port_of(A), 10)
        info = q.bcm_trunk_info_t()
        q.bcm_trunk_info_t_init(info)
        for info.dlf_index, info.mc_index in ((0, 1), (1, 0)):
            members = q.new_trunkMember(2)
            self.assertEqual(q.bcm_trunk_get(0, 3, None, 2, members), [0, 2])
            self.done(q.bcm_trunk_set(0, 3, info, 2, members))
            q.delete_trunkMember(members)
            self.assertEqual([set((10, 11)) & set(self.ports(1, mac, B, ARP)) for mac in (C, ALL)],
                             [set([10 + info.dlf_index]), set([10 + info.mc_index])])
        self.trunk(4, (20, 21), q.BCM_TRUNK_MEMBER_EGRESS_DISABLE)
        self.assertFalse(set((20, 21)) & set(self.ports(1, ALL, B, ARP)))


    def test_inactive_members_and_trunks_without_enough_of_them(self):
        self.trunk(3, (10, 11, 12))
        self.enter(A, flags=q.BCM_L2_TRUNK_MEMBER, tgid=3)
        sources = ['02:00:00:00:00:%02x' % number for number in range(32)]

        def used():
            return set(port for mac in sources for port in self.ports(1, A, mac, ARP))
        inactive, active = q.BCM_TRUNK_MEMBER_STATUS_INACTIVE, q.BCM_TRUNK_MEMBER_STATUS_ACTIVE
        self.assertEqual(used(), set((10, 11, 12)))
        self.done(q.bcm_trunk_member_status_set(0, 3, 11, inactive))
        self.assertEqual(used(), set((10, 12)))
        self.done(q.bcm_trunk_min_links_set(0, 3, 3))
        self.assertEqual(used(), set())
        self.assertFalse(set((10, 11, 12)) & set(self.ports(1, ALL, B, ARP)))
        self.done(q.bcm_trunk_member_status_set(0, 3, 11, active))
        self.assertEqual(used(), set((10, 11, 12)))


class Statistics(PacketTest):
    def test_both_directions(self):
        self.assertEqual(len(STATISTICS), q.snmpValCount)
        self.vlan(20, tagged=[1], untagged=[2])
        self.ports(1, ALL, A, VLAN, 20, ARP, size=132)
        both = {'EtherStatsBroadcastPkts': 1, 'EtherStatsPkts': 1, 'EtherStatsPkts128to255Octets': 1}
        self.assertEqual(self.counted(1), dict(
            both, EtherStatsOctets=132, IfInOctets=132, IfHCInOctets=132, IfInNUcastPkts=1, IfInBroadcastPkts=1,
            IfHCInBroadcastPkts=1, Dot1dTpPortInFrames=1, Dot1dTpHCPortInFrames=1, EtherStatsRXNoErrors=1,
            BcmReceivedPkts128to255Octets=1, BcmRxVlanTagFrame=1))
        self.assertEqual(self.counted(2), dict(
            both, EtherStatsOctets=128, IfOutOctets=128, IfHCOutOctets=128, IfOutNUcastPkts=1,
            IfOutBroadcastPkts=1, IfHCOutBroadcastPkts=1, Dot1dTpPortOutFrames=1, Dot1dTpHCPortOutFrames=1,
            EtherStatsTXNoErrors=1, BcmTransmittedPkts128to255Octets=1))

    def test_lengths(self):
        ends = [63, 64, 127, 255, 511, 1023, 1518, 1522, 2047, 4095, 9216, 16383]
        received = ['UndersizePkts'] + ['Pkts%sOctets' % part for part in (
            '64 65to127 128to255 256to511 512to1023 1024to1518 1519to2047 1519to2047 2048to4095 4096to9216 '
            '9217to16383').split()]
        self.done(q.bcm_port_frame_max_set(0, 1, 16383))
        for first, last, name in zip([18] + [end + 1 for end in ends], ends, received):
            for size in (first, last):
                self.done(q.bcm_stat_clear(0, 1))
                self.assertEqual(len(self.ports(1, ALL, A, ARP, size=size)), 0 if size < 64 or size > 9216 else 63)
                counted = self.counted(1)
                self.assertEqual([key for key in counted if key.startswith('BcmReceived')
                                  and 'Oversize' not in key], ['BcmReceived' + name], size)
                self.assertEqual((counted['IfInOctets'], counted['EtherStatsPkts']), (size, 1))
                self.assertEqual('EtherStatsOversizePkts' in counted, size > 1518)
                self.assertEqual('IfInErrors' in counted, size < 64)
                self.assertEqual('EtherStatsUndersizePkts' in counted, size < 64)
                self.assertEqual('BcmEtherStatsPkts1519to1522Octets' in counted, 1519 <= size <= 1522)
        self.assertEqual(self.counted(2)['Dot1dBasePortMtuExceededDiscards'], 2)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_port_frame_max_set(0, 1, 63))
        self.done(q.bcm_port_frame_max_set(0, 1, 1518))
        self.assertEqual(self.ports(1, ALL, A, ARP, size=1519), [])
        self.assertEqual([self.counted(1)[name] for name in ('Dot3StatsFrameTooLongs', 'IfInErrors')], [1, 1])
        for size in (17, 16384):
            self.assertStatus(q.BCM_E_PARAM, arrive(1, frame(B, A, size=size)[:size - 4]))

    def test_why_packets_are_dropped(self):
        self.enter(A, port=1, flags=q.BCM_L2_STATIC | q.BCM_L2_DISCARD_SRC)
        self.enter(B, port=5, flags=q.BCM_L2_STATIC | q.BCM_L2_DISCARD_DST)
        plain, tagged, empty = (ALL, C, ARP), (ALL, C, VLAN, 1, ARP), (ALL, C, VLAN, 0, ARP)
        for mode, packet, reason in [
                (q.BCM_PORT_DISCARD_ALL, plain, 'Policy'), (q.BCM_PORT_DISCARD_TAG, tagged, 'TagType'),
                (q.BCM_PORT_DISCARD_TAG, plain, ''), (q.BCM_PORT_DISCARD_TAG, empty, ''),
                (q.BCM_PORT_DISCARD_UNTAG, plain, 'TagType'), (q.BCM_PORT_DISCARD_UNTAG, empty, 'TagType'),
                (q.BCM_PORT_DISCARD_UNTAG, tagged, ''), (0, (ALL, C, VLAN, 20, ARP), 'VlanUnknown'),
                (0, (ALL, C, VLAN, 4095, ARP), 'VlanUnknown'), (0, (ALL, A, ARP), 'SourceMac'),
                (0, (ALL, GROUP, ARP), 'SourceMac'), (0, (B, C, ARP), 'DestMac')]:
            self.done(q.bcm_stat_init(0))
            self.done(q.bcm_port_discard_set(0, 1, mode))
            self.assertEqual(bool(self.ports(1, *packet)), reason == '', packet)
            self.assertEqual(sorted(key for key in self.counted(1) if 'Discard' in key), sorted(
                ['Dot1dTpHCPortInDiscards', 'Dot1dTpPortInDiscards', 'IfInDiscards',
                 'BcmRx%sDiscards' % reason] if reason else []))
        self.done(q.bcm_port_learn_set(0, 1, q.BCM_PORT_LEARN_ARL))
        self.assertEqual([len(self.ports(1, ALL, '02:00:00:00:00:09', ARP)) for _ in range(2)], [0, 63])
        for opcode, name in ((1, 'Dot3InPauseFrames'), (0x101, 'BcmRxPFCControlFrame'),
                             (2, 'Dot3ControlInUnknownOpcodes')):
            self.assertEqual(self.ports(2, BRIDGES[:-1] + '1', C, CONTROL, opcode), [])
            self.assertEqual(self.counted(2)[name], 1)

    def test_clearing_and_ways_to_read(self):
        def reads():
            kind, ways = ctypes.c_int(q.snmpIfInOctets), ('', 'sync_', 'multi_', 'sync_multi_')
            for way in [way + 'get' + width for way in ways for width in ('', '32')]:
                value = (ctypes.c_uint32 if way.endswith('32') else ctypes.c_uint64)(77)
                before = (1, ctypes.byref(kind)) if 'multi' in way else (kind,)
                self.done(getattr(library, 'bcm_stat_' + way)(0, 1, *before + (ctypes.byref(value),)))
                yield value.value
        self.ports(1, ALL, A, ARP)
        self.assertEqual(list(reads()), [64] * 8)
        self.done(q.bcm_stat_clear_single(0, 1, q.snmpIfInOctets))
        self.assertEqual((list(reads()), self.counted(1)['EtherStatsOctets']), ([0] * 8, 64))
        self.ports(1, ALL, A, ARP)
        self.assertEqual((list(reads()), self.counted(1)['IfHCInOctets']), ([64] * 8, 128))
        self.assertEqual(run('counters 1')[1].split()[:3], ['1', 'snmpIfInOctets', '64'])
        self.assertEqual(run('counters clear 1; counters 1'), (q.CMD_OK, ''))
        self.assertEqual((self.counted(1), self.counted(2)['IfOutOctets']), ({}, 128))
        self.done(q.bcm_stat_sync(0))
        self.done(q.bcm_stat_init(0))
        self.assertEqual(self.counted(2), {})
        self.assertEqual(run('counters 1 2')[0], q.CMD_USAGE)

    def test_what_is_refused(self):
        value = q.uint64p()
        value.assign(5)
        cell = q.uint64p_cast(value)
        for status, port, kind in ((q.BCM_E_PORT, 65, 0), (q.BCM_E_PORT, TRUNK + 1, 0),
                                   (q.BCM_E_PARAM, 1, q.snmpValCount), (q.BCM_E_PARAM, 1, -1)):
            for way in (q.bcm_stat_get, q.bcm_stat_sync_get):
                self.assertStatus(status, way(0, port, kind, cell))
            self.assertStatus(status, q.bcm_stat_clear_single(0, port, kind))
        kinds, written = (ctypes.c_int * 2)(0, q.snmpValCount), (ctypes.c_uint64 * 2)(7, 7)
        for count, status in ((2, q.BCM_E_PARAM), (-1, q.BCM_E_PARAM), (0, q.BCM_E_NONE)):
            self.assertStatus(status, library.bcm_stat_multi_get(0, 1, count, kinds, written))
        self.assertEqual(list(written), [7, 7])
        self.assertEqual(value.value(), 5)
        for name in functions('bcm_stat_get') + functions('bcm_stat_multi') + functions('bcm_stat_sync'):
            self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, 1), name)
            if name != 'bcm_stat_sync':
                self.assertStatus(q.BCM_E_PARAM, call_with_nulls(name, 0), name)
        for status, port, unit in ((q.BCM_E_PORT, CPU_PORT, 0), (q.BCM_E_PORT, 65, 0), (q.BCM_E_UNIT, 1, 1)):
            self.assertStatus(status, arrive(port, frame(B, A, ARP), unit))
        self.assertStatus(q.BCM_E_PARAM, library.sim_packet_arrive(0, 1, None, 64))
        for setter, wrong in ((q.bcm_port_discard_set, 4), (q.bcm_port_discard_set, -1),
                              (q.bcm_port_vlan_member_set, 4), (q.bcm_port_frame_max_set, 16384)):
            self.assertStatus(q.BCM_E_PARAM, setter(0, 1, wrong), setter)


if __name__ == '__main__':
    unittest.main()
