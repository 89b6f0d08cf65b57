#include "callers_memory.h"

#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace sim {

namespace {

using Copy = ssize_t (*)(pid_t, const iovec *, unsigned long, const iovec *, unsigned long, unsigned long);

/// The kernel copies, and tells what is not there. False if it does not copy for this process.
bool copied(Copy copy, void *own, void *callers, std::size_t bytes, bool *all)
{
    const iovec ours = {own, bytes}, theirs = {callers, bytes};
    const ssize_t count = copy(getpid(), &ours, 1, &theirs, 1, 0);
    *all = count == static_cast<ssize_t>(bytes);
    return count >= 0 || (errno != ENOSYS && errno != EPERM);
}

struct Addresses {
    std::uintptr_t begin, end;
};

/// What of the process can be executed. False if the system does not tell.
bool read_mappings(std::vector<Addresses> *mappings)
{
    mappings->clear();
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen("/proc/self/maps", "re"),
                                                                std::fclose);
    char line[512];
    bool is_begin = true;
    while (file != nullptr && std::fgets(line, sizeof line, file.get()) != nullptr) {
        unsigned long long begin, end;
        char may_execute;
        if (is_begin && std::sscanf(line, "%llx-%llx %*c%*c%c", &begin, &end, &may_execute) == 3
            && may_execute == 'x') {
            mappings->push_back({static_cast<std::uintptr_t>(begin), static_cast<std::uintptr_t>(end)});
        }
        is_begin = std::strchr(line, '\n') != nullptr;  // names may be longer
    }
    return !mappings->empty();
}

}  // namespace

bool read_callers(const void *from, void *to, std::size_t bytes)
{
    bool all = from != nullptr || bytes == 0;
    if (all && bytes != 0 && !copied(process_vm_readv, to, const_cast<void *>(from), bytes, &all)) {
        std::memcpy(to, from, bytes);
        all = true;
    }
    return all;
}

bool write_callers(void *to, const void *from, std::size_t bytes)
{
    bool all = to != nullptr || bytes == 0;
    if (all && bytes != 0 && !copied(process_vm_writev, const_cast<void *>(from), to, bytes, &all)) {
        std::memcpy(to, from, bytes);
        all = true;
    }
    return all;
}

bool is_code(const void *function)
{
    static std::vector<Addresses> mappings;  // when last asked: libraries come seldom
    const auto address = reinterpret_cast<std::uintptr_t>(function);
    const auto is_in = [&] {
        return std::any_of(mappings.begin(), mappings.end(), [address](const Addresses &mapping) {
            return mapping.begin <= address && address < mapping.end;
        });
    };
    // A library that has gone meanwhile has left nothing to read.
    unsigned char first;
    return function != nullptr && read_callers(function, &first, sizeof first)
           && (is_in() || !read_mappings(&mappings) || is_in());
}

}  // namespace sim
