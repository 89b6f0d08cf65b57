// What protects a chip's memories against bit errors.
#pragma once

/// Writes a line for each memory to a file: name, address, size, protection. In place of a regular file or of
/// none; if anything fails, what was there is untouched. BCM_E_NONE, BCM_E_UNIT, BCM_E_PARAM (no name),
/// BCM_E_FAIL.
int QuorelApiPrintDeviceMemParityEccInfoToFile(int unit, const char *fname);
