// Numbers that Python has a narrower type for, or another: long double, and complex numbers.
#pragma once

#include "record.h"
#include "variable.h"

namespace [[gnu::visibility("hidden")]] quorel {

/// A float, an int or a long; each float is a long double too.
Status to_long_double(PyObject *object, long double *value);
/// A float: the nearest to it. OverflowError if it is greater than all of them.
NewReference from_long_double(long double value);
NewReference get_long_double(const MemberRow &row, PyObject *args);
NewReference set_long_double(const MemberRow &row, PyObject *args);

/// A complex, a float, an int or a long. A part that becomes infinite on the way: overflow.
Status to_complex(PyObject *object, _Complex double *value);
Status to_complex_float(PyObject *object, _Complex float *value);
NewReference from_complex(_Complex double value);
NewReference from_complex_float(_Complex float value);
NewReference get_complex(const MemberRow &row, PyObject *args);
NewReference set_complex(const MemberRow &row, PyObject *args);
NewReference get_complex_float(const MemberRow &row, PyObject *args);
NewReference set_complex_float(const MemberRow &row, PyObject *args);

}  // namespace quorel
