/// What is known of PHYs: names, identifiers, addresses, places in their chips.
#include "begin.h"
#include "phy.h"
#include "sim_phy.h"
#include "sim_phyctrl.h"

#include <soc/phy_access.h>

#include <algorithm>
#include <cstring>

using namespace sim;

namespace {

/// A value of the port's entry; of no entry, `none`.
template <class Value>
Value entry_value(int unit, soc_port_t port, Value soc_phy_info_t::*member, Value none)
{
    begin(unit, chip_runs, phy_entry(port)).then([&](PhyUnit &phys, int own) {
        none = phys.tables.of(own).*member;
        return SOC_E_NONE;
    });
    return none;
}

/// Of the driver in charge of the port's outer PHY; null for none.
char *driver_name(const PhyUnit &phys, const PhyPort &port)
{
    return phys.has_drivers && port.probed ? phy_name(port.number) : nullptr;
}

uint16 soc_phy_info_t::*address_member(int flags)
{
    return flags & SOC_PHY_INTERNAL ? &soc_phy_info_t::phy_addr_int : &soc_phy_info_t::phy_addr;
}

/// The unit's PHYs, and the bus address of the one that the flags mean: SOC_E_PARAM, SOC_E_UNAVAIL.
auto bus_address(soc_port_t port, int flags)
{
    return [=](Switch &sw, auto next) -> int {
        return phy_port(port)(sw, [&](PhyUnit &phys, PhyPort &own) -> int {
            if (flags & ~SOC_PHY_INTERNAL) {
                return SOC_E_PARAM;
            }
            if (!(flags & SOC_PHY_INTERNAL) && !own.copper) {
                return SOC_E_UNAVAIL;
            }
            return next(phys, phys.tables.of(own.number).*address_member(flags));
        });
    };
}

/// A port with a PHY, and its chip's entry; the tables follow.
auto chip_info(soc_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return phy_port(port)(sw, [&](PhyUnit &phys, PhyPort &own) -> int {
            const int rc = next(own, phys.tables.of(own.number).chip_info);
            reindex(phys.tables);
            return rc;
        });
    };
}

}  // namespace

