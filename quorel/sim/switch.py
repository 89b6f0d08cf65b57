"""A simulated switch as those outside of it meet it: its ports' cables, the packets on them, and time."""
import atexit
import contextlib
import os

import QuorelApiNew as q
import _quorel_sim as sim
from _quorel import _forget_registrations
from quorel import array, errors

CPU_PORT = 0
FRONT_PORTS = range(1, 65)
CABLE_METRES = 10
NAMESPACES = '/run/netns'

_COUNTERS = [('received', sim.simInterfaceReceived), ('sent', sim.simInterfaceSent),
             ('not received', sim.simInterfaceNotReceived), ('not sent', sim.simInterfaceNotSent)]
# Threads of the simulated switch may call Python functions, and wait for ours.
sim.wait_without_interpreter_lock()

_STATISTICS = sorted((value, name) for name, value in vars(q).items()
                     if name.startswith('snmp') and isinstance(value, int) and name != 'snmpValCount')


def _done(function, *arguments):
    status = function(*arguments)
    if status < 0:
        raise errors.StatusError(function, arguments, status)
    return status


_attached = set()  # (unit, port), interfaces may have gone since
_watchers = []  # (unit, function); the simulated switch tells one


def _frame_leaves(unit, port, frame):
    for watched, function in list(_watchers):
        if watched == unit:
            function(port, frame)


@atexit.register
def _detach_all():
    """While there still is an interpreter that the simulated switch's thread can call."""
    sim.sim_packet_watch(None)
    for unit, port in _attached:
        sim.sim_interface_detach(unit, port)


@contextlib.contextmanager
def _traced():
    sim.sim_trace_begin()
    try:
        yield
    finally:
        sim.sim_trace_end()


def now():
    """The time of the switches' clock, in seconds."""
    return sim.sim_clock_now() / 1e9


def advance(seconds):
    """Lets time pass, which stands still otherwise: what is due on the way happens, in order."""
    _done(sim.sim_clock_advance, int(seconds * 1000000000))


def run_clock(runs=True):
    """From now on time passes as the machine's does, or stands still again, as at first."""
    _done(sim.sim_clock_mode_set, sim.simClockRuns if runs else sim.simClockStands)


def step_clock():
    """From now on time passes only as advance() says, and what takes time takes it: link scan sees a change at the end
    of its interval, and functions of the SDK that wait advance the clock instead. See sim/clock.h.
    """
    _done(sim.sim_clock_mode_set, sim.simClockSteps)


class CaptureError(errors.StatusError):
    """A file of packets cannot be read or written: `problem` says why."""

    def __init__(self, function, arguments, status):
        errors.StatusError.__init__(self, function, arguments, status)
        self.problem = sim.sim_capture_problem()

    def __str__(self):
        return '%s: %s' % (errors.StatusError.__str__(self), self.problem)


