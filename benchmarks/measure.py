"""Measures the module against the floor, the obvious code and SWIG's wrapper, and prints one table.

tools/benchmark starts this. With --quick only calls, members and errors are measured, with --rows=TEXT only the
rows whose name has the text in it.
"""
import multiprocessing.pool
import os
import subprocess
import sys

import callgrind
import subjects
from callgrind import Work

PATH = [subjects.RELEASE, subjects.BUILT]
# Start-up and the first pass, which fills caches, drop out of the difference of two runs.
FEW, MANY = 1000, 3000
MAC_ENTRIES = 100000
SENDS_PER_SECOND = 150000  # at least, from Python
ENTRIES, SECONDS_OF_ENTRIES = 10000, 2.0  # so many take so long at most, from Python
EMPTY_LOOP = Work('pass')
# The simulated switch's part of a call is the same in all, and would only blur the comparison.
SDK_CALL = Work('f(count)', 'import floor; f = floor.call_sdk', 'f', in_c=True)

BOTH = {
    'ours': ('_QuorelApiNew', 'QuorelApiNew'),
    'swig': ('_swig_sdk', 'swig_sdk'),
}


NOTE = """
Instructions are those of one pass, counted by callgrind, without the loop around it; for calls also without
the SDK's own work, for conversions without the call, for the import without loading the SDK. SWIG's module was
made from the same headers, with the same compiler flags. The floor is the least that Python 2.7 allows for
such a call, the obvious code what one writes first. Calls through quorel and those that they are compared with
both have the SDK's own work in them. Packets pass the simulated switch in a C++ program, from sim_packet_arrive to the
call of the watcher; there the limit is what they may take. Field entries come to be as rules of an access list, with
addresses as text, and in C++ by the SDK's functions."""


class Row(object):
    """A line of the table.

    ours, theirs: a Work, or a function that measures in `unit`.
    without: the Works that are subtracted from both.
    passes: of the two runs whose difference counts.
    per: what the instructions of a pass are divided by.
    """

    def __init__(self, name, against, budget, ours, theirs, without=(EMPTY_LOOP,), passes=(FEW, MANY), per=1,
                 unit='instructions'):
        self.name, self.against, self.budget, self.unit = name, against, budget, unit
        self.ours, self.theirs, self.without = ours, theirs, without
        self.passes, self.per = passes, per


def module_work(subject, body, setup, names):
    """Work with M standing for the extension module and P for the Python module over it."""
    extension, companion = BOTH[subject]
    imports = 'import %s as M, %s as P\n' % (extension, companion)
    return Work(body, imports + setup, names)


def ours(*what):
    return module_work('ours', *what)


def swig(*what):
    return module_work('swig', *what)


def c_work(module, example, body, setup, names):
    """Work of one of the C files here, which takes pointers of the type of `example`."""
    return Work(body, 'import _QuorelApiNew as M, %s as C\nexample = M.%s()\nC.accept(example)\n%s'
                % (module, example, setup), names)


