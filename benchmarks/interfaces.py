"""How fast frames pass between two hosts, through the simulated switch and through others.

    tools/lab benchmarks/interfaces.py [SECONDS]

Two namespaces have one end of a veth pair each, with offloading off; the other ends are joined by the simulated
switch, by Open vSwitch's userspace datapath if it is installed, and by the Linux bridge. iperf3 measures TCP, and sends
datagrams in frames of 64 bytes as fast as it can. What of them arrives at the other interface is what a switch can do;
what iperf3 gets there also depends on how much of the processors the switch leaves to it. All in one run, one after the
other, twice, the better of each; what else the machine does shows in all of them.
"""
from __future__ import print_function

import array
import fcntl
import json
import os
import socket
import struct
import subprocess
import sys
import time

from quorel import sim

SECONDS = float(sys.argv[1]) if sys.argv[1:] and sys.argv[1][0] != "-" else 3.0
SMALLEST = 64 - 4 - 14 - 20 - 8  # of a datagram's data, so that its frame has 64 bytes with checksum
SIOCETHTOOL = 0x8946
# Receive and transmit checksums, scatter and gather, segmentation; ethtool.h.
OFFLOADS = {'tx checksum': 0x17, 'scatter': 0x19, 'tso': 0x1f, 'gso': 0x24, 'gro': 0x2c}


def run(*command):
    subprocess.check_call(command)


def offload_off(interface):
    """In the namespace that this process is in."""
    control = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    for request in OFFLOADS.values():
        value = array.array('B', struct.pack('II', request, 0))
        asked = struct.pack('16sP', interface.encode(), value.buffer_info()[0])
        fcntl.ioctl(control, SIOCETHTOOL, asked)
    control.close()


def within(namespace, *command):
    return ['ip', 'netns', 'exec', namespace] + list(command)


class Hosts(object):
    """Two hosts, `one` and `two`; of their veth pairs the ends that are to be joined are called so too."""

    def __enter__(self):
        for number, name in enumerate(('one', 'two'), 1):
            run('ip', 'netns', 'add', name)
            run('ip', 'link', 'add', name, 'type', 'veth', 'peer', 'name', 'eth0', 'netns', name)
            run('ip', 'link', 'set', name, 'up')
            run('ip', '-n', name, 'address', 'add', '10.0.0.%d/24' % number, 'dev', 'eth0')
            run('ip', '-n', name, 'link', 'set', 'eth0', 'up')
            offload_off(name)
            subprocess.check_call(within(name, sys.executable, os.path.abspath(__file__), '--offload-off', 'eth0'))
        return self

    def __exit__(self, *_):
        for name in ('one', 'two'):
            run('ip', 'netns', 'delete', name)
            subprocess.call(['ip', 'link', 'delete', name], stderr=subprocess.PIPE)

    def wait(self):
        for _ in range(50):
            if subprocess.call(within('one', 'ping', '-n', '-c', '1', '-W', '1', '10.0.0.2'),
                               stdout=subprocess.PIPE) == 0:
                return
        raise RuntimeError('the hosts do not reach each other')

    def measured(self, *options):
        with open(os.devnull, 'w') as null:
            server = subprocess.Popen(within('two', 'iperf3', '-s', '-1'), stdout=null)
        time.sleep(0.3)
        try:
            told = subprocess.check_output(within('one', 'iperf3', '-c', '10.0.0.2', '-t', '%g' % SECONDS, '-J', *options))
            return json.loads(told.decode())['end']
        finally:
            server.kill()
            server.wait()

    def megabits(self):
        return self.measured()['sum_received']['bits_per_second'] / 1e6

    def packets(self):
        """A second: (frames that arrive at the other interface, datagrams that the program there gets)."""
        before = self.arrived()
        told = self.measured('-u', '-b', '0', '-l', '%d' % SMALLEST)['sum']
        return ((self.arrived() - before) / told['seconds'],
                (told['packets'] - told['lost_packets']) / told['seconds'])

    def arrived(self):
        lines = subprocess.check_output(within('two', 'cat', '/proc/net/dev')).decode().splitlines()
        return [int(line.split()[2]) for line in lines if line.strip().startswith('eth0:')][0]


