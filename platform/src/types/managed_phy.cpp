#include "quorel_api/managed_phy.h"

namespace Hardware::PhyBcm {

bool isManaged(ManagedPhy kind) noexcept
{
    switch (kind) {
    case managedPhyCopper:
    case managedPhyGearbox:
    case managedPhy84328:
        return true;
    case managedPhyUnknown:
        break;
    }
    return false;
}

}  // namespace Hardware::PhyBcm
