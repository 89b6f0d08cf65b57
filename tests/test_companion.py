"""The proxy classes."""
import gc
import os
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
            if not name.startswith('__'):
                self.assertIs(getattr(q, name), value)
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
                         ('bcm_l2_ring_t', 'QuorelApiNew', None, made.__mro__[1:2]))
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
        derive = made.__base__._derive
        self.assertEqual(error_of(derive, 'x', 1, [], {})[0], TypeError)
        self.assertEqual(error_of(derive, 'x', {}, [1], {})[0], TypeError)
        self.assertEqual(error_of(derive, 'x', {}, ['y'], {}), (KeyError, "'x_y_get'"))
        self.assertEqual(error_of(derive, 'x', {}, ['y'], {'x_y_get': 1})[0], TypeError)
        self.assertEqual(error_of(_QuorelApiNew._Proxy._derive, 'x', {}, [], {}),
                         (TypeError, '_derive() is for subclasses of _Proxy'))
        read_only = derive('x', {}, ['y'], {'x_y_get': q.bcm_l2_ring_t_flags_get})
        self.assertEqual(error_of(setattr, read_only.__new__(read_only), 'y', 1),
                         (AttributeError, "can't set attribute"))
        short_lived = weakref.ref(derive('short_lived', {'kind': 1}, [], {}))
        gc.collect()
        self.assertIsNone(short_lived())

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


if __name__ == '__main__':
    unittest.main()
