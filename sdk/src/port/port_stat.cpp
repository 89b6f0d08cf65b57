/// The counters of ports by the names of the port family: the same as some of the statistics.
#include "begin.h"
#include "port.h"
#include "sim_port.h"

#include <algorithm>
#include <array>
#include <vector>

using namespace sim;

namespace {

constexpr bcm_stat_val_t not_counted = snmpValCount;

/// By bcm_port_stat_t.
constexpr std::array<bcm_stat_val_t, bcmPortStatCount> statistics = {
    snmpDot1dTpPortInFrames,      // bcmPortStatIngressPackets
    snmpIfInOctets,               // bcmPortStatIngressBytes
    snmpDot1dTpPortOutFrames,     // bcmPortStatEgressPackets
    snmpIfOutOctets,              // bcmPortStatEgressBytes
    snmpEtherStatsMulticastPkts,  // bcmPortStatMulticastPackets
    snmpIfInUcastPkts,            // bcmPortStatIngressUnicastPackets
    snmpIfInMulticastPkts,        // bcmPortStatIngressMulticastPackets
    snmpIfInBroadcastPkts,        // bcmPortStatIngressBroadcastPackets
    not_counted,                  // bcmPortStatIngressUnknownUnicastPackets
    snmpIfInDiscards,             // bcmPortStatIngressDropPackets
    not_counted,                  // bcmPortStatIngressDropBytes
    snmpIfInErrors,               // bcmPortStatIngressErrorPackets
    snmpIfOutUcastPkts,           // bcmPortStatEgressUnicastPackets
    snmpIfOutMulticastPkts,       // bcmPortStatEgressMulticastPackets
    snmpIfOutBroadcastPkts,       // bcmPortStatEgressBroadcastPackets
    snmpIfOutDiscards,            // bcmPortStatEgressDropPackets
    not_counted,                  // bcmPortStatEgressDropBytes
    not_counted,
    not_counted,
    not_counted,  // packets by colour, sent
    not_counted,
    not_counted,
    not_counted,  // and received
};

/// The statistics that counters are: BCM_E_PARAM, BCM_E_UNAVAIL for what is not counted.
int find(const bcm_port_stat_t *stats, int count, std::vector<bcm_stat_val_t> &found)
{
    for (int i = 0; i < count; ++i) {
        // As a number, since a caller can pass any.
        const auto stat = static_cast<unsigned>(stats[i]);
        if (stat >= statistics.size()) {
            return BCM_E_PARAM;
        }
        if (statistics[stat] == not_counted) {
            return BCM_E_UNAVAIL;
        }
        found.push_back(statistics[stat]);
    }
    return count < 0 ? BCM_E_PARAM : BCM_E_NONE;
}

/// change(counters of the port, statistics) if all of them are there.
template <class Value, class Change>
int on_statistics(int unit, bcm_gport_t port, int count, const bcm_port_stat_t *stats, const Value *values,
                  Change change)
{
    return begin(unit, given(stats, values), own_port(port)).then([&](Switch &sw, int own) -> int {
        std::vector<bcm_stat_val_t> found;
        const int rc = find(stats, count, found);
        if (rc == BCM_E_NONE) {
            change(counters_of(sw, own), found);
        }
        return rc;
    });
}

template <class Value>
int read(int unit, bcm_gport_t port, int count, const bcm_port_stat_t *stats, Value *values)
{
    return on_statistics(unit, port, count, stats, values, [&](const PortCounters &counters, auto &found) {
        std::transform(found.begin(), found.end(), values,
                       [&](bcm_stat_val_t type) { return static_cast<Value>(statistic(counters, type)); });
    });
}

template <class Value>
int write(int unit, bcm_gport_t port, int count, const bcm_port_stat_t *stats, const Value *values)
{
    return on_statistics(unit, port, count, stats, values, [&](PortCounters &counters, auto &found) {
        for (std::size_t i = 0; i < found.size(); ++i) {
            set_statistic(counters, found[i], values[i]);
        }
    });
}

}  // namespace

extern "C" {

int sim_bcm_port_stat_get(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint64 *val)
{
    return read(unit, port, 1, &stat, val);
}

int sim_bcm_port_stat_sync_get(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint64 *val)
{
    return read(unit, port, 1, &stat, val);
}

int sim_bcm_port_stat_get32(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 *val)
{
    return read(unit, port, 1, &stat, val);
}

int sim_bcm_port_stat_sync_get32(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 *val)
{
    return read(unit, port, 1, &stat, val);
}

int sim_bcm_port_stat_multi_get(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                                uint64 *value_arr)
{
    return read(unit, port, nstat, stat_arr, value_arr);
}

int sim_bcm_port_stat_multi_get32(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                                  uint32 *value_arr)
{
    return read(unit, port, nstat, stat_arr, value_arr);
}

int sim_bcm_port_stat_set(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint64 val)
{
    return write(unit, port, 1, &stat, &val);
}

int sim_bcm_port_stat_set32(int unit, bcm_gport_t port, bcm_port_stat_t stat, uint32 val)
{
    return write(unit, port, 1, &stat, &val);
}

int sim_bcm_port_stat_multi_set(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                                uint64 *value_arr)
{
    return write(unit, port, nstat, stat_arr, value_arr);
}

int sim_bcm_port_stat_multi_set32(int unit, bcm_gport_t port, int nstat, bcm_port_stat_t *stat_arr,
                                  uint32 *value_arr)
{
    return write(unit, port, nstat, stat_arr, value_arr);
}

}  // extern "C"
