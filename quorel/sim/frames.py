"""Frames to send: as simple as a test needs them. Any other program that builds packets does as well."""
import binascii
import struct

SHORTEST = 60  # with the checksum that the wire adds, 64


def _mac(text):
    octets = binascii.unhexlify(text.replace(':', ''))
    if len(octets) != 6:
        raise ValueError("'%s' is no MAC address" % text)
    return octets


def ethernet(to, source, payload=b'', kind=0x800, vlan=None, priority=0, tpid=0x8100):
    """A frame from its destination address on, without checksum, padded to the shortest that there may be.

    to, source: '02:00:00:00:00:01'. kind: the Ethernet type. vlan: id of its tag, None for none.
    """
    tag = b'' if vlan is None else struct.pack('>HH', tpid, priority << 13 | vlan)
    return (_mac(to) + _mac(source) + tag + struct.pack('>H', kind) + payload).ljust(SHORTEST, b'\0')


def tagged(frame, vlan, priority=0, tpid=0x8100):
    """The frame with a tag in front of its type."""
    return frame[:12] + struct.pack('>HH', tpid, priority << 13 | vlan) + frame[12:]


def _checksum(octets):
    words = struct.unpack('>%dH' % (len(octets) // 2), octets)
    total = sum(words)
    while total >> 16:
        total = (total & 0xffff) + (total >> 16)
    return ~total & 0xffff


def _ip4(text):
    numbers = [int(part) for part in text.split('.')]
    if len(numbers) != 4 or not all(0 <= number < 256 for number in numbers):
        raise ValueError("'%s' is no IPv4 address" % text)
    return struct.pack('4B', *numbers)


def udp4(source, to, source_port=1024, to_port=1024, data=b'', ttl=64, dscp=0):
    """An IPv4 packet with a UDP datagram, the payload of a frame. The datagram has no checksum."""
    head = struct.pack('>BBHHHBBH', 0x45, dscp << 2, 28 + len(data), 0, 0, ttl, 17, 0) + _ip4(source) + _ip4(to)
    head = head[:10] + struct.pack('>H', _checksum(head)) + head[12:]
    return head + struct.pack('>HHHH', source_port, to_port, 8 + len(data), 0) + data
