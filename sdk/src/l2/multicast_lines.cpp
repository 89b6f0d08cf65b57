/// Sets of ports that multicast packets go to, by line of their table.
#include "begin.h"
#include "l2.h"
#include "sim_mcast.h"

using namespace sim;

namespace {

/// A line of the table: BCM_E_INIT, BCM_E_PARAM.
auto multicast_line(int index)
{
    return [index](Switch &sw, auto next) -> int {
        if (!l2_of(sw).multicast_initialised) {
            return BCM_E_INIT;
        }
        return index >= 0 && index < multicast_lines ? next(l2_of(sw).multicast[index])
                                                     : static_cast<int>(BCM_E_PARAM);
    };
}

}  // namespace

extern "C" {

int sim_bcm_mcast_bitmap_max(int unit, int *max)
{
    return begin(unit, multicast_line(0), given(max)).then([&](bcm_pbmp_t &) { *max = multicast_lines - 1; });
}

int sim_bcm_mcast_bitmap_set(int unit, int mcindex, bcm_pbmp_t pbmp)
{
    return begin(unit, multicast_line(mcindex)).then([&](bcm_pbmp_t &ports) {
        ports = pbmp;
        return BCM_E_NONE;
    });
}

int sim_bcm_mcast_bitmap_get(int unit, int mcindex, bcm_pbmp_t *pbmp)
{
    return begin(unit, given(pbmp), multicast_line(mcindex)).then([&](bcm_pbmp_t &ports) {
        *pbmp = ports;
        return BCM_E_NONE;
    });
}

int sim_bcm_mcast_bitmap_del(int unit, int mcindex, bcm_pbmp_t pbmp)
{
    return begin(unit, multicast_line(mcindex)).then([&](bcm_pbmp_t &ports) {
        for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
            ports.pbits[word] &= ~pbmp.pbits[word];
        }
        return BCM_E_NONE;
    });
}

}  // extern "C"
