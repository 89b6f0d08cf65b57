#!/usr/bin/env python2.7
"""Brings a switch chip up, looks at it from all sides and prints a report.

The report is made to be pasted into a ticket: aligned sections, and what was
found at the end. On the way it shows how a script
  - loads a property file and starts a unit with it;
  - runs shell commands, and a file of them, and gets what they print;
  - reads registers of any width, decodes and changes their fields;
  - reads a memory and its fields;
  - walks the ports and their PHYs, and puts one into loopback;
  - lists the address table;
  - records what is read from and written to the chip meanwhile.

Starting a unit resets it, and its ports stop for that time. What the script
itself changes it changes back; what the command file changes stays. The exit
code is 0 if there are no findings, 1 if there are, and 2 if something could
not be done at all.
"""

from __future__ import print_function

import argparse
import collections
import os
import re
import sys
import time

import QuorelApiNew as q
from quorel import OUT, Chip, StatusError, checked, status_name

CANNOT_DO = 2  # exit code
CPU_PORT = 0
ADDRESSES_SHOWN = 20
WAIT_FOR_LINK = 1

# A gport tells the kind of destination in its top six bits.
LOCAL_PORT = 0x04000000
TRUNK = 0x0c000000
NUMBER = 0x03ffffff

# Registers to look at, and the fields that a healthy chip has at a value.
HEALTH = [
    ('CMIC_DEVICE_ID', {}),
    ('CCS_VERSION', {}),
    ('CMIC_SOFT_RESET', {'DATA_PATH_RESET': 0, 'TABLE_RESET': 0,
                         'MANAGEMENT_RESET': 0, 'PCIE_RESET': 0}),
    ('CCS_BLOCK_SOFT_RESET', {'BLOCK_MASK': 0}),
    ('CCS_PLL_STATUS', {'LOCKED': 1, 'LOCK_LOST': 0}),
    ('CCS_TEMPERATURE_MONITOR', {'VALID': 1}),
    ('EGQ_INTERRUPT_REGISTER', {'TXQ_OVERFLOW': 0, 'EGRESS_PACKET_AGED': 0,
                                'REASSEMBLY_ERROR': 0}),
    ('IHP_INTERRUPT_REGISTER', {'MAC_TABLE_FULL': 0, 'EVENT_FIFO_FULL': 0,
                                'BUCKET_OVERFLOW': 0}),
    ('IHB_PACKET_COUNTER', {'OVERFLOW': 0}),
    ('IHP_VRRP_MAC_MATCH', {}),
]  # type: list[tuple[str, dict[str, int]]]

# Fields to write to, one in a register of each width: of up to 32 bits, of
# up to 64, and of more. The latter two are the last of their arrays, and are
# left alone if they are in use (VALID).
WRITABLE = [
    ('CMIC_LED_CTRL', (), 'REFRESH_RATE'),
    ('IHP_MY_MAC_ADDRESS', (0, 7), 'ADDRESS'),
    ('IHB_PROGRAM_SELECT_KEY', (0, 7), 'KEY_MASK'),
]


class CannotDo(Exception):
    """What was asked for cannot be done; says why."""


# --- the report -------------------------------------------------------------

class Report(object):
    """Lines, and the findings that go to the end."""

    def __init__(self, title):
        self.lines = [title]
        self.findings = []

    def section(self, title):
        self.lines += ['', title, '-' * len(title)]

    def add(self, text):
        self.lines += text.splitlines()

    def table(self, heading, rows):
        """Rows of cells under the words of the heading, in columns."""
        rows = [heading.split()] + [map(str, row) for row in rows]
        widths = [max(map(len, column)) for column in zip(*rows)]
        for row in rows:
            cells = [cell.ljust(width) for cell, width in zip(row, widths)]
            self.lines.append('  '.join(cells).rstrip())

    def finding(self, text):
        self.findings.append(text)

    def text(self):
        findings = self.findings or ['none']
        return '\n'.join(self.lines + ['', 'Findings', '--------'] +
                         findings) + '\n'


