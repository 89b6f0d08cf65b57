/// Entries of the chip's memories.
#include "begin.h"
#include "chip.h"
#include "chip_observer.h"
#include "sim_memory.h"

#include <sim/memory.h>

#include <algorithm>

using namespace sim;

namespace {

/// Where the entry is: SOC_E_PARAM.
auto entry_at(int memory, unsigned int array, int copy, int index)
{
    return [=](Switch &, auto next) -> int {
        MemoryPlace place;
        return locate(memory_at(memory), array, copy, index, &place) == SOC_E_NONE
                   ? next(place)
                   : static_cast<int>(SOC_E_PARAM);
    };
}

}  // namespace

extern "C" {

int sim_soc_mem_array_read(int unit, int mem, unsigned int array_index, int copyno, int index,
                           void *entry_data)
{
    return begin(unit, running_chip, given(entry_data), entry_at(mem, array_index, copyno, index))
        .then([&](Switch &sw, Chip &chip, MemoryPlace place) -> int {
            const soc_mem_array_read_f stand_in = chip.stand_ins.mem_read;
            if (stand_in != nullptr && !chip.in_stand_in) {
                const Marked marked(chip.in_stand_in);
                return stand_in(unit, mem, array_index, copyno, index, entry_data);
            }
            notice_damage(sw, place);
            if (attached(unit) != &sw) {
                return SOC_E_UNIT;
            }
            Words entry = {};
            if (!answered(unit, place, &entry)) {
                entry = chip.read(place);
            }
            tell_read(unit, place, entry);
            std::copy_n(entry.begin(), place.memory->words(), static_cast<uint32 *>(entry_data));
            return static_cast<int>(SOC_E_NONE);
        });
}

int sim_soc_mem_array_write(int unit, int mem, unsigned int array_index, int copyno, int index,
                            void *entry_data)
{
    return begin(unit, running_chip, given(entry_data), entry_at(mem, array_index, copyno, index))
        .then([&](Chip &chip, MemoryPlace place) {
            const soc_mem_array_write_f stand_in = chip.stand_ins.mem_write;
            if (stand_in != nullptr && !chip.in_stand_in) {
                const Marked marked(chip.in_stand_in);
                return stand_in(unit, mem, array_index, copyno, index, entry_data);
            }
            chip.write(place, words_of(static_cast<uint32 *>(entry_data), place.memory->words()));
            return static_cast<int>(SOC_E_NONE);
        });
}

int sim_soc_mem_read(int unit, int mem, int copyno, int index, unsigned int *entry_data)
{
    return sim_soc_mem_array_read(unit, mem, 0, copyno, index, entry_data);
}

int sim_soc_mem_write(int unit, int mem, int copyno, int index, unsigned int *entry_data)
{
    return sim_soc_mem_array_write(unit, mem, 0, copyno, index, entry_data);
}

uint32 sim_soc_mem_field32_get(int unit, int mem, unsigned int *entry_data, int field)
{
    const Memory *memory = chip_of(unit) == nullptr ? nullptr : memory_at(mem);
    const Field *found = memory == nullptr ? nullptr : memory->layout.find(field);
    return found == nullptr || entry_data == nullptr
               ? 0
               : field_of(words_of(entry_data, memory->words()), *found)[0];
}

int sim_memory_describe(int unit, int mem, sim_memory_t *memory)
{
    return begin(unit, given(memory), entry_at(mem, 0, 0, 0)).then([&](const MemoryPlace &place) {
        memory->name = place.memory->name;
        memory->block = place.block;
        memory->cores = block_of(place.memory->block).count;
        memory->base = place.address();
        memory->entry_words = static_cast<uint32>(place.memory->words());
        memory->entries = static_cast<uint32>(place.memory->entries);
        memory->arrays = static_cast<uint32>(place.memory->arrays);
    });
}

int sim_memory_damage(int unit, int mem, unsigned int array, int copy, int index)
{
    return begin(unit, running_chip, entry_at(mem, array, copy, index))
        .then([](Chip &chip, MemoryPlace place) { chip.damage(place); });
}

}  // extern "C"
