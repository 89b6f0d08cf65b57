/// What registers of the chip show: settings, links and counters of ports.
#include "chip_state.h"

#include "port.h"

#include <iterator>

namespace sim {

namespace {

bool is_port(int place)
{
    return place >= cpu_port && place <= port_max;
}

bool get_frame_max(Switch &sw, int port, Words *value)
{
    *value = words_of(is_port(port) ? static_cast<uint64>(port_of(sw, port).frame_max) : 0);
    return is_port(port);
}

void set_frame_max(Switch &sw, int port, const Words &value)
{
    if (is_port(port)) {
        port_of(sw, port).frame_max = static_cast<int>(value[0]);
    }
}

/// The sum of statistics.
template <bcm_stat_val_t... types>
bool get_count(Switch &sw, int port, Words *value)
{
    *value = words_of(is_port(port) ? (statistic(counters_of(sw, port), types) + ...) : 0);
    return is_port(port);
}

constexpr StateField fields[] = {
    {NIF_PORT_MAX_SIZEr, MAX_SIZEf, get_frame_max, set_frame_max},
    {NIF_PORT_RX_PACKETSr, PACKETSf,
     get_count<snmpIfInUcastPkts, snmpIfInMulticastPkts, snmpIfInBroadcastPkts, snmpIfInErrors>, nullptr},
    {NIF_PORT_TX_PACKETSr, PACKETSf,
     get_count<snmpIfOutUcastPkts, snmpIfOutMulticastPkts, snmpIfOutBroadcastPkts>, nullptr},
    {NIF_PORT_RX_OCTETSr, OCTETSf, get_count<snmpIfInOctets>, nullptr},
    {NIF_PORT_TX_OCTETSr, OCTETSf, get_count<snmpIfOutOctets>, nullptr},
    {NIF_PORT_RX_ERRORSr, LENGTH_ERRORSf, get_count<snmpIfInErrors>, nullptr},
};
static_assert(are_in_order(fields));

}  // namespace

const StateFields register_state = {fields, std::size(fields)};

}  // namespace sim
