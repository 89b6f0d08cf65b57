#include "quorel_api/bring_up.h"

#include "configuration.h"
#include "trace_lines.h"
#include "whole_file.h"

#include <algorithm>
#include <cstdlib>

extern "C" {
#include <bcm/attach.h>
#include <bcm/error.h>
#include <sal/config.h>
}

namespace {

std::string trimmed(const std::string &text)
{
    constexpr const char *blanks = " \t\r\v\f";
    std::size_t const first = text.find_first_not_of(blanks);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The properties in the order of the lines; nothing if a line is none.
std::optional<std::vector<Property>> parse(const char *fname, const std::string &text)
{
    std::vector<Property> properties;
    std::size_t begin = 0;
    for (int number = 1; begin < text.size(); ++number) {
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        std::string const line = trimmed(text.substr(begin, end - begin));
        begin = end + 1;
        if (line.empty() || line[0] == '#') {
            continue;
        }
        std::size_t const equals = line.find('=');
        // A NUL would end what the store gets to see.
        if (equals == std::string::npos || line.find('\0') != std::string::npos) {
            logProblem("%s:%d: not a property", fname, number);
            return std::nullopt;
        }
        properties.push_back({trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1))});
    }
    return properties;
}

std::optional<std::string> valueOf(const std::string &name)
{
    const char *value = sal_config_get(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

int set(Property property)
{
    const int rc = sal_config_set(&property.name[0], property.value ? &(*property.value)[0] : nullptr);
    return rc == BCM_E_NOT_FOUND && !property.value ? static_cast<int>(BCM_E_NONE) : rc;
}

std::string &copyEnginePath()
{
    static std::string &path = *new std::string;
    return path;
}

}  // namespace

int setProperties(const std::vector<Property> &properties, const Property **refused)
{
    std::vector<Property> before;
    for (const Property &property : properties) {
        const Property now = {property.name, valueOf(property.name)};
        const int rc = set(property);
        if (rc == BCM_E_NONE) {
            before.push_back(now);
            continue;
        }
        for (auto earlier = before.rbegin(); earlier != before.rend(); ++earlier) {
            set(*earlier);
        }
        *refused = &property;
        return rc;
    }
    return BCM_E_NONE;
}

const std::string &copyEngineConstraintsFilePath()
{
    return copyEnginePath();
}

void QuorelApiSetSocProperties(const char *fname)
{
    trace("QuorelApiSetSocProperties(%s)", fname ? fname : "");
    std::string text;
    if (!fname || !readWholeFile(fname, &text)) {
        logProblem("SOC properties cannot be read from '%s'", fname ? fname : "");
        return;
    }
    const auto properties = parse(fname, text);
    const Property *refused = nullptr;
    if (properties && setProperties(*properties, &refused) != BCM_E_NONE) {
        logProblem("%s: '%s' cannot be set", fname, refused->name.c_str());
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
