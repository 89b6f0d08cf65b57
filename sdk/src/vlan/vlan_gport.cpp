/// Members of VLANs one by one, as gports. All of them are ports of the unit.
#include "begin.h"
#include "sim_vlan.h"
#include "vlan.h"

using namespace sim;

namespace {

/// Members that only receive or only send are not there.
int check_flags(uint32 flags)
{
    constexpr uint32 one_way = BCM_VLAN_GPORT_ADD_EGRESS_ONLY | BCM_VLAN_GPORT_ADD_INGRESS_ONLY;
    constexpr uint32 known = BCM_VLAN_GPORT_ADD_UNTAGGED | one_way;
    return (flags & ~known) ? BCM_E_PARAM : (flags & one_way) ? BCM_E_UNAVAIL : BCM_E_NONE;
}

uint32 flags_of(const Vlan &vlan, int port)
{
    return BCM_PBMP_MEMBER(vlan.untagged, port) ? BCM_VLAN_GPORT_ADD_UNTAGGED : 0;
}

}  // namespace

extern "C" {

int sim_bcm_vlan_gport_add(int unit, bcm_vlan_t vlan, bcm_gport_t port, uint32 flags)
{
    return begin(unit, existing_vlan(vlan), own_port(port)).then([&](Vlan &found, int own) -> int {
        const int rc = check_flags(flags);
        if (rc == BCM_E_NONE) {
            BCM_PBMP_PORT_ADD(found.members, own);
            if (flags & BCM_VLAN_GPORT_ADD_UNTAGGED) {
                BCM_PBMP_PORT_ADD(found.untagged, own);
            } else {
                BCM_PBMP_PORT_REMOVE(found.untagged, own);
            }
        }
        return rc;
    });
}

int sim_bcm_vlan_gport_delete(int unit, bcm_vlan_t vlan, bcm_gport_t port)
{
    return begin(unit, existing_vlan(vlan), own_port(port)).then([](Vlan &found, int own) -> int {
        if (!BCM_PBMP_MEMBER(found.members, own)) {
            return BCM_E_NOT_FOUND;
        }
        BCM_PBMP_PORT_REMOVE(found.members, own);
        BCM_PBMP_PORT_REMOVE(found.untagged, own);
        return BCM_E_NONE;
    });
}

int sim_bcm_vlan_gport_extended_delete(int unit, bcm_vlan_t vlan, bcm_gport_t port, uint32 flags)
{
    return begin(unit, existing_vlan(vlan)).then([&](Vlan &) -> int {
        const int rc = check_flags(flags);
        return rc == BCM_E_NONE ? sim_bcm_vlan_gport_delete(unit, vlan, port) : rc;
    });
}

int sim_bcm_vlan_gport_delete_all(int unit, bcm_vlan_t vlan)
{
    return begin(unit, existing_vlan(vlan)).then([](Vlan &found) {
        found.members = {};
        found.untagged = {};
    });
}

int sim_bcm_vlan_gport_get(int unit, bcm_vlan_t vlan, bcm_gport_t port, uint32 *flags)
{
    return begin(unit, given(flags), existing_vlan(vlan), own_port(port))
        .then([&](Vlan &found, int own) -> int {
            if (!BCM_PBMP_MEMBER(found.members, own)) {
                return BCM_E_NOT_FOUND;
            }
            *flags = flags_of(found, own);
            return BCM_E_NONE;
        });
}

int sim_bcm_vlan_gport_get_all(int unit, bcm_vlan_t vlan, int array_max, bcm_gport_t *gport_array,
                               uint32 *flags_array, int *array_size)
{
    return begin(unit, given(gport_array, flags_array, array_size), existing_vlan(vlan))
        .then([&](Vlan &found) -> int {
            if (array_max < 0) {
                return BCM_E_PARAM;
            }
            *array_size = 0;
            for (int port = cpu_port; port <= port_max && *array_size < array_max; ++port) {
                if (BCM_PBMP_MEMBER(found.members, port)) {
                    gport_array[*array_size] = port;
                    flags_array[*array_size] = flags_of(found, port);
                    ++*array_size;
                }
            }
            return BCM_E_NONE;
        });
}

}  // extern "C"
