/// The diagnostic shell's settings as they are at start.
#include <appl/shell.h>

int sh_rcload_depth = 0;
int sh_set_rcload = 1;
int sh_set_rcerror = 1;
int sh_set_lperror = 1;
int sh_set_iferror = 1;
int sh_set_rctest = 1;
int sh_set_more_lines = 0;
int sh_set_report_time = 0;
int sh_set_report_status = 0;
