"""Bringing chips up by a port map, SOC properties, and what protects memories."""
import contextlib
import ctypes
import os
import resource
import shutil
import signal
import stat
import tempfile
import unittest

import QuorelApiNew as q
from binding import error_of
from chip import MEMORIES
from console import printed, told
from platform_stand_in import PlatformTest
from recording import library
from type_table import pointer_of_type, retyped

RECORD_MEMBERS = ('speed warpCore phyLane txLane rxLane txPolarity rxPolarity phyType mdioAddr phyTxPolarity '
                  'phyRxPolarity xcvrLane').split()
WIRING = 'port_map phy_tx_lane phy_rx_lane phy_tx_polarity_flip phy_rx_polarity_flip xcvr_lane'.split()
EXTERNAL_PHY = 'ext_phy_type ext_phy_mdio_addr ext_phy_tx_polarity_flip ext_phy_rx_polarity_flip'.split()
FRONT_PORTS = 64


class PortMap(ctypes.Structure):
    """tridentPortMap_t"""
    _fields_ = [(name, ctypes.c_bool if 'Polarity' in name else ctypes.c_int) for name in RECORD_MEMBERS]


def wiring(**members):
    record = q.tridentPortMap_t()
    for name, value in dict(dict(speed=25000), **members).items():
        setattr(record, name, value)
    return record


@contextlib.contextmanager
def limit(which, number):
    """What the process may use up."""
    before = resource.getrlimit(which)
    resource.setrlimit(which, (number, before[1]))
    try:
        yield
    finally:
        resource.setrlimit(which, before)


class BringUpTest(PlatformTest):
    def setUp(self):
        PlatformTest.setUp(self)
        self.addCleanup(q.system_init, 0)
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)

    def keep_property(self, *names):
        for name in names:
            self.addCleanup(library.sal_config_set, name, q.sal_config_get(name))

    def properties(self, *names):
        return [q.sal_config_get(name) for name in names]

    def ports(self, getter):
        return [self.value(getter, port) for port in range(1, FRONT_PORTS + 1)]


