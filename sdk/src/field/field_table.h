/// Which entries of a stage match: tuple space search. All entries that look at the same bits, of whatever group, are one
/// table, found by a hash of these bits; so what a packet costs grows with the number of different masks, and neither with
/// entries nor, but for those that match, with groups. What else was measured: docs/simulated-switch.md.
#pragma once

#include "field_qualifier.h"

#include <algorithm>
#include <array>
#include <climits>
#include <map>
#include <vector>

namespace sim {

constexpr int field_group_max = 512;

/// What an installed entry is to packets.
struct FieldRule {
    FieldPattern pattern;
    int priority = 0;
    unsigned entry = 0;         ///< its id; of two with one priority, the lower wins
    unsigned group = 0;         ///< FieldTable::number of the group
    FieldRule *next = nullptr;  ///< of the same mask, value and group, the one that wins over the others
    FieldRule *next_group = nullptr;  ///< the first one of another group; known to the first one of the group

    bool wins_over(const FieldRule &other) const
    {
        return priority != other.priority ? priority > other.priority : entry < other.entry;
    }
};

/// Entries with one mask.
class FieldTuple {
public:
    /// A word of the mask.
    struct Part {
        std::uint8_t word = 0;
        FieldWord mask = 0, factor = 0;

        bool operator==(const Part &other) const { return word == other.word && mask == other.mask; }
    };
    using Parts = std::vector<Part>;
    static Parts parts_of(const FieldKey &mask);

    FieldTuple(Parts parts, FieldHeaders headers);

    bool is_of(const Parts &parts, FieldHeaders headers) const
    {
        return headers == headers_ && parts == parts_;
    }

    /// The rule has to have the mask, and stays where it is until it is removed.
    void add(FieldRule &rule);
    void remove(FieldRule &rule);

    /// Those with the packet's value: the first of each group, linked by next_group. Null if there are none.
    FieldRule *find(const FieldKey &key) const
    {
        if ((key.headers & headers_) != headers_) {
            return nullptr;
        }
        const std::uint32_t hashed = hash(key);
        return slots_[hashed >> shift_].hash == free ? nullptr : find_among(key, hashed);
    }

    bool is_empty() const { return priorities_.empty(); }
    int highest_priority() const { return highest_; }

private:
    static constexpr std::uint32_t free = 0;
    struct Slot {
        std::uint32_t hash = free;
        FieldRule *first = nullptr;
    };

    static FieldWord mixed(const FieldKey &key, const Part &part)
    {
        return (key.words[part.word] & part.mask) * part.factor;
    }

    /// Never that of a free slot.
    std::uint32_t hash(const FieldKey &key) const
    {
        FieldWord sum = mixed(key, first_) + mixed(key, second_);
        if (has_more_) {
            for (auto part = parts_.begin() + 2; part != parts_.end(); ++part) {
                sum += mixed(key, *part);
            }
        }
        // The upper bits are those on which all bits of a product's factors act.
        return static_cast<std::uint32_t>(sum >> 32) | 1;
    }
    /// The same, where the slot of that hash is taken.
    FieldRule *find_among(const FieldKey &key, std::uint32_t hashed) const;

    bool is_same(const FieldKey &key, const FieldRule &rule) const;
    std::size_t slot_of(const FieldKey &value, std::uint32_t hashed) const;
    void grow();
    void free_slot(std::size_t left);

    FieldHeaders headers_;
    int highest_ = 0;
    Part first_, second_;  // most masks have no more; without effect where there are less
    bool has_more_;
    unsigned shift_ = 30;      // from a hash to the place of its slot
    std::vector<Slot> slots_;  // a power of two of them, at most a quarter of them taken
    std::size_t last_;
    Parts parts_;
    std::size_t taken_ = 0;
    std::map<int, int> priorities_;  // how many rules have one
};

/// What a group has in the index of its stage.
class FieldTable {
public:
    bool is_empty() const { return rules_ == 0; }

private:
    friend class FieldIndex;

    unsigned number_ = 0;  // as long as it has rules
    std::size_t rules_ = 0;
};

/// The rules of all groups of a stage.
class FieldIndex {
public:
    /// Of each group the rule that acts, as far as it does not depend on what groups before it do.
    class Found {
    private:
        friend class FieldIndex;
        std::array<FieldRule *, field_group_max> rules_;
        std::size_t lacking_;  // groups without one
        int least_;            // what has no higher priority is of no use to any group
    };

    void add(FieldTable &table, FieldRule &rule);
    void remove(FieldTable &table, FieldRule &rule);

    void find(const FieldKey &key, Found &found) const
    {
        std::fill_n(found.rules_.begin(), groups_.size(), nullptr);
        found.lacking_ = groups_.size();
        found.least_ = INT_MIN;
        for (const FieldTuple &tuple : tuples_) {
            if (tuple.highest_priority() < found.least_) {
                break;
            }
            if (FieldRule *rule = tuple.find(key)) {
                take(rule, found);
            }
        }
    }

    /// The rule of the group that acts on a packet of whatever colour it has by now, or null.
    FieldRule *find(const FieldTable &table, const FieldKey &key, const Found &found) const
    {
        FieldRule *best = found.rules_[table.number_];
        for (const FieldTuple &tuple : by_color_) {
            for (FieldRule *rule = tuple.find(key); rule != nullptr; rule = rule->next_group) {
                best =
                    rule->group == table.number_ && (best == nullptr || rule->wins_over(*best)) ? rule : best;
            }
        }
        return best;
    }

private:
    using Tuples = std::vector<FieldTuple>;

    Tuples &tuples_with(const FieldKey &mask);
    static Tuples::iterator tuple_of(Tuples &tuples, const FieldTuple::Parts &parts, FieldHeaders headers);
    static void sort_in(Tuples &tuples, Tuples::iterator changed);
    void take(FieldRule *rule, Found &found) const;

    Tuples tuples_, by_color_;          // the highest priority first; by_color_: that look at the colour
    std::vector<FieldTable *> groups_;  // by number; null where one is free
};

}  // namespace sim
