"""An access list of a thousand rules gives the verdicts of Linux's packet filter with the same rules and packets.

The rules are made by a program with the habits of real lists: prefixes of few lengths, well-known ports and ranges of
them, mostly TCP. The packets that Linux lets pass come out of another interface, so that what is compared is each
packet's fate, and each rule's count. It all happens in namespaces of its own, in another process: class Inside.
"""
import fcntl
import json
import os
import random
import socket
import struct
import subprocess
import sys
import unittest

import QuorelApiNew as q
from quorel import ACL, checked, sim
from quorel.sim import lab

RULES, PACKETS = 1000, 10000
TCP, UDP, ICMP, ICMP6 = 6, 17, 1, 58
NAMES = {TCP: 'tcp', UDP: 'udp', ICMP: 'icmp', ICMP6: 'icmpv6'}
WELL_KNOWN = [20, 22, 23, 25, 53, 80, 110, 123, 135, 139, 143, 161, 179, 389, 443, 445, 514, 1433, 1521, 3306, 3389,
              8080]
TUNSETIFF, IFF_TAP, IFF_NO_PI = 0x400454ca, 2, 0x1000
TARGET = '02:ff:00:00:00:01'


def text_of(number, bits):
    packed = bytes(bytearray(number >> shift & 255 for shift in range(bits - 8, -1, -8)))
    return socket.inet_ntop(socket.AF_INET if bits == 32 else socket.AF_INET6, packed)


def chosen(chance, *weights):
    """One of (what, how often) pairs."""
    place = chance.random() * sum(weight for _, weight in weights)
    for what, weight in weights:
        place -= weight
        if place < 0:
            return what
    return weights[-1][0]


def ports_text(ports):
    return '%d' % ports[0] if ports[0] == ports[1] else '%d-%d' % ports


