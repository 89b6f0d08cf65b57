/// Sets of ports that multicast packets go to, by line of their table.
#include "checked.h"
#include "sim.h"

using namespace sim;

namespace {

/// body(bcm_pbmp_t &) on a line; BCM_E_UNIT, BCM_E_PARAM.
template <class Body>
int on_line(int unit, int index, Pointers pointers, Body body)
{
    return on_unit(unit, pointers, [&](Switch &sw) {
        return index >= 0 && index < multicast_lines ? static_cast<int>(body(sw.multicast[index]))
                                                     : static_cast<int>(BCM_E_PARAM);
    });
}

}  // namespace

extern "C" {

int sim_bcm_mcast_bitmap_max(int unit, int *max)
{
    return on_unit(unit, {max}, [&](Switch &) -> int {
        *max = multicast_lines - 1;
        return BCM_E_NONE;
    });
}

int sim_bcm_mcast_bitmap_set(int unit, int mcindex, bcm_pbmp_t pbmp)
{
    return on_line(unit, mcindex, {}, [&](bcm_pbmp_t &ports) {
        ports = pbmp;
        return BCM_E_NONE;
    });
}

int sim_bcm_mcast_bitmap_get(int unit, int mcindex, bcm_pbmp_t *pbmp)
{
    return on_line(unit, mcindex, {pbmp}, [&](bcm_pbmp_t &ports) {
        *pbmp = ports;
        return BCM_E_NONE;
    });
}

int sim_bcm_mcast_bitmap_del(int unit, int mcindex, bcm_pbmp_t pbmp)
{
    return on_line(unit, mcindex, {}, [&](bcm_pbmp_t &ports) {
        for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
            ports.pbits[word] &= ~pbmp.pbits[word];
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
