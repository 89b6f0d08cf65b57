/// What is looked up for tags, as far as names and types do not tell a rule what can be entered: actions, keys that
/// leave out parts, and VLANs, which are actions too.
#include "begin.h"
#include "rules.h"
#include "sim_port.h"
#include "sim_vlan.h"
#include "tags.h"
#include "vlan.h"

#include <array>
#include <cstring>

using namespace sim;

namespace {

constexpr rules::Table translations = {"bcm_vlan_translate_action", "vlan", 1, 16384, nullptr, 0, ""};
constexpr rules::Table renamed = {"bcm_vlan_translate", "vlan", 1, 16384, nullptr, 0, ""};
constexpr rules::Table renamed_to_send = {"bcm_vlan_translate_egress", "vlan", 1, 16384, nullptr, 0, ""};
constexpr rules::Table renamed_ranges = {"bcm_vlan_translate_range", "vlan", 1, 1024, nullptr, 0, ""};
constexpr rules::Table ranges = {"bcm_vlan_translate_action_range", "vlan", 1, 1024, nullptr, 0, ""};
constexpr rules::Table translations_to_send = {
    "bcm_vlan_translate_egress_action", "vlan", 1, 16384, nullptr, 0, ""};
constexpr rules::Table customers = {"bcm_vlan_dtag", "vlan", 1, 16384, nullptr, 0, ""};
constexpr rules::Table customer_ranges = {"bcm_vlan_dtag_range", "vlan", 1, 1024, nullptr, 0, ""};
constexpr rules::Table addresses = {"bcm_vlan_mac_action", "vlan", 1, 8192, nullptr, 0, ""};
constexpr rules::Table subnets = {"bcm_vlan_ip_action", "vlan", 1, 1024, nullptr, 0, ""};
constexpr rules::Table protocols = {"bcm_vlan_port_protocol_action", "vlan", 1, 1024, nullptr, 0, ""};
constexpr rules::Table defaults = {"bcm_vlan_port_default_action", "vlan"};
constexpr rules::Table defaults_to_send = {"bcm_vlan_port_egress_default_action", "vlan"};
constexpr rules::Table forced = {"bcm_port_force_vlan", "port"};

/// Enters by one of the rules' operations what has been checked: the status of the check, which comes after theirs.
template <class Operation>
int enter(int status, const rules::Table &table, int unit, rules::Arguments arguments, Operation operation)
{
    return status == BCM_E_NONE      ? operation(table, unit, arguments)
           : status == BCM_E_UNAVAIL ? rules::unavailable(table, unit, arguments)
                                     : rules::refuse(table, unit, arguments);
}

int add(const rules::Table &table, int unit, rules::Arguments arguments)
{
    return rules::add(table, unit, arguments);
}

int check(const TagAction *action)
{
    return action == nullptr ? static_cast<int>(BCM_E_PARAM) : check_action(*action);
}

bool is_range(int low, int high)
{
    return VlanTable::valid(low) && VlanTable::valid(high) && low <= high;
}

bool is_range_or_none(int low, int high)
{
    return (low == 0 && high == 0) || is_range(low, high);
}

/// A new VLAN id and priority, or -1 to leave that.
int check_new(int vlan, int priority)
{
    return VlanTable::valid(vlan) && priority >= -1 && priority < PortTags::packet_priorities ? BCM_E_NONE
                                                                                              : BCM_E_PARAM;
}

int check_new(bool has_key, int vlan, int priority)
{
    return has_key ? check_new(vlan, priority) : static_cast<int>(BCM_E_PARAM);
}

/// A key of translations as it is kept.
class Key {
public:
    Key(int port, bcm_vlan_translate_key_t type, bcm_vlan_t outer, bcm_vlan_t inner)
        : type_(type),
          known_(key_type_of(type)),
          outer_(outer),
          inner_(inner),
          place_(known_.place == KeyPlace::anywhere ? BCM_GPORT_INVALID : port)
    {
        mask_key(known_.part, outer_, inner_);
    }

