/// The trunks of a unit.
#pragma once

#include "destination.h"
#include "port_set.h"

#include <bcm/trunk.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <vector>

namespace sim {

struct Trunk {
    uint32 flags = 0;  // of bcm_trunk_create
    bcm_trunk_info_t info = {};
    std::vector<bcm_trunk_member_t> members;
    std::vector<Destination> inactive;  // members that take no traffic for now
    int min_links = 1;
    unsigned turns = 0;  // packets sent by BCM_TRUNK_PSC_ROUND_ROBIN

    bool is_active(const Destination &member) const
    {
        return std::find(inactive.begin(), inactive.end(), member) == inactive.end();
    }
    int active_members() const { return static_cast<int>(members.size() - inactive.size()); }
    bool is_up() const { return active_members() > 0 && active_members() >= min_links; }
};

/// A trunk as packets see it.
struct SendingTrunk {
    bcm_trunk_t id;
    Trunk *trunk;
    PortSet ports;           // its members of this unit
    PortSet senders;         // those that may send for it; whether they can is not looked at
    std::vector<int> order;  // the same as they stand among the members
};

/// What packets need of all trunks, worked out when a trunk has changed.
struct TrunkPorts {
    std::vector<SendingTrunk> trunks;  // by id
    PortSet in_trunks;
    std::array<Destination, port_max + 1>
        places;                                 // where addresses of packets that arrive at a port are learnt
    std::array<PortSet, port_max + 1> origins;  // the port and those of its trunk, which are one place

    /// Null if there is none.
    const SendingTrunk *find(bcm_trunk_t id) const;
};

class TrunkTable {
public:
    static constexpr int member_max = 256;

    /// Who gets the trunks may change them: what packets need is worked out anew when that is asked for next.
    std::map<bcm_trunk_t, Trunk> &trunks()
    {
        is_worked_out_ = false;
        return trunks_;
    }
    const std::map<bcm_trunk_t, Trunk> &trunks() const { return trunks_; }

    const TrunkPorts &ports()
    {
        if (!is_worked_out_) {
            work_out();
        }
        return ports_;
    }

    std::minstd_rand chance;  // for BCM_TRUNK_PSC_RANDOM; the same in each run

private:
    void work_out();

    std::map<bcm_trunk_t, Trunk> trunks_;
    bool is_worked_out_ = false;
    TrunkPorts ports_;
};

}  // namespace sim
