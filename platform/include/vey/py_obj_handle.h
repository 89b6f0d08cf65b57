// A Python object as the platform holds it. The one place of the platform that knows of Python.
#pragma once

#include "vey/ptr.h"

#include <initializer_list>
#include <optional>

struct _object;  // Python's PyObject
struct _is;      // and PyInterpreterState

namespace Vey {

/// Keeps one reference to a Python object for as long as it lives. Made with the interpreter lock held, in the
/// interpreter of the process that the object belongs to; used and ended in any thread, with or without the lock,
/// which it takes for whatever it does with the object, and does in that interpreter.
class PyObjHandle : public PtrInterface {
public:
    /// takesOver: whether the caller's reference becomes the handle's, which otherwise adds one of its own.
    PyObjHandle(_object *object, bool takesOver);

    /// Calls a method of the object and gives the int or long that it returns, or nothing for None. Throws
    /// InternalException, with Python's text, if the method raises, returns anything else, or the object's
    /// interpreter has ended; no Python exception stays set.
    std::optional<long> call(const char *method, std::initializer_list<long> arguments) const;

    /// The same for a method whose result does not matter, whatever it is.
    void run(const char *method, std::initializer_list<long> arguments) const;

protected:
    ~PyObjHandle() override;

private:
    _object *object_;
    _is *interpreter_;
};

}  // namespace Vey
