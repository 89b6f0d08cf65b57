#include "vey/exception.h"

namespace Vey {

// Here rather than inline, so that each class has its type information once, in this library.
Exception::~Exception() = default;
ErrnoException::~ErrnoException() = default;
RangeException::~RangeException() = default;
InternalException::~InternalException() = default;

void throwRangeException(const char *text)
{
    throw RangeException(text);
}

}  // namespace Vey
