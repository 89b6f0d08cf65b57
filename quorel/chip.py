"""Registers and memories of a chip by name, with their fields.

Everything about the chip is asked of the SDK; only the names come from the headers that the build read.
"""
from __future__ import absolute_import

import QuorelApiNew as q
from _quorel import OUT, _chip_names, array, cell, checked
from quorel.records import differences

_WORD = 32
_ALL_COPIES = -1
# Room for an entry of any memory. An SDK without registers has not the constant.
_MOST_WORDS = 4 * getattr(q, 'SOC_REG_ABOVE_64_MAX_SIZE_U32', 20)
# What no entry has in it.
_UNTOUCHED = 0xa5c35a3c


def _words(number, count):
    return array('unsigned int', [number >> _WORD * word & 0xffffffff for word in range(count)])


def _number(words):
    number = 0
    for word in reversed(list(words)):
        number = number << _WORD | word
    return int(number)


def _contains(numbers, number):
    """Whether it is one of a sorted sequence, without looking through a range."""
    return numbers[0] <= number <= numbers[-1] and (isinstance(numbers, xrange) or number in numbers)


def _missing(place, name, names):
    """What to say of a name that is not there."""
    import difflib
    close = difflib.get_close_matches(name, names, 3) or difflib.get_close_matches(name.upper(), names, 3)
    return '%s has no %s%s' % (place, name, ': is it %s?' % ' or '.join(close) if close else '')


class _Field(object):
    """Where in a value a field's bits are, lowest first; one that is signed has numbers below 0."""

    def __init__(self, name, bits, writable, signed=False):
        self.name, self.bits, self.writable = name, bits, writable
        self.half = 1 << len(bits) - 1 if signed else 0
        self.low = bits[0]
        self.mask = sum(1 << bit for bit in bits)
        self.contiguous = bits == range(self.low, self.low + len(bits))

    def get(self, value):
        if self.contiguous:
            number = (value & self.mask) >> self.low
        else:
            number = sum((value >> bit & 1) << i for i, bit in enumerate(self.bits))
        return int((number ^ self.half) - self.half)

    def fits(self, number):
        return -self.half <= number < (self.half or 1 << len(self.bits))

    def put(self, value, number):
        number &= (1 << len(self.bits)) - 1
        spread = (number << self.low if self.contiguous
                  else sum((number >> i & 1) << bit for i, bit in enumerate(self.bits)))
        return value & ~self.mask | spread


def _patterns(width):
    """Values that tell where a bit comes from: number k has at each bit the k-th bit of that bit's number."""
    return [sum(1 << bit for bit in range(width) if bit >> k & 1) for k in range(width.bit_length())]


def _find_bits(found, length):
    """The bits of a field of `length`, by what the SDK finds in it in each of the patterns."""
    return [sum((value >> i & 1) << k for k, value in enumerate(found)) for i in range(length)]


class _Kind(object):
    """What registers and memories have in common: a name, dimensions, and fields in a value of some width."""

    def __init__(self, unit, name, number, field_names):
        self.unit, self.name, self.number, self._field_names = unit, name, number, field_names
        self._fields = self._in_order = self._dimensions = None

    @property
    def dimensions(self):
        """What each subscript may be: a list of sequences."""
        if self._dimensions is None:
            self._dimensions = self._find_dimensions()
        return self._dimensions

    @property
    def in_order(self):
        """The fields, lowest first."""
        if self._in_order is None:
            self._in_order = sorted(self._find_fields(), key=lambda field: field.low)
        return self._in_order

    @property
    def fields(self):
        if self._fields is None:
            self._fields = dict((field.name, field) for field in self.in_order)
        return self._fields

    def named(self, coordinates):
        return self.name + ''.join('[%s]' % coordinate for coordinate in coordinates)


