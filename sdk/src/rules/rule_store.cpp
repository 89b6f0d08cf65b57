#include "rule_store.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>
#include <vector>

namespace sim {

namespace {

/// The part of a record that refers to something; empty if it is all zero, or not there.
std::string referring_part(const rules::Reference &reference, const std::string &key,
                           const std::string &value)
{
    const std::string &bytes = reference.in_key ? key : value;
    if (reference.offset + reference.size > bytes.size()) {
        return "";
    }
    const std::string part = bytes.substr(reference.offset, reference.size);
    return part.find_first_not_of('\0') == std::string::npos ? "" : part;
}

bool refers_to(const rules::Table &from, const std::string &key, const std::string &value,
               const std::string &table, const std::string &named)
{
    for (std::size_t i = 0; i < from.reference_count; ++i) {
        const rules::Reference &reference = from.references[i];
        if (table == reference.table && referring_part(reference, key, value) == named) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool KeyOrder::operator()(const std::string &a, const std::string &b) const
{
    auto less = [](char x, char y) { return static_cast<unsigned char>(x) < static_cast<unsigned char>(y); };
    return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend(), less);
}

const RuleStore::Records &RuleStore::records(const std::string &table) const
{
    static const Records none;
    const auto kept = tables_.find(table);
    return kept != tables_.end() ? kept->second.records : none;
}

const std::string *RuleStore::find(const std::string &table, const std::string &key) const
{
    const Records &all = records(table);
    const auto found = all.find(key);
    return found != all.end() ? &found->second : nullptr;
}

int RuleStore::uses(const std::string &table, const std::string &key) const
{
    const auto kept = tables_.find(table);
    if (kept == tables_.end()) {
        return 0;
    }
    const auto count = kept->second.uses.find(key);
    return count != kept->second.uses.end() ? count->second : 0;
}

int RuleStore::uses_by(const std::string &referring, const std::string &table, const std::string &key) const
{
    const auto from = tables_.find(referring);
    if (from == tables_.end() || from->second.table == nullptr) {
        return 0;
    }
    const Kept &kept = from->second;
    return static_cast<int>(std::count_if(kept.records.begin(), kept.records.end(), [&](const auto &record) {
        return refers_to(*kept.table, record.first, record.second, table, key);
    }));
}

/// use(table) for each that the table owns.
template <class Use>
void RuleStore::for_each_owned(const rules::Table &table, Use use) const
{
    std::istringstream owned(table.owned);
    for (std::string name; owned >> name;) {
        use(name);
    }
}

int RuleStore::uses_by_others(const rules::Table &table, const std::string &key) const
{
    int count = uses(table.name, key);
    for_each_owned(table, [&](const std::string &name) { count -= uses_by(name, table.name, key); });
    return count;
}

std::set<std::int32_t> RuleStore::ids(const std::string &table, std::size_t size) const
{
    std::set<std::int32_t> found;
    for (const auto &record : records(table)) {
        std::int32_t id = 0;
        std::memcpy(&id, record.first.data() + record.first.size() - size, size);
        found.insert(id);
    }
    return found;
}

bool RuleStore::has_gport(bcm_gport_t gport) const
{
    return std::any_of(tables_.begin(), tables_.end(), [&](const auto &named) {
        const rules::Table *table = named.second.table;
        return table != nullptr && BCM_GPORT_TYPE(table->first_id) == BCM_GPORT_TYPE(gport)
               && ids(table->name, sizeof gport).count(gport) != 0;
    });
}

void RuleStore::put(const rules::Table &table, const std::string &key, const std::string &value)
{
    // All memory first: where it is short, everything stays as it is.
    std::vector<int *> uses;
    for (std::size_t i = 0; i < table.reference_count; ++i) {
        const std::string part = referring_part(table.references[i], key, value);
        if (!part.empty() && table.references[i].exists == nullptr) {
            uses.push_back(&tables_[table.references[i].table].uses[part]);
        }
    }
    Kept &kept = tables_[table.name];
    kept.table = &table;
    std::string copy = value;
    const auto [record, is_new] = kept.records.try_emplace(key);
    if (!is_new) {
        release(table, key, record->second);
    }
    record->second.swap(copy);
    for (int *use : uses) {
        ++*use;
    }
    kept.tell();
}

void RuleStore::release(const rules::Table &table, const std::string &key, const std::string &value)
{
    for (std::size_t i = 0; i < table.reference_count; ++i) {
        const std::string part = referring_part(table.references[i], key, value);
        if (!part.empty() && table.references[i].exists == nullptr) {
            --tables_[table.references[i].table].uses[part];
        }
    }
}

RuleStore::Records::iterator RuleStore::erase(Kept &kept, const rules::Table &table, Records::iterator record)
{
    for_each_owned(table, [&](const std::string &name) {
        const auto owned = tables_.find(name);
        if (owned != tables_.end() && owned->second.table != nullptr) {
            const rules::Table &of_them = *owned->second.table;
            erase_all(of_them, [&](const std::string &key, const std::string &value) {
                return refers_to(of_them, key, value, table.name, record->first);
            });
        }
    });
    release(table, record->first, record->second);
    const auto next = kept.records.erase(record);
    kept.tell();
    return next;
}

bool RuleStore::erase(const rules::Table &table, const std::string &key)
{
    const auto kept = tables_.find(table.name);
    if (kept == tables_.end()) {
        return false;
    }
    const auto record = kept->second.records.find(key);
    if (record == kept->second.records.end()) {
        return false;
    }
    erase(kept->second, table, record);
    return true;
}

void RuleStore::erase_all(const rules::Table &table, const Meant &meant)
{
    const auto kept = tables_.find(table.name);
    if (kept == tables_.end()) {
        return;
    }
    Records &records = kept->second.records;
    for (auto record = records.begin(); record != records.end();) {
        record =
            meant(record->first, record->second) ? erase(kept->second, table, record) : std::next(record);
    }
}

void RuleStore::keeps_functions(const rules::Table &table)
{
    Kept &kept = tables_[table.name];
    kept.table = &table;
    kept.has_functions = true;
}

void RuleStore::forget_functions()
{
    for (auto &[name, kept] : tables_) {
        if (kept.has_functions) {
            erase_all(*kept.table, [](const std::string &, const std::string &) { return true; });
        }
    }
}

void RuleStore::watch(const std::string &table, void (*changed)(void *datum), void *datum)
{
    Kept &kept = tables_[table];
    kept.changed = changed;
    kept.datum = datum;
}

void RuleStore::initialise(const std::string &module)
{
    empty(module);
    detached_.erase(module);
}

void RuleStore::detach(const std::string &module)
{
    detached_.insert(module);
    empty(module);
}

void RuleStore::empty(const std::string &module)
{
    for (auto &[name, kept] : tables_) {
        if (kept.table != nullptr && kept.table->module == module) {
            erase_all(*kept.table, [](const auto &...) { return true; });
        }
    }
}

}  // namespace sim
