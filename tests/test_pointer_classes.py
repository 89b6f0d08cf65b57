"""Single-value pointer classes."""
import unittest

import QuorelApiNew as q
from binding import error_of, wrong_counts


class PointerClasses(unittest.TestCase):
    def test_values_and_their_limits(self):
        cases = [('intp', 'int', -2 ** 31, 2 ** 31 - 1), ('uintp', 'unsigned int', 0, 2 ** 32 - 1),
                 ('uint16p', 'unsigned short', 0, 65535), ('uint32p', 'uint32', 0, 2 ** 32 - 1),
                 ('uint64p', 'uint64', 0, 2 ** 64 - 1)]
        for name, element, least, greatest in cases:
            pointer = getattr(q, name)()
            text = "in method '%s_assign', argument 2 of type '%s'" % (name, element)
            for value in (least, greatest, 7, 2 ** 15):
                pointer.assign(value)
                self.assertEqual(pointer.value(), value)
                self.assertIs(type(pointer.value()), int if value < 2 ** 31 else long)
            for value, exception in ((least - 1, OverflowError), (greatest + 1, OverflowError), (1.0, TypeError)):
                self.assertEqual(error_of(pointer.assign, value), (exception, text))
            self.assertEqual(pointer.value(), 2 ** 15)

    def test_cast_and_frompointer_alias_the_element(self):
        pointer = q.uint32p()
        pointer.assign(5)
        alias = q.uint32p.frompointer(pointer.cast())
        self.assertIs(type(alias), q.uint32p)
        alias.assign(6)
        self.assertEqual(pointer.value(), 6)
        self.assertFalse(alias.thisown or pointer.cast().own())
        self.assertIsNone(q.uint32p_frompointer(None))
        self.assertEqual(error_of(q.intp_frompointer, q.uint32p()),
                         (TypeError, "in method 'intp_frompointer', argument 1 of type 'int *'"))

    def test_only_equivalent_classes_are_accepted_directly(self):
        accepted = [(q.bcm_port_enable_get, q.intp), (q.bcm_vlan_default_get, q.uint16p)]
        for call, make in accepted:
            arguments = (0, 1) if call is q.bcm_port_enable_get else (0,)
            pointer = make()
            self.assertEqual(call(*arguments + (pointer,)), 0)
            self.assertEqual(call(*arguments + (pointer.cast(),)), 0)
        entry = q.bcm_l2_addr_t()
        for refused, cast in ((q.uint32p(), 'uint32 *'), (q.uint64p(), 'uint64 *')):
            call = q.bcm_l2_stat_get32 if cast == 'uint32 *' else q.bcm_l2_stat_get
            text = "in method '%s', argument 4 of type '%s'" % (call.__name__, cast)
            self.assertEqual(error_of(call, 0, entry, 0, refused), (TypeError, text))
            self.assertEqual(error_of(call, 0, entry, 0, refused.cast()), None)
        self.assertIsNone(error_of(q.bcm_l2_stat_get32, 0, entry, 0, q.uintp()))

    def test_null_and_foreign_selves(self):
        self.assertEqual(error_of(q.intp_value, None),
                         (ValueError, "invalid null reference in method 'intp_value', argument 1 of type 'intp *'"))
        self.assertIsNone(q.intp_assign(None, 5))
        self.assertEqual(error_of(q.delete_intp, q.uintp()),
                         (TypeError, "in method 'delete_intp', argument 1 of type 'intp *'"))
        self.assertEqual(error_of(q.new_intp, 1), (TypeError, 'new_intp expected 0 arguments, got 1'))

    def test_elements_that_are_records_hold_copies(self):
        pointer, record = q.appl_dcmn_init_param_tp(), q.appl_dcmn_init_param_t()
        record.base_modid = 7
        pointer.assign(record)
        record.base_modid = 8
        copy = pointer.value()
        self.assertIs(type(copy), q.appl_dcmn_init_param_t)
        self.assertTrue(copy.thisown)
        copy.base_modid += 1
        self.assertEqual((copy.base_modid, pointer.value().base_modid), (8, 7))
        pointer.cast().base_modid = 9
        self.assertEqual(pointer.value().base_modid, 9)
        where = "in method 'appl_dcmn_init_param_tp_assign', argument 2 of type 'appl_dcmn_init_param_t'"
        self.assertEqual(error_of(pointer.assign, None), (ValueError, 'invalid null reference ' + where))
        self.assertEqual(error_of(pointer.assign, q.intp()), (TypeError, where))
        self.assertEqual(pointer.value().base_modid, 9)
        del pointer
        self.assertEqual(copy.base_modid, 8)

    def test_numbers_of_arguments(self):
        pointer_class = [('new_', '', 0), ('delete_', '', 1), ('', '_assign', 2), ('', '_value', 1),
                         ('', '_cast', 1), ('', '_frompointer', 1), ('', '_swigregister', 1)]
        for name in ('intp', 'uint64p', 'appl_dcmn_init_param_tp'):
            for before, after, count in pointer_class:
                for error, expected in wrong_counts(before + name + after, count):
                    self.assertEqual(error, expected)

    def test_docstrings(self):
        docs = ['new_intp() -> intp', 'delete_intp(self)', 'intp_assign(self, value)', 'intp_value(self) -> int',
                'intp_cast(self) -> int *', 'intp_frompointer(t) -> intp']
        for doc in docs:
            self.assertEqual(getattr(q, doc[:doc.index('(')]).__doc__, doc)
        self.assertEqual(q.intp_swigregister.__doc__, '')


if __name__ == '__main__':
    unittest.main()
