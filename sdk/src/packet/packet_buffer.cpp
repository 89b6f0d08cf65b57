/// Patterns in packet buffers.
#include "sim_text.h"

#include <algorithm>
#include <random>

namespace {

constexpr int word_size = 4;

}  // namespace

extern "C" {

uint32 sim_packet_store(uint8 *buf, int size, uint32 val, uint32 inc)
{
    for (int i = 0; buf != nullptr && i < size; ++i) {
        const int shift = 8 * (word_size - 1 - i % word_size);
        buf[i] = static_cast<uint8>(val >> shift);
        if (shift == 0 || i == size - 1) {
            val += inc;
        }
    }
    return val;
}

uint32 sim_packet_load(uint8 *addr, int size)
{
    uint32 value = 0;
    for (int i = 0; addr != nullptr && i < std::min(size, word_size); ++i) {
        value = value << 8 | addr[i];
    }
    return value;
}

void sim_packet_random_store(uint8 *buf, int size)
{
    static std::mt19937 &generator = *new std::mt19937(std::random_device()());
    if (buf != nullptr && size > 0) {
        std::generate_n(buf, size, [] { return static_cast<uint8>(generator()); });
    }
}

int sim_packet_compare(uint8 *p1, uint8 *p2, int size)
{
    if (p1 == nullptr || p2 == nullptr || size <= 0) {
        return 0;
    }
    const auto place = std::mismatch(p1, p1 + size, p2).first - p1;
    return place == size ? 0 : static_cast<int>(place) + 1;
}

}  // extern "C"
