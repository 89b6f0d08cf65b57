/// The control records that <soc/control.h> shows.
#pragma once

namespace sim {

/// A unit's record, as it is when new, or none.
void publish_control(int unit, bool attached);

}  // namespace sim
