"""Names of enumerators and sets of them from text and back."""
import os
import re
import unittest

import QuorelApiNew as q
from text_buffer import buffer_of, formatted, null_calls

NO_NAMES = ['', ' ', 'x', 'Count', '0', '-1', 'bcm', 'bcmField', '\xff', 'a' * 1000000, '%s%n']

# Parser, formatter if there is one with a brief form, and what the names have in common.
KINDS = [(q.parse_field_qualifier, q.format_field_qualifier, 'bcmFieldQualify'),
         (q.parse_field_action, q.format_field_action, 'bcmFieldAction'),
         (q.parse_field_group_mode, q.format_field_group_mode, 'bcmFieldGroupMode'),
         (q.parse_field_decap, None, 'bcmFieldDecap'), (q.parse_field_oam_type, None, 'bcmFieldOamType'),
         (q.parse_field_olp_hdr_type, None, 'bcmFieldOlpHeaderType'),
         (q.parse_field_MplsOamCtrlPktType, None, 'bcmFieldMplsOamControl')]


def declared(header, enumeration):
    """[(name, value)] as the SDK's header has it."""
    root = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'sdk', 'include', 'bcm')
    with open(os.path.join(root, header)) as text:
        body = re.search(r'enum %s \{(.*?)\}' % enumeration, text.read(), re.S).group(1)
    value, rows = -1, []
    for name, given in re.findall(r'^ *(\w+)(?: = (\w+))?,? *(?:/\*.*)?$', body, re.M):
        value = value + 1 if not given else dict(rows)[given] if given in dict(rows) else int(given, 0)
        rows.append((name, value))
    return rows


def values_of(prefix):
    """{short name: value}"""
    return dict((name[len(prefix):], value) for name, value in vars(q).items()
                if name.startswith(prefix) and name[len(prefix):len(prefix) + 1].isupper() and name != prefix + 'Count')


class Names(unittest.TestCase):
    def test_every_name_is_known(self):
        for parse, _, prefix in KINDS:
            names = values_of(prefix)
            self.assertGreater(len(names), 5, prefix)
            for name, value in names.items():
                for text in (name, prefix + name, name.lower(), (prefix + name).upper(), ' %s\n' % name):
                    self.assertEqual(parse(text), value, text)
            for text in NO_NAMES + [prefix, prefix + 'Count', names.keys()[0] + 'x', names.keys()[0] + ' x']:
                self.assertEqual(parse(text), max(names.values()) + 1, text[:40])
        null_calls('parse_field_qualifier parse_field_action parse_field_decap'.split(), 1)

    def test_switch_controls_and_tunnel_types(self):
        for parse, header, enumeration, prefix, least in (
                (q.parse_switch_control, 'switch_control.h', 'bcm_switch_control_e', 'bcmSwitch', 500),
                (q.parse_tunnel_type, 'tunnel.h', 'bcm_tunnel_type_e', 'bcmTunnelType', 15)):
            rows = [row for row in declared(header, enumeration) if row[0] != prefix + 'Count']
            self.assertGreater(len(rows), least)
            for name, value in rows:
                for text in (name, name[len(prefix):], name.upper()):
                    self.assertEqual(parse(text), value, text)
            for text in NO_NAMES + [prefix]:
                self.assertEqual(parse(text), max(value for _, value in rows) + 1, text[:40])
        null_calls(['parse_switch_control', 'parse_tunnel_type'], 1)

    def test_every_value_is_read_back(self):
        for parse, form, prefix in KINDS:
            form = form or (q.format_field_decap if 'Decap' in prefix else None)
            if form is None:
                continue
            for value in set(values_of(prefix).values()):
                texts = ([formatted(form, value, brief) for brief in (1, -1, 0)] if 'Decap' not in prefix
                         else [formatted(form, value)])
                self.assertLess(max(map(len, texts)), 64)
                self.assertEqual([parse(text) for text in texts], [value] * len(texts), texts)
                self.assertTrue('Decap' in prefix or texts[0] == texts[1] == texts[2][len(prefix):], texts)
            for value in (-1, getattr(q, prefix + 'Count'), 2 ** 31 - 1, -2 ** 31):
                self.assertEqual(formatted(form, value, *([0] if 'Decap' not in prefix else [])), '?')


