#include "rx_mapping.h"

#include "protocol.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace sim {

namespace {

bool agree(const bcm_rx_reasons_t &a, const bcm_rx_reasons_t &b, const bcm_rx_reasons_t &mask)
{
    for (std::size_t i = 0; i < std::size(mask.pbits); ++i) {
        if ((a.pbits[i] ^ b.pbits[i]) & mask.pbits[i]) {
            return false;
        }
    }
    return true;
}

bcm_rx_reasons_t made_of_known()
{
    constexpr bcm_rx_reason_t known[] = {
        bcmRxReasonFilterMatch,
        bcmRxReasonControl,
        bcmRxReasonBpdu,
        bcmRxReasonSlowProtocol,
        bcmRxReasonLacp,
        bcmRxReasonLldp,
        bcmRxReasonEapol,
        bcmRxReasonReservedMulticast,
        bcmRxReasonL2DestMiss,
        bcmRxReasonL2DestMarked,
        bcmRxReasonMulticastMiss,
        bcmRxReasonLocalCpu,
        bcmRxReasonL3Ttl,
        bcmRxReasonL3MtuFail,
        bcmRxReasonL3HeaderError,
        bcmRxReasonUrpfFail,
        bcmRxReasonL3NextHopIncomplete,
        bcmRxReasonL3DestMiss,
        bcmRxReasonL3DestMarked,
        bcmRxReasonL3LocalAddress,
        bcmRxReasonLinkLocalUnicast,
    };
    bcm_rx_reasons_t all = {};
    for (std::size_t i = 1; i < std::size(protocol_reasons); ++i) {
        BCM_RX_REASON_SET(all, protocol_reasons[i]);
    }
    for (const bcm_rx_reason_t reason : known) {
        BCM_RX_REASON_SET(all, reason);
    }
    return all;
}

}  // namespace

bcm_cos_queue_t RxMapping::queue_of(const bcm_rx_reasons_t &reasons, int priority) const
{
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const auto &entry) {
        const RxMappingEntry &one = entry.second;
        return agree(reasons, one.reasons, one.reasons_mask)
               && ((priority ^ one.priority) & one.priority_mask) == 0;
    });
    return found != entries_.end() ? found->second.queue : 0;
}

bcm_rx_reasons_t bits_of(const CpuReasons &reasons)
{
    bcm_rx_reasons_t bits = {};
    for (const std::uint8_t reason : reasons) {
        BCM_RX_REASON_SET(bits, reason);
    }
    return bits;
}

const bcm_rx_reasons_t &reasons_known()
{
    static const bcm_rx_reasons_t known = made_of_known();
    return known;
}

}  // namespace sim
