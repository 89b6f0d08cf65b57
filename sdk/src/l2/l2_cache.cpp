/// The cache of masked addresses.
#include "checked.h"
#include "sim.h"

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
    return on_l2(unit, {}, [](Switch &sw) -> int {
        sw.l2.cache.clear();
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
    return on_l2(unit, {size}, [&](Switch &sw) -> int {
        *size = static_cast<int>(sw.l2.cache.capacity());
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_cache_set(int unit, int index, bcm_l2_cache_addr_t *addr, int *index_used)
{
    return on_l2(unit, {addr, index_used}, [&](Switch &sw) -> int {
        int rc = check(*addr);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        int chosen = index;
        if (index == -1) {
            chosen = 0;
            while (sw.l2.cache.find(chosen) != nullptr) {
                ++chosen;
            }
        } else if (!valid_index(sw.l2, index)) {
            return BCM_E_PARAM;
        }
        rc = sw.l2.cache.put(chosen, *addr);
        if (rc == BCM_E_NONE) {
            *index_used = chosen;
        }
        return rc;
    });
}

int sim_bcm_l2_cache_get(int unit, int index, bcm_l2_cache_addr_t *addr)
{
    return on_l2(unit, {addr}, [&](Switch &sw) -> int {
        return valid_index(sw.l2, index) ? sw.l2.cache.get(index, addr) : static_cast<int>(BCM_E_PARAM);
    });
}

int sim_bcm_l2_cache_delete(int unit, int index)
{
    return on_l2(unit, {}, [&](Switch &sw) -> int {
        return valid_index(sw.l2, index) ? sw.l2.cache.erase(index) : static_cast<int>(BCM_E_PARAM);
    });
}

}  // extern "C"
