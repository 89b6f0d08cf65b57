#include "chip.h"

#include "chip_observer.h"
#include "chip_state.h"
#include "chip_start.h"
#include "events.h"
#include "soc_control.h"
#include "switch.h"

namespace sim {

namespace {

/// With the unit's state in the fields that show it.
template <class Description>
Words with_state(int unit, const StateFields &fields, const Description &of, int place, Words value)
{
    // The chip is configured before there is a unit: what it is configured with shows no state.
    fields.each(of.id, [&](const StateField &field) {
        Switch *sw = attached(unit);
        Words state = {};
        if (sw != nullptr && field.get(*sw, place, &state)) {
            put_field(value, *of.layout.find(field.field), state);
        }
    });
    return value;
}

/// Without what the unit's state shows, which is kept there alone.
template <class Description>
Words without_state(int unit, const StateFields &fields, const Description &of, int place, Words value)
{
    fields.each(of.id, [&](const StateField &field) {
        Switch *sw = attached(unit);
        Words state = {};
        if (sw != nullptr && field.get(*sw, place, &state)) {
            put_field(value, *of.layout.find(field.field), Words());
        }
    });
    return value;
}

/// The unit's state becomes what the fields say, as far as that differs.
template <class Description>
void set_state(int unit, const StateFields &fields, const Description &of, int place, const Words &value)
{
    bool entry_is_set = false;
    fields.each(of.id, [&](const StateField &field) {
        Switch *sw = attached(unit);
        const Words wanted = field_of(value, *of.layout.find(field.field));
        Words state = {};
        if (sw == nullptr || (field.get(*sw, place, &state) && state == wanted)) {
            return;
        }
        if (field.set != nullptr) {
            field.set(*sw, place, wanted);
        } else if (field.set_entry != nullptr && !entry_is_set) {
            entry_is_set = true;
            field.set_entry(*sw, place, value);
        }
    });
}

}  // namespace

void reset_port_state(int unit)
{
    std::for_each(register_state.first, register_state.first + register_state.count,
                  [&](const StateField &field) {
                      const Register &reg = *register_at(field.of);
                      const Words value = field_of(words_of(reg.reset), *reg.layout.find(field.field));
                      for (int port = cpu_port; field.set != nullptr && port <= port_max; ++port) {
                          if (Switch *sw = attached(unit)) {
                              field.set(*sw, port, value);
                          }
                      }
                  });
}

Words Chip::stored(uint32 address, std::size_t count, const Words &after_reset) const
{
    Words value = after_reset;
    for (std::size_t word = 0; word < count; ++word) {
        const auto found = changed_.find(address + static_cast<uint32>(word));
        if (found != changed_.end()) {
            value[word] = found->second;
        }
    }
    return value;
}

void Chip::store(uint32 address, std::size_t count, const Words &value)
{
    for (std::size_t word = 0; word < count; ++word) {
        changed_[address + static_cast<uint32>(word)] = value[word];
    }
}

Words Chip::read(const RegisterPlace &place) const
{
    const Words value = stored(place.to_read().address(), place.reg->words(), words_of(place.reg->reset));
    return with_state(unit, register_state, *place.reg, place.port, value);
}

Words Chip::read(const MemoryPlace &place) const
{
    const Words value = stored(place.to_read().address(), place.memory->words(), Words());
    Words entry = with_state(unit, memory_state, *place.memory, place.index, value);
    entry[0] ^= is_damaged(place) ? 1 : 0;
    return entry;
}

void Chip::write(const RegisterPlace &place, const Words &value)
{
    const Words writable = mask_of(place.reg->layout, SOCF_RO);
    RegisterPlace one = place.to_read();
    const int last = place.is_broadcast() ? place.block - 1 : one.block;
    for (; one.block <= last; ++one.block) {
        const Words now = merge(read(one), value, writable);
        store(one.address(), place.reg->words(), now);
        set_state(unit, register_state, *place.reg, place.port, now);
        tell_written(unit, one, now);
    }
}

void Chip::write(const MemoryPlace &place, const Words &value)
{
    const Words entry = merge(Words(), value, mask_of(place.memory->layout, SOCF_RO));
    bool is_first = true;  // copies of one state
    MemoryPlace one = place.to_read();
    const int last = place.is_broadcast() ? place.block - 1 : one.block;
    for (; one.block <= last; ++one.block) {
        damaged_.erase(one.address());
        store(one.address(), place.memory->words(), entry);
        if (is_first) {
            set_state(unit, memory_state, *place.memory, place.index, entry);
        }
        is_first = false;
        store(one.address(), place.memory->words(),
              without_state(unit, memory_state, *place.memory, place.index, entry));
        tell_written(unit, one, entry);
    }
}

void Chip::reset()
{
    changed_.clear();
    damaged_.clear();
}

bool Chip::is_damaged(const MemoryPlace &place) const
{
    return !damaged_.empty() && damaged_.count(place.to_read().address()) != 0;
}

void Chip::damage(const MemoryPlace &place)
{
    const MemoryPlace one = place.to_read();
    damaged_.emplace(one.address(), one);
    if (scan_interval_ != 0 && clock_mode == simClockStands) {
        scan_damaged();
    }
}

void Chip::scan_memories_every(int microseconds)
{
    scan_interval_ = microseconds;
    if (scan_ == nullptr) {
        scan_ = std::make_unique<Timer>([unit = unit] {
            if (Chip *chip = chip_of(unit)) {
                chip->scan_damaged();
            }
        });
    }
    if (microseconds == 0) {
        scan_->stop();
    } else {
        scan_->repeat(static_cast<Time>(microseconds) * nanoseconds_per_microsecond);
    }
}

void Chip::scan_damaged()
{
    const std::map<uint32, MemoryPlace> found = damaged_;
    for (const auto &[address, place] : found) {
        // Who was told of one before may have done anything.
        Switch *sw = attached(unit);
        if (sw == nullptr || !running) {
            break;
        }
        notice_damage(*sw, place);
    }
}

void notice_damage(Switch &sw, const MemoryPlace &place)
{
    Chip &chip = chip_of(sw);
    Event event = {bcmSwitchEventParityError, bcmSwitchEventErrorMemParity,
                   static_cast<uint32>(place.memory->id), static_cast<uint32>(place.index)};
    if (!chip.is_damaged(place) || !is_looked_at(sw, event)) {
        return;
    }
    const bool corrects = events_of(sw).control(event.event, event.arg1, bcmSwitchEventControlCorrect) != 0;
    if (corrects) {
        chip.correct(place);
    }
    raise(sw, event);
    if (corrects && attached(sw.unit) == &sw) {
        event.event = bcmSwitchEventParityCorrected;
        raise(sw, event);
    }
}

Chip::Chip(Switch &sw) : unit(sw.unit)
{
    configure(*this);
}

void Chip::start(Switch &)
{
    reset();
    configure(*this);
    publish_control(unit, true);
}

void Chip::stop(Switch &sw)
{
    publish_control(unit, false);
    running = true;
    forget_functions(sw);
    scan_memories_every(0);
}

bool has_running_chip(Switch &sw)
{
    return chip_of(sw).running;
}

Chip *chip_of(int unit)
{
    Switch *sw = attached(unit);
    return sw != nullptr ? &chip_of(*sw) : nullptr;
}

const Field *field_in(int unit, soc_reg_t reg, soc_field_t field)
{
    const Register *found = chip_of(unit) == nullptr ? nullptr : register_at(reg);
    return found == nullptr ? nullptr : found->layout.find(field);
}

}  // namespace sim
