#include "shell_ports.h"

#include "destination.h"
#include "integer.h"
#include "sim.h"

#include <algorithm>
#include <string_view>

namespace sim {

namespace {

bool read_port(int unit, std::string_view text, int *port)
{
    if (read_integer(text, port)) {
        return *port >= cpu_port && *port <= port_max;
    }
    for (int candidate = cpu_port; candidate <= port_max; ++candidate) {
        const char *name = sim_mod_port_name(unit, -1, candidate);
        if (name != nullptr && text == name) {
            *port = candidate;
            return true;
        }
    }
    return false;
}

bool read_range(int unit, std::string_view text, int *first, int *last)
{
    const std::size_t dash = text.find('-');
    if (!read_port(unit, text.substr(0, dash), first)) {
        return false;
    }
    *last = *first;
    return dash == std::string_view::npos
        || (read_port(unit, text.substr(dash + 1), last) && *first <= *last);
}

}  // namespace

bool read_ports(int unit, const std::string &text, std::vector<int> *ports)
{
    ports->clear();
    std::string_view rest = text;
    for (bool more = true; more;) {
        const std::string_view part = rest.substr(0, rest.find(','));
        more = part.size() < rest.size();
        rest.remove_prefix(part.size() + (more ? 1 : 0));
        int first = cpu_port + 1, last = port_max;
        if (part != "all" && !read_range(unit, part, &first, &last)) {
            return false;
        }
        for (int port = first; port <= last; ++port) {
            if (std::find(ports->begin(), ports->end(), port) == ports->end()) {
                ports->push_back(port);
            }
        }
    }
    return true;
}

}  // namespace sim
