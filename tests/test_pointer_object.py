"""Wrapped pointer objects: ownership, chains, text and number forms, and where a conversion looks for one."""
import ctypes
import gc
import os
import subprocess
import sys
import time
import unittest
import weakref

import QuorelApiNew as q
from binding import error_of
from type_table import descriptors

# A cast to what lies a word behind.
NEXT_WORD = ctypes.CFUNCTYPE(ctypes.c_void_p, ctypes.c_void_p, ctypes.POINTER(ctypes.c_int))(
    lambda pointer, new_memory: pointer + 4)

DELETE = "in method 'delete_bcm_l2_addr_t', argument 1 of type 'bcm_l2_addr_s *'"


def output_of(script):
    """What a script prints in a process of its own, which may lose memory."""
    options = os.environ.get('ASAN_OPTIONS', '') + ':detect_leaks=0'
    return subprocess.check_output([sys.executable, '-c', script], env=dict(os.environ, ASAN_OPTIONS=options),
                                   stderr=subprocess.STDOUT)


class Ownership(unittest.TestCase):
    def test_own_reports_and_sets(self):
        pointer = q.new_bcm_l2_addr_t()
        self.assertIs(pointer.own(), True)
        self.assertIs(pointer.own(0), True)
        self.assertIs(pointer.own(), False)
        self.assertIs(pointer.own([1]), False)
        self.assertIsNone(pointer.disown())
        self.assertIs(pointer.own(), False)
        self.assertIsNone(pointer.acquire())
        self.assertIs(pointer.own(), True)
        self.assertEqual(error_of(pointer.own, 1, 2)[0], TypeError)

    def test_a_failing_truth_value_changes_nothing(self):
        class Doubtful(object):
            def __nonzero__(self):
                raise KeyError('doubt')
        pointer = q.new_intp()
        self.assertEqual(error_of(pointer.own, Doubtful()), (KeyError, "'doubt'"))
        self.assertIs(pointer.own(), True)

    def test_delete_takes_the_ownership(self):
        pointer = q.new_bcm_l2_addr_t()
        self.assertIsNone(q.delete_bcm_l2_addr_t(pointer))
        self.assertIs(pointer.own(), False)
        record = q.bcm_l2_addr_t()
        q.delete_bcm_l2_addr_t(record)
        self.assertFalse(record.thisown)
        self.assertIsNone(q.delete_bcm_l2_addr_t(None))
        self.assertEqual(error_of(q.delete_bcm_l2_addr_t, q.new_intp()), (TypeError, DELETE))

    def test_a_void_pointer_member_takes_the_ownership(self):
        record, value = q.any_t(), q.uint32p()
        record.ptr = value
        self.assertIs(value.thisown, False)
        value.thisown = True

    def test_pointers_into_a_record_own_nothing(self):
        ring = q.bcm_l2_ring_t()
        self.assertIs(ring.vlan_vector.own(), False)
        self.assertIs(q.intp().cast().own(), False)


