/// Addresses of registers, and what is at an address.
#include "chip.h"
#include "sim_register.h"

#include <soc/control.h>

using namespace sim;

namespace {

const Register *register_on(int unit, soc_reg_t reg)
{
    return chip_of(unit) == nullptr ? nullptr : register_at(reg);
}

constexpr uint32 within_block = 0x03ffffff;

}  // namespace

extern "C" {

uint32 sim_soc_reg_addr(int unit, soc_reg_t reg, int port, int index)
{
    return sim_soc_reg_addr_get(unit, reg, port, index, 0, nullptr, nullptr);
}

uint32 sim_soc_reg_addr_get(int unit, soc_reg_t reg, int port, int index, uint32 options, int *blk,
                            uint8 *acc_type)
{
    RegisterPlace place;
    if (locate(register_on(unit, reg), port, index, &place) != SOC_E_NONE) {
        return 0;
    }
    if ((options & SOC_REG_ADDR_TO_READ) != 0) {
        place = place.to_read();
    }
    const soc_regaddrinfo_t info = info_of(place);
    if (blk != nullptr) {
        *blk = info.block;
    }
    if (acc_type != nullptr) {
        *acc_type = info.acc_type;
    }
    return info.addr;
}

int sim_soc_reg_bytes(int unit, soc_reg_t reg)
{
    const Register *found = register_on(unit, reg);
    return found == nullptr ? 0 : found->bits / 8;
}

int sim_soc_reg_port_idx_valid(int unit, soc_reg_t reg, soc_port_t port, int idx)
{
    RegisterPlace place;
    return locate(register_on(unit, reg), port, idx, &place) == SOC_E_NONE;
}

void sim_soc_regaddrinfo_get(int unit, soc_regaddrinfo_t *ainfo, uint32 addr)
{
    if (ainfo == nullptr) {
        return;
    }
    RegisterPlace place;
    std::size_t word;
    const bool found = chip_of(unit) != nullptr && locate_address(addr, &place, &word);
    *ainfo = found ? info_of(place) : info_of_nothing(addr);
}

void sim_soc_regaddrinfo_extended_get(int unit, soc_regaddrinfo_t *ainfo, soc_block_t block, int acc_type,
                                      uint32 addr)
{
    const bool known_block = block >= 0 && block < SOC_MAX_NUM_BLOCKS;
    if (ainfo == nullptr) {
        return;
    }
    *ainfo = info_of_nothing(addr);
    if (!known_block) {
        return;
    }
    const uint32 whole = (addr & within_block) | static_cast<uint32>(block) << 26;
    RegisterPlace place;
    std::size_t word;
    if (chip_of(unit) == nullptr || !locate_address(whole, &place, &word)) {
        return;
    }
    const Block &kind = block_of(place.reg->block);
    if (acc_type == SOC_REG_ACCESS_BROADCAST && kind.has_broadcast()) {
        place.block = kind.broadcast();
    }
    if ((acc_type == SOC_REG_ACCESS_BROADCAST) == place.is_broadcast()) {
        *ainfo = info_of(place);
    }
}

}  // extern "C"
