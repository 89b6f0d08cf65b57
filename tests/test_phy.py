"""Links of PHYs: how settings, media and the life of drivers act on each other."""
import ctypes
import unittest

import binding
import QuorelApiNew as q
from phy import (Ability, at, CableDiagnosis, COPPER, COPPER_PORTS, LINE, medium_callback, PhyConfig, PhyTest,
                 reset_callback, SERDES, SYSTEM)
from simulator import CPU_PORT, FRONT_PORTS, library, PortBitmap
from type_table import pointer_at


def modes(*names):
    return sum(getattr(q, 'SOC_PHY_ABILITY_' + name) for name in names)


PAUSE = modes('PAUSE_TX', 'PAUSE_RX')


class Links(PhyTest):
    def test_at_the_start_all_have_a_link(self):
        for port in FRONT_PORTS:
            speed = 10000 if port in COPPER_PORTS else 100000
            self.assertEqual((self.link(port), self.speed(port), self.value(q.soc_phyctrl_duplex_get, port),
                              self.value(q.soc_phyctrl_linkfault_get, port), self.negotiation(port)),
                             (1, speed, 1, 0, (1, 1) if port in COPPER_PORTS else (0, 0)))
            self.assertEqual(self.value(q.bcm_port_link_status_get, port), 1)
            self.assertEqual(self.value(q.bcm_port_speed_get, port), speed)

    def test_the_advertised_limits_the_negotiated(self):
        ability = self.word(q.soc_phyctrl_ability_get, COPPER)
        self.assertEqual(ability, PAUSE + modes('10MB_HD', '10MB_FD', '100MB_HD', '100MB_FD', '1000MB_FD',
                                                '10GB_FD', 'AUTONEG', 'LOOPBACK_PHY'))
        for advert, speed, duplex in ((ability, 10000, 1), (modes('10MB_FD', '1000MB_FD'), 1000, 1),
                                      (modes('100MB_HD', '10MB_FD'), 100, 0), (modes('10MB_HD'), 10, 0)):
            self.done(q.soc_phyctrl_adv_local_set(0, COPPER, advert))
            self.assertEqual((self.speed(COPPER), self.value(q.soc_phyctrl_duplex_get, COPPER),
                              self.value(q.bcm_port_speed_get, COPPER)), (speed, duplex, speed))
            self.assertEqual(self.word(q.soc_phyctrl_adv_local_get, COPPER),
                             advert & ~modes('AUTONEG', 'LOOPBACK_PHY'))
            self.assertTrue(self.word(q.soc_phyctrl_adv_remote_get, COPPER) & modes('10GB_FD'))
        self.done(q.soc_phyctrl_adv_local_set(0, COPPER, PAUSE))
        self.assertEqual((self.link(COPPER), self.speed(COPPER), self.negotiation(COPPER),
                          self.value(q.soc_phyctrl_linkfault_get, COPPER),
                          self.word(q.soc_phyctrl_adv_remote_get, COPPER)), (0, 0, (1, 0), 1, 0))
        self.assertStatus(q.SOC_E_UNAVAIL, q.soc_phyctrl_adv_local_set(0, COPPER, modes('100GB_FD')))

    def test_abilities_by_kind(self):
        ability = Ability()
        self.done(q.soc_phyctrl_ability_local_get(0, COPPER, at(ability)))
        self.assertEqual((ability.speed_half_duplex, ability.pause, ability.medium),
                         (modes('10MB_HD', '100MB_HD'), PAUSE,
                          1 << q.SOC_PHY_MEDIUM_COPPER | 1 << q.SOC_PHY_MEDIUM_FIBER))
        self.assertEqual(ability.interface, 1 << q.SOC_PHY_INTERFACE_SGMII | 1 << q.SOC_PHY_INTERFACE_XFI)
        advert = Ability(speed_full_duplex=modes('100MB_FD'), pause=modes('PAUSE_RX'))
        self.done(q.soc_phyctrl_ability_advert_set(0, COPPER, at(advert)))
        self.assertEqual(self.speed(COPPER), 100)
        self.done(q.soc_phyctrl_ability_advert_get(0, COPPER, at(ability)))
        self.assertEqual(bytes(bytearray(ability)), bytes(bytearray(advert)))
        self.done(q.soc_phyctrl_ability_remote_get(0, COPPER, at(ability)))
        self.assertEqual(ability.speed_half_duplex, modes('10MB_HD', '100MB_HD'))
        advert.speed_half_duplex = modes('10GB_FD')
        self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_ability_advert_set(0, COPPER, at(advert)))

    def test_without_negotiation_the_forced_speed_counts(self):
        self.done(q.soc_phyctrl_speed_set(0, COPPER, 100))
        self.assertEqual(self.speed(COPPER), 10000)
        self.done(q.soc_phyctrl_auto_negotiate_set(0, COPPER, 0))
        self.assertEqual((self.speed(COPPER), self.negotiation(COPPER)), (100, (0, 0)))
        self.done(q.soc_phyctrl_duplex_set(0, COPPER, 0))
        self.assertEqual(self.value(q.soc_phyctrl_duplex_get, COPPER), 0)
        self.done(q.soc_phyctrl_speed_set(0, COPPER, 1000))
        self.assertEqual(self.value(q.soc_phyctrl_duplex_get, COPPER), 1)
        self.assertStatus(q.SOC_E_UNAVAIL, q.soc_phyctrl_duplex_set(0, COPPER, 0))
        self.done(q.soc_phyctrl_auto_negotiate_set(0, COPPER, 1))
        self.assertEqual(self.speed(COPPER), 10000)
        for speed in (-1, 0, 11, 2500, 25000, 2 ** 31 - 1):
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_speed_set(0, COPPER, speed), speed)

    def test_a_highest_speed(self):
        self.done(q.soc_phyctrl_set_speed_max(0, COPPER, 1000))
        self.assertEqual(self.speed(COPPER), 1000)
        self.assertFalse(self.word(q.soc_phyctrl_ability_get, COPPER) & modes('10GB_FD'))
        self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_speed_set(0, COPPER, 10000))
        self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_set_speed_max(0, COPPER, 77))
        self.done(q.soc_phyctrl_set_speed_max(0, SERDES, 40000))
        self.assertEqual(self.speed(SERDES), 40000)

    def test_the_switch_and_its_phys_agree(self):
        for port in (SERDES, COPPER):
            self.done(q.bcm_port_speed_set(0, port, 1000))
            self.assertEqual((self.speed(port), self.negotiation(port)), (1000, (0, 0)))
            self.done(q.bcm_port_enable_set(0, port, 0))
            self.assertEqual((self.link(port), self.value(q.soc_phyctrl_enable_get, port),
                              self.value(q.soc_phyctrl_linkfault_get, port)), (0, 0, 0))
            self.done(q.bcm_port_enable_set(0, port, 1))
            self.done(q.soc_phyctrl_enable_set(0, port, 0))
            self.assertEqual(self.value(q.bcm_port_link_status_get, port), 0)
            self.done(q.soc_phyctrl_enable_set(0, port, 1))
            self.assertEqual(self.value(q.bcm_port_link_status_get, port), 1)
        self.assertEqual([self.value(q.bcm_port_speed_max, port) for port in (CPU_PORT, SERDES, COPPER)],
                         [10000, 100000, 10000])

    def test_loopback_brings_the_link_up(self):
        for port in (SERDES, COPPER):
            self.plug(port)
            self.assertEqual(self.link(port), 0)
            self.done(q.soc_phyctrl_loopback_set(0, port, 1, 1))
            self.assertEqual((self.link(port), self.value(q.soc_phyctrl_loopback_get, port),
                              self.value(q.bcm_port_link_status_get, port)), (1, 1, 1))
            self.done(q.soc_phyctrl_loopback_set(0, port, 0, 1))
            self.assertEqual((self.link(port), self.value(q.soc_phyctrl_loopback_get, port)), (0, 0))
            self.done(q.soc_phyctrl_enable_set(0, port, 0))
            self.assertStatus(q.SOC_E_TIMEOUT, q.soc_phyctrl_loopback_set(0, port, 1, 1))
            self.done(q.soc_phyctrl_loopback_set(0, port, 1, 0))
        self.reset()
        self.plug(COPPER)
        self.done(q.soc_phyctrl_loopback_extended_set(0, COPPER, 1, 1, 1))
        self.assertEqual((self.link(COPPER), self.control(COPPER, 'LOOPBACK_INTERNAL'),
                          self.control(COPPER, 'LOOPBACK_PMD')), (1, 1, 0))

    def test_one_phy_of_the_chain(self):
        self.plug(COPPER)
        for phy, side in ((0, SYSTEM), (0, LINE), (1, SYSTEM), (1, LINE)):
            self.done(q.soc_phyctrl_redirect_loopback_set(0, COPPER, phy, -1, side, 1, 1))
            self.assertEqual([self.value(q.soc_phyctrl_redirect_loopback_get, COPPER, *place)
                              for place in ((0, 3, SYSTEM), (0, 0, LINE), (1, 0, SYSTEM), (1, -1, LINE))
                              ].count(1), 1)
            self.assertEqual(self.link(COPPER), 1)
            self.done(q.soc_phyctrl_redirect_loopback_set(0, COPPER, phy, 0, side, 0, 0))
            self.assertEqual(self.link(COPPER), 0)
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER)
        an, done = q.intp(), q.intp()
        for side, value in ((LINE, 0), (SYSTEM, 1)):
            self.done(q.soc_phyctrl_redirect_auto_negotiate_set(0, COPPER, 1, 0, side, value))
            self.done(q.soc_phyctrl_redirect_auto_negotiate_get(0, COPPER, 1, 0, side, an, done))
            self.assertEqual((an.value(), done.value()), (value, value))
        self.assertEqual((self.negotiation(COPPER), self.control(COPPER, 'SYSTEM_AUTONEG')), ((0, 0), 1))
        self.assertStatus(q.SOC_E_UNAVAIL, q.soc_phyctrl_redirect_auto_negotiate_set(0, SERDES, 0, 0, SYSTEM,
                                                                                     1))
        for phy, lane, side in ((1, 0, 0), (-1, 0, 0), (2, 0, 0), (0, 4, 0), (0, -2, 0), (0, 0, 2)):
            self.assertStatus(q.SOC_E_PARAM,
                              q.soc_phyctrl_redirect_loopback_set(0, SERDES, phy, lane, side, 1, 0))

    def test_interface_follows_the_speed(self):
        def interface():
            return self.value(q.soc_phyctrl_interface_get, COPPER)
        self.assertEqual(interface(), q.SOC_PHY_INTERFACE_XFI)
        self.done(q.soc_phyctrl_interface_set(0, COPPER, q.SOC_PHY_INTERFACE_SGMII))
        self.assertEqual(interface(), q.SOC_PHY_INTERFACE_XFI)
        self.done(q.soc_phyctrl_adv_local_set(0, COPPER, modes('1000MB_FD')))
        self.assertEqual(interface(), q.SOC_PHY_INTERFACE_SGMII)
        self.assertStatus(q.SOC_E_UNAVAIL, q.soc_phyctrl_interface_set(0, COPPER, q.SOC_PHY_INTERFACE_CAUI))
        for number in (-1, q.SOC_PHY_INTERFACE_ILKN + 1):
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_interface_set(0, COPPER, number))

    def test_lanes_of_100_gigabit(self):
        self.assertEqual(self.word(q.soc_serdes_mask_100G_get, SERDES), 0xf)
        self.done(q.soc_serdes_mask_100G_set(0, SERDES, 0x5))
        self.assertEqual((self.link(SERDES), self.control(SERDES, 'LANE_COUNT')), (0, 2))
        self.done(q.soc_phyctrl_speed_set(0, SERDES, 50000))
        self.assertEqual(self.link(SERDES), 1)
        self.done(q.soc_phyctrl_lane_control_set(0, SERDES, 1, q.SOC_PHY_CONTROL_TX_LANE_SQUELCH, 1))
        self.assertEqual(self.link(SERDES), 1)
        self.set_control(SERDES, 'LANE_COUNT', 4)
        self.assertEqual((self.word(q.soc_serdes_mask_100G_get, SERDES), self.link(SERDES)), (0xf, 0))
        for mask in (0, 0x10, 2 ** 32 - 1):
            self.assertStatus(q.SOC_E_PARAM, q.soc_serdes_mask_100G_set(0, SERDES, mask))
        self.assertStatus(q.SOC_E_UNAVAIL, q.soc_serdes_mask_100G_set(0, COPPER, 1))


