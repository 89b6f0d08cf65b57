/// Sends packets through the simulated switch and does nothing else, for what counts instructions.
///
///     packets unicast|flood|routed4|routed6|fields|own-fields COUNT [ROUTES|ENTRIES]
///
/// unicast: between two ports whose addresses are known. flood: to an address that nobody has, out of the 63
/// other ports, untagged and tagged in turns. routed4, routed6: between two VLANs, to addresses all over a table of
/// ROUTES networks, whose lengths are those that the Internet's have. fields: to a known address, through ten groups
/// of the field processor that have ENTRIES, with eight different masks in each group; own-fields: of which no other
/// group has any. Exit status 1 if one did not leave as often as it should.
#include <bcm/field.h>
#include <bcm/l2.h>
#include <bcm/l3.h>
#include <bcm/port.h>
#include <bcm/vlan.h>
#include <sim/traffic.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int unit = 0;
constexpr int from_port = 1;
constexpr int to_port = 7;
constexpr int front_ports = 64;
constexpr bcm_vlan_t to_vlan = 20;
constexpr std::size_t flows = 1024;
constexpr int frame_bytes = 60;

using Frame = std::vector<unsigned char>;

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

Frame plain_frame(unsigned type)
{
    Frame frame = {0x02, 0, 0, 0, 0, 0x2a, 0x02, 0, 0, 0, 0, 0x01};
    frame.push_back(static_cast<unsigned char>(type >> 8));
    frame.push_back(static_cast<unsigned char>(type));
    frame.resize(frame_bytes);
    return frame;
}

void put_checksum(unsigned char *header)
{
    unsigned sum = 0;
    for (int i = 0; i < 20; i += 2) {
        sum += static_cast<unsigned>(header[i] << 8 | header[i + 1]);
    }
    sum = (sum & 0xffff) + (sum >> 16);
    sum = ~((sum & 0xffff) + (sum >> 16));
    header[10] = static_cast<unsigned char>(sum >> 8);
    header[11] = static_cast<unsigned char>(sum);
}

/// A router between the default VLAN and another one, and frames for it.
class Router {
public:
    explicit Router(bool is_ip6) : is_ip6_(is_ip6) {}

    bool configure(long routes)
    {
        bcm_pbmp_t port = {};
        BCM_PBMP_PORT_ADD(port, to_port);
        bcm_l3_intf_t first, second;
        bcm_l3_egress_t egress;
        bcm_if_t object = 0;
        if (bcm_vlan_create(unit, to_vlan) != BCM_E_NONE
            || bcm_vlan_port_add(unit, to_vlan, port, port) != BCM_E_NONE
            || !make_interface(&first, BCM_VLAN_DEFAULT) || !make_interface(&second, to_vlan)) {
            return false;
        }
        bcm_l3_egress_t_init(&egress);
        egress.intf = second.l3a_intf_id;
        egress.port = to_port;
        egress.mac_addr[0] = 2;
        egress.mac_addr[5] = 9;
        if (bcm_l3_egress_create(unit, 0, &egress, &object) != BCM_E_NONE) {
            return false;
        }
        for (long i = 0; i < routes;) {
            const int status = add_route(object);
            if (status != BCM_E_NONE && status != BCM_E_EXISTS) {
                return false;
            }
            i += status == BCM_E_NONE;
        }
        return true;
    }

    /// To addresses within its networks.
    std::vector<Frame> frames()
    {
        std::vector<Frame> made;
        for (std::size_t i = 0; i < flows; ++i) {
            Frame frame = plain_frame(is_ip6_ ? 0x86dd : 0x0800);
            unsigned char *packet = frame.data() + 14;
            const std::vector<unsigned char> &to = networks_[chance_() % networks_.size()];
            packet[0] = is_ip6_ ? 0x60 : 0x45;
            packet[is_ip6_ ? 5 : 3] = is_ip6_ ? 6 : 46;
            packet[is_ip6_ ? 6 : 9] = 17;
            packet[is_ip6_ ? 7 : 8] = 64;
            packet[is_ip6_ ? 8 : 12] = 10;
            std::memcpy(packet + (is_ip6_ ? 24 : 16), to.data(), to.size());
            packet[is_ip6_ ? 39 : 19] = 1;
            if (!is_ip6_) {
                put_checksum(packet);
            }
            made.push_back(frame);
        }
        return made;
    }

private:
    static bool make_interface(bcm_l3_intf_t *interface, bcm_vlan_t vlan)
    {
        bcm_l3_intf_t_init(interface);
        interface->l3a_vid = vlan;
        interface->l3a_mac_addr[0] = 2;
        interface->l3a_mac_addr[5] = 0x2a;
        return bcm_l3_intf_create(unit, interface) == BCM_E_NONE;
    }

