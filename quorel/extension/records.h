// Records as values: their members by name, as plain Python values, all at once.
//
// Plain values are ints and longs, bools, str, None, lists and dicts: they can be compared, kept, and written as JSON.
// Of a member they are
//   a number          an int or long; of bytes that Python does not look into too, least significant first
//   a MAC address     text
//   a port bitmap     a list of ints
//   a set             a list of the names of its bits; of one without a name its number
//   an array          a list; of characters text up to the first NUL
//   a record          a dict
//   char *            text or None
//   another pointer   its address, or None for null
//
// A record is given as a proxy or a bare pointer object. Anything else raises TypeError, and a record whose memory is
// gone ValueError.
#pragma once

#include "index.h"
#include "module/type_table.h"

namespace quorel {

/// members(record, class or name): a list of (name, C type)
NewReference list_members(PyObject *module, PyObject *of);

/// fields(record): a list of (name, value), in the order of their declaration. Numbers, text and bitmaps are as in
/// as_dict(); records and arrays are the record's own memory, and keep it; pointers are pointer objects or None.
NewReference list_fields(PyObject *module, PyObject *record);

/// For str(): (name, value, whether it is a pointer) of the members that have a bit set. Pointers are addresses, and
/// arrays lists, with Ellipsis for what is zero up to the end.
NewReference list_set_fields(PyObject *module, PyObject *record);

/// as_dict(record)
NewReference as_dict(PyObject *module, PyObject *record);

/// update(record, values=None, **members)
///
/// Takes what as_dict() gives and more: text may be unicode; a record may be a dict with some of its members, or a
/// record; an array may be any sequence or buffer of its size; a set may be a number, a bit of one too; a pointer is a
/// pointer object or None, an address only if it is there already. Everything is converted, and what memory it takes
/// is had, before anything is written. Raises AttributeError for what is no member.
NewReference update(PyObject *module, PyObject *args, PyObject *keywords);

/// For the keywords of a record's constructor: as update(). Returns false with an exception set.
bool set_members(PyObject *record, PyObject *keywords);

/// A member that the module passes as a pointer to a copy, as a value: see carried(). Null without an exception where
/// a pointer says more.
NewReference read_copied(const swig_type_info *pointer, char *address);
/// The same, written; false without an exception where the value is none of those. OverflowError and ValueError come
/// as from update().
bool write_copied(const swig_type_info *pointer, char *address, PyObject *value);

/// copy(record): a record of its own with the same content.
NewReference copy_record(PyObject *module, PyObject *record);

}  // namespace quorel
