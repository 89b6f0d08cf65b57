#include "tag_tables.h"

#include "port_tags.h"
#include "rule_store.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <tuple>

namespace sim {

namespace {

constexpr std::size_t key_types = bcmVlanTranslateKeyCount;

constexpr KeyType types[key_types] = {
    {KeyPart::none, KeyPlace::anywhere},
    {KeyPart::both_vlans, KeyPlace::anywhere},
    {KeyPart::outer_vlan, KeyPlace::anywhere},
    {KeyPart::inner_vlan, KeyPlace::anywhere},
    {KeyPart::outer_tag, KeyPlace::anywhere},
    {KeyPart::inner_tag, KeyPlace::anywhere},
    {KeyPart::outer_priority, KeyPlace::anywhere},
    {KeyPart::both_vlans, KeyPlace::port},
    {KeyPart::outer_vlan, KeyPlace::port},
    {KeyPart::inner_vlan, KeyPlace::port},
    {KeyPart::outer_tag, KeyPlace::port},
    {KeyPart::inner_tag, KeyPlace::port},
    {KeyPart::outer_priority, KeyPlace::port},
    {KeyPart::none, KeyPlace::port},  // optical networks
    {KeyPart::none, KeyPlace::port},
    {KeyPart::none, KeyPlace::port},
    {KeyPart::none, KeyPlace::port},
    {KeyPart::none, KeyPlace::port},
    {KeyPart::outer_vlan, KeyPlace::port_class},
    {KeyPart::inner_vlan, KeyPlace::port_class},
    {KeyPart::both_vlans, KeyPlace::port_class},
    {KeyPart::none, KeyPlace::port},  // virtual interfaces
    {KeyPart::none, KeyPlace::port},
};

/// What says most is looked up first, at the port before its class before anywhere.
constexpr int order[] = {
    bcmVlanTranslateKeyPortDouble,      bcmVlanTranslateKeyPortOuterTag,   bcmVlanTranslateKeyPortInnerTag,
    bcmVlanTranslateKeyPortOuter,       bcmVlanTranslateKeyPortInner,      bcmVlanTranslateKeyPortOuterPri,
    bcmVlanTranslateKeyPortGroupDouble, bcmVlanTranslateKeyPortGroupOuter, bcmVlanTranslateKeyPortGroupInner,
    bcmVlanTranslateKeyDouble,          bcmVlanTranslateKeyOuterTag,       bcmVlanTranslateKeyInnerTag,
    bcmVlanTranslateKeyOuter,           bcmVlanTranslateKeyInner,          bcmVlanTranslateKeyOuterPri,
};

constexpr unsigned outer_priority_shift = 13;

bool is_looked_up(KeyPart part, const PacketTags &tags)
{
    const bool outer = tags.outer.is_there, inner = tags.inner.is_there;
    return part == KeyPart::both_vlans                                 ? outer && inner
           : part == KeyPart::inner_vlan || part == KeyPart::inner_tag ? inner
                                                                       : outer;
}

std::uint64_t pack(std::uint32_t place, int type, bcm_vlan_t outer, bcm_vlan_t inner)
{
    // The parts that are looked up together are VLAN ids, of 12 bits; the outer one is not 0 then.
    const std::uint64_t parts = inner == 0 ? outer : static_cast<std::uint64_t>(outer) << 12 | inner;
    return static_cast<std::uint64_t>(place) << 32 | static_cast<std::uint64_t>(type) << 27 | parts;
}

/// A translation of the VLAN id of a tag that came, and of its priority if that is not below 0.
TagAction renaming(bcm_vlan_t vlan, int priority)
{
    TagAction action = {};
    action.new_outer_vlan = vlan;
    action.priority = priority;
    action.ot_outer = action.dt_outer = bcmVlanActionReplace;
    if (priority >= 0) {
        action.ot_outer_prio = action.dt_outer_prio = bcmVlanActionReplace;
        action.ot_outer_pkt_prio = action.dt_outer_pkt_prio = bcmVlanActionReplace;
    }
    return action;
}

/// The parts of a record's key or value, one after the other.
class Parts {
public:
    explicit Parts(const std::string &bytes) : next_(bytes.data()) {}

    template <class T>
    T take()
    {
        T part;
        std::memcpy(&part, next_, sizeof part);
        next_ += sizeof part;
        return part;
    }

private:
    const char *next_;
};

/// visit(key, value) for each record.
template <class Visit>
void each(const RuleStore &store, const char *table, Visit visit)
{
    for (const auto &[key, value] : store.records(table)) {
        visit(Parts(key), Parts(value));
    }
}

std::uint64_t address_number(const unsigned char *mac)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < address_bytes; ++i) {
        number = number << 8 | mac[i];
    }
    return number;
}

