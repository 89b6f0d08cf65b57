#include "chip_observer.h"

#include "switch.h"

namespace sim {

namespace {

const sim_chip_observer_t nobody = {};
const sim_chip_observer_t *observer = &nobody;

sim_access_t access_to(int unit, const RegisterPlace &place)
{
    const RegisterPlace one = place.to_read();
    return {unit, 0, one.reg->id, one.address(), static_cast<uint32>(one.reg->words())};
}

sim_access_t access_to(int unit, const MemoryPlace &place)
{
    const MemoryPlace one = place.to_read();
    return {unit, 1, one.memory->id, one.address(), static_cast<uint32>(one.memory->words())};
}

using Told = void (*)(const sim_access_t *access, const uint32 *words);

template <class Place>
void tell(Told whom, int unit, const Place &place, const Words &words)
{
    if (whom != nullptr) {
        const sim_access_t access = access_to(unit, place);
        whom(&access, words.data());
    }
}

}  // namespace

void tell_written(int unit, const RegisterPlace &place, const Words &words)
{
    tell(observer->written, unit, place, words);
}

void tell_written(int unit, const MemoryPlace &place, const Words &words)
{
    tell(observer->written, unit, place, words);
}

void tell_read(int unit, const RegisterPlace &place, const Words &words)
{
    tell(observer->was_read, unit, place, words);
}

void tell_read(int unit, const MemoryPlace &place, const Words &words)
{
    tell(observer->was_read, unit, place, words);
}

bool answered(int unit, const MemoryPlace &place, Words *words)
{
    if (observer->answers == nullptr) {
        return false;
    }
    const sim_access_t access = access_to(unit, place);
    return observer->answers(&access, words->data()) != 0;
}

}  // namespace sim

extern "C" {

void sim_chip_observe(const sim_chip_observer_t *observer)
{
    // Makes the unit that is there from the start: what its chip is configured with was written before.
    sim::attached(0);
    sim::observer = observer != nullptr ? observer : &sim::nobody;
}

}  // extern "C"
