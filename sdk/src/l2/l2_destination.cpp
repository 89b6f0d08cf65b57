#include "l2_destination.h"

namespace sim {

namespace {

constexpr uint32 destination_flags =
    BCM_L2_DISCARD_DST | BCM_L2_TRUNK_MEMBER | BCM_L2_MCAST | BCM_L2_LOCAL_CPU;

}  // namespace

int resolve_address(const bcm_l2_addr_t &address, Destination *to)
{
    if (address.flags & BCM_L2_DISCARD_DST) {
        *to = {Destination::Kind::discard, 0, 0};
        return BCM_E_NONE;
    }
    if (address.flags & BCM_L2_MCAST) {
        *to = {Destination::Kind::group, 0, address.l2mc_group};
        return address.l2mc_group >= 0 ? BCM_E_NONE : BCM_E_BADID;
    }
    if (address.flags & BCM_L2_TRUNK_MEMBER) {
        return resolve_trunk(address.tgid, to);
    }
    if (address.flags & BCM_L2_LOCAL_CPU) {
        *to = {Destination::Kind::port, own_module, cpu_port};
        return BCM_E_NONE;
    }
    return resolve(address.modid, address.port, to);
}

void set_destination(bcm_l2_addr_t *address, const Destination &to)
{
    // A destination that the flags state already keeps its flags and members as they were given.
    Destination before;
    const bool stated = resolve_address(*address, &before) == BCM_E_NONE && before == to;
    if (stated && !BCM_GPORT_IS_SET(address->port)) {
        if (to.kind == Destination::Kind::port) {
            address->modid = to.module;
            address->port = to.id;
        }
        return;
    }
    address->flags &= ~destination_flags;
    address->port = 0;
    address->modid = 0;
    address->tgid = 0;
    address->l2mc_group = 0;
    switch (to.kind) {
    case Destination::Kind::port:
        address->port = to.id;
        address->modid = to.module;
        break;
    case Destination::Kind::trunk:
        address->flags |= BCM_L2_TRUNK_MEMBER;
        address->tgid = to.id;
        break;
    case Destination::Kind::group:
        address->flags |= BCM_L2_MCAST;
        address->l2mc_group = to.id;
        break;
    case Destination::Kind::discard:
        address->flags |= BCM_L2_DISCARD_DST;
        break;
    }
}

}  // namespace sim
