/// The trunks of a unit.
#pragma once

#include <bcm/trunk.h>

#include <map>
#include <random>
#include <vector>

namespace sim {

struct Trunk {
    uint32 flags = 0;  // of bcm_trunk_create
    bcm_trunk_info_t info = {};
    std::vector<bcm_trunk_member_t> members;
    unsigned turns = 0;  // packets sent by BCM_TRUNK_PSC_ROUND_ROBIN
};

struct TrunkTable {
    static constexpr int member_max = 256;

    std::map<bcm_trunk_t, Trunk> trunks;
    std::minstd_rand chance;  // for BCM_TRUNK_PSC_RANDOM; the same in each run
};

}  // namespace sim
