/// Single ports from text and back.
#include "port_text.h"

#include "begin.h"
#include "destination.h"
#include "number_text.h"
#include "sim_gport.h"
#include "sim_parse.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>

namespace sim {

int port_named(int unit, std::string_view text)
{
    text = trimmed(text);
    for (int port = 0; port <= port_max; ++port) {
        const char *name = sim_mod_port_name(unit, -1, port);
        if (name != nullptr && same_text(text, name)) {
            return port;
        }
    }
    int number, port;
    // A number with a kind in it is no port of the unit's, but a gport.
    const bool own =
        read_int(text, &number) && !BCM_GPORT_IS_SET(number) && resolve_own_port(number, &port) == BCM_E_NONE;
    return own ? port : -1;
}

int no_such_port(std::string_view text)
{
    text = trimmed(text);
    const auto is_letter = [](unsigned char c) { return std::isalpha(c) != 0; };
    const auto is_digit = [](unsigned char c) { return std::isdigit(c) != 0; };
    const auto digits = std::find_if_not(text.begin(), text.end(), is_letter);
    const bool name_like =
        digits != text.begin() && digits != text.end() && std::all_of(digits, text.end(), is_digit);
    int number;
    return name_like || read_int(text, &number) ? BCM_E_PORT : BCM_E_PARAM;
}

namespace {

constexpr char module_separator = '.';

struct Kind {
    std::string_view name;
    int type;
    int value_mask;
};
constexpr Kind kinds[] = {
    {"local=", BCM_GPORT_TYPE_LOCAL, BCM_GPORT_LOCAL_PORT_MASK},
    {"trunk=", BCM_GPORT_TYPE_TRUNK, BCM_GPORT_VALUE_MASK},
    {"system-port=", BCM_GPORT_TYPE_SYSTEM_PORT, BCM_GPORT_SYSTEM_PORT_ID_MASK},
};
constexpr std::string_view module_port = "modport=", any_kind = "gport=", black_hole = "black-hole",
                           invalid = "invalid";

/// Takes the prefix away; false if the text has another.
bool take_prefix(std::string_view *text, std::string_view prefix)
{
    if (!same_text(text->substr(0, prefix.size()), prefix)) {
        return false;
    }
    text->remove_prefix(prefix.size());
    return true;
}

bool read_below(std::string_view text, int most, int *value)
{
    return read_int(text, value) && *value >= 0 && *value <= most;
}

bool read_module_port(std::string_view text, bcm_gport_t *gport)
{
    const std::size_t separator = text.find(module_separator);
    int module, port;
    if (separator == std::string_view::npos
        || !read_below(text.substr(0, separator), BCM_GPORT_MODPORT_MODID_MASK, &module)
        || !read_below(text.substr(separator + 1), BCM_GPORT_LOCAL_PORT_MASK, &port)) {
        return false;
    }
    BCM_GPORT_MODPORT_SET(*gport, module, port);
    return true;
}

bool read_any_kind(std::string_view text, bcm_gport_t *gport)
{
    uint32 number;
    if (read_number(text, &number, 1) != NumberStatus::ok) {
        return false;
    }
    *gport = static_cast<bcm_gport_t>(number);
    return *gport != BCM_GPORT_INVALID;
}

std::string gport_text(bcm_gport_t gport)
{
    if (gport == BCM_GPORT_INVALID) {
        return std::string(invalid);
    }
    if (gport == BCM_GPORT_BLACK_HOLE) {
        return std::string(black_hole);
    }
    const int type = static_cast<int>(BCM_GPORT_TYPE(gport)), value = BCM_GPORT_VALUE(gport);
    if (type == BCM_GPORT_TYPE_NONE && value < BCM_PBMP_PORT_MAX) {
        return std::to_string(value);
    }
    if (type == BCM_GPORT_TYPE_MODPORT) {
        const int module = BCM_GPORT_MODPORT_MODID_GET(gport), port = BCM_GPORT_MODPORT_PORT_GET(gport);
        return std::string(module_port) + std::to_string(module) + module_separator + std::to_string(port);
    }
    for (const Kind &kind : kinds) {
        if (type == kind.type && (value & ~kind.value_mask) == 0) {
            return std::string(kind.name) + std::to_string(value);
        }
    }
    char digits[16];
    std::snprintf(digits, sizeof digits, "0x%08x", static_cast<unsigned>(gport));
    return std::string(any_kind) + digits;
}

}  // namespace

int read_gport(int unit, std::string_view text, bcm_gport_t *gport)
{
    text = trimmed(text);
    if (same_text(text, black_hole)) {
        *gport = BCM_GPORT_BLACK_HOLE;
        return BCM_E_NONE;
    }
    for (const Kind &kind : kinds) {
        if (take_prefix(&text, kind.name)) {
            int value;
            if (!read_below(text, kind.value_mask, &value)) {
                return BCM_E_PARAM;
            }
            *gport = BCM_GPORT_MAKE(kind.type, value);
            return BCM_E_NONE;
        }
    }
    if (take_prefix(&text, module_port)) {
        return read_module_port(text, gport) ? BCM_E_NONE : BCM_E_PARAM;
    }
    if (take_prefix(&text, any_kind)) {
        return read_any_kind(text, gport) ? BCM_E_NONE : BCM_E_PARAM;
    }
    const int port = port_named(unit, text);
    if (port < 0) {
        return no_such_port(text);
    }
    *gport = port;
    return BCM_E_NONE;
}

}  // namespace sim

using namespace sim;

extern "C" {

int sim_parse_port(int unit, char *s, soc_port_t *portp)
{
    return begin(unit, given(s, portp)).then([&]() -> int {
        const int port = port_named(unit, s);
        if (port < 0) {
            return no_such_port(s);
        }
        *portp = port;
        return BCM_E_NONE;
    });
}

int sim_parse_bcm_port(int unit, char *s, bcm_port_t *portp)
{
    return begin(unit, given(s, portp)).then([&]() -> int {
        bcm_gport_t gport;
        const int rc = read_gport(unit, s, &gport);
        if (rc == BCM_E_NONE) {
            *portp = gport;
        }
        return rc;
    });
}

char *sim_format_gport(char *buf, bcm_gport_t gport)
{
    return buf != nullptr ? std::strcpy(buf, gport_text(gport).c_str()) : nullptr;
}

}  // extern "C"