bool agrees(const unsigned char *address, const std::array<unsigned char, 16> &wanted,
            const std::array<unsigned char, 16> &mask, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i) {
        if ((address[i] ^ wanted[i]) & mask[i]) {
            return false;
        }
    }
    return true;
}

/// The encapsulation and the type of what is behind the tags; no type for a length without SNAP.
struct Payload {
    int frame;
    unsigned type;
    std::size_t ip_at;
};

Payload payload_of(ByteView frame, std::size_t from)
{
    constexpr unsigned lengths = 0x600;
    constexpr unsigned snap = 0xaaaa;
    const unsigned type = number_at(frame, from);
    const std::size_t behind = from + 2;
    if (type >= lengths) {
        return {BCM_PORT_FRAMETYPE_ETHER2, type, behind};
    }
    const unsigned access_points = number_at(frame, behind);
    if (access_points == snap) {
        return {BCM_PORT_FRAMETYPE_SNAP, number_at(frame, behind + 6), behind + 8};
    }
    return {access_points == 0xffff ? BCM_PORT_FRAMETYPE_8023 : BCM_PORT_FRAMETYPE_LLC, access_points,
            behind};
}

}  // namespace

KeyType key_type_of(int type)
{
    return type >= 0 && type < static_cast<int>(key_types) ? types[type]
                                                           : KeyType{KeyPart::none, KeyPlace::anywhere};
}

void mask_key(KeyPart part, bcm_vlan_t &outer, bcm_vlan_t &inner)
{
    const bool by_inner = part == KeyPart::inner_vlan || part == KeyPart::inner_tag;
    outer = by_inner ? 0 : outer;
    inner = by_inner || part == KeyPart::both_vlans ? inner : 0;
    if (part == KeyPart::outer_priority) {
        outer = static_cast<bcm_vlan_t>(outer >> outer_priority_shift << outer_priority_shift);
    }
}

const std::vector<const char *> &TagTables::sources()
{
    static const std::vector<const char *> &names = *new std::vector<const char *>{
        "bcm_vlan_translate",
        "bcm_vlan_translate_action",
        "bcm_vlan_translate_range",
        "bcm_vlan_translate_action_range",
        "bcm_vlan_translate_egress",
        "bcm_vlan_translate_egress_action",
        "bcm_vlan_dtag",
        "bcm_vlan_dtag_range",
        "bcm_vlan_mac_action",
        "bcm_vlan_ip_action",
        "bcm_vlan_port_protocol_action",
        "bcm_vlan_port_default_action",
        "bcm_vlan_port_egress_default_action",
        "bcm_port_class",
        "bcm_port_force_vlan",
        "bcm_vlan_control_port",
        "bcm_vlan_control",
    };
    return names;
}

TagTables::TagTables() = default;

TagTables::TagTables(const RuleStore &store)
{
    add_translations(store);
    add_ranges(store);
    add_tags_of_customers(store);
    add_assignments(store);
    add_translations_to_send(store);
    add_settings(store);
}

void TagTables::add_translations(const RuleStore &store)
{
    each(store, "bcm_vlan_translate_action", [&](Parts key, Parts value) {
        const auto place = key.take<bcm_gport_t>();
        const auto type = key.take<int>();
        const auto outer = key.take<bcm_vlan_t>(), inner = key.take<bcm_vlan_t>();
        const KeyPlace where = key_type_of(type).place;
        const auto bit = std::uint32_t{1} << type;
        if (where == KeyPlace::port) {
            types_[at(place)] |= bit;
        } else {
            types_anywhere_ |= bit;
        }
        const auto number = where == KeyPlace::anywhere ? 0 : static_cast<std::uint32_t>(place);
        translations_.emplace(pack(number, type, outer, inner), value.take<TagAction>());
    });
    each(store, "bcm_vlan_translate", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        const auto vlan = key.take<bcm_vlan_t>();
        const auto to = value.take<bcm_vlan_t>();
        by_vlan_[at(port)].emplace(vlan, renaming(to, value.take<int>()));
    });
}

