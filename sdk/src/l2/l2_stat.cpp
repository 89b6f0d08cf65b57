/// Counters of single addresses.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"
#include "vlan.h"

using namespace sim;

namespace {

/// One counter of an entry: BCM_E_PARAM, BCM_E_NOT_FOUND, BCM_E_DISABLED.
auto counter_of(const bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat)
{
    return [=](Switch &sw, auto next) -> int {
        // Compared as an int, since a caller can pass any.
        const int number = static_cast<int>(stat);
        if (l2addr == nullptr || number < 0 || number >= bcmL2StatCount || !VlanTable::valid(l2addr->vid)) {
            return BCM_E_PARAM;
        }
        L2State &l2 = l2_of(sw);
        const L2Key key = l2_key(l2addr->mac, l2addr->vid);
        if (l2.addresses.find(key) == L2Table::none) {
            return BCM_E_NOT_FOUND;
        }
        const auto counters = l2.counters.find(key);
        return counters != l2.counters.end() ? next(counters->second[static_cast<std::size_t>(number)])
                                             : static_cast<int>(BCM_E_DISABLED);
    };
}

}  // namespace

extern "C" {

int sim_bcm_l2_stat_get(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint64 *val)
{
    return begin(unit, ready<L2State>, given(val), counter_of(l2addr, stat))
        .then([&](L2State &, uint64 counter) { *val = counter; });
}

int sim_bcm_l2_stat_get32(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint32 *val)
{
    return begin(unit, ready<L2State>, given(val), counter_of(l2addr, stat))
        .then([&](L2State &, uint64 counter) { *val = static_cast<uint32>(counter); });
}

int sim_bcm_l2_stat_set(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint64 val)
{
    return begin(unit, ready<L2State>, counter_of(l2addr, stat)).then([&](L2State &, uint64 &counter) {
        counter = val;
    });
}

int sim_bcm_l2_stat_set32(int unit, bcm_l2_addr_t *l2addr, bcm_l2_stat_t stat, uint32 val)
{
    return begin(unit, ready<L2State>, counter_of(l2addr, stat)).then([&](L2State &, uint64 &counter) {
        counter = val;
    });
}

int sim_bcm_l2_stat_enable_set(int unit, bcm_l2_addr_t *l2addr, int enable)
{
    return begin(unit, ready<L2State>, given(l2addr)).then([&](L2State &l2) -> int {
        if (!VlanTable::valid(l2addr->vid)) {
            return BCM_E_PARAM;
        }
        const L2Key key = l2_key(l2addr->mac, l2addr->vid);
        if (l2.addresses.find(key) == L2Table::none) {
            return BCM_E_NOT_FOUND;
        }
        if (enable) {
            l2.counters.try_emplace(key);
        } else {
            l2.counters.erase(key);
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
