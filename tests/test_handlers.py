"""Functions that callers register: the lists behave alike, whatever they are told of."""
import ctypes
import unittest

import QuorelApiNew as q
from phy import COPPER
from simulator import SwitchTest, library

INT, POINTER = ctypes.c_int, ctypes.c_void_p


class HandlerList(object):
    """One list: its functions, their type, what identifies it in calls, and what makes an event of it."""

    def __init__(self, name, parameters, arguments, event, has_datum=True):
        self.callback = ctypes.CFUNCTYPE(None, *parameters)
        self.arguments, self.event, self.has_datum = arguments, event, has_datum
        self.register = getattr(library, name % 'register')
        self.unregister = getattr(library, name % 'unregister')

    def call(self, change, function):
        return change(*(self.arguments + (function,) + ((None,) if self.has_datum else ())))


def l2_event():
    q.bcm_l2_addr_delete(0, '02:00:00:00:00:01', 1)
    address = q.bcm_l2_addr_t()
    q.bcm_l2_addr_t_init(address, '02:00:00:00:00:01', 1)
    q.bcm_l2_addr_add(0, address)


def attach_event():
    q.bcm_detach(0)
    q.bcm_attach(0, '', '', -1)


def link_event():
    q.bcm_port_enable_set(0, COPPER, 0)
    q.bcm_port_enable_set(0, COPPER, 1)


def medium_event():
    q.soc_phy_medium_status_notify(0, COPPER, q.SOC_PHY_MEDIUM_COPPER)


def switch_event():
    q.bcm_switch_event_inject(0, q.bcmSwitchEventWatchdog, 0, 0, 0)


LISTS = {
    'addresses': HandlerList('bcm_l2_addr_%s', (INT, POINTER, INT, POINTER), (0,), l2_event),
    'units': HandlerList('bcm_attach_%s', (INT, INT, POINTER, POINTER), (-1,), attach_event),
    'links': HandlerList('bcm_linkscan_%s', (INT, INT, POINTER), (0,), link_event, has_datum=False),
    'links of a port': HandlerList('bcm_linkscan_port_%s', (INT, INT, POINTER, POINTER), (0, COPPER), link_event),
    'events': HandlerList('bcm_switch_event_%s', (INT, INT, INT, INT, INT, POINTER), (0,), switch_event),
    'media': HandlerList('soc_phy_medium_status_%s', (INT, INT, INT, POINTER), (0, COPPER), medium_event),
}


class Handlers(SwitchTest):
    def setUp(self):
        self.addCleanup(q.bcm_linkscan_enable_set, 0, 0)
        SwitchTest.setUp(self)

    def reset(self):
        if q.bcm_attach_check(0) != q.BCM_E_NONE:
            self.done(q.bcm_attach(0, '', '', -1))
        SwitchTest.reset(self)
        q.bcm_linkscan_enable_set(0, 1000)

    def run_with(self, handlers, does):
        """The names of the functions called at an event; does(name, add, remove) is what each does then.

        Functions of all names can be added; those with a capital are there from the start.
        """
        called, functions = [], {}

        def add(name):
            return handlers.call(handlers.register, functions[name])

        def remove(name):
            return handlers.call(handlers.unregister, functions[name])

        def make(name):
            def function(*_):
                called.append(name)
                does(name, add, remove)
            return handlers.callback(function)
        for name in 'ABCx':
            functions[name] = make(name)
        try:
            for name in 'ABC':
                self.done(add(name))
            handlers.event()
            return ''.join(called)
        finally:
            for name in functions:
                remove(name)
            self.reset()

    def assertCalled(self, expected, does, but=()):
        for subject in sorted(LISTS):
            if subject not in but:
                # Units and links go and come back, which is two events.
                called = self.run_with(LISTS[subject], does)
                self.assertEqual(called[:len(expected)], expected, subject)
                yield subject, called[len(expected):]

    def test_in_the_order_in_which_they_were_registered(self):
        for subject, more in self.assertCalled('ABC', lambda *_: None):
            self.assertIn(more, ('', 'ABC'), subject)

    def test_one_that_is_removed_is_not_called_any_more(self):
        def does(name, add, remove):
            if name == 'A':
                remove('B')
        for subject, more in self.assertCalled('AC', does):
            self.assertIn(more, ('', 'AC'), subject)

        def removes_itself(name, add, remove):
            remove(name)
        for subject, more in self.assertCalled('ABC', removes_itself):
            self.assertEqual(more, '', subject)

    def test_one_that_is_added_is_called_from_the_next_event_on(self):
        def does(name, add, remove):
            add('x')
            if name == 'A':
                # Also one that was there before.
                remove('B')
                add('B')
        for subject, more in self.assertCalled('AC', does):
            self.assertNotIn('x', more[:2], subject)

    def test_nobody_is_called_of_a_unit_that_is_gone(self):
        def does(name, add, remove):
            if name == 'A':
                q.bcm_detach(0)
        for subject, more in self.assertCalled('A', does, but=['units']):
            self.assertEqual(more, '', subject)

    def test_events_of_units_within_events(self):
        told, functions = [], []
        callback = LISTS['units'].callback

        def first(unit, attach, *_):
            told.append(('first', unit, attach))
            if unit == 5 and attach:
                q.bcm_detach(5)

        def second(unit, attach, *_):
            told.append(('second', unit, attach))
        for function in (first, second):
            functions.append(callback(function))
            self.done(library.bcm_attach_register(-1, functions[-1], None))
            self.addCleanup(library.bcm_attach_unregister, -1, functions[-1], None)
        self.done(q.bcm_attach(5, '', '', -1))
        # The second is not told that a unit came that has gone meanwhile.
        self.assertEqual(told, [('first', 5, 1), ('first', 5, 0), ('second', 5, 0)])
        self.assertStatus(q.BCM_E_UNIT, q.bcm_attach_check(5))


if __name__ == '__main__':
    unittest.main()
