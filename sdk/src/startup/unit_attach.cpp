#include "unit_attach.h"

#include "begin.h"
#include "handler_list.h"
#include "kept_units.h"
#include "packet_watch.h"
#include "sim_attach.h"
#include "switch.h"
#include "warm_boot.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <string>
#include <utility>

namespace sim {

namespace {

constexpr const char *local_driver = "local";

// The identity of the simulated chip.
constexpr uint32 vendor_id = 0x51d0;
constexpr uint32 device_id = 0x4a10;
constexpr uint32 revision_id = 0x11;
constexpr int pipes = 2;

constexpr bcm_detach_retry_t retry_default = {5, 10000};

struct Subscriber {
    int unit;  // -1: all
    Callback<bcm_attach_cb_t> callback;

    bool operator==(const Subscriber &other) const
    {
        return unit == other.unit && callback == other.callback;
    }
};

std::array<Driver, unit_max> drivers = [] {
    std::array<Driver, unit_max> made;
    made.fill({"", -1, retry_default});
    return made;
}();

HandlerList<Subscriber> &subscribers()
{
    // Never destroyed, and in place: who tells of what is done cannot run short of memory.
    alignas(HandlerList<Subscriber>) static unsigned char place[sizeof(HandlerList<Subscriber>)];
    static auto &all = *new (place) HandlerList<Subscriber>;
    return all;
}

/// Tells it of that switch: who is told may detach it, and what then happens is told by itself. False: it did.
bool tell(const Switch *sw, bool attach, const Driver &driver)
{
    const UnitsLock lock;
    const SwitchesInUse in_use(lock);
    const int unit = sw->unit;
    subscribers().each([&](const Subscriber &subscriber) {
        const bool concerned = subscriber.unit == unit || subscriber.unit == -1;
        if (concerned && attached(unit) == sw) {
            bcm_attach_info_t info = {unit, local_driver, driver.subtype.c_str(), driver.remote_unit};
            subscriber.callback.function(unit, attach, &info, subscriber.callback.user_data);
        }
    });
    return attached(unit) == sw;
}

void attach_and_tell(int unit, const Driver &driver)
{
    Driver kept = driver;
    if (!attach_warm(unit)) {
        attach(unit);
    }
    driver_of(unit) = std::move(kept);
    tell(attached(unit), true, driver);
}

int free_unit()
{
    int unit = 0;
    while (unit < unit_max && attached(unit) != nullptr) {
        ++unit;
    }
    return unit < unit_max ? unit : -1;
}

bool is_unit(int unit)
{
    return unit >= 0 && unit < unit_max;
}

bool valid_subscription(int unit, bcm_attach_cb_t callback)
{
    return callback != nullptr && (unit == -1 || is_unit(unit));
}

}  // namespace

Driver &driver_of(int unit)
{
    return drivers[static_cast<std::size_t>(unit)];
}

bool is_local_driver(const char *type)
{
    return type == nullptr || *type == '\0' || std::strcmp(type, local_driver) == 0;
}

int attach_local(int unit)
{
    if (!is_unit(unit)) {
        return BCM_E_UNIT;
    }
    if (attached(unit) != nullptr) {
        detach_unit(unit);
    }
    forget_kept(unit);
    attach_and_tell(unit, {"", -1, retry_default});
    return BCM_E_NONE;
}

int detach_unit(int unit)
{
    if (attached(unit) == nullptr) {
        return BCM_E_UNIT;
    }
    const Driver driver = driver_of(unit);
    stop_packet_watch(unit);
    Switch *const sw = attached(unit);
    if (tell(sw, false, driver)) {
        if (boots_warm(*sw)) {
            detach_warm(*sw);
        } else {
            detach(unit);
        }
    }
    return BCM_E_NONE;
}

}  // namespace sim

using namespace sim;

extern "C" {

int sim_bcm_attach(int unit, char *type, char *subtype, int remunit)
{
    const int chosen = unit == -1 ? free_unit() : unit;
    if (!is_unit(chosen)) {
        return unit == -1 ? BCM_E_FULL : BCM_E_UNIT;
    }
    if (!is_local_driver(type)) {
        return BCM_E_CONFIG;
    }
    if (attached(chosen) != nullptr) {
        return BCM_E_EXISTS;
    }
    attach_and_tell(chosen, {subtype != nullptr ? subtype : "", remunit, retry_default});
    return unit == -1 ? chosen : BCM_E_NONE;
}

int sim_bcm_attach_early_txrx(int unit, char *type, char *subtype, int remunit)
{
    return sim_bcm_attach(unit, type, subtype, remunit);
}

int sim_bcm_attach_check(int unit)
{
    return attached(unit) != nullptr ? BCM_E_NONE : BCM_E_UNIT;
}

int sim_bcm_attach_max(int *max_units)
{
    if (max_units == nullptr) {
        return BCM_E_PARAM;
    }
    int unit = unit_max - 1;
    while (unit >= 0 && attached(unit) == nullptr) {
        --unit;
    }
    *max_units = unit;
    return BCM_E_NONE;
}

int sim_bcm_attach_register(int unit, bcm_attach_cb_t cb, void *user_data)
{
    if (!valid_subscription(unit, cb)) {
        return cb == nullptr ? BCM_E_PARAM : BCM_E_UNIT;
    }
    return subscribers().add({unit, {cb, user_data}});
}

int sim_bcm_attach_unregister(int unit, bcm_attach_cb_t cb, void *user_data)
{
    if (!valid_subscription(unit, cb)) {
        return cb == nullptr ? BCM_E_PARAM : BCM_E_UNIT;
    }
    return subscribers().remove({unit, {cb, user_data}});
}

void sim_bcm_attach_info_t_init(bcm_attach_info_t *info)
{
    if (info != nullptr) {
        *info = {-1, nullptr, nullptr, -1};
    }
}

int sim_bcm_detach(int unit)
{
    return detach_unit(unit);
}

int sim_bcm_detach_late_txrx(int unit)
{
    return detach_unit(unit);
}

int sim_bcm_detach_retry_get(int unit, bcm_detach_retry_t *retry)
{
    return begin(unit, given(retry)).then([&]() -> int {
        *retry = driver_of(unit).retry;
        return BCM_E_NONE;
    });
}

int sim_bcm_detach_retry_set(int unit, bcm_detach_retry_t *retry)
{
    return begin(unit, given(retry)).then([&]() -> int {
        if (retry->num_retries < 0) {
            return BCM_E_PARAM;
        }
        driver_of(unit).retry = *retry;
        return BCM_E_NONE;
    });
}

void sim_bcm_detach_retry_t_init(bcm_detach_retry_t *retry)
{
    if (retry != nullptr) {
        *retry = retry_default;
    }
}

int sim_bcm_info_get(int unit, bcm_info_t *info)
{
    return begin(unit, given(info)).then([&]() -> int {
        *info = {vendor_id, device_id, revision_id, BCM_INFO_SWITCH | BCM_INFO_TRAFFIC_MANAGER, pipes};
        return BCM_E_NONE;
    });
}

void sim_bcm_info_t_init(bcm_info_t *info)
{
    if (info != nullptr) {
        *info = {};
    }
}

}  // extern "C"
