#include "string_storage.h"

#include <dlfcn.h>

#include <cstring>
#include <new>

namespace quorel {

namespace {

bool is_static_storage(const char *text)
{
    Dl_info image;
    return dladdr(text, &image) != 0;
}

}  // namespace

Status replace_string(Borrowed value, char **place)
{
    HeldString string;
    Status status = to_string(value, &string);
    if (status != Status::ok) {
        return status;
    }
    char *copy = nullptr;
    if (const char *text = string.text) {
        PyObject *object = value;
        size_t size =
            (PyString_Check(object) ? static_cast<size_t>(PyString_GET_SIZE(object)) : std::strlen(text)) + 1;
        copy = new (std::nothrow) char[size];
        if (!copy) {
            return Status::memory;
        }
        std::memcpy(copy, text, size);
    }
    if (*place && !is_static_storage(*place)) {
        delete[] *place;
    }
    *place = copy;
    return Status::ok;
}

}  // namespace quorel
