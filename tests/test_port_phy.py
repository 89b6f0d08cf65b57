"""What ports have from their PHYs: negotiation, media, registers and settings together."""
import ctypes
import unittest

import QuorelApiNew as q
from phy import (Ability, CableDiagnosis, COPPER, medium_callback, PhyConfig, PhyTest, reset_callback,
                 SERDES)
from simulator import call_with_nulls, CPU_PORT, functions, library, LOCAL_PORT, PortBitmap

COPPER_GPORT = LOCAL_PORT + COPPER
FD_10, FD_100, FD_1000, FD_10000 = (q.SOC_PHY_ABILITY_10MB_FD, q.SOC_PHY_ABILITY_100MB_FD,
                                    q.SOC_PHY_ABILITY_1000MB_FD, q.SOC_PHY_ABILITY_10GB_FD)
OWN_REGISTER = q.SOC_PHY_DEVICE_VENDOR1 << 16 | 0x4321

MEMBERS = ('action_mask action_mask2 enable linkstatus autoneg speed duplex linkscan learn untagged_vlan '
           'loopback phy_master pause_tx pause_rx remote_advert_valid speed_max fault').split()
PARTS = ('advert ability autoneg duplex master interface_get mdix medium cable loopback fault link_ linkscan '
         'info selective phy_get phy_set phy_modify phy_multi phy_reset phy_control phy_drv '
         'phy_firmware').split()
NAMES = [name for name in functions('bcm_port_') if any(part in name for part in PARTS)]


def c_int(name, *args):
    """The int that a C function writes to its last argument, whatever the pointer's type."""
    result = ctypes.c_int(-77)
    status = getattr(library, name)(0, *(args + (ctypes.byref(result),)))
    assert status == q.BCM_E_NONE, (name, status)
    return result.value


class PortPhyTest(PhyTest):
    def reset(self):
        PhyTest.reset(self)
        for port in (SERDES, COPPER):
            self.done(q.bcm_port_loopback_set(0, port, q.BCM_PORT_LOOPBACK_NONE))

    def state(self, port):
        """(link, whether it was down since the last call)"""
        state = q.bcm_port_link_state_t()
        self.done(q.bcm_port_link_state_get(0, port, 0, state))
        return state.status, state.latch_down


