"""Layer-2 multicast by address: entries, their ports, and the packets that go there."""
import random
import unittest

import QuorelApiNew as q
from quorel import checked, OUT, sim

A = '02:00:00:00:00:01'
GROUPS = ['01:00:5e:00:00:%02x' % number for number in range(4)]
PORTS = range(1, 7)


class Addresses(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_vlan_port_remove, 0, 1, [port for port in sim.FRONT_PORTS if port not in PORTS])

    def ports(self, to, port=1):
        return [left for left, _ in self.switch.send(port, sim.ethernet(to, A))]

    def entry(self, group=GROUPS[0], vid=1, **members):
        return q.bcm_mcast_addr_t(mac=group, vid=vid, **members)

    def found(self, group=GROUPS[0]):
        return checked(q.bcm_mcast_port_get, 0, group, 1, OUT)

    def test_the_life_of_an_entry(self):
        group = GROUPS[0]
        checked(q.bcm_mcast_addr_add, 0, self.entry(pbmp=[2, 3], flags=q.BCM_MCAST_L2_COPY_TO_CPU))
        self.assertEqual(q.bcm_mcast_addr_add(0, self.entry(pbmp=[4])), q.BCM_E_EXISTS)
        self.assertEqual(self.ports(group), [sim.CPU_PORT, 2, 3])
        checked(q.bcm_mcast_port_add, 0, self.entry(pbmp=[4]))
        checked(q.bcm_mcast_port_remove, 0, self.entry(pbmp=[2]))
        found = self.found()
        self.assertEqual((list(found.pbmp), list(found.ubmp), found.flags), ([3, 4], [3, 4], q.BCM_MCAST_L2_COPY_TO_CPU))
        self.assertEqual(self.ports(group), [sim.CPU_PORT, 3, 4])
        for call in ((q.bcm_mcast_port_add, self.entry(GROUPS[1])), (q.bcm_mcast_addr_remove, GROUPS[1], 1),
                     (q.bcm_mcast_port_get, GROUPS[1], 1, q.bcm_mcast_addr_t())):
            self.assertEqual(call[0](0, *call[1:]), q.BCM_E_NOT_FOUND, call)
        checked(q.bcm_mcast_addr_remove, 0, group, 1)
        self.assertEqual(self.ports(group), PORTS[1:])

    def test_what_is_refused(self):
        for entry in (self.entry(A), self.entry(vid=0), self.entry(vid=4095), self.entry(pbmp=[65]), self.entry(flags=4),
                      self.entry(ubmp=[1]), self.entry(flags=q.BCM_MCAST_L2_INDEX_GIVEN, l2mc_index=8192)):
            self.assertEqual(q.bcm_mcast_addr_add(0, entry), q.BCM_E_PARAM, entry)
        self.assertEqual(q.bcm_mcast_join(0, GROUPS[0], 1, 65, q.bcm_mcast_addr_t()), q.BCM_E_PORT)
        checked(q.bcm_mcast_detach, 0)
        for call in ((q.bcm_mcast_addr_add, self.entry()), (q.bcm_mcast_addr_remove_all, 0), (q.bcm_mcast_bitmap_set, 1, [])):
            self.assertEqual(call[0](0, *call[1:]), q.BCM_E_INIT)
        checked(q.bcm_mcast_init, 0)
        checked(q.bcm_mcast_addr_add, 0, self.entry())

    def test_reports_and_leaves_by_chance(self):
        """Entries are what is left of all joins and leaves."""
        chance, members, out = random.Random(5), dict((group, set()) for group in GROUPS), q.bcm_mcast_addr_t()
        for _ in range(300):
            group, port = chance.choice(GROUPS), chance.choice(PORTS)
            if chance.random() < 0.55:
                checked(q.bcm_mcast_join, 0, group, 1, port, out)
                members[group].add(port)
            else:
                status = q.bcm_mcast_leave(0, group, 1, port, out)
                self.assertEqual(status, 0 if members[group] else q.BCM_E_NOT_FOUND)
                members[group].discard(port)
            if members[group]:
                self.assertEqual(set(out.pbmp), members[group])
            for each in GROUPS:
                self.assertEqual(self.ports(each), sorted((members[each] or set(PORTS)) - set([1])))
        self.assertEqual(len(q.getHwMacTable(0)), 1 + len([group for group in GROUPS if members[group]]))

    def test_lines_and_their_entries(self):
        checked(q.bcm_mcast_addr_add, 0, self.entry(GROUPS[0], flags=q.BCM_MCAST_L2_INDEX_GIVEN, l2mc_index=9, pbmp=[2]))
        checked(q.bcm_mcast_addr_add, 0, self.entry(GROUPS[1], flags=q.BCM_MCAST_L2_INDEX_GIVEN, l2mc_index=9, pbmp=[3]))
        self.assertEqual((self.ports(GROUPS[0]), self.found().l2mc_index), ([3], 9))
        checked(q.bcm_mcast_addr_remove, 0, GROUPS[0], 1)
        self.assertEqual(self.ports(GROUPS[1]), [3])
        checked(q.bcm_mcast_bitmap_set, 0, 9, [4])
        self.assertEqual(self.ports(GROUPS[1]), [4])
        checked(q.bcm_mcast_addr_add, 0, self.entry(GROUPS[2], pbmp=[5]))
        self.assertEqual(self.found(GROUPS[2]).l2mc_index, 1)
        checked(q.bcm_mcast_addr_remove_all, 0, 1)
        self.assertEqual([self.ports(group) for group in GROUPS[:3]], [PORTS[1:]] * 3)

    def test_a_trunk_that_receives(self):
        trunk = q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, 3)[1]
        self.assertEqual(q.bcm_trunk_mcast_join(0, 4, 1, GROUPS[0]), q.BCM_E_NOT_FOUND)
        for port in (5, 6):
            checked(q.bcm_trunk_member_add, 0, trunk, q.bcm_trunk_member_t(gport=port))
        checked(q.bcm_mcast_addr_add, 0, self.entry(pbmp=[2]))
        checked(q.bcm_trunk_mcast_join, 0, trunk, 1, GROUPS[0])
        left = self.ports(GROUPS[0])
        self.assertEqual((left[0], len(left)), (2, 2))
        self.assertIn(left[1], (5, 6))


if __name__ == '__main__':
    unittest.main()