class _Register(_Kind):
    what = 'register'
    _places = None

    def __init__(self, *arguments):
        _Kind.__init__(self, *arguments)
        self.bytes = q.soc_reg_bytes(self.unit, self.number)

    @property
    def places(self):
        """The ports or cores that have it."""
        if self._places is None:
            most = 8 * len(bytes(cell('bcm_pbmp_t')))
            self._places = [place for place in range(most) if self._is_valid(place, 0)]
            self._count = 0
            while self._places and self._is_valid(self._places[0], self._count):
                self._count += 1
        return self._places

    def _is_valid(self, place, index):
        return q.soc_reg_port_idx_valid(self.unit, self.number, place, index)

    def _find_dimensions(self):
        return ([self.places] if len(self.places) > 1 else []) + ([xrange(self._count)] if self._count > 1 else [])

    def takes_all(self, dimension):
        """Whether a subscript of None stands for all that the dimension has."""
        return self.dimensions[dimension] is self.places and self._is_valid(q.REG_PORT_ANY, 0)

    def _where(self, coordinates):
        coordinates = list(coordinates)
        place = coordinates.pop(0) if len(self.places) > 1 else (self.places or [q.REG_PORT_ANY])[0]
        return (self.unit, self.number, q.REG_PORT_ANY if place is None else place,
                coordinates[0] if coordinates else 0)

    def read(self, coordinates):
        where = self._where(coordinates)
        if self.bytes <= 4:
            return int(checked(q.soc_reg32_get, *where + (OUT,)))
        if self.bytes <= 8:
            return int(checked(q.soc_reg64_get, *where + (OUT,)))
        return _number(checked(q.soc_reg_above_64_get, *where + (OUT,)))

    def write(self, coordinates, value):
        where = self._where(coordinates)
        if self.bytes <= 4:
            checked(q.soc_reg32_set, *where + (value,))
        elif self.bytes <= 8:
            checked(q.soc_reg64_set, *where + (value,))
        else:
            checked(q.soc_reg_above_64_set, *where + (self._wide(value),))

    @property
    def width(self):
        return 8 * self.bytes

    @staticmethod
    def _wide(value):
        return _words(value, q.SOC_REG_ABOVE_64_MAX_SIZE_U32)

    def _get_field(self, value, number):
        if self.bytes <= 4:
            return q.soc_reg_field_get(self.unit, self.number, value, number)
        if self.bytes <= 8:
            return q.soc_reg64_field_get(self.unit, self.number, value, number)
        result = self._wide(0)
        q.soc_reg_above_64_field_get(self.unit, self.number, self._wide(value), number, result)
        return _number(result)

    def _bits_without(self, flag):
        """The bits of fields of which the SDK does not say SOCF_..."""
        if self.bytes <= 4:
            return q.soc_reg_datamask(self.unit, self.number, flag)
        if self.bytes <= 8:
            return q.soc_reg64_datamask(self.unit, self.number, flag)
        mask = self._wide(0)
        q.soc_reg_above_64_datamask(self.unit, self.number, flag, mask)
        return _number(mask)

    def _find_fields(self):
        writable, unsigned = self._bits_without(q.SOCF_RO), self._bits_without(q.SOCF_SIGNED)
        patterns, found = _patterns(self.width), []
        for name, number in self._field_names.items():
            if q.soc_reg_field_valid(self.unit, self.number, number):
                length = q.soc_reg_field_length(self.unit, self.number, number)
                bits = _find_bits([self._get_field(pattern, number) for pattern in patterns], length)
                found.append(_Field(name, bits, bool(writable >> bits[0] & 1), not unsigned >> bits[0] & 1))
        return found