class SimulatedSwitch(object):
    name = 'simulated switch'

    def __enter__(self):
        self.switch = sim.Switch()
        self.switch.fresh()
        for port, interface in enumerate(('one', 'two'), 1):
            self.switch.attach_interface(port, interface)

    def __exit__(self, *_):
        for port in (1, 2):
            self.switch.detach(port)


class Bridge(object):
    name = 'Linux bridge'

    def __enter__(self):
        run('ip', 'link', 'add', 'bridge', 'type', 'bridge')
        run('ip', 'link', 'set', 'bridge', 'up')
        for interface in ('one', 'two'):
            run('ip', 'link', 'set', interface, 'master', 'bridge')

    def __exit__(self, *_):
        run('ip', 'link', 'delete', 'bridge')


class OpenVSwitch(object):
    """Its daemons keep all that they write in /run, which is this run's own."""
    name = 'Open vSwitch, userspace'
    directory = '/run/openvswitch'
    schema = '/usr/share/openvswitch/vswitch.ovsschema'

    def __enter__(self):
        environment = dict(os.environ, OVS_RUNDIR=self.directory, OVS_LOGDIR=self.directory, OVS_DBDIR=self.directory)
        database, remote = self.directory + '/conf.db', 'unix:%s/db.sock' % self.directory
        os.mkdir(self.directory)
        subprocess.check_call(['ovsdb-tool', 'create', database, self.schema], env=environment)
        with open(os.devnull, 'w') as null:
            self.daemons = [subprocess.Popen(['ovsdb-server', database, '--remote=p' + remote], env=environment,
                                             stdout=null, stderr=null)]
            time.sleep(0.5)
            self.control = ['ovs-vsctl', '--db=' + remote, '--timeout=10']
            subprocess.check_call(self.control + ['--no-wait', 'init'], env=environment)
            self.daemons.append(subprocess.Popen(['ovs-vswitchd', remote], env=environment, stdout=null, stderr=null))
        subprocess.check_call(self.control + ['add-br', 'ovs', '--', 'set', 'bridge', 'ovs', 'datapath_type=netdev'])
        for interface in ('one', 'two'):
            subprocess.check_call(self.control + ['add-port', 'ovs', interface])

    def __exit__(self, *_):
        for daemon in reversed(self.daemons):
            daemon.terminate()
            daemon.wait()
        for entry in os.listdir(self.directory):
            os.remove(os.path.join(self.directory, entry))
        os.rmdir(self.directory)


def has(command):
    return any(os.access(os.path.join(path, command), os.X_OK) for path in os.environ['PATH'].split(':'))


def main():
    if sys.argv[1:2] == ['--offload-off']:
        offload_off(sys.argv[2])
        return 0
    if not has('iperf3'):
        print('iperf3 is not installed')
        return 2
    subjects = [SimulatedSwitch(), OpenVSwitch(), Bridge()]
    if not has('ovs-vswitchd'):
        print('Open vSwitch is not installed (Debian: openvswitch-switch), and left out')
        del subjects[1]
    best = {}
    for _ in range(2):
        for subject in subjects:
            with Hosts() as hosts:
                with subject:
                    hosts.wait()
                    figures = (hosts.megabits(),) + hosts.packets()
                    best[subject] = [max(pair) for pair in zip(figures, best.get(subject, figures))]
    print('\n| Between two namespaces | TCP, Mbit/s | ratio | 64-byte frames/s | ratio | got by iperf3 | ratio |')
    print('|---|---:|---:|---:|---:|---:|---:|')
    for subject in subjects:
        cells = ['%s | %.2f' % (format(int(value), ',d'), own / value)
                 for own, value in zip(best[subjects[0]], best[subject])]
        print('| %s |' % ' | '.join([subject.name] + cells))
    return 0


if __name__ == '__main__':
    sys.exit(main())
