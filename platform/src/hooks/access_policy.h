// Who may reach tables past the SDK.
#pragma once

#include "quorel_api/chip_memory.h"

bool mayAccess(const Hardware::ChipMemory &table);

/// As at first: nothing is allowed but what the SDK does not manage.
void resetTableAccess();
