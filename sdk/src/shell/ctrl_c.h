/// Ctrl-C as the shell's commands see it; <appl/shell.h> tells where it goes otherwise.
#pragma once

#include <signal.h>

namespace sim {

/// While one is alive, Ctrl-C waits to be asked for.
class CtrlCWaits {
public:
    CtrlCWaits();
    /// The last one forgets what was not asked for.
    ~CtrlCWaits();
    CtrlCWaits(const CtrlCWaits &) = delete;
    CtrlCWaits &operator=(const CtrlCWaits &) = delete;
};

/// Ctrl-C goes to the shell while one is alive, and afterwards to whoever had it.
class CtrlCTaken {
public:
    CtrlCTaken();
    ~CtrlCTaken();
    CtrlCTaken(const CtrlCTaken &) = delete;
    CtrlCTaken &operator=(const CtrlCTaken &) = delete;

private:
    struct sigaction before_;
};

/// Whether it came and is not blocked.
bool ctrl_c_came();
void forget_ctrl_c();

}  // namespace sim
