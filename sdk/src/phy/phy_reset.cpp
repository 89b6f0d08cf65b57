/// Resets of PHYs, and the functions that are called for them.
#include "begin.h"
#include "marked.h"
#include "phy.h"
#include "sim_phy.h"
#include "sim_phyctrl.h"

using namespace sim;

namespace {

bool operator==(const ResetFunction &a, const ResetFunction &b)
{
    return a.callback == b.callback && a.user_data == b.user_data;
}

/// What the driver of the copper PHY does by itself.
int reset_copper(int unit, soc_port_t port, void *)
{
    return begin(unit, chip_runs, ready_phy(port)).then([](PhyPort &own) {
        if (!own.copper) {
            return SOC_E_UNAVAIL;
        }
        own.copper->reset();
        return SOC_E_NONE;
    });
}

ResetFunction reset_function_of(const PhyPort &port)
{
    return port.own_reset.callback != nullptr ? port.own_reset : port.default_reset;
}

int reset(int unit, PhyPort &port, void *user_arg)
{
    const ResetFunction function = reset_function_of(port);
    // A function may reset the PHY itself.
    if (function.callback != nullptr && !port.in_reset) {
        const Marked marked(port.in_reset);
        const int rc =
            function.callback(unit, port.number, user_arg != nullptr ? user_arg : function.user_data);
        if (rc < 0) {
            return rc;
        }
    }
    port.reset_phys();
    return SOC_E_NONE;
}

}  // namespace

extern "C" {

int sim_soc_phyctrl_reset(int unit, soc_port_t port, void *user_arg)
{
    return begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        return reset(unit, own, user_arg);
    });
}

int sim_soc_phy_reset(int unit, soc_port_t port)
{
    return sim_soc_phyctrl_reset(unit, port, nullptr);
}

void *sim_soc_phyctrl_ext_phy_reset(int unit, soc_port_t port)
{
    void *function = nullptr;
    begin(unit, chip_runs, ready_phy(port)).then([&](PhyPort &own) {
        if (own.copper) {
            const soc_port_phy_reset_cb_t registered = reset_function_of(own).callback;
            function = reinterpret_cast<void *>(registered != nullptr ? registered : reset_copper);
        }
        return SOC_E_NONE;
    });
    return function;
}

int sim_soc_phy_reset_register(int unit, soc_port_t port, soc_port_phy_reset_cb_t callback, void *user_data,
                               int reg_default)
{
    return begin(unit, chip_runs, given(callback), phy_port(port)).then([&](PhyUnit &, PhyPort &own) {
        ResetFunction &place = reg_default != 0 ? own.default_reset : own.own_reset;
        if (place.callback != nullptr) {
            return SOC_E_EXISTS;
        }
        place = {callback, user_data};
        return SOC_E_NONE;
    });
}

int sim_soc_phy_reset_unregister(int unit, soc_port_t port, soc_port_phy_reset_cb_t callback, void *user_data)
{
    return begin(unit, chip_runs, given(callback), phy_port(port)).then([&](PhyUnit &, PhyPort &own) {
        for (ResetFunction *place : {&own.own_reset, &own.default_reset}) {
            if (*place == ResetFunction{callback, user_data}) {
                *place = ResetFunction();
                return SOC_E_NONE;
            }
        }
        return SOC_E_NOT_FOUND;
    });
}

}  // extern "C"
