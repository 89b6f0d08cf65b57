/// Arithmetic on integers of several words.
#include "sim_text.h"

namespace {

/// dst + (src, inverted if invert) + carry into dst.
void add(uint32 *dst, const uint32 *src, int nval, uint32 invert, uint64 carry)
{
    for (int i = 0; i < nval; ++i) {
        carry += uint64{dst[i]} + (src[i] ^ invert);
        dst[i] = static_cast<uint32>(carry);
        carry >>= 32;
    }
}

}  // namespace

extern "C" {

void sim_add_long_integer(uint32 *dst, uint32 *src, int nval)
{
    if (dst != nullptr && src != nullptr) {
        add(dst, src, nval, 0, 0);
    }
}

void sim_sub_long_integer(uint32 *dst, uint32 *src, int nval)
{
    if (dst != nullptr && src != nullptr) {
        add(dst, src, nval, ~0u, 1);
    }
}

void sim_neg_long_integer(uint32 *dst, int nval)
{
    uint64 carry = 1;
    for (int i = 0; dst != nullptr && i < nval; ++i) {
        carry += static_cast<uint32>(~dst[i]);
        dst[i] = static_cast<uint32>(carry);
        carry >>= 32;
    }
}

}  // extern "C"
