#!/usr/bin/env python2.7
"""Loads a text access list into a switch chip and shows how often each rule was met.

    acl.py LIST [--replay FILE.pcap --port 1]

A line of the list is a rule; of those that a packet meets, the first decides, and what meets none may pass:

    # the servers' network
    permit tcp  from 10.1.0.0/16 to 10.2.0.7 port 22
    deny   tcp  from any to 10.2.0.0/16 port 22,23,3389-3390
    deny   udp  from any port 0-1023 to any on 1-4
    deny   ip6  from 2001:db8:bad::/48 to any

After 'permit' or 'deny' stands what is carried: ip (IPv4), ip6, a protocol by name or number (of both), or any for
each packet. Ports are of TCP or UDP; 'on' names the ports of the switch where packets arrive.

Lines that make no sense are reported by number, and nothing is loaded then. With --replay, the packets of a capture
arrive at a port of a simulated switch, so that one sees what the list would have done with them.

The exit code is 0, 1 if there were bad lines, 2 if something could not be done.
"""

from __future__ import print_function

import argparse
import sys

from quorel import ACL, StatusError

UNIT = 0
PROTOCOLS = {'icmp': 1, 'igmp': 2, 'tcp': 6, 'udp': 17, 'gre': 47, 'esp': 50,
             'icmp6': 58, 'ospf': 89, 'sctp': 132}
CARRIED = {'any': {}, 'ip': {'IpType': 'Ipv4Any'}, 'ip6': {'IpType': 'Ipv6'}}  # type: dict[str, dict[str, str]]
WITH_PORTS = 'tcp', 'udp'


class BadLine(Exception):
    """A line that is no rule; says why."""


class Words(object):
    """The words of a line, one after another."""

    def __init__(self, line):
        self._left = line.split()

    def __nonzero__(self):
        return bool(self._left)

    __bool__ = __nonzero__

    def next_is(self, word):
        return self._left[:1] == [word]

    def take(self, what):
        if not self._left:
            raise BadLine('ends where %s should be' % what)
        return self._left.pop(0)

    def skip(self, word):
        found = self.take("'%s'" % word)
        if found != word:
            raise BadLine("'%s' where '%s' should be" % (found, word))


# --- the list ----------------------------------------------------------------

def parse(line):
    """(is it denied?, {qualifier: value}) of a line."""
    words = Words(line)
    verdict = words.take("'permit' or 'deny'")
    if verdict not in ('permit', 'deny'):
        raise BadLine("begins with '%s' and not with 'permit' or 'deny'"
                      % verdict)
    protocol = words.take('a protocol')
    match = carried(protocol)
    for side, address, port in (('from', 'SrcIp', 'L4SrcPort'),
                                ('to', 'DstIp', 'L4DstPort')):
        words.skip(side)
        network = words.take('an address')
        if network != 'any':
            match[address + ('6' if ':' in network else '')] = network
        if words.next_is('port'):
            words.skip('port')
            if protocol not in WITH_PORTS:
                raise BadLine("has ports, which '%s' has not" % protocol)
            match[port] = words.take('ports').split(',')
    if words:
        words.skip('on')
        match['InPorts'] = words.take('ports of the switch')
    if words:
        raise BadLine("goes on with '%s' behind its end" % words.take('it'))
    versions = set(name.endswith('6') for name in match if name[3:5] == 'Ip')
    if len(versions) > 1 or protocol in ('ip', 'ip6') and \
            versions - set([protocol == 'ip6']):
        raise BadLine('has addresses of IPv4 and IPv6, and no packet has both')
    return verdict == 'deny', match


def carried(protocol):
    if protocol in CARRIED:
        return dict(CARRIED[protocol])
    number = PROTOCOLS.get(protocol, protocol)
    try:
        return {'IpProtocol': int(number)}
    except ValueError:
        raise BadLine("'%s' is no protocol: %s, or a number" % (
            protocol, ', '.join(sorted(CARRIED) + sorted(PROTOCOLS))))


def load(acl, lines):
    """Adds a rule for each line: ([(number, line, rule)], [(number, why)])"""
    loaded, faults = [], []
    for number, line in enumerate(lines, 1):
        text = line.split('#')[0].strip()
        if not text:
            continue
        try:
            denied, match = parse(text)
            # Whatever comes first has the highest priority.
            rule = acl.add(len(lines) - number, match,
                           ['Drop'] if denied else [], count=True)
            loaded.append((number, text, rule))
        except (BadLine, ValueError) as error:
            faults.append((number, str(error)))
    return loaded, faults


# --- what is shown -----------------------------------------------------------

def show(loaded):
    print('%6s %9s %11s  %s' % ('line', 'packets', 'bytes', 'rule'))
    for number, text, rule in loaded:
        print('%6d %9d %11d  %s' % ((number,) + rule.counted + (text,)))
    unmet = [number for number, _, rule in loaded if not rule.packets]
    print('%d rules, %d of them never met' % (len(loaded), len(unmet)))


def replay(file, port):
    """Packets of a capture arrive at a simulated switch."""
    from quorel import sim
    replayed, refused = sim.Switch(UNIT).replay(file, port)
    print('%d packets arrived at port %d, of %d it took none'
          % (replayed, port, refused))


def main():
    description, _, rest = __doc__.partition('\n\n')
    parser = argparse.ArgumentParser(
        description=description, epilog=rest,
        formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('list', metavar='LIST', help='the access list')
    parser.add_argument('--replay', metavar='FILE',
                        help='a pcap or pcapng file (simulated switch only)')
    parser.add_argument('--port', type=int, default=1,
                        help='where its packets arrive (default: 1)')
    options = parser.parse_args()
    try:
        with open(options.list) as file:
            lines = file.readlines()
        acl = ACL(UNIT)
        loaded, faults = load(acl, lines)
        for number, why in faults:
            print('%s:%d: %s' % (options.list, number, why), file=sys.stderr)
        if faults:
            acl.destroy()
            return 1
        if options.replay:
            replay(options.replay, options.port)
        show(loaded)
    except (IOError, StatusError) as error:
        print('acl: %s' % error, file=sys.stderr)
        return 2
    return 0


if __name__ == '__main__':
    sys.exit(main())
