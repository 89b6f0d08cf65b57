"""The address table: entries, what is deleted or replaced together, lists, traversals, capacity."""
import collections
import ctypes
import random
import re
import struct
import unittest

import QuorelApiNew as q
from simulator import (Address, BLACK_HOLE, LOCAL_PORT, MODULE_PORT, SwitchTest, TRUNK, call_with_nulls,
                       change_callback, functions, library, pointer, traverse_callback)

A, B, C, D = ['02:00:5e:00:00:0%d' % number for number in (1, 2, 3, 4)]


class Entries(SwitchTest):
    def test_an_entry_is_kept_whole_and_by_address_and_vlan(self):
        self.done(q.bcm_vlan_create(0, 20))
        members = dict(flags=q.BCM_L2_STATIC | q.BCM_L2_MIRROR, station_flags=q.BCM_L2_STATION_MIM, port=9,
                       cos_dst=3, cos_src=4, block_bitmap=[0, 31, 32, 558], auth=5, group=6,
                       distribution_class=7, encap_id=-8, age_state=9)
        self.enter(A, 20, **members)
        self.enter(A, 1, port=3)
        found = self.find(A, 20)
        for name, value in members.items():
            self.assertEqual(getattr(found, name), value, name)
        self.assertEqual((found.mac, found.vid, found.modid), (A, 20, 0))
        self.assertEqual((self.port_of(A, 1), self.find(A, 1).age_state), (3, 0))

        self.enter(B, 20, port=4)
        self.enter(A, 20, port=11)  # replaces all of it, and keeps its place
        self.assertEqual((self.find(A, 20).flags, self.find(A, 20).encap_id), (0, 0))
        self.assertEqual(q.getHwMacTable(0), [
            (A, 20, LOCAL_PORT + 11, 'dynamic'), (A, 1, LOCAL_PORT + 3, 'dynamic'),
            (B, 20, LOCAL_PORT + 4, 'dynamic')])

        self.done(q.bcm_l2_addr_delete(0, A.upper(), 20))
        self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_l2_addr_delete(0, A, 20))
        self.assertIsNone(self.find(A, 20))
        self.assertEqual(self.port_of(A, 1), 3)

    def test_destinations(self):
        cases = [(dict(port=64, modid=-1), (0, 64, 0), LOCAL_PORT + 64),
                 (dict(port=LOCAL_PORT + 7, modid=5), (0, 7, 0), LOCAL_PORT + 7),
                 (dict(port=MODULE_PORT + (3 << 11) + 12), (3, 12, 0), LOCAL_PORT + 12),
                 (dict(port=TRUNK + 1023), (0, 0, 1023), TRUNK + 1023),
                 (dict(flags=q.BCM_L2_TRUNK_MEMBER, tgid=4), (0, 0, 4), TRUNK + 4),
                 (dict(flags=q.BCM_L2_LOCAL_CPU, port=9), (0, 0, 0), LOCAL_PORT),
                 (dict(port=575, modid=127), (127, 575, 0), LOCAL_PORT + 575)]
        for members, resolved, _ in cases:
            self.enter(A, **members)
            found = self.find(A)
            self.assertEqual((found.modid, found.port, found.tgid), resolved, members)
            self.assertEqual(bool(found.flags & q.BCM_L2_TRUNK_MEMBER), found.tgid > 0)
        for number, (members, _, _) in enumerate(cases):
            self.enter('02:00:00:00:01:%02x' % number, **members)
        self.assertEqual([row[2] for row in q.getHwMacTable(0)[1:]], [gport for _, _, gport in cases])
        self.enter(A, port=3, flags=q.BCM_L2_DISCARD_DST)
        self.assertEqual(q.getHwMacTable(0)[0][2], BLACK_HOLE)

    def test_errors_change_nothing(self):
        self.enter(A, port=5)
        trunk, group = q.BCM_L2_TRUNK_MEMBER, q.BCM_L2_MCAST
        refused = [(q.BCM_E_PARAM, [dict(vid=0), dict(vid=4095), dict(flags=0x80000000)]), (q.BCM_E_NOT_FOUND, [dict(vid=2)]),
                   (q.BCM_E_PORT, [dict(port=port) for port in (65, -2, LOCAL_PORT + 65)]),
                   (q.BCM_E_PORT, [dict(port=576, modid=1)]),
                   (q.BCM_E_BADID, [dict(modid=128), dict(flags=trunk, tgid=1024), dict(port=TRUNK + 1024),
                                    dict(flags=group, l2mc_group=-1)])]
        for status, several in refused:
            for members in several:
                self.assertStatus(status, q.bcm_l2_addr_add(0, self.address(A, **members)), members)
        for vid in (0, 4095):
            self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_addr_get(0, A, vid)[0])
            self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_addr_delete(0, A, vid))
            self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_addr_delete_by_vlan(0, vid, 0))
        self.assertStatus(q.BCM_E_PORT, q.bcm_l2_addr_delete_by_port(0, 0, 65, 0))
        self.assertStatus(q.BCM_E_BADID, q.bcm_l2_addr_delete_by_trunk(0, 1024, 0))
        self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_addr_delete_by_mac(0, A, 8))
        self.assertEqual(q.getHwMacTable(0), [(A, 1, LOCAL_PORT + 5, 'dynamic')])

        left_alone = Address(flags=77, port=78)
        octets = (ctypes.c_uint8 * 6)()
        self.assertStatus(q.BCM_E_NOT_FOUND, library.bcm_l2_addr_get(0, octets, 1, ctypes.byref(left_alone)))
        self.assertEqual((left_alone.flags, left_alone.port), (77, 78))

    def test_units_nulls_and_a_detached_module(self):
        names = functions('bcm_l2_')
        self.assertGreater(len(names), 60)
        for name in names:
            for unit in (-1, 1, 2 ** 31 - 1):
                self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, unit), name)
        for name in names:
            # Who was never registered, null or not, is not found.
            pointers = set(re.findall(r'\w+', getattr(q, name).__doc__.split(' -> ')[0])[1:]) - set(
                'unit vid flags mod modid port tid lclass lclass_prio intf index station_id mac_port_id '
                'age_seconds'.split())
            if pointers:
                self.assertStatus(q.BCM_E_PARAM, call_with_nulls(name, 0), name)
        self.done(q.bcm_l2_detach(0))
        for name in names:
            if name != 'bcm_l2_init':
                self.assertStatus(q.BCM_E_INIT, call_with_nulls(name, 0), name)
        self.assertEqual(q.getHwMacTable(0), [])
        self.assertEqual(q.getHwMacTable(1), [])

    def test_init_and_clear(self):
        for empty, age in ((q.bcm_l2_clear, 77), (q.bcm_l2_init, 300)):
            self.done(q.bcm_l2_age_timer_set(0, 77))
            events = self.watch_changes()
            self.enter(A, port=5, flags=q.BCM_L2_STATIC)
            self.done(empty(0))
            self.assertEqual((self.macs(), self.value(q.bcm_l2_age_timer_get)), ([], age))
            self.enter(B, port=5)
            seen = [A, B] if age == 77 else [A]  # init drops the callbacks too
            self.assertEqual([mac for _, mac, _, _ in events], seen)

    def test_lists_of_entries(self):
        addresses = (Address * 3)(*[Address(vid=1, port=port) for port in (5, 65, 6)])
        for number, address in enumerate(addresses):
            address.mac[5] = number
        results = (ctypes.c_int * 3)(9, 9, 9)
        self.assertStatus(q.BCM_E_PORT, library.bcm_l2_addr_multi_add(0, 3, addresses, results))
        self.assertEqual(list(results), [q.BCM_E_NONE, q.BCM_E_PORT, q.BCM_E_NONE])
        self.assertEqual([row[2] for row in q.getHwMacTable(0)], [LOCAL_PORT + 5, LOCAL_PORT + 6])
        self.assertStatus(q.BCM_E_PARAM, library.bcm_l2_addr_multi_delete(0, -1, addresses, None))
        self.assertStatus(q.BCM_E_NOT_FOUND, library.bcm_l2_addr_multi_delete(0, 2, addresses, None))
        self.assertEqual([row[2] for row in q.getHwMacTable(0)], [LOCAL_PORT + 6])

    def test_callbacks_tell_what_calls_change(self):
        events = self.watch_changes()
        self.enter(A, port=5)
        self.enter(A, port=6)
        self.enter(B, port=6)
        self.done(q.bcm_l2_addr_delete_by_mac(0, B, q.BCM_L2_DELETE_NO_CALLBACKS))
        self.done(q.bcm_l2_addr_delete_by_port(0, 0, 6, 0))
        add, delete = q.BCM_L2_CALLBACK_ADD, q.BCM_L2_CALLBACK_DELETE
        self.assertEqual(events, [(add, A, 1, 5), (delete, A, 1, 5), (add, A, 1, 6), (add, B, 1, 6),
                                  (delete, A, 1, 6)])


