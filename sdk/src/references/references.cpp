#include "references.h"

#include "l3.h"
#include "mirror.h"
#include "queue.h"
#include "rule_store.h"
#include "trunk.h"
#include "vlan.h"

#include <cstring>

namespace sim {

namespace {

template <class Number>
Number number_at(const void *part)
{
    Number number;
    std::memcpy(&number, part, sizeof number);
    return number;
}

}  // namespace

bool vlan_exists(Switch &sw, const void *part)
{
    return vlans_of(sw).has(number_at<bcm_vlan_t>(part));
}

bool trunk_exists(Switch &sw, const void *part)
{
    return trunks_of(sw).trunks().count(number_at<bcm_trunk_t>(part)) != 0;
}

bool interface_exists(Switch &sw, const void *part)
{
    return l3_of(sw).objects.interface(number_at<bcm_if_t>(part)) != nullptr;
}

bool gport_exists(Switch &sw, const void *part)
{
    const auto gport = number_at<bcm_gport_t>(part);
    return BCM_GPORT_IS_BLACK_HOLE(gport)
           || (BCM_GPORT_IS_TRUNK(gport) && trunks_of(sw).trunks().count(gport & BCM_GPORT_VALUE_MASK) != 0)
           || queues_of(sw).groups.count(gport) != 0 || mirrors_of(sw).destinations.count(gport) != 0
           || rule_store_of(sw).has_gport(gport);
}

}  // namespace sim
