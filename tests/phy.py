"""What tests of PHYs share."""
import ctypes

import QuorelApiNew as q
from recording import library
from simulator import CPU_PORT, FRONT_PORTS, SwitchTest
from type_table import pointer_at

SERDES, COPPER = 5, 34  # a port with a SerDes only, and one with a copper PHY behind it
COPPER_PORTS = range(33, 49)
LINE, SYSTEM = 0, 1

reset_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)
# Its status is not looked at.
medium_callback = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)


class PhyConfig(ctypes.Structure):
    """soc_phy_config_t"""
    _fields_ = [(name, ctypes.c_int) for name in 'enable preferred autoneg_enable'.split()] + [
        ('autoneg_advert', ctypes.c_uint32)] + [
        (name, ctypes.c_int) for name in 'force_speed force_duplex master mdix'.split()]


class CableDiagnosis(ctypes.Structure):
    """soc_port_cable_diag_t"""
    _fields_ = [('state', ctypes.c_int), ('npairs', ctypes.c_int), ('pair_state', ctypes.c_int * 4),
                ('pair_len', ctypes.c_int * 4), ('fuzz_len', ctypes.c_int)]


class Ability(ctypes.Structure):
    """soc_port_ability_t"""
    _fields_ = [(name, ctypes.c_uint32) for name in 'speed_half_duplex speed_full_duplex pause interface '
                'medium loopback flags eee fec'.split()]


TYPES = {PhyConfig: '_p__shr_phy_config_s', CableDiagnosis: '_p__shr_port_cable_diag_s',
         Ability: '_p__shr_port_ability_s'}


def at(record):
    """A pointer object to the record, which has to outlive it."""
    return pointer_at(ctypes.addressof(record), TYPES[type(record)])


class PhyTest(SwitchTest):
    """Each test has the PHYs as at the start, their firmware apart, and leaves them so."""

    def reset(self):
        for port in COPPER_PORTS + [CPU_PORT, SERDES]:
            q.bcm_port_enable_set(0, port, 1)
        for step in (q.soc_init, q.soc_phy_deinit, q.soc_phy_init, q.soc_phy_common_init,
                     q.soc_phyctrl_software_init):
            self.done(step(0))
        for port in FRONT_PORTS:
            self.done(q.soc_phy_port_init(0, port))
            self.plug(port, q.SOC_PHY_MEDIUM_COPPER if port in COPPER_PORTS else q.SOC_PHY_MEDIUM_FIBER)
            self.changes(port)

    def plug(self, port, *media, **length):
        self.done(library.sim_cable_plug(0, port, sum(1 << medium for medium in media),
                                         length.get('metres', 10)))

    def word(self, getter, *args):
        """The uint32 that a getter writes to its last argument."""
        result = q.uintp()
        self.done(getter(0, *(args + (result,))))
        return result.value()

    def link(self, port):
        return self.value(q.soc_phyctrl_link_get, port)

    def speed(self, port):
        return self.value(q.soc_phyctrl_speed_get, port)

    def negotiation(self, port):
        """(on, done)"""
        an, done = q.intp(), q.intp()
        self.done(q.soc_phyctrl_auto_negotiate_get(0, port, an, done))
        return an.value(), done.value()

    def control(self, port, name):
        return self.word(q.soc_phyctrl_control_get, port, getattr(q, 'SOC_PHY_CONTROL_' + name))

    def set_control(self, port, name, value):
        self.done(q.soc_phyctrl_control_set(0, port, getattr(q, 'SOC_PHY_CONTROL_' + name), value))

    def changes(self, port):
        """How often the link has changed since the last call."""
        return self.control(port, 'LINK_CHANGES')

    def read(self, port, address, flags=0):
        return self.word(q.soc_phyctrl_reg_read, port, flags, address)

    def write(self, port, address, value, flags=0):
        self.done(q.soc_phyctrl_reg_write(0, port, flags, address, value))
