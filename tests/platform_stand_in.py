"""The stand-in of the platform from outside, and what tests of it share."""
import ctypes

import QuorelApiNew as q
from chip import ChipTest
from recording import library
from type_table import pointer_of_type, retyped

library.platform_device.restype = ctypes.c_char_p
library.platform_copy_engine_constraints_file_path.restype = ctypes.c_char_p
library.platform_pci_config.restype = ctypes.c_uint32
free = ctypes.CDLL(None).free
free.restype, free.argtypes = None, [ctypes.c_void_p]


def carried(pointer):
    """The number in a new pointer object to four bytes, which is freed."""
    assert pointer.own()
    pointer.disown()
    number = ctypes.c_uint32.from_address(int(pointer)).value
    free(int(pointer))
    return number


class PlatformTest(ChipTest):
    """Each test has the platform and unit 0 as when they were loaded, and leaves them so."""

    def setUp(self):
        q.sal_config_init()
        ChipTest.setUp(self)

    def reset(self):
        library.platform_reset()
        for unit in range(1, 16):
            q.bcm_detach(unit)
        if q.bcm_attach_check(0) != q.BCM_E_NONE:
            q.bcm_attach(0, '', '', -1)
        ChipTest.reset(self)

    def number(self, value, descriptor='_p_U32'):
        """A pointer object to a number, until the test ends."""
        pointer = pointer_of_type(descriptor, 4)
        ctypes.c_uint32.from_address(int(pointer)).value = value
        self.addCleanup(lambda: q.delete_uint8Array(retyped(pointer, '_p_unsigned_char')))
        return pointer

    def device(self, unit):
        return library.platform_device(unit)