    unsigned length()
    {
        const unsigned part = chance_() % 100;
        if (is_ip6_) {
            return part < 50 ? 48 : part < 70 ? 32 : part < 80 ? 64 : 29 + part % 20;
        }
        return part < 60 ? 24 : part < 95 ? 16 + part % 8 : 8 + part % 8;
    }

    int add_route(bcm_if_t object)
    {
        bcm_l3_route_t route;
        bcm_l3_route_t_init(&route);
        route.l3a_intf = object;
        route.l3a_flags = is_ip6_ ? BCM_L3_IP6 : 0;
        std::vector<unsigned char> network(is_ip6_ ? 16 : 4), mask(network.size());
        const unsigned bits = length();
        for (unsigned i = 0; i < bits; ++i) {
            mask[i / 8] = static_cast<unsigned char>(mask[i / 8] | 0x80 >> i % 8);
        }
        for (std::size_t i = 0; i < network.size(); ++i) {
            network[i] = static_cast<unsigned char>(chance_() >> 7) & mask[i];
        }
        network[0] = static_cast<unsigned char>(is_ip6_ ? 0x20 | (network[0] & 15) : 1 + network[0] % 126);
        if (is_ip6_) {
            std::memcpy(route.l3a_ip6_net, network.data(), network.size());
            std::memcpy(route.l3a_ip6_mask, mask.data(), mask.size());
        } else {
            for (int i = 0; i < 4; ++i) {
                route.l3a_subnet = route.l3a_subnet << 8 | network[static_cast<std::size_t>(i)];
                route.l3a_ip_mask = route.l3a_ip_mask << 8 | mask[static_cast<std::size_t>(i)];
            }
        }
        const int status = bcm_l3_route_add(unit, &route);
        if (status == BCM_E_NONE) {
            networks_.push_back(network);
        }
        return status;
    }

    bool is_ip6_;
    std::minstd_rand chance_;  // the same in each run
    std::vector<std::vector<unsigned char>> networks_;
};

/// Groups of entries that count, on prefixes of addresses and on ports, and frames each of which meets one at least.
class AccessLists {
public:
    explicit AccessLists(bool have_own_masks) : have_own_masks_(have_own_masks) {}

    bool configure(long entries)
    {
        bcm_field_qset_t qset = {};
        for (const int qualifier : {bcmFieldQualifySrcIp, bcmFieldQualifyDstIp, bcmFieldQualifyL4DstPort,
                                    bcmFieldQualifyL4SrcPort}) {
            BCM_FIELD_QSET_ADD(qset, static_cast<unsigned>(qualifier));
        }
        for (int i = 0; i < groups; ++i) {
            bcm_field_group_t group;
            if (bcm_field_group_create(unit, qset, i, &group) != BCM_E_NONE) {
                return false;
            }
            for (long j = 0; j < entries / groups; ++j) {
                if (!add_entry(group, have_own_masks_ ? 1u << i : 0)) {
                    return false;
                }
            }
        }
        return true;
    }

    std::vector<Frame> frames()
    {
        std::vector<Frame> made;
        for (std::size_t i = 0; i < flows; ++i) {
            Frame frame = plain_frame(0x0800);
            unsigned char *packet = frame.data() + 14;
            const Met &met = met_[chance_() % met_.size()];
            packet[0] = 0x45;
            packet[3] = 46;
            packet[8] = 64;
            packet[9] = 17;
            put_number(packet + 12, met.from);
            put_number(packet + 16, met.to);
            put_number(packet + 20, met.port);  // the source port is 0
            put_checksum(packet);
            made.push_back(frame);
        }
        return made;
    }

private:
    static constexpr int groups = 10;

    /// Lengths of prefixes, and whether the port is compared.
    struct Shape {
        unsigned from, to;
        bool has_port;
    };
    static constexpr Shape shapes[] = {{32, 32, true}, {24, 32, true}, {16, 24, true}, {0, 32, true},
                                       {0, 24, false}, {24, 0, true},  {8, 16, false}, {32, 0, false}};

