/*
 * The diagnostic application around the shell: its start, the units' command files, packet watching.
 */
#ifndef APPL_DIAG_H
#define APPL_DIAG_H

#include <appl/dcmn.h>
#include <appl/shell.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Runs the shell on standard input, on unit 0, until its end or the command "exit". */
void diag_shell(void);

/* Starts the subsystem: property store, background commands. Further calls do nothing. */
void diag_init(void);

/*
 * A unit's command file: runs it, sets its name (null or empty: none of its own), gives its name. A unit that
 * has none of its own has the one that the property "rcload" names; null if there is none. The name given is
 * good until the next is set. diag_rc_load returns
 *   BCM_E_NONE       read to its end, or there is no file to be read
 *   BCM_E_NOT_FOUND  the file cannot be read
 *   BCM_E_FAIL       a command in it failed
 *   BCM_E_DISABLED   command files are not to be read (sh_set_rcload)
 *   BCM_E_UNIT       no such unit
 */
int diag_rc_load(int unit);
void diag_rc_set(int unit, const char *fname);
void diag_rc_get(int unit, const char **fname);

/*
 * Reads the ends of a range: numbers (decimal, 0x..., 0b..., negative), or "*" and "" for the legal ends.
 * With a null pointer as high, low is both ends, or all that is legal. 0, or -1 if they cannot be read, lie
 * outside the legal ends or are in the wrong order; then *min and *max stay as they are.
 */
int diag_parse_range(char *low, char *high, int *min, int *max, int legal_min, int legal_max);

/*
 * The packet watcher, which counts the packets that the CPU receives and prints them if it is told to
 * (command "pw"). pw_stop: CMD_OK, CMD_FAIL if it does not run. It has ended when the call returns, whatever
 * sync is.
 */
int pw_running(int unit);
cmd_result_t pw_stop(int unit, int sync);

/*
 * Steps of the diagnostic application's start on an attached unit: all of them, with parameters as a record
 * or as numbers, the queueing part alone, the stacking part alone. BCM_E_UNIT, BCM_E_PARAM, or the first
 * module's error.
 */
int appl_dpp_bcm_diag_init(int unit, appl_dcmn_init_param_t *init_param);
int appl_dpp_bcm_diag_init_py(int unit, int nof_devices, int mymodid, int cosq_disable);
int appl_dpp_cosq_diag_init(int unit);
int appl_dpp_stk_diag_init(int unit);

#ifdef __cplusplus
}
#endif

#endif