class Chains(unittest.TestCase):
    def test_the_first_that_converts_is_used(self):
        number, address = q.new_intp(), q.new_bcm_l2_addr_t()
        q.bcm_l2_addr_t_vid_set(address, 77)
        self.assertIsNone(number.next())
        self.assertIsNone(number.append(address))
        self.assertIs(number.next(), address)
        self.assertEqual(q.bcm_l2_addr_t_vid_get(number), 77)
        self.assertEqual(repr(number),
                         "<Swig Object of type 'intp *' at 0x%x><Swig Object of type 'bcm_l2_addr_t *' at 0x%x>"
                         % (id(number), id(address)))
        q.delete_bcm_l2_addr_t(number)
        self.assertEqual((number.own(), address.own()), (True, False))

    def test_only_pointer_objects_are_appended(self):
        for other in (5, None, q.intp()):
            self.assertEqual(error_of(q.new_intp().append, other), (TypeError, 'Attempt to append a non SwigPyObject'))

    def test_a_ring_is_searched_to_its_end(self):
        lead, first, second = q.new_uint32p(), q.new_uint32p(), q.new_intp()
        lead.append(first)
        first.append(second)
        second.append(first)
        for start in (lead, first, second):
            self.assertEqual(error_of(q.delete_bcm_l2_addr_t, start), (TypeError, DELETE))
            self.assertEqual(q.intp_cast(start), second)
            self.assertIn(repr(q.new_intp())[:30], repr(start))
        second.append(q.new_intp())

    def test_a_long_chain_grows_at_both_ends(self):
        number = q.intp()
        first = last = q.intp_cast(number)
        started = time.clock()
        for _ in xrange(100000):
            link = q.intp_cast(number)
            link.append(first)
            first = link
            link = q.intp_cast(number)
            last.append(link)
            last = link
        self.assertLess(time.clock() - started, 10)

    def test_a_link_that_somebody_holds_keeps_its_own(self):
        number = q.intp()
        first, second, third = (q.intp_cast(number) for _ in range(3))
        first.append(second)
        second.append(third)
        del first
        self.assertIs(second.next(), third)

    def test_a_cast_may_move_the_pointer(self):
        words = q.new_entrydata(2)
        self.addCleanup(q.delete_entrydata, words)
        q.entrydata_setitem(words, 1, 7)
        behind = q.uintp_frompointer(words).this
        cast = next(info for info in descriptors() if info.name == '_p_unsigned_int').cast
        while cast.contents.type.contents.name != '_p_uintp':
            cast = cast.contents.next
        converter, cast.contents.converter = cast.contents.converter, ctypes.cast(NEXT_WORD, ctypes.c_void_p).value
        try:
            self.assertEqual(q.entrydata_getitem(behind, 0), 7)
        finally:
            cast.contents.converter = converter
        self.assertEqual(q.entrydata_getitem(behind, 1), 7)

    def test_a_long_chain_is_let_go_link_by_link(self):
        links = 100000
        number = q.intp()
        first = last = q.intp_cast(number)
        for _ in xrange(links):
            link = q.intp_cast(number)
            last.append(link)
            last = link
        self.assertEqual(repr(first).count('<Swig Object of type '), links + 1)
        del first, last, link


class Forms(unittest.TestCase):
    def test_text_names_the_last_spelling_and_the_object(self):
        pointer = q.new_bcm_l2_addr_t()
        self.assertEqual(repr(pointer), "<Swig Object of type 'bcm_l2_addr_t *' at 0x%x>" % id(pointer))
        self.assertEqual(pointer.__repr__(), str(pointer))
        self.assertEqual(type(pointer).__name__, 'SwigPyObject')

    def test_numbers_are_the_address(self):
        pointer = q.new_intp()
        self.assertEqual(int(pointer), long(pointer))
        self.assertEqual(int(pointer), int(q.intp_cast(pointer)))
        self.assertEqual((hex(pointer), oct(pointer)), ('%x' % int(pointer), '%o' % int(pointer)))

    def test_comparison_is_of_addresses(self):
        pointer, other = q.new_intp(), q.new_intp()
        alias = q.intp_cast(pointer)
        self.assertTrue(pointer == alias and not pointer != alias)
        self.assertTrue(pointer != other and not pointer == other)
        self.assertIs(pointer.__lt__(alias), NotImplemented)
        self.assertEqual(cmp(pointer, alias), 0)
        self.assertEqual(cmp(pointer, other), cmp(int(pointer), int(other)))
        for foreign in (None, 5, 'text'):
            self.assertFalse(pointer == foreign)
            self.assertTrue(pointer != foreign)

    def test_the_methods_have_their_docstrings(self):
        methods = {'disown': 'releases ownership of the pointer', 'acquire': 'acquires ownership of the pointer',
                   'own': 'returns/sets ownership of the pointer', 'append': "appends another 'this' object",
                   'next': "returns the next 'this' object", '__repr__': 'returns object representation'}
        pointer = q.new_intp()
        for name, doc in methods.items():
            self.assertEqual(getattr(pointer, name).__doc__, doc)


