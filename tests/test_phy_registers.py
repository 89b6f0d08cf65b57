"""Registers, controls, firmware and tables of PHYs."""
import ctypes
import unittest
import zlib

import QuorelApiNew as q
from phy import COPPER, COPPER_PORTS, LINE, PhyTest, SERDES, SYSTEM
from simulator import CPU_PORT, FRONT_PORTS, library
from type_table import pointer_at

CONTROL, STATUS, ADVERT, GIGABIT = (q.SOC_PHY_REGISTER_CONTROL, q.SOC_PHY_REGISTER_STATUS,
                                    q.SOC_PHY_REGISTER_AN_ADVERT, q.SOC_PHY_REGISTER_GIGABIT_CONTROL)
RESET, LOOPBACK, SPEED_100, NEGOTIATE, DOWN, RESTART, FULL, SPEED_1000 = [
    1 << bit for bit in (15, 14, 13, 12, 11, 9, 8, 6)]
LINK_UP, DONE = 1 << 2, 1 << 5
PMA, PCS, XS, AN, VENDOR = [device << 16 for device in (
    q.SOC_PHY_DEVICE_PMA_PMD, q.SOC_PHY_DEVICE_PCS, q.SOC_PHY_DEVICE_PHY_XS, q.SOC_PHY_DEVICE_AN,
    q.SOC_PHY_DEVICE_VENDOR1)]
LANES = 4


def control_register(name):
    """The maker's register with the lower half of a control."""
    return VENDOR + 0x8000 + 2 * getattr(q, 'SOC_PHY_CONTROL_' + name)


