// Lets one allocation of the process fail. To be preloaded: it stands before the C library's allocator.
#include <dlfcn.h>

#include <atomic>
#include <cerrno>
#include <cstddef>

namespace {

std::atomic<long> made{0}, failing{0};

bool fails()
{
    if (failing == 0 || ++made != failing) {
        return false;
    }
    errno = ENOMEM;
    return true;
}

// The allocator that stands next. Looking it up allocates nothing.
template <class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

/// From now on the allocation of that number fails, and those after it succeed again; 0 for none.
void fail_allocation(long number);
/// How many there were since a number was given.
long allocations();

void fail_allocation(long number)
{
    made = 0;
    failing = number;
}

long allocations()
{
    return made;
}

void *malloc(std::size_t size)
{
    static const auto allocate = next<void *(*)(std::size_t)>("malloc");
    return fails() ? nullptr : allocate(size);
}

void *calloc(std::size_t count, std::size_t size)
{
    static const auto allocate = next<void *(*)(std::size_t, std::size_t)>("calloc");
    return fails() ? nullptr : allocate(count, size);
}

void *realloc(void *block, std::size_t size)
{
    static const auto allocate = next<void *(*)(void *, std::size_t)>("realloc");
    return fails() ? nullptr : allocate(block, size);
}

}  // extern "C"
