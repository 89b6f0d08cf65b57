"""What tests of the chip's registers and memories share."""
import ctypes
import os
import re

import QuorelApiNew as q
from recording import library
from simulator import SwitchTest

ANY = q.REG_PORT_ANY
WORDS = q.SOC_REG_ABOVE_64_MAX_SIZE_U32
CORES = 2


def identifiers(last_letter):
    """{number: name} of the registers or memories."""
    named = re.compile('[A-Z][A-Z0-9_]*%s$' % last_letter).match
    return dict((getattr(q, name), name) for name in dir(q) if named(name))


def _fields():
    # Python knows fields by number only.
    tests = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(tests, '..', 'sdk', 'include', 'soc', 'field_ids.h')) as header:
        names = re.findall(r'^    (\w+f),$', header.read(), re.M)
    return dict((name, number) for number, name in enumerate(names))


REGISTERS = identifiers('r')
MEMORIES = identifiers('m')
FIELDS = _fields()


class AddressInfo(ctypes.Structure):
    """soc_regaddrinfo_t"""
    _fields_ = [('addr', ctypes.c_uint32)] + [(name, ctypes.c_int) for name in 'valid reg idx block port cos '
                                              'is_custom'.split()] + [('acc_type', ctypes.c_uint8),
                                                                      ('field', ctypes.c_int)]


iterate_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.POINTER(AddressInfo), ctypes.c_void_p)
snoop_callback = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.POINTER(AddressInfo),
                                  ctypes.c_uint32, ctypes.POINTER(ctypes.c_uint32), ctypes.c_void_p)


class Words(object):
    """Words of a value, as an array that the SDK works on, which lives as long as this, and as one number."""

    def __init__(self, value=0):
        self.array = q.new_entrydata(WORDS)
        for word in range(WORDS):
            q.entrydata_setitem(self.array, word, value >> 32 * word & 0xffffffff)

    def __del__(self):
        q.delete_entrydata(self.array)

    def value(self):
        return sum(q.entrydata_getitem(self.array, word) << 32 * word for word in range(WORDS))


class ChipTest(SwitchTest):
    """Each test has the chip as after its start, and leaves it so."""

    def reset(self):
        self.done(q.soc_init(0))
        self.kept = []

    def array(self, value=0):
        """The words of a value, until the test ends."""
        self.kept.append(Words(value))
        return self.kept[-1].array

    def get(self, reg, port=ANY, index=0):
        words = Words()
        self.done(q.soc_reg_above_64_get(0, reg, port, index, words.array))
        return words.value()

    def set(self, reg, value, port=ANY, index=0):
        self.done(q.soc_reg_above_64_set(0, reg, port, index, self.array(value)))

    def mask(self, reg, flags=0):
        words = Words()
        q.soc_reg_above_64_datamask(0, reg, flags, words.array)
        return words.value()

    def instances(self):
        """[(register, port or core, index, address)] of all there are."""
        found = []

        def visit(unit, info, data):
            info = info[0]
            ports = range(CORES) if info.port == ANY else [info.port]
            found.append((info.reg, [port for port in ports
                                     if q.soc_reg_addr(0, info.reg, port, info.idx) == info.addr][0],
                          info.idx, info.addr))
            return 0
        self.done(library.soc_reg_iterate(0, iterate_callback(visit), None))
        return found