class _Memory(_Kind):
    what = 'memory'
    copy = _ALL_COPIES
    _width = None

    def __init__(self, *arguments):
        _Kind.__init__(self, *arguments)
        self._copies = {}

    def at_copy(self, copy):
        if copy not in self._copies:
            self._copies[copy] = _Memory(self.unit, self.name, self.number, self._field_names)
            self._copies[copy].copy = copy
        return self._copies[copy]

    def _where(self, coordinates):
        in_array = coordinates[0] if len(coordinates) > 1 else 0
        return self.unit, self.number, in_array, self.copy, coordinates[-1]

    def _is_valid(self, in_array, index):
        return q.soc_mem_array_read(self.unit, self.number, in_array, self.copy, index, _words(0, _MOST_WORDS)) == 0

    @staticmethod
    def _count(is_valid):
        high = 1
        while is_valid(high):
            high *= 2
        low = high // 2
        while high - low > 1:
            middle = (low + high) // 2
            low, high = (middle, high) if is_valid(middle) else (low, middle)
        return high

    def _find_dimensions(self):
        # A copy that is not there is said so here.
        self.width
        arrays = self._count(lambda in_array: self._is_valid(in_array, 0))
        entries = self._count(lambda index: self._is_valid(0, index))
        return ([xrange(arrays)] if arrays > 1 else []) + [xrange(entries)]

    def takes_all(self, dimension):
        return False

    def _read(self, coordinates, entry):
        checked(q.soc_mem_array_read, *self._where(coordinates) + (entry,))
        return entry

    @property
    def width(self):
        if self._width is None:
            words = list(self._read((0, 0), array('unsigned int', [_UNTOUCHED] * _MOST_WORDS)))
            while words and words[-1] == _UNTOUCHED:
                words.pop()
            self._width = _WORD * len(words)
        return self._width

    def read(self, coordinates):
        return _number(self._read(coordinates, array('unsigned int', _MOST_WORDS))[:self.width // _WORD])

    def write(self, coordinates, value):
        checked(q.soc_mem_array_write, *self._where(coordinates) + (_words(value, _MOST_WORDS),))

    def _find_fields(self):
        ones, places = _words((1 << self.width) - 1, _MOST_WORDS), []
        patterns = [_words(pattern, _MOST_WORDS) for pattern in _patterns(self.width)]
        for name, number in self._field_names.items():
            length = q.soc_mem_field32_get(self.unit, self.number, ones, number).bit_length()
            if length:
                found = [q.soc_mem_field32_get(self.unit, self.number, pattern, number) for pattern in patterns]
                places.append((_find_bits(found, length), name))
        # Of a longer field the SDK gives the low bits. It reaches to the next one: between fields there are zeroes.
        starts = sorted(bits[0] for bits, _ in places) + [self.width]
        found = []
        for bits, name in places:
            if len(bits) == _WORD and bits == range(bits[0], bits[0] + _WORD):
                bits = range(bits[0], min(start for start in starts if start > bits[-1]))
            found.append(_Field(name, bits, True))
        return found


class Place(object):
    """A register or an entry of a memory; or several, which a subscript chooses from.

    >>> port = Chip(0).regs.NIF_PORT_CTRL[3]
    >>> before = port.read()
    >>> port.modify(RX_ENABLE=0, TX_ENABLE=0)
    >>> port.RX_ENABLE, port.compare(RX_ENABLE=1, TX_ENABLE=0)
    (0, [('RX_ENABLE', 1, 0)])
    >>> port.write(before)

    Fields are attributes: reading one reads the chip, assigning to one reads and writes it. There is a subscript for
    the port or core, if several have the register (None stands for all cores at once), and one for the index, if
    there are several; for a memory one for the array, if there are several, and one for the index. Values are ints or
    longs of any width. A field of a register that the SDK says is signed (SOCF_SIGNED) has numbers below 0 as well; of
    memories it does not say, and their fields are as their bits are. Iterating gives all places, in order.

    Raises AttributeError for a field that is not there or is read-only, TypeError where a subscript is missing,
    IndexError for one that is out of range, OverflowError for a value that does not fit, StatusError for what the SDK
    refuses.
    """

    __slots__ = ('_kind', '_coordinates')

    def __init__(self, kind, coordinates=()):
        object.__setattr__(self, '_kind', kind)
        object.__setattr__(self, '_coordinates', coordinates)

    def __getitem__(self, key):
        coordinates = self._coordinates
        for coordinate in key if isinstance(key, tuple) else (key,):
            place, dimensions = len(coordinates), self._kind.dimensions
            if place == len(dimensions):
                raise TypeError('%s has no further subscript' % self._kind.named(coordinates))
            coordinates += (coordinate,)
            there = (self._kind.takes_all(place) if coordinate is None else
                     isinstance(coordinate, (int, long)) and _contains(dimensions[place], coordinate))
            if not there:
                raise IndexError('%s is not there: subscripts are %d to %d' % (
                    self._kind.named(coordinates), dimensions[place][0], dimensions[place][-1]))
        return Place(self._kind, coordinates)

    def __iter__(self):
        if len(self._coordinates) == len(self._kind.dimensions):
            yield self
            return
        for coordinate in self._kind.dimensions[len(self._coordinates)]:
            for place in Place(self._kind, self._coordinates + (coordinate,)):
                yield place

    def __len__(self):
        number = 1
        for dimension in self._kind.dimensions[len(self._coordinates):]:
            number *= len(dimension)
        return number

    def _complete(self):
        missing = len(self._kind.dimensions) - len(self._coordinates)
        if missing:
            raise TypeError('%s is %d places: %d more subscript%s which' % (
                self.name, len(self), missing, 's say' if missing > 1 else ' says'))
        return self._coordinates

    def _field(self, name):
        field = self._kind.fields.get(name)
        if field is None:
            raise AttributeError(_missing(self._kind.name, name, self._kind.fields))
        return field

    @property
    def name(self):
        """Its name with its subscripts, such as 'NIF_PORT_CTRL[3]'."""
        return self._kind.named(self._coordinates)

    def read(self):
        """The whole value."""
        return self._kind.read(self._complete())

    def write(self, value):
        """Writes the whole value."""
        if not 0 <= value < 1 << self._kind.width:
            raise OverflowError('%s has %d bits; %s does not fit' % (self._kind.name, self._kind.width, value))
        self._kind.write(self._complete(), value)

    def modify(self, **fields):
        """Sets fields and leaves the others: reads the value once and writes it once."""
        self.encode(0, **fields)
        self._kind.write(self._complete(), self.encode(self.read(), **fields))

    def as_dict(self):
        """The values of all fields, by name, from one reading."""
        return self.decode(self.read())

    def encode(self, value, **fields):
        """A whole value with fields set to something else; leaves the chip alone."""
        for name, number in fields.items():
            field = self._field(name)
            if not field.writable:
                raise AttributeError('%s of %s is read-only' % (name, self._kind.name))
            if not field.fits(number):
                raise OverflowError('%s of %s has %d bits%s; %s does not fit' % (
                    name, self._kind.name, len(field.bits), ', one of them the sign' if field.half else '', number))
            value = field.put(value, number)
        return int(value)

    def decode(self, value):
        """The values of all fields in a whole value, by name; leaves the chip alone."""
        return dict((name, field.get(value)) for name, field in self._kind.fields.items())

    def lengths(self):
        """How many bits the fields have, by name."""
        return dict((name, len(field.bits)) for name, field in self._kind.fields.items())

    def compare(self, **fields):
        """What is not as it should be: a list of (field, what it should be, what it is), by name."""
        for name in fields:
            self._field(name)
        return differences(fields, self.as_dict())

    def snapshot(self):
        """The values of all places here, a Snapshot."""
        return Snapshot(self)

    def table(self):
        """All places here with their fields, as text."""
        return str(self.snapshot())

    def at_copy(self, copy):
        """The same memory in one block: its number, or its core. Others are read in the first and written in all.

        Raises TypeError for a register.
        """
        if not isinstance(self._kind, _Memory):
            raise TypeError('%s is a register: its core is a subscript' % self.name)
        return Place(self._kind.at_copy(copy), self._coordinates)

    def __getattr__(self, name):
        if name.startswith('_'):
            raise AttributeError(name)
        return self._field(name).get(self.read())

    def __setattr__(self, name, value):
        self.modify(**{name: value})

    def __dir__(self):
        return sorted(self._kind.fields) + [name for name in vars(Place) if not name.startswith('_')]

    def __repr__(self):
        return '<%s %s of unit %d>' % (self._kind.what, self.name, self._kind.unit)

    def __str__(self):
        return self.table() if len(self) == 1 else repr(self)


class Snapshot(object):
    """What registers or entries of memories held at one time.

    >>> chip = Chip(0)
    >>> before = chip.regs.snapshot('CMIC_LED_*')
    >>> rate = chip.regs.CMIC_LED_CTRL.REFRESH_RATE
    >>> chip.regs.CMIC_LED_CTRL.REFRESH_RATE = rate ^ 1
    >>> before.differences() == [('CMIC_LED_CTRL', 'REFRESH_RATE', rate, rate ^ 1)]
    True
    >>> chip.regs.CMIC_LED_CTRL.REFRESH_RATE = rate

    values: a dict of whole values by name, such as 'NIF_PORT_CTRL[3]'. str() is a table.
    """

    def __init__(self, places):
        self._places = [(place.name, place) for place in places]
        self.values = dict((name, place.read()) for name, place in self._places)

    def differences(self, later=None):
        """What has changed until `later`, another snapshot of the same; until now if it is left out.

        A list of (name of the place, field, value before, value after). Raises KeyError if `later` lacks a place.
        """
        if later is None:
            later = Snapshot([place for _, place in self._places])
        found = []
        for name, place in self._places:
            before, after = self.values[name], later.values[name]
            if before != after:
                found += [(name, field.name, field.get(before), field.get(after)) for field in place._kind.in_order
                          if field.get(before) != field.get(after)]
        return found

    def __str__(self):
        lines = []
        longest = max([len(name) for name, _ in self._places] or [0])
        for name, place in self._places:
            value = self.values[name]
            text = '%#0*x' % (2 + place._kind.width // 4, value)
            fields = ' '.join('%s=%#x' % (field.name, field.get(value)) for field in place._kind.in_order)
            lines.append('%-*s %s %s' % (longest, name, text, fields))
        return '\n'.join(lines)


class Names(object):
    """Registers or memories by name: as attributes, or by subscript. Iterating gives the names, sorted."""

    def __init__(self, make, numbers):
        self._make, self._numbers, self._made = make, numbers, {}

    def __getattr__(self, name):
        if name not in self._numbers:
            raise AttributeError(_missing('the chip', name, self._numbers))
        return self[name]

    def __getitem__(self, name):
        if name not in self._made:
            if name not in self._numbers:
                raise KeyError(_missing('the chip', str(name), self._numbers))
            self._made[name] = self._make(name, self._numbers[name])
        return Place(self._made[name])

    def __iter__(self):
        return iter(sorted(self._numbers, key=lambda name: (self._numbers[name], name)))

    def __len__(self):
        return len(self._numbers)

    def __contains__(self, name):
        return name in self._numbers

    def __dir__(self):
        return sorted(self._numbers) + ['snapshot', 'table']

    def snapshot(self, pattern):
        """A Snapshot of all whose names are like the pattern: 'NIF_*' is a whole block. Raises KeyError if none is."""
        # Not everybody who imports the package wants what these bring along.
        import fnmatch
        names = [name for name in self if fnmatch.fnmatchcase(name, pattern)]
        if not names:
            raise KeyError(_missing('the chip', pattern, self._numbers))
        return Snapshot(place for name in names for place in self[name])

    def table(self, pattern):
        """The same as text: a line for each place, with its value and its fields."""
        return str(self.snapshot(pattern))


class Chip(object):
    """The registers and memories of a unit by name.

    >>> chip = Chip(0)
    >>> chip.regs.NIF_PORT_CTRL[3].RX_ENABLE
    1
    >>> print chip.regs.CMIC_DEVICE_ID
    CMIC_DEVICE_ID 0x... DEVICE=0x... REVISION=0x...
    >>> len(chip.mems.IHP_MAC_TABLE), chip.mems.IHP_MAC_TABLE[7].VALID
    (4096, 0)

    unit: number of a unit that is attached.
    regs, mems: a Names each, which gives a Place for a name.

    What there is, where the fields are and how many there are of each is asked of the SDK when it is first needed. A
    memory has no other way to tell than being read: entries with effects of their own, such as counters that are
    cleared by it, have them then. Fields of memories that are longer than 32 bits are taken to reach to the next.
    """

    def __init__(self, unit):
        self.unit = unit
        registers, memories, fields = _chip_names()
        self.regs = Names(lambda name, number: _Register(unit, name, number, fields), registers)
        self.mems = Names(lambda name, number: _Memory(unit, name, number, fields), memories)
