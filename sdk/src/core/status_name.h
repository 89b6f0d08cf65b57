/// Return codes as people read them.
#pragma once

namespace sim {

/// "BCM_E_PARAM" and so on; "unknown status" for what is none.
const char *status_name(int status);

}  // namespace sim
