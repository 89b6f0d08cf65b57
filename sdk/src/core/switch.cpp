#include "switch.h"

#include "kept_units.h"

#include <utility>
#include <vector>

namespace sim {

namespace {

/// Where a unit can be attached.
struct Place {
    RoomStates lasting;
    std::unique_ptr<Switch> attached;
    std::unique_ptr<Switch> kept;  ///< for attach_kept
};

using Places = std::array<Place, unit_max>;

Places *with_first_attached()
{
    auto *places = new Places;
    Place &first = places->front();
    first.attached = std::make_unique<Switch>(0, first.lasting);
    return places;
}

/// The place of a unit, or null if there can be no such unit.
Place *place_of(int unit)
{
    // Made on first use, so that it is there for other libraries' start-up code too; never destroyed, so
    // that it is still there for their clean-up.
    static Places *places;
    if (places == nullptr) {
        places = with_first_attached();
    }
    return unit >= 0 && unit < unit_max ? &(*places)[static_cast<std::size_t>(unit)] : nullptr;
}

/// Switches without a unit that somebody may still be working on. Never destroyed, as above.
std::vector<std::unique_ptr<Switch>> *retired_switches = nullptr;

void put(int unit, Place &place, std::unique_ptr<Switch> made)
{
    SwitchesInUse::retire(place.attached);
    place.attached = std::move(made);
    switches_seen[static_cast<std::size_t>(unit)] = place.attached.get();
}

}  // namespace

Switch::Switch(int unit_number, RoomStates &lasting) : unit(unit_number)
{
    for (std::size_t room = 0; room < room_count; ++room) {
        const RoomMaker &maker = room_makers[room];
        std::unique_ptr<RoomState> &state = maker.lasts ? lasting[room] : own_[room];
        if (state == nullptr) {
            state = maker.make(*this);
        }
        states_[room] = state.get();
    }
}

void Switch::start()
{
    for (RoomState *state : states_) {
        state->start(*this);
    }
}

void Switch::stop()
{
    for (RoomState *state : states_) {
        state->stop(*this);
    }
}

void Switch::forget_functions()
{
    for (RoomState *state : states_) {
        state->forget_functions(*this);
    }
}

void Switch::retire()
{
    for (const std::unique_ptr<RoomState> &state : own_) {
        if (state != nullptr) {
            state->retire();
        }
    }
}

std::array<Switch *, unit_max> switches_seen = {};

Switch *attached_at_first_sight(int unit)
{
    const Place *place = place_of(unit);
    if (place == nullptr || place->attached == nullptr) {
        return nullptr;
    }
    return switches_seen[static_cast<std::size_t>(unit)] = place->attached.get();
}

bool attach(int unit)
{
    const UnitsLock lock;
    Place *place = place_of(unit);
    if (place != nullptr) {
        place->kept.reset();
        put(unit, *place, std::make_unique<Switch>(unit, place->lasting));
        try {
            place->attached->start();
        } catch (...) {
            detach(unit);
            throw;
        }
    }
    return place != nullptr;
}

bool detach(int unit)
{
    const UnitsLock lock;
    Place *place = place_of(unit);
    const bool was_attached = place != nullptr && place->attached != nullptr;
    if (was_attached) {
        place->attached->stop();
        put(unit, *place, nullptr);
    }
    return was_attached;
}

void detach_and_keep(int unit)
{
    const UnitsLock lock;
    Place *place = place_of(unit);
    place->kept = std::move(place->attached);
    switches_seen[static_cast<std::size_t>(unit)] = nullptr;
}

bool attach_kept(int unit)
{
    const UnitsLock lock;
    Place *place = place_of(unit);
    const bool is_kept = place != nullptr && place->kept != nullptr;
    if (is_kept) {
        put(unit, *place, std::move(place->kept));
    }
    return is_kept;
}

void forget_kept(int unit)
{
    const UnitsLock lock;
    if (Place *place = place_of(unit)) {
        place->kept.reset();
    }
}

int SwitchesInUse::uses_ = 0;
bool SwitchesInUse::retired_ = false;

void SwitchesInUse::retire(std::unique_ptr<Switch> &old)
{
    if (old != nullptr && uses_ != 0) {
        old->retire();
        if (retired_switches == nullptr) {
            retired_switches = new std::vector<std::unique_ptr<Switch>>;
        }
        retired_switches->push_back(std::move(old));
        retired_ = true;
    }
    old.reset();
}

void SwitchesInUse::forget_retired()
{
    retired_ = false;
    retired_switches->clear();
}

}  // namespace sim
