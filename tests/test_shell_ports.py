"""The shell's commands on ports and VLANs."""
import unittest

import QuorelApiNew as q
from console import run
from simulator import CPU_PORT, SwitchTest


class PortCommands(SwitchTest):
    def row(self, port):
        result, output = run('ps %d' % port)
        self.assertEqual(result, q.CMD_OK, output)
        return output.splitlines()[1].split()

    def test_what_is_set_is_shown(self):
        run('vlan create 30')
        self.assertEqual(self.row(7), 'ce6 7 enabled up 100000 1 LF-'.split())
        words = 'port 7 pause=1 vlan=30 learn=%d speed=40000' % (q.BCM_PORT_LEARN_CPU | q.BCM_PORT_LEARN_ARL)
        self.assertEqual(run(words), (q.CMD_OK, ''))
        self.assertEqual(self.row(7), 'ce6 7 enabled up 40000 tx rx 30 L-C'.split())
        run('port 7 enable=off; port 7 enable=on enable=off pause=0 learn=0')  # the last of two counts
        self.assertEqual(self.row(7), 'ce6 7 disabled down 40000 30 ---'.split())
        self.assertEqual(self.row(CPU_PORT), 'cpu0 0 enabled up 10000 1 LF-'.split())
        for words in ('1 2', '65', 'ce64', '1-'):
            self.assertEqual(run('ps ' + words)[0], q.CMD_USAGE, words)

    def test_a_line_that_cannot_be_read_changes_nothing(self):
        before = self.row(1)
        for words in ('speed', 'speed=', '=1', 'speed=1x', 'speed=99999999999', 'colour=1', '1000'):
            self.assertEqual(run('port 1 enable=0 ' + words)[0], q.CMD_USAGE, words)
        self.assertEqual(self.row(1), before)

    def test_the_first_port_that_refuses_ends_it(self):
        # Of the ports from 32 to 34, the last two reach 10000 Mbit/s only.
        self.assertEqual(run('port 32-34 speed=25000 enable=0'),
                         (q.CMD_FAIL, 'port: speed=25000 of port 33: BCM_E_PARAM\n'))
        self.assertEqual([(self.row(port)[4], self.row(port)[2]) for port in (32, 33, 34)],
                         [('25000', 'enabled'), ('10000', 'enabled'), ('10000', 'enabled')])
        for words, status in (('vlan=31', 'NOT_FOUND'), ('vlan=0', 'PARAM'), ('vlan=-1', 'PARAM'),
                              ('learn=16', 'PARAM'), ('learn=-1', 'PARAM'), ('speed=0', 'PARAM')):
            message = 'port: %s of port 32: BCM_E_%s\n' % (words, status)
            self.assertEqual(run('port 32 ' + words), (q.CMD_FAIL, message))


class CounterCommands(SwitchTest):
    def rates(self):
        """{statistic: what follows it}, of port 3"""
        result, output = run('counters rates 3')
        self.assertEqual(result, q.CMD_OK, output)
        return dict((words[1], words[2:]) for words in (line.split() for line in output.splitlines()))

    def arrive(self, times):
        for _ in range(times):
            run('packet send 3 ffffffffffff02005e0000010806')

    def test_rates_go_by_the_simulators_clock(self):
        run('counters clear 3; clock step; counters rates 3')
        self.assertEqual(self.rates(), {})
        self.arrive(10)
        run('clock advance 4000; clock stop')
        rates = self.rates()
        self.assertEqual((rates['snmpIfInBroadcastPkts'], rates['snmpIfInOctets']), (['10', '2.5/s'], ['640', '160.0/s']))
        self.assertNotIn('snmpIfOutOctets', rates)
        self.arrive(1)
        self.assertEqual(self.rates()['snmpIfInBroadcastPkts'], ['1'])  # in no time
        run('counters clear 3')
        self.arrive(2)
        self.assertEqual(self.rates()['snmpIfInBroadcastPkts'], ['2'])


class VlanCommands(SwitchTest):
    def shown(self):
        return run('vlan')[1].splitlines()

    def test_members(self):
        run('vlan create 9; vlan add 9 all; vlan add 9 0,63-64 untagged; vlan remove 9 2-61; vlan add 9 64')
        run('vlan remove 1 all')
        self.assertEqual(self.shown()[0], 'vlan 1: ports ; untagged ')
        self.assertEqual(self.shown()[1], 'vlan 9: ports 0-1,62-64; untagged 0,63')
        run('vlan destroy 9')
        self.assertEqual(len(self.shown()), 1)

    def test_one_vlan_is_shown(self):
        run('vlan create 9; vlan add 9 3')
        self.assertEqual(run('vlan show 9'), (q.CMD_OK, 'vlan 9: ports 3; untagged \n'))

    def test_what_cannot_be(self):
        run('vlan create 9')
        before = self.shown()
        for words in ('show 9 9', 'create', 'create x', 'create 9 1', 'create 65536', 'create -1', 'add 9',
                      'add 9 65', 'add 9 1 untaged', 'add 9 1 untagged 2', 'add x 1', 'remove 9',
                      'remove 9 1 untagged', 'remove 9 1 2', 'rename 9', '9'):
            self.assertEqual(run('vlan ' + words)[0], q.CMD_USAGE, words)
        for words, status in (('create 9', 'EXISTS'), ('create 0', 'PARAM'), ('create 4095', 'PARAM'),
                              ('destroy 1', 'BADID'), ('destroy 8', 'NOT_FOUND'), ('add 8 1', 'NOT_FOUND'),
                              ('remove 8 1', 'NOT_FOUND')):
            message = 'vlan: %s: BCM_E_%s\n' % (' '.join(words.split()[:2]), status)
            self.assertEqual(run('vlan ' + words), (q.CMD_FAIL, message))
        self.assertEqual(self.shown(), before)


if __name__ == '__main__':
    unittest.main()