class Media(PhyTest):
    def watch(self, port):
        seen = []
        callback = medium_callback(lambda unit, own, medium, data: seen.append((own, medium, data)))
        pointer = pointer_at(ctypes.cast(callback, ctypes.c_void_p).value, '_p_f_int_int_int_p_void__int')
        data = q.uint32p()
        self.done(q.soc_phy_medium_status_register(0, port, pointer, data))
        return seen, callback, pointer, data

    def medium(self, port):
        return self.value(q.soc_phyctrl_medium_get, port)

    def test_watchers_are_told_of_the_medium(self):
        seen, callback, pointer, data = self.watch(COPPER)
        address = int(data.this)
        self.assertStatus(q.SOC_E_EXISTS, q.soc_phy_medium_status_register(0, COPPER, pointer, data))
        self.plug(COPPER, q.SOC_PHY_MEDIUM_FIBER)
        self.plug(COPPER, q.SOC_PHY_MEDIUM_FIBER, q.SOC_PHY_MEDIUM_COPPER)
        self.plug(COPPER)
        q.soc_phy_medium_status_notify(0, COPPER, q.SOC_PHY_MEDIUM_BACKPLANE)
        q.soc_phy_medium_status_notify(0, COPPER + 1, q.SOC_PHY_MEDIUM_FIBER)
        for medium in (-1, 4, 2 ** 31 - 1):
            self.assertIsNone(q.soc_phy_medium_status_notify(0, COPPER, medium))
        self.assertEqual(seen, [(COPPER, medium, address) for medium in (
            q.SOC_PHY_MEDIUM_FIBER, q.SOC_PHY_MEDIUM_COPPER, q.SOC_PHY_MEDIUM_NONE,
            q.SOC_PHY_MEDIUM_BACKPLANE)])
        other = q.uint32p()
        self.assertStatus(q.SOC_E_NOT_FOUND, q.soc_phy_medium_status_unregister(0, COPPER, pointer, other))
        self.done(q.soc_phy_medium_status_unregister(0, COPPER, pointer, data))
        del seen[:]
        q.soc_phy_medium_status_notify(0, COPPER, q.SOC_PHY_MEDIUM_FIBER)
        self.assertEqual(seen, [])

    def test_watchers_may_notify_and_leave(self):
        seen = []

        def leave(unit, port, medium, data):
            seen.append(medium)
            library.soc_phy_medium_status_notify(unit, port, medium)
            library.soc_phy_medium_status_unregister(unit, port, second, None)
        first = medium_callback(leave)
        second = medium_callback(lambda *args: seen.append('second'))
        for callback in (first, second):
            self.done(library.soc_phy_medium_status_register(0, COPPER, callback, None))
        self.plug(COPPER)
        self.assertEqual(seen, [q.SOC_PHY_MEDIUM_NONE])

    def test_each_medium_has_its_settings(self):
        config = PhyConfig()
        self.done(q.soc_phyctrl_medium_config_get(0, COPPER, q.SOC_PHY_MEDIUM_FIBER, at(config)))
        self.assertEqual((config.enable, config.preferred, config.autoneg_enable, config.force_speed),
                         (1, 0, 0, 10000))
        config.preferred, config.force_speed = 1, 1000
        self.done(q.soc_phyctrl_medium_config_set(0, COPPER, q.SOC_PHY_MEDIUM_FIBER, at(config)))
        self.assertEqual((self.medium(COPPER), self.speed(COPPER)), (q.SOC_PHY_MEDIUM_COPPER, 10000))
        self.plug(COPPER, q.SOC_PHY_MEDIUM_FIBER, q.SOC_PHY_MEDIUM_COPPER)
        self.assertEqual((self.medium(COPPER), self.speed(COPPER)), (q.SOC_PHY_MEDIUM_FIBER, 1000))
        config.enable = 0
        self.done(q.soc_phyctrl_medium_config_set(0, COPPER, q.SOC_PHY_MEDIUM_FIBER, at(config)))
        self.assertEqual(self.medium(COPPER), q.SOC_PHY_MEDIUM_COPPER)
        for member, value in (('force_speed', 100), ('force_duplex', 0), ('master', 9), ('mdix', -1),
                              ('autoneg_advert', modes('10MB_FD')), ('enable', 2)):
            wrong = PhyConfig.from_buffer_copy(config)
            setattr(wrong, member, value)
            self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_medium_config_set(
                0, COPPER, q.SOC_PHY_MEDIUM_FIBER, at(wrong)), member)
        for medium, status in ((q.SOC_PHY_MEDIUM_BACKPLANE, q.SOC_E_UNAVAIL), (0, q.SOC_E_PARAM),
                               (-1, q.SOC_E_PARAM), (2 ** 31 - 1, q.SOC_E_PARAM)):
            self.assertStatus(status, q.soc_phyctrl_medium_config_get(0, COPPER, medium, at(config)))

    def test_cables(self):
        def diagnose():
            found = CableDiagnosis()
            self.done(q.soc_phyctrl_cable_diag(0, COPPER, at(found)))
            return found.state, list(found.pair_state), list(found.pair_len)
        ok, cut, short = q.SOC_PHY_CABLE_STATE_OK, q.SOC_PHY_CABLE_STATE_OPEN, q.SOC_PHY_CABLE_STATE_SHORT
        self.plug(COPPER, q.SOC_PHY_MEDIUM_COPPER, metres=25)
        self.assertEqual(diagnose(), (ok, [ok] * 4, [25] * 4))
        self.assertEqual(self.control(COPPER, 'CABLE_LENGTH'), 25)
        self.done(library.sim_cable_pair_set(0, COPPER, 3, cut, 7))
        self.assertEqual(diagnose(), (cut, [ok, ok, ok, cut], [25, 25, 25, 7]))
        self.assertEqual(self.speed(COPPER), 100)
        self.done(library.sim_cable_pair_set(0, COPPER, 0, short, 2))
        self.assertEqual(diagnose()[0], q.SOC_PHY_CABLE_STATE_OPENSHORT)
        self.assertEqual((self.link(COPPER), self.value(q.soc_phyctrl_linkfault_get, COPPER)), (0, 1))
        self.done(library.sim_cable_pair_set(0, COPPER, 0, ok, 1))
        self.assertEqual(self.link(COPPER), 1)
        self.plug(COPPER)
        self.assertEqual(diagnose(), (cut, [cut] * 4, [0] * 4))
        self.assertStatus(q.SOC_E_UNAVAIL, q.soc_phyctrl_cable_diag(0, SERDES, at(CableDiagnosis())))
        self.assertStatus(q.SOC_E_NOT_FOUND, library.sim_cable_pair_set(0, COPPER, 0, cut, 1))
        for pair, state, metres in ((-1, cut, 1), (4, cut, 1), (0, 6, 1), (0, cut, 0)):
            self.assertStatus(q.SOC_E_PARAM, library.sim_cable_pair_set(0, COPPER, pair, state, metres))
        self.assertStatus(q.SOC_E_PARAM, library.sim_cable_plug(0, SERDES, 1 << q.SOC_PHY_MEDIUM_COPPER, 1))

    def test_crossing_and_clock(self):
        def crossing():
            return (self.value(q.soc_phyctrl_mdix_get, COPPER),
                    self.value(q.soc_phyctrl_mdix_status_get, COPPER))
        normal, crossed = q.SOC_PHY_MDIX_STATUS_NORMAL, q.SOC_PHY_MDIX_STATUS_XOVER
        for mode, status in ((q.SOC_PHY_MDIX_NORMAL, normal), (q.SOC_PHY_MDIX_XOVER, crossed),
                             (q.SOC_PHY_MDIX_AUTO, crossed)):
            self.done(q.soc_phyctrl_mdix_set(0, COPPER, mode))
            self.assertEqual(crossing(), (mode, status))
        self.done(q.soc_phyctrl_auto_negotiate_set(0, COPPER, 0))
        self.assertEqual(crossing(), (q.SOC_PHY_MDIX_AUTO, normal))
        self.set_control(COPPER, 'CROSSOVER_WITHOUT_AUTONEG', 1)
        self.assertEqual(crossing(), (q.SOC_PHY_MDIX_FORCE_AUTO, crossed))
        for master in (q.SOC_PHY_MS_MASTER, q.SOC_PHY_MS_SLAVE, q.SOC_PHY_MS_AUTO):
            self.done(q.soc_phyctrl_master_set(0, COPPER, master))
            self.assertEqual(self.value(q.soc_phyctrl_master_get, COPPER), master)
        self.assertEqual(self.value(q.soc_phyctrl_master_get, SERDES), q.SOC_PHY_MS_NONE)
        for setter in (q.soc_phyctrl_mdix_set, q.soc_phyctrl_master_set):
            self.assertStatus(q.SOC_E_UNAVAIL, setter(0, SERDES, 0))
            for value in (-1, 4, 2 ** 31 - 1):
                self.assertStatus(q.SOC_E_PARAM, setter(0, COPPER, value))