class Registers(PhyTest):
    def test_control_register_and_settings_are_one(self):
        self.assertEqual(self.read(COPPER, CONTROL), SPEED_100 | SPEED_1000 | NEGOTIATE | FULL)
        self.write(COPPER, CONTROL, SPEED_100)
        self.assertEqual((self.speed(COPPER), self.value(q.soc_phyctrl_duplex_get, COPPER),
                          self.negotiation(COPPER)),
                         (100, 0, (0, 0)))
        self.write(COPPER, CONTROL, LOOPBACK | SPEED_1000 | FULL)
        self.assertEqual((self.speed(COPPER), self.value(q.soc_phyctrl_loopback_get, COPPER)), (1000, 1))
        self.write(COPPER, CONTROL, DOWN | SPEED_1000 | FULL)
        self.assertEqual((self.value(q.soc_phyctrl_enable_get, COPPER), self.link(COPPER)), (0, 0))
        self.done(q.soc_phyctrl_enable_set(0, COPPER, 1))
        self.done(q.soc_phyctrl_speed_set(0, COPPER, 10))
        self.done(q.soc_phyctrl_loopback_set(0, COPPER, 1, 0))
        self.assertEqual(self.read(COPPER, CONTROL), LOOPBACK | FULL)
        self.write(COPPER, CONTROL, RESET)
        self.assertEqual((self.read(COPPER, CONTROL) & RESET, self.speed(COPPER)), (0, 10000))
        # A speed that there is not is dropped, the rest of the value is not.
        self.write(COPPER, CONTROL, SPEED_100 | SPEED_1000 | 3 << 2)
        self.assertEqual((self.speed(COPPER), self.negotiation(COPPER)), (10000, (0, 0)))

    def test_both_halves_of_a_counter_are_of_one_reading(self):
        for name in ('PRBS_TX_ENABLE', 'PRBS_RX_ENABLE', 'LOOPBACK_PMD'):
            self.set_control(SERDES, name, 1)
        low = control_register('PRBS_RX_STATUS')
        for order in ((low, low + 1), (low + 1, low)):
            self.set_control(SERDES, 'PRBS_ERROR_INJECT', 70000)
            read = dict((address, self.read(SERDES, address)) for address in order)
            self.assertEqual(read[low + 1] << 16 | read[low], 70000)
            self.assertEqual([self.read(SERDES, address) for address in order], [0, 0])

    def test_the_same_by_clause_45(self):
        for code, speed in ((3, 100000), (5, 50000), (2, 40000), (4, 25000), (0, 10000)):
            self.write(SERDES, PMA, SPEED_100 | SPEED_1000 | code << 2)
            self.assertEqual((self.speed(SERDES), self.read(SERDES, PCS)),
                             (speed, SPEED_100 | SPEED_1000 | code << 2))
        for address, bit in ((PMA, 1), (PCS, LOOPBACK)):
            self.write(SERDES, address, bit)
            self.assertEqual((self.value(q.soc_phyctrl_loopback_get, SERDES), self.speed(SERDES)), (1, 10))
            self.write(SERDES, address, DOWN)
            self.assertEqual((self.value(q.soc_phyctrl_loopback_get, SERDES), self.link(SERDES)), (0, 0))
            self.write(SERDES, address, RESET)
        self.write(COPPER, AN, 0)
        self.assertEqual((self.negotiation(COPPER), self.read(COPPER, CONTROL) & NEGOTIATE), ((0, 0), 0))
        self.write(COPPER, XS, LOOPBACK)
        self.assertEqual(self.value(q.soc_phyctrl_redirect_loopback_get, COPPER, 1, -1, SYSTEM), 1)
        self.assertEqual([self.read(COPPER, device + 2) for device in (0, PMA, PCS, XS, AN)],
                         [q.soc_phy_id0reg_get(0, COPPER)] * 5)
        self.assertEqual(self.read(COPPER, PCS + 32), 1 << 12 | 1)
        for flags in (0, q.SOC_PHY_CLAUSE45):
            self.assertEqual(self.read(COPPER, 9 << 16, flags), 0xffff)

    def test_negotiation_by_registers(self):
        self.assertEqual([self.read(COPPER, register) for register in (ADVERT, AN + 16, GIGABIT, AN + 32)],
                         [0x05e1, 0x05e1, 1 << 9, 1 << 12])
        self.write(COPPER, AN + 32, 0)
        self.assertEqual(self.speed(COPPER), 1000)
        self.write(COPPER, GIGABIT, 1 << 12 | 1 << 11)
        self.assertEqual((self.speed(COPPER), self.value(q.soc_phyctrl_master_get, COPPER)),
                         (100, q.SOC_PHY_MS_MASTER))
        self.write(COPPER, ADVERT, 0x0841)
        self.assertEqual((self.speed(COPPER), self.word(q.soc_phyctrl_adv_local_get, COPPER)),
                         (10, q.SOC_PHY_ABILITY_10MB_FD | q.SOC_PHY_ABILITY_PAUSE_TX))
        self.assertEqual(self.read(COPPER, q.SOC_PHY_REGISTER_AN_PARTNER) & 0x5e0, 0x5e0)
        self.assertEqual((self.read(COPPER, AN + 33), self.read(COPPER, q.SOC_PHY_REGISTER_AN_EXPANSION)),
                         (1 << 11, 1))
        self.plug(COPPER)
        self.assertEqual([self.read(COPPER, register)
                          for register in (q.SOC_PHY_REGISTER_AN_PARTNER, AN + 33)],
                         [0, 0])
        self.plug(SERDES, q.SOC_PHY_MEDIUM_BACKPLANE)
        self.assertEqual(self.negotiation(SERDES), (1, 1))
        self.write(SERDES, AN + 17, 1 << 9)
        self.assertEqual((self.speed(SERDES), self.read(SERDES, AN + 20) & 1 << 13), (40000, 1 << 13))

    def test_a_lost_link_is_shown_once(self):
        def shown():
            return self.read(COPPER, STATUS) & (LINK_UP | DONE)
        self.assertEqual((shown(), shown()), (DONE, DONE | LINK_UP))
        self.plug(COPPER)
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER)
        self.assertEqual((shown(), shown()), (DONE, DONE | LINK_UP))
        self.write(COPPER, CONTROL, self.read(COPPER, CONTROL) | RESTART)
        self.assertEqual((self.read(COPPER, PMA + 1) & LINK_UP, shown()), (0, DONE | LINK_UP))
        self.set_control(COPPER, 'AUTONEG_RESTART', 1)
        self.assertEqual((shown(), shown()), (DONE, DONE | LINK_UP))

    def test_own_registers_by_lane_and_phy(self):
        address = VENDOR + 0x4321
        self.write(SERDES, address, 0x1234)
        self.done(q.soc_phyctrl_lane_reg_write(0, SERDES, 2, 0, address, 0xabcd))
        self.assertEqual([self.word(q.soc_phyctrl_lane_reg_read, SERDES, lane, 0, address)
                          for lane in range(LANES)],
                         [0x1234, 0x1234, 0xabcd, 0x1234])
        self.done(q.soc_phyctrl_reg_modify(0, SERDES, 0, address, 0xff00, 0x0f0f))
        self.assertEqual(self.read(SERDES, address), 0x1f34 & 0xf0f0 | 0x0f00)
        self.write(COPPER, address, 1)
        self.write(COPPER, address, 2, q.SOC_PHY_INTERNAL)
        self.assertEqual([self.read(COPPER, address, flags) for flags in (0, q.SOC_PHY_INTERNAL)], [1, 2])
        self.assertEqual(self.read(COPPER + 1, address), 0)
        self.write(SERDES, 7, 0x55)
        self.write(SERDES, 17, 0x55)
        self.assertEqual((self.read(SERDES, 7), self.read(SERDES, 17)), (0, 0x55))

    def test_by_address_on_the_bus(self):
        for port, internal in ((COPPER, 0), (COPPER, 1), (SERDES, 1)):
            address = (q.soc_phy_addr_int_of_port if internal else q.soc_phy_addr_of_port)(0, port)
            self.write(address, VENDOR + 1, 0x100 + address, q.SOC_PHY_NOMAP)
            self.assertEqual(self.read(port, VENDOR + 1, q.SOC_PHY_INTERNAL * internal), 0x100 + address)
        for address in (-1, 0, 255, 256, 2 ** 31 - 1):
            self.assertStatus(q.SOC_E_NOT_FOUND, q.soc_phyctrl_reg_write(0, address, q.SOC_PHY_NOMAP, 0, 0))

    def test_what_is_no_register(self):
        output = q.uintp()
        output.assign(77)
        for flags, address in ((0, 32), (q.SOC_PHY_CLAUSE45, 1), (0, 32 << 16), (0, 2 ** 32 - 1), (8, 0),
                               (2 ** 31, 0)):
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_reg_read(0, SERDES, flags, address, output))
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_reg_write(0, SERDES, flags, address, 0))
        for lane in (-1, LANES, 2 ** 31 - 1):
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_lane_reg_read(0, SERDES, lane, 0, 0, output))
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_lane_reg_write(0, SERDES, lane, 0, 0, 0))
        self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_reg_write(0, SERDES, 0, 17, 0x10000))
        self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_reg_modify(0, SERDES, 0, 17, 0, 0x10000))
        self.assertEqual(output.value(), 77)

    def test_a_phy_chip_shares_its_top_level(self):
        data = q.uint16p()
        self.done(q.soc_phyctrl_toplvl_reg_write(0, 34, 33, 255, 0xbeef))
        for port, expected in ((36, 0xbeef), (37, 0)):
            self.done(q.soc_phyctrl_toplvl_reg_read(0, port, 33 if port == 36 else 37, 255, data))
            self.assertEqual(data.value(), expected)
        for port, primary in ((34, 34), (34, 37), (34, -1), (34, 2 ** 31 - 1)):
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_toplvl_reg_read(0, port, primary, 0, data))
        self.assertRaises(OverflowError, q.soc_phyctrl_toplvl_reg_write, 0, 34, 33, 256, 0)
        self.assertRaises(OverflowError, q.soc_phyctrl_toplvl_reg_write, 0, 34, 33, 0, 65536)
        self.done(q.soc_phy_common_detach(0))
        self.assertStatus(q.SOC_E_INIT, q.soc_phyctrl_toplvl_reg_read(0, 34, 33, 0, data))


