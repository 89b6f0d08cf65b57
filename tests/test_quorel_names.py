"""Names of numbers and flags as text, against the constants of the module and what the report says of enumerations."""
import collections
import os
import random
import unittest

import QuorelApiNew as q
from quorel import constants, flags, name_of, status_name


def enumerations():
    """{tag: [constant, ...]} in header order, and all constants."""
    found, names = collections.defaultdict(list), []
    with open(os.environ['QUOREL_BINDING']) as report:
        for line in report:
            cells = line.rstrip('\n').split('\t')
            if cells[0] == 'constant':
                names.append(cells[2])
                if cells[1] != '-':
                    found[cells[1]].append(cells[2])
    return found, names


ENUMERATIONS, NAMES = enumerations()


def error_of(call, *arguments):
    try:
        call(*arguments)
    except Exception as error:
        return type(error), str(error)


class Groups(unittest.TestCase):
    def test_every_enumeration_has_its_constants(self):
        self.assertGreater(len(ENUMERATIONS), 300)
        for tag, names in ENUMERATIONS.items():
            self.assertEqual(constants(tag), [(name, getattr(q, name)) for name in names])

    def test_every_prefix_has_its_constants(self):
        everything = [(name, getattr(q, name)) for name in NAMES]
        self.assertEqual(constants(''), everything)
        for prefix in set(name[:length] for name in random.Random(1).sample(NAMES, 12)
                          for length in range(1, len(name) + 1)):
            self.assertEqual(constants(prefix), [pair for pair in everything if pair[0].startswith(prefix)], prefix)

    def test_what_is_no_group(self):
        for group in ('BCM_E_X', 'bcm_error_', '~'):
            for call in (lambda name: name_of(name, 1), lambda name: flags(name, 1), lambda name: flags(name, 'X'), constants):
                self.assertEqual(error_of(call, group), (
                    ValueError, "no constant begins with '%s', nor is it an enumeration" % group))
        self.assertEqual(error_of(constants, 5), (TypeError, 'constants are named by a str, not by int'))


class Names(unittest.TestCase):
    def test_every_value_has_the_first_name(self):
        for tag, names in ENUMERATIONS.items():
            first = {}
            for name in names:
                first.setdefault(getattr(q, name), name)
            for value, name in first.items():
                self.assertEqual(name_of(tag, value), name)
                self.assertEqual(name_of(tag, value % 2 ** 32), name)

    def test_statuses(self):
        for name, value in constants('bcm_error_t'):
            self.assertEqual((status_name(value), name_of('BCM_E_', value)), (name, name))
        # The greatest set has one more.
        self.assertEqual(status_name(q.SOC_E_LIMIT), 'SOC_E_LIMIT')
        self.assertEqual((status_name(-4321), status_name(7)), ('-4321', '7'))

    def test_without_a_name(self):
        self.assertEqual(name_of('BCM_E_', 5), '5')
        self.assertIsNone(name_of('BCM_E_', 5, None))
        self.assertEqual(name_of('BCM_E_', 2 ** 32 - 4, 'none'), 'BCM_E_PARAM')


class Flags(unittest.TestCase):
    def test_bits_have_their_names(self):
        for group in ('bcm_l2_addr_flag_t', 'bcm_l2_addr_flag_e', 'BCM_L2_'):
            both = q.BCM_L2_STATIC | q.BCM_L2_DISCARD_SRC
            self.assertEqual(flags(group, both), 'BCM_L2_DISCARD_SRC|BCM_L2_STATIC')
            self.assertEqual(flags(group, 'BCM_L2_STATIC| BCM_L2_DISCARD_SRC'), both)
        self.assertEqual(flags('BCM_L2_', 'STATIC|HIT|0x80000000'), q.BCM_L2_STATIC | q.BCM_L2_HIT | 2 ** 31)
        self.assertEqual(flags('bcm_l2_addr_flag_t', q.BCM_L2_HIT), 'BCM_L2_SRC_HIT|BCM_L2_DES_HIT')

    def test_a_name_of_several_bits_is_for_what_others_leave(self):
        self.assertEqual(flags('BCM_FIELD_PRESEL_MAX', 0x81), 'BCM_FIELD_PRESEL_MAX|0x1')
        self.assertEqual(flags('BCM_FIELD_GROUP_PRIO_ANY', 0x80000003), 'BCM_FIELD_GROUP_PRIO_ANY|0x2')

    def test_there_and_back(self):
        chance = random.Random(2)
        for group in ['BCM_', ''] + sorted(ENUMERATIONS):
            for number in (0, 1, 2 ** 31, 2 ** 32 - 1, 2 ** 40, chance.getrandbits(32)):
                self.assertEqual(flags(group, flags(group, number)), number, (group, number))
            self.assertEqual(flags(group, flags(group, -1)), 2 ** 32 - 1, group)
        self.assertEqual(flags('bcm_l2_addr_flag_t', 0), '0')

    def test_what_is_no_flag(self):
        for text in ('STATIC', 'BCM_L2_STATIC,BCM_L2_HIT', '', 'BCM_L2_STATIC|', '-1', 'BCM_E_PARAM'):
            self.assertEqual(error_of(flags, 'bcm_l2_addr_flag_t', text)[0], ValueError, text)
        self.assertEqual(error_of(flags, 'BCM_L2_', 'STATIC|MOVED'), (ValueError, "'MOVED' is no flag of BCM_L2_"))
        self.assertEqual(error_of(flags, 'BCM_L2_', None)[0], TypeError)


if __name__ == '__main__':
    unittest.main()
