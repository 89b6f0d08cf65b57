// Compiled with exceptions: the platform throws.
#include "mdio_access.h"

#include "module/exceptions.h"
#include "quorel_api/python_mdio_access.h"
#include "vey/activity_lock.h"
#include "vey/exception.h"

#include <cerrno>
#include <type_traits>
#include <utility>

using Hardware::PhyBcm::ManagedPhy;
using Hardware::QuorelApi::ExternalPhyId;
using Hardware::QuorelApi::UnitId;
using MdioHamImpl::HamImpl;
using quorel::without_exceptions;

namespace {

/// Holds the activity lock within its scope, unless the thread held it before.
class ActivityLock {
public:
    ActivityLock() : lock_(Vey::ActivityLockAnchor::lock())
    {
        int error = lock_.lock();
        if (error != 0 && error != EDEADLK) {
            throw Vey::ErrnoException("Failed to grab lock", error);
        }
        taken_ = error == 0;
    }
    /// Left without release(): an exception is on its way, and it is that which the caller is to see.
    ~ActivityLock()
    {
        if (taken_) {
            lock_.unlock();
        }
    }
    ActivityLock(const ActivityLock &) = delete;
    ActivityLock &operator=(const ActivityLock &) = delete;

    void release()
    {
        if (!std::exchange(taken_, false)) {
            return;
        }
        if (int error = lock_.unlock()) {
            throw Vey::ErrnoException("Failed to release the lock", error);
        }
    }

private:
    Vey::Lock &lock_;
    bool taken_;
};

/// body() with the activity lock held.
template <typename Body>
auto under_activity_lock(Body body) noexcept -> decltype(body())
{
    return without_exceptions([&] {
        ActivityLock lock;
        if constexpr (std::is_void_v<decltype(body())>) {
            body();
            lock.release();
        } else {
            auto result = body();
            lock.release();
            return result;
        }
    });
}

constexpr int managed_phy_84328 = 3;

// An external PHY's number holds its MDIO bus and its address there.
constexpr int port_address_bits = 5, port_address_mask = 0x1f;

void install(int unit, int phyId, PyObject *pythonHam, ManagedPhy managedPhy)
{
    auto phy_number = static_cast<uint16_t>(phyId);
    Vey::Name name(Vey::format("PythonAccess-%d-%d", unit, phyId));
    Vey::Ptr<Vey::PyObjHandle> handle(new Vey::PyObjHandle(pythonHam, false));
    Vey::Ptr<HamImpl> access(new Hardware::QuorelApi::PythonMdioAccessWrapper(
        name, Mdio::BusId(phy_number >> port_address_bits), Mdio::PortAddr(phy_number & port_address_mask),
        nullptr, handle));
    // One after the other: when both numbers are out of range, it is the PHY's that is complained of.
    ExternalPhyId checked_phy(phy_number);
    UnitId checked_unit(static_cast<unsigned int>(unit));
    QuorelApiSetExtMdioAccess(checked_unit, checked_phy, access, managedPhy);
}

}  // namespace

void QuorelApiSetExtMdioAccessWrapper(int unit, int phyId, PyObject *pythonHam, ManagedPhy managedPhy)
{
    under_activity_lock([&] { install(unit, phyId, pythonHam, managedPhy); });
}

void QuorelApiSetExt84328MdioAccessWrapper(int unit, int phyId, PyObject *pythonHam)
{
    QuorelApiSetExtMdioAccessWrapper(unit, phyId, pythonHam, static_cast<ManagedPhy>(managed_phy_84328));
}

HamImpl::Ptr QuorelApiGetExtMdioAccessWrapper(UnitId unit, ExternalPhyId phyId, ManagedPhy managedPhy)
{
    return under_activity_lock([&] { return QuorelApiGetExtMdioAccess(unit, phyId, managedPhy); });
}

void standbyBcm84328VersionIsWrapper(UnitId unit, ExternalPhyId phyId, unsigned int rev)
{
    under_activity_lock([&] { standbyBcm84328VersionIs(unit, phyId, rev); });
}
