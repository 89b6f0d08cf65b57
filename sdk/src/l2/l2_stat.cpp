/// Counters of single addresses.
#include "checked.h"
#include "sim.h"

using namespace sim;

namespace {

/// body(counter) on one counter of an entry.
template <class Body>
int on_counter(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, Pointers pointers, Body body)
{
    return on_l2(unit, pointers, [&](Switch &sw) -> int {
        // Compared as an int, since a caller can pass any.
        const int number = static_cast<int>(stat);
        if (l2addr == nullptr || number < 0 || number >= bcmL2StatCount || !VlanTable::valid(l2addr->vid)) {
            return BCM_E_PARAM;
        }
        const L2Key key = l2_key(l2addr->mac, l2addr->vid);
        if (sw.l2.addresses.find(key) == L2Table::none) {
            return BCM_E_NOT_FOUND;
        }
        const auto counters = sw.l2.counters.find(key);
        if (counters == sw.l2.counters.end()) {
            return BCM_E_DISABLED;
        }
        body(counters->second[static_cast<std::size_t>(number)]);
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_l2_stat_get(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint64 *val)
{
    return on_counter(unit, l2addr, stat, {val}, [&](uint64 counter) { *val = counter; });
}

int sim_bcm_l2_stat_get32(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint32 *val)
{
    return on_counter(unit, l2addr, stat, {val},
                      [&](uint64 counter) { *val = static_cast<uint32>(counter); });
}

int sim_bcm_l2_stat_set(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint64 val)
{
    return on_counter(unit, l2addr, stat, {}, [&](uint64 &counter) { counter = val; });
}

int sim_bcm_l2_stat_set32(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint32 val)
{
    return on_counter(unit, l2addr, stat, {}, [&](uint64 &counter) { counter = val; });
}

int sim_bcm_l2_stat_enable_set(int unit, bcm_l2_addr_t *l2addr, int enable)
{
    return on_l2(unit, {l2addr}, [&](Switch &sw) -> int {
        if (!VlanTable::valid(l2addr->vid)) {
            return BCM_E_PARAM;
        }
        const L2Key key = l2_key(l2addr->mac, l2addr->vid);
        if (sw.l2.addresses.find(key) == L2Table::none) {
            return BCM_E_NOT_FOUND;
        }
        if (enable) {
            sw.l2.counters.try_emplace(key);
        } else {
            sw.l2.counters.erase(key);
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
