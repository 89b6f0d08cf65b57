/// Start-up of the application, and its parameters as words.
#include "number_text.h"
#include "shell_arguments.h"
#include "sim_chip.h"
#include "sim_config.h"
#include "sim_shell.h"
#include "sim_startup.h"
#include "startup_steps.h"
#include "switch.h"
#include "unit_attach.h"

#include <soc/init.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
#include <string>
#include <vector>

using namespace sim;

namespace {

using Parameters = appl_dcmn_init_param_t;

constexpr int repeat_max = 1000;

/// A member by its name; it has one of the two types.
struct Member {
    const char *name;
    int32 Parameters::*number;
    uint32 Parameters::*natural;
};

constexpr Member signed_member(const char *name, int32 Parameters::*member)
{
    return {name, member, nullptr};
}

constexpr Member unsigned_member(const char *name, uint32 Parameters::*member)
{
    return {name, nullptr, member};
}

constexpr Member members[] = {
    unsigned_member("unit", &Parameters::unit),
    signed_member("nof_devices", &Parameters::nof_devices),
    signed_member("repeat", &Parameters::repeat),
    signed_member("no_init", &Parameters::no_init),
    signed_member("no_deinit", &Parameters::no_deinit),
    signed_member("no_attach", &Parameters::no_attach),
    signed_member("no_bcm", &Parameters::no_bcm),
    signed_member("no_soc", &Parameters::no_soc),
    signed_member("no_intr", &Parameters::no_intr),
    signed_member("no_rx_los", &Parameters::no_rx_los),
    signed_member("modid", &Parameters::modid),
    signed_member("base_modid", &Parameters::base_modid),
    signed_member("flags", &Parameters::flags),
    signed_member("no_linkscan", &Parameters::no_linkscan),
    signed_member("warmboot", &Parameters::warmboot),
    signed_member("engine_dump", &Parameters::engine_dump),
    signed_member("no_sync", &Parameters::no_sync),
    signed_member("no_elk_appl", &Parameters::no_elk_appl),
    signed_member("no_elk_device", &Parameters::no_elk_device),
    signed_member("no_elk_second_device", &Parameters::no_elk_second_device),
    unsigned_member("elk_ilkn_rev", &Parameters::elk_ilkn_rev),
    unsigned_member("elk_mdio_id", &Parameters::elk_mdio_id),
    unsigned_member("elk_mdio_second_id", &Parameters::elk_mdio_second_id),
    signed_member("no_packet_rx", &Parameters::no_packet_rx),
    signed_member("packet_rx_cosq", &Parameters::packet_rx_cosq),
    signed_member("no_appl", &Parameters::no_appl),
    signed_member("no_appl_stk", &Parameters::no_appl_stk),
    signed_member("appl_traffic_enable_stage", &Parameters::appl_traffic_enable_stage),
    unsigned_member("cosq_disable", &Parameters::cosq_disable),
    unsigned_member("appl_flags", &Parameters::appl_flags),
    signed_member("no_itmh_prog_mode", &Parameters::no_itmh_prog_mode),
    signed_member("rc_load", &Parameters::rc_load),
    unsigned_member("is_resources_check", &Parameters::is_resources_check),
    unsigned_member("error_on_leak", &Parameters::error_on_leak),
    unsigned_member("l2_mode", &Parameters::l2_mode),
};

const Member *find_member(const std::string &name)
{
    for (const Member &member : members) {
        if (name == member.name) {
            return &member;
        }
    }
    return nullptr;
}

bool set_member(const std::string &name, const std::string &text, Parameters *parameters)
{
    const Member *member = find_member(name);
    int64 value;
    if (member == nullptr || !read_integer(text, &value)) {
        return false;
    }
    if (member->number != nullptr) {
        parameters->*member->number = static_cast<int32>(value);
        return value == static_cast<int32>(value);
    }
    parameters->*member->natural = static_cast<uint32>(value);
    return value == static_cast<int64>(static_cast<uint32>(value));
}

Parameters defaults(int unit)
{
    Parameters parameters = {};
    parameters.unit = static_cast<uint32>(unit);
    parameters.nof_devices = 1;
    parameters.repeat = 1;
    parameters.modid = -1;
    parameters.base_modid = -1;
    // A chip of its own that the simulated board has not.
    parameters.no_elk_device = parameters.no_elk_second_device = parameters.no_elk_appl = 1;
    return parameters;
}

/// BCM_E_NONE, or what is wrong with the arguments.
int check(int unit, const Parameters *parameters)
{
    if (parameters == nullptr) {
        return BCM_E_PARAM;
    }
    if (unit < 0 || unit >= unit_max) {
        return BCM_E_UNIT;
    }
    const bool possible = parameters->unit == static_cast<uint32>(unit) && parameters->nof_devices >= 1
                          && parameters->nof_devices <= unit_max - unit && parameters->repeat >= 0
                          && parameters->repeat <= repeat_max;
    return possible ? BCM_E_NONE : BCM_E_PARAM;
}

int start_modules(int unit, const Parameters &parameters)
{
    int rc = init_modules(unit, parameters.cosq_disable == 0);
    if (rc >= 0 && !parameters.no_appl_stk) {
        rc = init_stacking(unit, parameters.modid);
    }
    if (rc >= 0 && !parameters.no_packet_rx) {
        rc = init_reception(unit);
    }
    return rc >= 0 && !parameters.no_linkscan ? init_link_scan(unit) : rc;
}

int start_unit(int unit, const Parameters &parameters, const StartSettings &settings)
{
    if (attached(unit) == nullptr) {
        return BCM_E_UNIT;
    }
    int rc = parameters.no_soc ? BCM_E_NONE : soc_init(unit);
    if (rc >= 0 && !parameters.no_bcm) {
        rc = start_modules(unit, parameters);
    }
    if (rc >= 0 && !parameters.no_appl) {
        rc = apply(unit, settings);
    }
    return rc >= 0 && parameters.rc_load ? diag_rc_load(unit) : rc;
}

using UnitSettings = std::map<int, StartSettings>;

/// Nothing for any unit if the properties are not to be applied.
int read_settings(int first, const Parameters &parameters, UnitSettings *settings)
{
    int rc = BCM_E_NONE;
    for (int unit = first; unit < first + parameters.nof_devices && rc >= 0; ++unit) {
        StartSettings &own = (*settings)[unit];
        rc = parameters.no_appl ? static_cast<int>(BCM_E_NONE) : read_start_settings(unit, &own);
    }
    return rc;
}

/// Once through all units. Those that were attached here are detached again after a failure.
int start_units(const UnitSettings &settings, const Parameters &parameters)
{
    int rc = BCM_E_NONE;
    std::vector<int> attached_here;
    for (const auto &[unit, own] : settings) {
        if (rc < 0) {
            break;
        }
        if (!parameters.no_attach) {
            if (attached(unit) == nullptr) {
                attached_here.push_back(unit);
            }
            attach_local(unit);
        }
        rc = start_unit(unit, parameters, own);
    }
    if (rc < 0) {
        for (const int unit : attached_here) {
            detach_unit(unit);
        }
    }
    return rc;
}

}  // namespace