class WhereThisIsFound(unittest.TestCase):
    def setUp(self):
        self.pointer = q.new_bcm_l2_addr_t()
        q.bcm_l2_addr_t_vid_set(self.pointer, 99)

    def assertFound(self, carrier):
        self.assertEqual(q.bcm_l2_addr_t_vid_get(carrier), 99)

    def assertNotFound(self, carrier):
        error = error_of(q.bcm_l2_addr_t_vid_get, carrier)
        self.assertEqual(error, (TypeError, "in method 'bcm_l2_addr_t_vid_get', argument 1 of type 'bcm_l2_addr_s *'"))

    def test_in_the_instance_dictionary_and_nowhere_else(self):
        class Carrier(object):
            pass
        carrier = Carrier()
        self.assertNotFound(carrier)
        Carrier.this = self.pointer
        self.assertNotFound(carrier)
        carrier.this = self.pointer
        self.assertFound(carrier)

    def test_by_attribute_without_an_instance_dictionary(self):
        class Slotted(object):
            __slots__ = ('this',)
        slotted = Slotted()
        self.assertNotFound(slotted)
        slotted.this = self.pointer
        self.assertFound(slotted)

        class Failing(object):
            __slots__ = ()

            @property
            def this(self):
                raise KeyError('this')
        self.assertNotFound(Failing())

    def test_through_an_old_style_instance(self):
        class Old:
            pass
        old = Old()
        self.assertNotFound(old)
        old.this = self.pointer
        self.assertFound(old)

    def test_behind_a_weak_proxy(self):
        record = q.bcm_l2_addr_t()
        record.vid = 99
        proxy = weakref.proxy(record)
        self.assertFound(proxy)
        del record
        gc.collect()
        self.assertNotFound(proxy)

    def test_in_the_this_of_a_this(self):
        class Carrier(object):
            pass
        inner, outer = Carrier(), Carrier()
        inner.this, outer.this = self.pointer, inner
        self.assertFound(outer)
        inner.this = outer
        self.assertNotFound(outer)
        outer.this = 'no pointer'
        self.assertNotFound(outer)

    def test_a_class_of_that_name_is_no_pointer_object(self):
        self.assertNotFound(type('SwigPyObject', (object,), {})())


class Release(unittest.TestCase):
    def test_without_a_destroy_function_a_leak_is_reported(self):
        text = output_of('import _QuorelApiNew as q; q.new_bcm_l2_addr_t(); q.new_intp()')
        self.assertEqual(text.splitlines(), [
            "swig/python detected a memory leak of type '%s *', no destructor found." % name
            for name in ('bcm_l2_addr_t', 'intp')])

    def test_both_kinds_of_destroy_function_are_called_once(self):
        text = output_of('''
import _QuorelApiNew as q
def destroy(pointer):
    print 'python', pointer.own(), int(pointer) == address
class Python(object):
    __swig_destroy__ = staticmethod(destroy)
q.bcm_l2_addr_t_swigregister(Python)
pointer = q.new_bcm_l2_addr_t()
address = int(pointer)
del pointer
seen = []
class OneArgument(object):
    __swig_destroy__ = seen.append
q.bcm_l2_addr_t_swigregister(OneArgument)
pointer = q.new_bcm_l2_addr_t()
del pointer
print 'one argument', len(seen), type(seen[0]).__name__, seen[0].own()
kept = seen.pop()
del kept
print 'kept', len(seen)
class Native:
    __swig_destroy__ = q.delete_bcm_l2_addr_t
q.bcm_l2_addr_t_swigregister(Native)
del seen[:]
pointer = q.new_bcm_l2_addr_t()
del pointer
print 'done'
''')
        self.assertEqual(text.splitlines(), ['python False True', 'one argument 1 SwigPyObject False', 'kept 0', 'done'])

    def test_a_failing_destroy_function_is_reported_and_the_pending_exception_kept(self):
        text = output_of('''
import _QuorelApiNew as q
class Failing(object):
    @staticmethod
    def __swig_destroy__(pointer):
        raise ValueError('destroy failed')
q.bcm_l2_addr_t_swigregister(Failing)
try:
    # The argument that is ready dies while the other's exception is pending.
    str(q.new_bcm_l2_addr_t(), {}['pending'])
except KeyError, error:
    print 'kept', error
''')
        self.assertIn("kept 'pending'", text)
        self.assertIn("ValueError: ValueError('destroy failed',) in ", text)


