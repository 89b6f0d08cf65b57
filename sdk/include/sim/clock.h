/*
 * The time of the simulated switches. All units have one clock, which stands still unless somebody lets time
 * pass: what takes time (ageing, timeouts) happens when it has passed, in order, and in a script that is run
 * twice at the same moments. Nothing of the simulator looks at the machine's clock, but for a clock that is to
 * run with it. Not part of the SDK proper.
 */
#ifndef SIM_CLOCK_H
#define SIM_CLOCK_H

#include <bcm/error.h>
#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Nanoseconds since the process began with 0. */
uint64 sim_clock_now(void);

/*
 * Lets that many nanoseconds pass. What is due on the way happens in the order of its time, at one moment in
 * the order in which it was asked for; each sees the clock at its own time. Callbacks run in this call.
 * BCM_E_NONE; BCM_E_BUSY in a callback of the clock, where time stands still; BCM_E_PARAM if the clock would
 * pass its end, 584 years.
 */
int sim_clock_advance(uint64 nanoseconds);

/*
 * 1: from now on the clock runs with the machine's (its monotonic one). What has become due happens at the
 * beginning of the next sim_clock_catch_up() or arrival of a packet. 0: it stands still again. BCM_E_NONE,
 * BCM_E_BUSY in a callback of the clock.
 */
int sim_clock_run(int on);
int sim_clock_runs(void);

/* Lets a clock that runs reach the present, as sim_clock_advance does. Without effect on one that stands. */
int sim_clock_catch_up(void);

/* The time at which something will happen next. BCM_E_NOT_FOUND: nothing is waited for. BCM_E_PARAM: null. */
int sim_clock_next(uint64 *nanoseconds);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
