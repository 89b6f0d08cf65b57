/// The trunks of a unit.
#pragma once

#include "destination.h"

#include <bcm/trunk.h>

#include <algorithm>
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

struct TrunkTable {
    static constexpr int member_max = 256;

    std::map<bcm_trunk_t, Trunk> trunks;
    std::minstd_rand chance;  // for BCM_TRUNK_PSC_RANDOM; the same in each run
};

}  // namespace sim
