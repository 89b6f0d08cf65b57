#include "quorel_api/chip_registers.h"

extern "C" {
#include <soc/register.h>
}

#include <cstdio>
#include <string>

namespace {

constexpr int block_bits = 6;

std::string hexadecimal(const soc_reg_above_64_val_t value, int bytes)
{
    std::string text = "0x";
    for (int word = bytes / 4 - 1; word >= 0; --word) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%08x", value[word]);
        text += digits;
    }
    return text;
}

int print(int unit, soc_regaddrinfo_t *info, void *)
{
    char name[SOC_REG_TEXT_SIZE] = "", fields[SOC_REG_TEXT_SIZE] = "";
    soc_reg_above_64_val_t value;
    const int bytes = soc_reg_bytes(unit, info->reg);
    for (int word = 0; word < bytes / 4; ++word) {
        const int rc = soc_reg32_read(unit, info->addr + static_cast<uint32>(word), &value[word]);
        if (rc != SOC_E_NONE) {
            return rc;
        }
    }
    soc_reg_sprint_addr(unit, name, info);
    if (bytes == 4) {
        soc_reg_sprint_data(unit, fields, nullptr, info->reg, value[0]);
    }
    std::printf("%08x %s=%s%s%s\n", info->addr, name, hexadecimal(value, bytes).c_str(), *fields ? " " : "",
                fields);
    return SOC_E_NONE;
}

}  // namespace

U32 sbusFormatAddress(int, U32 addr)
{
    return addr << block_bits | addr >> (32 - block_bits);
}

void printAllRegisters(uint unit)
{
    soc_reg_iterate(static_cast<int>(unit), print, nullptr);
    std::fflush(stdout);
}
