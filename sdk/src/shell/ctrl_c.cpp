#include "ctrl_c.h"

#include "sim_shell.h"

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

volatile sig_atomic_t waiting;
volatile sig_atomic_t blocked;
volatile sig_atomic_t came;
jmp_buf *volatile return_points[32];
volatile sig_atomic_t return_point_count;
struct sigaction handler_before;

struct sigaction take();

void on_ctrl_c(int)
{
    if (blocked > 0 || waiting > 0) {
        came = 1;
    } else if (return_point_count > 0) {
        ::longjmp(*return_points[return_point_count - 1], 1);
    } else {
        ::sigaction(SIGINT, &handler_before, nullptr);
        ::raise(SIGINT);
        take();
    }
}

struct sigaction take()
{
    struct sigaction ours = {}, before = {};
    ours.sa_handler = on_ctrl_c;
    // Not deferred, since the handler may be left by a jump; no restart, so that reading a line ends too.
    ours.sa_flags = SA_NODEFER;
    ::sigaction(SIGINT, &ours, &before);
    if (before.sa_handler != on_ctrl_c) {
        handler_before = before;
    }
    return before;
}

}  // namespace

CtrlCWaits::CtrlCWaits()
{
    waiting = waiting + 1;
}

CtrlCWaits::~CtrlCWaits()
{
    waiting = waiting - 1;
    if (waiting == 0 && blocked == 0) {
        came = 0;
    }
}

CtrlCTaken::CtrlCTaken() : before_(take()) {}

CtrlCTaken::~CtrlCTaken()
{
    ::sigaction(SIGINT, &before_, nullptr);
}

bool ctrl_c_came()
{
    return came != 0 && blocked == 0;
}

void forget_ctrl_c()
{
    came = 0;
}

}  // namespace sim

using namespace sim;

extern "C" {

void sim_sh_push_ctrl_c(jmp_buf *point)
{
    if (point != nullptr && return_point_count < static_cast<sig_atomic_t>(std::size(return_points))) {
        return_points[return_point_count] = point;
        return_point_count = return_point_count + 1;
    }
}

void sim_sh_pop_ctrl_c(void)
{
    return_point_count = std::max<sig_atomic_t>(return_point_count - 1, 0);
}

void sim_sh_block_ctrl_c(int block)
{
    blocked = block ? blocked + 1 : std::max<sig_atomic_t>(blocked - 1, 0);
    if (blocked == 0 && waiting == 0 && came) {
        came = 0;
        ::raise(SIGINT);
    }
}

void sim_sh_ctrl_c_take(void)
{
    take();
}

}  // extern "C"
