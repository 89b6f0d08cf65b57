#include "reals.h"

#include "member_value.h"

#include <cmath>

namespace quorel {

namespace {

bool overflows(double number)
{
    return std::isinf(static_cast<float>(number)) && !std::isinf(number);
}

}  // namespace

Status to_long_double(PyObject *object, long double *value)
{
    double number;
    Status status = to_double(object, &number);
    if (status == Status::ok) {
        *value = number;
    }
    return status;
}

NewReference from_long_double(long double value)
{
    const auto number = static_cast<double>(value);
    if (std::isinf(number) && !std::isinf(value)) {
        PyErr_SetString(PyExc_OverflowError, "the long double is greater than any float");
        return nullptr;
    }
    return PyFloat_FromDouble(number);
}

Status to_complex(PyObject *object, _Complex double *value)
{
    Py_complex number = {0, 0};
    Status status = Status::ok;
    if (PyComplex_Check(object)) {
        number = PyComplex_AsCComplex(object);
    } else {
        status = to_double(object, &number.real);
    }
    if (status == Status::ok) {
        __real__ *value = number.real;
        __imag__ *value = number.imag;
    }
    return status;
}

Status to_complex_float(PyObject *object, _Complex float *value)
{
    _Complex double number;
    Status status = to_complex(object, &number);
    if (status != Status::ok) {
        return status;
    }
    if (overflows(__real__ number) || overflows(__imag__ number)) {
        return Status::overflow;
    }
    __real__ *value = static_cast<float>(__real__ number);
    __imag__ *value = static_cast<float>(__imag__ number);
    return Status::ok;
}

NewReference from_complex(_Complex double value)
{
    return PyComplex_FromDoubles(__real__ value, __imag__ value);
}

NewReference from_complex_float(_Complex float value)
{
    return PyComplex_FromDoubles(__real__ value, __imag__ value);
}

NewReference get_long_double(const MemberRow &row, PyObject *args)
{
    return get_value_generally<long double, from_long_double>(row, args);
}

NewReference set_long_double(const MemberRow &row, PyObject *args)
{
    return set_value_generally<long double, to_long_double>(row, args);
}

NewReference get_complex(const MemberRow &row, PyObject *args)
{
    return get_value_generally<_Complex double, from_complex>(row, args);
}

NewReference set_complex(const MemberRow &row, PyObject *args)
{
    return set_value_generally<_Complex double, to_complex>(row, args);
}

NewReference get_complex_float(const MemberRow &row, PyObject *args)
{
    return get_value_generally<_Complex float, from_complex_float>(row, args);
}

NewReference set_complex_float(const MemberRow &row, PyObject *args)
{
    return set_value_generally<_Complex float, to_complex_float>(row, args);
}

}  // namespace quorel
