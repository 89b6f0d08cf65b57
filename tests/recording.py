"""The development SDK's log of calls."""
import contextlib
import ctypes
import os

import _QuorelApiNew

library = ctypes.CDLL(os.path.join(os.path.dirname(os.path.abspath(_QuorelApiNew.__file__)), 'libQuorelApiNew.so.0'))
library.sim_call_log_function.restype = ctypes.c_char_p
library.sim_call_log_argument.restype = ctypes.c_void_p
library.sim_call_log_argument.argtypes = [ctypes.c_int, ctypes.c_int, ctypes.POINTER(ctypes.c_size_t)]


def _argument(call, number):
    size = ctypes.c_size_t()
    data = library.sim_call_log_argument(call, number, ctypes.byref(size))
    return ctypes.string_at(data, size.value) if size.value else ''


def calls():
    """[(function, [the bytes of each argument as received])] since the log began."""
    return [(library.sim_call_log_function(call),
             [_argument(call, number) for number in range(library.sim_call_log_arguments(call))])
            for call in range(library.sim_call_log_count())]


@contextlib.contextmanager
def recording():
    """Records what the SDK is called with in the block; gives a function that returns calls()."""
    library.sim_call_log_start()
    try:
        yield calls
    finally:
        library.sim_call_log_stop()
