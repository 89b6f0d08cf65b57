"""quorel.describe() and search(): what the headers say, of everything that is bound."""
import os
import re
import shutil
import StringIO
import subprocess
import sys
import tempfile
import unittest

import QuorelApiNew as q
import quorel
from quorel.describing import WIDTH, about
from quorel.reference import Reference, reference
from quorel.searching import found_by

HEADERS = os.environ['QUOREL_SDK_INCLUDE'].split(';')
PACKAGE = os.path.join(os.environ['QUOREL_LIBRARIES'], 'quorel')


def words_of(text):
    return ' '.join(re.findall(r'\w+', text))


def bound(*kinds):
    with open(os.environ['QUOREL_BINDING']) as report:
        rows = [line.rstrip('\n').split('\t') for line in report]
    return [row[1:] for row in rows if row[0] in kinds]


class Everything(unittest.TestCase):
    def test_what_is_bound_is_told_of(self):
        known = reference()
        kinds = dict((line.split('\t')[0], line.split('\t')[1]) for line in known.lines if line[:1] not in '\t.')
        functions = set(row[1].partition('(')[0] for row in bound('function', 'overload'))
        self.assertEqual(set(name for name, kind in kinds.items() if kind == 'function'), functions)
        constants = set(row[1] for row in bound('constant'))
        self.assertEqual(set(name for name, kind in kinds.items() if kind in ('enumerator', 'macro')), constants)
        members = {}
        for row in bound('member'):
            members.setdefault(row[1], []).append('.' + row[2])
        records = [name for name, kind in kinds.items() if kind == 'record']
        self.assertEqual(set(records), set(members))
        for name in records:
            self.assertEqual([inner.name for _, inner in known.find(name).inner() if inner], members[name])

    def test_each_can_be_described(self):
        for name in sorted(reference().numbers):
            lines = about(name).split('\n')
            self.assertIn(name, ' '.join(lines[:3]))
            for line in lines:
                self.assertNotIn('\t', line)
                self.assertEqual(line, line.rstrip(), name)

    def test_no_comment_is_lost(self):
        # But those of what is not bound: macros with parameters, and the records that take options of the shell.
        known = reference()
        told = words_of(known.all.replace('\\n', ' '))
        lost, count = [], 0
        for line in known.lines:
            path = line.startswith('\theader\t') and os.path.join(HEADERS[0], line.split('\t')[2])
            if path and os.path.exists(path):
                with open(path) as file:
                    comments = re.findall(r'(?s)/\*(.*?)\*/', file.read())
                count += len(comments)
                lost += [comment for comment in comments if words_of(comment) not in told]
        self.assertGreater(count, 1000)
        self.assertLess(len(lost), count / 100, lost)