def ranges(numbers):
    """'1-3,7' for [1, 2, 3, 7]"""
    runs = []
    for number in sorted(numbers):
        if runs and number == runs[-1][1] + 1:
            runs[-1][1] = number
        else:
            runs.append([number, number])
    return ','.join('%d' % first if first == last else '%d-%d' % (first, last)
                    for first, last in runs)


# --- start ------------------------------------------------------------------

def load_properties(path):
    """Has the property store hold what the file says, and defaults."""
    checked(q.sal_config_init)
    checked(q.sal_config_file_set, path, '')
    status = q.sal_config_refresh()
    if status == q.BCM_E_NOT_FOUND:
        raise CannotDo('there is no property file %s' % path)
    if status == q.BCM_E_CONFIG:  # the SDK has said which line
        raise CannotDo('property file %s is damaged' % path)
    if status < 0:
        raise StatusError(q.sal_config_refresh, (), status)


def start(unit):
    try:
        checked(q.system_init, unit)
    except StatusError as error:
        if error.status == q.BCM_E_CONFIG:
            raise CannotDo('unit %d does not start: a property has a value '
                           'that cannot be' % unit)
        raise


def report_start(report, unit, path):
    report.section('Properties of %s' % path)
    load_properties(path)
    report.add(q.sdc(unit, 'config show'))
    start(unit)


def run_commands(unit, path):
    """(whether the file was carried out to its end, what it printed)

    The shell runs what follows in a line only if the file succeeded, and
    commands in the background when the line is done.
    """
    end = 'carried out %d %r' % (os.getpid(), time.time())
    # A backslash has the shell take the next character as it is.
    output = q.sdc(unit, 'rcload %s; echo "%s"' % (re.escape(path), end))
    rest = re.sub('(?m)^%s\n(echo: CMD_OK\n)?' % re.escape(end), '', output)
    return rest != output, rest


def report_commands(report, unit, path):
    """Runs a file of shell commands, and says what came of each."""
    report.section('Commands of %s' % path)
    before = q.cvar.sh_set_report_status
    q.cvar.sh_set_report_status = 1
    try:
        to_the_end, output = run_commands(unit, path)
    finally:
        q.cvar.sh_set_report_status = before
    report.add(output)
    if not to_the_end:
        report.finding('command file %s was not carried out to its end' % path)


# --- what it is -------------------------------------------------------------

def front_ports(unit):
    """All ports but the CPU's; they count from 1."""
    ports = []
    while True:
        try:
            checked(q.bcm_port_enable_get, unit, len(ports) + 1, OUT)
        except StatusError as error:
            if error.status == q.BCM_E_PORT:
                return ports
            raise
        ports.append(len(ports) + 1)


def attached_units():
    highest = checked(q.bcm_attach_max, OUT)
    return [unit for unit in range(highest + 1)
            if q.bcm_attach_check(unit) == q.BCM_E_NONE]


def report_chip(report, unit, ports):
    info = checked(q.bcm_info_get, unit, OUT)
    report.section('Chip')
    report.add('device    %04x:%04x, revision %#04x' % (
        info.vendor, info.device, info.revision))
    report.add('pipes     %d' % info.num_pipes)
    report.add('ports     %s' % ranges(ports))
    report.add('units     %s attached, this is %d' % (
        ranges(attached_units()), unit))
    report.add('software  %s' % q.sdc(unit, 'version').strip())


# --- registers --------------------------------------------------------------

def report_registers(report, chip):
    report.section('Registers')
    rows = []
    for name, healthy in HEALTH:
        for place in chip.regs[name]:
            value = place.read()
            decoded = sorted(place.decode(value).items())
            rows.append((place.name, '%#x' % value, ' '.join(
                '%s=%#x' % pair for pair in decoded)))
            for field, found in decoded:
                if found != healthy.get(field, found):
                    report.finding('%s: %s is %#x' % (place.name, field, found))
    report.table('register value fields', rows)


