#include "array.h"

#include "refinements.h"

#include <cstring>
#include <new>

namespace quorel {

namespace {

enum Method { constructor, destructor, getitem, setitem };

NewReference raise_array_argument(const ArrayRow &row, Method which, int index, Status status)
{
    return raise_argument_error(method_name(static_cast<uint16_t>(row.constructor + which)), index + 1,
                                text_of(static_cast<uint16_t>(row.arguments + index)), status);
}

// The element that getitem or setitem means, or null with an exception.
HeldPointer element_of(const ArrayRow &row, PyObject *args, Method which)
{
    int size = which == getitem ? 2 : 3;
    if (PyTuple_GET_SIZE(args) != size) {
        raise_arity(static_cast<uint16_t>(row.constructor + which), args, size);
        return {};
    }
    HeldPointer element;
    int32_t index;
    Status status = to_value(PyTuple_GET_ITEM(args, 0), arguments[row.arguments].type, &element);
    if (status != Status::ok) {
        raise_array_argument(row, which, 0, status);
        return {};
    }
    status = to_int32(PyTuple_GET_ITEM(args, 1), &index);
    if (status != Status::ok) {
        raise_array_argument(row, which, 1, status);
        return {};
    }
    element.address = static_cast<char *>(element.address)
                      + static_cast<ptrdiff_t>(index) * static_cast<ptrdiff_t>(row.size);
    return element;
}

template <typename Value, NewReference (*convert)(Value)>
NewReference get_item(const ArrayRow &row, PyObject *args)
{
    HeldPointer element = element_of(row, args, getitem);
    if (!element) {
        return nullptr;
    }
    Value value;
    std::memcpy(&value, element.address, sizeof value);
    return convert(value);
}

template <typename Value, Status (*convert)(PyObject *, Value *)>
NewReference set_item(const ArrayRow &row, PyObject *args)
{
    HeldPointer element = element_of(row, args, setitem);
    if (!element) {
        return nullptr;
    }
    Value value;
    Status status = convert(PyTuple_GET_ITEM(args, 2), &value);
    if (status != Status::ok) {
        return raise_array_argument(row, setitem, 2, status);
    }
    std::memcpy(element.address, &value, sizeof value);
    return new_none();
}

}  // namespace

NewReference new_array(const ArrayRow &row, PyObject *args)
{
    if (PyTuple_GET_SIZE(args) != 1) {
        return raise_arity(row.constructor, args, 1);
    }
    int32_t count;
    Status status = to_int32(PyTuple_GET_ITEM(args, 0), &count);
    if (status != Status::ok) {
        return raise_argument_error(method_name(row.constructor), 1,
                                    text_of(static_cast<uint16_t>(row.arguments + 1)), status);
    }
    // On every host what the 32-bit target can hold: no object there is larger than half of its address space.
    uint64_t bytes = uint64_t{static_cast<uint32_t>(count)} * row.size;
    void *array = bytes > INT32_MAX ? nullptr : ::operator new[](static_cast<size_t>(bytes), std::nothrow);
    if (!array) {
        return PyErr_NoMemory();
    }
    std::memset(array, 0, static_cast<size_t>(bytes));
    return from_pointer(array, arguments[row.arguments].type);
}

NewReference delete_array(const ArrayRow &row, PyObject *args)
{
    if (PyTuple_GET_SIZE(args) != 1) {
        return raise_arity(static_cast<uint16_t>(row.constructor + destructor), args, 1);
    }
    HeldPointer array;
    Status status = to_pointer(PyTuple_GET_ITEM(args, 0), arguments[row.arguments].type, &array);
    if (status != Status::ok) {
        return raise_array_argument(row, destructor, 0, status);
    }
    if (!may_be_freed(array, method_name(static_cast<uint16_t>(row.constructor + destructor)))) {
        return nullptr;
    }
    ::operator delete[](array.address);
    return new_none();
}

NewReference get_item_uint8(const ArrayRow &row, PyObject *args)
{
    return get_item<uint8_t, from_uint8>(row, args);
}

NewReference set_item_uint8(const ArrayRow &row, PyObject *args)
{
    return set_item<uint8_t, to_uint8>(row, args);
}

NewReference get_item_uint32(const ArrayRow &row, PyObject *args)
{
    return get_item<uint32_t, from_uint32>(row, args);
}

NewReference set_item_uint32(const ArrayRow &row, PyObject *args)
{
    return set_item<uint32_t, to_uint32>(row, args);
}

NewReference get_item_record(const ArrayRow &row, PyObject *args)
{
    HeldPointer element = element_of(row, args, getitem);
    return element ? from_copy(element.address, row.size, arguments[row.arguments].type) : nullptr;
}

NewReference set_item_record(const ArrayRow &row, PyObject *args)
{
    HeldPointer element = element_of(row, args, setitem);
    if (!element) {
        return nullptr;
    }
    HeldPointer record;
    Status status = to_value(PyTuple_GET_ITEM(args, 2), arguments[row.arguments + 2].type, &record);
    if (status != Status::ok) {
        return raise_array_argument(row, setitem, 2, status);
    }
    std::memmove(element.address, record.address, row.size);
    return new_none();
}

}  // namespace quorel
