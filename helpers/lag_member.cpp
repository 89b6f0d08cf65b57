#include "lag_member.h"

extern "C" {
#include <soc/ppd_lag.h>
}

namespace {

SOC_PPD_LAG_MEMBER member_record(uint32 sys_port, uint32 member_id)
{
    SOC_PPD_LAG_MEMBER member;
    SOC_PPD_LAG_MEMBER_clear(&member);
    member.sys_port = sys_port;
    member.member_id = member_id;
    return member;
}

}  // namespace

int soc_ppd_lag_member_add_wrapper(int unit, uint32 lag_ndx, uint32 sys_port, uint32 member_id)
{
    SOC_PPD_LAG_MEMBER member = member_record(sys_port, member_id);
    SOC_PPD_LAG_FAILURE failure;
    return soc_ppd_lag_member_add(unit, lag_ndx, &member, &failure);
}

int soc_ppd_lag_member_remove_wrapper(int unit, uint32 lag_ndx, uint32 sys_port, uint32 member_id)
{
    SOC_PPD_LAG_MEMBER member = member_record(sys_port, member_id);
    return soc_ppd_lag_member_remove(unit, lag_ndx, &member);
}
