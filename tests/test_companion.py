"""The proxy classes."""
import copy
import gc
import os
import pickle
import pydoc
import subprocess
import sys
import unittest
import weakref

import _QuorelApiNew
import QuorelApiNew as q
from binding import error_of


class Companion(unittest.TestCase):
    def test_functions_and_constants_are_the_modules_own(self):
        for name, value in vars(_QuorelApiNew).items():
            if not name.startswith('__') and name != '_Proxy':
                self.assertIs(getattr(q, name), value)
        self.assertEqual(set(dir(q)) - set(dir(_QuorelApiNew)) - set(['__builtins__', '__version__']),
                         set(name for name, value in vars(q).items() if isinstance(value, type)))
        self.assertEqual(q.__name__, 'QuorelApiNew')

    def test_members_are_properties(self):
        entry = q.bcm_l2_addr_t()
        entry.port = 3
        entry.flags |= q.BCM_L2_STATIC
        self.assertEqual((entry.port, entry.flags, entry.mac), (3, 32, '00:00:00:00:00:00'))
        self.assertEqual(q.bcm_l2_addr_t_port_get(entry), 3)
        self.assertIn('-> bcm_mac_t', q.bcm_l2_addr_t.mac.__doc__)
        self.assertEqual(error_of(setattr, entry, 'port', 'x'),
                         (TypeError, "in method 'bcm_l2_addr_t_port_set', argument 2 of type 'int'"))

    def test_members_are_overridden_as_properties_are(self):
        deleted = []

        class Own(q.bcm_l2_addr_t):
            port = q.bcm_l2_addr_t.port.setter(lambda self, port: q.bcm_l2_addr_t_port_set(self, 2 * port))
            vid = q.bcm_l2_addr_t.vid.getter(lambda self: 'none').deleter(deleted.append)
        entry = Own()
        entry.port, entry.vid = 3, 4
        self.assertEqual((entry.port, entry.vid, q.bcm_l2_addr_t_vid_get(entry)), (6, 'none', 4))
        del entry.vid
        self.assertEqual(deleted, [entry])
        self.assertEqual(Own.port.__doc__, q.bcm_l2_addr_t.port.__doc__)
        empty = type(Own.port)()
        for use in (lambda: empty.__get__(entry), lambda: empty.__set__(entry, 1), lambda: empty.__delete__(entry)):
            self.assertRaises(AttributeError, use)
        self.assertIsNone(empty.__doc__)

    def test_no_attribute_is_created_silently(self):
        entry = q.bcm_l2_addr_t()
        self.assertEqual(error_of(setattr, entry, 'prot', 3),
                         (AttributeError, "'bcm_l2_addr_t' object has no attribute 'prot'"))
        self.assertEqual(error_of(delattr, entry, 'prot')[0], AttributeError)
        self.assertEqual(entry.__dict__.keys(), ['this'])

        class Mine(q.bcm_l2_addr_t):
            note = None
        mine = Mine()
        mine.note, mine.vid = 'own', 5
        self.assertEqual((mine.note, mine.vid, q.bcm_l2_addr_t_vid_get(mine)), ('own', 5, 5))
        self.assertEqual(error_of(setattr, mine, 'notes', 1)[0], AttributeError)

    def test_classes_are_like_any_other(self):
        made = q.bcm_l2_ring_t
        self.assertEqual((made.__name__, made.__module__, made.__doc__, made.__bases__),
                         ('bcm_l2_ring_t', 'QuorelApiNew', "The SDK's record bcm_l2_ring_t, zeroed when it is made.",
                          made.__mro__[1:2]))
        self.assertIn(made, made.__base__.__subclasses__())
        record = made()
        self.assertIs(weakref.ref(record)(), record)
        made.__len__ = lambda self: self.flags
        try:
            ring = made()
            ring.flags = 3
            self.assertEqual(len(ring), 3)
        finally:
            del made.__len__
        self.assertRaises(TypeError, len, made())

        class Derived(made):
            def __len__(self):
                return 7
        self.assertEqual(len(Derived()), 7)
        derive = made.__base__.__derive__
        self.assertEqual(error_of(derive, 'x', 1, [], {})[0], TypeError)
        self.assertEqual(error_of(derive, 'x', {}, [1], {})[0], TypeError)
        self.assertEqual(error_of(derive, 'x', {}, ['y'], {}), (KeyError, "'x_y_get'"))
        self.assertEqual(error_of(derive, 'x', {}, ['y'], {'x_y_get': 1})[0], TypeError)
        self.assertEqual(error_of(_QuorelApiNew._Proxy.__derive__, 'x', {}, [], {}),
                         (TypeError, '__derive__() is for subclasses of _Proxy'))
        read_only = derive('x', {}, ['y'], {'x_y_get': q.bcm_l2_ring_t_flags_get})
        self.assertEqual(error_of(setattr, read_only.__new__(read_only), 'y', 1),
                         (AttributeError, "can't set attribute"))
        forgetful = []

        class Forgetting(str):
            def __hash__(self):
                del forgetful[:]
                return hash(str(self))
        forgetful.append(Forgetting('flags'))
        self.assertEqual(derive('bcm_l2_ring_t', {'__constructor__': q.new_bcm_l2_ring_t}, forgetful,
                                vars(_QuorelApiNew))().flags, 0)
        short_lived = weakref.ref(derive('short_lived', {'kind': 1}, [], {}))
        gc.collect()
        self.assertIsNone(short_lived())

    def test_methods_are_not_assigned_over(self):
        number = q.intp()
        for name in ('value', 'assign', 'frompointer', '__constructor__'):
            self.assertEqual(error_of(setattr, number, name, 5),
                             (AttributeError, "'intp' object attribute '%s' is read-only" % name))
            self.assertEqual(error_of(delattr, number, name)[0], AttributeError)
        self.assertEqual(number.__dict__.keys(), ['this'])

        class Noted(q.bcm_l2_addr_t):
            def __init__(self):
                super(Noted, self).__init__()
                self.__dict__['note'] = 'first'
        noted = Noted()
        noted.note = 'second'
        self.assertEqual(noted.note, 'second')
        del noted.note
        self.assertEqual(error_of(setattr, noted, 'note', 'third')[0], AttributeError)

    def test_help_is_about_the_member_and_the_class(self):
        text = pydoc.plain(pydoc.render_doc(q.bcm_l2_addr_t.flags))
        self.assertIn('bcm_l2_addr_t_flags_get(self) -> uint32', text)
        self.assertNotIn('__get__', text)
        text = pydoc.plain(pydoc.render_doc(q.bcm_l2_addr_t))
        self.assertIn("The SDK's record bcm_l2_addr_t", text)
        self.assertIn('bcm_l2_addr_t_encap_id_get(self) -> int', text)
        self.assertEqual([name for name in dir(q.bcm_l2_ring_t) if name.startswith('_') and name[1] != '_'], [])

    def test_records_are_not_pickled_and_copies_share_them(self):
        for protocol in (0, 1):
            self.assertEqual(error_of(pickle.dumps, q.bcm_l2_addr_t(), protocol),
                             (TypeError, "can't pickle bcm_l2_addr_t objects"))
        self.assertEqual(error_of(pickle.dumps, q.bcm_l2_addr_t(), 2)[0], TypeError)
        entry = q.bcm_l2_addr_t()
        self.assertIs(copy.copy(entry).this, entry.this)

        class Own(q.bcm_l2_addr_t):
            def __reduce__(self):
                return list, ()
        self.assertEqual([pickle.loads(pickle.dumps(Own(), protocol)) for protocol in (0, 1, 2)], 3 * [[]])

    def test_ownership(self):
        entry = q.bcm_l2_addr_t()
        self.assertIs(entry.thisown, True)
        entry.thisown = 0
        self.assertIs(entry.this.own(), False)
        entry.thisown = True
        self.assertIs(entry.thisown, True)

    def test_text(self):
        entry = q.bcm_l2_addr_t()
        self.assertEqual(repr(entry), '<QuorelApiNew.bcm_l2_addr_t; proxy of %r >' % entry.this)
        self.assertEqual(repr(q.bcm_l2_addr_t.__new__(q.bcm_l2_addr_t)),
                         '<QuorelApiNew.bcm_l2_addr_t; no record >')

    def test_nested_records_are_proxies_into_their_parent(self):
        info = q.soc_phy_info_t()
        info.chip_info.primary = 9
        self.assertIs(type(info.chip_info), q.soc_phy_chip_info_t)
        self.assertEqual(info.chip_info.primary, 9)
        other = q.soc_phy_chip_info_t()
        other.offset = 4
        info.chip_info = other
        self.assertEqual((info.chip_info.primary, info.chip_info.offset), (0, 4))

    def test_records_are_freed_with_their_proxy(self):
        script = '''
import gc, resource
import QuorelApiNew as q
def grow():
    for _ in xrange(20000):
        q.bcm_l2_ring_t()
        q.intp()
grow()
before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
grow()
print resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before
'''
        # The address sanitizer would otherwise keep what is freed for a while.
        options = os.environ.get('ASAN_OPTIONS', '') + ':quarantine_size_mb=0:thread_local_quarantine_size_kb=0'
        growth = subprocess.check_output([sys.executable, '-c', script], env=dict(os.environ, ASAN_OPTIONS=options))
        self.assertLess(int(growth), 4000)

    def test_cycles_through_a_proxy_are_collected(self):
        class Node(q.bcm_l2_addr_t):
            other = None
        node = Node()
        node.other = node
        del node
        self.assertGreater(gc.collect(), 0)


