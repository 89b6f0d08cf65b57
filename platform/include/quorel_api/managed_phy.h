// The kinds of external PHY that the platform manages.
#pragma once

namespace Hardware::PhyBcm {

enum ManagedPhy {
    managedPhyUnknown = 0,
    managedPhyCopper = 1,
    managedPhyGearbox = 2,
    managedPhy84328 = 3,
};

/// Whether it is one of the above but managedPhyUnknown. Callers may have made the value from any number.
bool isManaged(ManagedPhy kind) noexcept;

}  // namespace Hardware::PhyBcm
