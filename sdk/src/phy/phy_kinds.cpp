#include "phy_kind.h"

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

// The standard control register's speed selection: two bits, and four more where both are set.
constexpr uint16 select_100 = 1 << 13;
constexpr uint16 select_1000 = 1 << 6;

constexpr uint16 select_further(unsigned code)
{
    return static_cast<uint16>(select_100 | select_1000 | code << 2);
}

constexpr uint32 interface_set()
{
    return 0;
}

template <class... More>
constexpr uint32 interface_set(_shr_port_if_t first, More... more)
{
    return 1u << first | interface_set(more...);
}

struct InterfaceSpeed {
    _shr_port_if_t interface;
    int speed_max;
};

constexpr InterfaceSpeed interface_speeds[] = {
    {_SHR_PORT_IF_SGMII, 1000}, {_SHR_PORT_IF_XFI, 10000},   {_SHR_PORT_IF_SFI, 25000},
    {_SHR_PORT_IF_KR, 25000},   {_SHR_PORT_IF_XLAUI, 50000}, {_SHR_PORT_IF_KR4, 100000},
    {_SHR_PORT_IF_CR4, 100000}, {_SHR_PORT_IF_CAUI, 100000},
};

}  // namespace

constexpr Rate rates[rate_count] = {
    {10, _SHR_PM_10MB_HD, _SHR_PM_10MB_FD, 0},
    {100, _SHR_PM_100MB_HD, _SHR_PM_100MB_FD, select_100},
    {1000, _SHR_PM_1000MB_HD, _SHR_PM_1000MB_FD, select_1000},
    {2500, 0, _SHR_PM_2500MB_FD, select_further(6)},
    {10000, 0, _SHR_PM_10GB_FD, select_further(0)},
    {25000, 0, 0, select_further(4)},
    {40000, 0, _SHR_PM_40GB_FD, select_further(2)},
    {50000, 0, 0, select_further(5)},
    {100000, 0, _SHR_PM_100GB_FD, select_further(3)},
};

constexpr PhyKind serdes_kind = {
    false,
    4,
    25000,
    {{_SHR_PORT_MEDIUM_FIBER, 10, 100000, 0, false}, {_SHR_PORT_MEDIUM_BACKPLANE, 1000, 100000, 0, true}},
    interface_set(_SHR_PORT_IF_SGMII, _SHR_PORT_IF_XFI, _SHR_PORT_IF_SFI, _SHR_PORT_IF_KR, _SHR_PORT_IF_XLAUI,
                  _SHR_PORT_IF_KR4, _SHR_PORT_IF_CR4, _SHR_PORT_IF_CAUI),
    _SHR_PORT_IF_CAUI,
    128 * 1024,
    500000};

constexpr PhyKind copper_kind = {
    true,
    1,
    10000,
    {{_SHR_PORT_MEDIUM_COPPER, 10, 10000, 100, true}, {_SHR_PORT_MEDIUM_FIBER, 1000, 10000, 0, false}},
    interface_set(_SHR_PORT_IF_SGMII, _SHR_PORT_IF_XFI),
    _SHR_PORT_IF_XFI,
    256 * 1024,
    2000000};

const Rate *rate_of(int speed)
{
    const Rate *found = std::find_if(std::begin(rates), std::end(rates),
                                     [&](const Rate &rate) { return rate.speed == speed; });
    return found == std::end(rates) ? nullptr : found;
}

const MediumAbility *PhyKind::over(soc_port_medium_t medium) const
{
    const MediumAbility *found = std::find_if(std::begin(media), std::end(media),
                                              [&](const MediumAbility &one) { return one.medium == medium; });
    return found == std::end(media) ? nullptr : found;
}

bool can_do(const MediumAbility &medium, int speed, bool full_duplex)
{
    // None of the media is for 2.5 Gbit/s.
    return rate_of(speed) != nullptr && speed != 2500 && speed >= medium.speed_min
           && speed <= medium.speed_max && (full_duplex || speed <= medium.half_duplex_max);
}

soc_port_mode_t modes_of(const MediumAbility &medium, int speed_max)
{
    soc_port_mode_t modes = pause_modes;
    for (const Rate &rate : rates) {
        if (rate.speed <= speed_max) {
            modes |= can_do(medium, rate.speed, true) ? rate.full_duplex : 0;
            modes |= can_do(medium, rate.speed, false) ? rate.half_duplex : 0;
        }
    }
    return modes;
}

bool carries(soc_port_if_t interface, int speed)
{
    return std::any_of(
        std::begin(interface_speeds), std::end(interface_speeds),
        [&](const InterfaceSpeed &one) { return one.interface == interface && speed <= one.speed_max; });
}

}  // namespace sim
