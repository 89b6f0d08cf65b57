#!/usr/bin/env python2.7
"""Loads a forwarding database into a switch chip and reads it back.

Takes the text that 'bridge fdb show' prints and shows how a script
  - asks the chip which ports it has;
  - creates VLANs and adds ports to them as Python lists;
  - fills in a record (bcm_l2_addr_t) and adds it to the address table;
  - deletes addresses, of a port or one by one, and looks one up;
  - lists the hardware's address table;
  - has quorel.checked() raise where a status is not good, and give what the
    SDK writes.

Lines that make no sense are reported with file and line, and skipped. The
exit code is 0 if all else went well.
"""

from __future__ import print_function

import argparse
import collections
import re
import sys

import QuorelApiNew as q
from quorel import OUT, StatusError, checked

UNIT = 0
LOCAL_MODULE = 0
CPU_PORT = 0
DEFAULT_VLAN = 1

# A gport tells the kind of destination in its top six bits.
LOCAL_PORT = 0x04000000
TRUNK = 0x0c000000
BLACK_HOLE = 0x10000000

MAC = re.compile(r'[0-9a-f]{2}(:[0-9a-f]{2}){5}$')
FRONT_PORT = re.compile(r'swp([1-9][0-9]*)$')
WORDS_WITH_VALUE = frozenset(['dev', 'vlan', 'master', 'dst', 'port', 'vni',
                              'src_vni', 'via', 'nhid'])

Address = collections.namedtuple('Address', 'port static')


class BadInput(Exception):
    """Text that cannot be used, in the dump or an option; says why."""


# --- the dump ---------------------------------------------------------------

def parse(line, front_ports):
    """Returns ((MAC, VLAN), Address), or None for a line without a VLAN.

    Such lines are about the ports themselves, not about forwarding.
    """
    words = iter(line.split())
    mac = next(words)
    values, flags = {}, set()
    for word in words:
        if word in WORDS_WITH_VALUE:
            values[word] = next(words, None)
            if values[word] is None:
                raise BadInput("ends after '%s'" % word)
        else:
            flags.add(word)

    mac = mac_address(mac)
    if 'dev' not in values:
        raise BadInput('names no interface')
    if 'vlan' not in values:
        return None
    vlan = vlan_number(values['vlan'])

    # An address that the host itself owns is 'permanent': to the chip, one
    # behind the CPU port.
    if 'permanent' in flags:
        port = CPU_PORT
    else:
        port = port_number(values['dev'], front_ports)
    static = 'permanent' in flags or 'static' in flags
    return (mac, vlan), Address(port, static)


def mac_address(text):
    if not MAC.match(text.lower()):
        raise BadInput("'%s' is not a MAC address" % text)
    return text.lower()


def vlan_number(text):
    if not text.isdigit() or not 1 <= int(text) <= 4094:
        raise BadInput("'%s' is not a VLAN" % text)
    return int(text)


def port_number(name, front_ports):
    match = FRONT_PORT.match(name)
    if not match or int(match.group(1)) not in front_ports:
        raise BadInput("the switch has no interface '%s'" % name)
    return int(match.group(1))


def read_dump(path, front_ports):
    """Returns {(MAC, VLAN): Address}; says on stderr which lines are bad."""
    addresses = {}
    lines = bad = 0
    with open(path) as dump:
        for number, line in enumerate(dump, 1):
            if not line.strip():
                continue
            lines += 1
            try:
                parsed = parse(line, front_ports)
                if parsed:
                    key, address = parsed
                    # The port's own table ('self') repeats the bridge's.
                    first = addresses.setdefault(key, address)
                    if first.port != address.port:
                        raise BadInput('%s is on two ports' % key[0])
            except BadInput as error:
                bad += 1
                print('%s:%d: %s' % (path, number, error), file=sys.stderr)
    print('%s: %d lines, %d bad, %d addresses' % (
        path, lines, bad, len(addresses)))
    return addresses


# --- the switch -------------------------------------------------------------

def find_front_ports():
    """Returns the front ports of the chip, which count from 1."""
    ports = set()
    while True:
        port = len(ports) + 1
        try:
            checked(q.bcm_port_enable_get, UNIT, port, OUT)
        except StatusError as error:
            if error.status == q.BCM_E_PORT:
                return ports
            raise
        ports.add(port)


def set_up_vlans(addresses):
    """Creates the VLANs and adds every port to those it has addresses in.

    A port in a single VLAN is an access port: its frames are untagged.
    """
    vlans_of = collections.defaultdict(set)
    for (_, vlan), address in addresses.items():
        vlans_of[address.port].add(vlan)
    vlans_of.pop(CPU_PORT, None)
    access = set(port for port in vlans_of if len(vlans_of[port]) == 1)

    for vlan in sorted(set(vlan for _, vlan in addresses)):
        members = sorted(p for p in vlans_of if vlan in vlans_of[p])
        try:
            checked(q.bcm_vlan_create, UNIT, vlan)
        except StatusError as error:
            if error.status != q.BCM_E_EXISTS:
                raise
        checked(q.bcm_vlan_port_add, UNIT, vlan, [CPU_PORT] + members,
                [port for port in members if port in access])
        for port in members:
            checked(q.bcm_port_enable_set, UNIT, port, 1)
            if port in access:
                checked(q.bcm_port_untagged_vlan_set, UNIT, port, vlan)

    moved = sorted(p for p in vlans_of if DEFAULT_VLAN not in vlans_of[p])
    checked(q.bcm_vlan_port_remove, UNIT, DEFAULT_VLAN, moved)