    /// BCM_E_PARAM, BCM_E_UNAVAIL
    int check() const
    {
        if (type_ <= bcmVlanTranslateKeyInvalid || type_ >= bcmVlanTranslateKeyCount) {
            return BCM_E_PARAM;
        }
        const bool has_vlans = known_.part == KeyPart::both_vlans || known_.part == KeyPart::outer_vlan;
        const bool has_inner = known_.part == KeyPart::both_vlans || known_.part == KeyPart::inner_vlan;
        const bool is_wrong =
            (has_vlans && !VlanTable::valid(outer_)) || (has_inner && !VlanTable::valid(inner_));
        return known_.part == KeyPart::none ? BCM_E_UNAVAIL : is_wrong ? BCM_E_PARAM : BCM_E_NONE;
    }

    /// operation(table, unit, arguments), where more follow the key.
    template <class Operation>
    int use(int status, int unit, const rules::Argument &more, Operation operation) const
    {
        const rules::Argument place =
            known_.place == KeyPlace::port ? rules::own_port(place_) : rules::key(place_);
        return enter(status == BCM_E_NONE ? check() : status, translations, unit,
                     {place, rules::key(type_), rules::key(outer_), rules::key(inner_), more}, operation);
    }

private:
    bcm_vlan_translate_key_t type_;
    KeyType known_;
    bcm_vlan_t outer_, inner_;
    int place_;
};

/// What makes a VLAN of an untagged packet, and its priority if that is not below 0.
TagAction assignment(bcm_vlan_t vlan, int priority)
{
    TagAction action = {};
    action.new_outer_vlan = vlan;
    action.priority = priority;
    action.ut_outer = action.it_outer = bcmVlanActionAdd;
    action.ut_outer_pkt_prio = action.it_outer_pkt_prio = bcmVlanActionAdd;
    return action;
}

bool is_subnet(const bcm_vlan_ip_t &subnet)
{
    const bcm_ip_t hosts = ~subnet.mask;
    return subnet.flags & BCM_VLAN_SUBNET_IP6 ? subnet.prefix >= 0 && subnet.prefix <= 128
                                              : subnet.flags == 0 && (hosts & (hosts + 1)) == 0;
}

/// The subnet as it is kept: of one protocol, without the bits of hosts. An IPv4 address that no mask leaves marks
/// IPv6.
bcm_vlan_ip_t plain(const bcm_vlan_ip_t &subnet)
{
    bcm_vlan_ip_t kept = {};
    if (subnet.flags & BCM_VLAN_SUBNET_IP6) {
        kept.ip4 = ip6_mark;
        kept.prefix = subnet.prefix;
        for (int bit = 0; bit < subnet.prefix; ++bit) {
            kept.ip6[bit / 8] |= static_cast<unsigned char>(subnet.ip6[bit / 8] & (0x80 >> bit % 8));
        }
    } else {
        kept.ip4 = subnet.ip4 & subnet.mask;
        kept.mask = subnet.mask;
    }
    return kept;
}

template <class Operation>
int with_subnet(int status, int unit, bcm_vlan_ip_t *vlan_ip, const rules::Argument &more,
                Operation operation)
{
    using Subnet = bcm_vlan_ip_t;
    const bool is_right = vlan_ip != nullptr && is_subnet(*vlan_ip);
    const Subnet kept = is_right ? plain(*vlan_ip) : Subnet{};
    const Subnet *key = vlan_ip != nullptr ? &kept : nullptr;
    return enter(is_right ? status : static_cast<int>(BCM_E_PARAM), subnets, unit,
                 {rules::member(key, &Subnet::ip4), rules::member(key, &Subnet::mask),
                  rules::member(key, &Subnet::ip6), rules::member(key, &Subnet::prefix), more},
                 operation);
}

const rules::Argument nothing = rules::within(0, 0, 0);

int check_protocol(int frame, int type)
{
    constexpr int frames = BCM_PORT_FRAMETYPE_ETHER2 | BCM_PORT_FRAMETYPE_8023 | BCM_PORT_FRAMETYPE_SNAP
                           | BCM_PORT_FRAMETYPE_LLC;
    return frame != 0 && !(frame & ~frames) && type >= 0 && type <= 0xffff ? BCM_E_NONE : BCM_E_PARAM;
}

}  // namespace

