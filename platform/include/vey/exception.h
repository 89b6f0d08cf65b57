// What the platform's functions throw.
#pragma once

#include "vey/string8.h"

#include <exception>

namespace Vey {

/// Base of all of them; what() is the text for people.
class Exception : public std::exception {
public:
    explicit Exception(String8 text) : text_(std::move(text)) {}
    ~Exception() override;
    const char *what() const noexcept override { return text_.data(); }

private:
    String8 text_;
};

/// The operating system refused something.
class ErrnoException : public Exception {
public:
    ErrnoException(String8 text, int error) : Exception(std::move(text)), error_(error) {}
    ~ErrnoException() override;
    /// The number, as in <cerrno>.
    int error() const noexcept { return error_; }

private:
    int error_;
};

/// A value lies outside what its type allows.
class RangeException : public Exception {
public:
    using Exception::Exception;
    ~RangeException() override;
};

/// The platform cannot go on with what it was given or what it found.
class InternalException : public Exception {
public:
    using Exception::Exception;
    ~InternalException() override;
};

/// Throws a RangeException.
[[noreturn]] void throwRangeException(const char *text);

}  // namespace Vey
