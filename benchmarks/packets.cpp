/// Sends packets through the simulated switch and does nothing else, for what counts instructions.
///
///     packets unicast|flood COUNT
///
/// unicast: between two ports whose addresses are known. flood: to an address that nobody has, out of the 63
/// other ports, untagged and tagged in turns. Exit status 1 if one did not leave as often as it should.
#include <bcm/l2.h>
#include <bcm/vlan.h>
#include <sim/traffic.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int unit = 0;
constexpr int from_port = 1;
constexpr int to_port = 7;
constexpr int front_ports = 64;

long left = 0;

void count(int, bcm_port_t, const unsigned char *, int, void *)
{
    ++left;
}

/// Every second member gets the VLAN's packets with a tag.
bool tag_half()
{
    bcm_pbmp_t odd = {};
    for (int port = 1; port <= front_ports; port += 2) {
        BCM_PBMP_PORT_ADD(odd, port);
    }
    return bcm_vlan_port_add(unit, BCM_VLAN_DEFAULT, odd, bcm_pbmp_t{}) == BCM_E_NONE;
}

bool know(const unsigned char *mac, int port)
{
    bcm_l2_addr_t address;
    bcm_mac_t own;
    std::memcpy(own, mac, sizeof own);
    bcm_l2_addr_t_init(&address, own, BCM_VLAN_DEFAULT);
    address.port = port;
    return bcm_l2_addr_add(unit, &address) == BCM_E_NONE;
}

}  // namespace

int main(int argc, char **argv)
{
    const bool floods = argc == 3 && std::strcmp(argv[1], "flood") == 0;
    if (argc != 3 || (!floods && std::strcmp(argv[1], "unicast") != 0)) {
        std::fprintf(stderr, "usage: packets unicast|flood COUNT\n");
        return 2;
    }
    unsigned char frame[60] = {0x02, 0, 0, 0, 0, 0x2a, 0x02, 0, 0, 0, 0, 0x01, 0x08, 0x00};
    if (!know(frame + 6, from_port) || (floods ? !tag_half() : !know(frame, to_port))) {
        return 1;
    }
    sim_packet_watch(count, nullptr);
    const long packets = std::atol(argv[2]);
    for (long i = 0; i < packets; ++i) {
        if (sim_packet_arrive(unit, from_port, frame, sizeof frame) != BCM_E_NONE) {
            return 1;
        }
    }
    return left == packets * (floods ? front_ports - 1 : 1) ? 0 : 1;
}
