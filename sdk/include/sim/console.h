/*
 * What the SDK prints, as text. Not part of the SDK proper.
 */
#ifndef SIM_CONSOLE_H
#define SIM_CONSOLE_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/*
 * From now on what is written to the C library's standard output is kept instead, until the matching end.
 * Captures nest: the inner one keeps what is printed within it. 0, or -1 if there is no memory.
 */
int sim_console_capture_begin(void);

/*
 * Ends the latest capture. The text that it kept, size characters (may be null) and a NUL, is good until the
 * next end. Null if there is no capture.
 */
const char *sim_console_capture_end(size_t *size);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
