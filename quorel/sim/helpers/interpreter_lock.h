// Python's threads and those of the simulated switch.
#pragma once

namespace QuorelSim {

/// From now on a thread that waits for others that work on units lets go of the interpreter lock meanwhile, if it
/// has it: they may be in Python, or want to be.
void wait_without_interpreter_lock();

}  // namespace QuorelSim
