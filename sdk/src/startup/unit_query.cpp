/// Which units there are, and through what they are driven.
#include "begin.h"
#include "number_text.h"
#include "sim_attach.h"
#include "switch.h"
#include "unit_attach.h"

#include <string>

using namespace sim;

namespace {

template <class Value>
int answer(int unit, int *result, Value value)
{
    return begin(unit, given(result)).then([&]() -> int {
        *result = value(driver_of(unit));
        return BCM_E_NONE;
    });
}

}  // namespace

extern "C" {

int sim_bcm_find(char *type, char *subtype, int remunit)
{
    const std::string wanted = subtype != nullptr ? subtype : "";
    for (int unit = 0; is_local_driver(type) && unit < unit_max; ++unit) {
        if (attached(unit) != nullptr && driver_of(unit).subtype == wanted
            && driver_of(unit).remote_unit == remunit) {
            return unit;
        }
    }
    return BCM_E_NOT_FOUND;
}

int sim_bcm_unit_list(int unit_max_wanted, int *unit_arr, int *unit_count)
{
    if (unit_max_wanted < 0 || unit_count == nullptr || (unit_arr == nullptr && unit_max_wanted > 0)) {
        return BCM_E_PARAM;
    }
    *unit_count = 0;
    for (int unit = 0; unit < unit_max && *unit_count < unit_max_wanted; ++unit) {
        if (attached(unit) != nullptr) {
            unit_arr[(*unit_count)++] = unit;
        }
    }
    return BCM_E_NONE;
}

int sim_bcm_unit_max_get(int *unit_max_found)
{
    if (unit_max_found == nullptr) {
        return BCM_E_PARAM;
    }
    *unit_max_found = unit_max - 1;
    return BCM_E_NONE;
}

int sim_bcm_unit_valid_get(int unit, int *valid)
{
    if (valid == nullptr) {
        return BCM_E_PARAM;
    }
    *valid = attached(unit) != nullptr;
    return BCM_E_NONE;
}

int sim_bcm_unit_local_get(int unit, int *local)
{
    return answer(unit, local, [](const Driver &) { return 1; });
}

int sim_bcm_unit_remote_get(int unit, int *remunit)
{
    return answer(unit, remunit, [](const Driver &driver) { return driver.remote_unit; });
}

int sim_bcm_unit_subtype_get(int unit, char *subtype, int size)
{
    return begin(unit, given(subtype)).then([&]() -> int {
        return write_text(driver_of(unit).subtype, subtype, size) ? BCM_E_NONE : BCM_E_PARAM;
    });
}

}  // extern "C"
