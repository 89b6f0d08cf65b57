#!/usr/bin/env python2.7
"""Tells of MAC addresses that move from port to port, as they move.

An address that moves again and again is a loop, or a station that pretends to
be another. On the way it shows how a script
  - visits a table (traverse);
  - has the SDK call a Python function, and ends that again (callback);
  - reads a record that is only valid during the call.

The exit code is 0 if none flapped, 1 if one did. With --demo the simulated
switch (quorel.sim) gets packets from a station that cannot decide on a port.
"""

from __future__ import print_function

import argparse
import collections
import itertools
import sys
import time

import QuorelApiNew as q
from quorel import StatusError, callback, checked, name_of, traverse

GONE = (q.BCM_L2_CALLBACK_AGE_EVENT, q.BCM_L2_CALLBACK_DELETE)


def place_of(address):
    if address.flags & q.BCM_L2_TRUNK_MEMBER:
        return 'trunk %d' % address.tgid
    return 'port %d' % address.port


class Watcher(object):
    """Knows where each address was last, and how often it has moved.

    limit, window: that many moves within so many seconds are flapping.
    """

    def __init__(self, limit, window, clock=time.time, tell=print):
        self.limit, self.window = limit, window
        self.clock, self.tell = clock, tell
        self.places = {}
        self.moves = collections.defaultdict(
            lambda: collections.deque(maxlen=limit))
        self.flapping = set()

    def know(self, address):
        self.places[address.mac, address.vid] = place_of(address)

    def note(self, unit, address, operation, _):
        """What the SDK calls."""
        key = address.mac, address.vid
        if operation == q.BCM_L2_CALLBACK_AGE_EVENT:
            # It may turn up wherever it likes.
            self.places.pop(key, None)
        if operation in GONE:
            return
        before, now = self.places.get(key), place_of(address)
        self.places[key] = now
        if before not in (None, now):
            self.moved(key, before, now, operation)

    def moved(self, key, before, now, operation):
        moves = self.moves[key]
        moves.append(self.clock())
        text = '%s  %s in VLAN %d: %s -> %s (%s)' % (
            (time.strftime('%H:%M:%S', time.localtime(moves[-1])),) + key +
            (before, now,
             name_of('bcm_l2_callback_operation_t', operation)))
        if len(moves) == self.limit and moves[-1] - moves[0] <= self.window:
            self.flapping.add(key)
            text += '  FLAPPING: %d moves in %.1f s' % (
                self.limit, moves[-1] - moves[0])
        self.tell(text)
        sys.stdout.flush()


def wait(options):
    """Waits for the end; the SDK calls meanwhile."""
    end = time.time() + options.seconds if options.seconds else None
    for step in itertools.count():
        if end is not None and time.time() >= end:
            break
        if options.demo:
            send_packets(options.unit, step)
        time.sleep(options.pause)


def send_packets(unit, step):
    """One station that stays at port 3, one that comes from 1 and 2 in turn."""
    from quorel import sim
    for port, station in ((1 + step % 2, '02:00:5e:00:00:01'),
                          (3, '02:00:5e:00:00:03')):
        sim.Switch(unit).arrive(port,
                                sim.ethernet('ff:ff:ff:ff:ff:ff', station))


def main():
    parser = argparse.ArgumentParser(
        description='Tells of MAC addresses that move from port to port.')
    parser.add_argument('--unit', type=int, default=0, metavar='NUMBER')
    parser.add_argument('--limit', type=int, default=5, metavar='MOVES',
                        help='from so many on an address flaps')
    parser.add_argument('--window', type=float, default=10.0,
                        metavar='SECONDS', help='within this time')
    parser.add_argument('--seconds', type=float, default=0.0, metavar='TIME',
                        help='how long to watch; else until Ctrl-C')
    parser.add_argument('--pause', type=float, default=0.5,
                        help=argparse.SUPPRESS)
    parser.add_argument('--demo', action='store_true',
                        help='let packets arrive at the simulated switch')
    options = parser.parse_args()

    watcher = Watcher(options.limit, options.window)
    for address in traverse(q.bcm_l2_traverse, options.unit):
        watcher.know(address)
    print('watching, %d addresses known' % len(watcher.places))
    called = callback(q.bcm_l2_addr_register, watcher.note)
    checked(q.bcm_l2_addr_register, options.unit, called, None)
    try:
        wait(options)
    except KeyboardInterrupt:
        pass
    finally:
        checked(q.bcm_l2_addr_unregister, options.unit, called, None)
    return 1 if watcher.flapping else 0


if __name__ == '__main__':
    try:
        sys.exit(main())
    except StatusError as error:
        sys.exit('watch_moves: %s' % error)
