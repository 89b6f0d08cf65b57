"""The development SDK's rules as the generator reports them, and how to call their functions as C does."""
import ctypes
import os
import re
import subprocess

import QuorelApiNew as q
import headers
from recording import library

BUFFER_SIZE = 1 << 13
UNTOUCHED = '\xee'
PATTERN = ''.join(chr(number % 0xee) for number in range(2 * BUFFER_SIZE))
INTEGERS = {'char': ctypes.c_char, 'signed char': ctypes.c_byte, 'unsigned char': ctypes.c_ubyte,
            'short': ctypes.c_short, 'unsigned short': ctypes.c_ushort, 'int': ctypes.c_int,
            'unsigned int': ctypes.c_uint, 'long long': ctypes.c_longlong,
            'unsigned long long': ctypes.c_ulonglong}


def record_sizes():
    """Sizes of records by their tags."""
    # Bitmaps are not records of the binding.
    sizes = {'_shr_pbmp': 72, 'bcm_rx_reasons_s': (q.bcmRxReasonCount + 31) // 32 * 4}
    for line in subprocess.check_output([os.environ['QUOREL_LAYOUT']]).splitlines():
        if line.count(' ') == 1:
            name, size = line.split()
            sizes[re.sub('_t$', '_s', name)] = int(size)
    return sizes


def report(name):
    """The rows of a generated report."""
    with open(os.path.join(os.path.dirname(os.environ['QUOREL_BINDING']), name)) as lines:
        return [line.rstrip('\n').split('\t') for line in lines]


def by_hand():
    """Names of the functions that the simulator's sources define."""
    return set(name for name, _, kind, _ in report('answers.tsv') if kind == 'by hand')


class Parameter(object):
    def __init__(self, role, text, sizes, enumerations):
        self.role = role
        text, _, allowed = text.partition(' within ')
        self.is_pointer = text.endswith('*') or '[' in text or '(**)' in text
        record = re.sub(' .*', '', text)
        self.size = sizes.get(record)  # of a record
        self.numbers = enumerations.get(re.sub('_e$', '_t', text))  # of an enumeration
        if re.match(r'\d+, \d+$', allowed):
            low, high = map(int, allowed.split(', '))
            self.numbers = range(low, high + 1)
        self.type = None
        if not self.is_pointer:
            words = [('word%d' % number, ctypes.c_uint32) for number in range((self.size or 0) // 4)]
            self.type = (INTEGERS.get(text) or (ctypes.c_int if text.endswith('_e') else None)
                         or (ctypes.c_void_p if '(*)' in text else None)
                         or (words and type(record, (ctypes.Structure,), {'_fields_': words})))

    def argument(self, seed):
        """A value, different for different seeds; of keys one that is a port too."""
        if self.is_pointer:
            return ctypes.create_string_buffer(PATTERN[seed:seed + BUFFER_SIZE], BUFFER_SIZE)
        if issubclass(self.type, ctypes.Structure):
            return self.type(*[seed + number for number in range(len(self.type._fields_))])
        fits = not self.numbers or seed in self.numbers
        return self.type(seed if fits else self.numbers[-1 if seed < 30 else 0])


class Function(object):
    def __init__(self, cells, sizes, enumerations):
        self.name, _, self.operation, self.table, _ = cells[:5]
        self.parameters = [Parameter(role, text, sizes, enumerations) for role, text in zip(cells[5::2], cells[6::2])]
        self.known = all(parameter.is_pointer or parameter.type for parameter in self.parameters)
        self.narrow = self.name.endswith('32')

    def __call__(self, unit, *arguments):
        return getattr(library, self.name)(ctypes.c_int(unit), *arguments)


def read():
    """All functions that are answered by rule."""
    sizes, enumerations = record_sizes(), headers.Headers().enumerations
    return [Function(cells, sizes, enumerations) for cells in report('rules.tsv') 
            if cells[2] not in ('-', 'unavailable', 'initialise')]


def pairs(functions):
    """[(writer, getter)] of those that nobody wrote by hand."""
    hand = by_hand()
    found = []
    for writer in functions:
        for getter in functions:
            if (writer.operation in ('set', 'add') and getter.operation in ('get', 'find')
                    and writer.table == getter.table and writer.narrow == getter.narrow
                    and not {writer.name, getter.name} & hand):
                found.append((writer, getter))
    return found
