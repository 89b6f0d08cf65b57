/// The shell on standard input.
#include "config.h"
#include "ctrl_c.h"
#include "shell.h"
#include "sim_config.h"
#include "sim_shell.h"

#include <sim/console.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace sim {

namespace {

bool is_interactive()
{
    return ::isatty(STDIN_FILENO) == 1 && ::isatty(STDOUT_FILENO) == 1;
}

/// Prints text a page at a time; a line that begins with 'q' leaves out the rest.
void print_pages(std::string_view text, int lines)
{
    int left = lines;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        std::fwrite(text.data(), 1, length, stdout);
        text.remove_prefix(length);
        if (--left == 0 && !text.empty()) {
            std::fputs("more? ", stdout);
            std::fflush(stdout);
            const int first = std::getchar();
            for (int c = first; c != '\n' && c != EOF; c = std::getchar()) {
            }
            if (first == 'q' || first == EOF || ctrl_c_came()) {
                return;
            }
            left = lines;
        }
    }
}

cmd_result_t run_input(int unit, char *line)
{
    if (sh_set_more_lines <= 0 || !is_interactive() || sim_console_capture_begin() != 0) {
        return sim_sh_process_command(unit, line);
    }
    const cmd_result_t result = sim_sh_process_command(unit, line);
    std::size_t size = 0;
    const char *text = sim_console_capture_end(&size);
    print_pages({text, size}, sh_set_more_lines);
    return result;
}

/// A line of standard input. False at the end of input.
bool read_line(char **line, std::size_t *size)
{
    while (::getline(line, size, stdin) < 0) {
        if (std::feof(stdin) || errno != EINTR) {
            std::clearerr(stdin);
            return false;
        }
        // Ctrl-C while a line is typed begins another line.
        std::clearerr(stdin);
        forget_ctrl_c();
        std::fputs("\n", stdout);
        if (*line != nullptr) {
            **line = '\0';
            return true;
        }
    }
    return true;
}

}  // namespace

}  // namespace sim

using namespace sim;

extern "C" {

cmd_result_t sim_sh_process(int unit, const char *prefix, int eof)
{
    const CtrlCTaken taken;
    const CtrlCWaits waits;
    char *line = nullptr;
    std::size_t size = 0;
    cmd_result_t result = eof ? CMD_EXIT : CMD_OK;
    for (;;) {
        if (is_interactive()) {
            std::printf("%s.%d> ", prefix != nullptr ? prefix : "shell", unit);
        }
        std::fflush(stdout);
        if (!read_line(&line, &size)) {
            break;
        }
        if (run_input(unit, line) == CMD_EXIT) {
            result = CMD_EXIT;
            break;
        }
        forget_ctrl_c();
    }
    std::fflush(stdout);
    std::free(line);
    return result;
}

void sim_diag_shell(void)
{
    sim_diag_init();
    sim_sh_process(0, "shell", 1);
}

void sim_diag_init(void)
{
    sim_sal_config_init();
    sim_sh_bg_init();
}

}  // extern "C"
