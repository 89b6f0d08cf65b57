/// Background commands. The switch is not locked, so they do not run beside others but when these are done.
#include "shell.h"
#include "shell_commands.h"
#include "sim_shell.h"

#include <cstdio>
#include <list>
#include <string>

namespace sim {

namespace {

/// How many finished jobs are remembered.
constexpr std::size_t finished_max = 16;

struct Job {
    int number;
    int unit;
    args_t args;
    bool done;
    cmd_result_t result;
};

bool allowed;
bool running;
int last_number;
std::list<Job> jobs;  // finished ones first

std::string command_text(const args_t &args)
{
    std::string text;
    for (int word = 0; word < args.count; ++word) {
        text += (word > 0 ? " " : "") + std::string(args.text + args.word[word]);
    }
    return text;
}

Job *next_to_run()
{
    for (Job &job : jobs) {
        if (!job.done) {
            return &job;
        }
    }
    return nullptr;
}

void run(Job *job)
{
    args_t args = job->args;
    const FoundCommand found = find_command(args.text);
    std::printf("[%d] %s\n", job->number, command_text(args).c_str());
    const cmd_result_t result = run_command(job->unit, found, &args);
    std::printf("[%d] %s\n", job->number, result_name(result));
    job->done = true;
    job->result = result;
}

}  // namespace

bool background_allowed()
{
    return allowed;
}

void add_background_job(int unit, const args_t &args)
{
    jobs.push_back({++last_number, unit, args, false, CMD_OK});
}

void run_background_jobs()
{
    // A job's own commands come here too.
    if (running) {
        return;
    }
    running = true;
    while (Job *job = next_to_run()) {
        run(job);
    }
    running = false;
    while (jobs.size() > finished_max) {
        jobs.pop_front();
    }
}

void print_background_jobs()
{
    for (const Job &job : jobs) {
        std::printf("[%d] %-12s %s\n", job.number, job.done ? result_name(job.result) : "waits",
                    command_text(job.args).c_str());
    }
}

}  // namespace sim

extern "C" void sim_sh_bg_init(void)
{
    sim::allowed = true;
}
