#!/usr/bin/env python2.7
"""Real hosts at the ports of the simulated switch, which a script configures. Run by tools/lab.

       first  10.0.0.1  port 1 ---+------------+--- port 3  third  10.0.0.3
                                  |  VLAN 10:  |
       second 10.0.0.2  port 2 ---+  1 2       +--- port 4  fourth 10.0.0.4, 10.0.20.4
                                  |  VLAN 20:  |
       (second moves to port 6) --+  3 4       +--- port 5  server 10.0.0.5 in VLAN 10, 10.0.20.5 in VLAN 20, tagged
                                  +------------+

Nothing here routes between the VLANs, so hosts reach each other within a VLAN only. The exit code is 0 if all went
as it should, 1 if not.
"""
from __future__ import print_function

import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

import QuorelApiNew as q
from quorel import checked, sim, traverse
from quorel.sim import lab

UNIT = 0
SECONDS_OF_TRAFFIC = 2


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
        fourth.ip('address', 'add', '10.0.20.4/24', 'dev', 'eth0')
        time.sleep(lab.LINK_SECONDS)

        report.title('Pings')
        report.expect('first reaches second, in VLAN 10', first.pings('10.0.0.2'))
        report.expect('third reaches fourth, in VLAN 20', third.pings('10.0.0.4'))
        report.expect('first reaches the server, which has tags', first.pings('10.0.0.5'))
        report.expect('fourth reaches the server in VLAN 20', fourth.pings('10.0.20.5'))
        report.expect('first reaches third, in VLAN 20', first.pings('10.0.0.3'), False)

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
        report.title('Not shown: access lists, which have no effect on packets here, and routing between VLANs')
    return 1 if report.failed else 0


if __name__ == '__main__':
    sys.exit(main())
