/// What the tables of hosts and of routes have in common: entries at places that stay theirs.
#pragma once

#include "ip_address.h"
#include "l3_objects.h"

#include <cstring>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace sim {

/// Where a host or network is: one next hop, or a group of them.
struct L3Way {
    const NextHop *hop = nullptr;
    const L3Group *group = nullptr;
};

enum L3EntryState : std::uint8_t {
    l3_used = 1,
    l3_ip6 = 2,
    l3_hit = 4,
    l3_invalid = 8  // not found by packets
};

struct L3Entry {
    IpAddress network;
    L3Way way;
    bcm_if_t interface = 0;  // as in the record
    uint32 flags = 0;        // BCM_L3_*, but those that say how to enter it
    std::uint32_t next_free = 0;
    std::uint16_t vrf = 0;
    std::uint8_t length = 0;
    std::uint8_t state = 0;  // L3EntryState bits

    bool is_ip6() const { return state & l3_ip6; }
};

/// What an entry has that most have not.
template <class Record>
struct L3Details {
    std::vector<Record> records;  ///< one, or one for each path
    NextHop hop;                  ///< if the record itself says where to
    L3Group group;                ///< of several paths
};

/// Half a million entries are a matter of memory: what most records say fits an entry, the others have details.
template <class Record>
class L3Entries {
public:
    using Details = L3Details<Record>;

    static constexpr std::uint32_t none = UINT32_MAX;

    /// The entry has its place; nothing can fail any more. Details may be null.
    std::uint32_t add(L3Entry entry, std::unique_ptr<Details> details)
    {
        const bool is_reused = first_free_ != none;
        if (!is_reused) {
            entries_.emplace_back();
        }
        const auto place = is_reused ? first_free_ : static_cast<std::uint32_t>(entries_.size() - 1);
        if (details != nullptr) {
            try {
                details_.emplace(place, std::move(details));
            } catch (...) {
                if (!is_reused) {
                    entries_.pop_back();
                }
                throw;
            }
        }
        if (is_reused) {
            first_free_ = entries_[place].next_free;
        }
        entry.state |= l3_used;
        entries_[place] = entry;
        ++live(entry);
        return place;
    }

    /// Another entry of the same key at its place.
    void replace(std::uint32_t place, L3Entry entry, std::unique_ptr<Details> details)
    {
        if (details != nullptr) {
            details_[place] = std::move(details);
        } else {
            details_.erase(place);
        }
        entry.state |= l3_used;
        entries_[place] = entry;
    }

    void erase(std::uint32_t place)
    {
        --live(entries_[place]);
        details_.erase(place);
        entries_[place] = {};
        entries_[place].next_free = first_free_;
        first_free_ = place;
    }

    void clear()
    {
        entries_ = {};
        details_.clear();
        first_free_ = none;
        live_[0] = live_[1] = 0;
    }

    L3Entry &at(std::uint32_t place) { return entries_[place]; }
    const L3Entry &at(std::uint32_t place) const { return entries_[place]; }

    /// Null if the entry has none.
    Details *details(std::uint32_t place) const
    {
        const auto found = details_.find(place);
        return found != details_.end() ? found->second.get() : nullptr;
    }

    /// How many there are of a version of IP.
    std::size_t count(bool is_ip6) const { return live_[is_ip6]; }

    /// Calls visit(place) for each of a version of IP, in the order of places from `first` to `last`, as far as there
    /// are places at the start; stops at a negative result and returns it. visit may change the table in any way.
    template <class Visit>
    int traverse(bool is_ip6, std::uint32_t first, std::uint32_t last, Visit visit) const
    {
        const std::size_t end = entries_.size();
        for (std::size_t place = first; place < end && place <= last && place < entries_.size(); ++place) {
            const L3Entry &entry = entries_[place];
            if ((entry.state & l3_used) && entry.is_ip6() == is_ip6) {
                const int rc = visit(static_cast<std::uint32_t>(place));
                if (rc < 0) {
                    return rc;
                }
            }
        }
        return BCM_E_NONE;
    }

private:
    std::size_t &live(const L3Entry &entry) { return live_[entry.is_ip6()]; }

    std::vector<L3Entry> entries_;
    std::unordered_map<std::uint32_t, std::unique_ptr<Details>> details_;
    std::uint32_t first_free_ = none;
    std::size_t live_[2] = {0, 0};  // by version of IP
};

/// The flags that an entry may have. Whatever else is asked for is not to be had here.
constexpr uint32 l3_entry_flags = BCM_L3_TGID | BCM_L3_MULTIPATH | BCM_L3_DEFLOCAL | BCM_L3_IP6 | BCM_L3_HIT
                                  | BCM_L3_DST_DISCARD | BCM_L3_SRC_DISCARD | BCM_L3_COPY_TO_CPU | BCM_L3_RPE;
constexpr uint32 l3_how_flags = BCM_L3_REPLACE | BCM_L3_HIT_CLEAR | BCM_L3_WITH_ID | BCM_L3_HIT;

}  // namespace sim
