"""Records as values: plain content in and out, text, differences, keywords, and memory that is kept."""
import ctypes
import gc
import json
import pickle
import subprocess
import sys
import unittest

import QuorelApiNew as q
import binding
import quorel
import recording
import simulator
from quorel import (Array, as_dict, array, callback, cell, checked, constants, copy, differences, fields, members, name_of,
                    update)
from test_sweep_members import layout

UNSET = {'mac_address': '00:00:00:00:00:00', 'port_list': [], 'string': None, 'pointer': None, 'any_pointer': None,
         'callback': None, 'bool': False}


def error_of(call, *arguments, **keywords):
    try:
        call(*arguments, **keywords)
    except Exception as error:
        return type(error), str(error)


def address_of(thing):
    return int(getattr(thing, 'this', thing))


def output_of(program):
    process = subprocess.Popen([sys.executable, '-c', 'import QuorelApiNew as q\n' + program], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT)
    return process.communicate()[0]


class EveryRecord(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.sizes, cls.places = layout()
        cls.members = {}
        for member in binding.read()[1]:
            cls.members.setdefault(member.record, []).append(member)
        # A union: what fills one member fills the pointer among them.
        del cls.members['any_t']

    def content(self, record):
        return ctypes.string_at(int(record.this), self.sizes[type(record).__name__])

    def filled(self, name):
        """A record whose bytes all differ from 0, but for members with pointers."""
        record = getattr(q, name)()
        for member in self.members[name]:
            offset, size = self.places[name, member.name]
            with_pointers = member.kind == 'record' and any(
                ctype.endswith('*') for _, ctype in members(dict(fields(record))[member.name]))
            if not with_pointers and member.kind not in ('string', 'pointer', 'any_pointer', 'callback'):
                ctypes.memset(int(record.this) + offset, 1, size)
        return record

    def test_zeroed(self):
        for name, listed in self.members.items():
            record = getattr(q, name)()
            values = as_dict(record)
            self.assertEqual([member.name for member in listed], [row[0] for row in members(record)])
            self.assertEqual(members(record), members(getattr(q, name)))
            self.assertEqual(set(values), set(member.name for member in listed))
            for member in listed:
                if member.kind not in ('array', 'record', 'value'):
                    self.assertEqual(values[member.name], UNSET.get(member.kind, 0), (name, member.name))
            self.assertEqual(str(record), name + '()')

    def test_filled_is_as_the_members_are_read(self):
        for name, listed in self.members.items():
            record = self.filled(name)
            values, live = as_dict(record), fields(record)
            self.assertEqual([member.name for member in listed], [row[0] for row in live])
            for member, (_, value) in zip(listed, live):
                if member.kind == 'record':
                    self.assertEqual(as_dict(value), values[member.name])
                    self.assertEqual(address_of(value), address_of(member.get(record)))
                elif member.kind == 'array':
                    expected = (address_of(member.get(record)) if isinstance(value, Array) else values[member.name])
                    self.assertEqual(address_of(value) if isinstance(value, Array) else value, expected)
                elif member.kind == 'port_list':
                    # Reading the member leaves out the last ones.
                    ports = member.get(record)
                    self.assertEqual((values[member.name][:len(ports)], value), (ports, values[member.name]))
                elif member.kind == 'value':
                    self.assertEqual(value, values[member.name], (name, member.name))
                    if member.name != 'rx_reasons':
                        self.assertEqual(value, getattr(record, member.name), (name, member.name))
                else:
                    self.assertEqual(values[member.name], member.get(record), (name, member.name))
                    self.assertEqual(value, values[member.name], (name, member.name))

    def test_content_goes_back_as_it_came(self):
        for name in self.members:
            record = self.filled(name)
            values = as_dict(record)
            for back in (values, pickle.loads(pickle.dumps(values)), json.loads(json.dumps(values))):
                other = getattr(q, name)()
                self.assertIs(update(other, back), other)
                self.assertEqual(as_dict(other), values)
            self.assertEqual(differences(record, other), [])
            twin = copy(record)
            self.assertEqual((type(twin), self.content(twin)), (type(record), self.content(record)))
            self.assertNotEqual(int(twin.this), int(record.this))
            # Text is what a script would write to make the same.
            text = str(record)
            if '0x' not in text:
                self.assertEqual(as_dict(eval(text, vars(q))), values, text)


    def test_numbers_of_enumerations_are_shown_by_name(self):
        found = 0
        for name in self.members:
            make = getattr(q, name)
            for member, spelled in members(make):
                try:
                    numbers = set(number for _, number in constants(spelled) if number)
                except ValueError:
                    continue
                found += 1
                shown = [(number, name_of(spelled, number)) for number in numbers] + [(0x7ffffff1, '2147483633')]
                for number, text in shown:
                    record = update(make(), {member: number})
                    self.assertEqual((str(record), as_dict(record)[member]), ('%s(%s=%s)' % (name, member, text), number))
        self.assertGreater(found, 150)


class Values(unittest.TestCase):
    def test_members_of_opaque_types_are_numbers(self):
        """Of a port bitmap they are lists, of a set of reasons too; reading them prints nothing."""
        program = ('from quorel import *\n'
                   'import copy as copying, pickle\n'
                   'info = q.bcm_port_info_t(medium=1, ability=2 ** 32 - 1)\n'
                   'print as_dict(info)["medium"], dict(fields(info))["ability"], info\n'
                   'print info.medium, info.ability == 2 ** 32 - 1, repr(info.medium), info.medium & 3\n'
                   'info.medium = info.mdix = 2\n'
                   'info.ability = info.local_advert\n'
                   'print info, pickle.loads(pickle.dumps(info.medium, 2)), type(copying.copy(info.medium))\n'
                   'packet = q.bcm_pkt_s()\n'
                   'packet.rx_reasons = [q.bcmRxReasonBpdu, q.bcmRxReasonLacp]\n'
                   'print packet, as_dict(packet)["rx_reasons"], q.bcmRxReasonBpdu in packet.rx_reasons\n'
                   'reasons = packet.rx_reasons\n'
                   'reasons.remove(q.bcmRxReasonLacp)\n'
                   'packet.rx_reasons = reasons\n'
                   'print as_dict(packet)["rx_reasons"], len(packet.rx_reasons)\n'
                   'ports = q.bcm_dpp_port_info_t(prbs_mac_mode=[1, 40])\n'
                   'ports.prbs_mac_mode += [7]\n'
                   'print ports.prbs_mac_mode, ports\n')
        self.assertEqual(output_of(program).splitlines(), [
            '1 4294967295 bcm_port_info_t(ability=4294967295, medium=1)',
            '1 True 1 1',
            "bcm_port_info_t(mdix=2, medium=2) 2 <type 'int'>",
            "bcm_pkt_s(rx_reasons=['bcmRxReasonBpdu', 'bcmRxReasonLacp']) ['bcmRxReasonBpdu', 'bcmRxReasonLacp'] True",
            "['bcmRxReasonBpdu'] 1",
            '[1, 7, 40] bcm_dpp_port_info_t(prbs_mac_mode=[1, 7, 40])'])
        # A set is a number too; what has no name is its number.
        nameless = 8 * len(bytes(cell('bcm_rx_reasons_t'))) - 1
        self.assertGreater(nameless, q.bcmRxReasonCount)
        packet = update(q.bcm_pkt_s(), rx_reasons=2 ** nameless + 4)
        self.assertEqual(as_dict(packet)['rx_reasons'], ['bcmRxReasonEgressMirror', nameless])
        update(packet, rx_reasons=['bcmRxReasonMirror', 3])
        self.assertEqual(list(packet.rx_reasons), [1, 3])
        for wrong, error in ((-1, OverflowError), (2 ** 256, OverflowError), (['bcmRxReason'], ValueError),
                             ([1000], OverflowError), ([-1], OverflowError), ([None], TypeError), ('x', TypeError)):
            self.assertEqual(error_of(update, packet, rx_reasons=wrong)[0], error, wrong)
        self.assertEqual(error_of(update, packet, rx_reasons=[1, 'x']), (
            ValueError, "bcm_pkt_s.rx_reasons: element 1: 'x' is none of 'bcm_rx_reason_t'"))
        self.assertEqual(list(packet.rx_reasons), [1, 3])
        info = q.bcm_port_info_t(medium=2)
        for wrong in ('1', None, [1], 1.0):
            self.assertEqual(error_of(setattr, info, 'medium', wrong), (
                TypeError, "in method 'bcm_port_info_t_medium_set', argument 2 of type 'bcm_port_medium_t'")
                if wrong is not None else error_of(setattr, info, 'medium', None))
        self.assertEqual(error_of(setattr, info, 'medium', 2 ** 40)[0], OverflowError)
        self.assertEqual(info.medium, 2)

    def test_functions_take_what_is_passed_by_value(self):
        medium = q.bcm_port_info_t(medium=3).medium
        with recording.recording() as calls:
            q.bcm_port_medium_config_get(99, 1, medium, None)
            for given in (3, medium, array('bcm_port_medium_t', [3])):
                error = error_of(checked, q.bcm_port_medium_config_get, 99, 1, given, None)
                self.assertEqual(error[0], quorel.StatusError)
            error_of(checked, q.bcm_rx_reasons_policer_set, 99, ['bcmRxReasonMirror', 3], 7)
        received = calls()
        self.assertEqual([call[1][2] for call in received[:4]], [binding.packed('int32', 3)] * 4)
        self.assertEqual(received[4][1][1][:4], binding.packed('int32', 10))
        self.assertEqual(error_of(checked, q.bcm_port_medium_config_get, 99, 1, 3, None)[1],
                         'bcm_port_medium_config_get(99, 1, 3, None) returned BCM_E_UNIT (-3)')
        for wrong in ('3', 2 ** 40, [3]):
            self.assertEqual(error_of(checked, q.bcm_port_medium_config_get, 99, 1, wrong, None), (
                TypeError, "in method 'bcm_port_medium_config_get', argument 3 of type 'bcm_port_medium_t'"))

    def test_records_arrays_and_bitmaps_in_records(self):
        info = update(q.bcm_port_info_t(), {'local_ability': {'pause': 3}}, speed=1000)
        update(info, local_ability={'medium': 1})
        self.assertEqual((info.speed, as_dict(info.local_ability)['pause']), (1000, 3))
        update(info, remote_ability=info.local_ability)
        self.assertEqual(str(info), "bcm_port_info_t(speed=1000, local_ability={'pause': 3, 'medium': 1}, "
                         "remote_ability={'pause': 3, 'medium': 1})")
        config = q.bcm_stat_group_mode_id_config_t(hint={}, flags=1)
        self.assertEqual(str(update(config, hint=config.hint)), 'bcm_stat_group_mode_id_config_t(flags=1)')
        endpoint = q.bcm_l3_intf_t(l3a_vid=3, dscp_qos={'qos_map_id': 7})
        self.assertEqual(str(endpoint), 'bcm_l3_intf_t(l3a_vid=3, dscp_qos=bcm_l3_intf_qos_t(qos_map_id=7))')
        block = q.soc_reg_brdc_block_info_t(blk_ids=range(3) + [0] * 125)
        self.assertEqual(str(block), 'soc_reg_brdc_block_info_t(blk_ids=[0, 1, 2, ...])')
        self.assertEqual(dict(fields(block))['blk_ids'][2], 2)
        update(block, blk_ids=array('int', [5] * 128))
        self.assertEqual(as_dict(block), {'blk_type': 0, 'blk_ids': [5] * 128})
        vlan = q.bcm_vlan_data_t(port_bitmap=[1, long(40)])
        self.assertEqual((as_dict(vlan)['port_bitmap'], str(vlan)), ([1, 40], 'bcm_vlan_data_t(port_bitmap=[1, 40])'))

    def test_text_and_pointers(self):
        entry = q.regtype_entry_t(name=u'first', help='second')
        self.assertEqual((entry.name, entry.help, as_dict(entry)['name']), ('first', 'second', 'first'))
        self.assertEqual(error_of(update, entry, name=None)[0], TypeError)
        self.assertEqual(str(update(q.regtype_entry_t(), help='second', name=None)), "regtype_entry_t(help='second')")
        target = q.soc_regaddrinfo_t()
        listed = q.soc_regaddrlist_t(ainfo=target)
        self.assertEqual(as_dict(listed)['ainfo'], int(target.this))
        self.assertEqual((dict(fields(listed))['ainfo'].this, str(listed)),
                         (target.this, 'soc_regaddrlist_t(ainfo=%#x)' % int(target.this)))
        # An address is no pointer; that which is there may stay.
        update(listed, as_dict(listed))
        self.assertEqual(as_dict(listed)['ainfo'], int(target.this))
        for address in (int(target.this) + 4, 0, -1):
            self.assertEqual(error_of(update, listed, ainfo=address)[0], TypeError)
        any_of_them = q.any_t(ptr=None)
        self.assertEqual(error_of(update, any_of_them, ptr=5)[0], TypeError)
        # The owner gives up the memory that goes behind a `void *`, or keeps it if another value is wrong.
        owner = q.new_intp()
        self.assertEqual(error_of(update, any_of_them, {'ptr': owner}, none=1)[0], AttributeError)
        self.assertTrue(owner.own())
        update(any_of_them, ptr=owner)
        self.assertEqual((owner.own(), int(any_of_them.ptr)), (False, int(owner)))
        q.delete_intp(owner)

    def test_all_or_none(self):
        address = q.bcm_l2_addr_t(port=3, vid=9)
        for values, wanted in [
                ({'port': '3'}, (TypeError, "bcm_l2_addr_t.port: a value of type 'int' is wanted, not str")),
                ({'port': 2 ** 70}, (OverflowError, "bcm_l2_addr_t.port: %r does not fit in 'int'" % 2 ** 70)),
                ({'mac': 'here'}, (ValueError, None)),
                ({'block_bitmap': [-1]}, (OverflowError, None)),
                ({'block_bitmap': [2 ** 31]}, (TypeError, None)),
                ({'block_bitmap': 3}, (TypeError, None)),
                ({'prot': 3}, (AttributeError, "'bcm_l2_addr_t' has no member 'prot'")),
                ({3: 3}, (AttributeError, None))]:
            given = dict(values, vid=7, flags=1)
            kind, text = error_of(update, address, given)
            self.assertEqual((kind, text if wanted[1] else None), wanted)
            self.assertEqual((address.port, address.vid, address.flags), (3, 9, 0))
        info = q.bcm_port_info_t()
        self.assertEqual(error_of(update, info, speed=1, local_ability={'pause': None})[0], TypeError)
        self.assertEqual(error_of(update, info, speed=1, local_ability=address)[0], TypeError)
        self.assertEqual(error_of(update, q.soc_reg_brdc_block_info_t(), blk_ids=[1, 2]),
                         (ValueError, 'soc_reg_brdc_block_info_t.blk_ids: 128 values are wanted, not 2'))
        self.assertEqual(str(info), 'bcm_port_info_t()')
        for wrong in (5, None, q.intp(), 'bcm_l2_addr_t', object()):
            for function in (as_dict, fields, copy, update):
                self.assertEqual(error_of(function, wrong)[0], TypeError, (function, wrong))
        self.assertEqual(error_of(update, address, [('port', 1)])[0], TypeError)
        self.assertEqual(error_of(members, 'int')[0], TypeError)
        self.assertEqual(error_of(members, 'nothing')[0], ValueError)

    def test_differences(self):
        before = q.bcm_port_info_t(speed=1000, pause_mac='02:00:00:00:00:01', local_ability={'pause': 1})
        after = update(copy(before), speed=100, local_ability={'pause': 2})
        self.assertEqual(differences(before, before), [])
        self.assertEqual(differences(before, after), [('local_ability.pause', 1, 2), ('speed', 1000, 100)])
        self.assertEqual(differences({'speed': 10, 'enable': 0}, after), [('speed', 10, 100)])
        self.assertEqual(differences(as_dict(before), json.loads(json.dumps(as_dict(after)))),
                         differences(before, after))
        self.assertEqual(error_of(differences, {'sped': 10, 'mtu': 1}, after)[0], AttributeError)
        self.assertEqual(error_of(differences, before, 5)[0], TypeError)
        self.assertEqual(differences({'a': [{'b': 1}, {'b': 2}]}, {'a': [{'b': 1}, {'b': 3}]}), [('a[1].b', 2, 3)])


class Proxies(unittest.TestCase):
    def test_keywords(self):
        address = q.bcm_l2_addr_t(mac='02:00:00:00:00:01', port=3)
        self.assertEqual((address.mac, address.port, address.thisown), ('02:00:00:00:00:01', 3, True))
        self.assertEqual(q.bcm_l2_addr_t(**{}).port, 0)

        class Own(q.bcm_l2_addr_t):
            def __init__(self, port):
                q.bcm_l2_addr_t.__init__(self, port=port)
        self.assertEqual((Own(7).port, str(Own(7)), type(copy(Own(7)))), (7, 'Own(port=7)', q.bcm_l2_addr_t))
        self.assertEqual(error_of(q.bcm_l2_addr_t, prot=3), (AttributeError, "'bcm_l2_addr_t' has no member 'prot'"))
        self.assertEqual(error_of(q.bcm_l2_addr_t, port='3')[0], TypeError)
        self.assertEqual(error_of(q.bcm_l2_addr_t, 1, port=3)[0], TypeError)
        self.assertEqual(error_of(q.intp, value=3), (TypeError, 'intp() takes no keyword arguments'))

    def test_only_str_is_changed(self):
        address = q.bcm_l2_addr_t(port=3)
        self.assertTrue(repr(address).startswith('<QuorelApiNew.bcm_l2_addr_t; proxy of <Swig Object of type'))
        self.assertEqual(('%s' % address, '%r' % address), ('bcm_l2_addr_t(port=3)', repr(address)))
        self.assertEqual((address == copy(address), len(set([address, address]))), (False, 1))

        class Own(q.bcm_l2_addr_t):
            def __repr__(self):
                return 'mine'
        self.assertEqual(str(Own()), 'mine')
        number = q.intp()
        self.assertEqual(str(number), repr(number))
        q.delete_bcm_l2_addr_t(address)
        for gone in (q.bcm_l2_addr_t.__new__(q.bcm_l2_addr_t),):
            self.assertEqual(str(gone), repr(gone))
            self.assertEqual(error_of(as_dict, gone)[0], TypeError)

    def test_without_the_package_nothing_is_changed(self):
        program = ('record = q.bcm_l2_addr_t()\n'
                   'print str(record) == repr(record)\n'
                   'try: q.bcm_l2_addr_t(port=3)\n'
                   'except TypeError as error: print error\n'
                   'names = dir(record)\n'
                   'import quorel\n'
                   'print names == dir(record), str(record)\n')
        self.assertEqual(output_of(program), 'True\nbcm_l2_addr_t() takes no keyword arguments\nTrue bcm_l2_addr_t()\n')


class KeptMemory(simulator.SwitchTest):
    def spray(self):
        """Takes the memory that was freed."""
        gc.collect()
        return [array('uint8', '\xa5' * size) for size in range(8, 1024, 8) for _ in range(4)]

    def test_what_is_read_out_of_a_record_keeps_it(self):
        hint = q.bcm_stat_group_mode_id_config_t().hint
        ability = q.bcm_port_info_t(local_ability={'pause': 5}).local_ability
        ids = q.soc_reg_brdc_block_info_t(blk_ids=range(128)).blk_ids
        flat = q.soc_reg_brdc_block_info_t_blk_ids_get(q.soc_reg_brdc_block_info_t(blk_ids=range(128)))
        number = q.uintp.frompointer(q.new_uintp())
        number.assign(77)
        parts = dict(fields(q.bcm_port_info_t(remote_ability={'pause': 6})))
        kept = self.spray()
        self.assertEqual((as_dict(hint), as_dict(ability)['pause'], as_dict(parts['remote_ability'])['pause'],
                          number.value()), (as_dict(type(hint)()), 5, 6, 77))
        for pointer in (ids, flat):
            self.assertEqual(list((ctypes.c_int * 128).from_address(int(pointer))), range(128))
            self.assertEqual((pointer.own(), pointer.next()), (False, None))
            self.assertNotIn('soc_reg', repr(pointer))
        self.assertFalse(hint.thisown)
        del kept

    def test_parts_of_a_callbacks_argument_end_with_it(self):
        kept = []

        def visit(unit, port, info, cookie):
            info.speed = 10
            kept.extend([info.local_ability, dict(fields(info))['remote_ability']])
            kept.extend(q.bcm_port_info_t_port_ability_get(info) for _ in range(200))
            self.assertEqual(as_dict(kept[0])['pause'], 4)
        made = callback('bcm_linkscan_handler_t', lambda unit, port, info: visit(unit, port, info, None))
        info = q.bcm_port_info_t(local_ability={'pause': 4})
        call = ctypes.CFUNCTYPE(None, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)(int(made.this))
        call(0, 1, int(info.this))
        self.assertEqual((len(kept), info.speed), (202, 10))
        for part in kept:
            self.assertRaises(TypeError, q.bcm_port_ability_advert_get, 0, 1, part)
            self.assertRaises(ValueError, as_dict, part)
            self.assertEqual(int(part), 0)

    def test_arrays_of_a_callbacks_argument_end_with_it(self):
        kept = []

        def visit(unit, host, route, cookie):
            address = dict(fields(route))['l3a_ip6_net']
            kept.extend([address, address[2:5], address.this, route.l3a_ip6_net])
            self.assertEqual(list(address[:2]), [32, 1])
        made = callback('bcm_l3_route_traverse_cb', visit)
        route = q.bcm_l3_route_t(l3a_ip6_net=[32, 1] + [0] * 14)
        call = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
        self.assertEqual(call(int(made.this))(0, 1, int(route.this), None), 0)
        self.assertEqual([len(part) for part in kept[:2]], [0, 0])
        self.assertRaises(IndexError, lambda: kept[0][0])
        for part in kept:
            self.assertRaises(TypeError, q.uint8Array_getitem, part, 0)
        self.assertEqual(len(kept[0][:]), 0)


if __name__ == '__main__':
    unittest.main()
