#include "port_list.h"

#include <cstring>

namespace quorel {

namespace {

constexpr unsigned word_bits = 32;
constexpr unsigned words = sizeof(bcm_pbmp_t) / sizeof(uint32_t);
constexpr unsigned ports = words * word_bits;
// Meant: what reads bitmaps never looked at the last 17 ports, and scripts know lists without them.
constexpr unsigned listed_ports = ports - 17;

}  // namespace

bool to_port_list(Borrowed list, bcm_pbmp_t *bitmap)
{
    if (!PyList_Check(list.operator PyObject *())) {
        PyErr_SetString(PyExc_TypeError, "Expected a list");
        return false;
    }
    uint32_t bits[words] = {};
    for (Py_ssize_t i = 0, size = PyList_GET_SIZE(list.operator PyObject *()); i < size; ++i) {
        PyObject *item = PyList_GET_ITEM(list.operator PyObject *(), i);
        // A number that the 32-bit target has as a long is none of an int's on a wider host.
        if (!PyInt_Check(item) || PyInt_AS_LONG(item) != static_cast<int32_t>(PyInt_AS_LONG(item))) {
            PyErr_SetString(PyExc_TypeError, "Port list must contain integers");
            return false;
        }
        unsigned long port = PyLong_AsUnsignedLong(item);
        if (port >= ports) {
            if (!PyErr_Occurred()) {
                PyErr_Format(PyExc_ValueError, "Port %lu is outside the port bitmap (0 to %u)", port,
                             ports - 1);
            }
            return false;
        }
        bits[port / word_bits] |= uint32_t{1} << (port % word_bits);
    }
    std::memcpy(bitmap, bits, sizeof bits);
    return true;
}

namespace {

// Lists share one long for each port, made when it is first listed: longs cannot change, and making them is
// what costs. Borrowed; null with an exception when memory is short.
PyObject *port_number(unsigned port)
{
    static PyObject *numbers[listed_ports];
    if (!numbers[port]) {
        numbers[port] = PyLong_FromUnsignedLong(port);
    }
    return numbers[port];
}

}  // namespace

NewReference from_port_list(const bcm_pbmp_t &bitmap)
{
    uint32_t bits[words];
    std::memcpy(bits, &bitmap, sizeof bits);
    constexpr uint32_t listed_in_last_word = (uint32_t{1} << listed_ports % word_bits) - 1;
    static_assert(listed_ports / word_bits == words - 1, "the ports never listed are all in the last word");
    bits[words - 1] &= listed_in_last_word;

    unsigned size = 0;
    for (uint32_t word : bits) {
        size += static_cast<unsigned>(__builtin_popcount(word));
    }
    Owned list = Owned::steal(PyList_New(size));
    Py_ssize_t item = 0;
    for (unsigned word = 0; list && word < words; ++word) {
        for (uint32_t rest = bits[word]; rest != 0; rest &= rest - 1) {
            PyObject *number = port_number(word * word_bits + static_cast<unsigned>(__builtin_ctz(rest)));
            if (!number) {
                return nullptr;
            }
            PyList_SET_ITEM(list.get(), item++, Owned::share(number).release());
        }
    }
    return list.release();
}

NewReference get_port_list(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    if (!self) {
        return nullptr;
    }
    bcm_pbmp_t bitmap;
    std::memcpy(&bitmap, self.at(row.offset), sizeof bitmap);
    return from_port_list(bitmap);
}

NewReference set_port_list(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    bcm_pbmp_t bitmap;
    if (setter.failed || !to_port_list(setter.value, &bitmap)) {
        return nullptr;
    }
    if (setter.self) {
        std::memcpy(setter.self.at(row.offset), &bitmap, sizeof bitmap);
    }
    return new_none();
}

}  // namespace quorel
