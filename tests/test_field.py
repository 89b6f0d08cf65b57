"""Groups, entries, ranges and counters of the field processor, and what each of their functions refuses."""
import ctypes
import fnmatch
import os
import re
import unittest

import QuorelApiNew as q
import console
import rules
from field_model import GPORT_KINDS
from quorel import array, checked, OUT, sim, StatusError
from recording import library
from simulator import SwitchTest

MISSING, EXISTS, BUSY, PARAM = q.BCM_E_NOT_FOUND, q.BCM_E_EXISTS, q.BCM_E_BUSY, q.BCM_E_PARAM
INT_MIN = -1 << 31
DOCS = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), 'docs', 'simulated-switch.md')


def qualifiers(*names):
    qset = q.bcm_field_qset_t()
    for name in names:
        q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualify' + name))
    return qset


class FieldTest(SwitchTest):
    def setUp(self):
        SwitchTest.setUp(self)
        self.done(q.bcm_field_init(0))
        self.addCleanup(q.bcm_field_init, 0)
        self.group = checked(q.bcm_field_group_create, 0, qualifiers('OuterVlanId', 'SrcIp', 'L4PortRangeCheck'), 5)
        self.entry = checked(q.bcm_field_entry_create, 0, self.group)


class Groups(FieldTest):
    def test_ids(self):
        qset = qualifiers('SrcIp')
        self.assertEqual([q.bcm_field_group_create_id(0, qset, 1, 70) for _ in range(2)], [0, EXISTS])
        self.assertStatus(PARAM, q.bcm_field_group_create_id(0, qset, 1, -1))
        seen, kind = [], ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_void_p)
        note = kind(lambda unit, group, datum: seen.append((unit, group)) or (q.BCM_E_FAIL if group == 70 else 0))
        self.assertStatus(q.BCM_E_FAIL, library.bcm_field_group_traverse(0, note, None))
        self.assertEqual(seen, [(0, self.group), (0, 70)])
        self.assertStatus(BUSY, q.bcm_field_group_destroy(0, self.group))
        self.done(q.bcm_field_group_flush(0, self.group))
        self.done(q.bcm_field_group_destroy(0, self.group))
        self.assertStatus(MISSING, q.bcm_field_group_destroy(0, self.group))

    def test_there_is_no_room_for_more(self):
        qset, made = qualifiers('SrcIp'), 0
        while True:
            status, _ = q.bcm_field_group_create(0, qset, 0)
            if status:
                break
            made += 1
        self.assertEqual((status, made), (q.BCM_E_RESOURCE, 511))

    def test_settings(self):
        for name, value in (('priority', INT_MIN + 1), ('enable', 0)):
            self.done(getattr(q, 'bcm_field_group_%s_set' % name)(0, self.group, value))
            self.assertEqual(checked(getattr(q, 'bcm_field_group_%s_get' % name), 0, self.group, OUT), value)
        self.assertEqual(checked(q.bcm_field_group_mode_get, 0, self.group, OUT), q.bcmFieldGroupModeDefault)
        self.assertStatus(q.BCM_E_UNAVAIL,
                          q.bcm_field_group_create_mode(0, qualifiers(), 1, q.bcmFieldGroupModeHash)[0])
        self.assertStatus(PARAM, q.bcm_field_group_create_mode(0, qualifiers(), 1, q.bcmFieldGroupModeCount)[0])
        self.assertStatus(q.BCM_E_PORT, q.bcm_field_group_port_create_mode(0, 65, qualifiers(), 1, 0)[0])
        self.assertStatus(q.BCM_E_PORT, q.bcm_field_group_ports_create_mode(0, [1, 65], qualifiers(), 1, 0)[0])
        self.assertStatus(q.BCM_E_UNAVAIL, q.bcm_field_group_create(0, qualifiers('StageExternal'), 1)[0])

    def test_qualifiers_in_use_stay(self):
        self.done(q.bcm_field_qualify_SrcIp(0, self.entry, 1, 1))
        self.assertStatus(BUSY, q.bcm_field_group_set(0, self.group, qualifiers('DstIp')))
        self.done(q.bcm_field_group_set(0, self.group, qualifiers('SrcIp', 'DstIp')))
        found = q.bcm_field_qset_t()
        self.done(q.bcm_field_group_get(0, self.group, found))
        self.assertTrue(q.bcm_field_qset_test(found, q.bcmFieldQualifyDstIp))
        self.assertStatus(PARAM, q.bcm_field_qualify_OuterVlanId(0, self.entry, 1, 1))

    def test_status(self):
        status = q.bcm_field_group_status_t()
        self.done(q.bcm_field_entry_install(0, self.entry))
        self.done(q.bcm_field_group_status_get(0, self.group, status))
        self.assertEqual((status.entry_count, status.entries_total - status.entries_free), (1, 1))


