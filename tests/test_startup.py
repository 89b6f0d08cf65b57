"""Start and end of units and of the application."""
import ctypes
import os
import shutil
import tempfile
import unittest

import QuorelApiNew as q
from binding import error_of
from chip import snoop_callback
from console import printed, properties, run, told
from recording import library, recording
from simulator import SwitchTest, call_with_nulls, pointer


class AttachInfo(ctypes.Structure):
    """bcm_attach_info_t"""
    _fields_ = [('unit', ctypes.c_int), ('type', ctypes.c_char_p), ('subtype', ctypes.c_char_p),
                ('remunit', ctypes.c_int)]


attach_callback = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.POINTER(AttachInfo),
                                   ctypes.c_void_p)


class StartUp(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        q.sal_config_init()
        self.addCleanup(self.only_unit_0)

    def only_unit_0(self):
        for unit in range(16):
            (q.bcm_detach if unit else q.system_init)(unit)

    def set_property(self, name, value):
        before = q.sal_config_get(name)
        self.done(q.sal_config_set(name, value))
        self.addCleanup(library.sal_config_set, name, before)

    def keep_properties(self):
        before = properties()

        def put_back():
            q.sal_config_file_set('', '')
            for name, _ in properties():
                library.sal_config_set(name, None)
            for name, value in before:
                q.sal_config_set(name, value)
        self.addCleanup(put_back)

    def units(self):
        return [unit for unit in range(-1, 18) if q.bcm_attach_check(unit) == q.BCM_E_NONE]

    def parameters(self, words='', unit=0):
        """The record that the words give."""
        record = q.appl_dcmn_init_param_t()
        self.assertEqual(library.appl_dcmn_init_usage_parse(unit, None, pointer(record)), q.CMD_OK)
        for word in words.split():
            name, value = word.split('=')
            setattr(record, name, int(value))
        return record

    def test_units_come_and_go(self):
        self.assertEqual(self.units(), [0])
        self.assertStatus(q.BCM_E_EXISTS, q.bcm_attach(0, '', '', -1))
        self.assertStatus(q.BCM_E_CONFIG, q.bcm_attach(3, 'no such driver', '', -1))
        self.assertStatus(q.BCM_E_UNIT, q.bcm_attach(16, '', '', -1))
        self.done(q.bcm_attach(3, 'local', 'a', -1))
        self.assertEqual(q.bcm_attach(-1, '', '', -1), 1)
        highest = q.intp()
        self.done(q.bcm_attach_max(highest))
        self.assertEqual((self.units(), highest.value()), ([0, 1, 3], 3))
        self.done(q.bcm_port_speed_set(3, 1, 1000))
        self.assertEqual(self.value(q.bcm_port_speed_get, 1), 100000)
        info = q.bcm_info_t()
        self.done(q.bcm_info_get(3, info))
        self.assertTrue(info.vendor and info.device and info.num_pipes > 0)
        self.done(q.bcm_detach(3))
        self.assertStatus(q.BCM_E_UNIT, q.bcm_detach(3))
        self.assertStatus(q.BCM_E_UNIT, q.bcm_port_speed_set(3, 1, 1000))
        self.assertEqual(q.sh_check_attached('x', 1), 0)
        self.assertEqual(printed(q.sh_check_attached, 'x', 3), (-1, 'x: unit 3 is not attached\n'))

    def test_what_units_there_are(self):
        self.done(q.bcm_attach(3, '', 'spare', 7))
        self.assertEqual([q.bcm_find(*what) for what in (('', 'spare', 7), ('local', 'spare', 7), ('', '', -1))], [3, 3, 0])
        for what in (('other', 'spare', 7), ('', 'spare', 8), ('', 'spar', 7)):
            self.assertStatus(q.BCM_E_NOT_FOUND, q.bcm_find(*what), what)
        units, count = (ctypes.c_int * 4)(*[-7] * 4), ctypes.c_int()
        for room, expected in ((4, [0, 3]), (1, [0]), (0, [])):
            self.done(library.bcm_unit_list(room, units, ctypes.byref(count)))
            self.assertEqual(list(units[:count.value]), expected)
        self.assertEqual(list(units), [0, 3, -7, -7])
        self.assertStatus(q.BCM_E_PARAM, q.bcm_unit_list(4, None, q.intp()))

        def of(get, *unit):
            value = q.intp()
            self.done(get(*(unit + (value,))))
            return value.value()
        self.assertEqual(of(q.bcm_unit_max_get), 15)
        self.assertEqual([of(q.bcm_unit_valid_get, unit) for unit in (-1, 0, 3, 4, 16)], [0, 1, 1, 0, 0])
        self.assertEqual([(of(q.bcm_unit_local_get, unit), of(q.bcm_unit_remote_get, unit)) for unit in (0, 3)],
                         [(1, -1), (1, 7)])
        self.assertStatus(q.BCM_E_UNIT, q.bcm_unit_local_get(4, q.intp()))
        text = ctypes.create_string_buffer(6)
        self.done(library.bcm_unit_subtype_get(3, text, 6))
        self.assertEqual(text.value, 'spare')
        self.assertStatus(q.BCM_E_PARAM, library.bcm_unit_subtype_get(3, text, 5))

    def test_each_unit_has_its_control_record(self):
        self.assertEqual(error_of(q.get_copyno_egq, 3, 0), (ValueError, 'Unit 3 is not attached'))
        self.done(q.bcm_attach(3, '', '', -1))
        self.assertEqual(q.get_copyno_egq(3, 0), q.get_copyno_egq(0, 0))
        self.done(q.bcm_detach(3))
        self.assertEqual(error_of(q.get_copyno_egq, 3, 0)[0], ValueError)

    def test_a_restart_leaves_cables_alone(self):
        self.addCleanup(library.sim_cable_plug, 0, 5, 1 << q.SOC_PHY_MEDIUM_FIBER, 10)
        self.done(library.sim_cable_plug(0, 5, 0, 10))
        self.done(q.system_init(0))
        self.assertEqual([self.value(q.bcm_port_link_status_get, port) for port in (4, 5)], [1, 0])

    def test_families_begin_anew(self):
        def spoil():
            self.done(q.bcm_vlan_create(0, 7))
            self.done(q.bcm_l2_addr_add(0, self.static_address()))
            self.done(q.bcm_port_enable_set(0, 2, 0))

        def state():
            return (q.bcm_vlan_port_get(0, 7)[0] == 0, len(q.getHwMacTable(0)), self.value(q.bcm_port_enable_get, 2))
        self.assertEqual((q.bcm_init(0), q.bcm_init_check(0), q.bcm_init_check(5)), (0, 0, q.BCM_E_UNIT))
        spoil()
        self.assertEqual(state(), (True, 1, 0))
        for module, after in ((q.BCM_MODULE_VLAN, (False, 1, 0)), (q.BCM_MODULE_L2, (False, 0, 0)),
                              (q.BCM_MODULE_PORT, (False, 0, 1))):
            self.done(q.bcm_init_selective(0, module))
            self.assertEqual(state(), after)
        self.assertStatus(q.BCM_E_PARAM, q.bcm_init_selective(0, 99))
        spoil()
        self.done(q.bcm_clear(0))
        self.assertEqual(state(), (False, 0, 1))
        self.assertEqual([q.bcm_module_name(0, module) for module in (q.BCM_MODULE_L2, 99)], ['l2', None])
        self.done(q.bcm_phy_init(0))

    def static_address(self):
        address = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(address, '00:00:00:00:00:01', 1)
        address.port, address.flags = 3, q.BCM_L2_STATIC
        return address

    def test_records_start_as_they_should(self):
        info = q.bcm_info_t()
        self.done(q.bcm_info_get(0, info))
        q.bcm_info_t_init(info)
        self.assertEqual((info.vendor, info.device, info.num_pipes), (0, 0, 0))
        attached = q.bcm_attach_info_t()
        q.bcm_attach_info_t_init(attached)
        self.assertEqual((attached.unit, attached.type, attached.subtype, attached.remunit), (-1, None, None, -1))

    def test_who_registered_is_told(self):
        events = []

        @attach_callback
        def told(unit, attach, info, user_data):
            events.append((unit, attach, info[0].unit, info[0].type, info[0].subtype, user_data))
            self.assertEqual(q.bcm_attach_check(unit), q.BCM_E_NONE)

        subscriptions = ((-1, 1), (3, 2))
        for unit, user_data in subscriptions:
            self.done(library.bcm_attach_register(unit, told, user_data))
            self.assertStatus(q.BCM_E_EXISTS, library.bcm_attach_register(unit, told, user_data))
        self.assertStatus(q.BCM_E_PARAM, library.bcm_attach_register(3, None, None))
        self.assertStatus(q.BCM_E_UNIT, library.bcm_attach_register(16, told, None))
        self.done(q.bcm_attach(3, '', 'a', -1))
        self.done(q.bcm_attach_early_txrx(4, '', '', -1))
        self.assertEqual(events, [(3, 1, 3, 'local', 'a', 1), (3, 1, 3, 'local', 'a', 2),
                                  (4, 1, 4, 'local', '', 1)])
        del events[:]
        self.done(q.bcm_detach_late_txrx(3))
        self.assertEqual([event[:2] for event in events], [(3, 0), (3, 0)])
        for unit, user_data in subscriptions:
            self.done(library.bcm_attach_unregister(unit, told, user_data))
            self.assertStatus(q.BCM_E_NOT_FOUND, library.bcm_attach_unregister(unit, told, user_data))
        del events[:]
        self.done(q.bcm_detach(4))
        self.assertEqual(events, [])

    def test_what_belongs_to_a_unit_ends_with_it(self):
        retry = q.bcm_detach_retry_t()
        q.bcm_detach_retry_t_init(retry)
        defaults = retry.num_retries, retry.poll_usecs
        self.done(q.bcm_attach(5, '', '', -1))
        retry.num_retries, retry.poll_usecs = 9, 1
        self.done(q.bcm_detach_retry_set(5, retry))
        self.assertEqual(run('pw start', 5)[0], q.CMD_OK)
        for _ in range(2):
            self.done(q.bcm_detach_retry_get(5, retry))
            self.assertEqual((retry.num_retries, retry.poll_usecs), (9, 1))
        retry.num_retries = -1
        self.assertStatus(q.BCM_E_PARAM, q.bcm_detach_retry_set(5, retry))
        self.done(q.bcm_detach(5))
        self.assertEqual(q.pw_running(5), 0)
        self.assertStatus(q.BCM_E_UNIT, q.bcm_detach_retry_get(5, retry))
        self.done(q.bcm_attach(5, '', '', -1))
        self.done(q.bcm_detach_retry_get(5, retry))
        self.assertEqual((retry.num_retries, retry.poll_usecs), defaults)

    def test_a_unit_attached_again_has_a_new_chip(self):
        word = q.uintp()

        def shown(reg, port):
            self.done(q.soc_reg32_get(5, reg, port, 0, word))
            return word.value()
        fresh, seen = [], []
        callback = snoop_callback(lambda *args: seen.append(args))
        for change in (q.soc_deinit, lambda unit: 0):
            self.done(q.bcm_attach(5, '', '', -1))
            fresh.append([shown(*where) for where in (
                (q.NIF_PORT_CTRLr, 3), (q.IHP_MAC_AGEINGr, 0), (q.FTX_TRANSMIT_ENABLEr, 0))])
            self.assertEqual(q.soc_ppd_lag_member_add_wrapper(5, 1, 3, 0), q.BCM_E_NONE)
            self.done(q.bcm_port_speed_set(5, 3, 1000))
            self.done(q.bcm_l2_age_timer_set(5, 7))
            self.done(q.soc_reg32_set(5, q.FTX_TRANSMIT_ENABLEr, 0, 0, 0))
            self.assertNotEqual(shown(q.NIF_PORT_CTRLr, 3), fresh[0][0])
            library.soc_reg_snoop_register(5, q.NIF_PORT_CTRLr, q.SOC_REG_SNOOP_READ, callback, None)
            self.done(change(5))
            self.done(q.bcm_detach(5))
        self.assertEqual((fresh[1], seen), (fresh[0], []))
        self.done(q.bcm_attach(5, '', '', -1))
        self.done(q.bcm_port_speed_set(5, 3, 1000))
        self.done(q.bcm_clear(5))
        self.assertEqual(shown(q.NIF_PORT_CTRLr, 3), fresh[0][0])

    def test_the_chip_starts_and_ends_with_the_system(self):
        data = q.new_entrydata(1)
        register = 0, q.EGQ_AGEING_CTRLr, q.REG_PORT_ANY, 0
        self.done(q.soc_reg32_get(*(register + (data,))))
        after_reset = q.entrydata_getitem(data, 0)
        self.done(q.soc_reg32_set(*(register + (after_reset ^ 1,))))
        self.done(q.system_init(0))
        self.done(q.soc_reg32_get(*(register + (data,))))
        self.assertEqual(q.entrydata_getitem(data, 0), after_reset)
        self.done(q.system_shutdown(0, 0))
        self.assertLess(q.soc_reg32_get(*(register + (data,))), 0)
        q.delete_entrydata(data)

    def test_system_init_starts_afresh_with_properties(self):
        self.set_property('port_init_speed', '10000')
        self.set_property('port_init_speed_ce1', '1000')
        self.set_property('port_init_speed_ce1.2', '100')
        self.set_property('port_init_enable_ce0', '0')
        self.set_property('l2_age_timer', '77')
        for unit in (0, 2, 2):
            self.enter('02:00:00:00:00:01', port=1)
            self.done(q.system_init(unit))
            value = q.intp()
            seen = []
            for getter, port in ((q.bcm_port_speed_get, 1), (q.bcm_port_speed_get, 2),
                                 (q.bcm_port_enable_get, 1), (q.bcm_port_enable_get, 2)):
                self.done(getter(unit, port, value))
                seen.append(value.value())
            self.done(q.bcm_l2_age_timer_get(unit, value))
            self.assertEqual(seen + [value.value()], [10000, 100 if unit == 2 else 1000, 0, 1, 77])
            self.assertEqual(q.getHwMacTable(unit), [])
        self.assertStatus(q.BCM_E_UNIT, q.system_init(16))

    def test_a_start_that_fails_leaves_the_unit_as_it_was_attached(self):
        self.set_property('port_init_speed_ce5', '17')
        for unit, attached in ((0, [0]), (4, [0])):
            self.assertStatus(q.BCM_E_CONFIG, q.system_init(unit))
            self.assertEqual(self.units(), attached)
        record = self.parameters('nof_devices=3', 4)
        self.assertStatus(q.BCM_E_CONFIG, q.appl_dcmn_init(4, record))
        self.assertEqual(self.units(), [0])
        record.no_appl = 1
        self.done(q.appl_dcmn_init(4, record))
        self.assertEqual(self.units(), [0, 4, 5, 6])

    def test_a_property_that_cannot_be_is_named_and_nothing_is_done(self):
        directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, directory)
        path = os.path.join(directory, 'config')
        self.keep_properties()
        port = 'impossible for port ce5 of unit 0'
        for name, value, why in (('l2_age_timer', 'abc', 'not a number'),
                                 ('l2_age_timer', '600 # ten minutes', 'not a number'),
                                 ('l2_age_timer.0', '-1', 'impossible for unit 0'),
                                 ('port_init_speed_ce5', '10G', 'not a number'),
                                 ('port_init_speed_ce5', '12345', port), ('port_init_enable_ce5.0', '2', port),
                                 ('port_init_autoneg_ce5', '-1', port), ('port_init_learn_ce5', '2', port),
                                 ('port_init_speed_ce32', '100000', 'impossible for port ce32 of unit 0')):
            self.done(q.bcm_port_speed_set(0, 1, 1000))
            said = '%s=%s: %s\n' % (name, value, why)
            self.done(q.sal_config_set(name, value))
            self.assertEqual(told(q.system_init, 0), (q.BCM_E_CONFIG, said))
            with open(path, 'w') as output:
                output.write('# a comment\n%s=%s\n' % (name, value))
            q.sal_config_file_set(path, '')
            self.done(q.sal_config_refresh())
            record = self.parameters('nof_devices=2')
            for start in ((q.system_init, 0), (q.appl_dcmn_init, 0, record)):
                self.assertEqual(told(*start), (q.BCM_E_CONFIG, '%s:2: %s' % (path, said)))
            self.assertEqual(self.value(q.bcm_port_speed_get, 1), 1000)
            # Written back, it stands elsewhere.
            self.done(q.sal_config_set('a', '1'))
            self.done(q.sal_config_flush())
            line = properties().index((name, value)) + 1
            self.assertEqual(told(q.system_init, 0)[1], '%s:%d: %s' % (path, line, said))
            library.sal_config_set(name, None)

    def test_shutdown_forgets_only_with_cleanup(self):
        for cleanup, output in ((0, 'kept\n'), (1, '\n')):
            self.done(q.system_init(2))
            q.sh_swap_unit_vars(2)
            run('set word kept')
            self.done(q.system_shutdown(2, cleanup))
            self.assertEqual(run('echo $word')[1], output)
            q.sh_swap_unit_vars(0)
            self.assertStatus(q.BCM_E_UNIT, q.system_shutdown(2, cleanup))

    def test_application_start(self):
        record = self.parameters('nof_devices=2 repeat=2', 1)
        self.assertStatus(q.BCM_E_PARAM, q.appl_dcmn_init(0, record))
        for _ in range(2):
            self.done(q.appl_dcmn_init(1, record))
            self.assertEqual(self.units(), [0, 1, 2])
        for name, value in (('nof_devices', 0), ('nof_devices', 16), ('repeat', -1), ('repeat', 2 ** 31 - 1)):
            bad = self.parameters('%s=%d' % (name, value), 1)
            self.assertStatus(q.BCM_E_PARAM, q.appl_dcmn_init(1, bad), name)
        with recording() as calls:
            self.done(q.appl_dcmn_init(1, self.parameters('cosq_disable=1 no_packet_rx=1 no_soc=1', 1)))
            without = set(name for name, _ in calls())
            self.done(q.appl_dcmn_init(1, self.parameters('', 1)))
            added = set(name for name, _ in calls()) - without
            self.assertEqual(added, set(['bcm_cosq_init', 'bcm_rx_init', 'soc_init']))
        self.done(q.appl_dcmn_deinit(1, record))
        self.assertStatus(q.BCM_E_UNIT, q.appl_dcmn_deinit(1, record))
        record.no_attach = 1
        self.assertStatus(q.BCM_E_UNIT, q.appl_dcmn_init(1, record))
        record.no_init = 1
        self.done(q.appl_dcmn_init(1, record))
        self.assertEqual(self.units(), [0])
        self.assertStatus(q.BCM_E_PARAM, call_with_nulls('appl_dcmn_init', 0))
        self.assertRaises(OverflowError, setattr, record, 'unit', -1)

    def test_parameters_as_words(self):
        result, output = run('7:init appl no_attach=0x1 nof_devices=2')
        self.assertEqual((result, output), (q.CMD_FAIL, 'init: unit 7: BCM_E_UNIT\n'))
        for word in ('nof_devices', 'nothing=1', 'unit=-1', 'flags=2147483648', 'l2_mode=4294967296',
                     'modid='):
            self.assertEqual(run('init appl ' + word)[0], q.CMD_USAGE, word)
        self.assertEqual(run('init appl flags=-2147483648 l2_mode=4294967295')[0], q.CMD_OK)

    def test_steps_of_the_diagnostic_start(self):
        record = self.parameters()
        self.done(q.appl_dpp_bcm_diag_init(0, record))
        self.done(q.appl_dpp_bcm_diag_init_py(0, 1, 0, 1))
        self.assertStatus(q.BCM_E_PARAM, q.appl_dpp_bcm_diag_init_py(0, 0, 0, 0))
        for name in ('appl_dpp_bcm_diag_init', 'appl_dpp_bcm_diag_init_py', 'appl_dpp_cosq_diag_init',
                     'appl_dpp_stk_diag_init'):
            self.assertStatus(q.BCM_E_UNIT, call_with_nulls(name, 9), name)


if __name__ == '__main__':
    unittest.main()
