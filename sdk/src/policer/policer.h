/// The room of policers: meters that colour packets, what becomes of each colour, and where they stand in a packet's
/// way: at ports, VLANs and ports in VLANs, in both directions.
#pragma once

#include "holders.h"
#include "meter.h"
#include "vlan.h"

#include <array>
#include <map>
#include <utility>

namespace sim {

struct Policer {
    bcm_policer_config_t config = {};
    Meter meter;
    int uses = 0;     // at places
    Holders holders;  // by PolicerUse
    bool counts = true;

    bool is_used() const { return uses != 0 || holders.count() != 0; }
    std::array<uint64, bcmPolicerStatCount> counters = {};
};

struct PolicerActionParameters {
    uint32 first, second;
};
using PolicerActions = std::map<std::pair<bcm_color_t, bcm_policer_action_t>, PolicerActionParameters>;

enum class PolicerSide { in, out };

/// Where a policer stands: at a port, in a VLAN, or at a port in a VLAN; -1 and 0 for what does not matter.
struct PolicerPlace {
    int port;
    bcm_vlan_t vlan;

    friend bool operator<(const PolicerPlace &a, const PolicerPlace &b)
    {
        return a.port != b.port ? a.port < b.port : a.vlan < b.vlan;
    }
};

/// That what is no place has a policer, which is in use as long as this is there; id 0: none.
struct PolicerUse {
    bcm_policer_t id = 0;
    Hold hold;
};

struct Policers {
    /// Null if there is none.
    Policer *find(bcm_policer_t id);
    /// None if there is no such policer.
    PolicerUse use(bcm_policer_t id);
    /// That it does not stand there any more.
    void take_away(PolicerSide side, const PolicerPlace &place);
    bool has_any(PolicerSide side) const { return !places[static_cast<std::size_t>(side)].empty(); }

    bool initialised = true;
    std::map<bcm_policer_t, Policer> policers;
    std::map<uint32, PolicerActions> actions;
    std::array<std::map<PolicerPlace, bcm_policer_t>, 2> places;  // by side

    bool is_on = true;  // bcmPolicerControl*, in their order
    int length_adjust = 0;
    bcm_policer_packet_length_t length_of = bcmPolicerPacketLengthWithCrc;
};

struct PolicerState : RoomState, Policers {
    static constexpr Room room = Room::policer;

    void reset() { static_cast<Policers &>(*this) = {}; }
};

inline PolicerState &policers_of(Switch &sw)
{
    return sw.of<PolicerState>();
}

/// What a packet's policers decide, one after the other.
struct PolicerDecision {
    bcm_color_t color;
    bool drops;
    bool copies_to_cpu;
    int priority;      // the new one within the switch, or -1
    int queue;         // in place of the priority's, or -1
    bcm_policer_t by;  // the last that decided something, or 0

    static constexpr PolicerDecision none() { return {bcmColorGreen, false, false, -1, -1, 0}; }
};

/// Tells the ports whether packets pass policers there. After each change.
void update_policing(Switch &sw);

/// What the policer decides, if it is still there and policers are on.
void police(Policers &state, const PolicerUse &use, std::size_t length, PolicerDecision &decision);

/// Whether the policers at a place let a packet of so many bytes, with checksum, pass and how. Those of the port in
/// the VLAN come first, then those of the VLAN, then those of the port.
void police(Switch &sw, PolicerSide side, int port, bcm_vlan_t vlan, std::size_t length,
            PolicerDecision &decision);

}  // namespace sim
