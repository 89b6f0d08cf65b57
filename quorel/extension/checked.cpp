#include "checked.h"

#include "callback.h"
#include "module/builtin_call.h"
#include "module/pointer_object.h"
#include "output.h"
#include "values.h"

#include <cstring>

namespace quorel {

namespace {

constexpr size_t most_outputs = 24;

// The arguments without the function.
Owned without_first(PyObject *args)
{
    Py_ssize_t count = PyTuple_GET_SIZE(args) - 1;
    Owned rest = Owned::steal(PyTuple_New(count));
    for (Py_ssize_t i = 0; rest && i < count; ++i) {
        PyTuple_SET_ITEM(rest.get(), i, Owned::share(PyTuple_GET_ITEM(args, i + 1)).release());
    }
    return rest;
}

// `all`: the arguments of checked().
__attribute__((cold)) NewReference raise_status(PyObject *all, PyObject *status)
{
    Owned args = without_first(all);
    if (!args) {
        return nullptr;
    }
    static PyObject *exception;
    if (!exception) {
        Owned errors = Owned::steal(PyImport_ImportModule("quorel.errors"));
        exception = errors ? PyObject_GetAttrString(errors.get(), "StatusError") : nullptr;
        if (!exception) {
            return nullptr;
        }
    }
    Owned error = Owned::steal(
        PyObject_CallFunctionObjArgs(exception, PyTuple_GET_ITEM(all, 0), args.get(), status, nullptr));
    if (error) {
        PyErr_SetObject(exception, error.get());
    }
    return nullptr;
}

// Borrowed.
PyObject *zero()
{
    static PyObject *const number = PyInt_FromLong(0);
    return number;
}

bool is_zero(PyObject *number)
{
    return PyInt_Check(number) ? PyInt_AS_LONG(number) == 0 : PyObject_IsTrue(number) == 0;
}

// What there is in a result beside a status that is good; null for nothing.
struct Judged {
    Owned value;     ///< a result that is no status
    Owned appended;  ///< the output that the binding added
};

// Returns false for a status that is not good, with an exception.
bool judge(const CFunction *described, PyObject *all, Owned result, Judged &judged)
{
    const Answer answer = described ? described->answer : Answer::status;
    PyObject *status = result.get();
    bool adds = answer == Answer::status_first && (PyList_Check(status) || PyTuple_Check(status));
    if (adds && PySequence_Fast_GET_SIZE(status) > 0) {
        status = PySequence_Fast_GET_ITEM(status, 0);
    }
    bool is_status = (PyInt_Check(status) || PyLong_Check(status)) && answer != Answer::value;
    if (is_status && !is_zero(status)) {
        raise_status(all, status);
        return false;
    }
    if (!is_status) {
        judged.value = status == Py_None ? Owned() : std::move(result);
    } else if (adds && PySequence_Fast_GET_SIZE(result.get()) == 2) {
        judged.appended = Owned::share(PySequence_Fast_GET_ITEM(result.get(), 1));
    } else if (adds) {
        judged.value = Owned::steal(PySequence_GetSlice(result.get(), 1, PY_SSIZE_T_MAX));
        for (Py_ssize_t i = 1; judged.value && i < PySequence_Fast_GET_SIZE(result.get()); ++i) {
            PyObject *value = PySequence_Fast_GET_ITEM(result.get(), i);
            if (PyList_CheckExact(value)) {
                make_ints(value);
            }
        }
        return static_cast<bool>(judged.value);
    }
    return true;
}

// The arguments of checked() as those of the function, for as long as this lives: the tuple is the
// interpreter's, made for the one call, so its items can move up instead of being copied into another.
class MovedUp {
public:
    explicit MovedUp(PyObject *all) : all_(reinterpret_cast<PyTupleObject *>(all)), first_(all_->ob_item[0])
    {
        Py_ssize_t count = --Py_SIZE(all_);
        std::memmove(all_->ob_item, all_->ob_item + 1, static_cast<size_t>(count) * sizeof first_);
    }
    ~MovedUp()
    {
        Py_ssize_t count = Py_SIZE(all_)++;
        std::memmove(all_->ob_item + 1, all_->ob_item, static_cast<size_t>(count) * sizeof first_);
        all_->ob_item[0] = first_;
    }
    MovedUp(const MovedUp &) = delete;
    MovedUp &operator=(const MovedUp &) = delete;

private:
    PyTupleObject *all_;
    PyObject *first_;
};

// A call with the arguments as they are.
Owned call(PyObject *function, const CFunction *described, PyObject *args)
{
    if (callback_count == 0) {
        return Owned::steal(call_function(function, args));
    }
    Caller caller;
    Owned result = Owned::steal(call_function(function, args));
    if (caller.raise_error()) {
        return Owned();
    }
    bool taken = result && described && described->keeping != Keeping::no && PyInt_Check(result.get())
                 && PyInt_AS_LONG(result.get()) == 0;
    if (taken) {
        note_registration(described->keeping, args);
    }
    return result;
}

// The binding would take the marker for text: the C function is called from here.
class DirectArguments {
public:
    bool prepare(PyObject *function, const CFunction &described, PyObject *args, const Output *outputs,
                 size_t count)
    {
        for (size_t i = 0; i < described.parameter_count; ++i) {
            const Output *output = nullptr;
            for (size_t j = 0; j < count; ++j) {
                output = outputs[j].place() == i ? &outputs[j] : output;
            }
            if (!prepare(parameter_of(described, i), PyTuple_GET_ITEM(args, static_cast<Py_ssize_t>(i)),
                         output, i)) {
                say_where(function, i);
                return false;
            }
        }
        return true;
    }
    void *const *get() const { return places_; }

private:
    static constexpr size_t most = 16;
    static constexpr size_t largest = 128;

