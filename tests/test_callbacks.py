"""Callbacks: C function pointers, in pointer objects or in the docstrings of built-in functions."""
import ctypes
import struct
import unittest

import QuorelApiNew as q
import binding
from binding import error_of
from recording import recording
from simulator import traverse_callback
from type_table import pointer_at

TRAVERSE = '_p_f_int_p_bcm_l2_addr_s_p_void__int'
ADDRESS = 0x12ab34cd


class MethodDefinition(ctypes.Structure):
    """PyMethodDef"""
    _fields_ = [('name', ctypes.c_char_p), ('function', ctypes.c_void_p), ('flags', ctypes.c_int),
                ('doc', ctypes.c_char_p)]


def pack(address):
    """As a docstring holds it."""
    return ''.join('%02x' % ord(byte) for byte in struct.pack('P', address))


class CallbackTest(unittest.TestCase):
    def setUp(self):
        self.definitions = []

    def builtin(self, doc):
        """A built-in function with that docstring, never to be called and not to outlive the test."""
        definition = MethodDefinition('builtin', 1, 0x8, doc)
        self.definitions.append(definition)
        make = ctypes.pythonapi.PyCFunction_NewEx
        make.restype, make.argtypes = ctypes.py_object, [ctypes.c_void_p] * 3
        return make(ctypes.addressof(definition), None, None)

    def packed(self, descriptor, address=ADDRESS):
        return self.builtin('f(x)\n\nswig_ptr: _%s%s' % (pack(address), descriptor))


class OneCallback(CallbackTest):
    def setUp(self):
        CallbackTest.setUp(self)
        self.packet = q.bcm_pkt_s()
        self.pkt_type = '_p_f_int_p_bcm_pkt_s_p_void__void'

    def test_what_a_member_takes(self):
        for value, address in ((pointer_at(0x5678, self.pkt_type), 0x5678),
                               (self.packed(self.pkt_type), ADDRESS), (self.packed(self.pkt_type, 0), None),
                               (self.builtin('swig_ptr: NULL'), None), (None, None)):
            self.packet.call_back = pointer_at(0x1111, self.pkt_type)
            self.packet.call_back = value
            read = self.packet.call_back
            self.assertEqual(read and int(read), address)
        self.packet.call_back = self.packed(self.pkt_type)
        self.assertIn("'void (*)(int,bcm_pkt_s *,void *)'", repr(self.packet.call_back))
        self.assertFalse(callable(self.packet.call_back))
        self.assertIsNone(q.bcm_pkt_s_call_back_set(None, self.packed(self.pkt_type)))

    def test_what_a_member_refuses(self):
        digits = pack(ADDRESS)

        class Callable(object):
            def __call__(self):
                pass

        texts = {'digits': digits, 'type': self.pkt_type, 'other': TRAVERSE}
        refused = [self.builtin(doc % texts) for doc in (
            '', 'swig_ptr', 'swig_ptr:_%(digits)s%(type)s', 'swig_ptr: ', 'swig_ptr: %(digits)s%(type)s',
            'swig_ptr: NULL ', 'swig_ptr: NUL', 'swig_ptr: null', 'swig_ptr: _', 'swig_ptr: _%(digits)s',
            'swig_ptr: _%(digits)s%(other)s', 'swig_ptr: _%(digits)s%(type)s ',
            'swig_ptr: _ %(digits)s%(type)s', 'swig_ptr: _%(digits)s00%(type)s',
            'swig_ptr: _%(digits)s_%(type)s')]
        # Each digit is looked at.
        for place in range(len(digits)):
            for digit in 'ABFG/:`g@ \n':
                wrong = digits[:place] + digit + digits[place + 1:]
                refused.append(self.builtin('swig_ptr: _' + wrong + self.pkt_type))
            refused.append(self.builtin('swig_ptr: _' + digits[:place]))
            refused.append(self.builtin('swig_ptr: _' + digits[:place] + self.pkt_type))
        refused += [self.builtin(None), len, q.bcm_l2_traverse, q.l2_traverse_cb, lambda *args: 0, Callable,
                    Callable(), self.builtin, 5, 'swig_ptr: NULL', pointer_at(ADDRESS, TRAVERSE),
                    pointer_at(ADDRESS, '_p_bcm_pkt_s')]
        text = "in method 'bcm_pkt_s_call_back_set', argument 2 of type 'bcm_pkt_cb_f'"
        for value in refused:
            error = error_of(q.bcm_pkt_s_call_back_set, self.packet, value)
            self.assertEqual(error, (TypeError, text), (value, value.__doc__))
            self.assertIsNone(self.packet.call_back)

    def test_equivalent_types_convert(self):
        hooks = q.bcm_trans_ptr_t()
        hooks.tp_setup_tx = self.packed('_p_f_int_p_bcm_pkt_s__int')
        hooks.tp_pkt_free = hooks.tp_setup_tx
        self.assertEqual(int(hooks.tp_pkt_free), ADDRESS)
        # An intp is an int, in a signature too.
        twin = '_p_f_int_p_bcm_pkt_s__intp'
        hooks.tp_setup_tx = pointer_at(0x99, twin)
        hooks.tp_pkt_free = self.packed(twin)
        self.assertEqual((int(hooks.tp_setup_tx), int(hooks.tp_pkt_free)), (0x99, ADDRESS))

    def test_a_variable(self):
        name, kind = 'soc_phy_cb_xlate_port_func', '_p_f_int_p_int__int'
        self.addCleanup(setattr, q.cvar, name, getattr(q.cvar, name))
        for value, address in ((pointer_at(0x77, kind), 0x77), (self.packed(kind), ADDRESS), (None, None)):
            setattr(q.cvar, name, value)
            read = getattr(q.cvar, name)
            self.assertEqual(read and int(read), address)
        error = error_of(setattr, q.cvar, name, lambda *args: 0)
        self.assertEqual(error, (TypeError, "in variable '%s' of type 'int (*)(int,int *)'" % name))


