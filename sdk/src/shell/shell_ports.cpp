#include "shell_ports.h"

#include "destination.h"
#include "sim_parse.h"

namespace sim {

bool read_ports(int unit, const std::string &text, std::vector<int> *ports)
{
    bcm_pbmp_t set;
    ports->clear();
    if (text == "all") {
        BCM_PBMP_CLEAR(set);
        for (int port = cpu_port + 1; port <= port_max; ++port) {
            BCM_PBMP_PORT_ADD(set, port);
        }
    } else if (sim_parse_bcm_pbmp(unit, const_cast<char *>(text.c_str()), &set) != BCM_E_NONE) {
        return false;
    }
    for (int port = 0; port < BCM_PBMP_PORT_MAX; ++port) {
        if (BCM_PBMP_MEMBER(set, port)) {
            ports->push_back(port);
        }
    }
    return true;
}

}  // namespace sim
