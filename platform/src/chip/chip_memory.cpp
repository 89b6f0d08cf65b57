#include "quorel_api/chip_memory.h"

extern "C" {
#include <sim/memory.h>
#include <soc/error.h>
}

using Hardware::ChipAddress;
using Hardware::ChipMemory;

namespace {

constexpr U32 word_bytes = 4;
constexpr int blocks_max = 3;  // one per core, and the one that stands for both
constexpr U32 block_step = 1u << 26;

U32 array_words(const sim_memory_t &memory)
{
    return memory.entry_words * memory.entries;
}

/// The one of an array of memories in which an address lies, and the address of its first entry.
bool findArray(const sim_memory_t &memory, U32 address, int *arrayIndex, U32 *base)
{
    for (int block = 0; block < (memory.cores > 1 ? blocks_max : 1); ++block) {
        U32 first = memory.base + static_cast<U32>(block) * block_step;
        U32 offset = address - first;
        if (offset < array_words(memory) * memory.arrays) {
            *arrayIndex = static_cast<int>(offset / array_words(memory));
            *base = first + static_cast<U32>(*arrayIndex) * array_words(memory);
            return true;
        }
    }
    return false;
}

ChipMemory::Ptr describe(int unit, int mem, const sim_memory_t &memory, int arrayIndex, U32 base)
{
    const int core = static_cast<int>((base - memory.base) / block_step);
    return new ChipMemory(memory.name, unit, mem, core, arrayIndex, base, memory.entry_words * word_bytes,
                          memory.entries);
}

}  // namespace

Hardware::ChipMemory::~ChipMemory() = default;

namespace QuorelApi {

ChipMemory::Ptr findChipMemory(int unit, int mem, ChipAddress sca, U32 sizeBytes)
{
    sim_memory_t memory;
    int arrayIndex;
    U32 base;
    if (sim_memory_describe(unit, mem, &memory) != SOC_E_NONE
        || !findArray(memory, sca.address, &arrayIndex, &base)) {
        return nullptr;
    }
    U32 before = (sca.address - base) / memory.entry_words;
    if (sca.entry >= memory.entries - before) {
        return nullptr;
    }
    U32 left = (memory.entries - before - sca.entry) * memory.entry_words * word_bytes;
    return sizeBytes <= left ? describe(unit, mem, memory, arrayIndex, base) : nullptr;
}

ChipMemory::Ptr findChipMemory(int unit, int mem, int baseAddr)
{
    sim_memory_t memory;
    int arrayIndex;
    U32 base;
    bool found = sim_memory_describe(unit, mem, &memory) == SOC_E_NONE
                 && findArray(memory, static_cast<U32>(baseAddr), &arrayIndex, &base);
    if (!found || base != static_cast<U32>(baseAddr)) {
        return nullptr;
    }
    return describe(unit, mem, memory, arrayIndex, base);
}

U32 tableBaseAddr(int unit, int mem, int arrayIndex)
{
    sim_memory_t memory;
    if (sim_memory_describe(unit, mem, &memory) != SOC_E_NONE || arrayIndex < 0
        || static_cast<U32>(arrayIndex) >= memory.arrays) {
        return 0;
    }
    return memory.base + static_cast<U32>(arrayIndex) * array_words(memory);
}

}  // namespace QuorelApi
