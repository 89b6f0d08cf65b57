#include "l2_rows.h"

namespace sim {

void L2Rows::release(std::size_t row)
{
    rows_.erase(keys_[row]);
    keys_[row] = 0;
}

void L2Rows::follow(L2Table &table)
{
    if (!is_stale_) {
        return;
    }
    keys_.resize(count);
    for (std::size_t row = 0; row < count; ++row) {
        if (keys_[row] != 0 && table.find(keys_[row]) == L2Table::none) {
            release(row);
        }
    }
    std::size_t row = 0;
    table.traverse([&](std::size_t position) {
        const L2Key key = table.key(position);
        if (rows_.count(key) != 0) {
            return 0;
        }
        while (row < count && keys_[row] != 0) {
            ++row;
        }
        if (row == count) {
            return -1;
        }
        keys_[row] = key;
        rows_[key] = row;
        return 0;
    });
    is_stale_ = false;
}

std::size_t L2Rows::position(L2Table &table, std::size_t row)
{
    follow(table);
    return keys_[row] != 0 ? table.find(keys_[row]) : L2Table::none;
}

void L2Rows::put(L2Table &table, L2Key key, std::size_t row)
{
    follow(table);
    const auto other = rows_.find(key);
    if (other != rows_.end()) {
        release(other->second);
    }
    if (keys_[row] != 0) {
        release(row);
    }
    keys_[row] = key;
    rows_[key] = row;
}

}  // namespace sim
