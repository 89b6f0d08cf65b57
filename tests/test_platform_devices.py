"""The platform's device list, standby values and interrupts."""
import os
import unittest

import QuorelApiNew as q
from binding import error_of
from chip import ANY
from console import printed
from platform_stand_in import PlatformTest, carried
from recording import library

OWN_ADDRESS = (0, 1, 0, 0)


def identity(unit):
    return carried(q.getDevId(unit)), carried(q.getDevRev(unit))


class Devices(PlatformTest):
    def test_the_own_chip_says_who_it_is(self):
        self.assertEqual((q.getNumDevices(), self.device(0)), (1, '0000:01:00.0 mapped'))
        number = self.get(q.CMIC_DEVICE_IDr)
        self.assertEqual(identity(0), (number & 0xffff, number >> 16))
        info = q.bcm_info_t()
        self.done(q.bcm_info_get(0, info))
        self.assertEqual(identity(0), (info.device, info.revision))
        self.assertEqual([identity(unit) for unit in (-1, 1, 2 ** 31 - 1, -2 ** 31)], [(0, 0)] * 4)
        pointer = q.getDevId(0)
        self.assertIn("'U32 *'", repr(pointer))
        carried(pointer)

    def test_added_devices_are_units(self):
        self.assertEqual(q.addSandDevice(0xffff, 255, 31, 7), 1)
        self.assertEqual(q.addSandFapDeviceUnmapped(0, 2, 0, 0, 0), 2)
        self.assertEqual(q.addSandFeDeviceUnmapped(0, 3, 0, 0, 1), 3)
        self.assertEqual([self.device(unit) for unit in range(1, 5)],
                         ['ffff:ff:1f.7 mapped', '0000:02:00.0', '0000:03:00.0', ''])
        self.assertEqual(identity(1), identity(0))
        self.assertEqual(identity(2), identity(0))
        self.assertNotEqual(identity(3), identity(0))

    def test_addresses_that_cannot_be_added(self):
        adders = (q.addSandDevice, lambda *address: q.addSandFapDeviceUnmapped(*(address + (0,))),
                  lambda *address: q.addSandFeDeviceUnmapped(*(address + (1,))))
        for add in adders:
            for address, status in ((OWN_ADDRESS, q.BCM_E_EXISTS), ((0, 0, 32, 0), q.BCM_E_PARAM),
                                    ((0, 0, 0, 8), q.BCM_E_PARAM)):
                self.assertStatus(status, add(*address))
        self.assertEqual(q.getNumDevices(), 1)
        self.assertEqual([adders[unit % 3](7, unit, 0, 0) for unit in range(1, 16)], range(1, 16))
        for add in adders:
            self.assertStatus(q.BCM_E_FULL, add(8, 0, 0, 0))
        self.assertEqual(q.getNumDevices(), 16)

    def test_mapping_decides_over_registers(self):
        address = q.soc_reg_addr(0, q.EGQ_AGEING_CTRLr, 0, 0)
        self.assertEqual(q.addSandFapDeviceUnmapped(0, 2, 0, 0, 0), 1)
        self.assertStatus(q.BCM_E_UNAVAIL, q.belvok_write_low(1, address, 0x101))
        q.mapSandDevice(1)
        self.assertStatus(q.BCM_E_UNIT, q.belvok_write_low(1, address, 0x101))
        self.done(q.BelvokBasicInit())
        self.done(q.belvok_write_low(1, address, 0x101))
        self.assertEqual(q.belvok_read_low(1, address), 0x101)
        q.unmapSandDevice(1)
        self.assertEqual(q.belvok_read_low(1, address), 0xffffffff)
        q.mapSandDevice(1)
        self.assertEqual(q.belvok_read_low(1, address), 0x101)

        self.assertEqual(q.addSandFeDeviceUnmapped(0, 4, 0, 0, 1), 2)
        q.mapSandDevice(2)
        self.done(q.belvok_write_low(2, address, 5))
        self.assertEqual(q.belvok_read_low(2, address), 0)
        for unit in (-1, 3, 2 ** 31 - 1):
            for call in (q.mapSandDevice, q.unmapSandDevice):
                self.assertIn('there is no device %d' % unit, printed(call, unit)[1])

    def test_rewiring(self):
        self.assertEqual(q.addSandFapDeviceUnmapped(0, 2, 0, 0, 0), 1)
        self.assertEqual(printed(q.rewireSandDeviceNoRemap, 1, 9, 8, 7, 6), (None, ''))
        self.assertEqual(self.device(1), '0009:08:07.6')
        self.assertEqual(printed(q.rewireSandDeviceRemap, 1, 9, 8, 7, 5), (None, ''))
        self.assertEqual(self.device(1), '0009:08:07.5 mapped')
        self.assertEqual(printed(q.rewireSandDeviceNoRemap, 1, 9, 8, 7, 5), (None, ''))
        self.assertEqual(self.device(1), '0009:08:07.5 mapped')
        q.unmapSandDevice(1)
        for rewire in (q.rewireSandDeviceRemap, q.rewireSandDeviceNoRemap):
            for unit, address in ((1, OWN_ADDRESS), (1, (0, 0, 32, 0)), (1, (0, 0, 0, 8)), (2, (0, 0, 0, 0)),
                                  (-1, (0, 0, 0, 0))):
                self.assertIn('device %d cannot be moved' % unit, printed(rewire, unit, *address)[1])
        self.assertEqual(self.device(1), '0009:08:07.5')
        # What it left is free.
        self.assertEqual(q.addSandDevice(0, 2, 0, 0), 2)


