"""External MDIO access through Python objects, on the development host's stand-in of the platform."""
import ctypes
import errno
import os
import sys
import threading
import unittest

import QuorelApiNew as q
from binding import error_of
from recording import library as sdk
from type_table import pointer_at

here = os.path.dirname(sdk._name)
platform = ctypes.CDLL(os.path.join(here, 'libvey.so.0'))
mdio = ctypes.CDLL(os.path.join(here, 'libQuorelApiPythonMdioAccess.so.0'))
mdio.ext_phy_error.restype = ctypes.c_char_p
# The same functions, called without letting other Python threads run.
mdio_with_interpreter = ctypes.PyDLL(mdio._name)

UNIT, PHY, KIND_84328 = 0, 5, 3
PARAM, NOT_FOUND, FAIL = -4, -7, -11
install = q.QuorelApiSetExt84328MdioAccessWrapper


def lock_is_free():
    return platform.vey_activity_lock() == 0 and platform.vey_activity_unlock() == 0


def name_of(unit=UNIT, phy=PHY, kind=KIND_84328):
    """The name of the installed access object, or a status."""
    name = ctypes.create_string_buffer(64)
    return mdio.ext_phy_name(unit, phy, kind, name, 64) or name.value


def read(address, unit=UNIT, phy=PHY, kind=KIND_84328, device=1):
    """(status, data) of a PHY driver's read."""
    data = ctypes.c_uint(0xaaaa)
    return mdio.ext_phy_read(unit, phy, kind, device, address, ctypes.byref(data)), data.value


def write(address, data, unit=UNIT, phy=PHY, kind=KIND_84328, device=1):
    return mdio.ext_phy_write(unit, phy, kind, device, address, data)


class Registers(object):
    """Carries out the accesses on a dictionary."""

    def __init__(self):
        self.calls, self.values = [], {}

    def read(self, bus, port, device, address):
        self.calls.append((bus, port, device, address))
        return self.values.get((device, address), 0)

    def write(self, bus, port, device, address, data):
        self.calls.append((bus, port, device, address, data))
        self.values[device, address] = data


class MdioTest(unittest.TestCase):
    def setUp(self):
        self.registers = Registers()
        self.references = sys.getrefcount(self.registers)
        self.addCleanup(mdio.ext_phy_remove, UNIT, PHY, KIND_84328)

    def assertUntouched(self):
        """Nothing is installed or held, and the lock is free."""
        self.assertTrue(lock_is_free())
        self.assertEqual(name_of(), NOT_FOUND)
        self.assertEqual(sys.getrefcount(self.registers), self.references)


class Access(MdioTest):
    def test_the_result_of_a_write_does_not_matter(self):
        for result in (None, 0, 'text', [1], 3.0, 2 ** 70, -1):
            self.registers.write = lambda *_: result
            install(UNIT, PHY, self.registers)
            self.assertEqual(write(1, 2), 0, result)

    def test_a_driver_reaches_the_objects_methods(self):
        self.assertIsNone(install(UNIT, PHY, self.registers))
        self.assertEqual(name_of(), 'PythonAccess-0-5')
        self.assertEqual(write(0xc000, 0x1234), 0)
        self.assertEqual(read(0xc000), (0, 0x1234))
        self.assertEqual(self.registers.calls, [(0, PHY, 1, 0xc000, 0x1234), (0, PHY, 1, 0xc000)])
        self.assertEqual(read(0xc000, kind=1)[0], NOT_FOUND)
        self.assertEqual(read(0xc000, phy=PHY + 1)[0], NOT_FOUND)

        self.assertIsNone(install(7, 0x3ff, self.registers))
        self.addCleanup(mdio.ext_phy_remove, 7, 0x3ff, KIND_84328)
        self.assertEqual(write(0, 1, 7, 0x3ff), 0)
        self.assertEqual(self.registers.calls[-1], (31, 31, 1, 0, 1))

    def test_drivers_run_in_any_thread(self):
        install(UNIT, PHY, self.registers)
        thread = threading.Thread(target=write, args=(2, 3))
        thread.start()
        thread.join()
        self.assertEqual(self.registers.values[1, 2], 3)
        self.assertEqual(mdio_with_interpreter.ext_phy_write(UNIT, PHY, KIND_84328, 1, 2, 4), 0)
        self.assertEqual(self.registers.values[1, 2], 4)

    def test_failing_methods_fail_the_access(self):
        install(UNIT, PHY, self.registers)
        range_text = 'PythonAccess-0-5: read() did not return a number from 0 to 0xffff'
        type_text = 'TypeError: read() returned neither a number nor None'
        for value, text in ((-1, range_text), (0x10000, range_text), (None, range_text), ('x', type_text),
                            (2.5, type_text),
                            (2 ** 70, 'OverflowError: Python int too large to convert to C long')):
            self.registers.values[1, 9] = value
            self.assertEqual((read(9)[0], mdio.ext_phy_error()), (FAIL, text))

        def lose(*_):
            raise KeyError('lost')
        self.registers.read = self.registers.write = lose
        for status in (read(9)[0], write(9, 1)):
            self.assertEqual((status, mdio.ext_phy_error()), (FAIL, "KeyError: 'lost'"))
        del self.registers.read, self.registers.write
        self.assertEqual(write(9, 1), 0)
        self.assertEqual(read(9), (0, 1))

    def test_one_reference_is_kept_as_long_as_the_object_is_installed(self):
        for _ in range(3):
            install(UNIT, PHY, self.registers)
            self.assertEqual(sys.getrefcount(self.registers), self.references + 1)
        other = Registers()
        install(UNIT, PHY, other)
        self.assertEqual(sys.getrefcount(self.registers), self.references)
        self.assertEqual(mdio.ext_phy_remove(UNIT, PHY, KIND_84328), 0)
        self.assertEqual(sys.getrefcount(other), 2)
        self.assertUntouched()

    def test_the_end_of_a_replaced_object_runs_with_the_lock_free(self):
        seen = []

        class Last(Registers):
            def __del__(self):
                seen.append(lock_is_free())

        install(UNIT, PHY, Last())
        install(UNIT, PHY, self.registers)
        self.assertEqual(seen, [True])