class ManyEntries(SwitchTest):
    """Calls that change several entries at once."""

    def setUp(self):
        SwitchTest.setUp(self)
        self.done(q.bcm_vlan_create(0, 2))
        self.fill()

    def fill(self):
        q.bcm_l2_clear(0)
        for mac, vid, members in [(A, 1, dict(port=5)), (A, 2, dict(port=6)), (B, 1, dict(port=6)),
                                  (C, 1, dict(port=5, flags=q.BCM_L2_STATIC)),
                                  (C, 2, dict(tgid=7, flags=q.BCM_L2_TRUNK_MEMBER)),
                                  (D, 2, dict(port=5, flags=q.BCM_L2_PENDING))]:
            self.enter(mac, vid, **members)

    def keys(self):
        return [row[:2] for row in q.getHwMacTable(0)]

    def test_deletion_takes_what_is_named_and_no_more(self):
        everything = self.keys()
        static, pending = q.BCM_L2_DELETE_STATIC, q.BCM_L2_DELETE_PENDING
        for function, args, gone in [
                (q.bcm_l2_addr_delete_by_port, (0, 5, 0), [(A, 1), (D, 2)]),
                (q.bcm_l2_addr_delete_by_port, (-1, 5, static), [(A, 1), (C, 1), (D, 2)]),
                (q.bcm_l2_addr_delete_by_port, (0, LOCAL_PORT + 5, pending), [(D, 2)]),
                (q.bcm_l2_addr_delete_by_port, (1, 5, static), []),
                (q.bcm_l2_addr_delete_by_port, (0, TRUNK + 7, 0), [(C, 2)]),
                (q.bcm_l2_addr_delete_by_trunk, (7, 0), [(C, 2)]),
                (q.bcm_l2_addr_delete_by_vlan_trunk, (1, 7, 0), []),
                (q.bcm_l2_addr_delete_by_mac, (A, 0), [(A, 1), (A, 2)]),
                (q.bcm_l2_addr_delete_by_mac, (C, static), [(C, 1), (C, 2)]),
                (q.bcm_l2_addr_delete_by_vlan, (2, 0), [(A, 2), (C, 2), (D, 2)]),
                (q.bcm_l2_addr_delete_by_mac_port, (A, 0, 6, 0), [(A, 2)]),
                (q.bcm_l2_addr_delete_by_vlan_port, (1, 0, 5, 0), [(A, 1)]),
                (q.bcm_l2_addr_delete_by_vlan_port, (1, 0, 5, static), [(A, 1), (C, 1)])]:
            self.done(function(0, *args))
            self.assertEqual(self.keys(), [key for key in everything if key not in gone], (function, args))
            self.fill()
        vlans, gports = (ctypes.c_uint16 * 2)(2, 1), (ctypes.c_int * 2)(TRUNK + 7, LOCAL_PORT + 6)
        self.done(library.bcm_l2_addr_delete_by_vlan_gport_multi(0, 2, vlans, gports, 0))
        self.assertEqual(self.keys(), [key for key in everything if key not in [(C, 2), (B, 1)]])

    def test_replace(self):
        wanted = self.address(A, 2, port=5)
        vlan, dest = q.BCM_L2_REPLACE_MATCH_VLAN, q.BCM_L2_REPLACE_MATCH_DEST
        before = q.getHwMacTable(0)
        for status, args in [(q.BCM_E_PARAM, (0, wanted, 0, 9, 0)),
                             (q.BCM_E_PARAM, (dest | 2, wanted, 0, 9, 0)),
                             (q.BCM_E_PORT, (dest, wanted, 0, 65, 0)),
                             (q.BCM_E_BADID, (dest | q.BCM_L2_REPLACE_NEW_TRUNK, wanted, 0, 9, 1024))]:
            self.assertStatus(status, q.bcm_l2_replace(0, *args), args)
        self.assertEqual(q.getHwMacTable(0), before)

        self.done(q.bcm_l2_replace(0, dest, wanted, 0, 9, 0))  # the static entry of port 5 stays
        self.assertEqual([self.port_of(*key) for key in self.keys()], [9, 6, 6, 5, 0, 9])
        self.done(q.bcm_l2_replace(0, vlan | q.BCM_L2_REPLACE_NEW_TRUNK, wanted, 0, 0, 8))
        self.assertEqual([self.find(*key).tgid for key in self.keys()], [0, 8, 0, 0, 8, 8])
        self.done(q.bcm_l2_replace(0, vlan, wanted, 3, 9, 0))
        self.assertEqual([(row[2], self.find(*row[:2]).tgid) for row in q.getHwMacTable(0) if row[1] == 2],
                         [(LOCAL_PORT + 9, 0)] * 3)
        self.done(q.bcm_l2_replace(0, dest | q.BCM_L2_REPLACE_MATCH_STATIC | q.BCM_L2_REPLACE_DELETE,
                                   wanted, 0, 0, 0))
        self.assertEqual(self.keys(), [(A, 1), (A, 2), (B, 1), (C, 2), (D, 2)])

    def test_replace_by_bits(self):
        none = '00:00:00:00:00:00'
        match, mask = self.address(A, 0), self.address('ff:ff:ff:ff:ff:ff', 0)
        bits, changed = self.address(A, 0, cos_dst=-1, port=12), self.address(none, 0, cos_dst=3)
        self.done(q.bcm_l2_replace_match(0, 0, match, mask, bits, changed))
        self.assertEqual([(self.find(*key).cos_dst, self.port_of(*key)) for key in self.keys()[:3]],
                         [(3, 5), (3, 6), (0, 6)])
        # The second entry would have come to port 70.
        self.enter(A, 1, port=0)
        bits, changed = self.address(A, 0, port=64), self.address(none, 0, port=64)
        self.assertStatus(q.BCM_E_PORT, q.bcm_l2_replace_match(0, 0, match, mask, bits, changed))
        self.assertEqual([self.port_of(A, 1), self.port_of(A, 2)], [0, 6])
        changed.vid = 1  # the key of an entry is not to be changed
        self.assertStatus(q.BCM_E_PARAM, q.bcm_l2_replace_match(0, 0, match, mask, bits, changed))
        self.done(q.bcm_l2_replace_match(0, q.BCM_L2_REPLACE_DELETE, match, mask, None, None))
        self.assertEqual(self.keys(), [(B, 1), (C, 1), (C, 2), (D, 2)])

    def test_a_ring_exchanges_its_ports_in_its_vlans(self):
        ring = q.bcm_l2_ring_t()
        vlans = q.new_entrydata(128)
        for word in range(128):
            q.entrydata_setitem(vlans, word, 0)
        q.entrydata_setitem(vlans, 0, 1 << 1)
        ring.vlan_vector = vlans
        ring.port0, ring.port1 = 5, 6
        self.done(q.bcm_l2_ring_replace(0, ring))
        self.assertEqual([self.port_of(*key) for key in self.keys()], [6, 6, 5, 5, 0, 5])
        q.delete_entrydata(vlans)

    def traverse(self, function, *args, **options):
        seen = []

        def visit(unit, address, user_data):
            seen.append((address[0].mac_text(), address[0].vid))
            address[0].port = 33  # a copy: the table does not notice
            return options['visit'](len(seen)) if 'visit' in options else 0
        status = function(0, *(args + (traverse_callback(visit), None)))
        return status, seen

    def test_traversals_select_and_stop(self):
        everything = self.keys()
        self.assertEqual(self.traverse(library.bcm_l2_traverse), (0, everything))
        self.assertEqual(self.port_of(A), 5)
        self.assertEqual(self.traverse(library.bcm_l2_traverse, visit=lambda count: -55 if count == 2 else 1),
                         (-55, everything[:2]))
        match = self.address(A, 2, port=5)
        for flags, expected in [
                (0, everything), (q.BCM_L2_TRAVERSE_MATCH_STATIC, [(C, 1)]),
                (q.BCM_L2_TRAVERSE_MATCH_MAC, [(A, 1), (A, 2)]),
                (q.BCM_L2_TRAVERSE_MATCH_DEST | q.BCM_L2_TRAVERSE_MATCH_DYNAMIC, [(A, 1), (D, 2)]),
                (q.BCM_L2_TRAVERSE_MATCH_VLAN | q.BCM_L2_TRAVERSE_MATCH_DEST, [(D, 2)])]:
            self.assertEqual(self.traverse(library.bcm_l2_matched_traverse, flags, pointer(match)),
                             (0, expected))
        mask = self.address('00:00:00:00:00:02', 2)
        masked = self.address(C, 0)
        self.assertEqual(self.traverse(library.bcm_l2_match_masked_traverse, 0, pointer(masked),
                                       pointer(mask)), (0, [(B, 1), (C, 1)]))

    def test_a_traversal_survives_what_its_callback_does(self):
        def visit(count):
            if count == 1:
                q.bcm_l2_addr_delete(0, A, 2)
                for number in range(3000):  # more than any room set aside
                    q.bcm_l2_addr_add(0, self.address('02:00:00:01:%02x:%02x' % divmod(number, 256), port=1))
                q.bcm_l2_addr_delete_by_port(0, 0, 1, 0)
            return 0
        self.assertEqual(self.traverse(library.bcm_l2_traverse, visit=visit),
                         (0, [(A, 1), (B, 1), (C, 1), (C, 2), (D, 2)]))
        self.assertEqual(self.traverse(library.bcm_l2_traverse, visit=lambda count: q.bcm_l2_clear(0)),
                         (0, [(A, 1)]))

    def test_callbacks_may_detach_the_unit(self):
        self.addCleanup(library.bcm_detach, 3)
        addresses, status = (Address * 9)(), (ctypes.c_int * 9)()
        for number, address in enumerate(addresses):
            address.mac[5], address.vid, address.cos_dst = number, 1, 1
        for ends in (library.bcm_detach, q.bcm_clear):
            seen = []
            visit = traverse_callback(lambda unit, *_: seen.append('visited') or ends(unit))
            change = change_callback(lambda unit, *_: seen.append('changed') or ends(unit))
            self.done(library.bcm_attach(3, None, None, 0))
            self.done(library.bcm_l2_addr_multi_add(3, 9, addresses, status))
            self.done(library.bcm_l2_traverse(3, visit, None))
            library.bcm_attach(3, None, None, 0)
            for user_data in (1, 2):
                self.done(library.bcm_l2_addr_register(3, change, user_data))
            self.done(library.bcm_l2_addr_multi_add(3, 9, addresses, status))
            self.assertEqual(seen, ['visited', 'changed'])
            library.bcm_detach(3)