class Sets(unittest.TestCase):
    USER_FIELDS = 93

    def qualifiers(self, *values):
        qset = q.bcm_field_qset_t()
        for value in values:
            q.bcm_field_qset_add(qset, value)
        return qset

    def members(self, test, record, count):
        return [value for value in range(count) if test(record, value)]

    def qset_members(self, qset):
        return self.members(q.bcm_field_qset_test, qset, q.bcmFieldQualifyCount + self.USER_FIELDS)

    def aset_members(self, aset):
        return self.members(q.bcm_field_aset_test, aset, q.bcmFieldActionCount)

    def test_qualifier_sets_are_read_back(self):
        all_values = range(q.bcmFieldQualifyCount + self.USER_FIELDS)
        for values in ([], [0], [q.bcmFieldQualifyCount], all_values[-1:], all_values[::7], all_values):
            for separator in (',', ' ', ' | ', '\n', '; -'):
                text = formatted(q.format_field_qset, self.qualifiers(*values), separator)
                self.assertEqual(len(text.split(separator)) if text else 0, len(values))
                qset = self.qualifiers(1, 50, 300)
                self.assertEqual(q.parse_field_qset(text, qset), q.BCM_E_NONE)
                self.assertEqual(self.qset_members(qset), values)

    def test_actions_are_added_and_taken_away(self):
        aset = q.bcm_field_aset_t()
        drop, copy = q.bcmFieldActionDrop, q.bcmFieldActionCopyToCpu
        for text, add, expected in (('Drop', 1, [drop]), ('{bcmFieldActionCopyToCpu, drop}', 255,
                                                          [drop, copy]), ('', 1, [drop, copy]),
                                    ('Drop', 0, [copy]), ('Drop', 0, [copy]), ('copytocpu', 0, [])):
            self.assertEqual(q.parse_field_aset(text, aset, add), q.BCM_E_NONE, text)
            self.assertEqual(self.aset_members(aset), sorted(expected), text)
        for value in range(q.bcmFieldActionCount):
            q.bcm_field_aset_add(aset, value)
        text, other = formatted(q.format_field_aset, aset, ', '), q.bcm_field_aset_t()
        self.assertEqual(q.parse_field_aset(text, other, 1), q.BCM_E_NONE)
        self.assertEqual(self.aset_members(other), self.aset_members(aset))

    def test_unknown_names_change_nothing(self):
        qset, aset = self.qualifiers(1, 2), q.bcm_field_aset_t()
        q.bcm_field_aset_add(aset, 3)
        for text in ('x', 'Stage,x', 'Udf', 'Udf-1', 'Udf%d' % self.USER_FIELDS, 'Udf00', 'Udf4294967296',
                     'Count', 'y' * 1000000,
                     ','.join(['Stage'] * 10000 + ['?', 'z'])):
            self.assertEqual(q.parse_field_qset(text, qset), q.BCM_E_NOT_FOUND, text[:40])
            self.assertEqual(q.parse_field_aset(text, aset, 1), q.BCM_E_NOT_FOUND, text[:40])
        self.assertEqual((self.qset_members(qset), self.aset_members(aset)), ([1, 2], [3]))
        self.assertEqual((q.parse_field_qset('Stage', None), q.parse_field_aset('Drop', None, 1)),
                         (q.BCM_E_PARAM,) * 2)
        for form in (q.format_field_qset, q.format_field_aset):
            with self.assertRaises(ValueError):
                form(buffer_of(10), None, ',')
        null_calls(['parse_field_qset', 'parse_field_aset'], 3)


if __name__ == '__main__':
    unittest.main()
