#include "call_log.h"

#include <sim/call_log.h>

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace call_log {

std::atomic<bool> on{false};

namespace {

struct Entry {
    const char *function;
    std::vector<unsigned char> bytes;  // all arguments, one after the other
    std::vector<std::size_t> ends;     // where each one ends in bytes
};

std::mutex mutex;
// By address, since those of logged bytes are handed out and must survive further calls.
std::vector<std::unique_ptr<const Entry>> calls;

const Entry *find(int call)
{
    if (call < 0 || static_cast<std::size_t>(call) >= calls.size()) {
        return nullptr;
    }
    return calls[static_cast<std::size_t>(call)].get();
}

}  // namespace

void write(const char *function, std::initializer_list<Argument> arguments)
{
    auto entry = std::make_unique<Entry>(Entry{function, {}, {}});
    for (const Argument &argument : arguments) {
        if (argument.bytes != nullptr) {
            const auto *first = static_cast<const unsigned char *>(argument.bytes);
            entry->bytes.insert(entry->bytes.end(), first, first + argument.size);
        }
        entry->ends.push_back(entry->bytes.size());
    }
    // One byte more, so that an argument without bytes has an address too.
    entry->bytes.push_back(0);
    std::lock_guard<std::mutex> lock(mutex);
    calls.push_back(std::move(entry));
}

}  // namespace call_log

extern "C" {

void sim_call_log_start(void)
{
    std::lock_guard<std::mutex> lock(call_log::mutex);
    call_log::calls.clear();
    call_log::on = true;
}

void sim_call_log_stop(void)
{
    call_log::on = false;
}

int sim_call_log_count(void)
{
    std::lock_guard<std::mutex> lock(call_log::mutex);
    return static_cast<int>(call_log::calls.size());
}

const char *sim_call_log_function(int call)
{
    std::lock_guard<std::mutex> lock(call_log::mutex);
    const call_log::Entry *entry = call_log::find(call);
    return entry != nullptr ? entry->function : nullptr;
}

int sim_call_log_arguments(int call)
{
    std::lock_guard<std::mutex> lock(call_log::mutex);
    const call_log::Entry *entry = call_log::find(call);
    return entry != nullptr ? static_cast<int>(entry->ends.size()) : -1;
}

const void *sim_call_log_argument(int call, int argument, size_t *size)
{
    std::lock_guard<std::mutex> lock(call_log::mutex);
    const call_log::Entry *entry = call_log::find(call);
    const bool exists =
        entry != nullptr && argument >= 0 && static_cast<std::size_t>(argument) < entry->ends.size();
    std::size_t begin = 0;
    std::size_t end = 0;
    if (exists) {
        begin = argument == 0 ? 0 : entry->ends[static_cast<std::size_t>(argument) - 1];
        end = entry->ends[static_cast<std::size_t>(argument)];
    }
    if (size != nullptr) {
        *size = end - begin;
    }
    return exists ? entry->bytes.data() + begin : nullptr;
}

}  // extern "C"
