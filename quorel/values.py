"""Values of types that the SDK's module passes by pointer.

They are numbers and lists that look, compare and are pickled as such; and functions of the SDK that want such a value
take them, as they take what the module itself gives.
"""
from __future__ import absolute_import

from _quorel import cell

_classes = {}


def _make_class(type_name, plain):
    def reduce(self, *_):
        return plain, (plain(self),)

    # Made when it is asked for, since a list may have changed meanwhile.
    return type(plain.__name__, (plain,), {
        '__slots__': (), '__doc__': "A value of the C type '%s'." % type_name, '__reduce__': reduce,
        '__reduce_ex__': reduce, 'this': property(lambda self: cell(type_name, plain(self)).this)})


def carried(type_name, value):
    """The value, an int, long or list, as one of that C type."""
    key = type_name, type(value)
    if key not in _classes:
        _classes[key] = _make_class(*key)
    return _classes[key](value)
