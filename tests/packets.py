"""What tests of packets share: frames, their arrival, and what leaves."""
import ctypes
import struct

import QuorelApiNew as q
from recording import library
from simulator import CPU_PORT, FRONT_PORTS, SwitchTest

A, B, C = ['02:00:5e:00:00:0%d' % number for number in (1, 2, 3)]
ALL, GROUP, BRIDGES = 'ff:ff:ff:ff:ff:ff', '01:00:5e:00:00:01', '01:80:c2:00:00:00'
STATISTICS = [name for name in dir(q) if name.startswith('snmp') and name != 'snmpValCount']
ARP, IP4, VLAN, CONTROL = 0x806, 0x800, 0x8100, 0x8808
packet_watcher = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.POINTER(ctypes.c_char), ctypes.c_int,
                                  ctypes.c_void_p)


def frame(to, source, *words, **members):
    """Words of 16 bits follow the addresses; size is what it has with checksum."""
    head = ''.join(chr(int(field, 16)) for mac in (to, source) for field in mac.split(':'))
    return (head + struct.pack('>%dH' % len(words), *words)).ljust(members.get('size', 64) - 4, '\0')


def arrive(port, data, unit=0):
    return library.sim_packet_arrive(unit, port, data, len(data))


class PacketTest(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        self.left = []
        watcher = packet_watcher(lambda unit, port, data, size, _: self.left.append((port, data[:size])))
        library.sim_packet_watch(watcher, None)
        self.addCleanup(lambda _: library.sim_packet_watch(None, None), watcher)  # which lives as long

    def reset(self):
        SwitchTest.reset(self)
        for step in (q.bcm_stat_init, q.bcm_stg_init, q.bcm_trunk_init):
            self.done(step(0))
        for port in [CPU_PORT] + FRONT_PORTS:
            q.bcm_port_frame_max_set(0, port, 9216)
            q.bcm_port_discard_set(0, port, q.BCM_PORT_DISCARD_NONE)
            q.bcm_port_vlan_member_set(0, port, 0)

    def sent(self, port, data):
        """[(port, frame)] that leave when one arrives."""
        del self.left[:]
        self.done(arrive(port, data))
        return self.left[:]

    def ports(self, port, *args, **members):
        return [to for to, _ in self.sent(port, frame(*args, **members))]

    def vlan(self, vid, tagged=(), untagged=()):
        self.done(q.bcm_vlan_create(0, vid))
        self.done(q.bcm_vlan_port_add(0, vid, list(tagged) + list(untagged), list(untagged)))

    def trunk(self, tid, ports, flags=0):
        self.assertEqual(q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, tid), [0, tid])
        for port in ports:
            member = q.bcm_trunk_member_t()
            member.gport, member.flags = port, flags
            self.done(q.bcm_trunk_member_add(0, tid, member))

    def counted(self, port):
        """The statistics of a port that are not 0, by name without snmp."""
        types = (ctypes.c_int * len(STATISTICS))(*[getattr(q, name) for name in STATISTICS])
        values = (ctypes.c_uint64 * len(STATISTICS))()
        self.done(library.bcm_stat_multi_get(0, port, len(STATISTICS), types, values))
        return dict((name[4:], value) for name, value in zip(STATISTICS, values) if value)
