#include "bits.h"

#include "names.h"
#include "values.h"

#include <cstring>

namespace quorel {

namespace {

constexpr unsigned word_bits = 32;

const char *names_of(const CType &set)
{
    return name_of(c_types[set.target]);
}

bool write_number(const CType &type, char *address, PyObject *value)
{
    Owned number = Owned::steal(PyNumber_Long(value));
    if (!number) {
        return false;
    }
    if (_PyLong_Sign(number.get()) < 0) {
        PyErr_Format(PyExc_OverflowError, "a number below 0 does not fit in '%.200s'", name_of(type));
        return false;
    }
    if (_PyLong_NumBits(number.get()) > type.size * size_t{8}) {
        PyErr_Format(PyExc_OverflowError, "the number does not fit in the %u bits of '%.200s'", type.size * 8,
                     name_of(type));
        return false;
    }
    return _PyLong_AsByteArray(reinterpret_cast<PyLongObject *>(number.get()),
                               reinterpret_cast<unsigned char *>(address), type.size, 1, 0)
           == 0;
}

// The number of a bit by its number or name; less than 0 with an exception.
Py_ssize_t bit_of(const CType &type, PyObject *item)
{
    Owned text = Owned::steal(PyUnicode_Check(item) ? PyCodec_Encode(item, "ascii", nullptr)
                                                    : Owned::share(item).release());
    if (!text) {
        return -1;
    }
    Py_ssize_t bit = -1;
    if (PyString_Check(text.get())) {
        int32_t number;
        if (!find_enumerator(names_of(type), PyString_AS_STRING(text.get()), &number)) {
            PyErr_Format(PyExc_ValueError, "'%.200s' is none of '%.200s'", PyString_AS_STRING(text.get()),
                         names_of(type));
            return -1;
        }
        bit = number;
    } else if (PyInt_Check(item) || PyLong_Check(item)) {
        bit = PyNumber_AsSsize_t(item, nullptr);
    } else {
        raise_wrong_value(c_types[type.target], item);
        return -1;
    }
    if (bit < 0 || bit >= static_cast<Py_ssize_t>(type.size) * 8) {
        PyErr_Format(PyExc_OverflowError, "'%.200s' has no bit %zd", name_of(type), bit);
        return -1;
    }
    return bit;
}

}  // namespace

NewReference read_bits(const char *address, size_t size)
{
    Owned list = Owned::steal(PyList_New(0));
    for (size_t offset = 0; list && offset + sizeof(uint32_t) <= size; offset += sizeof(uint32_t)) {
        uint32_t word;
        std::memcpy(&word, address + offset, sizeof word);
        for (; word != 0; word &= word - 1) {
            auto bit = static_cast<long>(offset / sizeof word * word_bits) + __builtin_ctz(word);
            Owned number = Owned::steal(PyInt_FromLong(bit));
            if (!number || PyList_Append(list.get(), number.get()) != 0) {
                return nullptr;
            }
        }
    }
    return list.release();
}

NewReference read_named_bits(const CType &type, const char *address)
{
    Owned bits = Owned::steal(read_bits(address, type.size));
    for (Py_ssize_t i = 0; bits && i < PyList_GET_SIZE(bits.get()); ++i) {
        auto bit = static_cast<int32_t>(PyInt_AS_LONG(PyList_GET_ITEM(bits.get(), i)));
        const char *name = enumerator_of(names_of(type), bit);
        PyObject *text = name ? PyString_FromString(name) : nullptr;
        if (name && !text) {
            return nullptr;
        }
        if (text) {
            PyList_SetItem(bits.get(), i, text);
        }
    }
    return bits.release();
}

bool write_bits(const CType &type, char *address, PyObject *value)
{
    if (PyInt_Check(value) || PyLong_Check(value)) {
        return write_number(type, address, value);
    }
    Owned items =
        Owned::steal(PyList_Check(value) || PyTuple_Check(value) ? PySequence_Tuple(value) : nullptr);
    if (type.kind != Kind::bit_set || !items) {
        return raise_wrong_value(type, value);
    }
    Owned words = Owned::steal(PyString_FromStringAndSize(nullptr, static_cast<Py_ssize_t>(type.size)));
    if (!words) {
        return false;
    }
    char *bytes = PyString_AS_STRING(words.get());
    std::memset(bytes, 0, type.size);
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        Py_ssize_t bit = bit_of(type, PyTuple_GET_ITEM(items.get(), i));
        if (bit < 0) {
            return say_where("element %zd", i);
        }
        char *place = bytes + bit / word_bits * static_cast<Py_ssize_t>(sizeof(uint32_t));
        uint32_t word;
        std::memcpy(&word, place, sizeof word);
        word |= uint32_t{1} << bit % word_bits;
        std::memcpy(place, &word, sizeof word);
    }
    std::memcpy(address, bytes, type.size);
    return true;
}

}  // namespace quorel
