// Members that are bit-fields: they have no address, so each has code of its own to read and write it, and a value
// that it cannot hold overflows.
#pragma once

#include "record.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// How one bit-field is read and written, as 64 bits.
struct BitField {
    uint64_t (*read)(void *self);
    void (*write)(void *self, uint64_t value);  ///< null if it is constant
    unsigned bits;
    bool is_signed;
};

NewReference get_bits(const MemberRow &row, PyObject *args, const BitField &field);
NewReference set_bits(const MemberRow &row, PyObject *args, const BitField &field);

}  // namespace quorel
