"""What the simulator answers by rule: settings are kept, records are entered, found, visited and removed."""
import ctypes
import glob
import os
import re
import unittest

import QuorelApiNew as q
import rules
from recording import library
from simulator import SwitchTest, pointer

UNIT = 1


class RulesTest(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        self.attach_afresh()
        self.addCleanup(library.bcm_detach, UNIT)

    def attach_afresh(self):
        library.bcm_detach(UNIT)
        self.done(library.bcm_attach(UNIT, None, None, 0))


class EveryPair(RulesTest):
    """Each setter with its getter, called as C does."""

    @classmethod
    def setUpClass(cls):
        cls.functions = rules.read()
        cls.pairs = rules.pairs(cls.functions)

    def results(self, getter, keys):
        """Status, and what the getter wrote to each of its results."""
        arguments = [key if key is not None else
                     ctypes.create_string_buffer(rules.UNTOUCHED * rules.BUFFER_SIZE, rules.BUFFER_SIZE)
                     for key in keys]
        status = getter(UNIT, *arguments)
        return status, [argument.raw.rstrip(rules.UNTOUCHED)
                        for argument, key in zip(arguments, keys) if key is None]

    def test_values_are_kept_by_key(self):
        for writer, getter in self.pairs:
            if any(parameter.role == 'key,value' for parameter in writer.parameters):
                continue
            self.attach_afresh()
            self.assertTrue(writer.known, writer.name)
            given = [parameter.argument(5 + number) for number, parameter in enumerate(writer.parameters)]
            keys = [argument if parameter.role == 'key' else None
                    for argument, parameter in zip(given, writer.parameters)]
            status, fresh = self.results(getter, keys)
            if getter.operation == 'find':
                self.assertEqual((status, ''.join(fresh)), (q.BCM_E_NOT_FOUND, ''), getter.name)
            else:
                self.assertEqual((status, ''.join(fresh).strip('\0')), (0, ''), getter.name)
            self.assertEqual(writer(UNIT, *given), 0, writer.name)
            status, kept = self.results(getter, keys)
            self.assertEqual(status, 0, getter.name)
            values = [argument for argument, key in zip(given, keys) if key is None]
            for value, result, before in zip(values, kept, fresh):
                if isinstance(value, ctypes.Array):
                    value = value.raw[:len(result)]
                self.assertEqual(bytearray(value), bytearray(result), getter.name)
                self.assertTrue(len(result) > 0 and len(result) == len(before or result), getter.name)
            self.assertEqual(getter(UNIT + 1, *given), q.BCM_E_UNIT, getter.name)
            for number, key in enumerate(keys):
                # Another key, from one that none of the values shares.
                if key is not None:
                    others = list(keys)
                    others[number] = writer.parameters[number].argument(30 + number)
                    self.assertEqual(self.results(getter, others), (q.BCM_E_NOT_FOUND, [''] * len(kept))
                                     if getter.operation == 'find' else (0, fresh), getter.name)
        self.assertGreater(len(self.pairs), 100)

    def test_keys_may_be_members_of_the_record(self):
        checked = 0
        for writer, getter in self.pairs:
            roles = [parameter.role for parameter in writer.parameters]
            if 'key,value' not in roles:
                continue
            record = roles.index('key,value')
            given = [parameter.argument(5 + number) for number, parameter in enumerate(writer.parameters)]
            wanted = given[record].raw
            self.assertEqual(writer(UNIT, *given), 0, writer.name)
            keys = 0
            size = writer.parameters[record].size
            for place in range(size):
                changed = ctypes.create_string_buffer(wanted, rules.BUFFER_SIZE)
                changed[place] = chr(ord(wanted[place]) ^ 1)
                status = getter(UNIT, *(given[:record] + [changed] + given[record + 1:]))
                keys += status == q.BCM_E_NOT_FOUND
                if status != q.BCM_E_NOT_FOUND:
                    self.assertTrue((status, changed.raw) == (0, wanted), getter.name)
            self.assertTrue(0 < keys < size, getter.name)
            checked += 1
        self.assertGreater(checked, 5)

    def test_null_pointers_and_ports_are_refused(self):
        hand = rules.by_hand()
        for function in self.functions:
            arguments = [parameter.argument(5) if parameter.is_pointer or parameter.type else None
                         for parameter in function.parameters]
            for number, parameter in enumerate(function.parameters):
                optional = parameter.role == 'other' and function.operation in (
                        'object clear', 'object add', 'object set', 'object remove')  # the data of callbacks
                if (parameter.is_pointer and function.name not in hand and not optional
                        and not function.operation.endswith('traverse')):
                    self.assertEqual(function(UNIT, *(arguments[:number] + [None] + arguments[number + 1:])),
                                     q.BCM_E_PARAM, function.name)

    def test_no_table_is_partly_written_by_hand(self):
        """But for those that hand-written functions keep by the same rules, under the same name."""
        hand = rules.by_hand()
        tables = {}
        for function in self.functions:
            if function.table == '-':  # of modules
                continue
            tables.setdefault(function.table, set()).add(function.name in hand)
        kept = set()
        for source in glob.glob(os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'sdk', 'src', '*', '*.cpp')):
            with open(source) as text:
                kept.update(re.findall(r'rules::Table \w+ = \{\s*"(\w+)"', text.read()))
        self.assertEqual([table for table, kinds in sorted(tables.items()) if len(kinds) > 1 and table not in kept], [])


