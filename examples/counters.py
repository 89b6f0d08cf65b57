#!/usr/bin/env python2.7
"""Shows the counters of ports over time: totals, rates and their course.

A terminal is redrawn each time, anything else gets one table after the other.
Ctrl-C ends it. On the way it shows how a script
  - has the SDK read a list of ports as its shell does (parse_bcm_pbmp);
  - finds counters by name, and names by number (constants, name_of);
  - reads 64-bit values as outputs (OUT).

With --demo the simulated switch gets packets meanwhile (quorel.sim).
"""

from __future__ import division, print_function

import argparse
import collections
import itertools
import locale
import math
import sys
import time

import QuorelApiNew as q
from quorel import OUT, StatusError, checked, constants, name_of

KIND = 'bcm_stat_val_t'
USUAL = ['snmpIfInOctets', 'snmpIfOutOctets', 'snmpIfInDiscards',
         'snmpIfInErrors']
COURSE = 30  # rates that are shown
CLEAR_SCREEN = '\x1b[H\x1b[J'


class Series(object):
    """A counter as it goes on."""

    def __init__(self, total):
        self.total = total
        self.rates = collections.deque(maxlen=COURSE)

    def update(self, total, seconds):
        """Takes its next value. One below the last has been cleared."""
        gone_up = total - self.total if total >= self.total else total
        self.rates.append(gone_up / seconds)
        self.total = total


def sparkline(values, levels):
    """A character for each value, of `levels` from the least to the greatest;
    what is not zero is never the least."""
    greatest = max(values)
    steps = len(levels) - 1
    return ''.join(levels[min(steps, int(math.ceil(value * steps / greatest)))]
                   if value else levels[0] for value in values)


def levels_of(encoding):
    try:
        u'\u2581'.encode(encoding)
    except UnicodeEncodeError:
        return '_.-=*#'
    return [character.encode(encoding)
            for character in u'\u2581\u2582\u2583\u2584\u2585\u2586\u2587\u2588']


def short(number):
    """'12.3k' for 12345"""
    for suffix in ('', 'k', 'M', 'G'):
        if number < 1000:
            break
        number /= 1000.0
    else:
        suffix = 'T'
    return '%.*f%s' % (1 if number % 1 else 0, number, suffix)


def read(unit, ports, counters):
    """{(port, counter): value}"""
    return dict(((port, counter),
                 checked(q.bcm_stat_get, unit, port, counter, OUT))
                for port in ports for counter in counters)


def table(series, levels):
    lines = ['port  %-24s %20s %9s' % ('counter', 'total', 'rate/s')]
    for (port, counter), one in sorted(series.items()):
        lines.append('%4d  %-24s %20s %9s  %s' % (
            port, name_of(KIND, counter), format(one.total, ',d'),
            short(one.rates[-1]), sparkline(one.rates, levels)))
    return '\n'.join(lines)


def watch(options):
    levels = levels_of(locale.getpreferredencoding())
    before = time.time()
    series = dict((key, Series(value)) for key, value in read(
        options.unit, options.ports, options.counters).items())
    rounds = range(options.rounds) if options.rounds else itertools.count()
    for number in rounds:
        if options.demo:
            send_packets(options.unit, options.ports, number)
        time.sleep(options.interval)
        values = read(options.unit, options.ports, options.counters)
        now = time.time()
        for key, value in values.items():
            series[key].update(value, now - before)
        before = now
        print('%s%s\n' % (CLEAR_SCREEN if sys.stdout.isatty() else '',
                          table(series, levels)))
        sys.stdout.flush()


def send_packets(unit, ports, number):
    """More and fewer of them, as time goes by."""
    from quorel import sim
    switch = sim.Switch(unit)
    for place, port in enumerate(ports):
        frame = sim.ethernet('ff:ff:ff:ff:ff:ff', '02:00:5e:00:00:%02x' % port)
        wave = math.sin((number + 5 * place) / 4.0)
        for _ in range(int(10 + 10 * wave)):
            switch.arrive(port, frame)


def counter_numbers(text):
    """The counters of a list of names; a name may be only how it begins."""
    found = []
    for word in text.split(','):
        numbers = [value for name, value in constants(KIND)
                   if name.startswith(word)]
        if not numbers:
            raise argparse.ArgumentTypeError("no counter begins with '%s'"
                                             % word)
        found += numbers
    return found


def main():
    parser = argparse.ArgumentParser(
        description='Shows the counters of ports over time.')
    parser.add_argument('ports', help='such as 1-4,7')
    parser.add_argument('--unit', type=int, default=0, metavar='NUMBER')
    parser.add_argument('--counters', type=counter_numbers, metavar='NAMES',
                        default=[getattr(q, name) for name in USUAL],
                        help='of %s or how they begin, with commas' % KIND)
    parser.add_argument('--interval', type=float, default=1.0,
                        metavar='SECONDS')
    parser.add_argument('--rounds', type=int, default=0, metavar='NUMBER',
                        help='how often to look; else until Ctrl-C')
    parser.add_argument('--demo', action='store_true',
                        help='let packets arrive at the simulated switch')
    options = parser.parse_args()
    options.ports = checked(q.parse_bcm_pbmp, options.unit, options.ports, OUT)
    watch(options)


if __name__ == '__main__':
    try:
        main()
    except KeyboardInterrupt:
        pass
    except StatusError as error:
        sys.exit('counters: %s' % error)
