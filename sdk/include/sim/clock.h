/*
 * The time of the simulated switches. All units have one clock, which stands still unless somebody lets time
 * pass: what takes time (ageing, link scan, timeouts) happens when it has passed, in order, and in a script that
 * is run twice at the same moments. Not part of the SDK proper.
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

/* Who lets time pass. */
typedef enum sim_clock_mode_e {
    /*
     * At first, for software that knows nothing of this clock. It stands. What takes time but would come by itself is
     * not waited for: link scan looks at a link as soon as it may have changed. A function of the SDK that waits does
     * so by the machine's clock, and meanwhile this one advances by as much.
     */
    simClockStands,
    /*
     * A test does, by sim_clock_advance. Link scan looks at links when its interval is over. A function that waits
     * advances the clock and takes no time of the machine's.
     */
    simClockSteps,
    /*
     * The machine's clock does (its monotonic one), with which it runs from now on. What has become due happens at the
     * beginning of the next function of the SDK, arrival of a packet or sim_clock_catch_up(); while interfaces of the
     * host are attached, ten times a second too.
     */
    simClockRuns,
    simClockModeCount
} sim_clock_mode_t;

/* BCM_E_NONE; BCM_E_PARAM for another mode, BCM_E_BUSY in a callback of the clock. */
int sim_clock_mode_set(sim_clock_mode_t mode);
sim_clock_mode_t sim_clock_mode_get(void);

/* Lets a clock that runs reach the present, as sim_clock_advance does. Without effect on one that stands. */
int sim_clock_catch_up(void);

/*
 * Waits as functions of the SDK do, as the mode says, but not longer than until something may have happened: for who
 * waits for some event, and looks in between whether it has come. By the machine's clock that is 10 milliseconds at most,
 * by one that steps until something is due. Nanoseconds are the longest wait. BCM_E_NONE; BCM_E_BUSY in a callback of
 * the clock, where time stands still.
 */
int sim_clock_wait(uint64 nanoseconds);

/* The time at which something will happen next. BCM_E_NOT_FOUND: nothing is waited for. BCM_E_PARAM: null. */
int sim_clock_next(uint64 *nanoseconds);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
