// How devices' interrupts reach the process.
#pragma once

extern "C" {
#include <sal/types.h>
}

/// Connects the devices: for each interrupt that a mapped device delivers, a byte with its unit number is
/// written to the descriptor, unless that would block. The caller keeps it open, and closes it after taking
/// it back with another or -1.
void fileDescriptorIs(int fd);

/// Clears the interrupt enables (CMIC_IRQ_MASK) of the mapped devices on a PCI bus.
void maskDeviceInterrupts(uint8 bus);

/// No device delivers interrupts until fileDescriptorIs() is called again.
void disconnectInterruptsToDevices();