class Init(BringUpTest):
    def test_records_start_with_nothing_set(self):
        record = q.tridentPortMap_t()
        values = [getattr(record, name) for name in RECORD_MEMBERS]
        self.assertEqual(values, [False if 'Polarity' in name else 0 for name in RECORD_MEMBERS])
        self.assertEqual([type(value) for value in values],
                         [bool if 'Polarity' in name else int for name in RECORD_MEMBERS])
        self.assertEqual(error_of(setattr, record, 'txPolarity', 1), (
            TypeError, "in method 'tridentPortMap_t_txPolarity_set', argument 2 of type 'bool'"))
        self.assertEqual(error_of(q.BelvokInit, 5, 1), (
            TypeError, "in method 'BelvokInit', argument 1 of type 'tridentPortMap_t *'"))

    def test_one_record(self):
        names = [what + '_1' for what in WIRING + EXTERNAL_PHY]
        self.keep_property(*names)
        self.enter('02:00:00:00:00:01', port=1)
        record = wiring(warpCore=9, phyLane=3, txLane=1, rxLane=2, txPolarity=True, xcvrLane=7)
        self.done(q.BelvokInit(record, 1))
        self.assertEqual(self.properties(*names), ['9.3', '1', '2', '1', '0', '7'] + [None] * 4)
        self.assertEqual(self.ports(q.bcm_port_speed_get)[:32], [25000] + [100000] * 31)
        self.assertEqual(self.ports(q.bcm_port_enable_get), [1] + [0] * 63)
        self.assertEqual(self.macs(), [])
        self.done(q.BelvokInit(wiring(phyType=2, mdioAddr=0x3ff, phyRxPolarity=True), 1))
        self.assertEqual(self.properties(*names), ['0.0', '0', '0', '0', '0', '0', '2', '1023', '0', '1'])
        # What does not hold any more is not set any more.
        self.done(q.BelvokInit(wiring(), 1))
        self.assertEqual(self.properties(*names), ['0.0', '0', '0', '0', '0', '0'] + [None] * 4)
        self.done(q.BelvokInit(None, 0))
        self.assertEqual(self.properties(*names), [None] * 10)

    def test_several_records(self):
        self.keep_property(*['%s_%d' % (what, port) for port in range(1, 4) for what in WIRING])
        speeds = [1000, 10000, 40000]
        records = self.array_of([wiring(speed=speed, phyLane=lane) for lane, speed in enumerate(speeds)])
        self.done(q.BelvokInit(records, 3))
        self.assertEqual(self.ports(q.bcm_port_speed_get)[:32], speeds + [100000] * 29)
        self.assertEqual(self.ports(q.bcm_port_enable_get), [1] * 3 + [0] * 61)
        # A lane has one port.
        records = self.array_of([wiring(), wiring()])
        self.assertStatus(q.BCM_E_PARAM, q.BelvokInit(records, 2))

    def test_what_cannot_be_changes_nothing(self):
        self.keep_property('port_map_1')
        self.done(q.bcm_port_speed_set(0, 1, 1000))
        lanes = [(name, value) for name in ('phyLane', 'txLane', 'rxLane', 'xcvrLane') for value in (-1, 8)]
        for name, value in lanes + [('speed', 0), ('speed', 12), ('speed', -1), ('warpCore', -1),
                                    ('warpCore', 64), ('phyType', -1), ('phyType', 4), ('mdioAddr', 0x400),
                                    ('mdioAddr', 2 ** 32 - 1)]:
            self.assertStatus(q.BCM_E_PARAM, q.BelvokInit(wiring(**{name: value}), 1), (name, value))
        for record, count in ((None, 1), (None, -1), (wiring(), -1), (wiring(), 65), (wiring(), 2 ** 31 - 1)):
            self.assertStatus(q.BCM_E_PARAM, q.BelvokInit(record, count))
        self.assertEqual(self.value(q.bcm_port_speed_get, 1), 1000)
        self.assertEqual(self.properties('port_map_1'), [None])

    def test_what_one_port_or_device_refuses_changes_nothing(self):
        self.keep_property('port_map_1', 'port_map_33', 'l2_age_timer.1')
        q.addSandDevice(0, 2, 0, 0)
        self.enter('02:00:00:00:00:01', port=1)
        self.done(q.bcm_port_speed_set(0, 1, 1000))

        def state():
            return (self.ports(q.bcm_port_speed_get), self.ports(q.bcm_port_enable_get), self.macs(),
                    self.properties('port_map_1', 'port_map_33'), q.bcm_attach_check(1))
        before = state()
        # Port 33 is the first of those that go up to 10 Gbit/s.
        records = [wiring(speed=40000, warpCore=port // 4, phyLane=port % 4) for port in range(33)]
        self.assertStatus(q.BCM_E_PARAM, q.BelvokInit(self.array_of(records), 33))
        self.assertEqual(state(), before)
        records[32].speed = 10000
        self.done(q.sal_config_set('l2_age_timer.1', 'abc'))
        self.assertEqual(told(q.BelvokInit, self.array_of(records), 33),
                         (q.BCM_E_CONFIG, 'l2_age_timer.1=abc: not a number\n'))
        self.assertEqual(state(), before)
        library.sal_config_set('l2_age_timer.1', None)
        self.done(q.BelvokInit(self.array_of(records), 33))
        self.assertEqual(self.ports(q.bcm_port_speed_get)[:33], [40000] * 32 + [10000])

    def test_a_port_takes_the_speeds_that_it_is_said_to_take(self):
        medium = {'fiber': 1 << q.SOC_PHY_MEDIUM_FIBER, 'copper': 1 << q.SOC_PHY_MEDIUM_COPPER}
        self.addCleanup(library.sim_cable_plug, 0, 33, medium['copper'], 10)
        for plugged in medium.values():
            self.done(library.sim_cable_plug(0, 33, plugged, 10))
            for speed in (10, 100, 1000, 10000, 25000, 100000):
                self.done(q.system_init(0))
                taken = q.bcm_port_speed_set(0, 33, speed)
                self.assertEqual(library.sim_start_speed_check(0, 33, speed), taken, speed)

    def test_every_mapped_device_comes_up(self):
        q.addSandDevice(0, 2, 0, 0)
        q.addSandFapDeviceUnmapped(0, 3, 0, 0, 0)
        q.addSandFeDeviceUnmapped(0, 4, 0, 0, 1)
        q.mapSandDevice(3)
        self.done(q.BelvokInit(None, 0))
        self.assertEqual([q.bcm_attach_check(unit) for unit in range(4)], [0, 0, q.BCM_E_UNIT, q.BCM_E_UNIT])
        self.assertEqual(self.ports(q.bcm_port_enable_get), [1] * FRONT_PORTS)

    def test_basic_initialisation_starts_what_is_down(self):
        self.done(q.bcm_port_speed_set(0, 1, 1000))
        self.done(q.BelvokBasicInit())
        self.assertEqual(self.value(q.bcm_port_speed_get, 1), 1000)
        self.done(q.system_shutdown(0, 0))
        q.unmapSandDevice(0)
        self.done(q.BelvokBasicInit())
        self.assertStatus(q.BCM_E_UNIT, q.bcm_attach_check(0))
        q.mapSandDevice(0)
        self.done(q.BelvokBasicInit())
        self.set(q.EGQ_AGEING_CTRLr, 0x101)
        self.assertEqual(self.value(q.bcm_port_speed_get, 1), 100000)

    def array_of(self, records):
        """A pointer object to copies of the records, one behind the other, until the test ends."""
        size = ctypes.sizeof(PortMap)
        pointer = pointer_of_type('_p_tridentPortMap_s', size * len(records))
        for number, record in enumerate(records):
            ctypes.memmove(int(pointer) + number * size, int(record.this), size)
        self.addCleanup(lambda: q.delete_uint8Array(retyped(pointer, '_p_unsigned_char')))
        return pointer


class Properties(BringUpTest):
    def load(self, text):
        path = os.path.join(self.directory, 'properties')
        with open(path, 'w') as output:
            output.write(text)
        return printed(q.QuorelApiSetSocProperties, path)[1]

    def test_a_file_sets_them(self):
        self.keep_property('hook_a', 'hook_b.0', 'hook_c')
        self.assertEqual(self.load('# comment\n\n  hook_a = 1 \r\nhook_b.0=two words\nhook_a=3\nhook_c='), '')
        self.assertEqual(self.properties('hook_a', 'hook_b.0', 'hook_c'), ['3', 'two words', ''])

    def test_files_that_cannot_be_change_nothing(self):
        self.keep_property('hook_a', 'hook_b')
        self.load('hook_a=1')
        for line in ('no property', '=1', 'na me=1', 'n' * 200 + '=1', 'hook_b=' + 'v' * 5000, 'hook_b=1\0'):
            self.assertIn('error: ', self.load('hook_a=2\nhook_b=2\nhook_a=4\n%s\n' % line), line)
            self.assertEqual(self.properties('hook_a', 'hook_b'), ['1', None], line)
        pipe, loop = os.path.join(self.directory, 'pipe'), os.path.join(self.directory, 'loop')
        os.mkfifo(pipe)
        os.symlink(loop, loop)
        gone = os.path.join(self.directory, 'properties', 'in a file')
        # The last can be opened, and is a regular file, but no read of it succeeds.
        for path in ('', self.directory, os.path.join(self.directory, 'none'), '/dev/zero', pipe, loop, gone,
                     'n' * 300, '/proc/self/mem'):
            self.assertIn('cannot be read', printed(q.QuorelApiSetSocProperties, path)[1], path)
        self.assertEqual(self.properties('hook_a', 'hook_b'), ['1', None])
        with limit(resource.RLIMIT_NOFILE, 3):
            text = printed(q.QuorelApiSetSocProperties, os.path.join(self.directory, 'properties'))[1]
        self.assertIn('cannot be read', text)

    def test_every_beginning_of_a_file_is_all_or_nothing(self):
        self.keep_property('hook_a', 'hook_b')
        text = 'hook_a=12\nhook_b=34\n'
        for size in range(len(text) + 1):
            library.sal_config_set('hook_a', None)
            library.sal_config_set('hook_b', None)
            said = self.load(text[:size])
            lines = text[:size].splitlines()
            refused = any('=' not in line for line in lines)
            self.assertEqual('not a property' in said, refused, size)
            values = [] if refused else [line.split('=')[1] for line in lines]
            self.assertEqual(self.properties('hook_a', 'hook_b'), (values + [None] * 2)[:2], size)

    def test_the_newer_algorithm(self):
        name = 'fqp_pqp_new_algo_enable'
        self.keep_property(name, name + '.0')
        get = q.belvok_soc_jer_fqp_pqp_new_algo_enable_get
        self.assertEqual([get(unit) for unit in (0, 1, -1)], [0, q.BCM_E_UNIT, q.BCM_E_UNIT])
        for text, wanted in (('%s=1', 1), ('%s.0=0', 0), ('%s.0=0x10', 1), ('%s.0=x', 0)):
            self.load(text % name)
            self.assertEqual(get(0), wanted, text)

    def test_the_path_of_the_constraints(self):
        for path in ('/some/where', ''):
            q.setCopyEngineConstraintsFilePath(path)
            self.assertEqual(library.platform_copy_engine_constraints_file_path(), path)


class Protection(BringUpTest):
    def write(self, path, unit=0):
        return q.QuorelApiPrintDeviceMemParityEccInfoToFile(unit, path)

    def test_every_memory_has_a_line(self):
        path = os.path.join(self.directory, 'memories')
        self.done(self.write(path))
        with open(path) as lines:
            text = lines.read()
        names = [line.split()[1] for line in text.splitlines()]
        self.assertEqual(set(name.split('[')[0] + 'm' for name in names), set(MEMORIES.values()))
        self.assertEqual(len(names), len(set(names)))
        for line in ('IHB_PORT_INFO[0]: 65 entries of 64 bits: parity, 1 bit',
                     'FQP_CALENDAR[1]: 1024 entries of 32 bits: parity, 1 bit',
                     'IHP_MAC_TABLE[0]: 4096 entries of 128 bits: ECC, 9 bits',
                     'IHB_PROGRAM_SELECTION_TCAM[0]: 128 entries of 160 bits: none'):
            self.assertIn(' %s\n' % line, text)

    def test_whole_or_not_at_all(self):
        path, link = os.path.join(self.directory, 'memories'), os.path.join(self.directory, 'link')
        with open(path, 'w') as output:
            output.write('as it was')
        os.chmod(path, 0o640)
        os.symlink(path, link)
        for bad in ('', self.directory, os.path.join(path, 'in a file'), '/dev/full', '/no/such/folder/file'):
            self.assertStatus(q.BCM_E_FAIL if bad else q.BCM_E_PARAM, self.write(bad), bad)
        self.assertTrue(stat.S_ISCHR(os.stat('/dev/full').st_mode))
        for unit in (-1, 1, 16):
            self.assertStatus(q.BCM_E_UNIT, self.write(path, unit))
        with open(path) as unchanged:
            self.assertEqual(unchanged.read(), 'as it was')
        self.done(self.write(link))
        self.assertTrue(os.path.islink(link))
        self.assertGreater(os.path.getsize(path), 1000)
        self.assertEqual(stat.S_IMODE(os.stat(path).st_mode), 0o640)
        self.assertEqual(sorted(os.listdir(self.directory)), ['link', 'memories'])

    def test_what_fails_on_the_way_leaves_the_old_file(self):
        path = os.path.join(self.directory, 'memories')
        with open(path, 'w') as output:
            output.write('as it was')
        before = signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        self.addCleanup(signal.signal, signal.SIGXFSZ, before)
        # The disk fills up; there are too many files open.
        with limit(resource.RLIMIT_FSIZE, 1000):
            self.assertStatus(q.BCM_E_FAIL, self.write(path))
        with limit(resource.RLIMIT_NOFILE, 3):
            self.assertStatus(q.BCM_E_FAIL, self.write(path))
        self.assertEqual(os.listdir(self.directory), ['memories'])
        with open(path) as unchanged:
            self.assertEqual(unchanged.read(), 'as it was')
        # What somebody else left there stays.
        others = '%s.%d.0.tmp' % (path, os.getpid())
        os.mkdir(others)
        self.done(self.write(path))
        os.rmdir(others)

    def test_names_that_lead_elsewhere(self):
        pipe, loop, link = [os.path.join(self.directory, name) for name in ('pipe', 'loop', 'link')]
        os.mkfifo(pipe)
        os.symlink(loop, loop)
        for path in (pipe, loop):
            self.assertStatus(q.BCM_E_FAIL, self.write(path))
        os.symlink('not yet there', link)
        self.done(self.write(link))
        self.assertTrue(os.path.islink(link))
        self.assertGreater(os.path.getsize(os.path.join(self.directory, 'not yet there')), 1000)
        self.assertEqual(sorted(os.listdir(self.directory)), ['link', 'loop', 'not yet there', 'pipe'])
        # As long as names can be.
        longest = os.path.join(self.directory, 'n' * 255)
        self.done(self.write(longest))
        self.assertGreater(os.path.getsize(longest), 1000)


if __name__ == '__main__':
    unittest.main()
