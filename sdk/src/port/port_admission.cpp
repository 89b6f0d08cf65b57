/// What a port takes and lets out: length of frames, tags, VLANs.
#include "begin.h"
#include "packet.h"
#include "port.h"
#include "sim_port.h"

using namespace sim;

extern "C" {

int sim_bcm_port_frame_max_set(int unit, bcm_port_t port, int size)
{
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        if (size < static_cast<int>(frame_min) || size > static_cast<int>(frame_longest)) {
            return BCM_E_PARAM;
        }
        own.frame_max = size;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_frame_max_get(int unit, bcm_port_t port, int *size)
{
    return begin(unit, given(size), settings_of(port)).then([&](Port &own) -> int {
        *size = own.frame_max;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_discard_set(int unit, bcm_port_t port, int mode)
{
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        if (mode < BCM_PORT_DISCARD_NONE || mode > BCM_PORT_DISCARD_TAG) {
            return BCM_E_PARAM;
        }
        own.discard = static_cast<std::uint8_t>(mode);
        return BCM_E_NONE;
    });
}

int sim_bcm_port_discard_get(int unit, bcm_port_t port, int *mode)
{
    return begin(unit, given(mode), settings_of(port)).then([&](Port &own) -> int {
        *mode = own.discard;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_vlan_member_set(int unit, bcm_port_t port, uint32 flags)
{
    constexpr uint32 known = BCM_PORT_VLAN_MEMBER_INGRESS | BCM_PORT_VLAN_MEMBER_EGRESS;
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        if (flags & ~known) {
            return BCM_E_PARAM;
        }
        own.vlan_filter = flags;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_vlan_member_get(int unit, bcm_port_t port, uint32 *flags)
{
    return begin(unit, given(flags), settings_of(port)).then([&](Port &own) -> int {
        *flags = own.vlan_filter;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_pfm_set(int unit, bcm_port_t port, int mode)
{
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        if (mode < bcmPortPfmForwardAll || mode > bcmPortPfmForwardRegistered) {
            return BCM_E_PARAM;
        }
        own.pfm = mode;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_pfm_get(int unit, bcm_port_t port, int *mode)
{
    return begin(unit, given(mode), settings_of(port)).then([&](Port &own) { *mode = own.pfm; });
}

// The same as one of the flags.
int sim_bcm_port_ifilter_set(int unit, bcm_port_t port, int mode)
{
    return begin(unit, settings_of(port)).then([&](Port &own) -> int {
        own.vlan_filter &= ~static_cast<uint32>(BCM_PORT_VLAN_MEMBER_INGRESS);
        own.vlan_filter |= mode ? BCM_PORT_VLAN_MEMBER_INGRESS : 0;
        return BCM_E_NONE;
    });
}

int sim_bcm_port_ifilter_get(int unit, bcm_port_t port, int *mode)
{
    return begin(unit, given(mode), settings_of(port)).then([&](Port &own) -> int {
        *mode = (own.vlan_filter & BCM_PORT_VLAN_MEMBER_INGRESS) != 0;
        return BCM_E_NONE;
    });
}

}  // extern "C"
