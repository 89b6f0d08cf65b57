/// Initialisation of a unit as a whole and of single families.
#include "begin.h"
#include "field.h"
#include "rule_store.h"
#include "sim_auth.h"
#include "sim_cosq.h"
#include "sim_fabric.h"
#include "sim_field.h"
#include "sim_init.h"
#include "sim_l2.h"
#include "sim_l3.h"
#include "sim_link.h"
#include "sim_mcast.h"
#include "sim_mirror.h"
#include "sim_phy.h"
#include "sim_port.h"
#include "sim_rx.h"
#include "sim_stat.h"
#include "sim_stk.h"
#include "sim_trunk.h"
#include "sim_tx.h"
#include "sim_vlan.h"
#include "switch.h"

#include <bcm/init.h>

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

struct Module {
    int number;
    const char *name;
    int (*init)(int unit);
};
constexpr Module modules[] = {
    {BCM_MODULE_PORT, "port", sim_bcm_port_init},
    {BCM_MODULE_L2, "l2", sim_bcm_l2_init},
    {BCM_MODULE_VLAN, "vlan", sim_bcm_vlan_init},
    {BCM_MODULE_TRUNK, "trunk", sim_bcm_trunk_init},
    {BCM_MODULE_COSQ, "cosq", sim_bcm_cosq_init},
    {BCM_MODULE_MCAST, "mcast", sim_bcm_mcast_init},
    {BCM_MODULE_LINKSCAN, "linkscan", sim_bcm_linkscan_init},
    {BCM_MODULE_STAT, "stat", sim_bcm_stat_init},
    {BCM_MODULE_MIRROR, "mirror", sim_bcm_mirror_init},
    {BCM_MODULE_L3, "l3", sim_bcm_l3_init},
    {BCM_MODULE_STACK, "stack", sim_bcm_stk_init},
    {BCM_MODULE_TX, "tx", sim_bcm_tx_init},
    {BCM_MODULE_AUTH, "auth", sim_bcm_auth_init},
    {BCM_MODULE_RX, "rx", sim_bcm_rx_init},
    {BCM_MODULE_FIELD, "field", sim_bcm_field_init},
    {BCM_MODULE_FABRIC, "fabric", sim_bcm_fabric_init},
};

const Module *module_numbered(int number)
{
    const auto found = std::find_if(std::begin(modules), std::end(modules),
                                    [number](const Module &module) { return module.number == number; });
    return found == std::end(modules) ? nullptr : found;
}

}  // namespace

extern "C" {

// Attaching a unit initialises all of it; what was detached since then comes back.
int sim_bcm_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        rule_store_of(sw).initialise_all();
        fields_of(sw).initialised = true;
    });
}

int sim_bcm_init_check(int unit)
{
    return begin(unit).then([]() -> int { return BCM_E_NONE; });
}

int sim_bcm_init_selective(int unit, int module_num)
{
    return begin(unit).then([&]() -> int {
        const Module *module = module_numbered(module_num);
        return module != nullptr ? module->init(unit) : BCM_E_PARAM;
    });
}

int sim_bcm_clear(int unit)
{
    return begin(unit).then([&]() -> int {
        // All of its state goes with the old one.
        attach(unit);
        return BCM_E_NONE;
    });
}

int sim_bcm_phy_init(int unit)
{
    return begin(unit).then([&]() -> int { return sim_soc_phy_init(unit); });
}

char *sim_bcm_module_name(int unit, int module_num)
{
    const Module *module = attached(unit) != nullptr ? module_numbered(module_num) : nullptr;
    return module != nullptr ? const_cast<char *>(module->name) : nullptr;
}

}  // extern "C"
