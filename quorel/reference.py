"""What the headers say: of functions, records and their members, constants and types.

The build writes it from the headers' comments to reference.tsv, and how the simulated switch answers each function to
answers.tsv; both lie beside this file, and are read when they are first asked. On a switch there is no answers.tsv.
"""
from __future__ import absolute_import

import bisect
import os
import re

WIDTH = 96  # of the lines that describe() and search() print


class Entry(object):
    """A line with a name, and what stands around it."""

    def __init__(self, reference, number, columns):
        self.reference, self.number = reference, number
        self.name, self.kind = columns[:2]
        self.beside, self.columns = unescaped(columns[2]), columns[3:]

    def _columns_above(self, kind, within):
        """Of the last line of that kind above it that stands below the last one of `within`."""
        number = self.reference.last(kind, self.number)
        return self.reference.lines[number].split('\t') if number > self.reference.last(within, self.number) else []

    @property
    def header(self):
        """The name of the header that declares it; empty for what the module adds."""
        return (self._columns_above('header', '') or [''] * 3)[2]

    @property
    def header_text(self):
        """What that header says of itself."""
        return unescaped((self._columns_above('header', '') or [''])[-1])

    @property
    def above(self):
        """What stands above it, and perhaps above others."""
        return unescaped((self._columns_above('group', 'header') or [''])[-1])

    @property
    def part(self):
        """Likewise within a record or an enumeration."""
        return unescaped((self._columns_above('part', 'outer') or [''])[-1])

    @property
    def outer(self):
        """The name of the record or enumeration that it is a part of."""
        return self.reference.lines[self.reference.last('outer', self.number)].split('\t', 1)[0]

    @property
    def text(self):
        """All that the header says of it."""
        inner = self.kind in ('member', 'enumerator')
        return '\n\n'.join(text for text in (self.part if inner else self.above, self.beside) if text)

    def together(self):
        """Names of the functions that have what stands above in common with it, in order."""
        names = []
        for line in self.reference.lines[self.reference.last('group', self.number) + 1:]:
            if line.startswith('\tgroup\t') or line.startswith('\theader\t'):
                break
            columns = line.split('\t', 2)
            if columns[1:2] == ['function'] and columns[0] != self.name:
                names.append(columns[0])
        return names if self.above else []

    def inner(self):
        """(Text above, None) and ('', member or enumerator) of a record or an enumeration."""
        kind = {'record': 'member', 'enumeration': 'enumerator'}[self.kind]
        for number in range(self.number + 1, len(self.reference.lines)):
            columns = self.reference.lines[number].split('\t')
            if columns[1] == kind:
                yield '', Entry(self.reference, number, columns)
            elif columns[1] == 'part':
                yield unescaped(columns[2]), None
            elif columns[1] != 'macro':
                break


class Reference(object):
    """The lines of a reference.tsv, which generator/emit.h describes."""

    def __init__(self, path):
        try:
            with open(path) as file:
                self.all = file.read().rstrip('\n')
        except IOError as error:
            raise IOError(error.errno, 'what the headers say is in a file that the build makes of them and that cannot '
                          'be read (%s)' % error.strerror, path)
        self.lines = self.all.split('\n')
        self._users = None
        self.numbers = {}
        self._places = {'': []}
        for number, line in enumerate(self.lines):
            name, kind = line.split('\t', 2)[:2]
            if not name:
                self._places.setdefault(kind, []).append(number)
            elif name[0] != '.':
                self.numbers.setdefault(name, number)
                if kind in ('record', 'enumeration'):
                    self._places.setdefault('outer', []).append(number)

    def last(self, kind, number):
        """The number of the last line up to that one which is of a kind, -1 without one. 'outer' are records and
        enumerations."""
        places = self._places.get(kind, [])
        place = bisect.bisect_right(places, number)
        return places[place - 1] if place else -1

    def find(self, name):
        """The entry of that name, or None. 'bcm_l2_addr_t.flags' is a member."""
        name, _, member = name.partition('.')
        number = self.numbers.get(name)
        if number is None:
            return None
        entry = Entry(self, number, self.lines[number].split('\t'))
        if not member:
            return entry
        inner = [found for _, found in entry.inner() if found] if entry.kind == 'record' else []
        return ([found for found in inner if found.name == '.' + member] or [None])[0]

    def header(self, path):
        """What the header of that name says of itself, and the names of its functions and records; or None."""
        for number, line in enumerate(self.lines):
            if line.startswith('\theader\t%s\t' % path):
                names = []
                for inner in self.lines[number + 1:]:
                    columns = inner.split('\t', 2)
                    if columns[1] == 'header':
                        break
                    if columns[1] in ('function', 'record'):
                        names.append(columns[0])
                return unescaped(line.split('\t')[3]), names
        return None

    def users(self, type_name):
        """Names of the functions that take or give that type, in order."""
        if self._users is None:
            self._users = {}
            for line in self.lines:
                columns = line.split('\t', 5)
                if columns[1] == 'function':
                    for word in set(re.findall(r'\w+', columns[4])):
                        self._users.setdefault(word, []).append(columns[0])
        return [name for name in self._users.get(type_name, []) if name != type_name + '_init']


def unescaped(text):
    """A text of the tables (str) with its line ends and backslashes, which stand there as \\n and \\\\."""
    return re.sub(r'\\(.)', lambda match: '\n' if match.group(1) == 'n' else match.group(1), text)


_loaded = {}


def _load(name, read):
    if name not in _loaded:
        _loaded[name] = read(os.path.join(os.path.dirname(os.path.abspath(__file__)), name))
    return _loaded[name]


def reference():
    """The Reference of this build. Raises IOError where its file is missing."""
    return _load('reference.tsv', Reference)


def answers():
    """By function, how the simulated switch answers it, and why; empty on a switch."""
    return _load('answers.tsv', read_answers)


def read_answers(path):
    """How the simulated switch answers: a dict of a function's name to the rest of its row, of a file written by the build.

    Empty where there is no such file, as with a real SDK. Raises IOError where it cannot be read.
    """
    if not os.path.exists(path):
        return {}
    with open(path) as file:
        rows = [line.rstrip('\n').split('\t') for line in file]
    return dict((row[0], row[2:]) for row in rows)
