#include "chip.h"

#include "chip_observer.h"
#include "chip_start.h"
#include "soc_control.h"
#include "switch.h"

namespace sim {

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
    return stored(place.to_read().address(), place.reg->words(), words_of(place.reg->reset));
}

Words Chip::read(const MemoryPlace &place) const
{
    return stored(place.to_read().address(), place.memory->words(), Words());
}

void Chip::write(const RegisterPlace &place, const Words &value)
{
    const Words writable = mask_of(place.reg->layout, SOCF_RO);
    RegisterPlace one = place.to_read();
    const int last = place.is_broadcast() ? place.block - 1 : one.block;
    for (; one.block <= last; ++one.block) {
        const Words now = merge(read(one), value, writable);
        store(one.address(), place.reg->words(), now);
        tell_written(unit, one, now);
    }
}

void Chip::write(const MemoryPlace &place, const Words &value)
{
    const Words entry = merge(Words(), value, mask_of(place.memory->layout, SOCF_RO));
    MemoryPlace one = place.to_read();
    const int last = place.is_broadcast() ? place.block - 1 : one.block;
    for (; one.block <= last; ++one.block) {
        store(one.address(), place.memory->words(), entry);
        tell_written(unit, one, entry);
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

void Chip::stop(Switch &)
{
    publish_control(unit, false);
    running = true;
    stand_ins = {};
    snoops.clear();
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
