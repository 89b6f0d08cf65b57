"""Hosts around a simulated switch: each is a network namespace of this Linux, with one interface at a port.

    with lab.Lab(sim.Switch()) as net:
        first, second = net.host('first', 1, '10.0.0.1/24'), net.host('second', 2, '10.0.0.2/24')
        print(first.pings('10.0.0.2'))

To be used inside of namespaces that hold nothing else: `python2.7 -m quorel.sim.lab SCRIPT [ARGUMENT]...` runs a script in
such, as tools/lab does; it exits with what the script exits with, and with 2 if namespaces cannot be made.
"""
import os
import subprocess
import sys

import QuorelApiNew as q
from quorel import checked
from quorel.sim.switch import NAMESPACES, Switch, run_clock

LINK_SECONDS = 0.15  # until a change of an interface is seen at the port
_INSIDE = 'QUOREL_LAB'


class LabError(Exception):
    """A host could not be set up; says the command and what it printed."""


def refusal():
    """Why namespaces cannot be made here; None if they can."""
    for tool in ('unshare', 'ip', 'ping'):
        if not any(os.access(os.path.join(path, tool), os.X_OK)
                   for path in os.environ.get('PATH', '').split(':') + ['/usr/sbin', '/sbin']):
            return '%s is not installed' % tool
    if not os.path.exists('/dev/net/tun'):
        return 'there is no /dev/net/tun'
    process = subprocess.Popen(_entry() + ['true'], stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    output = process.communicate()[0]
    return None if process.returncode == 0 else output.decode('utf-8', 'replace').strip() or 'unshare failed'


def _entry():
    """The command in front of one that is to run in namespaces of its own, which end with it."""
    as_root = [] if os.geteuid() == 0 else ['--user', '--map-root-user']
    return ['unshare'] + as_root + ['--mount', '--net', '--pid', '--fork', '--kill-child', '--mount-proc', 'sh', '-c',
                                    'mount -t tmpfs lab /run && mkdir %s && ip link set lo up && exec "$@"' % NAMESPACES,
                                    'sh']


def inside(command, **options):
    """Starts a command in namespaces of its own, in which hosts can be made: a subprocess.Popen. All of it, hosts and
    programs, is gone when the command has ended, however that was.
    """
    options['env'] = dict(options.get('env') or os.environ, **{_INSIDE: '1'})
    options['env']['PATH'] = options['env'].get('PATH', '') + ':/usr/sbin:/sbin'
    return subprocess.Popen(_entry() + command, **options)


def _run(command):
    process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return process, process.communicate()[0].decode('utf-8', 'replace')


def _has_tagged_interfaces():
    """Whether this Linux can make them."""
    made = _run(['ip', 'link', 'add', 'link', 'lo', 'name', 'lab.1', 'type', 'vlan', 'id', '1'])[0].returncode == 0
    if made:
        _must(['ip', 'link', 'delete', 'lab.1'])
    return made


def _must(command):
    process, output = _run(command)
    if process.returncode != 0:
        raise LabError('%s: %s' % (' '.join(command), output.strip()))
    return output


class _TaggingCard(object):
    """What puts a host's tags on where Linux cannot: a unit of the simulated switch between the host's interfaces, one
    for each VLAN, and the port.
    """
    LINE, UNTAGGED = 1, 2  # its ports

    def __init__(self, namespace):
        free = [unit for unit in range(15, 0, -1) if q.bcm_attach_check(unit) != q.BCM_E_NONE]
        if not free:
            raise LabError('%s: tags need a unit of their own here, and all are attached' % namespace)
        self.switch, self.namespace, self.last_port = Switch(free[0]), namespace, self.UNTAGGED
        self.switch.fresh()
        self.switch.attach_tap(self.UNTAGGED, 'eth0', namespace)

    def add(self, vid, name):
        self.last_port += 1
        unit, port = self.switch.unit, self.last_port
        checked(q.bcm_vlan_port_remove, unit, 1, [port])
        checked(q.bcm_vlan_create, unit, vid)
        checked(q.bcm_vlan_port_add, unit, vid, [self.LINE, port], [port])
        checked(q.bcm_port_untagged_vlan_set, unit, port, vid)
        self.switch.attach_tap(port, name, self.namespace)

    def end(self):
        for port in range(self.UNTAGGED, self.last_port + 1):
            if self.switch.interface(port) is not None:
                self.switch.detach(port)
        checked(q.bcm_detach, self.switch.unit)


class Host(object):
    """A network namespace with the interface eth0, a TAP interface at the switch's port."""

    def __init__(self, switch, name, port, address=None, mac=None):
        self.switch, self.name, self.port, self.address, self.mac = switch, name, port, address, mac
        self._vlans, self._card = [], None
        if self.mac is None:
            self.mac = '02:00:5e:00:%02x:%02x' % (self.switch.unit, self.port)
        _must(['ip', 'netns', 'add', name])
        self._join()

    def __repr__(self):
        return 'Host(%r, port %s)' % (self.name, self.port)

    def _join(self):
        if self._card is not None:
            self.switch.join(self.port, self._card.switch, self._card.LINE)
            return
        self.switch.attach_tap(self.port, 'eth0', self.name)
        self._bring_up('eth0', self.address)
        for vid, address in self._vlans:
            self._add_tagged(vid, address)

    def _leave(self):
        if self._card is not None:
            self.switch.plug(self.port)
        elif self.switch.interface(self.port) == 'eth0':
            self.switch.detach(self.port)

    def _bring_up(self, interface, address):
        self.ip('link', 'set', interface, 'address', self.mac, 'up')
        if address:
            self.ip('address', 'add', address, 'dev', interface)

    def _add_tagged(self, vid, address):
        name = 'eth0.%d' % vid
        if self._card is not None:
            self._card.add(vid, name)
        else:
            self.ip('link', 'add', 'link', 'eth0', 'name', name, 'type', 'vlan', 'id', '%d' % vid)
        self._bring_up(name, address)

    def ip(self, *words):
        """Runs `ip` in the host's namespace; LabError if it fails."""
        return _must(['ip', '-n', self.name] + list(words))

    def move(self, port):
        """The host is plugged into another port, with the addresses that it was given here."""
        self._leave()
        self.port = port
        self._join()

    def vlan(self, vid, address):
        """The host takes part in a VLAN with tags, by the interface eth0.VID. Where this Linux has none of that kind, a
        unit of the simulated switch that is not attached puts the tags on; the port is then joined to that by a cable,
        and has no interface of its own.
        """
        if self._card is None and not _has_tagged_interfaces():
            self._leave()
            self._card = _TaggingCard(self.name)
            self._bring_up('eth0', self.address)
            self._join()
        self._add_tagged(vid, address)
        self._vlans.append((vid, address))

    def end(self):
        """Nothing is left of the host."""
        self._leave()
        if self._card is not None:
            self._card.end()
        _run(['ip', 'netns', 'delete', self.name])

    def command(self, *words):
        """The command with which these words run on the host."""
        return ['ip', 'netns', 'exec', self.name] + list(words)

    def run(self, *words):
        """Runs a command on the host: (exit code, output)."""
        process, output = _run(self.command(*words))
        return process.returncode, output

    def start(self, *words):
        """Starts a command on the host: a subprocess.Popen, whose output nobody sees."""
        with open(os.devnull, 'w') as null:
            return subprocess.Popen(self.command(*words), stdout=null, stderr=null)

    def pings(self, address, count=1, seconds=1):
        """Whether an answer comes from there."""
        return self.run('ping', '-n', '-c', '%d' % count, '-W', '%d' % seconds, address)[0] == 0


class Lab(object):
    """The hosts around a switch, for the length of a block, in which the clock runs with the machine's. RuntimeError
    where others could be disturbed.
    """

    def __init__(self, switch):
        if _INSIDE not in os.environ:
            raise RuntimeError('hosts are made in namespaces of their own: run the script with tools/lab, '
                               'or python2.7 -m quorel.sim.lab')
        self.switch, self.hosts = switch, []

    def host(self, name, port, address=None, mac=None, switch=None):
        """A new host at a port of the switch, or of another one. address: '10.0.0.1/24'."""
        self.hosts.append(Host(switch or self.switch, name, port, address, mac))
        return self.hosts[-1]

    def __enter__(self):
        run_clock()
        return self

    def __exit__(self, *_):
        for host in self.hosts:
            host.end()
        run_clock(False)


def main(words):
    """Runs the script that `words` begin with, with the others as its arguments: the status to exit with."""
    if not words or words[0].startswith('-') or not os.access(words[0], os.R_OK):
        sys.stderr.write('usage: python2.7 -m quorel.sim.lab SCRIPT [ARGUMENT]...\n')
        return 2
    reason = refusal()
    if reason:
        sys.stderr.write('lab: namespaces cannot be made here: %s\n' % reason)
        return 2
    return inside([sys.executable] + words).wait()


if __name__ == '__main__':
    sys.exit(main(sys.argv[1:]))
