/// What is known of a table that functions are answered from by rule: generated from the interface files.
#pragma once

#include <bcm/switch_object.h>

#include <climits>
#include <cstddef>

namespace sim {
class Switch;
}

namespace rules {

struct Part {
    bool in_key;  ///< else in the value
    std::size_t offset, size;
};

/// A part of a record that names something else, which has to exist unless the part is zero: a record of
/// another table by its key, or what a room knows.
struct Reference : Part {
    constexpr Reference(Part part, const char *table_name, bool (*room)(sim::Switch &, const void *part))
        : Part(part), table(table_name), exists(room)
    {
    }

    const char *table;  ///< whose key it is; a record that is referred to cannot be removed
    bool (*exists)(sim::Switch &, const void *part);  ///< of a room, in place of a table
};

struct Table {
    static constexpr int no_object = -1;

    constexpr Table(const char *table_name, const char *module_name) : name(table_name), module(module_name)
    {
    }
    constexpr Table(const char *table_name, const char *module_name, int lowest_id, int record_max,
                    const Reference *all_references, std::size_t number_of_references,
                    const char *owned_tables, const Part *unique_parts = nullptr,
                    std::size_t number_of_unique = 0, int kind_of_object = no_object)
        : name(table_name),
          module(module_name),
          first_id(lowest_id),
          capacity(record_max),
          references(all_references),
          reference_count(number_of_references),
          owned(owned_tables),
          unique(unique_parts),
          unique_count(number_of_unique),
          object(kind_of_object)
    {
    }

    const char *name;
    const char *module;      ///< what is initialised and detached as one: the family
    int first_id = 1;        ///< of `capacity` ids that `create` chooses from
    int capacity = INT_MAX;  ///< records
    const Reference *references = nullptr;
    std::size_t reference_count = 0;
    const char *owned = "";  ///< tables, with spaces between, whose records go with the one they refer to
    const Part *unique = nullptr;  ///< what no two records have alike, all of it
    std::size_t unique_count = 0;
    int object = no_object;  ///< what an event names if there is no room: a bcm_switch_object_t
};

}  // namespace rules