void TagTables::add_ranges(const RuleStore &store)
{
    each(store, "bcm_vlan_translate_range", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        const auto low = key.take<bcm_vlan_t>(), high = key.take<bcm_vlan_t>();
        const auto to = value.take<bcm_vlan_t>();
        ranges_[at(port)].push_back({low, high, 0, 0, renaming(to, value.take<int>())});
    });
    each(store, "bcm_vlan_translate_action_range", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        const auto outer_low = key.take<bcm_vlan_t>(), outer_high = key.take<bcm_vlan_t>();
        const auto inner_low = key.take<bcm_vlan_t>(), inner_high = key.take<bcm_vlan_t>();
        ranges_[at(port)].push_back({outer_low, outer_high, inner_low, inner_high, value.take<TagAction>()});
    });
}

void TagTables::add_tags_of_customers(const RuleStore &store)
{
    const auto action_of = [](Parts &value) {
        TagAction action = {};
        action.new_outer_vlan = value.take<bcm_vlan_t>();
        action.priority = value.take<int>();
        action.it_outer = bcmVlanActionAdd;
        action.it_outer_pkt_prio = bcmVlanActionAdd;
        return action;
    };
    each(store, "bcm_vlan_dtag", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        by_inner_vlan_[at(port)].emplace(key.take<bcm_vlan_t>(), action_of(value));
    });
    each(store, "bcm_vlan_dtag_range", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        const auto low = key.take<bcm_vlan_t>(), high = key.take<bcm_vlan_t>();
        inner_ranges_[at(port)].push_back({0, 0, low, high, action_of(value)});
    });
    for (PerPort<std::vector<Range>> *all : {&ranges_, &inner_ranges_}) {
        for (std::vector<Range> &ranges : *all) {
            const auto rank = [](const Range &range) {
                return std::make_tuple(
                    range.outer_high - range.outer_low + range.inner_high - range.inner_low, range.outer_low,
                    range.inner_low);
            };
            std::stable_sort(ranges.begin(), ranges.end(),
                             [&](const Range &a, const Range &b) { return rank(a) < rank(b); });
        }
    }
}

void TagTables::add_assignments(const RuleStore &store)
{
    each(store, "bcm_vlan_mac_action", [&](Parts key, Parts value) {
        const auto mac = key.take<std::array<unsigned char, address_bytes>>();
        by_address_.emplace(address_number(mac.data()), value.take<TagAction>());
    });
    each(store, "bcm_vlan_ip_action", [&](Parts key, Parts value) {
        const auto ip4 = key.take<bcm_ip_t>(), mask = key.take<bcm_ip_t>();
        const auto ip6 = key.take<std::array<unsigned char, 16>>();
        const auto length = key.take<int>();
        Subnet subnet = {type_ip6, ip6, {}, length, value.take<TagAction>()};
        if (mask != 0 || ip4 != ip6_mark) {
            subnet.type = type_ip4;
            subnet.length = __builtin_popcount(mask);
            for (std::size_t i = 0; i < 4; ++i) {
                subnet.address[i] = static_cast<unsigned char>(ip4 >> (24 - 8 * i));
                subnet.mask[i] = static_cast<unsigned char>(mask >> (24 - 8 * i));
            }
        } else {
            for (int bit = 0; bit < length; ++bit) {
                subnet.mask[static_cast<std::size_t>(bit / 8)] |= static_cast<unsigned char>(0x80 >> bit % 8);
            }
        }
        by_subnet_.push_back(subnet);
    });
    std::stable_sort(by_subnet_.begin(), by_subnet_.end(),
                     [](const Subnet &a, const Subnet &b) { return a.length > b.length; });
    each(store, "bcm_vlan_port_protocol_action", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        const auto frame = key.take<int>(), type = key.take<int>();
        by_protocol_[at(port)].push_back({frame, type, value.take<TagAction>()});
    });
}

void TagTables::add_translations_to_send(const RuleStore &store)
{
    each(store, "bcm_vlan_translate_egress_action", [&](Parts key, Parts value) {
        const auto place = static_cast<std::uint32_t>(key.take<int>());
        const auto outer = key.take<bcm_vlan_t>(), inner = key.take<bcm_vlan_t>();
        translations_to_send_.emplace(pack(place, 0, outer, inner), value.take<TagAction>());
    });
    each(store, "bcm_vlan_translate_egress", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        const auto vlan = key.take<bcm_vlan_t>();
        const auto to = value.take<bcm_vlan_t>();
        by_vlan_to_send_[at(port)].emplace(vlan, renaming(to, value.take<int>()));
    });
}

