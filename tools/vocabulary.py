"""Counts what binding.tsv, the generator's report, lists. tools/vocabulary starts this.

usage: vocabulary.py BINDING EXPECTED
"""
import collections
import re
import sys

SCALARS = ('int32', 'uint32', 'uint16', 'uint8', 'uint64', 'bool', 'low_bits')
NAMED = {'value': 'value type', 'callback': 'callback', 'string': 'text', 'nullable_string': 'text',
         'any_pointer': 'untyped pointer',
         'mac_address': 'MAC address', 'port_list': 'port list'}


class Counts(object):
    def __init__(self):
        self.arguments = collections.Counter()
        self.functions = collections.defaultdict(set)

    def add(self, kind, function):
        self.arguments[kind] += 1
        self.functions[kind].add(function)


def rows(path):
    with open(path) as file:
        return [line.rstrip('\n').split('\t') for line in file]


def kind_of(kind, text, descriptor, records):
    if kind in SCALARS:
        return 'scalar'
    if kind != 'pointer':
        return NAMED.get(kind)
    if '[' in text:
        return 'array'
    # Where a callback goes to is a cell like any other.
    if descriptor.startswith('_p_p_') and not descriptor.startswith('_p_p_f_'):
        return 'pointer to pointer'
    return 'pointer to record' if descriptor in records else 'pointer to scalar'


def count(binding):
    records = set('_p_' + row[7].replace(' *', '') for row in binding if row[0] == 'member')
    counts = Counts()
    for row in binding:
        if row[0] == 'type':
            name = row[1]
            counts.add('function-pointer types' if name.startswith('_p_f_') else
                       'pointer-to-pointer types' if name.startswith('_p_p_') else 'pointer types', name)
            if row[2] != '-':
                counts.add('equivalent types', name)
        name = row[2].split('(')[0]
        if row[0] in ('function', 'overload') and re.match('_?bcm_', name):
            for place in range(5, len(row), 3):
                kind = kind_of(*(row[place:place + 3] + [records]))
                if kind:
                    counts.add(kind, name)
    return counts


def main(binding, expected):
    counts = count(rows(binding))
    print('| Kind | arguments | of the SDK | functions | of the SDK |')
    print('|---|---:|---:|---:|---:|')
    for kind, arguments, functions in rows(expected):
        print('| %s | %d | %s | %d | %s |' % (kind, counts.arguments[kind], arguments,
                                              len(counts.functions[kind]), functions))


if __name__ == '__main__':
    if '--help' in sys.argv[1:]:
        print(__doc__)
    elif len(sys.argv) == 3:
        main(*sys.argv[1:])
    else:
        sys.exit('usage: vocabulary.py BINDING EXPECTED')
