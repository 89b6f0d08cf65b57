#include "vey/string8.h"

#include "vey/exception.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace Vey {

String8::String8(const char *text) : String8(std::string(text)) {}

String8::String8(std::string text)
{
    if (!text.empty()) {
        text_ = new Text(std::move(text));
    }
}

const char *String8::data() const noexcept
{
    return text_ ? text_->characters.c_str() : "";
}

std::size_t String8::size() const noexcept
{
    return text_ ? text_->characters.size() : 0;
}

bool operator==(const String8 &a, const String8 &b)
{
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

String8 format(const char *pattern, ...)
{
    std::va_list arguments, again;
    va_start(arguments, pattern);
    va_copy(again, arguments);
    int length = std::vsnprintf(nullptr, 0, pattern, arguments);
    va_end(arguments);
    std::string text;
    if (length >= 0) {
        text.resize(static_cast<std::size_t>(length));
        // The C library writes its zero over the string's own.
        std::vsnprintf(text.data(), text.size() + 1, pattern, again);
    }
    va_end(again);
    if (length < 0) {
        throw InternalException("text cannot be formatted");
    }
    return text;
}

}  // namespace Vey
