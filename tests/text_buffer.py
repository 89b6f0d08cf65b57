"""Buffers for the SDK's formatters, which write into a str; and memory of types that Python cannot make."""
import ctypes

import QuorelApiNew as q
import type_table
from recording import library

FILLER = '\xa5'


def buffer_of(size):
    """A str of its own, to be written to."""
    return FILLER * size


def text_in(buffer):
    """What C reads in it."""
    return buffer[:buffer.index('\0')]


def untouched_from(buffer, place):
    return buffer[place:] == FILLER * (len(buffer) - place)


def formatted(formatter, *args):
    """The text of a formatter whose first argument is the buffer and which asks for no size."""
    buffer = buffer_of(65536)
    result = formatter(buffer, *args)
    text = text_in(buffer)
    assert result is None or result == text
    assert untouched_from(buffer, len(text) + 1)
    return text


class Memory(object):
    """A pointer object of a type, as the binding wants it, and the bytes behind it."""
    SIZE = 256

    def __init__(self, test, mangled_name, content=''):
        self.pointer = type_table.pointer_of_type(mangled_name, self.SIZE)
        self.address = int(self.pointer)
        ctypes.memmove(self.address, content, len(content))
        test.addCleanup(self.release)

    def release(self):
        q.delete_uint8Array(type_table.retyped(self.pointer, '_p_unsigned_char'))

    def bytes(self, size):
        return ctypes.string_at(self.address, size)

    def word(self):
        return ctypes.c_uint32.from_address(self.address).value


def null_calls(names, argument_count=8):
    """Calls each function of the SDK with nothing but zeros and nulls on unit 0."""
    for name in names:
        getattr(library, name)(*[None] * argument_count)
