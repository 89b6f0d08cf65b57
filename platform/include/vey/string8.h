// Counted, unchanging text.
#pragma once

#include "vey/ptr.h"

#include <cstddef>
#include <string>

namespace Vey {

/// Text of 8-bit characters with its length, zero characters allowed. Copies share the characters.
class String8 {
public:
    String8() = default;
    String8(const char *text);
    String8(std::string text);

    /// Ends with a zero that size() does not count; never null.
    const char *data() const noexcept;
    std::size_t size() const noexcept;

private:
    struct Text : PtrInterface {
        explicit Text(std::string characters_) : characters(std::move(characters_)) {}
        std::string const characters;
    };
    Ptr<const Text> text_;  ///< null when empty
};

bool operator==(const String8 &a, const String8 &b);
inline bool operator!=(const String8 &a, const String8 &b)
{
    return !(a == b);
}

/// Text as printf() would write it. Throws InternalException if the C library refuses the format.
String8 format(const char *pattern, ...) __attribute__((format(printf, 1, 2)));

}  // namespace Vey
