/*
 * Characters and pieces of text.
 */
#ifndef APPL_TEXT_H
#define APPL_TEXT_H

#ifdef __cplusplus
extern "C" {
#endif

/* 1 if parse_integer() understands the text and its number has 32 bits, else 0. */
int isint(char *);

/* A hexadecimal digit's value, and the (lower-case) digit of a value 0..15; -1 for anything else. */
int xdigit2i(int digit);
int i2xdigit(int digit);

/* Where sub is first found in s, letters being equal in either case; null if it is not there. */
const char *strcaseindex(const char *s, const char *sub);

/*
 * Replaces in s, in place, the len characters from place start on by repstr, and returns s. Places beyond the
 * end of the text, or before its start, count as the end or start. No size is passed: s has to have room for
 * the text that results. repstr must not lie within s. Null if either is null.
 */
char *strrepl(char *s, int start, int len, const char *repstr);

/*
 * Copies a line to out with tabs for blanks: each run of two or more blanks that reaches a tab stop, one
 * every tab_width columns, is replaced up to there. out has as many bytes as the line, and may be the line
 * itself. A tab_width below 1 copies only.
 */
void tabify_line(char *out, char *, int tab_width);

#ifdef __cplusplus
}
#endif

#endif
