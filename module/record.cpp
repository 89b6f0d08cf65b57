#include "record.h"

#include "member_value.h"
#include "refinements.h"
#include "string_storage.h"

#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace quorel {

namespace {

// The record behind `self` in the usual case: a pointer object, or the proxy of one, of the record's very type.
// Null says only that the general conversion has to decide.
inline char *usual_self(PyObject *object, const MemberRow &row)
{
    SwigPyObject *pointer = likely_pointer_object(object);
    if (!pointer || pointer->ty != types[arguments[row.self].type]) {
        return nullptr;
    }
    return static_cast<char *>(pointer->ptr);
}

// The general case and the usual one are functions of their own, so that the latter needs no stack frame.
template <typename Value, NewReference (*convert)(Value)>
NewReference get_value(const MemberRow &row, PyObject *args)
{
    if (__builtin_expect(PyTuple_GET_SIZE(args) == 1, true)) {
        if (const char *self = usual_self(PyTuple_GET_ITEM(args, 0), row)) {
            Value value;
            std::memcpy(&value, self + row.offset, sizeof value);
            return convert(value);
        }
    }
    return get_value_generally<Value, convert>(row, args);
}

// Integers only: the usual value is an exact int that the member can hold.
template <typename Value, Status (*convert)(PyObject *, Value *)>
NewReference set_value(const MemberRow &row, PyObject *args)
{
    if (__builtin_expect(PyTuple_GET_SIZE(args) == 2, true)) {
        char *self = usual_self(PyTuple_GET_ITEM(args, 0), row);
        PyObject *object = PyTuple_GET_ITEM(args, 1);
        if (self && PyInt_CheckExact(object)) {
            long number = PyInt_AS_LONG(object);
            auto value = static_cast<Value>(number);
            if (static_cast<long>(value) == number && (std::is_signed_v<Value> || number >= 0)) {
                std::memcpy(self + row.offset, &value, sizeof value);
                return new_none();
            }
        }
    }
    return set_value_generally<Value, convert>(row, args);
}

// The accessors are called <record>_<member>_get and _set.
NewReference raise_null_array(const MemberRow &row)
{
    constexpr size_t suffix = 4;
    const char *member = method_name(row.getter) + row.name_offset;
    return raise_variable_error(member, std::strlen(member) - suffix, text_of(row.value),
                                Status::null_reference);
}

NewReference store_pointer(const SetterArguments &setter, const MemberRow &row, void *pointer)
{
    if (setter.self) {
        std::memcpy(setter.self.at(row.offset), &pointer, sizeof pointer);
    }
    return new_none();
}

}  // namespace

NewReference new_record(const RecordRow &row, PyObject *args)
{
    if (PyTuple_GET_SIZE(args) != 0) {
        return raise_arity(row.constructor, args, 0);
    }
    // Not calloc(): the C library's takes nothing from the thread's cache of freed blocks, at three times the
    // cost. Clearing only now keeps the compiler from making a calloc() of the two.
    void *record = std::malloc(row.size);
    if (!record) {
        return PyErr_NoMemory();
    }
    PyObject *pointer = new_pointer_object(record, types[arguments[row.self].type], Ownership::owned);
    if (pointer) {
        std::memset(record, 0, row.size);
    } else {
        std::free(record);
    }
    return pointer;
}

void *copy_of(const void *record, size_t size)
{
    void *copy = std::malloc(size);
    if (copy) {
        std::memcpy(copy, record, size);
    }
    return copy;
}

NewReference from_copy(const void *record, size_t size, uint16_t type)
{
    void *copy = copy_of(record, size);
    if (!copy) {
        return PyErr_NoMemory();
    }
    PyObject *bare = new_pointer_object(copy, types[type], Ownership::owned);
    if (!bare) {
        std::free(copy);
    }
    return bare ? with_proxy(Owned::steal(bare)) : nullptr;
}

bool take_from_owner(PyObject *args, uint16_t method, uint16_t self, HeldPointer *object)
{
    if (PyTuple_GET_SIZE(args) != 1) {
        raise_arity(method, args, 1);
        return false;
    }
    Status status =
        convert_pointer(PyTuple_GET_ITEM(args, 0), types[arguments[self].type], object, Disown::yes);
    if (status != Status::ok) {
        raise_argument_error(method_name(method), 1, text_of(self), status);
        return false;
    }
    return may_be_freed(*object, method_name(method));
}

