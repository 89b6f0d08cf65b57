// The method table: 9,519 names would need some 28,000 relocated pointers as a static array, so the
// generator writes only docstrings and functions, and the Python records are made once, at import.
#pragma once

#include "tables.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// The table as Python has it, null-terminated; row 0 is SWIG_PyInstanceMethod_New, row n + 1 the generated
/// method n. Filled by build_method_table().
extern PyMethodDef *method_table;

/// Fills method_table from the generated groups, once; returns false with an exception when memory is short.
bool build_method_table();

inline const char *method_name(uint16_t method)
{
    return method_table[method + 1].ml_name;
}

inline const char *method_doc(uint16_t method)
{
    return method_table[method + 1].ml_doc;
}

}  // namespace quorel
