#include "records.h"

#include "array.h"
#include "bits.h"
#include "loan.h"
#include "module/convert.h"
#include "names.h"
#include "replacements.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <new>

namespace quorel {

namespace {

// A kind of record. Names of members are made into Python's when they are first needed.
struct RecordKind {
    const swig_type_info *pointer;
    const CType *type;
    PyObject **names;

    const CRecord &record() const { return c_records[type->target]; }
    const CMember *members() const { return c_members + record().members; }
    size_t count() const { return record().member_count; }
};

// Sorted by descriptor.
RecordKind *kinds;
size_t kind_count;

bool by_pointer(const RecordKind &left, const RecordKind &right)
{
    return std::less<const swig_type_info *>()(left.pointer, right.pointer);
}

bool prepare_kinds()
{
    if (kinds) {
        return true;
    }
    size_t count = 0;
    for (size_t i = 0; i < c_type_count; ++i) {
        count += c_types[i].kind == Kind::record;
    }
    auto *made = new (std::nothrow) RecordKind[count];
    if (!made) {
        PyErr_NoMemory();
        return false;
    }
    count = 0;
    for (size_t i = 0; i < c_type_count; ++i) {
        const CType &type = c_types[i];
        if (type.kind == Kind::record && type.pointer != no_type) {
            made[count++] = {types[type.pointer], &c_types[c_records[type.target].type], nullptr};
        }
    }
    std::sort(made, made + count, by_pointer);
    // Several spellings of one record have one descriptor.
    auto same = [](const RecordKind &left, const RecordKind &right) { return left.pointer == right.pointer; };
    kind_count = static_cast<size_t>(std::unique(made, made + count, same) - made);
    kinds = made;
    return true;
}

bool prepare_names(RecordKind &kind)
{
    if (kind.names) {
        return true;
    }
    auto **names = new (std::nothrow) PyObject *[kind.count()]();
    bool done = names;
    for (size_t i = 0; done && i < kind.count(); ++i) {
        names[i] = PyString_InternFromString(index_text + kind.members()[i].name);
        done = names[i];
    }
    if (!done) {
        for (size_t i = 0; names && i < kind.count(); ++i) {
            Py_XDECREF(names[i]);
        }
        delete[] names;
        PyErr_NoMemory();
        return false;
    }
    kind.names = names;
    return true;
}

// The kind of record that a pointer of this type leads to; null without an exception for another type.
RecordKind *find_kind(const swig_type_info *pointer)
{
    static RecordKind *last;
    if (last && last->pointer == pointer) {
        return last;
    }
    if (!prepare_kinds()) {
        return nullptr;
    }
    RecordKind wanted = {pointer, nullptr, nullptr};
    RecordKind *found = std::lower_bound(kinds, kinds + kind_count, wanted, by_pointer);
    bool is_found = found != kinds + kind_count && found->pointer == pointer;
    if (!is_found || !prepare_names(*found)) {
        return nullptr;
    }
    last = found;
    return found;
}

RecordKind *kind_of(const CType &type)
{
    return find_kind(types[type.pointer]);
}

// A record that a script has given.
struct Given {
    RecordKind *kind = nullptr;
    char *address = nullptr;
    Owned holder;  ///< its pointer object

