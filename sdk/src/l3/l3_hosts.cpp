#include "l3_hosts.h"

namespace sim {

bool L3Hosts::insert(const L3Entry &entry, std::unique_ptr<Details> details)
{
    if (size() >= capacity) {
        return false;
    }
    if (index_.size() < 2 * (size() + 1)) {
        std::vector<std::uint32_t> old(index_.empty() ? 64 : 2 * index_.size());
        old.swap(index_);
        for (const std::uint32_t found : old) {
            if (found != 0) {
                const L3Entry &moved = at(found - 1);
                index_[slot_of(moved.network, moved.vrf, moved.is_ip6())] = found;
            }
        }
    }
    const std::size_t slot = slot_of(entry.network, entry.vrf, entry.is_ip6());
    index_[slot] = add(entry, std::move(details)) + 1;
    return true;
}

void L3Hosts::remove(std::uint32_t place)
{
    // Those behind it move up, so that none is cut off from its home.
    const std::size_t mask = index_.size() - 1;
    std::size_t gap = slot_of(at(place).network, at(place).vrf, at(place).is_ip6());
    index_[gap] = 0;
    for (std::size_t slot = (gap + 1) & mask; index_[slot] != 0; slot = (slot + 1) & mask) {
        const std::uint32_t moved = index_[slot];
        index_[slot] = 0;
        const L3Entry &entry = at(moved - 1);
        index_[slot_of(entry.network, entry.vrf, entry.is_ip6())] = moved;
    }
    erase(place);
}

void L3Hosts::remove_all()
{
    index_ = {};
    clear();
}

}  // namespace sim