def add_addresses(addresses):
    for (mac, vlan), address in sorted(addresses.items()):
        entry = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(entry, mac, vlan)
        entry.port = address.port
        if address.static:
            entry.flags |= q.BCM_L2_STATIC
        checked(q.bcm_l2_addr_add, UNIT, entry)


def take_port_down(port, addresses):
    """Deletes what was learnt on a port; its static addresses stay."""
    checked(q.bcm_port_enable_set, UNIT, port, 0)
    checked(q.bcm_l2_addr_delete_by_port, UNIT, LOCAL_MODULE, port, 0)
    gone = [key for key in addresses
            if addresses[key].port == port and not addresses[key].static]
    for key in gone:
        del addresses[key]
    print('swp%d is down: %d dynamic addresses deleted' % (port, len(gone)))


def forget(mac, vlan, addresses):
    """Deletes one address and makes sure that the chip has it no more."""
    checked(q.bcm_l2_addr_delete, UNIT, mac, vlan)
    status, _ = q.bcm_l2_addr_get(UNIT, mac, vlan)
    if status != q.BCM_E_NOT_FOUND:
        raise StatusError(q.bcm_l2_addr_get, (UNIT, mac, vlan), status)
    addresses.pop((mac, vlan), None)
    print('%s is deleted from VLAN %d' % (mac, vlan))


# --- the report -------------------------------------------------------------

def gport_name(gport):
    if gport == LOCAL_PORT | CPU_PORT:
        return 'cpu'
    if gport == BLACK_HOLE:
        return 'discard'
    kind = {LOCAL_PORT: 'swp', TRUNK: 'trunk'}[gport & ~0x3ffffff]
    return '%s%d' % (kind, gport & 0x3ffffff)


def natural(text):
    """Sort key that puts swp9 before swp10."""
    return [int(part) if part.isdigit() else part
            for part in re.split('([0-9]+)', text)]


def report(table):
    """Prints how many addresses each VLAN and each port has in the table."""
    by_vlan = collections.defaultdict(collections.Counter)
    by_port = collections.defaultdict(collections.Counter)
    for _, vlan, gport, kind in table:
        by_vlan[vlan][kind] += 1
        by_port[gport_name(gport)][kind] += 1

    print('\nVLAN     static  dynamic  members  untagged')
    for vlan in sorted(by_vlan):
        members, untagged = checked(q.bcm_vlan_port_get, UNIT, vlan)
        print('%-8d %6d %8d %8d %9d' % (
            vlan, by_vlan[vlan]['static'], by_vlan[vlan]['dynamic'],
            len(members), len(untagged)))
    print('\nstatic+dynamic on each port')
    cells = ['%-5s %2d+%-3d' % (port, by_port[port]['static'],
                               by_port[port]['dynamic'])
             for port in sorted(by_port, key=natural)]
    for start in range(0, len(cells), 6):
        print('  '.join(cells[start:start + 6]).rstrip())


def differences(addresses, table):
    """Returns the rows that only one of the two has."""
    loaded = set(
        (mac, vlan, LOCAL_PORT | address.port,
         'static' if address.static else 'dynamic')
        for (mac, vlan), address in addresses.items())
    return loaded ^ set(table)


def main():
    parser = argparse.ArgumentParser(
        description='Loads a forwarding database into the switch.')
    parser.add_argument('dump', help="what 'bridge fdb show' printed")
    parser.add_argument('--down', metavar='PORT',
                        help='then take this port down (for example swp7)')
    parser.add_argument('--forget', nargs=2, metavar=('MAC', 'VLAN'),
                        help='then delete this address')
    options = parser.parse_args()

    # All is judged before the first thing is changed.
    front_ports = find_front_ports()
    down = forgotten = None
    if options.down:
        down = port_number(options.down, front_ports)
    if options.forget:
        mac, vlan = options.forget
        forgotten = mac_address(mac), vlan_number(vlan)
    addresses = read_dump(options.dump, front_ports)

    set_up_vlans(addresses)
    add_addresses(addresses)
    if down:
        take_port_down(down, addresses)
    if forgotten:
        forget(*forgotten + (addresses,))

    table = q.getHwMacTable(UNIT)
    report(table)
    wrong = differences(addresses, table)
    print('\n%d addresses in the hardware, %d differences from what was loaded'
          % (len(table), len(wrong)))
    return 1 if wrong else 0


if __name__ == '__main__':
    try:
        sys.exit(main())
    except (StatusError, BadInput, IOError) as failure:
        sys.exit('load_fdb: %s' % failure)
