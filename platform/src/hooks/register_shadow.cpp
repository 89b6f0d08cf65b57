// Registers in the shadow: compared with the hardware, and handed out.
#include "chip_watch.h"
#include "shadows.h"
#include "trace_lines.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

extern "C" {
#include <soc/register.h>
}

using Hardware::HardwareShadow;

namespace {

constexpr U32 block_mask = 0xfc000000;
constexpr int block_shift = 26, block_max = 63;
constexpr U32 word_bytes = 4;

struct Comparison {
    HardwareShadow &shadow;
    bool print, update;
    uint different = 0;
};

std::string text(U32 const *words, std::size_t count)
{
    std::string digits = "0x";
    while (count-- > 0) {
        char word[16];
        std::snprintf(word, sizeof word, "%08x", words[count]);
        digits += word;
    }
    return digits;
}

void print(int unit, soc_regaddrinfo_t *info, const std::string &shadowed, const std::string &real)
{
    char name[SOC_REG_TEXT_SIZE] = "";
    soc_reg_sprint_addr(unit, name, info);
    std::printf("%08x %s: shadow %s, hardware %s\n", info->addr, name, shadowed.c_str(), real.c_str());
}

int compare(int unit, soc_regaddrinfo_t *info, void *data)
{
    auto &comparison = *static_cast<Comparison *>(data);
    soc_reg_above_64_val_t real = {}, shadowed = {};
    const auto count = static_cast<std::size_t>(soc_reg_bytes(unit, info->reg)) / word_bytes;
    const bool is_there = comparison.shadow.read(info->addr, shadowed, count);
    if (!is_there && !comparison.update) {
        return SOC_E_NONE;
    }
    for (std::size_t word = 0; word < count; ++word) {
        const int rc = readHardware(unit, info->addr + static_cast<U32>(word), &real[word]);
        if (rc != SOC_E_NONE) {
            return rc;
        }
    }
    if (is_there && std::equal(real, real + count, shadowed)) {
        return SOC_E_NONE;
    }
    ++comparison.different;
    if (comparison.print) {
        print(unit, info, is_there ? text(shadowed, count) : "none", text(real, count));
    }
    if (comparison.update) {
        comparison.shadow.write(info->addr, real, count);
    }
    return SOC_E_NONE;
}

uint compareAll(int unit, Comparison comparison)
{
    QuietReads quiet;
    soc_reg_iterate(unit, compare, &comparison);
    return comparison.different;
}

/// Whether a word of that register, of one block, is at the address.
bool isAt(int unit, soc_reg_t reg, U32 address)
{
    soc_regaddrinfo_t info = {};
    soc_regaddrinfo_get(unit, &info, address);
    return info.valid && info.reg == reg && info.acc_type == SOC_REG_ACCESS_SINGLE;
}

/// How many words on from an address are the register's and in the shadow, up to a number; they are put at
/// data.
std::size_t copyWords(int unit, soc_reg_t reg, U32 address, std::size_t most, unsigned char *data)
{
    HardwareShadow::Ptr const shadow = shadowOf(unit);
    std::size_t count = 0;
    U32 word;
    for (; count < most && isAt(unit, reg, address) && shadow->read(address, &word, 1); ++count, ++address) {
        std::memcpy(data + count * word_bytes, &word, word_bytes);
    }
    return count;
}

}  // namespace

void fillFromHardware(int unit, HardwareShadow &shadow)
{
    compareAll(unit, {shadow, false, true});
}

uint syncRegisters(uint unit, bool dumpRegistersDuringSync, bool syncWithHardware)
{
    // A number that does not fit is no unit either way.
    HardwareShadow::Ptr const shadow = shadowOf(static_cast<int>(unit));
    const uint different =
        shadow ? compareAll(static_cast<int>(unit), {*shadow, dumpRegistersDuringSync, syncWithHardware}) : 0;
    std::fflush(stdout);
    trace("syncRegisters(%u, %d, %d) = %u", unit, dumpRegistersDuringSync, syncWithHardware, different);
    return different;
}

int getRegisterBlockFromShadow(int unit, int reg, int blockId, int offset, void *dataPtr, void *sizePtr)
{
    if (!sizePtr) {
        return SOC_E_PARAM;
    }
    U32 room;
    std::memcpy(&room, sizePtr, sizeof room);
    std::memset(sizePtr, 0, sizeof room);
    if (!isShadowUnit(unit)) {
        return SOC_E_UNIT;
    }
    const auto id = static_cast<soc_reg_t>(reg);
    if (!dataPtr || blockId < 0 || blockId > block_max || offset < 0 || soc_reg_bytes(unit, id) == 0) {
        return SOC_E_PARAM;
    }
    U32 const in_block = soc_reg_addr(unit, id, 0, 0) & ~block_mask;
    U32 const address = (static_cast<U32>(blockId) << block_shift) + in_block + static_cast<U32>(offset);
    if (!isAt(unit, id, address)) {
        return SOC_E_PARAM;
    }
    if (!shadowOf(unit)) {
        return SOC_E_NOT_FOUND;
    }
    std::size_t const most = std::max(room / word_bytes, U32(1));
    const auto size = static_cast<U32>(
        copyWords(unit, id, address, most, static_cast<unsigned char *>(dataPtr)) * word_bytes);
    std::memcpy(sizePtr, &size, sizeof size);
    return size != 0 ? SOC_E_NONE : SOC_E_NOT_FOUND;
}
