// _quorel: what the package `quorel` cannot do in Python. One more module of SWIG's runtime: it finds the
// binding's types in the process-wide table and makes pointer objects that the binding takes.

#include "array.h"
#include "callback.h"
#include "checked.h"
#include "chip_names.h"
#include "describe.h"
#include "loan.h"
#include "lookup.h"
#include "module/pointer_object.h"
#include "names.h"
#include "output.h"
#include "records.h"
#include "registrations.h"

namespace quorel {

// Values of C++ classes are the binding's affair.
const DestructorRow destructors[] = {{no_type, nullptr}};
const size_t destructor_count = 0;

namespace {

constexpr char checked_doc[] = R"(checked(function, *arguments): calls a function of the SDK.

>>> checked(q.bcm_port_speed_get, 0, 1, OUT)
100000
>>> checked(q.bcm_vlan_create, 0, 5000)
Traceback (most recent call last):
StatusError: bcm_vlan_create(0, 5000) returned BCM_E_PARAM (-4)

An argument OUT stands for an output: it becomes a pointer to new memory, and its value is what checked()
returns; several outputs come back as a tuple. OUT[n] is an array of up to n values or text of up to n bytes.
Where an argument tells how many there is room for, OUT stands for as many; where a later output tells how many
were written, the list is cut to them. A result that is no status is returned, before the outputs.

Arrays, too, have to have the room that such an argument or the declaration tells; where neither does, nothing is
checked. What a function takes by value may be a number or list: checked(q.bcm_port_mdix_set, 0, 40, 1).

Raises StatusError where the status is not BCM_E_NONE, what a callback raises, and before the SDK is called
TypeError, ValueError or OverflowError for wrong arguments.)";

constexpr char array_doc[] = R"(array(type, size or values): typed memory, an Array.

>>> ports = array('bcm_port_t', [1, 2, 3])
>>> ports[1:] = [7, 8]
>>> list(ports), len(bytes(ports))
([1, 7, 8], 12)

type: a C type ('uint8', 'bcm_pkt_t *') or the class of a record. The elements are zeroed, or the values of a
sequence, or the bytes of a str or buffer. Any function takes the array where it takes a pointer to such
elements. Raises TypeError or ValueError for what is no such type, MemoryError for more than 2 GB.)";

constexpr char cell_doc[] =
    R"(cell(type, value=None): an array of one element, which is its attribute `value`.

>>> speed = cell('int')
>>> q.bcm_port_speed_get(0, 1, speed), speed.value
(0, 100000)

Types and errors are those of array().)";

constexpr char callback_doc[] = R"(callback(type, function): a Python function as a C function pointer.

type: the C type of the pointer, or a function of the SDK that takes one. The arguments arrive as results of
functions do; records and pointers, and what is read out of them, are good until the function returns. None as a
result is 0. A callback registered through checked() is kept until it is unregistered the same way, or until
quorel.sim makes the unit as it is when new. After a bare call, keep the object for as long as the SDK may call: of
one that is gone a RuntimeWarning tells.
Raises TypeError for what is no callback, RuntimeError when 32 of the type exist.)";

constexpr char constants_doc[] =
    R"(constants(group): (name, value) of the SDK's constants, in header order, a list.

>>> constants('BCM_E_')[:2]
[('BCM_E_NONE', 0), ('BCM_E_INTERNAL', -1)]

group: how their names begin, or the name of an enumeration ('bcm_error_t'). Raises ValueError where there are
none.)";

constexpr char as_dict_doc[] = R"(as_dict(record): all its members as plain values, by name.

>>> address = q.bcm_l2_addr_t(mac='02:00:5e:10:00:01', port=3, block_bitmap=[1, 7])
>>> values = as_dict(address)
>>> values['mac'], values['port'], values['block_bitmap']
('02:00:5e:10:00:01', 3, [1, 7])
>>> import json
>>> str(update(q.bcm_l2_addr_t(), json.loads(json.dumps(values)))) == str(address)
True

Numbers are ints or longs, MAC addresses text, port bitmaps and arrays lists, sets such as bcm_rx_reasons_t lists
of names, records dicts, `char *` is text or None, and other pointers are addresses or None. So the dict can be compared, pickled, and written as JSON. Raises TypeError for what is no record of the SDK,
ValueError for one whose memory is gone.)";

constexpr char copy_doc[] = R"(copy(record): a record of its own with the same content.

