/// Stations: the destination addresses for which the switch itself is the receiver.
#include "begin.h"
#include "events.h"
#include "l2.h"
#include "sim_l2.h"

#include <algorithm>

using namespace sim;

namespace sim {

void L2State::order_stations()
{
    stations_by_priority.clear();
    stations.traverse([&](int, const bcm_l2_station_t &station) {
        stations_by_priority.push_back(station);
        return 0;
    });
    put_takers(stations_take, !stations_by_priority.empty());
    // Of equal priority the lowest id comes first.
    std::stable_sort(stations_by_priority.begin(), stations_by_priority.end(),
                     [](const auto &a, const auto &b) { return a.priority > b.priority; });
}

}  // namespace sim

extern "C" {

int sim_bcm_l2_station_add(int unit, int *station_id, bcm_l2_station_t *station)
{
    return begin(unit, ready<L2State>, given(station_id, station), tells_if_full(bcmSwitchObjectL2StationMax))
        .then([&](L2State &l2) {
            // The two that say how to add are no property of the station.
            constexpr uint32 how = BCM_L2_STATION_WITH_ID | BCM_L2_STATION_REPLACE;
            bcm_l2_station_t stored = *station;
            stored.flags &= ~how;
            l2.stations_by_priority.reserve(l2.stations.capacity());
            const int rc = l2.stations.create(stored, station->flags & BCM_L2_STATION_WITH_ID,
                                              station->flags & BCM_L2_STATION_REPLACE, station_id);
            l2.order_stations();
            return rc;
        });
}

int sim_bcm_l2_station_delete(int unit, int station_id)
{
    return begin(unit, ready<L2State>).then([&](L2State &l2) {
        const int rc = l2.stations.erase(station_id);
        l2.order_stations();
        return rc;
    });
}

int sim_bcm_l2_station_delete_all(int unit)
{
    return begin(unit, ready<L2State>).then([](L2State &l2) -> int {
        l2.stations.clear();
        l2.order_stations();
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
