/*
 * Numbers written as text, in forms that appl/parse_number.h reads. No size is passed: buf has to have room
 * for what is stated. A null pointer, or nval not above 0, does nothing.
 */
#ifndef APPL_FORMAT_NUMBER_H
#define APPL_FORMAT_NUMBER_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* val of nval words, the least significant one first, as "0x" and hexadecimal digits: 8 * nval + 3 bytes. */
void format_long_integer(char *buf, uint32 *val, int nval);
/* The same with all digits, leading zeros too, as the fields of a register are aligned. */
void format_spec_long_integer(char *buf, uint32 *val, int nval);

/* "0x" and hexadecimal digits: 19 bytes. */
void format_uint64(char *buf, uint64 n);
/* Decimal digits, with commas between groups of three unless comma is 0: 27 bytes. */
void format_uint64_decimal(char *buf, uint64 n, int comma);

#ifdef __cplusplus
}
#endif

#endif
