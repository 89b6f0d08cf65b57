/// From a host or route to where it leads.
#pragma once

#include "l3.h"

#include <algorithm>
#include <memory>

namespace sim {

bool is_zero(const unsigned char *mac);

/// The next hop of a record that names an interface, an address and a port: BCM_E_PORT, BCM_E_BADID.
int l3_next_hop(const L3Interface &interface, bool is_trunk, int module, int port_or_trunk,
                const unsigned char *mac, NextHop *hop);

/// Where l3a_intf of a host or route leads: to an egress object, a group, or by an interface to what else the record
/// says, which then is kept in details; 0 leads nowhere yet. BCM_E_NOT_FOUND, and what l3_next_hop says.
template <class Record>
int l3_way(L3Objects &objects, const Record &record, L3Way *way, std::unique_ptr<L3Details<Record>> *details)
{
    if (record.l3a_intf == 0) {
        return BCM_E_NONE;
    }
    if (const L3Egress *egress = objects.egress_object(record.l3a_intf)) {
        way->hop = &egress->hop;
        return BCM_E_NONE;
    }
    if (const L3Group *group = objects.group(record.l3a_intf)) {
        way->group = group;
        return BCM_E_NONE;
    }
    const L3Interface *interface = objects.interface(record.l3a_intf);
    if (interface == nullptr) {
        return BCM_E_NOT_FOUND;
    }
    if (*details == nullptr) {
        *details = std::make_unique<L3Details<Record>>();
    }
    (*details)->records = {record};
    way->hop = &(*details)->hop;
    return l3_next_hop(*interface, record.l3a_flags & BCM_L3_TGID, record.l3a_modid, record.l3a_port_tgid,
                       record.l3a_nexthop_mac, &(*details)->hop);
}

/// What is counted when an entry comes (1) or goes (-1).
void l3_count(L3State &l3, const L3Entry &entry, int change);

}  // namespace sim
