"""Above QuorelApiNew: calls that raise, outputs as values, memory, records as values, Python functions as callbacks.

    import QuorelApiNew as q
    from quorel import checked, OUT

    speed = checked(q.bcm_port_speed_get, 0, 1, OUT)

Importing it adds to the records of QuorelApiNew: members as keywords, q.bcm_l2_addr_t(port=3), and a str() that
shows what is in them; and what is read out of a record keeps the record's memory.

Examples in docstrings are run as tests, after `import QuorelApiNew as q` and `from quorel import *`.
"""
from __future__ import absolute_import

import atexit

# Registers the classes of records.
import QuorelApiNew

from _quorel import OUT, Array, Callback, array, callback, cell, checked, constants, parameters
from _quorel import as_dict, copy, fields, members, update
from _quorel import _close_callbacks
from quorel.acl import ACL
from quorel.chip import Chip
from quorel.errors import StatusError, status_name
from quorel.headers import describe, help, search
from quorel.names import flags, name_of
from quorel.records import differences
from quorel.traversal import events, traverse

__all__ = ['ACL', 'OUT', 'Array', 'Callback', 'Chip', 'StatusError', 'array', 'as_dict', 'callback', 'cell', 'checked',
           'constants', 'copy', 'describe', 'differences', 'events', 'fields', 'flags', 'help', 'members',
           'name_of', 'parameters', 'search', 'status_name', 'traverse', 'update']

# From now on threads of the SDK find no interpreter to call.
atexit.register(_close_callbacks)
