"""Ports joined to interfaces of the host: real hosts at them, and what can go wrong.

Each test runs in a process and in namespaces of its own, which end with it; the class that does the work is Inside.
"""
import ctypes
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

import QuorelApiNew as q
from quorel import OUT, StatusError, checked, events, sim, traverse
from quorel.sim import lab
from router import ip6_list

TESTS = os.path.dirname(os.path.abspath(__file__))
ENOUGH = 60  # seconds, for what should take a fraction of one: who waits as long has been forgotten


def until(condition):
    """Whether it becomes true soon."""
    end = time.time() + ENOUGH
    while not condition():
        if time.time() >= end:
            return False
        time.sleep(0.02)
    return True


def ip(*words):
    subprocess.check_call(('ip',) + words)


def has_link(port):
    return q.bcm_port_link_status_get(0, port, LINK) == 0 and LINK.value()


def addresses():
    """Port by MAC address."""
    return dict((address.mac, address.port) for address in traverse(q.bcm_l2_traverse, 0))


LINK = q.intp()

ROUTER = '02:00:5e:00:01:01'
DATAGRAMS = 3
# A member of a group prints what it is given as UDP, and the frames in which that comes.
MEMBER = """
import select, socket, struct, sys
group, own, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
family = socket.AF_INET6 if ':' in group else socket.AF_INET
wire = socket.socket(socket.AF_PACKET, socket.SOCK_RAW, socket.htons(3))
member = socket.socket(family, socket.SOCK_DGRAM)
member.bind(('', 5000))
if family == socket.AF_INET6:
    member.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_JOIN_GROUP, socket.inet_pton(family, group) + struct.pack('I', 0))
else:
    member.setsockopt(socket.IPPROTO_IP, socket.IP_ADD_MEMBERSHIP, socket.inet_aton(group) + socket.inet_aton(own))
print 'ready'
sys.stdout.flush()
told = {wire: [], member: []}
while min(len(of) for of in told.values()) < count:
    for each in select.select(told, [], [])[0]:
        data = each.recv(2000)
        if 'for the group' in data:
            told[each].append(data)
            print ('frame ' if each is wire else 'data ') + data.encode('hex')
            sys.stdout.flush()
"""
SENDER = """
import socket, sys
group, own, ttl = sys.argv[1], sys.argv[2], int(sys.argv[3])
if ':' in group:
    sender = socket.socket(socket.AF_INET6, socket.SOCK_DGRAM)
    sender.setsockopt(socket.IPPROTO_IPV6, socket.IPV6_MULTICAST_HOPS, ttl)
else:
    sender = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    sender.setsockopt(socket.IPPROTO_IP, socket.IP_MULTICAST_TTL, ttl)
    sender.setsockopt(socket.IPPROTO_IP, socket.IP_MULTICAST_IF, socket.inet_aton(own))
sender.bind((own, 0))
for number in range(int(sys.argv[4])):
    sender.sendto('%d for the group' % number, (group, 5000))
"""


def has_program(name):
    return any(os.access(os.path.join(folder, name), os.X_OK) for folder in os.environ.get('PATH', '').split(':'))


