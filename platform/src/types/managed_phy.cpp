#include "quorel_api/managed_phy.h"

namespace Hardware {
namespace PhyBcm {

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

}  // namespace PhyBcm
}  // namespace Hardware
