#include "refinements.h"

#include "proxy_type.h"

namespace quorel {

NewReference read_refined(const swig_type_info *type, char *address)
{
    auto *read = Proxy_Type.refinements.read_copied;
    return read ? read(type, address) : nullptr;
}

bool write_refined(const swig_type_info *type, char *address, PyObject *value)
{
    auto *write = Proxy_Type.refinements.write_copied;
    return write && write(type, address, value);
}

bool may_be_freed(const HeldPointer &memory, const char *method)
{
    auto *is_kept = Proxy_Type.refinements.is_kept;
    if (!is_kept || !memory.holder || !is_kept(memory.holder.get())) {
        return true;
    }
    PyErr_Format(PyExc_ValueError, "in method '%s', argument 1 is memory of something else, which frees it",
                 method);
    return false;
}

NewReference wrap_part(const HeldPointer &whole, void *part, swig_type_info *type)
{
    if (!part) {
        return new_none();
    }
    Owned bare = Owned::steal(new_pointer_object(part, type, Ownership::borrowed));
    auto *read_out = Proxy_Type.refinements.read_out;
    if (!bare || (read_out && !read_out(whole.holder.get(), bare.get()))) {
        return nullptr;
    }
    return with_proxy(std::move(bare));
}

}  // namespace quorel
