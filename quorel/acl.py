"""Access lists: rules of the field processor as Python reads them.

What a qualifier takes is told by the parameters of its function, as the build found them in the SDK's headers.
"""
from __future__ import absolute_import

import itertools

import QuorelApiNew as q
from _quorel import OUT, array, cell, checked, constants, parameters
from quorel.errors import StatusError

_INTEGERS = int, type(1 << 70)
_TEXTS = str, type(u'')

# What the SDK has for ranges: the qualifier that says so, and what the range is compared with.
_RANGE_CHECKS = {
    'L4SrcPort': ('L4PortRangeCheck', 'BCM_FIELD_RANGE_SRCPORT'),
    'L4DstPort': ('L4PortRangeCheck', 'BCM_FIELD_RANGE_DSTPORT'),
    'OuterVlanId': ('RangeCheck', 'BCM_FIELD_RANGE_OUTER_VLAN'),
    'InnerVlanId': ('RangeCheck', 'BCM_FIELD_RANGE_INNER_VLAN'),
    'PacketLength': ('PacketLengthRangeCheck', 'BCM_FIELD_RANGE_PACKET_LENGTH'),
}
_NO_ROOM = 'BCM_E_RESOURCE', 'BCM_E_FULL', 'BCM_E_UNAVAIL'
_COUNTED = 'bcmFieldStatPackets', 'bcmFieldStatBytes'


def _missing(what, name, names):
    import difflib
    close = difflib.get_close_matches(name, names, 3)
    return ValueError('there is no %s %s%s' % (what, name, ': is it %s?' % ' or '.join(close) if close else ''))


# --- kinds of values: text to number, and number to what the SDK's function takes ---

class _Plain(object):
    """A number as C has it, or the name of one."""

    def __init__(self, type):
        self.bits = 8 * len(bytes(cell(type)))
        self.takes = 'a number of %d bits' % self.bits
        try:
            cell(type).value = -1
            self._is_signed = True
        except (OverflowError, TypeError, ValueError):
            self._is_signed = False
        try:
            self._names = constants(type)
        except ValueError:
            self._names = []
        if self._names:
            self.takes += ' or a name such as %r' % self._short(self._names[-1][0])

    def _short(self, name):
        common = min(name for name, _ in self._names)
        while not all(each.startswith(common) for each, _ in self._names):
            common = common[:-1]
        return name[len(common):] or name

    def read(self, text):
        for name, value in self._names:
            if text in (name, self._short(name)):
                return value
        return int(text, 0)

    def argument(self, number):
        return number - (1 << self.bits) if self._is_signed and number >> (self.bits - 1) else number


class _Ip4(object):
    bits, takes = 32, "an IPv4 address ('10.0.0.1', '10.0.0.0/8') or a number"

    @staticmethod
    def read(text):
        return _ip_number('AF_INET', text)

    @staticmethod
    def argument(number):
        return number


class _Ip6(object):
    bits, takes = 128, "an IPv6 address ('2001:db8::1', '2001:db8::/32') or a number"

    @staticmethod
    def read(text):
        return _ip_number('AF_INET6', text)

    @staticmethod
    def argument(number):
        return array('uint8', _octets(number, 16))


class _Mac(object):
    bits, takes = 48, "a MAC address ('02:00:00:00:00:01', '01:00:5e:00:00:00/25') or a number"

    @staticmethod
    def read(text):
        parts = [int(part, 16) for part in text.split(':')]
        if len(parts) != 6 or not all(0 <= part < 256 for part in parts):
            raise ValueError(text)
        return _number(parts)

    @staticmethod
    def argument(number):
        return ':'.join('%02x' % octet for octet in _octets(number, 6))


class _Record(object):
    """A record of the SDK by its members; those that are given count."""

    takes = '{member: number}, or a tuple of a record and one with its mask'

    def __init__(self, type):
        self._type = getattr(q, type)

    def pair(self, members):
        value, mask = self._type(), self._type()
        for name, number in members.items():
            if not hasattr(value, name) or not isinstance(number, _INTEGERS):
                raise ValueError(name)
            setattr(value, name, number)
            _fill(mask, name)
        return value, mask


def _fill(record, name):
    """Sets all bits of a member."""
    for bits in (32, 16, 8):
        try:
            setattr(record, name, (1 << bits) - 1)
            return
        except OverflowError:
            pass


def _ip_number(family, text):
    import socket
    try:
        return _number(bytearray(socket.inet_pton(getattr(socket, family), text)))
    except socket.error:
        raise ValueError(text)


