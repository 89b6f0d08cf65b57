#include "rule_store.h"

#include <algorithm>
#include <iterator>

namespace sim {

bool KeyOrder::operator()(const std::string &a, const std::string &b) const
{
    auto less = [](char x, char y) { return static_cast<unsigned char>(x) < static_cast<unsigned char>(y); };
    return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend(), less);
}

const std::string *RuleStore::find(const std::string &table, const std::string &key) const
{
    const auto records = tables_.find(table);
    if (records == tables_.end()) {
        return nullptr;
    }
    const auto found = records->second.find(key);
    return found != records->second.end() ? &found->second : nullptr;
}

void RuleStore::put(const std::string &table, const std::string &key, const std::string &value)
{
    // A copy first: where memory is short, the record stays as it is.
    tables_[table].insert_or_assign(key, std::string(value));
}

bool RuleStore::erase(const std::string &table, const std::string &key)
{
    const auto records = tables_.find(table);
    return records != tables_.end() && records->second.erase(key) != 0;
}

void RuleStore::erase_all(const std::string &table, const std::string &key_begin)
{
    const auto records = tables_.find(table);
    if (records == tables_.end()) {
        return;
    }
    for (auto record = records->second.begin(); record != records->second.end();) {
        const bool meant = record->first.compare(0, key_begin.size(), key_begin) == 0;
        record = meant ? records->second.erase(record) : std::next(record);
    }
}

}  // namespace sim
