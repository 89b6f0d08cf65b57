// What the module does more with in a record than storing a value: it keeps a copy of text, and takes the memory that
// goes behind a `void *` from its owner. Here it is made ready, so that doing it cannot fail.
#pragma once

#include "module/pointer_object.h"

namespace quorel {

class Replacements {
public:
    Replacements() = default;
    ~Replacements();
    Replacements(const Replacements &) = delete;
    Replacements &operator=(const Replacements &) = delete;

    /// A text for the `char *` at `place`: a str or a pointer object to characters.
    Status add_text(char *place, PyObject *text);
    /// What a pointer object, or None, points to for the `void *` at `place`.
    Status add_memory(char *place, PyObject *pointer);

    /// Does all of it, in order.
    void apply();

private:
    struct Replacement {
        void **place;
        char *text;  ///< null for memory
        HeldPointer memory;
        Replacement *next;
    };

    Replacement *append(char *place);

    Replacement *first_ = nullptr, **end_ = &first_;
};

}  // namespace quorel