class Reports(RulesTest):
    """What is said of how functions are answered is so."""

    def test_every_function_is_in_the_reports_once(self):
        answers = rules.report('answers.tsv')
        names = [row[0] for row in answers]
        bound = set(re.match(r'\w+', row[2]).group() for row in rules.report('binding.tsv')
                    if row[0] in ('function', 'overload') and row[3] == 'sdk')
        self.assertEqual(len(names), len(set(names)))
        self.assertGreater(len(bound & set(names)), 1000)
        families = rules.report('families.tsv')
        for row in families[1:]:
            in_family = [kind for _, family, kind, _ in answers if row[0] in (family, 'all')]
            self.assertEqual(row[1:], [str(in_family.count(kind)) for kind in families[0][1:]], row)
        self.assertEqual(sum(int(number) for number in families[-1][1:]), len(names))

    def test_what_is_unavailable_says_so_and_nothing_else_does(self):
        kinds = dict((name, (kind, why)) for name, _, kind, why in rules.report('answers.tsv'))
        nothing = (None,) * 24
        self.addCleanup(library.bcm_init, 0)  # some of them detach what they belong to
        for name, (kind, why) in kinds.items():
            # Those written by hand have tests of their own; a void function has no status.
            if kind != 'by hand' and why not in ('gives no status', 'is named as its record'):
                status = getattr(library, name)(*nothing)
                self.assertEqual(status == q.BCM_E_UNAVAIL, kind == 'unavailable', name)
        self.assertEqual(kinds['bcm_l2_addr_add'], ('by hand', 'l2_address.cpp'))
        self.assertEqual(kinds['bcm_port_jam_get'], ('by rule', 'kept, without effect on packets: mirrors bcm_port_jam_set'))


    def test_what_is_unavailable_says_why(self):
        """In words of its interface file, each of which is needed."""
        rules_found = dict((row[0], row[2]) for row in rules.report('rules.tsv'))
        unavailable = [row for row in rules.report('answers.tsv') if row[2] == 'unavailable']
        self.assertEqual([row[0] for row in unavailable if rules_found[row[0]] != 'unavailable'], [])
        interface = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'interface')
        for path in glob.glob(os.path.join(interface, '*.toml')):
            family = os.path.basename(path)[:-len('.toml')]
            said = set(why for _, of, _, why in unavailable if of == family)
            with open(path) as text:
                section = re.search(r'^\[unavailable\]\n((?:.+\n)*)', text.read(), re.M)
            written = set(re.findall(r'= "(.*)"$', section.group(1), re.M)) if section else set()
            self.assertEqual(said, written, family)

    def test_the_document_has_them(self):
        with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'docs', 'simulated-switch.md')) as text:
            document = [line.rstrip('\n') for line in text]
        table = ['\t'.join(row) for row in rules.report('answers.md')]
        begin = document.index(table[0])
        self.assertEqual(document[begin:begin + len(table)], table,
                         'docs/simulated-switch.md does not have the table of generated/answers.md')


