"""The shell's command on PHYs."""
import unittest

import QuorelApiNew as q
from console import run
from phy import COPPER, PhyTest, SERDES
from simulator import library


class PhyCommands(PhyTest):
    def told(self, words):
        result, output = run('phy ' + words)
        self.assertEqual(result, q.CMD_OK, output)
        return output

    def values(self, words):
        """{what: value} of lines "port N: what = value"."""
        lines = [line.split(': ', 1)[1].split() for line in self.told(words).splitlines()]
        return dict((line[0], int(line[2], 0)) for line in lines)

    def test_the_list(self):
        rows = [line.split() for line in self.told('list %d,%d' % (SERDES, COPPER)).splitlines()[1:]]
        for port, row in zip((SERDES, COPPER), rows):
            number = q.soc_phy_id0reg_get(0, port) << 16 | q.soc_phy_id1reg_get(0, port)
            self.assertEqual((row[0], row[1], row[3]),
                             (str(port), '%08x' % number, str(q.soc_phy_addr_int_of_port(0, port))))
            self.assertEqual(' '.join(row[9:]), q.soc_phy_name_get(0, port))
        self.assertEqual(rows[0][2:9:2] + rows[0][5:9:2], ['none', 'FIBER', '100000', 'off', 'up', 'off'])
        self.assertEqual(rows[1][2:9:2] + rows[1][5:9:2],
                         [str(q.soc_phy_addr_of_port(0, COPPER)), 'COPPER', '10000', 'off', 'up', 'done'])
        self.assertEqual(len(self.told('').splitlines()), 65)

    def test_registers_by_name_number_and_device(self):
        for words, flags, address in (('AN_ADVERT', 0, 4), ('4', 0, 4), ('id0', 0, 2), ('3.8', 2, 3 << 16 | 8),
                                      ('PCS.0x8', 2, 3 << 16 | 8),
                                      ('SOC_PHY_DEVICE_AN.16', 2, 7 << 16 | 16),
                                      ('ID1 internal', q.SOC_PHY_INTERNAL, 3)):
            read = q.uintp()
            self.done(q.soc_phyctrl_reg_read(0, COPPER, flags, address, read))
            self.assertEqual(self.values('read %d %s' % (COPPER, words)).values(), [read.value()], words)
        self.told('write 33-34 30.0x9000 0x1234')
        self.told('modify 34 VENDOR1.0x9000 0xff00 0x0ff0')
        self.assertEqual([line.split(' = ')[1] for line in self.told('read 33-34 30.0x9000').splitlines()],
                         ['0x1234', '0x1f04'])
        for register in ('32', '0.1', '32.1', '-1', 'PCS', 'PCS.', '.1', '1.65536', 'NOTHING.1', '1.2.3'):
            self.assertIn(run('phy read %d %s' % (COPPER, register))[0], (q.CMD_USAGE, q.CMD_FAIL), register)
        for words in ('write 33 0 65536', 'write 33 0 -1', 'read 33 0 outside', 'modify 33 0 1'):
            self.assertEqual(run('phy ' + words)[0], q.CMD_USAGE, words)

    def test_controls(self):
        self.told('set %d TX_FIR_PRE=3 SOC_PHY_CONTROL_TX_FIR_POST=0x4' % SERDES)
        shown = self.values('get %d TX_FIR_P*' % SERDES)
        self.assertEqual((shown['TX_FIR_PRE'], shown['TX_FIR_POST'], shown['TX_FIR_PRE2']), (3, 4, 0))
        for name, value in self.values('get %d *POLARITY' % SERDES).items():
            self.assertEqual(value, self.word(q.soc_phyctrl_control_get, SERDES,
                                              getattr(q, 'SOC_PHY_CONTROL_' + name)))
        self.assertEqual(run('phy get %d LONGREACH*' % SERDES),
                         (q.CMD_FAIL, 'phy: control LONGREACH* of port %d: BCM_E_UNAVAIL\n' % SERDES))
        for words in ('TX_FIR_PRE', 'TX_FIR_PRE=', 'TX_FIR_PRE=4294967296', 'NO_SUCH=1', 'COUNT=1'):
            self.assertEqual(run('phy set %d TX_FIR_PRE=9 %s' % (SERDES, words))[0], q.CMD_USAGE, words)
        self.assertEqual(self.values('get %d tx_fir_pre' % SERDES), {'TX_FIR_PRE': 3})

    def test_tests(self):
        self.told('loopback 1,%d on' % COPPER)
        self.assertEqual([self.value(q.soc_phyctrl_loopback_get, port) for port in (1, 2, COPPER)], [1, 0, 1])
        self.assertIn('loopback                 PMD\n', self.told('diag 1'))
        self.told('prbs 1 start')
        self.assertEqual(self.told('prbs 1 show'), 'port 1: locked, 0 wrong bits\n')
        self.told('set 1 PRBS_ERROR_INJECT=5')
        self.assertEqual(self.told('prbs 1 show'), 'port 1: locked, 5 wrong bits\n')
        self.told('prbs 1 stop')
        self.assertEqual(self.told('prbs 1 show'), 'port 1: not locked\n')
        self.told('loopback 1,%d off' % COPPER)
        library.sim_cable_pair_set(0, COPPER, 3, q.SOC_PHY_CABLE_STATE_OPEN, 7)
        self.addCleanup(library.sim_cable_pair_set, 0, COPPER, 3, q.SOC_PHY_CABLE_STATE_OK, 0)
        lines = self.told('cable %d' % COPPER).splitlines()
        self.assertEqual((lines[0].split()[2], lines[-1].split()), ('OPEN,', 'pair 3: OPEN 7 m'.split()))
        self.assertEqual(run('phy cable %d' % SERDES)[0], q.CMD_FAIL)
        self.assertEqual(self.told('diag').count('port '), 64)


if __name__ == '__main__':
    unittest.main()
