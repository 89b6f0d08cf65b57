/// Stations: the destination addresses for which the switch itself is the receiver.
#include "checked.h"
#include "sim.h"

using namespace sim;

extern "C" {

int sim_bcm_l2_station_add(int unit, int *station_id, bcm_l2_station_t *station)
{
    return on_l2(unit, {station_id, station}, [&](Switch &sw) {
        // The two that say how to add are no property of the station.
        constexpr uint32 how = BCM_L2_STATION_WITH_ID | BCM_L2_STATION_REPLACE;
        bcm_l2_station_t stored = *station;
        stored.flags &= ~how;
        return sw.l2.stations.create(stored, station->flags & BCM_L2_STATION_WITH_ID,
                                     station->flags & BCM_L2_STATION_REPLACE, station_id);
    });
}

int sim_bcm_l2_station_delete(int unit, int station_id)
{
    return on_l2(unit, {}, [&](Switch &sw) { return sw.l2.stations.erase(station_id); });
}

int sim_bcm_l2_station_delete_all(int unit)
{
    return on_l2(unit, {}, [](Switch &sw) -> int {
        sw.l2.stations.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_station_get(int unit, int station_id, bcm_l2_station_t *station)
{
    return on_l2(unit, {station}, [&](Switch &sw) { return sw.l2.stations.get(station_id, station); });
}

int sim_bcm_l2_station_size_get(int unit, int *size)
{
    return on_l2(unit, {size}, [&](Switch &sw) -> int {
        *size = static_cast<int>(sw.l2.stations.capacity());
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_station_traverse(int unit, bcm_l2_station_traverse_cb trav_fn, void *user_data)
{
    return on_l2(unit, {}, [&](Switch &sw) -> int {
        if (trav_fn == nullptr) {
            return BCM_E_PARAM;
        }
        return sw.l2.stations.traverse(
            [&](int id, bcm_l2_station_t &station) { return trav_fn(unit, id, &station, user_data); });
    });
}

}  // extern "C"
