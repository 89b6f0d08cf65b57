// The names of the chip's registers, memories and fields, which are no constants of the binding.
//
// They stand in this order, each sort in that of the headers; the generator writes the tables (chip_names.cpp).
#pragma once

#include "module/references.h"

#include <cstddef>
#include <cstdint>

namespace quorel {

extern const size_t chip_name_counts[3];
extern const char chip_name_text[];  ///< each with its NUL
extern const int32_t chip_numbers[];

/// _chip_names(): a dict for each sort, from name to number
NewReference list_chip_names(PyObject *module, PyObject *);

}  // namespace quorel
