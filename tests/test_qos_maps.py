"""Maps of priorities that ports share, by what packets become; what is in them is what ports say too."""
import struct
import unittest

import QuorelApiNew as q
from quorel import OUT, array, checked, sim

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
IN, EGRESS = q.BCM_QOS_MAP_INGRESS | q.BCM_QOS_MAP_L2, q.BCM_QOS_MAP_EGRESS | q.BCM_QOS_MAP_L2


class QosMaps(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        checked(q.bcm_vlan_port_add, 0, 1, [1, 2, 3], [])
        checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(port=2, vid=1, mac=B, flags=q.BCM_L2_STATIC))

    def create(self, flags):
        return checked(q.bcm_qos_map_create, 0, flags, OUT)

    def add(self, number, flags, **members):
        checked(q.bcm_qos_map_add, 0, flags, q.bcm_qos_map_t(**members), number)

    def sent(self, priority, cfi=0, port=1):
        """Priority and CFI with which a packet with a tag leaves port 2."""
        frame = sim.ethernet(B, A)
        tagged = frame[:12] + struct.pack('>HH', 0x8100, priority << 13 | cfi << 12 | 1) + frame[12:]
        (to, left), = self.switch.send(port, tagged)
        content, = struct.unpack('>H', left[14:16])
        self.assertEqual(to, 2)
        return content >> 13, content >> 12 & 1

    def of_port(self, port, priority, cfi=0):
        return checked(q.bcm_port_vlan_priority_map_get, 0, port, priority, cfi, OUT, OUT)

    def maps_of(self, port):
        return checked(q.bcm_qos_port_map_get, 0, port, OUT, OUT)

    def test_on_both_sides(self):
        arriving, leaving = self.create(IN), self.create(EGRESS)
        self.add(arriving, IN, pkt_pri=3, pkt_cfi=1, int_pri=12, color=q.bcmColorYellow)
        self.add(leaving, EGRESS, int_pri=12, color=q.bcmColorYellow, pkt_pri=6, pkt_cfi=1)
        self.assertEqual(self.sent(3, 1), (3, 1))
        for port in (1, 3):
            checked(q.bcm_qos_port_map_set, 0, port, arriving, -1)
        checked(q.bcm_qos_port_map_set, 0, 2, -1, leaving)
        self.assertEqual([self.maps_of(port) for port in (1, 2, 4)], [(arriving, -1), (-1, leaving), (-1, -1)])
        self.assertEqual([self.sent(3, 1, port) for port in (1, 3)], [(6, 1)] * 2)
        self.assertEqual(self.sent(3, 0), (3, 0))
        # What changes in the map changes at all of its ports, and one port may depart from it.
        self.add(leaving, EGRESS, int_pri=12, color=q.bcmColorYellow, pkt_pri=1)
        self.assertEqual(self.sent(3, 1), (1, 0))
        self.assertEqual(self.of_port(3, 3, 1), (12, q.bcmColorYellow))
        checked(q.bcm_port_vlan_priority_map_set, 0, 3, 3, 1, 5, q.bcmColorGreen)
        self.assertEqual([self.sent(3, 1, port) for port in (1, 3)], [(1, 0), (3, 1)])
        checked(q.bcm_qos_map_delete, 0, IN, q.bcm_qos_map_t(pkt_pri=3, pkt_cfi=1), arriving)
        self.assertEqual([self.of_port(port, 3, 1) for port in (1, 3)], [(3, q.bcmColorGreen)] * 2)
        checked(q.bcm_qos_map_delete, 0, EGRESS, q.bcm_qos_map_t(int_pri=12, color=q.bcmColorYellow), leaving)
        self.assertEqual(q.bcm_port_vlan_priority_unmap_get(0, 2, 12, q.bcmColorYellow, q.intp(), q.intp()),
                         q.BCM_E_NOT_FOUND)

    def test_ports_take_and_leave_them(self):
        first, second = self.create(IN), self.create(IN)
        for number, internal in ((first, 9), (second, 10)):
            self.add(number, IN, pkt_pri=2, int_pri=internal)
        used = lambda number: checked(q.bcm_qos_map_used_get, 0, number, OUT)
        checked(q.bcm_qos_port_map_type_set, 0, 1, IN, first)
        checked(q.bcm_qos_port_map_type_set, 0, 4, IN, first)
        self.assertEqual((used(first), self.of_port(4, 2)), (2, (9, 0)))
        checked(q.bcm_qos_port_map_set, 0, 4, second, -1)
        checked(q.bcm_qos_port_map_set, 0, 4, -1, -1)                   # leaves it
        self.assertEqual((used(first), used(second), self.of_port(4, 2)), (1, 1, (10, 0)))
        self.assertEqual(q.bcm_qos_map_destroy(0, second), q.BCM_E_BUSY)
        checked(q.bcm_qos_port_map_type_set, 0, 4, IN, -1)
        self.assertEqual((self.of_port(4, 2), checked(q.bcm_qos_port_map_type_get, 0, 4, IN, OUT)), ((2, 0), -1))
        checked(q.bcm_qos_map_destroy, 0, second)
        self.assertEqual(q.bcm_qos_map_used_get(0, second, q.intp()), q.BCM_E_NOT_FOUND)
        # A map of the same number begins empty.
        self.assertEqual((self.create(IN), checked(q.bcm_qos_map_multi_get, 0, IN, second, 0, None, OUT)), (second, 0))
        checked(q.bcm_qos_init, 0)
        self.assertEqual((self.of_port(1, 2), self.maps_of(1)), ((2, 0), (-1, -1)))
        self.assertEqual(q.bcm_qos_map_used_get(0, first, q.intp()), q.BCM_E_NOT_FOUND)

    def test_lists(self):
        given = [self.create(flags) for flags in (IN, EGRESS, IN)]
        for priority in (5, 1):
            self.add(given[0], IN, pkt_pri=priority, int_pri=priority + 8)
        records = array('bcm_qos_map_t', 3)
        count = checked(q.bcm_qos_map_multi_get, 0, IN, given[0], 3, records, OUT)
        self.assertEqual([(line.pkt_pri, line.int_pri) for line in list(records)[:count]], [(1, 9), (5, 13)])
        ids, flags, count = checked(q.bcm_qos_multi_get, 0, 3, OUT[3], OUT[3], OUT)
        self.assertEqual((sorted(zip(ids, flags)), count), (list(zip(given, (IN, EGRESS, IN))), 3))

    def test_refusals(self):
        number, other = self.create(IN), q.intp()
        param, missing, unavailable = q.BCM_E_PARAM, q.BCM_E_NOT_FOUND, q.BCM_E_UNAVAIL
        line = q.bcm_qos_map_t
        for status, call in (
                (param, lambda: q.bcm_qos_map_create(0, 0, other)),
                (param, lambda: q.bcm_qos_map_create(0, IN | EGRESS, other)),
                (param, lambda: q.bcm_qos_map_create(0, IN | q.BCM_QOS_MAP_L3, other)),
                (unavailable, lambda: q.bcm_qos_map_create(0, q.BCM_QOS_MAP_INGRESS | q.BCM_QOS_MAP_L3, other)),
                (param, lambda: q.bcm_qos_map_add(0, EGRESS, line(), number)),
                (missing, lambda: q.bcm_qos_map_add(0, IN, line(), number + 1)),
                (param, lambda: q.bcm_qos_map_add(0, IN, line(pkt_pri=8), number)),
                (param, lambda: q.bcm_qos_map_add(0, IN, line(int_pri=16), number)),
                (unavailable, lambda: q.bcm_qos_map_add(0, IN, line(port_offset=1), number)),
                (param, lambda: q.bcm_qos_port_map_set(0, 1, -1, number)),
                (missing, lambda: q.bcm_qos_port_map_set(0, 1, number, number + 1)),
                (q.BCM_E_PORT, lambda: q.bcm_qos_port_map_set(0, 99, number, -1)),
                (missing, lambda: q.bcm_qos_map_destroy(0, number + 1))):
            self.assertEqual(call(), status)
        self.assertEqual(self.maps_of(1), (-1, -1))
        self.assertEqual([self.create(IN) for _ in range(63)], list(range(2, 65)))
        self.assertEqual(q.bcm_qos_map_create(0, IN, other), q.BCM_E_FULL)
        checked(q.bcm_qos_detach, 0)
        self.assertEqual(q.bcm_qos_map_create(0, IN, other), q.BCM_E_INIT)
        checked(q.bcm_qos_init, 0)


if __name__ == '__main__':
    unittest.main()
