"""The hardware L2 table as a list, and the callback that makes its rows."""
import gc
import sys
import types
import unittest
import weakref

import QuorelApiNew as q
from binding import error_of
from simulator import BLACK_HOLE, LOCAL_PORT, TRUNK, SwitchTest
from type_table import pointer_at

MAC = '02:00:5e:0a:ff:01'
VOID = '_p_unsigned_char'  # any type will do where a void * is taken


class Rows(unittest.TestCase):
    def row(self, **members):
        """What the callback makes of an entry."""
        entry = q.bcm_l2_addr_t()
        entry.mac = MAC
        for name, value in members.items():
            setattr(entry, name, value)
        rows = []
        self.assertEqual(q.l2_traverse_cb(0, entry, pointer_at(id(rows), VOID)), 0)
        self.assertEqual(len(rows), 1)
        return rows[0]

    def test_destinations(self):
        members = {'port': 5, 'tgid': 9}
        for flags, gport in ((0, LOCAL_PORT + 5), (0x80, TRUNK + 9), (0x4, BLACK_HOLE), (0x84, BLACK_HOLE),
                             (2 ** 32 - 1, BLACK_HOLE), (2 ** 32 - 1 - 0x4, TRUNK + 9),
                             (2 ** 32 - 1 - 0x84, LOCAL_PORT + 5)):
            self.assertEqual(self.row(flags=flags, **members)[2], gport, hex(flags))
        for port, cut in ((0x7ff, 0x7ff), (0x800, 0), (0x12345, 0x345), (-1, 0x7ff)):
            self.assertEqual(self.row(port=port)[2], LOCAL_PORT + cut)
        for trunk, cut in ((0x3ffffff, 0x3ffffff), (0x4000001, 1), (-1, 0x3ffffff)):
            self.assertEqual(self.row(tgid=trunk, flags=0x80)[2], TRUNK + cut)

    def test_rows(self):
        row = self.row(vid=4094, flags=0x20)
        self.assertEqual(row, (MAC, 4094, LOCAL_PORT, 'static'))
        self.assertEqual(map(type, row), [str, int, int, str])
        self.assertEqual(self.row(vid=65535, flags=2 ** 32 - 1 - 0x20), (MAC, 65535, BLACK_HOLE, 'dynamic'))


class UserData(unittest.TestCase):
    def test_any_list_is_appended_to(self):
        class Rows(list):
            pass

        entry = q.bcm_l2_addr_t()
        for rows in ([], ['before'], Rows()):
            before = list(rows)
            for _ in range(2):
                self.assertEqual(q.l2_traverse_cb(7, entry, pointer_at(id(rows), VOID)), 0)
            row = ('00:00:00:00:00:00', 0, LOCAL_PORT, 'dynamic')
            self.assertEqual(list(rows), before + [row, row])
            # One is the list's, one the argument's.
            self.assertEqual(sys.getrefcount(rows[-1]), 2)

    def test_anything_else_is_refused_unseen(self):
        entry, rows = q.bcm_l2_addr_t(), []
        void = "in method 'l2_traverse_cb', argument 3 of type 'void *'"
        address = "in method 'l2_traverse_cb', argument 2 of type 'bcm_l2_addr_t *'"
        for wild in (0x1, 0xdeadbee0, id(rows) + 8, id(rows) - 16, id(()), id(entry), id(Rows), id(None),
                     int(entry.this)):
            self.assertEqual(error_of(q.l2_traverse_cb, 0, entry, pointer_at(wild, VOID)), (TypeError, void))
        self.assertEqual(error_of(q.l2_traverse_cb, 0, entry, None),
                         (ValueError, 'invalid null reference ' + void))
        self.assertEqual(error_of(q.l2_traverse_cb, 0, entry, rows), (TypeError, void))
        for user_data in (None, pointer_at(id(rows), VOID)):
            self.assertEqual(error_of(q.l2_traverse_cb, 0, None, user_data),
                             (ValueError, 'invalid null reference ' + address))
        self.assertEqual(error_of(q.l2_traverse_cb, 0, q.new_uint32p(), None), (TypeError, address))
        self.assertEqual(rows, [])

    def test_nothing_is_taken_for_the_collector(self):
        module = types.ModuleType('gc')
        self.addCleanup(sys.modules.__setitem__, 'gc', gc)
        sys.modules['gc'] = module
        for objects in (7, None, (), {}):
            module.get_objects = lambda: objects
            self.assertEqual(error_of(q.l2_traverse_cb, 0, q.bcm_l2_addr_t(), q.new_intp())[0], TypeError)


class Table(SwitchTest):
    def test_references_are_the_lists_own(self):
        self.enter(MAC, port=3)
        self.enter('02:00:5e:0a:ff:02', port=3, flags=q.BCM_L2_STATIC)
        before = sys.getrefcount(intern('static'))
        table = q.getHwMacTable(0)
        self.assertEqual(sys.getrefcount(intern('static')), before + 1)
        self.assertEqual(map(sys.getrefcount, (table[0], table[0][0], table[1])), [3, 3, 3])
        del table
        self.assertEqual(sys.getrefcount(intern('static')), before)

    def test_a_table_within_the_reading_of_another(self):
        # The collector runs while rows are made, and what it calls reads the table as well.
        class Cycle(object):
            def __init__(self):
                self.own = self

        for number in range(300):
            self.enter('02:00:00:00:%02x:%02x' % (number / 256, number % 256), port=1 + number % 60)
        inner = []
        expected = q.getHwMacTable(0)
        threshold = gc.get_threshold()
        self.addCleanup(gc.set_threshold, *threshold)
        gc.collect()
        gc.disable()
        watcher = weakref.ref(Cycle(), lambda _: inner.append(q.getHwMacTable(0)))
        gc.set_threshold(50, 10, 10)
        gc.enable()
        table = q.getHwMacTable(0)
        gc.set_threshold(*threshold)
        self.assertIsNone(watcher())
        self.assertEqual(inner, [expected])
        self.assertEqual(table, expected)


if __name__ == '__main__':
    unittest.main()