class Negotiation(PortPhyTest):
    def test_what_is_advertised_decides(self):
        ability = c_int('bcm_port_ability_get', COPPER_GPORT)
        self.assertEqual(ability, self.word(q.soc_phyctrl_ability_get, COPPER) |
                         q.SOC_PHY_ABILITY_LOOPBACK_MAC)
        self.assertEqual(self.value(q.bcm_port_autoneg_get, COPPER_GPORT), 1)
        for advert, speed in ((FD_1000 | FD_10, 1000), (FD_100, 100), (ability, 10000)):
            self.done(library.bcm_port_advert_set(0, COPPER_GPORT, advert))
            self.assertEqual((self.speed(COPPER), self.value(q.bcm_port_speed_get, COPPER),
                              c_int('bcm_port_advert_get', COPPER) & advert & FD_10000),
                             (speed, speed, advert & FD_10000))
        self.assertTrue(c_int('bcm_port_advert_remote_get', COPPER) & FD_10000)
        self.done(q.bcm_port_autoneg_set(0, COPPER, 0))
        self.assertEqual((self.negotiation(COPPER), c_int('bcm_port_advert_remote_get', COPPER)), ((0, 0), 0))
        self.done(q.bcm_port_speed_set(0, COPPER, 100))
        self.done(q.bcm_port_duplex_set(0, COPPER, 0))
        self.assertEqual((self.value(q.bcm_port_duplex_get, COPPER),
                          self.value(q.soc_phyctrl_duplex_get, COPPER)), (0, 0))
        self.done(q.bcm_port_autoneg_set(0, COPPER, 7))
        self.assertEqual((self.negotiation(COPPER), self.value(q.bcm_port_duplex_get, COPPER)), ((1, 1), 1))

    def test_abilities_by_kind(self):
        ability, advert = Ability(), Ability(speed_full_duplex=FD_1000)
        self.done(library.bcm_port_ability_local_get(0, COPPER, ctypes.byref(ability)))
        self.assertEqual((ability.speed_full_duplex & FD_10000, ability.loopback),
                         (FD_10000, q.SOC_PHY_ABILITY_LOOPBACK_MAC | q.SOC_PHY_ABILITY_LOOPBACK_PHY))
        self.done(library.bcm_port_ability_advert_set(0, COPPER, ctypes.byref(advert)))
        self.assertEqual(self.speed(COPPER), 1000)
        self.done(library.bcm_port_ability_advert_get(0, COPPER, ctypes.byref(ability)))
        self.assertEqual((ability.speed_full_duplex, ability.loopback), (FD_1000, 0))
        self.done(library.bcm_port_ability_remote_get(0, COPPER, ctypes.byref(ability)))
        self.assertTrue(ability.speed_full_duplex & FD_10000)
        library.bcm_port_ability_t_init(ctypes.byref(ability))
        self.assertFalse(any(bytearray(ability)))

    def test_interface_clock_and_crossing(self):
        self.done(library.bcm_port_interface_set(0, SERDES, q.SOC_PHY_INTERFACE_KR4))
        self.assertEqual([c_int('bcm_port_interface_get', SERDES),
                          self.value(q.soc_phyctrl_interface_get, SERDES)], [q.SOC_PHY_INTERFACE_KR4] * 2)
        self.done(q.bcm_port_master_set(0, COPPER, q.SOC_PHY_MS_SLAVE))
        self.assertEqual((self.value(q.bcm_port_master_get, COPPER),
                          self.value(q.soc_phyctrl_master_get, COPPER)), (q.SOC_PHY_MS_SLAVE,) * 2)
        for mode, status in ((q.SOC_PHY_MDIX_NORMAL, 0), (q.SOC_PHY_MDIX_XOVER, 1)):
            self.done(library.bcm_port_mdix_set(0, COPPER, mode))
            self.assertEqual((c_int('bcm_port_mdix_get', COPPER), c_int('bcm_port_mdix_status_get', COPPER),
                              self.value(q.soc_phyctrl_mdix_get, COPPER)), (mode, status, mode))


