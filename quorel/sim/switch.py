"""A simulated switch as those outside of it meet it: its ports' cables, the packets on them, and time."""
import contextlib

import QuorelApiNew as q
import _quorel_sim as sim
from quorel import array, errors

CPU_PORT = 0
FRONT_PORTS = range(1, 65)
CABLE_METRES = 10

_STATISTICS = sorted((value, name) for name, value in vars(q).items()
                     if name.startswith('snmp') and isinstance(value, int) and name != 'snmpValCount')


def _done(function, *arguments):
    status = function(*arguments)
    if status < 0:
        raise errors.StatusError(function, arguments, status)
    return status


class Switch(object):
    """The simulated switch attached as a unit. Ports are numbers; frames are str, bytearray or any buffer, from the
    destination address on and without checksum. Raises StatusError for what the switch refuses.
    """

    def __init__(self, unit=0):
        self.unit = unit

    def __repr__(self):
        return 'sim.Switch(%d)' % self.unit

    def send(self, port, frame):
        """A frame arrives at the port: [(port, frame), ...], what left the switch because of it, in that order.

        StatusError, BCM_E_DISABLED, if the port is disabled or has no link; TypeError and BCM_E_PARAM for no frame.
        """
        left = sim.send(self.unit, port, frame)
        if left.__class__ is int:
            raise errors.StatusError(sim.send, (self.unit, port, bytes(frame)), left)
        return left

    def arrive(self, port, frame):
        """A frame arrives at the port, and nobody asks what becomes of it. Raises as send() does."""
        _done(sim.sim_packet_arrive, self.unit, port, frame)

    @contextlib.contextmanager
    def watched(self, function):
        """While the block runs, function(port, frame) is called for each frame that leaves a port of the switch."""
        def leaves(unit, port, frame):
            if unit == self.unit:
                function(port, frame)
        sim.sim_packet_watch(leaves)
        try:
            yield
        finally:
            sim.sim_packet_watch(None)

    def plug(self, port, metres=CABLE_METRES):
        """Plugs in a cable, copper if the port has a socket for it, else fiber; at its end is a partner that can do
        all that the medium allows.
        """
        copper, fiber = 1 << q.SOC_PHY_MEDIUM_COPPER, 1 << q.SOC_PHY_MEDIUM_FIBER
        has_no_copper = sim.sim_cable_plug(self.unit, port, copper, metres) == q.SOC_E_PARAM
        _done(sim.sim_cable_plug, self.unit, port, fiber if has_no_copper else copper, metres)

    def pull(self, port):
        """Takes out what is plugged in: the link goes down."""
        _done(sim.sim_cable_plug, self.unit, port, 0, CABLE_METRES)

    def flap(self, port):
        """The cable comes out and is plugged in again."""
        self.pull(port)
        self.plug(port)

    def fresh(self):
        """The switch as it is when a process begins: attached anew, with a cable in each port, and nothing configured
        or learnt. Others that are told of units hear that it went and came.
        """
        if q.bcm_attach_check(self.unit) == q.BCM_E_NONE:
            _done(q.bcm_detach, self.unit)
        _done(q.bcm_attach, self.unit, '', '', 0)
        for port in FRONT_PORTS:
            self.plug(port)

    def sweep_addresses(self):
        """One sweep of the ageing timer; how many addresses it removed."""
        return _done(sim.sim_l2_age_step, self.unit)

    def statistics(self, port):
        """{name: value} of the port's statistics that are not 0."""
        types = array('bcm_stat_val_t', [value for value, _ in _STATISTICS])
        values = array('uint64', len(_STATISTICS))
        _done(q.bcm_stat_multi_get, self.unit, port, len(_STATISTICS), types, values)
        return dict((name, value) for (_, name), value in zip(_STATISTICS, values) if value)