def call_rows():
    bare = ('f(0, 1, p)', 'f = M.bcm_port_enable_get; p = M.new_intp()', 'f p')
    proxy = ('f(0, 1, p)', 'f = M.bcm_port_enable_get; p = P.intp()', 'f p')
    companion = ('f(0, 1, p)', 'f = P.bcm_port_enable_get; p = P.intp()', 'f p')
    floor = c_work('floor', 'new_intp', 'f(0, 1, p)', 'f = C.bcm_port_enable_get; p = example', 'f p')
    get = ('f(a)', 'f = M.bcm_l2_addr_t_port_get; a = P.bcm_l2_addr_t()', 'f a')
    put = ('f(a, 7)', 'f = M.bcm_l2_addr_t_port_set; a = P.bcm_l2_addr_t()', 'f a')
    record = ('f()', 'f = P.bcm_l2_addr_t', 'f')
    attribute = ('a.port', 'a = P.bcm_l2_addr_t()', 'a')
    assignment = ('a.port = 7', 'a = P.bcm_l2_addr_t()', 'a')
    error = ('try:\n    f(0, "1", p)\nexcept TypeError:\n    pass',
             'f = M.bcm_port_enable_get; p = M.new_intp()', 'f p')
    caught = Work('try:\n    pass\nexcept TypeError:\n    pass')
    overhead = (EMPTY_LOOP, SDK_CALL)
    return [
        Row('call with two ints and a bare pointer', 'floor', 1.15, ours(*bare), floor, overhead),
        Row('call with two ints and a bare pointer', 'SWIG', 0.75, ours(*bare), swig(*bare), overhead),
        Row('call with two ints and a proxy object', 'floor', 1.20, ours(*proxy), floor, overhead),
        Row('call with two ints and a proxy object', 'SWIG', 0.62, ours(*proxy), swig(*proxy), overhead),
        Row('the same through the Python module', 'SWIG', 0.30, ours(*companion), swig(*companion), overhead),
        Row('read a member of a proxy object', 'SWIG', 1.00, ours(*get), swig(*get)),
        Row('write a member of a proxy object', 'SWIG', 0.66, ours(*put), swig(*put)),
        Row('make and drop a record', 'SWIG', 0.50, ours(*record), swig(*record)),
        Row('read an attribute', 'SWIG', 0.85, ours(*attribute), swig(*attribute)),
        Row('write an attribute', 'SWIG', 0.82, ours(*assignment), swig(*assignment)),
        Row('error for a wrong type, raised and caught', 'SWIG', 1.05, ours(*error), swig(*error), (caught,)),
    ]


def conversion_rows():
    text = "'02:00:5e:0a:ff:01'"
    mac = ('f(a)', 'f = M.bcm_l2_addr_t_mac_get; a = M.new_bcm_l2_addr_t()', 'f a')
    set_mac = ('f(a, text)', 'f = M.bcm_l2_addr_t_mac_set; a = M.new_bcm_l2_addr_t(); text = ' + text,
               'f a text')
    ports = ('f(a)', 'f = M.bcm_vlan_data_t_port_bitmap_get; a = M.new_bcm_vlan_data_t()\n'
             'M.bcm_vlan_data_t_port_bitmap_set(a, range(1, 49))', 'f a')
    table = 'import obvious\nobvious.fill_mac_table(0, %d)\n' % MAC_ENTRIES

    def obvious(example, function, body='f(a)', setup='', names='f a'):
        return c_work('obvious', example, body, 'f = C.%s; a = example\n%s' % (function, setup), names)

    take = obvious('new_bcm_l2_addr_t', 'take')
    take_two = obvious('new_bcm_l2_addr_t', 'take', 'f(a, text)', 'text = ' + text, 'f a text')
    port_setup = 'M.bcm_vlan_data_t_port_bitmap_set(a, range(1, 49))'
    return [
        Row('hardware MAC table of %s, per entry' % format(MAC_ENTRIES, ',d'), 'obvious code', 0.25,
            ours('f(0)', table + 'f = M.getHwMacTable', 'f'),
            Work('f(0)', table + 'f = obvious.getHwMacTable', 'f'),
            (Work('f(0)', table + 'f = obvious.traverse', 'f'),), passes=(1, 3), per=MAC_ENTRIES),
        Row('MAC address to text', 'obvious code', 0.25, ours(*mac),
            obvious('new_bcm_l2_addr_t', 'bcm_l2_addr_t_mac_get'), (take,)),
        Row('text to MAC address', 'obvious code', 0.25, ours(*set_mac),
            obvious('new_bcm_l2_addr_t', 'bcm_l2_addr_t_mac_set', 'f(a, text)', 'text = ' + text, 'f a text'),
            (take_two,)),
        Row('port list of 48 ports', 'obvious code', 0.25, ours(*ports),
            obvious('new_bcm_vlan_data_t', 'bcm_vlan_data_t_port_bitmap_get', setup=port_setup),
            (obvious('new_bcm_vlan_data_t', 'take'),)),
    ]


