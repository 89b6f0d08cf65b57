"""Which member of a trunk sends, when members fail and come back."""
import unittest

import QuorelApiNew as q
from quorel import array, checked, OUT, sim

B = '02:00:00:00:ff:01'
MEMBERS = [11, 12, 13, 14]
FLOWS = range(120)


class Members(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        self.make()
        checked(q.bcm_l2_addr_add, 0, q.bcm_l2_addr_t(mac=B, vid=1, flags=q.BCM_L2_TRUNK_MEMBER | q.BCM_L2_STATIC, tgid=5))

    def make(self, trunk=5, members=MEMBERS, **settings):
        checked(q.bcm_trunk_create, 0, q.BCM_TRUNK_FLAG_WITH_ID, trunk)
        info = q.bcm_trunk_info_t()
        q.bcm_trunk_info_t_init(info)
        for name, value in settings.items():
            setattr(info, name, value)
        records = [q.bcm_trunk_member_t(gport=port) for port in members]
        checked(q.bcm_trunk_set, 0, trunk, info, 0, None)
        for record in records:
            checked(q.bcm_trunk_member_add, 0, trunk, record)

    def flags(self, flags):
        info = q.bcm_trunk_info_t()
        q.bcm_trunk_info_t_init(info)
        info.flags = flags
        members = array('bcm_trunk_member_t', [q.bcm_trunk_member_t(gport=port) for port in MEMBERS])
        checked(q.bcm_trunk_set, 0, 5, info, len(MEMBERS), members)

    def chosen(self):
        """The port of each flow."""
        ports = []
        for flow in FLOWS:
            left = self.switch.send(1, sim.ethernet(B, '02:00:00:00:00:%02x' % flow))
            self.assertEqual(len(left), 1)
            ports.append(left[0][0])
        return ports

    def test_a_member_that_is_down(self):
        before = self.chosen()
        self.assertEqual(set(before), set(MEMBERS))
        self.switch.pull(12)
        self.assertEqual(set(self.chosen()), set([11, 13, 14]))
        checked(q.bcm_trunk_failover_set, 0, 5, 12, q.BCM_TRUNK_PSC_SRCMAC, 0, 2, array('bcm_gport_t', [13, 14]))
        after = self.chosen()
        self.assertEqual([new for new, old in zip(after, before) if old != 12], [old for old in before if old != 12])
        self.assertEqual(set(new for new, old in zip(after, before) if old == 12), set([13, 14]))
        checked(q.bcm_trunk_failover_set, 0, 5, 13, q.BCM_TRUNK_PSC_SRCMAC, 0, 1, array('bcm_gport_t', [14]))
        self.switch.pull(13)
        moved = set(new for new, old in zip(self.chosen(), before) if old == 12)
        self.assertEqual(moved, set([14]))
        for port in (12, 13):
            self.switch.plug(port)
        self.assertEqual(self.chosen(), before)

    def test_what_a_failover_is_told(self):
        gports, psc, flags, count = array('bcm_gport_t', 4), q.intp(), array('uint32', 1), q.intp()

        def told():
            checked(q.bcm_trunk_failover_get, 0, 5, 12, psc, flags, 4, gports, count)
            return psc.value(), list(gports)[:count.value()]
        self.assertEqual(told()[1], [])
        checked(q.bcm_trunk_failover_set, 0, 5, 12, q.BCM_TRUNK_PSC_DSTIP, 0, 1, array('bcm_gport_t', [14]))
        self.assertEqual(told(), (q.BCM_TRUNK_PSC_DSTIP, [14]))
        for status, port, criterion, to in ((q.BCM_E_NOT_FOUND, 20, 1, 11), (q.BCM_E_NOT_FOUND, 12, 1, 20),
                                            (q.BCM_E_PARAM, 12, 13, 11), (q.BCM_E_NOT_FOUND, 12, 1, 12),
                                            (q.BCM_E_PORT, 12, 1, 65)):
            self.assertEqual(q.bcm_trunk_failover_set(0, 5, port, criterion, 0, 1, array('bcm_gport_t', [to])), status)
        self.assertEqual(told(), (q.BCM_TRUNK_PSC_DSTIP, [14]))
        checked(q.bcm_trunk_member_delete, 0, 5, q.bcm_trunk_member_t(gport=12))
        checked(q.bcm_trunk_member_add, 0, 5, q.bcm_trunk_member_t(gport=12))
        self.assertEqual(told()[1], [])

    def test_the_next_member(self):
        self.flags(q.BCM_TRUNK_FLAG_FAILOVER_NEXT)
        before = self.chosen()
        for down in ([14], [14, 11]):
            self.switch.pull(down[-1])
            follower = {11: 12 if 11 in down else 11, 14: 12 if 11 in down else 11}
            self.assertEqual(self.chosen(), [follower.get(port, port) for port in before])

    def test_resilient_flows_stay(self):
        self.flags(q.BCM_TRUNK_FLAG_RESILIENT)
        before = self.chosen()
        self.assertEqual(set(before), set(MEMBERS))
        self.switch.pull(13)
        after = self.chosen()
        self.assertEqual([new for new, old in zip(after, before) if old != 13], [old for old in before if old != 13])
        self.assertEqual(set(new for new, old in zip(after, before) if old == 13), set([11, 12, 14]))

    def test_another_trunk_takes_over(self):
        self.make(6, [21, 22])
        info = q.bcm_trunk_info_t()
        q.bcm_trunk_info_t_init(info)
        self.assertEqual(info.backup_tid, -1)
        info.backup_tid = 6
        checked(q.bcm_trunk_set, 0, 5, info, 4, array('bcm_trunk_member_t', [q.bcm_trunk_member_t(gport=port)
                                                                             for port in MEMBERS]))
        self.assertTrue(set(self.chosen()) <= set(MEMBERS))
        for port in MEMBERS:
            self.switch.pull(port)
        self.assertEqual(set(self.chosen()), set([21, 22]))

    def test_the_module(self):
        checked(q.bcm_trunk_detach, 0)
        for call in ((q.bcm_trunk_create, 0, q.intp()), (q.bcm_trunk_psc_set, 5, 1), (q.bcm_trunk_detach,)):
            status = call[0](0, *call[1:])
            self.assertEqual(status[0] if isinstance(status, list) else status, q.BCM_E_INIT)
        checked(q.bcm_trunk_init, 0)
        self.assertEqual(q.bcm_trunk_psc_set(0, 5, 1), q.BCM_E_NOT_FOUND)


if __name__ == '__main__':
    unittest.main()
