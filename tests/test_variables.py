"""cvar: C variables as attributes."""
import ctypes
import subprocess
import sys
import unittest

import QuorelApiNew as q
from binding import error_of
from recording import library

cvar = q.cvar


def set_error(name, value):
    return error_of(setattr, cvar, name, value)


class Variables(unittest.TestCase):
    def test_reads_and_writes_are_of_the_c_variable(self):
        lines = ctypes.c_int.in_dll(library, 'sh_set_more_lines')
        before = lines.value
        cvar.sh_set_more_lines = 17
        self.assertEqual(lines.value, 17)
        lines.value = -3
        self.assertEqual(cvar.sh_set_more_lines, -3)
        for value, exception in (('x', TypeError), (2 ** 31, OverflowError), (None, TypeError), (1.5, TypeError)):
            self.assertEqual(set_error('sh_set_more_lines', value),
                             (exception, "in variable 'sh_set_more_lines' of type 'int'"))
        self.assertEqual(cvar.sh_set_more_lines, -3)
        cvar.sh_set_more_lines = before

    def test_read_only_variables_have_two_messages(self):
        self.assertEqual(cvar.MemNoName, -1)
        self.assertEqual(set_error('MemNoName', 1), (AttributeError, 'Variable MemNoName is read-only.'))
        for name, kind in (('soc_regtypenames', 'char *[]'), ('soc_regtype_gran', 'int []'),
                           ('bcm_l2_flags_str', 'char *[]')):
            refused = (AttributeError, "in variable 'read-only %s' of type '%s'" % (name, kind))
            self.assertEqual(set_error(name, None), refused)
            self.assertEqual(error_of(delattr, cvar, name), refused)
        self.assertIn("'char **'", repr(cvar.soc_regtypenames))
        self.assertEqual(q.intp_value(q.intp.frompointer(cvar.soc_regtype_gran)), 1)

    def test_unknown_names(self):
        unknown = (AttributeError, "Unknown C global variable 'no_such_thing'")
        self.assertEqual(error_of(getattr, cvar, 'no_such_thing'), unknown)
        self.assertEqual(set_error('no_such_thing', 1), unknown)
        self.assertEqual(error_of(delattr, cvar, 'sh_set_rctest')[0], AttributeError)

    def test_strings_are_copied_and_replaced(self):
        before = cvar._build_user
        for text in ('abc', '', 'a much longer text than before'):
            given = ''.join(list(text))
            cvar._build_user = given
            del given
            self.assertEqual(cvar._build_user, text)
            self.assertEqual(ctypes.c_char_p.in_dll(library, '_build_user').value, text)
        for value in (5, u'text', None):
            self.assertEqual(set_error('_build_user', value),
                             (TypeError, "in variable '_build_user' of type 'char *'"))
        self.assertEqual(cvar._build_user, text)
        cvar._build_user = before

    def test_arrays_are_copied_whole(self):
        table = (ctypes.c_void_p * 66).in_dll(library, 'phy_port_info')
        infos = [q.soc_phy_info_t() for _ in range(2)]
        source = q.new_uint8Array(66 * ctypes.sizeof(ctypes.c_void_p))
        for value in (5, q.intp(), source):
            self.assertEqual(set_error('phy_port_info', value), (
                TypeError, "in variable 'phy_port_info' of type 'soc_phy_info_t *[SOC_MAX_NUM_DEVICES]'"))
        self.assertEqual(set_error('phy_port_info', None), (ValueError, 'invalid null reference in variable '
                         "'phy_port_info' of type 'soc_phy_info_t *[SOC_MAX_NUM_DEVICES]'"))
        pointer = cvar.phy_port_info
        self.assertEqual((int(pointer), pointer.own()), (ctypes.addressof(table), False))
        self.assertIn("'soc_phy_info_t **'", repr(pointer))
        table[65] = int(infos[0].this)
        cvar.phy_port_info = pointer
        self.assertEqual(table[65], int(infos[0].this))
        table[65] = None
        q.delete_uint8Array(source)

    def test_function_pointers(self):
        self.assertIsNone(cvar.soc_phy_cb_xlate_port_func)
        text = "in variable 'soc_phy_cb_xlate_port_func' of type 'int (*)(int,int *)'"
        for value in (len, lambda unit, port: 0, q.intp()):
            self.assertEqual(set_error('soc_phy_cb_xlate_port_func', value), (TypeError, text))
        slot = ctypes.c_void_p.in_dll(library, 'soc_phy_cb_xlate_port_func')
        slot.value = ctypes.cast(library.bcm_l2_init, ctypes.c_void_p).value
        function = cvar.soc_phy_cb_xlate_port_func
        self.assertEqual(int(function), slot.value)
        cvar.soc_phy_cb_xlate_port_func = None
        self.assertIsNone(slot.value)
        cvar.soc_phy_cb_xlate_port_func = function
        self.assertEqual(slot.value, int(function))
        slot.value = None

    def test_text_lists_the_last_added_first(self):
        self.assertEqual(repr(cvar), '<Swig global variables>')
        names = str(cvar)[1:-1].split(', ')
        self.assertEqual(names[:4], ['soc_regtype_gran', 'soc_regtypenames', 'soc_phy_cb_xlate_port_func', 'phy_rmap'])
        self.assertEqual(names[-2:], ['bcm_l2_flags_count', 'bcm_l2_flags_str'])
        self.assertTrue(all(error_of(getattr, cvar, name) is None for name in names))
        printed = subprocess.check_output([sys.executable, '-c', 'import QuorelApiNew as q; print q.cvar,'])
        self.assertEqual(printed.split('\n')[0], 'Swig global variables ' + str(cvar))


if __name__ == '__main__':
    unittest.main()