void TagTables::add_settings(const RuleStore &store)
{
    const auto add_default = [&](const char *table, PerPort<Actions> &actions) {
        each(store, table, [&](Parts key, Parts value) {
            actions[at(key.take<int>())].push_back(value.take<TagAction>());
        });
    };
    add_default("bcm_vlan_port_default_action", defaults_);
    add_default("bcm_vlan_port_egress_default_action", defaults_to_send_);
    each(store, "bcm_port_class", [&](Parts key, Parts value) {
        const auto port = key.take<int>();
        const auto which = key.take<bcm_port_class_t>();
        if (which == bcmPortClassVlanTranslateIngress) {
            classes_[at(port)] = value.take<uint32>();
        } else if (which == bcmPortClassVlanTranslateEgress) {
            classes_to_send_[at(port)] = value.take<uint32>();
        } else if (which == bcmPortClassFieldLookup) {
            lookup_classes_[at(port)].lookup = value.take<uint32>();
        } else if (which == bcmPortClassFieldIngress) {
            lookup_classes_[at(port)].ingress = value.take<uint32>();
        } else if (which == bcmPortClassFieldIngressPacketProcessing) {
            lookup_classes_[at(port)].processing = value.take<uint32>();
        }
    });
    each(store, "bcm_port_force_vlan", [&](Parts key, Parts value) {
        Forced &forced = forced_[at(key.take<int>())];
        forced.vlan = value.take<bcm_vlan_t>();
        forced.priority = static_cast<unsigned>(value.take<int>());
        forced.flags = value.take<uint32>();
    });
    each(store, "bcm_vlan_control_port", [&](Parts key, Parts value) {
        Controls &controls = controls_[at(key.take<int>())];
        const auto number = key.take<bcm_vlan_control_port_t>();
        const auto set = value.take<int>();
        switch (number) {
        case bcmVlanTranslateIngressEnable:
            controls.translates = set;
            break;
        case bcmVlanTranslateEgressEnable:
            controls.translates_to_send = set;
            break;
        case bcmVlanTranslateIngressMissDrop:
            controls.drops_missed = set;
            break;
        case bcmVlanTranslateIngressHitDrop:
            controls.drops_found = set;
            break;
        case bcmVlanTranslateEgressMissDrop:
            controls.drops_missed_to_send = set;
            break;
        case bcmVlanLookupMACEnable:
            controls.by_address = set;
            break;
        case bcmVlanLookupIPEnable:
            controls.by_subnet = set;
            break;
        case bcmVlanLookupProtocolEnable:
            controls.by_protocol = set;
            break;
        case bcmVlanPortPreferIP4:
            controls.subnet_first = set;
            break;
        case bcmVlanPortTranslateKeyFirst:
            controls.key_types[0] = set;
            break;
        case bcmVlanPortTranslateKeySecond:
            controls.key_types[1] = set;
            break;
        default:
            break;
        }
    });
    each(store, "bcm_vlan_control", [&](Parts key, Parts value) {
        const auto number = key.take<bcm_vlan_control_t>();
        if (number == bcmVlanTranslate && value.take<int>() == 0) {
            for (Controls &controls : controls_) {
                controls.translates = controls.translates_to_send = false;
            }
        }
    });
}

const TagAction *TagTables::find(int type, int port, const PacketTags &tags) const
{
    const KeyType key = types[type];
    const std::uint32_t in_use = key.place == KeyPlace::port ? types_[at(port)] : types_anywhere_;
    if (!(in_use >> type & 1) || !is_looked_up(key.part, tags)) {
        return nullptr;
    }
    const bool by_tag = key.part == KeyPart::outer_tag || key.part == KeyPart::inner_tag
                        || key.part == KeyPart::outer_priority;
    bcm_vlan_t outer = by_tag ? static_cast<bcm_vlan_t>(tags.outer.content()) : tags.outer.vlan;
    bcm_vlan_t inner = by_tag ? static_cast<bcm_vlan_t>(tags.inner.content()) : tags.inner.vlan;
    mask_key(key.part, outer, inner);
    const std::uint32_t place = key.place == KeyPlace::port         ? static_cast<std::uint32_t>(port)
                                : key.place == KeyPlace::port_class ? classes_[at(port)]
                                                                    : 0;
    const auto found = translations_.find(pack(place, type, outer, inner));
    return found != translations_.end() ? &found->second : nullptr;
}