    struct Met {
        bcm_ip_t from, to;
        bcm_l4_port_t port;
    };

    static bcm_ip_t mask_of(unsigned length) { return length == 0 ? 0 : ~bcm_ip_t{0} << (32 - length); }

    static void put_number(unsigned char *bytes, std::uint32_t number)
    {
        for (int i = 0; i < 4; ++i) {
            bytes[i] = static_cast<unsigned char>(number >> (24 - 8 * i));
        }
    }

    bcm_ip_t address() { return 10u << 24 | (static_cast<bcm_ip_t>(chance_()) & 0xffffff); }

    /// With bits of the source port in its mask, which are 0 in all packets.
    bool add_entry(bcm_field_group_t group, unsigned source_bits)
    {
        const Shape &shape = shapes[chance_() % std::size(shapes)];
        const Met met = {address(), address(), static_cast<bcm_l4_port_t>(chance_() % 1024)};
        const bcm_ip_t from = mask_of(shape.from), to = mask_of(shape.to);
        bcm_field_stat_t kinds[] = {bcmFieldStatPackets, bcmFieldStatBytes};
        bcm_field_entry_t entry;
        int stat;
        met_.push_back(met);
        return bcm_field_entry_create(unit, group, &entry) == BCM_E_NONE
               && (from == 0 || bcm_field_qualify_SrcIp(unit, entry, met.from & from, from) == BCM_E_NONE)
               && (to == 0 || bcm_field_qualify_DstIp(unit, entry, met.to & to, to) == BCM_E_NONE)
               && (!shape.has_port
                   || bcm_field_qualify_L4DstPort(unit, entry, met.port, 0xffff) == BCM_E_NONE)
               && (source_bits == 0
                   || bcm_field_qualify_L4SrcPort(unit, entry, 0, static_cast<bcm_l4_port_t>(source_bits))
                          == BCM_E_NONE)
               && bcm_field_entry_prio_set(unit, entry, static_cast<int>(chance_() % 1000)) == BCM_E_NONE
               && bcm_field_stat_create(unit, group, std::size(kinds), kinds, &stat) == BCM_E_NONE
               && bcm_field_entry_stat_attach(unit, entry, stat) == BCM_E_NONE
               && bcm_field_entry_install(unit, entry) == BCM_E_NONE;
    }

    bool have_own_masks_;
    std::minstd_rand chance_;  // the same in each run
    std::vector<Met> met_;
};

}  // namespace

int main(int argc, char **argv)
{
    const std::string scenario = argc >= 3 ? argv[1] : "";
    const bool routes = scenario == "routed4" || scenario == "routed6";
    const bool own_fields = scenario == "own-fields", fields = own_fields || scenario == "fields";
    if ((argc != 3 && (argc != 4 || (!routes && !fields)))
        || (scenario != "flood" && scenario != "unicast" && !routes && !fields)) {
        std::fprintf(
            stderr,
            "usage: packets unicast|flood|routed4|routed6|fields|own-fields COUNT [ROUTES|ENTRIES]\n");
        return 2;
    }
    std::vector<Frame> frames = {plain_frame(0x0800)};
    const unsigned char *frame = frames[0].data();
    if (!know(frame + 6, from_port)) {
        return 1;
    }
    Router router(scenario == "routed6");
    AccessLists lists(own_fields);
    if (routes) {
        if (!router.configure(argc == 4 ? std::atol(argv[3]) : 1000)) {
            return 1;
        }
        frames = router.frames();
    } else if (fields) {
        if (!know(frame, to_port) || !lists.configure(argc == 4 ? std::atol(argv[3]) : 10000)) {
            return 1;
        }
        frames = lists.frames();
    } else if (scenario == "flood" ? !tag_half() : !know(frame, to_port)) {
        return 1;
    }
    sim_packet_watch(count, nullptr);
    const long packets = std::atol(argv[2]);
    std::vector<const unsigned char *> sent;
    for (const Frame &each : frames) {
        sent.push_back(each.data());
    }
    const std::size_t mask = sent.size() - 1;  // a power of two of them
    for (long i = 0; i < packets; ++i) {
        if (sim_packet_arrive(unit, from_port, sent[static_cast<std::size_t>(i) & mask], frame_bytes)
            != BCM_E_NONE) {
            return 1;
        }
    }
    return left == packets * (scenario == "flood" ? front_ports - 1 : 1) ? 0 : 1;
}
