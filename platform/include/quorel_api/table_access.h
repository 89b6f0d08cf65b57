// Which tables may be reached at their raw addresses (raw_access.h): those that the SDK does not manage, and
// all where access is allowed. The SDK itself is never restricted.
#pragma once

#include "quorel_api/chip_memory.h"

/// Whether the chip itself writes the table: counters, occupancies. False for null.
bool tableNotManagedBySdk(const Hardware::ChipMemory *);

/// For one unit (0 to 15), and for every simulated chip.
void allowAllTableAccess(int unit, bool allow);
void simAllowAllTableAccess(bool allow);
bool simTableAccessOk();
