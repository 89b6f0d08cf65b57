/// Statistics of ports. What was counted is collected at once, so that all ways to read it are one.
#include "checked.h"
#include "sim.h"

using namespace sim;

namespace {

/// Types are compared as ints, since a caller can pass any.
bool valid(const bcm_stat_val_t *types, int count)
{
    return std::all_of(types, types + count, [](bcm_stat_val_t type) {
        return static_cast<int>(type) >= 0 && static_cast<int>(type) < snmpValCount;
    });
}

/// body(PortCounters &); BCM_E_UNIT, BCM_E_PARAM for null pointers, BCM_E_PORT.
template <class Body>
int on_counters(int unit, bcm_port_t port, Pointers pointers, Body body)
{
    return on_unit(unit, pointers, [&](Switch &sw) -> int {
        int own;
        const int rc = resolve_own_port(port, &own);
        return rc == BCM_E_NONE ? static_cast<int>(body(sw.counters[static_cast<std::size_t>(own)])) : rc;
    });
}

/// Nothing is written unless all types are valid.
template <class Value>
int read(int unit, bcm_port_t port, int count, const bcm_stat_val_t *types, Value *values)
{
    return on_counters(unit, port, {types, values}, [&](const PortCounters &counters) {
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
    return on_unit(unit, {}, [](Switch &sw) -> int {
        sw.counters.fill({});
        return BCM_E_NONE;
    });
}

int sim_bcm_stat_sync(int unit)
{
    return on_unit(unit, {}, [](Switch &) -> int { return BCM_E_NONE; });
}

int sim_bcm_stat_clear(int unit, bcm_port_t port)
{
    return on_counters(unit, port, {}, [](PortCounters &counters) {
        counters = {};
        return BCM_E_NONE;
    });
}

int sim_bcm_stat_clear_single(int unit, bcm_port_t port, bcm_stat_val_t type)
{
    return on_counters(unit, port, {}, [&](PortCounters &counters) {
        if (!valid(&type, 1)) {
            return BCM_E_PARAM;
        }
        clear_statistic(counters, type);
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