    bool prepare(const CParameter &parameter, PyObject *value, const Output *output, size_t i)
    {
        if (i >= most || parameter.type == none) {
            PyErr_SetString(PyExc_TypeError, "an output in such a call cannot be had");
            return false;
        }
        const CType &type = c_types[parameter.type];
        places_[i] = values_[i];
        if (parameter.way == Way::mac_address && output) {
            places_[i] = output->address();
            return true;
        }
        if (parameter.way == Way::value || parameter.way == Way::mac_address) {
            return type.size <= largest ? write_value(type, values_[i], value)
                                        : raise_wrong_value(type, value);
        }
        HeldPointer &pointer = held_[i];
        pointer.address = output ? output->address() : nullptr;
        swig_type_info *wanted = type.pointer == no_type ? nullptr : types[type.pointer];
        if (!output && convert_pointer(value, wanted, &pointer) != Status::ok) {
            return raise_wrong_value(type, value);
        }
        std::memcpy(values_[i], &pointer.address, sizeof pointer.address);
        return true;
    }

    static void say_where(PyObject *function, size_t place)
    {
        PyObject *type, *value, *traceback;
        PyErr_Fetch(&type, &value, &traceback);
        Owned text = Owned::steal(value ? PyObject_Str(value) : nullptr);
        Owned name = function_name(function), parameter = parameter_name(function, place);
        if (text && name && parameter) {
            PyErr_Format(type, "%.200s(), argument %zu (%.200s): %.300s", PyString_AS_STRING(name.get()),
                         place + 1, PyString_AS_STRING(parameter.get()), PyString_AS_STRING(text.get()));
        }
        Py_XDECREF(type);
        Py_XDECREF(value);
        Py_XDECREF(traceback);
    }

