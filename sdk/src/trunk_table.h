/// The trunks of a unit.
#pragma once

#include <bcm/trunk.h>

#include <map>
#include <vector>

namespace sim {

struct Trunk {
    uint32 flags = 0;  // of bcm_trunk_create
    bcm_trunk_info_t info = {};
    std::vector<bcm_trunk_member_t> members;
};

struct TrunkTable {
    static constexpr int member_max = 256;

    std::map<bcm_trunk_t, Trunk> trunks;
};

}  // namespace sim