def flip_field(place, field):
    """Inverts all bits of a field, and back: (before, meanwhile, after)."""
    before = place.read()
    ones = place.encode(0, **{field: 2 ** place.lengths()[field] - 1})
    try:
        place.write(before ^ ones)
        meanwhile = place.read()
    finally:
        place.write(before)
    return before, meanwhile, place.read()


def traced(function, *args):
    """What it returns, and what it reads from and writes to the chip."""
    q.captureTrace(True)
    try:
        result = function(*args)
    finally:
        q.captureTrace(False)
    return result, q.getTrace()


def report_changes(report, chip):
    report.section('Fields written and read back')
    rows = []
    accesses = ''
    for name, where, field in WRITABLE:
        place = chip.regs[name][where]
        if place.as_dict().get('VALID'):
            report.add('%s is in use and left alone' % place.name)
            continue
        values, trace = traced(flip_field, place, field)
        accesses += trace
        before, meanwhile, after = ['%#x' % place.decode(value)[field]
                                    for value in values]
        rows.append((place.name, field, before, meanwhile, after))
        if before == meanwhile or before != after:
            report.finding('%s: %s does not take what is written: %s, %s, %s'
                           % (place.name, field, before, meanwhile, after))
    report.table('register field before meanwhile after', rows)
    report.add('\nHow the chip was accessed:\n' + accesses)


# --- memories ---------------------------------------------------------------

def egress_interface(chip, port):
    """(core, VALID, INTERFACE) of the port's entry"""
    tm_port, core = checked(q.soc_port_sw_db_local_to_tm_port_get, chip.unit,
                            port, OUT, OUT)
    table = chip.mems.EGQ_TM_PORT_TO_INTERFACE.at_copy(
        q.get_copyno_egq(chip.unit, core))
    entry = table[tm_port].as_dict()
    return core, entry['VALID'], entry['INTERFACE']


def report_memory(report, chip, ports):
    report.section('Egress interfaces (EGQ_TM_PORT_TO_INTERFACE)')
    ports_of = collections.defaultdict(list)
    interfaces_of = collections.defaultdict(list)
    without = []
    for port in ports:
        core, valid, interface = egress_interface(chip, port)
        if valid:
            ports_of[core].append(port)
            interfaces_of[core].append(interface)
        else:
            without.append(port)
    report.table('core ports interfaces', [
        (core, ranges(ports_of[core]), ranges(interfaces_of[core]))
        for core in sorted(ports_of)])
    if without:
        report.finding('ports without an egress interface: %s' %
                       ranges(without))


# --- ports and PHYs ---------------------------------------------------------

PortState = collections.namedtuple(
    'PortState', 'enabled link speed phy_link phy_speed autoneg autoneg_done '
    'loopback fault')


def port_state(unit, port):
    def value(getter):
        return checked(getter, unit, port, OUT)

    autoneg, done = checked(q.soc_phyctrl_auto_negotiate_get, unit, port, OUT,
                            OUT)
    return PortState(
        enabled=value(q.bcm_port_enable_get),
        link=value(q.bcm_port_link_status_get),
        speed=value(q.bcm_port_speed_get),
        phy_link=value(q.soc_phyctrl_link_get),
        phy_speed=value(q.soc_phyctrl_speed_get),
        autoneg=autoneg,
        autoneg_done=done,
        loopback=value(q.soc_phyctrl_loopback_get),
        fault=value(q.soc_phyctrl_linkfault_get))


def phy_id(unit, port):
    return q.soc_phy_id0reg_get(unit, port) << 16 | q.soc_phy_id1reg_get(
        unit, port)


def autoneg_text(state):
    if not state.autoneg:
        return 'off'
    return 'done' if state.autoneg_done else 'unfinished'


