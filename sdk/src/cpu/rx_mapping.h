/// Which queue of the CPU a packet waits in, by why it comes and how urgent it is.
#pragma once

#include "cpu_copy.h"

#include <bcm/rx.h>

#include <map>

namespace sim {

struct RxMappingEntry {
    bcm_rx_reasons_t reasons;
    bcm_rx_reasons_t reasons_mask;
    uint8 priority;
    uint8 priority_mask;
    bcm_cos_queue_t queue;
};

class RxMapping {
public:
    static constexpr int size = 128;

    void put(int index, const RxMappingEntry &entry) { entries_[index] = entry; }

    /// Null if there is none.
    const RxMappingEntry *find(int index) const
    {
        const auto found = entries_.find(index);
        return found != entries_.end() ? &found->second : nullptr;
    }

    bool erase(int index) { return entries_.erase(index) != 0; }
    void clear() { entries_.clear(); }
    int used() const { return static_cast<int>(entries_.size()); }

    /// That of the first entry that agrees, or 0.
    bcm_cos_queue_t queue_of(const bcm_rx_reasons_t &reasons, int priority) const;

private:
    std::map<int, RxMappingEntry> entries_;
};

/// The reasons as the interface has them.
bcm_rx_reasons_t bits_of(const CpuReasons &reasons);

/// All that a packet can come for.
const bcm_rx_reasons_t &reasons_known();

}  // namespace sim