class Entries(FieldTest):
    def vlan(self, entry):
        """(data, mask) of a qualifier, or the status."""
        data, mask = ctypes.c_uint16(), ctypes.c_uint16()
        status = library.bcm_field_qualify_OuterVlanId_get(0, entry, ctypes.byref(data), ctypes.byref(mask))
        return status or (data.value, mask.value)

    def test_ids(self):
        self.assertStatus(MISSING, q.bcm_field_entry_create_id(0, self.group + 1, 7))
        self.assertEqual([q.bcm_field_entry_create_id(0, self.group, 77) for _ in range(2)], [0, EXISTS])
        self.done(q.bcm_field_entry_prio_set(0, 77, 4))
        entries, priorities = array('bcm_field_entry_t', 4), array('int', 4)
        self.assertEqual(checked(q.bcm_field_entry_multi_get, 0, self.group, 4, entries, priorities, OUT), 2)
        self.assertEqual((list(entries)[:2], list(priorities)[:2]), ([self.entry, 77], [0, 4]))
        self.done(q.bcm_field_entry_destroy_all(0))
        self.assertStatus(MISSING, q.bcm_field_entry_install(0, 77))

    def test_qualifiers_and_actions_go_with_their_entry(self):
        other = checked(q.bcm_field_entry_create, 0, self.group)
        self.assertStatus(MISSING, q.bcm_field_qualify_OuterVlanId(0, other + 1, 20, 0xfff))
        self.assertEqual(self.vlan(self.entry), MISSING)
        for entry, vlan in ((self.entry, 20), (other, 30), (self.entry, 21)):
            self.done(q.bcm_field_qualify_OuterVlanId(0, entry, vlan, 0xfff))
        self.assertEqual((self.vlan(self.entry), self.vlan(other)), ((21, 0xfff), (30, 0xfff)))
        self.done(q.bcm_field_action_add(0, self.entry, q.bcmFieldActionDrop, 1, 2, 3))
        self.assertStatus(EXISTS, q.bcm_field_action_add(0, self.entry, q.bcmFieldActionDrop, 4, 5, 6))
        self.assertStatus(PARAM, q.bcm_field_action_add(0, self.entry, q.bcmFieldActionCount, 4, 5, 6))
        twin = checked(q.bcm_field_entry_copy, 0, self.entry, OUT)
        self.done(q.bcm_field_qualify_clear(0, self.entry))
        self.assertEqual((self.vlan(self.entry), self.vlan(twin)), (MISSING, (21, 0xfff)))
        self.done(q.bcm_field_entry_destroy(0, self.entry))
        self.assertStatus(MISSING, q.bcm_field_action_remove(0, self.entry, q.bcmFieldActionDrop))
        found = checked(q.bcm_field_action_get, 0, twin, q.bcmFieldActionDrop, OUT, OUT, OUT)
        self.assertEqual(tuple(found), (1, 2, 3))
        self.assertStatus(MISSING, q.bcm_field_action_delete(0, twin, q.bcmFieldActionDrop, 1, 2, 4))
        self.done(q.bcm_field_action_delete(0, twin, q.bcmFieldActionDrop, 1, 2, 3))

    def test_values_that_no_packet_has(self):
        self.assertStatus(PARAM, q.bcm_field_qualify_OuterVlanId(0, self.entry, 0x1000, 0xffff))
        self.assertEqual(self.vlan(self.entry), MISSING)

    def group_with_all_qualifiers(self, *stage):
        qset = q.bcm_field_qset_t()
        for number in range(q.bcmFieldQualifyCount):
            q.bcm_field_qset_add(qset, number)
        for other in set('Lookup Egress External Hash ExactMatch PortClass Prelookup'.split()) - set(stage):
            q.bcm_field_qset_remove(qset, getattr(q, 'bcmFieldQualifyStage' + other))
        # And a data qualifier, whether there is one or not.
        q.bcm_field_qset_add(qset, q.bcmFieldQualifyCount + 5)
        return checked(q.bcm_field_group_create, 0, qset, 1)

    def test_documented_qualifiers_are_matched_and_all_others_refused(self):
        text, documented = open(DOCS).read(), {}
        rows = re.findall(r'(?m)^\| (`[^|]*`) \| ([a-z, ]+) \|', text[text.index('| Qualifier |'):])
        for names, stages in rows:
            documented.update((name, set(stages.split(', '))) for name in re.findall(r'`(\w+)`', names))
        groups = dict((stage, self.group_with_all_qualifiers(stage.capitalize()))
                      for stage in ('lookup', 'ingress', 'egress'))
        checked(q.bcm_field_range_create_id, 0, 1, q.BCM_FIELD_RANGE_DSTPORT, 1, 2)
        checked(q.bcm_field_range_create_id, 0, 2, q.BCM_FIELD_RANGE_PACKET_LENGTH, 1, 2)
        header = q.bcm_field_llc_header_t(dsap=1)
        octet = array('uint8', [1])
        three, source = array('uint8', [1, 2, 3]), q.bcm_field_src_class_t(udf_class=1)
        checked(q.bcm_field_range_create_id, 0, 3, q.BCM_FIELD_RANGE_SRCPORT, 1, 2)
        setters = dict(L2PayLoad=(3, three, three), VPortRangeCheck=(3, 0), Decap=(q.bcmFieldDecapMim,),
                       ExactMatchHitStatus=(1, 1, 1), ExactMatchActionClassId=(1, 1, 1), ExactMatchGroupClassId=(1, 1),
                       MixedSrcClassId=([1], source, source), SrcModuleGport=(GPORT_KINDS['port'] << 26 | 1,), RangeCheck=(1, 0), L4PortRangeCheck=(1, 0),
                       PacketLengthRangeCheck=(2, 0), Llc=(header, header), data=(5, octet, octet, 1))
        checked(q.bcm_field_data_qualifier_create, 0, q.bcm_field_data_qualifier_t(
            qual_id=5, flags=q.BCM_FIELD_DATA_QUALIFIER_WITH_ID, length=1))
        setters = dict((name, (getattr(q, 'bcm_field_qualify_' + name), given)) for name, given in setters.items())
        for function in rules.read():
            name = function.name[len('bcm_field_qualify_'):]
            if function.name.startswith('bcm_field_qualify_') and function.known and not name.endswith(('_get', 'clear')):
                setters.setdefault(name, (function, [parameter.argument(1) for parameter in function.parameters[1:]]))
        answers = dict((name, why) for name, _, _, why in rules.report('answers.tsv'))
        for name, (setter, given) in sorted(setters.items()):
            served, statuses = set(), set()
            for stage, group in groups.items():
                entry = checked(q.bcm_field_entry_create, 0, group)
                if setter(0, entry, *given) == 0:
                    statuses.add(q.bcm_field_entry_install(0, entry))
                    if q.bcm_field_entry_install(0, entry) == 0:
                        served.add(stage)
                checked(q.bcm_field_entry_destroy, 0, entry)
            self.assertEqual(served, documented.get(name, set()), name)
            unmet = 'kept, met by no packet: ' in answers['bcm_field_qualify_' + name]
            self.assertEqual((not served, statuses - set([0])), (unmet, set([q.BCM_E_UNAVAIL] if len(served) < 3 else [])),
                             name)
        self.assertEqual(set(documented) - set(setters), set())

    def test_reasons_are_those_of_the_report(self):
        text = open(DOCS).read()
        rows = re.findall(r'(?m)^\| ([^|`]+) \| (`[^|]*`) \|', text[text.index('| Refused, since |'):])
        reasons = [(why, [pattern for pattern in re.findall(r'`(\S+)`', patterns)]) for why, patterns in rows]
        found = 0
        for name, _, _, told in rules.report('answers.tsv'):
            name, told = name[len('bcm_field_qualify_'):], told.partition('kept, met by no packet: ')[2]
            if told:
                fitting = [why for why, patterns in reasons if any(fnmatch.fnmatchcase(name, each) for each in patterns)]
                self.assertEqual(fitting, [told], name)
                found += 1
        self.assertGreater(found, 400)

    def test_every_qualifier_gives_back_what_it_was_given(self):
        entry = checked(q.bcm_field_entry_create, 0, self.group_with_all_qualifiers())
        functions = dict((function.name, function) for function in rules.read()
                         if function.name.startswith('bcm_field_qualify_') and function.known)
        kept = 0
        for name, setter in sorted(functions.items()):
            getter = functions.get(name + '_get')
            if getter is None:
                continue
            given = [parameter.argument(1) for parameter in setter.parameters[1:]]
            if setter(0, entry, *given) == q.BCM_E_PORT:  # a number that is no port
                continue
            got = [parameter.argument(9) for parameter in getter.parameters[1:]]
            self.assertEqual(getter(0, entry, *got), 0, name)
            for one, other in zip(given, got):
                size = ctypes.sizeof(one) if not isinstance(one, ctypes.Array) else 6
                self.assertEqual(ctypes.string_at(ctypes.addressof(one), size), other.raw[:size], name)
            kept += 1
        self.assertGreater(kept, 500)


    def test_values_that_no_packet_can_have(self):
        """By what the headers of packets and of the SDK say. Bits that the mask leaves out do not count."""
        wide = 0xffffffff
        bits = dict(OuterVlanId=12, InnerVlanId=12, ForwardingVlanId=12, TranslatedOuterVlanId=12, LearnVlan=12,
                    FibreChanVFTFabricId=12, OuterVlanPri=3, InnerVlanPri=3, TranslatedInnerVlanPri=3, FibreChanVFTPri=3,
                    MplsLabel1Exp=3, MplsLabel3Exp=3, OamMdl=3, OuterVlanCfi=1, InnerVlanCfi=1, MplsLabel2Bos=1, Drop=1,
                    L2SrcHit=1, Dhcp=1, IpFragNonOrFirst=1, OuterVlanPriCfi=4, TcpHeaderSize=4, TosLower4Bits=4, DSCP=6,
                    InnerDSCP=6, TrillHopCount=6, TrillOpLength=5, EcnValue=2, IpFlags=2, TrillIVersion=2, VlanFormat=2,
                    Ip6FlowLabel=20, MplsLabel1Id=20, MplsLabel2Id=20, IngressECid=20, ECid=22, VxlanNetworkId=24,
                    L2GreVsid=24, ISid=24, VxlanHeaderBits8_31=24, FibreChanSrcId=24, L2GreFlowId=8, CnTag=16,
                    PacketLength=16, ETag=48, ClassId=16)
        entry = checked(q.bcm_field_entry_create, 0, self.group_with_all_qualifiers())
        other = checked(q.bcm_field_entry_create, 0, checked(q.bcm_field_group_create, 0, qualifiers('RangeCheck'), 1))
        for name, width in bits.items():
            qualify, above, most = getattr(q, 'bcm_field_qualify_' + name), 1 << width, (1 << width) - 1
            for status, of, value, mask in ((0, entry, most, most), (PARAM, other, most, most), (PARAM, entry, above, above),
                                            (PARAM, entry, above | 1, above | 1), (0, entry, above | 1, most)):
                self.assertStatus(status, qualify(0, of, value, mask), (name, value, mask))
            self.assertStatus(MISSING, qualify(0, other + 9, 0, 0), name)
        for name, kinds in dict(IpType='IpTypeCount', IpFrag='IpFragCount', L2Format='L2FormatCount', Stage='StageCount',
                                TunnelType='TunnelTypeCount', ForwardingType='ForwardingTypeCount', AppType='AppTypeCount',
                                ArpOpcode='ArpOpcodeCount', OamType='OamTypeCount', HeaderFormat='HeaderFormatCount',
                                InnerIpType='IpTypeCount', LoopbackType='LoopbackTypeCount').items():
            count = getattr(q, 'bcmField' + kinds)
            for status, kind in ((0, 0), (0, count - 1), (PARAM, count), (PARAM, -1)):
                self.assertStatus(status, getattr(q, 'bcm_field_qualify_' + name)(0, entry, kind), (name, kind))
        for name, wrong in dict(Color=4, EqualL4Port=2, TcpSequenceZero=2, SrcIpEqualDstIp=wide, StpState=8,
                                DstMulticastGroup=1 << 16).items():
            self.assertStatus(PARAM, getattr(q, 'bcm_field_qualify_' + name)(0, entry, wrong), name)
        trunk = GPORT_KINDS['trunk'] << 26 | 3
        for name, status, gport in (('SrcGport', 0, trunk), ('SrcModPortGport', q.BCM_E_PORT, trunk), ('SrcGport', 0, 64),
                                    ('DstGport', q.BCM_E_PORT, 65), ('SrcModuleGport', q.BCM_E_PORT, 200),
                                    ('SrcTrunkMemberGport', q.BCM_E_PORT, trunk)):
            self.assertStatus(status, getattr(q, 'bcm_field_qualify_' + name)(0, entry, gport), (name, gport))

    def test_qualifiers_that_contradict_each_other_are_met_by_no_packet(self):
        frame = sim.tagged(sim.ethernet('ff:ff:ff:ff:ff:ff', '02:00:00:00:00:01', sim.udp4('10.0.0.1', '10.0.0.2')), 1)
        group = self.group_with_all_qualifiers()
        for one, other, agree, contradict in (
                (('OuterVlan', 1, 0xffff), 'OuterVlanId', (1, 0xfff), (3, 0xfff)), (('Tos', 0, 255), 'DSCP', (0, 63), (1, 1)),
                (('EtherType', 0x800, 0xffff), 'EtherType', (0x800, 0xf00), (0x801, 0xffff)),
                (('InPort', 1, 255), 'SrcGport', (1,), (2,)), (('IpProtocol', 17, 255), 'Ttl', (64, 255), (63, 255))):
            for values, meets in ((agree, True), (contradict, False)):
                entry = checked(q.bcm_field_entry_create, 0, group)
                for name, given in ((one[0], one[1:]), (other, values)):
                    self.done(getattr(q, 'bcm_field_qualify_' + name)(0, entry, *given))
                self.done(q.bcm_field_action_add(0, entry, q.bcmFieldActionDrop, 0, 0, 0))
                self.done(q.bcm_field_entry_install(0, entry))
                self.assertEqual(not sim.Switch().send(1, frame), meets, (one, other, values))
                self.done(q.bcm_field_entry_destroy(0, entry))

    def test_what_is_asked_of_several_things(self):
        """By the priority of a group of exact matches, by ports; and as many bytes as the caller says."""
        entry = checked(q.bcm_field_entry_create, 0, self.group_with_all_qualifiers())
        for priority in 3, 4:
            self.done(q.bcm_field_qualify_ExactMatchActionClassId(0, entry, priority, 7 * priority, 0xff))
        get = q.bcm_field_qualify_ExactMatchActionClassId_get
        self.assertEqual([tuple(checked(get, 0, entry, priority, OUT, OUT)) for priority in (3, 4)],
                         [(21, 0xff), (28, 0xff)])
        for ports, number in (([1], 5), ([1, 2], 6)):
            given = q.bcm_field_src_class_t(intf_class_port=number)
            self.done(q.bcm_field_qualify_MixedSrcClassId(0, entry, ports, given, given))
        data, mask = q.bcm_field_src_class_t(), q.bcm_field_src_class_t()
        self.done(q.bcm_field_qualify_MixedSrcClassId_get(0, entry, [1, 2], data, mask))
        self.assertEqual((data.intf_class_port, mask.intf_class_port), (6, 6))
        self.assertStatus(MISSING, q.bcm_field_qualify_MixedSrcClassId_get(0, entry, [2], data, mask))
        self.done(q.bcm_field_qualifier_delete(0, entry, q.bcmFieldQualifyExactMatchActionClassId))
        room = array('uint32', 1)
        self.assertEqual([get(0, entry, priority, room, room) for priority in (3, 4)], [MISSING] * 2)
        self.assertStatus(PARAM, q.bcm_field_qualify_Decap(0, entry, q.bcmFieldDecapCount))

        values, masks = array('uint8', range(1, 34)), array('uint8', [255] * 33)
        for status, length in ((PARAM, 0), (PARAM, 33), (PARAM, 0xffffffff), (0, 32), (0, 5)):
            self.assertStatus(status, q.bcm_field_qualify_L2PayLoad(0, entry, length, values, masks))
        self.assertStatus(PARAM, q.bcm_field_qualify_L2PayLoad(0, entry, 5, None, masks))
        for room, written in ((9, 5), (3, 3)):
            got, of, length = array('uint8', [99] * 9), array('uint8', [99] * 9), array('uint32', [room])
            self.done(q.bcm_field_qualify_L2PayLoad_get(0, entry, length, got, of))
            self.assertEqual((length[0], list(got)), (written, range(1, written + 1) + [99] * (9 - written)))
            self.assertEqual(list(of)[:written], [255] * written)


