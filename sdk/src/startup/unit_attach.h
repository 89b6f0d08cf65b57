/// Which units are attached, through what, and who is told.
#pragma once

#include <bcm/attach.h>

#include <string>

namespace sim {

/// How a unit was attached.
struct Driver {
    std::string subtype;
    int remote_unit = -1;
    bcm_detach_retry_t retry = {};
};

/// The driver of an attached unit.
Driver &driver_of(int unit);

/// Whether the text names the driver of local devices, as a null pointer and an empty text do.
bool is_local_driver(const char *type);

/// Attaches a unit as a local device, afresh if it was attached; those who registered are told. BCM_E_UNIT.
int attach_local(int unit);

/// Stops what runs on a unit, tells those who registered, and detaches it. BCM_E_UNIT.
int detach_unit(int unit);

}  // namespace sim
