/// The diagnostic shell's settings as they are at start.
#include <appl/shell.h>

[[gnu::visibility("default")]] int sh_rcload_depth = 0;
[[gnu::visibility("default")]] int sh_set_rcload = 1;
[[gnu::visibility("default")]] int sh_set_rcerror = 1;
[[gnu::visibility("default")]] int sh_set_lperror = 1;
[[gnu::visibility("default")]] int sh_set_iferror = 1;
[[gnu::visibility("default")]] int sh_set_rctest = 1;
[[gnu::visibility("default")]] int sh_set_more_lines = 0;
[[gnu::visibility("default")]] int sh_set_report_time = 0;
[[gnu::visibility("default")]] int sh_set_report_status = 0;
