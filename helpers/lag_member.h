// LAG members without the SDK's member record.
#pragma once

extern "C" {
#include <sal/types.h>
}

/// Results are the SDK's return codes. Why a member could not be added is not told beyond that.
int soc_ppd_lag_member_add_wrapper(int unit, uint32 lag_ndx, uint32 sys_port, uint32 member_id);
int soc_ppd_lag_member_remove_wrapper(int unit, uint32 lag_ndx, uint32 sys_port, uint32 member_id);
