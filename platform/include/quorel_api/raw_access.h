// Words of the chip at raw addresses: those of its registers (soc_reg_addr()) and tables (tableBaseAddr()).
#pragma once

extern "C" {
#include <sal/types.h>
}

/// All ones where nothing answers: no such unit, device not mapped, nothing there, or a table that may not be
/// reached (table_access.h).
unsigned int belvok_read_low(int unit, uint32 addr);

/// BCM_E_NONE, BCM_E_UNIT, BCM_E_UNAVAIL (device not mapped), BCM_E_NOT_FOUND, BCM_E_DISABLED (a table that
/// may not be reached).
int belvok_write_low(int unit, uint32 addr, uint32 data);