class Refusals(MdioTest):
    def test_numbers_out_of_range(self):
        phy_text = 'ExternalPhyId::value < 0 or > 0x03ff not allowed'
        unit_text = 'UnitId::value < 0 or > 255 not allowed'
        # When both are wrong, it is the PHY's that is told.
        for unit, phy, text in ((0, 0x400, phy_text), (0, -1, phy_text), (0, 0xffff, phy_text),
                                (256, 0x400, phy_text), (256, PHY, unit_text), (-1, PHY, unit_text),
                                (-2 ** 31, 0, unit_text)):
            self.assertEqual(error_of(install, unit, phy, self.registers), (ValueError, text))
            self.assertUntouched()
        # A PHY's number is cut to 16 bits before it is checked, and named whole.
        install(UNIT, 0x10000 + PHY, self.registers)
        self.assertEqual(name_of(), 'PythonAccess-0-%d' % (0x10000 + PHY))

    def test_wrong_arguments(self):
        entry = q.QuorelApiSetExtMdioAccess
        text = "in method 'QuorelApiSetExtMdioAccess', argument %d of type '%s'"
        kind_text = text % (4, 'Hardware::PhyBcm::ManagedPhy')
        for unit, phy, kind, exception, message in (
                (UNIT, 'x', None, TypeError, text % (2, 'int')),
                (2 ** 31, PHY, None, OverflowError, text % (1, 'int')),
                (UNIT, PHY, 3, TypeError, kind_text),
                (UNIT, PHY, None, ValueError, 'invalid null reference ' + kind_text)):
            self.assertEqual(error_of(entry, unit, phy, self.registers, kind), (exception, message))
            self.assertUntouched()


