/// The cache of masked addresses.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"

using namespace sim;

namespace {

bool valid_index(const L2State &l2, int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < l2.cache.capacity();
}

int check(const bcm_l2_cache_addr_t &addr)
{
    Destination to;
    if (addr.flags & BCM_L2_CACHE_DISCARD) {
        return BCM_E_NONE;
    }
    return addr.flags & BCM_L2_CACHE_TRUNK ? resolve_trunk(addr.dest_trunk, &to)
                                           : resolve(addr.dest_modid, addr.dest_port, &to);
}

int clear(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        l2.cache.clear();
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_l2_cache_init(int unit)
{
    return clear(unit);
}

int sim_bcm_l2_cache_delete_all(int unit)
{
    return clear(unit);
}

int sim_bcm_l2_cache_size_get(int unit, int *size)
{
    return begin(unit, ready<L2State>, given(size)).then([&](L2State &l2) -> int {
        *size = static_cast<int>(l2.cache.capacity());
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_cache_set(int unit, int index, bcm_l2_cache_addr_t *addr, int *index_used)
{
    return begin(unit, ready<L2State>, given(addr, index_used)).then([&](L2State &l2) -> int {
        int rc = check(*addr);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        int chosen = index;
        if (index == -1) {
            chosen = 0;
            while (l2.cache.find(chosen) != nullptr) {
                ++chosen;
            }
        } else if (!valid_index(l2, index)) {
            return BCM_E_PARAM;
        }
        rc = l2.cache.put(chosen, *addr);
        if (rc == BCM_E_NONE) {
            *index_used = chosen;
        }
        return rc;
    });
}

int sim_bcm_l2_cache_get(int unit, int index, bcm_l2_cache_addr_t *addr)
{
    return begin(unit, ready<L2State>, given(addr)).then([&](L2State &l2) -> int {
        return valid_index(l2, index) ? l2.cache.get(index, addr) : static_cast<int>(BCM_E_PARAM);
    });
}

int sim_bcm_l2_cache_delete(int unit, int index)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        return valid_index(l2, index) ? l2.cache.erase(index) : static_cast<int>(BCM_E_PARAM);
    });
}

}  // extern "C"
