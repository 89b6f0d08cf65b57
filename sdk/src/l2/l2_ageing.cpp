/// How long entries live: the ageing timer, and freezing the table.
#include "begin.h"
#include "driver_registers.h"
#include "l2.h"
#include "sim_l2.h"

#include <sim/traffic.h>

using namespace sim;

extern "C" {

int sim_bcm_l2_age_timer_set(int unit, int age_seconds)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        if (age_seconds < 0) {
            return BCM_E_PARAM;
        }
        l2.age_every(age_seconds);
        write_ageing_registers(unit, age_seconds);
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_age_timer_get(int unit, int *age_seconds)
{
    return begin(unit, ready<L2State>, given(age_seconds)).then([&](L2State &l2) -> int {
        *age_seconds = l2.settings.age_seconds;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_addr_freeze(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        ++l2.settings.freezes;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_addr_thaw(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        if (l2.settings.freezes == 0) {
            return BCM_E_FAIL;
        }
        --l2.settings.freezes;
        return BCM_E_NONE;
    });
}

int sim_l2_age_step(int unit)
{
    return begin(unit, ready<L2State>).then([](Switch &sw, L2State &l2) -> int {
        if (l2.settings.age_seconds == 0 || !l2.settings.ages || l2.settings.freezes != 0) {
            return 0;
        }
        int removed = 0;
        L2Table &addresses = l2.addresses;
        addresses.traverse([&](std::size_t position) -> int {
            const uint32 flags = addresses.flags(position);
            const unsigned state = addresses.state(position);
            const bool used = (flags & BCM_L2_SRC_HIT) || (state & l2_recent);
            if (!used && !(flags & BCM_L2_STATIC)) {
                l2_remove(sw, position, BCM_L2_CALLBACK_AGE_EVENT);
                ++removed;
            } else {
                addresses.set_flags(position, flags & ~static_cast<uint32>(BCM_L2_HIT));
                addresses.set_state(position, state & ~static_cast<unsigned>(l2_recent));
            }
            return BCM_E_NONE;
        });
        return removed;
    });
}

}  // extern "C"
