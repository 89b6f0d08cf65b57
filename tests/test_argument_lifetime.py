"""What an argument was converted to lives until the call is over, whatever Python code runs in between: the `this`
that a class computes, and callbacks."""
import ctypes
import unittest
import weakref

import QuorelApiNew as q
from type_table import pointer_at, pointer_of_type, retyped


class Computed(object):
    """Has no pointer object of its own: `this` is what a function gives."""
    __slots__ = ('find',)

    def __init__(self, find):
        self.find = find

    @property
    def this(self):
        return self.find()


class ArgumentLifetime(unittest.TestCase):
    def setUp(self):
        self.seen = []

    def watch(self, name, see):
        """Whenever an owned object of this class dies, what `see` finds in it is noted."""
        delete = getattr(q, 'delete_' + name)

        class Watched(object):
            @staticmethod
            def __swig_destroy__(pointer):
                self.seen.append(see(pointer))
                delete(pointer)
        register = getattr(q, name + '_swigregister')
        register(Watched)
        self.addCleanup(register, getattr(q, name))

    def letting_go(self, victim, found):
        """An argument whose conversion takes the pointer object away from `victim`."""
        def find():
            victim.__dict__.clear()
            return found
        return Computed(find)

    def test_of_an_earlier_argument(self):
        self.assertEqual(q.bcm_port_rate_pause_set(0, 1, 5, 6), 0)
        self.addCleanup(q.bcm_port_rate_pause_set, 0, 1, 0, 0)
        self.watch('uintp', q.uintp_value)
        pause, resume = q.uintp(), q.uintp()
        pause.assign(0)
        self.assertEqual(q.bcm_port_rate_pause_get(0, 1, pause, self.letting_go(pause, resume.this)), 0)
        self.assertEqual((self.seen, resume.value()), ([5], 6))

        owners = [q.uintp()]
        owners[0].assign(0)
        behind_proxy = weakref.proxy(owners[0])
        self.assertEqual(q.bcm_port_rate_pause_get(0, 1, behind_proxy, Computed(lambda: owners.pop() and resume.this)), 0)
        self.assertEqual(self.seen, [5, 5])

    def test_while_the_sdk_calls_back(self):
        self.watch('bcm_l2_addr_t', q.bcm_l2_addr_t_vid_get)
        entry, wanted = q.bcm_l2_addr_t(), q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(entry, '02:00:00:00:0a:01', 1)
        entry.port = wanted.vid = 1
        self.assertEqual(q.bcm_l2_addr_add(0, entry), 0)
        self.addCleanup(q.bcm_l2_addr_delete, 0, '02:00:00:00:0a:01', 1)
        alive_during_call = []

        def visit(unit, address, user_data):
            del wanted.this
            alive_during_call.append(self.seen == [])
            return 0
        visitor = ctypes.PYFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(visit)
        callback = pointer_at(ctypes.cast(visitor, ctypes.c_void_p).value,
                              '_p_f_int_p_bcm_l2_addr_s_p_void__int')
        self.assertEqual(q.bcm_l2_matched_traverse(0, q.BCM_L2_TRAVERSE_MATCH_VLAN, wanted, callback, None), 0)
        self.assertEqual((alive_during_call, self.seen), ([True], [1]))

    def test_of_the_record_that_a_member_is_written_to(self):
        hint = q.new_bcm_stat_group_mode_hint_t()
        # A member that it is written to takes it over.
        self.addCleanup(q.delete_bcm_stat_group_mode_hint_t, hint)
        q.bcm_stat_group_mode_hint_t_object_set(hint, 7)
        text = pointer_of_type('_p_char')
        self.addCleanup(lambda: q.delete_uint8Array(retyped(text, '_p_unsigned_char')))
        q.uint8Array_setitem(retyped(text, '_p_unsigned_char'), 0, ord('x'))
        retyped(text, '_p_char')
        cases = [('bcm_stat_group_mode_id_config_t', 'hint', hint,
                  lambda record: q.bcm_stat_group_mode_id_config_t_hint_get(record).object, 7),
                 ('any_t', 'ptr', hint, lambda record: int(q.any_t_ptr_get(record)), int(hint)),
                 ('bcm_field_data_qualifier_t', 'name', text, q.bcm_field_data_qualifier_t_name_get, 'x')]
        for name, member, value, see, expected in cases:
            self.watch(name, see)
            record = getattr(q, name)()
            set_member = getattr(q, '%s_%s_set' % (name, member))
            self.assertIsNone(set_member(record, self.letting_go(record, value)))
            self.assertEqual(self.seen.pop(), expected)

    def test_of_what_was_made_for_the_call_alone(self):
        self.watch('bcm_l2_addr_t', lambda pointer: q.bcm_l2_addr_t_vid_set(pointer, 0))

        def fresh():
            pointer = q.new_bcm_l2_addr_t()
            q.bcm_l2_addr_t_vid_set(pointer, 99)
            return pointer

        def chained():
            pointer = q.new_uint32p()
            q.delete_uint32p(pointer)
            pointer.append(fresh())
            return pointer
        for find in (fresh, chained):
            self.assertEqual(q.bcm_l2_addr_t_vid_get(Computed(find)), 99)
            self.assertEqual(self.seen.pop(), None)


if __name__ == '__main__':
    unittest.main()