class Events(PhyTest):
    def test_what_the_mac_tells(self):
        tell = q.soc_phyctrl_notify
        self.done(tell(0, SERDES, q.phyEventSpeed, 25000))
        self.assertEqual(self.speed(SERDES), 25000)
        self.done(tell(0, COPPER, q.phyEventAutoneg, 0))
        self.done(tell(0, COPPER, q.phyEventSpeed, 100))
        self.done(tell(0, COPPER, q.phyEventDuplex, 0))
        self.done(tell(0, COPPER, q.phyEventInterface, q.SOC_PHY_INTERFACE_SGMII))
        self.assertEqual((self.speed(COPPER), self.value(q.soc_phyctrl_duplex_get, COPPER),
                          self.negotiation(COPPER),
                          self.value(q.soc_phyctrl_interface_get, COPPER)),
                         (100, 0, (0, 0), q.SOC_PHY_INTERFACE_SGMII))
        for reasons, event, up in ((3, q.phyEventStop, 0), (1, q.phyEventResume, 0),
                                   (2, q.phyEventResume, 1)):
            self.done(tell(0, SERDES, event, reasons))
            self.assertEqual(self.link(SERDES), up)
        for event, data, status in ((q.phyEventSpeed, 7, q.SOC_E_PARAM),
                                    (q.phyEventAutoneg, 2, q.SOC_E_PARAM),
                                    (q.phyEventInterface, 2 ** 32 - 1, q.SOC_E_PARAM), (-1, 0, q.SOC_E_PARAM),
                                    (q.phyEventEncapMode, 0, q.SOC_E_UNAVAIL), (99, 0, q.SOC_E_PARAM)):
            self.assertStatus(status, tell(0, SERDES, event, data), event)

    def test_changes_of_the_link(self):
        link = q.intp()

        def change(told):
            link.assign(told)
            self.done(q.soc_phyctrl_link_change(0, SERDES, link))
            return link.value()
        self.assertEqual((change(1), change(0)), (1, 1))
        self.plug(SERDES)
        self.assertEqual((change(1), self.changes(SERDES), self.changes(SERDES)), (0, 1, 0))
        link.assign(2)
        self.assertStatus(q.SOC_E_PARAM, q.soc_phyctrl_link_change(0, SERDES, link))
        self.plug(SERDES, q.SOC_PHY_MEDIUM_FIBER)
        # What was lost before the driver was told of the link is forgotten, and what it is told of is shown.
        self.done(q.soc_phyctrl_linkup_evt(0, SERDES))
        self.assertEqual(self.read(SERDES, q.SOC_PHY_REGISTER_STATUS) & 4, 4)
        self.done(q.soc_phyctrl_linkdn_evt(0, SERDES))
        self.assertEqual([self.read(SERDES, q.SOC_PHY_REGISTER_STATUS) & 4 for _ in range(2)], [0, 4])