class InterfaceError(errors.StatusError):
    """The host refuses an interface: `problem` says why."""

    def __init__(self, function, arguments, status):
        errors.StatusError.__init__(self, function, arguments, status)
        self.problem = sim.sim_interface_problem()

    def __str__(self):
        return '%s: %s' % (errors.StatusError.__str__(self), self.problem)


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
        """While the block runs, function(port, frame) is called for each frame that leaves a port of the switch. Blocks
        can be within others, of this switch or another.
        """
        watcher = self.unit, function
        _watchers.append(watcher)
        sim.sim_packet_watch(_frame_leaves)
        try:
            yield
        finally:
            _watchers.remove(watcher)
            if not _watchers:
                sim.sim_packet_watch(None)

    def plug(self, port, metres=CABLE_METRES):
        """Plugs in a cable, copper if the port has a socket for it, else fiber; at its end is a partner that can do
        all that the medium allows.
        """
        copper, fiber = 1 << q.SOC_PHY_MEDIUM_COPPER, 1 << q.SOC_PHY_MEDIUM_FIBER
        has_no_copper = sim.sim_cable_plug(self.unit, port, copper, metres) == q.SOC_E_PARAM
        _done(sim.sim_cable_plug, self.unit, port, fiber if has_no_copper else copper, metres)

    def join(self, port, other, other_port, metres=CABLE_METRES):
        """Plugs a cable into this port and one of another switch, or of this: what one sends the other receives."""
        _done(sim.sim_cable_join, self.unit, port, other.unit, other_port, metres)

    def pull(self, port):
        """Takes out what is plugged in: the link goes down."""
        _done(sim.sim_cable_pull, self.unit, port)

    def flap(self, port, times=1):
        """The cable comes out and is plugged in again, that many times."""
        _done(sim.sim_cable_flap, self.unit, port, times)

    def damage(self, memory, index, array=0):
        """A bit of a memory's entry turns over: who is told of the unit's events hears of it when the entry is read, or
        when memories are scanned (bcmSwitchMemScanEnable). memory: q.IHP_MAC_TABLEm and its like.
        """
        _done(sim.sim_memory_damage, self.unit, memory, array, -1, index)

    def trace(self, port, frame):
        """A frame arrives at the port: its way in words, a line for each step, with what it met."""
        with _traced():
            self.send(port, frame)
        return sim.sim_trace_text()

    def steps(self, port, frame):
        """The same for programs: [(unit, port, stage, drop, text), ...], stage and drop as sim/trace.h calls them, 'vlan'
        and 'vlan_filter'; drop is 'none' where it goes on.
        """
        with _traced():
            self.send(port, frame)
        return sim.trace_steps()

    def drops(self, port, frame):
        """A frame arrives at the port: why it, or copies of it, went no further: [(port, reason), ...] with reasons
        such as 'vlan_filter'; sim/trace.h lists them.
        """
        return [(at, drop) for _, at, _, drop, _ in self.steps(port, frame) if drop != 'none']

    @contextlib.contextmanager
    def captured(self, file, ports=None):
        """While the block runs, what arrives at these ports (default: all) and leaves them is written to a file, in
        the pcapng format, which names ports and has the clock's times.
        """
        status, capture = sim.sim_capture_open(file, sim.simCapturePcapng)
        if status < 0:
            raise CaptureError(sim.sim_capture_open, (file,), status)
        try:
            for port in ([CPU_PORT] + list(FRONT_PORTS)) if ports is None else ports:
                _done(sim.sim_capture_port, capture, self.unit, port, sim.SIM_CAPTURE_RECEIVED | sim.SIM_CAPTURE_SENT)
            yield
        finally:
            status = sim.sim_capture_close(capture)
        if status < 0:
            raise CaptureError(sim.sim_capture_close, (file,), status)

    def replay(self, file, port, timed=False):
        """Lets the packets of a pcap or pcapng file arrive: (how many, of how many the port took none). Those of
        an interface that is named as a port arrive there, all others at the port given; timed: the clock advances
        between them. Raises CaptureError, and nothing has arrived, if the file is none.
        """
        status, replayed, refused = sim.replay(file, self.unit, port, bool(timed))
        if status < 0:
            raise CaptureError(sim.replay, (file, self.unit, port, timed), status)
        return replayed, refused

    def fresh(self):
        """The switch as it is when a process begins: a cable in each port, nothing configured or learnt, nobody who
        is told of anything. Attaches the unit, if it is not.
        """
        if q.bcm_attach_check(self.unit) != q.BCM_E_NONE:
            _done(q.bcm_attach, self.unit, '', '', 0)
        _done(sim.sim_switch_reset, self.unit)
        _forget_registrations(self.unit)

    def attach_tap(self, port, name, netns=None):
        """Makes a TAP interface of the host and joins it to the port, until detach() or the end of the process.

        netns: the name of the network namespace that it is to be in. From now on frames go between them by
        themselves, while the script goes on. InterfaceError says what the host refuses; see sim/interfaces.h.
        """
        self._attach(sim.sim_interface_tap, port, name, netns)

    def attach_interface(self, port, name, netns=None):
        """Joins an interface that the host has, such as one end of a veth pair, to the port; otherwise as
        attach_tap().
        """
        self._attach(sim.sim_interface_packet, port, name, netns)

    def _attach(self, function, port, name, netns):
        path = netns if netns is None or '/' in netns else os.path.join(NAMESPACES, netns)
        status = function(self.unit, port, name, path)
        if status < 0:
            raise InterfaceError(function, (self.unit, port, name, path), status)
        _attached.add((self.unit, port))

    def detach(self, port):
        """The port has no interface of the host any more."""
        _done(sim.sim_interface_detach, self.unit, port)

    def interface(self, port):
        """The name of the port's interface of the host; None if it has none, or if that has vanished."""
        return sim.sim_interface_name(self.unit, port)

    def interface_counts(self, port):
        """What the port's interface of the host received and sent, and what of it was lost: a dictionary."""
        return dict((word, sim.sim_interface_count(self.unit, port, counter)) for word, counter in _COUNTERS)

    def sweep_addresses(self):
        """One sweep of the ageing timer; how many addresses it removed."""
        return _done(sim.sim_l2_age_step, self.unit)

    def statistics(self, port):
        """{name: value} of the port's statistics that are not 0."""
        types = array('bcm_stat_val_t', [value for value, _ in _STATISTICS])
        values = array('uint64', len(_STATISTICS))
        _done(q.bcm_stat_multi_get, self.unit, port, len(_STATISTICS), types, values)
        return dict((name, value) for (_, name), value in zip(_STATISTICS, values) if value)
