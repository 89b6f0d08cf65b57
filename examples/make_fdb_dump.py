#!/usr/bin/env python2.7
"""Prints the forwarding database of a small access switch.

Its form is that of 'bridge fdb show'. The switch has access ports swp1 to
swp48, in four VLANs, and the uplinks swp49 and swp50, which carry all of them.
The dump is the same at every run. A few of its lines are damaged, as in a file
that went through many hands.
"""

from __future__ import print_function

VLANS = [
    # VLAN, access ports, hosts behind each of them
    (10, range(1, 25), 6),   # desks
    (20, range(25, 37), 4),  # telephones
    (30, range(37, 45), 1),  # printers, whose addresses are configured
    (40, range(45, 49), 9),  # cameras
]
PRINTERS = 30
UPLINKS = (49, 50)
HOSTS_PER_UPLINK = 25  # in each VLAN
BRIDGE_MAC = '02:00:5e:00:00:01'

# Damaged lines, by the number of the line that each comes before.
DAMAGED = {
    40: '02:00:5e:0a:0g:02 dev swp5 vlan 10 master br0',
    95: '02:00:5e:0a:07 dev swp7 vlan 10 master br0',
    170: '02:00:5e:14:1b:01 dev eth7 vlan 20 master br0',
    230: '02:00:5e:1e:27:01 dev swp139 vlan 30 master br0',
    300: '02:00:5e:28:2d:04 dev swp45 vlan 4095 master br0',
    350: '02:00:5e:28:2e:02 dev swp46 vlan forty master br0',
    400: '02:00:5e:0a:31:0b dev swp49 vlan',
}


def host_mac(vlan, port, host):
    """Returns the address of a port's host; ports and hosts count from 1."""
    return '02:00:5e:%02x:%02x:%02x' % (vlan, port, host)


def port_lines(port):
    """Yields what a port has without any VLAN: none of it is forwarded to."""
    yield '33:33:00:00:00:01 dev swp%d self permanent' % port
    yield '02:00:5e:00:01:%02x dev swp%d master br0 permanent' % (port, port)


def vlan_lines(vlan, access_ports, hosts):
    """Yields the addresses of one VLAN, the bridge's own first."""
    yield '%s dev br0 vlan %d master br0 permanent' % (BRIDGE_MAC, vlan)
    for port in access_ports:
        for host in range(1, hosts + 1):
            start = '%s dev swp%d vlan %d' % (
                host_mac(vlan, port, host), port, vlan)
            if vlan == PRINTERS:
                yield start + ' master br0 static'
            else:
                yield start + ' extern_learn offload master br0'
                if host == 1:  # the port's own table has it as well
                    yield start + ' self'
    for port in UPLINKS:
        for host in range(1, HOSTS_PER_UPLINK + 1):
            yield '%s dev swp%d vlan %d master br0' % (
                host_mac(vlan, port, host), port, vlan)


def dump_lines():
    """Yields the undamaged dump."""
    ports = [port for _, access_ports, _ in VLANS for port in access_ports]
    for port in ports + list(UPLINKS):
        for line in port_lines(port):
            yield line
    for vlan, access_ports, hosts in VLANS:
        for line in vlan_lines(vlan, access_ports, hosts):
            yield line


def main():
    for number, line in enumerate(dump_lines(), 1):
        if number in DAMAGED:
            print(DAMAGED[number])
        print(line)


if __name__ == '__main__':
    main()
