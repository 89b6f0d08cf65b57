"""cvar: C variables as attributes."""
import ctypes
import subprocess
import sys
import unittest

import QuorelApiNew as q
from binding import error_of
from console import printed, run
from recording import library

cvar = q.cvar


def set_error(name, value):
    return error_of(setattr, cvar, name, value)


def layer_2_answers():
    """What the address table answers and prints where flags are known and where they are not."""
    entry, stranger, every_flag = [q.bcm_l2_addr_t() for _ in range(3)]
    for address, flags in ((entry, 2 ** 14 - 1), (stranger, 2 ** 14)):
        q.bcm_l2_addr_t_init(address, '02:00:5e:00:00:01', 1)
        address.port, address.flags = 3, flags & ~(q.BCM_L2_TRUNK_MEMBER | q.BCM_L2_MCAST | q.BCM_L2_LOCAL_CPU)
    every_flag.flags = 2 ** 32 - 1
    answers = [q.bcm_l2_addr_add(0, entry), q.bcm_l2_addr_add(0, stranger), printed(q.bcm_l2_addr_dump, 0, entry),
               q.bcm_l2_replace_match(0, q.BCM_L2_REPLACE_MATCH_STATIC, entry, q.bcm_l2_addr_t(), stranger, every_flag)]
    q.bcm_l2_addr_delete(0, entry.mac, entry.vid)
    return answers


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

    def test_replaced_strings_are_freed(self):
        class Mallinfo(ctypes.Structure):
            _fields_ = [(name, ctypes.c_int) for name in 'arena ordblks smblks hblks hblkhd usmblks fsmblks uordblks '
                        'fordblks keepcost'.split()]

        library.mallinfo.restype = Mallinfo
        before, text = cvar._build_user, 'x' * 2 ** 20
        cvar._build_user = text

        def in_use():
            info = library.mallinfo()
            return info.hblkhd + info.uordblks

        start = in_use()
        for _ in range(50):
            cvar._build_user = text
        self.assertLess(in_use() - start, 10 * len(text))
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

    def test_no_number_misleads_the_switch(self):
        numbers = [name for name in str(cvar)[1:-1].split(', ')
                   if type(getattr(cvar, name)) is int and name != 'MemNoName']
        self.assertEqual(len(numbers), 12)
        usual = layer_2_answers()
        for name in numbers:
            before = getattr(cvar, name)
            for value in (-2 ** 31, -1, 0, 2, 32, 40, 2 ** 31 - 1):
                setattr(cvar, name, value)
                self.assertEqual(layer_2_answers(), usual, (name, value))
                for line in ('version all', 'set', 'if 1 "echo yes"', 'loop 2 "echo again"', 'rcload none', 'none'):
                    run(line)
            setattr(cvar, name, before)

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
