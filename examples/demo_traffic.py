"""Packets for the simulated switch: what the examples watch where there is no
real one. C has it in sim/traffic.h, and ctypes calls it."""

import ctypes
import os

import _QuorelApiNew

LIBRARY = os.path.join(os.path.dirname(_QuorelApiNew.__file__),
                       'libQuorelApiNew.so.0')
ARP = '\x08\x06'


def arrive(unit, port, source, destination='ff:ff:ff:ff:ff:ff', size=64):
    """A packet of that many bytes arrives at a port.

    Raises AttributeError if the SDK is not that of the simulated switch.
    """
    head = ''.join(chr(int(byte, 16))
                   for mac in (destination, source) for byte in mac.split(':'))
    frame = (head + ARP).ljust(size - 4, '\0')  # without checksum
    ctypes.CDLL(LIBRARY).sim_packet_arrive(unit, port, frame, len(frame))
