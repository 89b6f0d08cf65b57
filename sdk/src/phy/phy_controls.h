/// Control selectors: settings that are only kept, and those that stand for a PHY's state or change it.
#pragma once

#include "phy_link.h"

#include <soc/error.h>

namespace sim {

/// Whose control it is. Lane -1: all of them; read, the first.
struct ControlPlace {
    PhyPort &port;
    Phy &phy;
    PhySide &side;
    int lane;

    bool is_lane() const { return lane >= -1 && lane < phy.kind.lanes; }
    int first_lane() const { return lane < 0 ? 0 : lane; }
};

/// SOC_E_PARAM for what is no selector, no lane or too much, SOC_E_UNAVAIL for what this PHY has not.
int set_control(const ControlPlace &place, int selector, uint32 value);
int get_control(const ControlPlace &place, int selector, uint32 *value);

/// A setting that is only kept.
struct Setting {
    int selector;
    unsigned kinds;  ///< set of on_serdes, on_copper
    bool per_lane;
    uint32 at_reset;
    long long least, most;  ///< below 0: two's complement
};

constexpr unsigned on_serdes = 1, on_copper = 2, on_both = 3;

/// Null if that selector is none.
const Setting *setting_of(int selector);

/// Its value on a lane of the side; 0 on a PHY that has it not.
uint32 setting_value(const Phy &phy, const PhySide &side, int lane, int selector);

/// A control that stands for the PHY's state: null functions for what can not be read or set.
struct StateControl {
    int selector;
    unsigned kinds;
    uint32 (*read)(const ControlPlace &place);
    int (*write)(const ControlPlace &place, uint32 value);
};

const StateControl *state_control_of(int selector);

/// Whether it is a counter that is 0 after it was read.
bool begins_anew_when_read(int selector);

inline unsigned kind_bit(const Phy &phy)
{
    return &phy.kind == &serdes_kind ? on_serdes : on_copper;
}

bool has_power(const Phy &phy);

/// Whether a test or a lane that is off keeps the line from having a link.
bool disturbs_line(const Phy &phy);

}  // namespace sim
