/// Statistics of ports. What was counted is collected at once, so that all ways to read it are one.
#include "begin.h"
#include "port.h"
#include "sim_stat.h"

#include <algorithm>

using namespace sim;

namespace {

/// Types are compared as ints, since a caller can pass any.
bool valid(const bcm_stat_val_t *types, int count)
{
    return std::all_of(types, types + count, [](bcm_stat_val_t type) {
        return static_cast<int>(type) >= 0 && static_cast<int>(type) < snmpValCount;
    });
}

/// The counters of a port of the unit: BCM_E_PORT.
auto port_counters(bcm_port_t port)
{
    return [port](Switch &sw, auto next) -> int {
        return own_port(port)(sw, [&](int own) { return next(counters_of(sw, own)); });
    };
}

/// Nothing is written unless all types are valid.
template <class Value>
int read(int unit, bcm_port_t port, int count, const bcm_stat_val_t *types, Value *values)
{
    return begin(unit, given(types, values), port_counters(port)).then([&](const PortCounters &counters) {
        if (count < 0 || !valid(types, count)) {
            return BCM_E_PARAM;
        }
        std::transform(types, types + count, values,
                       [&](bcm_stat_val_t type) { return static_cast<Value>(statistic(counters, type)); });
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_stat_init(int unit)
{
    return begin(unit).then([](Switch &sw) -> int {
        for (PortCounters &counters : sw.of<PortState>().counters) {
            counters.clear();
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_stat_sync(int unit)
{
    return begin(unit).then([]() -> int { return BCM_E_NONE; });
}

int sim_bcm_stat_clear(int unit, bcm_port_t port)
{
    return begin(unit, port_counters(port)).then([](PortCounters &counters) {
        counters.clear();
        return BCM_E_NONE;
    });
}

int sim_bcm_stat_clear_single(int unit, bcm_port_t port, bcm_stat_val_t type)
{
    return begin(unit, port_counters(port)).then([&](PortCounters &counters) {
        if (!valid(&type, 1)) {
            return BCM_E_PARAM;
        }
        set_statistic(counters, type, 0);
        return BCM_E_NONE;
    });
}

int sim_bcm_stat_get(int unit, bcm_port_t port, bcm_stat_val_t type, uint64 *value)
{
    return read(unit, port, 1, &type, value);
}

int sim_bcm_stat_get32(int unit, bcm_port_t port, bcm_stat_val_t type, uint32 *value)
{
    return read(unit, port, 1, &type, value);
}

int sim_bcm_stat_sync_get(int unit, bcm_port_t port, bcm_stat_val_t type, uint64 *value)
{
    return read(unit, port, 1, &type, value);
}

int sim_bcm_stat_sync_get32(int unit, bcm_port_t port, bcm_stat_val_t type, uint32 *value)
{
    return read(unit, port, 1, &type, value);
}

int sim_bcm_stat_multi_get(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr, uint64 *value_arr)
{
    return read(unit, port, nstat, stat_arr, value_arr);
}

int sim_bcm_stat_multi_get32(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr,
                             uint32 *value_arr)
{
    return read(unit, port, nstat, stat_arr, value_arr);
}

int sim_bcm_stat_sync_multi_get(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr,
                                uint64 *value_arr)
{
    return read(unit, port, nstat, stat_arr, value_arr);
}

int sim_bcm_stat_sync_multi_get32(int unit, bcm_port_t port, int nstat, bcm_stat_val_t *stat_arr,
                                  uint32 *value_arr)
{
    return read(unit, port, nstat, stat_arr, value_arr);
}

}  // extern "C"
