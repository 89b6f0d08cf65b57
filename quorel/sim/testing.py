"""Tests of what a switch does with packets.

    class Forwarding(sim.TestCase):
        def test_a_known_address(self):
            frame = sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01')
            self.assertSends(1, frame, {2: frame})
"""
import unittest

import _quorel_sim as sim
from quorel.sim.dissector import difference, lines
from quorel.sim.switch import CPU_PORT, FRONT_PORTS, Switch, run_clock, step_clock

PORTS = [CPU_PORT] + list(FRONT_PORTS)


class _Faults(object):
    """Ports that send what they should not; those with the same fault are told together."""

    def __init__(self):
        self._ports, self._order = {}, []

    def __len__(self):
        return len(self._order)

    def compare(self, port, wanted, found):
        """Frames; None for none."""
        if wanted == found:
            return
        if (wanted, found) not in self._ports:
            self._order.append((wanted, found))
        self._ports.setdefault((wanted, found), []).append(port)

    def told(self):
        told = []
        for wanted, found in self._order:
            told.append('%s %s' % (_port_text(self._ports[wanted, found]),
                                   'sends nothing where this was expected:' if found is None else
                                   'sends what was not expected:' if wanted is None else
                                   'sends another frame (- expected, + sent):'))
            told += _indented(lines(wanted) if found is None else lines(found) if wanted is None
                              else difference(wanted, found))
        return told


def _port_text(ports):
    """'port 3', 'each of the ports 2-5,7'"""
    runs = []
    for port in ports:
        if runs and runs[-1][1] == port - 1:
            runs[-1][1] = port
        else:
            runs.append([port, port])
    text = ','.join('%d' % first if first == last else '%d-%d' % (first, last) for first, last in runs)
    return 'port ' + text if len(ports) == 1 else 'each of the ports ' + text


class TestCase(unittest.TestCase):
    """Each test has a switch, `self.switch`, that is fresh at its beginning; `unit` says which. Time is the test's to
    let pass, as of step_clock().
    """
    longMessage = True
    unit = 0

    def setUp(self):
        """Makes the switch fresh and stops its clock; a class with a setUp of its own calls this one first."""
        self.switch = Switch(self.unit)
        self.switch.fresh()
        step_clock()
        self.addCleanup(run_clock, False)

    def assertSends(self, port, frame, expected, message=None):
        """Of a frame that arrives at the port, these frames leave and no others.

        expected: {port: frame}; a list of frames, in their order, where a port sends several.
        """
        left = {}
        for to, found in self._send_traced(port, frame):
            left.setdefault(to, []).append(found)
        faults = _Faults()
        for to in sorted(set(left) | set(expected)):
            wanted = expected.get(to, [])
            wanted = [bytes(one) for one in (wanted if isinstance(wanted, list) else [wanted])]
            found = left.get(to, [])
            for i in range(max(len(wanted), len(found))):
                faults.compare(to, wanted[i] if i < len(wanted) else None, found[i] if i < len(found) else None)
        if faults:
            self._fail_with_frame(port, frame, faults.told(), message)

    def assertDropped(self, port, frame, reason=None, message=None):
        """A frame that arrives at the port leaves nowhere; if a reason is given, it, or a copy of it, was dropped for
        that: 'vlan_filter' and the like, as Switch.drops() has them.
        """
        left = self._send_traced(port, frame)
        reasons = [drop for _, _, _, drop, _ in sim.trace_steps() if drop != 'none']
        sent = _Faults()
        for to, found in left:
            sent.compare(to, None, found)
        faults = sent.told()
        if reason is not None and reason not in reasons:
            faults.append('it was not dropped for %r, but for: %s' % (reason, ', '.join(reasons) or 'nothing'))
        if faults:
            self._fail_with_frame(port, frame, faults, message)

    def assertCounts(self, port, frame, expected, message=None):
        """Of a frame that arrives at the port, these statistics of ports move by so much, and no others of these
        ports; of all other ports none does.

        expected: {port: {name: by}}, names as in QuorelApiNew; {port: all} for a port that does not matter.
        """
        before = self._counted()
        self._send_traced(port, frame)
        moved = self._moved(before)
        faults = []
        for at in PORTS:
            wanted = expected.get(at, {})
            if wanted is all:
                continue
            found = moved.get(at, {})
            for name in sorted(set(wanted) | set(found)):
                if wanted.get(name, 0) != found.get(name, 0):
                    faults.append('port %d: %s moved by %d, not by %d'
                                  % (at, name, found.get(name, 0), wanted.get(name, 0)))
        if faults:
            self._fail_with_frame(port, frame, faults, message)

    def _counted(self):
        return dict((port, self.switch.statistics(port)) for port in PORTS)

    def _moved(self, before):
        """{port: {name: by}} of what has moved since."""
        moved = {}
        for port, counted in self._counted().items():
            changes = dict((name, value - before[port].get(name, 0)) for name, value in counted.items()
                           if value != before[port].get(name, 0))
            if changes:
                moved[port] = changes
        return moved

    def _send_traced(self, port, frame):
        sim.sim_trace_begin()
        try:
            return self.switch.send(port, frame)
        finally:
            sim.sim_trace_end()

    def _fail_with_frame(self, port, frame, faults, message):
        text = ['of this frame, which arrives at port %d:' % port] + _indented(lines(bytes(frame))) + faults
        text += ['its way:'] + _indented(sim.sim_trace_text().splitlines())
        self.fail(self._formatMessage(message, '\n'.join(text)))


def _indented(texts):
    return ['    ' + text for text in texts]
