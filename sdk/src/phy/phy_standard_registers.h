/// The registers that the standard defines.
#pragma once

#include "phy_registers.h"

namespace sim {

struct RegisterView {
    int device;  ///< 0 for clause 22
    uint16 number;
    uint16 (*read)(PhyPort &port, Phy &phy);
    void (*write)(PhyPort &port, Phy &phy, uint16 value);  ///< null: read only
};

/// Null if the standard has none there.
const RegisterView *standard_register(const RegisterAddress &address);

}  // namespace sim