class Module(unittest.TestCase):
    def test_constants_are_plain_ints(self):
        constants = dict((name, value) for name, value in vars(_QuorelApiNew).items()
                         if isinstance(value, (int, long)))
        self.assertTrue(all(type(value) is int for value in constants.values()))
        self.assertEqual((q.BCM_E_NONE, q.BCM_E_INTERNAL, q.BCM_E_PORT), (0, -1, -18))
        self.assertEqual((q.REG_PORT_ANY, q.SOC_REG_ABOVE_64_MAX_SIZE_U32), (-10, 20))

    def test_start_leaves_the_collector_as_it_was(self):
        for setting in ('enable', 'disable'):
            script = 'import gc; gc.%s(); import QuorelApiNew; print gc.isenabled()' % setting
            self.assertEqual(subprocess.check_output([sys.executable, '-c', script]).strip(), str(setting == 'enable'))

    def test_an_interrupted_import_leaves_nothing_behind(self):
        # The interrupt comes in every hundredth line of those that run, and in each of the last.
        script = '''
import gc, sys
import _QuorelApiNew
def interrupt_at(number):
    passed = [0]
    def trace(frame, event, argument):
        if not frame.f_code.co_filename.endswith(('QuorelApiNew.py', 'QuorelApiNew.pyc')):
            return None
        passed[0] += event == 'line'
        if passed[0] == number:
            raise KeyboardInterrupt
        return trace
    sys.settrace(trace)
    try:
        import QuorelApiNew
        return passed[0]
    except KeyboardInterrupt:
        sys.settrace(None)
        assert gc.isenabled(), number
        assert 'QuorelApiNew' not in sys.modules
    finally:
        sys.settrace(None)
lines = interrupt_at(-1)
names = dir(sys.modules.pop('QuorelApiNew'))
for number in range(30, lines - 4, lines // 9):
    interrupt_at(number)
import QuorelApiNew
print gc.isenabled(), dir(QuorelApiNew) == names
'''
        self.assertEqual(subprocess.check_output([sys.executable, '-c', script]).split(), ['True', 'True'])


if __name__ == '__main__':
    unittest.main()