def _number(octets):
    number = 0
    for octet in octets:
        number = number << 8 | octet
    return number


def _octets(number, count):
    return [int(number >> 8 * place & 255) for place in reversed(range(count))]


def _prefixes(low, high, bits):
    """[(value, mask), ...] that make up a range."""
    ones = (1 << bits) - 1
    made = []
    while low <= high:
        size = low & -low or 1 << bits
        while low + size - 1 > high:
            size >>= 1
        made.append((low, ones & ~(size - 1)))
        low += size
    # A mask of nothing would be for packets that have no such number, too.
    half = 1 << (bits - 1)
    return [(0, half), (half, half)] if made == [(0, 0)] else made


class _Qualifier(object):
    """What one takes, and how its values reach its function."""

    def __init__(self, name):
        self.name = name
        self.number = getattr(q, 'bcmFieldQualify' + name, None)
        self.function = getattr(q, 'bcm_field_qualify_' + name, None)
        if self.number is None or self.function is None:
            names = [each[len('bcm_field_qualify_'):] for each in dir(q)
                     if each.startswith('bcm_field_qualify_') and not each.endswith('_get')]
            raise _missing('qualifier', name, names)
        rows = parameters(self.function)[2:]
        types = [row[1] for row in rows]
        self._is_masked = len(rows) == 2 and types[0] == types[1] and rows[1][0].startswith('mask')
        self._is_whole = not self._is_masked and len(rows) != 1
        self._is_ports = self._is_masked and types[0] == 'bcm_pbmp_t'
        self._is_record = self._is_masked and isinstance(getattr(q, types[0], None), type)
        self._kind = (None if self._is_whole or self._is_ports else
                      _Record(types[0]) if self._is_record else
                      _Ip6 if rows[0][2:] == ('pointer', 16) else
                      {'bcm_ip_t': _Ip4, 'bcm_mac_t': _Mac}.get(types[0]) or _Plain(types[0]))
        self._types = types

    def alternatives(self, unit, value):
        """What entries are to have, one of it each: ('values', arguments) or ('range', low, high)."""
        if self._is_ports:
            return [('values', self._ports(unit, value))]
        if self._is_whole:
            if not isinstance(value, tuple) or len(value) != len(self._types):
                raise self._refusal(value)
            return [('values', value)]
        if self._is_record:
            return [('values', self._records(one)) for one in (value if isinstance(value, list) else [value])]
        return [each for one in (value if isinstance(value, list) else [value]) for each in self._read(one)]

    def values(self, pairs):
        """The same of pairs of value and mask."""
        return [('values', tuple(map(self._kind.argument, pair))) for pair in pairs]

    def expanded(self, low, high):
        return self.values(_prefixes(low, high, self._kind.bits))

    def _records(self, value):
        try:
            return self._kind.pair(value) if isinstance(value, dict) else self._two_records(value)
        except (OverflowError, TypeError, ValueError):
            raise self._refusal(value)

    def _two_records(self, value):
        known = getattr(q, self._types[0])
        if not isinstance(value, tuple) or len(value) != 2 or not all(isinstance(each, known) for each in value):
            raise ValueError(value)
        return value

    def _refusal(self, value):
        if self._is_ports:
            takes = "a list of ports, or text such as '1-4,7'"
        elif self._is_whole:
            takes = 'a tuple of %s' % ', '.join(self._types)
        elif self._is_record:
            takes = self._kind.takes + ', or a list of such'
        else:
            takes = self._kind.takes + (", (value, mask), a range 'low-high'" if self._is_masked else '')
            takes += ', or a list of such'
        return ValueError('%s: %r is not what it takes: %s' % (self.name, value, takes))

    def _ports(self, unit, value):
        try:
            ports = checked(q.parse_bcm_pbmp, unit, str(value), OUT) if isinstance(value, _TEXTS) else list(value)
            ports = [int(port) for port in ports]
        except (StatusError, TypeError, ValueError):
            raise self._refusal(value)
        # Lists of ports are of plain integers, whatever a record gives.
        return ports, [int(port) for port in checked(q.bcm_port_config_get, unit).all]

    def _one(self, value, given):
        """A number of it."""
        kind = self._kind
        if isinstance(value, _TEXTS):
            try:
                value = kind.read(str(value).strip())
            except ValueError:
                raise self._refusal(given)
        if not isinstance(value, _INTEGERS) or not -1 << (kind.bits - 1) <= value < 1 << kind.bits:
            raise self._refusal(given)
        return value & (1 << kind.bits) - 1

    def _read(self, value):
        ones = (1 << self._kind.bits) - 1
        if not self._is_masked:
            return [('values', (self._kind.argument(self._one(value, value)),))]
        if isinstance(value, tuple):
            if len(value) != 2:
                raise self._refusal(value)
            return self.values([tuple(self._one(part, value) for part in value)])
        if isinstance(value, _TEXTS) and '/' in value:
            return self.values([self._prefix(value)])
        if isinstance(value, _TEXTS) and '-' in value[1:]:
            low, high = [self._one(part, value) for part in value.split('-', 1)]
            if low > high:
                raise self._refusal(value)
            return [('range', low, high)] if low < high else self.values([(low, ones)])
        return self.values([(self._one(value, value), ones)])

    def _prefix(self, text):
        address, length = text.split('/', 1)
        bits = self._kind.bits
        if not length.isdigit() or int(length) > bits:
            raise self._refusal(text)
        number, rest = self._one(address, text), (1 << bits - int(length)) - 1
        if number & rest:
            raise ValueError('%s: %r has bits beyond its prefix' % (self.name, text))
        return number, (1 << bits) - 1 & ~rest


