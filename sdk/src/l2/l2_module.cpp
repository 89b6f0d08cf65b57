/// The layer-2 module as a whole, and who is told of changes of its address table.
#include "begin.h"
#include "driver_registers.h"
#include "l2.h"
#include "sim_l2.h"

using namespace sim;

namespace {

void reset(L2State &l2)
{
    l2.clear();
    l2.settings = {};
    l2.age_every(age_seconds_default);
}

}  // namespace

extern "C" {

int sim_bcm_l2_init(int unit)
{
    return begin(unit).then([&](Switch &sw) -> int {
        reset(l2_of(sw));
        l2_of(sw).initialised = true;
        write_ageing_registers(unit, age_seconds_default);
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_clear(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        l2.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_detach(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        reset(l2);
        l2.initialised = false;
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_addr_register(int unit, bcm_l2_addr_callback_t callback, void *userdata)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        if (callback == nullptr) {
            return BCM_E_PARAM;
        }
        // Again is no error.
        l2.settings.subscribers.add({callback, userdata});
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_addr_unregister(int unit, bcm_l2_addr_callback_t callback, void *userdata)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        return callback == nullptr ? BCM_E_PARAM : l2.settings.subscribers.remove({callback, userdata});
    });
}

}  // extern "C"
