"""Asks functions for the errors that the SDK's headers promise of them.

For each function a call is looked for that succeeds, or that at least is not refused for its arguments: from plausible
values of each parameter, on a unit where everything has been made that can be. Then one thing at a time is made wrong.
What can be wrong comes of the declarations and of what headers say of ranges; what these cannot tell is data here.
"""
import ctypes
import os
import re

import QuorelApiNew as q
import binding
import headers
import rules
from recording import library
from simulator import PortBitmap, status_name

# Where all has been made that can be; where all modules have been ended; and where nothing has been made.
UNIT, ENDED, EMPTY = 1, 2, 3
PORT, VLAN, TRUNK, MAC, MULTICAST_MAC = 5, 1, 1, (2, 0, 0, 0, 0, 1), (1, 0, 0x5e, 0, 0, 1)
UNITS_NOT_THERE = -1, 7, 16
NO_TRUNK, GPORT_OF_NO_MODULE = 100000, q.BCM_GPORT_TYPE_MODPORT << 26 | 20000 << 11 | 5
NO_PORT, NO_VLAN = 65, 4000
NO_GPORT = 19 << 26 | 999  # a queue group
SIZE = 1 << 15  # of memory behind pointers: enough for arrays of some records
SCALARS = {'int32': ctypes.c_int32, 'uint32': ctypes.c_uint32, 'uint16': ctypes.c_uint16, 'uint8': ctypes.c_uint8,
           'low_bits': ctypes.c_uint16, 'uint64': ctypes.c_uint64, 'int8': ctypes.c_int8, 'bool': ctypes.c_int}
MAKES = re.compile('_(create|add|alloc)(_|$)')
CREATES = re.compile(r'_create(_\w+)?$')

# Functions that are not asked, by what their names match: (pattern, why).
LEFT_ALONE = [
    ('bcm_(attach|detach|init|shutdown)', 'the unit itself comes and goes; test_startup.py asks them'),
    ('bcm_(pkt|tx|rx_free|rx_pool|rx_remote)', 'packets are memory of the right kind; test_cpu_packets.py'),
    ('bcm_vlan_list', 'makes memory that its caller gives back; test_vlan.py'),
    ('.*_list_destroy$', 'gives back memory that has to be the right one'),
    ('bcm_(link_wait|linkscan)', 'waits; test_linkscan.py'),
]

