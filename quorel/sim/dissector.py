"""What a frame says, field by field, and how two frames differ.

Fields are called as display filters of packet analysers call them: eth.dst, vlan.id, ip.ttl.
"""
import binascii
import collections
import difflib
import struct

# Name and value as text, and the octets start..end - 1 of the frame that it stands in.
Field = collections.namedtuple('Field', 'name value start end')

ETHERNET_MIN = 0x600  # smaller numbers are lengths
TAGS = {0x8100: 'vlan', 0x88a8: 'ieee8021ad', 0x9100: 'ieee8021ad'}
ARP, IP4, IP6, MPLS, MPLS_MULTICAST = 0x806, 0x800, 0x86dd, 0x8847, 0x8848
ICMP, TCP, UDP, ICMP6 = 1, 6, 17, 58
# Headers of IPv6 that only say where the next one is.
HOP_BY_HOP, ROUTING, FRAGMENT, DESTINATION = 0, 43, 44, 60


def mac_text(octets):
    """Six octets, a str or any buffer, as a MAC address."""
    return ':'.join('%02x' % octet for octet in bytearray(octets))


def ip4_text(octets):
    """Four octets as an IPv4 address."""
    return '.'.join('%d' % octet for octet in bytearray(octets))


def ip6_text(octets):
    """Sixteen octets as an IPv6 address: the longest run of two or more zero words, the first of equal ones, is "::"."""
    words = struct.unpack('>8H', octets)
    best = (0, 8)
    for start in range(8):
        end = start
        while end < 8 and words[end] == 0:
            end += 1
        if end - start > best[0]:
            best = (end - start, start)
    length, start = best
    if length < 2:
        return ':'.join('%x' % word for word in words)
    return '%s::%s' % (':'.join('%x' % word for word in words[:start]),
                       ':'.join('%x' % word for word in words[start + length:]))


def _decimal(number):
    return '%d' % number


def _hex(digits):
    return lambda number: '0x%0*x' % (digits, number)


class _Reader(object):
    """Takes fields off the front of a frame; what is not there any more ends the dissection."""

    def __init__(self, frame):
        self.frame, self.place, self.end, self.fields = bytes(frame), 0, len(frame), []

    def octets(self, count):
        if self.place + count > self.end:
            raise EOFError
        self.place += count
        return self.frame[self.place - count:self.place]

    def add(self, name, value, count):
        """A field in the last `count` octets that were taken."""
        self.fields.append(Field(name, value, self.place - count, self.place))

    def text(self, name, count, as_text):
        self.add(name, as_text(self.octets(count)), count)

    def number(self, name, count, as_text=_decimal):
        value = int(binascii.hexlify(self.octets(count)), 16)
        self.add(name, as_text(value), count)
        return value

    def bits(self, count, *parts):
        """Fields (name, width[, as_text]) from the top bit of `count` octets on; names may be None. Their values."""
        whole, left, values = int(binascii.hexlify(self.octets(count)), 16), 8 * count, []
        for part in parts:
            left -= part[1]
            values.append(whole >> left & (1 << part[1]) - 1)
            if part[0]:
                self.add(part[0], (part[2:] or (_decimal,))[0](values[-1]), count)
        return values

    def limit(self, count):
        """Nothing that follows is longer than that: the rest is padding."""
        self.end = min(self.end, self.place + count)


def dissect(frame):
    """The fields of a frame, from its destination address on and without checksum: a list of Field.

    What no header tells is 'data', what follows the last length that a header gives 'eth.padding', and where
    a frame ends within a header the last field is 'truncated'.
    """
    reader = _Reader(frame)
    try:
        _ethernet(reader)
    except EOFError:
        left = reader.end - reader.place
        reader.place = reader.end
        reader.add('truncated', '%d octets: %s' % (left, _dump(reader.frame[reader.end - left:reader.end])), left)
    if reader.place < reader.end:
        reader.text('data', reader.end - reader.place, _dump)
    if reader.end < len(reader.frame):
        reader.end = len(reader.frame)
        reader.text('eth.padding', reader.end - reader.place, _dump)
    return reader.fields


def _dump(octets):
    return binascii.hexlify(octets).decode('ascii')


def _ethernet(reader):
    reader.text('eth.dst', 6, mac_text)
    reader.text('eth.src', 6, mac_text)
    kind = reader.number('eth.type', 2, _hex(4))
    while kind in TAGS:
        tag = TAGS[kind]
        reader.bits(2, (tag + '.priority', 3), (tag + '.dei', 1), (tag + '.id', 12))
        kind = reader.number(tag + '.etype', 2, _hex(4))
    if kind < ETHERNET_MIN:
        reader.limit(kind)
    else:
        _payload(reader, kind)


def _payload(reader, kind):
    layers = {ARP: _arp, IP4: _ip4, IP6: _ip6, MPLS: _mpls, MPLS_MULTICAST: _mpls}
    if kind in layers:
        layers[kind](reader)


