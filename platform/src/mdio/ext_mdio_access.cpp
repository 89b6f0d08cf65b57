#include "quorel_api/ext_mdio_access.h"

#include "ext_phys.h"
#include "vey/activity_lock.h"
#include "vey/exception.h"

using namespace Hardware::QuorelApi;
using Hardware::PhyBcm::ManagedPhy;
using MdioHamImpl::HamImpl;

namespace {

Vey::Lock &heldActivityLock(const char *function)
{
    Vey::Lock &lock = Vey::ActivityLockAnchor::lock();
    if (!lock.heldByThisThread()) {
        throw Vey::InternalException(Vey::format("%s: the activity lock is not held", function));
    }
    return lock;
}

}  // namespace

void QuorelApiSetExtMdioAccess(UnitId unit, ExternalPhyId phyId, HamImpl::Ptr access, ManagedPhy managedPhy)
{
    Vey::Lock &lock = heldActivityLock("QuorelApiSetExtMdioAccess");
    if (!isManaged(managedPhy)) {
        throw Vey::InternalException(Vey::format("QuorelApiSetExtMdioAccess: no managed PHY is of kind %d",
                                                 static_cast<int>(managedPhy)));
    }
    ExtPhy &phy = extPhys()[{unit.value(), phyId.value()}];
    lock.dropAfterUnlock(phy.access);
    phy.access = std::move(access);
    phy.kind = managedPhy;
}

HamImpl::Ptr QuorelApiGetExtMdioAccess(UnitId unit, ExternalPhyId phyId, ManagedPhy managedPhy)
{
    heldActivityLock("QuorelApiGetExtMdioAccess");
    auto found = extPhys().find({unit.value(), phyId.value()});
    return found != extPhys().end() && found->second.kind == managedPhy ? found->second.access : nullptr;
}

void standbyBcm84328VersionIs(UnitId unit, ExternalPhyId phyId, unsigned int rev)
{
    heldActivityLock("standbyBcm84328VersionIs");
    extPhys()[{unit.value(), phyId.value()}].standby_version = rev;
}
