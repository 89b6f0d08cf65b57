from quorel.sim.dissector import Field as Field, difference as difference, dissect as dissect
from quorel.sim.frames import ethernet as ethernet, tagged as tagged, udp4 as udp4
from quorel.sim.switch import CPU_PORT as CPU_PORT, FRONT_PORTS as FRONT_PORTS, CaptureError as CaptureError
from quorel.sim.switch import InterfaceError as InterfaceError, Switch as Switch, advance as advance, now as now
from quorel.sim.switch import run_clock as run_clock, step_clock as step_clock
from quorel.sim.testing import TestCase as TestCase
