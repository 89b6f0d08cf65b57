"""Packets in files: what is captured reads back, with others' programs too, and what is no capture is refused."""
import ctypes
import os
import resource
import shutil
import struct
import subprocess
import tempfile
import unittest

import QuorelApiNew as q
from packets import A, ALL, ARP, B, frame, PacketTest, VLAN
from recording import library

RECEIVED, SENT = 1, 2
PCAPNG, PCAP = 0, 1
library.sim_capture_problem.restype = ctypes.c_char_p
library.sim_clock_now.restype = ctypes.c_uint64


def pcap(packets, magic=0xa1b2c3d4, order='<', medium=1):
    """A file's text; packets are (seconds, parts, bytes)."""
    text = struct.pack(order + 'IHHiIII', magic, 2, 4, 0, 0, 65535, medium)
    for seconds, parts, data in packets:
        text += struct.pack(order + 'IIII', seconds, parts, len(data), len(data)) + data
    return text


def block(kind, body):
    body += '\0' * (-len(body) % 4)
    return struct.pack('>II', kind, len(body) + 12) + body + struct.pack('>I', len(body) + 12)


class Captures(PacketTest):
    def setUp(self):
        PacketTest.setUp(self)
        self.directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.directory)

    def path(self, name='file'):
        return os.path.join(self.directory, name)

    def open(self, form=PCAPNG, ports=(1, 2), directions=RECEIVED | SENT, path=None):
        number = ctypes.c_int()
        self.done(library.sim_capture_open(path or self.path(), form, ctypes.byref(number)))
        for port in ports:
            self.done(library.sim_capture_port(number, 0, port, directions))
        return number.value

    def write(self, text):
        with open(self.path(), 'wb') as file:
            file.write(text)
        return self.path()

    def replay(self, port=1, timed=0):
        """(replayed, refused), or the status"""
        replayed, refused = ctypes.c_int(-1), ctypes.c_int(-1)
        status = library.sim_replay(self.path(), 0, port, timed, ctypes.byref(replayed), ctypes.byref(refused))
        return (replayed.value, refused.value) if status == q.BCM_E_NONE else status

    def some_packets(self):
        """Sends three, which go back and forth between the ports 1 and 2; what left."""
        left = []
        for port, data in ((1, frame(B, A, ARP)), (2, frame(A, B, VLAN, 1, ARP, 7)), (1, frame(B, A, ARP, size=200))):
            self.done(library.sim_clock_advance(ctypes.c_uint64(1500000001)))
            left += self.sent(port, data)
        return left

    def test_what_is_captured_comes_back(self):
        for form in (PCAPNG, PCAP):
            self.done(q.bcm_l2_clear(0))
            capture = self.open(form, directions=RECEIVED)
            left = self.some_packets()
            count = ctypes.c_int()
            self.done(library.sim_capture_count(capture, ctypes.byref(count)))
            self.done(library.sim_capture_close(capture))
            self.assertEqual(count.value, 3)
            self.done(q.bcm_l2_clear(0))
            del self.left[:]
            self.assertEqual(self.replay(), (3, 0))
            if form == PCAPNG:
                self.assertEqual(self.left, left)
            start = library.sim_clock_now()
            self.assertEqual(self.replay(timed=1), (3, 0))
            self.assertEqual(library.sim_clock_now() - start, 2 * 1500000001)

    @unittest.skipUnless(any(os.access(os.path.join(folder, 'tshark'), os.X_OK)
                             for folder in os.environ.get('PATH', '').split(':')), 'there is no tshark')
    def test_others_read_it(self):
        for form in (PCAPNG, PCAP):
            self.done(q.bcm_l2_clear(0))
            capture, start = self.open(form, ports=[1]), library.sim_clock_now()
            self.some_packets()
            self.done(library.sim_capture_close(capture))
            fields = ['frame.time_epoch', 'eth.src', 'frame.len'] + (
                ['frame.interface_name', 'frame.packet_flags_direction'] if form == PCAPNG else [])
            command = ['tshark', '-r', self.path(), '-T', 'fields', '-E', 'separator=,']
            with open(os.devnull, 'w') as nowhere:
                output = subprocess.check_output(command + sum([['-e', name] for name in fields], []), stderr=nowhere)
            times = ['%d.%09d' % divmod(start + count * 1500000001, 10 ** 9) for count in (1, 2, 3)]
            expected = [[times[0], A, '60', 'unit0/ce0', '0x00000001'], [times[1], B, '60', 'unit0/ce0', '0x00000002'],
                        [times[2], A, '196', 'unit0/ce0', '0x00000001']]
            self.assertEqual([line.split(',') for line in output.splitlines()],
                             [row[:len(fields)] for row in expected])

    def test_files_of_others(self):
        data = frame(ALL, A, ARP)
        for magic, order in ((0xa1b2c3d4, '<'), (0xa1b2c3d4, '>'), (0xa1b23c4d, '<'), (0xa1b23c4d, '>')):
            self.write(pcap([(1, 5, data), (2, 0, data)], magic, order))
            start = library.sim_clock_now()
            self.assertEqual(self.replay(timed=1), (2, 0))
            self.assertEqual(library.sim_clock_now() - start, 10 ** 9 - 5 * (1 if magic == 0xa1b23c4d else 1000))
        # Of the other byte order, with blocks of no interest, packets of the simple kind, and two interfaces.
        section = block(0x0a0d0d0a, struct.pack('>IHHq', 0x1a2b3c4d, 1, 0, -1))
        name = struct.pack('>HH', 2, 9) + 'unit0/ce4\0\0\0' + struct.pack('>HHB3x', 9, 1, 3) + '\0\0\0\0'
        interfaces = block(1, struct.pack('>HHI', 1, 0, 0)) + block(1, struct.pack('>HHI', 1, 0, 0) + name)
        packets = (block(3, struct.pack('>I', len(data)) + data) + block(5, 'anything') +
                   block(6, struct.pack('>IIIII', 1, 0, 1500, len(data), len(data)) + data))
        self.write(section + interfaces + packets)
        self.done(q.bcm_l2_clear(0))
        start = library.sim_clock_now()
        del self.left[:]
        self.assertEqual(self.replay(timed=1), (2, 0))
        self.assertEqual((library.sim_clock_now() - start, self.port_of(A)), (15 * 10 ** 8, 5))
        self.write(pcap([(0, 0, data)]))
        self.done(q.bcm_port_enable_set(0, 1, 0))
        self.assertEqual(self.replay(), (0, 1))

    def test_what_is_malformed(self):
        data = frame(ALL, A, ARP)
        good = pcap([(0, 0, data), (0, 0, data)])
        capture = self.open(ports=[1])
        self.some_packets()
        self.done(library.sim_capture_close(capture))
        with open(self.path(), 'rb') as file:
            good_ng = file.read()
        cases = [('', 'no file of captured packets'), ('nothing here', 'no file'), (good[:20], 'ends in the middle'),
                 (good[:-1], 'ends in the middle'), (good[:30], 'ends in the middle'),
                 (pcap([(0, 0, data)], medium=105), 'not of Ethernet'), (pcap([(0, 0, 'short')]), '5 bytes'),
                 (pcap([(0, 0, 'x' * 16384)]), '16384 bytes'), (good_ng[:-4], 'block'), (good_ng[:-2], 'block'),
                 (good_ng[:4] + '\2\0\0\0' + good_ng[8:], 'a block of 2 bytes'),
                 (good_ng[:28], None), (good_ng[:28] + good_ng[-240:], 'not described')]
        del self.left[:]
        for text, problem in cases:
            self.write(text)
            result = self.replay()
            if problem is None:
                self.assertEqual(result, (0, 0))
            else:
                self.assertStatus(q.BCM_E_FAIL, result, repr(text[:40]))
                self.assertIn(problem, library.sim_capture_problem())
                self.assertTrue(library.sim_capture_problem().startswith(self.path() + ': '))
        # Whatever a single byte is, there is an answer.
        for place in range(0, len(good_ng), 3):
            for value in '\0\xff':
                self.write(good_ng[:place] + value + good_ng[place + 1:])
                self.replay()

    def test_what_cannot_be(self):
        number = ctypes.c_int()
        where = ctypes.byref(number)
        self.assertStatus(q.BCM_E_FAIL, library.sim_capture_open(self.path('no/such/folder'), PCAP, where))
        self.assertIn('No such file', library.sim_capture_problem())
        self.assertStatus(q.BCM_E_PARAM, library.sim_capture_open(None, PCAP, where))
        self.assertStatus(q.BCM_E_PARAM, library.sim_capture_open(self.path(), 7, where))
        self.assertStatus(q.BCM_E_PARAM, library.sim_capture_open(self.path(), PCAP, None))
        for status in (library.sim_capture_port(9, 0, 1, 3), library.sim_capture_close(9),
                       library.sim_capture_count(9, where)):
            self.assertStatus(q.BCM_E_NOT_FOUND, status)
        capture = self.open()
        self.assertStatus(q.BCM_E_PORT, library.sim_capture_port(capture, 0, 65, 3))
        self.assertStatus(q.BCM_E_UNIT, library.sim_capture_port(capture, 9, 1, 3))
        self.assertStatus(q.BCM_E_PARAM, library.sim_capture_port(capture, 0, 1, 4))
        self.done(library.sim_capture_close(capture))
        self.assertStatus(q.BCM_E_NOT_FOUND, library.sim_replay(self.path('none'), 0, 1, 0, None, None))
        self.assertStatus(q.BCM_E_PORT, library.sim_replay(self.path(), 0, 0, 0, None, None))
        self.assertStatus(q.BCM_E_UNIT, library.sim_replay(self.path(), 9, 1, 0, None, None))
        self.assertStatus(q.BCM_E_PARAM, library.sim_replay(None, 0, 1, 0, None, None))

    @unittest.skipUnless(os.path.exists('/dev/full'), 'there is no /dev/full')
    def test_a_full_disk(self):
        number = ctypes.c_int()
        self.assertStatus(q.BCM_E_FAIL, library.sim_capture_open('/dev/full', PCAPNG, ctypes.byref(number)))
        self.assertIn('No space left', library.sim_capture_problem())

    def test_a_disk_that_fills_up(self):
        """What fits is whole, and counted; nothing is left of a file that could not even begin."""
        self.done(q.bcm_l2_addr_add(0, self.address(B, port=2)))
        kept = resource.getrlimit(resource.RLIMIT_FSIZE)
        self.addCleanup(resource.setrlimit, resource.RLIMIT_FSIZE, kept)
        for room in (150000, 70001, 20):
            for form in (PCAPNG, PCAP):
                resource.setrlimit(resource.RLIMIT_FSIZE, (room, kept[1]))
                number, count = ctypes.c_int(), ctypes.c_int()
                status = library.sim_capture_open(self.path(), form, ctypes.byref(number))
                if room == 20:
                    self.assertStatus(q.BCM_E_FAIL, status)
                    self.assertFalse(os.path.exists(self.path()))
                    continue
                self.done(library.sim_capture_port(number, 0, 1, RECEIVED))
                for _ in range(200):
                    self.assertEqual(len(self.sent(1, frame(B, A, ARP, size=1000))), 1)
                library.sim_capture_count(number, ctypes.byref(count))
                self.assertStatus(q.BCM_E_FAIL, library.sim_capture_close(number))
                self.assertIn(self.path() + ': File too large', library.sim_capture_problem())
                resource.setrlimit(resource.RLIMIT_FSIZE, kept)
                self.assertEqual(self.replay(), (count.value, 0))
                self.assertGreater(os.path.getsize(self.path()), room - 1100)
            if os.path.exists(self.path()):
                os.remove(self.path())


if __name__ == '__main__':
    unittest.main()
