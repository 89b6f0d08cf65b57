#include "phy_firmware.h"

#include "begin.h"
#include "phy.h"
#include "sim_phyctrl.h"

#include <soc/phy_access.h>

#include <algorithm>
#include <vector>

using namespace sim;

namespace {

constexpr uint32 known_flags =
    SOC_PHY_FIRMWARE_BEGIN | SOC_PHY_FIRMWARE_END | SOC_PHY_FIRMWARE_BROADCAST | SOC_PHY_FIRMWARE_PERMANENT;

/// A piece of a program. It begins anew by flag, or if it is all of it.
struct Piece {
    bool begins, ends;
    std::size_t offset;
    const uint8 *first;
    std::size_t size;
};

bool fits(const Phy &phy, const Piece &piece)
{
    const std::size_t loaded = piece.begins ? 0 : phy.firmware.size();
    return piece.offset <= loaded && piece.size <= phy.kind.firmware_max - piece.offset;
}

void load(Phy &phy, const Piece &piece)
{
    if (piece.begins) {
        phy.firmware.clear();
    }
    phy.firmware.resize(std::max(phy.firmware.size(), piece.offset + piece.size));
    std::copy_n(piece.first, piece.size, phy.firmware.begin() + static_cast<std::ptrdiff_t>(piece.offset));
    phy.firmware_started = piece.ends;
}

/// The port's PHY, or those of all ports of its chip.
std::vector<Phy *> targets(PhyUnit &phys, PhyPort &port, bool broadcast)
{
    std::vector<Phy *> phy = {&port.outer()};
    const int primary = phys.tables.of(port.number).chip_info.primary;
    for (PhyPort &other : phys.all()) {
        if (broadcast && other.serdes && &other != &port
            && phys.tables.of(other.number).chip_info.primary == primary) {
            phy.push_back(&other.outer());
        }
    }
    return phy;
}

}  // namespace

namespace sim {

uint32 firmware_version(const Phy &phy)
{
    uint32 version = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(4, phy.firmware.size()); ++i) {
        version |= static_cast<uint32>(phy.firmware[i]) << 8 * i;
    }
    return version;
}

}  // namespace sim

extern "C" {

int sim_soc_phyctrl_firmware_set(int unit, soc_port_t port, uint32 flags, int offset, uint8 *array, int len)
{
    return begin(unit, chip_runs, given(array), phy_port(port)).then([&](PhyUnit &phys, PhyPort &own) {
        if (!is_ready(phys, own)) {
            return SOC_E_INIT;
        }
        if (flags & ~known_flags || offset < 0 || len <= 0) {
            return SOC_E_PARAM;
        }
        if (flags & SOC_PHY_FIRMWARE_PERMANENT) {
            return SOC_E_UNAVAIL;
        }
        const bool in_pieces = flags & (SOC_PHY_FIRMWARE_BEGIN | SOC_PHY_FIRMWARE_END);
        const Piece piece = {flags & SOC_PHY_FIRMWARE_BEGIN || (!in_pieces && offset == 0),
                             (flags & SOC_PHY_FIRMWARE_END) || !in_pieces, static_cast<std::size_t>(offset),
                             array, static_cast<std::size_t>(len)};
        const std::vector<Phy *> loaded = targets(phys, own, flags & SOC_PHY_FIRMWARE_BROADCAST);
        if (!std::all_of(loaded.begin(), loaded.end(), [&](Phy *phy) { return fits(*phy, piece); })) {
            return SOC_E_PARAM;
        }
        for (Phy *phy : loaded) {
            load(*phy, piece);
        }
        return SOC_E_NONE;
    });
}

}  // extern "C"
