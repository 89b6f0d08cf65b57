"""The VLAN of a packet and the tags that it leaves with, as a slow model of what the headers say has them."""
import ctypes
import random
import struct
import unittest

import QuorelApiNew as q
from quorel import checked, OUT, sim, traverse

A, B = '02:00:00:00:00:01', '02:00:00:00:00:02'
IN, PLAIN, TAGGED = 1, 2, 3  # ports: of arrival, an untagged and a tagged member of all VLANs
VLANS = range(1, 7)
TYPES = 0x8100, 0x88a8, 0x9100
IP4, IP6, ARP = 0x800, 0x86dd, 0x806
NONE, ADD, REPLACE, DELETE, COPY, OUTER_ADD, INNER_ADD, MAPPED_ADD = range(8)
KINDS = {(True, True): 'dt', (True, False): 'ot', (False, True): 'it', (False, False): 'ut'}
CHANGES = ['dt_outer dt_outer_prio dt_outer_pkt_prio dt_outer_cfi dt_inner dt_inner_prio dt_inner_pkt_prio dt_inner_cfi',
           'ot_outer ot_outer_prio ot_outer_pkt_prio ot_outer_cfi ot_inner ot_inner_pkt_prio ot_inner_cfi',
           'it_outer it_outer_pkt_prio it_outer_cfi it_inner it_inner_prio it_inner_pkt_prio it_inner_cfi',
           'ut_outer ut_outer_pkt_prio ut_outer_cfi ut_inner ut_inner_pkt_prio ut_inner_cfi',
           'outer_pcp inner_pcp']
CHANGES = ' '.join(CHANGES).split()
KEYS = {'Double': 'oi', 'Outer': 'o', 'Inner': 'i', 'OuterTag': 'O', 'InnerTag': 'I', 'OuterPri': 'p'}


def wire(tags, payload):
    """A frame; tags are pairs of type and content."""
    head = struct.pack('>HIHI', 0x0200, 2, 0x0200, 1)
    return (head + ''.join(struct.pack('>HH', *tag) for tag in tags) + payload).ljust(60, '\0')


def key_type(name):
    return getattr(q, 'bcmVlanTranslateKey' + name)


class Action(dict):
    """Members of an action that are not 0."""
    def record(self):
        record = q.bcm_vlan_action_set_t()
        for name, value in self.items():
            setattr(record, name, value)
        return record

    def __getattr__(self, name):
        return self.get(name, 0)


def renaming(vlan, priority, way=REPLACE, kinds=('ot', 'dt')):
    action = Action(new_outer_vlan=vlan, priority=priority)
    for kind in kinds:
        action[kind + '_outer'] = way
        if priority >= 0:
            action[kind + '_outer_pkt_prio'] = action[kind + '_outer_prio'] = way
    return action


class Tag(object):
    def __init__(self, there=False, vlan=0, priority=0, cfi=0, type=0):
        self.there, self.vlan, self.priority, self.cfi, self.type = there, vlan, priority, cfi, type

    def copy(self):
        return Tag(**vars(self))

    def content(self):
        return self.priority << 13 | self.cfi << 12 | self.vlan


