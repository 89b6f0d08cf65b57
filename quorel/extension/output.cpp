#include "output.h"

#include "array.h"
#include "module/pointer_object.h"
#include "values.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace quorel {

namespace {

struct Out {
    PyObject_HEAD Py_ssize_t count;  ///< of OUT[count]; less than 0 for OUT itself
};

Py_ssize_t count_of(PyObject *marker)
{
    return reinterpret_cast<Out *>(marker)->count;
}

NewReference new_out(Py_ssize_t count)
{
    Out *marker = PyObject_New(Out, &Out_Type);
    if (marker) {
        marker->count = count;
    }
    return reinterpret_cast<PyObject *>(marker);
}

void deallocate(PyObject *object)
{
    PyObject_Del(object);
}

NewReference represent(PyObject *object)
{
    return count_of(object) < 0 ? PyString_FromString("OUT")
                                : PyString_FromFormat("OUT[%zd]", count_of(object));
}

NewReference subscript(PyObject *, PyObject *key)
{
    Py_ssize_t count = PyNumber_AsSsize_t(key, PyExc_MemoryError);
    if (count < 0) {
        if (!PyErr_Occurred()) {
            PyErr_Format(PyExc_ValueError, "OUT[%zd] stands for no array", count);
        }
        return nullptr;
    }
    return new_out(count);
}

PyMappingMethods mapping_methods;

// "bcm_port_speed_get(), argument 2 (port): OUT stands for ..., <what>".
bool refuse(PyObject *function, size_t place, const char *what)
{
    Owned name = function_name(function), parameter = parameter_name(function, place);
    if (name && parameter) {
        PyErr_Format(PyExc_TypeError, "%.200s(), argument %zu (%.200s): %.200s",
                     PyString_AS_STRING(name.get()), place + 1, PyString_AS_STRING(parameter.get()), what);
    }
    return false;
}

// The argument that tells how many elements there is room for, where it is a number; less than 0 without one.
Py_ssize_t capacity_in(const CParameter &parameter, PyObject *all)
{
    PyObject *capacity =
        parameter.capacity == no_capacity ? nullptr : PyTuple_GET_ITEM(all, parameter.capacity + 1);
    bool is_number = capacity && (PyInt_Check(capacity) || PyLong_Check(capacity));
    return is_number ? std::max<Py_ssize_t>(0, PyNumber_AsSsize_t(capacity, nullptr)) : -1;
}

bool has_room(PyObject *function, const CParameter &parameter, size_t place, PyObject *all)
{
    auto *array = reinterpret_cast<Array *>(PyTuple_GET_ITEM(all, static_cast<Py_ssize_t>(place) + 1));
    if (Py_TYPE(array) != &Array_Type || parameter.type == none) {
        return true;
    }
    const Py_ssize_t capacity = capacity_in(parameter, all);
    const Py_ssize_t least = capacity < 0 ? parameter.bound : capacity;
    // Of a type that C takes for the parameter's own.
    const Py_ssize_t size = std::max<Py_ssize_t>(1, static_cast<Py_ssize_t>(c_types[parameter.type].size));
    if (least <= array->count * static_cast<Py_ssize_t>(array->type->size) / size) {
        return true;
    }
    char what[100];
    std::snprintf(what, sizeof what, "the function may use %zd elements, and the array has %zd", least,
                  array->count);
    return refuse(function, place, what);
}

}  // namespace

bool have_room(PyObject *function, const CFunction &described, PyObject *all)
{
    for (size_t i = 0; i < described.parameter_count; ++i) {
        if (!has_room(function, parameter_of(described, i), i, all)) {
            return false;
        }
    }
    return true;
}

PyObject *out_marker;

PyTypeObject Out_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "quorel.Out", sizeof(Out)};

bool initialise_out_type()
{
    mapping_methods.mp_subscript = subscript;
    PyTypeObject &type = Out_Type;
    type.tp_dealloc = deallocate;
    type.tp_repr = represent;
    type.tp_as_mapping = &mapping_methods;
    type.tp_flags |= Py_TPFLAGS_DEFAULT;
    type.tp_doc =
        "Stands for an output of quorel.checked(): OUT for one value, OUT[n] for an array or text of up to "
        "n.";
    if (PyType_Ready(&type) != 0) {
        return false;
    }
    out_marker = new_out(-1);
    return out_marker != nullptr;
}

