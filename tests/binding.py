"""The binding as the generator reports it, for tests that cover every function and member.

What is expected of each is worked out here from the kind of argument alone, apart from the module's own code.
"""
import ctypes
import os
import struct

import QuorelApiNew as q
import type_table


# Different at every place that a block may begin with.
PATTERN = ''.join(struct.pack('=I', 7 * number) for number in range(type_table.BLOCK_SIZE))


class Argument(object):
    def __init__(self, kind, text, descriptor):
        self.kind, self.text, self.descriptor = kind, text, descriptor


class Function(object):
    def __init__(self, family, doc, origin, result, cells):
        self.family, self.doc, self.origin, self.result = family, doc, origin, result
        self.name = doc[:doc.index('(')]
        self.parameters = [Argument(*cells[i:i + 3]) for i in range(0, len(cells), 3)]
        self.arguments = [p for p in self.parameters if p.kind != 'appended']

    def __call__(self, *args):
        return getattr(q, self.name)(*args)


class Member(object):
    def __init__(self, family, record, name, kind, text, descriptor, self_text):
        self.family, self.record, self.name, self.kind = family, record, name, kind
        self.text, self.descriptor, self.self_text = text, descriptor, self_text

    def get(self, record):
        return getattr(q, '%s_%s_get' % (self.record, self.name))(record)

    def set(self, record, value):
        return getattr(q, '%s_%s_set' % (self.record, self.name))(record, value)


def read():
    """All bound functions and members."""
    functions, members = [], []
    with open(os.environ['QUOREL_BINDING']) as report:
        for line in report:
            cells = line.rstrip('\n').split('\t')
            if cells[0] == 'function':
                functions.append(Function(cells[1], cells[2], cells[3], cells[4], cells[5:]))
            elif cells[0] == 'member':
                members.append(Member(*cells[1:]))
    return functions, members


# kind -> (least, greatest, struct format)
INTEGERS = {'int32': (-2 ** 31, 2 ** 31 - 1, 'i'), 'uint32': (0, 2 ** 32 - 1, 'I'), 'int8': (-128, 127, 'b'),
            'low_bits': (-2 ** 31, 2 ** 31 - 1, 'i'), 'uint8': (0, 255, 'B'), 'uint16': (0, 65535, 'H'), 'uint64': (0, 2 ** 64 - 1, 'Q')}


def integer(kind, seed):
    """A number that fits, different for different seeds."""
    least, greatest, _ = INTEGERS[kind]
    return min(greatest, 3 + 7 * seed)


def mac_text(seed):
    return '02:00:5e:00:%02x:01' % seed


def packed(kind, value):
    """The C bytes of a Python argument."""
    if kind in INTEGERS:
        return struct.pack('=' + INTEGERS[kind][2], value)
    if kind == 'bool':
        return chr(value)
    if kind == 'mac_address':
        return ''.join(chr(int(field, 16)) for field in value.split(':'))
    if kind == 'port_list':
        bits = sum(1 << port for port in value)
        return ''.join(chr(bits >> 8 * byte & 255) for byte in range(72))
    if kind in ('string', 'nullable_string'):
        return None
    if kind == 'ip_text':
        return value.ljust(16, '\0')
    return struct.pack('=' + ('Q' if ctypes.sizeof(ctypes.c_void_p) == 8 else 'I'),
                       0 if value is None else int(getattr(value, 'this', value)))


class Objects(object):
    """Pointer objects of every type; what they point to lives until release()."""

    def __init__(self):
        self.kept, self.blocks = [], []
        self.constructors = dict(('_p_' + member.self_text[:-len(' *')], getattr(q, 'new_' + member.record))
                                 for member in read()[1])

    def keep(self, thing):
        self.kept.append(thing)
        return thing

    def make(self, descriptor):
        """A record of the type, or a block that is large enough for any array."""
        if descriptor in self.constructors:
            return self.keep(self.constructors[descriptor]())
        block = type_table.pointer_of_type(descriptor)
        self.blocks.append(block)
        ctypes.memmove(int(block), PATTERN[len(self.blocks):], type_table.BLOCK_SIZE)
        return block

    def release(self):
        for block in self.blocks:
            q.delete_uint8Array(type_table.retyped(block, '_p_unsigned_char'))
        self.kept, self.blocks = [], []

    def value(self, argument, seed):
        """A good value for an argument."""
        kind = argument.kind
        if kind in INTEGERS:
            return integer(kind, seed)
        if kind == 'in_and_out':
            return seed
        if kind == 'bool':
            return bool(seed % 2)
        if kind == 'mac_address':
            return mac_text(seed)
        if kind == 'port_list':
            return [seed, 40 + seed, 500]
        if kind in ('string', 'nullable_string'):
            # Some functions write to it, and ask for no size.
            return 'text %d\0' % seed + ' ' * 65536
        if kind == 'ip_text':
            return '10.0.0.%d' % seed
        if kind == 'object':
            return object()
        if kind == 'any_pointer':
            return self.make('_p_unsigned_char')
        return self.make(argument.descriptor)


def error_of(call, *args):
    """(class, text) of what a call raises, or None."""
    try:
        call(*args)
    except Exception as error:
        return type(error), str(error)
    return None


def wrong_counts(name, count):
    """[(what a function of the module raises, what it should)] with one argument less and one more than it takes."""
    return [(error_of(getattr(q, name), *[None] * given),
             (TypeError, '%s expected %d arguments, got %d' % (name, count, given)))
            for given in (count - 1, count + 1) if given >= 0]


def wrong_values(argument):
    """[(value, exception, text or None for "in method ...")]: what an argument must refuse."""
    if argument.kind in INTEGERS:
        least, greatest, _ = INTEGERS[argument.kind]
        refused = [(1.0, TypeError, None), ('1', TypeError, None), (None, TypeError, None),
                   (greatest + 1, OverflowError, None), (least - 1, OverflowError, None),
                   (10 ** 30, OverflowError, None)]
        return refused
    if argument.kind == 'object':
        return []
    if argument.kind == 'in_and_out':
        return [('1', TypeError, None), (q.new_uint32p(), TypeError, None), (2 ** 31, OverflowError, None)]
    if argument.kind == 'bool':
        return [(1, TypeError, None), (None, TypeError, None)]
    if argument.kind == 'mac_address':
        return [(5, TypeError, 'Expected a string'),
                ('00:11:22', ValueError, "Expected a string of the form 'AA:BB:CC:DD:EE:FF'")]
    if argument.kind == 'port_list':
        return [((1, 2), TypeError, 'Expected a list'), ([1, long(2)], TypeError, 'Port list must contain integers')]
    if argument.kind == 'ip_text':
        return [(value, TypeError, None) for value in (u'text', 5, None, '1' * 17)]
    if argument.kind in ('string', 'nullable_string'):
        refused = [(u'text', TypeError, None), (5, TypeError, None)]
        return refused + [(None, TypeError, None)] * (argument.kind == 'string')
    refused = [(5, TypeError, None), ('text', TypeError, None), (object(), TypeError, None)]
    if argument.kind != 'any_pointer':
        other = q.new_uint32p()
        refused.append((other, TypeError, None))
    if argument.kind == 'callback':
        refused.append((lambda *args: 0, TypeError, None))
    return refused