    explicit operator bool() const { return kind != nullptr; }
};

// Without a record an exception is set.
Given given_record(PyObject *object, const char *function)
{
    Given given;
    SwigPyObject *likely = likely_pointer_object(object);
    given.holder = likely ? Owned::share(reinterpret_cast<PyObject *>(likely)) : find_pointer_object(object);
    auto *pointer = reinterpret_cast<SwigPyObject *>(given.holder.get());
    RecordKind *kind = pointer ? find_kind(pointer->ty) : nullptr;
    if (kind && pointer->ptr) {
        given.kind = kind;
        given.address = static_cast<char *>(pointer->ptr);
    } else if (!PyErr_Occurred()) {
        bool has_been = kind || (pointer && !pointer->ptr);
        PyErr_Format(has_been ? PyExc_ValueError : PyExc_TypeError,
                     has_been ? "%.100s(): this %.100s has no content any more"
                              : "%.100s() takes a record of the SDK, not %.100s",
                     function, Py_TYPE(object)->tp_name);
    }
    return given;
}

bool is_text(const CType &type)
{
    return type.kind == Kind::pointer && type.target != none && c_types[type.target].kind == Kind::character;
}

// --- plain values -------------------------------------------------------------------------------------------

NewReference plain_record(RecordKind &kind, char *address);

NewReference plain_array(const CType &type, char *address);

NewReference plain_value(const CType &type, char *address)
{
    switch (type.kind) {
    case Kind::port_list:
        // All of them, which the conversion of results does not give, and as ints.
        return read_bits(address, type.size);
    case Kind::bit_set:
        return read_named_bits(type, address);
    case Kind::record: {
        RecordKind *kind = kind_of(type);
        return kind ? plain_record(*kind, address) : nullptr;
    }
    case Kind::array:
        return plain_array(type, address);
    case Kind::opaque:
        return _PyLong_FromByteArray(reinterpret_cast<unsigned char *>(address), type.size, 1, 0);
    case Kind::pointer:
    case Kind::callback: {
        void *pointer;
        std::memcpy(&pointer, address, sizeof pointer);
        return !pointer        ? new_none()
               : is_text(type) ? PyString_FromString(static_cast<const char *>(pointer))
                               : PyLong_FromVoidPtr(pointer);
    }
    default:
        return read_value(type, address, nullptr);
    }
}

NewReference plain_array(const CType &type, char *address)
{
    const CType *element = type.target == none ? nullptr : &c_types[type.target];
    if (!element || element->kind == Kind::character || element->size == 0) {
        return read_array(type, address, nullptr);
    }
    auto count = static_cast<Py_ssize_t>(type.size / element->size);
    Owned list = Owned::steal(PyList_New(count));
    for (Py_ssize_t i = 0; list && i < count; ++i) {
        PyObject *value = plain_value(*element, address + i * static_cast<Py_ssize_t>(element->size));
        if (!value) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), i, value);
    }
    return list.release();
}

// The kinds that most members are of need no call.
inline NewReference usual_value(const CType &type, char *address)
{
    switch (type.kind) {
    case Kind::int32: {
        int32_t number;
        std::memcpy(&number, address, sizeof number);
        return PyInt_FromLong(number);
    }
    case Kind::uint32: {
        uint32_t number;
        std::memcpy(&number, address, sizeof number);
        return from_uint32(number);
    }
    case Kind::uint16: {
        uint16_t number;
        std::memcpy(&number, address, sizeof number);
        return PyInt_FromLong(number);
    }
    case Kind::uint8:
        return PyInt_FromLong(static_cast<unsigned char>(*address));
    default:
        return plain_value(type, address);
    }
}

NewReference plain_record(RecordKind &kind, char *address)
{
    if (Py_EnterRecursiveCall(" in a record")) {
        return nullptr;
    }
    Owned values = Owned::steal(_PyDict_NewPresized(static_cast<Py_ssize_t>(kind.count())));
    const CMember *member = kind.members();
    for (size_t i = 0; values && i < kind.count(); ++i, ++member) {
        Owned value = Owned::steal(usual_value(c_types[member->type], address + member->offset));
        if (!value || PyDict_SetItem(values.get(), kind.names[i], value.get()) != 0) {
            values = Owned();
        }
    }
    Py_LeaveRecursiveCall();
    return values.release();
}

// --- live values --------------------------------------------------------------------------------------------

bool points_elsewhere(const CType &type)
{
    return (type.kind == Kind::pointer && !is_text(type)) || type.kind == Kind::callback;
}

bool is_array_of_values(const CType &type)
{
    return type.kind == Kind::array && type.target != none && c_types[type.target].size != 0
           && c_types[type.target].kind != Kind::character;
}

bool is_zero(const char *bytes, size_t size)
{
    return std::all_of(bytes, bytes + size, [](char byte) { return byte == 0; });
}

