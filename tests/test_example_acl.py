"""The example that loads an access list, run as a user would."""
import os
import struct
import subprocess
import sys
import tempfile
import unittest

from quorel import sim

EXAMPLE = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'examples', 'acl.py')
LIST = """\
# the servers
permit udp from 10.1.0.0/16 to 10.2.0.7 port 53

deny   udp from any to 10.2.0.0/16 port 53,100-200   # but for the first
deny   tcp from any to any
deny   ip  from 10.9.0.0/16 to any on 2-3
deny   any from any to 10.3.0.1
"""


def run(*arguments):
    """(exit code, output, errors), a debug interpreter's line about references left out"""
    process = subprocess.Popen([sys.executable, EXAMPLE] + list(arguments), stdout=subprocess.PIPE,
                               stderr=subprocess.PIPE)
    output, errors = process.communicate()
    return process.returncode, output, [line for line in errors.splitlines() if not line.startswith('[')]


class Example(unittest.TestCase):
    def file(self, content):
        file = tempfile.NamedTemporaryFile()
        self.addCleanup(file.close)
        file.write(content)
        file.flush()
        return file.name

    def capture(self, packets):
        frames = [sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01', sim.udp4(*packet)) for packet in packets]
        return self.file(struct.pack('<IHHiIII', 0xa1b2c3d4, 2, 4, 0, 0, 65535, 1)
                         + b''.join(struct.pack('<IIII', 0, 0, len(frame), len(frame)) + frame for frame in frames))

    def test_hits_by_rule(self):
        packets = [('10.1.0.1', '10.2.0.7', 9, 53), ('10.4.0.1', '10.2.0.7', 9, 53), ('10.4.0.1', '10.2.0.8', 9, 150),
                   ('10.4.0.1', '10.2.0.8', 9, 201), ('10.9.0.1', '10.7.0.8', 9, 201), ('10.9.0.1', '10.3.0.1', 9, 201)]
        wanted = {'1': [1, 2, 0, 0, 1], '2': [1, 2, 0, 2, 0]}
        for port, counts in wanted.items():
            code, output, errors = run(self.file(LIST), '--replay', self.capture(packets), '--port', port)
            self.assertEqual((code, errors), (0, []))
            lines = output.splitlines()
            self.assertEqual(lines[0], '6 packets arrived at port %s, of 0 it took none' % port)
            rows = [line.split(None, 3) for line in lines[2:-1]]
            self.assertEqual([row[0] for row in rows], ['2', '4', '5', '6', '7'])
            self.assertEqual([[int(cell) for cell in row[1:3]] for row in rows],
                             [[count, 64 * count] for count in counts])
            self.assertEqual(rows[0][3], 'permit udp from 10.1.0.0/16 to 10.2.0.7 port 53')
            self.assertEqual(lines[-1], '5 rules, 2 of them never met')

    def test_bad_lines(self):
        bad = ['allow ip from any to any', 'deny', 'deny tcp from any', 'deny tcp from any at any',
               'deny tpc from any to any',
               'deny icmp from any to any port 7', 'deny ip from 10.0.0.0/40 to any', 'deny ip from any to 2001:db8::1',
               'deny any from 10.0.0.1 to 2001:db8::1', 'deny tcp from any to any port 80-70',
               'deny ip from any to any on x',
               'deny ip from any to any on 1 2', 'deny udp from any to any port http']
        words = ["begins with 'allow'", 'ends where a protocol', "ends where 'to'", "'at' where 'to'",
                 "'tpc' is no protocol",
                 'has ports', "SrcIp: '10.0.0.0/40' is not", 'IPv4 and IPv6', 'IPv4 and IPv6', "L4DstPort: '80-70' is not",
                 "InPorts: 'x' is not", "goes on with '2'", "L4DstPort: 'http' is not"]
        name = self.file(LIST + '\n'.join(bad) + '\n')
        code, output, errors = run(name)
        self.assertEqual((code, output, len(errors)), (1, '', len(bad)))
        for number, (line, word) in enumerate(zip(errors, words), 1 + LIST.count('\n')):
            self.assertTrue(line.startswith('%s:%d: ' % (name, number)), line)
            self.assertIn(word, line)

    def test_what_cannot_be_read(self):
        self.assertEqual(run('/nowhere')[0], 2)
        code, _, errors = run(self.file(LIST), '--replay', self.file('no capture'))
        self.assertEqual((code, errors[0].startswith('acl: ')), (2, True))


if __name__ == '__main__':
    unittest.main()
