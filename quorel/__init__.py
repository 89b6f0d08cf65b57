"""Above QuorelApiNew: calls that raise, outputs as values, memory, Python functions as callbacks.

    import QuorelApiNew as q
    from quorel import checked, OUT

    speed = checked(q.bcm_port_speed_get, 0, 1, OUT)

Examples in docstrings are run as tests, after `import QuorelApiNew as q` and `from quorel import *`.
"""
from __future__ import absolute_import

import atexit

# Registers the classes of records.
import QuorelApiNew

from _quorel import OUT, Array, Callback, array, callback, cell, checked, constants, copy, parameters
from _quorel import _close_callbacks
from quorel.errors import StatusError, status_name
from quorel.names import flags, name_of
from quorel.traversal import events, traverse

__all__ = ['OUT', 'Array', 'Callback', 'StatusError', 'array', 'callback', 'cell', 'checked', 'constants', 'copy',
           'events', 'flags', 'name_of', 'parameters', 'status_name', 'traverse']

# From now on threads of the SDK find no interpreter to call.
atexit.register(_close_callbacks)
