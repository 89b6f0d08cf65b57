// The marker OUT, which stands for an output of a call, and what it stands for while the call lasts.
#pragma once

#include "index.h"
#include "module/references.h"

namespace quorel {

extern PyTypeObject Out_Type;
bool initialise_out_type();

/// OUT itself, a borrowed reference.
extern PyObject *out_marker;

inline bool is_out(PyObject *object)
{
    return Py_TYPE(object) == &Out_Type;
}

/// Whether the arrays among the arguments in `all`, those of checked(), have as many elements as the header says that
/// C may read or write, where it says so; false with an exception that says which has not.
bool have_room(PyObject *function, const CFunction &described, PyObject *all);

/// What one marker of a call stands for.
class Output {
public:
    /// Makes the memory for the parameter at `place` of `function`, as the marker there in `all` asks for: the
    /// arguments of checked(). Returns false with an exception that says what the parameter is.
    bool prepare(PyObject *function, const CFunction &described, size_t place, PyObject *all);

    /// What the function is given (borrowed), while the output lives.
    PyObject *argument() const { return argument_.get(); }
    char *address() const { return address_; }
    size_t place() const { return place_; }

    /// What C wrote. Of an array only `most` elements, if that is less than there are.
    NewReference value(uint64_t most) const;
    /// The number that C wrote; the greatest there is if it wrote no number.
    uint64_t number() const;
    const CParameter &parameter() const { return *parameter_; }

    Output() = default;
    /// The argument outlives nothing that it points to.
    ~Output();
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

private:
    bool prepare_record();
    bool prepare_memory();
    bool judge_size(PyObject *function, PyObject *all);

    const CParameter *parameter_ = nullptr;
    const CType *type_ = nullptr;
    size_t place_ = 0;
    Py_ssize_t count_ = 0;  ///< elements of an array; less than 0 for a single value
    char *address_ = nullptr;
    Owned argument_, keeper_;
    bool is_record_ = false;
    uint64_t small_ = 0;  ///< memory of numbers and pointers
};

}  // namespace quorel
