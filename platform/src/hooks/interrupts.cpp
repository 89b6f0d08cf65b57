#include "quorel_api/interrupts.h"

#include "device_list.h"
#include "interrupt_delivery.h"
#include "trace_lines.h"

#include <poll.h>
#include <unistd.h>

extern "C" {
#include <soc/register.h>
}

namespace {

constexpr int none = -1;
constexpr int mask_registers = 4;

int descriptor = none;

/// Whether a byte can be written at once. A pipe that nobody reads is an error to poll() too, which spares
/// the process the signal.
bool takesByte(int fd)
{
    pollfd entry = {fd, POLLOUT, 0};
    return fd >= 0 && ::poll(&entry, 1, 0) == 1 && (entry.revents & (POLLERR | POLLNVAL)) == 0;
}

bool isEnabled(int unit, U32 bits)
{
    U32 enabled;
    const int rc = soc_reg32_get(unit, CMIC_IRQ_MASKr, REG_PORT_ANY, 0, &enabled);
    return rc == SOC_E_NONE && (enabled & bits) != 0;
}

}  // namespace

bool deliverInterrupt(int unit, U32 bits)
{
    const Device *device = deviceList().at(unit);
    if (!device || !device->mapped || device->fake || !isEnabled(unit, bits) || !takesByte(descriptor)) {
        return false;
    }
    trace("interrupt of unit %d", unit);
    const auto byte = static_cast<unsigned char>(unit);
    return ::write(descriptor, &byte, 1) == 1;
}

void forgetInterruptDescriptor()
{
    descriptor = none;
}

void fileDescriptorIs(int fd)
{
    trace("fileDescriptorIs(%d)", fd);
    descriptor = fd;
}

void maskDeviceInterrupts(uint8 bus)
{
    trace("maskDeviceInterrupts(%u)", bus);
    for (int unit = 0; unit < deviceList().size(); ++unit) {
        const Device &device = *deviceList().at(unit);
        if (device.address.bus != bus || !device.mapped || device.fake) {
            continue;
        }
        for (int index = 0; index < mask_registers; ++index) {
            soc_reg32_set(unit, CMIC_IRQ_MASKr, REG_PORT_ANY, index, 0);
        }
    }
}

void disconnectInterruptsToDevices()
{
    trace("disconnectInterruptsToDevices()");
    forgetInterruptDescriptor();
}
