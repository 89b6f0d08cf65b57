// The hardware shadow: software's copy of what was written to a chip's registers and tables.
//
// A unit (0 to 15) has one from its first getHwShadow(), configureHwShadow() or setupShadowForHwInit() on.
// What is written to the chip is written to its shadow, whoever writes. A reset of the chip leaves the shadow
// as it is.
#pragma once

#include "quorel_api/integers.h"
#include "vey/ptr.h"

#include <cstddef>
#include <unordered_map>

extern "C" {
#include <soc/bus_device.h>
}

namespace Hardware {

class HardwareShadow : public Vey::PtrInterface {
public:
    using Ptr = Vey::Ptr<HardwareShadow>;

    void write(U32 address, U32 const *words, std::size_t count);

    /// False if any of the words is not in the shadow; then none is written.
    bool read(U32 address, U32 *words, std::size_t count) const;

protected:
    ~HardwareShadow() override;

private:
    std::unordered_map<U32, U32> words_;
};

}  // namespace Hardware

/// Null if there is no such unit.
Hardware::HardwareShadow::Ptr getHwShadow(int unit);

/// Gives every device of the list a shadow, and the bus over which syncRegisters() and
/// configureHwPciConfigShadow() reach the hardware; null: the SDK's own way. The descriptor has to live until
/// another takes its place.
void configureHwShadow(ibde_t *);

/// Shadows the 256 bytes of PCI configuration space of every device of the list, as they are now.
void configureHwPciConfigShadow();

/// Starts a shadow of initialisation in place of the unit's shadow: with the registers as the chip has them
/// now, or empty for diagnostics, which then see what was written and nothing else.
void setupShadowForHwInit(uint32 unit, bool isDiags);
void teardownShadowForHwInit(uint32 unit);

/// Whether no shadow of initialisation is there. It ends with teardownShadowForHwInit(), and the unit's
/// shadow with it.
bool initShadowDestroyed(uint32 unit);

/// With dynamic shadowing, a memory of an attached unit is read from the shadow where that has the entry. The
/// memory is named as findChipMemory() and tableBaseAddr() do; for one that is not there it stays off.
bool dynamicShadowEnable(int unit, int mem, int arrayIndex, int baseAddr);
void dynamicShadowEnableIs(int unit, int mem, int arrayIndex, int baseAddr, bool enable);

/// Turns the reads of such memories to the hardware all the same.
bool forceReadFromHardware();
void forceReadFromHardwareIs(bool);

/// Words of a register, or of an array of registers, in a block from the shadow: from so many words on after
/// the first in that block, addresses counting. *sizePtr, 32 bits, says on entry how many bytes dataPtr has
/// room for, where less than 4 counts as 4, and on return how many were delivered: no more than that, nor
/// than follow without a gap. BCM_E_NONE, BCM_E_PARAM, BCM_E_UNIT, BCM_E_NOT_FOUND (not in the shadow);
/// *sizePtr is 0 then.
int getRegisterBlockFromShadow(int unit, int reg, int blockId, int offset, void *dataPtr, void *sizePtr);

/// Compares the unit's registers in the shadow with the hardware; how many differ. With syncWithHardware the
/// shadow then has what the hardware has, of every register, and those that were not in it count too. Can
/// print each of the registers that differ.
uint syncRegisters(uint unit, bool dumpRegistersDuringSync, bool syncWithHardware);