>>> twin = copy(q.bcm_l2_addr_t(port=3))
>>> twin.port, twin.thisown
(3, True)

Types and errors are those of as_dict().)";

constexpr char fields_doc[] = R"(fields(record): a list of (name, value), in the order of their declaration.

>>> fields(q.bcm_stat_group_mode_id_config_t(flags=5))[:2]
[('flags', 5), ('total_counters', 0)]

Values are as in as_dict(), but records and arrays are those of the record itself, whose memory they keep, and
pointers are pointer objects. Errors are those of as_dict().)";

constexpr char members_doc[] =
    R"(members(record or class or name): what a record has, a list of (name, C type).

>>> members(q.bcm_l2_addr_t)[2:4]
[('mac', 'bcm_mac_t'), ('vid', 'bcm_vlan_t')]

Raises TypeError or ValueError for what is no record of the SDK.)";

constexpr char update_doc[] = R"(update(record, values=None, **members): sets members, all or none.

>>> print update(q.bcm_l2_addr_t(), {'vid': 7}, port=3)
bcm_l2_addr_t(vid=7, port=3)

values: a dict such as as_dict() gives, with any of the members. A record may be given as a dict with some of its
own members, an array as any sequence of its size, text as unicode, a set as a number or a list of names and
numbers; a pointer is a pointer object or None, or the address that it has already. The constructor of a record takes
the same as keywords. Returns the record. Raises AttributeError for what is no member, TypeError, ValueError or
OverflowError for a value that it cannot have, and MemoryError.)";

constexpr char parameters_doc[] = R"(parameters(function): what a function of the SDK takes.

>>> parameters(q.bcm_port_speed_get)[2]
('speed', 'int', 'pointer', 0)

A list with a tuple (name, C type, way, elements) for each parameter. The way is 'value', 'pointer', 'constant'
(a pointer that is only read), 'text', 'constant_text', 'mac_address', 'by_value', 'callback', 'any_pointer',
'in_and_out' or 'other'; elements is 0 where no declaration tells. Raises TypeError for what is no function of
the SDK or has several signatures.)";

PyMethodDef functions[] = {
    {"checked", checked, METH_VARARGS, checked_doc},
    {"array", new_array, METH_VARARGS, array_doc},
    {"cell", new_cell, METH_VARARGS, cell_doc},
    {"callback", new_callback, METH_VARARGS, callback_doc},
    {"constants", list_constants, METH_O, constants_doc},
    {"as_dict", as_dict, METH_O, as_dict_doc},
    {"copy", copy_record, METH_O, copy_doc},
    {"fields", list_fields, METH_O, fields_doc},
    {"members", list_members, METH_O, members_doc},
    {"update", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(update)),
     METH_VARARGS | METH_KEYWORDS, update_doc},
    {"_chip_names", list_chip_names, METH_NOARGS,
     "The chip's registers, memories and fields: a dict for each sort, from name to number."},
    {"_set_fields", list_set_fields, METH_O,
     "For str(): (name, value, the text that stands for it or None) of the members that are not zero."},
    {"parameters", describe_parameters, METH_O, parameters_doc},
    {"_forget_registrations", forget_registrations, METH_O,
     "Ends what keeps callbacks that are registered with a unit, which has forgotten them."},
    {"_close_callbacks", close_callbacks, METH_NOARGS, "Ends all callbacks; for the end of the interpreter."},
    {nullptr, nullptr, 0, nullptr},
};

void initialise()
{
    if (!initialise_pointer_object_type() || !initialise_memory_type() || !initialise_array_type()
        || !initialise_out_type() || !initialise_callback_type() || !initialise_loan_type()) {
        return;
    }
    initialise_type_table();
    if (!initialise_lookup()) {
        return;
    }
    PyEval_InitThreads();
    PyObject *module = Py_InitModule4("_quorel", functions, nullptr, nullptr, PYTHON_API_VERSION);
    if (!module) {
        return;
    }
    Py_INCREF(out_marker);
    PyModule_AddObject(module, "OUT", out_marker);
    for (PyTypeObject *type : {&Array_Type, &Callback_Type}) {
        auto *object = reinterpret_cast<PyObject *>(type);
        Py_INCREF(object);
        PyModule_AddObject(module, type == &Array_Type ? "Array" : "Callback", object);
    }
}

}  // namespace

}  // namespace quorel

extern "C" __attribute__((visibility("default"))) void init_quorel();

void init_quorel()
{
    quorel::initialise();
}