class RuleError(StatusError):
    """The chip refuses a rule as a whole: StatusError of what installs its entry.

    culprits: the names of the qualifiers and actions that it refuses by themselves, too.
    """

    def __init__(self, error, culprits):
        StatusError.__init__(self, error.function, error.arguments, error.status)
        self.culprits = culprits

    def __str__(self):
        return StatusError.__str__(self) + (': for %s' % ', '.join(self.culprits) if self.culprits else '')


class Rule(object):
    """One rule of an ACL, as add() made it: `priority`, `match` and `actions` as they were given; `entries`, the ids
    of the entries of the field processor that it became.
    """

    def __init__(self, acl, priority, match, actions):
        self._acl = acl
        self.priority, self.match, self.actions = priority, match, actions
        self.entries = ()
        self._stat = None
        self._ranges = ()

    def __repr__(self):
        return '<rule: %s>' % ' '.join(self._cells()[:3])

    @property
    def counted(self):
        """(packets, bytes) that it has acted on; None if it counts nothing."""
        return None if self._stat is None else self._acl._counted(self._stat)

    @property
    def packets(self):
        """How many packets it has acted on; None if it counts nothing."""
        return self.counted and self.counted[0]

    @property
    def bytes(self):
        """The bytes of these packets."""
        return self.counted and self.counted[1]

    def _cells(self):
        def shown(value):
            return value if isinstance(value, _TEXTS) else repr(value)

        actions = [action if isinstance(action, _TEXTS) else '%s(%s)' % (action[0], ', '.join(map(repr, action[1:])))
                   for action in self.actions]
        counted = self.counted
        return ['%d' % self.priority,
                ' '.join('%s=%s' % (name, shown(value)) for name, value in sorted(self.match.items())) or 'all',
                ', '.join(actions) or '-'] + (['%d' % number for number in counted] if counted else ['-', '-'])