class Description(unittest.TestCase):
    def expect(self, what, *parts):
        text = about(what)
        for part in parts:
            self.assertIn(part, text)
        return text

    def test_a_function_tells_how_it_is_called(self):
        text = self.expect(q.bcm_l2_age_timer_get, 'int bcm_l2_age_timer_get(int unit, int *age_seconds)', 'bcm/l2.h',
                           'Seconds after which an unused dynamic entry goes, 0 for never; at first 300.',
                           'age_seconds  int *  OUT or intp()', 'Told together with bcm_l2_age_timer_set',
                           'Bound by l2.toml')
        self.assertEqual(about('bcm_l2_age_timer_get'), text)
        self.assertLess(max(map(len, text.split('\n'))), WIDTH + 1)
        self.expect(q.bcm_l2_addr_get, "mac_addr  unsigned char [6]  text, such as '02:", 'l2addr    bcm_l2_addr_t',
                    'no argument: it joins the result', 'BCM_E_NOT_FOUND  -7  no such entry',
                    'Common in bcm/l2.h: BCM_E_UNIT, BCM_E_INIT, BCM_E_PARAM')
        self.expect(q.bcm_l2_addr_add, 'bcm_l2_addr_t() or OUT')
        self.expect(q.bcm_l2_traverse, "callback('bcm_l2_traverse_cb', function)", 'any pointer object, or None')
        self.expect('bcm_l2_conflict_get', 'cf_array  bcm_l2_addr_t *')

    def test_it_tells_how_the_simulated_switch_answers(self):
        kinds = {}
        with open(os.path.join(PACKAGE, 'answers.tsv')) as file:
            for line in file:
                name, _, kind, why = line.rstrip('\n').split('\t')
                kinds.setdefault(kind, (name, why))
        self.assertEqual(sorted(kinds), ['by hand', 'by rule', 'unavailable'])
        for kind, said in (('by hand', 'does this'), ('by rule', 'answers by rule'),
                           ('unavailable', 'answers that it is not available')):
            name, why = kinds[kind]
            self.assertIn(words_of('The simulated switch %s (%s)' % (said, why)), words_of(about(name)))

    def test_records_members_and_numbers(self):
        text = self.expect(q.bcm_l2_addr_t, 'record bcm_l2_addr_t', 'One MAC address of a VLAN and where it is.',
                           'flags               uint32                     BCM_L2_*', 'port, or gport',
                           'Used by', 'bcm_l2_addr_add')
        self.assertEqual(about(q.bcm_l2_addr_t()), text)
        self.assertEqual(about(type('Address', (q.bcm_l2_addr_t,), {})), text)
        member = self.expect(q.bcm_l2_addr_t.station_flags, 'uint32 station_flags, member of bcm_l2_addr_t',
                             'BCM_L2_STATION_*')
        self.assertEqual(about('bcm_l2_addr_t.station_flags'), member)
        self.expect('bcm_l2_addr_flag_t', 'BCM_L2_STATIC        32 (0x20)      neither ages nor moves')
        self.expect('BCM_L2_STATIC', 'BCM_L2_STATIC = 32 (0x20) of bcm_l2_addr_flag_t', 'neither ages nor moves')
        self.expect('BCM_VLAN_DEFAULT', 'BCM_VLAN_DEFAULT = 1')
        self.expect('bcmFieldActionDscpNew', 'IP type of service byte: DSCP, precedence and congestion marks.')
        self.expect('bcm_l2_traverse_cb', 'int (*bcm_l2_traverse_cb)(int unit, bcm_l2_addr_t *info, void *user_data)',
                    'Used by bcm_l2_traverse,')
        self.expect('bcm_vlan_t', 'unsigned short bcm_vlan_t', 'VLAN id, 1..4094')
        self.expect(q.intp, 'pointer class intp', 'type int')
        self.expect('bcm_l2_flags_count', 'int bcm_l2_flags_count', 'The words for these flags in dumps')
        self.expect('bcm/l2.h', 'Layer-2 forwarding', 'bcm_l2_addr_add')

    def test_what_stays_as_it_is_in_a_text(self):
        directory = tempfile.mkdtemp()
        try:
            path = os.path.join(directory, 'reference.tsv')
            with open(path, 'w') as file:
                file.write('\theader\tx.h\t\n\tgroup\tSteps\\nin order:\\n  1. one, with\\n     more\\n  2. two\\n'
                           '\\n      a \\\\ b\nx\tmacro\t\n')
            entry = Reference(path).find('x')
            self.assertEqual(entry.text, 'Steps\nin order:\n  1. one, with\n     more\n  2. two\n\n      a \\ b')
            from quorel.describing import _reflowed
            self.assertEqual(_reflowed(entry.text, 40),
                             ['Steps in order:', '  1. one, with more', '  2. two', '', '      a \\ b'])
        finally:
            shutil.rmtree(directory)

    def test_what_no_header_has(self):
        with self.assertRaises(ValueError) as raised:
            about('bcm_l2_adr_add')
        self.assertIn("the headers say nothing of 'bcm_l2_adr_add'; near it are", str(raised.exception))
        for nothing in 'zzz', '', 'bcm_l2_addr_t.nothing', 'bcm/none.h', 3, None, len:
            self.assertRaises(ValueError, about, nothing)

    def test_without_the_files(self):
        directory = tempfile.mkdtemp()
        try:
            copy = os.path.join(directory, 'quorel')
            shutil.copytree(PACKAGE, copy)
            os.remove(os.path.join(copy, 'answers.tsv'))
            script = 'import quorel; quorel.describe("bcm_l2_init")'
            run = [sys.executable, '-B', '-c', script]
            environment = dict(os.environ, PYTHONPATH=directory + ':' + os.environ['PYTHONPATH'])
            text = subprocess.check_output(run, env=environment)
            self.assertNotIn('simulated switch', text)
            self.assertIn('int bcm_l2_init(int unit)', text)
            os.remove(os.path.join(copy, 'reference.tsv'))
            process = subprocess.Popen(run, env=environment, stderr=subprocess.PIPE)
            said = process.communicate()[1]
            self.assertEqual(process.returncode, 1)
            self.assertIn('IOError: [Errno 2] what the headers say is in a file that the build makes of them and that '
                          'cannot be read (No such file or directory): ', said)
        finally:
            shutil.rmtree(directory)


