#include "loan.h"

#include "array.h"
#include "lookup.h"

namespace quorel {

namespace {

struct Loan {
    PyObject_HEAD PyObject *lent;  ///< a list; null after the end
    Py_ssize_t most;               ///< as long as it gets before what nobody holds any more is left out
};

constexpr Py_ssize_t least_most = 32;

swig_type_info expired = {
    "_p_quorel_expired", "argument of a callback that has returned *", nullptr, nullptr, nullptr, 0};

PyTypeObject Loan_Type = {PyVarObject_HEAD_INIT(nullptr, 0) "quorel.Loan", sizeof(Loan)};

Loan *as_loan(PyObject *object)
{
    return reinterpret_cast<Loan *>(object);
}

void deallocate(PyObject *object)
{
    Py_XDECREF(as_loan(object)->lent);
    PyObject_Del(object);
}

// A callback may read parts of its arguments as often as it likes.
bool leave_out_dropped(Loan *loan)
{
    PyObject *lent = loan->lent;
    Py_ssize_t kept = 0, count = PyList_GET_SIZE(lent);
    for (Py_ssize_t i = 0; i < count; ++i) {
        PyObject *object = PyList_GET_ITEM(lent, i);
        if (Py_REFCNT(object) > 1) {
            PyList_SET_ITEM(lent, i, PyList_GET_ITEM(lent, kept));
            PyList_SET_ITEM(lent, kept++, object);
        }
    }
    loan->most = kept * 2 < least_most ? least_most : kept * 2;
    return PyList_SetSlice(lent, kept, count, nullptr) == 0;
}

}  // namespace

bool initialise_loan_type()
{
    Loan_Type.tp_dealloc = deallocate;
    Loan_Type.tp_flags |= Py_TPFLAGS_DEFAULT;
    Loan_Type.tp_doc = "What a callback was given.";
    return PyType_Ready(&Loan_Type) == 0;
}

Owned new_loan()
{
    Owned lent = Owned::steal(PyList_New(0));
    Loan *loan = lent ? PyObject_New(Loan, &Loan_Type) : nullptr;
    if (loan) {
        loan->lent = lent.release();
        loan->most = least_most;
    }
    return Owned::steal(reinterpret_cast<PyObject *>(loan));
}

void end_loan(PyObject *loan)
{
    Owned lent = Owned::steal(as_loan(loan)->lent);
    as_loan(loan)->lent = nullptr;
    for (Py_ssize_t i = 0; lent && i < PyList_GET_SIZE(lent.get()); ++i) {
        PyObject *object = PyList_GET_ITEM(lent.get(), i);
        if (is_pointer_object(object)) {
            reinterpret_cast<SwigPyObject *>(object)->ptr = nullptr;
            reinterpret_cast<SwigPyObject *>(object)->ty = &expired;
        }
        forget_memory(object);
    }
}

bool lend(PyObject *loan, PyObject *object)
{
    Loan *from = as_loan(loan);
    if (!from->lent) {
        PyErr_SetString(PyExc_TypeError, "the callback that this belongs to has returned");
        return false;
    }
    if (PyList_GET_SIZE(from->lent) >= from->most && !leave_out_dropped(from)) {
        return false;
    }
    return PyList_Append(from->lent, object) == 0;
}

PyObject *loan_of(PyObject *keeper)
{
    if (keeper && has_keeper(keeper)) {
        keeper = reinterpret_cast<PointerObject *>(keeper)->keeper;
    }
    return keeper && Py_TYPE(keeper) == &Loan_Type ? keeper : nullptr;
}

bool keep_alive(PyObject *part, PyObject *keeper)
{
    PyObject *loan = loan_of(keeper);
    if (loan && !lend(loan, part)) {
        return false;
    }
    reinterpret_cast<PointerObject *>(part)->keeper = Owned::share(loan ? loan : keeper).release();
    return true;
}

}  // namespace quorel
