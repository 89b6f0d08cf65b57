#include "replacements.h"

#include "module/string_storage.h"

#include <new>

namespace quorel {

Replacements::~Replacements()
{
    while (first_) {
        Replacement *next = first_->next;
        delete[] first_->text;
        delete first_;
        first_ = next;
    }
}

Replacements::Replacement *Replacements::append(char *place)
{
    auto *added = new (std::nothrow) Replacement{reinterpret_cast<void **>(place), nullptr, {}, nullptr};
    if (added) {
        *end_ = added;
        end_ = &added->next;
    }
    return added;
}

Status Replacements::add_text(char *place, PyObject *text)
{
    char *copy;
    Status status = copy_string(text, &copy);
    if (status != Status::ok) {
        return status;
    }
    Replacement *added = append(place);
    if (!added) {
        delete[] copy;
        return Status::memory;
    }
    added->text = copy;
    return Status::ok;
}

Status Replacements::add_memory(char *place, PyObject *pointer)
{
    HeldPointer memory = {};
    Status status = convert_pointer(pointer, nullptr, &memory);
    Replacement *added = status == Status::ok ? append(place) : nullptr;
    if (!added) {
        return status == Status::ok ? Status::memory : status;
    }
    added->memory = std::move(memory);
    return Status::ok;
}

void Replacements::apply()
{
    for (Replacement *one = first_; one; one = one->next) {
        if (one->text) {
            take_string(reinterpret_cast<char **>(one->place), one->text);
            one->text = nullptr;
            continue;
        }
        *one->place = one->memory.address;
        if (one->memory.holder) {
            reinterpret_cast<SwigPyObject *>(one->memory.holder.get())->own = 0;
        }
    }
}

}  // namespace quorel