const TagAction *TagTables::translation(int port, const PacketTags &tags) const
{
    const Controls &own = controls_[at(port)];
    if (!own.translates) {
        return nullptr;
    }
    const bool is_limited = own.key_types[0] != 0 || own.key_types[1] != 0;
    const int *next = is_limited ? own.key_types.data() : order;
    const int *const end = is_limited ? next + own.key_types.size() : std::end(order);
    for (; next != end; ++next) {
        if (const TagAction *action = find(*next, port, tags)) {
            return action;
        }
    }
    const auto by_vlan = by_vlan_[at(port)].find(tags.outer.vlan);
    if (tags.outer.is_there && by_vlan != by_vlan_[at(port)].end()) {
        return &by_vlan->second;
    }
    const auto is_within = [](const Tag &tag, bcm_vlan_t low, bcm_vlan_t high) {
        return (low == 0 && high == 0) || (tag.is_there && tag.vlan >= low && tag.vlan <= high);
    };
    for (const Range &range : ranges_[at(port)]) {
        if (is_within(tags.outer, range.outer_low, range.outer_high)
            && is_within(tags.inner, range.inner_low, range.inner_high)) {
            return &range.action;
        }
    }
    if (!tags.inner.is_there || tags.outer.is_there) {
        return nullptr;
    }
    const auto by_inner = by_inner_vlan_[at(port)].find(tags.inner.vlan);
    if (by_inner != by_inner_vlan_[at(port)].end()) {
        return &by_inner->second;
    }
    for (const Range &range : inner_ranges_[at(port)]) {
        if (is_within(tags.inner, range.inner_low, range.inner_high)) {
            return &range.action;
        }
    }
    return nullptr;
}

const TagAction *TagTables::assignment(int port, ByteView frame, std::size_t payload_from,
                                       const char **by) const
{
    const Controls &own = controls_[at(port)];
    const Payload payload = payload_of(frame, payload_from);
    const auto by_address = [&]() -> const TagAction * {
        const auto found = by_address_.find(address_number(frame.data + address_bytes));
        if (!own.by_address || found == by_address_.end()) {
            return nullptr;
        }
        *by = "of the source address";
        return &found->second;
    };
    const auto by_subnet = [&]() -> const TagAction * {
        const bool is_ip4 = payload.type == type_ip4, is_ip6 = payload.type == type_ip6;
        const std::size_t size = is_ip4 ? 4 : 16;
        const std::size_t address = payload.ip_at + (is_ip4 ? 12 : 8);
        if (!own.by_subnet || !(is_ip4 || is_ip6) || address + size > frame.size) {
            return nullptr;
        }
        for (const Subnet &subnet : by_subnet_) {
            if (subnet.type == payload.type
                && agrees(frame.data + address, subnet.address, subnet.mask, size)) {
                *by = "of the source subnet";
                return &subnet.action;
            }
        }
        return nullptr;
    };
    const TagAction *found = own.subnet_first ? by_subnet() : by_address();
    if (found == nullptr) {
        found = own.subnet_first ? by_address() : by_subnet();
    }
    if (found == nullptr && own.by_protocol) {
        for (const Protocol &protocol : by_protocol_[at(port)]) {
            if ((protocol.frame & payload.frame) && static_cast<unsigned>(protocol.type) == payload.type) {
                *by = "of the protocol";
                return &protocol.action;
            }
        }
    }
    return found;
}

const TagAction *TagTables::translation_to_send(int port, const PacketTags &tags) const
{
    if (!controls_[at(port)].translates_to_send) {
        return nullptr;
    }
    for (const bcm_vlan_t inner : {tags.inner.is_there ? tags.inner.vlan : bcm_vlan_t{0}, bcm_vlan_t{0}}) {
        const auto found =
            translations_to_send_.find(pack(classes_to_send_[at(port)], 0, tags.outer.vlan, inner));
        if (found != translations_to_send_.end()) {
            return &found->second;
        }
    }
    const auto by_vlan = by_vlan_to_send_[at(port)].find(tags.outer.vlan);
    return by_vlan != by_vlan_to_send_[at(port)].end() ? &by_vlan->second : nullptr;
}

bool TagTables::reads(int port) const
{
    const std::size_t own = at(port);
    return types_anywhere_ != 0 || types_[own] != 0 || !by_vlan_[own].empty() || !by_inner_vlan_[own].empty()
           || !ranges_[own].empty() || !inner_ranges_[own].empty() || !by_address_.empty()
           || !by_subnet_.empty() || !by_protocol_[own].empty() || !defaults_[own].empty()
           || controls_[own].drops_missed;
}

bool TagTables::writes(int port) const
{
    const std::size_t own = at(port);
    return !translations_to_send_.empty() || !by_vlan_to_send_[own].empty() || !defaults_to_send_[own].empty()
           || forced_[own].flags != 0 || controls_[own].drops_missed_to_send;
}

}  // namespace sim
