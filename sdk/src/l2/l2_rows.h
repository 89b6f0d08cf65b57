/// The rows of the chip's memory of addresses: which of the table's entries stands in which.
#pragma once

#include "l2_table.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace sim {

/// An entry has its row as long as it is in the table. Those that find none free are in no row until one is; which
/// they are is found out when somebody looks at a row.
class L2Rows {
public:
    static constexpr std::size_t count = 4096;

    /// The position of the entry in a row, or L2Table::none.
    std::size_t position(L2Table &table, std::size_t row);

    /// From now on the entry of that key, which is in the table, stands in that row, which is free or its own.
    void put(L2Table &table, L2Key key, std::size_t row);

    /// An entry has come or gone.
    void touch() { is_stale_ = true; }

private:
    void follow(L2Table &table);
    void release(std::size_t row);

    std::vector<L2Key> keys_;  // by row, 0 for none; empty until somebody looks
    std::unordered_map<L2Key, std::size_t> rows_;
    bool is_stale_ = true;
};

}  // namespace sim