// The elements of an array, with Ellipsis for those that are zero up to its end.
NewReference list_used(const CType &type, char *address, PyObject *keeper)
{
    const CType &element = c_types[type.target];
    auto size = static_cast<Py_ssize_t>(element.size);
    auto count = static_cast<Py_ssize_t>(type.size) / size, used = count;
    while (used > 0 && is_zero(address + (used - 1) * size, element.size)) {
        --used;
    }
    Owned list = Owned::steal(PyList_New(0));
    for (Py_ssize_t i = 0; list && i < used; ++i) {
        Owned value =
            Owned::steal(element.kind == Kind::record ? read_value(element, address + i * size, keeper)
                                                      : plain_value(element, address + i * size));
        if (!value || PyList_Append(list.get(), value.get()) != 0) {
            return nullptr;
        }
    }
    return list && (used == count || PyList_Append(list.get(), Py_Ellipsis) == 0) ? list.release() : nullptr;
}

// What stands for a value in a text, where that is not the value: a pointer's address, or the name that the type's
// enumeration has for the number. None for other values.
NewReference text_of(const CType &type, const char *address)
{
    if (points_elsewhere(type)) {
        void *pointer;
        std::memcpy(&pointer, address, sizeof pointer);
        return PyString_FromFormat("%p", pointer);
    }
    const char *name = nullptr;
    if (type.kind == Kind::int32 || type.kind == Kind::uint32 || type.kind == Kind::opaque) {
        int32_t number;
        if (type.size == sizeof number) {
            std::memcpy(&number, address, sizeof number);
            name = enumerator_of(name_of(type), number);
        }
    }
    return name ? PyString_FromString(name) : new_none();
}

// Rows of two; or, of members that are not zero, of three, with the text that stands for the value.
NewReference fields_of(PyObject *object, bool all)
{
    Given record = given_record(object, "fields");
    Owned list = Owned::steal(record ? PyList_New(0) : nullptr);
    for (size_t i = 0; list && i < record.kind->count(); ++i) {
        const CMember &member = record.kind->members()[i];
        const CType &type = c_types[member.type];
        char *address = record.address + member.offset;
        if (!all && is_zero(address, type.size)) {
            continue;
        }
        bool is_pointer = points_elsewhere(type);
        bool is_array = is_array_of_values(type);
        bool as_it_is = type.kind == Kind::record || (all && (is_array || is_pointer));
        Owned value = Owned::steal(as_it_is   ? read_value(type, address, record.holder.get())
                                   : is_array ? list_used(type, address, record.holder.get())
                                              : plain_value(type, address));
        Owned text = Owned::steal(all ? new_none() : text_of(type, address));
        Owned row = Owned::steal(
            value && text ? PyTuple_Pack(all ? 2 : 3, record.kind->names[i], value.get(), text.get())
                          : nullptr);
        if (!row || PyList_Append(list.get(), row.get()) != 0) {
            return nullptr;
        }
    }
    return list.release();
}

// --- writing ------------------------------------------------------------------------------------------------

// Members of a record on their way: first all are converted into memory beside it, then they go in.
class Changes {
public:
    // `address` is where the values are and go to. The record itself is at `real_address`: what is to be replaced
    // there, after all has gone in, is added to `later`.
    Changes(RecordKind &kind, char *address, char *real_address, Replacements &later)
        : kind_(kind), address_(address), real_address_(real_address), later_(later)
    {
        Memory *values = new_memory(1, static_cast<Py_ssize_t>(kind.type->size));
        values_ = Owned::steal(values ? as_object(values) : nullptr);
        Memory *marks = values ? new_memory(1, static_cast<Py_ssize_t>(kind.count())) : nullptr;
        marks_ = Owned::steal(marks ? as_object(marks) : nullptr);
        if (marks) {
            std::memcpy(values->data, address, kind.type->size);
        }
    }

    // Whether there is memory for it; if not, there is an exception.
    bool is_ready() const { return values_ && marks_; }

    // Converts them; false with an exception.
    bool add(PyObject *members)
    {
        PyObject *name, *value;
        for (Py_ssize_t i = 0; PyDict_Next(members, &i, &name, &value);) {
            Owned kept_name = Owned::share(name), kept_value = Owned::share(value);
            if (!add(kept_name.get(), kept_value.get())) {
                return false;
            }
        }
        return true;
    }