def _mpls(reader):
    is_last = 0
    while not is_last:
        is_last = reader.bits(4, ('mpls.label', 20), ('mpls.exp', 3), ('mpls.bottom', 1), ('mpls.ttl', 8))[2]
    # A label does not say what is below; the first four bits of IP do.
    if reader.place < reader.end:
        version = bytearray(reader.frame)[reader.place] >> 4
        _payload(reader, {4: IP4, 6: IP6}.get(version))


def _arp(reader):
    hardware = reader.number('arp.hw.type', 2)
    protocol = reader.number('arp.proto.type', 2, _hex(4))
    hardware_size = reader.number('arp.hw.size', 1)
    protocol_size = reader.number('arp.proto.size', 1)
    reader.number('arp.opcode', 2)
    if (hardware, protocol, hardware_size, protocol_size) == (1, IP4, 6, 4):
        for side in ('src', 'dst'):
            reader.text('arp.%s.hw_mac' % side, 6, mac_text)
            reader.text('arp.%s.proto_ipv4' % side, 4, ip4_text)
        reader.limit(0)


def _ip4(reader):
    start = reader.place
    header_words = reader.bits(1, ('ip.version', 4), (None, 4))[1]
    reader.add('ip.hdr_len', '%d' % (4 * header_words), 1)
    reader.bits(1, ('ip.dsfield.dscp', 6), ('ip.dsfield.ecn', 2))
    length = reader.number('ip.len', 2)
    reader.number('ip.id', 2, _hex(4))
    offset = reader.bits(2, (None, 1), ('ip.flags.df', 1), ('ip.flags.mf', 1), ('ip.frag_offset', 13))[3]
    reader.number('ip.ttl', 1)
    protocol = reader.number('ip.proto', 1)
    reader.number('ip.checksum', 2, _hex(4))
    reader.text('ip.src', 4, ip4_text)
    reader.text('ip.dst', 4, ip4_text)
    reader.limit(max(length - (reader.place - start), 0))
    options = 4 * header_words - (reader.place - start)
    if options > 0:
        reader.text('ip.options', options, _dump)
    if offset == 0:
        _transport(reader, protocol)


def _ip6(reader):
    reader.bits(4, ('ipv6.version', 4), ('ipv6.tclass', 8, _hex(2)), ('ipv6.flow', 20, _hex(5)))
    length = reader.number('ipv6.plen', 2)
    following = reader.number('ipv6.nxt', 1)
    reader.number('ipv6.hlim', 1)
    reader.text('ipv6.src', 16, ip6_text)
    reader.text('ipv6.dst', 16, ip6_text)
    reader.limit(length)
    while following in (HOP_BY_HOP, ROUTING, DESTINATION):
        following, words = bytearray(reader.octets(2))
        reader.octets(8 * words + 6)
        reader.add('ipv6.ext', '%d octets' % (8 * words + 8), 8 * words + 8)
    if following != FRAGMENT:
        _transport(reader, following)


def _transport(reader, protocol):
    if protocol == UDP:
        reader.number('udp.srcport', 2)
        reader.number('udp.dstport', 2)
        reader.number('udp.length', 2)
        reader.number('udp.checksum', 2, _hex(4))
    elif protocol == TCP:
        _tcp(reader)
    elif protocol in (ICMP, ICMP6):
        name = 'icmp' if protocol == ICMP else 'icmpv6'
        kind = reader.number(name + '.type', 1)
        reader.number(name + '.code', 1)
        reader.number(name + '.checksum', 2, _hex(4))
        if kind in ((0, 8) if protocol == ICMP else (128, 129)):
            echo = name if protocol == ICMP else 'icmpv6.echo'
            reader.number(echo + ('.ident' if protocol == ICMP else '.identifier'), 2)
            reader.number(echo + ('.seq' if protocol == ICMP else '.sequence_number'), 2)


def _tcp(reader):
    start = reader.place
    reader.number('tcp.srcport', 2)
    reader.number('tcp.dstport', 2)
    reader.number('tcp.seq_raw', 4)
    reader.number('tcp.ack_raw', 4)
    words = reader.bits(2, (None, 4), ('tcp.flags', 12, _hex(4)))[0]
    reader.number('tcp.window_size_value', 2)
    reader.number('tcp.checksum', 2, _hex(4))
    reader.number('tcp.urgent_pointer', 2)
    options = 4 * words - (reader.place - start)
    if options > 0:
        reader.text('tcp.options', options, _dump)


def lines(frame):
    """The fields as text, a line each."""
    return ['%-24s %s' % (field.name, field.value) for field in dissect(frame)]


def difference(expected, found):
    """Both frames in one list of lines: '-' stands before what was expected, '+' before what was found instead."""
    marked = []
    old, new = lines(expected), lines(found)
    matcher = difflib.SequenceMatcher(None, [_name(line) for line in old], [_name(line) for line in new], False)
    for _, old_from, old_to, new_from, new_to in matcher.get_opcodes():
        for i in range(max(old_to - old_from, new_to - new_from)):
            before = old[old_from + i] if old_from + i < old_to else None
            after = new[new_from + i] if new_from + i < new_to else None
            if before == after:
                marked.append('  ' + before)
                continue
            marked += ['- ' + before] if before is not None else []
            marked += ['+ ' + after] if after is not None else []
    return marked


def _name(line):
    return line.split(' ', 1)[0]
