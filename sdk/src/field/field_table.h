/// Which of a group's entries matches: tuple space search. All entries that look at the same bits are one table, found
/// by a hash of these bits; so what a packet costs grows with the number of different masks and not with entries.
#pragma once

#include "field_qualifier.h"

#include <map>
#include <memory>
#include <vector>

namespace sim {

struct FieldRule;

/// Entries with one mask.
class FieldTuple {
public:
    FieldTuple(const FieldKey &mask, std::uint32_t headers);

    bool is_of(const FieldKey &mask, std::uint32_t headers) const;

    /// The rule has to have the mask, and stays where it is until it is removed.
    void add(FieldRule &rule);
    void remove(FieldRule &rule);

    /// Of the highest priority of those that match, or null.
    FieldRule *find(const FieldKey &key) const
    {
        if ((key.headers & headers_) != headers_) {
            return nullptr;
        }
        const std::uint32_t hashed = hash(key);
        const Slot *const slots = slots_.data();
        for (std::size_t place = hashed >> shift_; slots[place].hash != free; place = (place + 1) & last_) {
            if (slots[place].hash == hashed && is_same(key, *slots[place].first)) {
                return slots[place].first;
            }
        }
        return nullptr;
    }

    bool is_empty() const { return priorities_.empty(); }
    int highest_priority() const { return highest_; }

private:
    struct Part {
        std::uint8_t word;
        FieldWord mask, factor;
    };
    static constexpr std::uint32_t free = 0;
    struct Slot {
        std::uint32_t hash = free;
        FieldRule *first = nullptr;  // of those with one value, by priority
    };

    /// Never that of a free slot.
    std::uint32_t hash(const FieldKey &key) const
    {
        FieldWord mixed = 0;
        for (const Part &part : parts_) {
            mixed += (key.words[part.word] & part.mask) * part.factor;
        }
        // The upper bits are those on which all bits of a product's factors act.
        return static_cast<std::uint32_t>(mixed >> 32) | 1;
    }
    bool is_same(const FieldKey &key, const FieldRule &rule) const;
    std::size_t slot_of(const FieldKey &value, std::uint32_t hashed) const;
    void grow();

    std::uint32_t headers_;
    std::vector<Part> parts_;
    std::vector<Slot> slots_;  // a power of two of them, at most a quarter of them taken
    std::size_t last_;
    unsigned shift_ = 30;  // from a hash to the place of its slot
    std::size_t taken_ = 0;
    std::map<int, int> priorities_;  // how many rules have one
    int highest_ = 0;
};

/// What an installed entry is to packets.
struct FieldRule {
    FieldPattern pattern;
    int priority = 0;
    unsigned entry = 0;         ///< its id; of two with one priority, the lower wins
    FieldRule *next = nullptr;  ///< of the same tuple and value

    bool wins_over(const FieldRule &other) const
    {
        return priority != other.priority ? priority > other.priority : entry < other.entry;
    }
};

class FieldTable {
public:
    void add(FieldRule &rule);
    void remove(FieldRule &rule);

    /// The rule that acts, or null.
    FieldRule *find(const FieldKey &key) const
    {
        FieldRule *best = nullptr;
        for (const std::unique_ptr<FieldTuple> &tuple : tuples_) {
            if (best != nullptr && tuple->highest_priority() < best->priority) {
                break;
            }
            FieldRule *found = tuple->find(key);
            if (found != nullptr && (best == nullptr || found->wins_over(*best))) {
                best = found;
            }
        }
        return best;
    }

    bool is_empty() const { return tuples_.empty(); }
    std::size_t masks() const { return tuples_.size(); }

private:
    void sort();

    std::vector<std::unique_ptr<FieldTuple>> tuples_;  // the highest priority first
};

}  // namespace sim