class Classes(FieldTest):
    def test_classes(self):
        info = q.bcm_field_class_info_t(action=q.bcmFieldActionClassDestSet, class_id=0xffff)
        self.done(q.bcm_field_action_class_add(0, self.entry, info))
        self.assertStatus(EXISTS, q.bcm_field_action_class_add(0, self.entry, info))
        info.class_id = 0
        self.done(q.bcm_field_action_class_get(0, self.entry, info))
        self.assertEqual((info.class_id, checked(q.bcm_field_class_size_get, 0, info.action, OUT)), (0xffff, 16))
        for status, name, number in ((PARAM, 'ClassSourceSet', 0x10000), (PARAM, 'Drop', 1),
                                     (q.BCM_E_UNAVAIL, 'EcmpClassNew', 1), (PARAM, 'EgressClassCancel', 1)):
            info = q.bcm_field_class_info_t(action=getattr(q, 'bcmFieldAction' + name), class_id=number)
            self.assertStatus(status, q.bcm_field_action_class_add(0, self.entry, info), name)
            self.assertStatus(MISSING, q.bcm_field_action_class_get(0, self.entry, info))


class Ranges(FieldTest):
    def test_ranges(self):
        flags = q.BCM_FIELD_RANGE_DSTPORT
        made = checked(q.bcm_field_range_create, 0, OUT, flags, 80, 90)
        self.assertEqual(tuple(checked(q.bcm_field_range_get, 0, made, OUT, OUT, OUT)), (flags, 80, 90))
        self.assertStatus(EXISTS, q.bcm_field_range_create_id(0, made, flags, 1, 2))
        for wrong in ((flags, 2, 1), (0, 1, 2), (flags | q.BCM_FIELD_RANGE_PACKET_LENGTH, 1, 2),
                      (q.BCM_FIELD_RANGE_OUTER_VLAN, 1, 4096)):
            self.assertStatus(PARAM, q.bcm_field_range_create_id(0, 99, *wrong), wrong)
        self.done(q.bcm_field_qualify_L4PortRangeCheck(0, self.entry, made, 1))
        self.assertStatus(MISSING, q.bcm_field_qualify_L4PortRangeCheck(0, self.entry, made + 1, 0))
        self.assertStatus(PARAM, q.bcm_field_qualify_RangeCheck(0, self.entry, made, 0))  # not in the group's set
        self.done(q.bcm_field_entry_install(0, self.entry))
        self.done(q.bcm_field_qualify_clear(0, self.entry))
        self.assertStatus(BUSY, q.bcm_field_range_destroy(0, made))  # installed as it was
        self.done(q.bcm_field_entry_reinstall(0, self.entry))
        self.done(q.bcm_field_range_destroy(0, made))

    def test_there_are_64(self):
        statuses = [q.bcm_field_range_create_id(0, number, q.BCM_FIELD_RANGE_SRCPORT, 1, 2) for number in range(1, 66)]
        self.assertEqual(statuses, [0] * 64 + [q.BCM_E_RESOURCE])


