#include "quorel_api/ext_phy_control.h"

#include "ext_phys.h"
#include "quorel_api/ext_mdio_access.h"
#include "quorel_api/status.h"
#include "vey/activity_lock.h"
#include "vey/exception.h"

#include <cerrno>
#include <cstdio>

using namespace Hardware::QuorelApi;
using Hardware::PhyBcm::ManagedPhy;

namespace {

thread_local Vey::String8 last_error;

/// Holds the activity lock within its scope, unless the thread held it before.
class Activity {
public:
    Activity() : lock_(Vey::ActivityLockAnchor::lock())
    {
        int error = lock_.lock();
        if (error != 0 && error != EDEADLK) {
            throw Vey::ErrnoException("Failed to grab lock", error);
        }
        taken_ = error == 0;
    }
    ~Activity()
    {
        if (taken_) {
            lock_.unlock();
        }
    }
    Activity(const Activity &) = delete;
    Activity &operator=(const Activity &) = delete;

private:
    Vey::Lock &lock_;
    bool taken_;
};

UnitId unitId(int unit)
{
    return UnitId(static_cast<unsigned int>(unit));
}

ExternalPhyId phyId(int phy)
{
    if (phy < 0 || phy > 0xffff) {
        Vey::throwRangeException("no such PHY id");
    }
    return ExternalPhyId(static_cast<std::uint16_t>(phy));
}

/// What body() returns, or the status that stands for what it threw. Nothing passes into C.
template <typename Body>
int answer(Body body) noexcept
{
    try {
        return body();
    } catch (const Vey::RangeException &) {
        return statusParam;
    } catch (const std::exception &exception) {
        last_error = exception.what();
        return statusFail;
    }
}

/// body(access) with the PHY's access method, without the activity lock.
template <typename Body>
int withAccess(int unit, int phy, int managed_phy, Body body) noexcept
{
    return answer([&] {
        auto access = [&] {
            Activity activity;
            return QuorelApiGetExtMdioAccess(unitId(unit), phyId(phy), static_cast<ManagedPhy>(managed_phy));
        }();
        return access ? body(*access) : statusNotFound;
    });
}

bool isRegister(unsigned int device, unsigned int address)
{
    return device <= 31 && address <= 0xffff;
}

}  // namespace

int ext_phy_read(int unit, int phy, int managed_phy, unsigned int device, unsigned int address,
                 unsigned int *data)
{
    if (!isRegister(device, address) || !data) {
        return statusParam;
    }
    return withAccess(unit, phy, managed_phy, [&](MdioHamImpl::HamImpl &access) {
        *data = access.read(static_cast<std::uint8_t>(device), static_cast<std::uint16_t>(address));
        return statusOk;
    });
}

int ext_phy_write(int unit, int phy, int managed_phy, unsigned int device, unsigned int address,
                  unsigned int data)
{
    if (!isRegister(device, address) || data > 0xffff) {
        return statusParam;
    }
    return withAccess(unit, phy, managed_phy, [&](MdioHamImpl::HamImpl &access) {
        access.write(static_cast<std::uint8_t>(device), static_cast<std::uint16_t>(address),
                     static_cast<std::uint16_t>(data));
        return statusOk;
    });
}

const char *ext_phy_error(void)
{
    return last_error.data();
}

int ext_phy_name(int unit, int phy, int managed_phy, char *buffer, unsigned int size)
{
    if (!buffer) {
        return statusParam;
    }
    return withAccess(unit, phy, managed_phy, [&](MdioHamImpl::HamImpl &access) {
        std::snprintf(buffer, size, "%s", access.name().text().data());
        return statusOk;
    });
}

int ext_phy_standby_version(int unit, int phy, unsigned int *version)
{
    if (!version) {
        return statusParam;
    }
    return answer([&] {
        std::pair<unsigned int, std::uint16_t> key(unitId(unit).value(), phyId(phy).value());
        Activity activity;
        auto found = extPhys().find(key);
        *version = found == extPhys().end() ? 0 : found->second.standby_version;
        return statusOk;
    });
}

int ext_phy_remove(int unit, int phy, int managed_phy)
{
    return answer([&] {
        Activity activity;
        QuorelApiSetExtMdioAccess(unitId(unit), phyId(phy), nullptr, static_cast<ManagedPhy>(managed_phy));
        return statusOk;
    });
}
