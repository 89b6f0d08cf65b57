// Python functions that C calls with a datum: parameters `callable` of a binding.
//
// C gets a function of its own with the Python function as datum. The bound function has one at a time: the Python
// function lives until the next call of that bound function has returned, and None is no function. It is called with
// the arguments that C gives, numbers, text or None, bytes as a str, and arrays of text as lists, without the datum and
// without how many bytes or texts there are. Where C wants a number, None is 0.
//
// An exception makes the result -1, and nothing else in Python is called until it comes out of the bound function
// that the thread is in. Of a thread that no Python function runs in, it is printed.
#pragma once

#include "convert.h"

#include <tuple>
#include <type_traits>

namespace [[gnu::visibility("hidden")]] quorel {

/// What can be called, or None. *value is borrowed.
inline Status to_callable(PyObject *object, PyObject **value)
{
    if (object != Py_None && !PyCallable_Check(object)) {
        return Status::type;
    }
    *value = object;
    return Status::ok;
}

/// A call from C into Python: holds the interpreter lock, and the arguments that are made.
class CallFromC {
public:
    explicit CallFromC(Py_ssize_t most_arguments);
    ~CallFromC();
    CallFromC(const CallFromC &) = delete;
    CallFromC &operator=(const CallFromC &) = delete;

    /// Takes over an argument; null is a failure.
    void add(NewReference argument);
    /// Calls the function if all is well; false, and the exception is left or printed, if it was not.
    bool call(PyObject *function, int32_t *result);

private:
    bool has_lock_ = false;
    bool may_call_ = false;
    bool is_inner_ = false;  ///< whether a bound function of this thread waits, which tells of the exception
    PyGILState_STATE state_ = {};
    PyObject *arguments_ = nullptr;
    Py_ssize_t count_ = 0;
};

inline void add_arguments(CallFromC &) {}
inline void add_arguments(CallFromC &, void *) {}

/// A list of `count` texts.
NewReference from_texts(int count, char **texts);

template <typename... Rest>
void add_arguments(CallFromC &call, const char *text, Rest... rest);

/// How many there are of each of the arrays that follow.
template <typename... Rest>
void add_arguments(CallFromC &call, int count, char **texts, Rest... rest)
{
    call.add(from_texts(count, texts));
    if constexpr (sizeof...(Rest) > 0) {
        if constexpr (std::is_same_v<std::tuple_element_t<0, std::tuple<Rest...>>, char **>) {
            add_arguments(call, count, rest...);
        } else {
            add_arguments(call, rest...);
        }
    }
}

template <typename... Rest>
void add_arguments(CallFromC &call, const char *text, Rest... rest)
{
    call.add(from_string(text));
    add_arguments(call, rest...);
}

template <typename Count, typename... Rest>
void add_arguments(CallFromC &call, const unsigned char *bytes, Count count, Rest... rest)
{
    call.add(
        PyString_FromStringAndSize(reinterpret_cast<const char *>(bytes), static_cast<Py_ssize_t>(count)));
    add_arguments(call, rest...);
}

template <typename Count, typename... Rest>
void add_arguments(CallFromC &call, const void *bytes, Count count, Rest... rest)
{
    add_arguments(call, static_cast<const unsigned char *>(bytes), count, rest...);
}

template <typename Number, typename... Rest, std::enable_if_t<!std::is_pointer_v<Number>, int> = 0>
void add_arguments(CallFromC &call, Number number, Rest... rest)
{
    if constexpr (std::is_floating_point_v<Number>) {
        call.add(PyFloat_FromDouble(static_cast<double>(number)));
    } else if constexpr (std::is_enum_v<Number>
                         || (std::is_signed_v<Number> && sizeof number <= sizeof(long))) {
        call.add(PyInt_FromLong(static_cast<long>(number)));
    } else if constexpr (std::is_signed_v<Number>) {
        call.add(from_int64(number));
    } else {
        call.add(from_uint64(static_cast<uint64_t>(number)));
    }
    add_arguments(call, rest...);
}

/// Where the datum stands among a function's parameters.
enum class Datum { last, first };

template <typename Function, Datum place>
struct CallableFunction;

template <typename Result, typename... Parameters, Datum place>
struct CallableFunction<Result (*)(Parameters...), place> {
    static Result call(Parameters... parameters)
    {
        CallFromC call(sizeof...(Parameters));
        if constexpr (place == Datum::first) {
            [&call](void *, auto... rest) { add_arguments(call, rest...); }(parameters...);
        } else {
            add_arguments(call, parameters...);
        }
        int32_t result = 0;
        const bool done =
            call.call(static_cast<PyObject *>(std::get<datum>(std::tie(parameters...))), &result);
        if constexpr (!std::is_void_v<Result>) {
            return static_cast<Result>(done ? result : -1);
        }
    }

private:
    static constexpr size_t datum = place == Datum::first ? 0 : sizeof...(Parameters) - 1;
};

/// A call of a bound function with a new Python function: what takes its place lives on, and the one before it is let
/// go when the call is over.
class KeptCallable {
public:
    KeptCallable(PyObject *&now, PyObject *next);
    ~KeptCallable();
    KeptCallable(const KeptCallable &) = delete;
    KeptCallable &operator=(const KeptCallable &) = delete;

    template <typename Function, Datum place = Datum::last>
    Function function() const
    {
        return next_ ? CallableFunction<Function, place>::call : nullptr;
    }
    void *datum() const { return next_; }
    /// What C said: if it refused, the one before stays.
    int32_t taken(int32_t status)
    {
        if (status < 0) {
            std::swap(now_, before_);
        }
        return status;
    }

private:
    PyObject *&now_;
    PyObject *next_, *before_;
};

}  // namespace quorel
