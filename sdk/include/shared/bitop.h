/* Bit vectors as arrays of 32-bit words: bit n is bit n % 32 of word n / 32. */
#ifndef SHARED_BITOP_H
#define SHARED_BITOP_H

#include <sal/types.h>

typedef uint32 SHR_BITDCL;

#define SHR_BITWID 32
/* Words needed for a vector of max bits. */
#define _SHR_BITDCLSIZE(max) (((max) + SHR_BITWID - 1) / SHR_BITWID)

#define SHR_BITGET(vector, bit) (((vector)[(bit) / SHR_BITWID] >> ((bit) % SHR_BITWID)) & 1u)
#define SHR_BITSET(vector, bit) ((vector)[(bit) / SHR_BITWID] |= 1u << ((bit) % SHR_BITWID))
#define SHR_BITCLR(vector, bit) ((vector)[(bit) / SHR_BITWID] &= ~(1u << ((bit) % SHR_BITWID)))

#endif
