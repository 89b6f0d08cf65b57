/// The MAC address table: entries by address and VLAN, in the order in which they came.
#pragma once

#include <bcm/l2.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace sim {

/// Address and VLAN in one number, the VLAN lowest. Never 0, since no VLAN is 0.
using L2Key = std::uint64_t;

inline L2Key l2_key(const unsigned char *mac, bcm_vlan_t vid)
{
    const std::uint32_t high = static_cast<std::uint32_t>(mac[0]) << 24
                               | static_cast<std::uint32_t>(mac[1]) << 16
                               | static_cast<std::uint32_t>(mac[2]) << 8 | mac[3];
    const std::uint32_t low =
        static_cast<std::uint32_t>(mac[4]) << 24 | static_cast<std::uint32_t>(mac[5]) << 16;
    return static_cast<L2Key>(high) << 32 | low | vid;
}
void split_l2_key(L2Key key, unsigned char *mac, bcm_vlan_t *vid);

/// What the table knows of an entry beyond its record.
enum L2EntryState : std::uint8_t {
    l2_recent = 1,  // not yet seen by an ageing sweep
    l2_learnt = 2,  // from a packet, not by a call
    l2_whole = 4    // of the table itself: the record has members that a compact entry cannot hold
};

/// A hash table with open addressing over a vector of compact entries. A position stands for one entry
/// until that entry is erased or, outside a traversal, any entry is.
class L2Table {
public:
    static constexpr std::size_t capacity = 1048576;
    static constexpr std::size_t none = SIZE_MAX;

    /// A chip finds room for an address in one bucket only.
    static constexpr unsigned bucket_bits = 17;
    static std::size_t bucket(L2Key key);

    /// Position of an entry, or none.
    std::size_t find(L2Key key) const
    {
        if (index_.empty()) {
            return none;
        }
        const std::uint32_t found = index_[slot_of(key)];
        return found != 0 ? found - 1 : none;
    }

    /// Enters a record, or replaces the one of the same key, which keeps its place. state: L2EntryState
    /// bits. False if the table is full.
    bool put(const bcm_l2_addr_t &record, unsigned state);

    void erase(std::size_t position);
    void clear();

    bcm_l2_addr_t record(std::size_t position) const;

    /// The port as the record has it, a gport too.
    struct Place {
        int modid;
        int port;
    };
    Place place(std::size_t position) const { return {entries_[position].modid, entries_[position].port}; }

    L2Key key(std::size_t position) const { return entries_[position].key; }
    unsigned state(std::size_t position) const { return entries_[position].state; }
    uint32 flags(std::size_t position) const { return entries_[position].flags; }

    /// Marks what an entry has seen: changes nothing else about it.
    void set_state(std::size_t position, unsigned state);
    void set_flags(std::size_t position, uint32 flags) { entries_[position].flags = flags; }

    /// Calls visit(position) for each entry that is there at the start and still there at its turn; stops
    /// at a negative result and returns it. visit may change the table in any way.
    template <class Visit>
    int traverse(Visit visit)
    {
        Traversal traversal(*this);
        const std::size_t end = entries_.size();
        for (std::size_t position = 0; position < std::min(end, entries_.size()); ++position) {
            if (entries_[position].key == erased) {
                continue;
            }
            const int rc = visit(position);
            if (rc < 0) {
                return rc;
            }
        }
        return 0;
    }

private:
    static constexpr L2Key erased = 0;

    /// The members that most entries use. One with others set has its record in whole_.
    struct Entry {
        L2Key key;
        uint32 flags;
        int port;
        int modid;
        int tgid;
        std::uint8_t state;
    };

    /// Positions hold still while there is one.
    struct Traversal {
        explicit Traversal(L2Table &traversed) : table(traversed) { ++table.traversals_; }
        ~Traversal()
        {
            --table.traversals_;
            table.close_gaps();
        }
        L2Table &table;
    };

    static bcm_l2_addr_t compact_record(const Entry &entry);

    /// Multiplicative hashing: the high bits depend on all bits of the key, and neighbours are far apart.
    static std::uint64_t hash(L2Key key) { return (key ^ (key >> 32)) * 0x9E3779B97F4A7C15u; }
    std::size_t home(L2Key key) const { return static_cast<std::size_t>(hash(key) >> (64 - index_bits_)); }

    /// The slot that holds the key, or the free slot where it would go. The index has one.
    std::size_t slot_of(L2Key key) const
    {
        const std::size_t mask = index_.size() - 1;
        std::size_t slot = home(key);
        while (index_[slot] != 0 && entries_[index_[slot] - 1].key != key) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }
    void rebuild_index(std::size_t slots);
    void close_gaps();

    std::vector<Entry> entries_;  // in order of arrival; erased ones stay as gaps for a while
    std::size_t live_ = 0;
    std::vector<std::uint32_t> index_;  // position + 1, or 0; a power of two of slots
    unsigned index_bits_ = 0;
    std::unordered_map<L2Key, bcm_l2_addr_t> whole_;
    int traversals_ = 0;
};

}  // namespace sim