extern "C" {

char *sim_soc_phyctrl_drv_name(int unit, soc_port_t port)
{
    char *name = nullptr;
    begin(unit, chip_runs, phy_port(port)).then([&](PhyUnit &phys, PhyPort &own) {
        name = driver_name(phys, own);
        return SOC_E_NONE;
    });
    return name;
}

int sim_soc_phyctrl_drv_name_get(int unit, soc_port_t port, char *name, int len)
{
    return begin(unit, chip_runs, given(name), phy_port(port)).then([&](PhyUnit &phys, PhyPort &own) {
        if (len <= 0) {
            return SOC_E_PARAM;
        }
        const char *driver = driver_name(phys, own);
        if (driver == nullptr) {
            return SOC_E_INIT;
        }
        const std::size_t length = std::min(std::strlen(driver), static_cast<std::size_t>(len) - 1);
        std::memcpy(name, driver, length);
        name[length] = '\0';
        return SOC_E_NONE;
    });
}

char *sim_soc_phy_name_get(int unit, soc_port_t port)
{
    return entry_value<char *>(unit, port, &soc_phy_info_t::phy_name, nullptr);
}

int sim_soc_phy_info_get(int unit, soc_port_t port, soc_phy_info_t *pi)
{
    return begin(unit, chip_runs, given(pi), phy_entry(port)).then([&](PhyUnit &phys, int own) {
        *pi = phys.tables.of(own);
        return SOC_E_NONE;
    });
}

uint16 sim_soc_phy_id0reg_get(int unit, soc_port_t port)
{
    return entry_value<uint16>(unit, port, &soc_phy_info_t::phy_id0, 0);
}

uint16 sim_soc_phy_id1reg_get(int unit, soc_port_t port)
{
    return entry_value<uint16>(unit, port, &soc_phy_info_t::phy_id1, 0);
}

sal_usecs_t sim_soc_phy_an_timeout_get(int unit, soc_port_t port)
{
    return entry_value<sal_usecs_t>(unit, port, &soc_phy_info_t::an_timeout, 0);
}

uint16 sim_soc_phy_addr_of_port(int unit, soc_port_t port)
{
    return entry_value<uint16>(unit, port, &soc_phy_info_t::phy_addr, 0);
}

uint16 sim_soc_phy_addr_int_of_port(int unit, soc_port_t port)
{
    return entry_value<uint16>(unit, port, &soc_phy_info_t::phy_addr_int, 0);
}

soc_port_t sim_soc_phy_addr_to_port(int unit, uint16 phy_id)
{
    soc_port_t port = -1;
    begin(unit, chip_runs, phy_unit).then([&](PhyUnit &phys) {
        port = phys.has_tables ? phys.tables.port_at(phy_id) : -1;
        return SOC_E_NONE;
    });
    return port;
}

int sim_soc_phy_is_c45_miim(int unit, soc_port_t port)
{
    return begin(unit, chip_runs, phy_port(port)).then([](PhyUnit &, PhyPort &own) {
        return own.outer().kind.clause45;
    });
}

int sim_soc_phy_cfg_addr_get(int unit, soc_port_t port, int flags, uint16 *addr_ptr)
{
    return begin(unit, chip_runs, given(addr_ptr), bus_address(port, flags))
        .then([&](PhyUnit &, uint16 &address) {
            *addr_ptr = address;
            return SOC_E_NONE;
        });
}

int sim_soc_phy_cfg_addr_set(int unit, soc_port_t port, int flags, uint16 addr)
{
    return begin(unit, chip_runs, bus_address(port, flags)).then([&](PhyUnit &phys, uint16 &address) {
        if (addr >= no_phy_address) {
            return SOC_E_PARAM;
        }
        if (addr != address && phys.tables.port_at(addr) >= 0) {
            return SOC_E_EXISTS;
        }
        address = addr;
        reindex(phys.tables);
        return SOC_E_NONE;
    });
}

int sim_soc_phy_primary_and_offset_get(int unit, soc_port_t port, soc_port_t *primary_port, int *offset)
{
    return begin(unit, chip_runs, given(primary_port, offset), chip_info(port))
        .then([&](PhyPort &, soc_phy_chip_info_t &info) {
            *primary_port = info.primary;
            *offset = info.offset;
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_primary_set(int unit, soc_port_t port, soc_port_t primary)
{
    return begin(unit, chip_runs, chip_info(port)).then([&](PhyPort &own, soc_phy_chip_info_t &info) {
        if (!has_serdes(primary) || has_copper_phy(primary) != own.copper.has_value()) {
            return SOC_E_PARAM;
        }
        info.primary = primary;
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_primary_get(int unit, soc_port_t port, soc_port_t *primary)
{
    return begin(unit, chip_runs, given(primary), chip_info(port))
        .then([&](PhyPort &, soc_phy_chip_info_t &info) {
            *primary = info.primary;
            return SOC_E_NONE;
        });
}

int sim_soc_phyctrl_offset_set(int unit, soc_port_t port, int offset)
{
    return begin(unit, chip_runs, chip_info(port)).then([&](PhyPort &, soc_phy_chip_info_t &info) {
        if (offset < 0 || offset >= phy_chip_offsets) {
            return SOC_E_PARAM;
        }
        info.offset = offset;
        return SOC_E_NONE;
    });
}

int sim_soc_phyctrl_offset_get(int unit, soc_port_t port, soc_port_t *offset)
{
    return begin(unit, chip_runs, given(offset), chip_info(port))
        .then([&](PhyPort &, soc_phy_chip_info_t &info) {
            *offset = info.offset;
            return SOC_E_NONE;
        });
}

}  // extern "C"
