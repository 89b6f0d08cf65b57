/// Commands on the layer-2 address table.
#include "shell.h"
#include "shell_commands.h"
#include "shell_values.h"
#include "sim_l2.h"

#include <cstdio>

namespace sim {

namespace {

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

cmd_result_t show(int unit, Arguments &args)
{
    return list(unit, args, true);
}

cmd_result_t count(int unit, Arguments &args)
{
    return list(unit, args, false);
}

cmd_result_t add(int unit, Arguments &args)
{
    bcm_mac_t mac;
    bcm_vlan_t vid;
    int port;
    std::size_t kind = 1;
    const std::string words = args.peek() + (" " + std::string(args.peek(1)));
    if (!next_mac(args, mac) || !next_vlan(args, &vid) || !next_port(unit, args, &port)
        || (args.left() > 0 && !next_choice(args, {"static", "dynamic"}, &kind))) {
        return CMD_USAGE;
    }
    bcm_l2_addr_t address;
    bcm_l2_addr_t_init(&address, mac, vid);
    address.port = port;
    address.flags = kind == 0 ? BCM_L2_STATIC : 0;
    return done_or_fail(args, "add " + words, bcm_l2_addr_add(unit, &address));
}

cmd_result_t remove(int unit, Arguments &args)
{
    bcm_mac_t mac;
    bcm_vlan_t vid;
    const std::string words = args.peek() + (" " + std::string(args.peek(1)));
    if (!next_mac(args, mac) || !next_vlan(args, &vid)) {
        return CMD_USAGE;
    }
    return done_or_fail(args, "remove " + words, bcm_l2_addr_delete(unit, mac, vid));
}

constexpr Form l2_forms[] = {
    {"show", "", show, "list the addresses"},
    {"count", "", count, "tell how many there are"},
    {"add", "MAC VLAN PORT [static|dynamic]", add, "add an address, dynamic unless it says static"},
    {"remove", "MAC VLAN", remove, "remove an address"},
};

constexpr Command commands[] = {
    {"l2", "look at the layer-2 address table, or change it", l2_forms,
     "l2 add 02:00:5e:00:00:01 1 3 static; l2 show"},
};

}  // namespace

const CommandGroup address_commands = {"Addresses", commands, true};

}  // namespace sim