extern "C" {

int sim_bcm_vlan_translate_action_add(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                      bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                      bcm_vlan_action_set_t *action)
{
    return Key(port, key_type, outer_vlan, inner_vlan)
        .use(check(action), unit, rules::given_at(action, sizeof *action), rules::set);
}

int sim_bcm_vlan_translate_action_create(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                         bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                         bcm_vlan_action_set_t *action)
{
    return Key(port, key_type, outer_vlan, inner_vlan)
        .use(check(action), unit, rules::given_at(action, sizeof *action), add);
}

int sim_bcm_vlan_translate_action_get(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                      bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan,
                                      bcm_vlan_action_set_t *action)
{
    return Key(port, key_type, outer_vlan, inner_vlan)
        .use(BCM_E_NONE, unit, rules::result_at(action, sizeof *action), rules::find);
}

int sim_bcm_vlan_translate_action_delete(int unit, bcm_gport_t port, bcm_vlan_translate_key_t key_type,
                                         bcm_vlan_t outer_vlan, bcm_vlan_t inner_vlan)
{
    return Key(port, key_type, outer_vlan, inner_vlan).use(BCM_E_NONE, unit, nothing, rules::remove);
}

int sim_bcm_vlan_translate_add(int unit, bcm_port_t port, bcm_vlan_t old_vid, bcm_vlan_t new_vid, int prio)
{
    return enter(check_new(VlanTable::valid(old_vid), new_vid, prio), renamed, unit,
                 {rules::own_port(port), rules::key(old_vid), rules::given(new_vid), rules::given(prio)},
                 add);
}

int sim_bcm_vlan_translate_egress_add(int unit, bcm_port_t port, bcm_vlan_t old_vid, bcm_vlan_t new_vid,
                                      int prio)
{
    return enter(check_new(VlanTable::valid(old_vid), new_vid, prio), renamed_to_send, unit,
                 {rules::own_port(port), rules::key(old_vid), rules::given(new_vid), rules::given(prio)},
                 add);
}

int sim_bcm_vlan_translate_range_add(int unit, bcm_port_t port, bcm_vlan_t old_vid_low,
                                     bcm_vlan_t old_vid_high, bcm_vlan_t new_vid, int int_prio)
{
    return enter(check_new(is_range(old_vid_low, old_vid_high), new_vid, int_prio), renamed_ranges, unit,
                 {rules::own_port(port), rules::key(old_vid_low), rules::key(old_vid_high),
                  rules::given(new_vid), rules::given(int_prio)},
                 add);
}

int sim_bcm_vlan_translate_action_range_add(int unit, bcm_gport_t port, bcm_vlan_t outer_vlan_low,
                                            bcm_vlan_t outer_vlan_high, bcm_vlan_t inner_vlan_low,
                                            bcm_vlan_t inner_vlan_high, bcm_vlan_action_set_t *action)
{
    const bool is_right = is_range_or_none(outer_vlan_low, outer_vlan_high)
                          && is_range_or_none(inner_vlan_low, inner_vlan_high)
                          && (outer_vlan_low != 0 || inner_vlan_low != 0);
    return enter(
        is_right ? check(action) : static_cast<int>(BCM_E_PARAM), ranges, unit,
        {rules::own_port(port), rules::key(outer_vlan_low), rules::key(outer_vlan_high),
         rules::key(inner_vlan_low), rules::key(inner_vlan_high), rules::given_at(action, sizeof *action)},
        add);
}

int sim_bcm_vlan_translate_egress_action_add(int unit, int port_class, bcm_vlan_t outer_vlan,
                                             bcm_vlan_t inner_vlan, bcm_vlan_action_set_t *action)
{
    const bool is_right =
        port_class >= 0 && VlanTable::valid(outer_vlan) && (inner_vlan == 0 || VlanTable::valid(inner_vlan));
    return enter(is_right ? check(action) : static_cast<int>(BCM_E_PARAM), translations_to_send, unit,
                 {rules::key(port_class), rules::key(outer_vlan), rules::key(inner_vlan),
                  rules::given_at(action, sizeof *action)},
                 add);
}

int sim_bcm_vlan_dtag_add(int unit, bcm_port_t port, bcm_vlan_t inner_vid, bcm_vlan_t new_vid, int prio)
{
    return enter(check_new(VlanTable::valid(inner_vid), new_vid, prio), customers, unit,
                 {rules::own_port(port), rules::key(inner_vid), rules::given(new_vid), rules::given(prio)},
                 add);
}

int sim_bcm_vlan_dtag_range_add(int unit, bcm_port_t port, bcm_vlan_t inner_vid_low,
                                bcm_vlan_t inner_vid_high, bcm_vlan_t new_vid, int int_prio)
{
    return enter(check_new(is_range(inner_vid_low, inner_vid_high), new_vid, int_prio), customer_ranges, unit,
                 {rules::own_port(port), rules::key(inner_vid_low), rules::key(inner_vid_high),
                  rules::given(new_vid), rules::given(int_prio)},
                 add);
}

int sim_bcm_vlan_port_default_action_set(int unit, bcm_port_t port, bcm_vlan_action_set_t *action)
{
    return enter(check(action), defaults, unit,
                 {rules::own_port(port), rules::given_at(action, sizeof *action)}, rules::set);
}

int sim_bcm_vlan_port_egress_default_action_set(int unit, bcm_port_t port, bcm_vlan_action_set_t *action)
{
    return enter(check(action), defaults_to_send, unit,
                 {rules::own_port(port), rules::given_at(action, sizeof *action)}, rules::set);
}

int sim_bcm_vlan_port_protocol_action_add(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                                          bcm_port_ethertype_t ether, bcm_vlan_action_set_t *action)
{
    const int status = check_protocol(frame, ether);
    return enter(status == BCM_E_NONE ? check(action) : status, protocols, unit,
                 {rules::own_port(port), rules::key(frame), rules::key(ether),
                  rules::given_at(action, sizeof *action)},
                 add);
}

int sim_bcm_port_protocol_vlan_add(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                                   bcm_port_ethertype_t ether, bcm_vlan_t vid)
{
    const TagAction action = assignment(vid, -1);
    return enter(VlanTable::valid(vid) ? check_protocol(frame, ether) : static_cast<int>(BCM_E_PARAM),
                 protocols, unit,
                 {rules::own_port(port), rules::key(frame), rules::key(ether), rules::given(action)}, add);
}

int sim_bcm_port_protocol_vlan_delete(int unit, bcm_port_t port, bcm_port_frametype_t frame,
                                      bcm_port_ethertype_t ether)
{
    return sim_bcm_vlan_port_protocol_action_delete(unit, port, frame, ether);
}

int sim_bcm_port_protocol_vlan_delete_all(int unit, bcm_port_t port)
{
    return sim_bcm_vlan_port_protocol_action_delete_all(unit, port);
}

int sim_bcm_vlan_mac_action_add(int unit, bcm_mac_t mac, bcm_vlan_action_set_t *action)
{
    const bool is_right = mac != nullptr && !is_group(mac);
    return enter(is_right ? check(action) : static_cast<int>(BCM_E_PARAM), addresses, unit,
                 {rules::key_at(mac, sizeof(bcm_mac_t)), rules::given_at(action, sizeof *action)}, add);
}

int sim_bcm_vlan_mac_add(int unit, bcm_mac_t mac, bcm_vlan_t vid, int prio)
{
    TagAction action = assignment(vid, prio);
    const bool is_right = mac != nullptr && !is_group(mac);
    return enter(check_new(is_right, vid, prio), addresses, unit,
                 {rules::key_at(mac, sizeof(bcm_mac_t)), rules::given(action)}, add);
}

int sim_bcm_vlan_mac_delete(int unit, bcm_mac_t mac)
{
    return sim_bcm_vlan_mac_action_delete(unit, mac);
}

int sim_bcm_vlan_mac_delete_all(int unit)
{
    return sim_bcm_vlan_mac_action_delete_all(unit);
}

int sim_bcm_vlan_ip_action_add(int unit, bcm_vlan_ip_t *vlan_ip, bcm_vlan_action_set_t *action)
{
    return with_subnet(check(action), unit, vlan_ip, rules::given_at(action, sizeof *action), add);
}

int sim_bcm_vlan_ip_action_get(int unit, bcm_vlan_ip_t *vlan_ip, bcm_vlan_action_set_t *action)
{
    return with_subnet(BCM_E_NONE, unit, vlan_ip, rules::result_at(action, sizeof *action), rules::find);
}

int sim_bcm_vlan_ip_action_delete(int unit, bcm_vlan_ip_t *vlan_ip)
{
    return with_subnet(BCM_E_NONE, unit, vlan_ip, nothing, rules::remove);
}

int sim_bcm_vlan_ip_action_traverse(int unit, bcm_vlan_ip_action_traverse_cb cb, void *user_data)
{
    using Bytes16 = std::array<unsigned char, 16>;
    return rules::visit_all(subnets, unit, {}, cb == nullptr,
                            2 * sizeof(bcm_ip_t) + sizeof(Bytes16) + sizeof(int) + sizeof(TagAction), false,
                            [&](const char *bytes) {
                                bcm_vlan_ip_t subnet = {};
                                TagAction action;
                                const auto take = [&](void *part, std::size_t size) {
                                    std::memcpy(part, bytes, size);
                                    bytes += size;
                                };
                                take(&subnet.ip4, sizeof subnet.ip4);
                                take(&subnet.mask, sizeof subnet.mask);
                                take(&subnet.ip6, sizeof subnet.ip6);
                                take(&subnet.prefix, sizeof subnet.prefix);
                                take(&action, sizeof action);
                                if (subnet.ip4 == ip6_mark && subnet.mask == 0) {
                                    subnet.ip4 = 0;
                                    subnet.flags = BCM_VLAN_SUBNET_IP6;
                                }
                                subnet.vid = action.new_outer_vlan;
                                subnet.prio = action.priority;
                                return cb(unit, &subnet, &action, user_data);
                            });
}

int sim_bcm_vlan_ip_add(int unit, bcm_vlan_ip_t *vlan_ip)
{
    const bool is_there = vlan_ip != nullptr;
    const TagAction action = is_there ? assignment(vlan_ip->vid, vlan_ip->prio) : TagAction{};
    return with_subnet(is_there ? check_new(vlan_ip->vid, vlan_ip->prio) : static_cast<int>(BCM_E_PARAM),
                       unit, vlan_ip, rules::given(action), add);
}

int sim_bcm_vlan_ip_delete(int unit, bcm_vlan_ip_t *vlan_ip)
{
    return sim_bcm_vlan_ip_action_delete(unit, vlan_ip);
}

int sim_bcm_vlan_ip_delete_all(int unit)
{
    return sim_bcm_vlan_ip_action_delete_all(unit);
}

int sim_bcm_port_force_vlan_set(int unit, bcm_port_t port, bcm_vlan_t vlan, int pkt_prio, uint32 flags)
{
    constexpr uint32 known =
        BCM_PORT_FORCE_VLAN_ENABLE | BCM_PORT_FORCE_VLAN_UNTAG | BCM_PORT_FORCE_VLAN_PKT_PRIO;
    const bool is_right = !(flags & ~known)
                          && (!(flags & BCM_PORT_FORCE_VLAN_ENABLE) || VlanTable::valid(vlan))
                          && (!(flags & BCM_PORT_FORCE_VLAN_PKT_PRIO)
                              || (pkt_prio >= 0 && pkt_prio < PortTags::packet_priorities));
    return enter(is_right ? BCM_E_NONE : BCM_E_PARAM, forced, unit,
                 {rules::own_port(port), rules::given(vlan), rules::given(pkt_prio), rules::given(flags)},
                 rules::set);
}

}  // extern "C"
