#include "names.h"

#include "module/tables.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace quorel {

namespace {

struct Numbers {
    const uint16_t *first;
    size_t count;
};

const char *name_of_constant(uint16_t number)
{
    return constant_names + constant_starts[number];
}

Numbers in_enumeration(const char *name)
{
    const CEnumeration *end = enumerations + enumeration_count;
    const CEnumeration *found =
        std::lower_bound(enumerations, end, name, [](const CEnumeration &enumeration, const char *wanted) {
            return std::strcmp(enumeration_names + enumeration.name, wanted) < 0;
        });
    bool is_it = found != end && std::strcmp(enumeration_names + found->name, name) == 0;
    return is_it ? Numbers{enumerated_constants + found->first, found->count} : Numbers{nullptr, 0};
}

// Sorted by name.
Numbers with_prefix(const char *prefix)
{
    const size_t length = std::strlen(prefix);
    const uint16_t *end = constants_by_name + constant_count;
    const uint16_t *first =
        std::lower_bound(constants_by_name, end, prefix, [=](uint16_t number, const char *wanted) {
            return std::strncmp(name_of_constant(number), wanted, length) < 0;
        });
    const uint16_t *last = std::upper_bound(first, end, prefix, [=](const char *wanted, uint16_t number) {
        return std::strncmp(wanted, name_of_constant(number), length) < 0;
    });
    return {first, static_cast<size_t>(last - first)};
}

NewReference list_of(Numbers numbers)
{
    Owned list = Owned::steal(PyList_New(static_cast<Py_ssize_t>(numbers.count)));
    for (size_t i = 0; list && i < numbers.count; ++i) {
        const uint16_t number = numbers.first[i];
        PyObject *pair = Py_BuildValue("si", name_of_constant(number), constant_values[number]);
        if (!pair) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), pair);
    }
    return list.release();
}

}  // namespace

const char *enumerator_of(const char *enumeration, int32_t number)
{
    const Numbers all = in_enumeration(enumeration);
    const uint16_t *end = all.first + all.count;
    const uint16_t *found =
        std::find_if(all.first, end, [=](uint16_t constant) { return constant_values[constant] == number; });
    return found == end ? nullptr : name_of_constant(*found);
}

bool find_enumerator(const char *enumeration, const char *name, int32_t *number)
{
    const Numbers all = in_enumeration(enumeration);
    const uint16_t *end = all.first + all.count;
    const uint16_t *found = std::find_if(all.first, end, [=](uint16_t constant) {
        return std::strcmp(name_of_constant(constant), name) == 0;
    });
    if (found != end) {
        *number = constant_values[*found];
    }
    return found != end;
}

NewReference list_constants(PyObject *, PyObject *group)
{
    if (!PyString_Check(group)) {
        PyErr_Format(PyExc_TypeError, "constants are named by a str, not by %.100s", Py_TYPE(group)->tp_name);
        return nullptr;
    }
    const char *name = PyString_AS_STRING(group);
    const Numbers enumerated = in_enumeration(name);
    if (enumerated.count != 0) {
        return list_of(enumerated);
    }
    const Numbers sorted = with_prefix(name);
    if (sorted.count == 0) {
        PyErr_Format(PyExc_ValueError, "no constant begins with '%.200s', nor is it an enumeration", name);
        return nullptr;
    }
    std::unique_ptr<uint16_t, decltype(&PyMem_Free)> numbers(PyMem_New(uint16_t, sorted.count), PyMem_Free);
    if (!numbers) {
        return PyErr_NoMemory();
    }
    std::copy_n(sorted.first, sorted.count, numbers.get());
    std::sort(numbers.get(), numbers.get() + sorted.count);
    return list_of({numbers.get(), sorted.count});
}

}  // namespace quorel
