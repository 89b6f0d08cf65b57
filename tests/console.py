"""What the SDK prints, and the text pointers that it hands out."""
import contextlib
import ctypes
import os
import sys
import tempfile

import QuorelApiNew as q
import type_table
from recording import library

library.sim_console_capture_end.restype = ctypes.c_void_p


def printed(call, *args):
    """(result, what it printed)"""
    if library.sim_console_capture_begin() != 0:
        raise MemoryError
    size = ctypes.c_size_t()
    try:
        result = call(*args)
    finally:
        text = ctypes.string_at(library.sim_console_capture_end(ctypes.byref(size)), size.value)
    return result, text


def told(call, *args):
    """(result, what the process wrote to standard error)"""
    sys.stderr.flush()
    with tempfile.TemporaryFile() as output:
        kept = os.dup(2)
        os.dup2(output.fileno(), 2)
        try:
            result = call(*args)
        finally:
            os.dup2(kept, 2)
            os.close(kept)
        output.seek(0)
        return result, output.read()


def run(line, unit=0):
    """(result, output) of a line of commands"""
    return printed(q.sh_process_command, unit, line)


@contextlib.contextmanager
def text_cells(count):
    """Pointer objects of the type `char **` to cells that hold null."""
    cells = [type_table.pointer_of_type('_p_p_char', 8) for _ in range(count)]
    for cell in cells:
        ctypes.memset(int(cell), 0, 8)
    yield cells
    for cell in cells:
        q.delete_uint8Array(type_table.retyped(cell, '_p_unsigned_char'))


def text_in(cell):
    return ctypes.c_char_p.from_address(int(cell)).value


def properties():
    """[(name, value)] in the store's order."""
    found = []
    with text_cells(2) as (name, value):
        while q.sal_config_get_next(name, value) == q.BCM_E_NONE:
            found.append((text_in(name), text_in(value)))
        assert text_in(name) is None and text_in(value) is None
    return found