class EveryCallback(CallbackTest):
    def test_functions_pass_the_address_on(self):
        checked, objects = 0, binding.Objects()
        for function in binding.read()[0]:
            numbered = list(enumerate(function.arguments))
            callbacks = [place for place, argument in numbered if argument.kind == 'callback']
            if function.origin != 'sdk' or not callbacks:
                continue
            # No such unit: nothing is done with the address.
            values = [objects.value(argument, 40 + place) for place, argument in numbered]
            for null in (False, True):
                for place in callbacks:
                    packed = self.packed(function.arguments[place].descriptor, ADDRESS + place)
                    values[place] = None if null else packed
                with recording() as calls:
                    function(*values)
                for place in callbacks:
                    expected = struct.pack('P', 0 if null else ADDRESS + place)
                    self.assertEqual(calls()[0][1][place], expected, function.doc)
                    checked += 1
            objects.release()
        self.assertGreater(checked, 80)

    def test_members_keep_the_address(self):
        members = [member for member in binding.read()[1] if member.kind == 'callback']
        self.assertGreater(len(members), 10)
        for member in members:
            record = getattr(q, member.record)()
            member.set(record, self.packed(member.descriptor))
            read = member.get(record)
            self.assertEqual(int(read), ADDRESS, member.name)
            member.set(record, read)
            self.assertEqual(int(member.get(record)), ADDRESS, member.name)


class Traversal(CallbackTest):
    def test_the_sdk_calls_what_it_was_given(self):
        entry = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(entry, '02:00:00:00:00:01', 1)
        self.assertEqual(q.bcm_l2_addr_add(0, entry), q.BCM_E_NONE)
        self.addCleanup(q.bcm_l2_addr_delete, 0, '02:00:00:00:00:01', 1)
        seen = []

        def note(unit, address, user_data):
            seen.append((unit, address[0].mac_text(), user_data))
            return 0

        callback, cookie = traverse_callback(note), q.new_uint32p()
        function = ctypes.cast(callback, ctypes.c_void_p).value
        for value in (pointer_at(function, TRAVERSE), self.packed(TRAVERSE, function)):
            self.assertEqual(q.bcm_l2_traverse(0, value, cookie), q.BCM_E_NONE)
            self.assertEqual(seen.pop(), (0, '02:00:00:00:00:01', int(cookie)))
            self.assertEqual(seen, [])


if __name__ == '__main__':
    unittest.main()