class Life(PhyTest):
    def test_drivers_come_and_go(self):
        self.done(q.soc_phyctrl_speed_set(0, SERDES, 10000))
        self.done(q.soc_phyctrl_detach(0, SERDES))
        self.assertIsNone(q.soc_phyctrl_drv_name(0, SERDES))
        for call in (q.soc_phyctrl_detach, q.soc_phyctrl_init, q.soc_phyctrl_linkup_evt, q.soc_phy_reset):
            self.assertStatus(q.SOC_E_INIT, call(0, SERDES))
        # Software only: the hardware keeps what it has.
        self.done(q.soc_phyctrl_software_port_init(0, SERDES))
        self.assertEqual(self.speed(SERDES), 10000)
        self.done(q.soc_phyctrl_probe(0, SERDES))
        self.done(q.soc_phyctrl_init(0, SERDES))
        self.assertEqual(self.speed(SERDES), 100000)

    def test_a_unit_without_drivers_or_what_they_share(self):
        for down, up in ((q.soc_phyctrl_software_deinit, q.soc_phyctrl_software_init),
                         (q.soc_phy_common_detach, q.soc_phy_common_init)):
            self.done(down(0))
            for call in (q.soc_phyctrl_probe, q.soc_phyctrl_linkup_evt, q.soc_phyctrl_software_port_init,
                         q.soc_phy_port_init):
                self.assertStatus(q.SOC_E_INIT, call(0, SERDES))
            self.done(up(0))
            self.done(q.soc_phy_port_init(0, SERDES))
            self.assertEqual(self.link(SERDES), 1)
        self.done(q.soc_deinit(0))
        self.assertStatus(q.SOC_E_INIT, q.soc_phyctrl_linkup_evt(0, SERDES))

    def test_a_unit_attached_anew_has_new_phys(self):
        info = (ctypes.c_void_p * 66).in_dll(library, 'phy_port_info')
        self.assertStatus(q.SOC_E_UNIT, q.soc_phyctrl_linkup_evt(7, SERDES))
        for _ in range(2):
            self.done(library.bcm_attach(7, None, None, 0))
            self.assertTrue(info[7])
            self.assertEqual(q.soc_phy_name_get(7, SERDES), q.soc_phy_name_get(0, SERDES))
            speed = q.intp()
            self.done(q.soc_phyctrl_speed_get(7, SERDES, speed))
            self.assertEqual((speed.value(), self.speed(SERDES)), (100000, 100000))
            self.done(q.soc_phyctrl_speed_set(7, SERDES, 1000))
            self.done(q.bcm_detach(7))
            self.assertIsNone(info[7])

    def test_many_ports_at_once(self):
        self.done(q.soc_phyctrl_software_deinit(0))
        self.done(q.soc_phyctrl_software_init(0))
        ports, okay = PortBitmap([CPU_PORT, 1, COPPER, 64, 65, 575]), PortBitmap([500])
        self.done(q.soc_phyctrl_pbm_probe_init(
            0, *[pointer_at(ctypes.addressof(record), '_p_pbmp_t') for record in (ports, okay)]))
        self.assertEqual(okay.ports(), [1, COPPER, 64])
        self.assertEqual([bool(q.soc_phyctrl_drv_name(0, port)) for port in (1, 2, COPPER)],
                         [True, False, True])

    def test_resets_go_through_the_registered_function(self):
        calls = []

        def register(name, status, default):
            def called(unit, port, data):
                calls.append((name, port, data))
                library.soc_phyctrl_reset(unit, port, None)
                return status[0]
            callback = reset_callback(called)
            pointer = pointer_at(ctypes.cast(callback, ctypes.c_void_p).value, '_p_f_int_int_p_void__int')
            self.done(q.soc_phy_reset_register(0, COPPER, pointer, None, default))
            self.assertStatus(q.SOC_E_EXISTS, q.soc_phy_reset_register(0, COPPER, pointer, None, default))
            return callback, pointer
        status = [0]
        default, own = register('default', status, 1), register('own', status, 0)
        found = q.soc_phyctrl_ext_phy_reset(0, COPPER)
        self.assertEqual((int(found), found.own()), (int(own[1]), False))
        self.assertIn("'void *'", repr(found))
        self.done(q.soc_phyctrl_adv_local_set(0, COPPER, modes('10MB_FD')))
        self.done(q.soc_phy_reset(0, COPPER))
        self.assertEqual((calls, self.speed(COPPER)), ([('own', COPPER, None)], 10000))
        self.done(q.soc_phy_reset_unregister(0, COPPER, own[1], None))
        self.assertStatus(q.SOC_E_NOT_FOUND, q.soc_phy_reset_unregister(0, COPPER, own[1], None))
        data = q.uint32p()
        self.done(q.soc_phyctrl_reset(0, COPPER, data))
        self.assertEqual(calls[1:], [('default', COPPER, int(data.this))])
        status[0] = q.SOC_E_BUSY
        self.assertStatus(q.SOC_E_BUSY, q.soc_phy_reset(0, COPPER))
        self.done(q.soc_phy_reset_unregister(0, COPPER, default[1], None))
        self.done(q.soc_phyctrl_speed_set(0, COPPER, 10))
        self.done(q.soc_phyctrl_auto_negotiate_set(0, COPPER, 0))
        function = reset_callback(int(q.soc_phyctrl_ext_phy_reset(0, COPPER)))
        self.assertEqual((function(0, COPPER, None), self.speed(COPPER)), (0, 10000))
        self.assertIsNone(q.soc_phyctrl_ext_phy_reset(0, SERDES))