class Settings(RulesTest):
    def test_ports_have_one_setting_under_all_their_names(self):
        self.done(q.bcm_port_jam_set(0, 5, 9000))
        self.addCleanup(q.bcm_port_jam_set, 0, 5, 0)
        self.assertEqual(self.value(q.bcm_port_jam_get, 1 << 26 | 5), 9000)
        self.assertEqual(self.value(q.bcm_port_jam_get, 6), 0)
        for port in (65, -1, 3 << 26):
            self.assertEqual(q.bcm_port_jam_set(0, port, 9000), q.BCM_E_PORT)
            self.assertEqual(q.bcm_port_jam_get(0, port, q.intp()), q.BCM_E_PORT)
        self.assertEqual(q.bcm_cosq_gport_dynamic_sched_set(0, 65, 1, 1), q.BCM_E_PORT)

    def test_gports_name_what_is_there(self):
        group = q.intp()
        self.done(q.bcm_cosq_gport_add(0, 5, 4, q.BCM_COSQ_GPORT_UCAST_QUEUE_GROUP, group))
        self.done(q.bcm_cosq_gport_dynamic_sched_set(0, group.value(), 1, 1))
        self.assertEqual(self.value(q.bcm_cosq_gport_dynamic_sched_get, group.value(), 1), 1)
        self.done(q.bcm_cosq_gport_dynamic_sched_set(0, group.value(), 1, 0))
        self.done(q.bcm_cosq_gport_delete(0, group.value()))
        # A queue group that is gone, a trunk, a VLAN's port, and a kind of which there are none.
        for gport in (group.value(), 3 << 26 | 7, 20 << 26 | 1, 7 << 26 | 900):
            self.assertEqual(q.bcm_cosq_gport_dynamic_sched_set(0, gport, 1, 1), q.BCM_E_NOT_FOUND)

    def test_units_are_apart_and_start_afresh(self):
        self.done(q.bcm_port_jam_set(UNIT, 5, 17))
        self.assertEqual(self.value(q.bcm_port_jam_get, 5), 0)
        value = q.intp()
        self.done(q.bcm_port_jam_get(UNIT, 5, value))
        self.assertEqual(value.value(), 17)
        library.bcm_detach(UNIT)
        self.assertEqual(q.bcm_port_jam_get(UNIT, 5, value), q.BCM_E_UNIT)
        self.attach_afresh()
        self.done(q.bcm_port_jam_get(UNIT, 5, value))
        self.assertEqual(value.value(), 0)


translation_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_uint16,
                                        ctypes.c_uint16, ctypes.c_int, ctypes.c_void_p)
policer_callback = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.POINTER(ctypes.c_uint32),
                                    ctypes.c_void_p)


