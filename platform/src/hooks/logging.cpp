#include "quorel_api/logging.h"

#include "trace_lines.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

namespace {

constexpr int layers = 16, sources = 256;
constexpr int error = 2, warning = 3;
constexpr const char *severities[] = {"none",        "fatal",   "error",    "warning",
                                      "information", "verbose", "debugging"};
constexpr int severity_max = static_cast<int>(std::size(severities)) - 1;
constexpr int platform_layer = 0, platform_source = 0;

using Thresholds = std::array<std::array<signed char, sources>, layers>;

/// A threshold has only to tell severities apart.
signed char threshold(int severity)
{
    return static_cast<signed char>(std::clamp(severity, 0, severity_max));
}

Thresholds allOf(int severity)
{
    Thresholds all;
    for (auto &layer : all) {
        layer.fill(threshold(severity));
    }
    return all;
}

Thresholds &thresholds()
{
    static Thresholds &all = *new Thresholds(allOf(warning));
    return all;
}

std::string &agent()
{
    static std::string &name = *new std::string;
    return name;
}

signed char *thresholdOf(int layer, int source)
{
    const bool known = layer >= 0 && layer < layers && source >= 0 && source < sources;
    return known ? &thresholds()[static_cast<std::size_t>(layer)][static_cast<std::size_t>(source)] : nullptr;
}

/// Some text and what follows it, or nothing if there is none.
std::string with(const char *text, const char *end)
{
    return text && *text ? std::string(text) + end : std::string();
}

std::string withoutLineEnds(const char *text)
{
    std::string line = text ? text : "";
    line.erase(line.find_last_not_of("\r\n") + 1);
    return line;
}

}  // namespace

void setSandAgentName(char *name)
{
    trace("setSandAgentName(%s)", name ? name : "");
    agent() = name ? name : "";
}

void BelvokSetTraceLevel(int layer, int source, int severity)
{
    trace("BelvokSetTraceLevel(%d, %d, %d)", layer, source, severity);
    if (signed char *chosen = thresholdOf(layer, source)) {
        *chosen = threshold(severity);
    }
}

void BelvokSetAllTraceLevel(int severity)
{
    trace("BelvokSetAllTraceLevel(%d)", severity);
    thresholds() = allOf(severity);
}

void BelvokWriteBslLogMsg(const char *file, unsigned int line, const char *func, int severity, int layer,
                          int source, int unit, const char *msg)
{
    const signed char *limit = thresholdOf(layer, source);
    if (!limit || severity < 1 || severity > *limit) {
        return;
    }
    std::string const where = with(file, ":") + std::to_string(line) + ": " + with(func, "(): ");
    std::string const of_unit = unit >= 0 ? " unit " + std::to_string(unit) : "";
    std::string const who = with(agent().c_str(), ": ");
    std::printf("%s%s: layer %d source %d%s: %s%s\n", who.c_str(), severities[severity], layer, source,
                of_unit.c_str(), where.c_str(), withoutLineEnds(msg).c_str());
    std::fflush(stdout);
}

void logProblem(const char *format, ...)
{
    char text[1024];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    BelvokWriteBslLogMsg("platform", 0, nullptr, error, platform_layer, platform_source, -1, text);
}

void resetLog()
{
    thresholds() = allOf(warning);
    agent().clear();
}