NewReference register_proxy_class(PyObject *args, uint16_t method, uint16_t self)
{
    if (PyTuple_GET_SIZE(args) != 1) {
        return raise_arity(method, args, 1);
    }
    Status status = register_class(types[arguments[self].type], PyTuple_GET_ITEM(args, 0));
    if (status != Status::ok) {
        return raise_argument_error(method_name(method), 1, "class", status);
    }
    return new_none();
}

NewReference delete_record(const RecordRow &row, PyObject *args)
{
    HeldPointer record;
    if (!take_from_owner(args, static_cast<uint16_t>(row.constructor + 1), row.self, &record)) {
        return nullptr;
    }
    std::free(record.address);
    return new_none();
}

NewReference register_record(const RecordRow &row, PyObject *args)
{
    return register_proxy_class(args, static_cast<uint16_t>(row.constructor + 2), row.self);
}

HeldPointer self_of_getter(const MemberRow &row, PyObject *args)
{
    if (__builtin_expect(PyTuple_GET_SIZE(args) != 1, false)) {
        raise_arity(row.getter, args, 1);
        return {};
    }
    HeldPointer self;
    Status status = to_value(PyTuple_GET_ITEM(args, 0), arguments[row.self].type, &self);
    if (__builtin_expect(status != Status::ok, false)) {
        raise_argument_error(method_name(row.getter), 1, text_of(row.self), status);
        return {};
    }
    return self;
}

SetterArguments arguments_of_setter(const MemberRow &row, PyObject *args)
{
    auto method = static_cast<uint16_t>(row.getter - 1);
    if (__builtin_expect(PyTuple_GET_SIZE(args) != 2, false)) {
        raise_arity(method, args, 2);
        return {{}, nullptr, true};
    }
    HeldPointer self;
    Status status = to_pointer(PyTuple_GET_ITEM(args, 0), arguments[row.self].type, &self);
    if (__builtin_expect(status != Status::ok, false)) {
        raise_argument_error(method_name(method), 1, text_of(row.self), status);
        return {{}, nullptr, true};
    }
    return {std::move(self), PyTuple_GET_ITEM(args, 1), false};
}

NewReference raise_value(const MemberRow &row, Status status)
{
    return raise_argument_error(method_name(static_cast<uint16_t>(row.getter - 1)), 2, text_of(row.value),
                                status);
}

NewReference get_int32(const MemberRow &row, PyObject *args)
{
    return get_value<int32_t, from_int32>(row, args);
}

NewReference set_int32(const MemberRow &row, PyObject *args)
{
    return set_value<int32_t, to_int32>(row, args);
}

NewReference get_uint32(const MemberRow &row, PyObject *args)
{
    return get_value<uint32_t, from_uint32>(row, args);
}

NewReference set_uint32(const MemberRow &row, PyObject *args)
{
    return set_value<uint32_t, to_uint32>(row, args);
}

NewReference get_int8(const MemberRow &row, PyObject *args)
{
    return get_value<int8_t, from_int8>(row, args);
}

NewReference set_int8(const MemberRow &row, PyObject *args)
{
    return set_value<int8_t, to_int8>(row, args);
}

NewReference get_uint8(const MemberRow &row, PyObject *args)
{
    return get_value<uint8_t, from_uint8>(row, args);
}

NewReference set_uint8(const MemberRow &row, PyObject *args)
{
    return set_value<uint8_t, to_uint8>(row, args);
}

NewReference get_uint16(const MemberRow &row, PyObject *args)
{
    return get_value<uint16_t, from_uint16>(row, args);
}

NewReference set_uint16(const MemberRow &row, PyObject *args)
{
    return set_value<uint16_t, to_uint16>(row, args);
}

NewReference get_uint64(const MemberRow &row, PyObject *args)
{
    return get_value<uint64_t, from_uint64>(row, args);
}

NewReference set_uint64(const MemberRow &row, PyObject *args)
{
    return set_value<uint64_t, to_uint64>(row, args);
}

NewReference get_int16(const MemberRow &row, PyObject *args)
{
    return get_value<int16_t, from_int16>(row, args);
}

NewReference set_int16(const MemberRow &row, PyObject *args)
{
    return set_value<int16_t, to_int16>(row, args);
}

NewReference get_int64(const MemberRow &row, PyObject *args)
{
    return get_value<int64_t, from_int64>(row, args);
}

NewReference set_int64(const MemberRow &row, PyObject *args)
{
    return set_value<int64_t, to_int64>(row, args);
}

