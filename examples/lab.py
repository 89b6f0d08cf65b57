#!/usr/bin/env python2.7
"""Real hosts at the ports of the simulated switch, which a script configures. Run by tools/lab.

       first  10.0.0.1  port 1 ---+------------+--- port 3  third  10.0.0.3
                                  |  VLAN 10:  |
       second 10.0.0.2  port 2 ---+  1 2       +--- port 4  fourth 10.0.0.4, 10.0.20.4
                                  |  VLAN 20:  |
       (second moves to port 6) --+  3 4       +--- port 5  server 10.0.0.5 in VLAN 10, 10.0.20.5 in VLAN 20, tagged
                                  +------------+

Hosts reach each other within a VLAN, and between VLANs when the switch routes: first has the address 10.0.10.1 for that,
fourth 10.0.20.4. An access list then refuses some of it. The exit code is 0 if all went as it should, 1 if not.
"""
from __future__ import print_function

import json
import os
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time

import QuorelApiNew as q
from quorel import ACL, OUT, checked, sim, traverse
from quorel.sim import lab

UNIT = 0
SECONDS_OF_TRAFFIC = 2
ROUTER = '02:00:5e:00:01:01'


class Report(object):
    def __init__(self):
        self.failed = 0

    def title(self, text):
        print('\n%s' % text)

    def expect(self, text, is_so, wanted=True):
        self.failed += is_so != wanted
        print('  %-56s %s%s' % (text, 'yes' if is_so else 'no', '' if is_so == wanted else '   NOT AS IT SHOULD BE'))


def configure():
    """Two VLANs; port 5 takes part in both, with tags."""
    checked(q.bcm_vlan_port_remove, UNIT, 1, [1, 2, 3, 4, 5, 6])
    for vid, ports in ((10, [1, 2, 6]), (20, [3, 4])):
        checked(q.bcm_vlan_create, UNIT, vid)
        checked(q.bcm_vlan_port_add, UNIT, vid, ports + [5], ports)
        for port in ports:
            checked(q.bcm_port_untagged_vlan_set, UNIT, port, vid)
    for port in range(1, 7):
        checked(q.bcm_port_vlan_member_set, UNIT, port, q.BCM_PORT_VLAN_MEMBER_INGRESS)


def route(hosts):
    """Routes between hosts, [(VLAN, host, address), ...]: an interface of the router in each VLAN, and where each is."""
    for vid, host, address in hosts:
        interface = q.bcm_l3_intf_t(l3a_mac_addr=ROUTER, l3a_vid=vid)
        checked(q.bcm_l3_intf_create, UNIT, interface)
        next_hop = q.bcm_l3_egress_t(intf=interface.l3a_intf_id, mac_addr=host.mac, port=host.port)
        egress = checked(q.bcm_l3_egress_create, UNIT, 0, next_hop, OUT)
        number, = struct.unpack('>I', socket.inet_aton(address))
        checked(q.bcm_l3_host_add, UNIT, q.bcm_l3_host_t(l3a_ip_addr=number, l3a_intf=egress))


def use_router(host, address, network):
    """The host has one more address, and a way to that network. Nobody here answers for the router when asked for it."""
    gateway = address.rpartition('.')[0] + '.254'
    host.ip('address', 'add', address + '/24', 'dev', 'eth0')
    host.ip('neighbour', 'add', gateway, 'lladdr', ROUTER, 'dev', 'eth0', 'nud', 'permanent')
    host.ip('route', 'add', network, 'via', gateway, 'src', address)


def answers(client, address, port, tries=1):
    """Whether somebody takes a TCP connection there, at one of several tries."""
    program = 'import socket, sys; socket.create_connection((sys.argv[1], int(sys.argv[2])), 0.8)'
    for _ in range(tries):
        if client.run(sys.executable, '-c', program, address, '%d' % port)[0] == 0:
            return True
        time.sleep(0.1)
    return False


def show_access_list(report, first, server):
    """Pings to second and a port of the server are refused to first, as long as there is the list."""
    program = 'import socket, sys, time\n' \
              'sockets = [socket.socket() for _ in sys.argv[1:]]\n' \
              'for each, port in zip(sockets, sys.argv[1:]):\n' \
              '    each.bind(("", int(port)))\n' \
              '    each.listen(1)\n' \
              'time.sleep(600)'
    listening = server.start(sys.executable, '-c', program, '80', '8080')
    acl = ACL(UNIT)
    try:
        pings = acl.add(2, dict(SrcIp='10.0.0.1', DstIp='10.0.0.2', IpProtocol=1), ['Drop'], count=True)
        ports = acl.add(1, dict(DstIp='10.0.0.5', IpProtocol=6, L4DstPort='8000-8999'), ['Drop'], count=True)
        report.expect('first reaches second', first.pings('10.0.0.2'), False)
        report.expect('first reaches the server', first.pings('10.0.0.5'))
        report.expect('port 80 of the server answers first', answers(first, '10.0.0.5', 80, tries=20))
        report.expect('port 8080 of the server answers first', answers(first, '10.0.0.5', 8080), False)
        report.expect('the rules have counted what they dropped', all([pings.packets, ports.packets]))
        print('  ' + str(acl).replace('\n', '\n  '))
        acl.destroy()
        report.expect('without the list, first reaches second', first.pings('10.0.0.2'))
        report.expect('and port 8080 answers', answers(first, '10.0.0.5', 8080))
    finally:
        acl.destroy()
        if listening.poll() is None:
            listening.kill()
        listening.wait()


