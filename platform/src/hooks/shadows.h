// The shadows that there are.
#pragma once

#include "device_list.h"
#include "quorel_api/hardware_shadow.h"

inline bool isShadowUnit(int unit)
{
    return unit >= 0 && unit < unit_max;
}

/// The unit's shadow, or null: for no such unit too.
const Hardware::HardwareShadow::Ptr &shadowOf(int unit);

/// The same, made if there is none; null only for no such unit.
const Hardware::HardwareShadow::Ptr &makeShadow(int unit);

/// One word of a register of the hardware: over the configured bus if it offers that, or from the chip.
/// A status.
int readHardware(int unit, U32 address, U32 *word);

/// Gives the shadow what the hardware's registers hold.
void fillFromHardware(int unit, Hardware::HardwareShadow &shadow);

/// A word of the shadowed PCI configuration space, 0 if there is none.
U32 shadowedPciConfig(int unit, U32 offset);

/// No shadows, no bus, and no memory with dynamic shadowing.
void resetShadows();
