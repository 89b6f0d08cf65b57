/*
 * The diagnostic shell's settings.
 */
#ifndef APPL_SHELL_H
#define APPL_SHELL_H

#ifdef __cplusplus
extern "C" {
#endif

/* How many command files are being read within each other now. */
extern int sh_rcload_depth;

/* Settings, 0 or 1 unless it says otherwise. */
extern int sh_set_rcload;        /* command files may be read at all */
extern int sh_set_rcerror;       /* a failing command ends the command file */
extern int sh_set_lperror;       /* a failing command ends a loop */
extern int sh_set_iferror;       /* a failing command ends an if */
extern int sh_set_rctest;        /* a failing test ends the command file */
extern int sh_set_more_lines;    /* lines to a page; 0: no paging */
extern int sh_set_report_time;   /* say how long each command took */
extern int sh_set_report_status; /* say each command's result */

#ifdef __cplusplus
}
#endif

#endif
