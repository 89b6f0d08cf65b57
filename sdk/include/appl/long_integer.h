/*
 * Integers of nval words, the least significant one first, in two's complement: what is carried out of the
 * highest word is lost. A null pointer, or nval not above 0, does nothing. dst may be src.
 */
#ifndef APPL_LONG_INTEGER_H
#define APPL_LONG_INTEGER_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

void add_long_integer(uint32 *dst, uint32 *src, int nval);
void sub_long_integer(uint32 *dst, uint32 *src, int nval);
void neg_long_integer(uint32 *dst, int nval);

#ifdef __cplusplus
}
#endif

#endif
