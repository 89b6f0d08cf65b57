/// Sets of ports from text and back.
#include "port_set_text.h"

#include "begin.h"
#include "destination.h"
#include "number_text.h"
#include "port_text.h"
#include "sim_gport.h"
#include "sim_parse.h"
#include "switch.h"

#include <cctype>
#include <cstdio>
#include <string>
#include <string_view>

using namespace sim;

namespace {

constexpr char separators[] = ", \t\r\n";
constexpr std::size_t shown_of_wrong_text = 80;
constexpr int digits_in_word = SHR_BITWID / 4;

/// What a set may hold: numbers from 0 on, with names if they are ports of the unit.
struct Members {
    int unit;
    int highest;
    bool have_names;
};

bool is_mask(std::string_view item)
{
    return item.size() > 2 && item[0] == '0' && (item[1] | 0x20) == 'x';
}

int add_range(std::string_view item, const Members &members, _shr_pbmp_t *set)
{
    const std::size_t dash = item.find('-');
    const std::string_view ends[] = {item.substr(0, dash),
                                     dash == std::string_view::npos ? item : item.substr(dash + 1)};
    int ports[2];
    for (int end = 0; end < 2; ++end) {
        if (members.have_names) {
            ports[end] = port_named(members.unit, ends[end]);
            if (ports[end] < 0) {
                return no_such_port(ends[end]);
            }
        } else if (!read_int(ends[end], &ports[end])) {
            return BCM_E_PARAM;
        } else if (ports[end] < 0 || ports[end] > members.highest) {
            return BCM_E_PORT;
        }
    }
    if (ports[0] > ports[1]) {
        return BCM_E_PARAM;
    }
    for (int port = ports[0]; port <= ports[1]; ++port) {
        _SHR_PBMP_PORT_ADD(*set, port);
    }
    return BCM_E_NONE;
}

int add_mask(std::string_view item, const Members &members, _shr_pbmp_t *set)
{
    uint32 words[_SHR_PBMP_WORD_MAX];
    switch (read_number(item, words, _SHR_PBMP_WORD_MAX)) {
    case NumberStatus::malformed:
        return BCM_E_PARAM;
    case NumberStatus::too_large:
        return BCM_E_PORT;
    case NumberStatus::ok:
        break;
    }
    for (int port = members.highest + 1; port < _SHR_PBMP_PORT_MAX; ++port) {
        if (SHR_BITGET(words, port)) {
            return BCM_E_PORT;
        }
    }
    for (int word = 0; word < _SHR_PBMP_WORD_MAX; ++word) {
        set->pbits[word] |= words[word];
    }
    return BCM_E_NONE;
}

/// Ports that are named after their kind, as "ce0"; false if there are none.
bool add_kind(std::string_view kind, const Members &members, _shr_pbmp_t *set)
{
    bool any = false;
    for (int port = 0; members.have_names && port <= members.highest; ++port) {
        std::string_view name = sim_mod_port_name(members.unit, -1, port);
        while (!name.empty() && std::isdigit(static_cast<unsigned char>(name.back()))) {
            name.remove_suffix(1);
        }
        if (same_text(kind, name)) {
            _SHR_PBMP_PORT_ADD(*set, port);
            any = true;
        }
    }
    return any;
}

int add_item(std::string_view item, const Members &members, _shr_pbmp_t *set)
{
    if (same_text(item, "none") || add_kind(item, members, set)) {
        return BCM_E_NONE;
    }
    if (item == "*" || same_text(item, "all")) {
        for (int port = 0; port <= members.highest; ++port) {
            _SHR_PBMP_PORT_ADD(*set, port);
        }
        return BCM_E_NONE;
    }
    return is_mask(item) ? add_mask(item, members, set) : add_range(item, members, set);
}

/// On failure *wrong is the item that is at fault.
int read_set(std::string_view text, const Members &members, _shr_pbmp_t *result, std::string_view *wrong)
{
    _shr_pbmp_t set = {};
    int items = 0;
    for (std::size_t first; (first = text.find_first_not_of(separators)) != std::string_view::npos; ++items) {
        text.remove_prefix(first);
        *wrong = text.substr(0, text.find_first_of(separators));
        const int rc = add_item(*wrong, members, &set);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        text.remove_prefix(wrong->size());
    }
    if (items == 0) {
        *wrong = {};
        return BCM_E_PARAM;
    }
    *result = set;
    return BCM_E_NONE;
}

int parse_set(const char *text, const Members &members, _shr_pbmp_t *result)
{
    return begin(members.unit, given(text, result)).then([&] {
        std::string_view wrong;
        return read_set(text, members, result, &wrong);
    });
}

Members ports_of(int unit)
{
    return {unit, port_max, true};
}

char *format_set(int unit, char *buf, int bufsize, const _shr_pbmp_t &set)
{
    std::string text;
    char digits[digits_in_word + 1];
    for (int word = _SHR_PBMP_WORD_MAX - 1; word >= 0; --word) {
        if (!text.empty() || set.pbits[word] != 0 || word == 0) {
            std::snprintf(digits, sizeof digits, text.empty() ? "%x" : "%08x", set.pbits[word]);
            text += digits;
        }
    }
    if (attached(unit) == nullptr) {
        write_text("", buf, bufsize);
        return nullptr;
    }
    return write_text("0x" + text, buf, bufsize) ? buf : nullptr;
}

}  // namespace

int sim::read_port_set(int unit, std::string_view text, bcm_pbmp_t *ports, std::string_view *wrong)
{
    return read_set(text, ports_of(unit), ports, wrong);
}

extern "C" {

int sim_parse_pbmp(int unit, char *s, soc_pbmp_t *pbmp)
{
    return begin(unit, given(s, pbmp)).then([&] {
        std::string_view wrong;
        const int rc = read_set(s, ports_of(unit), pbmp, &wrong);
        if (rc != BCM_E_NONE) {
            const char *reason = rc == BCM_E_PORT ? "no such port" : "not a set of ports";
            const std::string item(wrong.substr(0, shown_of_wrong_text));
            std::printf("unit %d: %s: '%s'\n", unit, reason, item.c_str());
            std::fflush(stdout);
        }
        return rc;
    });
}

int sim_parse_pbmp_no_error(int unit, char *s, soc_pbmp_t *pbmp)
{
    return parse_set(s, ports_of(unit), pbmp);
}

int sim_parse_bcm_pbmp(int unit, char *s, bcm_pbmp_t *pbmp)
{
    return parse_set(s, ports_of(unit), pbmp);
}

int sim_parse_pp_pbmp(int unit, char *s, soc_pbmp_t *pbmp)
{
    return parse_set(s, {unit, 255, false}, pbmp);
}

int sim_parse_small_integers(int unit, char *s, soc_pbmp_t *pbmp)
{
    return parse_set(s, {unit, _SHR_PBMP_PORT_MAX - 1, false}, pbmp);
}

char *sim_format_pbmp(int unit, char *buf, int bufsize, soc_pbmp_t pbmp)
{
    return format_set(unit, buf, bufsize, pbmp);
}

char *sim_format_bcm_pbmp(int unit, char *buf, int bufsize, bcm_pbmp_t pbmp)
{
    return format_set(unit, buf, bufsize, pbmp);
}

}  // extern "C"