class Records(RulesTest):
    def translations(self, callback=None):
        """What a traversal visits."""
        visited = []

        def visit(unit, port, old, new, priority, _):
            visited.append((unit, port, old, new, priority))
            return callback(old) if callback else 0
        status = library.bcm_vlan_translate_traverse(UNIT, translation_callback(visit), None)
        return status, sorted(visited)

    def test_entries_with_keys(self):
        self.done(q.bcm_vlan_translate_add(UNIT, 5, 10, 20, 3))
        self.done(q.bcm_vlan_translate_add(UNIT, 6, 11, 21, 4))
        self.assertEqual(q.bcm_vlan_translate_add(UNIT, 5, 10, 22, 3), q.BCM_E_EXISTS)
        self.assertEqual(self.translations(), (0, [(UNIT, 5, 10, 20, 3), (UNIT, 6, 11, 21, 4)]))
        # A callback may remove what is still to be visited, or end the traversal.
        status, visited = self.translations(lambda old: library.bcm_vlan_translate_delete_all(UNIT))
        self.assertEqual((status, len(visited), self.translations()), (0, 1, (0, [])))
        self.done(q.bcm_vlan_translate_add(UNIT, 5, 10, 20, 3))
        self.assertEqual(self.translations(lambda old: -old)[0], -10)
        self.assertEqual(self.translations(lambda old: library.bcm_detach(UNIT))[0], 0)
        self.attach_afresh()
        self.assertEqual(q.bcm_vlan_translate_delete(UNIT, 5, 10), q.BCM_E_NOT_FOUND)
        self.assertEqual(library.bcm_vlan_translate_traverse(UNIT, None, None), q.BCM_E_PARAM)

    def policer(self, rate, flags=0):
        config = q.bcm_policer_config_t()
        config.ckbits_sec, config.flags = rate, flags
        return config

    def create(self, rate, flags=0, policer=0):
        """(status, id)"""
        config, policer = self.policer(rate, flags), ctypes.c_int(policer)
        return library.bcm_policer_create(UNIT, pointer(config), ctypes.byref(policer)), policer.value

    def rate(self, policer):
        config = self.policer(0)
        status = library.bcm_policer_get(UNIT, policer, pointer(config))
        return status or config.ckbits_sec

    def test_objects_with_ids(self):
        self.assertEqual([self.create(100), self.create(200)], [(0, 1), (0, 2)])
        self.assertEqual(self.create(300, q.BCM_POLICER_WITH_ID, 256), (0, 256))
        self.assertEqual(self.create(300, q.BCM_POLICER_WITH_ID, 2), (q.BCM_E_EXISTS, 2))
        self.assertEqual(self.create(300, q.BCM_POLICER_WITH_ID, 0), (q.BCM_E_PARAM, 0))
        self.assertEqual(self.create(250, q.BCM_POLICER_WITH_ID | q.BCM_POLICER_REPLACE, 2), (0, 2))
        config = self.policer(150)
        self.done(library.bcm_policer_set(UNIT, 1, pointer(config)))
        self.assertEqual(library.bcm_policer_set(UNIT, 3, pointer(config)), q.BCM_E_NOT_FOUND)
        visited = []
        self.done(library.bcm_policer_traverse(
            UNIT, policer_callback(lambda unit, policer, config, _: visited.append(policer) or 0), None))
        self.assertEqual([(policer, self.rate(policer)) for policer in visited],
                         [(1, 150), (2, 250), (256, 300)])
        self.done(library.bcm_policer_destroy(UNIT, 1))
        self.assertEqual((self.rate(1), library.bcm_policer_destroy(UNIT, 1)), (q.BCM_E_NOT_FOUND,) * 2)
        self.assertEqual(self.create(400), (0, 1))
        self.done(library.bcm_policer_destroy_all(UNIT))
        self.assertEqual([self.rate(policer) for policer in (1, 2, 256)], [q.BCM_E_NOT_FOUND] * 3)

    def test_objects_are_found_by_value(self):
        egress, found = q.bcm_l3_egress_t(), ctypes.c_int()
        for expected in (1, 2):
            egress.vlan = 10 * expected
            self.done(library.bcm_l3_egress_create(UNIT, 0, pointer(egress), ctypes.byref(found)))
        self.done(library.bcm_l3_egress_find(UNIT, pointer(egress), ctypes.byref(found)))
        self.assertEqual(found.value, 2)
        egress.vlan = 30
        self.assertEqual(library.bcm_l3_egress_find(UNIT, pointer(egress), ctypes.byref(found)),
                         q.BCM_E_NOT_FOUND)


if __name__ == '__main__':
    unittest.main()
