"""Tests of what a switch does with packets.

    class Forwarding(sim.TestCase):
        def test_a_known_address(self):
            frame = sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01')
            self.assertSends(1, frame, {2: frame})
"""
import re
import unittest

from quorel.sim.dissector import difference, lines
from quorel.sim.switch import CPU_PORT, FRONT_PORTS, Switch

PORTS = [CPU_PORT] + list(FRONT_PORTS)
# What the ports' statistics call drops: snmpBcmRxVlanFilterDiscards.
_REASON = re.compile('snmp(?:Bcm|EtherStats|Dot3Stats|Dot1dBasePort)(?:Rx|Tx)?(.+?)(?:Discards|Pkts|s)$')


def _words(name):
    """'vlan filter' for the statistic snmpBcmRxVlanFilterDiscards."""
    return re.sub('(?<=[a-z])(?=[A-Z])', ' ', _REASON.match(name).group(1)).lower()


def _is_reason(name):
    return (name.endswith('Discards') and name.startswith('snmpBcm')
            or name in ('snmpEtherStatsUndersizePkts', 'snmpDot3StatsFrameTooLongs',
                        'snmpDot1dBasePortMtuExceededDiscards'))


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
    """Each test has a switch, `self.switch`, that is fresh at its beginning; `unit` says which."""
    longMessage = True
    unit = 0

    def setUp(self):
        self.switch = Switch(self.unit)
        self.switch.fresh()

    def assertSends(self, port, frame, expected, message=None):
        """Of a frame that arrives at the port, these frames leave and no others.

        expected: {port: frame}; a list of frames, in their order, where a port sends several.
        """
        left = {}
        for to, found in self.switch.send(port, frame):
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
        """A frame that arrives at the port leaves nowhere, and if a reason is given the switch counted a drop for it.

        reason: in words, as dropReasons() has them, such as 'vlan filter'.
        """
        before = self._counted()
        left = self.switch.send(port, frame)
        reasons = self._reasons(self._moved(before))
        sent = _Faults()
        for to, found in left:
            sent.compare(to, None, found)
        faults = sent.told()
        if reason is not None and reason not in reasons:
            faults.append('it was not dropped for %r, but for: %s' % (reason, ', '.join(reasons) or 'no reason'))
        if faults:
            self._fail_with_frame(port, frame, faults, message)

    def dropReasons(self, port, frame):
        """A frame arrives: the reasons for which the switch counted a drop, in words. Often there is none: no
        destination is left, or the port that should send it has no link.
        """
        before = self._counted()
        self.switch.send(port, frame)
        return self._reasons(self._moved(before))

    def assertCounts(self, port, frame, expected, message=None):
        """Of a frame that arrives at the port, these statistics of ports move by so much, and no others of these
        ports; of all other ports none does.

        expected: {port: {name: by}}, names as in QuorelApiNew; {port: all} for a port that does not matter.
        """
        before = self._counted()
        self.switch.send(port, frame)
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

    @staticmethod
    def _reasons(moved):
        return sorted(set(_words(name) for counted in moved.values() for name in counted if _is_reason(name)))

    def _fail_with_frame(self, port, frame, faults, message):
        text = ['of this frame, which arrives at port %d:' % port] + _indented(lines(bytes(frame))) + faults
        self.fail(self._formatMessage(message, '\n'.join(text)))


def _indented(texts):
    return ['    ' + text for text in texts]
