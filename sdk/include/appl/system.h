/*
 * Start and end of a unit as a whole.
 */
#ifndef APPL_SYSTEM_H
#define APPL_SYSTEM_H

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Attaches the unit if it is not, brings its chip up, initialises its modules and applies the properties of
 * its ports. Done again, it starts afresh. BCM_E_UNIT if there can be no such unit, BCM_E_CONFIG if a
 * property's value cannot be, which is told with where it stands on standard error: nothing is done then. Or
 * a module's error; then the unit is as it was attached.
 */
int system_init(int unit);

/*
 * Stops what runs on the unit and detaches it; with cleanup, forgets its shell variables and command file
 * too. BCM_E_UNIT if it is not attached.
 */
int system_shutdown(int unit, int cleanup);

#ifdef __cplusplus
}
#endif

#endif