    void apply()
    {
        for (size_t i = 0; i < kind_.count(); ++i) {
            const CMember &member = kind_.members()[i];
            if (data_of(marks_)[i]) {
                std::memcpy(address_ + member.offset, data_of(values_) + member.offset,
                            c_types[member.type].size);
            }
        }
    }

private:
    static char *data_of(const Owned &memory) { return reinterpret_cast<Memory *>(memory.get())->data; }

    bool add(PyObject *name, PyObject *value)
    {
        size_t place = place_of(name);
        if (place == kind_.count()) {
            if (!PyErr_Occurred()) {
                PyErr_Format(PyExc_AttributeError, "'%.100s' has no member '%.200s'", name_of(*kind_.type),
                             PyString_Check(name) ? PyString_AS_STRING(name) : "?");
            }
            return false;
        }
        const CMember &member = kind_.members()[place];
        const CType &type = c_types[member.type];
        if (is_replaced(type)) {
            return replace(type, place, value) || say_member(place);
        }
        if (!write(type, data_of(values_) + member.offset, value)) {
            return say_member(place);
        }
        data_of(marks_)[place] = 1;
        return true;
    }

    // Of a member's name; the number of members without one of that name.
    size_t place_of(PyObject *name)
    {
        PyObject **first = kind_.names, **last = first + kind_.count();
        PyObject **found = std::find(first, last, name);
        if (found == last) {
            Owned text = Owned::steal(as_native(name));
            found = std::find_if(first, last, [&](PyObject *member) {
                return text && PyString_Check(text.get()) && _PyString_Eq(member, text.get());
            });
        }
        return static_cast<size_t>(found - first);
    }

    // What takes more than storing a value.
    static bool is_replaced(const CType &type)
    {
        return is_text(type) || (type.kind == Kind::pointer && type.target == none);
    }

    bool replace(const CType &type, size_t place, PyObject *given)
    {
        Owned value = Owned::steal(as_native(given));
        if (!value) {
            return false;
        }
        const uint32_t offset = kind_.members()[place].offset;
        const char *now = data_of(values_) + offset;
        if (is_text(type) && value.get() == Py_None) {
            // There is no way to have none again.
            return is_zero(now, type.size) || raise_wrong_value(type, value.get());
        }
        if (is_number(value.get())) {
            return is_address_of(now, value.get()) || raise_wrong_value(type, value.get());
        }
        Status status = is_text(type) ? later_.add_text(real_address_ + offset, value.get())
                                      : later_.add_memory(real_address_ + offset, value.get());
        if (status == Status::memory) {
            PyErr_NoMemory();
            return false;
        }
        return status == Status::ok || raise_wrong_value(type, value.get());
    }

    static bool is_number(PyObject *value) { return PyInt_Check(value) || PyLong_Check(value); }

    // Of a pointer as_dict() gives the address: nothing else may take its place than what is there.
    static bool is_address_of(const char *pointer, PyObject *number)
    {
        void *there;
        std::memcpy(&there, pointer, sizeof there);
        Owned address = Owned::steal(PyLong_FromVoidPtr(there));
        return address && PyObject_RichCompareBool(number, address.get(), Py_EQ) == 1;
    }

    // "bcm_l2_addr_t.port: a value of type 'int' is wanted, not str"; returns false.
    bool say_member(size_t place) const
    {
        return say_where("%.100s.%.100s", name_of(*kind_.type), PyString_AS_STRING(kind_.names[place]));
    }

    // Text of JSON is unicode. The codec serves Pythons of either size of unicode.
    static NewReference as_native(PyObject *value)
    {
        return PyUnicode_Check(value) ? PyCodec_Encode(value, "utf-8", nullptr)
                                      : Owned::share(value).release();
    }

