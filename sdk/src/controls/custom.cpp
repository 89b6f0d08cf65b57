/// Settings of ports that an application keeps itself: calls go to the function that it registered.
#include "begin.h"
#include "rule_store.h"
#include "sim_custom.h"

#include <cstring>

using namespace sim;

namespace {

constexpr rules::Table table = {"bcm_custom", "custom"};

struct Registration {
    bcm_custom_cb_t function;
    void *user_data;
};

/// The function and its datum: BCM_E_UNAVAIL while there is none.
int registered(Switch &sw, Registration *registration)
{
    const std::string *kept = rule_store_of(sw).find(table.name, "");
    if (kept == nullptr) {
        return BCM_E_UNAVAIL;
    }
    std::memcpy(registration, kept->data(), sizeof *registration);
    return BCM_E_NONE;
}

int call(int unit, bcm_port_t port, int setget, int type, int length, uint32 *args, int *actual_len)
{
    return begin(unit, own_port(port)).then([&](Switch &sw, int own) -> int {
        Registration registration = {};
        const int rc = registered(sw, &registration);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (length < 0 || length > BCM_CUSTOM_ARGS_MAX || (args == nullptr && length != 0)) {
            return BCM_E_PARAM;
        }
        return registration.function(unit, own, setget, type, length, args, actual_len,
                                     registration.user_data);
    });
}

}  // namespace

extern "C" {

int sim_bcm_custom_register(int unit, bcm_custom_cb_t func, void *user_data)
{
    return begin(unit, given(func)).then([&](Switch &sw) {
        const Registration registration = {func, user_data};
        const std::string kept(reinterpret_cast<const char *>(&registration), sizeof registration);
        rule_store_of(sw).keeps_functions(table);
        rule_store_of(sw).put(table, "", kept);
    });
}

int sim_bcm_custom_unregister(int unit)
{
    return begin(unit).then(
        [](Switch &sw) -> int { return rule_store_of(sw).erase(table, "") ? BCM_E_NONE : BCM_E_UNAVAIL; });
}

int sim_bcm_custom_port_set(int unit, bcm_port_t port, int type, int len, uint32 *args)
{
    int actual_len = 0;
    return call(unit, port, BCM_CUSTOM_SET, type, len, args, &actual_len);
}

int sim_bcm_custom_port_get(int unit, bcm_port_t port, int type, int max_len, uint32 *args, int *actual_len)
{
    return begin(unit, given(actual_len)).then([&]() -> int {
        return call(unit, port, BCM_CUSTOM_GET, type, max_len, args, actual_len);
    });
}

}  // extern "C"
