"""A router as slow and as plain as can be, which says what the switch has to do with each packet.

It knows nothing of how the switch is made: the longest prefix is looked for among all, numbers are Python's.
"""
import collections
import socket
import struct

IP4, IP6 = 0x800, 0x86dd
BITS = {IP4: 32, IP6: 128}

Port = collections.namedtuple('Port', 'number vlan tagged')
Interface = collections.namedtuple('Interface', 'vlan mac vrf mtu ttl check')  # check: 0, 1 loose, 2 strict
# kind: 'forward', 'cpu', 'discard' or 'unresolved'
Hop = collections.namedtuple('Hop', 'kind vlan mac port')
# hops: one or several, which are equal; none: unresolved
Route = collections.namedtuple('Route', 'vrf kind network length hops')
# source 0: all; vid 0: any; members: pairs of port and VLAN; expected_in: a VLAN, or 0; masks: of source and group, None
# for whole addresses; of those with masks the highest priority counts, then the first.
Group = collections.namedtuple('Group', 'vrf kind vid source group members expected_in masks priority')
Group.__new__.__defaults__ = None, 0


def octets(mac):
    return bytes(bytearray(int(part, 16) for part in mac.split(':')))


def number(data):
    """The number in the bytes."""
    value = 0
    for octet in bytearray(data):
        value = value << 8 | octet
    return value


def address_octets(kind, address):
    return bytes(bytearray(address >> shift & 255 for shift in range(BITS[kind] - 8, -8, -8)))


def text(kind, address):
    return socket.inet_ntop(socket.AF_INET if kind == IP4 else socket.AF_INET6, address_octets(kind, address))


