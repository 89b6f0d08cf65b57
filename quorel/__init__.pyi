# Types of the package, for editors and type checkers; its docstrings say the rest.

from _quorel import OUT as OUT, Array as Array, Callback as Callback, array as array, as_dict as as_dict
from _quorel import callback as callback, cell as cell, checked as checked, constants as constants, copy as copy
from _quorel import fields as fields, members as members, parameters as parameters, update as update
from quorel.acl import ACL as ACL
from quorel.chip import Chip as Chip
from quorel.errors import StatusError as StatusError, status_name as status_name
from quorel.headers import describe as describe, help as help, search as search
from quorel.names import flags as flags, name_of as name_of
from quorel.records import differences as differences
from quorel.traversal import events as events, traverse as traverse
