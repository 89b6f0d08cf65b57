"""The dissector, judged by tshark."""
import binascii
import json
import os
import shutil
import struct
import subprocess
import tempfile
import unittest

import _quorel_sim  # counted references are those of its module too
from quorel import sim

A, B = '02:00:5e:00:00:01', '02:00:5e:00:00:02'
TSHARK = [path for path in ('/usr/bin/tshark', '/usr/local/bin/tshark') if os.path.exists(path)]


def octets(text):
    return binascii.unhexlify(text.replace(' ', ''))


def ip6(following, payload, to='20010db8000000000000000000000002'):
    return (struct.pack('>IHBB', 0x6a012345, len(payload), following, 63)
            + octets('20010db8000000010000000000000001') + octets(to) + payload)


TCP = octets('1f90 0050 00000001 00000002 5 012 7210 abcd 0000'.replace('5 012', '5012')) + b'GET'
IP4_TCP = octets('46b8 002f beef 4000 3f06 0000 0a000001 0a000002 01010100') + TCP
FRAMES = [
    sim.ethernet(B, A, sim.udp4('10.0.0.1', '192.168.255.254', 4000, 5001, b'data', ttl=3, dscp=46)),
    sim.ethernet(B, A, IP4_TCP),
    sim.ethernet('ff:ff:ff:ff:ff:ff', A, octets('0001 0800 06 04 0001 02005e000001 0a000001 000000000000 0a000002'), 0x806),
    sim.ethernet(B, A, sim.udp4('10.0.0.1', '10.0.0.2'), vlan=4094, priority=6),
    sim.tagged(sim.ethernet(B, A, sim.udp4('10.0.0.1', '10.0.0.2'), vlan=5), 1001, 3, 0x88a8),
    sim.ethernet(B, A, octets('0006407f 000071fe') + sim.udp4('10.0.0.1', '10.0.0.2'), 0x8847),
    sim.ethernet(B, A, octets('4500001c00010000400100000a0000010a000002 0800f7fe00070001')),
    sim.ethernet(B, A, ip6(17, octets('1388 1389 000c 1234') + b'ping'), 0x86dd),
    sim.ethernet(B, A, ip6(6, TCP, 'fe800000000000000000000000000000'), 0x86dd),
    sim.ethernet(B, A, ip6(58, octets('80001234 0001 0002'), 'ff020000000000000000000000000001'), 0x86dd),
    sim.ethernet(B, A, ip6(0, octets('1100 0104 00000000') + octets('1388 1389 0008 1234'),
                           '00010000000000010000000000010000'), 0x86dd),
]
# What tshark shows of them otherwise than as a field of its own.
OWN = ('data', 'eth.padding', 'truncated', 'ip.options', 'tcp.options', 'ipv6.ext',
       'ieee8021ad.etype')


def values(found, name):
    """All values of a field in tshark's JSON, at whatever depth."""
    if isinstance(found, list):
        return [value for item in found for value in values(item, name)]
    if not isinstance(found, dict):
        return []
    told = []
    for key, value in found.items():
        if key == name and not isinstance(value, dict):
            told += value if isinstance(value, list) else [value]
        else:
            told += values(value, name)
    return told


def number(text):
    """A number, however it is written; other text as it is."""
    text = {'True': '1', 'False': '0'}.get(str(text), str(text))
    try:
        return int(text, 0)
    except ValueError:
        return text


class Dissector(unittest.TestCase):
    @unittest.skipUnless(TSHARK, 'tshark is not installed')
    def test_fields_are_as_tshark_has_them(self):
        directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, directory)
        capture = os.path.join(directory, 'frames.pcap')
        with open(capture, 'wb') as file:
            file.write(struct.pack('<IHHiIII', 0xa1b2c3d4, 2, 4, 0, 0, 65535, 1))
            for frame in FRAMES:
                file.write(struct.pack('<IIII', 0, 0, len(frame), len(frame)) + frame)
        environment = dict((name, value) for name, value in os.environ.items() if name != 'LD_PRELOAD')
        environment['HOME'] = directory
        with open(os.devnull, 'w') as null:
            told = json.loads(subprocess.check_output(TSHARK + ['-r', capture, '-T', 'json', '--no-duplicate-keys'],
                                                      env=environment, stderr=null))
        self.assertEqual(len(told), len(FRAMES))
        compared = 0
        for frame, packet in zip(FRAMES, told):
            for field in sim.dissect(frame):
                if field.name not in OWN:
                    self.assertIn(number(field.value), [number(value) for value in values(packet, field.name)],
                                  (field, sim.dissect(frame)))
                    compared += 1
        self.assertGreater(compared, 200)

    def test_fields_stand_where_they_say(self):
        for frame in FRAMES:
            fields = sim.dissect(frame)
            covered = set(place for field in fields for place in range(field.start, field.end))
            self.assertEqual(covered, set(range(len(frame))))
            self.assertEqual(frame[fields[0].start:fields[0].end], octets(fields[0].value.replace(':', '')))

    def test_every_truncation_is_dissected(self):
        for frame in FRAMES:
            for size in range(len(frame) + 1):
                fields = sim.dissect(frame[:size])
                self.assertLessEqual(max([0] + [field.end for field in fields]), size)
        self.assertEqual([field.name for field in sim.dissect(FRAMES[0][:9])], ['eth.dst', 'truncated'])
        self.assertEqual(sim.dissect(b''), [sim.Field('truncated', '0 octets: ', 0, 0)])

    def test_differences_are_marked(self):
        marked = sim.difference(FRAMES[0], sim.tagged(FRAMES[0], 5))
        self.assertEqual([line for line in marked if line[0] != ' '],
                         ['- eth.type                 0x0800', '+ eth.type                 0x8100',
                          '+ vlan.priority            0', '+ vlan.dei                 0',
                          '+ vlan.id                  5', '+ vlan.etype               0x0800'])


if __name__ == '__main__':
    unittest.main()