// What the parameter says of the number of elements is what C goes by.
bool Output::judge_size(PyObject *function, PyObject *all)
{
    const Py_ssize_t least = std::max<Py_ssize_t>(parameter_->bound, capacity_in(*parameter_, all));
    const bool has_capacity = parameter_->capacity != no_capacity;
    const bool is_text = parameter_->way == Way::text;
    if (count_ >= 0 && count_ < least) {
        char what[100];
        std::snprintf(what, sizeof what, "the function may write %zd %s, and OUT[%zd] has not the room",
                      least, is_text ? "bytes" : "elements", count_);
        return refuse(function, place_, what);
    }
    if (count_ < 0 && (least > 0 || has_capacity)) {
        count_ = std::max<Py_ssize_t>(least, 0);
    }
    return count_ >= 0 || !is_text || refuse(function, place_, "the room for the text is missing: OUT[size]");
}

bool Output::prepare(PyObject *function, const CFunction &described, size_t place, PyObject *all)
{
    parameter_ = &parameter_of(described, place);
    place_ = place;
    count_ = count_of(PyTuple_GET_ITEM(all, static_cast<Py_ssize_t>(place) + 1));
    switch (parameter_->way) {
    case Way::pointer:
    case Way::text:
        break;
    case Way::mac_address:
        if (described.direct == none) {
            return refuse(function, place, "a value that is passed in is no output");
        }
        if (count_ >= 0) {
            return refuse(function, place, "one MAC address is OUT, without a size");
        }
        break;
    case Way::constant:
    case Way::constant_text:
        return refuse(function, place, "the function only reads it, so it is no output");
    case Way::any_pointer:
        return refuse(function, place, "memory without a type is no output: give it an array");
    default:
        return refuse(function, place, "a value that is passed in is no output");
    }
    if (parameter_->type == none || c_types[parameter_->type].size == 0) {
        return refuse(function, place,
                      "the size of what it points to is not known: give it a pointer object");
    }
    type_ = &c_types[parameter_->type];
    return judge_size(function, all) && prepare_memory();
}

bool Output::prepare_memory()
{
    const bool is_mac_argument = parameter_->way == Way::mac_address;
    if (count_ < 0 && !is_mac_argument && type_->size <= sizeof small_ && type_->kind != Kind::record
        && type_->kind != Kind::opaque) {
        address_ = reinterpret_cast<char *>(&small_);
        argument_ = Owned::steal(new_pointer(address_, type_->pointer, nullptr));
        return static_cast<bool>(argument_);
    }
    if (count_ < 0 && type_->kind == Kind::record && class_of(type_->pointer)) {
        return prepare_record();
    }
    // A function that takes no size writes one.
    Memory *memory = new_memory(count_ < 1 ? 1 : count_, static_cast<Py_ssize_t>(type_->size));
    keeper_ = Owned::steal(memory ? as_object(memory) : nullptr);
    if (!keeper_) {
        return false;
    }
    address_ = memory->data;
    argument_ = is_mac_argument ? Owned::share(Py_None)
                                : Owned::steal(new_pointer(address_, type_->pointer, keeper_.get()));
    return static_cast<bool>(argument_);
}

bool Output::prepare_record()
{
    argument_ = Owned::steal(PyObject_CallObject(class_of(type_->pointer), nullptr));
    HeldPointer record = {};
    if (!argument_ || convert_pointer(argument_.get(), types[type_->pointer], &record) != Status::ok) {
        return argument_ && raise_wrong_value(*type_, argument_.get());
    }
    address_ = record.at(0);
    keeper_ = std::move(record.holder);
    is_record_ = true;
    return true;
}

NewReference Output::value(uint64_t most) const
{
    if (is_record_) {
        return Owned::share(argument_.get()).release();
    }
    if (parameter_->way == Way::text) {
        return PyString_FromString(address_);
    }
    if (count_ < 0) {
        bool has_no_class = type_->kind == Kind::opaque || type_->kind == Kind::record;
        return has_no_class ? new_array_at(*type_, 1, address_, keeper_.get())
                            : read_value(*type_, address_, keeper_.get());
    }
    auto count = static_cast<uint64_t>(count_) < most ? count_ : static_cast<Py_ssize_t>(most);
    Owned list = Owned::steal(PyList_New(count));
    for (Py_ssize_t i = 0; list && i < count; ++i) {
        PyObject *item =
            read_value(*type_, address_ + i * static_cast<Py_ssize_t>(type_->size), keeper_.get());
        if (!item) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), i, item);
    }
    return list.release();
}

uint64_t Output::number() const
{
    if (count_ >= 0 || type_->size != sizeof(int32_t)) {
        return UINT64_MAX;
    }
    int32_t number;
    std::memcpy(&number, address_, sizeof number);
    return number < 0 ? 0 : static_cast<uint64_t>(number);
}

Output::~Output()
{
    if (argument_ && address_ == reinterpret_cast<char *>(&small_)) {
        reinterpret_cast<SwigPyObject *>(argument_.get())->ptr = nullptr;
    }
}

}  // namespace quorel