def quorel_rows():
    def quorel(body, setup, names):
        return ours(body, 'import quorel; checked, OUT = quorel.checked, quorel.OUT\n' + setup, names)

    scalars = 'f = M.bcm_port_learn_set'
    output = 'f = M.bcm_port_enable_get; p = P.intp()'
    record = 'r = P.bcm_niv_egress_t(); as_dict = quorel.as_dict; names = sorted(as_dict(r))'
    payload = "a = quorel.array('uint8', 1500); text = 'x' * 1500\n"
    status = "name_of = quorel.name_of; numbers = {-4: 'BCM_E_PARAM'}"
    return [
        Row('quorel: checked() with scalars', 'bare call', 1.60,
            quorel('checked(f, 0, 1, 5)', scalars, 'f checked'), quorel('f(0, 1, 5)', scalars, 'f')),
        Row('quorel: checked() with one OUT', 'ready cell', 3.00,
            quorel('checked(f, 0, 1, OUT)', output, 'f checked OUT'), quorel('f(0, 1, p)', output, 'f p')),
        Row('quorel: 1,500 bytes into an array', 'bytearray', 1.00, quorel('a[:] = text', payload, 'a text'),
            quorel('a[:] = text', payload + 'a = bytearray(a)', 'a text')),
        Row('quorel: 1,500 bytes out of an array', 'bytearray', 2.00, quorel('str(a)', payload, 'a'),
            quorel('str(a)', payload + 'a = bytearray(a)', 'a')),
        Row('quorel: as_dict() of ten members', 'getattr loop', 0.50, quorel('as_dict(r)', record, 'r as_dict'),
            quorel('dict([(name, getattr(r, name)) for name in names])', record, 'r names')),
        Row('quorel: import', 'QuorelApiNew', 0.20, lambda: import_instructions('quorel', 'import QuorelApiNew'),
            lambda: import_instructions('QuorelApiNew')),
    ]


def import_instructions(module, before='pass', collector='disable'):
    # The SDK library, which anything that calls it has to load, is there before. The lists make the collector, where
    # it is enabled, look at what the import has made, which it would do sooner or later; the interpreter's end is not
    # counted.
    program = ('import gc, os, sys\ngc.%s()\nsys.path[:0] = %r\nimport floor\n%s\n%%s\n'
               '[[] for _ in range(1000)]\nos._exit(0)') % (collector, PATH, before)
    return callgrind.instructions(program % ('import ' + module)) - callgrind.instructions(program % 'pass')


def whole_rows():
    def stripped_kilobytes(name):
        directory = subjects.RELEASE if name == '_QuorelApiNew' else subjects.BUILT
        return subjects.stripped_size(os.path.join(directory, name + '.so')) / 1024.0

    return [
        Row('import', 'SWIG', 0.45, lambda: import_instructions(BOTH['ours'][1], collector='enable'),
            lambda: import_instructions(BOTH['swig'][1], collector='enable')),
        Row('memory that the import adds', 'SWIG', 0.70, lambda: import_memory('ours'),
            lambda: import_memory('swig'), unit='KB'),
        Row('stripped module', 'SWIG', 0.30, lambda: stripped_kilobytes('_QuorelApiNew'),
            lambda: stripped_kilobytes('_swig_sdk'), unit='KB'),
        Row('generate and compile', 'SWIG', 0.25, subjects.module_cpu_seconds, subjects.swig, unit='CPU s'),
    ]


_MEMORY = '''\
import sys
sys.path[:0] = %r
def private():
    with open('/proc/self/smaps') as smaps:
        return sum(int(line.split()[1]) for line in smaps if line.startswith('Private_Dirty'))
import floor
private()
before = private()
import %s
print(private() - before)
'''


def import_memory(subject):
    """Kilobytes of private memory that the import makes dirty: the median of seven processes."""
    program = _MEMORY % (PATH, BOTH[subject][1])
    command = [callgrind.PYTHON] + callgrind.PYTHON_FLAGS + ['-c', program]
    return sorted(int(subprocess.check_output(command)) for _ in range(7))[3]


_SEND = '''\
from quorel import sim
near, far, nobody = ['02:00:00:00:00:%02x' % number for number in (1, 42, 99)]
switch = sim.Switch()
switch.fresh()
switch.send(7, sim.ethernet(near, far))
switch.send(1, sim.ethernet(far, near))
send, known, unknown = switch.send, sim.ethernet(far, near), sim.ethernet(nobody, near)
'''
_SECONDS_OF_SENDS = '''\
import resource, sys
sys.path[:0] = %r
%s
def seconds(count):
    before = resource.getrusage(resource.RUSAGE_SELF)
    for _ in xrange(count):
        send(1, known)
    after = resource.getrusage(resource.RUSAGE_SELF)
    return (after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime) / count
print(min(seconds(100000) for _ in range(5)))
'''