class Links(PortPhyTest):
    def test_that_it_was_down_is_remembered(self):
        self.state(COPPER)
        self.assertEqual(self.state(COPPER), (1, 0))
        self.plug(COPPER)
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER)
        self.assertEqual((self.state(COPPER), self.state(COPPER)), ((1, 1), (1, 0)))
        self.done(q.bcm_port_autoneg_set(0, COPPER, 1))  # begins anew
        self.read(COPPER, q.SOC_PHY_REGISTER_STATUS)
        self.assertEqual((self.state(COPPER), self.state(COPPER)), ((1, 1), (1, 0)))
        self.done(q.bcm_port_phy_reset(0, COPPER))
        self.done(q.bcm_port_link_failed_clear(0, COPPER))
        self.assertEqual(self.state(COPPER), (1, 0))
        self.done(q.bcm_port_enable_set(0, COPPER, 0))
        self.done(q.bcm_port_link_failed_clear(0, COPPER))
        self.assertEqual((self.state(COPPER), self.state(COPPER)), ((0, 1), (0, 1)))
        self.assertStatus(q.BCM_E_PARAM, q.bcm_port_link_state_get(0, COPPER, 1, q.bcm_port_link_state_t()))

    def test_faults(self):
        for port in (SERDES, COPPER):
            self.assertEqual(self.word(q.bcm_port_fault_get, port), 0)
            self.plug(port)
            self.assertEqual(self.word(q.bcm_port_fault_get, port), q.BCM_PORT_FAULT_LOCAL)
            self.done(q.bcm_port_enable_set(0, port, 0))
            self.assertEqual(self.word(q.bcm_port_fault_get, port), 0)

    def test_loopbacks(self):
        for port in (SERDES, COPPER):
            for mode, link, phy, remote in ((q.BCM_PORT_LOOPBACK_MAC, 1, 0, 0),
                                            (q.BCM_PORT_LOOPBACK_PHY, 1, 1, 0),
                                            (q.BCM_PORT_LOOPBACK_PHY_REMOTE, 0, 0, 1),
                                            (q.BCM_PORT_LOOPBACK_NONE, 0, 0, 0)):
                self.plug(port)
                self.done(q.bcm_port_loopback_set(0, port, mode))
                self.assertEqual((self.value(q.bcm_port_loopback_get, port),
                                  self.value(q.bcm_port_link_status_get, port),
                                  self.value(q.soc_phyctrl_loopback_get, port),
                                  self.control(port, 'LOOPBACK_REMOTE')), (mode, link, phy, remote))
            self.done(q.soc_phyctrl_loopback_set(0, port, 1, 0))
            self.assertEqual(self.value(q.bcm_port_loopback_get, port), q.BCM_PORT_LOOPBACK_PHY)
            for mode in (-1, 4):
                self.assertStatus(q.BCM_E_PARAM, q.bcm_port_loopback_set(0, port, mode))
        self.done(q.soc_phyctrl_loopback_extended_set(0, COPPER, 1, 0, 1))
        self.done(q.bcm_port_loopback_set(0, COPPER, q.BCM_PORT_LOOPBACK_NONE))
        self.assertEqual(self.value(q.bcm_port_loopback_get, COPPER), q.BCM_PORT_LOOPBACK_NONE)

    def test_media_and_cables(self):
        seen, config, found = [], PhyConfig(), CableDiagnosis()
        callback = medium_callback(lambda unit, port, medium, data: seen.append((port, medium)))
        self.done(library.bcm_port_medium_status_register(0, COPPER_GPORT, callback, None))
        self.done(library.bcm_port_medium_config_get(0, COPPER, q.SOC_PHY_MEDIUM_FIBER, ctypes.byref(config)))
        config.force_speed = 1000
        self.done(library.bcm_port_medium_config_set(0, COPPER, q.SOC_PHY_MEDIUM_FIBER, ctypes.byref(config)))
        self.plug(COPPER, q.SOC_PHY_MEDIUM_FIBER)
        self.assertEqual((c_int('bcm_port_medium_get', COPPER), self.speed(COPPER)),
                         (q.SOC_PHY_MEDIUM_FIBER, 1000))
        self.done(library.bcm_port_medium_status_unregister(0, COPPER, callback, None))
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER, metres=33)
        self.assertEqual(seen, [(COPPER, q.SOC_PHY_MEDIUM_FIBER)])
        self.done(library.bcm_port_cable_diag(0, COPPER, ctypes.byref(found)))
        self.assertEqual((found.state, list(found.pair_len)), (q.SOC_PHY_CABLE_STATE_OK, [33] * 4))


