/// Commands on the layer-2 address table.
#include "shell.h"
#include "shell_commands.h"
#include "shell_ports.h"
#include "sim_l2.h"

#include <cstdio>
#include <iterator>
#include <string>
#include <vector>

namespace sim {

namespace {

bool read_mac(const std::string &text, bcm_mac_t mac)
{
    unsigned int octets[6];
    int end = 0;
    const int fields = std::sscanf(text.c_str(), "%2x:%2x:%2x:%2x:%2x:%2x%n", octets, octets + 1, octets + 2,
                                   octets + 3, octets + 4, octets + 5, &end);
    if (fields != 6 || static_cast<std::size_t>(end) != text.size()) {
        return false;
    }
    for (int i = 0; i < 6; ++i) {
        mac[i] = static_cast<uint8>(octets[i]);
    }
    return true;
}

struct Listing {
    int count;
    bool print;
};

int list_entry(int, bcm_l2_addr_t *address, void *user_data)
{
    Listing &listing = *static_cast<Listing *>(user_data);
    ++listing.count;
    if (listing.print) {
        const unsigned char *mac = address->mac;
        const bool trunk = address->flags & BCM_L2_TRUNK_MEMBER;
        std::printf("mac=%02x:%02x:%02x:%02x:%02x:%02x vlan=%d %s=%d %s\n", mac[0], mac[1], mac[2], mac[3],
                    mac[4], mac[5], address->vid, trunk ? "trunk" : "port",
                    trunk ? address->tgid : address->port,
                    address->flags & BCM_L2_STATIC ? "static" : "dynamic");
    }
    return BCM_E_NONE;
}

cmd_result_t list(int unit, const Arguments &args, bool print)
{
    Listing listing = {0, print};
    const int rc = bcm_l2_traverse(unit, list_entry, &listing);
    if (rc < 0) {
        return done_or_fail(args, "show", rc);
    }
    std::printf("%d addresses\n", listing.count);
    return CMD_OK;
}

/// The words MAC VLAN; false if they cannot be read.
bool next_address(Arguments *args, bcm_mac_t mac, bcm_vlan_t *vid)
{
    int id;
    if (args->left() < 2 || !read_mac(args->next(), mac) || !args->next_integer(&id)
        || id != static_cast<bcm_vlan_t>(id)) {
        return false;
    }
    *vid = static_cast<bcm_vlan_t>(id);
    return true;
}

cmd_result_t add(int unit, Arguments *args)
{
    bcm_mac_t mac;
    bcm_vlan_t vid;
    std::vector<int> ports;
    if (!next_address(args, mac, &vid) || args->left() == 0 || !read_ports(unit, args->next(), &ports)
        || ports.size() != 1) {
        return CMD_USAGE;
    }
    const std::string kind = args->left() > 0 ? args->next() : "dynamic";
    if (args->left() != 0 || (kind != "static" && kind != "dynamic")) {
        return CMD_USAGE;
    }
    bcm_l2_addr_t address;
    bcm_l2_addr_t_init(&address, mac, vid);
    address.port = ports.front();
    address.flags = kind == "static" ? BCM_L2_STATIC : 0;
    return done_or_fail(*args, "add", bcm_l2_addr_add(unit, &address));
}

cmd_result_t l2(int unit, args_t *a)
{
    Arguments args(a);
    const std::string action = args.left() > 0 ? args.next() : "show";
    if (action == "show" || action == "count") {
        return args.left() == 0 ? list(unit, args, action == "show") : CMD_USAGE;
    }
    if (action == "add") {
        return add(unit, &args);
    }
    bcm_mac_t mac;
    bcm_vlan_t vid;
    if (action == "remove" && next_address(&args, mac, &vid) && args.left() == 0) {
        return done_or_fail(args, action, bcm_l2_addr_delete(unit, mac, vid));
    }
    return CMD_USAGE;
}

constexpr cmd_t commands[] = {
    command("l2", l2, "[show | count | add MAC VLAN PORT [static] | remove MAC VLAN]",
            "look at the layer-2 address table, or change it"),
};

}  // namespace

const CommandGroup address_commands = {"Addresses", commands, std::size(commands), true};

}  // namespace sim