# Rules of the kind that packets.cpp has.
_RULES = '''\
import random
from quorel import ACL
SHAPES = [(32, 32, True), (24, 32, True), (16, 24, True), (None, 32, True), (None, 24, False), (24, None, True),
          (8, 16, False), (32, None, False)]
chance = random.Random(1)
def network(length):
    number = (10 << 24 | chance.getrandbits(24)) >> (32 - length) << (32 - length)
    return '%%d.%%d.%%d.%%d/%%d' %% (number >> 24, number >> 16 & 255, number >> 8 & 255, number & 255, length)
def match():
    source, to, has_port = chance.choice(SHAPES)
    values = dict((name, network(length)) for name, length in (('SrcIp', source), ('DstIp', to)) if length)
    if has_port:
        values['L4DstPort'] = chance.randrange(1024)
    return values
matches, actions = [match() for _ in range(%d)], ['Drop']
priorities = [chance.randrange(1000) for _ in matches]
acl = ACL(0, qualifiers=['SrcIp', 'DstIp', 'L4DstPort'])
'''
_SECONDS_OF_RULES = '''\
import resource, sys
sys.path[:0] = %r
%s
def seconds():
    before = resource.getrusage(resource.RUSAGE_SELF)
    for priority, match in zip(priorities, matches):
        acl.add(priority, match, actions, True)
    after = resource.getrusage(resource.RUSAGE_SELF)
    acl.destroy()
    return after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime
print(min(seconds() for _ in range(3)))
'''


def rule_rows():
    def per_entry():
        add = Work('add(*next(rules))', _RULES % MANY + 'add = acl.add\n'
                   'rules = iter([(priority, match, actions, True) for priority, match in zip(priorities, matches)])',
                   'add rules')
        few, many = [callgrind.instructions(add.program(PATH, count)) for count in (FEW, MANY)]
        return (many - few) / float(MANY - FEW)

    def per_entry_in_c():
        few, many = [callgrind.process_instructions([subjects.packets(), 'fields', '0', str(count)])
                     for count in (FEW, MANY)]
        return (many - few) / float(MANY - FEW)

    def seconds():
        return cpu_seconds(_SECONDS_OF_RULES % (PATH, _RULES % ENTRIES))

    return [
        Row('field entry by ACL.add()', 'in C++', 20.00, per_entry, per_entry_in_c),
        Row('10,000 field entries by ACL.add()', 'limit', 1.00, seconds, lambda: SECONDS_OF_ENTRIES, unit='CPU s'),
    ]


def cpu_seconds(program):
    return float(subprocess.check_output([callgrind.PYTHON] + callgrind.PYTHON_FLAGS + ['-c', program]))


def packet_rows():
    def per_packet(scenario):
        program = subjects.packets()
        words = scenario.split()
        few, many = [callgrind.process_instructions([program, words[0], str(count)] + words[1:])
                     for count in (FEW, MANY)]
        return (many - few) / float(MANY - FEW)

    def per_send(frame):
        work = Work('send(1, frame)', _SEND + 'frame = ' + frame, 'send frame')
        few, many = [callgrind.instructions(work.program(PATH, count)) for count in (FEW, MANY)]
        return (many - few) / float(MANY - FEW)

    def microseconds_per_send():
        return cpu_seconds(_SECONDS_OF_SENDS % (PATH, _SEND)) * 1e6

    copies = 63
    # Eight masks in each of ten groups, in place of eight in all.
    own_masks = 72
    return [
        Row('packet to a known address', 'limit', 1.00, lambda: per_packet('unicast'), lambda: 800),
        Row('flooded packet, per copy', 'limit', 1.00, lambda: per_packet('flood') / copies, lambda: 150),
        Row('packet by Switch.send()', 'in C++', 5.00, lambda: per_send('known'), lambda: per_packet('unicast')),
        Row('flooded packet by Switch.send(), per copy', 'in C++', 3.50, lambda: per_send('unknown') / copies,
            lambda: per_packet('flood') / copies),
        Row('packet by Switch.send()', 'limit', 1.00, microseconds_per_send, lambda: 1e6 / SENDS_PER_SECOND,
            unit='CPU us'),
        Row('routed packet, 1,000 IPv4 routes', 'limit', 1.00, lambda: per_packet('routed4 1000'), lambda: 1200),
        Row('routed packet, 500,000 IPv4 routes', 'limit', 1.00, lambda: per_packet('routed4 500000'), lambda: 1200),
        Row('routed packet, 100,000 IPv6 routes', 'limit', 1.00, lambda: per_packet('routed6 100000'), lambda: 1200),
        Row('packet through 10 groups with 10,000 entries', 'limit', 1.00, lambda: per_packet('fields 10000'),
            lambda: 5000),
        Row('packet through 10 groups, per mask that only one has', 'limit', 1.00,
            lambda: (per_packet('own-fields 10000') - per_packet('fields 10000')) / own_masks, lambda: 50),
        Row('packet through 10 groups with 10,000 entries', '1,000 entries', 1.10, lambda: per_packet('fields 10000'),
            lambda: per_packet('fields 1000')),
    ]


