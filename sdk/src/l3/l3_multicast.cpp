#include "l3_multicast.h"

#include "l3.h"
#include "rule_store.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

namespace sim {

namespace {

constexpr const char *interfaces_table = "bcm_ipmc_egress_intf";
constexpr const char *member_tables[] = {"bcm_multicast_egress", "bcm_multicast_ingress"};
constexpr const char *encapsulations_table = "bcm_multicast_encap";
constexpr const char *routed_encapsulation = "bcm_multicast_l3_encap_get";
constexpr const char *ranges_table = "bcm_ipmc_range";
constexpr const char *rendezvous_table = "bcm_ipmc_rp_intf";

/// What a range is known by, as its key has it.
struct RangeKey {
    uint32 flags;
    bcm_ip_t group, mask;
    bcm_ip6_t group6, mask6;
};

IpAddress both(const IpAddress &a, const IpAddress &b)
{
    return {a.high & b.high, a.low & b.low};
}

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

void add_copy(const L3Interface *object, const Destination &to, MulticastMembers *members)
{
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
    if (key.is_masked()) {
        const MulticastMasks &masks = key.masks;
        hash = (hash ^ masks.source.high ^ masks.source.low) * odd;
        hash = (hash ^ hash >> 32 ^ masks.group.high ^ masks.group.low) * odd;
    }
    hash =
        (hash ^ hash >> 32 ^ (static_cast<std::uint64_t>(key.vrf) << 17 | key.vid << 1 | key.is_ip6)) * odd;
    return static_cast<std::size_t>(hash >> 32);
}

L3Multicast::L3Multicast(Switch &sw)
{
    const auto changed = [](void *datum) { static_cast<L3Multicast *>(datum)->touch(); };
    for (const char *table : {interfaces_table, member_tables[0], member_tables[1], encapsulations_table,
                              ranges_table, rendezvous_table}) {
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
    const MulticastKey of_packet = key;
    for (const IpAddress &source : {key.source, IpAddress()}) {
        key.source = source;
        for (const bcm_vlan_t of : {of_packet.vid, bcm_vlan_t{0}}) {
            key.vid = of;
            if (MulticastEntry *entry = find(key)) {
                return entry;
            }
        }
    }
    return masked_.empty() ? nullptr : masked_for_packet(of_packet);
}

MulticastEntry *L3Multicast::masked_for_packet(const MulticastKey &of_packet)
{
    int best_place = 0;
    MulticastEntry *best = nullptr;
    for (const Masked &masked : masked_) {
        if (masked.is_ip6 != of_packet.is_ip6) {
            continue;
        }
        MulticastKey key = of_packet;
        key.masks = masked.masks;
        key.source = both(key.source, key.masks.source);
        key.group = both(key.group, key.masks.group);
        for (const bcm_vlan_t of : {of_packet.vid, bcm_vlan_t{0}}) {
            key.vid = of;
            int place = 0;
            MulticastEntry *entry = find(key, &place);
            if (entry != nullptr
                && (best == nullptr || entry->record.priority > best->record.priority
                    || (entry->record.priority == best->record.priority && place < best_place))) {
                best = entry;
                best_place = place;
            }
        }
    }
    return best;
}

void L3Multicast::count_masked(const MulticastKey &key, std::size_t more)
{
    if (!key.is_masked()) {
        return;
    }
    const auto found = std::find_if(masked_.begin(), masked_.end(), [&](const Masked &one) {
        return one.masks == key.masks && one.is_ip6 == key.is_ip6;
    });
    if (found == masked_.end()) {
        masked_.push_back({key.masks, key.is_ip6, more});
    } else if ((found->count += more) == 0) {
        masked_.erase(found);
    }
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
        count_masked(entry.key, 1);
    } catch (...) {
        index_.erase(entry.key);
        entries_.erase(place);
        throw;
    }
    return index;
}

void L3Multicast::remove(int index)
{
    const auto found = entries_.find(index);
    constexpr auto one_less = static_cast<std::size_t>(-1);
    count_masked(found->second.key, one_less);
    index_.erase(found->second.key);
    entries_.erase(found);
}

void L3Multicast::clear()
{
    entries_.clear();
    index_.clear();
    masked_.clear();
    is_enabled = true;
    counters = {};
    lines.clear();
    sending = {};
    touch();
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

bool L3Multicast::is_shared(Switch &sw, const IpAddress &group, bool is_ip6)
{
    if (!is_worked_out_) {
        work_out(sw);
    }
    return std::any_of(ranges_.begin(), ranges_.end(), [&](const Range &range) {
        return range.is_ip6 == is_ip6 && both(group, range.mask) == range.group;
    });
}

bool L3Multicast::leads_to(Switch &sw, int rendezvous_point, bcm_if_t interface)
{
    if (!is_worked_out_) {
        work_out(sw);
    }
    return rendezvous_interfaces_.count({rendezvous_point, interface}) != 0;
}

void L3Multicast::work_out_lines()
{
    sending_interfaces_.clear();
    for (const auto &[group, ports] : lines) {
        MulticastMembers &members = members_[group];
        ports.each([&](int port) {
            const MulticastSending &how = sending[static_cast<std::size_t>(port)];
            if (how.vid == 0) {
                return;
            }
            bcm_l3_intf_t &record = sending_interfaces_[port].record;
            std::copy(std::begin(how.mac), std::end(how.mac), record.l3a_mac_addr);
            record.l3a_vid = how.vid;
            record.l3a_ttl = how.ttl - 1;
            const std::size_t known = members.routed.size();
            add_copy(&sending_interfaces_[port], {Destination::Kind::port, own_module, port}, &members);
            if (members.routed.size() > known) {
                members.routed.back().tag = how.is_untagged ? MulticastTag::never : MulticastTag::always;
            }
        });
    }
}

void L3Multicast::work_out_ranges(const RuleStore &store)
{
    ranges_.clear();
    for (const auto &[key, value] : store.records(ranges_table)) {
        RangeKey range;
        std::memcpy(&range, key.data(), sizeof range);
        const bool is_ip6 = range.flags & BCM_IPMC_IP6;
        const IpAddress mask = is_ip6 ? ip6_address(range.mask6) : ip4_address(range.mask);
        ranges_.push_back(
            {both(is_ip6 ? ip6_address(range.group6) : ip4_address(range.group), mask), mask, is_ip6});
    }
    rendezvous_interfaces_.clear();
    for (const auto &[key, value] : store.records(rendezvous_table)) {
        rendezvous_interfaces_.emplace(number_in(key, 0), number_in(key, 1));
    }
}

void L3Multicast::work_out(Switch &sw)
{
    const RuleStore &store = rule_store_of(sw);
    L3Objects &objects = l3_of(sw).objects;
    members_.clear();
    for (const auto &[key, value] : store.records(interfaces_table)) {
        add_copy(objects.interface(number_in(key, 2)),
                 {Destination::Kind::port, own_module, number_in(key, 1)}, &members_[number_in(key, 0)]);
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
                add_copy(objects.interface(interface), to, &members);
            } else if (is_own_port(to)) {
                members.bridged.add(to.id);
            }
        }
    }
    work_out_lines();
    work_out_ranges(store);
    is_worked_out_ = true;
}

}  // namespace sim
