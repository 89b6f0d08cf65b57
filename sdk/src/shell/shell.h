/// The room of the shell: the command interpreter. Its commands use the SDK as users do, by the public
/// functions.
#pragma once

#include "shell_arguments.h"

#include <appl/shell.h>

#include <string>

namespace sim {

struct FoundCommand;

/// Commands within commands (command files, loops, conditions) at most.
constexpr int shell_depth_max = 32;

/// Runs a line as sh_process_command does; text may come from a command itself.
cmd_result_t run_line(int unit, const std::string &text);

/// As it is spelt in C.
const char *result_name(cmd_result_t result);

/// Runs a command with its words, and reports as the settings say.
cmd_result_t run_command(int unit, const FoundCommand &found, args_t *words);

/// Prints what is wrong with the words and how the command is used, and returns CMD_USAGE.
cmd_result_t refuse(const Arguments &args, const std::string &what);
/// Prints a message of the command and returns CMD_FAIL.
cmd_result_t fail(const Arguments &args, const std::string &what);
/// The same with the name of an SDK status; CMD_OK and nothing is printed for success.
cmd_result_t done_or_fail(const Arguments &args, const std::string &what, int status);

/// A failing result that came from a test rather than from a command that could not be done.
cmd_result_t test_failed();
bool last_failure_was_a_test();

/// Jobs in the background.
void add_background_job(int unit, const args_t &args);
void run_background_jobs();
bool background_allowed();
void print_background_jobs();

}  // namespace sim
