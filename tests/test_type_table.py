"""The type table as the shared runtime lays it out."""
import unittest

import QuorelApiNew as q
import type_table


def casts_of(info):
    cast, found = info.cast, []
    while cast:
        found.append((cast.contents.type.contents.name, bool(cast.contents.converter)))
        cast = cast.contents.next
    return found


class TypeTable(unittest.TestCase):
    def setUp(self):
        self.types = type_table.descriptors()

    def test_it_is_sorted_and_terminated(self):
        names = [info.name for info in self.types]
        self.assertEqual(names, sorted(set(names)))
        self.assertFalse(type_table.module_record().types[len(names)])

    def test_spellings_are_sorted_and_end_in_the_one_that_repr_shows(self):
        for info in self.types:
            spellings = info.str.split('|')
            self.assertEqual(spellings, sorted(set(spellings)))
        by_name = dict((info.name, info.str) for info in self.types)
        self.assertEqual(by_name['_p_bcm_l2_addr_s'], 'bcm_l2_addr_s *|bcm_l2_addr_t *')
        self.assertEqual(by_name['_p__shr_pbmp_t'].split('|')[0], '_shr_pbmp_t *')
        self.assertIn('int (*)(int,bcm_l2_addr_s *,void *)', by_name['_p_f_int_p_bcm_l2_addr_s_p_void__int'])

    def test_casts_are_the_identity_and_the_equivalences_of_the_pointer_classes(self):
        equivalences = 0
        for info in self.types:
            casts = casts_of(info)
            self.assertIn((info.name, False), casts)
            for name, converted in casts:
                if name != info.name:
                    equivalences += 1
                    self.assertTrue(converted)
                    self.assertTrue(name.endswith(('intp', 'uintp', 'uint16p')), name)
        self.assertGreater(equivalences, 3)
        direct = dict((info.name, casts_of(info)) for info in self.types)
        self.assertEqual(sorted(direct['_p_unsigned_int']), [('_p_uintp', True), ('_p_unsigned_int', False)])
        self.assertEqual(direct['_p_uintp'], [('_p_uintp', False)])

    def test_client_data_is_owned_where_a_class_is_registered(self):
        registered = set(info.name for info in self.types if info.clientdata)
        self.assertIn('_p_bcm_l2_addr_s', registered)
        self.assertNotIn('_p_int', registered)
        self.assertTrue(all(info.owndata for info in self.types if info.clientdata))

    def test_a_used_cast_moves_to_the_head(self):
        info = [info for info in self.types if info.name == '_p_int'][0]
        q.bcm_port_enable_get(0, 1, q.intp())
        self.assertEqual(casts_of(info)[0], ('_p_intp', True))
        self.assertFalse(info.cast.contents.prev)
        self.assertEqual(len(casts_of(info)), 2)


if __name__ == '__main__':
    unittest.main()
