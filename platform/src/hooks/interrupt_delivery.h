// Interrupts on their way from devices to the process.
#pragma once

#include "quorel_api/integers.h"

/// A device raises interrupts, bits as in the first CMIC_IRQ_MASK. Whether the process was told.
bool deliverInterrupt(int unit, U32 bits);

/// As after disconnectInterruptsToDevices().
void forgetInterruptDescriptor();