class Counters(FieldTest):
    def test_counters(self):
        kinds = array('bcm_field_stat_t', [q.bcmFieldStatPackets, q.bcmFieldStatBytes])
        stat = checked(q.bcm_field_stat_create, 0, self.group, 2, kinds, OUT)
        self.assertStatus(EXISTS, q.bcm_field_stat_create_id(0, self.group, 2, kinds, stat))
        self.done(q.bcm_field_entry_stat_attach(0, self.entry, stat))
        self.assertStatus(EXISTS, q.bcm_field_entry_stat_attach(0, self.entry, stat))
        self.assertEqual(checked(q.bcm_field_entry_stat_get, 0, self.entry, OUT), stat)
        self.done(q.bcm_field_stat_set(0, stat, q.bcmFieldStatBytes, 1 << 40))
        self.assertEqual(checked(q.bcm_field_stat_get, 0, stat, q.bcmFieldStatBytes, OUT), 1 << 40)
        self.assertStatus(MISSING, q.bcm_field_stat_set(0, stat, q.bcmFieldStatRedBytes, 1))
        self.assertStatus(BUSY, q.bcm_field_stat_destroy(0, stat))
        self.done(q.bcm_field_entry_destroy(0, self.entry))
        self.done(q.bcm_field_stat_destroy(0, stat))
        later = array('bcm_field_stat_t', [q.bcmFieldStatEcnMarkedPackets])
        self.assertStatus(q.BCM_E_UNAVAIL, q.bcm_field_stat_create_id(0, self.group, 1, later, 3))

    def stat(self, *kinds):
        kinds = array('bcm_field_stat_t', [getattr(q, 'bcmFieldStat' + kind) for kind in kinds])
        return checked(q.bcm_field_stat_create, 0, self.group, len(kinds), kinds, OUT)

    def test_further_counters_by_level(self):
        first, second, named = [self.stat('Packets') for _ in range(3)]
        attach, get = q.bcm_field_entry_stat_extended_attach, q.bcm_field_entry_stat_extended_get
        self.done(q.bcm_field_entry_stat_attach(0, self.entry, first))
        self.done(attach(0, self.entry, 3, second))
        for status, level, stat in ((EXISTS, 3, named), (EXISTS, 2, first), (PARAM, 4, named), (PARAM, -1, named),
                                    (MISSING, 0, named + 1)):
            self.assertStatus(status, attach(0, self.entry, level, stat), (level, stat))
        self.assertEqual(checked(get, 0, self.entry, 3, OUT), second)
        self.assertEqual(checked(q.bcm_field_entry_stat_get, 0, self.entry, OUT), first)
        self.done(q.bcm_field_action_add(0, self.entry, q.bcmFieldActionStatSet, named, 0, 0))
        self.done(q.bcm_field_entry_install(0, self.entry))
        self.assertEqual([q.bcm_field_stat_destroy(0, stat) for stat in (first, second, named)], [BUSY] * 3)
        switch, frame = sim.Switch(), sim.ethernet('ff:ff:ff:ff:ff:ff', '02:00:00:00:00:01')
        switch.send(1, frame)
        self.done(q.bcm_field_entry_stat_detach(0, self.entry, second))
        switch.send(1, frame)
        counts = [checked(q.bcm_field_stat_get, 0, stat, q.bcmFieldStatPackets, OUT) for stat in (first, second, named)]
        self.assertEqual(counts, [2, 1, 2])
        self.done(q.bcm_field_entry_remove(0, self.entry))
        self.assertEqual([q.bcm_field_stat_destroy(0, stat) for stat in (first, second, named)], [BUSY, 0, 0])
        self.assertStatus(MISSING, q.bcm_field_entry_install(0, self.entry))  # what its action names is gone

    def test_counters_by_index(self):
        stat, first = self.stat('Packets', 'Bytes', 'RedPackets'), array('uint32', [0])
        value = array('bcm_stat_value_t', 1)
        value[0].bytes, value[0].packets64 = 1 << 40, (1 << 33) + 2
        self.done(q.bcm_field_stat_counter_set(0, stat, q.bcmFieldStatPackets, 1, first, value))
        self.assertEqual(checked(q.bcm_field_stat_get, 0, stat, q.bcmFieldStatBytes, OUT), 1 << 40)
        for get in q.bcm_field_stat_counter_get, q.bcm_field_stat_counter_sync_get:
            found = array('bcm_stat_value_t', 1)
            self.done(get(0, stat, q.bcmFieldStatBytes, 1, first, found))
            self.assertEqual((found[0].bytes, found[0].packets64, found[0].packets), (1 << 40, (1 << 33) + 2, 2))
            self.assertStatus(MISSING, get(0, stat, q.bcmFieldStatGreenBytes, 1, first, found))
            self.assertStatus(PARAM, get(0, stat, q.bcmFieldStatBytes, 1, array('uint32', [1]), found))
        self.assertStatus(PARAM, q.bcm_field_stat_counter_set(0, stat, q.bcmFieldStatBytes, 1,
                                                              array('uint32', [1]), value))

    def test_each_kind_counts_its_packets(self):
        udp = bytearray(sim.udp4('10.0.0.1', '10.0.0.2', data=b'\0' * 20))
        tcp = udp[:9] + b'\6' + udp[10:]
        one, many, all_of_them = '02:00:00:00:00:07', '01:00:5e:00:00:07', 'ff:ff:ff:ff:ff:ff'
        frames = [sim.ethernet(to, '02:00:00:00:00:01', bytes(payload), kind) for to, payload, kind in (
            (one, udp, 0x800), (one, tcp, 0x800), (many, udp, 0x800), (all_of_them, b'', 0x900),
            (all_of_them, b'\x60' + b'\0' * 39, 0x86dd))]
        wanted = dict(Unicast=[0, 1], Multicast=[2], Broadcast=[3, 4], NonIp=[3], Ip4=[0, 1, 2], Ip6=[4], Tcp=[1],
                      Udp=[0, 2], Green=range(5), NotRed=range(5), NotYellow=range(5), Yellow=[], Red=[], NotGreen=[])
        wanted[''] = range(5)
        stat = self.stat(*[kind + what for kind in sorted(wanted) for what in ('Bytes', 'Packets')])
        self.done(q.bcm_field_entry_stat_attach(0, self.entry, stat))
        self.done(q.bcm_field_entry_install(0, self.entry))
        for frame in frames:
            sim.Switch().send(1, frame)
        found = dict((kind, [checked(q.bcm_field_stat_get, 0, stat, getattr(q, 'bcmFieldStat' + kind + what), OUT)
                             for what in ('Packets', 'Bytes')]) for kind in wanted)
        checksum = 4
        self.assertEqual(found, dict((kind, [len(which), sum(max(len(frames[i]), 60) + checksum for i in which)])
                                     for kind, which in wanted.items()))


