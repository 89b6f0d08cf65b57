/// Registers as text.
#include "chip.h"
#include "sim_register.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

using namespace sim;

namespace {

std::string address_text(const soc_regaddrinfo_t &info, const Register &reg)
{
    std::string text = reg.name;
    if (reg.elements > 1) {
        text += "[" + std::to_string(info.idx) + "]";
    }
    const Block &block = block_of(reg.block);
    if (reg.type == soc_portreg) {
        text += "." + std::to_string(info.port);
    } else if (block.has_broadcast()) {
        // Of a caller's record: any number.
        const std::int64_t instance = std::int64_t{info.block} - block.first;
        text += info.block == block.broadcast() ? ".*" : "." + std::to_string(instance);
    }
    return text;
}

std::string data_text(const Register &reg, const char *infix, uint32 value)
{
    std::string text;
    for (const Field &field : reg.layout) {
        char number[16];
        std::snprintf(number, sizeof number, "=%x", field_of(words_of(value), field)[0]);
        text += (text.empty() ? "" : infix) + std::string(field_name(field.id)) + number;
    }
    return text;
}

}  // namespace

extern "C" {

void sim_soc_reg_sprint_addr(int unit, char *bp, soc_regaddrinfo_t *ainfo)
{
    const Register *reg = chip_of(unit) == nullptr || ainfo == nullptr ? nullptr : register_at(ainfo->reg);
    if (bp != nullptr && reg != nullptr && ainfo->valid != 0) {
        std::strcpy(bp, address_text(*ainfo, *reg).c_str());
    }
}

void sim_soc_reg_sprint_data(int unit, char *bp, char *infix, soc_reg_t reg, uint32 value)
{
    const Register *found = chip_of(unit) == nullptr ? nullptr : register_at(reg);
    if (bp != nullptr && found != nullptr && found->bits == 32) {
        std::strcpy(bp, data_text(*found, infix == nullptr ? "," : infix, value).c_str());
    }
}

}  // extern "C"
