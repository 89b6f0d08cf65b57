#include "property_file.h"

#include "whole_file.h"

#include <bcm/error.h>

#include <string>
#include <string_view>

namespace sim {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\v\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// What some editors put before a text; it belongs to no line.
std::string_view without_byte_order_mark(std::string_view text)
{
    constexpr std::string_view mark = "\xef\xbb\xbf";
    return text.substr(0, mark.size()) == mark ? text.substr(mark.size()) : text;
}

/// Adds what the line at that place says. False if it cannot be a line of a property file.
bool read_line(std::string_view line, const std::string &place, Properties *properties)
{
    line = trimmed(line);
    if (line.empty() || line.front() == '#') {
        return true;
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return false;
    }
    const std::string name(trimmed(line.substr(0, equals)));
    const std::string value(trimmed(line.substr(equals + 1)));
    if (!valid_property_name(name) || !valid_property_value(value)) {
        return false;
    }
    (*properties)[name] = {value, place};
    return true;
}

}  // namespace

int read_property_file(const std::string &path, Properties *properties, std::string *problem)
{
    std::string text;
    const int rc = read_file(path, &text);
    if (rc != BCM_E_NONE) {
        return rc;
    }
    Properties found;
    std::string_view rest = without_byte_order_mark(text);
    for (int number = 1; !rest.empty(); ++number) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(line.size() < rest.size() ? line.size() + 1 : line.size());
        const std::string place = place_in_file(path, number);
        if (!read_line(line, place, &found)) {
            *problem = place + ": not a property";
            return BCM_E_CONFIG;
        }
    }
    *properties = std::move(found);
    return BCM_E_NONE;
}

std::string property_text(const Properties &properties)
{
    std::string text;
    for (const auto &[name, property] : properties) {
        text += name + "=" + property.value + "\n";
    }
    return text;
}

}  // namespace sim
