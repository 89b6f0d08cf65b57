#include "l3_way.h"

namespace sim {

bool is_zero(const unsigned char *mac)
{
    return std::all_of(mac, mac + address_bytes, [](unsigned char byte) { return byte == 0; });
}

int l3_next_hop(const L3Interface &interface, bool is_trunk, int module, int port_or_trunk,
                const unsigned char *mac, NextHop *hop)
{
    const int rc =
        is_trunk ? resolve_trunk(port_or_trunk, &hop->to) : resolve(module, port_or_trunk, &hop->to);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    hop->interface = &interface;
    std::copy(mac, mac + address_bytes, hop->mac);
    hop->kind = is_own_port(hop->to) && hop->to.id == cpu_port ? NextHop::Kind::cpu
                : is_zero(mac)                                 ? NextHop::Kind::unresolved
                                                               : NextHop::Kind::forward;
    return BCM_E_NONE;
}

void l3_count(L3State &l3, const L3Entry &entry, int change)
{
    l3.objects.count_use(entry.interface, change);
    if (entry.flags & BCM_L3_SRC_DISCARD) {
        l3.source_discards += change;
    }
}

}  // namespace sim
