/*
 * The platform's own way into the diagnostic shell. It starts the shell if nobody did before, and then does
 * the same as its namesake in <appl/shell.h>.
 */
#ifndef APPL_PLATFORM_SHELL_H
#define APPL_PLATFORM_SHELL_H

#include <appl/shell.h>

#ifdef __cplusplus
extern "C" {
#endif

cmd_result_t belvok_sh_process_command(int unit, char *c);
cmd_result_t belvok_sh_process(int unit, const char *pfx, int eof_exit);

#ifdef __cplusplus
}
#endif

#endif
