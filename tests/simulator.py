"""What reaches the simulated switch from outside Python: packets, time, and C callers with C callbacks."""
import ctypes
import unittest

import QuorelApiNew as q
from recording import library

FRONT_PORTS = list(range(1, 65))
CPU_PORT = 0
DEFAULT_VLAN = 1
LOCAL_PORT, MODULE_PORT, TRUNK, BLACK_HOLE, SYSTEM_PORT = [kind << 26 for kind in (1, 2, 3, 4, 27)]  # gports


class PortBitmap(ctypes.Structure):
    """bcm_pbmp_t"""
    _fields_ = [('words', ctypes.c_uint32 * 18)]

    def __init__(self, ports=()):
        ctypes.Structure.__init__(self)
        for port in ports:
            self.words[port // 32] |= 1 << port % 32

    def ports(self):
        return [32 * word + bit for word, bits in enumerate(self.words) if bits
                for bit in range(32) if bits >> bit & 1]


class Vlan(ctypes.Structure):
    """bcm_vlan_data_t"""
    _fields_ = [('id', ctypes.c_uint16), ('members', PortBitmap), ('untagged', PortBitmap)]


class Address(ctypes.Structure):
    """bcm_l2_addr_t"""
    _fields_ = ([('flags', ctypes.c_uint32), ('station_flags', ctypes.c_uint32),
                 ('mac', ctypes.c_uint8 * 6), ('vid', ctypes.c_uint16)] +
                [(name, ctypes.c_int) for name in 'port modid tgid cos_dst cos_src l2mc_group'.split()] +
                [('block_bitmap', PortBitmap)] +
                [(name, ctypes.c_int) for name in 'auth group distribution_class encap_id age_state'.split()])

    def mac_text(self):
        return ':'.join('%02x' % byte for byte in self.mac)


traverse_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.POINTER(Address), ctypes.c_void_p)
change_callback = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.POINTER(Address), ctypes.c_int, ctypes.c_void_p)


def call_with_nulls(name, unit):
    """Status of a call in which every argument but the unit is 0 or null, records that are passed by value included."""
    return getattr(library, name)(unit, *[None] * 100)


def functions(prefix):
    """Names of the bound functions that take a unit, return a status and do something in the simulator."""
    return [name for name in dir(q) if name.startswith(prefix)
            and str(getattr(q, name).__doc__).startswith(name + '(unit') and hasattr(library, name)
            and call_with_nulls(name, -1) != q.BCM_E_UNAVAIL]


def pointer(record):
    return ctypes.c_void_p(int(record.this))


def age_step():
    return library.sim_l2_age_step(0)


def status_name(status):
    names = [name for name in dir(q) if name.startswith('BCM_E_') and getattr(q, name) == status]
    return names[0] if names else status


class SwitchTest(unittest.TestCase):
    """Each test has unit 0 as it was when attached, and leaves it so."""
    longMessage = True

    def setUp(self):
        self.reset()
        self.addCleanup(self.reset)

    def reset(self):
        q.bcm_l2_init(0)
        q.bcm_vlan_create(0, DEFAULT_VLAN)
        q.bcm_vlan_default_set(0, DEFAULT_VLAN)
        q.bcm_vlan_destroy_all(0)
        q.bcm_vlan_port_remove(0, DEFAULT_VLAN, [CPU_PORT])
        q.bcm_vlan_port_add(0, DEFAULT_VLAN, FRONT_PORTS, FRONT_PORTS)
        for port in [CPU_PORT] + FRONT_PORTS:
            q.bcm_port_enable_set(0, port, 1)
            q.bcm_port_speed_set(0, port, self.value(q.bcm_port_speed_max, port))
            q.bcm_port_pause_set(0, port, 0, 0)
            q.bcm_port_pause_addr_set(0, port, '00:00:00:00:00:00')
            q.bcm_port_untagged_vlan_set(0, port, DEFAULT_VLAN)
            q.bcm_port_learn_set(0, port, q.BCM_PORT_LEARN_ARL | q.BCM_PORT_LEARN_FWD)

    def assertStatus(self, expected, status, message=None):
        if status != expected:
            self.assertEqual(status_name(status), status_name(expected), message)

    def done(self, status):
        """The call has to have succeeded."""
        self.assertStatus(q.BCM_E_NONE, status)

    def address(self, mac, vid=1, **members):
        address = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(address, mac, vid)
        for name, value in members.items():
            setattr(address, name, value)
        return address

    def enter(self, mac, vid=1, **members):
        self.done(q.bcm_l2_addr_add(0, self.address(mac, vid, **members)))

    def learn(self, port, mac, vid=0):
        """Status of the arrival of a packet at the port from that address."""
        octets = (ctypes.c_uint8 * 6)(*[int(field, 16) for field in mac.split(':')])
        return library.sim_l2_learn(0, port, octets, vid)

    def find(self, mac, vid=1):
        """The entry of an address, or None."""
        status, address = q.bcm_l2_addr_get(0, mac, vid)
        if status != q.BCM_E_NOT_FOUND:
            self.done(status)
            return address

    def port_of(self, mac, vid=1):
        found = self.find(mac, vid)
        return found and found.port

    def macs(self):
        return [row[0] for row in q.getHwMacTable(0)]

    def value(self, getter, *args):
        """The int that a getter writes to its last argument."""
        result = q.intp()
        self.done(getter(0, *(args + (result,))))
        return result.value()

    def watch_changes(self):
        """A list to which the switch's callbacks append (operation, MAC, VLAN, port) from now on."""
        events = []
        callback = change_callback(lambda unit, address, operation, _: events.append(
            (operation, address[0].mac_text(), address[0].vid, address[0].port)))
        self.done(library.bcm_l2_addr_register(0, callback, None))
        self.addCleanup(library.bcm_l2_addr_unregister, 0, callback, None)
        return events
