#include "quorel_api/bring_up.h"

#include "configuration.h"
#include "trace_lines.h"

#include <cstdlib>
#include <optional>
#include <string>

extern "C" {
#include <bcm/attach.h>
#include <bcm/error.h>
#include <sal/config.h>
#include <sim/start.h>
}

namespace {

std::optional<std::string> valueOf(const std::string &name)
{
    const char *value = sal_config_get(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::string &copyEnginePath()
{
    static std::string &path = *new std::string;
    return path;
}

}  // namespace

const std::string &copyEngineConstraintsFilePath()
{
    return copyEnginePath();
}

void QuorelApiSetSocProperties(const char *fname)
{
    trace("QuorelApiSetSocProperties(%s)", fname ? fname : "");
    char problem[1024];
    const int rc = sim_config_load(fname ? fname : "", problem, sizeof problem);
    if (rc == BCM_E_CONFIG) {
        logProblem("%s", problem);
    } else if (rc != BCM_E_NONE) {
        logProblem("SOC properties cannot be read from '%s'", fname ? fname : "");
    }
}

void setCopyEngineConstraintsFilePath(const char *filePath)
{
    trace("setCopyEngineConstraintsFilePath(%s)", filePath ? filePath : "");
    copyEnginePath() = filePath ? filePath : "";
}

int belvok_soc_jer_fqp_pqp_new_algo_enable_get(int unit)
{
    constexpr const char *name = "fqp_pqp_new_algo_enable";
    if (bcm_attach_check(unit) != BCM_E_NONE) {
        return BCM_E_UNIT;
    }
    auto value = valueOf(std::string(name) + "." + std::to_string(unit));
    if (!value) {
        value = valueOf(name);
    }
    return value && std::strtol(value->c_str(), nullptr, 0) != 0;
}