def addresses():
    """[(MAC, VLAN, port), ...]"""
    return sorted((address.mac, address.vid, address.port) for address in traverse(q.bcm_l2_traverse, UNIT))


def show_addresses():
    for mac, vid, port in addresses():
        print('  %s  VLAN %-4d port %d' % (mac, vid, port))


def show_counters(switch):
    for port in range(1, 7):
        counts = switch.statistics(port)
        print('  port %d  received %8d  sent %8d  dropped %6d' % (
            port, counts.get('snmpDot1dTpPortInFrames', 0), counts.get('snmpDot1dTpPortOutFrames', 0),
            counts.get('snmpIfInDiscards', 0) + counts.get('snmpIfOutDiscards', 0)))


def iperf(server, client, address):
    """Mbit/s of TCP, or None where iperf3 is not installed."""
    listening = server.start('iperf3', '-s', '-1')
    try:
        time.sleep(0.5)
        status, output = client.run('iperf3', '-c', address, '-t', str(SECONDS_OF_TRAFFIC), '-J')
        return json.loads(output)['end']['sum_received']['bits_per_second'] / 1e6 if status == 0 else None
    finally:
        if listening.poll() is None:
            listening.kill()
        listening.wait()


def capture(switch, action):
    """What arrives at port 1 and leaves it while the action runs, from a capture file: a line each."""
    directory = tempfile.mkdtemp()
    try:
        file, seen = os.path.join(directory, 'lab.pcapng'), []
        with switch.captured(file, [1]), switch.watched(lambda port, frame: seen.append((port, frame))):
            action()
        try:
            with open(os.devnull, 'w') as null:
                told = subprocess.check_output(['tshark', '-n', '-r', file], stderr=null, env=dict(os.environ, HOME=directory))
            print(told.decode('utf-8').replace(u'\u2192', u'->').encode('ascii', 'replace').decode().rstrip())
        except OSError:  # without tshark
            for port, frame in seen:
                print('  port %d sends %s' % (port, ' '.join('%s=%s' % field[:2] for field in sim.dissect(frame)[:3])))
    finally:
        shutil.rmtree(directory)


def main():
    report, switch = Report(), sim.Switch(UNIT)
    switch.fresh()
    configure()
    with lab.Lab(switch) as net:
        first, second, third, fourth = [net.host(name, port, '10.0.0.%d/24' % port)
                                        for port, name in enumerate(('first', 'second', 'third', 'fourth'), 1)]
        server = net.host('server', 5)
        server.vlan(10, '10.0.0.5/24')
        server.vlan(20, '10.0.20.5/24')
        use_router(first, '10.0.10.1', '10.0.20.0/24')
        use_router(fourth, '10.0.20.4', '10.0.10.0/24')
        time.sleep(lab.LINK_SECONDS)

        report.title('Pings')
        report.expect('first reaches second, in VLAN 10', first.pings('10.0.0.2'))
        report.expect('third reaches fourth, in VLAN 20', third.pings('10.0.0.4'))
        report.expect('first reaches the server, which has tags', first.pings('10.0.0.5'))
        report.expect('fourth reaches the server in VLAN 20', fourth.pings('10.0.20.5'))
        report.expect('first reaches third, in VLAN 20', first.pings('10.0.0.3'), False)
        report.expect('first reaches fourth, in VLAN 20', first.pings('10.0.20.4'), False)

        report.title('The switch routes between the VLANs')
        route([(10, first, '10.0.10.1'), (20, fourth, '10.0.20.4')])
        status, answer = first.run('ping', '-n', '-c', '1', '-W', '2', '10.0.20.4')
        report.expect('first reaches fourth', status == 0)
        report.expect('as a router lets packets pass: their TTL is one less', 'ttl=63' in answer)

        report.title('An access list')
        show_access_list(report, first, server)

        report.title('A port is disabled and enabled again')
        checked(q.bcm_port_enable_set, UNIT, 2, 0)
        time.sleep(lab.LINK_SECONDS)
        report.expect('first reaches second', first.pings('10.0.0.2'), False)
        report.expect('second sees a carrier', 'LOWER_UP' in second.ip('link', 'show', 'eth0'), False)
        checked(q.bcm_port_enable_set, UNIT, 2, 1)
        time.sleep(lab.LINK_SECONDS)
        report.expect('first reaches second', first.pings('10.0.0.2', seconds=2))

        report.title('Second moves to port 6')
        second.move(6)
        time.sleep(lab.LINK_SECONDS)
        report.expect('second reaches first', second.pings('10.0.0.1', seconds=2))
        report.expect('its address has moved', (second.mac, 10, 6) in addresses())

        report.title('A capture at port 1, while first pings second')
        capture(switch, lambda: first.pings('10.0.0.2'))

        report.title('TCP from first to second')
        speed = iperf(second, first, '10.0.0.2')
        print('  iperf3 is not here, or failed' if speed is None else '  %.0f Mbit/s' % speed)

        report.title('Addresses')
        show_addresses()
        report.title('Counters')
        show_counters(switch)
    return 1 if report.failed else 0


if __name__ == '__main__':
    sys.exit(main())
