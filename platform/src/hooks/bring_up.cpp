#include "quorel_api/bring_up.h"

#include "device_list.h"
#include "port_properties.h"
#include "trace_lines.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

extern "C" {
#include <appl/system.h>
#include <bcm/attach.h>
#include <bcm/error.h>
#include <bcm/port.h>
#include <sal/config.h>
#include <sim/start.h>
#include <soc/init.h>
}

namespace {

constexpr int own_unit = 0;
constexpr int front_ports = 64;
constexpr int cores_max = 63, lanes_max = 7;
constexpr unsigned int mdio_address_max = 0x3ff;
constexpr int speeds[] = {10, 100, 1000, 10000, 25000, 40000, 50000, 100000};

bool isBetween(int value, int least, int most)
{
    return value >= least && value <= most;
}

bool isValid(const tridentPortMap_t &map)
{
    // The record may have been filled with anything.
    const int type = static_cast<int>(map.phyType);
    return std::count(std::begin(speeds), std::end(speeds), map.speed) != 0
           && isBetween(map.warpCore, 0, cores_max) && isBetween(map.phyLane, 0, lanes_max)
           && isBetween(map.txLane, 0, lanes_max) && isBetween(map.rxLane, 0, lanes_max)
           && isBetween(map.xcvrLane, 0, lanes_max) && isBetween(type, quorelPhyNone, quorelPhyRetimer)
           && map.mdioAddr <= mdio_address_max;
}

bool areValid(const tridentPortMap_t *maps, int count)
{
    if (!isBetween(count, 0, front_ports) || (!maps && count > 0)) {
        return false;
    }
    std::set<std::pair<int, int>> lanes;
    return std::all_of(maps, maps + count, [&](const tridentPortMap_t &map) {
        return isValid(map) && lanes.emplace(map.warpCore, map.phyLane).second;
    });
}

/// start(unit) for each device that has registers, until one fails.
template <typename Start>
int onDevices(Start start)
{
    int rc = BCM_E_NONE;
    for (int unit = 0; unit < deviceList().size() && rc >= 0; ++unit) {
        const Device &device = *deviceList().at(unit);
        if (device.mapped && !device.fake) {
            rc = start(unit);
        }
    }
    return rc;
}

int attachAndInitialise(int unit)
{
    if (bcm_attach_check(unit) == BCM_E_NONE) {
        return BCM_E_NONE;
    }
    const int rc = bcm_attach(unit, nullptr, nullptr, -1);
    return rc < 0 ? rc : soc_init(unit);
}

/// Whether every port will be able to have its record's speed.
int checkSpeeds(const tridentPortMap_t *maps, int count)
{
    int rc = BCM_E_NONE;
    for (int port = 1; port <= count && rc >= 0; ++port) {
        rc = sim_start_speed_check(own_unit, port, maps[port - 1].speed);
    }
    return rc;
}

int setWiring(const tridentPortMap_t *maps, int count)
{
    int rc = BCM_E_NONE;
    for (int port = 1; port <= front_ports; ++port) {
        for (Property &property : portProperties(port, port <= count ? &maps[port - 1] : nullptr)) {
            const int set =
                sal_config_set(property.name.data(), property.value ? property.value->data() : nullptr);
            rc = set == BCM_E_NOT_FOUND || rc < 0 ? rc : set;
        }
    }
    return rc;
}

int startPorts(const tridentPortMap_t *maps, int count)
{
    int rc = BCM_E_NONE;
    for (int port = 1; port <= front_ports && rc >= 0; ++port) {
        const bool wired = port <= count;
        rc = wired ? bcm_port_speed_set(own_unit, port, maps[port - 1].speed) : static_cast<int>(BCM_E_NONE);
        rc = rc < 0 ? rc : bcm_port_enable_set(own_unit, port, wired);
    }
    return rc;
}

}  // namespace

int BelvokBasicInit()
{
    int rc = sal_config_init();
    rc = rc < 0 ? rc : onDevices(attachAndInitialise);
    trace("BelvokBasicInit() = %d", rc);
    return rc;
}

int BelvokInit(tridentPortMap_t *portMap, int numPorts)
{
    if (!areValid(portMap, numPorts)) {
        trace("BelvokInit(%d) = %d", numPorts, BCM_E_PARAM);
        return BCM_E_PARAM;
    }
    const bool own_is_up = deviceList().at(own_unit)->mapped;
    const int wired = own_is_up ? numPorts : 0;
    // What can be refused is asked before anything is done.
    int rc = checkSpeeds(portMap, wired);
    rc = rc < 0 ? rc : sal_config_init();
    rc = rc < 0 ? rc : onDevices(sim_start_check);
    rc = rc < 0 ? rc : BelvokBasicInit();
    rc = rc < 0 ? rc : setWiring(portMap, numPorts);
    rc = rc < 0 ? rc : onDevices(system_init);
    if (rc >= 0 && wired > 0) {
        rc = startPorts(portMap, wired);
    }
    trace("BelvokInit(%d) = %d", numPorts, rc);
    return rc;
}