NewReference get_float(const MemberRow &row, PyObject *args)
{
    return get_value<float, from_float>(row, args);
}

NewReference set_float(const MemberRow &row, PyObject *args)
{
    return set_value_generally<float, to_float>(row, args);
}

NewReference get_double(const MemberRow &row, PyObject *args)
{
    return get_value<double, from_double>(row, args);
}

NewReference set_double(const MemberRow &row, PyObject *args)
{
    return set_value_generally<double, to_double>(row, args);
}

NewReference get_char(const MemberRow &row, PyObject *args)
{
    return get_value<char, from_char>(row, args);
}

NewReference set_char(const MemberRow &row, PyObject *args)
{
    return set_value_generally<char, to_char>(row, args);
}

NewReference get_bool(const MemberRow &row, PyObject *args)
{
    // The record may hold any byte; a C bool with another value than 0 and 1 must not be loaded as one.
    HeldPointer self = self_of_getter(row, args);
    return self ? from_bool(*self.at(row.offset) != 0) : nullptr;
}

NewReference set_bool(const MemberRow &row, PyObject *args)
{
    return set_value_generally<bool, to_bool>(row, args);
}

NewReference get_string(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    if (!self) {
        return nullptr;
    }
    const char *text;
    std::memcpy(&text, self.at(row.offset), sizeof text);
    return from_string(text);
}

NewReference set_string(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    char *text = nullptr;
    auto *place = setter.self ? reinterpret_cast<char **>(setter.self.at(row.offset)) : &text;
    Status status = replace_string(setter.value, place);
    delete[] text;
    return status == Status::ok ? new_none() : raise_value(row, status);
}

NewReference get_text(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    if (!self) {
        return nullptr;
    }
    const char *text = self.at(row.offset);
    return PyString_FromStringAndSize(text, static_cast<Py_ssize_t>(strnlen(text, row.size)));
}

NewReference set_text(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    if (!PyString_Check(setter.value)) {
        return raise_value(row, Status::type);
    }
    const auto size = static_cast<size_t>(PyString_GET_SIZE(setter.value));
    if (size > row.size) {
        return raise_value(row, Status::overflow);
    }
    if (setter.self) {
        char *text = setter.self.at(row.offset);
        std::memcpy(text, PyString_AS_STRING(setter.value), size);
        std::memset(text + size, 0, row.size - size);
    }
    return new_none();
}

NewReference get_copy(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    if (!self) {
        return nullptr;
    }
    const uint16_t type = arguments[row.value].type;
    NewReference refined = read_refined(types[type], self.at(row.offset));
    return refined || PyErr_Occurred() ? refined : from_copy(self.at(row.offset), row.size, type);
}

NewReference get_storage(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    return self ? wrap_part(self, self.at(row.offset), types[arguments[row.value].type]) : nullptr;
}

NewReference set_array(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    HeldPointer elements;
    Status status = to_pointer(setter.value, arguments[row.value].type, &elements);
    if (status != Status::ok) {
        return raise_value(row, status);
    }
    if (!elements) {
        return raise_null_array(row);
    }
    if (setter.self) {
        std::memmove(setter.self.at(row.offset), elements.address, row.size);
    }
    return new_none();
}

NewReference set_record(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    HeldPointer record;
    Status status = to_value(setter.value, arguments[row.value].type, &record);
    if (status != Status::ok) {
        bool refined =
            setter.self
            && write_refined(types[arguments[row.value].type], setter.self.at(row.offset), setter.value);
        return refined ? new_none() : PyErr_Occurred() ? nullptr : raise_value(row, status);
    }
    if (setter.self) {
        std::memmove(setter.self.at(row.offset), record.address, row.size);
    }
    return new_none();
}

NewReference get_pointer(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    if (!self) {
        return nullptr;
    }
    void *pointer;
    std::memcpy(&pointer, self.at(row.offset), sizeof pointer);
    return wrap_part(self, pointer, types[arguments[row.value].type]);
}

NewReference set_pointer(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    HeldPointer pointer;
    Status status = to_pointer(setter.value, arguments[row.value].type, &pointer);
    return status == Status::ok ? store_pointer(setter, row, pointer.address) : raise_value(row, status);
}

NewReference set_any_pointer(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    HeldPointer pointer;
    Status status = convert_pointer(setter.value, nullptr, &pointer, Disown::yes);
    return status == Status::ok ? store_pointer(setter, row, pointer.address) : raise_value(row, status);
}

}  // namespace quorel