class Access(PortPhyTest):
    def test_registers(self):
        internal = q.soc_phy_addr_int_of_port(0, COPPER)
        for flags, port, address in ((0, COPPER_GPORT, OWN_REGISTER),
                                     (q.BCM_PORT_PHY_INTERNAL, COPPER, OWN_REGISTER),
                                     (q.BCM_PORT_PHY_NOMAP, internal, OWN_REGISTER + 1)):
            self.done(q.bcm_port_phy_set(0, port, flags, address, 0x1200 + flags))
            self.done(q.bcm_port_phy_modify(0, port, flags, address, 0xffff, 0xf0))
            self.assertEqual(self.word(q.bcm_port_phy_get, port, flags, address), 0x12f0 + flags)
        self.assertEqual([self.read(COPPER, OWN_REGISTER + offset, flags) for offset, flags in (
            (0, 0), (0, q.SOC_PHY_INTERNAL), (1, q.SOC_PHY_INTERNAL))], [0x12f0, 0x12f1, 0x12f4])

    def test_firmware_names_and_transceivers(self):
        program = (ctypes.c_uint8 * 4)(1, 2, 3, 4)
        self.done(library.bcm_port_phy_firmware_set(0, COPPER, 0, 0, program, 4))
        self.assertEqual(self.control(COPPER, 'FIRMWARE_VERSION'), 0x04030201)
        name = ctypes.create_string_buffer(40)
        self.done(library.bcm_port_phy_drv_name_get(0, COPPER, name, 40))
        self.assertEqual(name.value, q.soc_phyctrl_drv_name(0, COPPER))
        data, size = (ctypes.c_uint8 * 256)(), ctypes.c_uint32()
        self.done(library.bcm_port_phy_multi_get(0, SERDES, 0, 0x50, 0, 2 ** 32 - 1, data,
                                                 ctypes.byref(size)))
        self.assertEqual((size.value, 'SIMULATED' in bytes(bytearray(data))), (256, True))

    def test_settings_of_the_phy(self):
        for port, name in ((SERDES, 'TX_FIR_MAIN'), (SERDES, 'RX_DFE_TAP1'), (COPPER, 'LED_MODE'),
                           (COPPER, 'EEE')):
            other = getattr(q, 'bcmPortPhyControl' + name.title().replace('_', ''))
            self.done(q.bcm_port_phy_control_set(0, port, other, 1))
            self.assertEqual((self.control(port, name), self.word(q.bcm_port_phy_control_get, port, other)),
                             (1, 1))
        for kind, status in ((-1, q.BCM_E_PARAM), (q.bcmPortPhyControlCount, q.BCM_E_PARAM),
                             (q.bcmPortPhyControlDriverPostCursor, q.BCM_E_UNAVAIL)):
            self.assertStatus(status, q.bcm_port_phy_control_set(0, SERDES, kind, 1))

    def test_resets_and_drivers(self):
        seen = []
        callback = reset_callback(lambda unit, port, data: seen.append(port) or (-1 if len(seen) > 1 else 0))
        self.done(library.bcm_port_phy_reset_register(0, COPPER_GPORT, callback, None))
        self.addCleanup(library.bcm_port_phy_reset_unregister, 0, COPPER, callback, None)
        self.done(q.bcm_port_autoneg_set(0, COPPER, 0))
        self.done(q.bcm_port_phy_reset(0, COPPER))
        self.assertEqual((self.negotiation(COPPER)[0], seen), (1, [COPPER]))
        self.assertStatus(q.BCM_E_INTERNAL, q.bcm_port_phy_reset(0, COPPER))
        self.done(library.bcm_port_phy_reset_unregister(0, COPPER, callback, None))
        some, gone = PortBitmap([CPU_PORT, SERDES, COPPER, 99]), PortBitmap()
        self.done(library.bcm_port_detach(0, some, ctypes.byref(gone)))
        self.assertEqual(gone.ports(), [SERDES, COPPER])
        self.assertStatus(q.BCM_E_INIT, q.bcm_port_autoneg_set(0, SERDES, 0))
        self.done(library.bcm_port_probe(0, PortBitmap([CPU_PORT, COPPER]), ctypes.byref(gone)))
        self.assertEqual((gone.ports(), self.value(q.bcm_port_autoneg_get, COPPER)), ([COPPER], 1))


