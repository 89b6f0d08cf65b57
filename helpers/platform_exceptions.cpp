// What the platform throws, as Python's exceptions. Compiled with exceptions.
#include <Python.h>

#include "module/exceptions.h"
#include "vey/exception.h"

#include <new>

namespace {

void raise_os_error(const Vey::ErrnoException &exception)
{
    PyObject *arguments = Py_BuildValue("(is)", exception.error(), exception.what());
    if (arguments) {
        PyErr_SetObject(PyExc_OSError, arguments);
    }
    Py_XDECREF(arguments);
}

}  // namespace

void quorel::raise_current_exception() noexcept
{
    try {
        throw;
    } catch (const Vey::RangeException &exception) {
        PyErr_SetString(PyExc_ValueError, exception.what());
    } catch (const Vey::ErrnoException &exception) {
        raise_os_error(exception);
    } catch (const std::bad_alloc &) {
        PyErr_NoMemory();
    } catch (const std::exception &exception) {
        PyErr_SetString(PyExc_RuntimeError, exception.what());
    } catch (...) {
        PyErr_SetString(PyExc_RuntimeError, "the platform failed for a reason that it does not name");
    }
}
