#include "registrations.h"

#include "callback.h"

#include <cstdint>
#include <new>
#include <string_view>
#include <utility>

namespace quorel {

namespace {

struct Registration {
    Owned callback;
    const char *function;  ///< that registered it
    long unit, number;     ///< the first arguments; -1 for what is none
    Registration *next;
};

Registration *registrations;

std::string_view name_of_function(PyObject *function)
{
    return reinterpret_cast<PyCFunctionObject *>(function)->m_ml->ml_name;
}

// A number among the arguments. All functions that register begin with the unit.
long number_at(PyObject *args, Py_ssize_t place)
{
    PyObject *object = place < PyTuple_GET_SIZE(args) ? PyTuple_GET_ITEM(args, place) : nullptr;
    return object && PyInt_Check(object) ? PyInt_AS_LONG(object) : -1;
}

bool is_callback(PyObject *object)
{
    return Py_TYPE(object) == &Callback_Type;
}

bool has_callback(PyObject *args)
{
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(args); ++i) {
        if (is_callback(PyTuple_GET_ITEM(args, i))) {
            return true;
        }
    }
    return false;
}

// Whether one function is named as the other, "_unregister" in place of "_register".
bool ends_what(std::string_view unregistering, std::string_view registering)
{
    constexpr std::string_view end = "_register", other_end = "_unregister";
    return registering.size() >= end.size() && unregistering.size() >= other_end.size()
           && registering.substr(0, registering.size() - end.size())
                  == unregistering.substr(0, unregistering.size() - other_end.size());
}

// Lets go of up to `most` of those that are meant. What that runs may come back here.
template <typename Meant>
void drop(size_t most, Meant is_meant)
{
    Registration *dropped = nullptr;
    for (Registration **place = &registrations; *place && most > 0;) {
        Registration *one = *place;
        if (is_meant(*one)) {
            *place = std::exchange(one->next, dropped);
            dropped = one;
            --most;
        } else {
            place = &one->next;
        }
    }
    while (dropped) {
        delete std::exchange(dropped, dropped->next);
    }
}

}  // namespace

void note_registration(Keeping keeping, PyObject *function, PyObject *args)
{
    const long unit = number_at(args, 0), number = number_at(args, 1);
    if (keeping == Keeping::unregisters && !has_callback(args)) {
        drop(SIZE_MAX, [&](const Registration &one) {
            return one.unit == unit && (number == -1 || one.number == number)
                   && ends_what(name_of_function(function), one.function);
        });
        return;
    }
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(args); ++i) {
        PyObject *object = PyTuple_GET_ITEM(args, i);
        if (!is_callback(object)) {
            continue;
        }
        if (keeping == Keeping::unregisters) {
            drop(1,
                 [&](const Registration &one) { return one.callback.get() == object && one.unit == unit; });
            continue;
        }
        Owned callback = Owned::share(object);
        auto *one = new (std::nothrow)
            Registration{std::move(callback), name_of_function(function).data(), unit, number, registrations};
        if (one) {
            registrations = one;
        } else {
            // The SDK may call it. What there is no memory to note stays for ever.
            Owned::share(object).release();
        }
    }
}

NewReference forget_registrations(PyObject *, PyObject *unit)
{
    const long number = PyInt_AsLong(unit);
    if (number == -1 && PyErr_Occurred()) {
        return nullptr;
    }
    drop(SIZE_MAX, [&](const Registration &one) { return one.unit == number; });
    return new_none();
}

}  // namespace quorel