# What is no error, or another one than elsewhere: (function, error, what is wrong, why), all but the last as patterns.
EXEMPT = [
    ('bcm_(stat_interval_set|switch_hash_entry_priority_set)', 'E_PARAM', 'all', 'any number is one'),
    ('bcm_(fabric_rci_config|switch_control_indexed)_set', 'E_PARAM', 'all', 'records by value, kept as they are'),
    ('bcm_(l3_host|l3_route|ipmc)_age', 'E_PARAM', 'all', 'the callback may be null, its comment says'),
    ('bcm_l2_port_native', 'E_PARAM', 'all', 'of a module and a port that are not there it is another error'),
    ('bcm_oam_pm_profile_attach', 'E_PARAM', 'all', 'takes two ids: BCM_E_NOT_FOUND'),
    ('bcm_unit_valid_get', 'E_UNIT', '.*', 'says of any number whether it is a unit'),
    ('bcm_l2_addr_multi_.*', 'E_PARAM', 'null status_arr', 'may be null, its comment says'),
    ('bcm_l3_.*_delete_all', 'E_PARAM', 'null info', 'of all, nothing is said by the record'),
    ('bcm_(l3_.*_(create|find)|mpls_tunnel_initiator_set|trunk_failover_set)', 'E_PARAM', 'null .*_array',
     'an array without elements need not be there'),
    ('bcm_trunk_get', 'E_PARAM', 'null ', 'nor has room for none'),
    ('bcm_rx_stop', 'E_PARAM', 'null cfg|all', 'takes no notice of it, its comment says'),
    ('bcm_l3_egress_multipath_add', 'E_EXISTS', '.*', 'may be in a group several times, its comment says'),
    ('bcm_vlan_translate_action_add', 'E_EXISTS', '.*', 'replaces, its comment says'),
    ('bcm_vlan_translate_action_.*', 'E_PORT', '.*', 'what port is, is up to key_type'),
    ('bcm_vlan_port_(destroy|translation_get)|bcm_cosq_gport_(get|delete|vsq_destroy)', 'E_PORT', '.*', 'names an object: BCM_E_NOT_FOUND'),
    ('bcm_fabric_(multicast|module_group)_.*', 'E_NOT_FOUND', 'group .*|all', 'a number of the caller, which nothing makes'),
    ('bcm_oam_opcode_group_.*', 'E_NOT_FOUND', '.*', 'one of four that are there always'),
    ('bcm_multicast_.*_encap_get', 'E_NOT_FOUND', '.*_port_id .*', 'is numbered as it is said, and looked at by nothing'),
    ('bcm_vlan_(translate|cross_connect|dtag)_.*', 'E_NOT_FOUND', '.*_(vid|vlan)(_low|_high)? .*', 'of tags, not of VLANs'),
    ('bcm_vlan_(translate|cross_connect|dtag)_.*_?(add|action_create)', 'E_NOT_FOUND', 'all', 'of tags, not of VLANs'),
    ('bcm_(l3_vrrp|mirror|mcast).*_(get|delete_all|remove_all)', 'E_NOT_FOUND', 'all', 'a VLAN that is not there has none'),
    ('bcm_.*_(get|delete_all|remove_all)', 'E_NOT_FOUND', '(vid|vlan) .*', 'a VLAN that is not there has none'),
    ('bcm_(.*mcast_join|vlan_mac_add|mirror_vlan_set|mirror_port_vlan_destination_add|l2_tunnel_add|multicast_l2_encap_get)',
     'E_NOT_FOUND', '(vid|vlan) .*|all', 'may be said before the VLAN is there'),
    ('.*_(add|set)', 'E_NOT_FOUND', '(encap_id|ds_id|offset_id) .*', 'kept as it is, and looked at by nothing'),
    ('bcm_(port_pon_tunnel_map_set|vlan_cross_connect_add|cosq_classifier_mapping_set)', 'E_PORT', '.*',
     'a port that is no key is kept as it is'),
    ('bcm_field_qualify_.*', 'E_NOT_FOUND', '.*_port_id .*', 'a value of packets, which need not be there'),
    ('bcm_field_range_group_.*', 'E_NOT_FOUND', 'group .*', 'a number of the caller, which nothing makes'),
    ('bcm_field_(.*_add|group_create_mode|data_qualifier_create)', 'E_EXISTS', '.*', 'said of ids that are chosen by the caller'),
    ('bcm_field_(group_set|group_action_set|(group_|entry_)prio(rity)?_set|stat_all_set(32)?|entry_dump)', 'E_PARAM', 'all',
     'any set, priority or number may be given'),
    ('bcm_field_entry_((re)?install|enable_set|stat_attach)|bcm_field_stat_attach', 'E_PARAM', 'all',
     'takes ids, and yes or no: BCM_E_NOT_FOUND'),
    ('bcm_l3_intf_create', 'E_BADID', 'all', 'leads to no port'),
    ('bcm_trunk_resilient_add', 'E_BADID', 'all', 'its member is kept as it is'),
    ('bcm_l3_(egress_)?ecmp_(member_)?add', 'E_EXISTS', 'all', 'may be in a group several times, as by multipath_add'),
    ('bcm_stg_create_id', 'E_FULL', 'all', 'takes the id that it is given'),
    ('bcm_l3_egress_multipath_delete|bcm_oam_endpoint_destroy_all|bcm_field_data_qualifier_.*_delete', 'E_BUSY', 'all', 'what it takes away is not in use'),
    ('bcm_l2_addr_freeze', 'E_FAIL', 'all', 'nests'),
    ('bcm_l2_stat_enable_set', 'E_DISABLED', 'all', 'enables'),
    ('bcm_link_change', 'E_TIMEOUT', 'all', 'waits for nothing'),
    ('bcm_field_(entry|stat)_create', 'E_RESOURCE', 'all', 'have more room than a test can fill'),
    ('bcm_(failover|proxy_egress)_create', 'E_FULL', 'all', 'have room for 65,536, as others by rule'),
    ('bcm_trunk_resilient_delete_all', 'E_NOT_FOUND', '.*', 'a trunk that is not there has none'),
    ('bcm_cosq_subscriber_map_delete_all', 'E_PORT|E_NOT_FOUND', '.*', 'chooses by a member, and none has it'),
    ('bcm_cosq_(profile_mapping|service_pool|classifier_mapping)_.*', 'E_NOT_FOUND', '.*', 'that is for gports'),
]

