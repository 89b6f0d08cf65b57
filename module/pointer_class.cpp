#include "pointer_class.h"

#include "refinements.h"

#include <new>

namespace quorel {

namespace {

enum Method { constructor, destructor, assign, value, cast, frompointer, registration };

// Reinterprets the one argument as another pointer type.
NewReference reinterpret(const PointerClassRow &row, PyObject *args, Method which, uint16_t from, uint16_t to)
{
    auto method = static_cast<uint16_t>(row.constructor + which);
    if (PyTuple_GET_SIZE(args) != 1) {
        return raise_arity(method, args, 1);
    }
    HeldPointer pointer;
    Status status = to_pointer(PyTuple_GET_ITEM(args, 0), arguments[from].type, &pointer);
    if (status != Status::ok) {
        return raise_argument_error(method_name(method), 1, text_of(from), status);
    }
    return wrap_part(pointer, pointer.address, types[arguments[to].type]);
}

}  // namespace

NewReference new_pointer_class(const PointerClassRow &row, PyObject *args)
{
    if (PyTuple_GET_SIZE(args) != 0) {
        return raise_arity(row.constructor, args, 0);
    }
    void *element = ::operator new(row.size, std::nothrow);
    if (!element) {
        return PyErr_NoMemory();
    }
    PyObject *pointer = new_pointer_object(element, types[arguments[row.self].type], Ownership::owned);
    if (!pointer) {
        ::operator delete(element);
    }
    return pointer;
}

NewReference delete_pointer_class(const PointerClassRow &row, PyObject *args)
{
    HeldPointer element;
    if (!take_from_owner(args, static_cast<uint16_t>(row.constructor + destructor), row.self, &element)) {
        return nullptr;
    }
    ::operator delete(element.address);
    return new_none();
}

NewReference cast_pointer_class(const PointerClassRow &row, PyObject *args)
{
    return reinterpret(row, args, cast, row.self, row.element);
}

NewReference pointer_class_from_pointer(const PointerClassRow &row, PyObject *args)
{
    return reinterpret(row, args, frompointer, row.element, row.self);
}

NewReference register_pointer_class(const PointerClassRow &row, PyObject *args)
{
    return register_proxy_class(args, static_cast<uint16_t>(row.constructor + registration), row.self);
}

}  // namespace quorel