    alignas(8) char values_[most][largest];
    void *places_[most];
    HeldPointer held_[most] = {};
};

Owned call_directly(PyObject *function, const CFunction &described, PyObject *args, const Output *outputs,
                    size_t count)
{
    DirectArguments direct;
    if (!direct.prepare(function, described, args, outputs, count)) {
        return Owned();
    }
    Caller caller;
    int32_t status = direct_calls[described.direct](direct.get());
    return caller.raise_error() ? Owned() : Owned::steal(PyInt_FromLong(status));
}

NewReference raise_count(PyObject *function, const CFunction &described, Py_ssize_t given)
{
    const char *doc = reinterpret_cast<PyCFunctionObject *>(function)->m_ml->ml_doc;
    const char *end = std::strstr(doc, " ->");
    Owned prototype =
        Owned::steal(end ? PyString_FromStringAndSize(doc, end - doc) : PyString_FromString(doc));
    if (prototype) {
        PyErr_Format(PyExc_TypeError, "%.500s takes %d arguments, not %zd",
                     PyString_AS_STRING(prototype.get()), described.parameter_count, given);
    }
    return nullptr;
}

uint64_t number_of(PyObject *appended)
{
    long number = appended && PyInt_Check(appended) ? PyInt_AS_LONG(appended) : -1;
    return number < 0 ? UINT64_MAX : static_cast<uint64_t>(number);
}

// How many elements of an array C says that it wrote.
uint64_t written(const Output &array, const Output *outputs, size_t count, PyObject *appended)
{
    const uint8_t place = array.parameter().count;
    if (place == appended_count) {
        return number_of(appended);
    }
    for (size_t i = 0; place != no_count && i < count; ++i) {
        if (outputs[i].place() == place) {
            return outputs[i].number();
        }
    }
    return UINT64_MAX;
}

NewReference values_of(const Output *outputs, size_t count, Judged judged)
{
    Py_ssize_t size = static_cast<Py_ssize_t>(count) + (judged.value ? 1 : 0) + (judged.appended ? 1 : 0);
    if (size == 1 && count == 1) {
        return outputs[0].value(UINT64_MAX);
    }
    if (size <= 1) {
        return judged.value      ? judged.value.release()
               : judged.appended ? judged.appended.release()
                                 : new_none();
    }
    Py_ssize_t place = 0;
    Owned all = Owned::steal(PyTuple_New(size));
    if (all && judged.value) {
        PyTuple_SET_ITEM(all.get(), place++, judged.value.release());
    }
    for (size_t i = 0; all && i < count; ++i) {
        PyObject *value = outputs[i].value(written(outputs[i], outputs, count, judged.appended.get()));
        if (!value) {
            return nullptr;
        }
        PyTuple_SET_ITEM(all.get(), place++, value);
    }
    if (all && judged.appended) {
        PyTuple_SET_ITEM(all.get(), place, judged.appended.release());
    }
    return all.release();
}

template <size_t most>
NewReference call_with_outputs(const CFunction &described, PyObject *all)
{
    Output outputs[most];
    size_t count = 0;
    PyObject *function = PyTuple_GET_ITEM(all, 0);
    bool directly = false;
    Owned args = Owned::steal(PyTuple_New(described.parameter_count));
    for (Py_ssize_t i = 0; args && i < described.parameter_count; ++i) {
        PyObject *argument = PyTuple_GET_ITEM(all, i + 1);
        if (is_out(argument) && parameter_of(described, static_cast<size_t>(i)).way == Way::in_and_out) {
            argument = zero();
        } else if (is_out(argument)) {
            Output &output = outputs[count++];
            if (!output.prepare(function, described, static_cast<size_t>(i), all)) {
                return nullptr;
            }
            directly = directly || output.parameter().way == Way::mac_address;
            argument = output.argument();
        }
        PyTuple_SET_ITEM(args.get(), i, Owned::share(argument).release());
    }
    if (!args) {
        return nullptr;
    }
    Owned result = directly ? call_directly(function, described, args.get(), outputs, count)
                            : call(function, &described, args.get());
    Judged judged;
    if (!result || !judge(&described, all, std::move(result), judged)) {
        return nullptr;
    }
    return values_of(outputs, count, std::move(judged));
}

NewReference call_without_outputs(PyObject *function, const CFunction *described, PyObject *all)
{
    Owned result;
    if (described && Py_REFCNT(all) == 1) {
        MovedUp args(all);
        result =
            callback_count == 0 ? Owned::steal(call_builtin(function, all)) : call(function, described, all);
    } else {
        Owned args = without_first(all);
        result = args ? call(function, described, args.get()) : Owned();
    }
    Judged judged;
    if (!result || !judge(described, all, std::move(result), judged)) {
        return nullptr;
    }
    return values_of(nullptr, 0, std::move(judged));
}

}  // namespace

NewReference checked(PyObject *, PyObject *args)
{
    Py_ssize_t count = PyTuple_GET_SIZE(args) - 1;
    if (count < 0) {
        PyErr_SetString(PyExc_TypeError, "checked() takes a function and its arguments");
        return nullptr;
    }
    PyObject *function = PyTuple_GET_ITEM(args, 0);
    size_t outputs = 0;
    for (Py_ssize_t i = 1; i <= count; ++i) {
        outputs += is_out(PyTuple_GET_ITEM(args, i));
    }
    const CFunction *described = find_function(function);
    if (outputs == 0) {
        return call_without_outputs(function, described, args);
    }
    if (!described) {
        Owned text = Owned::steal(PyObject_Repr(function));
        if (text) {
            PyErr_Format(PyExc_TypeError, "OUT stands for outputs of the SDK's functions, and %.200s is none",
                         PyString_AS_STRING(text.get()));
        }
        return nullptr;
    }
    if (count != described->parameter_count) {
        return raise_count(function, *described, count);
    }
    if (outputs > most_outputs) {
        PyErr_Format(PyExc_TypeError, "a call has up to %zu outputs", most_outputs);
        return nullptr;
    }
    // The usual case needs no room for more.
    return outputs == 1 ? call_with_outputs<1>(*described, args)
                        : call_with_outputs<most_outputs>(*described, args);
}

}  // namespace quorel
