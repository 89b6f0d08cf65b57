#include "chip_watch.h"

#include "dynamic_shadow.h"
#include "quorel_api/chip_memory.h"
#include "shadows.h"
#include "trace_lines.h"

#include <cstdio>
#include <string>

extern "C" {
#include <sim/chip_observer.h>
#include <sim/memory.h>
#include <soc/error.h>
#include <soc/register.h>
}

namespace {

bool quiet;

std::string registerName(const sim_access_t &access)
{
    char name[SOC_REG_TEXT_SIZE] = "";
    soc_regaddrinfo_t info;
    soc_regaddrinfo_get(access.unit, &info, access.address);
    soc_reg_sprint_addr(access.unit, name, &info);
    return name;
}

std::string tableName(const sim_access_t &access)
{
    Hardware::ChipAddress const place = {access.address, 0};
    Hardware::ChipMemory::Ptr memory = QuorelApi::findChipMemory(access.unit, access.id, place, 0);
    sim_memory_t all;
    if (!memory || sim_memory_describe(access.unit, access.id, &all) != SOC_E_NONE) {
        return "";
    }
    U32 const entry = (access.address - memory->baseAddr()) / access.words;
    std::string const array = all.arrays > 1 ? "[" + std::to_string(memory->arrayIndex()) + "]" : "";
    std::string const core = all.cores > 1 ? "." + std::to_string(memory->core()) : "";
    return memory->name() + array + core + "[" + std::to_string(entry) + "]";
}

void traceAccess(const char *what, const sim_access_t &access, const uint32 *words)
{
    if (!tracing()) {
        return;
    }
    std::string value;
    for (uint32 word = access.words; word-- > 0;) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%08x", words[word]);
        value += digits;
    }
    std::string const name = access.is_memory ? tableName(access) : registerName(access);
    trace("unit %d %s %08x %s = 0x%s", access.unit, what, access.address, name.c_str(), value.c_str());
}

void written(const sim_access_t *access, const uint32 *words)
{
    if (Hardware::HardwareShadow *shadow = shadowOf(access->unit).get()) {
        shadow->write(access->address, words, access->words);
    }
    traceAccess("write", *access, words);
}

void wasRead(const sim_access_t *access, const uint32 *words)
{
    if (!quiet) {
        traceAccess("read", *access, words);
    }
}

int answers(const sim_access_t *access, uint32 *words)
{
    return readFromDynamicShadow(access->unit, access->address, words, access->words);
}

}  // namespace

void watchChips()
{
    static const sim_chip_observer_t observer = {written, wasRead, answers};
    sim_chip_observe(&observer);
}

QuietReads::QuietReads() : before_(quiet)
{
    quiet = true;
}

QuietReads::~QuietReads()
{
    quiet = before_;
}
