#include "chip_names.h"

#include <cstring>

namespace quorel {

NewReference list_chip_names(PyObject *, PyObject *)
{
    const char *name = chip_name_text;
    const int32_t *number = chip_numbers;
    Owned all = Owned::steal(PyTuple_New(3));
    for (Py_ssize_t sort = 0; all && sort < 3; ++sort) {
        PyObject *names = PyDict_New();
        PyTuple_SET_ITEM(all.get(), sort, names);
        for (size_t i = 0; i < chip_name_counts[sort]; ++i, ++number, name += std::strlen(name) + 1) {
            Owned value = Owned::steal(names ? PyInt_FromLong(*number) : nullptr);
            if (!value || PyDict_SetItemString(names, name, value.get()) != 0) {
                return nullptr;
            }
        }
    }
    return all.release();
}

}  // namespace quorel
