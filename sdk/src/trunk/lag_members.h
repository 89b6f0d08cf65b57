/// The members of a unit's link aggregation groups.
#pragma once

#include <soc/ppd_lag.h>

#include <map>

namespace sim {

class LagMembers {
public:
    /// Group, port and place are in range. SOC_PPD_LAG_FAILURE_NONE: added.
    SOC_PPD_LAG_FAILURE add(uint32 group, const SOC_PPD_LAG_MEMBER &member);

    /// False: no member with that port and place.
    bool remove(uint32 group, const SOC_PPD_LAG_MEMBER &member);

private:
    std::map<uint32, std::map<uint32, uint32>> ports_;  // group to place to system port
    std::map<uint32, uint32> groups_;                   // system port to group
};

}  // namespace sim