class Capacity(SwitchTest):
    CHUNK = 1 << 14

    def test_no_entry_is_lost_among_thousands_that_come_and_go(self):
        choice = random.Random(2)
        expected = collections.OrderedDict()
        for _ in range(12000):
            mac = '02:00:5e:00:%02x:%02x' % (choice.randrange(8), choice.randrange(256))
            if choice.randrange(2):
                expected[mac] = choice.randrange(65), choice.randrange(3)
                self.enter(mac, port=expected[mac][0], encap_id=expected[mac][1])
            else:
                status = q.BCM_E_NOT_FOUND if expected.pop(mac, None) is None else q.BCM_E_NONE
                self.assertStatus(status, q.bcm_l2_addr_delete(0, mac, 1))
        self.assertEqual([(mac, gport - LOCAL_PORT) for mac, _, gport, _ in q.getHwMacTable(0)],
                         [(mac, port) for mac, (port, _) in expected.items()])
        for mac, entry in expected.items():
            found = self.find(mac)
            self.assertEqual(found and (found.port, found.encap_id), entry, mac)

    def collisions(self, count):
        """[(MAC, VLAN)] whose products with the table's multiplier have the same highest bits."""
        inverse, found, low = 0xF1DE83E19937733D, [], 0
        while len(found) < count:
            low += 0x1003f
            hashed = (1 << 64) - (1 << 46) + low
            product = hashed * inverse & (1 << 64) - 1
            key = product ^ product >> 32
            vid, octets = key & 0xffff, struct.pack('>Q', key)[:6]
            if 1 <= vid <= 4094 and ord(octets[0]) & 1 == 0:
                found.append((':'.join('%02x' % ord(octet) for octet in octets), vid))
        return found

    def test_addresses_of_one_bucket_keep_apart(self):
        bucket = self.collisions(40)
        for _, vid in bucket:
            q.bcm_vlan_create(0, vid)
        for port, (mac, vid) in enumerate(bucket):
            self.enter(mac, vid, port=port)
        conflicts, found, subject = (Address * 64)(), ctypes.c_int(), self.address(*bucket[0])
        self.done(library.bcm_l2_conflict_get(0, pointer(subject), conflicts, 64, ctypes.byref(found)))
        self.assertEqual([(entry.mac_text(), entry.vid) for entry in conflicts[:found.value]], bucket[1:])
        # From the middle, from the front and from the back; what comes behind has to be found still.
        for gone in range(20, 30) + range(0, 19, 7) + [39, 38]:
            self.done(q.bcm_l2_addr_delete(0, *bucket[gone]))
            self.assertIsNone(self.find(*bucket[gone]))
            bucket[gone] = None
            for port, entry in enumerate(bucket):
                self.assertEqual(entry and self.port_of(*entry), entry and port)
        self.assertEqual([row[:2] for row in q.getHwMacTable(0)], filter(None, bucket))

    def add_chunk(self, first, results):
        head, tail = '\0' * 8 + '\2\0', buffer(Address(vid=1, port=5))[14:]
        text = ''.join(head + struct.pack('>I', number) + tail
                       for number in xrange(first, first + self.CHUNK))
        return library.bcm_l2_addr_multi_add(0, self.CHUNK, ctypes.c_char_p(text), results)

    def test_a_million_addresses_and_a_full_table(self):
        results = (ctypes.c_int * self.CHUNK)()
        count, status = 0, 0
        while status == 0:
            status = self.add_chunk(count, results)
            count += list(results).count(0)
        self.assertStatus(q.BCM_E_FULL, status)
        self.assertGreaterEqual(count, 1000000)

        table = q.getHwMacTable(0)
        self.assertEqual(len(table), count)
        for number in list(xrange(0, count, 9973)) + [count - 1]:
            mac = '02:00:%02x:%02x:%02x:%02x' % struct.unpack('4B', struct.pack('>I', number))
            self.assertEqual(table[number], (mac, 1, LOCAL_PORT + 5, 'dynamic'))
        del table

        self.assertStatus(q.BCM_E_FULL, q.bcm_l2_addr_add(0, self.address(A, port=6)))
        self.assertStatus(q.BCM_E_FULL, self.learn(6, A))
        self.enter('02:00:00:00:00:00', port=7)  # replacing takes no room
        self.done(q.bcm_l2_addr_delete(0, '02:00:00:00:00:01', 1))
        self.done(self.learn(6, A))
        self.assertEqual((self.port_of(A), self.port_of('02:00:00:00:00:00')), (6, 7))

        conflicts, found = (Address * 3)(), ctypes.c_int(-1)
        subject = self.address('02:00:00:00:00:02')
        self.done(library.bcm_l2_conflict_get(0, pointer(subject), conflicts, 3, ctypes.byref(found)))
        others = [address.mac_text() for address in conflicts[:found.value]]
        self.assertTrue(others and subject.mac not in others and len(set(others)) == len(others), others)

        self.done(q.bcm_l2_addr_delete_by_port(0, 0, 5, 0))
        self.assertEqual(self.macs(), ['02:00:00:00:00:00', A])


if __name__ == '__main__':
    unittest.main()
