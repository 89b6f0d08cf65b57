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
    String8(char const *text);
    String8(std::string text);

    /// Ends with a zero that size() does not count; never null.
    char const *data() const noexcept;
    std::size_t size() const noexcept;

private:
    struct Text : PtrInterface {
        explicit Text(std::string characters_) : characters(std::move(characters_)) {}
        std::string const characters;
    };
    Ptr<Text const> text_; ///< null when empty
};

bool operator==(String8 const &a, String8 const &b);
inline bool operator!=(String8 const &a, String8 const &b)
{
    return !(a == b);
}

/// Text as printf() would write it. Throws InternalException if the C library refuses the format.
String8 format(char const *pattern, ...) __attribute__((format(printf, 1, 2)));

}  // namespace Vey