class Help(unittest.TestCase):
    def shown(self, *what):
        """What help() of the package prints."""
        said, sys.stdout = sys.stdout, StringIO.StringIO()
        try:
            quorel.help(*what)
            return sys.stdout.getvalue()
        finally:
            sys.stdout = said

    def test_it_tells_of_classes_members_and_functions_what_the_headers_do(self):
        class Mine(q.bcm_l2_addr_t):
            pass
        for what in (q.bcm_l2_addr_add, q.bcm_l2_addr_t, q.bcm_l2_addr_t(), q.bcm_l2_addr_t.flags, q.intp, Mine,
                     'BCM_E_PARAM', u'bcm_l2_addr_t.mac', 'bcm/l2.h'):
            self.assertEqual(self.shown(what).strip(), about(what).strip())
        self.assertIn('record bcm_l2_addr_t', self.shown(Mine))

    def test_all_else_is_left_to_the_interpreter(self):
        def bcm_l2_addr_add(own):
            """Called like one of the SDK's."""

        class intp(object):
            """Likewise."""
        for what, part in ((bcm_l2_addr_add, 'Called like one'), (intp, 'Likewise.'), (property(doc='Own.'), 'property'),
                           (quorel.checked, 'calls a function of the SDK'), (5, 'class int'), ('len', 'len(object)'),
                           ('no_such_thing', 'no Python documentation found')):
            self.assertIn(part, re.sub(r'.\x08', '', self.shown(what)))
        self.assertRaises(TypeError, quorel.help, 1, 2, 3)


class Search(unittest.TestCase):
    def first(self, words, count=1):
        return [name for name, _ in found_by(words)[:count]]

    def test_the_best_comes_first(self):
        self.assertEqual(self.first('age timer', 2), ['bcm_l2_age_timer_set', 'bcm_l2_age_timer_get'])
        self.assertEqual(self.first('Ageing TIMERS', 2), self.first('age timer', 2))
        self.assertEqual(self.first('bcm_l2_addr_add'), ['bcm_l2_addr_add'])
        self.assertIn('bcm_l3_route_add', self.first('routes', 3))
        self.assertIn('bcm_port_stp_set', self.first('spanning tree', 5))

    def test_words_of_comments_members_and_headers(self):
        self.assertIn('BCM_L2_STATIC', self.first('neither ages nor moves', 3))
        self.assertIn('bcm_l2_egress_find', self.first('lowest id of an object that is equal in every member', 10))
        self.assertIn('bcm_l2_addr_t.station_flags', self.first('station flags', 10))
        # Inside of words nothing is found, and of what fits no word of all the rest counts.
        self.assertEqual(self.first('ddr'), [])
        self.assertEqual(self.first(''), [])
        self.assertEqual(self.first('age timer zzzzz', 2), self.first('age timer', 2))


class OtherSdk(unittest.TestCase):
    def test_its_headers_are_told_of_as_they_are(self):
        known = Reference(os.path.join(os.environ['QUOREL_OTHER_SDK'], 'generated', 'reference.tsv'))
        self.assertEqual(known.find('other_laser_get').text, 'A laser, 0..2.')
        self.assertEqual(known.find('other_laser_get').header, 'other.h')
        self.assertEqual(known.find('other_status_t').text, 'Codes of their own, and an enumeration without a tag.')
        self.assertEqual(known.find('other_laser_t.label').columns[0], 'char label[10]')
        self.assertIsNone(known.find('bcm_l2_addr_add'))


if __name__ == '__main__':
    unittest.main()