class Controls(PhyTest):
    def lane(self, lane, name, value=None):
        selector = getattr(q, 'SOC_PHY_CONTROL_' + name)
        if value is None:
            return self.word(q.soc_phyctrl_lane_control_get, SERDES, lane, selector)
        self.done(q.soc_phyctrl_lane_control_set(0, SERDES, lane, selector, value))

    def test_by_lane_and_in_registers(self):
        self.set_control(SERDES, 'TX_FIR_MAIN', 90)
        self.lane(3, 'TX_FIR_MAIN', 50)
        self.assertEqual([self.lane(lane, 'TX_FIR_MAIN') for lane in range(LANES)], [90, 90, 90, 50])
        self.assertEqual(self.word(q.soc_phyctrl_lane_reg_read, SERDES, 3, 0,
                                   control_register('TX_FIR_MAIN')), 50)
        minus_9 = 2 ** 32 - 9
        self.lane(1, 'TX_FIR_POST', minus_9)
        self.assertEqual([self.word(q.soc_phyctrl_lane_reg_read, SERDES, 1, 0,
                                    control_register('TX_FIR_POST') + half)
                          for half in (0, 1)], [0xfff7, 0xffff])
        # A value that neither half can take the place of alone waits for the other half, whichever is first.
        fir = control_register('TX_FIR_PRE')
        for value in (-5, 12, -1):
            halves = [(fir, value & 0xffff), (fir + 1, value >> 16 & 0xffff)]
            for order in (halves, halves[::-1]):
                self.set_control(SERDES, 'TX_FIR_PRE', 7)
                for address, half in order:
                    self.write(SERDES, address, half)
                self.assertEqual(self.control(SERDES, 'TX_FIR_PRE'), value & 0xffffffff, (value, order))
        # What cannot be is dropped, and does not come back.
        self.write(SERDES, fir, 0xfff0)
        self.set_control(SERDES, 'TX_FIR_PRE', 7)
        self.write(SERDES, fir + 1, 0)
        self.assertEqual(self.control(SERDES, 'TX_FIR_PRE'), 7)
        self.write(SERDES, control_register('PATTERN_DATA') + 1, 0x1234)
        self.write(SERDES, control_register('PATTERN_DATA'), 0x5678)
        self.assertEqual(self.control(SERDES, 'PATTERN_DATA'), 0x12345678)
        self.done(q.soc_phyctrl_redirect_control_set(0, COPPER, 0, 2, LINE, q.SOC_PHY_CONTROL_TX_SWING, 700))
        self.assertEqual([self.word(q.soc_phyctrl_redirect_control_get, COPPER, 0, 2, side,
                                    q.SOC_PHY_CONTROL_TX_SWING) for side in (LINE, SYSTEM)], [700, 900])

    def test_what_is_refused(self):
        for name, value in (('TX_FIR_MAIN', 128), ('TX_FIR_POST', 64), ('TX_FIR_POST', 2 ** 31), ('POWER', 4),
                            ('PRBS_POLYNOMIAL', 6), ('LANE_COUNT', 5), ('LANE_COUNT', 0),
                            ('LOOPBACK_MODE', 4)):
            before = self.control(SERDES, name)
            selector = getattr(q, 'SOC_PHY_CONTROL_' + name)
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_control_set(0, SERDES, selector, value), name)
            self.assertEqual(self.control(SERDES, name), before)
        for port, name in ((SERDES, 'EEE'), (COPPER, 'TX_SWING'), (SERDES, 'MACSEC_ENABLE'),
                           (SERDES, 'RX_BLOCK_LOCK')):
            self.assertStatus(q.SOC_E_UNAVAIL, q.soc_phyctrl_control_set(
                0, port, getattr(q, 'SOC_PHY_CONTROL_' + name), 1), name)
        output = q.uintp()
        for selector in (-1, q.SOC_PHY_CONTROL_DUMP + 2, 2 ** 31 - 1):
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_control_get(0, SERDES, selector, output))
        for lane in (-1, LANES):
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_lane_control_get(0, SERDES, lane, 0, output))

    def test_each_one_that_can_be_set_reads_as_set(self):
        names = dict((getattr(q, name), name) for name in dir(q) if name.startswith('SOC_PHY_CONTROL_'))
        settable, output = 0, q.uintp()
        for port in (SERDES, COPPER):
            for selector, name in names.items():
                if name.endswith(('_DUMP', '_RESET', '_RESTART', '_INJECT', '_COUNT')):
                    continue
                if q.soc_phyctrl_control_get(0, port, selector, output) == 0:
                    other = 1 - (output.value() & 1)
                    if q.soc_phyctrl_control_set(0, port, selector, other) == 0:
                        self.assertEqual(self.word(q.soc_phyctrl_control_get, port, selector), other, name)
                        settable += 1
                        self.done(q.soc_phy_port_init(0, port))
        self.assertGreater(settable, 70)

    def test_what_disturbs_the_link(self):
        for port, name in ((SERDES, 'TX_LANE_SQUELCH'), (SERDES, 'RX_POLARITY'), (SERDES, 'PRBS_TX_ENABLE'),
                           (COPPER, 'SUPERISOLATE'), (COPPER, 'LOOPBACK_REMOTE')):
            self.set_control(port, name, 1)
            self.assertEqual((self.link(port), self.control(port, 'RX_BLOCK_LOCK')), (0, 0), name)
            self.set_control(port, name, 0)
            self.assertEqual(self.link(port), 1)
        warm = self.control(SERDES, 'TEMPERATURE')
        self.set_control(SERDES, 'POWER', q.SOC_PHY_POWER_OFF)
        self.assertEqual((self.link(SERDES), self.control(SERDES, 'PLL_LOCK')), (0, 0))
        self.assertLess(self.control(SERDES, 'TEMPERATURE'), warm)

    def test_test_sequences(self):
        unlocked = 2 ** 32 - 1
        for name in ('PRBS_TX_ENABLE', 'PRBS_RX_ENABLE'):
            self.set_control(SERDES, name, 1)
        self.assertEqual((self.control(SERDES, 'PRBS_RX_LOCK'), self.control(SERDES, 'PRBS_RX_STATUS')),
                         (0, unlocked))
        self.set_control(SERDES, 'LOOPBACK_MODE', q.SOC_PHY_LOOPBACK_PMD)
        self.assertEqual((self.control(SERDES, 'PRBS_RX_LOCK'), self.control(SERDES, 'PRBS_RX_STATUS')),
                         (1, 0))
        self.lane(2, 'PRBS_ERROR_INJECT', 5)
        self.assertEqual([self.lane(lane, 'PRBS_RX_STATUS') for lane in (0, 2, 2)], [0, 5, 0])
        self.lane(2, 'PRBS_RX_INVERT_DATA', 1)
        self.assertEqual((self.lane(2, 'PRBS_RX_STATUS'), self.lane(1, 'PRBS_RX_STATUS')), (unlocked, 0))

    def test_error_correction(self):
        inject = (0, SERDES, q.SOC_PHY_CONTROL_FEC_ERROR_INJECT, 7)
        self.assertStatus(q.SOC_E_DISABLED, q.soc_phyctrl_control_set(*inject))
        self.set_control(SERDES, 'FEC_MODE', q.SOC_PHY_FEC_RS_528)
        self.assertEqual(self.control(SERDES, 'FEC_ACTIVE'), q.SOC_PHY_FEC_RS_528)
        self.done(q.soc_phyctrl_control_set(*inject))
        self.assertEqual([self.control(SERDES, 'FEC_' + name) for name in (
            'SYMBOL_ERRORS', 'SYMBOL_ERRORS', 'CORRECTED_BLOCKS', 'UNCORRECTED_BLOCKS')], [7, 0, 1, 0])
        self.plug(SERDES)
        self.assertEqual((self.control(SERDES, 'FEC_ACTIVE'), self.control(SERDES, 'FEC_LOCK')), (0, 0))


