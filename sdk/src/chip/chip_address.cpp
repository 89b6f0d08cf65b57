#include "chip_address.h"

#include "destination.h"
#include "switch.h"

#include <soc/control.h>

namespace sim {

namespace {

constexpr int block_shift = 26;
constexpr uint32 is_memory = 1u << 25;
constexpr int port_shift = 16;
constexpr uint32 register_word_mask = 0xffff;
constexpr uint32 port_mask = is_memory - 1 - register_word_mask;
constexpr int all_copies = -1;

uint32 block_bits(int block)
{
    return static_cast<uint32>(block) << block_shift;
}

int first_if_broadcast(const Block &block, int number)
{
    return block.has_broadcast() && number == block.broadcast() ? block.first : number;
}

bool is_one_of(const Block &block, int number)
{
    return number >= block.first && number < block.first + block.count + block.has_broadcast();
}

/// The block of a core, or the one for all; -1 if there is none.
int block_number(const Block &block, int core, bool all)
{
    if (all) {
        return block.has_broadcast() ? block.broadcast() : block.first;
    }
    return core >= 0 && core < block.count ? block.first + core : SOC_BLOCK_INVALID;
}

}  // namespace

bool RegisterPlace::is_broadcast() const
{
    return first_if_broadcast(block_of(reg->block), block) != block;
}

RegisterPlace RegisterPlace::to_read() const
{
    return {reg, first_if_broadcast(block_of(reg->block), block), port, index};
}

uint32 RegisterPlace::address() const
{
    const uint32 port_bits = reg->type == soc_portreg ? static_cast<uint32>(port) << port_shift : 0;
    return block_bits(block) + port_bits + reg->offset + static_cast<uint32>(index * reg->bits / 32);
}

int locate(const Register *reg, int port, int index, RegisterPlace *place)
{
    if (reg == nullptr || index < 0 || index >= reg->elements) {
        return SOC_E_PARAM;
    }
    const Block &block = block_of(reg->block);
    if (reg->type == soc_portreg) {
        if (port < 0 || port > port_max) {
            return SOC_E_PORT;
        }
        *place = {reg, block.first, port, index};
        return SOC_E_NONE;
    }
    const int number = block_number(block, port, port == REG_PORT_ANY || port == SOC_CORE_BROADCAST);
    if (number == SOC_BLOCK_INVALID) {
        return SOC_E_PORT;
    }
    *place = {reg, number, REG_PORT_ANY, index};
    return SOC_E_NONE;
}

bool locate_address(uint32 address, RegisterPlace *place, std::size_t *word)
{
    const int block = static_cast<int>(address >> block_shift);
    const auto port = static_cast<int>((address & port_mask) >> port_shift);
    const uint32 offset = address & register_word_mask;
    for (int id = 0; (address & is_memory) == 0 && register_at(id) != nullptr; ++id) {
        const Register &reg = *register_at(id);
        const bool of_port = reg.type == soc_portreg;
        const uint32 from_first = offset - reg.offset;
        const auto words = static_cast<uint32>(reg.words());
        if (is_one_of(block_of(reg.block), block) && port <= (of_port ? port_max : 0)
            && from_first < words * static_cast<uint32>(reg.elements)) {
            *place = {&reg, block, of_port ? port : REG_PORT_ANY, static_cast<int>(from_first / words)};
            *word = from_first % words;
            return true;
        }
    }
    return false;
}

bool MemoryPlace::is_broadcast() const
{
    return first_if_broadcast(block_of(memory->block), block) != block;
}

MemoryPlace MemoryPlace::to_read() const
{
    return {memory, first_if_broadcast(block_of(memory->block), block), array, index};
}

uint32 MemoryPlace::address() const
{
    const auto entry = static_cast<uint32>(array * memory->entries + index);
    return block_bits(block) + is_memory + memory->offset + entry * static_cast<uint32>(memory->words());
}

int locate(const Memory *memory, unsigned int array, int copy, int index, MemoryPlace *place)
{
    if (memory == nullptr || array >= static_cast<unsigned int>(memory->arrays) || index < 0
        || index >= memory->entries) {
        return SOC_E_PARAM;
    }
    // Blocks with memories have higher numbers than there are cores, so it is plain what a number means.
    const Block &block = block_of(memory->block);
    const bool all = copy == all_copies || copy == SOC_CORE_BROADCAST;
    const int number = is_one_of(block, copy) ? copy : block_number(block, copy, all);
    if (number == SOC_BLOCK_INVALID) {
        return SOC_E_PARAM;
    }
    *place = {memory, number, static_cast<int>(array), index};
    return SOC_E_NONE;
}

soc_regaddrinfo_t info_of(const RegisterPlace &place)
{
    soc_regaddrinfo_t info = info_of_nothing(place.address());
    info.valid = 1;
    info.reg = place.reg->id;
    info.idx = place.index;
    info.block = place.block;
    info.port = place.port;
    info.acc_type = place.is_broadcast() ? SOC_REG_ACCESS_BROADCAST : SOC_REG_ACCESS_SINGLE;
    return info;
}

soc_regaddrinfo_t info_of_nothing(uint32 address)
{
    soc_regaddrinfo_t info = {};
    info.addr = address;
    info.reg = SOC_REG_INVALID;
    info.block = SOC_BLOCK_INVALID;
    info.port = REG_PORT_ANY;
    info.cos = -1;
    info.field = SOC_FIELD_INVALID;
    return info;
}

}  // namespace sim
