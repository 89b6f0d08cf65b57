#include "quorel_api/table_access.h"

#include "access_policy.h"
#include "device_list.h"
#include "trace_lines.h"

#include <algorithm>
#include <bitset>
#include <iterator>

extern "C" {
#include <soc/memory_ids.h>
}

namespace {

/// Tables that the chip writes as packets pass.
constexpr int written_by_chip[] = {IQM_QUEUE_SIZEm, IQM_CREDIT_BALANCEm, CGM_VSQ_OCCUPANCYm,
                                   OAP_REMOTE_MEP_DBm, STC_COUNTERm};

std::bitset<unit_max> units_allowed;
bool all_allowed;

bool isAllowed(int unit)
{
    return all_allowed || (unit >= 0 && unit < unit_max && units_allowed[static_cast<std::size_t>(unit)]);
}

}  // namespace

bool mayAccess(const Hardware::ChipMemory &table)
{
    return isAllowed(table.unit()) || tableNotManagedBySdk(&table);
}

void resetTableAccess()
{
    units_allowed.reset();
    all_allowed = false;
}

bool tableNotManagedBySdk(const Hardware::ChipMemory *table)
{
    return table
           && std::find(std::begin(written_by_chip), std::end(written_by_chip), table->mem())
                  != std::end(written_by_chip);
}

void allowAllTableAccess(int unit, bool allow)
{
    trace("allowAllTableAccess(%d, %d)", unit, allow);
    if (unit >= 0 && unit < unit_max) {
        units_allowed[static_cast<std::size_t>(unit)] = allow;
    }
}

void simAllowAllTableAccess(bool allow)
{
    trace("simAllowAllTableAccess(%d)", allow);
    all_allowed = allow;
}

bool simTableAccessOk()
{
    return all_allowed;
}
