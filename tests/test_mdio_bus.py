"""The chip's MDIO buses."""
import unittest

import QuorelApiNew as q
from phy import COPPER, COPPER_PORTS, PhyTest, SERDES
from simulator import call_with_nulls, FRONT_PORTS, library

BUSES = range(8)
OUTSIDE = 0                   # the bus of the copper PHYs
VENDOR, OWN = q.SOC_PHY_DEVICE_VENDOR1, 0x4321
NOBODY = 31                   # an address without PHY on the outside bus
NAMES = ('bus_reset bus_enable_set bus_enable_get clock_set clock_get probe read write c45_read c45_write '
         'stat_get stat_clear').split()


def place_of(port, internal=False):
    """(bus, address)"""
    return divmod((q.soc_phy_addr_int_of_port if internal else q.soc_phy_addr_of_port)(0, port), 32)


class Buses(PhyTest):
    def reset(self):
        PhyTest.reset(self)
        for bus in BUSES:
            self.done(q.soc_mdio_bus_reset(0, bus))

    def half_word(self, getter, *args):
        data = q.uint16p()
        self.done(getter(0, *(args + (data,))))
        return data.value()

    def frames(self, bus):
        stat = q.soc_mdio_stat_t()
        self.done(q.soc_mdio_stat_get(0, bus, stat))
        return stat.reads, stat.writes, stat.errors

    def present(self, bus):
        return self.word(q.soc_mdio_probe, bus)

    def test_who_answers(self):
        self.assertEqual(self.value(q.soc_mdio_bus_count_get), len(BUSES))
        expected = dict.fromkeys(BUSES, 0)
        for bus, address in ([place_of(port, True) for port in FRONT_PORTS] +
                             [place_of(port) for port in COPPER_PORTS]):
            expected[bus] |= 1 << address
        self.assertEqual([self.present(bus) for bus in BUSES], [expected[bus] for bus in BUSES])
        self.assertEqual(bin(self.present(OUTSIDE)).count('1'), len(COPPER_PORTS))
        self.done(q.soc_phy_cfg_addr_set(0, COPPER, 0, 32 + 9))
        self.assertEqual((self.present(1), expected[OUTSIDE] - self.present(OUTSIDE)), (1 << 9, 1 << 2))
        self.done(q.soc_phyctrl_detach(0, COPPER))
        self.assertEqual(self.half_word(q.soc_mdio_read, 1, 9, q.SOC_PHY_REGISTER_ID0),
                         q.soc_phy_id0reg_get(0, COPPER))

    def test_registers_are_those_of_the_ports(self):
        for port, internal in ((COPPER, False), (COPPER, True), (SERDES, True)):
            place, flags = place_of(port, internal), q.SOC_PHY_INTERNAL * internal
            self.done(q.soc_mdio_c45_write(0, *place + (VENDOR, OWN, 0x100 + port + internal)))
            self.assertEqual(self.read(port, VENDOR << 16 | OWN, flags), 0x100 + port + internal)
            self.write(port, 17, 0x200 + port, flags)
            self.assertEqual(self.half_word(q.soc_mdio_read, *place + (17,)), 0x200 + port)
            self.assertEqual(self.half_word(q.soc_mdio_c45_read, *place + (q.SOC_PHY_DEVICE_AN, 2)),
                             q.soc_phy_id0reg_get(0, port))
            self.assertEqual(self.half_word(q.soc_mdio_c45_read, *place + (9, 0)), 0xffff)

    def test_a_frame_changes_the_link(self):
        place = place_of(COPPER)
        for value, link in ((1 << 11, 0), (1 << 12, 1)):  # power down, autonegotiation
            self.done(q.soc_mdio_write(0, *place + (q.SOC_PHY_REGISTER_CONTROL, value)))
            self.assertEqual((self.link(COPPER), self.value(q.bcm_port_link_status_get, COPPER)),
                             (link, link))
        self.assertEqual(self.changes(COPPER), 2)
        # The latch of the status register is read, once, on the bus too.
        status = [self.half_word(q.soc_mdio_read, *place + (q.SOC_PHY_REGISTER_STATUS,)) for _ in 'ab']
        self.assertEqual([bits >> 2 & 1 for bits in status], [0, 1])

    def test_frames_are_counted(self):
        data = q.uint16p()
        data.assign(77)
        bus, address = place_of(COPPER)
        self.half_word(q.soc_mdio_read, bus, address, 2)
        self.done(q.soc_mdio_write(0, bus, address, 17, 1))
        self.done(q.soc_mdio_c45_write(0, bus, address, VENDOR, OWN, 1))
        self.assertEqual(self.frames(bus), (1, 2, 0))
        for status in (q.soc_mdio_read(0, bus, NOBODY, 2, data), q.soc_mdio_write(0, bus, NOBODY, 17, 1),
                       q.soc_mdio_c45_read(0, bus, NOBODY, 1, 2, data),
                       q.soc_mdio_c45_write(0, bus, NOBODY, VENDOR, OWN, 1)):
            self.assertStatus(q.SOC_E_TIMEOUT, status)
        self.assertEqual((self.frames(bus), self.frames(bus + 1), data.value()), ((3, 4, 4), (0, 0, 0), 77))
        self.present(bus)
        self.assertEqual(self.frames(bus), (3 + 32, 4, 4 + 32 - len(COPPER_PORTS)))
        self.done(q.soc_mdio_stat_clear(0, bus))
        self.assertEqual(self.frames(bus), (0, 0, 0))
        stat = q.soc_mdio_stat_t()
        stat.reads = stat.writes = stat.errors = 9
        q.soc_mdio_stat_t_init(stat)
        self.assertEqual((stat.reads, stat.writes, stat.errors), (0, 0, 0))

    def test_disabled_and_reset(self):
        bus, address = place_of(SERDES, True)
        data, present = q.uint16p(), q.uintp()
        self.done(q.soc_mdio_clock_set(0, bus, 1000))
        self.half_word(q.soc_mdio_read, bus, address, 2)
        self.done(q.soc_mdio_bus_enable_set(0, bus, 0))
        for status in (q.soc_mdio_probe(0, bus, present), q.soc_mdio_read(0, bus, address, 2, data),
                       q.soc_mdio_write(0, bus, address, 17, 5),
                       q.soc_mdio_c45_read(0, bus, address, 1, 2, data),
                       q.soc_mdio_c45_write(0, bus, address, VENDOR, OWN, 5)):
            self.assertStatus(q.SOC_E_DISABLED, status)
        self.assertEqual((self.frames(bus), self.read(SERDES, 17), self.read(SERDES, VENDOR << 16 | OWN)),
                         ((1, 0, 0), 0, 0))
        self.assertEqual([self.value(q.soc_mdio_bus_enable_get, one) for one in (bus, bus + 1)], [0, 1])
        self.done(q.soc_mdio_bus_enable_set(0, bus, 1))
        self.assertEqual((self.half_word(q.soc_mdio_read, bus, address, 2), self.frames(bus)[0]),
                         (q.soc_phy_id0reg_get(0, SERDES), 2))
        self.done(q.soc_mdio_bus_enable_set(0, bus, 0))
        self.done(q.soc_mdio_bus_reset(0, bus))
        self.assertEqual((self.value(q.soc_mdio_bus_enable_get, bus), self.value(q.soc_mdio_clock_get, bus),
                          self.frames(bus)), (1, q.SOC_MDIO_CLOCK_DEFAULT, (0, 0, 0)))

    def test_clocks(self):
        for khz in (1, q.SOC_MDIO_CLOCK_MAX):
            self.done(q.soc_mdio_clock_set(0, 2, khz))
        for khz in (-1, 0, q.SOC_MDIO_CLOCK_MAX + 1):
            self.assertStatus(q.SOC_E_PARAM, q.soc_mdio_clock_set(0, 2, khz))
        self.assertEqual([self.value(q.soc_mdio_clock_get, bus) for bus in (2, 3)],
                         [q.SOC_MDIO_CLOCK_MAX, q.SOC_MDIO_CLOCK_DEFAULT])

    def test_what_is_refused(self):
        data = q.uint16p()
        data.assign(77)
        for address, reg in ((32, 0), (255, 0), (1, 32)):
            self.assertStatus(q.SOC_E_PARAM, q.soc_mdio_read(0, OUTSIDE, address, reg, data))
            self.assertStatus(q.SOC_E_PARAM, q.soc_mdio_write(0, OUTSIDE, address, reg, 0))
        for address, device in ((32, 1), (1, 0), (1, 32)):
            self.assertStatus(q.SOC_E_PARAM, q.soc_mdio_c45_read(0, OUTSIDE, address, device, 0, data))
            self.assertStatus(q.SOC_E_PARAM, q.soc_mdio_c45_write(0, OUTSIDE, address, device, 0, 0))
        self.assertEqual((self.frames(OUTSIDE), data.value()), ((0, 0, 0), 77))
        for bus in (-1, len(BUSES), 2 ** 31 - 1, -2 ** 31):
            for status in (q.soc_mdio_bus_reset(0, bus), q.soc_mdio_bus_enable_set(0, bus, 0),
                           q.soc_mdio_clock_set(0, bus, 100), q.soc_mdio_stat_clear(0, bus),
                           q.soc_mdio_read(0, bus, 1, 0, data), q.soc_mdio_write(0, bus, 1, 0, 0),
                           q.soc_mdio_probe(0, bus, q.uintp())):
                self.assertStatus(q.SOC_E_PARAM, status, bus)
        for name in NAMES:
            self.assertStatus(q.SOC_E_UNIT, call_with_nulls('soc_mdio_' + name, 15), name)
        for name in 'bus_count_get bus_enable_get clock_get probe read c45_read stat_get'.split():
            self.assertStatus(q.SOC_E_PARAM, call_with_nulls('soc_mdio_' + name, 0), name)
        library.soc_mdio_stat_t_init(None)

    def test_the_buses_of_a_new_unit(self):
        for _ in range(2):
            self.done(library.bcm_attach(3, None, None, 0))
            stat, clock = q.soc_mdio_stat_t(), q.intp()
            self.done(q.soc_mdio_stat_get(3, OUTSIDE, stat))
            self.done(q.soc_mdio_clock_get(3, OUTSIDE, clock))
            self.assertEqual((stat.reads, clock.value()), (0, q.SOC_MDIO_CLOCK_DEFAULT))
            self.done(q.soc_mdio_clock_set(3, OUTSIDE, 1))
            self.done(q.soc_mdio_probe(3, OUTSIDE, q.uintp()))
            self.done(q.bcm_detach(3))
        self.assertEqual((self.frames(OUTSIDE), self.value(q.soc_mdio_clock_get, OUTSIDE)),
                         ((0, 0, 0), q.SOC_MDIO_CLOCK_DEFAULT))


if __name__ == '__main__':
    unittest.main()