class Hints(FieldTest):
    def hint(self, **members):
        return q.bcm_field_hint_t(**dict(dict(hint_type=q.bcmFieldHintTypeExtraction, qual=q.bcmFieldQualifySrcIp,
                                              start_bit=8, end_bit=15, priority=3), **members))

    def test_they_are_kept_in_lists(self):
        one, other = [checked(q.bcm_field_hints_create, 0, OUT) for _ in range(2)]
        self.done(q.bcm_field_hints_add(0, one, self.hint()))
        self.assertStatus(EXISTS, q.bcm_field_hints_add(0, one, self.hint(priority=4)))
        self.done(q.bcm_field_hints_add(0, one, self.hint(qual=q.bcmFieldQualifyDstIp)))
        for wrong in (dict(hint_type=q.bcmFieldHintTypeCount), dict(qual=q.bcmFieldQualifyCount), dict(flags=1),
                      dict(start_bit=16)):
            self.assertStatus(PARAM, q.bcm_field_hints_add(0, other, self.hint(**wrong)), wrong)
        found = self.hint(start_bit=0, end_bit=0, priority=0)
        self.assertStatus(MISSING, q.bcm_field_hints_get(0, other, found))
        self.done(q.bcm_field_hints_get(0, one, found))
        self.assertEqual((found.start_bit, found.end_bit, found.priority), (8, 15, 3))
        self.done(q.bcm_field_hints_delete(0, one, found))
        self.assertStatus(MISSING, q.bcm_field_hints_delete(0, one, found))
        self.done(q.bcm_field_hints_delete_all(0, one))
        self.assertStatus(MISSING, q.bcm_field_hints_get(0, one, self.hint(qual=q.bcmFieldQualifyDstIp)))
        config = q.bcm_field_group_config_t(flags=q.BCM_FIELD_GROUP_CREATE_WITH_HINTS, hintid=one)
        self.done(q.bcm_field_group_config_create(0, config))
        self.done(q.bcm_field_hints_destroy(0, one))
        for call in (lambda: q.bcm_field_hints_destroy(0, one), lambda: q.bcm_field_hints_add(0, one, found),
                     lambda: q.bcm_field_hints_delete_all(0, one), lambda: q.bcm_field_group_config_create(0, config)):
            self.assertStatus(MISSING, call())


