#include "quorel_api/platform_control.h"

#include "access_policy.h"
#include "configuration.h"
#include "device_list.h"
#include "interrupt_delivery.h"
#include "quorel_api/bring_up.h"
#include "shadows.h"
#include "standby_values.h"
#include "trace_lines.h"

void platform_reset(void)
{
    resetTrace();
    resetLog();
    resetShadows();
    resetTableAccess();
    forgetInterruptDescriptor();
    setCopyEngineConstraintsFilePath(nullptr);
    standbyValues() = StandbyValues();
    deviceList().clear();
}

const char *platform_device(int unit)
{
    static std::string text;
    const Device *device = deviceList().at(unit);
    text = device ? device->address.text() + (device->mapped ? " mapped" : "") : "";
    return text.c_str();
}

unsigned int platform_pci_config(int unit, unsigned int offset)
{
    return shadowedPciConfig(unit, offset);
}

int platform_interrupt(int unit, unsigned int bits)
{
    return deliverInterrupt(unit, bits);
}

void platform_trace(const char *text, size_t size)
{
    captureText(text, size);
}

const char *platform_copy_engine_constraints_file_path(void)
{
    return copyEngineConstraintsFilePath().c_str();
}