extern "C" {

int sim_appl_dcmn_init(int unit, appl_dcmn_init_param_t *init_param)
{
    int rc = check(unit, init_param);
    if (rc < 0 || init_param->no_init) {
        return rc;
    }
    const Parameters parameters = *init_param;
    UnitSettings settings;
    rc = sal_config_init();
    rc = rc < 0 ? rc : read_settings(unit, parameters, &settings);
    int times = std::max(parameters.repeat, 1);
    while (rc >= 0 && times-- > 0) {
        rc = start_units(settings, parameters);
    }
    return rc;
}

int sim_appl_dcmn_deinit(int unit, appl_dcmn_init_param_t *init_param)
{
    const int rc = check(unit, init_param);
    if (rc < 0 || init_param->no_deinit) {
        return rc;
    }
    const int end = unit + init_param->nof_devices;
    for (int device = unit; device < end; ++device) {
        if (attached(device) == nullptr) {
            return BCM_E_UNIT;
        }
    }
    for (int device = unit; device < end; ++device) {
        if (!init_param->no_soc) {
            soc_deinit(device);
        }
        detach_unit(device);
    }
    return BCM_E_NONE;
}

cmd_result_t sim_appl_dcmn_init_usage_parse(int unit, args_t *a, appl_dcmn_init_param_t *init_param)
{
    if (init_param == nullptr) {
        return CMD_FAIL;
    }
    Parameters parameters = defaults(unit);
    if (a != nullptr) {
        Arguments args(a);
        if (!args.valid()) {
            return CMD_USAGE;
        }
        while (const char *word = args.peek()) {
            std::string name, value;
            if (!split_setting(word, &name, &value) || !set_member(name, value, &parameters)) {
                const bool known = find_member(name) != nullptr;
                std::printf("%s: '%s' %s\n", args.name(), word,
                            known ? "is no value of the parameter" : "sets no parameter");
                return CMD_USAGE;
            }
            args.next();
        }
    }
    *init_param = parameters;
    return CMD_OK;
}

}  // extern "C"
