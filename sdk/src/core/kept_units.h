/// Units whose state outlasts that they are detached, so that software starts again while the switch goes on.
#pragma once

namespace sim {

/// Takes off an attached unit's switch, as it is, and keeps it. Its rooms are not told.
void detach_and_keep(int unit);

/// Attaches what was kept of the unit; false if there is nothing. What is attached otherwise, takes the place of it.
bool attach_kept(int unit);

/// The next to attach the unit finds it as new.
void forget_kept(int unit);

}  // namespace sim
