/// Registers of a PHY as the management bus shows them: 16 bits each, those of the standard a view of the
/// PHY's state, the maker's own a view of the controls, and some that only keep what is written.
#pragma once

#include "phy_link.h"

namespace sim {

/// By clause 22 (device 0) or by clause 45.
struct RegisterAddress {
    int device;
    uint16 number;
};

/// From the form in which the SDK's callers give it. False: there is no such form.
bool decode(uint32 flags, uint32 addr, RegisterAddress *address);

/// A device that the PHY has not reads as all ones. Some reads change the register; the two halves of a
/// counter are of one reading.
uint16 read_register(PhyPort &port, Phy &phy, int lane, const RegisterAddress &address);

/// Lane -1: all lanes. What can not be written, and values that the PHY can not take over, are dropped; half
/// of a control's value waits for the other half if it can not be taken over without.
void write_register(PhyPort &port, Phy &phy, int lane, const RegisterAddress &address, uint16 value);

/// On standard output.
void print_registers(PhyPort &port, Phy &phy);

}  // namespace sim
