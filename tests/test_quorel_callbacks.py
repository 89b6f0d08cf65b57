"""quorel.callback, traverse and events: Python functions that C calls, whatever they do."""
import ctypes
import gc
import subprocess
import sys
import threading
import unittest
import warnings
import weakref

import QuorelApiNew as q
import simulator
from quorel import StatusError, array, callback, checked, events, fields, sim, traverse


class Fails(Exception):
    pass


def caller_of(made, *types):
    """The C function of a callback as ctypes calls it: without the interpreter lock."""
    return ctypes.CFUNCTYPE(*types)(int(made.this))


class Traversals(simulator.SwitchTest):
    def setUp(self):
        super(Traversals, self).setUp()
        for number in range(3):
            self.enter('02:00:00:00:00:0%d' % number, port=number + 1)

    def visit(self, function):
        return checked(q.bcm_l2_traverse, 0, callback(q.bcm_l2_traverse, function), None)

    def test_arguments_are_as_results_are(self):
        seen = []
        self.visit(lambda unit, address, cookie: seen.append((unit, type(address), address.mac, address.port, cookie)))
        self.assertEqual(sorted(seen), [(0, q.bcm_l2_addr_t, '02:00:00:00:00:0%d' % number, number + 1, None)
                                        for number in range(3)])

    def test_a_record_is_good_during_the_call_only(self):
        kept = []
        self.visit(lambda unit, address, cookie: kept.extend([address, address.this]))
        for thing in kept:
            self.assertIn('argument of a callback that has returned', repr(thing))
            self.assertRaises(TypeError, q.bcm_l2_addr_t_port_get, thing)
            self.assertRaises(TypeError, q.bcm_l2_addr_t_port_set, thing, 1)
            self.assertRaises(TypeError, q.bcm_l2_addr_add, 0, thing)

    def test_it_cannot_free_its_record(self):
        freeing = [q.delete_bcm_l2_addr_t, lambda address: q.delete_bcm_l2_addr_t(address.this),
                   q.bcm_l2_addr_t.__swig_destroy__]
        for free in freeing:
            with self.assertRaisesRegexp(ValueError, "'delete_bcm_l2_addr_t', argument 1 is memory of something else"):
                self.visit(lambda unit, address, cookie: free(address))
        self.assertEqual(len(list(traverse(q.bcm_l2_traverse, 0))), 3)

    def test_an_exception_stops_it_and_comes_out(self):
        calls = []

        def fail(*arguments):
            calls.append(arguments[0])
            raise Fails('here')
        with self.assertRaisesRegexp(Fails, 'here'):
            self.visit(fail)
        self.assertEqual(len(calls), 1)
        with self.assertRaises(SystemExit):
            self.visit(lambda *arguments: sys.exit(3))

    def test_results(self):
        for result, status in [(None, None), (0, None), (False, None), (-4, q.BCM_E_PARAM)]:
            try:
                self.visit(lambda *arguments: result)
                self.assertIsNone(status)
            except StatusError as error:
                self.assertEqual(error.status, status)
        for result, error in [('0', TypeError), (2 ** 40, OverflowError), (1.0, TypeError)]:
            self.assertRaises(error, self.visit, lambda *arguments: result)

    def test_a_bare_call_prints_what_is_raised(self):
        program = ('import QuorelApiNew as q, quorel\n'
                   'a = q.bcm_l2_addr_t(); q.bcm_l2_addr_t_init(a, "02:00:00:00:00:01", 1); a.port = 1\n'
                   'q.bcm_l2_addr_add(0, a)\n'
                   'def fail(*arguments): raise KeyError("said")\n'
                   'print q.bcm_l2_traverse(0, quorel.callback(q.bcm_l2_traverse, fail), None)')
        process = subprocess.Popen([sys.executable, '-c', program], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        out, err = process.communicate()
        self.assertEqual((out, process.returncode), ('-1\n', 0), err)
        self.assertIn("KeyError: 'said'", err)

    def test_recursion(self):
        depths = []

        def descend(unit, address, cookie):
            depths.append(len(depths))
            if len(depths) < 20:
                checked(q.bcm_l2_traverse, 0, made, None)
            return -1 if len(depths) >= 20 else 0
        made = callback(q.bcm_l2_traverse, descend)
        self.assertRaises(StatusError, checked, q.bcm_l2_traverse, 0, made, None)
        self.assertEqual(len(depths), 20)

        def endless(unit, address, cookie):
            self.visit(endless)
        # The callbacks of a type come to an end before the stack does.
        self.assertRaisesRegexp(RuntimeError, "there are 32 callbacks of type 'bcm_l2_traverse_cb'", self.visit, endless)

    def test_traverse_gives_copies(self):
        found = list(traverse(q.bcm_l2_traverse, 0))
        self.assertEqual(sorted(address.port for address in found), [1, 2, 3])
        for address in traverse(q.bcm_l2_traverse, 0):
            checked(q.bcm_l2_addr_delete, 0, address.mac, address.vid)
        self.assertEqual(list(traverse(q.bcm_l2_traverse, 0)), [])
        self.assertRaises(StatusError, traverse, q.bcm_l2_traverse, 99)
        self.assertRaises(TypeError, traverse, q.bcm_l2_traverse)
        self.assertRaises(TypeError, traverse, q.bcm_l2_traverse, 0, 1)
        self.assertRaises(TypeError, traverse, q.bcm_port_speed_get, 0)


class Lives(simulator.SwitchTest):
    def test_a_registered_one_lives_until_it_is_unregistered(self):
        changes = []

        made = callback(q.bcm_l2_addr_register, lambda *arguments: changes.append(arguments[2]))
        alive = weakref.ref(made)
        checked(q.bcm_l2_addr_register, 0, made, None)
        del made
        gc.collect()
        self.enter('02:00:00:00:00:01', port=1)
        self.assertEqual(len(changes), 1)
        self.assertRaises(StatusError, checked, q.bcm_l2_addr_unregister, 99, alive(), None)
        self.assertIsNotNone(alive())
        checked(q.bcm_l2_addr_unregister, 0, alive(), None)
        self.assertIsNone(alive())
        self.enter('02:00:00:00:00:02', port=1)
        self.assertEqual(len(changes), 1)

    def test_some_are_unregistered_without_being_named(self):
        alive = []
        for register in (q.NIF_PORT_CTRLr, q.IHP_MAC_AGEINGr):
            made = callback(q.soc_reg_snoop_register, lambda *arguments: None)
            alive.append(weakref.ref(made))
            checked(q.soc_reg_snoop_register, 0, register, q.SOC_REG_SNOOP_WRITE, made, None)
            del made
        checked(q.soc_reg_snoop_unregister, 0, q.NIF_PORT_CTRLr)
        self.assertEqual([made() is not None for made in alive], [False, True])
        checked(q.soc_reg_snoop_unregister, 0, q.IHP_MAC_AGEINGr)
        self.assertIsNone(alive[1]())

    def test_a_unit_that_is_made_new_keeps_none(self):
        other = callback(q.bcm_l2_addr_register, lambda *arguments: None)
        sim.Switch(1).fresh()
        self.addCleanup(q.bcm_detach, 1)
        checked(q.bcm_l2_addr_register, 1, other, None)
        alive = weakref.ref(other)
        del other
        # More than there can be at a time.
        for _ in range(40):
            checked(q.bcm_l2_addr_register, 0, callback(q.bcm_l2_addr_register, lambda *arguments: None), None)
            sim.Switch().fresh()
        self.assertIsNotNone(alive())
        sim.Switch(1).fresh()
        self.assertIsNone(alive())

    def test_it_may_unregister_itself_and_drop_itself(self):
        changes = []

        def note(*arguments):
            changes.append(arguments[2])
            checked(q.bcm_l2_addr_unregister, 0, kept.pop(), None)
            gc.collect()
        kept = [callback(q.bcm_l2_addr_register, note)]
        checked(q.bcm_l2_addr_register, 0, kept[0], None)
        self.enter('02:00:00:00:00:01', port=1)
        self.enter('02:00:00:00:00:02', port=1)
        self.assertEqual((len(changes), kept), (1, []))

    def test_a_dropped_one_finds_nobody(self):
        made = callback('bcm_rx_free_f', lambda unit, data: 5)
        call = caller_of(made, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)
        self.assertEqual(call(0, None), 5)
        pointer = made.this
        del made
        gc.collect()
        with warnings.catch_warnings(record=True) as told:
            warnings.simplefilter('always')
            self.assertEqual((call(0, None), int(pointer) != 0), (-1, True))
            # Its place is not the next one's.
            other = callback('bcm_rx_free_f', lambda unit, data: 6)
            self.assertEqual(call(0, None), -1)
            del other
        self.assertEqual([warning.category for warning in told], [RuntimeWarning] * 2)

    def test_events(self):
        with events(q.bcm_linkscan_register, 0) as changes:
            self.assertIsNone(changes.get(0.01))
            handler = changes._callback
            call = caller_of(handler, None, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)
            info = q.bcm_port_info_t()
            info.speed = 1000
            call(0, 5, int(info.this))
            unit, port, told = next(changes)
            self.assertEqual((unit, port, told.speed), (0, 5, 1000))
            del call, handler
        self.assertRaises(TypeError, events, q.bcm_l2_traverse, 0)

    def test_events_of_a_unit_that_ends_first(self):
        for raised, seen in ((None, StatusError), (Fails, Fails)):
            with self.assertRaises(seen):
                with events(q.bcm_linkscan_register, 0) as changes:
                    checked(q.bcm_linkscan_unregister, 0, changes._callback)
                    if raised:
                        raise raised

    def test_from_threads(self):
        names = []
        made = callback('bcm_rx_free_f', lambda unit, data: names.append(threading.current_thread().name))
        call = caller_of(made, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)
        threads = [threading.Thread(target=lambda: [call(0, None) for _ in range(100)]) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(len(names), 400)
        # A thread that Python knows nothing of.
        library = ctypes.CDLL('libpthread.so.0')
        thread = ctypes.c_ulong()
        self.assertEqual(library.pthread_create(ctypes.byref(thread), None, ctypes.c_void_p(int(made.this)), None), 0)
        self.assertEqual(library.pthread_join(thread, None), 0)
        self.assertEqual(len(names), 401)

    def test_values_of_all_kinds(self):
        seen = []
        made = callback('bcm_pkt_l2_map_f', lambda *arguments: seen.append(arguments))
        call = caller_of(made, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_char_p, ctypes.c_ushort)
        self.assertEqual(call(7, None, '\2\0\0\0\0\1', 4095), 0)
        self.assertEqual(seen, [(7, None, '02:00:00:00:00:01', 4095)])
        # What it is given can be written to while it lasts.
        weights = callback('bcm_rx_sched_cb', lambda unit, cosq, count: seen.append(count))
        number = ctypes.c_int(3)
        caller_of(weights, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.POINTER(ctypes.c_int))(0, 1, number)
        self.assertIn('has returned', repr(seen[1]))

    def test_a_view_of_its_memory_has_a_copy(self):
        views, packet = [], q.bcm_pkt_s()

        def look(unit, given, cookie):
            tag = dict(fields(given))['_vtag']
            tag[0] = 7
            views.extend([memoryview(tag), bytearray(tag)])
            try:
                views.append((ctypes.c_uint8 * 4).from_buffer(tag))
            except TypeError as error:
                views.append(str(error))
        made = callback('bcm_rx_cb_f', look)
        caller_of(made, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(0, int(packet.this), None)
        dict(fields(packet))['_vtag'][:] = '9999'
        self.assertEqual((views[0].tobytes(), views[1]), ('\7\0\0\0', '\7\0\0\0'))
        self.assertEqual(views[2], 'what a callback was given is written by assignment to a slice')

    def test_what_is_no_callback(self):
        for arguments in [(q.bcm_port_speed_get, len), ('int', len), ('nothing', len), (5, len),
                          (q.bcm_l2_traverse, 5), (q.bcm_l2_traverse,)]:
            self.assertRaises(TypeError, callback, *arguments)
        made = callback(q.bcm_l2_traverse, max)
        self.assertEqual((made.function, made.type, made(1, 2)), (max, 'bcm_l2_traverse_cb', 2))
        self.assertRaises(AttributeError, setattr, made, 'function', min)
        self.assertRaises(TypeError, q.bcm_linkscan_register, 0, made)

    def test_by_value_and_in_records(self):
        made = callback(q.bcm_port_phy_reset_register, lambda *arguments: 0)
        self.assertIn(q.bcm_port_phy_reset_register(0, 1, made, None), (0, q.BCM_E_UNAVAIL))
        q.bcm_port_phy_reset_unregister(0, 1, made, None)
        config = q.bcm_rx_cfg_t()
        config.rx_free = freed = callback('bcm_rx_free_f', lambda *arguments: 0)
        self.assertEqual(int(config.rx_free), int(freed.this))
        tunnel = callback(q.bcm_tx_cpu_tunnel_set, lambda *arguments: 0)
        pointers = array('bcm_tx_cpu_tunnel_f', [tunnel, None])
        self.assertEqual((int(pointers[0]), pointers[1]), (int(tunnel.this), None))

    def test_a_cycle_is_collected(self):
        class Holder(object):
            def visit(self, *arguments):
                return None
        holder = Holder()
        holder.made = callback(q.bcm_l2_traverse, holder.visit)
        gone = weakref.ref(holder)
        del holder
        gc.collect()
        self.assertIsNone(gone())


class Ends(unittest.TestCase):
    """Each in a process of its own."""

    def run_program(self, program):
        process = subprocess.Popen([sys.executable, '-c', 'import ctypes, os, sys, threading, time\n'
                                    'import QuorelApiNew as q, quorel\n' + program],
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return process.communicate()[0], process.returncode

    def test_called_after_the_interpreter_ended(self):
        self.assertEqual(self.run_program(
            'made = quorel.callback("bcm_rx_free_f", lambda *arguments: os.write(1, "called"))\n'
            'quorel.checked(q.bcm_l2_addr_register, 0, quorel.callback(q.bcm_l2_addr_register, max), None)\n'
            'ctypes.CDLL(None).on_exit(ctypes.c_void_p(int(made.this)), None)\n'
            'os.write(1, "end")'), ('end', 0))

    def test_threads_that_call_while_it_ends(self):
        self.assertEqual(self.run_program(
            'made = quorel.callback("bcm_rx_free_f", lambda *arguments: time.sleep(0.01))\n'
            'call = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_void_p)(int(made.this))\n'
            'threads, library = [], ctypes.CDLL("libpthread.so.0")\n'
            'thread = ctypes.c_ulong()\n'
            'for _ in range(20):\n'
            '    library.pthread_create(ctypes.byref(thread), None, ctypes.c_void_p(int(made.this)), None)\n'
            'os.write(1, "end")'), ('end', 0))

    def test_a_callback_that_ends_the_process(self):
        self.assertEqual(self.run_program(
            'a = q.bcm_l2_addr_t(); q.bcm_l2_addr_t_init(a, "02:00:00:00:00:01", 1); a.port = 1\n'
            'q.bcm_l2_addr_add(0, a)\n'
            'quorel.checked(q.bcm_l2_traverse, 0, quorel.callback(q.bcm_l2_traverse, lambda *arguments: sys.exit(5)),\n'
            '               None)'), ('', 5))

    def test_a_fork_in_a_callback(self):
        self.assertEqual(self.run_program(
            'def fork(*arguments):\n'
            '    child = os.fork()\n'
            '    if child == 0:\n'
            '        sys.exit(6)\n'
            '    print os.waitpid(child, 0)[1] >> 8\n'
            'made = quorel.callback("bcm_rx_free_f", fork)\n'
            'other = quorel.callback("bcm_rx_free_f", lambda *arguments: time.sleep(0.3))\n'
            'thread = ctypes.c_ulong()\n'
            'ctypes.CDLL("libpthread.so.0").pthread_create(ctypes.byref(thread), None,\n'
            '                                              ctypes.c_void_p(int(other.this)), None)\n'
            'time.sleep(0.1)\n'
            'try:\n'
            '    quorel.checked(lambda: ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_void_p)(\n'
            '        int(made.this))(0, None))\n'
            'except quorel.StatusError: pass'), ('6\n', 0))


if __name__ == '__main__':
    unittest.main()
