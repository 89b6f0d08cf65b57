"""How fast frames pass between two hosts, through the simulated switch and through others.

    tools/lab benchmarks/interfaces.py [SECONDS]

Two namespaces have one end of a veth pair each, with offloading off; the other ends are joined by the simulated
switch, by Open vSwitch's userspace datapath if it is installed, and by the Linux bridge. iperf3 measures TCP. Frames of
64 bytes come from a sender that makes as many as it can, many with each call of the system; what arrives at the other
interface is counted, and the CPU time of the process that is the switch for each of these. iperf3 sends such frames too:
how many datagrams it gets depends most on the processor time that it takes itself. All in one run, one after the other,
twice, the better of each; what else the machine does shows in all of them.
"""
from __future__ import print_function

import array
import ctypes
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
NOBODYS_TYPE = 0x88b5  # of frames for experiments, which no host takes
SOL_PACKET, PACKET_QDISC_BYPASS = 263, 20
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


def here(namespace, *arguments):
    """This program in the namespace."""
    return within(namespace, sys.executable, os.path.abspath(__file__), *arguments)


def cpu_seconds(process):
    """What a process has used; 0 for none."""
    if process is None:
        return 0.0
    with open('/proc/%d/stat' % process) as file:
        fields = file.read().rpartition(')')[2].split()
    return (int(fields[11]) + int(fields[12])) / float(os.sysconf('SC_CLK_TCK'))


class Piece(ctypes.Structure):
    """struct iovec"""
    _fields_ = [('base', ctypes.c_void_p), ('length', ctypes.c_size_t)]


class Header(ctypes.Structure):
    """struct msghdr"""
    _fields_ = [('name', ctypes.c_void_p), ('name_length', ctypes.c_uint), ('pieces', ctypes.POINTER(Piece)),
                ('piece_count', ctypes.c_size_t), ('control', ctypes.c_void_p), ('control_length', ctypes.c_size_t),
                ('flags', ctypes.c_int)]


class Message(ctypes.Structure):
    """struct mmsghdr"""
    _fields_ = [('header', Header), ('length', ctypes.c_uint)]


def send_smallest(interface, to, seconds):
    """Frames of 64 bytes to an address, as fast as the system takes them. Prints how long that took."""
    with open('/sys/class/net/%s/address' % interface) as file:
        addresses = [bytearray(int(octet, 16) for octet in text.strip().split(':')) for text in (to, file.read())]
    frame = ctypes.create_string_buffer(
        bytes(addresses[0] + addresses[1] + bytearray(struct.pack('>H', NOBODYS_TYPE))), 60)
    piece = Piece(ctypes.addressof(frame), 60)
    at_once = 64
    header = Header(pieces=ctypes.pointer(piece), piece_count=1)
    messages = (Message * at_once)(*[Message(header) for _ in range(at_once)])
    sender = socket.socket(socket.AF_PACKET, socket.SOCK_RAW)
    sender.setsockopt(SOL_PACKET, PACKET_QDISC_BYPASS, 1)
    sender.bind((interface, 0))
    sendmmsg = ctypes.CDLL(None, use_errno=True).sendmmsg
    began = time.time()
    while time.time() < began + seconds:
        if sendmmsg(sender.fileno(), messages, at_once, 0) < 0:
            raise OSError(ctypes.get_errno(), 'sendmmsg')
    print(time.time() - began)


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
            run(*here(name, '--offload-off', 'eth0'))
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

    def datagrams(self):
        """A second, of those that the other program gets."""
        told = self.measured('-u', '-b', '0', '-l', '%d' % SMALLEST)['sum']
        return (told['packets'] - told['lost_packets']) / told['seconds']

    def smallest(self, process):
        """Frames of 64 bytes: (how many a second arrive, CPU microseconds of a process for each, None without one)"""
        to = subprocess.check_output(within('two', 'cat', '/sys/class/net/eth0/address')).decode()
        arrived, spent = self.arrived(), cpu_seconds(process)
        seconds = float(subprocess.check_output(here('one', '--send', 'eth0', to.strip(), str(SECONDS))))
        arrived, spent = self.arrived() - arrived, cpu_seconds(process) - spent
        return arrived / seconds, spent / arrived * 1e6 if process else None

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
        self.process = os.getpid()

    def __exit__(self, *_):
        for port in (1, 2):
            self.switch.detach(port)


class Bridge(object):
    """Does its work where those who send call the system."""
    name, process = 'Linux bridge', None

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
        self.process = self.daemons[-1].pid
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
    if sys.argv[1:2] == ['--send']:
        send_smallest(sys.argv[2], sys.argv[3], float(sys.argv[4]))
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
                    frames, cpu = hosts.smallest(subject.process)
                    figures = hosts.megabits(), frames, hosts.datagrams(), -cpu if cpu else None
                    best[subject] = [max(pair) for pair in zip(figures, best.get(subject, figures))]
    print('\n| Between two namespaces | TCP, Mbit/s | ratio | 64-byte frames/s | ratio | got by iperf3 | ratio '
          '| CPU us a frame | ratio |')
    print('|---|---:|---:|---:|---:|---:|---:|---:|---:|')
    for subject in subjects:
        cells = ['%s | %.2f' % (format(int(value), ',d'), own / value)
                 for own, value in list(zip(best[subjects[0]], best[subject]))[:3]]
        cpu = best[subject][3]
        cells.append('%.2f | %.2f' % (-cpu, best[subjects[0]][3] / cpu) if cpu else ' | ')
        print('| %s |' % ' | '.join([subject.name] + cells))
    return 0


if __name__ == '__main__':
    sys.exit(main())
