/// The units of the process and what each is made of.
///
/// A unit is made of its rooms' states. This file knows that there are rooms and how a state lives; what is
/// in one, only its own room knows. One thread at a time works on units: units_lock.h.
#pragma once

#include "units_lock.h"

#include <array>
#include <cstddef>
#include <memory>

namespace sim {

/// The rooms that keep something of a unit, lower ones first. States are made and started in this order.
enum class Room {
    rules,
    events,
    chip,
    phy,
    mdio,
    vlan,
    port,
    tags,
    trunk,
    l2,
    l3,
    mirror,
    policer,
    queue,
    field,
    path,
    cpu,
    count
};

constexpr std::size_t room_count = static_cast<std::size_t>(Room::count);

class Switch;

/// What a room keeps of one unit. A room derives one class from it, which has `static constexpr Room room`,
/// and whose constructor makes it as it is when new; the states of lower rooms are there by then.
class RoomState {
public:
    RoomState() = default;
    virtual ~RoomState() = default;
    RoomState(const RoomState &) = delete;
    RoomState &operator=(const RoomState &) = delete;

    /// The unit has been attached, or attached afresh. Not called for the unit that is there from the start.
    virtual void start(Switch &) {}

    /// The unit is about to be detached.
    virtual void stop(Switch &) {}

    /// Who has used the unit is gone, while it goes on as it is: functions that were registered are not called any more.
    virtual void forget_functions(Switch &) {}

    /// The unit is gone while functions still work on it: their loops come to an end, and nobody is told.
    virtual void retire() {}
};

using RoomStates = std::array<std::unique_ptr<RoomState>, room_count>;

/// How a room's state is made.
struct RoomMaker {
    /// Whether it is the unit's hardware, which is still there after the unit was detached.
    bool lasts;
    std::unique_ptr<RoomState> (*make)(Switch &);
};

/// By room. The topmost room, which knows them all, defines it.
extern const std::array<RoomMaker, room_count> room_makers;

/// One attached unit.
class Switch {
public:
    /// With fresh states, but for those in `lasting`, which gets what it lacks.
    Switch(int unit_number, RoomStates &lasting);

    template <class State>
    State &of()
    {
        return static_cast<State &>(*states_[static_cast<std::size_t>(State::room)]);
    }
    template <class State>
    const State &of() const
    {
        return static_cast<const State &>(*states_[static_cast<std::size_t>(State::room)]);
    }

    void start();
    void stop();
    void forget_functions();
    void retire();

    const int unit;

private:
    RoomStates own_;
    std::array<RoomState *, room_count> states_ = {};
};

/// Units are 0..unit_max - 1. Unit 0 is attached from the start.
constexpr int unit_max = 16;

/// The switches that are attached, as far as anybody has asked: see attached().
extern std::array<Switch *, unit_max> switches_seen;
Switch *attached_at_first_sight(int unit);

/// The switch attached as that unit, or null.
inline Switch *attached(int unit)
{
    Switch *sw = unit >= 0 && unit < unit_max ? switches_seen[static_cast<std::size_t>(unit)] : nullptr;
    return sw != nullptr ? sw : attached_at_first_sight(unit);
}

/// Attaches a switch as it is when new, in place of one that was there. False if there can be no such unit.
bool attach(int unit);
/// False if none is attached.
bool detach(int unit);

/// While there is one, a switch that is detached or replaced stays in memory, retired: a callback may do that to the
/// switch whose function calls it. Only who holds the lock makes one.
class SwitchesInUse {
public:
    explicit SwitchesInUse(const UnitsLock &) { ++uses_; }
    ~SwitchesInUse()
    {
        if (--uses_ == 0 && retired_) {
            forget_retired();
        }
    }
    SwitchesInUse(const SwitchesInUse &) = delete;
    SwitchesInUse &operator=(const SwitchesInUse &) = delete;

    /// Whether there is one, of this thread if units are shared.
    static bool any() { return uses_ != 0; }

    /// Destroys it, or keeps it as long as it is in use.
    static void retire(std::unique_ptr<Switch> &old);

private:
    static void forget_retired();

    static int uses_;
    static bool retired_;  ///< whether there are any
};

}  // namespace sim
