/// What the SDK was built from. Users replace these strings and release them with delete[].
#include <appl/build.h>

#include <cstring>
#include <new>

namespace {

/// Null when memory is short: nothing may fail while the library is loaded.
char *heap_string(const char *text)
{
    char *copy = new (std::nothrow) char[std::strlen(text) + 1];
    return copy != nullptr ? std::strcpy(copy, text) : nullptr;
}

}  // namespace

[[gnu::visibility("default")]] char *_build_release = heap_string("development host");
[[gnu::visibility("default")]] char *_build_user = heap_string("unknown");
[[gnu::visibility("default")]] char *_build_host = heap_string("unknown");
[[gnu::visibility("default")]] char *_build_date = heap_string("unknown");
[[gnu::visibility("default")]] char *_build_datestamp = heap_string("unknown");
[[gnu::visibility("default")]] char *_build_tree = heap_string("unknown");
