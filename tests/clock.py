"""The simulator's clock."""
import ctypes

from recording import library

SECOND = 10 ** 9  # of its nanoseconds
STANDS, STEPS, RUNS = range(3)  # sim_clock_mode_t
library.sim_clock_now.restype = ctypes.c_uint64


def now():
    return library.sim_clock_now()


def advance(seconds):
    return library.sim_clock_advance(ctypes.c_uint64(int(round(seconds * SECOND))))


def next_event():
    """(status, seconds from now)"""
    due = ctypes.c_uint64()
    status = library.sim_clock_next(ctypes.byref(due))
    return status, (due.value - now()) / float(SECOND)