    bool write(const CType &type, char *address, PyObject *given)
    {
        Owned value = Owned::steal(as_native(given));
        if (!value) {
            return false;
        }
        if (type.kind == Kind::record && PyDict_Check(value.get())) {
            return write_record(type, address, value.get());
        }
        if (type.kind == Kind::array) {
            return write_elements(type, address, value.get());
        }
        if (is_text(type) && PyString_Check(value.get())) {
            // In an array of texts nothing would keep it.
            return raise_wrong_value(type, value.get());
        }
        if (type.kind == Kind::port_list) {
            return write_ports(type, address, value.get());
        }
        bool is_pointer = type.kind == Kind::pointer || type.kind == Kind::callback;
        if (is_pointer && is_number(value.get()) && is_address_of(address, value.get())) {
            return true;
        }
        return write_value(type, address, value.get());
    }

    bool write_record(const CType &type, char *address, PyObject *members)
    {
        RecordKind *kind = kind_of(type);
        if (!kind || Py_EnterRecursiveCall(" in a record")) {
            return false;
        }
        Changes inner(*kind, address, real_address_ + (address - data_of(values_)), later_);
        bool done = inner.is_ready() && inner.add(members);
        if (done) {
            inner.apply();
        }
        Py_LeaveRecursiveCall();
        return done;
    }

    // Elements one by one where they can be given as something that the array itself does not take.
    bool write_elements(const CType &type, char *address, PyObject *value)
    {
        const CType *element = type.target == none ? nullptr : &c_types[type.target];
        bool one_by_one = element && element->size != 0 && (PyList_Check(value) || PyTuple_Check(value));
        if (!one_by_one) {
            return write_array(type, address, value);
        }
        Owned items = Owned::steal(PySequence_Tuple(value));
        auto count = static_cast<Py_ssize_t>(type.size / element->size);
        if (!items) {
            return false;
        }
        if (PyTuple_GET_SIZE(items.get()) != count) {
            PyErr_Format(PyExc_ValueError, "%zd values are wanted, not %zd", count,
                         PyTuple_GET_SIZE(items.get()));
            return false;
        }
        for (Py_ssize_t i = 0; i < count; ++i) {
            if (!write(*element, address + i * static_cast<Py_ssize_t>(element->size),
                       PyTuple_GET_ITEM(items.get(), i))) {
                return say_where("element %zd", i);
            }
        }
        return true;
    }

    // Ports may be longs here, as reading a member gives them.
    static bool write_ports(const CType &type, char *address, PyObject *value)
    {
        Owned ports =
            Owned::steal(PyList_Check(value) ? PySequence_List(value) : Owned::share(value).release());
        for (Py_ssize_t i = 0; ports && PyList_Check(ports.get()) && i < PyList_GET_SIZE(ports.get()); ++i) {
            PyObject *port = PyList_GET_ITEM(ports.get(), i);
            if (PyLong_Check(port)) {
                PyObject *number = PyNumber_Int(port);
                if (!number) {
                    return false;
                }
                PyList_SetItem(ports.get(), i, number);
            }
        }
        return ports && write_value(type, address, ports.get());
    }

    RecordKind &kind_;
    char *address_, *real_address_;
    Replacements &later_;
    Owned values_, marks_;  ///< the record as it will be; a byte for each member, whether it changes
};

bool change(PyObject *object, PyObject *values, PyObject *more, const char *function)
{
    Given record = given_record(object, function);
    if (!record) {
        return false;
    }
    Replacements later;
    Changes changes(*record.kind, record.address, record.address, later);
    if (!changes.is_ready() || (values && !changes.add(values)) || (more && !changes.add(more))) {
        return false;
    }
    // In this order, since a record inside goes in as a whole.
    changes.apply();
    later.apply();
    return true;
}

// How a member is seen that the module itself passes as a pointer to a copy: by the type of that pointer. Null for
// what is a pointer object for good.
const CType *type_of_value(const swig_type_info *pointer)
{
    const CType *last = c_types + c_type_count;
    const CType *found = std::find_if(c_types, last, [=](const CType &type) {
        return type.pointer != no_type && types[type.pointer] == pointer;
    });
    bool is_value = found != last && found->size != 0 && found->kind != Kind::record
                    && found->kind != Kind::pointer && found->kind != Kind::callback
                    && found->kind != Kind::array;
    return is_value ? found : nullptr;
}

}  // namespace

