/// Telling the steps of packets to those who listen, by <sim/trace.h>.
#pragma once

#include "port_counters.h"

#include <sim/trace.h>

#include <cstdio>

namespace sim {

struct Passage;

/// A MAC address in words.
class MacText {
public:
    explicit MacText(const unsigned char *mac)
    {
        std::snprintf(text_, sizeof text_, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3],
                      mac[4], mac[5]);
    }
    const char *text() const { return text_; }

private:
    char text_[18];
};

/// Whether anybody listens. Stages ask it before they put words together.
extern bool is_traced;

/// A step of the packet's way at a port; the text as by std::printf.
[[gnu::cold, gnu::format(printf, 4, 5)]] void tell_step(const Passage &passage, sim_stage_t stage, int port,
                                                        const char *format, ...);

/// A frame with errors, or one that the MAC keeps.
[[gnu::cold]] void tell_kept_by_mac(const Passage &passage, sim_drop_t drop);

/// The packet, or its copy for that port, goes no further.
[[gnu::cold]] void tell_drop(const Passage &passage, int port, Discard reason);

/// What would have been dropped goes to the CPU.
[[gnu::cold]] void tell_diverted(const Passage &passage, Discard reason);

/// What happens to a frame outside of a passage: between units, or after it has waited.
[[gnu::cold, gnu::format(printf, 5, 6)]] void tell_at(int unit, sim_stage_t stage, int port, sim_drop_t drop,
                                                      const char *format, ...);

}  // namespace sim
