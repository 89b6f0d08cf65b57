/*
 * Numbers read from text, as in C: decimal, 0x hexadecimal, 0 octal, and 0b binary besides; a sign before it
 * and blanks around it are allowed. A negative number stands for its two's complement.
 *
 * Text that is no number as a whole, and a null pointer, give 0; a number that does not fit, whatever its
 * sign, gives all ones. isint() (appl/text.h) tells a 32-bit number from other text.
 */
#ifndef APPL_PARSE_NUMBER_H
#define APPL_PARSE_NUMBER_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

uint32 parse_integer(char *str);
/* Decimal digits may be in groups of three, "1,234,567". */
uint64 parse_uint64(char *str);
sal_vaddr_t parse_address(char *str);

/* The same into val, nval words, the least significant one first. */
void parse_long_integer(uint32 *val, int nval, char *str);

/*
 * A range of numbers into *min and *max: "5", "3-7", or "all" or "*" for legal_min to legal_max. Both ends
 * count. BCM_E_NONE; BCM_E_PARAM, with *min and *max as they were, if the text is no range, is outside of the
 * legal one, or is upside down, or on a null pointer; BCM_E_UNIT.
 */
int parse_num_range(int unit, char *s, int *min, int *max, int legal_min, int legal_max);

#ifdef __cplusplus
}
#endif

#endif
