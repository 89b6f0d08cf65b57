"""Names for numbers: statuses, enumerations, flags."""
from __future__ import absolute_import

from _quorel import constants

_groups = {}
_NUMBER = object()


class _Group(object):
    """Constants that are looked up together; a lookup is one in a dictionary."""

    def __init__(self, group):
        self.names, self.values = {}, {}
        for name, value in constants(group):
            self.names.setdefault(value, name)
            self.values[name] = _unsigned(value)
        # Single bits first: a name of several bits is for what they leave.
        masks = [(_unsigned(value), name) for value, name in self.names.items() if value]
        self.masks = sorted(masks, key=lambda mask: (mask[0] & (mask[0] - 1) != 0, mask[0]))


def _unsigned(value):
    return value & 0xffffffff if value < 0 else value


def _find(group):
    found = _groups.get(group)
    if found is None:
        found = _groups[group] = _Group(group)
    return found


def name_of(group, value, default=_NUMBER):
    """The name of a constant.

    >>> name_of('BCM_E_', -4)
    'BCM_E_PARAM'

    group:   how its name begins, or the name of its enumeration, such as 'bcm_error_t'. Where several constants of
             the group have the value, it is the first in the headers; an enumeration leaves less to chance.
    value:   a number, with or without a sign.
    default: what is returned where no constant has the value; the number as text if it is left out.

    Raises ValueError for a group without constants.
    """
    names = _find(group).names
    name = names.get(value) or names.get(value - 0x100000000)
    return name or (str(value) if default is _NUMBER else default)


def flags(group, value):
    """A number as the names of its bits, and such a text as the number.

    >>> flags('bcm_l2_addr_flag_t', 0x28)
    'BCM_L2_COPY_TO_CPU|BCM_L2_STATIC'
    >>> flags('BCM_L2_', 'STATIC | COPY_TO_CPU')
    40

    group: as for name_of(). The words of a text may lack what all names of the group begin with; bits without a name
    are a number in it ('BCM_L2_STATIC|0x80000000'), and no bit is '0'. A negative number stands for the 32 bits of
    a C int. Raises ValueError for a word that is neither, and for a group without constants.
    """
    found = _find(group)
    return _number(found, group, value) if isinstance(value, (str, type(u''))) else _text(found, value)


def _text(found, number):
    left = _unsigned(number)
    words = []
    for mask, name in found.masks:
        if left & mask == mask:
            words.append(name)
            left &= ~mask
    if left or not words:
        words.append('%#x' % left if left else '0')
    return '|'.join(words)


def _number(found, group, text):
    number = 0
    for word in text.split('|'):
        word = word.strip()
        value = found.values.get(word, found.values.get(group + word))
        if value is None:
            value = int(word, 0) if word[:1].isdigit() else None
        if value is None:
            raise ValueError("'%s' is no flag of %s" % (word, group))
        number |= value
    return number
