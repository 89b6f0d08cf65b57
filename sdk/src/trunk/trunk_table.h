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

class RuleStore;

struct Trunk {
    uint32 flags = 0;  // of bcm_trunk_create
    bcm_trunk_info_t info = {};
    std::vector<bcm_trunk_member_t> members;
    std::vector<Destination> inactive;  // members that take no traffic for now
    /// Which members take the traffic of one that is down, and by what criterion.
    struct Failover {
        int psc;
        uint32 flags;
        std::vector<int> to;
    };
    std::map<int, Failover> failovers;  // by port of this unit
    int min_links = 1;
    PortSet users = PortSet::all();  // ports whose packets may leave through it
    unsigned turns = 0;              // packets sent by BCM_TRUNK_PSC_ROUND_ROBIN

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
    PortSet covered;         // those of them whose traffic certain members take while they are down
};

/// Floods that stop between ports.
enum class Flood { broadcast, unknown_multicast, unknown_unicast };
constexpr std::size_t floods = 3;

/// What packets need of all trunks, and where those of a port may go: worked out when that has changed.
struct TrunkPorts {
    std::vector<SendingTrunk> trunks;  // by id
    PortSet in_trunks;
    std::array<Destination, port_max + 1>
        places;  // where addresses of packets that arrive at a port are learnt
    std::array<PortSet, port_max + 1>
        origins;  // the port and those of its trunk, which are one place, and what it must not send to
    std::array<std::array<PortSet, floods>, port_max + 1> unflooded =
        {};  // ports that get no such packets of a port's

    /// Null if there is none.
    const SendingTrunk *find(bcm_trunk_t id) const;
};

class TrunkTable {
public:
    static constexpr int member_max = 256;

    explicit TrunkTable(const RuleStore &store) : store_(store) {}

    /// What is kept of where packets may go has changed.
    void touch() { is_worked_out_ = false; }

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
    void bar(TrunkPorts &ports) const;

    const RuleStore &store_;
    std::map<bcm_trunk_t, Trunk> trunks_;
    bool is_worked_out_ = false;
    TrunkPorts ports_;
};

}  // namespace sim