class Counter(object):
    """Instructions per pass, each program counted once however many rows use it; several at a time."""

    def __init__(self):
        self.pool = multiprocessing.pool.ThreadPool(multiprocessing.cpu_count())
        self.results = {}

    def start(self, work, passes):
        for count in passes:
            program = work.program(PATH, count)
            if program not in self.results:
                self.results[program] = self.pool.apply_async(callgrind.instructions, [program])

    def per_pass(self, work, passes):
        few, many = (self.results[work.program(PATH, count)].get(10 ** 6) for count in passes)
        return (many - few) / float(passes[1] - passes[0])


def measure(rows):
    """Yields each row with its two figures."""
    counter = Counter()
    for row in rows:
        if isinstance(row.ours, Work):
            for work in (row.ours, row.theirs) + row.without:
                counter.start(work, row.passes)
    for row in rows:
        if isinstance(row.ours, Work):
            without = sum(counter.per_pass(work, row.passes) for work in row.without)
            yield row, [(counter.per_pass(work, row.passes) - without) / row.per
                        for work in (row.ours, row.theirs)]
    # What takes time or memory of its own is measured when nothing else runs.
    for row in rows:
        if not isinstance(row.ours, Work):
            yield row, [row.ours(), row.theirs()]


def table_line(row, figures):
    ratio = figures[0] / float(figures[1])
    form = {'CPU s': '{:,.1f}', 'CPU us': '{:,.2f}'}.get(row.unit, '{:,.0f}')
    text = [form.format(figure) for figure in figures]
    return '| %s | %s | %s | %s: %s | %.3f | %.2f | %s |' % (
        row.name, row.unit, text[0], row.against, text[1], ratio, row.budget,
        'met' if ratio <= row.budget else '**over**')


def chosen_rows(option):
    if option == '--quick':
        return call_rows()
    rows = call_rows() + conversion_rows() + quorel_rows() + packet_rows() + rule_rows() + whole_rows()
    text = option[len('--rows='):]
    return [row for row in rows if text in row.name]


def main(arguments):
    rows = chosen_rows((arguments + ['--rows='])[0])
    if not rows:
        sys.exit('measure: no row has that in its name')
    if not os.path.isdir(subjects.BUILT):
        os.makedirs(subjects.BUILT)
    subjects.floor_and_obvious()
    imported = ['QuorelApiNew', 'quorel', 'quorel.sim']
    if any(row.against == 'SWIG' for row in rows):
        subjects.swig()
        imported.append('swig_sdk')
    # Makes the compiled files, so that later imports find them.
    for module in imported:
        callgrind.instructions('import sys\nsys.path[:0] = %r\nimport %s' % (PATH, module))

    print('| Work | in | this module | compared with | ratio | budget | |')
    print('|---|---|---:|---:|---:|---:|---|')
    for row, figures in measure(rows):
        print(table_line(row, figures))
        sys.stdout.flush()
    print(NOTE)


if __name__ == '__main__':
    main(sys.argv[1:])