class Arguments(PhyTest):
    EXTREMES = (-2 ** 31, -1, 65, 576, 2 ** 31 - 1)

    def functions(self):
        return [function for function in binding.read()[0]
                if function.family in ('phy', 'phyctrl') and function.result == 'int32'
                and function.name not in ('soc_phyctrl_pbm_probe_init', 'soc_phy_addr_to_port')]

    def call(self, function, unit, port, pointer, number):
        values = [unit, port] + [pointer if kind.kind in ('pointer', 'any_pointer', 'string', 'callback')
                                 else number
                                 for kind in function.arguments[2:]]
        return getattr(library, function.name)(*values[:len(function.arguments)])

    def test_units_ports_and_nulls(self):
        checked = 0
        for function in self.functions():
            with_port = len(function.arguments) > 1
            for unit in (-2 ** 31, -1, 1, 66, 2 ** 31 - 1):
                self.assertStatus(q.SOC_E_UNIT, self.call(function, unit, 1, None, 0), function.name)
            if not with_port:
                continue
            room = ctypes.create_string_buffer(4096)
            for port in self.EXTREMES:
                self.assertStatus(q.SOC_E_PORT, self.call(function, 0, port, room, 0), function.name)
            if function.name != 'soc_phy_info_get':
                self.assertStatus(q.SOC_E_UNAVAIL, self.call(function, 0, CPU_PORT, room, 0), function.name)
            if any(argument.kind in ('pointer', 'string', 'callback') for argument in function.arguments):
                self.assertStatus(q.SOC_E_PARAM, self.call(function, 0, SERDES, None, 0), function.name)
            self.assertEqual(room.raw, '\0' * 4096, function.name)
            checked += 1
        self.assertGreater(checked, 75)

    def test_numbers_of_all_sizes(self):
        keep = ('register', 'detach', 'deinit')
        for function in self.functions():
            if len(function.arguments) > 2 and not any(word in function.name for word in keep):
                for port in (SERDES, COPPER):
                    for number in self.EXTREMES + (1, 0x10000, 0x80000000):
                        room = ctypes.create_string_buffer(8192)
                        status = self.call(function, 0, port, room, ctypes.c_uint(number & 0xffffffff))
                        self.assertLessEqual(status, 0, function.name)

    def test_ports_can_be_translated(self):
        seen = []
        kind = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.POINTER(ctypes.c_int))

        def translate(unit, port):
            seen.append(port[0])
            port[0] -= 1000
            return q.SOC_E_BADID if port[0] < 0 else 0
        callback = kind(translate)
        slot = ctypes.c_void_p.in_dll(library, 'soc_phy_cb_xlate_port_func')
        slot.value = ctypes.cast(callback, ctypes.c_void_p).value
        self.addCleanup(setattr, slot, 'value', None)
        output = q.intp()
        statuses = [q.soc_phyctrl_speed_get(0, port, output) for port in (1000 + COPPER, 1065, 1)]
        slot.value = None
        self.assertEqual((statuses, output.value(), seen),
                         ([0, q.SOC_E_PORT, q.SOC_E_BADID], 10000, [1000 + COPPER, 1065, 1]))


if __name__ == '__main__':
    unittest.main()
