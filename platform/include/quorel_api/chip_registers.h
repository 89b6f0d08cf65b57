// Registers of a chip for those who look at the chip itself.
#pragma once

#include "quorel_api/integers.h"

/// An address of the SDK's in the form that the S-bus carries, which is the same for all units: the block in
/// the low 6 bits, then the rest.
U32 sbusFormatAddress(int unit, U32 addr);

/// Prints every register of the unit to standard output, a line each: address, name, value, fields.
void printAllRegisters(uint unit);
