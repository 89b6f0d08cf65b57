/// What the CPU is told of a packet that comes to it.
#pragma once

#include <bcm/rx_reason.h>
#include <bcm/types.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace sim {

/// Why a packet goes to the CPU: a set of few reasons, in the order in which they were found.
class CpuReasons {
public:
    void add(bcm_rx_reason_t reason)
    {
        if (count_ < reasons_.size() && std::find(begin(), end(), reason) == end()) {
            reasons_[count_++] = static_cast<std::uint8_t>(reason);
        }
    }

    void clear() { count_ = 0; }
    bool empty() const { return count_ == 0; }
    const std::uint8_t *begin() const { return reasons_.data(); }
    const std::uint8_t *end() const { return reasons_.data() + count_; }

private:
    static_assert(bcmRxReasonCount <= 256, "a byte holds a reason");

    std::size_t count_ = 0;
    std::array<std::uint8_t, 16> reasons_;
};

struct CpuCopy {
    /// Of what comes from a queue.
    static CpuCopy of_nothing_known() { return {0, 0, true, false, {}, -1, bcmColorGreen, -1, 0}; }

    int port;  ///< that it came from
    bcm_vlan_t vid;
    bool came_tagged;
    bool is_for_many;  ///< a group, or all members of the VLAN
    CpuReasons reasons;
    int priority;  ///< within the switch; -1 for that of the tag
    bcm_color_t color;
    int queue;     ///< of the CPU; -1 for the one that reasons and priority are mapped to
    uint32 match;  ///< what the entry of the field processor says that sends it there, or its id; 0 without
};

}  // namespace sim
