#include "quorel_api/memory_protection.h"

#include "quorel_api/chip_memory.h"
#include "trace_lines.h"
#include "vey/string8.h"

#include <string>

extern "C" {
#include <bcm/attach.h>
#include <bcm/error.h>
#include <sim/file.h>
#include <soc/memory_ids.h>
}

namespace {

constexpr U32 parity_bits_max = 64;

/// What the chip's designers give an entry: a parity bit up to 64 bits, wider ones a code that corrects one
/// bit and detects two. Entries of content-addressable memories are compared all at once and have neither.
std::string protection(const std::string &name, U32 bits)
{
    if (name.find("TCAM") != std::string::npos) {
        return "none";
    }
    if (bits <= parity_bits_max) {
        return "parity, 1 bit";
    }
    U32 check_bits = 0;
    while (1u << check_bits < bits + check_bits + 1) {
        ++check_bits;
    }
    return "ECC, " + std::to_string(check_bits + 1) + " bits";
}

std::string line(const Hardware::ChipMemory &memory)
{
    U32 const bits = memory.entryBytes() * 8;
    return Vey::format("%08x %s[%d]: %u entries of %u bits: %s\n", memory.baseAddr(), memory.name().c_str(),
                       memory.arrayIndex(), memory.entries(), bits, protection(memory.name(), bits).c_str())
        .data();
}

std::string lines(int unit)
{
    std::string text;
    for (int mem = 0; mem < NUM_SOC_MEM; ++mem) {
        for (int index = 0; U32 const base = QuorelApi::tableBaseAddr(unit, mem, index); ++index) {
            if (const auto memory = QuorelApi::findChipMemory(unit, mem, static_cast<int>(base))) {
                text += line(*memory);
            }
        }
    }
    return text;
}

}  // namespace

int QuorelApiPrintDeviceMemParityEccInfoToFile(int unit, const char *fname)
{
    trace("QuorelApiPrintDeviceMemParityEccInfoToFile(%d, %s)", unit, fname ? fname : "");
    if (bcm_attach_check(unit) != BCM_E_NONE) {
        return BCM_E_UNIT;
    }
    if (!fname || !*fname) {
        return BCM_E_PARAM;
    }
    return sim_file_replace(fname, lines(unit).c_str());
}
