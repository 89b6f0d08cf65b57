#include "l2_table.h"

#include "l2.h"

#include <cstring>
#include <type_traits>

namespace sim {

// Records are compared as bytes, here and for masks.
static_assert(std::has_unique_object_representations_v<bcm_l2_addr_t>, "bcm_l2_addr_t has padding");

namespace {

constexpr std::size_t slots_min = 1024;

}  // namespace

void split_l2_key(L2Key key, unsigned char *mac, bcm_vlan_t *vid)
{
    *vid = static_cast<bcm_vlan_t>(key & 0xffff);
    for (int i = 0; i < 6; ++i) {
        mac[i] = static_cast<unsigned char>(key >> (56 - 8 * i));
    }
}

std::size_t L2Table::bucket(L2Key key)
{
    return static_cast<std::size_t>(hash(key) >> (64 - bucket_bits));
}

void L2Table::rebuild_index(std::size_t slots)
{
    index_.assign(slots, 0);
    index_bits_ = 0;
    while ((std::size_t{1} << index_bits_) < slots) {
        ++index_bits_;
    }
    for (std::size_t position = 0; position < entries_.size(); ++position) {
        if (entries_[position].key != erased) {
            index_[slot_of(entries_[position].key)] = static_cast<std::uint32_t>(position + 1);
        }
    }
}

bool L2Table::put(const bcm_l2_addr_t &record, unsigned state)
{
    Entry entry = {l2_key(record.mac, record.vid), record.flags, record.port, record.modid, record.tgid, 0};
    std::size_t position = find(entry.key);
    if (position == none && live_ >= capacity) {
        return false;
    }

    // First what may throw, and changes nothing that can be seen. At most half full, so that probing stays short.
    if (position == none && (live_ + 1) * 2 > index_.size()) {
        rebuild_index(std::max(slots_min, index_.size() * 2));
    }
    if (position == none && entries_.size() == entries_.capacity()) {
        entries_.reserve(std::max(slots_min, entries_.size() * 2));
    }
    const bcm_l2_addr_t compact = compact_record(entry);
    if (std::memcmp(&compact, &record, sizeof record) != 0) {
        whole_[entry.key] = record;
        state |= l2_whole;
    } else {
        if (position != none && (entries_[position].state & l2_whole)) {
            whole_.erase(entry.key);
        }
        state &= ~static_cast<unsigned>(l2_whole);
    }
    entry.state = static_cast<std::uint8_t>(state);

    if (position != none) {
        entries_[position] = entry;
        return true;
    }
    entries_.push_back(entry);
    index_[slot_of(entry.key)] = static_cast<std::uint32_t>(entries_.size());
    ++live_;
    return true;
}

void L2Table::erase(std::size_t position)
{
    Entry &entry = entries_[position];
    if (entry.state & l2_whole) {
        whole_.erase(entry.key);
    }

    // Entries further along the probe sequence move up, so that no marker is needed for the freed slot.
    const std::size_t mask = index_.size() - 1;
    std::size_t free = slot_of(entry.key);
    for (std::size_t slot = (free + 1) & mask; index_[slot] != 0; slot = (slot + 1) & mask) {
        const std::size_t wanted = home(entries_[index_[slot] - 1].key);
        if (((slot - wanted) & mask) >= ((slot - free) & mask)) {
            index_[free] = index_[slot];
            free = slot;
        }
    }
    index_[free] = 0;

    entry.key = erased;
    entry.state = 0;
    --live_;
    close_gaps();
}

/// Drops the gaps once they outnumber the entries, which keeps a traversal linear and erasing cheap.
void L2Table::close_gaps()
{
    if (traversals_ != 0 || entries_.size() - live_ <= live_ + slots_min) {
        return;
    }
    entries_.erase(std::remove_if(entries_.begin(), entries_.end(),
                                  [](const Entry &entry) { return entry.key == erased; }),
                   entries_.end());
    std::size_t slots = slots_min;
    while (slots < live_ * 4) {
        slots *= 2;
    }
    rebuild_index(slots);
}

void L2Table::clear()
{
    entries_.clear();
    index_.clear();
    whole_.clear();
    live_ = 0;
}

bcm_l2_addr_t L2Table::compact_record(const Entry &entry)
{
    bcm_l2_addr_t record = {};
    split_l2_key(entry.key, record.mac, &record.vid);
    record.flags = entry.flags;
    record.port = entry.port;
    record.modid = entry.modid;
    record.tgid = entry.tgid;
    return record;
}

bcm_l2_addr_t L2Table::record(std::size_t position) const
{
    const Entry &entry = entries_[position];
    if (!(entry.state & l2_whole)) {
        return compact_record(entry);
    }
    bcm_l2_addr_t record = whole_.at(entry.key);
    record.flags = entry.flags;
    return record;
}

void L2Table::set_state(std::size_t position, unsigned state)
{
    constexpr unsigned own = l2_whole;
    Entry &entry = entries_[position];
    entry.state = static_cast<std::uint8_t>((entry.state & own) | (state & ~own));
}

}  // namespace sim
