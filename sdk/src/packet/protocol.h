/// The protocols of hosts and routers that the CPU can have copies of.
#pragma once

#include "packet.h"

#include <bcm/rx_reason.h>

#include <cstddef>
#include <cstdint>

namespace sim {

enum class Protocol : std::uint8_t {
    none,
    arp_request,
    arp_reply,
    dhcp,
    dhcp6,
    router_solicit,
    router_advert,
    neighbor_solicit,
    neighbor_advert,
    icmp_redirect,  ///< of IPv6
    igmp_query,
    igmp_report,
    igmp_leave,
    mld_query,
    mld_report,
    mld_done,
    pim,
    ospf,
    vrrp,
    rip,
    bgp,
    count
};

/// Why the CPU has a copy of one, by protocol.
constexpr bcm_rx_reason_t protocol_reasons[] = {
    bcmRxReasonInvalid,
    bcmRxReasonArp,
    bcmRxReasonArpReply,
    bcmRxReasonDhcp,
    bcmRxReasonDhcp6,
    bcmRxReasonRouterSolicit,
    bcmRxReasonRouterAdvert,
    bcmRxReasonNeighborSolicit,
    bcmRxReasonNeighborAdvert,
    bcmRxReasonIcmpRedirect,
    bcmRxReasonIgmpQuery,
    bcmRxReasonIgmpReport,
    bcmRxReasonIgmpLeave,
    bcmRxReasonMldQuery,
    bcmRxReasonMldReport,
    bcmRxReasonMldDone,
    bcmRxReasonPim,
    bcmRxReasonOspf,
    bcmRxReasonVrrp,
    bcmRxReasonRip,
    bcmRxReasonBgp,
};
static_assert(sizeof protocol_reasons / sizeof *protocol_reasons
              == static_cast<std::size_t>(Protocol::count));

/// A set of protocols; bit n is protocol n.
using Protocols = std::uint32_t;

constexpr Protocols one_of(Protocol protocol)
{
    return Protocols{1} << static_cast<unsigned>(protocol);
}

template <class... More>
constexpr Protocols set_of(More... protocols)
{
    return (one_of(protocols) | ...);
}

/// That of the packet in the frame. Fragments but for the first have none.
Protocol protocol_of(const Frame &frame);

}  // namespace sim