def report_ports(report, unit, ports):
    report.section('Ports and their PHYs')
    states = dict((port, port_state(unit, port)) for port in ports)
    report.table('port name enabled link Mbit/s autoneg loopback fault PHY id '
                 'address internal', [
                     (port, q.mod_port_name(unit, -1, port), state.enabled,
                      'up' if state.link else 'down', state.speed,
                      autoneg_text(state), state.loopback, state.fault,
                      q.soc_phy_name_get(unit, port),
                      '%08x' % phy_id(unit, port),
                      '%#x' % q.soc_phy_addr_of_port(unit, port),
                      '%#x' % q.soc_phy_addr_int_of_port(unit, port))
                     for port, state in sorted(states.items())])
    find_in_ports(report, unit, states)
    return states


def find_in_ports(report, unit, states):
    def ports_where(condition):
        return [port for port, state in states.items() if condition(state)]

    down = ports_where(lambda state: state.enabled and not state.link)
    if down:
        report.finding('%d of %d ports are down: %s' % (
            len(down), len(states), ranges(down)))
    looped = ports_where(lambda state: state.loopback)
    if looped:
        report.finding('ports in loopback: %s' % ranges(looped))
    differing = ports_where(lambda state: (state.link, state.speed) != (
        state.phy_link, state.phy_speed))
    if differing:
        report.finding('switch and PHY differ over link or speed of ports %s'
                       % ranges(differing))
    for port in ports_where(lambda state: state.link and state.autoneg):
        highest = checked(q.bcm_port_speed_max, unit, port, OUT)
        if states[port].speed < highest:
            report.finding('port %d has negotiated %d Mbit/s and could do %d'
                           % (port, states[port].speed, highest))


def report_loopback(report, unit, port):
    """Puts a port into loopback and back, and shows what that changes."""
    report.section('Loopback of port %d' % port)
    before = port_state(unit, port)
    try:
        status = q.soc_phyctrl_loopback_set(unit, port, 1, WAIT_FOR_LINK)
        meanwhile = port_state(unit, port)
    finally:
        checked(q.soc_phyctrl_loopback_set, unit, port, before.loopback, 0)
    states = [('before', before), ('meanwhile', meanwhile),
              ('after', port_state(unit, port))]
    report.table('when loopback link Mbit/s fault', [
        (when, state.loopback, state.phy_link, state.phy_speed, state.fault)
        for when, state in states])
    if status < 0:
        report.finding('port %d has no link even in loopback: %s' % (
            port, status_name(status)))
    elif not before.phy_link:
        report.finding('port %d has a link in loopback: look for the cable '
                       'and the other end' % port)


# --- the address table ------------------------------------------------------

def destination(gport):
    if gport == LOCAL_PORT | CPU_PORT:
        return 'cpu'
    kinds = {LOCAL_PORT: 'port', TRUNK: 'trunk'}
    kind = kinds.get(gport & ~NUMBER)
    return '%s %d' % (kind, gport & NUMBER) if kind else '%#x' % gport


def report_addresses(report, unit, states):
    report.section('Address table')
    table = sorted(q.getHwMacTable(unit))
    report.table('MAC VLAN destination kind', [
        (mac, vlan, destination(gport), kind)
        for mac, vlan, gport, kind in table[:ADDRESSES_SHOWN]])
    report.add('%d addresses in all' % len(table))

    down = set(LOCAL_PORT | port for port in states if not states[port].link)
    unreachable = [row for row in table if row[2] in down]
    if unreachable:
        report.finding('%d addresses are behind ports that are down: %s' % (
            len(unreachable),
            ranges(set(row[2] & NUMBER for row in unreachable))))


# --- all of it --------------------------------------------------------------

def port_ranges(text):
    """[(first, last, as it is written)] of '1-4,7'"""
    found = []
    for part in text.split(','):
        ends = part.split('-')
        if len(ends) > 2 or not all(end.isdigit() for end in ends):
            raise argparse.ArgumentTypeError(
                "'%s' are no ports; write 1-4,7" % text)
        first, last = int(ends[0]), int(ends[-1])
        if first > last:
            raise argparse.ArgumentTypeError("'%s' is no range" % part)
        found.append((first, last, part))
    return found


