#include "quorel_api/standby.h"

#include "device_list.h"
#include "standby_values.h"
#include "trace_lines.h"

namespace {

bool isUnit(int unit)
{
    return unit >= 0 && unit < unit_max;
}

}  // namespace

void StandbyValues::setDeviceId(int unit, U32 id)
{
    if (isUnit(unit)) {
        device_ids_[unit] = id;
    }
}

void StandbyValues::setRevisionId(int unit, U32 id)
{
    if (isUnit(unit)) {
        revision_ids_[unit] = id;
    }
}

std::optional<U32> StandbyValues::find(const std::map<int, U32> &ids, int unit) const
{
    auto found = ids.find(unit);
    return on_ && found != ids.end() ? std::optional<U32>(found->second) : std::nullopt;
}

StandbyValues &standbyValues()
{
    static StandbyValues &values = *new StandbyValues;
    return values;
}

void standbySupIs(bool on)
{
    trace("standbySupIs(%d)", on);
    standbyValues().turn(on);
}

void standbyDevIdIs(int unit, U32 id)
{
    trace("standbyDevIdIs(%d, 0x%x)", unit, id);
    standbyValues().setDeviceId(unit, id);
}

void standbyRevIdIs(int unit, U32 id)
{
    trace("standbyRevIdIs(%d, 0x%x)", unit, id);
    standbyValues().setRevisionId(unit, id);
}

void standbyNumDevicesIs(U32 count)
{
    trace("standbyNumDevicesIs(%u)", count);
    standbyValues().setDeviceCount(count);
}
