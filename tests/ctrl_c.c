/* Where Ctrl-C goes: in C, since Python's frames must not be jumped over. test_ctrl_c.py loads this. */
#include <appl/shell.h>

#include <setjmp.h>
#include <signal.h>
#include <stdio.h>

static int failures;
static volatile sig_atomic_t seen_before;

static void check(int holds, const char *what)
{
    if (!holds) {
        printf("failed: %s\n", what);
        ++failures;
    }
}

static void one_before(int signal_number)
{
    (void)signal_number;
    ++seen_before;
}

static void without_return_points(void)
{
    raise(SIGINT);
    check(seen_before == 1, "without a return point it goes to whoever had it before");
    sh_push_ctrl_c(NULL);
    raise(SIGINT);
    check(seen_before == 2, "a null pointer is not pushed, and the shell still takes it");
}

static void jumps(void)
{
    static jmp_buf outer, inner;
    volatile int jumps_out = 0, jumps_in = 0;
    if (setjmp(outer) != 0) {
        ++jumps_out;
    }
    if (jumps_out == 0) {
        sh_push_ctrl_c(&outer);
        if (setjmp(inner) == 0) {
            sh_push_ctrl_c(&inner);
            raise(SIGINT);
        } else {
            ++jumps_in;
        }
        sh_pop_ctrl_c();
        raise(SIGINT);
    }
    check(jumps_in == 1 && jumps_out == 1, "it goes on at the return point pushed last");
    sh_pop_ctrl_c();
}

static void blocked(void)
{
    static jmp_buf point;
    volatile int done = 0;
    if (setjmp(point) == 0) {
        sh_push_ctrl_c(&point);
        sh_block_ctrl_c(1);
        sh_block_ctrl_c(1);
        raise(SIGINT);
        sh_block_ctrl_c(0);
        done = 1;
        sh_block_ctrl_c(0);
        done = 2;
    }
    check(done == 1, "one that comes while blocked is told when the last blocking is undone");
    sh_pop_ctrl_c();
}

/* How many checks failed; what failed is printed. */
int ctrl_c_failures(void);

int ctrl_c_failures(void)
{
    void (*before)(int) = signal(SIGINT, one_before);
    failures = seen_before = 0;
    sh_ctrl_c_take();
    without_return_points();
    jumps();
    blocked();
    raise(SIGINT);
    check(seen_before == 3, "all return points are gone");
    signal(SIGINT, before);
    return failures;
}
