/*
 * Start-up of the application: units, their modules, their command files.
 */
#ifndef APPL_DCMN_INIT_H
#define APPL_DCMN_INIT_H

#include <appl/dcmn.h>
#include <appl/shell.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Start nof_devices units, the first of which is unit, and undo it; init_param->unit has to be the same unit.
 * A step that a parameter leaves out is left as it is: an init without attach needs attached units. A unit
 * that is started twice starts afresh; after a failure those units are detached that the call attached.
 * Return
 *   BCM_E_NONE
 *   BCM_E_PARAM   null pointer, or a value that cannot be
 *   BCM_E_UNIT    no such unit, or not attached
 *   or the error of the step that failed
 */
int appl_dcmn_init(int unit, appl_dcmn_init_param_t *init_param);
int appl_dcmn_deinit(int unit, appl_dcmn_init_param_t *init_param);

/*
 * Sets the record to the defaults for the unit, then as the words that were not consumed say, each
 * "member=number"; consumes them. A null pointer as a: no words. CMD_USAGE, with a message, if a word is none
 * of these, and CMD_FAIL for a null record: then nothing is changed.
 */
cmd_result_t appl_dcmn_init_usage_parse(int unit, args_t *a, appl_dcmn_init_param_t *init_param);

#ifdef __cplusplus
}
#endif

#endif
