#include "lag_members.h"

namespace sim {

SOC_PPD_LAG_FAILURE LagMembers::add(uint32 group, const SOC_PPD_LAG_MEMBER &member)
{
    auto &places = ports_[group];
    if (places.count(member.member_id) != 0) {
        return SOC_PPD_LAG_FAILURE_PLACE_TAKEN;
    }
    if (groups_.count(member.sys_port) != 0) {
        return SOC_PPD_LAG_FAILURE_PORT_TAKEN;
    }
    if (places.size() >= SOC_PPD_LAG_MEMBERS_MAX) {
        return SOC_PPD_LAG_FAILURE_NO_SPACE;
    }
    places[member.member_id] = member.sys_port;
    groups_[member.sys_port] = group;
    return SOC_PPD_LAG_FAILURE_NONE;
}

bool LagMembers::remove(uint32 group, const SOC_PPD_LAG_MEMBER &member)
{
    auto &places = ports_[group];
    const auto place = places.find(member.member_id);
    if (place == places.end() || place->second != member.sys_port) {
        return false;
    }
    places.erase(place);
    groups_.erase(member.sys_port);
    return true;
}

}  // namespace sim
