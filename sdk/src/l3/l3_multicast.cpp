#include "l3_multicast.h"

#include "l3.h"
#include "rule_store.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace sim {

namespace {

constexpr const char *interfaces_table = "bcm_ipmc_egress_intf";
constexpr const char *member_tables[] = {"bcm_multicast_egress", "bcm_multicast_ingress"};
constexpr const char *encapsulations_table = "bcm_multicast_encap";
constexpr const char *routed_encapsulation = "bcm_multicast_l3_encap_get";

/// The number that stands at that place among the keys or values of a record.
std::int32_t number_in(const std::string &bytes, std::size_t place)
{
    std::int32_t number = 0;
    std::memcpy(&number, bytes.data() + place * sizeof number, sizeof number);
    return number;
}

/// The interface that an encapsulation id stands for; 0 if it stands for something else.
bcm_if_t interface_of(const RuleStore &store, const std::string &member)
{
    constexpr std::size_t encapsulation = 2, interface = 2, numbers = 3;
    const std::string key = member.substr(encapsulation * sizeof(std::int32_t), sizeof(std::int32_t));
    const std::string *about = store.find(encapsulations_table, key);
    const bool is_routed =
        about != nullptr && about->size() > numbers * sizeof(std::int32_t)
        && std::strcmp(about->c_str() + numbers * sizeof(std::int32_t), routed_encapsulation) == 0;
    return is_routed ? number_in(*about, interface) : 0;
}

void add_place(const Destination &to, PortSet *ports, std::vector<bcm_trunk_t> *trunks)
{
    if (is_own_port(to)) {
        ports->add(to.id);
    } else if (to.kind == Destination::Kind::trunk) {
        trunks->push_back(to.id);
    }
}

void add_copy(L3Objects &objects, const Destination &to, bcm_if_t interface, MulticastMembers *members)
{
    const L3Interface *object = objects.interface(interface);
    if (object == nullptr) {
        return;
    }
    auto copies = std::find_if(members->routed.begin(), members->routed.end(),
                               [&](const RoutedCopies &one) { return one.hop.interface == object; });
    if (copies == members->routed.end()) {
        RoutedCopies made;
        made.hop.kind = NextHop::Kind::forward;
        made.hop.flags = BCM_L3_KEEP_DSTMAC;
        made.hop.interface = object;
        copies = members->routed.insert(copies, made);
    }
    add_place(to, &copies->ports, &copies->trunks);
}

}  // namespace

std::size_t L3Multicast::Hash::operator()(const MulticastKey &key) const
{
    constexpr std::uint64_t odd = 0x9e3779b97f4a7c15u;
    std::uint64_t hash = (key.source.high ^ key.source.low * odd) * odd;
    hash = (hash ^ hash >> 32 ^ key.group.high) * odd;
    hash = (hash ^ hash >> 32 ^ key.group.low) * odd;
    hash =
        (hash ^ hash >> 32 ^ (static_cast<std::uint64_t>(key.vrf) << 17 | key.vid << 1 | key.is_ip6)) * odd;
    return static_cast<std::size_t>(hash >> 32);
}

L3Multicast::L3Multicast(Switch &sw)
{
    const auto changed = [](void *datum) { static_cast<L3Multicast *>(datum)->touch(); };
    for (const char *table : {interfaces_table, member_tables[0], member_tables[1], encapsulations_table}) {
        rule_store_of(sw).watch(table, changed, this);
    }
}

MulticastEntry *L3Multicast::find(const MulticastKey &key, int *index)
{
    const auto found = index_.find(key);
    if (found == index_.end()) {
        return nullptr;
    }
    if (index != nullptr) {
        *index = found->second;
    }
    return &entries_.at(found->second);
}

MulticastEntry *L3Multicast::at(int index)
{
    const auto found = entries_.find(index);
    return found != entries_.end() ? &found->second : nullptr;
}

MulticastEntry *L3Multicast::for_packet(MulticastKey key)
{
    const bcm_vlan_t vid = key.vid;
    for (const IpAddress &source : {key.source, IpAddress()}) {
        key.source = source;
        for (const bcm_vlan_t of : {vid, bcm_vlan_t{0}}) {
            key.vid = of;
            if (MulticastEntry *entry = find(key)) {
                return entry;
            }
        }
    }
    return nullptr;
}

int L3Multicast::add(const MulticastEntry &entry)
{
    if (entries_.size() >= capacity) {
        return -1;
    }
    int index = 0;
    for (auto used = entries_.begin(); used != entries_.end() && used->first == index; ++used) {
        ++index;
    }
    const auto place = entries_.emplace(index, entry).first;
    try {
        index_.emplace(entry.key, index);
    } catch (...) {
        entries_.erase(place);
        throw;
    }
    return index;
}

void L3Multicast::remove(int index)
{
    const auto found = entries_.find(index);
    index_.erase(found->second.key);
    entries_.erase(found);
}

void L3Multicast::clear()
{
    entries_.clear();
    index_.clear();
    is_enabled = true;
    counters = {};
}

const MulticastMembers &L3Multicast::members_of(Switch &sw, bcm_multicast_t group)
{
    static const MulticastMembers none;
    if (!is_worked_out_) {
        work_out(sw);
    }
    const auto found = members_.find(group);
    return found != members_.end() ? found->second : none;
}

void L3Multicast::work_out(Switch &sw)
{
    const RuleStore &store = rule_store_of(sw);
    L3Objects &objects = l3_of(sw).objects;
    members_.clear();
    for (const auto &[key, value] : store.records(interfaces_table)) {
        add_copy(objects, {Destination::Kind::port, own_module, number_in(key, 1)}, number_in(key, 2),
                 &members_[number_in(key, 0)]);
    }
    for (const char *table : member_tables) {
        for (const auto &[key, value] : store.records(table)) {
            Destination to;
            if (resolve(own_module, number_in(key, 1), &to) != BCM_E_NONE) {
                continue;
            }
            MulticastMembers &members = members_[number_in(key, 0)];
            const bcm_if_t interface = interface_of(store, key);
            if (interface != 0) {
                add_copy(objects, to, interface, &members);
            } else if (is_own_port(to)) {
                members.bridged.add(to.id);
            }
        }
    }
    is_worked_out_ = true;
}

}  // namespace sim
