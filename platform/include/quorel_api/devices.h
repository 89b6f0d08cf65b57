// The list of chip devices. A device's place in it is its unit number; unit 0 is the board's own chip.
#pragma once

#include "quorel_api/integers.h"

extern "C" {
#include <sal/types.h>
}

/// While standby operation is on, what was set for it (standby.h) goes before what was found.
int getNumDevices();
U32 getDevId(int unit);  ///< 0 for no device
U32 getDevRev(int unit);

/// Puts a chip at a PCI address (slot 0 to 31, function 0 to 7) on the list, mapped or not. The unit number,
/// or BCM_E_PARAM, BCM_E_EXISTS (a device has that address), BCM_E_FULL. A fake device (is_fake not 0) has no
/// hardware: once mapped its registers read as 0, and what is written is lost.
int addSandDevice(uint16 domain, uint8 bus, uint8 slot, uint8 function);
int addSandFapDeviceUnmapped(uint16 domain, uint8 bus, uint8 slot, uint8 function, uint32 is_fake);
int addSandFeDeviceUnmapped(uint16 domain, uint8 bus, uint8 slot, uint8 function, uint32 is_fake);

/// A device that is not mapped is not brought up, and its registers cannot be reached at raw addresses.
void mapSandDevice(int unit);
void unmapSandDevice(int unit);

/// Moves a device to another PCI address, and maps it there or leaves it mapped or unmapped as it was. An
/// address that cannot be or that another device has changes nothing, with a message in the log.
void rewireSandDeviceRemap(int unit, uint16 domain, uint8 bus, uint8 slot, uint8 function);
void rewireSandDeviceNoRemap(int unit, uint16 domain, uint8 bus, uint8 slot, uint8 function);
