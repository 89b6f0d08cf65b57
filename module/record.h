// Records (C structures and unions): construction, destruction, registration of the proxy class, and access
// to members. One function per kind of member serves all members of that kind; a MemberRow says which record,
// at which offset, and what messages quote.
//
// The rules of all accessors:
//  - `self` is converted first, then the value; a failure changes nothing.
//  - A write to a null `self` does nothing; a read raises ValueError "invalid null reference in method ...".
//  - Arrays, nested records and pointers are read as pointer objects that own nothing and alias the record's
//    storage; nothing keeps the record alive for them, unless the package above does (refinements.h).
#pragma once

#include "call.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// new_<record>(): a zeroed record on the heap, as a bare pointer object that owns it.
NewReference new_record(const RecordRow &row, PyObject *args);
/// delete_<record>(self): takes the ownership away from the pointer object and frees the record.
NewReference delete_record(const RecordRow &row, PyObject *args);
/// <record>_swigregister(cls): results of this type become instances of cls from now on.
NewReference register_record(const RecordRow &row, PyObject *args);

/// The object that delete_<class>(self) is given, which nobody owns any more; false with an exception.
bool take_from_owner(PyObject *args, uint16_t method, uint16_t self, HeldPointer *object);
/// <class>_swigregister(cls), of a record or a pointer class whose pointer is argument `self`.
NewReference register_proxy_class(PyObject *args, uint16_t method, uint16_t self);

/// A copy of `size` bytes on the C heap, where delete_record() frees it; null when memory is short.
void *copy_of(const void *record, size_t size);
/// The same as an object that owns the copy; null with an exception when memory is short.
NewReference from_copy(const void *record, size_t size, uint16_t type);

/// `self` of a read accessor, or null with an exception.
HeldPointer self_of_getter(const MemberRow &row, PyObject *args);

/// `self` of a write accessor, with the value still to be converted. `failed` is set with an exception;
/// a null `self` is no failure.
struct SetterArguments {
    HeldPointer self;
    PyObject *value;  ///< borrowed
    bool failed;
};
SetterArguments arguments_of_setter(const MemberRow &row, PyObject *args);

/// Raises the failure of a write accessor's value; returns null.
NewReference raise_value(const MemberRow &row, Status status) __attribute__((cold));

NewReference get_int32(const MemberRow &row, PyObject *args);
NewReference set_int32(const MemberRow &row, PyObject *args);
NewReference get_uint32(const MemberRow &row, PyObject *args);
NewReference set_uint32(const MemberRow &row, PyObject *args);
NewReference get_int8(const MemberRow &row, PyObject *args);
NewReference set_int8(const MemberRow &row, PyObject *args);
NewReference get_uint8(const MemberRow &row, PyObject *args);
NewReference set_uint8(const MemberRow &row, PyObject *args);
NewReference get_uint16(const MemberRow &row, PyObject *args);
NewReference set_uint16(const MemberRow &row, PyObject *args);
NewReference get_uint64(const MemberRow &row, PyObject *args);
NewReference set_uint64(const MemberRow &row, PyObject *args);
NewReference get_int16(const MemberRow &row, PyObject *args);
NewReference set_int16(const MemberRow &row, PyObject *args);
NewReference get_int64(const MemberRow &row, PyObject *args);
NewReference set_int64(const MemberRow &row, PyObject *args);
NewReference get_float(const MemberRow &row, PyObject *args);
NewReference set_float(const MemberRow &row, PyObject *args);
NewReference get_double(const MemberRow &row, PyObject *args);
NewReference set_double(const MemberRow &row, PyObject *args);
NewReference get_char(const MemberRow &row, PyObject *args);
NewReference set_char(const MemberRow &row, PyObject *args);
NewReference get_bool(const MemberRow &row, PyObject *args);
NewReference set_bool(const MemberRow &row, PyObject *args);

/// char *: a new str or None; writing keeps a private copy, see string_storage.h.
NewReference get_string(const MemberRow &row, PyObject *args);
NewReference set_string(const MemberRow &row, PyObject *args);

/// An array of char as text: up to its first NUL, or all of it. A str that is longer than the array is refused
/// (overflow); behind a shorter one come NULs.
NewReference get_text(const MemberRow &row, PyObject *args);
NewReference set_text(const MemberRow &row, PyObject *args);

/// A heap copy of a record, as an object that owns it; written by set_record().
NewReference get_copy(const MemberRow &row, PyObject *args);

/// Arrays and nested records: a pointer to the storage within the record.
NewReference get_storage(const MemberRow &row, PyObject *args);
/// Copies the declared number of elements; None raises "invalid null reference in variable ...".
NewReference set_array(const MemberRow &row, PyObject *args);
/// Copies the whole record; None raises "invalid null reference in method ...", argument 2.
NewReference set_record(const MemberRow &row, PyObject *args);

/// Pointers: None is the null pointer, both ways. Callbacks are read by get_pointer() too.
NewReference get_pointer(const MemberRow &row, PyObject *args);
NewReference set_pointer(const MemberRow &row, PyObject *args);
/// void *: takes any pointer object, which gives up its ownership.
NewReference set_any_pointer(const MemberRow &row, PyObject *args);

}  // namespace quorel
