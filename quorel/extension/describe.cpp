#include "describe.h"

#include "lookup.h"

namespace quorel {

namespace {

const char *name_of(Way way)
{
    switch (way) {
    case Way::value:
        return "value";
    case Way::pointer:
        return "pointer";
    case Way::constant:
        return "constant";
    case Way::text:
        return "text";
    case Way::constant_text:
        return "constant_text";
    case Way::mac_address:
        return "mac_address";
    case Way::by_value:
        return "by_value";
    case Way::callback:
        return "callback";
    case Way::any_pointer:
        return "any_pointer";
    case Way::in_and_out:
        return "in_and_out";
    case Way::other:
        return "other";
    }
    return "";
}

}  // namespace

NewReference describe_parameters(PyObject *, PyObject *function)
{
    const CFunction *described = find_function(function);
    if (!described) {
        PyErr_SetString(PyExc_TypeError, "parameters() takes a function of the SDK");
        return nullptr;
    }
    Owned list = Owned::steal(PyList_New(described->parameter_count));
    for (size_t i = 0; list && i < described->parameter_count; ++i) {
        const CParameter &parameter = parameter_of(*described, i);
        Owned name = parameter_name(function, i);
        if (!name) {
            return nullptr;
        }
        const char *type = parameter.type == none ? "" : name_of(c_types[parameter.type]);
        PyObject *row = Py_BuildValue("Ossi", name.get(), type, name_of(parameter.way), parameter.bound);
        if (!row) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), row);
    }
    return list.release();
}

}  // namespace quorel