class Settings(FieldTest):
    def control(self, name):
        return checked(q.bcm_field_control_get, 0, getattr(q, 'bcmFieldControl' + name), OUT)

    def change(self, name, value):
        return q.bcm_field_control_set(0, getattr(q, 'bcmFieldControl' + name), value & 0xffffffff)

    def entry_of(self, stage, *actions):
        qset = qualifiers('InPort', *(['Stage' + stage] if stage else []))
        entry = checked(q.bcm_field_entry_create, 0, checked(q.bcm_field_group_create, 0, qset, 1))
        for action in actions:
            self.done(q.bcm_field_action_add(0, entry, action, 0, 0, 0))
        self.done(q.bcm_field_entry_install(0, entry))
        return entry

    def test_which_are_as_the_switch_is(self):
        for name, value in (('ColorAware', 1), ('EntryAtomicUpdate', 1), ('ExactMatchEnable', 0)):
            self.assertEqual((self.control(name), self.change(name, value), self.change(name, 1 - value)),
                             (value, 0, q.BCM_E_UNAVAIL))
        self.assertStatus(q.BCM_E_UNAVAIL, self.change('HiGigHeaderEnable', 0))
        self.assertStatus(PARAM, q.bcm_field_control_set(0, q.bcmFieldControlCount, 0))
        for name, wrong in (('StatPacketBytesAdjust', 256), ('StatPacketBytesAdjust', -65), ('LookupEnable', 2)):
            self.assertStatus(PARAM, self.change(name, wrong))

    def test_what_counters_add(self):
        frame = sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01')
        kinds = array('bcm_field_stat_t', [q.bcmFieldStatBytes, q.bcmFieldStatForwardedBytes])
        stat = checked(q.bcm_field_stat_create, 0, self.group, 2, kinds, OUT)
        self.done(q.bcm_field_entry_stat_attach(0, self.entry, stat))
        self.done(q.bcm_field_entry_install(0, self.entry))
        for more in 20, -64:
            self.done(q.bcm_field_stat_all_set(0, stat, 0))
            self.done(self.change('StatPacketBytesAdjust', more))
            sim.Switch().send(1, frame)
            self.assertEqual([checked(q.bcm_field_stat_get, 0, stat, kind, OUT) for kind in kinds], [64 + more] * 2)
        self.assertEqual(self.control('StatPacketBytesAdjust'), -64 & 0xffffffff)

    def test_whether_packets_are_looked_up_before_the_tables(self):
        self.entry_of('Lookup', q.bcmFieldActionDrop)
        ports = [len(sim.Switch().send(1, sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01')))
                 for enable in (1, 0, 1) if self.change('LookupEnable', enable) == 0]
        self.assertEqual([bool(count) for count in ports], [False, True, False])

    def test_whether_what_is_dropped_is_copied(self):
        frame = sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01')
        entry = self.entry_of('', q.bcmFieldActionDrop, q.bcmFieldActionCopyToCpu, q.bcmFieldActionSnoop)
        ports = [[port for port, _ in sim.Switch().send(1, frame)]
                 for wins in (0, 1) if self.change('DropWinsOverCopy', wins) == 0]
        self.assertEqual(ports, [[0], []])
        self.done(q.bcm_field_action_remove(0, entry, q.bcmFieldActionDrop))
        self.done(q.bcm_field_entry_reinstall(0, entry))
        self.assertIn(0, [port for port, _ in sim.Switch().send(1, frame)])


class Defaults(FieldTest):
    """The entry of a group that acts if no other does."""

    def setUp(self):
        FieldTest.setUp(self)
        self.done(q.bcm_field_qualify_OuterVlanId(0, self.entry, 20, 0xfff))
        self.other = checked(q.bcm_field_entry_create, 0, self.group)
        self.done(q.bcm_field_qualify_SrcIp(0, self.other, 0x0a000001, 0xffffffff))
        for entry, priority in ((self.entry, 7), (self.other, 3)):
            self.done(q.bcm_field_action_add(0, entry, q.bcmFieldActionDrop if entry == self.entry
                                             else q.bcmFieldActionTrap, 0, 0, 0))
            self.done(q.bcm_field_entry_prio_set(0, entry, priority))
            self.done(q.bcm_field_entry_install(0, entry))

    def becomes(self, source='10.0.0.1'):
        frame = sim.ethernet('02:00:00:00:00:02', '02:00:00:00:00:01', sim.udp4(source, '10.0.0.2'))
        ports = [port for port, _ in sim.Switch().send(1, frame)]
        return 'dropped' if not ports else 'trapped' if ports == [0] else 'flooded'

    def test_it_acts_where_no_other_matches(self):
        get = q.bcm_field_group_default_entry_get
        with self.assertRaisesRegexp(StatusError, 'NOT_FOUND'):
            checked(get, 0, self.group)
        seen = [(self.becomes(), self.becomes('10.0.0.3'))]
        for default in self.entry, self.other, self.entry:
            self.done(q.bcm_field_group_default_entry_set(0, self.group, default))
            self.assertEqual(checked(get, 0, self.group), default)
            seen.append((self.becomes(), self.becomes('10.0.0.3')))
        self.assertEqual(seen, [('trapped', 'flooded'), ('trapped', 'dropped'), ('trapped', 'trapped'),
                                ('trapped', 'dropped')])
        self.assertIn('acts, since no other matches', sim.Switch().trace(1, sim.ethernet('02:00:00:00:00:02',
                                                                                         '02:00:00:00:00:01')))

    def test_only_while_it_is_installed_and_enabled(self):
        self.done(q.bcm_field_group_default_entry_set(0, self.group, self.entry))
        self.done(q.bcm_field_entry_destroy(0, self.other))
        for change, wanted in ((lambda: q.bcm_field_entry_enable_set(0, self.entry, 0), 'flooded'),
                               (lambda: q.bcm_field_entry_reinstall(0, self.entry), 'flooded'),
                               (lambda: q.bcm_field_entry_enable_set(0, self.entry, 1), 'dropped'),
                               (lambda: q.bcm_field_entry_remove(0, self.entry), 'flooded'),
                               (lambda: q.bcm_field_entry_install(0, self.entry), 'dropped'),
                               (lambda: q.bcm_field_entry_reinstall(0, self.entry), 'dropped'),
                               (lambda: q.bcm_field_entry_destroy(0, self.entry), 'flooded')):
            self.done(change())
            self.assertEqual(self.becomes(), wanted)
        with self.assertRaisesRegexp(StatusError, 'NOT_FOUND'):
            checked(q.bcm_field_group_default_entry_get, 0, self.group)

    def test_what_is_refused(self):
        group = checked(q.bcm_field_group_create, 0, qualifiers('SrcIp'), 1)
        self.assertStatus(PARAM, q.bcm_field_group_default_entry_set(0, group, self.entry))
        self.assertStatus(MISSING, q.bcm_field_group_default_entry_set(0, group + 1, self.entry))
        self.assertStatus(MISSING, q.bcm_field_group_default_entry_set(0, group, self.other + 1))


class Printed(FieldTest):
    def lines(self, call, *arguments):
        status, text = console.printed(call, *arguments)
        self.done(status)
        return text.splitlines()

    def test_groups_and_entries(self):
        self.done(q.bcm_field_qualify_SrcIp(0, self.entry, 0x0a000000, 0xff000000))
        range_id = checked(q.bcm_field_range_group_create, 0, OUT, q.BCM_FIELD_RANGE_DSTPORT, 80, 90, 2)
        self.done(q.bcm_field_qualify_L4PortRangeCheck(0, self.entry, range_id, 1))
        self.done(q.bcm_field_action_add(0, self.entry, q.bcmFieldActionRedirectPort, 0, 7, 0))
        self.done(q.bcm_field_action_ports_add(0, self.entry, q.bcmFieldActionEgressMask, [2, 64]))
        self.done(q.bcm_field_action_mac_add(0, self.entry, q.bcmFieldActionDestMacNew, '02:00:00:00:00:07'))
        kinds = array('bcm_field_stat_t', [q.bcmFieldStatPackets, q.bcmFieldStatDroppedBytes])
        stat = checked(q.bcm_field_stat_create, 0, self.group, 2, kinds, OUT)
        self.done(q.bcm_field_entry_stat_attach(0, self.entry, stat))
        self.done(q.bcm_field_stat_set(0, stat, q.bcmFieldStatPackets, 5))
        self.done(q.bcm_field_entry_install(0, self.entry))
        entry = ['  entry %d: priority 0, installed' % self.entry, '    SrcIp 0x0a000000 0xff000000',
                 '    L4PortRangeCheck not in range %d' % range_id, '    action RedirectPort 0 7 0',
                 '    action EgressMask ports 2 64', '    action DestMacNew 0x020000000007',
                 '    counters %d: Packets 5 DroppedBytes 0' % stat]
        group = ['group %d: ingress, priority 5, 1 of 1 entries installed' % self.group]
        shown = self.lines(q.bcm_field_entry_dump, 0, self.entry)
        self.assertEqual(sorted(shown), sorted(entry))
        shown = self.lines(q.bcm_field_group_dump, 0, self.group)
        self.assertEqual(shown[0], group[0])
        self.assertEqual(set(shown[1].split()), {'qualifiers', 'OuterVlanId', 'SrcIp', 'L4PortRangeCheck'})
        self.assertEqual(sorted(shown[2:]), sorted(entry))
        shown = self.lines(q.bcm_field_show, 0, '> ')
        self.assertEqual(shown[0], '> ' + group[0])
        self.assertEqual(shown[-2:], ['> range %d: 80..90' % range_id, '> counters %d: Packets 5 DroppedBytes 0' % stat])


class Conditions(FieldTest):
    """Conditions for the lookup of groups."""

    @staticmethod
    def conditions(*ids):
        record = q.bcm_field_presel_set_t()
        words = (ctypes.c_uint32 * 4).from_address(int(record.this))
        for id in ids:
            words[id // 32] |= 1 << id % 32
        return record

    def test_a_group_is_looked_up_if_one_holds(self):
        to_entry = 1 << 31
        made = [checked(q.bcm_field_presel_create, 0, OUT) for _ in range(2)]
        self.assertEqual(made, [0, 1])
        self.done(q.bcm_field_qualify_OuterVlanId(0, to_entry, 20, 0xfff))
        self.done(q.bcm_field_qualify_MplsLabel1Id(0, to_entry | 1, 5, 0xfffff))
        drop = checked(q.bcm_field_entry_create, 0, self.group)
        self.done(q.bcm_field_action_add(0, drop, q.bcmFieldActionDrop, 0, 0, 0))
        self.done(q.bcm_field_entry_install(0, drop))
        self.done(q.bcm_vlan_create(0, 20))
        self.done(q.bcm_vlan_port_add(0, 20, [1, 2], []))
        switch, plain = sim.Switch(), sim.ethernet('ff:ff:ff:ff:ff:ff', '02:00:00:00:00:01')
        labelled = sim.ethernet('ff:ff:ff:ff:ff:ff', '02:00:00:00:00:01', b'\0\0\x51\x40' * 12, kind=0x8847)
        frames = [plain, sim.tagged(plain, 20), labelled]
        for ids, dropped in (((), [True, True, True]), ((0,), [False, True, False]), ((1,), [False, False, True]),
                             ((0, 1), [False, True, True])):
            self.done(q.bcm_field_group_presel_set(0, self.group, self.conditions(*ids)))
            self.assertEqual([not switch.send(1, frame) for frame in frames], dropped, ids)
        self.done(q.bcm_field_qualifier_delete(0, to_entry, q.bcmFieldQualifyOuterVlanId))
        self.assertEqual(switch.send(1, plain), [])  # it holds for all packets now, at once

    def test_what_is_refused(self):
        to_entry = 1 << 31
        self.done(q.bcm_field_presel_create_id(0, 127))
        for status, id in ((EXISTS, 127), (PARAM, 128), (PARAM, -1)):
            self.assertStatus(status, q.bcm_field_presel_create_id(0, id))
        self.assertStatus(q.BCM_E_UNAVAIL, q.bcm_field_qualify_OutPort(0, to_entry | 127, 1, 0xff))
        self.assertStatus(MISSING, q.bcm_field_qualify_InPort(0, to_entry | 126, 1, 0xff))
        self.assertStatus(MISSING, q.bcm_field_qualifier_delete(0, to_entry | 127, q.bcmFieldQualifyInPort))
        self.assertStatus(PARAM, q.bcm_field_qualify_OuterVlanId(0, to_entry | 127, 0x1000, 0xffff))
        self.assertStatus(PARAM, q.bcm_field_entry_create_id(0, self.group, to_entry | 127))
        self.assertStatus(MISSING, q.bcm_field_group_presel_set(0, self.group, self.conditions(126, 127)))
        config = q.bcm_field_group_config_t(flags=q.BCM_FIELD_GROUP_CREATE_WITH_PRESELSET)
        (ctypes.c_uint32 * 4).from_address(int(config.preselset.this))[3] = 1 << 31
        self.done(q.bcm_field_group_config_create(0, config))
        found = q.bcm_field_presel_set_t()
        self.done(q.bcm_field_group_presel_get(0, config.group, found))
        self.assertEqual(list((ctypes.c_uint32 * 4).from_address(int(found.this))), [0, 0, 0, 1 << 31])
        self.assertStatus(BUSY, q.bcm_field_presel_destroy(0, 127))
        self.done(q.bcm_field_group_destroy(0, config.group))
        self.done(q.bcm_field_presel_destroy(0, 127))
        self.assertStatus(MISSING, q.bcm_field_presel_destroy(0, 127))


class Chip(FieldTest):
    """One table, one core, and calls that have done their work when they return."""

    def test_stages(self):
        info = q.bcm_field_stage_info_t()
        groups = [checked(q.bcm_field_stage_info_get, 0, getattr(q, 'bcmFieldStage' + stage), info, OUT)
                  for stage in ('Lookup', 'Ingress', 'Egress')]
        self.assertEqual((groups, info.field_presel_max_id), ([0, 1, 0], 127))
        for status, stage in ((q.BCM_E_UNAVAIL, q.bcmFieldStageHash), (PARAM, q.bcmFieldStageCount), (PARAM, -1)):
            self.assertStatus(status, q.bcm_field_group_oper_mode_set(0, stage, q.bcmFieldGroupOperSync))
        for status, mode in ((0, 'Sync'), (q.BCM_E_UNAVAIL, 'Async'), (PARAM, 'Count')):
            self.assertStatus(status, q.bcm_field_group_oper_mode_set(0, q.bcmFieldStageIngress,
                                                                      getattr(q, 'bcmFieldGroupOper' + mode)))
        self.assertEqual(checked(q.bcm_field_group_oper_mode_get, 0, q.bcmFieldStageEgress, OUT), 0)

    def test_one_table_and_one_core(self):
        config, aset = q.bcm_field_group_config_t(priority=3), q.bcm_field_aset_t()
        create, restrict = q.bcm_field_group_config_create_with_dbidx, q.bcm_field_group_action_set_with_dbidx
        self.assertEqual([create(0, config, table) for table in (1, 0)], [PARAM, 0])
        self.assertEqual(checked(q.bcm_field_group_priority_get, 0, config.group, OUT), 3)
        q.bcm_field_aset_add(aset, q.bcmFieldActionRedirectPort)
        self.assertEqual([restrict(0, self.group, aset, table) for table in (1, 0)], [PARAM, 0])
        cores, redirect = array('bcm_field_action_core_config_t', 1), q.bcmFieldActionRedirectPort
        cores[0].param1 = 9
        add = q.bcm_field_action_config_add
        self.assertEqual([add(0, self.entry, redirect, count, cores) for count in (2, 1, 1)], [PARAM, 0, EXISTS])
        self.assertEqual(tuple(checked(q.bcm_field_action_get, 0, self.entry, redirect, OUT, OUT, OUT)), (0, 9, 0))
        self.assertStatus(PARAM, add(0, self.entry, q.bcmFieldActionDrop, 1, cores))


if __name__ == '__main__':
    unittest.main()
