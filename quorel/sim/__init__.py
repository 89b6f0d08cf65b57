"""The simulated switch as those outside of it meet it: cables, packets, real interfaces, and tests with them.

    from quorel import sim

    switch = sim.Switch()
    switch.fresh()
    switch.send(1, sim.ethernet('ff:ff:ff:ff:ff:ff', '02:00:00:00:00:01'))    # [(2, '...'), (3, '...'), ...]

It is there with the simulated switch only; of a real one ImportError says so.
"""
try:
    import _quorel_sim
except ImportError as error:
    raise ImportError('quorel.sim is for the simulated switch, which is not here: %s' % error)

from quorel.sim.dissector import Field, difference, dissect
from quorel.sim.frames import ethernet, tagged, udp4
from quorel.sim.switch import CPU_PORT, FRONT_PORTS, CaptureError, InterfaceError, Switch, advance, now, run_clock, step_clock
from quorel.sim.testing import TestCase

__all__ = ['CPU_PORT', 'CaptureError', 'FRONT_PORTS', 'Field', 'InterfaceError', 'Switch', 'TestCase', 'advance',
           'difference', 'dissect', 'ethernet', 'now', 'run_clock', 'step_clock', 'tagged', 'udp4']
