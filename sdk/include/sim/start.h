/*
 * What starting units needs to know before it begins, for those who start them. Not part of the SDK proper.
 */
#ifndef SIM_START_H
#define SIM_START_H

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/*
 * Sets properties as the lines of a file say, all or none: BCM_E_NONE; BCM_E_NOT_FOUND, BCM_E_FAIL: it cannot
 * be read; BCM_E_CONFIG: a line is none, and problem, size characters with the NUL, tells which.
 */
int sim_config_load(const char *file, char *problem, int size);

/*
 * Whether system_init(unit) can do what the properties say, with nothing done: BCM_E_NONE, BCM_E_UNIT, or
 * BCM_E_CONFIG and the property is told on standard error.
 */
int sim_start_check(int unit);

/* Whether a front port can be given that speed after a start of the unit: BCM_E_NONE, _UNIT, _PORT, _PARAM. */
int sim_start_speed_check(int unit, int port, int speed);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