class Firmware(PhyTest):
    def load(self, text, offset=0, flags=0, port=SERDES, length=None):
        array = (ctypes.c_uint8 * max(1, len(text)))(*bytearray(text))
        return q.soc_phyctrl_firmware_set(0, port, flags, offset, pointer_at(
            ctypes.addressof(array), '_p_unsigned_char'), len(text) if length is None else length)

    def loaded(self, port=SERDES):
        return [self.control(port, 'FIRMWARE_' + name) for name in ('SIZE', 'CRC', 'RUNNING')]

    def test_whole_and_in_pieces(self):
        text = ''.join(chr(7 * i & 0xff) for i in range(1000))
        expected = [1000, zlib.crc32(text) & 0xffffffff, 1]
        self.done(self.load(text))
        self.assertEqual((self.loaded(), self.control(SERDES, 'FIRMWARE_VERSION')), (expected, 0x150e0700))
        self.done(self.load(text[:300], 0, q.SOC_PHY_FIRMWARE_BEGIN))
        self.assertEqual(self.loaded(), [300, zlib.crc32(text[:300]) & 0xffffffff, 0])
        self.assertStatus(q.SOC_E_PARAM, self.load(text[301:], 301, q.SOC_PHY_FIRMWARE_END))
        self.done(self.load(text[300:], 300, q.SOC_PHY_FIRMWARE_END))
        self.assertEqual(self.loaded(), expected)
        self.done(q.soc_phy_reset(0, SERDES))
        self.assertEqual(self.loaded(), expected)
        self.write(SERDES, VENDOR + 0x100, 500)
        self.assertEqual(self.read(SERDES, VENDOR + 0x102), ord(text[500]) | ord(text[501]) << 8)

    def test_into_all_phys_of_the_chip(self):
        self.done(self.load('other', port=9))
        self.done(self.load('same', flags=q.SOC_PHY_FIRMWARE_BROADCAST, port=6))
        self.assertEqual([self.loaded(port)[1] for port in (5, 6, 7, 8)],
                         [zlib.crc32('same') & 0xffffffff] * 4)
        self.assertEqual(self.loaded(9)[0], 5)

    def test_what_does_not_fit(self):
        self.done(self.load('before'))
        most = self.control(SERDES, 'FIRMWARE_SIZE_MAX')
        for text, offset, flags, length in (
                ('x', -1, 0, None), ('x', 7, 0, None), ('', 0, 0, 0), ('x', 0, 0, -1),
                ('x', -2 ** 31, 0, None),
                ('x', 2 ** 31 - 1, 0, None), ('x', 0, 0, 2 ** 31 - 1), ('x', 0, 0x80000000, None),
                ('x' * (most + 1), 0, 0, None), ('x' * most, 1, 0, None)):
            self.assertStatus(q.SOC_E_PARAM, self.load(text, offset, flags, length=length), (offset, length))
        self.assertStatus(q.SOC_E_UNAVAIL, self.load('x', 0, q.SOC_PHY_FIRMWARE_PERMANENT))
        self.assertEqual(self.loaded()[0], 6)
        self.done(self.load('x' * most))
        self.assertEqual(self.loaded()[0], most)