def checksum(header):
    total = sum(struct.unpack('>%dH' % (len(header) // 2), header))
    while total > 0xffff:
        total = (total & 0xffff) + (total >> 16)
    return 0xffff - total


def ip4_header(source, to, length, ttl, protocol=17, options=b''):
    head = struct.pack('>BBHHHBBH', 0x45 + len(options) // 4, 0, 20 + len(options) + length, 7, 0, ttl, protocol, 0)
    head += address_octets(IP4, source) + address_octets(IP4, to) + options
    return head[:10] + struct.pack('>H', checksum(head)) + head[12:]


def ip6_header(source, to, length, hops, protocol=17):
    return struct.pack('>IHBB', 6 << 28, length, protocol, hops) + address_octets(IP6, source) + address_octets(IP6, to)


class Frame(object):
    """The parts of one."""

    def __init__(self, to, source, kind, packet, vlan=None, priority=0):
        self.to, self.source, self.kind, self.packet = to, source, kind, packet
        self.vlan, self.priority = vlan, priority

    def bytes(self):
        tag = b'' if self.vlan is None else struct.pack('>HH', 0x8100, self.priority << 13 | self.vlan)
        return (octets(self.to) + octets(self.source) + tag + struct.pack('>H', self.kind) + self.packet).ljust(60, b'\0')

    def but(self, **changes):
        return Frame(**dict(dict(to=self.to, source=self.source, kind=self.kind, packet=self.packet, vlan=self.vlan,
                                 priority=self.priority), **changes))


class Drop(Exception):
    pass


class Router(object):
    def __init__(self):
        self.ports, self.interfaces, self.hosts, self.routes, self.groups = {}, {}, {}, [], []

    def way_to(self, vrf, kind, address):
        """The hops to an address, and the length of the prefix; None."""
        if (vrf, kind, address) in self.hosts:
            return self.hosts[vrf, kind, address], BITS[kind]
        best = None
        for route in self.routes:
            shift = BITS[kind] - route.length
            if ((route.vrf, route.kind) == (vrf, kind) and address >> shift == route.network >> shift
                    and (best is None or route.length > best.length)):
                best = route
        return best and (best.hops, best.length)

    def outcomes(self, port, frame):
        """Of a frame to the router's address that arrives at a port: a list of what may become of it, each a pair of
        port and frame; or the reason of its drop.
        """
        vlan = frame.vlan or self.ports[port].vlan
        try:
            return self._routed(self.interfaces[vlan], vlan, frame)
        except Drop as drop:
            return str(drop)

    def copies(self, port, frame):
        """Of a multicast that arrives at a port: all of its copies, as pairs of port and frame."""
        vlan = frame.vlan or self.ports[port].vlan
        sent = [(at.number, frame.but(vlan=vlan if at.tagged else None))
                for at in self.ports.values() if at.vlan == vlan and at.number != port]
        places = (12, 16, 20, 8) if frame.kind == IP4 else (8, 24, 40, 7)
        source, group = [number(frame.packet[place:end]) for place, end in zip(places, places[1:3])]
        ttl, length = number(frame.packet[places[3]:places[3] + 1]), len(frame.packet)
        on_link = group >> 8 == 0xe00000 if frame.kind == IP4 else group >> 112 == 0xff02
        ranked = [entry for wanted in (source, 0) for vid in (vlan, 0) for entry in self.groups
                  if entry.masks is None and (entry.vrf, entry.kind, entry.source, entry.group, entry.vid)
                  == (self.interfaces[vlan].vrf, frame.kind, wanted, group, vid)]
        ranked += sorted([entry for entry in self.groups
                          if entry.masks and (entry.vrf, entry.kind) == (self.interfaces[vlan].vrf, frame.kind)
                          and entry.vid in (0, vlan) and not (entry.source ^ source) & entry.masks[0]
                          and not (entry.group ^ group) & entry.masks[1]], key=lambda entry: -entry.priority)
        if ranked and ttl > 1 and not on_link and ranked[0].expected_in in (0, vlan):
            for at, out in ranked[0].members:
                leaving = self.interfaces[out]
                if out != vlan and ttl > leaving.ttl and not (leaving.mtu and length > leaving.mtu):
                    packet = self._one_hop_less(frame.kind, frame.packet)
                    sent.append((at, frame.but(source=leaving.mac, packet=packet,
                                               vlan=out if self.ports[at].tagged else None)))
        return [(at, copy.bytes()) for at, copy in sent]

    def _routed(self, interface, vlan, frame):
        data = frame.bytes()
        for_cpu = [(0, data if frame.vlan else data[:12] + struct.pack('>HH', 0x8100, vlan) + data[12:])]
        if frame.kind not in (IP4, IP6):
            return for_cpu
        packet = frame.packet.ljust(60 - (14 if frame.vlan is None else 18), b'\0')
        source, to, ttl, length = self._parse(frame.kind, packet)
        if frame.kind == IP6 and to >> 118 == 0x3fa:
            return for_cpu
        self._check_source(interface, vlan, frame.kind, source)
        way = self.way_to(interface.vrf, frame.kind, to)
        if way is None:
            raise Drop('no_route')
        hops = way[0]
        if not hops or hops[0].kind == 'unresolved':
            raise Drop('unresolved')
        if hops[0].kind == 'discard':
            raise Drop('null_route')
        if hops[0].kind == 'cpu':
            return for_cpu
        allowed, reasons = [], set()
        for hop in hops:
            leaving = self.interfaces[hop.vlan]
            if ttl <= 1 or ttl <= leaving.ttl:
                reasons.add('ttl')
            elif leaving.mtu and length > leaving.mtu:
                reasons.add('mtu')
            else:
                tagged = self.ports[hop.port].tagged
                sent = frame.but(to=hop.mac, source=leaving.mac, packet=self._one_hop_less(frame.kind, packet),
                                 vlan=hop.vlan if tagged else None).bytes()
                allowed.append((hop.port, self._as_long(frame, sent, tagged)))
        if not allowed:
            assert len(reasons) == 1
            raise Drop(reasons.pop())
        assert not reasons, 'paths of a group that differ in what they let through'
        return allowed

    @staticmethod
    def _as_long(frame, sent, tagged):
        """What was filled up stays so; a tag is as long as it is."""
        size = len(frame.bytes()) + (0 if frame.vlan is None else -4) + (4 if tagged else 0)
        return sent[:max(size, 60)].ljust(max(size, 60), b'\0')

    @staticmethod
    def _parse(kind, packet):
        """Source, destination, TTL and length."""
        bytes_ = bytearray(packet)
        if kind == IP4:
            header = (bytes_[0] & 15) * 4
            length = number(packet[2:4])
            sound = (bytes_[0] >> 4 == 4 and 20 <= header <= length <= len(packet)
                     and checksum(bytes(packet[:header])) == 0)
            source, to, ttl = number(packet[12:16]), number(packet[16:20]), bytes_[8]
            group = to >> 28 == 14
        else:
            length = 40 + number(packet[4:6])
            sound = bytes_[0] >> 4 == 6 and length <= len(packet)
            source, to, ttl = number(packet[8:24]), number(packet[24:40]), bytes_[7]
            group = to >> 120 == 255
        if not sound or group:
            raise Drop('ip_header')
        return source, to, ttl, length

    def _check_source(self, interface, vlan, kind, source):
        if not interface.check:
            return
        way = self.way_to(interface.vrf, kind, source)
        if way is None or way[1] == 0:
            raise Drop('ip_source')
        if interface.check == 2 and not any(hop.vlan == vlan for hop in way[0]):
            raise Drop('ip_source')

    @staticmethod
    def _one_hop_less(kind, packet):
        if kind == IP6:
            return packet[:7] + bytes(bytearray([ord(packet[7:8]) - 1])) + packet[8:]
        size = (ord(packet[:1]) & 15) * 4
        head = packet[:8] + bytes(bytearray([ord(packet[8:9]) - 1])) + packet[9:10] + b'\0\0' + packet[12:size]
        return head[:10] + struct.pack('>H', checksum(head)) + packet[12:]


def random_prefixes(chance, kind, count):
    """Networks within each other and beside each other, of all lengths; pairs of network and length."""
    found = {(0, 0)}
    while len(found) < count:
        if chance.random() < 0.6:
            network, length = chance.choice(sorted(found))
            more = min(BITS[kind], length + chance.choice([1, 1, 2, 3, 6, 8, 13]))
        else:
            network, more = chance.getrandbits(BITS[kind]), chance.randrange(BITS[kind] + 1)
            length = 0
        shift = BITS[kind] - more
        network |= chance.getrandbits(BITS[kind] - length) if length < BITS[kind] else 0
        found.add((network >> shift << shift, more))
    return sorted(found if chance.random() < 0.5 else found - {(0, 0)})
