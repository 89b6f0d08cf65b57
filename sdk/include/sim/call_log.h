/*
 * What the bcm_* functions received, for tests. While the log is on, every public function of the SDK
 * notes its name and the bytes of its arguments before it does anything else. Not part of the SDK proper.
 */
#ifndef SIM_CALL_LOG_H
#define SIM_CALL_LOG_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Empties the log and starts. Pointers handed out before become invalid. */
void sim_call_log_start(void);

/* Stops; what was logged stays readable. */
void sim_call_log_stop(void);

/* Number of calls logged, counted from 0 in the order of arrival. */
int sim_call_log_count(void);

/* Name of the function called; NULL if there is no such call. */
const char *sim_call_log_function(int call);

/* Number of arguments of that call; -1 if there is no such call. */
int sim_call_log_arguments(int call);

/*
 * The bytes of an argument as received, in host byte order, and in *size (may be NULL) how many: a scalar's
 * or a structure's own bytes; a pointer's address; of an array parameter with a known bound its content at
 * the time of the call, 0 bytes if it was null. Valid until the next sim_call_log_start. NULL, and *size 0,
 * if there is no such argument.
 */
const void *sim_call_log_argument(int call, int argument, size_t *size);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
