#include "callback.h"

#include <cstring>

namespace quorel {

namespace {

constexpr char marker[] = "swig_ptr: ";

int digit_value(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Reads a pointer's bytes, high digit first in each; returns what follows them, or null. The text may end
// anywhere: its NUL is no digit.
const char *unpack_pointer(const char *text, void **pointer)
{
    unsigned char bytes[sizeof *pointer];
    for (unsigned char &byte : bytes) {
        int high = digit_value(*text);
        int low = high < 0 ? -1 : digit_value(text[1]);
        if (low < 0) {
            return nullptr;
        }
        byte = static_cast<unsigned char>(high << 4 | low);
        text += 2;
    }
    std::memcpy(pointer, bytes, sizeof bytes);
    return text;
}

}  // namespace

Status to_packed_callback(PyObject *function, swig_type_info *type, void **address)
{
    const char *doc = reinterpret_cast<PyCFunctionObject *>(function)->m_ml->ml_doc;
    const char *packed = doc ? std::strstr(doc, marker) : nullptr;
    if (!packed) {
        return Status::unknown;
    }
    packed += std::strlen(marker);
    if (*packed != '_') {
        if (std::strcmp(packed, "NULL") != 0) {
            return Status::unknown;
        }
        *address = nullptr;
        return Status::ok;
    }
    void *unpacked;
    const char *name = unpack_pointer(packed + 1, &unpacked);
    if (!name) {
        return Status::unknown;
    }
    swig_type_info given = {};
    given.name = name;
    swig_cast_info *cast = find_cast(&given, type);
    if (!cast) {
        return Status::unknown;
    }
    int new_memory = 0;
    if (cast->converter) {
        unpacked = cast->converter(unpacked, &new_memory);
    }
    // There is no such thing as a function on the heap.
    if (new_memory) {
        return Status::system;
    }
    *address = unpacked;
    return Status::ok;
}

NewReference set_callback(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    HeldPointer pointer;
    Status status = to_callback(setter.value, arguments[row.value].type, &pointer);
    if (status != Status::ok) {
        return raise_value(row, status);
    }
    if (setter.self) {
        std::memcpy(setter.self.at(row.offset), &pointer.address, sizeof pointer.address);
    }
    return new_none();
}

bool set_callback_variable(const VariableRow &row, PyObject *value)
{
    HeldPointer pointer;
    return store_pointer_variable(row, to_callback(value, arguments[row.value].type, &pointer), pointer);
}

}  // namespace quorel