class Tables(PhyTest):
    def info(self, port):
        info = q.soc_phy_info_t()
        self.done(q.soc_phy_info_get(0, port, info))
        return info

    def test_names_identifiers_and_addresses(self):
        seen = set()
        for port in FRONT_PORTS:
            info, copper = self.info(port), port in COPPER_PORTS
            self.assertEqual((info.phy_name, info.phy_id0, info.phy_id1, info.phy_addr, info.phy_addr_int,
                              info.an_timeout),
                             (q.soc_phy_name_get(0, port), q.soc_phy_id0reg_get(0, port),
                              q.soc_phy_id1reg_get(0, port), q.soc_phy_addr_of_port(0, port),
                              q.soc_phy_addr_int_of_port(0, port), q.soc_phy_an_timeout_get(0, port)))
            self.assertEqual([self.read(port, register) for register in (2, 3)], [info.phy_id0, info.phy_id1])
            addresses = [info.phy_addr_int] + [info.phy_addr] * copper
            self.assertEqual([q.soc_phy_addr_to_port(0, address) for address in addresses],
                             [port] * len(addresses))
            seen.update(addresses)
            self.assertEqual((q.soc_phyctrl_drv_name(0, port), q.soc_phy_is_c45_miim(0, port)),
                             (info.phy_name, copper))
            self.assertEqual(bool(info.phy_flags & q.SOC_PHY_INFO_EXTERNAL), copper)
        self.assertEqual(len(seen), len(FRONT_PORTS) + len(COPPER_PORTS))
        self.assertEqual((q.soc_phy_addr_to_port(0, 0xff), q.soc_phy_addr_to_port(0, 0xffff)), (-1, -1))
        for unit, port in ((0, CPU_PORT), (0, -1), (0, 65), (1, 1), (-1, 1)):
            self.assertEqual((q.soc_phy_name_get(unit, port), q.soc_phyctrl_drv_name(unit, port),
                              q.soc_phy_id0reg_get(unit, port), q.soc_phy_an_timeout_get(unit, port)),
                              (None, None, 0, 0))

    def test_a_name_in_a_buffer(self):
        name = q.soc_phyctrl_drv_name(0, COPPER)
        for length in (1, 2, len(name), len(name) + 1, 60, 2 ** 31 - 1):
            room = ctypes.create_string_buffer('#' * 64, 64)
            self.done(library.soc_phyctrl_drv_name_get(0, COPPER, room, length))
            written = name[:length - 1] + '\0'
            self.assertEqual(room.raw, written + '#' * (64 - len(written)))
        text = ''.join(['#'] * 40)
        self.done(q.soc_phyctrl_drv_name_get(0, COPPER, text, 8))
        self.assertEqual(text, name[:7] + '\0' + '#' * 32)
        for length in (0, -1, -2 ** 31):
            self.assertStatus(q.SOC_E_PARAM, library.soc_phyctrl_drv_name_get(0, COPPER, room, length))

    def test_addresses_can_be_changed(self):
        address = q.uint16p()
        for flags, getter in ((0, q.soc_phy_addr_of_port), (q.SOC_PHY_INTERNAL, q.soc_phy_addr_int_of_port)):
            before = getter(0, COPPER)
            self.done(q.soc_phy_cfg_addr_set(0, COPPER, flags, 0x70 + flags))
            self.done(q.soc_phy_cfg_addr_get(0, COPPER, flags, address))
            self.assertEqual((address.value(), getter(0, COPPER), q.soc_phy_addr_to_port(0, 0x70 + flags),
                              q.soc_phy_addr_to_port(0, before)), (0x70 + flags, 0x70 + flags, COPPER, -1))
        for flags, number, status in ((0, 0x80, q.SOC_E_EXISTS), (0, 0xff, q.SOC_E_PARAM),
                                      (2, 1, q.SOC_E_PARAM),
                                      (-1, 1, q.SOC_E_PARAM), (0, 0x70, q.SOC_E_NONE)):
            self.assertStatus(status, q.soc_phy_cfg_addr_set(0, COPPER, flags, number))
        self.assertStatus(q.SOC_E_UNAVAIL, q.soc_phy_cfg_addr_set(0, SERDES, 0, 0x60))

    def test_places_in_a_phy_chip(self):
        def place(port):
            primary, offset = q.intp(), q.intp()
            self.done(q.soc_phy_primary_and_offset_get(0, port, primary, offset))
            self.assertEqual((self.value(q.soc_phyctrl_primary_get, port),
                              self.value(q.soc_phyctrl_offset_get, port)),
                             (primary.value(), offset.value()))
            info = self.info(port)
            ports = info.chip_info.offset_to_port
            return primary.value(), offset.value(), list((ctypes.c_int * 8).from_address(int(ports)))
        self.assertEqual([place(port) for port in (5, 7)],
                         [(5, offset, [5, 6, 7, 8] + [-1] * 4) for offset in (0, 2)])
        self.done(q.soc_phyctrl_offset_set(0, 7, 6))
        self.done(q.soc_phyctrl_primary_set(0, 9, 5))
        self.done(q.soc_phyctrl_offset_set(0, 9, 2))
        self.assertEqual(place(5), (5, 0, [5, 6, 9, 8, -1, -1, 7, -1]))
        for setter, values in ((q.soc_phyctrl_primary_set, (-1, 0, 65, COPPER)),
                               (q.soc_phyctrl_offset_set, (-1, 8))):
            for value in values:
                self.assertStatus(q.SOC_E_PARAM, setter(0, SERDES, value), value)

    def test_the_variables_follow_init_and_deinit(self):
        infos = (ctypes.c_void_p * 66).in_dll(library, 'phy_port_info')
        ports = (ctypes.c_void_p * 66).in_dll(library, 'phy_rmap')
        self.assertTrue(infos[0] and ports[0])
        self.assertEqual(int(q.cvar.phy_rmap), ctypes.addressof(ports))
        by_address = (ctypes.c_int * 256).from_address(ports[0])
        self.assertEqual(sorted(port for port in set(by_address) if port >= 0), FRONT_PORTS)
        self.assertEqual(by_address[q.soc_phy_addr_of_port(0, COPPER)], COPPER)
        self.done(q.soc_phy_cfg_addr_set(0, COPPER, 0, 0x70))
        self.assertEqual(by_address[0x70], COPPER)
        self.done(q.soc_phy_deinit(0))
        self.assertEqual((infos[0], ports[0], q.soc_phy_name_get(0, 1), q.soc_phy_addr_to_port(0, 0x80)),
                         (None, None, None, -1))
        self.assertStatus(q.SOC_E_INIT, q.soc_phyctrl_linkup_evt(0, SERDES))
        self.done(q.soc_phy_init(0))
        self.assertTrue(infos[0] and ports[0])
        self.assertNotEqual(q.soc_phy_addr_of_port(0, COPPER), 0x70)