class Rule(object):
    """What packets it is for: prefixes (number, length) and ranges of ports (low, high), None for any."""

    def __init__(self, chance, networks):
        self.bits = chosen(chance, (32, 80), (128, 20))
        self.protocol = chosen(chance, (TCP, 60), (UDP, 25), (ICMP if self.bits == 32 else ICMP6, 5), (None, 10))
        lengths = (8, 4), (16, 12), (20, 5), (23, 3), (24, 28), (27, 6), (28, 8), (30, 4), (32, 30)
        self.source, self.target = [
            self.prefix(chance, networks[self.bits], chosen(chance, (0, any_weight), *lengths))
            for any_weight in (60, 12)]
        has_ports = self.protocol in (TCP, UDP)
        self.source_ports = self.ports(chance, 85) if has_ports else None
        self.target_ports = self.ports(chance, 10) if has_ports else None
        self.drops = chance.random() < 0.45

    def prefix(self, chance, networks, length):
        if length == 0:
            return None
        # Longer prefixes mostly lie within those of other rules, as they do in real lists.
        if self.bits == 128:
            length = {8: 16, 16: 32, 20: 40, 23: 44, 24: 48, 27: 56, 28: 60, 30: 64}.get(length, 128)
        number = chance.choice(networks) ^ chance.getrandbits(self.bits // 4)
        return number >> self.bits - length << self.bits - length, length

    @staticmethod
    def ports(chance, any_weight):
        kind = chosen(chance, ('any', any_weight), ('one', 60), ('high', 8), ('low', 2), ('some', 15))
        if kind == 'some':
            low = chance.choice(WELL_KNOWN + [6000, 32768, chance.randrange(60000)])
            return low, low + chance.choice([1, 5, 10, 63, 1000, 5000])
        port = chance.choice(WELL_KNOWN)
        return {'any': None, 'one': (port, port), 'high': (1024, 65535), 'low': (0, 1023)}[kind]

    def match(self):
        """As quorel has it."""
        found = {} if self.source or self.target else {'IpType': 'Ipv4Any' if self.bits == 32 else 'Ipv6'}
        version = '' if self.bits == 32 else '6'
        for name, prefix in (('SrcIp', self.source), ('DstIp', self.target)):
            if prefix:
                found[name + version] = '%s/%d' % (text_of(prefix[0], self.bits), prefix[1])
        if self.protocol is not None:
            found['IpProtocol'] = self.protocol
        for name, ports in (('L4SrcPort', self.source_ports), ('L4DstPort', self.target_ports)):
            if ports:
                found[name] = ports_text(ports)
        return found

    def line(self):
        """As nft has it."""
        family = 'ip' if self.bits == 32 else 'ip6'
        words = ['meta protocol ' + family]
        for name, prefix in (('saddr', self.source), ('daddr', self.target)):
            if prefix:
                words.append('%s %s %s/%d' % (family, name, text_of(prefix[0], self.bits), prefix[1]))
        if self.protocol is not None:
            words.append('meta l4proto ' + NAMES[self.protocol])
        for name, ports in (('sport', self.source_ports), ('dport', self.target_ports)):
            if ports:
                words.append('%s %s %s' % (NAMES[self.protocol], name, ports_text(ports)))
        return ' '.join(words) + ' counter ' + ('drop' if self.drops else 'accept')


def frame_for(chance, rule, number):
    """A packet that the rule is for, or nearly; its source address says which it is."""
    def address(prefix):
        value, length = prefix or (chance.getrandbits(rule.bits - 8) | 0x20 << rule.bits - 8, 8)
        return value | chance.getrandbits(rule.bits) & (1 << rule.bits - length) - 1

    def port(ports):
        low, high = ports or (0, 65535)
        return min(max(chance.choice([low, high, chance.randint(low, high), low - 1, high + 1]), 0), 65535)

    protocol = rule.protocol or chance.choice([TCP, UDP])
    if chance.random() < 0.1:
        protocol = chance.choice([TCP, UDP, 47])
    payload = struct.pack('>HH', port(rule.source_ports), port(rule.target_ports))
    payload += {TCP: struct.pack('>IIBBHHH', 1, 2, 0x50, 2, 8192, 0, 0),
                UDP: struct.pack('>HH', 8, 0)}.get(protocol, b'\0' * 8)
    addresses = b''.join(socket.inet_pton(socket.AF_INET if rule.bits == 32 else socket.AF_INET6,
                                          text_of(address(prefix), rule.bits)) for prefix in (rule.source, rule.target))
    if rule.bits == 32:
        head = struct.pack('>BBHHHBBH', 0x45, 0, 20 + len(payload), 0, 0, 64, protocol, 0)
        kind = 0x0800
    else:
        head = struct.pack('>IHBB', 6 << 28, len(payload), protocol, 64)
        kind = 0x86dd
    source = '02:00:%02x:%02x:%02x:%02x' % tuple(bytearray(struct.pack('>I', number)))
    return sim.ethernet(TARGET, source, head + addresses + payload, kind=kind)


class Tap(object):
    """An interface of the namespace: what is written arrives at it, what it sends can be read."""

    def __init__(self, name):
        self.file = os.open('/dev/net/tun', os.O_RDWR | os.O_NONBLOCK)
        fcntl.ioctl(self.file, TUNSETIFF, struct.pack('16sH22x', name, IFF_TAP | IFF_NO_PI))
        with open('/proc/sys/net/ipv6/conf/%s/disable_ipv6' % name, 'w') as setting:
            setting.write('1')
        subprocess.check_call(['ip', 'link', 'set', name, 'up'])

    def waiting(self):
        frames = []
        try:
            while True:
                frames.append(os.read(self.file, 2000))
        except OSError:
            return frames


class Filter(object):
    """Linux's: packets from one interface that may pass leave through another."""

    def __init__(self, rules):
        self.inside, self.outside = Tap('in0'), Tap('out0')
        text = '\n'.join(
            ['table netdev compared {', 'chain rules {', 'type filter hook ingress device in0 priority 0;']
            + [rule.line() for rule in rules]
            + ['}', 'chain passed {', 'type filter hook ingress device in0 priority 10;', 'fwd to "out0"', '}', '}', ''])
        process = subprocess.Popen(['nft', '-f', '-'], stdin=subprocess.PIPE, stderr=subprocess.PIPE)
        errors = process.communicate(text)[1]
        if process.returncode:
            raise ValueError('nft: ' + errors)

    def passes(self, frame):
        os.write(self.inside.file, frame)
        return frame in self.outside.waiting()

    def counts(self):
        listed = json.loads(subprocess.check_output(['nft', '-j', 'list', 'chain', 'netdev', 'compared', 'rules']))
        return [part['counter']['packets'] for row in listed['nftables'] if 'rule' in row
                for part in row['rule']['expr'] if 'counter' in part]


class Inside(unittest.TestCase):
    def test_a_list_of_a_thousand_rules(self):
        chance = random.Random(20)
        firsts = chance.sample(range(1, 200), 12)
        networks = dict((bits, [chance.getrandbits(bits - 8) | first << bits - 8 for first in firsts])
                        for bits in (32, 128))
        rules = [Rule(chance, networks) for _ in range(RULES)]
        linux = Filter(rules)
        switch = sim.Switch()
        switch.fresh()
        checked(q.bcm_field_init, 0)
        acl = ACL(0)
        made = [acl.add(RULES - place, rule.match(), ['Drop'] if rule.drops else [], count=True)
                for place, rule in enumerate(rules)]
        fates = {}
        for number in range(PACKETS):
            rule = chance.choice(rules)
            frame = frame_for(chance, rule, number)
            passes = linux.passes(frame)
            fates[passes] = fates.get(passes, 0) + 1
            if bool(switch.send(1, frame)) != passes:
                self.fail('Linux %s packet %d: %s\n%s' % ('passes' if passes else 'drops', number, frame.encode('hex'),
                                                          switch.trace(1, frame)))
        counts = [rule.packets for rule in made]
        wrong = [(rule.line(), ours, theirs) for rule, ours, theirs in zip(rules, counts, linux.counts())
                 if ours != theirs]
        self.assertEqual(wrong, [])
        self.assertGreater(min(fates[True], fates[False]), PACKETS // 10)
        self.assertGreater(sum(count > 0 for count in counts), RULES // 5)
        acl.destroy()


def refusal():
    """Why it cannot be tried here; None if it can."""
    why = lab.refusal()
    if why:
        return 'namespaces cannot be made here: ' + why
    table = 'table netdev t {\nchain c { type filter hook ingress device lo priority 0;\nfwd to "lo"\n}\n}\n'
    try:
        process = lab.inside(['nft', '-f', '-'], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT)
        output = process.communicate(table)[0]
    except OSError as error:
        return str(error)
    return None if process.returncode == 0 else 'nft refuses: ' + output.strip()


if 'QUOREL_LAB' not in os.environ:
    WHY_NOT = refusal()

    class AgainstLinux(unittest.TestCase):
        @unittest.skipIf(WHY_NOT, WHY_NOT)
        def test_a_list_of_a_thousand_rules(self):
            process = lab.inside([sys.executable, '-m', 'unittest', 'test_field_nftables.Inside'],
                                 cwd=os.path.dirname(os.path.abspath(__file__)), stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT)
            output = process.communicate()[0]
            self.assertEqual(process.returncode, 0, output)

    del Inside


if __name__ == '__main__':
    unittest.main()
