#include "values.h"

#include "array.h"
#include "bits.h"
#include "loan.h"
#include "module/convert.h"
#include "typemaps/mac_address.h"
#include "typemaps/port_list.h"

#include <cstdarg>
#include <cstring>

namespace quorel {

namespace {

template <typename Value>
Value load(const char *address)
{
    Value value;
    std::memcpy(&value, address, sizeof value);
    return value;
}

template <typename Value, Status (*convert)(PyObject *, Value *)>
Status store(char *address, PyObject *object)
{
    Value value;
    Status status = convert(object, &value);
    if (status == Status::ok) {
        std::memcpy(address, &value, sizeof value);
    }
    return status;
}

Status to_int16(PyObject *object, int16_t *value)
{
    int32_t number;
    Status status = to_int32(object, &number);
    if (status != Status::ok) {
        return status;
    }
    *value = static_cast<int16_t>(number);
    return *value == number ? Status::ok : Status::overflow;
}

Status to_int64(PyObject *object, int64_t *value)
{
    if (!PyInt_Check(object) && !PyLong_Check(object)) {
        return Status::type;
    }
    int overflow = 0;
    *value = PyInt_Check(object) ? PyInt_AS_LONG(object) : PyLong_AsLongLongAndOverflow(object, &overflow);
    return overflow ? Status::overflow : Status::ok;
}

Status to_character(PyObject *object, char *value)
{
    if (!PyString_Check(object) || PyString_GET_SIZE(object) != 1) {
        return Status::type;
    }
    *value = PyString_AS_STRING(object)[0];
    return Status::ok;
}

Status store_record(const CType &type, char *address, PyObject *value)
{
    HeldPointer record = {};
    if (type.pointer == no_type || convert_pointer(value, types[type.pointer], &record) != Status::ok
        || !record) {
        return Status::type;
    }
    std::memmove(address, record.address, type.size);
    return Status::ok;
}

Status store_pointer(const CType &type, char *address, PyObject *value)
{
    HeldPointer pointer = {};
    const bool is_text =
        type.kind == Kind::pointer && type.target != none && c_types[type.target].kind == Kind::character;
    if (is_text && PyString_Check(value)) {
        pointer.address = PyString_AS_STRING(value);
    } else if (convert_pointer(value, type.self == no_type ? nullptr : types[type.self], &pointer)
               != Status::ok) {
        return Status::type;
    }
    std::memcpy(address, &pointer.address, sizeof pointer.address);
    return Status::ok;
}

Status store_value(const CType &type, char *address, PyObject *value)
{
    switch (type.kind) {
    case Kind::int8:
        return store<int8_t, to_int8>(address, value);
    case Kind::uint8:
        return store<uint8_t, to_uint8>(address, value);
    case Kind::int16:
        return store<int16_t, to_int16>(address, value);
    case Kind::uint16:
        return store<uint16_t, to_uint16>(address, value);
    case Kind::int32:
        return store<int32_t, to_int32>(address, value);
    case Kind::uint32:
        return store<uint32_t, to_uint32>(address, value);
    case Kind::int64:
        return store<int64_t, to_int64>(address, value);
    case Kind::uint64:
        return store<uint64_t, to_uint64>(address, value);
    case Kind::boolean:
        return store<bool, to_bool>(address, value);
    case Kind::character:
        return store<char, to_character>(address, value);
    case Kind::record:
    case Kind::bit_set:
    case Kind::opaque:
        return store_record(type, address, value);
    case Kind::pointer:
    case Kind::callback:
        return store_pointer(type, address, value);
    case Kind::mac_address:
    case Kind::port_list:
    case Kind::array:
        break;
    }
    return Status::type;
}

NewReference read_pointer(const CType &type, char *address, PyObject *loan)
{
    void *pointer = load<void *>(address);
    if (pointer && type.kind == Kind::pointer && type.target != none
        && c_types[type.target].kind == Kind::character) {
        return PyString_FromString(static_cast<const char *>(pointer));
    }
    static swig_type_info *const untyped = find_type("_p_void");
    if (type.self == no_type && pointer && !untyped) {
        return PyLong_FromVoidPtr(pointer);
    }
    if (type.self == no_type && pointer) {
        Owned made = Owned::steal(new_pointer_object(pointer, untyped, Ownership::borrowed));
        return made && keep_alive(made.get(), loan) ? made.release() : nullptr;
    }
    return new_reference(pointer, type.self, loan);
}

}  // namespace

NewReference read_value(const CType &type, char *address, PyObject *keeper)
{
    switch (type.kind) {
    case Kind::int8:
        return from_int8(load<int8_t>(address));
    case Kind::uint8:
        return from_uint8(load<uint8_t>(address));
    case Kind::int16:
        return from_int32(load<int16_t>(address));
    case Kind::uint16:
        return from_uint16(load<uint16_t>(address));
    case Kind::int32:
        return from_int32(load<int32_t>(address));
    case Kind::uint32:
        return from_uint32(load<uint32_t>(address));
    case Kind::int64:
        return PyLong_FromLongLong(load<int64_t>(address));
    case Kind::uint64:
        return from_uint64(load<uint64_t>(address));
    case Kind::boolean:
        return from_bool(load<bool>(address));
    case Kind::character:
        return PyString_FromStringAndSize(address, 1);
    case Kind::mac_address:
        return from_mac_address(reinterpret_cast<const unsigned char *>(address));
    case Kind::port_list: {
        PyObject *ports = from_port_list(*reinterpret_cast<const bcm_pbmp_t *>(address));
        if (ports) {
            make_ints(ports);
        }
        return ports;
    }
    case Kind::bit_set:
        return carried(type, Owned::steal(read_bits(address, type.size)));
    case Kind::record:
    case Kind::opaque:
        return new_reference(address, type.pointer, keeper);
    case Kind::pointer:
    case Kind::callback:
        return read_pointer(type, address, loan_of(keeper));
    case Kind::array:
        return read_array(type, address, keeper);
    }
    return nullptr;
}

bool write_value(const CType &type, char *address, PyObject *value)
{
    switch (type.kind) {
    case Kind::mac_address: {
        bcm_mac_t mac;
        if (!to_mac_address(value, mac)) {
            return false;
        }
        std::memcpy(address, mac, sizeof mac);
        return true;
    }
    case Kind::port_list: {
        bcm_pbmp_t ports;
        Owned ints = PyList_Check(value) ? Owned::steal(PySequence_List(value)) : Owned::share(value);
        if (!ints) {
            return false;
        }
        if (PyList_Check(value)) {
            make_ints(ints.get());
        }
        if (!to_port_list(ints.get(), &ports)) {
            return false;
        }
        std::memcpy(address, &ports, sizeof ports);
        return true;
    }
    case Kind::array:
        return write_array(type, address, value);
    case Kind::bit_set:
    case Kind::opaque: {
        bool has_bits =
            PyInt_Check(value) || PyLong_Check(value) || PyList_Check(value) || PyTuple_Check(value);
        if (has_bits) {
            return write_bits(type, address, value);
        }
        break;
    }
    default:
        break;
    }
    switch (store_value(type, address, value)) {
    case Status::ok:
        return true;
    case Status::overflow: {
        Owned text = Owned::steal(PyObject_Repr(value));
        if (text) {
            PyErr_Format(PyExc_OverflowError, "%.100s does not fit in '%.200s'",
                         PyString_AS_STRING(text.get()), name_of(type));
        }
        return false;
    }
    default:
        return raise_wrong_value(type, value);
    }
}

NewReference carried(const CType &type, Owned value)
{
    static PyObject *make;
    if (!make) {
        Owned values = Owned::steal(PyImport_ImportModule("quorel.values"));
        make = values ? PyObject_GetAttrString(values.get(), "carried") : nullptr;
    }
    return make && value ? PyObject_CallFunction(make, const_cast<char *>("sO"), name_of(type), value.get())
                         : nullptr;
}

bool say_where(const char *place, ...)
{
    PyObject *type, *value, *traceback;
    PyErr_Fetch(&type, &value, &traceback);
    va_list parts;
    va_start(parts, place);
    Owned where = Owned::steal(PyString_FromFormatV(place, parts));
    va_end(parts);
    Owned text = Owned::steal(where && value ? PyObject_Str(value) : nullptr);
    if (text) {
        PyErr_Format(type, "%.400s: %.300s", PyString_AS_STRING(where.get()), PyString_AS_STRING(text.get()));
        Py_XDECREF(type);
        Py_XDECREF(value);
        Py_XDECREF(traceback);
    } else {
        PyErr_Clear();
        PyErr_Restore(type, value, traceback);
    }
    return false;
}

void make_ints(PyObject *list)
{
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list); ++i) {
        PyObject *number = PyList_GET_ITEM(list, i);
        // One that does not fit stays a long.
        PyObject *made = PyLong_CheckExact(number) ? PyNumber_Int(number) : nullptr;
        if (made) {
            PyList_SetItem(list, i, made);
        }
    }
    PyErr_Clear();
}

bool raise_wrong_value(const CType &type, PyObject *value)
{
    if (!PyErr_Occurred()) {
        PyErr_Format(PyExc_TypeError, "a value of type '%.200s' is wanted, not %.100s", name_of(type),
                     value == Py_None ? "None" : Py_TYPE(value)->tp_name);
    }
    return false;
}

}  // namespace quorel
