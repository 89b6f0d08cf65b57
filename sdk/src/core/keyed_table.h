/// A small table of records by key, as the chip's tables of objects are.
#pragma once

#include <bcm/error.h>

#include <cstddef>
#include <map>
#include <utility>

namespace sim {

/// Records of one kind in ascending order of their keys, at most capacity of them.
template <class Key, class Record>
class KeyedTable {
public:
    explicit KeyedTable(std::size_t capacity) : capacity_(capacity) {}

    std::size_t capacity() const { return capacity_; }

    /// Null if there is none; valid until the table is changed.
    const Record *find(const Key &key) const
    {
        const auto found = records_.find(key);
        return found != records_.end() ? &found->second : nullptr;
    }

    /// Copies a record out. BCM_E_NOT_FOUND leaves *record alone.
    int get(const Key &key, Record *record) const
    {
        const Record *found = find(key);
        if (found == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        *record = *found;
        return BCM_E_NONE;
    }

    /// Enters or replaces. BCM_E_FULL.
    int put(const Key &key, const Record &record)
    {
        if (records_.size() >= capacity_ && records_.count(key) == 0) {
            return BCM_E_FULL;
        }
        records_.insert_or_assign(key, record);
        return BCM_E_NONE;
    }

    /// BCM_E_NOT_FOUND if there is none.
    int erase(const Key &key) { return records_.erase(key) != 0 ? BCM_E_NONE : BCM_E_NOT_FOUND; }

    void clear() { records_.clear(); }

    /// Key of the first record, in order, for which test(record) holds; null if there is none.
    template <class Test>
    const Key *find_if(Test test) const
    {
        for (const auto &[key, record] : records_) {
            if (test(record)) {
                return &key;
            }
        }
        return nullptr;
    }

    /// Calls visit(key, record) with copies of each; stops at a negative result and returns it. visit may
    /// change the table.
    template <class Visit>
    int traverse(Visit visit) const
    {
        auto next = records_.begin();
        while (next != records_.end()) {
            const Key key = next->first;
            Record record = next->second;
            const int rc = visit(key, record);
            if (rc < 0) {
                return rc;
            }
            next = records_.upper_bound(key);
        }
        return BCM_E_NONE;
    }

private:
    std::size_t capacity_;
    std::map<Key, Record> records_;
};

/// Objects that are known by an id from 1 upwards.
template <class Record>
class ObjectTable : public KeyedTable<int, Record> {
public:
    using KeyedTable<int, Record>::KeyedTable;

    /// Enters a record. with_id: under *id, which must be free; replace: in place of the one under *id;
    /// neither: under the lowest free id, which it writes to *id.
    /// BCM_E_PARAM: id below 1; BCM_E_EXISTS, BCM_E_NOT_FOUND, BCM_E_FULL.
    int create(const Record &record, bool with_id, bool replace, int *id)
    {
        int chosen = 1;
        if (with_id || replace) {
            chosen = *id;
            if (chosen < 1) {
                return BCM_E_PARAM;
            }
            const bool exists = this->find(chosen) != nullptr;
            if (exists != replace) {
                return exists ? BCM_E_EXISTS : BCM_E_NOT_FOUND;
            }
        } else {
            while (this->find(chosen) != nullptr) {
                ++chosen;
            }
        }
        const int rc = this->put(chosen, record);
        if (rc == BCM_E_NONE) {
            *id = chosen;
        }
        return rc;
    }
};

}  // namespace sim