class Registration(unittest.TestCase):
    def test_results_are_instances_made_without_init(self):
        text = output_of('''
import _QuorelApiNew as q
class New(object):
    def __init__(self):
        raise RuntimeError('not to be called')
    __swig_destroy__ = q.delete_bcm_l2_addr_t
class Old:
    def __init__(self):
        raise RuntimeError('not to be called')
    __swig_destroy__ = q.delete_bcm_l2_addr_t
for cls in (New, Old):
    assert q.bcm_l2_addr_t_swigregister(cls) is None
    rc, address = q.bcm_l2_addr_get(0, '02:00:00:00:00:01', 1)
    print address.__class__ is cls, address.__dict__.keys(), address.this.own(), q.bcm_l2_addr_t_vid_get(address)
print type(q.new_bcm_l2_addr_t()).__name__
''')
        self.assertEqual(text.splitlines(), ["True ['this'] True 0"] * 2 + ['SwigPyObject'])

    def test_classes_that_cannot_hold_a_result_fail_and_leave_the_module_usable(self):
        text = output_of('''
import _QuorelApiNew as q
class Slots(object):
    __slots__ = ('this',)
    __swig_destroy__ = q.delete_bcm_l2_addr_t
class NoThis(object):
    __slots__ = ()
class Failing(object):
    def __new__(cls):
        raise KeyError('no instance')
class Wanting(object):
    def __new__(cls, more):
        return object.__new__(cls)
class Nothing(object):
    def __new__(cls):
        return None
class Old:
    pass
def get():
    return q.bcm_l2_addr_get(0, '02:00:00:00:00:01', 1)[1]
for cls in (Old(), 5, len, None):
    try:
        q.bcm_l2_addr_t_swigregister(cls)
    except TypeError, error:
        print error
for cls in (NoThis, Failing, Wanting, Nothing):
    q.bcm_l2_addr_t_swigregister(cls)
    try:
        print get()
    except Exception, error:
        print type(error).__name__
q.bcm_l2_addr_t_swigregister(Slots)
found = get()
print type(found).__name__, found.this.own(), q.bcm_l2_addr_t_vid_get(found)
members = q.new_trunkMember(1)
Failing.__swig_destroy__ = q.delete_bcm_trunk_member_t
q.bcm_trunk_member_t_swigregister(Failing)
try:
    q.trunkMember_getitem(members, 0)
except KeyError:
    print 'a copy is released once'
class Again(object):
    def __new__(cls):
        q.bcm_trunk_member_t_swigregister(Failing)
        return object.__new__(cls)
q.bcm_trunk_member_t_swigregister(Again)
print type(q.trunkMember_getitem(members, 0)).__name__
''')
        lines = [line for line in text.splitlines() if 'memory leak' not in line]
        refused = "in method 'bcm_l2_addr_t_swigregister', argument 1 of type 'class'"
        self.assertEqual(lines, 4 * [refused] + ['AttributeError', 'KeyError', 'TypeError', 'AttributeError', 'Slots True 0', 'a copy is released once', 'Again'])

    def test_a_classic_class_may_be_replaced_while_it_makes_an_instance(self):
        text = output_of('''
import gc, weakref
import _QuorelApiNew as q
class First: pass
q.bcm_stat_group_mode_hint_t_swigregister(First)
config = q.new_bcm_stat_group_mode_id_config_t()
config.disown()
class Node(object): pass
def replace(reference):
    class Second: pass
    q.bcm_stat_group_mode_hint_t_swigregister(Second)
gc.set_threshold(1)
for _ in range(300):
    node = Node()
    node.node = node
    reference = weakref.ref(node, replace)
    del node
    hint = q.bcm_stat_group_mode_id_config_t_hint_get(config)
print hint.__class__.__name__
''')
        self.assertEqual(text.split(), ['Second'])

    def test_owned_objects_are_freed_after_the_type_tables_capsule(self):
        # As at the interpreter's end, where modules go in any order.
        text = output_of('''
import sys
import QuorelApiNew as q
early, late = q.bcm_l2_addr_t(), q.intp()
del sys.modules['swig_runtime_data4']
del early, late
print 'freed'
q.new_intp()
''')
        self.assertEqual(text.splitlines(), [
            'freed', "swig/python detected a memory leak of type 'intp *', no destructor found."])

    def test_records_are_constructed_without_keywords(self):
        # None at all are no keywords.
        self.assertEqual(q.bcm_l2_addr_t(*(), **{}).vid, 0)
        self.assertEqual(error_of(lambda: q.bcm_l2_addr_t(vid=1)),
                         (TypeError, 'bcm_l2_addr_t() takes no keyword arguments'))
        self.assertEqual(error_of(q.bcm_l2_addr_t, 1), (TypeError, 'new_bcm_l2_addr_t expected 0 arguments, got 1'))
        base = q.bcm_l2_addr_t.__bases__[0]
        self.assertEqual(error_of(base), (TypeError, "cannot create '%s' instances" % base.__name__))

    def test_the_instance_method_hook_is_inert(self):
        self.assertEqual(error_of(q.SWIG_PyInstanceMethod_New, 5)[0], SystemError)


if __name__ == '__main__':
    unittest.main()
