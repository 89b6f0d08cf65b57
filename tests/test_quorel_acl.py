"""quorel's access lists: what values mean, what is refused and leaves nothing behind, and the table."""
import random
import unittest

import QuorelApiNew as q
from quorel import ACL, checked, OUT, sim, StatusError

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'


def udp(source='10.1.2.3', to='10.0.0.9', from_port=1000, to_port=80, **options):
    return sim.ethernet(B, A, sim.udp4(source, to, from_port, to_port), **options)


class AclTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_field_init, 0)
        self.acl = ACL(0)

    def passes(self, frame, port=1):
        return bool(self.switch.send(port, frame))

    def entries_left(self):
        if self.acl.group is None:
            return 0
        status = q.bcm_field_group_status_t()
        checked(q.bcm_field_group_status_get, 0, self.acl.group, status)
        return status.entry_count


class Values(AclTest):
    def dropped(self, frames, **match):
        """Which of the frames a rule drops, by their places."""
        rule = self.acl.add(match=match, actions=['Drop'])
        found = [place for place, frame in enumerate(frames) if not self.passes(*frame if isinstance(frame, tuple)
                                                                              else (frame,))]
        self.acl.remove(rule)
        return found

    def test_addresses(self):
        frames = [udp(source) for source in ('10.0.0.1', '10.0.0.2', '10.1.0.1', '11.0.0.1')]
        for value, found in (('10.0.0.1', [0]), ('10.0.0.0/8', [0, 1, 2]), ('10.0.0.0/31', [0]),
                             ('0.0.0.0/0', [0, 1, 2, 3]), (0x0a000002, [1]), (('0.0.0.1', '0.0.0.255'), [0, 2, 3]),
                             ((0x0a000000, 0xfffffffc), [0, 1]),
                             (['10.0.0.2', '11.0.0.0/8'], [1, 3]), ('10.0.0.2-10.255.0.0', [1, 2]), (u'10.0.0.1', [0])):
            self.assertEqual(self.dropped(frames, SrcIp=value), found, value)
        frames = [sim.ethernet(to, A) for to in (B, '02:00:00:00:00:ff', '02:00:00:00:01:02')]
        for value, found in ((B, [0]), ('02:00:00:00:00:00/40', [0, 1]), ((B, '00:00:00:00:00:ff'), [0, 2])):
            self.assertEqual(self.dropped(frames, DstMac=value), found, value)
        head = bytearray([0x60, 0, 0, 0, 0, 0, 59, 64])
        frames = [sim.ethernet(B, A, bytes(head + bytearray.fromhex(source) + bytearray(16)), kind=0x86dd) for source in
                  ('20010db8000000000000000000000001', '20010db9000000000000000000000001')]
        for value, found in (('2001:db8::1', [0]), ('2001:db8::/32', [0]), ('2001:db8::/31', [0, 1]),
                             (0x20010db9 << 96 | 1, [1])):
            self.assertEqual(self.dropped(frames, SrcIp6=value), found, value)

    def test_numbers_names_and_ports(self):
        frames = [udp(to_port=port) for port in (0, 79, 80, 1023, 1024, 65535)] + [sim.ethernet(B, A, kind=0x88b5)]
        for value, found in ((80, [2]), ('80', [2]), ('0x50', [2]), ('79-1023', [1, 2, 3]),
                             ([0, '1023-1024'], [0, 3, 4]),
                             ((0x50, 0xfff0), [2]), ('0-65535', [0, 1, 2, 3, 4, 5]), ('80-80', [2])):
            self.assertEqual(self.dropped(frames, L4DstPort=value), found, value)
        self.assertEqual(self.dropped(frames, IpType='NonIp'), [6])
        self.assertEqual(self.dropped(frames, IpType=['NonIp', 'bcmFieldIpTypeIpv6']), [6])
        self.assertEqual(self.dropped(frames, EtherType='0x8800-0x88ff'), [6])
        frames = [(udp(), port) for port in (1, 2, 3, 40)]
        for value, found in (([1, 3], [0, 2]), ('1-2,40', [0, 1, 3])):
            self.assertEqual(self.dropped(frames, InPorts=value), found, value)
        self.assertEqual(self.dropped(frames, InPort=[1, 40]), [0, 3])
        self.assertEqual(self.dropped(frames, SrcPort=(0, 0, 3, 0xff)), [2])
        self.assertEqual(self.dropped(frames), [0, 1, 2, 3])

    def test_ranges_without_room_for_them(self):
        """The same packets, whether the chip compares ranges or prefixes."""
        chance = random.Random(4)
        for id in range(1, 65):
            checked(q.bcm_field_range_create_id, 0, id, q.BCM_FIELD_RANGE_SRCPORT, 1, 2)
        for _ in range(20):
            low, high = sorted(chance.choice([0, 1, 1023, 65535, chance.randrange(65536)]) for _ in range(2))
            ports = [low, high, (low + high) // 2, max(low - 1, 0), min(high + 1, 65535)]
            found = self.dropped([udp(to_port=port) for port in ports], L4DstPort='%d-%d' % (low, high))
            self.assertEqual(found, [place for place, port in enumerate(ports) if low <= port <= high], (low, high))


    def test_records(self):
        frames = [sim.ethernet(B, A, header + b'data', kind=40) for header in
                  (b'\x42\x42\3', b'\x42\xfe\3', b'\xaa\xaa\3\0\0\0\x88\xb5', b'\xaa\xaa\3\0\0\x0c\x88\xb5')]
        for value, found in ((dict(dsap=0x42), [0, 1]), (dict(dsap=0x42, ssap=0xfe), [1]), (dict(), [0, 1, 2, 3]),
                             ([dict(ssap=0x42), dict(ssap=0xaa)], [0, 2, 3]),
                             ((q.bcm_field_llc_header_t(ssap=0xa0), q.bcm_field_llc_header_t(ssap=0xf0)), [2, 3])):
            self.assertEqual(self.dropped(frames, Llc=value), found, value)
        self.assertEqual(self.dropped(frames, Snap=dict(org_code=12)), [3])
        self.assertEqual(self.dropped(frames, Snap=dict(type=0x88b5)), [2, 3])

    def test_addresses_of_actions(self):
        self.acl.add(1, dict(InPort=1), [('DestMacNew', '02:00:00:00:00:0a'), ('SrcMacNew', u'02:00:00:00:00:0B')])
        self.assertEqual(self.switch.send(1, udp())[0][1][:12], b'\2\0\0\0\0\x0a\2\0\0\0\0\x0b')
        self.assertIn('DestMacNew', str(self.acl))


class Refused(AclTest):
    def test_what_values_are_not(self):
        for match, words in ((dict(SrcIp='10.0.0.0/33'), "SrcIp: '10.0.0.0/33' is not what it takes: an IPv4 address"),
                             (dict(SrcIp='10.0.0.1/8'), "SrcIp: '10.0.0.1/8' has bits beyond its prefix"),
                             (dict(SrcIp='10.0.0'), 'SrcIp'), (dict(SrcIp=1 << 32), 'SrcIp'),
                             (dict(SrcIp=None), 'SrcIp'),
                             (dict(SrcIp=('10.0.0.1',)), 'SrcIp'), (dict(SrcIp6='10.0.0.1'), "an IPv6 address"),
                             (dict(SrcMac='02:00:00'), 'a MAC address'), (dict(L4DstPort='http'), 'a number of 16 bits'),
                             (dict(L4DstPort='90-80'), "a range 'low-high'"), (dict(L4DstPort=[80, 1 << 16]), '65536'),
                             (dict(IpType='Ipv5'), 'or a name such as'), (dict(InPorts='one'), "text such as '1-4,7'"),
                             (dict(SrcPort=3), 'a tuple of bcm_module_t, bcm_module_t'),
                             (dict(Snap=5), '{member: number}'), (dict(Snap=dict(kind=1)), '{member: number}'),
                             (dict(Llc=(1, 2)), 'a tuple of a record'), (dict(SrcIpp=1), 'there is no qualifier SrcIpp: is it SrcIp or'),
                             (dict(StageLookup=1), 'there is no qualifier StageLookup')):
            with self.assertRaises(ValueError) as raised:
                self.acl.add(match=match)
            self.assertIn(words, str(raised.exception), match)
        for action in ('Dropp', ('Drop', 1, 2, 3, 4), ('RedirectPort', 'one'), ('SrcMacNew', '02:00:00:00:00:1ff'),
                       ('SrcMacNew', '02:00:00:00:00:01', 1)):
            self.assertRaises(ValueError, self.acl.add, 0, {}, [action])
        self.assertRaises(ValueError, ACL, 0, 0, 'Nowhere')
        self.assertEqual((len(self.acl), self.acl.group), (0, None))

    def test_nothing_is_left_of_a_rule_that_the_chip_refuses(self):
        keep = self.acl.add(1, dict(L4DstPort='1-9'), ['Drop'])
        for match, actions, culprit in (
                (dict(L4DstPort='10-19', MplsForwardingLabel=5), ['Drop'], 'BCM_E_UNAVAIL (-16): for MplsForwardingLabel'),
                (dict(InPort=[1, 2], OuterVlanId=1 << 15), [], 'bcm_field_qualify_OuterVlanId'),
                (dict(L4SrcPort='1-9'), ['CopyToCpu', ('RedirectPort', 0, 99)], 'for RedirectPort')):
            with self.assertRaises(StatusError) as raised:
                self.acl.add(2, match, actions, count=True)
            self.assertIn(culprit, str(raised.exception))
        self.assertEqual((list(self.acl), self.entries_left()), ([keep], 1))
        self.assertEqual(len(checked(q.bcm_field_range_get, 0, 1, OUT, OUT, OUT)), 3)
        self.assertRaises(StatusError, checked, q.bcm_field_range_get, 0, 2, OUT, OUT, OUT)
        self.assertRaises(StatusError, checked, q.bcm_field_stat_get, 0, 1, q.bcmFieldStatPackets, OUT)
        self.acl.destroy()
        self.assertRaises(StatusError, checked, q.bcm_field_range_get, 0, 1, OUT, OUT, OUT)


class Lists(AclTest):
    def test_rules_come_and_go(self):
        deny = self.acl.add(5, dict(L4DstPort=80), ['Drop'], count=True)
        permit = self.acl.add(9, dict(SrcIp='10.0.0.0/8'), count=True)
        to = self.acl.add(7, dict(SrcIp='11.0.0.0/8'), [('RedirectPort', 0, 7), 'CopyToCpu'])
        self.assertEqual([self.passes(udp(source)) for source in ('10.0.0.1', '12.0.0.1')], [True, False])
        self.assertEqual([port for port, _ in self.switch.send(1, udp('11.0.0.1'))], [0, 7])
        self.assertEqual((permit.counted, deny.packets, deny.bytes, to.counted), ((1, 64), 1, 64, None))
        self.assertEqual(list(self.acl), [permit, to, deny])
        self.assertEqual([line.split() for line in str(self.acl).splitlines()], [
            ['priority', 'match', 'actions', 'packets', 'bytes'],
            ['9', 'SrcIp=10.0.0.0/8', '-', '1', '64'],
            ['7', 'SrcIp=11.0.0.0/8', 'RedirectPort(0,', '7),', 'CopyToCpu', '-', '-'],
            ['5', 'L4DstPort=80', 'Drop', '1', '64']])
        self.acl.remove(permit)
        self.assertFalse(self.passes(udp('10.0.0.1')))
        self.assertRaises(ValueError, self.acl.remove, permit)
        self.acl.clear()
        self.assertEqual((len(self.acl), self.entries_left()), (0, 0))
        self.assertTrue(self.passes(udp('12.0.0.1')))
        group = self.acl.group
        self.acl.destroy()
        self.assertEqual(q.bcm_field_group_destroy(0, group), q.BCM_E_NOT_FOUND)
        self.acl.add(match=dict(L4DstPort=80), actions=[('RedirectPbmp', [5, 6])])
        self.assertEqual([port for port, _ in self.switch.send(1, udp())], [5, 6])

    def test_stages_and_priorities_of_lists(self):
        early, late = ACL(0, stage='Lookup'), ACL(0, stage='Egress', qualifiers=['OutPort'])
        early.add(match=dict(InPort=2), actions=[('OuterVlanNew', 20)])
        checked(q.bcm_vlan_create, 0, 20)
        checked(q.bcm_vlan_port_add, 0, 20, [8, 9], [8, 9])
        late.add(match=dict(OutPort=9), actions=['Drop'])
        self.assertEqual([port for port, _ in self.switch.send(2, udp())], [8])
        strong = ACL(0, priority=3)
        self.acl.add(9, {}, ['Drop'])
        strong.add(0, dict(SrcIp='10.0.0.0/8'), ['DropCancel'])
        self.assertEqual([self.passes(udp(source)) for source in ('10.0.0.1', '12.0.0.1')], [True, False])

    def test_lists_with_the_same_rules_meet_packets_each(self):
        frame, lists = udp(), [ACL(0, priority=number) for number in range(4)]
        rules = [(acl, acl.add(priority, dict(SrcIp='10.1.0.0/16'), count=True))
                 for priority in (5, 7, 6) for acl in lists]
        random.Random(1).shuffle(rules)
        while rules:
            before = [rule.packets for _, rule in rules]
            self.passes(frame)
            # In each list the one of the highest priority that is left.
            highest = dict((acl, max(rule.priority for each, rule in rules if each is acl)) for acl, _ in rules)
            self.assertEqual([rule.packets - count for (_, rule), count in zip(rules, before)],
                             [int(rule.priority == highest[acl]) for acl, rule in rules])
            acl, rule = rules.pop()
            acl.remove(rule)
        self.assertTrue(self.passes(frame))

    def test_a_list_meets_the_colour_that_one_before_it_gave(self):
        first, second = ACL(0, priority=2), ACL(0, priority=1)
        config = q.bcm_policer_config_t()
        q.bcm_policer_config_t_init(config)
        config.flags = q.BCM_POLICER_BEGIN_WITH_BUCKET_FULL
        config.mode, config.ckbits_sec, config.ckbits_burst = q.bcmPolicerModeSrTcm, 1, 8
        policer = checked(q.bcm_policer_create, 0, config, OUT)
        rule = first.add(1, dict(SrcIp='10.1.0.0/16'))
        checked(q.bcm_field_entry_policer_attach, 0, rule.entries[0], 0, policer)
        checked(q.bcm_field_entry_install, 0, rule.entries[0])
        colors = [second.add(1, dict(Color=color, SrcIp='10.1.0.0/16'), count=True)
                  for color in (q.BCM_FIELD_COLOR_GREEN, q.BCM_FIELD_COLOR_YELLOW, q.BCM_FIELD_COLOR_RED)]
        for _ in range(40):
            self.passes(udp())
        counted = [rule.packets for rule in colors]
        self.assertEqual(sum(counted), 40)
        self.assertTrue(counted[0] and counted[0] < 40, counted)

    def test_an_older_rule_wins_over_a_younger_one_of_its_priority(self):
        self.acl.add(1, dict(L4DstPort=80))
        self.acl.add(1, dict(SrcIp='10.0.0.0/8'), ['Drop'])
        self.assertEqual([self.passes(udp(to_port=port)) for port in (80, 81)], [True, False])


class Near(AclTest):
    """The trace names entries that almost matched."""

    def traced(self, frame):
        return [line.split('field: ')[1] for line in self.switch.trace(1, frame).splitlines() if ' field: ' in line]

    def test_the_entry_that_differs_least(self):
        far = self.acl.add(9, dict(SrcIp='11.0.0.0/8', L4DstPort=443))
        near = self.acl.add(5, dict(SrcIp='10.0.0.0/8', L4DstPort=443, InPort=1), ['Drop'])
        place = self.acl.group, near.entries[0]
        self.assertEqual(self.traced(udp()), [
            'no entry of group %d matches; entry %d, priority 5, would but for L4DstPort of 0x50, which is not 0x1bb'
            % place])
        self.assertEqual(self.traced(udp('11.2.3.4')), [
            'no entry of group %d matches; entry %d, priority 9, would but for L4DstPort of 0x50, which is not 0x1bb'
            % (self.acl.group, far.entries[0])])
        # What was changed and not installed again is not what packets meet.
        checked(q.bcm_field_qualify_L4DstPort, 0, near.entries[0], 80, 0xffff)
        self.assertIn('0x50, which is not 0x1bb', self.traced(udp())[0])
        checked(q.bcm_field_entry_reinstall, 0, near.entries[0])
        self.assertEqual(self.traced(udp())[0], 'entry %d of group %d, priority 5, matches: Drop' % place[::-1])

    def test_kinds_of_differences(self):
        for match, words in ((dict(SrcIp='11.0.0.0/8'),
                              'SrcIp of 0xa010203, which is not 0xb000000 with the mask 0xff000000'),
                             (dict(OuterVlanId=5), 'OuterVlanId, which it has not'),
                             (dict(L4DstPort='1-9'), 'L4PortRangeCheck with range 1'),
                             (dict(IpType='Ipv6'), 'IpType'), (dict(InPorts=[2]), 'InPorts')):
            rule = self.acl.add(0, match)
            self.assertTrue(self.traced(udp())[0].endswith('would but for ' + words), (self.traced(udp()), words))
            self.acl.remove(rule)
        self.assertEqual(self.traced(udp()), [])


if __name__ == '__main__':
    unittest.main()
