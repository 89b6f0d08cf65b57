#include "typemaps/ip_text.h"

#include <cstring>

namespace quorel {

bool to_ip_text(Borrowed object, ip_addr_text_t text)
{
    HeldString source;
    if (to_string(object, &source) == Status::ok && source.text) {
        // A str may hold NULs of its own.
        size_t size =
            PyString_Check(object) ? static_cast<size_t>(PyString_Size(object)) : std::strlen(source.text);
        if (size <= sizeof(ip_addr_text_t)) {
            std::memset(text, 0, sizeof(ip_addr_text_t));
            std::memcpy(text, source.text, size);
            return true;
        }
    }
    PyErr_SetString(PyExc_TypeError, "in method 'format_ipaddr', argument 1 of type 'char [IPADDR_STR_LEN]'");
    return false;
}

}  // namespace quorel
