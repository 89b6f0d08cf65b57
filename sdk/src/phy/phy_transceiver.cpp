/// The memory of the optical module in a port's cage, as it says itself what it is.
#include "begin.h"
#include "phy.h"
#include "sim_phyctrl.h"

#include <soc/phy_access.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>

using namespace sim;

namespace {

constexpr uint32 identification_device = 0x50;
constexpr std::size_t contents_size = 256;

using Contents = std::array<uint8, contents_size>;

struct ByteRange {
    std::size_t first, end;
};

/// Where a kind of module has what: text fields, and sums over the bytes before them.
struct ModuleLayout {
    uint8 identifier;
    ByteRange vendor, part, serial;
    ByteRange base, extended;  ///< the sum follows
    const char *part_number;
};

constexpr ModuleLayout single_lane = {0x03,    {20, 36}, {40, 56},        {68, 84},
                                      {0, 63}, {64, 95}, "SIM-SFP-10G-SR"};
constexpr ModuleLayout four_lanes = {0x11,       {148, 164}, {168, 184},         {196, 212},
                                     {128, 191}, {192, 223}, "SIM-QSFP-100G-SR4"};

void put_text(Contents &contents, const ByteRange &place, const std::string &text)
{
    const auto first = contents.begin() + static_cast<std::ptrdiff_t>(place.first);
    std::fill(first, contents.begin() + static_cast<std::ptrdiff_t>(place.end), uint8(' '));
    std::copy_n(text.begin(), std::min(text.size(), place.end - place.first), first);
}

void put_sum(Contents &contents, const ByteRange &range)
{
    const auto first = contents.begin() + static_cast<std::ptrdiff_t>(range.first);
    const auto end = contents.begin() + static_cast<std::ptrdiff_t>(range.end);
    *end = static_cast<uint8>(std::accumulate(first, end, 0u));
}

Contents contents_of(int unit, const PhyPort &port)
{
    const ModuleLayout &layout = port.outer().kind.lanes == 1 ? single_lane : four_lanes;
    Contents contents = {};
    contents[0] = contents[layout.base.first] = layout.identifier;
    put_text(contents, layout.vendor, "SIMULATED");
    put_text(contents, layout.part, layout.part_number);
    put_text(contents, layout.serial, "U" + std::to_string(unit) + "P" + std::to_string(port.number));
    put_sum(contents, layout.base);
    put_sum(contents, layout.extended);
    return contents;
}

}  // namespace

extern "C" {

int sim_soc_phyctrl_port_phy_multi_get(int unit, soc_port_t port, uint32 flags, uint32 dev_addr,
                                       uint32 offset, int max_size, uint8 *data, int *actual_size)
{
    return begin(unit, chip_runs, given(data, actual_size), ready_phy(port)).then([&](PhyPort &own) {
        if (flags & ~static_cast<uint32>(SOC_PHY_I2C_ADDRESS16) || max_size <= 0 || offset >= contents_size) {
            return SOC_E_PARAM;
        }
        const bool is_plugged = own.cable.media >> _SHR_PORT_MEDIUM_FIBER & 1;
        if (!is_plugged || dev_addr != identification_device || flags & SOC_PHY_I2C_ADDRESS16) {
            return SOC_E_NOT_FOUND;
        }
        const Contents contents = contents_of(unit, own);
        const std::size_t size =
            std::min<std::size_t>(static_cast<std::size_t>(max_size), contents_size - offset);
        std::copy_n(contents.begin() + offset, size, data);
        *actual_size = static_cast<int>(size);
        return SOC_E_NONE;
    });
}

}  // extern "C"
