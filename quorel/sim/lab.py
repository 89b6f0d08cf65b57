"""Hosts around a simulated switch: each is a network namespace of this Linux, with one interface at a port.

    with lab.Lab(sim.Switch()) as net:
        first, second = net.host('first', 1, '10.0.0.1/24'), net.host('second', 2, '10.0.0.2/24')
        print(first.pings('10.0.0.2'))

To be used inside of namespaces that hold nothing else, as tools/lab makes them: enter() says what is missing.
"""
import os
import subprocess

from quorel.sim.switch import NAMESPACES

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


def _must(command):
    process, output = _run(command)
    if process.returncode != 0:
        raise LabError('%s: %s' % (' '.join(command), output.strip()))
    return output


class Host(object):
    """A network namespace with the interface eth0, a TAP interface at the switch's port."""

    def __init__(self, switch, name, port, address=None, mac=None):
        self.switch, self.name, self.port, self.address, self.mac = switch, name, port, address, mac
        _must(['ip', 'netns', 'add', name])
        self._join()

    def __repr__(self):
        return 'Host(%r, port %s)' % (self.name, self.port)

    def _join(self):
        self.switch.attach_tap(self.port, 'eth0', self.name)
        if self.mac is None:
            self.mac = '02:00:5e:00:%02x:%02x' % (self.switch.unit, self.port)
        self.ip('link', 'set', 'eth0', 'address', self.mac, 'up')
        if self.address:
            self.ip('address', 'add', self.address, 'dev', 'eth0')

    def ip(self, *words):
        """Runs `ip` in the host's namespace; LabError if it fails."""
        return _must(['ip', '-n', self.name] + list(words))

    def move(self, port):
        """The host is plugged into another port."""
        self.switch.detach(self.port)
        self.port = port
        self._join()

    def vlan(self, vid, address):
        """The host takes part in a VLAN with tags."""
        self.ip('link', 'add', 'link', 'eth0', 'name', 'eth0.%d' % vid, 'type', 'vlan', 'id', '%d' % vid)
        self.ip('link', 'set', 'eth0.%d' % vid, 'up')
        self.ip('address', 'add', address, 'dev', 'eth0.%d' % vid)

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
    """The hosts around a switch, for the length of a block. RuntimeError where others could be disturbed."""

    def __init__(self, switch):
        if _INSIDE not in os.environ:
            raise RuntimeError('hosts are made in namespaces of their own: run the script with tools/lab')
        self.switch, self.hosts = switch, []

    def host(self, name, port, address=None, mac=None):
        """A new host at a port of the switch. address: '10.0.0.1/24'."""
        self.hosts.append(Host(self.switch, name, port, address, mac))
        return self.hosts[-1]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for host in self.hosts:
            if self.switch.interface(host.port) == 'eth0':
                self.switch.detach(host.port)
            _run(['ip', 'netns', 'delete', host.name])