class ActivityLock(MdioTest):
    def test_a_thread_that_holds_it_keeps_it(self):
        self.assertEqual(platform.vey_activity_lock(), 0)
        self.assertEqual(platform.vey_activity_lock(), errno.EDEADLK)
        self.assertIsNone(install(UNIT, PHY, self.registers))
        error_of(install, UNIT, 0x400, self.registers)
        self.assertEqual(platform.vey_activity_lock(), errno.EDEADLK)
        self.assertEqual(platform.vey_activity_unlock(), 0)
        self.assertEqual(platform.vey_activity_unlock(), errno.EPERM)
        self.assertEqual(name_of(), 'PythonAccess-0-5')

    def failure(self, lock_error, unlock_error):
        platform.vey_activity_lock_fail_next(lock_error, unlock_error)
        try:
            install(UNIT, PHY, self.registers)
        except OSError as error:
            return error.errno, error.strerror

    def test_failures_raise_with_their_number(self):
        self.assertEqual(self.failure(errno.EAGAIN, 0), (errno.EAGAIN, 'Failed to grab lock'))
        self.assertUntouched()
        self.assertEqual(self.failure(0, errno.EINVAL), (errno.EINVAL, 'Failed to release the lock'))
        self.assertTrue(lock_is_free())
        self.assertEqual(name_of(), 'PythonAccess-0-5')

    def test_it_is_waited_for(self):
        def install_all():
            for number in range(300):
                install(UNIT, number % 8, self.registers)

        def write_all():
            for number in range(300):
                write(1, number, phy=number % 8)

        threads = [threading.Thread(target=work) for work in (install_all, write_all, install_all, write_all)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for phy in range(8):
            self.assertEqual(mdio.ext_phy_remove(UNIT, phy, KIND_84328), 0)
        self.assertUntouched()


class Kinds(MdioTest):
    """The entry points that take the platform's own types, which Python carries as pointers."""

    def setUp(self):
        MdioTest.setUp(self)
        self.kept = []
        self.unit = self.value(ctypes.c_uint, UNIT, '_p_Hardware__QuorelApi__UnitId')
        self.phy = self.value(ctypes.c_uint16, PHY, '_p_Hardware__QuorelApi__ExternalPhyId')

    def value(self, c_type, number, descriptor):
        self.kept.append(c_type(number))
        return pointer_at(ctypes.addressof(self.kept[-1]), descriptor)

    def kind(self, number):
        return self.value(ctypes.c_int, number, '_p_Hardware__PhyBcm__ManagedPhy')

    def test_a_phy_is_of_one_kind(self):
        for number in (1, 2, 3):
            self.assertIsNone(q.QuorelApiSetExtMdioAccess(UNIT, PHY, self.registers, self.kind(number)))
            self.assertEqual([name_of(kind=kind) == 'PythonAccess-0-5' for kind in (1, 2, 3)],
                             [kind == number for kind in (1, 2, 3)])
            self.assertEqual(sys.getrefcount(self.registers), self.references + 1)

    def test_what_else_the_platform_throws_is_a_runtime_error(self):
        for number in (0, 4, -1, 1000):
            self.assertEqual(
                error_of(q.QuorelApiSetExtMdioAccess, UNIT, PHY, self.registers, self.kind(number)),
                (RuntimeError, 'QuorelApiSetExtMdioAccess: no managed PHY is of kind %d' % number))
            self.assertUntouched()

    def test_the_standbys_version(self):
        self.assertIsNone(q.standbyBcm84328VersionIs(self.unit, self.phy, 42))
        self.addCleanup(q.standbyBcm84328VersionIs, self.unit, self.phy, 0)
        version = ctypes.c_uint()
        self.assertEqual(mdio.ext_phy_standby_version(UNIT, PHY, ctypes.byref(version)), 0)
        self.assertEqual(version.value, 42)
        self.assertTrue(lock_is_free())
        null = "invalid null reference in method 'standbyBcm84328VersionIs', argument 1 of type " \
            "'Hardware::QuorelApi::UnitId'"
        self.assertEqual(error_of(q.standbyBcm84328VersionIs, None, None, 0), (ValueError, null))

    def test_a_failing_lock_reaches_every_entry_point(self):
        for call, arguments in ((q.QuorelApiGetExtMdioAccess, (self.unit, self.phy, self.kind(3))),
                                (q.standbyBcm84328VersionIs, (self.unit, self.phy, 1))):
            platform.vey_activity_lock_fail_next(errno.EIO, 0)
            self.assertEqual(error_of(call, *arguments), (OSError, '[Errno 5] Failed to grab lock'))
            self.assertUntouched()

    def test_the_installed_access_is_found_and_let_go(self):
        def found():
            """What the counted pointer that Python was given holds."""
            access = q.QuorelApiGetExtMdioAccess(self.unit, self.phy, self.kind(KIND_84328))
            self.assertTrue(access.own())
            return ctypes.c_void_p.from_address(int(access)).value

        self.assertIsNone(found())
        install(UNIT, PHY, self.registers)
        self.assertTrue(found())
        self.assertEqual(found(), found())
        self.assertTrue(lock_is_free())
        access = q.QuorelApiGetExtMdioAccess(self.unit, self.phy, self.kind(KIND_84328))
        mdio.ext_phy_remove(UNIT, PHY, KIND_84328)
        self.assertEqual(sys.getrefcount(self.registers), self.references + 1)
        del access
        self.assertEqual(sys.getrefcount(self.registers), self.references)


class InternalPhys(unittest.TestCase):
    def test_registers_and_status_texts(self):
        data = q.uintp()
        self.assertEqual(q.QuorelApiInternalPhyWrite(0, 1, 2, 0x800000ff, 77), 0)
        self.assertEqual((q.QuorelApiInternalPhyRead(0, 1, 2, 0x800000ff, data), data.value()), (0, 77))
        self.assertEqual((q.QuorelApiInternalPhyRead(0, 1, 3, 0x800000ff, data), data.value()), (0, 0))
        self.assertEqual(q.QuorelApiInternalPhyRead(0, 1, 8, 0, data), PARAM)
        for status, text in ((0, 'no error'), (PARAM, 'bad parameter'), (-18, 'no such port'),
                             (-19, 'unknown error'), (1, 'unknown error'), (-2 ** 31, 'unknown error')):
            self.assertEqual(q.errorString(status), text)


if __name__ == '__main__':
    unittest.main()
