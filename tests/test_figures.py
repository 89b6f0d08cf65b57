"""README and guides quote no figure that the record of the benchmarks has not."""
import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, 'benchmarks'))
import record

HEAD = '| Work | in | this module | compared with | ratio | budget | |\n|---|---|---:|---:|---:|---:|---|\n'
ROW = '| call | instructions | 514 | floor: 472 | 1.089 | 1.15 | met |\n'


class Figures(unittest.TestCase):
    def test_all_that_is_quoted_is_recorded(self):
        self.assertEqual(record.check(), [])
        self.assertGreater(len(record.tables(record.read(record.README))), 35)

    def test_a_quoted_figure_that_differs_is_found(self):
        recorded = HEAD + ROW
        self.assertEqual(record.faults('Text\n\n' + HEAD + ROW + '\nA call is 514 instructions.', recorded), [])
        for quoted, part in ((HEAD + ROW.replace('514', '515'), 'recorded: ' + ROW.strip()),
                             (HEAD + ROW.replace('| met', '| **over**'), 'recorded: '),
                             (HEAD + ROW.replace('| call', '| another call'), 'not recorded: | another call'),
                             ('A call is 500 instructions.', 'no figure of the record: 500')):
            fault, = record.faults(quoted, recorded)
            self.assertIn(part, fault)

    def test_rows_of_a_run_take_the_place_of_what_was_recorded(self):
        later, other = ROW.replace('514', '499'), ROW.replace('floor: 472', 'SWIG: 700')
        rows = dict((key, line) for line, key in record.tables(HEAD + later))
        self.assertEqual(record.merged('A\n' + HEAD + ROW + other + '\nB', rows), 'A\n' + HEAD + later + other + '\nB')
        # A row is what was measured and what it was compared with, in whichever table.
        hosts = '| Between two namespaces | TCP, Mbit/s |\n|---|---:|\n| bridge | %d |\n'
        rows = dict((key, line) for line, key in record.tables(hosts % 5))
        self.assertEqual(record.merged(HEAD + ROW + '\n' + hosts % 4, rows), HEAD + ROW + '\n' + hosts % 5)

    def test_rows_of_constructs(self):
        table = '| Constructs | tried | bound and right |\n|---|---:|---:|\n| %s | 9 | %d |\n'
        rows = dict((key, line) for line, key in record.tables(table % ('unions', 9)))
        self.assertEqual(record.merged(table % ('unions', 6), rows), table % ('unions', 9))
        self.assertEqual(record.merged(table % ('text', 6), rows), table % ('text', 6))
        fault, = record.faults(table % ('unions', 6), table % ('unions', 9))
        self.assertIn('recorded: | unions | 9 | 9 |', fault)


if __name__ == '__main__':
    unittest.main()
