/// The stages of a packet's way, in their order. Each is a function of the passage and of the rooms' states, and
/// can be read alone; sim/traffic.h tells what they do in the words of users.
#pragma once

#include "passage.h"

namespace sim {

enum class Onward {
    next,     ///< to the next stage
    decided,  ///< it is known where to: to replicate
    over
};

using Stage = Onward(Passage &);

/// The MAC: counts, drops what has errors, and takes control frames for itself.
Onward arrive(Passage &passage);

/// What the port takes.
Onward admit(Passage &passage);

/// The VLAN of the packet.
Onward classify(Passage &passage);

/// The state of the port in the VLAN's spanning tree group; what bridges keep to themselves goes to the CPU.
Onward look_at_tree(Passage &passage);

/// The source address: learnt, and perhaps unwanted.
Onward look_at_source(Passage &passage);

/// What is addressed to the router: where its IP address leads.
Onward route(Passage &passage);

/// Where the destination address leads.
Onward find_destination(Passage &passage);

/// The ports that send a copy.
Onward replicate(Passage &passage);

/// How the copies begin.
Onward edit(Passage &passage);

/// What each port checks before it sends.
Onward leave(Passage &passage);

}  // namespace sim