class Port(object):
    """What a port is set to, at first as it is when new."""
    def __init__(self):
        self.outer_types, self.inner_type, self.mode, self.untagged_priority = [0x8100], 0x8100, 0, 0
        self.classes = dict(((priority, cfi), (priority, 0)) for priority in range(8) for cfi in (0, 1))
        self.marks = {}
        self.translations, self.renamed, self.ranges, self.customers = {}, {}, [], {}
        self.addresses, self.subnets, self.protocols, self.default = {}, [], {}, None
        self.sent_actions, self.sent_renamed, self.sent_default, self.forced = {}, {}, None, (0, 0, 0)

    # What arrives.

    def read(self, frame):
        outer, inner, place = Tag(priority=self.untagged_priority), Tag(), 12

        def take():
            type, content = struct.unpack('>HH', frame[place:place + 4])
            return Tag(content & 0xfff != 0, content & 0xfff, content >> 13, content >> 12 & 1, type)
        external = self.mode == q.BCM_PORT_DTAG_MODE_EXTERNAL
        priority, color = self.untagged_priority, 0
        if not external and take().type in self.outer_types:
            outer, place = take(), place + 4
            priority, color = self.classes[outer.priority, outer.cfi]
        if take().type == self.inner_type or external and take().type in self.outer_types:
            inner, place = take(), place + 4
        return outer, inner, priority, color, frame[place:]

    def translation(self, outer, inner):
        for where in 'Port', '':
            for name in 'Double', 'OuterTag', 'InnerTag', 'Outer', 'Inner', 'OuterPri':
                parts = KEYS[name]
                if ('o' in parts.lower() or 'p' in parts) and not outer.there or 'i' in parts.lower() and not inner.there:
                    continue
                key = [{'o': outer.vlan, 'O': outer.content(), 'p': outer.priority << 13, 'i': inner.vlan,
                        'I': inner.content()}[part] for part in parts]
                key = (where + name, 0 if parts in 'iI' else key[0], key[-1] if parts in ('oi', 'i', 'I') else 0)
                if key in self.translations:
                    return self.translations[key]
        if outer.there and outer.vlan in self.renamed:
            return self.renamed[outer.vlan]
        for low, high, action in sorted(self.ranges, key=lambda one: (one[1] - one[0], one[0])):
            if outer.there and low <= outer.vlan <= high:
                return action
        if inner.there and not outer.there:
            return self.customers.get(inner.vlan)

    def assignment(self, frame, payload):
        type, source = struct.unpack('>H', payload[:2])[0], frame[6:12]
        if source in self.addresses:
            return self.addresses[source]
        for version, address, length, action in sorted(self.subnets, key=lambda one: -one[2]):
            if version == type:
                place, size = (14, 32) if type == IP4 else (10, 128)
                bits = int(payload[place:place + size // 8].encode('hex'), 16)
                if bits >> (size - length) == address >> (size - length):
                    return action
        return self.protocols.get(type)

    def arrive(self, frame):
        outer, inner, priority, color, payload = self.read(frame)
        action = self.translation(outer, inner)
        if action is None and not outer.there:
            action = self.assignment(frame, payload)
        if action is None:
            action = self.default
        if action is not None:
            outer, inner, priority = change(action, outer, inner, priority)
        if not (action and action.outer_tpid_action):
            outer.type = 0
        if not outer.there:
            outer.there, outer.vlan = True, 1
        if inner.there:
            inner.type = inner.type or self.inner_type
        return outer, inner, priority, color, payload

    # What leaves.

    def leave(self, untagged, outer, inner, priority, color, payload):
        outer, inner = outer.copy(), inner.copy()
        action = None
        for inner_vlan in inner.there and inner.vlan or 0, 0:
            action = action or self.sent_actions.get((outer.vlan, inner_vlan))
        action = action or self.sent_renamed.get(outer.vlan) or self.sent_default
        if (priority, color) in self.marks:
            outer.priority, outer.cfi = self.marks[priority, color]
        outer.type = outer.type or (self.outer_types or [0x8100])[0]
        if action:
            outer, inner, _ = change(action, outer, inner, priority)
        if self.mode == q.BCM_PORT_DTAG_MODE_EXTERNAL or untagged and self.mode != q.BCM_PORT_DTAG_MODE_INTERNAL:
            outer.there = False
        forced, vlan, forced_priority = self.forced
        if forced & q.BCM_PORT_FORCE_VLAN_UNTAG:
            outer.there = False
        elif forced & q.BCM_PORT_FORCE_VLAN_ENABLE:
            outer.there, outer.vlan = True, vlan
        if forced & q.BCM_PORT_FORCE_VLAN_PKT_PRIO:
            outer.priority = forced_priority
        inner.type = inner.type or self.inner_type
        return [(tag.type, tag.content()) for tag in (outer, inner) if tag.there], payload


def change(action, outer, inner, priority):
    """The tags and the priority after an action."""
    came = outer, inner
    kind = KINDS[outer.there, inner.there]

    def source(way, other):
        tag = {COPY: other, OUTER_ADD: came[0], INNER_ADD: came[1]}.get(way)
        return tag if tag is not None and tag.there else None

    def changed(tag, other, name, vlan, new_priority, new_cfi):
        tag, way = tag.copy(), action.get(kind + name, 0)
        if way == ADD or way == REPLACE and tag.there:
            tag.there, tag.vlan = True, vlan
        elif way == DELETE:
            tag.there = False
        elif source(way, other):
            from_tag = source(way, other)
            if not tag.there:
                tag.priority, tag.cfi = from_tag.priority, from_tag.cfi
            tag.there, tag.vlan = True, from_tag.vlan
        for way, field, new in ((kind + name + '_pkt_prio', 'priority', new_priority), (kind + name + '_cfi', 'cfi', new_cfi),
                                (name[1:] + '_pcp', 'priority', new_priority)):
            way = action.get(way, 0)
            if way in (ADD, REPLACE):
                if new is not None:
                    setattr(tag, field, new)
            elif way == DELETE:
                setattr(tag, field, 0)
            elif source(way, other):
                setattr(tag, field, getattr(source(way, other), field))
        type_way = action.get(name[1:] + '_tpid_action', 0)
        if type_way == 1:
            tag.type = action.get(name[1:] + '_tpid', 0)
        elif type_way and came[{2: 1, 3: 0}[type_way]].there:
            tag.type = came[{2: 1, 3: 0}[type_way]].type
        return tag
    given = action.priority
    new_outer = changed(outer, inner, '_outer', action.new_outer_vlan, None if given < 0 else given & 7, action.new_outer_cfi)
    new_inner = changed(inner, outer, '_inner', action.new_inner_vlan, action.new_inner_pkt_prio, action.new_inner_cfi)
    ways = [(kind + ('_outer_prio' if kind in ('ot', 'dt') else '_outer_pkt_prio'), inner, given)]
    if kind in ('it', 'dt'):
        ways.append((kind + '_inner_prio', outer, action.new_inner_pkt_prio))
    for way, other, new in ways:
        way = action.get(way, 0)
        if way in (ADD, REPLACE):
            priority = priority if new < 0 else new
        elif source(way, other):
            priority = source(way, other).priority
    return new_outer, new_inner, priority


class TagTest(sim.TestCase):
    def setUp(self):
        sim.TestCase.setUp(self)
        self.model = dict((port, Port()) for port in (IN, PLAIN, TAGGED))
        checked(q.bcm_vlan_port_remove, 0, 1, sim.FRONT_PORTS)
        for vlan in VLANS:
            if vlan != 1:
                checked(q.bcm_vlan_create, 0, vlan)
            checked(q.bcm_vlan_port_add, 0, vlan, [IN, PLAIN, TAGGED], [PLAIN])

    def expected(self, frame):
        arrived = self.model[IN].arrive(frame)
        if arrived[0].vlan not in VLANS:
            return []
        return [(port, wire(*self.model[port].leave(port == PLAIN, *arrived))) for port in (PLAIN, TAGGED)]

    def check(self, tags, payload):
        frame = wire(tags, payload)
        found, expected = self.switch.send(IN, frame), self.expected(frame)
        if found != expected:
            heads = [[(port, data[12:24].encode('hex')) for port, data in copies] for copies in (found, expected)]
            self.fail('%s became %s, not %s\n%s' % (tags, heads[0], heads[1], self.switch.trace(IN, frame)))


def random_action(chance):
    action = Action(new_outer_vlan=chance.choice(VLANS), new_inner_vlan=chance.choice(VLANS),
                    priority=chance.choice([-1, 0, 5, 9]), new_inner_pkt_prio=chance.randrange(8),
                    new_outer_cfi=chance.randrange(2), new_inner_cfi=chance.randrange(2),
                    outer_tpid=chance.choice(TYPES), inner_tpid=chance.choice(TYPES),
                    outer_tpid_action=chance.choice([0, 0, 1, 2, 3]), inner_tpid_action=chance.choice([0, 0, 1, 2, 3]))
    for name in CHANGES:
        action[name] = chance.choice([NONE, NONE, ADD, REPLACE, DELETE, COPY, OUTER_ADD, INNER_ADD])
    return action


class Settings(object):
    """Each makes one random setting, of the switch and of the model."""
    def __init__(self, chance, model):
        self.chance, self.model = chance, model
        self.own, self.sender = model[IN], chance.choice([PLAIN, TAGGED])
        self.sending = model[self.sender]

    def port_types(self):
        for port in (IN, self.sender):
            types = self.chance.sample(TYPES, self.chance.randrange(1, 3))
            checked(q.bcm_port_tpid_set, 0, port, types[0])
            for type in types[1:]:
                checked(q.bcm_port_tpid_add, 0, port, type, 0)
            self.model[port].outer_types = types

    def port_inner_type(self):
        for port in (IN, self.sender):
            self.model[port].inner_type = self.chance.choice(TYPES)
            checked(q.bcm_port_inner_tpid_set, 0, port, self.model[port].inner_type)

    def double_tags(self):
        for port in (IN, self.sender):
            self.model[port].mode = self.chance.randrange(3)
            checked(q.bcm_port_dtag_mode_set, 0, port, self.model[port].mode)

    def priority_of_untagged(self):
        self.own.untagged_priority = self.chance.randrange(8)
        checked(q.bcm_port_untagged_priority_set, 0, IN, self.own.untagged_priority)

    def priorities(self):
        for priority in range(8):
            for cfi in 0, 1:
                internal, color = self.chance.randrange(16), self.chance.randrange(3)
                self.own.classes[priority, cfi] = internal, color
                checked(q.bcm_port_vlan_priority_map_set, 0, IN, priority, cfi, internal, color)

    def marks(self):
        for priority in range(16):
            for color in range(3):
                mark = self.chance.randrange(8), self.chance.randrange(2)
                if self.chance.random() < 0.7:
                    self.sending.marks[priority, color] = mark
                    checked(q.bcm_port_vlan_priority_unmap_set, 0, self.sender, priority, color, *mark)

    def translations(self):
        for _ in range(6):
            name, where = self.chance.choice(sorted(KEYS)), self.chance.choice(['Port', ''])
            parts, action = KEYS[name], random_action(self.chance)
            outer, inner = self.chance.choice(VLANS), self.chance.choice(VLANS)
            if parts in 'OI':
                outer, inner = [number | self.chance.randrange(16) << 12 for number in (outer, inner)]
            outer = self.chance.randrange(8) << 13 if parts == 'p' else 0 if parts in 'iI' else outer
            inner = inner if parts in ('oi', 'i', 'I') else 0
            checked(q.bcm_vlan_translate_action_add, 0, IN, key_type(where + name), outer, inner, action.record())
            self.own.translations[where + name, outer, inner] = action

    def renamed(self):
        for vlan in self.chance.sample(VLANS, 3):
            new, priority = self.chance.choice(VLANS), self.chance.choice([-1, 3])
            checked(q.bcm_vlan_translate_add, 0, IN, vlan, new, priority)
            self.own.renamed[vlan] = renaming(new, priority)

    def ranges(self):
        for low, high in ((1, 4), (2, 3), (4, 5)):
            new, priority = self.chance.choice(VLANS), self.chance.choice([-1, 2])
            checked(q.bcm_vlan_translate_range_add, 0, IN, low, high, new, priority)
            self.own.ranges.append((low, high, renaming(new, priority)))

    def customers(self):
        for vlan in self.chance.sample(VLANS, 4):
            new, priority = self.chance.choice(VLANS), self.chance.choice([-1, 6])
            checked(q.bcm_vlan_dtag_add, 0, IN, vlan, new, priority)
            self.own.customers[vlan] = self.assigned(new, priority, ['it'])

    def assigned(self, vlan, priority, kinds=('ut', 'it')):
        return renaming(vlan, priority, ADD, kinds)

    def addresses(self):
        new, priority = self.chance.choice(VLANS), self.chance.choice([-1, 4])
        checked(q.bcm_vlan_mac_add, 0, A, new, priority)
        self.own.addresses[A.replace(':', '').decode('hex')] = self.assigned(new, priority)

    def subnets(self):
        for text, length in (('10.0.0.0', 8), ('10.1.0.0', 16)):
            record = q.bcm_vlan_ip_t(vid=self.chance.choice(VLANS), prio=self.chance.choice([-1, 1]))
            address = int(''.join('%02x' % int(part) for part in text.split('.')), 16)
            record.ip4, record.mask = address, 0xffffffff << (32 - length) & 0xffffffff
            checked(q.bcm_vlan_ip_add, 0, record)
            self.own.subnets.append((IP4, address, length, self.assigned(record.vid, record.prio)))

    def protocols(self):
        for type in (IP4, ARP):
            new = self.chance.choice(VLANS)
            checked(q.bcm_port_protocol_vlan_add, 0, IN, q.BCM_PORT_FRAMETYPE_ETHER2, type, new)
            self.own.protocols[type] = self.assigned(new, -1)

    def default(self):
        self.own.default = random_action(self.chance)
        checked(q.bcm_vlan_port_default_action_set, 0, IN, self.own.default.record())

    def sent_actions(self):
        checked(q.bcm_port_class_set, 0, self.sender, q.bcmPortClassVlanTranslateEgress, 7)
        for _ in range(4):
            key, action = (self.chance.choice(VLANS), self.chance.choice([0, 1, 2, 3])), random_action(self.chance)
            if key not in self.sending.sent_actions:
                checked(q.bcm_vlan_translate_egress_action_add, 0, 7, key[0], key[1], action.record())
                self.sending.sent_actions[key] = action

    def sent_renamed(self):
        for vlan in self.chance.sample(VLANS, 3):
            new, priority = self.chance.choice(VLANS), self.chance.choice([-1, 7])
            checked(q.bcm_vlan_translate_egress_add, 0, self.sender, vlan, new, priority)
            self.sending.sent_renamed[vlan] = renaming(new, priority)

    def sent_default(self):
        self.sending.sent_default = random_action(self.chance)
        checked(q.bcm_vlan_port_egress_default_action_set, 0, self.sender, self.sending.sent_default.record())

    def forced(self):
        self.sending.forced = self.chance.randrange(8), self.chance.choice(VLANS), self.chance.randrange(8)
        checked(q.bcm_port_force_vlan_set, 0, self.sender, self.sending.forced[1], self.sending.forced[2],
                self.sending.forced[0])


SETTINGS = sorted(name for name in vars(Settings) if name[0] != '_' and name != 'assigned')


def random_frame(chance):
    tags = [(chance.choice(TYPES), chance.randrange(16) << 12 | chance.choice([0] + VLANS))
            for _ in range(chance.choice([0, 1, 1, 2, 2]))]
    return tags, chance.choice([struct.pack('>H', ARP), struct.pack('>H', 0x88b5),
                                struct.pack('>H', IP4) + sim.udp4(chance.choice(['10.0.0.1', '10.1.0.1', '9.1.1.1']),
                                                                  '10.2.0.1')])


class Tags(TagTest):
    """Frames and settings by chance. A failure names the seed: random.Random(seed) makes the same again."""

    def test_each_setting_alone_and_many_together(self):
        for seed in range(len(SETTINGS) * 6 + 150):
            self.setUp()
            chance = random.Random(seed)
            few = [SETTINGS[seed % len(SETTINGS)]]
            names = few if seed < len(SETTINGS) * 6 else chance.sample(SETTINGS, chance.randrange(2, 9))
            settings = Settings(chance, self.model)
            for name in names:
                getattr(settings, name)()
            for _ in range(25):
                try:
                    self.check(*random_frame(chance))
                except AssertionError as error:
                    self.fail('seed %d, %s: %s' % (seed, names, error))


class Controls(TagTest):
    def leaves(self, *tags):
        """The VLAN and type of the first tag with which a frame leaves the tagged member, or why it does not."""
        frame = wire(tags, '\x88\xb5')
        left = dict(self.switch.send(IN, frame))
        if TAGGED in left:
            return struct.unpack('>HH', left[TAGGED][12:16])
        return [reason for port, reason in self.switch.drops(IN, frame)][-1]

    def control(self, port, name, value):
        checked(q.bcm_vlan_control_port_set, 0, port, getattr(q, name), value)
        self.assertEqual(checked(q.bcm_vlan_control_port_get, 0, port, getattr(q, name), OUT), value)

    def test_what_is_found_and_what_is_not(self):
        checked(q.bcm_vlan_translate_add, 0, IN, 2, 3, -1)
        checked(q.bcm_vlan_translate_egress_add, 0, TAGGED, 4, 5, -1)
        two, four, one = (0x8100, 2), (0x8100, 4), (0x8100, 1)
        steps = [((0x8100, 3), (0x8100, 5), None), ((0x8100, 2), (0x8100, 5), (IN, 'bcmVlanTranslateIngressEnable', 0)),
                 ((0x8100, 3), (0x8100, 5), (IN, 'bcmVlanTranslateIngressEnable', 1)),
                 ('translation', (0x8100, 5), (IN, 'bcmVlanTranslateIngressHitDrop', 1)),
                 ('translation', 'translation', (IN, 'bcmVlanTranslateIngressMissDrop', 1)),
                 ((0x8100, 3), 'translation', (IN, 'bcmVlanTranslateIngressHitDrop', 0)),
                 ((0x8100, 3), (0x8100, 5), (IN, 'bcmVlanTranslateIngressMissDrop', 0)),
                 ('translation_to_send', (0x8100, 5), (TAGGED, 'bcmVlanTranslateEgressMissDrop', 1)),
                 ((0x8100, 3), (0x8100, 4), (TAGGED, 'bcmVlanTranslateEgressEnable', 0))]
        for of_two, of_four, control in steps:
            if control:
                self.control(*control)
            self.assertEqual((self.leaves(two), self.leaves(four)), (of_two, of_four), control)
        checked(q.bcm_vlan_control_set, 0, q.bcmVlanTranslate, 0)
        self.assertEqual(self.leaves(two), two)
        checked(q.bcm_vlan_init, 0)
        self.assertEqual(q.bcm_vlan_translate_get(0, IN, 2, q.uint16p(), q.intp()), q.BCM_E_NOT_FOUND)
        self.assertEqual(checked(q.bcm_vlan_control_get, 0, q.bcmVlanTranslate, OUT), 1)

    def test_only_certain_keys(self):
        for name, vlans in (('PortOuter', (2, 0)), ('PortInner', (0, 3)), ('PortGroupOuter', (4, 0))):
            port = 9 if name == 'PortGroupOuter' else IN
            action = renaming(6 if port == 9 else 5 if 'Inner' in name else 4, -1)
            checked(q.bcm_vlan_translate_action_add, 0, port, key_type(name), vlans[0], vlans[1], action.record())
        checked(q.bcm_port_class_set, 0, IN, q.bcmPortClassVlanTranslateIngress, 9)
        both, inner, grouped = [(0x8100, 2), (0x8100, 3)], [(0x8100, 1), (0x8100, 3)], [(0x8100, 4)]
        found = lambda: [self.leaves(*tags)[1] for tags in (both, inner, grouped)]
        self.assertEqual(found(), [4, 5, 6])
        self.control(IN, 'bcmVlanPortTranslateKeyFirst', key_type('PortInner'))
        self.assertEqual(found(), [5, 5, 4])
        self.control(IN, 'bcmVlanPortTranslateKeySecond', key_type('PortGroupOuter'))
        self.assertEqual(found(), [5, 5, 6])
        self.assertEqual(q.bcm_vlan_control_port_set(0, IN, q.bcmVlanPortTranslateKeyFirst, 23), q.BCM_E_PARAM)

    def test_frames_that_a_port_does_not_take(self):
        checked(q.bcm_port_tpid_set, 0, IN, 0x88a8)
        checked(q.bcm_port_discard_set, 0, IN, q.BCM_PORT_DISCARD_TAG)
        self.assertEqual((self.leaves((0x88a8, 2)), self.leaves((0x9100, 2)), self.leaves((0x88a8, 0))),
                         ('tag_type', (0x8100, 1), (0x8100, 1)))
        checked(q.bcm_port_discard_set, 0, IN, q.BCM_PORT_DISCARD_UNTAG)
        self.assertEqual((self.leaves((0x88a8, 2)), self.leaves()), ((0x8100, 2), 'tag_type'))
        checked(q.bcm_port_init, 0)
        self.assertEqual(self.leaves((0x8100, 2)), (0x8100, 2))

    def test_what_is_refused(self):
        mapped, policed = Action(ot_outer=MAPPED_ADD).record(), Action(policer_id=1).record()
        wrong = Action(ot_outer=9).record()
        double = key_type('PortDouble')
        cases = [
            (q.BCM_E_PARAM, q.bcm_vlan_translate_add, IN, 4095, 2, -1), (q.BCM_E_PARAM, q.bcm_vlan_translate_add, IN, 2, 0, -1),
            (q.BCM_E_PARAM, q.bcm_vlan_translate_add, IN, 2, 3, 8), (q.BCM_E_PORT, q.bcm_vlan_translate_add, 65, 2, 3, -1),
            (q.BCM_E_NONE, q.bcm_vlan_translate_add, IN, 2, 3, 7), (q.BCM_E_EXISTS, q.bcm_vlan_translate_add, IN, 2, 4, 7),
            (q.BCM_E_PARAM, q.bcm_vlan_translate_range_add, IN, 5, 4, 2, -1),
            (q.BCM_E_UNAVAIL, q.bcm_vlan_translate_action_add, IN, double, 1, 2, mapped),
            (q.BCM_E_UNAVAIL, q.bcm_vlan_translate_action_add, IN, double, 1, 2, policed),
            (q.BCM_E_PARAM, q.bcm_vlan_translate_action_add, IN, double, 1, 2, wrong),
            (q.BCM_E_PARAM, q.bcm_vlan_translate_action_add, IN, double, 0, 2, Action().record()),
            (q.BCM_E_UNAVAIL, q.bcm_vlan_translate_action_add, IN, key_type('Vif'), 1, 2, Action().record()),
            (q.BCM_E_PARAM, q.bcm_vlan_translate_action_add, IN, 23, 1, 2, Action().record()),
            (q.BCM_E_NONE, q.bcm_vlan_translate_action_create, IN, double, 1, 2, Action().record()),
            (q.BCM_E_EXISTS, q.bcm_vlan_translate_action_create, IN, double, 1, 2, Action().record()),
            (q.BCM_E_NONE, q.bcm_vlan_translate_action_delete, IN, double, 1, 2),
            (q.BCM_E_NOT_FOUND, q.bcm_vlan_translate_action_delete, IN, double, 1, 2),
            (q.BCM_E_PARAM, q.bcm_vlan_mac_add, '01:00:5e:00:00:01', 2, -1), (q.BCM_E_PARAM, q.bcm_vlan_mac_add, A, 0, -1),
            (q.BCM_E_PARAM, q.bcm_vlan_ip_add, q.bcm_vlan_ip_t(ip4=1, mask=0xff00ff00, vid=2)),
            (q.BCM_E_PARAM, q.bcm_port_protocol_vlan_add, IN, 16, ARP, 2),
            (q.BCM_E_PARAM, q.bcm_port_dtag_mode_set, IN, 3), (q.BCM_E_PARAM, q.bcm_port_untagged_priority_set, IN, 8),
            (q.BCM_E_PARAM, q.bcm_port_vlan_priority_map_set, IN, 8, 0, 0, 0),
            (q.BCM_E_PARAM, q.bcm_port_vlan_priority_map_set, IN, 0, 0, 16, 0),
            (q.BCM_E_NOT_FOUND, q.bcm_port_tpid_delete, IN, 0x9100), (q.BCM_E_EXISTS, q.bcm_port_tpid_add, IN, 0x8100, 0),
            (q.BCM_E_PARAM, q.bcm_port_force_vlan_set, IN, 0, 0, q.BCM_PORT_FORCE_VLAN_ENABLE),
        ]
        for case in cases:
            self.assertEqual(case[1](0, *case[2:]), case[0], case)

    def test_subnets_of_ip6_and_what_traversals_tell(self):
        octets = '20010db8'.decode('hex').ljust(16, '\0')
        record = q.bcm_vlan_ip_t(flags=q.BCM_VLAN_SUBNET_IP6, prefix=32, vid=4, prio=2)
        ctypes.memmove(int(record.ip6), octets, len(octets))
        checked(q.bcm_vlan_ip_add, 0, record)
        payload = struct.pack('>H', IP6) + '\x60\0\0\0\0\0\x3b\x40' + octets[:15] + '\1' + octets
        left = dict(self.switch.send(IN, wire([], payload)))
        self.assertEqual(struct.unpack('>HH', left[TAGGED][12:16]), (0x8100, 2 << 13 | 4))
        seen = [(one.flags, one.prefix, one.vid) for one, _ in traverse(q.bcm_vlan_ip_action_traverse, 0)]
        self.assertEqual(seen, [(q.BCM_VLAN_SUBNET_IP6, 32, 4)])


if __name__ == '__main__':
    unittest.main()