class Standby(PlatformTest):
    def test_values_hold_while_it_is_on(self):
        own = identity(0)
        q.standbyNumDevicesIs(self.number(5))
        q.standbyDevIdIs(0, self.number(0xabcdef01))
        q.standbyRevIdIs(3, self.number(7))
        self.assertEqual((q.getNumDevices(), identity(0), identity(3)), (1, own, (0, 0)))
        q.standbySupIs(True)
        self.assertEqual((q.getNumDevices(), identity(0), identity(3)), (5, (0xabcdef01, own[1]), (0, 7)))
        q.standbyNumDevicesIs(self.number(2 ** 32 - 1))
        self.assertEqual(q.getNumDevices(), 2 ** 31 - 1)
        for unit in (-1, 16, 2 ** 31 - 1):
            q.standbyDevIdIs(unit, self.number(1))
            q.standbyRevIdIs(unit, self.number(1))
            self.assertEqual(identity(unit), (0, 0))
        q.standbySupIs(False)
        self.assertEqual((q.getNumDevices(), identity(0), identity(3)), (1, own, (0, 0)))

    def test_numbers_are_not_what_it_takes(self):
        text = "in method 'standbyDevIdIs', argument 2 of type 'U32'"
        self.assertEqual(error_of(q.standbyDevIdIs, 0, 5), (TypeError, text))
        self.assertEqual(error_of(q.standbyDevIdIs, 0, None), (ValueError, 'invalid null reference ' + text))


class Interrupts(PlatformTest):
    def setUp(self):
        PlatformTest.setUp(self)
        self.reader, self.writer = os.pipe()
        self.addCleanup(os.close, self.reader)
        self.set(q.CMIC_IRQ_MASKr, 0x6)

    def raised(self, bits, unit=0):
        return library.platform_interrupt(unit, bits)

    def test_what_is_enabled_arrives(self):
        self.addCleanup(os.close, self.writer)
        self.assertEqual(self.raised(2), 0)
        q.fileDescriptorIs(self.writer)
        self.assertEqual([self.raised(bits) for bits in (1, 2, 4, 8, 0xf)], [0, 1, 1, 0, 1])
        self.assertEqual(os.read(self.reader, 9), '\0\0\0')
        q.unmapSandDevice(0)
        self.assertEqual(self.raised(2), 0)
        q.mapSandDevice(0)
        q.maskDeviceInterrupts(2)
        self.assertEqual(self.raised(2), 1)
        q.maskDeviceInterrupts(1)
        self.assertEqual([self.get(q.CMIC_IRQ_MASKr, ANY, index) for index in range(4)], [0] * 4)
        self.assertEqual(self.raised(0xffffffff), 0)
        self.set(q.CMIC_IRQ_MASKr, 1)
        q.disconnectInterruptsToDevices()
        self.assertEqual(self.raised(1), 0)
        q.fileDescriptorIs(self.writer)
        self.assertEqual([self.raised(1, unit) for unit in (0, 1, -1)], [1, 0, 0])

    def test_descriptors_that_cannot_be_written_to(self):
        for descriptor in (-1, 10 ** 6, self.reader):
            q.fileDescriptorIs(descriptor)
            self.assertEqual(self.raised(2), 0)
        q.fileDescriptorIs(self.writer)
        full = 0
        while self.raised(2):
            full += 1
        self.assertGreaterEqual(full, 4096)
        os.close(self.writer)
        self.assertEqual(self.raised(2), 0)


if __name__ == '__main__':
    unittest.main()
