#include "soc_control.h"

#include "switch.h"

#include <soc/control.h>

#include <array>

namespace {

constexpr int no_block = -1;

/// The blocks of one type: one instance per core, then the one that stands for both.
struct BlockType {
    soc_core_blocks_t soc_control_t::*blocks;
    int first;
};

constexpr BlockType block_types[] = {
    {&soc_control_t::egq, 4}, {&soc_control_t::ihb, 8}, {&soc_control_t::ihp, 12}, {&soc_control_t::iqm, 16}};

constexpr soc_control_t two_core_chip()
{
    soc_control_t control = {};
    for (int &copy : control.block_copyno) {
        copy = no_block;
    }
    for (const BlockType &type : block_types) {
        soc_core_blocks_t &blocks = control.*type.blocks;
        for (int core = 0; core < SOC_MAX_NUM_CORES; ++core) {
            blocks.block[core] = type.first + core;
            control.block_copyno[type.first + core] = core;
        }
        blocks.broadcast = type.first + SOC_MAX_NUM_CORES;
        control.block_copyno[blocks.broadcast] = SOC_CORE_BROADCAST;
    }
    return control;
}

constexpr std::array<soc_control_t, sim::unit_max> all_alike()
{
    std::array<soc_control_t, sim::unit_max> units = {};
    for (soc_control_t &unit : units) {
        unit = two_core_chip();
    }
    return units;
}

// Not made by code at start-up: other libraries' may look at it.
std::array<soc_control_t, sim::unit_max> units = all_alike();

}  // namespace

// Unit 0 is attached from the start.
[[gnu::visibility("default")]] soc_control_t *soc_control[SOC_MAX_NUM_DEVICES] = {units.data()};

namespace sim {

void publish_control(int unit, bool attached)
{
    const auto index = static_cast<std::size_t>(unit);
    units[index] = two_core_chip();
    soc_control[index] = attached ? &units[index] : nullptr;
}

}  // namespace sim
