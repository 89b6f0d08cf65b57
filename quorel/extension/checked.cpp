#include "checked.h"

#include "array.h"
#include "callback.h"
#include "module/builtin_call.h"
#include "module/pointer_object.h"
#include "output.h"
#include "registrations.h"
#include "values.h"

#include <cstdlib>
#include <cstring>

namespace quorel {

namespace {

constexpr size_t most_outputs = 24;
constexpr size_t largest_value = 128;  ///< bytes of what an argument is converted to

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

// Names them before the text of the exception: "bcm_vlan_port_add(), argument 3 (pbmp): ..."; returns false.
bool say_argument(PyObject *function, size_t place)
{
    PyObject *type, *value, *traceback;
    PyErr_Fetch(&type, &value, &traceback);
    Owned name = function_name(function), parameter = parameter_name(function, place);
    PyErr_Restore(type, value, traceback);
    return name && parameter
           && say_where("%.200s(), argument %zu (%.200s)", PyString_AS_STRING(name.get()), place + 1,
                        PyString_AS_STRING(parameter.get()));
}

// The place of the argument that the module's exception tells of; `none` without one.
size_t refused_place(PyObject *function, PyObject *error)
{
    Owned text = Owned::steal(PyObject_Str(error)), name = function_name(function);
    Owned start = Owned::steal(
        text && name ? PyString_FromFormat("in method '%.200s', argument ", PyString_AS_STRING(name.get()))
                     : nullptr);
    if (!start) {
        PyErr_Clear();
        return none;
    }
    const auto length = static_cast<size_t>(PyString_GET_SIZE(start.get()));
    const char *message = PyString_AS_STRING(text.get());
    bool tells = std::strncmp(message, PyString_AS_STRING(start.get()), length) == 0;
    const long number = tells ? std::strtol(message + length, nullptr, 10) : 0;
    return number > 0 ? static_cast<size_t>(number - 1) : none;
}

// What to give instead of a plain Python value, where that is what was wrong.
Owned advice(const CParameter &parameter, PyObject *given)
{
    if (parameter.type == none) {
        return Owned();
    }
    const char *type = name_of(c_types[parameter.type]);
    const bool is_pointer = parameter.way == Way::pointer || parameter.way == Way::constant;
    if (parameter.way == Way::callback && PyCallable_Check(given)) {
        return Owned::steal(PyString_FromFormat("callback('%.200s', f) makes one of a function f", type));
    }
    if (is_pointer && (PyList_Check(given) || PyTuple_Check(given))) {
        return Owned::steal(PyString_FromFormat("array('%.200s', values) makes one of values", type));
    }
    if (parameter.way == Way::pointer && (PyInt_Check(given) || PyLong_Check(given))) {
        return Owned::steal(
            PyString_FromFormat("OUT stands for what is written, cell('%.200s') is memory", type));
    }
    return Owned();
}

// Of a call that has raised: says which argument was wrong where the module does not, and what to give instead.
__attribute__((cold)) void explain_refusal(PyObject *function, const CFunction &described, PyObject *all)
{
    auto given = [&](size_t place) { return PyTuple_GET_ITEM(all, static_cast<Py_ssize_t>(place) + 1); };
    bool may_be_refused = PyErr_ExceptionMatches(PyExc_TypeError) || PyErr_ExceptionMatches(PyExc_ValueError);
    if (!may_be_refused || PyTuple_GET_SIZE(all) != described.parameter_count + 1) {
        return;
    }
    PyObject *type, *value, *traceback;
    PyErr_Fetch(&type, &value, &traceback);
    PyErr_NormalizeException(&type, &value, &traceback);
    const size_t place = refused_place(function, value);
    if (place < described.parameter_count) {
        Owned text = Owned::steal(PyObject_Str(value)),
              more = advice(parameter_of(described, place), given(place));
        if (text && more) {
            PyErr_Format(type, "%.400s: %.300s", PyString_AS_STRING(text.get()),
                         PyString_AS_STRING(more.get()));
            Py_XDECREF(type);
            Py_XDECREF(value);
            Py_XDECREF(traceback);
            return;
        }
    }
    PyErr_Clear();
    // Port lists and MAC addresses are refused without a word on where they stand.
    for (size_t i = 0; i < described.parameter_count; ++i) {
        const CParameter &parameter = parameter_of(described, i);
        const bool is_converted = parameter.type != none
                                  && (parameter.way == Way::value || parameter.way == Way::mac_address)
                                  && (c_types[parameter.type].kind == Kind::port_list
                                      || c_types[parameter.type].kind == Kind::mac_address);
        char scratch[largest_value];
        if (is_converted && !is_out(given(i)) && c_types[parameter.type].size <= sizeof scratch
            && !write_value(c_types[parameter.type], scratch, given(i))) {
            say_argument(function, i);
            Py_XDECREF(type);
            Py_XDECREF(value);
            Py_XDECREF(traceback);
            return;
        }
    }
    PyErr_Restore(type, value, traceback);
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

// Whether the function has done what it is for, as far as its result tells.
bool is_success(const CFunction &described, PyObject *result)
{
    return described.answer == Answer::nothing || (PyInt_Check(result) && PyInt_AS_LONG(result) == 0);
}

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
    if (result && described && described->keeping != Keeping::no && is_success(*described, result.get())) {
        note_registration(described->keeping, function, args);
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
                return say_argument(function, i);
            }
        }
        return true;
    }
    void *const *get() const { return places_; }

private:
    static constexpr size_t most = 16;

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
            return type.size <= largest_value ? write_value(type, values_[i], value)
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

    alignas(8) char values_[most][largest_value];
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

// The arguments of checked(), with numbers and lists as what functions take by value.
Owned carry_values(const CFunction &described, PyObject *all)
{
    Py_ssize_t count = PyTuple_GET_SIZE(all);
    Owned carrying = Owned::steal(PyTuple_New(count));
    for (Py_ssize_t i = 0; carrying && i < count; ++i) {
        PyObject *given = PyTuple_GET_ITEM(all, i);
        const CParameter *parameter = i == 0 ? nullptr : &parameter_of(described, static_cast<size_t>(i) - 1);
        bool is_plain = PyInt_CheckExact(given) || PyLong_CheckExact(given) || PyList_CheckExact(given);
        bool is_value = is_plain && parameter && parameter->way == Way::by_value && parameter->type != none;
        PyObject *item =
            is_value ? carried(c_types[parameter->type], Owned::share(given)) : Owned::share(given).release();
        if (!item) {
            return Owned();
        }
        PyTuple_SET_ITEM(carrying.get(), i, item);
    }
    return carrying;
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
    if (!result) {
        explain_refusal(function, described, all);
        return nullptr;
    }
    if (!judge(&described, all, std::move(result), judged)) {
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
    if (!result) {
        if (described) {
            explain_refusal(function, *described, all);
        }
        return nullptr;
    }
    if (!judge(described, all, std::move(result), judged)) {
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
    size_t outputs = 0, arrays = 0;
    for (Py_ssize_t i = 1; i <= count; ++i) {
        const PyTypeObject *type = Py_TYPE(PyTuple_GET_ITEM(args, i));
        outputs += type == &Out_Type;
        arrays += type == &Array_Type;
    }
    const CFunction *described = find_function(function);
    const bool is_complete = described && count == described->parameter_count;
    if (arrays != 0 && is_complete && !have_room(function, *described, args)) {
        return nullptr;
    }
    Owned with_pointers;
    if (is_complete && described->takes_values) {
        with_pointers = carry_values(*described, args);
        if (!with_pointers) {
            return nullptr;
        }
        args = with_pointers.get();
    }
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
