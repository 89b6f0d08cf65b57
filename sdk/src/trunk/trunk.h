/// The room of trunks: their members, and which of them a packet takes.
#pragma once

#include "lag_members.h"
#include "switch.h"
#include "trunk_selection.h"
#include "trunk_table.h"

namespace sim {

struct TrunkState : RoomState {
    static constexpr Room room = Room::trunk;

    explicit TrunkState(Switch &sw);

    bool initialised = true;
    TrunkTable trunks;
    LagMembers lags;
};

inline TrunkTable &trunks_of(Switch &sw)
{
    return sw.of<TrunkState>().trunks;
}
inline const TrunkTable &trunks_of(const Switch &sw)
{
    return sw.of<TrunkState>().trunks;
}

inline LagMembers &lags_of(Switch &sw)
{
    return sw.of<TrunkState>().lags;
}

}  // namespace sim
