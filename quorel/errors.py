"""What calls raise."""
from __future__ import absolute_import

from _quorel import Array
from quorel.names import name_of

# How the names of statuses begin.
STATUS_GROUPS = ('BCM_E_', 'SOC_E_')


def status_name(status):
    """The name of a status, such as 'BCM_E_PARAM'; the number as text where there is none.

    >>> status_name(-4)
    'BCM_E_PARAM'
    """
    for group in STATUS_GROUPS:
        try:
            name = name_of(group, status, None)
        except ValueError:  # an SDK without such
            continue
        if name:
            return name
    return str(status)


class StatusError(Exception):
    """A function of the SDK returned another status than BCM_E_NONE.

    function:  the function.
    arguments: what it was called with, a tuple; outputs are OUT.
    status:    the number.
    """

    def __init__(self, function, arguments, status):
        Exception.__init__(self, function, arguments, status)
        self.function, self.arguments, self.status = function, arguments, status

    @property
    def name(self):
        """The name of the status, such as 'BCM_E_PARAM'; the number as text where it has none."""
        return status_name(self.status)

    def __str__(self):
        function = getattr(self.function, '__name__', None) or repr(self.function)
        status = '%d' % self.status
        if self.status > 0:
            status += ', which is no status'
        elif self.name != status:
            status = '%s (%s)' % (self.name, status)
        return '%s(%s) returned %s' % (function, ', '.join(map(_shown, self.arguments)), status)


def _shown(argument):
    """As it was given, and short."""
    if isinstance(argument, Array):
        return '<array of %d %s>' % (len(argument), argument.type)
    if hasattr(type(argument), '__swig_destroy__'):
        return '<%s>' % type(argument).__name__
    text = repr(argument)
    return text if len(text) <= 60 else text[:50] + '...' + text[-7:]
