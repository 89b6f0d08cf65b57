// Functions of the C++ library which its headers call, and which came with GCC 4.9: with them here, the SDK's library
// loads beside that of GCC 4.8. Weak, for programs into which a C++ library is linked that has them too.
#include <bits/functexcept.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cxxabi.h>

// Its format is printf's, of which it uses %s and %zu.
__attribute__((weak)) void std::__throw_out_of_range_fmt(const char *format, ...)
{
    char text[200];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    std::__throw_out_of_range(text);
}

// A size that no array can have. The library lacks std::bad_array_new_length too, and throws what that derives from.
extern "C" __attribute__((weak)) void __cxxabiv1::__cxa_throw_bad_array_new_length()
{
    std::__throw_bad_alloc();
}
