#include "quorel_api/raw_access.h"

#include "access_policy.h"
#include "device_list.h"
#include "trace_lines.h"

extern "C" {
#include <soc/memory.h>
#include <soc/register.h>
}

namespace {

constexpr unsigned int no_answer = 0xffffffff;
constexpr int block_shift = 26;

/// Whether the device's registers can be reached. What the SDK has attached without the list knowing, can.
bool isMapped(int unit)
{
    const Device *device = deviceList().at(unit);
    return !device || device->mapped;
}

bool isFake(int unit)
{
    const Device *device = deviceList().at(unit);
    return device && device->fake;
}

Hardware::ChipMemory::Ptr tableAt(int unit, uint32 addr)
{
    for (int mem = 0; mem < NUM_SOC_MEM; ++mem) {
        if (Hardware::ChipMemory::Ptr table = QuorelApi::findChipMemory(unit, mem, {addr, 0}, 0)) {
            return table;
        }
    }
    return nullptr;
}

/// An entry of a table, in which one word is at the address looked for.
struct Entry {
    const Hardware::ChipMemory &table;
    unsigned int array;
    int block, index;
    U32 word;
    uint32 words[SOC_REG_ABOVE_64_MAX_SIZE_U32];

    Entry(const Hardware::ChipMemory &its_table, uint32 addr)
        : table(its_table),
          array(static_cast<unsigned int>(its_table.arrayIndex())),
          block(static_cast<int>(addr >> block_shift))
    {
        U32 const entry_words = table.entryBytes() / 4, offset = addr - table.baseAddr();
        index = static_cast<int>(offset / entry_words);
        word = offset % entry_words;
    }

    int read() { return soc_mem_array_read(table.unit(), table.mem(), array, block, index, words); }

    int write() { return soc_mem_array_write(table.unit(), table.mem(), array, block, index, words); }
};

/// body(Entry &) on the entry as it is; SOC_E_NOT_FOUND, SOC_E_DISABLED, or the SDK's status.
template <typename Body>
int onEntry(int unit, uint32 addr, Body body)
{
    Hardware::ChipMemory::Ptr table = tableAt(unit, addr);
    if (!table) {
        return SOC_E_NOT_FOUND;
    }
    if (!mayAccess(*table)) {
        return SOC_E_DISABLED;
    }
    Entry entry(*table, addr);
    const int rc = entry.read();
    return rc != SOC_E_NONE ? rc : body(entry);
}

int read(int unit, uint32 addr, unsigned int *data)
{
    const int rc = soc_reg32_read(unit, addr, data);
    if (rc != SOC_E_NOT_FOUND) {
        return rc;
    }
    return onEntry(unit, addr, [&](Entry &entry) {
        *data = entry.words[entry.word];
        return static_cast<int>(SOC_E_NONE);
    });
}

int write(int unit, uint32 addr, uint32 data)
{
    const int rc = soc_reg32_write(unit, addr, data);
    if (rc != SOC_E_NOT_FOUND) {
        return rc;
    }
    return onEntry(unit, addr, [&](Entry &entry) {
        entry.words[entry.word] = data;
        return entry.write();
    });
}

}  // namespace

unsigned int belvok_read_low(int unit, uint32 addr)
{
    unsigned int data = no_answer;
    if (isMapped(unit) && isFake(unit)) {
        data = 0;
    } else if (!isMapped(unit) || read(unit, addr, &data) != SOC_E_NONE) {
        data = no_answer;
    }
    trace("belvok_read_low(%d, 0x%x) = 0x%x", unit, addr, data);
    return data;
}

int belvok_write_low(int unit, uint32 addr, uint32 data)
{
    int rc = SOC_E_UNAVAIL;
    if (isMapped(unit)) {
        rc = isFake(unit) ? static_cast<int>(SOC_E_NONE) : write(unit, addr, data);
    }
    trace("belvok_write_low(%d, 0x%x, 0x%x) = %d", unit, addr, data, rc);
    return rc;
}
