/// Who sees the accesses to all chips.
#pragma once

#include "chip.h"

#include <sim/chip_observer.h>

namespace sim {

void tell_written(int unit, const RegisterPlace &place, const Words &words);
void tell_written(int unit, const MemoryPlace &place, const Words &words);
void tell_read(int unit, const RegisterPlace &place, const Words &words);
void tell_read(int unit, const MemoryPlace &place, const Words &words);

/// Whether the observer has what is to be read, and put it there.
bool answered(int unit, const MemoryPlace &place, Words *words);

}  // namespace sim
