/// Fields of registers and memories that other rooms keep.
///
/// One description serves both directions: who reads the field sees the unit's state, and what is written to it changes
/// that state. All other fields, and entries for things that are not there, are kept by the chip.
#pragma once

#include "chip_words.h"
#include "switch.h"

#include <soc/field_ids.h>

#include <algorithm>
#include <cstddef>

namespace sim {

struct StateField {
    int of;  ///< soc_reg_t or soc_mem_t
    soc_field_t field;

    /// The value at a register's port or a memory's index; false: there is nothing, and the chip keeps what is written.
    bool (*get)(Switch &sw, int place, Words *value);

    /// A value that cannot be is left out. Null: of a field that is only read, or is part of what follows.
    void (*set)(Switch &sw, int place, const Words &value);

    /// Of what takes several fields at once: is given the whole entry when this one differs.
    void (*set_entry)(Switch &sw, int place, const Words &entry) = nullptr;
};

/// In ascending order of `of`; fields of one in the order in which they are set.
struct StateFields {
    const StateField *first;
    std::size_t count;

    /// use(const StateField &) for each of one register or memory.
    template <class Use>
    void each(int of, Use use) const
    {
        const StateField *const last = first + count;
        const StateField *field =
            std::lower_bound(first, last, of, [](const StateField &one, int id) { return one.of < id; });
        for (; field != last && field->of == of; ++field) {
            use(*field);
        }
    }
};

template <std::size_t count>
constexpr bool are_in_order(const StateField (&fields)[count])
{
    for (std::size_t i = 1; i < count; ++i) {
        if (fields[i].of < fields[i - 1].of) {
            return false;
        }
    }
    return true;
}

/// The topmost rooms, which know what is kept where, define them.
extern const StateFields register_state;
extern const StateFields memory_state;

/// What registers of ports show becomes what they have after a reset.
void reset_port_state(int unit);

}  // namespace sim
