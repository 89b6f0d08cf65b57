#include "field_table.h"

#include <utility>

namespace sim {

FieldTuple::Parts FieldTuple::parts_of(const FieldKey &mask)
{
    Parts parts;
    FieldWord factor = 0x9e3779b97f4a7c15u;
    for (std::size_t word = 0; word < mask.words.size(); ++word) {
        if (mask.words[word] != 0) {
            parts.push_back({static_cast<std::uint8_t>(word), mask.words[word], factor});
            factor *= 0xd1342543de82ef95u;  // odd, as they all are
        }
    }
    return parts;
}

FieldTuple::FieldTuple(Parts parts, FieldHeaders headers)
    : headers_(headers),
      first_(!parts.empty() ? parts[0] : Part{}),
      second_(parts.size() > 1 ? parts[1] : Part{}),
      has_more_(parts.size() > 2),
      slots_(4),
      last_(slots_.size() - 1),
      parts_(std::move(parts))
{
}

bool FieldTuple::is_same(const FieldKey &key, const FieldRule &rule) const
{
    FieldWord differing = 0;
    for (const Part &part : parts_) {
        differing |= (key.words[part.word] & part.mask) ^ rule.pattern.value.words[part.word];
    }
    return differing == 0;
}

FieldRule *FieldTuple::find_among(const FieldKey &key, std::uint32_t hashed) const
{
    for (std::size_t slot = hashed >> shift_; slots_[slot].hash != free; slot = (slot + 1) & last_) {
        if (slots_[slot].hash == hashed && is_same(key, *slots_[slot].first)) {
            return slots_[slot].first;
        }
    }
    return nullptr;
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
    while (*place != nullptr && (*place)->group != rule.group) {
        place = &(*place)->next_group;
    }
    FieldRule *const first = *place;
    if (first == nullptr || rule.wins_over(*first)) {
        rule.next_group = first != nullptr ? first->next_group : nullptr;
    } else {
        do {
            place = &(*place)->next;
        } while (*place != nullptr && (*place)->wins_over(rule));
    }
    rule.next = *place;
    *place = &rule;
}

void FieldTuple::remove(FieldRule &rule)
{
    const std::size_t slot = slot_of(rule.pattern.value, hash(rule.pattern.value));
    FieldRule **place = &slots_[slot].first;
    while ((*place)->group != rule.group) {
        place = &(*place)->next_group;
    }
    if (*place == &rule) {
        if (rule.next != nullptr) {
            rule.next->next_group = rule.next_group;
        }
        *place = rule.next != nullptr ? rule.next : rule.next_group;
    } else {
        while (*place != &rule) {
            place = &(*place)->next;
        }
        *place = rule.next;
    }
    const auto priority = priorities_.find(rule.priority);
    if (--priority->second == 0) {
        priorities_.erase(priority);
        highest_ = priorities_.empty() ? 0 : priorities_.rbegin()->first;
    }
    if (slots_[slot].first == nullptr) {
        free_slot(slot);
    }
}

void FieldTuple::free_slot(std::size_t left)
{
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

FieldIndex::Tuples &FieldIndex::tuples_with(const FieldKey &mask)
{
    return mask.get(field_places::color) != 0 ? by_color_ : tuples_;
}

FieldIndex::Tuples::iterator FieldIndex::tuple_of(Tuples &tuples, const FieldTuple::Parts &parts,
                                                  FieldHeaders headers)
{
    return std::find_if(tuples.begin(), tuples.end(),
                        [&](const FieldTuple &each) { return each.is_of(parts, headers); });
}

void FieldIndex::sort_in(Tuples &tuples, Tuples::iterator changed)
{
    const auto comes_before = [&](const FieldTuple &each) {
        return each.highest_priority() >= changed->highest_priority();
    };
    const auto place = std::partition_point(tuples.begin(), changed, comes_before);
    if (place != changed) {
        std::rotate(place, changed, changed + 1);
        return;
    }
    std::rotate(changed, changed + 1, std::partition_point(changed + 1, tuples.end(), comes_before));
}

void FieldIndex::take(FieldRule *rule, Found &found) const
{
    for (; rule != nullptr; rule = rule->next_group) {
        FieldRule *&best = found.rules_[rule->group];
        found.lacking_ -= best == nullptr;
        best = best == nullptr || rule->wins_over(*best) ? rule : best;
    }
    if (found.lacking_ == 0) {
        found.least_ = INT_MAX;
        for (std::size_t group = 0; group < groups_.size(); ++group) {
            found.least_ = std::min(found.least_, found.rules_[group]->priority);
        }
    }
}

void FieldIndex::add(FieldTable &table, FieldRule &rule)
{
    if (rule.pattern.matches_none) {
        return;
    }
    if (table.is_empty()) {
        table.number_ =
            static_cast<unsigned>(std::find(groups_.begin(), groups_.end(), nullptr) - groups_.begin());
        if (table.number_ == groups_.size()) {
            groups_.push_back(nullptr);
        }
    }
    rule.group = table.number_;
    Tuples &tuples = tuples_with(rule.pattern.mask);
    const FieldHeaders headers = rule.pattern.value.headers;
    FieldTuple::Parts parts = FieldTuple::parts_of(rule.pattern.mask);
    auto tuple = tuple_of(tuples, parts, headers);
    if (tuple == tuples.end()) {
        tuple = tuples.emplace(tuple, std::move(parts), headers);
    }
    tuple->add(rule);
    ++table.rules_;
    groups_[table.number_] = &table;
    sort_in(tuples, tuple);
}

void FieldIndex::remove(FieldTable &table, FieldRule &rule)
{
    if (rule.pattern.matches_none) {
        return;
    }
    Tuples &tuples = tuples_with(rule.pattern.mask);
    const auto tuple = tuple_of(tuples, FieldTuple::parts_of(rule.pattern.mask), rule.pattern.value.headers);
    tuple->remove(rule);
    if (tuple->is_empty()) {
        tuples.erase(tuple);
    } else {
        sort_in(tuples, tuple);
    }
    if (--table.rules_ == 0) {
        groups_[table.number_] = nullptr;
        while (!groups_.empty() && groups_.back() == nullptr) {
            groups_.pop_back();
        }
    }
}

}  // namespace sim
