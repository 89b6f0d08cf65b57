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

Status copy_string(Borrowed value, char **copy)
{
    HeldString string;
    Status status = to_string(value, &string);
    if (status != Status::ok) {
        return status;
    }
    *copy = nullptr;
    if (const char *text = string.text) {
        PyObject *object = value;
        size_t size =
            (PyString_Check(object) ? static_cast<size_t>(PyString_GET_SIZE(object)) : std::strlen(text)) + 1;
        *copy = new (std::nothrow) char[size];
        if (!*copy) {
            return Status::memory;
        }
        std::memcpy(*copy, text, size);
    }
    return Status::ok;
}

void take_string(char **place, char *copy)
{
    if (*place && !is_static_storage(*place)) {
        delete[] *place;
    }
    *place = copy;
}

Status replace_string(Borrowed value, char **place)
{
    char *copy;
    Status status = copy_string(value, &copy);
    if (status == Status::ok) {
        take_string(place, copy);
    }
    return status;
}

}  // namespace quorel