class Diagnostics(PhyTest):
    def operate(self, group, operation, number=0, lane=q.PHY_DIAG_LANE_ALL, port=SERDES):
        argument = q.uintp()
        argument.assign(number)
        self.done(q.soc_phyctrl_diag_ctrl(0, port, lane, group, operation, argument))
        return argument.value()

    def test_operations_do_what_the_functions_do(self):
        state, prbs = q.PHY_DIAG_CTRL_STATE, q.PHY_DIAG_CTRL_PRBS
        self.assertEqual([self.operate(state, operation)
                          for operation in range(q.PHY_DIAG_STATE_AUTONEG_DONE + 1)],
                         [1, 1, 1, 1, 0])
        self.done(q.soc_phyctrl_diag_ctrl(0, SERDES, 0, q.PHY_DIAG_CTRL_LOOPBACK, q.PHY_DIAG_LOOPBACK_LOCAL,
                                          None))
        self.assertEqual(self.value(q.soc_phyctrl_loopback_get, SERDES), 1)
        self.operate(prbs, q.PHY_DIAG_PRBS_START, q.SOC_PHY_PRBS_POLYNOMIAL_X31_X28)
        self.assertEqual((self.operate(prbs, q.PHY_DIAG_PRBS_LOCK), self.control(SERDES, 'PRBS_POLYNOMIAL')),
                         (1, q.SOC_PHY_PRBS_POLYNOMIAL_X31_X28))
        self.operate(prbs, q.PHY_DIAG_PRBS_ERROR_INJECT, 3, 1)
        self.assertEqual([self.operate(prbs, q.PHY_DIAG_PRBS_ERRORS, 0, lane) for lane in (0, 1)], [0, 3])
        self.done(q.soc_phyctrl_diag_ctrl(0, SERDES, q.PHY_DIAG_LANE_ALL, prbs, q.PHY_DIAG_PRBS_STOP, None))
        self.assertEqual(self.control(SERDES, 'PRBS_TX_ENABLE'), 0)
        self.operate(q.PHY_DIAG_CTRL_REGISTER_WRITE, VENDOR + 5, 0x77)
        self.assertEqual(self.operate(q.PHY_DIAG_CTRL_REGISTER_READ, VENDOR + 5), 0x77)
        self.operate(q.PHY_DIAG_CTRL_CONTROL_SET, q.SOC_PHY_CONTROL_TX_FIR_MAIN, 66)
        self.assertEqual(self.operate(q.PHY_DIAG_CTRL_CONTROL_GET, q.SOC_PHY_CONTROL_TX_FIR_MAIN), 66)
        for operation, name in ((q.PHY_DIAG_FIRMWARE_VERSION, 'VERSION'), (q.PHY_DIAG_FIRMWARE_CRC, 'CRC')):
            self.assertEqual(self.operate(q.PHY_DIAG_CTRL_FIRMWARE, operation),
                             self.control(SERDES, 'FIRMWARE_' + name))
        # The SerDes in front of a copper PHY has settings of its own.
        instance = q.PHY_DIAG_DEVICE_INTERNAL << q.PHY_DIAG_DEVICE_SHIFT
        self.operate(q.PHY_DIAG_CTRL_CONTROL_SET, q.SOC_PHY_CONTROL_TX_SWING, 500, instance, COPPER)
        self.assertEqual(self.word(q.soc_phyctrl_redirect_control_get, COPPER, 0, 0, LINE,
                                   q.SOC_PHY_CONTROL_TX_SWING), 500)

    def test_the_receiver(self):
        measured = q.XGPHY_DIAG_DATA_t()

        def measure():
            self.done(q.soc_phyctrl_diag_ctrl(0, COPPER, 0, q.PHY_DIAG_CTRL_RECEIVER, 0, measured))
            return measured.block_lock, bool(measured.flags & q.XGPHY_DIAG_SNR), q.uint8Array_getitem(
                measured.snr_block, 47)
        near = measure()
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER, metres=90)
        far = measure()
        self.assertEqual((near[:2], far[:2]), ((1, True), (1, True)))
        self.assertLess(far[2], near[2])
        self.plug(COPPER)
        self.assertEqual(measure(), (0, False, 0))

    def test_what_is_refused(self):
        number = q.uintp()
        for instance, group, operation, argument, status in (
                (LANES, 0, 0, number, q.SOC_E_PARAM), (2 << 8, 0, 0, number, q.SOC_E_PARAM),
                (2 << 12, 0, 0, number, q.SOC_E_PARAM), (1 << 16, 0, 0, number, q.SOC_E_PARAM),
                (0, -1, 0, number, q.SOC_E_PARAM), (0, 99, 0, number, q.SOC_E_PARAM),
                (0, q.PHY_DIAG_CTRL_STATE, 99, number, q.SOC_E_PARAM),
                (0, q.PHY_DIAG_CTRL_STATE, 0, None, q.SOC_E_PARAM),
                (0, q.PHY_DIAG_CTRL_RECEIVER, 0, None, q.SOC_E_PARAM),
                (0, q.PHY_DIAG_CTRL_REGISTER_READ, -1, number, q.SOC_E_PARAM),
                (0, q.PHY_DIAG_CTRL_EYE, q.PHY_DIAG_EYE_START, number, q.SOC_E_UNAVAIL)):
            self.assertStatus(status, q.soc_phyctrl_diag_ctrl(0, SERDES, instance, group, operation,
                                                              argument))

    def test_the_module_in_the_cage(self):
        def read(port, offset, size, device=0x50, flags=0):
            room, actual = ctypes.create_string_buffer('#' * 300, 300), q.intp()
            status = q.soc_phyctrl_port_phy_multi_get(0, port, flags, device, offset, size, pointer_at(
                ctypes.addressof(room), '_p_unsigned_char'), actual)
            return room.raw[:actual.value()] if status == 0 else status
        memory = read(SERDES, 0, 300)
        self.assertEqual((len(memory), memory[196:212].strip()), (256, 'U0P5'))
        self.assertEqual(ord(memory[191]), sum(bytearray(memory[128:191])) & 0xff)
        self.assertEqual((read(SERDES, 196, 4), read(SERDES, 250, 2 ** 31 - 1)), ('U0P5', memory[250:]))
        self.assertEqual(read(COPPER, 0, 1), q.SOC_E_NOT_FOUND)
        self.plug(COPPER, q.SOC_PHY_MEDIUM_FIBER)
        self.assertEqual(read(COPPER, 68, 5), 'U0P34')
        for arguments, status in (((SERDES, 256, 1), q.SOC_E_PARAM), ((SERDES, 0, 0), q.SOC_E_PARAM),
                                  ((SERDES, 0, -1), q.SOC_E_PARAM), ((SERDES, 2 ** 32 - 1, 1), q.SOC_E_PARAM),
                                  ((SERDES, 0, 1, 0x51), q.SOC_E_NOT_FOUND)):
            self.assertEqual(read(*arguments), status)


if __name__ == '__main__':
    unittest.main()
