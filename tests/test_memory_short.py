"""Memory that runs short: one allocation fails, each in turn, in the import and in calls.

The process goes on, Python sees MemoryError (of a library that could not be loaded ImportError), the SDK answers
BCM_E_MEMORY and has changed nothing. The tests run in a process whose allocator can be told to fail.
"""
import ctypes
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

CHILD = 'QUOREL_MEMORY_SHORT'
# What a process of its own answers.
IMPORTED, REFUSED, NO_FAILURE, WRONG = range(4)


def failing(number, call):
    """(what call() gives or raises, whether the allocation of that number was reached, and failed)"""
    allocator = ctypes.CDLL(None)
    allocator.fail_allocation(number)
    try:
        try:
            result = call()
        finally:
            reached = allocator.allocations() >= number
            allocator.fail_allocation(0)
    except BaseException as error:
        result = error
    return result, reached


def import_module():
    import _QuorelApiNew
    return _QuorelApiNew


def import_short_of_memory(number, names):
    module, reached = failing(number, import_module)
    if not reached:
        return NO_FAILURE
    if isinstance(module, BaseException) and not isinstance(module, (MemoryError, ImportError)):
        return WRONG
    answer = REFUSED if isinstance(module, BaseException) else IMPORTED
    again = import_module()
    return answer if dir(again) == names and again.bcm_l2_init(0) == 0 and again.new_bcm_l2_addr_t() else WRONG


def in_a_process(call, *args):
    """What call(*args) answers in a copy of this process; if a signal ends it, minus its number."""
    process = os.fork()
    if process == 0:
        answer = WRONG
        try:
            answer = call(*args)
        finally:
            os._exit(answer)
    status = os.waitpid(process, 0)[1]
    return -os.WTERMSIG(status) if os.WIFSIGNALED(status) else os.WEXITSTATUS(status)


def answers_of_import():
    """The answer for each allocation of the import, in order."""
    reader, writer = os.pipe()
    names = os.fork()
    if names == 0:
        os.write(writer, '\n'.join(dir(import_module())))
        os._exit(0)
    os.close(writer)
    text = os.fdopen(reader).read().split('\n')
    os.waitpid(names, 0)
    answers = []
    while not answers or answers[-1] != NO_FAILURE:
        answers.append(in_a_process(import_short_of_memory, len(answers) + 1, text))
    return answers[:-1]


