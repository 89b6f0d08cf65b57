/// What a unit is made of: the one place that knows all rooms.
#include "chip.h"
#include "cpu.h"
#include "events.h"
#include "field.h"
#include "l2.h"
#include "l3.h"
#include "mdio.h"
#include "mirror.h"
#include "path_state.h"
#include "phy.h"
#include "policer.h"
#include "port.h"
#include "queue.h"
#include "rule_store.h"
#include "tags.h"
#include "trunk.h"
#include "vlan.h"

#include <array>
#include <memory>

namespace sim {

namespace {

template <class State>
std::unique_ptr<RoomState> make(Switch &sw)
{
    if constexpr (std::is_constructible_v<State, Switch &>) {
        return std::make_unique<State>(sw);
    } else {
        return std::make_unique<State>();
    }
}

enum class Lifetime { attachment, hardware };

template <class State>
constexpr RoomMaker maker(Room room, Lifetime lifetime = Lifetime::attachment)
{
    return State::room == room ? RoomMaker{lifetime == Lifetime::hardware, make<State>}
                               : throw "a room's state is in the place of another";
}

}  // namespace

constexpr std::array<RoomMaker, room_count> room_makers = {
    maker<RuleState>(Room::rules),
    maker<EventState>(Room::events),
    maker<Chip>(Room::chip, Lifetime::hardware),
    maker<PhyUnit>(Room::phy, Lifetime::hardware),
    maker<MdioState>(Room::mdio),
    maker<VlanState>(Room::vlan),
    maker<PortState>(Room::port),
    maker<TagState>(Room::tags),
    maker<TrunkState>(Room::trunk),
    maker<L2State>(Room::l2),
    maker<L3State>(Room::l3),
    maker<MirrorState>(Room::mirror),
    maker<PolicerState>(Room::policer),
    maker<QueueState>(Room::queue),
    maker<FieldState>(Room::field),
    maker<PathState>(Room::path),
    maker<CpuState>(Room::cpu),
};

}  // namespace sim