# What takes more than one wrong argument: (function, error, test that asks for it), the first two as patterns.
ASKED_ELSEWHERE = [
    ('bcm_l2_addr_add', 'E_FULL', 'test_l2.py'),
    ('bcm_l2_addr_thaw', 'E_FAIL', 'test_l2_ageing.py'),
    ('bcm_l2_tunnel_add', 'E_FULL', 'test_l2_objects.py'),
    ('bcm_l3_(host_add|route_add|egress_create|egress_multipath_create)', 'E_FULL', 'test_switch_events.py'),
    ('bcm_l3_(intf_create|egress_multipath_add)', 'E_FULL', 'test_l3.py'),
    ('bcm_l3_(intf_delete(_all)?|egress_destroy|egress_multipath_destroy)', 'E_BUSY', 'test_l3.py'),
    ('bcm_trunk_member_add', 'E_FULL', 'test_stg_trunk.py'),
    ('bcm_stg_destroy', 'E_BUSY', 'test_stg_trunk.py'),
    ('bcm_policer_destroy', 'E_BUSY', 'test_policers.py'),
    ('bcm_mirror_port_destination_add', 'E_FULL', 'test_mirrors.py'),
    ('bcm_qos_map_destroy', 'E_BUSY', 'test_qos_maps.py'),
    ('bcm_(oam_endpoint_destroy|wlan_port_delete)', 'E_BUSY', 'test_objects.py'),
    ('bcm_field_(group|stat|presel)_destroy', 'E_BUSY', 'test_field.py'),
    ('bcm_field_data_qualifier_destroy(_all)?', 'E_BUSY', 'test_field_data.py'),
    ('bcm_l3_(egress_create|(host|route)_add)', 'E_BADID', 'test_refusals.py'),
    ('bcm_l2_stat_(get|set)(32)?', 'E_DISABLED', 'test_refusals.py'),
    ('bcm_l3_(vrrp_add|egress_multipath_max_create|(egress_)?ecmp_create|(egress_ecmp|ecmp_member)_add)', 'E_FULL',
     'test_refusals.py'),
    ('bcm_(policer_create|vswitch_create|switch_tpid_add|l3_ip6_prefix_map_add|mirror_port_vlan_destination_add)', 'E_FULL',
     'test_refusals.py'),
    ('bcm_field_(range_group|data_qualifier)_create', 'E_RESOURCE', 'test_refusals.py'),
    ('bcm_(l3_(egress_)?ecmp_destroy|fabric_predicate_destroy|ipfix_rate_destroy|oam_pm_profile_delete)', 'E_BUSY',
     'test_refusals.py'),
    ('bcm_(trunk_create|mcast_addr_add|mirror_destination_create|vlan_translate_action_create|l3_ecmp_create)', 'E_EXISTS',
     'test_refusals.py'),
    ('bcm_(mirror_port_vlan_destination_add|fabric_predicate_action_add)', 'E_EXISTS', 'test_refusals.py'),
]

# Parameters that name an object, by name or type. What is found by a key of a table is by its functions' names.
ID = re.compile(r'(^|_)id$|^vpn$|^tid$|^group$')
IDS = ('bcm_trunk_t', 'bcm_stg_t', 'bcm_policer_t', 'bcm_multicast_t')
COUNT = re.compile('count|size|max|len|num|nstat')  # what may say how long an array is
NONE, ALL, OUTER = range(3)  # members that get values
MEMBER_OF_TRUNK = 'bcm_trunk_t|tgid|trunk'
LARGEST = 1100  # tables that are filled
ERASES = re.compile('_(delete|destroy|remove|free)(_|$)')
ENDS = re.compile('_(delete|destroy|remove|clear|detach|unregister)(_all|$)')
PLACES = 'bcm_port_t', 'bcm_gport_t', 'bcm_pbmp_t', 'bcm_if_t'
YES_OR_NO = re.compile('^(enable|val|revert|isolate|block|output)$')
SEEKS = re.compile('_(get|find|delete|destroy|remove)$')
STEP = 17  # from an id that is there to one that is not


class Parameter(object):
    def __init__(self, argument, name):
        self.kind, self.name, self.text = argument.kind, name, argument.text
        self.type = re.sub(r'\W.*', '', argument.text)
        self.is_pointer = self.kind in ('pointer', 'appended', 'in_and_out', 'mac_address', 'string', 'ip_text')
        self.is_port = self.type in ('bcm_port_t', 'bcm_gport_t') and self.kind == 'int32' and not name.endswith('_id')


class Function(object):
    def __init__(self, bound, declared):
        self.name, self.family, self.declared = bound.name, bound.family, declared
        self.parameters = [Parameter(*pair) for pair in zip(bound.parameters, declared.names)]
        self.of_unit = bool(self.parameters) and self.parameters[0].type == 'int' and (
            self.parameters[0].name in ('unit', ''))

    def __call__(self, arguments, unit=UNIT):
        return getattr(library, self.name)(ctypes.c_int(unit), *arguments)


