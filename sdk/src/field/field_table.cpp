#include "field_table.h"

#include <algorithm>

namespace sim {

FieldTuple::FieldTuple(const FieldKey &mask, std::uint32_t headers)
    : headers_(headers), slots_(4), last_(slots_.size() - 1)
{
    FieldWord factor = 0x9e3779b97f4a7c15u;
    for (std::size_t word = 0; word < mask.words.size(); ++word) {
        if (mask.words[word] != 0) {
            parts_.push_back({static_cast<std::uint8_t>(word), mask.words[word], factor});
            factor *= 0xd1342543de82ef95u;  // odd, as they all are
        }
    }
}

bool FieldTuple::is_of(const FieldKey &mask, std::uint32_t headers) const
{
    const auto words =
        mask.words.size() - static_cast<std::size_t>(std::count(mask.words.begin(), mask.words.end(), 0u));
    return headers == headers_ && words == parts_.size()
           && std::all_of(parts_.begin(), parts_.end(),
                          [&](const Part &part) { return mask.words[part.word] == part.mask; });
}

bool FieldTuple::is_same(const FieldKey &key, const FieldRule &rule) const
{
    FieldWord differing = 0;
    for (const Part &part : parts_) {
        differing |= (key.words[part.word] & part.mask) ^ rule.pattern.value.words[part.word];
    }
    return differing == 0;
}

std::size_t FieldTuple::slot_of(const FieldKey &value, std::uint32_t hashed) const
{
    std::size_t slot = hashed >> shift_;
    while (slots_[slot].hash != free
           && (slots_[slot].hash != hashed || !is_same(value, *slots_[slot].first))) {
        slot = (slot + 1) & last_;
    }
    return slot;
}

void FieldTuple::grow()
{
    const std::size_t slots = 2 * slots_.size();
    std::vector<Slot> old(slots);
    old.swap(slots_);
    last_ = slots - 1;
    --shift_;
    for (const Slot &slot : old) {
        if (slot.hash != free) {
            slots_[slot_of(slot.first->pattern.value, slot.hash)] = slot;
        }
    }
}

void FieldTuple::add(FieldRule &rule)
{
    if (4 * (taken_ + 1) > slots_.size()) {
        grow();
    }
    ++priorities_[rule.priority];
    highest_ = priorities_.rbegin()->first;
    const std::uint32_t hashed = hash(rule.pattern.value);
    Slot &slot = slots_[slot_of(rule.pattern.value, hashed)];
    taken_ += slot.hash == free;
    slot.hash = hashed;
    FieldRule **place = &slot.first;
    while (*place != nullptr && (*place)->wins_over(rule)) {
        place = &(*place)->next;
    }
    rule.next = *place;
    *place = &rule;
}

void FieldTuple::remove(FieldRule &rule)
{
    std::size_t left = slot_of(rule.pattern.value, hash(rule.pattern.value));
    FieldRule **place = &slots_[left].first;
    while (*place != &rule) {
        place = &(*place)->next;
    }
    *place = rule.next;
    const auto priority = priorities_.find(rule.priority);
    if (--priority->second == 0) {
        priorities_.erase(priority);
        highest_ = priorities_.empty() ? 0 : priorities_.rbegin()->first;
    }
    if (slots_[left].first != nullptr) {
        return;
    }
    --taken_;
    slots_[left].hash = free;
    // What stands behind may have been looked for from here on.
    for (std::size_t slot = (left + 1) & last_; slots_[slot].hash != free; slot = (slot + 1) & last_) {
        const std::size_t wanted = slots_[slot].hash >> shift_;
        if (((slot - wanted) & last_) >= ((slot - left) & last_)) {
            slots_[left] = slots_[slot];
            slots_[slot] = Slot();
            left = slot;
        }
    }
}

void FieldTable::sort()
{
    std::stable_sort(tuples_.begin(), tuples_.end(),
                     [](const std::unique_ptr<FieldTuple> &a, const std::unique_ptr<FieldTuple> &b) {
                         return a->highest_priority() > b->highest_priority();
                     });
}

void FieldTable::add(FieldRule &rule)
{
    if (rule.pattern.matches_none) {
        return;
    }
    const FieldPattern &pattern = rule.pattern;
    auto tuple = std::find_if(tuples_.begin(), tuples_.end(), [&](const std::unique_ptr<FieldTuple> &each) {
        return each->is_of(pattern.mask, pattern.value.headers);
    });
    if (tuple == tuples_.end()) {
        tuples_.push_back(std::make_unique<FieldTuple>(pattern.mask, pattern.value.headers));
        tuple = std::prev(tuples_.end());
    }
    const int before = (*tuple)->highest_priority();
    const bool is_new = (*tuple)->is_empty();
    (*tuple)->add(rule);
    if (is_new || (*tuple)->highest_priority() != before) {
        sort();
    }
}

void FieldTable::remove(FieldRule &rule)
{
    if (rule.pattern.matches_none) {
        return;
    }
    const auto tuple =
        std::find_if(tuples_.begin(), tuples_.end(), [&](const std::unique_ptr<FieldTuple> &each) {
            return each->is_of(rule.pattern.mask, rule.pattern.value.headers);
        });
    const int before = (*tuple)->highest_priority();
    (*tuple)->remove(rule);
    if ((*tuple)->is_empty()) {
        tuples_.erase(tuple);
    } else if ((*tuple)->highest_priority() != before) {
        sort();
    }
}

}  // namespace sim
