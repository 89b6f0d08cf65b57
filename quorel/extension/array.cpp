#include "array.h"

#include "loan.h"
#include "module/convert.h"

#include <cstddef>
#include <cstring>

namespace quorel {

namespace {

Array *as_array(PyObject *object)
{
    return reinterpret_cast<Array *>(object);
}

Py_ssize_t size_of_element(const Array *array)
{
    return static_cast<Py_ssize_t>(array->type->size);
}

bool holds_pointers(const CType &type)
{
    return type.kind == Kind::pointer || type.kind == Kind::callback;
}

// What has bytes of its own: not what merely has a sequence of values.
bool is_bytes(PyObject *value)
{
    return PyString_Check(value) || PyByteArray_Check(value) || PyBuffer_Check(value)
           || PyMemoryView_Check(value) || Py_TYPE(value) == &Array_Type;
}

bool raise_count(Py_ssize_t wanted, Py_ssize_t given, const char *of)
{
    PyErr_Format(PyExc_ValueError, "%zd %s are wanted, not %zd", wanted, of, given);
    return false;
}

// Copies exactly as many bytes as there are; fewer only where the elements are characters, and NULs follow.
bool copy_bytes(const CType &type, char *address, Py_ssize_t size, PyObject *value)
{
    Py_buffer bytes;
    if (PyMemoryView_Check(value) || PyByteArray_Check(value)) {
        if (PyObject_GetBuffer(value, &bytes, PyBUF_SIMPLE) != 0) {
            return false;
        }
    } else {
        const void *data;
        Py_ssize_t length;
        if (PyObject_AsReadBuffer(value, &data, &length) != 0) {
            return false;
        }
        bytes = {};
        bytes.buf = const_cast<void *>(data);
        bytes.len = length;
    }
    bool is_short_text = type.kind == Kind::character && bytes.len < size;
    bool fits = bytes.len == size || is_short_text;
    if (fits) {
        std::memmove(address, bytes.buf, static_cast<size_t>(bytes.len));
        std::memset(address + bytes.len, 0, static_cast<size_t>(size - bytes.len));
    } else {
        raise_count(size, bytes.len, "bytes");
    }
    if (bytes.obj) {
        PyBuffer_Release(&bytes);
    }
    return fits;
}

// Writes `count` values from a sequence; all or none.
bool copy_values(const CType &type, char *address, Py_ssize_t count, PyObject *value, Memory *memory)
{
    Owned items = Owned::steal(PySequence_Fast(value, "bytes or a sequence of values is wanted"));
    if (!items) {
        return false;
    }
    Py_ssize_t given = PySequence_Fast_GET_SIZE(items.get());
    if (given != count) {
        return raise_count(count, given, "values");
    }
    auto size = static_cast<Py_ssize_t>(type.size);
    Memory *written = new_memory(count, size);
    Owned owner = Owned::steal(written ? as_object(written) : nullptr);
    if (!owner) {
        return false;
    }
    for (Py_ssize_t i = 0; i < count; ++i) {
        Owned item = Owned::share(PySequence_Fast_GET_ITEM(items.get(), i));
        if (!write_value(type, written->data + i * size, item.get())) {
            return say_where("element %zd", i);
        }
        if (holds_pointers(type) && item.get() != Py_None && memory && !keep(memory, item.get())) {
            return false;
        }
        // Python code that ran may have changed a list.
        if (PySequence_Fast_GET_SIZE(items.get()) != count) {
            return raise_count(count, PySequence_Fast_GET_SIZE(items.get()), "values");
        }
    }
    std::memcpy(address, written->data, static_cast<size_t>(count * size));
    return true;
}

Memory *own_memory(const Array *array)
{
    bool owns = array->keeper && Py_TYPE(array->keeper) == &Memory_Type;
    return owns ? reinterpret_cast<Memory *>(array->keeper) : nullptr;
}

bool assign(Array *array, Py_ssize_t start, Py_ssize_t count, PyObject *value)
{
    char *address = array->data + start * size_of_element(array);
    bool whole_elements = !holds_pointers(*array->type) && is_bytes(value);
    return whole_elements ? copy_bytes(*array->type, address, count * size_of_element(array), value)
                          : copy_values(*array->type, address, count, value, own_memory(array));
}

void deallocate(PyObject *object)
{
    Array *array = as_array(object);
    if (array->references) {
        PyObject_ClearWeakRefs(object);
    }
    Py_XDECREF(array->dictionary);
    Py_XDECREF(array->keeper);
    PyObject_Del(object);
}

// The dictionary is there for `this` alone.
int set_attribute(PyObject *object, PyObject *name, PyObject *value)
{
    if (PyString_Check(name) && !_PyType_Lookup(Py_TYPE(object), name)) {
        PyErr_Format(PyExc_AttributeError, "an array has no attribute '%.200s'", PyString_AS_STRING(name));
        return -1;
    }
    return PyObject_GenericSetAttr(object, name, value);
}

bool check_index(const Array *array, Py_ssize_t index)
{
    if (index >= 0 && index < array->count) {
        return true;
    }
    PyErr_Format(PyExc_IndexError, "index %zd of an array of %zd", index, array->count);
    return false;
}

Py_ssize_t length(PyObject *object)
{
    return as_array(object)->count;
}

NewReference item(PyObject *object, Py_ssize_t index)
{
    Array *array = as_array(object);
    if (!check_index(array, index)) {
        return nullptr;
    }
    return read_value(*array->type, array->data + index * size_of_element(array), array->keeper);
}

int assign_item(PyObject *object, Py_ssize_t index, PyObject *value)
{
    Array *array = as_array(object);
    if (!check_index(array, index)) {
        return -1;
    }
    if (!value) {
        PyErr_SetString(PyExc_TypeError, "the elements of an array cannot be deleted");
        return -1;
    }
    // Kept first, since that may fail.
    Memory *memory = holds_pointers(*array->type) && value != Py_None ? own_memory(array) : nullptr;
    if (memory && !keep(memory, value)) {
        return -1;
    }
    return write_value(*array->type, array->data + index * size_of_element(array), value) ? 0 : -1;
}

NewReference values_of(const Array *array, Py_ssize_t start, Py_ssize_t step, Py_ssize_t count)
{
    Owned list = Owned::steal(PyList_New(count));
    for (Py_ssize_t i = 0; list && i < count; ++i) {
        char *address = array->data + (start + i * step) * size_of_element(array);
        PyObject *value = read_value(*array->type, address, array->keeper);
        if (!value) {
            return nullptr;
        }
        PyList_SET_ITEM(list.get(), i, value);
    }
    return list.release();
}

bool index_of(PyObject *key, Py_ssize_t count, Py_ssize_t *index)
{
    *index = PyNumber_AsSsize_t(key, PyExc_IndexError);
    if (*index == -1 && PyErr_Occurred()) {
        return false;
    }
    *index += *index < 0 ? count : 0;
    return true;
}

NewReference subscript(PyObject *object, PyObject *key)
{
    Array *array = as_array(object);
    if (PySlice_Check(key)) {
        Py_ssize_t start, stop, step, count;
        if (PySlice_GetIndicesEx(reinterpret_cast<PySliceObject *>(key), array->count, &start, &stop, &step,
                                 &count)
            != 0) {
            return nullptr;
        }
        if (count == 0) {
            return new_zeroed_array(*array->type, 0);
        }
        return step == 1 ? new_array_at(*array->type, count, array->data + start * size_of_element(array),
                                        array->keeper)
                         : values_of(array, start, step, count);
    }
    Py_ssize_t index;
    return index_of(key, array->count, &index) ? item(object, index) : nullptr;
}

int assign_subscript(PyObject *object, PyObject *key, PyObject *value)
{
    Array *array = as_array(object);
    Py_ssize_t index;
    if (!PySlice_Check(key)) {
        return index_of(key, array->count, &index) ? assign_item(object, index, value) : -1;
    }
    Py_ssize_t stop, step, count;
    if (PySlice_GetIndicesEx(reinterpret_cast<PySliceObject *>(key), array->count, &index, &stop, &step,
                             &count)
        != 0) {
        return -1;
    }
    if (!value || step != 1) {
        PyErr_SetString(PyExc_TypeError, value ? "only a slice without a step can be assigned"
                                               : "the elements of an array cannot be deleted");
        return -1;
    }
    return assign(array, index, count, value) ? 0 : -1;
}

NewReference slice(PyObject *object, Py_ssize_t start, Py_ssize_t stop)
{
    Owned key = Owned::steal(_PySlice_FromIndices(start, stop));
    return key ? subscript(object, key.get()) : nullptr;
}

int assign_slice(PyObject *object, Py_ssize_t start, Py_ssize_t stop, PyObject *value)
{
    Owned key = Owned::steal(_PySlice_FromIndices(start, stop));
    return key ? assign_subscript(object, key.get(), value) : -1;
}

NewReference as_bytes(PyObject *object)
{
    Array *array = as_array(object);
    return PyString_FromStringAndSize(array->data, array->count * size_of_element(array));
}

NewReference represent(PyObject *object)
{
    constexpr Py_ssize_t most_shown = 8;
    Array *array = as_array(object);
    bool all = array->count <= most_shown;
    Owned values = Owned::steal(values_of(array, 0, 1, all ? array->count : most_shown));
    Owned text = Owned::steal(values ? PyObject_Repr(values.get()) : nullptr);
    if (!text) {
        return nullptr;
    }
    return PyString_FromFormat("<quorel array of %zd %s: %s%s>", array->count, name_of(*array->type),
                               PyString_AS_STRING(text.get()), all ? "" : " and more");
}

// Equal to a sequence with equal values.
NewReference compare(PyObject *left, PyObject *right, int operation)
{
    if ((operation != Py_EQ && operation != Py_NE) || Py_TYPE(left) != &Array_Type
        || !(Py_TYPE(right) == &Array_Type || PyList_Check(right) || PyTuple_Check(right)
             || PyString_Check(right))) {
        Py_INCREF(Py_NotImplemented);
        return Py_NotImplemented;
    }
    Owned mine, theirs;
    if (PyString_Check(right)) {
        mine = Owned::steal(as_bytes(left));
        theirs = Owned::share(right);
    } else {
        mine = Owned::steal(values_of(as_array(left), 0, 1, as_array(left)->count));
        theirs = Owned::steal(PySequence_List(right));
    }
    return mine && theirs ? PyObject_RichCompare(mine.get(), theirs.get(), operation) : nullptr;
}

Py_ssize_t read_buffer(PyObject *object, Py_ssize_t segment, void **data)
{
    if (segment != 0) {
        PyErr_SetString(PyExc_SystemError, "an array is one segment");
        return -1;
    }
    Array *array = as_array(object);
    *data = array->data;
    return array->count * size_of_element(array);
}

Py_ssize_t count_segments(PyObject *object, Py_ssize_t *size)
{
    if (size) {
        *size = as_array(object)->count * size_of_element(as_array(object));
    }
    return 1;
}

// Whoever may write to the memory has its address, and may keep that after the memory has gone.
Py_ssize_t write_buffer(PyObject *object, Py_ssize_t segment, void **data)
{
    if (loan_of(as_array(object)->keeper)) {
        PyErr_SetString(PyExc_TypeError, "what a callback was given is written by assignment to a slice");
        return -1;
    }
    return read_buffer(object, segment, data);
}

int get_buffer(PyObject *object, Py_buffer *view, int flags)
{
    Array *array = as_array(object);
    if (loan_of(array->keeper)) {
        // A view outlives the callback: it has a copy.
        Owned bytes = Owned::steal(as_bytes(object));
        return bytes ? PyBuffer_FillInfo(view, bytes.get(), PyString_AS_STRING(bytes.get()),
                                         PyString_GET_SIZE(bytes.get()), 1, flags)
                     : -1;
    }
    return PyBuffer_FillInfo(view, object, array->data, array->count * size_of_element(array), 0, flags);
}

NewReference get_value(PyObject *object, void *)
{
    return item(object, 0);
}

int set_value(PyObject *object, PyObject *value, void *)
{
    return assign_item(object, 0, value);
}

NewReference get_type(PyObject *object, void *)
{
    return PyString_FromString(name_of(*as_array(object)->type));
}

NewReference get_this(PyObject *object, void *)
{
    PyObject *pointer = PyDict_GetItem(as_array(object)->dictionary, this_name());
    return Owned::share(pointer).release();
}

PyGetSetDef attributes[] = {
    {const_cast<char *>("value"), get_value, set_value,
     const_cast<char *>("The first element, of a cell the only one."), nullptr},
    {const_cast<char *>("type"), get_type, nullptr, const_cast<char *>("The C type of an element."), nullptr},
    {const_cast<char *>("this"), get_this, nullptr,
     const_cast<char *>("The pointer object that functions see."), nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

PySequenceMethods sequence_methods;
PyMappingMethods mapping_methods;
PyBufferProcs buffer_methods;

// A size, or as many as there are values. A size that no 32-bit target could have is MemoryError on all hosts.
NewReference array_of(const CType &type, PyObject *content)
{
    if (PyInt_Check(content) || PyLong_Check(content)) {
        Py_ssize_t count = PyNumber_AsSsize_t(content, PyExc_MemoryError);
        if (count == -1 && PyErr_Occurred()) {
            return nullptr;
        }
        if (count < 0) {
            PyErr_Format(PyExc_ValueError, "an array cannot have %zd elements", count);
            return nullptr;
        }
        return new_zeroed_array(type, count);
    }
    Owned items;
    Py_ssize_t count;
    if (!holds_pointers(type) && is_bytes(content)) {
        count = PyObject_Size(content);
        bool by_element = Py_TYPE(content) == &Array_Type;
        auto size = static_cast<Py_ssize_t>(by_element ? as_array(content)->type->size : 1) * count;
        if (type.size != 0 && size % type.size != 0) {
            PyErr_Format(PyExc_ValueError, "%zd bytes are no whole number of '%.200s', which has %u", size,
                         name_of(type), type.size);
            return nullptr;
        }
        count = type.size != 0 ? size / static_cast<Py_ssize_t>(type.size) : 0;
        items = Owned::share(content);
    } else {
        items = Owned::steal(PySequence_Fast(content, "array() takes a size, bytes or a sequence of values"));
        count = items ? PySequence_Fast_GET_SIZE(items.get()) : 0;
    }
    Owned array = Owned::steal(items ? new_zeroed_array(type, count) : nullptr);
    bool filled = array && assign(as_array(array.get()), 0, count, items.get());
    return filled ? array.release() : nullptr;
}

}  // namespace

PyTypeObject Array_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "quorel.Array", sizeof(Array)};

bool initialise_array_type()
{
    sequence_methods.sq_length = length;
    sequence_methods.sq_item = item;
    sequence_methods.sq_ass_item = assign_item;
    sequence_methods.sq_slice = slice;
    sequence_methods.sq_ass_slice = assign_slice;
    mapping_methods.mp_length = length;
    mapping_methods.mp_subscript = subscript;
    mapping_methods.mp_ass_subscript = assign_subscript;
    buffer_methods.bf_getreadbuffer = read_buffer;
    buffer_methods.bf_getwritebuffer = write_buffer;
    buffer_methods.bf_getsegcount = count_segments;
    buffer_methods.bf_getbuffer = get_buffer;
    PyTypeObject &type = Array_Type;
    type.tp_dealloc = deallocate;
    type.tp_repr = represent;
    type.tp_str = as_bytes;
    type.tp_hash = PyObject_HashNotImplemented;
    type.tp_richcompare = compare;
    type.tp_as_sequence = &sequence_methods;
    type.tp_as_mapping = &mapping_methods;
    type.tp_as_buffer = &buffer_methods;
    type.tp_getset = attributes;
    type.tp_dictoffset = offsetof(Array, dictionary);
    type.tp_weaklistoffset = offsetof(Array, references);
    type.tp_getattro = PyObject_GenericGetAttr;
    type.tp_setattro = set_attribute;
    type.tp_flags |= Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_NEWBUFFER;
    type.tp_doc =
        "Typed memory that Python owns: see quorel.array and quorel.cell.\n\n"
        "Indexed and bounds-checked; a slice without a step is the same memory. Any function takes it where\n"
        "it takes a pointer to such elements. bytes(a) gives a copy of the bytes.";
    return PyType_Ready(&type) == 0;
}

NewReference new_array_at(const CType &type, Py_ssize_t count, char *data, PyObject *keeper)
{
    // What goes by one name may be several types to functions: the chain has a pointer for each.
    Owned pointer;
    for (const CType *twin = &type; twin; twin = twin->twin == none ? nullptr : &c_types[twin->twin]) {
        Owned link = Owned::steal(new_pointer(data, twin->pointer, keeper));
        if (!link) {
            return nullptr;
        }
        reinterpret_cast<SwigPyObject *>(link.get())->next = pointer.release();
        pointer = std::move(link);
    }
    Owned dictionary = Owned::steal(pointer ? PyDict_New() : nullptr);
    if (!dictionary || PyDict_SetItem(dictionary.get(), this_name(), pointer.get()) != 0) {
        return nullptr;
    }
    Array *array = PyObject_New(Array, &Array_Type);
    if (!array) {
        return nullptr;
    }
    array->dictionary = dictionary.release();
    array->keeper = Owned::share(keeper).release();
    array->data = data;
    array->count = count;
    array->type = &type;
    array->references = nullptr;
    Owned made = Owned::steal(reinterpret_cast<PyObject *>(array));
    PyObject *loan = loan_of(keeper);
    return !loan || lend(loan, made.get()) ? made.release() : nullptr;
}

NewReference new_zeroed_array(const CType &type, Py_ssize_t count)
{
    if (type.size == 0 || type.pointer == no_type) {
        PyErr_Format(PyExc_TypeError, "'%.200s' is %s", name_of(type),
                     type.size == 0 ? "a type whose size the headers leave open"
                                    : "a type that no function takes a pointer to");
        return nullptr;
    }
    // Whoever is given an empty one may take it for a single one.
    Memory *memory = new_memory(count == 0 ? 1 : count, static_cast<Py_ssize_t>(type.size));
    Owned keeper = Owned::steal(memory ? as_object(memory) : nullptr);
    return keeper ? new_array_at(type, count, memory->data, keeper.get()) : nullptr;
}

NewReference new_array(PyObject *, PyObject *args)
{
    PyObject *name, *content;
    if (!PyArg_UnpackTuple(args, "array", 2, 2, &name, &content)) {
        return nullptr;
    }
    const CType *type = find_type_named(name);
    return type ? array_of(*type, content) : nullptr;
}

NewReference new_cell(PyObject *, PyObject *args)
{
    PyObject *name, *value = nullptr;
    if (!PyArg_UnpackTuple(args, "cell", 1, 2, &name, &value)) {
        return nullptr;
    }
    const CType *type = find_type_named(name);
    Owned cell = Owned::steal(type ? new_zeroed_array(*type, 1) : nullptr);
    bool filled = cell && (!value || assign_item(cell.get(), 0, value) == 0);
    return filled ? cell.release() : nullptr;
}

void forget_memory(PyObject *object)
{
    if (Py_TYPE(object) == &Array_Type) {
        as_array(object)->data = nullptr;
        as_array(object)->count = 0;
    }
}

NewReference read_array(const CType &type, char *address, PyObject *keeper)
{
    if (type.target == none) {
        return PyString_FromStringAndSize(address, static_cast<Py_ssize_t>(type.size));
    }
    const CType &element = c_types[type.target];
    if (element.kind == Kind::character) {
        const void *end = std::memchr(address, 0, type.size);
        auto size = end ? static_cast<const char *>(end) - address : static_cast<Py_ssize_t>(type.size);
        return PyString_FromStringAndSize(address, size);
    }
    auto count = static_cast<Py_ssize_t>(element.size != 0 ? type.size / element.size : 0);
    return new_array_at(element, count, address, keeper);
}

bool write_array(const CType &type, char *address, PyObject *value)
{
    if (type.target == none) {
        return raise_wrong_value(type, value);
    }
    const CType &element = c_types[type.target];
    if (element.size == 0) {
        return raise_wrong_value(type, value);
    }
    if (!holds_pointers(element) && is_bytes(value)) {
        return copy_bytes(element, address, static_cast<Py_ssize_t>(type.size), value);
    }
    return copy_values(element, address, static_cast<Py_ssize_t>(type.size / element.size), value, nullptr);
}

}  // namespace quorel
