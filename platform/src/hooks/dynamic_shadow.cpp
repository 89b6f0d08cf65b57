#include "dynamic_shadow.h"

#include "quorel_api/chip_memory.h"
#include "shadows.h"
#include "trace_lines.h"

#include <set>
#include <tuple>

namespace {

/// A memory's words in a unit's address space.
struct Range {
    int unit;
    U32 first, words;

    bool operator<(const Range &other) const
    {
        return std::tie(unit, first) < std::tie(other.unit, other.first);
    }
};

bool forced;

std::set<Range> &ranges()
{
    static std::set<Range> &all = *new std::set<Range>;
    return all;
}

bool find(int unit, int mem, int arrayIndex, int baseAddr, Range *range)
{
    Hardware::ChipMemory::Ptr memory = QuorelApi::findChipMemory(unit, mem, baseAddr);
    if (!memory || memory->arrayIndex() != arrayIndex) {
        return false;
    }
    *range = {unit, memory->baseAddr(), memory->sizeBytes() / static_cast<U32>(sizeof(U32))};
    return true;
}

bool isDynamic(int unit, U32 address)
{
    auto after = ranges().upper_bound({unit, address, 0});
    if (after == ranges().begin()) {
        return false;
    }
    const Range &range = *--after;
    return range.unit == unit && address - range.first < range.words;
}

}  // namespace

bool readFromDynamicShadow(int unit, U32 address, U32 *words, std::size_t count)
{
    if (forced || ranges().empty() || !isDynamic(unit, address)) {
        return false;
    }
    Hardware::HardwareShadow::Ptr const shadow = shadowOf(unit);
    return shadow && shadow->read(address, words, count);
}

void forgetDynamicShadows()
{
    ranges().clear();
    forced = false;
}

bool dynamicShadowEnable(int unit, int mem, int arrayIndex, int baseAddr)
{
    Range range;
    return find(unit, mem, arrayIndex, baseAddr, &range) && ranges().count(range) != 0;
}

void dynamicShadowEnableIs(int unit, int mem, int arrayIndex, int baseAddr, bool enable)
{
    trace("dynamicShadowEnableIs(%d, %d, %d, 0x%x, %d)", unit, mem, arrayIndex, static_cast<U32>(baseAddr),
          enable);
    Range range;
    if (!find(unit, mem, arrayIndex, baseAddr, &range)) {
        return;
    }
    if (enable && makeShadow(unit)) {
        ranges().insert(range);
    } else {
        ranges().erase(range);
    }
}

bool forceReadFromHardware()
{
    return forced;
}

void forceReadFromHardwareIs(bool force)
{
    trace("forceReadFromHardwareIs(%d)", force);
    forced = force;
}
