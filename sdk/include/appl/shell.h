/*
 * The diagnostic shell: commands as text, command files, settings, Ctrl-C.
 *
 * A line holds commands separated by ';', each of words separated by blanks. '...' and "..." make one word of
 * several, '\' takes the next character as it is, $name and ${name} stand for a variable (not within '...'),
 * and '#' at the beginning of a word makes the rest of the line a comment. "N:" before a command runs it on
 * unit N; '&' at its end runs it in the background (sh_bg_init). "help" lists the commands.
 *
 * Everything is printed to the standard output. One thread at a time may run the shell.
 */
#ifndef APPL_SHELL_H
#define APPL_SHELL_H

#include <sal/types.h>

#include <setjmp.h>

#ifdef __cplusplus
extern "C" {
#endif

/* What became of a command. */
typedef enum cmd_result_e {
    CMD_OK = 0,
    CMD_FAIL = -1,   /* it could not be done, which it said */
    CMD_USAGE = -2,  /* arguments wrong, or the line cannot be read */
    CMD_NFND = -3,   /* no such command */
    CMD_EXIT = -4,   /* the shell or command file is to end */
    CMD_INTR = -5,   /* ended by Ctrl-C */
    CMD_NOTIMPL = -6 /* known, but not here */
} cmd_result_t;

#define SH_WORDS_MAX 64  /* words of a command */
#define SH_TEXT_MAX 4096 /* characters of all of them, with a NUL after each */

/* The words of a command. It holds no addresses: copies of it are good. */
typedef struct args_s {
    int count;                 /* words, the command's name first */
    int next;                  /* first word that has not been consumed yet */
    uint16 word[SH_WORDS_MAX]; /* where each begins in text */
    char text[SH_TEXT_MAX];    /* the words, each with its NUL */
} args_t;

typedef char *parse_key_t;
typedef cmd_result_t (*cmd_func_t)(int unit, args_t *args);

/* A command. */
typedef struct cmd_s {
    parse_key_t c_cmd;   /* name; a beginning that is no other's is enough to call it */
    cmd_func_t c_f;      /* does it */
    const char *c_usage; /* arguments, for people */
    const char *c_help;  /* one line that says what it does */
} cmd_t;

/*
 * Run a line of commands on a unit; of a unit that does not exist, those that need none work. The result is
 * that of the last command, or of the first that failed, at which the rest of the line is left out; CMD_OK
 * for an empty line, CMD_USAGE for a null pointer. The text is not written to.
 */
cmd_result_t sh_process_command(int unit, char *c);

/* What can be told of a line's first command without running it: CMD_OK, CMD_NFND or CMD_USAGE. */
cmd_result_t sh_process_command_check(int unit, char *c);

/*
 * Reads lines of standard input and runs them, with a prompt of prefix and unit if it is a terminal. Commands
 * that fail do not end it. CMD_EXIT after the command "exit", and at the end of input if eof is not 0; else
 * CMD_OK.
 */
cmd_result_t sh_process(int unit, const char *, int eof);

/*
 * Runs the lines of file f on unit u. The second parameter holds the words that $1, $2 ... stand for in it,
 * after one that is not used, and may be null. Without add_rc the file is named exactly; with it, ".soc"
 * joins a name that has no such end. CMD_OK, or the result of the command that ended it (see sh_set_rcerror);
 * CMD_FAIL also for a file that cannot be read and for too many within each other.
 */
cmd_result_t sh_rcload_file(int u, args_t *, char *f, int add_rc);

/*
 * Ctrl-C. While the shell runs a command, Ctrl-C ends it with CMD_INTR. While it does not, and once Ctrl-C
 * has been taken, it goes on at the return point pushed last, as longjmp(*point, 1) does; if there is none,
 * to whoever had it before. A return point must be ready (setjmp) as long as it is pushed; null pointers are
 * not pushed.
 */
void sh_push_ctrl_c(jmp_buf *);
void sh_pop_ctrl_c(void);
/* Blocks Ctrl-C if not 0, else undoes one blocking. One that comes meanwhile is told when the last is undone. */
void sh_block_ctrl_c(int);
/* Makes the shell the one that Ctrl-C goes to. */
void sh_ctrl_c_take(void);

/* Allows background commands from now on. They run, in order, when the line that started them is done. */
void sh_bg_init(void);

/* Commands see this unit's variables from now on; nothing happens if there can be no such unit. */
void sh_swap_unit_vars(int new_unit);

/* Prints what the SDK was built from: one line, or all that is known. */
void sh_print_version(int verbose);

/* 0 if the unit is attached; else -1, and a message that begins with pfx (may be null) is printed. */
int sh_check_attached(const char *pfx, int unit);

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
