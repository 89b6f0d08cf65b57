/// The packet watcher of each unit.
#pragma once

namespace sim {

/// False if none runs there.
bool stop_packet_watch(int unit);

}  // namespace sim
