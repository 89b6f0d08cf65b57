/// Stations: the destination addresses for which the switch itself is the receiver.
#include "begin.h"
#include "l2.h"
#include "sim_l2.h"

using namespace sim;

extern "C" {

int sim_bcm_l2_station_add(int unit, int *station_id, bcm_l2_station_t *station)
{
    return begin(unit, ready<L2State>, given(station_id, station)).then([&](L2State &l2) {
        // The two that say how to add are no property of the station.
        constexpr uint32 how = BCM_L2_STATION_WITH_ID | BCM_L2_STATION_REPLACE;
        bcm_l2_station_t stored = *station;
        stored.flags &= ~how;
        return l2.stations.create(stored, station->flags & BCM_L2_STATION_WITH_ID,
                                  station->flags & BCM_L2_STATION_REPLACE, station_id);
    });
}

int sim_bcm_l2_station_delete(int unit, int station_id)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) { return l2.stations.erase(station_id); });
}

int sim_bcm_l2_station_delete_all(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        l2.stations.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_station_get(int unit, int station_id, bcm_l2_station_t *station)
{
    return begin(unit, ready<L2State>, given(station)).then([&](L2State &l2) {
        return l2.stations.get(station_id, station);
    });
}

int sim_bcm_l2_station_size_get(int unit, int *size)
{
    return begin(unit, ready<L2State>, given(size)).then([&](L2State &l2) -> int {
        *size = static_cast<int>(l2.stations.capacity());
        return BCM_E_NONE;
    });
}

int sim_bcm_l2_station_traverse(int unit, bcm_l2_station_traverse_cb trav_fn, void *user_data)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) -> int {
        if (trav_fn == nullptr) {
            return BCM_E_PARAM;
        }
        return l2.stations.traverse(
            [&](int id, bcm_l2_station_t &station) { return trav_fn(unit, id, &station, user_data); });
    });
}

}  // extern "C"
