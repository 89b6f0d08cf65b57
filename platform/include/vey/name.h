// Names of the platform's objects.
#pragma once

#include "vey/string8.h"

namespace Vey {

/// What an object is called, for people to find it by. Names need not be unique.
class Name {
public:
    explicit Name(String8 text) : text_(std::move(text)) {}

    const String8 &text() const noexcept { return text_; }

private:
    String8 text_;
};

}  // namespace Vey
