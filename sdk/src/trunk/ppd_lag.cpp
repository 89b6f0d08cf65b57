#include "begin.h"
#include "sim_lag_member.h"
#include "trunk.h"

#include <soc/ppd_lag.h>

using namespace sim;

namespace {

bool valid(uint32 group, const SOC_PPD_LAG_MEMBER &member)
{
    return group <= SOC_PPD_LAG_MAX && member.member_id <= SOC_PPD_LAG_MEMBER_ID_MAX
           && member.sys_port <= SOC_PPD_LAG_SYS_PORT_MAX;
}

}  // namespace

extern "C" {

void sim_SOC_PPD_LAG_MEMBER_clear(SOC_PPD_LAG_MEMBER *info)
{
    if (info != nullptr) {
        *info = {};
    }
}

int sim_soc_ppd_lag_member_add(int unit, uint32 lag_ndx, SOC_PPD_LAG_MEMBER *member,
                               SOC_PPD_LAG_FAILURE *failure)
{
    return begin(unit, given(member, failure)).then([&](Switch &sw) -> int {
        *failure = SOC_PPD_LAG_FAILURE_NONE;
        if (!valid(lag_ndx, *member)) {
            return BCM_E_PARAM;
        }
        *failure = lags_of(sw).add(lag_ndx, *member);
        switch (*failure) {
        case SOC_PPD_LAG_FAILURE_NONE:
            return BCM_E_NONE;
        case SOC_PPD_LAG_FAILURE_NO_SPACE:
            return BCM_E_FULL;
        default:
            return BCM_E_EXISTS;
        }
    });
}

int sim_soc_ppd_lag_member_remove(int unit, uint32 lag_ndx, SOC_PPD_LAG_MEMBER *member)
{
    return begin(unit, given(member)).then([&](Switch &sw) -> int {
        if (!valid(lag_ndx, *member)) {
            return BCM_E_PARAM;
        }
        return lags_of(sw).remove(lag_ndx, *member) ? BCM_E_NONE : BCM_E_NOT_FOUND;
    });
}

}  // extern "C"
