#include "quorel_api/devices.h"

#include "device_list.h"
#include "standby_values.h"
#include "trace_lines.h"

#include <algorithm>
#include <climits>

extern "C" {
#include <bcm/error.h>
#include <soc/register.h>
}

namespace {

constexpr int revision_shift = 16;
constexpr U32 device_mask = 0xffff, revision_mask = 0xff;

/// What the device's own register says, device below revision; false if it cannot be asked.
bool readIdentity(int unit, const Device &device, U32 *identity)
{
    const bool answers = device.mapped && !device.fake && device.deviceId == sand_device_id;
    return answers && soc_reg32_get(unit, CMIC_DEVICE_IDr, REG_PORT_ANY, 0, identity) == SOC_E_NONE;
}

int add(const char *caller, const PciAddress &address, U32 deviceId, U32 revisionId, bool mapped, bool fake)
{
    const int unit = deviceList().add({address, deviceId, revisionId, mapped, fake});
    trace("%s(%s, %d) = %d", caller, address.text().c_str(), fake, unit);
    return unit;
}

void mapIs(int unit, bool mapped)
{
    trace("%s(%d)", mapped ? "mapSandDevice" : "unmapSandDevice", unit);
    if (Device *device = deviceList().at(unit)) {
        device->mapped = mapped;
    } else {
        logProblem("there is no device %d to map or unmap", unit);
    }
}

/// Whether the device has moved.
bool rewire(const char *caller, int unit, const PciAddress &address)
{
    const int rc = deviceList().move(unit, address);
    trace("%s(%d, %s)", caller, unit, address.text().c_str());
    if (rc != BCM_E_NONE) {
        logProblem("device %d cannot be moved to %s: status %d", unit, address.text().c_str(), rc);
    }
    return rc == BCM_E_NONE;
}

}  // namespace

int getNumDevices()
{
    if (const auto count = standbyValues().deviceCount()) {
        return static_cast<int>(std::min(*count, static_cast<U32>(INT_MAX)));
    }
    return deviceList().size();
}

U32 getDevId(int unit)
{
    if (const auto id = standbyValues().deviceId(unit)) {
        return *id;
    }
    const Device *device = deviceList().at(unit);
    U32 identity;
    if (device && readIdentity(unit, *device, &identity)) {
        return identity & device_mask;
    }
    return device ? device->deviceId : 0;
}

U32 getDevRev(int unit)
{
    if (const auto id = standbyValues().revisionId(unit)) {
        return *id;
    }
    const Device *device = deviceList().at(unit);
    U32 identity;
    if (device && readIdentity(unit, *device, &identity)) {
        return identity >> revision_shift & revision_mask;
    }
    return device ? device->revisionId : 0;
}

int addSandDevice(uint16 domain, uint8 bus, uint8 slot, uint8 function)
{
    return add("addSandDevice", {domain, bus, slot, function}, sand_device_id, sand_revision_id, true, false);
}

int addSandFapDeviceUnmapped(uint16 domain, uint8 bus, uint8 slot, uint8 function, uint32 is_fake)
{
    return add("addSandFapDeviceUnmapped", {domain, bus, slot, function}, sand_device_id, sand_revision_id,
               false, is_fake != 0);
}

int addSandFeDeviceUnmapped(uint16 domain, uint8 bus, uint8 slot, uint8 function, uint32 is_fake)
{
    return add("addSandFeDeviceUnmapped", {domain, bus, slot, function}, fabric_device_id, fabric_revision_id,
               false, is_fake != 0);
}

void mapSandDevice(int unit)
{
    mapIs(unit, true);
}

void unmapSandDevice(int unit)
{
    mapIs(unit, false);
}

void rewireSandDeviceRemap(int unit, uint16 domain, uint8 bus, uint8 slot, uint8 function)
{
    if (rewire("rewireSandDeviceRemap", unit, {domain, bus, slot, function})) {
        deviceList().at(unit)->mapped = true;
    }
}

void rewireSandDeviceNoRemap(int unit, uint16 domain, uint8 bus, uint8 slot, uint8 function)
{
    rewire("rewireSandDeviceNoRemap", unit, {domain, bus, slot, function});
}