class ACL(object):
    """An access list: rules in a group of their own of the field processor.

    >>> acl = ACL(0)
    >>> rule = acl.add(priority=10, match=dict(SrcIp='10.0.0.0/8', L4DstPort=80), actions=['Drop'], count=True)
    >>> print(acl)
    priority  match                          actions  packets  bytes
    10        L4DstPort=80 SrcIp=10.0.0.0/8  Drop     0        0
    >>> acl.destroy()

    unit:       the chip.
    priority:   of the group, where what two of them want contradicts.
    stage:      where packets meet it: the name of a qualifier bcmFieldQualifyStage... without what all begin with.
    qualifiers: names that rules may use. Others are added when a rule needs one, which a chip may refuse: a group is
                only as wide as it was made.

    Nothing is made before the first rule. Raises StatusError for what the SDK refuses.
    """

    def __init__(self, unit, priority=0, stage='Ingress', qualifiers=()):
        self.unit, self.priority = unit, priority
        self.group = None
        self.rules = []  # by age
        self._names = set(['Stage' + stage]) | set(qualifiers)
        self._qualifiers = {}
        self._ranges = {}  # (flags, low, high): [id, how many rules have it]
        self._kinds = None
        for name in self._names:
            if not hasattr(q, 'bcmFieldQualify' + name):
                raise _missing('qualifier', name, [each[len('bcmFieldQualify'):] for each, _ in
                                                   constants('bcmFieldQualify')])

    def __repr__(self):
        return '<ACL of unit %d: %d rules>' % (self.unit, len(self.rules))

    def __len__(self):
        return len(self.rules)

    def __iter__(self):
        """The rules in the order in which they are asked."""
        return iter(sorted(self.rules, key=lambda rule: -rule.priority))

    def add(self, priority=0, match=None, actions=(), count=False):
        """Adds a rule, which takes effect: a Rule.

        priority: of the rules that match, the one of the highest acts; of several the chip chooses, the simulated
                  switch the one that is older.
        match:    {qualifier: value}, or pairs of them; all have to match, and without any, each packet does. Names
                  are those of the functions bcm_field_qualify_...; values are
                    numbers, and addresses as text, with a prefix or without: 80, '10.0.0.0/8', '2001:db8::1';
                    (value, mask); ranges, '1024-65535'; names of an enumeration, 'Ipv4Any';
                    a list of such, for any of them;
                    sets of ports, [1, 2, 3] or '1-3';
                    members of a record, dict(org_code=0, type=0x0800);
                    and where the function takes something else, all its arguments behind the entry, as a tuple.
        actions:  names, such as 'Drop', or tuples of a name and the action's parameters, ('RedirectPort', 0, 7);
                  those of a set of ports have a list: ('RedirectPbmp', [5, 6]); those of an address a text:
                  ('DestMacNew', '02:00:00:00:00:01').
        count:    whether the packets are counted, and their bytes.

        Lists of values take an entry for each. Ranges take one of the chip's range checks, which know the ports of
        TCP and UDP alone, and where none is free, entries for the prefixes that make them up.

        ValueError: no such qualifier or action, or a value that it does not take: says what it does. StatusError:
        of what the chip cannot install it says for which of them, if it is one by itself.
        Either way nothing has changed but what the group may have.
        """
        rule = Rule(self, priority, dict(match or {}), list(actions))
        asked = [(self._qualifier(name), value) for name, value in rule.match.items()]
        wanted = [(each, each.alternatives(self.unit, value)) for each, value in asked]
        calls = [self._action(action) for action in rule.actions]
        self._open(rule.match)
        undo = []
        try:
            ranges = []
            choices = [[choice for one in alternatives for choice in self._choices(qualifier, one, ranges, undo)]
                       for qualifier, alternatives in wanted]
            if count:
                rule._stat = self._make_stat()
                undo.append((q.bcm_field_stat_destroy, self.unit, rule._stat))
            rule._ranges = ranges
            rule.entries = tuple(self._install(rule, chosen, calls, undo) for chosen in itertools.product(*choices))
        except Exception:
            for step in reversed(undo):
                step[0](*step[1:])
            raise
        self.rules.append(rule)
        return rule

    def remove(self, rule):
        """Removes a rule. ValueError: it is none of this list, or not any more."""
        if rule not in self.rules:
            raise ValueError('%r is not in the list' % rule)
        self.rules.remove(rule)
        self._destroy(rule)

    def clear(self):
        """Removes all rules."""
        while self.rules:
            self._destroy(self.rules.pop())

    def destroy(self):
        """Removes all rules and the group. The list can be used again, as if it were new."""
        self.clear()
        if self.group is not None:
            group, self.group = self.group, None
            checked(q.bcm_field_group_destroy, self.unit, group)

    def table(self):
        """All rules as text, with what they have counted, in the order in which they are asked."""
        rows = [['priority', 'match', 'actions', 'packets', 'bytes']] + [rule._cells() for rule in self]
        widths = [max(map(len, column)) for column in zip(*rows)]
        return '\n'.join('  '.join(text.ljust(width) for text, width in zip(row, widths)).rstrip() for row in rows)

    __str__ = table

    # --- what the SDK is told ---

    def _qualifier(self, name):
        found = self._qualifiers.get(name)
        if found is None:
            found = self._qualifiers[name] = _Qualifier(name)
        return found

    def _open(self, names):
        """Makes the group, or has it take what it lacks."""
        checks = set(_RANGE_CHECKS[name][0] for name in names if name in _RANGE_CHECKS)
        wanted = self._names | set(names) | checks
        if self.group is not None and wanted == self._names:
            return
        qset = q.bcm_field_qset_t()
        for name in wanted:
            q.bcm_field_qset_add(qset, getattr(q, 'bcmFieldQualify' + name))
        if self.group is None:
            self.group = checked(q.bcm_field_group_create, self.unit, qset, self.priority)
        else:
            checked(q.bcm_field_group_set, self.unit, self.group, qset)
        self._names = wanted

    def _action(self, action):
        """The call of an entry: (function, arguments)"""
        name, given = (action, ()) if isinstance(action, _TEXTS) else (action[0], tuple(action[1:]))
        number = getattr(q, 'bcmFieldAction%s' % name, None)
        if number is None:
            raise _missing('action', name, [each[len('bcmFieldAction'):] for each, _ in constants('bcmFieldAction')])
        if given and isinstance(given[0], list):
            return q.bcm_field_action_ports_add, (number, given[0])
        if len(given) == 1 and isinstance(given[0], _TEXTS):
            try:
                return q.bcm_field_action_mac_add, (number, _Mac.argument(_Mac.read(given[0])))
            except ValueError:
                raise ValueError('%s: %r is no MAC address' % (name, given[0]))
        room = len(parameters(q.bcm_field_action_add)) - 3
        if len(given) > room or not all(isinstance(each, _INTEGERS) for each in given):
            raise ValueError('%s: an action has at most %d numbers as parameters, or a list of ports, or a MAC address'
                             % (name, room))
        return q.bcm_field_action_add, (number,) + given + (0,) * (room - len(given))

    def _choices(self, qualifier, alternative, ranges, undo):
        """[(function, arguments)], of which an entry has one."""
        if alternative[0] == 'values':
            return [(qualifier.function, alternative[1])]
        low, high = alternative[1:]
        check, flag = _RANGE_CHECKS.get(qualifier.name, (None, None))
        if check is not None:
            key = getattr(q, flag), low, high
            id = self._take_range(key)
            if id is not None:
                ranges.append(key)
                undo.append((self._give_back, key))
                return [(getattr(q, 'bcm_field_qualify_' + check), (id, 0))]
        return [(qualifier.function, arguments) for _, arguments in qualifier.expanded(low, high)]

    def _take_range(self, key):
        """The id of a range; None if there is no room for it."""
        if key not in self._ranges:
            try:
                self._ranges[key] = [checked(q.bcm_field_range_create, self.unit, OUT, *key), 0]
            except StatusError as error:
                if error.name not in _NO_ROOM:
                    raise
                return None
        self._ranges[key][1] += 1
        return self._ranges[key][0]

    def _give_back(self, key):
        self._ranges[key][1] -= 1
        if not self._ranges[key][1]:
            checked(q.bcm_field_range_destroy, self.unit, self._ranges.pop(key)[0])

    def _make_stat(self):
        if self._kinds is None:
            self._kinds = array('bcm_field_stat_t', [getattr(q, name) for name in _COUNTED])
        return checked(q.bcm_field_stat_create, self.unit, self.group, len(self._kinds), self._kinds, OUT)

    def _counted(self, stat):
        return tuple(checked(q.bcm_field_stat_multi_get, self.unit, stat, len(self._kinds), self._kinds, OUT))

    def _destroy(self, rule):
        for entry in rule.entries:
            checked(q.bcm_field_entry_destroy, self.unit, entry)
        if rule._stat is not None:
            checked(q.bcm_field_stat_destroy, self.unit, rule._stat)
        for key in rule._ranges:
            self._give_back(key)
        rule._stat = None

    def _install(self, rule, chosen, actions, undo):
        unit = self.unit
        entry = checked(q.bcm_field_entry_create, unit, self.group)
        undo.append((q.bcm_field_entry_destroy, unit, entry))
        for function, arguments in itertools.chain(chosen, actions):
            checked(function, unit, entry, *arguments)
        checked(q.bcm_field_entry_prio_set, unit, entry, rule.priority)
        if rule._stat is not None:
            checked(q.bcm_field_entry_stat_attach, unit, entry, rule._stat)
        try:
            checked(q.bcm_field_entry_install, unit, entry)
        except StatusError as error:
            raise RuleError(error, self._culprits(rule, chosen, actions))
        return entry

    def _culprits(self, rule, chosen, actions):
        """The names of what cannot be installed by itself."""
        names = list(rule.match) + [action if isinstance(action, _TEXTS) else action[0] for action in rule.actions]
        return [name for name, call in zip(names, itertools.chain(chosen, actions)) if not self._is_possible(*call)]

    def _is_possible(self, function, arguments):
        entry = checked(q.bcm_field_entry_create, self.unit, self.group)
        try:
            checked(function, self.unit, entry, *arguments)
            checked(q.bcm_field_entry_install, self.unit, entry)
            return True
        except StatusError:
            return False
        finally:
            checked(q.bcm_field_entry_destroy, self.unit, entry)
