// Registers of the SerDes PHYs within the switch chip.
#pragma once

/// A register of one lane of a port. Results are status codes (quorel_api/status.h): statusParam for a unit
/// outside 0 to 255, a negative port, a lane outside 0 to 7 or null data. The stand-in's registers are
/// memory: one that was never written is 0.
int QuorelApiInternalPhyRead(int unit, int port, int lane, unsigned int addr, unsigned int *data);
int QuorelApiInternalPhyWrite(int unit, int port, int lane, unsigned int addr, unsigned int data);

/// What a status code means, in words; never null, and valid for ever.
const char *errorString(int);
