"""Above QuorelApiNew: calls that raise, outputs as values, memory, Python functions as callbacks.

    import QuorelApiNew as q
    from quorel import checked, OUT

    speed = checked(q.bcm_port_speed_get, 0, 1, OUT)
"""
import atexit

# Registers the classes of records.
import QuorelApiNew

from _quorel import OUT, Array, Callback, array, callback, cell, checked, copy, parameters
from _quorel import _close_callbacks
from quorel.errors import StatusError
from quorel.traversal import events, traverse

__all__ = ['OUT', 'Array', 'Callback', 'StatusError', 'array', 'callback', 'cell', 'checked', 'copy',
           'events', 'parameters', 'traverse']

# From now on threads of the SDK find no interpreter to call.
atexit.register(_close_callbacks)