class Inside(unittest.TestCase):
    def setUp(self):
        self.switch = sim.Switch()
        self.switch.fresh()

    def veth(self, name, *words):
        """A pair of interfaces; the other end is in a namespace of that name."""
        ip('netns', 'add', name)
        ip('link', 'add', name, 'type', 'veth', 'peer', 'name', 'eth0', 'netns', name)
        ip('-n', name, 'link', 'set', 'eth0', 'up')
        ip('-n', name, 'address', 'add', *words)

    def refused(self, status, words, function, *arguments):
        with self.assertRaises(sim.InterfaceError) as raised:
            function(*arguments)
        self.assertEqual(raised.exception.name, status)
        self.assertIn(words, str(raised.exception))

    def test_hosts_reach_each_other_as_the_switch_says(self):
        with lab.Lab(self.switch) as net:
            one, _, three = [net.host('h%d' % port, port, '10.0.0.%d/24' % port) for port in (1, 2, 3)]
            self.assertTrue(until(lambda: one.pings('10.0.0.2')))
            # The third may have said something by itself.
            self.assertLessEqual(set([1, 2]), set(addresses().values()))
            checked(q.bcm_vlan_port_remove, 0, 1, [3])
            checked(q.bcm_vlan_create, 0, 20)
            checked(q.bcm_vlan_port_add, 0, 20, [3, 4], [3])
            checked(q.bcm_port_untagged_vlan_set, 0, 3, 20)
            self.assertFalse(three.pings('10.0.0.1'))
            four = net.host('h4', 4)
            four.vlan(20, '10.0.0.44/24')
            four.vlan(30, '10.0.30.44/24')
            self.assertTrue(until(lambda: three.pings('10.0.0.44')))
            checked(q.bcm_vlan_port_remove, 0, 20, [4])
            checked(q.bcm_vlan_port_add, 0, 20, [6], [])
            four.move(6)
            self.assertTrue(until(lambda: three.pings('10.0.0.44')))
            counts = self.switch.interface_counts(1)
            self.assertGreater(counts['received'], 1)
            self.assertGreater(counts['sent'], 1)
            one.move(7)
            self.assertTrue(until(lambda: one.pings('10.0.0.2')))
            self.assertEqual(addresses()[one.mac], 7)

    def test_hosts_at_two_switches_with_a_cable_to_spare(self):
        other = sim.Switch(1)
        other.fresh()
        for port in (10, 11):
            self.switch.join(port, other, port)
        checked(q.bcm_port_stp_set, 0, 11, q.BCM_STG_STP_BLOCK)
        with lab.Lab(self.switch) as net:
            one, two = net.host('h1', 1, '10.0.0.1/24'), net.host('h2', 1, '10.0.0.2/24', switch=other)
            self.assertTrue(until(lambda: one.pings(two.address[:-3])))
            self.switch.pull(10)
            self.assertFalse(one.pings('10.0.0.2'))
            checked(q.bcm_port_stp_set, 0, 11, q.BCM_STG_STP_FORWARD)
            for unit in (0, 1):
                checked(q.bcm_l2_addr_delete_by_port, unit, -1, 10, 0)
            self.assertTrue(until(lambda: one.pings('10.0.0.2')))

    def multicast(self, group, addresses, ttl=9):
        """What hosts in VLANs 10, 20, 30 and 20 get of what the first sends to the group, whose copies leave at ports 2 and
        3: [(data, frame), ...] of each of the other three.
        """
        vlans, is_ip6 = {1: 10, 2: 20, 3: 30, 4: 20}, ':' in group
        interfaces = {}
        for port, vid in sorted(vlans.items()):
            checked(q.bcm_vlan_port_remove, 0, 1, [port])
            if vid not in interfaces:
                checked(q.bcm_vlan_create, 0, vid)
                interface = q.bcm_l3_intf_t(l3a_mac_addr=ROUTER, l3a_vid=vid)
                checked(q.bcm_l3_intf_create, 0, interface)
                interfaces[vid] = interface.l3a_intf_id
            checked(q.bcm_vlan_port_add, 0, vid, [port], [port])
            checked(q.bcm_port_untagged_vlan_set, 0, port, vid)
        number = socket.inet_pton(socket.AF_INET6 if is_ip6 else socket.AF_INET, group)
        to = int(number.encode('hex'), 16)
        members = dict(flags=q.BCM_IPMC_IP6, mc_ip6_addr=ip6_list(to)) if is_ip6 else dict(mc_ip_addr=to)
        checked(q.bcm_ipmc_add, 0, q.bcm_ipmc_addr_t(group=7, **members), OUT)
        for port in (2, 3):
            checked(q.bcm_ipmc_egress_intf_add, 0, 7, port, interfaces[vlans[port]])
        with lab.Lab(self.switch) as net:
            hosts = []
            for port, address in enumerate(addresses, 1):
                hosts.append(net.host('h%d' % port, port))
                hosts[-1].ip('address', 'add', address, 'dev', 'eth0', *(['nodad'] if is_ip6 else []))
                # Where the sender is, for who asks whether its packets come the right way.
                hosts[-1].ip('route', 'add', 'default', 'dev', 'eth0')
            self.assertTrue(until(lambda: all(has_link(port) for port in vlans)))
            self.assertTrue(until(lambda: not any('tentative' in host.ip('address') for host in hosts)))
            own = [address.partition('/')[0] for address in addresses]
            members = [subprocess.Popen(host.command(sys.executable, '-c', MEMBER, group, at, '%d' % DATAGRAMS),
                                        stdout=subprocess.PIPE) for host, at in zip(hosts, own)[1:]]
            for member in members:
                self.assertEqual(member.stdout.readline(), 'ready\n')
            code, output = hosts[0].run(sys.executable, '-c', SENDER, group, own[0], '%d' % ttl, '%d' % DATAGRAMS)
            self.assertEqual((code, output), (0, ''))
            told = []
            for number, member in enumerate(members):
                # Who is to get nothing has got it by the time that the others have all.
                is_over = until(lambda: member.poll() is not None) if number < 2 else False
                if not is_over:
                    member.kill()
                lines = [line.split() for line in member.communicate()[0].splitlines()]
                told.append([[text.decode('hex') for kind, text in lines if kind == of] for of in ('data', 'frame')])
            return told

    def assertMulticast(self, group, addresses, ttl_at):
        data = ['%d for the group' % number for number in range(DATAGRAMS)]
        told = self.multicast(group, addresses)
        for port, (received, frames) in enumerate(told[:2], 2):
            self.assertEqual((received, len(frames)), (data, DATAGRAMS), 'port %d' % port)
            for frame in frames:
                # By the router's address, one hop further.
                self.assertEqual((frame[6:12].encode('hex'), ord(frame[ttl_at])), (ROUTER.replace(':', ''), 8))
        self.assertEqual(told[2], [[], []])

    def test_multicasts_are_routed_to_the_members(self):
        self.assertMulticast('239.1.2.3', ['10.0.10.1/24', '10.0.20.2/24', '10.0.30.3/24', '10.0.20.4/24'], 14 + 8)

    def test_multicasts_of_ip6_are_routed_to_the_members(self):
        self.assertMulticast('ff0e::1:3', ['2001:db8:%d::%d/64' % pair for pair in ((16, 1), (32, 2), (48, 3), (32, 4))],
                             14 + 7)

    @unittest.skipUnless(has_program('tshark'), 'there is no tshark')
    def test_others_find_no_fault_in_routed_multicasts(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        file = os.path.join(folder, 'seen.pcapng')
        with self.switch.captured(file, [1, 2, 3, 4]):
            self.multicast('239.1.2.3', ['10.0.10.1/24', '10.0.20.2/24', '10.0.30.3/24', '10.0.20.4/24'])

        def found(what, *fields):
            command = ['tshark', '-n', '-r', file, '-o', 'ip.check_checksum:TRUE', '-o', 'udp.check_checksum:TRUE',
                       '-Y', what, '-T', 'fields']
            with open(os.devnull, 'w') as null:
                output = subprocess.check_output(command + ['-e' + field for field in fields], stderr=null,
                                                 env=dict(os.environ, HOME=folder))
            return [tuple(line.split('\t')) for line in output.splitlines()]
        data = found('udp.dstport == 5000', 'frame.interface_name', 'ip.ttl', 'eth.dst')
        self.assertEqual(sorted(set(data)), [('unit0/ce%d' % number, ttl, '01:00:5e:01:02:03')
                                             for number, ttl in enumerate(('9', '8', '8'))])
        self.assertEqual(len(data), 3 * DATAGRAMS)
        self.assertEqual(found('_ws.malformed or _ws.expert.severity >= "Error" or ip.checksum.status == "Bad" '
                               'or udp.checksum.status == "Bad"', 'frame.number'), [])

    def test_links_show_on_both_sides(self):
        with lab.Lab(self.switch) as net:
            one = net.host('h1', 1)
            self.assertTrue(until(lambda: has_link(1)))
            one.ip('link', 'set', 'eth0', 'down')
            self.assertTrue(until(lambda: not has_link(1)))
            one.ip('link', 'set', 'eth0', 'up')
            self.assertTrue(until(lambda: has_link(1)))
            checked(q.bcm_port_enable_set, 0, 1, 0)
            self.assertTrue(until(lambda: 'NO-CARRIER' in one.ip('link', 'show', 'eth0')))
            checked(q.bcm_port_enable_set, 0, 1, 1)
            self.assertTrue(until(lambda: 'NO-CARRIER' not in one.ip('link', 'show', 'eth0')))
            self.assertTrue(until(lambda: has_link(1)))

        self.veth('v2', '10.0.0.2/24', 'dev', 'eth0')
        self.switch.attach_interface(2, 'v2')
        self.assertTrue(until(lambda: has_link(2)))
        ip('-n', 'v2', 'link', 'set', 'eth0', 'down')
        self.assertTrue(until(lambda: not has_link(2)))
        ip('-n', 'v2', 'link', 'set', 'eth0', 'up')
        self.assertTrue(until(lambda: has_link(2)))
        checked(q.bcm_port_enable_set, 0, 2, 0)
        self.assertTrue(until(lambda: 'NO-CARRIER' in subprocess.check_output(['ip', '-n', 'v2', 'link', 'show', 'eth0'])))
        self.switch.detach(2)
        # It was down before.
        self.assertNotIn(',UP', subprocess.check_output(['ip', 'link', 'show', 'v2']))

    def test_frames_of_the_hosts_stack_pass_whole(self):
        """Through packet sockets: tags and checksums that the kernel leaves to others, and frames of all sizes."""
        for port in (1, 2):
            self.veth('v%d' % port, '10.0.0.%d/24' % port, 'dev', 'eth0')
            self.switch.attach_interface(port, 'v%d' % port)
        self.assertTrue(until(lambda: has_link(1) and has_link(2)))
        ping = ['ip', 'netns', 'exec', 'v1', 'ping', '-n', '-c', '1', '-W', '1', '10.0.0.2']
        self.assertTrue(until(lambda: subprocess.call(ping) == 0))
        for size in (0, 1, 17, 18, 1472):
            self.assertEqual(subprocess.call(ping + ['-s', '%d' % size, '-M', 'do']), 0, size)
        serve = 'import socket; s = socket.socket(); s.bind(("10.0.0.2", 99)); s.listen(1); c, _ = s.accept()\n' \
                'while True:\n    data = c.recv(999)\n    if not data: break\n    c.sendall(data)'
        server = subprocess.Popen(['ip', 'netns', 'exec', 'v2', sys.executable, '-c', serve])
        talk = 'import socket, time\nfor _ in range(50):\n    try:\n        c = socket.create_connection(("10.0.0.2", 99), 5)\n' \
               '        break\n    except socket.error:\n        time.sleep(0.1)\n' \
               'for size in range(1, 1000, 37):\n    c.sendall("x" * size)\n    got = ""\n' \
               '    while len(got) < size: got += c.recv(9999)\nprint(got.count("x"))'
        self.assertEqual(subprocess.check_output(['ip', 'netns', 'exec', 'v1', sys.executable, '-c', talk]).strip(), '963')
        self.assertEqual(server.wait(), 0)

    def test_tags_pass_packet_sockets(self):
        """Between two ports that have an end of a pair each: the kernel puts tags beside the frames."""
        self.veth('v1', '10.0.0.1/24', 'dev', 'eth0')
        other = sim.Switch(1)
        other.fresh()
        self.switch.attach_interface(1, 'v1')
        other.attach_interface(3, 'eth0', 'v1')
        checked(q.bcm_vlan_create, 0, 30)
        checked(q.bcm_vlan_port_add, 0, 30, [1, 2], [])
        checked(q.bcm_vlan_create, 1, 30)
        checked(q.bcm_vlan_port_add, 1, 30, [3, 4, 5], [5])
        self.assertTrue(until(lambda: has_link(1) and q.bcm_port_link_status_get(1, 3, LINK) == 0 and LINK.value()))
        frame, seen = sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01', b'x' * 100), []
        # Not what the hosts have to say themselves.
        with other.watched(lambda port, left: seen.append((port, left)) if left[:6] == frame[:6] else None):
            self.switch.send(2, sim.tagged(frame, 30, 5))
            self.assertTrue(until(lambda: len(seen) > 1))
        self.assertEqual(seen, [(4, sim.tagged(frame, 30, 5)), (5, frame)])

    def test_an_interface_that_vanishes(self):
        self.veth('v1', '10.0.0.1/24', 'dev', 'eth0')
        self.switch.attach_interface(1, 'v1')
        self.switch.attach_tap(2, 'tap0')
        self.assertEqual(self.switch.interface(1), 'v1')
        # In the middle of what it sends and receives.
        self.assertTrue(until(lambda: has_link(1)))
        flood = subprocess.Popen(['ip', 'netns', 'exec', 'v1', 'ping', '-f', '-b', '-w', '3', '10.0.0.255'],
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.assertTrue(until(lambda: self.switch.interface_counts(1)['received'] > 100))
        ip('link', 'delete', 'v1')
        self.assertTrue(until(lambda: self.switch.interface(1) is None))
        self.assertFalse(has_link(1))
        with self.assertRaises(StatusError):
            self.switch.detach(1)
        self.assertEqual(self.switch.interface_counts(1)['received'], 0)
        flood.communicate()
        self.switch.attach_tap(1, 'again')
        self.assertEqual([self.switch.interface(port) for port in (1, 2)], ['again', 'tap0'])

    def test_what_is_refused(self):
        switch = self.switch
        switch.attach_tap(1, 'taken')
        self.refused('BCM_E_BUSY', 'the port has the interface taken', switch.attach_tap, 1, 'other')
        self.refused('BCM_E_BUSY', 'has the interface taken already', switch.attach_interface, 2, 'taken')
        self.refused('BCM_E_BUSY', 'has the interface taken already', switch.attach_tap, 2, 'taken')
        self.refused('BCM_E_NOT_FOUND', 'the interface missing: No such device', switch.attach_interface, 2, 'missing')
        self.refused('BCM_E_FAIL', 'nowhere: No such file', switch.attach_tap, 2, 'tap', 'nowhere')
        self.refused('BCM_E_FAIL', 'the network namespace /proc/self/ns/uts: Invalid argument',
                     switch.attach_tap, 2, 'tap', '/proc/self/ns/uts')
        for name in ('', 'x' * 16, 'a/b'):
            self.refused('BCM_E_PARAM', 'has 1 to 15 characters', switch.attach_tap, 2, name)
        for unit, port, status in ((0, 0, 'BCM_E_PORT'), (0, 65, 'BCM_E_PORT'), (16, 1, 'BCM_E_UNIT')):
            with self.assertRaises(StatusError) as raised:
                sim.Switch(unit).attach_tap(port, 'tap')
            self.assertEqual(raised.exception.name, status)
        self.assertEqual([switch.interface(port) for port in (1, 2)], ['taken', None])

    def test_without_permission(self):
        # As one who may do nothing in these namespaces.
        os.setgroups([])
        os.setgid(65534)
        os.setuid(65534)
        self.refused('BCM_E_FAIL', 'Operation not permitted', self.switch.attach_interface, 1, 'lo')
        self.refused('BCM_E_FAIL', 'ermi', self.switch.attach_tap, 1, 'tap')
        self.assertIsNone(self.switch.interface(1))

    def test_another_process_and_one_that_crashes(self):
        code = 'import sys, time\nfrom quorel import sim\nsim.Switch().attach_tap(1, "tap0")\n' \
               'sys.stdout.write("ready")\nsys.stdout.flush()\ntime.sleep(600)'
        other = subprocess.Popen([sys.executable, '-c', code], stdout=subprocess.PIPE)
        self.assertEqual(other.stdout.read(5), 'ready')
        self.refused('BCM_E_BUSY', 'has the interface tap0 already', self.switch.attach_tap, 2, 'tap0')
        other.send_signal(signal.SIGKILL)
        other.wait()
        other.stdout.close()
        self.assertNotEqual(subprocess.call(['ip', 'link', 'show', 'tap0']), 0)
        self.switch.attach_tap(2, 'tap0')

    def test_a_process_that_just_ends(self):
        for end in ('', 'import os; os._exit(0)', 'sim.Switch().detach(1)', 'import sys; sys.exit(0)',
                    'import os\nif os.fork() == 0:\n    sim.Switch().send(2, sim.ethernet(A, B)); os._exit(0)\n'
                    'assert os.wait()[1] == 0'):
            code = 'from quorel import sim\nA, B = "02:00:00:00:00:01", "02:00:00:00:00:02"\n' \
                   'sim.Switch().attach_tap(1, "tap0")\n' + end
            start = time.time()
            self.assertEqual(subprocess.call([sys.executable, '-c', code]), 0, end)
            self.assertLess(time.time() - start, ENOUGH)
            self.assertNotEqual(subprocess.call(['ip', 'link', 'show', 'tap0']), 0)

    def test_scripts_go_on_meanwhile(self):
        """Several threads of Python, callbacks and the thread of the interfaces wait for each other, and none for
        ever.
        """
        with lab.Lab(self.switch) as net:
            one, _ = [net.host('h%d' % port, port, '10.0.0.%d/24' % port) for port in (1, 2)]
            self.assertTrue(until(lambda: one.pings('10.0.0.2')))
            flood = one.start('ping', '-n', '-f', '-w', '%d' % ENOUGH, '10.0.0.2')
            stop, rounds, seen = threading.Event(), {100: 0, 101: 0}, []

            def configure(vid):
                while not stop.is_set():
                    checked(q.bcm_vlan_create, 0, vid)
                    checked(q.bcm_vlan_port_add, 0, vid, [1, 2], [])
                    checked(q.bcm_vlan_destroy, 0, vid)
                    q.getHwMacTable(0)
                    rounds[vid] += 1

            def all_go_on():
                checked(q.bcm_l2_addr_delete_by_port, 0, -1, 1, 0)
                return min(rounds.values()) > 5 and len(seen) > 20 and len(heard) > 4

            threads = [threading.Thread(target=configure, args=(vid,)) for vid in rounds]
            heard = []
            with events(q.bcm_l2_addr_register, 0) as told:
                with self.switch.watched(lambda port, frame: seen.append(q.bcm_port_enable_get(0, port, LINK))):
                    for thread in threads:
                        thread.start()
                    going_on = until(lambda: heard.extend(told.waiting()) or all_go_on())
                    stop.set()
                    for thread in threads:
                        thread.join(ENOUGH)
            flood.terminate()
            flood.wait()
            self.assertTrue(going_on, (rounds, len(seen), len(heard)))
            self.assertFalse(any(thread.is_alive() for thread in threads))

    def test_not_out_of_a_callback(self):
        """A function of the SDK that goes on afterwards has not locked its unit."""
        said = []

        def attach(*_):
            try:
                self.switch.attach_tap(1, 'tap0')
            except sim.InterfaceError as error:
                said.append(str(error))

        with events(q.bcm_l2_addr_register, 0):
            pass
        change = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_void_p, ctypes.c_int, ctypes.c_void_p)
        called = change(attach)
        library = ctypes.CDLL(os.path.join(os.environ['QUOREL_LIBRARIES'], 'libQuorelApiNew.so.0'))
        self.assertEqual(library.bcm_l2_addr_register(0, called, None), 0)
        self.switch.send(1, sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01'))
        library.bcm_l2_addr_unregister(0, called, None)
        self.assertEqual(len(said), 1)
        self.assertIn('a function of the SDK that has not returned', said[0])


if 'QUOREL_LAB' not in os.environ:
    class Interfaces(unittest.TestCase):
        """Runs each test of Inside."""
        longMessage = True

        def run_inside(self, name):
            process = lab.inside([sys.executable, '-m', 'unittest', 'test_sim_interfaces.Inside.' + name], cwd=TESTS,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
            output = process.communicate()[0]
            self.assertEqual(process.returncode, 0, output)
            if 'skipped=1' in output:
                self.skipTest(output)

        def run_lab(self, *words):
            process = subprocess.Popen((sys.executable, '-m', 'quorel.sim.lab') + words, stdout=subprocess.PIPE,
                                       stderr=subprocess.STDOUT)
            return process.communicate()[0], process.returncode

        def test_what_the_command_gives_back(self):
            for words, said, code in [((), 'usage: ', 2), (('--help',), 'usage: ', 2), (('/none.py',), 'usage: ', 2),
                                      (('/dev/null',), '', 0)]:
                self.assertEqual(self.run_lab(*words)[1], code, words)
                self.assertIn(said, self.run_lab(*words)[0])
            with tempfile.NamedTemporaryFile(suffix='.py') as script:
                script.write('import sys; print(sys.argv[1:]); sys.exit(7)')
                script.flush()
                self.assertEqual(self.run_lab(script.name, '--port', '1'), ("['--port', '1']\n", 7))

        def test_the_lab(self):
            script = os.path.join(os.path.dirname(TESTS), 'examples', 'lab.py')
            output, code = self.run_lab(script)
            self.assertEqual(code, 0, output)
            for words in ('first reaches second, in VLAN 10', 'NOT AS', 'port 1  received'):
                self.assertEqual(words in output, words != 'NOT AS', output)
            # What it has dropped stands in the last columns, packets and bytes.
            self.assertRegexpMatches(output, r"DstIp=10.0.0.2 IpProtocol=1 SrcIp=10.0.0.1 +Drop +1 +102\n")
            self.assertRegexpMatches(output, r"DstIp=10.0.0.5 IpProtocol=6 L4DstPort=8000-8999 +Drop +[1-9]")

    REFUSAL = lab.refusal()
    for test_name in [name for name in dir(Inside) if name.startswith('test_')]:
        setattr(Interfaces, test_name, lambda self, name=test_name: self.run_inside(name))
    if REFUSAL:
        Interfaces = unittest.skip('namespaces cannot be made here: ' + REFUSAL)(Interfaces)
    del Inside


if __name__ == '__main__':
    unittest.main()
