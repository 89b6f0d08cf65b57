/// The room of controls: settings that have a number. Some say what a room keeps already, in other words, and
/// are read and written there; the others are kept as the rules keep values.
#pragma once

#include "rules.h"

#include <algorithm>

namespace sim {

/// A control that another room keeps, by functions that check what they are given. Of a control of the unit,
/// `port` means nothing.
struct Tie {
    int control;
    int (*get)(int unit, int port, int *value);  ///< null: there is no such thing here, BCM_E_UNAVAIL
    int (*set)(int unit, int port, int value);
};

/// The controls of one kind.
struct Controls {
    rules::Table table;     ///< where those without a tie are kept
    int count;              ///< they are numbered from 0
    const Tie *ties_begin;  ///< the others
    const Tie *ties_end;

    /// BCM_E_PARAM for a control that is none.
    int get(int unit, int port, int control, int *value, rules::Arguments kept) const
    {
        const Tie *tie = tie_of(control);
        return !has(control)         ? rules::refuse(table, unit, kept)
               : tie == nullptr      ? rules::get(table, unit, kept)
               : tie->get == nullptr ? rules::unavailable(table, unit, kept)
                                     : tie->get(unit, port, value);
    }

    int set(int unit, int port, int control, int value, rules::Arguments kept) const
    {
        const Tie *tie = tie_of(control);
        return !has(control)         ? rules::refuse(table, unit, kept)
               : tie == nullptr      ? rules::set(table, unit, kept)
               : tie->set == nullptr ? rules::unavailable(table, unit, kept)
                                     : tie->set(unit, port, value);
    }

private:
    bool has(int control) const { return control >= 0 && control < count; }

    const Tie *tie_of(int control) const
    {
        const auto found =
            std::find_if(ties_begin, ties_end, [&](const Tie &tie) { return tie.control == control; });
        return found == ties_end ? nullptr : found;
    }
};

}  // namespace sim