def chosen_ports(options, all_ports):
    """The ports to look at; without a choice, all."""
    if options.loopback not in [None] + all_ports:
        raise CannotDo('there is no port %d' % options.loopback)
    if not options.ports:
        return all_ports
    ports = set()
    for first, last, text in options.ports:
        if first not in all_ports or last not in all_ports:
            raise CannotDo("the unit has ports %s, not '%s'" % (
                ranges(all_ports), text))
        ports.update(range(first, last + 1))
    return sorted(ports)


def readable(path):
    """The path of a file that can be read."""
    try:
        open(path).close()
    except IOError as error:
        raise argparse.ArgumentTypeError(str(error))
    return path


def begin(options, report):
    """Starts the unit; returns its ports and those to look at.

    A unit that runs is only reset if it has the ports that were asked for.
    """
    if q.bcm_attach_check(options.unit) == q.BCM_E_NONE:
        chosen_ports(options, front_ports(options.unit))
    report_start(report, options.unit, options.properties)
    all_ports = front_ports(options.unit)
    return all_ports, chosen_ports(options, all_ports)


def diagnose(options, report, all_ports, ports):
    unit = options.unit
    chip = Chip(unit)
    if options.commands:
        report_commands(report, unit, options.commands)
    report_chip(report, unit, all_ports)
    report_registers(report, chip)
    report_changes(report, chip)
    report_memory(report, chip, ports)
    states = report_ports(report, unit, ports)
    if options.loopback is not None:
        report_loopback(report, unit, options.loopback)
    report_addresses(report, unit, states)


def parse_arguments():
    parser = argparse.ArgumentParser(
        description='Brings a switch chip up and prints a report on it.')
    parser.add_argument('properties', type=readable,
                        help='property file to start with')
    parser.add_argument('commands', nargs='?', type=readable,
                        help='file of shell commands to run after the start')
    parser.add_argument('--unit', type=int, default=0, metavar='NUMBER')
    parser.add_argument('--ports', metavar='LIST', type=port_ranges,
                        help='ports to look at, such as 1-4,7; else all')
    parser.add_argument('--loopback', type=int, metavar='PORT',
                        help='port to put into loopback for a moment')
    parser.add_argument('--output', metavar='FILE',
                        help='file to write the report to')
    options = parser.parse_args()
    if not 0 <= options.unit < q.SOC_MAX_NUM_DEVICES:
        parser.error('there can be no unit %d' % options.unit)
    return options


def judge_output(path):
    """Raises IOError if nothing can be written there, and writes nothing."""
    is_new = not os.path.exists(path)
    open(path, 'a').close()
    if is_new:
        os.remove(path)


def write_report(text, path):
    if path:
        with open(path, 'w') as output:
            output.write(text)
    else:
        sys.stdout.write(text)
        sys.stdout.flush()


def main():
    options = parse_arguments()
    if options.output:
        judge_output(options.output)
    report = Report('Unit %d, %s' % (options.unit, time.strftime('%F %T %Z')))
    was_attached = q.bcm_attach_check(options.unit) == q.BCM_E_NONE
    failure = None
    try:
        ports = begin(options, report)
        try:
            diagnose(options, report, *ports)
        # ValueError: get_copyno_* raise it.
        except (CannotDo, StatusError, IOError, ValueError) as error:
            failure = error
            report.finding('the diagnosis ended early: %s' % error)
    finally:
        if not was_attached:
            q.system_shutdown(options.unit, 0)
    write_report(report.text(), options.output)
    if failure:
        print('diagnose: %s' % failure, file=sys.stderr)
        return CANNOT_DO
    return 1 if report.findings else 0


if __name__ == '__main__':
    try:
        sys.exit(main())
    except (CannotDo, StatusError, IOError) as refusal:
        print('diagnose: %s' % refusal, file=sys.stderr)
        sys.exit(CANNOT_DO)