class Together(PortPhyTest):
    def info(self, port, getter=q.bcm_port_info_get, **members):
        info = q.bcm_port_info_t()
        for name, value in members.items():
            setattr(info, name, value)
        self.done(getter(0, port, info))
        return info

    def test_all_at_once(self):
        info = self.info(COPPER)
        self.assertEqual((info.enable, info.linkstatus, info.autoneg, info.speed, info.duplex, info.speed_max,
                          info.remote_advert_valid, info.phy_master, info.fault),
                         (1, 1, 1, 10000, 1, 10000, 1, q.SOC_PHY_MS_AUTO, 0))
        self.assertFalse(self.info(CPU_PORT).action_mask & q.BCM_PORT_ATTR_AUTONEG_MASK)
        # While it negotiates, it does not matter that there is no such speed.
        info.speed, info.pause_tx, info.action_mask = 77, 1, 0
        self.done(q.bcm_port_info_set(0, COPPER, info))
        self.assertEqual((self.speed(COPPER), q.bcm_port_pause_get(0, COPPER)), (10000, (0, True, False)))
        info.speed, info.autoneg, info.duplex = 100, 0, 0
        self.done(q.bcm_port_info_set(0, COPPER, info))
        self.assertEqual((self.speed(COPPER), self.negotiation(COPPER),
                          self.value(q.bcm_port_duplex_get, COPPER)), (100, (0, 0), 0))

    def test_selected(self):
        speed, tx, stat = (q.BCM_PORT_ATTR_SPEED_MASK, q.BCM_PORT_ATTR_PAUSE_TX_MASK,
                           q.BCM_PORT_ATTR_LINKSTAT_MASK)
        wanted = self.info(SERDES, q.bcm_port_selective_set, action_mask=speed | tx | stat, speed=40000,
                           pause_tx=1, pause_rx=1, autoneg=1)
        self.assertEqual((self.speed(SERDES), q.bcm_port_pause_get(0, SERDES), self.negotiation(SERDES)),
                         (40000, (0, True, False), (0, 0)))
        got = self.info(SERDES, q.bcm_port_selective_get, action_mask=speed, duplex=-5)
        self.assertEqual((got.speed, got.duplex), (40000, -5))
        for mask, status in ((q.BCM_PORT_ATTR_MDIX_MASK, q.BCM_E_UNAVAIL), (2 ** 31, q.BCM_E_PARAM)):
            wanted.action_mask = mask
            for call in (q.bcm_port_selective_get, q.bcm_port_selective_set):
                self.assertStatus(status, call(0, SERDES, wanted), (call, mask))

    def test_saved_and_restored(self):
        for port in (CPU_PORT, SERDES, COPPER):
            saved = self.info(port, q.bcm_port_info_save)
            self.done(q.bcm_port_speed_set(0, port, 1000))
            self.done(q.bcm_port_enable_set(0, port, 0))
            self.done(q.bcm_port_pause_addr_set(0, port, '02:00:00:00:00:01'))
            if port != CPU_PORT:
                self.done(q.bcm_port_loopback_set(0, port, q.BCM_PORT_LOOPBACK_MAC))
            self.done(q.bcm_port_info_restore(0, port, saved))
            now = self.info(port, q.bcm_port_info_save)
            self.assertEqual(*[[getattr(info, name) for name in MEMBERS] for info in (saved, now)])
            octets = (ctypes.c_uint8 * 6)()
            self.done(library.bcm_port_pause_addr_get(0, port, octets))
            self.assertFalse(any(octets))


class Refusals(PortPhyTest):
    def test_units_ports_and_nulls(self):
        for name in NAMES:
            self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, 15), name)
            if name.endswith('_get') or 'info' in name or 'diag' in name:
                self.assertStatus(q.BCM_E_PARAM, call_with_nulls(name, 0), name)
        memory = [ctypes.create_string_buffer(2000) for _ in range(6)]
        for name in NAMES:
            for port, status in ((-1, q.BCM_E_PORT), (65, q.BCM_E_PORT), (LOCAL_PORT + 65, q.BCM_E_PORT)):
                self.assertStatus(status, getattr(library, name)(0, port, *memory), (name, port))
        for setter in (q.bcm_port_autoneg_set, q.bcm_port_duplex_set, q.bcm_port_loopback_set,
                       q.bcm_port_master_set):
            self.assertStatus(q.BCM_E_UNAVAIL, setter(0, CPU_PORT, 0))


if __name__ == '__main__':
    unittest.main()