class Sdk(object):
    """What can be asked: functions that are answered, return a status, and have a unit."""

    def __init__(self):
        self.headers = headers.Headers()
        functions, members = binding.read()
        self.members = {}
        for member in members:
            self.members.setdefault(member.record, []).append(member)
        self.sizes = rules.record_sizes()
        self.groups = {}  # (header, comment) -> names of the functions of which it tells
        for declared in self.headers.functions.values():
            if not declared.name.endswith('_t_init'):
                self.groups.setdefault((declared.header, declared.comment), []).append(declared.name)
        self.initialisers = set(function.name for function in functions
                                if function.name.endswith('_init') and len(function.parameters) == 1)
        answered = set(row[0] for row in rules.report('answers.tsv') if row[2] != 'unavailable')
        self.functions = [Function(function, self.headers.functions[function.name]) for function in functions
                          if function.origin == 'sdk' and function.name in answered and function.result == 'int32']
        self.functions = [function for function in self.functions
                          if function.of_unit and re.match('bcm_', function.name)
                          and not any(re.match(pattern, function.name) for pattern, _ in LEFT_ALONE)]
        self.enders = {}         # family -> the function that ends it
        self.beginners = set()   # and what undoes that, each by the name of its function
        for function in functions:
            match = re.match(r'bcm_(\w+?)_(detach|cleanup)$', function.name)
            if match and len(function.parameters) == 1 and 'bcm_%s_init' % match.group(1) in answered:
                self.enders[function.family] = function.name
                self.beginners.add('bcm_%s_init' % match.group(1))
        self.keys = dict((row[0], row[5::2]) for row in rules.report('rules.tsv')
                         if row[2] in ('find', 'remove', 'object find', 'object remove', 'modify', 'object modify'))
        self.ids = {}        # family -> ids of what has been made
        self.makers = []     # (function, arguments) of what makes the world
        self.changed = True  # whether something else is there by now
        library.bcm_attach(ENDED, None, None, 0)
        for name in self.enders.values():
            getattr(library, name)(ENDED)
        self.empty()
        self.begin()

    def empty(self):
        library.bcm_detach(EMPTY)
        library.bcm_attach(EMPTY, None, None, 0)

    def begin(self):
        for _ in range(2):  # what refers to others can be made when they are there
            for function in self.functions:
                if MAKES.search(function.name) and function.name not in [made.name for made, _ in self.makers]:
                    self.fresh()
                    choice, status = self.search(function)
                    if status == 0:
                        self.makers.append((function, [make() for make in choice]))
                        self.fresh(function)

    def fresh(self, latest=None):
        """The unit as it was, with everything in it that can be made."""
        library.bcm_detach(UNIT)
        library.bcm_attach(UNIT, None, None, 0)
        library.bcm_trunk_create(UNIT, q.BCM_TRUNK_FLAG_WITH_ID, ctypes.byref(ctypes.c_int(TRUNK)))
        for function, values in self.makers:
            function(values)
            if function is latest:
                known = self.ids.setdefault(function.family, [])
                known.extend(number for number in sorted(set(self.written(function, values)))
                             if number > 1 and number not in known)

    def written(self, function, values):
        """Ids that a call may have written."""
        for parameter, value in zip(function.parameters[1:], values):
            if parameter.is_pointer and parameter.type in self.members:
                record = getattr(q, parameter.type)()
                ctypes.memmove(int(record.this), value, self.sizes[re.sub('_t$', '_s', parameter.type)])
                for member in self.members[parameter.type]:
                    if member.kind in SCALARS and re.search('id$|vpn|gport|_id_', member.name):
                        yield getattr(record, member.name)
            elif parameter.is_pointer and parameter.kind != 'mac_address':
                yield ctypes.c_int32.from_buffer(value).value

    # Arguments

    def search(self, function, tries=200):
        """(how to make the arguments of a call, its status): of the calls tried the one that gets furthest."""
        choices = [self.choices(function, parameter) for parameter in function.parameters[1:]]
        best = [choice[0] for choice in choices]
        status = function([make() for make in best])
        for _ in range(2):
            for place, choice in enumerate(choices):
                for make in choice[1:]:
                    if status == 0 or tries == 0:
                        return best, status
                    tries -= 1
                    other = best[:place] + [make] + best[place + 1:]
                    result = function([make() for make in other])
                    if how_far(result) > how_far(status):
                        best, status = other, result
        return best, status

    def choices(self, function, parameter):
        """[what makes a value], the likeliest first."""
        kind, name = parameter.kind, parameter.name
        if kind in SCALARS:
            return [lambda number=number: SCALARS[kind](number) for number in self.numbers(function, parameter)]
        if kind == 'mac_address':
            return [lambda mac=mac: (ctypes.c_uint8 * SIZE)(*mac) for mac in (MAC, MULTICAST_MAC)]
        if kind == 'port_list':
            return [lambda: PortBitmap([PORT])]
        if kind == 'callback':
            return [lambda: ctypes.cast(callback, ctypes.c_void_p)]
        if kind in ('string', 'nullable_string', 'ip_text'):
            return [lambda: ctypes.create_string_buffer('text', SIZE)]
        if kind == 'any_pointer':
            return [lambda: None]
        if kind == 'value':
            # Records, and what is of the size of a pointer at most.
            size = self.sizes.get(re.sub('_t$', '_s', parameter.type), ctypes.sizeof(ctypes.c_void_p))
            words = ctypes.c_uint32 * (size // 4)
            structure = type('Value', (ctypes.Structure,), {'_fields_': [('words', words)]})
            return [lambda number=number: structure(words(*[number] * words._length_)) for number in (1, 0)]
        if parameter.type in self.members:
            return [lambda fill=fill, clear=clear: self.record(parameter.type, fill, clear)
                    for fill, clear in ((ALL, 1), (NONE, 1), (OUTER, 1), (ALL, 0), (NONE, 0), (OUTER, 0))]
        if parameter.type == 'bcm_pbmp_t':
            return [lambda: (ctypes.c_uint32 * (SIZE // 4))(1 << PORT)]
        numbers = [0] + [number for number in self.numbers(function, parameter) if number]
        return [lambda number=number: (ctypes.c_int32 * (SIZE // 4))(*[number] * 16) for number in numbers]

    def record(self, name, fill=ALL, clear=1, **members):
        """Memory that begins with a record: as its initialiser leaves it, and with VLANs, ports and such that exist, or
        with addresses and the outer VLAN alone."""
        record = getattr(q, name)()
        if clear and name + '_init' in self.initialisers:
            getattr(q, name + '_init')(record)
        for member in self.members[name] if fill else ():
            value = {'bcm_vlan_t': VLAN, 'bcm_trunk_t': TRUNK, 'bcm_port_t': PORT, 'bcm_gport_t': PORT}.get(member.text)
            if fill == OUTER and (member.text != 'bcm_vlan_t' or 'inner' in member.name) and member.kind != 'mac_address':
                continue
            if member.kind == 'mac_address':
                record_value = ':'.join('%02x' % byte for byte in MAC)
                setattr(record, member.name, record_value)
            elif value is not None and member.kind in SCALARS:
                setattr(record, member.name, value)
        for member, value in members.items():
            setattr(record, member, value)
        memory = ctypes.create_string_buffer(SIZE)
        ctypes.memmove(memory, int(record.this), self.sizes[re.sub('_t$', '_s', name)])
        return memory

    def numbers(self, function, parameter):
        name, kind, ids = parameter.name, parameter.type, self.ids.get(function.family, [])
        if parameter.is_port or name == 'port':
            return [PORT] + ids
        if kind == 'bcm_vlan_t' or name in ('vid', 'vlan'):
            return [VLAN] + ids
        if kind == 'bcm_trunk_t':
            return [TRUNK]
        if kind == 'bcm_module_t':
            return [0]
        if kind in self.headers.enumerations:
            return self.headers.enumerations[kind][:20] or [0]
        if COUNT.search(name):
            return [1, 0, 8]
        return [1, 0] + ids + [2, 5, 10]  # 5: flags of which two are needed

    # Promises

    def promises(self, function):
        """The errors that the function's comment and its header's name. Both tell of several functions: an error is
        promised by those that it can be about."""
        said = function.declared.head + ' ' + function.declared.comment
        return sorted(error for error in set(headers.ERROR.findall(said)) - {'E_NONE', 'E_UNAVAIL'}
                      if getattr(self, 'can_be_' + error[2:].lower(), lambda _: True)(function)
                      and not is_exempt(function, error, 'all'))

    def is_said_of(self, function, error):
        """Whether the headers' words for an error that nothing here provokes are about this function: those of its
        comment may be about others of the same, which they name; those of its header, about what it does not take."""
        declared = function.declared
        group = self.groups[declared.header, declared.comment]
        said = 'BCM_' + error
        if re.search(said + r'\b', declared.comment):
            verbs = verbs_of(group)
            for sentence in re.split(r'[.;] |\.$', declared.comment):
                for clause in sentence.split(', '):
                    if re.search(said + r'\b', clause):
                        named = named_in(clause, verbs) or named_in(sentence, verbs)
                        if not named or function.name in named:
                            return True
        return bool(re.search(said + r'\b', declared.head)) and getattr(self, error.lower() + '_is_about', lambda _: True)(function)

    def e_not_found_is_about(self, function):
        """What names something that may not be there, and does not make it."""
        return not CREATES.search(function.name) and any(parameter.kind in SCALARS and self.names_object(function, parameter.name, parameter.type)
                   for parameter in function.parameters[1:])

    def e_exists_is_about(self, function):
        """What does not choose an id."""
        return bool(MAKES.search(function.name)) and not (
            CREATES.search(function.name) and not function.name.endswith('_id') and not self.flag(function, 'WITH_ID'))

    def e_resource_is_about(self, function):
        """What chooses an id."""
        return function.name.endswith('_create')

    def e_badid_is_about(self, function):
        """What is told of trunks or modules, to keep it."""
        return bool(re.search('_(create|add|set)$', function.name)) and any(
            re.search(MEMBER_OF_TRUNK + '|gport', member.text + ' ' + member.name)
            for parameter in function.parameters[1:] for member in self.members.get(parameter.type, ()))

    def e_param_is_about(self, function):
        """What takes more than ports, names of what is there and yes or no: those have errors of their own, or none."""
        return not ENDS.search(function.name) and any(
            not (parameter.is_port or self.names_object(function, parameter.name, parameter.type)
                 or parameter.type in PLACES or YES_OR_NO.search(parameter.name)) for parameter in function.parameters[1:])

    def e_port_is_about(self, function):
        """What takes a port by number; sets of them are looked into where headers say so of the function."""
        return any(parameter.is_port and not parameter.is_pointer and not self.names_object(
            function, parameter.name, parameter.type) for parameter in function.parameters[1:])

    def names_object(self, function, name, kind):
        return bool(ID.search(name) or kind in IDS or kind == 'bcm_vlan_t'
                    or kind == 'bcm_gport_t' and 'no such gport' in function.declared.head)

    def takes(self, function, types):
        """Whether a parameter is of such a type, or a member of a record among them."""
        names = set(parameter.type for parameter in function.parameters[1:])
        names.update(member.text for name in list(names) for member in self.members.get(name, ()))
        return bool(names & set(types))

    def can_be_init(self, function):
        return function.name not in self.beginners

    def can_be_param(self, function):
        return len(function.parameters) > 1

    def can_be_port(self, function):
        return self.takes(function, ('bcm_port_t', 'bcm_gport_t', 'bcm_pbmp_t'))

    def can_be_badid(self, function):
        return self.takes(function, ('bcm_trunk_t', 'bcm_module_t', 'bcm_gport_t', 'bcm_port_t'))

    def can_be_not_found(self, function):
        return len(function.parameters) > 1

    def can_be_exists(self, function):
        return bool(MAKES.search(function.name))

    can_be_full = can_be_exists

    def can_be_busy(self, function):
        return bool(ERASES.search(function.name))

    def ask(self, function):
        """[(error, what was wrong, status)] of all that can be made wrong for an error that is promised."""
        if self.changed:
            self.fresh()
        choice, status = self.search(function)
        self.changed = status == 0
        answers = []
        for error in self.promises(function):
            expected = getattr(q, 'BCM_' + error)
            for what, provoke in getattr(self, error.lower(), nothing)(function, choice, status):
                if is_exempt(function, error, what):
                    continue
                if self.changed:
                    self.fresh()
                    self.changed = False
                result = provoke()
                self.changed = result == 0
                # A call that is refused anyway tells nothing, unless it is refused for this.
                if result == expected or status == 0 or how_far(result) < how_far(status):
                    answers.append((error, what, result))
            if not any(name == error and result == expected for name, _, result in answers):
                answers += [(error, what, expected) for what in self.provoked_somehow(function, choice, error)][:1]
        return answers

    def provoked_somehow(self, function, choice, error):
        """What else has to be wrong for the error."""
        for what, unit, values in getattr(self, error.lower() + '_somehow', nothing)(function, choice):
            if self.changed:
                self.fresh()
            result = function(values, unit)
            if unit == EMPTY and result == 0:
                self.empty()
            self.changed = unit == UNIT and result == 0
            if result == getattr(q, 'BCM_' + error):
                yield what

    def variations(self, function, choice, numbers):
        """(what is different, arguments) of calls that differ from the chosen one in one number, by itself or in a record."""
        for place, parameter in enumerate(function.parameters[1:]):
            values = [make() for make in choice]
            if parameter.kind in SCALARS:
                for number in numbers(parameter.type + ' ' + parameter.name, values[place].value):
                    if COUNT.search(parameter.name) and not (number < 0 and parameter.kind == 'int32'):
                        continue
                    values = [make() for make in choice]
                    values[place] = SCALARS[parameter.kind](number)
                    yield '%s %d' % (parameter.name, number), values
            elif parameter.is_pointer and parameter.type in self.members:
                for member in self.members[parameter.type]:
                    if member.kind in SCALARS and not COUNT.search(member.name):
                        now = self.member(parameter.type, values[place], member.name)
                        for number in numbers(member.text + ' ' + member.name, now):
                            values = [make() for make in choice]
                            if self.change(parameter.type, values[place], member.name, lambda _, number=number: number):
                                yield '%s.%s %d' % (parameter.name, member.name, number), values
                                values = [make() for make in choice]

    def e_not_found_somehow(self, function, choice):
        """Where nothing has been made; and with other numbers in the place of each."""
        yield 'where nothing is', EMPTY, [make() for make in choice]
        choices = [self.choices(function, parameter) for parameter in function.parameters[1:]]
        for place, others in enumerate(choices):
            for make in others:
                values = [make_one() for make_one in choice]
                values[place] = make()
                yield 'another %s where nothing is' % function.parameters[place + 1].name, EMPTY, values
        for what, values in self.to_replace(function, choice):
            yield what, EMPTY, values
        for what, values in self.variations(function, choice, lambda of, number: [
                NO_VLAN if of.startswith('bcm_vlan_t ') else number + STEP]):
            yield what, UNIT, values

    def e_port_somehow(self, function, choice):
        for what, values in self.variations(function, choice, lambda of, _: (
                [NO_PORT] if re.search('^bcm_g?port_t | port$', of) else [])):
            yield what, UNIT, values

    def e_param_somehow(self, function, choice):
        for place, parameter in enumerate(function.parameters[1:]):
            if parameter.kind in ('callback', 'mac_address', 'value', 'port_list'):
                values = [make() for make in choice]
                values[place] = ctypes.c_void_p() if parameter.kind == 'callback' else values[place]
                if parameter.kind == 'mac_address':
                    values[place] = (ctypes.c_uint8 * SIZE)()
                yield 'other ' + parameter.name, UNIT, values
        for what, values in self.variations(function, choice, lambda of, number: (-1, 0x7fffffff, 0, 4096, 1 << 31)):
            yield what, UNIT, values

    def wrong(self, function, choice, place, value):
        """A call with another value at that place after the unit."""
        def call():
            values = [make() for make in choice]
            values[place] = value
            return function(values)
        return call

    def e_unit(self, function, choice, status):
        for unit in UNITS_NOT_THERE:
            yield 'unit %d' % unit, lambda: function([make() for make in choice], unit)

    def e_init(self, function, choice, status):
        ender = self.enders.get(function.family)
        if ender:
            yield 'after ' + ender, lambda: function([make() for make in choice], ENDED)

    def e_param(self, function, choice, status):
        for place, parameter in enumerate(function.parameters[1:]):
            if parameter.is_pointer:
                yield 'null ' + parameter.name, self.wrong(function, choice, place, None)
            elif parameter.type in self.headers.enumerations:
                # How many there are is none of them either.
                for number in (-1, 0x7fffffff, max(self.headers.enumerations[parameter.type] or [0x7ffffffe]) + 1):
                    yield '%s %d' % (parameter.name, number), self.wrong(
                        function, choice, place, SCALARS[parameter.kind](number))

    def e_port(self, function, choice, status):
        for place, parameter in enumerate(function.parameters[1:]):
            if parameter.is_port:
                yield '%s %d' % (parameter.name, NO_PORT), self.wrong(
                    function, choice, place, ctypes.c_int(NO_PORT))

    def e_not_found(self, function, choice, status):
        # Who says which id what is made gets, says it last.
        new = len(choice) - 1 if CREATES.search(function.name) and function.name.endswith('_id') else None
        for place, parameter in enumerate(function.parameters[1:]):
            if place == new:
                continue
            key = self.keys.get(function.name, ())[place:place + 1] == ['key'] and SEEKS.search(function.name)
            if parameter.type == 'bcm_vlan_t' and parameter.kind in SCALARS:
                yield '%s %d' % (parameter.name, NO_VLAN), self.wrong(
                    function, choice, place, SCALARS[parameter.kind](NO_VLAN))
            elif parameter.is_port and self.names_object(function, parameter.name, parameter.type):
                yield '%s %d' % (parameter.name, NO_GPORT), self.wrong(
                    function, choice, place, SCALARS[parameter.kind](NO_GPORT))
            elif parameter.kind in SCALARS and not parameter.is_port and parameter.type not in self.headers.enumerations and (
                    ID.search(parameter.name) or parameter.type in IDS or key):
                number = choice[place]().value + STEP
                yield '%s %d' % (parameter.name, number), self.wrong(
                    function, choice, place, SCALARS[parameter.kind](number))

    def e_exists(self, function, choice, status):
        flag = self.flag(function, 'WITH_ID')
        if not self.e_exists_is_about(function):
            return

        def twice():
            values = [make() for make in choice]
            result = function(values)
            self.add_flags(function, values, flag)
            return function(values) if result == 0 else result
        yield 'twice', twice

    def e_busy(self, function, choice, status):
        """What was made refers to each other: to some of what can be erased here, or the promise is not asked."""
        for place, parameter in enumerate(function.parameters[1:]):
            for number in self.ids.get(function.family, []) if parameter.kind in ('int32', 'uint32', 'uint16') else ():
                def erased(place=place, kind=parameter.kind, number=number):
                    return self.wrong(function, choice, place, SCALARS[kind](number))()
                self.fresh()
                if erased() == q.BCM_E_BUSY:
                    # And again: nothing is changed by the refusal.
                    yield '%s %d' % (parameter.name, number), erased
                    return
                self.changed = True

    def e_full(self, function, choice, status):
        """Objects whose ids are chosen for the caller, until there are no more."""
        if not function.name.endswith(('_create', '_add')) or status != 0:
            return
        self.fresh()
        count, result = 0, 0
        while result == 0 and count < LARGEST:
            result = function([make() for make in choice])
            count += result == 0
        self.changed = True
        if count > 0 and result not in (0, q.BCM_E_EXISTS):
            def filled():
                for _ in range(count):
                    function([make() for make in choice])
                return function([make() for make in choice])
            yield 'one more', filled

    e_resource = e_full

    def e_badid_somehow(self, function, choice):
        """A trunk out of range, a port of a module that is not there."""
        family = '_'.join(function.name.upper().split('_')[:2])
        flag = getattr(q, family + '_TGID', 0) or getattr(q, family + '_TRUNK_MEMBER', 0)
        for what, values in self.variations(function, choice, lambda of, _: (
                [NO_TRUNK] if re.search(MEMBER_OF_TRUNK, of) else [])):
            for value, parameter in zip(values, function.parameters[1:]):
                for member in self.members.get(parameter.type, ()):
                    if member.name in ('flags', 'l3a_flags'):
                        self.change(parameter.type, value, member.name, lambda flags: flags | flag)
            yield what, UNIT, values
        for what, values in self.variations(function, choice, lambda of, _: (
                [GPORT_OF_NO_MODULE] if re.search('gport', of) else [])):
            yield what, UNIT, values

    def add_flags(self, function, values, added):
        for value, parameter in zip(values, function.parameters[1:]):
            if added and parameter.name == 'flags':
                value.value |= added
            for member in self.members.get(parameter.type, ()):
                if added and member.name in ('flags', 'l3a_flags'):
                    self.change(parameter.type, value, member.name, lambda flags: flags | added)

    def to_replace(self, function, choice):
        """A call that says that what it names is to be replaced."""
        chosen, replacing = self.flag(function, 'WITH_ID'), self.flag(function, 'REPLACE')
        if chosen and replacing:
            values = [make() for make in choice]
            self.add_flags(function, values, chosen | replacing)
            for value, parameter in zip(values, function.parameters[1:]):
                if parameter.is_pointer and parameter.type not in self.members:
                    ctypes.memmove(value, ctypes.byref(ctypes.c_int32(STEP)), 4)
            yield 'to be replaced', values

    def flag(self, function, kind):
        """BCM_MIM_VPN_WITH_ID of bcm_mim_vpn_create, BCM_L3_WITH_ID of bcm_l3_egress_create; 0 if there is none."""
        words = function.name.upper().split('_')
        shortest = 2 if words[-1] == 'CREATE' else len(words) - 1
        for count in range(len(words) - 1, shortest - 1, -1):
            name = '_'.join(words[:count] + [kind])
            if hasattr(q, name):
                return getattr(q, name)
        return 0

    def change(self, name, memory, member, change):
        """Changes a member of the record in that memory; whether it can have that value."""
        size = self.sizes[re.sub('_t$', '_s', name)]
        record = getattr(q, name)()
        ctypes.memmove(int(record.this), memory, size)
        try:
            setattr(record, member, change(getattr(record, member)))
        except (OverflowError, TypeError):
            return False
        ctypes.memmove(memory, int(record.this), size)
        return True

    def member(self, name, memory, member):
        record = getattr(q, name)()
        ctypes.memmove(int(record.this), memory, self.sizes[re.sub('_t$', '_s', name)])
        return getattr(record, member)


def verbs_of(group):
    """What the names of functions add to what they have in common, by name; of one alone nothing."""
    if len(group) < 2:
        return {}
    parts = [name.split('_') for name in group]
    common = max(count for count in range(len(min(parts, key=len))) if all(part[:count] == parts[0][:count] for part in parts))
    return dict((name, '_'.join(part[common:])) for name, part in zip(group, parts))


def named_in(text, verbs):
    """The functions whose verbs the text has: whole ones, or what verbs end in."""
    def is_named(verb):
        words = verb.split('_')
        ends = [verb] + ['_'.join(words[start:]) for start in range(1, len(words))]
        return any(re.search(r'\b%s(s|ing)?\b' % end, text) for end in ends if end == verb or end not in verbs.values())
    return [name for name, verb in verbs.items() if is_named(verb)]


def nothing(*_):
    return ()


def asked_elsewhere(function, error):
    """Whether a method of the test that is named calls the function and speaks of the error."""
    called = re.compile(r'\b(bcm_)?%s\b' % function.name[len('bcm_'):])
    spoken_of = re.compile(r'(\b|_)%s\b' % error[len('E_'):])
    for name, other, file in ASKED_ELSEWHERE:
        if re.match('(?:%s)$' % name, function.name) and error == other:
            with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), file)) as text:
                methods = re.split(r'\n    def ', text.read())
            return any(called.search(method) and spoken_of.search(method) for method in methods)
    return False


def is_exempt(function, error, what):
    return any(re.match('(?:%s)$' % name, function.name) and re.match('(?:%s)$' % other, error) and re.match('(?:%s)$' % wrong, what)
               for name, other, wrong, _ in EXEMPT)


callback = ctypes.CFUNCTYPE(ctypes.c_int)(lambda: 0)
REFUSALS = (q.BCM_E_UNIT, q.BCM_E_INIT, q.BCM_E_PARAM), (q.BCM_E_PORT, q.BCM_E_UNAVAIL, q.BCM_E_BADID), (q.BCM_E_NOT_FOUND,)


def how_far(status):
    """How far a call got, by the order in which the SDK checks."""
    for distance, statuses in enumerate(REFUSALS):
        if status in statuses:
            return distance
    return 9 if status == 0 else len(REFUSALS)