NewReference list_members(PyObject *, PyObject *of)
{
    const CType *type = nullptr;
    Given record;
    if (PyString_Check(of) || PyType_Check(of)) {
        type = find_type_named(of);
    } else if ((record = given_record(of, "members"))) {
        type = record.kind->type;
    }
    if (!type) {
        return nullptr;
    }
    RecordKind *kind = type->kind == Kind::record && type->pointer != no_type ? kind_of(*type) : nullptr;
    if (!kind) {
        if (!PyErr_Occurred()) {
            PyErr_Format(PyExc_TypeError, "'%.200s' is no record", name_of(*type));
        }
        return nullptr;
    }
    Owned list = Owned::steal(PyList_New(static_cast<Py_ssize_t>(kind->count())));
    for (size_t i = 0; list && i < kind->count(); ++i) {
        const char *member_type = name_of(c_types[kind->members()[i].type]);
        PyObject *row = Py_BuildValue("Os", kind->names[i], member_type);
        if (!row) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), row);
    }
    return list.release();
}

NewReference list_fields(PyObject *, PyObject *record)
{
    return fields_of(record, true);
}

NewReference list_set_fields(PyObject *, PyObject *record)
{
    return fields_of(record, false);
}

NewReference as_dict(PyObject *, PyObject *object)
{
    Given record = given_record(object, "as_dict");
    return record ? plain_record(*record.kind, record.address) : nullptr;
}

NewReference update(PyObject *, PyObject *args, PyObject *keywords)
{
    PyObject *record, *values = Py_None;
    if (!PyArg_UnpackTuple(args, "update", 1, 2, &record, &values)) {
        return nullptr;
    }
    if (values != Py_None && !PyDict_Check(values)) {
        PyErr_Format(PyExc_TypeError, "update() takes a dict, not %.100s", Py_TYPE(values)->tp_name);
        return nullptr;
    }
    bool done = change(record, values == Py_None ? nullptr : values, keywords, "update");
    return done ? Owned::share(record).release() : nullptr;
}

bool set_members(PyObject *record, PyObject *keywords)
{
    Owned pointer = find_pointer_object(record);
    bool is_record = pointer && find_kind(reinterpret_cast<SwigPyObject *>(pointer.get())->ty);
    if (!is_record) {
        if (!PyErr_Occurred()) {
            PyErr_Format(PyExc_TypeError, "%.100s() takes no keyword arguments", Py_TYPE(record)->tp_name);
        }
        return false;
    }
    return change(record, keywords, nullptr, Py_TYPE(record)->tp_name);
}

NewReference read_copied(const swig_type_info *pointer, char *address)
{
    const CType *type = type_of_value(pointer);
    if (!type) {
        return nullptr;
    }
    Owned value = Owned::steal(type->kind == Kind::bit_set ? read_bits(address, type->size)
                                                           : plain_value(*type, address));
    return value ? carried(*type, std::move(value)) : nullptr;
}

bool write_copied(const swig_type_info *pointer, char *address, PyObject *value)
{
    const CType *type = type_of_value(pointer);
    if (!type || write_value(*type, address, value)) {
        return type != nullptr;
    }
    // The module says it better.
    if (PyErr_ExceptionMatches(PyExc_TypeError)) {
        PyErr_Clear();
    }
    return false;
}

NewReference copy_record(PyObject *, PyObject *object)
{
    Given record = given_record(object, "copy");
    if (!record) {
        return nullptr;
    }
    PyObject *made_by = class_of(record.kind->type->pointer);
    if (!made_by) {
        PyErr_Format(PyExc_TypeError, "copy(): '%.200s' has no class", name_of(*record.kind->type));
        return nullptr;
    }
    Owned copied = Owned::steal(PyObject_CallObject(made_by, nullptr));
    if (!copied) {
        return nullptr;
    }
    Given copy = given_record(copied.get(), "copy");
    if (!copy) {
        return nullptr;
    }
    std::memcpy(copy.address, record.address, record.kind->type->size);
    return copied.release();
}

}  // namespace quorel