@unittest.skipUnless(CHILD in os.environ, 'runs in a process of its own')
class ShortOfMemory(unittest.TestCase):
    def test_import(self):
        # Before the module is there.
        answers = answers_of_import()
        self.assertGreater(len(answers), 100)
        self.assertGreater(answers.count(REFUSED), 50)
        self.assertEqual([(number, answer) for number, answer in enumerate(answers, 1)
                          if answer not in (IMPORTED, REFUSED)], [])

    def test_values_that_the_module_makes(self):
        import _QuorelApiNew as m
        import QuorelApiNew  # has records destroyed
        self.assertTrue(QuorelApiNew)
        for name, args in (('bcm_l2_addr_get', (0, '02:00:5e:00:00:01', 1)),
                           ('bcm_port_config_get', (0,)), ('new_bcm_l2_addr_t', ()), ('new_intp', ()),
                           ('new_uint8Array', (4000,)), ('getHwMacTable', (0,))):
            call, number = getattr(m, name), 1
            while True:
                result, reached = failing(number, lambda: call(*args))
                if not reached:
                    break
                if isinstance(result, BaseException):
                    self.assertIs(type(result), MemoryError, name)
                number += 1

    def test_updates_set_all_or_nothing(self):
        import QuorelApiNew as q
        from quorel import array, as_dict, update
        entry, texts = q.regtype_entry_t(name='1' * 600, help='2' * 600), array('char *', ['first', None])

        def judge(call, shown):
            """Whether the failing allocation was reached."""
            before = shown()
            result, reached = failing(number, call)
            if isinstance(result, BaseException):
                self.assertEqual((type(result), shown()), (MemoryError, before))
            else:
                self.assertNotEqual(shown(), before)
            return reached

        number, is_reached = 1, True
        while is_reached:
            text = '%600d' % number
            memory, holder = q.new_intp(), q.any_t()
            is_reached = any([
                judge(lambda: update(entry, {'name': text, 'help': text, 'type': number}), lambda: as_dict(entry)),
                judge(lambda: update(holder, ptr=memory), lambda: (as_dict(holder), memory.own())),
                judge(lambda: texts.__setitem__(1, text), lambda: list(texts))])
            q.delete_intp(memory)
            number += 1
        self.assertGreater(number, 5)

    def test_the_sdk_changes_nothing(self):
        import QuorelApiNew as q
        address = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(address, '02:00:5e:00:00:01', 1)
        address.port, address.cos_dst = 3, 2
        learnt = q.bcm_l2_addr_t()
        q.bcm_l2_addr_t_init(learnt, '02:00:5e:00:00:02', 1)
        learnt.port, learnt.flags = 4, q.BCM_L2_STATIC
        value = q.intp()
        station = q.bcm_l2_station_t()
        station.dst_mac, station.dst_mac_mask = '02:00:5e:00:00:03', 'ff:ff:ff:ff:ff:ff'

        route = q.bcm_l3_route_t()
        route.l3a_subnet, route.l3a_ip_mask, route.l3a_lookup_class = 0x0a010200, 0xfffffff0, 3
        host, routes = q.bcm_l3_host_t(), q.bcm_l3_info_t()
        host.l3a_ip_addr = 0x0a010203

        members = [q.bcm_trunk_member_t(), q.bcm_trunk_member_t()]
        info = q.bcm_trunk_info_t()
        q.bcm_trunk_info_t_init(info)
        for member, port in zip(members, (5, 6)):
            q.bcm_trunk_member_t_init(member)
            member.gport = port
        self.assertEqual((q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, 8)[0],
                          q.bcm_trunk_set(0, 8, info, 1, members[0])), (0, 0))
        texts = ['a value %d of some length, so that it is not kept in place' % place for place in range(2)]
        q.sal_config_set('memory_short_set', texts[0])
        sdk = ctypes.CDLL(os.path.join(os.environ['QUOREL_LIBRARIES'], 'libQuorelApiNew.so.0'))
        defaults = ['l2_age_timer', 'port_init_enable', 'port_init_learn']
        directory = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, directory)
        q.sal_config_file_set(os.path.join(directory, 'a file whose name is too long to be kept in place'), '')

        def remove_defaults():
            for name in defaults:
                sdk.sal_config_set(name, None)

        def default_values():
            return [q.sal_config_get(name) for name in defaults]

        def files():
            texts = []
            for name in os.listdir(directory):
                with open(os.path.join(directory, name)) as file:
                    texts.append((name, file.read()))
            return texts

        def change():
            q.sal_config_set('memory_short_set', texts[q.sal_config_get('memory_short_set') == texts[0]])

        def number(getter, *args):
            return lambda: (getter(0, *(args + (value,))), value.value())

        # (call, what it would undo, what shows that nothing was changed)
        cases = [(lambda: q.bcm_l2_addr_add(0, address), lambda: q.bcm_l2_addr_delete(0, address.mac, 1),
                  lambda: q.getHwMacTable(0)),
                 (lambda: q.bcm_l2_addr_add(0, learnt), lambda: q.bcm_l2_addr_delete(0, learnt.mac, 1),
                  lambda: q.getHwMacTable(0)),
                 (lambda: q.bcm_vlan_create(0, 77), lambda: q.bcm_vlan_destroy(0, 77),
                  lambda: q.bcm_vlan_port_get(0, 77)),
                 (lambda: q.bcm_vlan_port_add(0, 1, [5], [5]), lambda: None, lambda: q.bcm_vlan_port_get(0, 1)),
                 (lambda: q.bcm_stg_create_id(0, 9), lambda: q.bcm_stg_destroy(0, 9), lambda: q.bcm_stg_list(0)),
                 (lambda: q.bcm_trunk_create(0, q.BCM_TRUNK_FLAG_WITH_ID, 9)[0], lambda: q.bcm_trunk_destroy(0, 9),
                  lambda: q.bcm_trunk_psc_get(0, 9)),
                 (lambda: q.sal_config_set('memory_short', 'a value that is too long to be kept in place'),
                  lambda: 0, lambda: q.sal_config_get('memory_short')),
                 (lambda: q.sal_config_set('memory_short_set', texts[1]),
                  lambda: q.sal_config_set('memory_short_set', texts[0]), lambda: q.sal_config_get('memory_short_set')),
                 (q.sal_config_init_defaults, remove_defaults, default_values),
                 (q.sal_config_flush, change, files),
                 (lambda: q.bcm_trunk_set(0, 8, info, 1, members[1]),
                  lambda: q.bcm_trunk_set(0, 8, info, 1, members[0]),
                  number(q.bcm_trunk_member_status_get, 8, 5)),
                 (lambda: q.bcm_stg_init(0), lambda: 0, lambda: q.bcm_stg_stp_get(0, 1, 1)),
                 (lambda: q.bcm_switch_control_set(0, q.bcmSwitchArpReplyToCpu, 1),
                  lambda: q.bcm_switch_control_set(0, q.bcmSwitchArpReplyToCpu, 0),
                  number(q.bcm_switch_control_get, q.bcmSwitchArpReplyToCpu)),
                 (lambda: q.bcm_attach(3, 'local', 'a name of the unit that is long', 0),
                  lambda: q.bcm_detach(3), lambda: q.bcm_attach_check(3)),
                 (lambda: q.bcm_l2_station_add(0, value, station), lambda: q.bcm_l2_station_delete_all(0),
                  lambda: q.bcm_l2_station_get(0, 1, station)),
                 (lambda: q.bcm_l3_route_add(0, route), lambda: q.bcm_l3_route_delete(0, route),
                  lambda: (q.bcm_l3_info(0, routes), routes.l3info_used_route)),
                 (lambda: q.bcm_l3_host_add(0, host), lambda: q.bcm_l3_host_delete(0, host),
                  lambda: (q.bcm_l3_info(0, routes), routes.l3info_used_host)),
                 (lambda: q.sh_process_command(0, 'ps'), lambda: 0, lambda: 0)]
        # What is made only once is made now.
        q.sal_config_init_defaults()
        remove_defaults()
        change()
        wrong = []
        for place, (call, undo, shown) in enumerate(cases):
            count = 1
            while count < 2000:
                before = shown()
                result, reached = failing(count, call)
                if not reached:
                    undo()
                    break
                if result is None:
                    # It has no status to give: all is done, or nothing.
                    result = q.BCM_E_MEMORY if None in shown() else 0
                if isinstance(result, MemoryError):
                    # Of the module, before the SDK was called or after it had done its work.
                    undo()
                elif result in (q.BCM_E_MEMORY, q.CMD_FAIL):
                    if shown() != before:
                        wrong.append((place, count, result, shown()))
                elif result == 0:
                    undo()
                else:
                    wrong.append((place, count, result))
                count += 1
        self.assertEqual(wrong, [])


@unittest.skipIf(CHILD in os.environ, 'starts the others')
class Apart(unittest.TestCase):
    def test_short_of_memory(self):
        allocator = os.path.join(os.environ['QUOREL_PROBE'], 'failing_allocator.so')
        environment = dict(os.environ, **{CHILD: '1'})
        environment['LD_PRELOAD'] = allocator
        process = subprocess.Popen([sys.executable, os.path.abspath(__file__.replace('.pyc', '.py'))],
                                   env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        output = process.communicate()[0]
        self.assertEqual(process.returncode, 0, 'ended with %d:\n%s' % (process.returncode, output[-4000:]))


if __name__ == '__main__':
    unittest.main()
