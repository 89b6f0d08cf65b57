// The module's `cvar`: C global variables as attributes of one object. Reading an attribute reads the C variable
// at that moment, assigning to it writes the C variable.
//
// Two read-only messages exist, on purpose: a constant says "Variable <name> is read-only.", an array of unknown
// length "in variable 'read-only <name>' of type '<type>'".
#pragma once

#include "record.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// One global variable.
struct VariableRow {
    const char *name;
    NewReference (*get)(const VariableRow &row);
    /// Returns whether the variable was written; if not, an exception is set.
    bool (*set)(const VariableRow &row, PyObject *value);
    void *address;
    uint16_t value;  ///< argument: the variable's type; for arrays the descriptor is the element pointer's
    uint32_t size;   ///< bytes
};

extern const VariableRow variable_rows[];  ///< in header order
extern const size_t variable_count;

/// A new variable object that lists the generated variables, last first.
Owned new_variable_object();

/// Raises the failed conversion of a variable's new value; returns false.
bool raise_variable(const VariableRow &row, Status status) __attribute__((cold));

template <typename Value, NewReference (*convert)(Value)>
NewReference get_scalar_variable(const VariableRow &row)
{
    return convert(*static_cast<const Value *>(row.address));
}

template <typename Value, Status (*convert)(PyObject *, Value *)>
bool set_scalar_variable(const VariableRow &row, PyObject *object)
{
    Value value;
    Status status = convert(object, &value);
    if (status != Status::ok) {
        return raise_variable(row, status);
    }
    *static_cast<Value *>(row.address) = value;
    return true;
}

/// char *: a new str, or None.
NewReference get_string_variable(const VariableRow &row);
bool set_string_variable(const VariableRow &row, PyObject *value);

/// Records and arrays: a pointer object that owns nothing. Writing copies the whole; None raises.
NewReference get_storage_variable(const VariableRow &row);
bool set_storage_variable(const VariableRow &row, PyObject *value);

/// Pointers; those to functions are written by set_callback_variable().
NewReference get_pointer_variable(const VariableRow &row);
bool set_pointer_variable(const VariableRow &row, PyObject *value);
/// Writes the pointer that a conversion gave with the status; false with an exception if that is not ok.
bool store_pointer_variable(const VariableRow &row, Status status, const HeldPointer &pointer);

bool refuse_constant(const VariableRow &row, PyObject *value);
bool refuse_unbounded_array(const VariableRow &row, PyObject *value);

}  // namespace quorel
