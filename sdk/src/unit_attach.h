/// Which units are attached, through what, and who is told.
#pragma once

namespace sim {

/// Attaches a unit as a local device, afresh if it was attached; those who registered are told. BCM_E_UNIT.
int attach_local(int unit);

/// Stops what runs on a unit, tells those who registered, and detaches it. BCM_E_UNIT.
int detach_unit(int unit);

}  // namespace sim
