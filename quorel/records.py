"""Records as text, and what differs between two."""
from __future__ import absolute_import

import _QuorelApiNew
from _quorel import _set_fields, as_dict


def _shown(value):
    if isinstance(value, long):
        return str(value)
    if isinstance(value, list):
        return '[%s]' % ', '.join(_shown(item) for item in value)
    if value is Ellipsis:
        return '...'
    if isinstance(value, _QuorelApiNew._Proxy):
        return _text(value)
    # A record that has no class is given as a dict.
    is_record = type(value).__name__ == 'SwigPyObject'
    return '{%s}' % ', '.join('%r: %s' % member for member in _shown_members(value)) if is_record else repr(value)


def _shown_members(record):
    return [(name, text or _shown(value)) for name, value, text in _set_fields(record)]


def _text(record):
    return '%s(%s)' % (type(record).__name__, ', '.join('%s=%s' % member for member in _shown_members(record)))


def _str(record):
    """The record's members that are not zero, as its constructor takes them; numbers of an enumeration by name."""
    for base in _QuorelApiNew._Proxy.__subclasses__():
        if isinstance(record, base) and type(record).__repr__ == base.__repr__:
            try:
                return _text(record)
            except (TypeError, ValueError):
                # A pointer class, or a record that is gone.
                break
    return repr(record)


def differences(before, after):
    """What differs between two records: a list of (name, value before, value after), by name.

    >>> differences(q.bcm_l2_addr_t(port=3), q.bcm_l2_addr_t(port=4, vid=1))
    [('port', 3, 4), ('vid', 0, 1)]

    before, after: records, or what as_dict() gave; one of them may have some of the members only. Names of parts are
    'local_ability.pause' and 'entries[3].port'. Lists of numbers are compared as a whole. Raises AttributeError where
    each has members that the other has not.
    """
    return list(_differences('', *[side if isinstance(side, dict) else as_dict(side) for side in (before, after)]))


def _differences(place, before, after):
    if isinstance(before, dict) and isinstance(after, dict):
        stray = min((set(before) - set(after), set(after) - set(before)), key=len)
        if stray:
            raise AttributeError('only one side has a member %r' % (place + min(stray)))
        names = sorted(set(before) & set(after))
        parts = [('.' + name if place else name, before[name], after[name]) for name in names]
    elif (isinstance(before, list) and isinstance(after, list) and len(before) == len(after) and
          all(isinstance(item, (dict, list)) for item in before + after)):
        parts = [('[%d]' % index, left, right) for index, (left, right) in enumerate(zip(before, after))]
    else:
        if before != after:
            yield place, before, after
        return
    for name, left, right in parts:
        for found in _differences(place + name, left, right):
            yield found


# str() alone: the repr of proxies is what scripts know it as.
for _base in _QuorelApiNew._Proxy.__subclasses__():
    _base.__str__ = _str
