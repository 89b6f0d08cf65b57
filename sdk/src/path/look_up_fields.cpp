#include "stages.h"

#include "field.h"
#include "ip_header.h"

#include <bcm/field_values.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>

namespace sim {

namespace {

namespace at = field_places;

void tell_match(const Passage &passage, bcm_field_group_t group, const FieldInstalled &entry)
{
    std::string does;
    for (const auto &[action, given] : entry.content.actions) {
        does += (does.empty() ? ": " : ", ") + field_action_name(action);
    }
    const bool is_default = fields_of(passage.sw).groups.at(group).by_default == &entry;
    tell_step(passage, simStageField, passage.port, "entry %u of group %d, priority %d, %s%s", entry.entry,
              group, entry.priority, is_default ? "acts, since no other matches" : "matches", does.c_str());
}

void tell_miss(const Passage &passage, bcm_field_group_t group, const FieldMiss &miss)
{
    if (miss.entry == nullptr) {
        return;
    }
    std::string lacking;
    for (const std::string &difference : miss.differences) {
        lacking += (lacking.empty() ? "" : "; ") + difference;
    }
    tell_step(passage, simStageField, passage.port,
              "no entry of group %d matches; entry %u, priority %d, would but for %s", group,
              miss.entry->entry, miss.entry->priority, lacking.c_str());
}

/// The same as match_fields, in words.
template <class Meet>
[[gnu::cold, gnu::noinline]] void match_and_tell(const Passage &passage, FieldStage stage, int port,
                                                 FieldKey &key, FieldVerdict &verdict, Meet meet)
{
    FieldState &state = fields_of(passage.sw);
    match_fields(state, stage, port, key, verdict, meet,
                 [&](const FieldLookup &lookup, const FieldInstalled *entry) {
                     if (entry != nullptr) {
                         tell_match(passage, lookup.id, *entry);
                     } else {
                         tell_miss(passage, lookup.id, nearest_miss(state, *lookup.group, key));
                     }
                 });
}

/// The headers of the frame, as of one at that port, and where the packet came from.
void start_key(const Passage &passage, ByteView frame, int at_port, FieldKey &key)
{
    read_headers(frame, port_of(passage.sw, at_port).tags, key);
    const auto port = static_cast<unsigned>(passage.port);
    key.put(at::color, passage.color());
    key.put(at::in_port, port);
    key.words[at::in_ports.word + port / 64] = FieldWord{1} << port % 64;
    const Destination &place = trunks_of(passage.sw).ports().places[static_cast<std::size_t>(passage.port)];
    if (place.kind == Destination::Kind::trunk) {
        key.put(at::in_trunk, static_cast<unsigned>(place.id));
        key.has(FieldHeader::in_trunk);
    }
}

bcm_gport_t gport_of(const Destination &place)
{
    bcm_gport_t gport = 0;
    if (place.kind == Destination::Kind::trunk) {
        BCM_GPORT_TRUNK_SET(gport, place.id);
    } else {
        BCM_GPORT_MODPORT_SET(gport, place.module, place.id);
    }
    return gport;
}

/// What tables said of its addresses.
void put_findings(const Passage &passage, FieldKey &key)
{
    if (passage.hop != nullptr) {
        key.put(at::egress_object, static_cast<unsigned>(passage.hop->object));
        if (passage.hop->object != 0) {
            key.has(FieldHeader::egress_object);
        }
        key.put(at::outgoing_class, passage.hop->interface->record.l3a_intf_class);
    }
    if (!passage.findings) {
        return;
    }
    const Findings &found = *passage.findings;
    key.put(at::station_hit, found.is_for_router);
    key.put(at::is_learnt, found.is_learnt);
    key.put(at::has_moved, passage.source_was_known && !passage.source_was_in_place);
    if (found.is_learnt) {
        key.put(at::learn_vlan, found.vid);
        key.has(FieldHeader::learnt);
    }
    key.put(at::vlan_class, found.vlan_class);
    key.put(at::incoming_class, found.interface_class);
    if (found.ingress_if != 0) {
        key.put(at::l3_ingress, static_cast<unsigned>(found.ingress_if));
        key.has(FieldHeader::l3_ingress);
    }
    if (!found.is_looked_up) {
        return;
    }
    key.put(at::routing_table, found.vrf);
    key.has(FieldHeader::router);
    key.put(at::destination_is_host, found.to.is_host);
    key.put(at::destination_is_route, found.to.entry != nullptr && !found.to.is_host);
    key.put(at::source_is_host, found.from.is_host);
    key.put(at::source_is_route, found.from.entry != nullptr && !found.from.is_host);
    key.put(at::destination_is_local, found.is_local);
    if (passage.hop != nullptr && found.group != 0) {
        key.put(at::l3_group, static_cast<unsigned>(found.group));
        key.has(FieldHeader::l3_group);
    }
}

/// Classes that entries gave, and where none did, those of the port and of the addresses.
void put_classes(const Passage &passage, FieldKey &key)
{
    static constexpr FieldClasses none = {};
    const FieldClasses &given = passage.treatment ? passage.treatment->classes : none;
    for (std::size_t which = 0; which < field_classes; ++which) {
        key.put(class_place(static_cast<FieldClass>(which)), given[which]);
    }
    const auto put = [&](FieldPlace place, FieldClass which, FieldWord otherwise) {
        const unsigned by_entry = given[static_cast<std::size_t>(which)];
        key.put(place, by_entry != 0 ? by_entry : otherwise);
    };
    put(at::port_class, FieldClass::port, key.get(at::class_of_port));
    put(at::source_l3_class, FieldClass::l3_source, passage.findings ? passage.findings->from_class : 0);
    put(at::destination_l3_class, FieldClass::l3_destination,
        passage.findings ? passage.findings->to_class : 0);
}

void put_port_classes(const Passage &passage, FieldKey &key)
{
    const LookupClasses &classes = lookup_classes_of(passage.sw, passage.port);
    key.put(at::lookup_class_of_port, classes.lookup);
    key.put(at::class_of_port, classes.ingress);
    key.put(at::processing_class_of_port, classes.processing);
}

/// What was decided so far, besides where it goes.
void put_results(const Passage &passage, FieldKey &key)
{
    const auto bit = [](int kind) { return FieldWord{1} << kind; };
    const bool is_routed = passage.hop != nullptr;
    key.put(at::priority, static_cast<unsigned>(passage.priority()));
    key.put(at::is_routed, is_routed);
    key.put(at::vlan_is_valid, 1);
    key.put(at::forwarding_type, bit(bcmFieldForwardingTypeAny));
    key.put(at::forwarding_type, !is_routed ? bit(bcmFieldForwardingTypeL2)
                                 : key.is(FieldHeader::ip4)
                                     ? bit(bcmFieldForwardingTypeL3) | bit(bcmFieldForwardingTypeIp4Ucast)
                                     : bit(bcmFieldForwardingTypeL3) | bit(bcmFieldForwardingTypeIp6Ucast));
    put_findings(passage, key);
    const Destination &place = trunks_of(passage.sw).ports().places[static_cast<std::size_t>(passage.port)];
    key.put(at::in_gport, static_cast<unsigned>(gport_of(place)));
    key.put(at::in_port_gport,
            static_cast<unsigned>(gport_of({Destination::Kind::port, own_module, passage.port})));
    key.put(at::are_translated, passage.tags && passage.tags->are_translated);
    put_classes(passage, key);
}

/// The port or trunk where it goes, if it is one.
void put_place(const Destination &place, FieldKey &key)
{
    if (key.is(FieldHeader::out_port) || key.is(FieldHeader::out_trunk)) {
        key.put(at::out_gport, static_cast<unsigned>(gport_of(place)));
        key.has(FieldHeader::out_place);
    }
}

/// Whether the copy for the port is one of several, which are sent in the order of ports.
void put_replication(const PortSet &copies, int port, FieldKey &key)
{
    bool is_first = true;
    copies.each([&](int other) { is_first = is_first && other >= port; });
    key.put(at::is_replicated, copies.count() > 1);
    key.put(at::is_first, copies.count() > 1 && is_first);
}

/// What bridging or routing made of it, and the tags that it has in the switch.
void put_forwarding(Passage &passage, FieldKey &key)
{
    const bool is_known = key.get(at::destination_hit) != 0;
    key.put(at::packet_result, passage.hop != nullptr        ? bcmFieldPacketResL3UcastKnown
                               : key.get(at::broadcast) != 0 ? bcmFieldPacketResL2Broadcast
                               : key.get(at::multicast) != 0 ? (is_known ? bcmFieldPacketResL2McastKnown
                                                                         : bcmFieldPacketResL2McastUnknown)
                               : is_known                    ? bcmFieldPacketResL2UcastKnown
                                                             : bcmFieldPacketResL2UcastUnknown);
    const PacketTags tags = tags_of(passage);
    key.put(at::translated_outer_tag, tags.outer.content());
    key.put(at::translated_inner_tag, tags.inner.is_there ? tags.inner.content() : 0u);
    key.put(at::translated_format, BCM_FIELD_VLAN_FORMAT_OUTER_TAGGED
                                       | (tags.inner.is_there ? BCM_FIELD_VLAN_FORMAT_INNER_TAGGED : 0));
}

/// Puts what is further in, and the stage, if an entry of the stage asks for it: whether one does.
bool look_further(const Passage &passage, FieldStage stage, ByteView frame, FieldKey &key)
{
    const FieldState &fields = fields_of(passage.sw);
    if (fields.looking_further[static_cast<std::size_t>(stage)] == 0 && !fields.presels_look_further) {
        return false;
    }
    read_further_headers(key);
    key.put(at::stage, FieldWord{1} << (stage == FieldStage::lookup    ? bcmFieldStageLookup
                                        : stage == FieldStage::ingress ? bcmFieldStageIngress
                                                                       : bcmFieldStageEgress));
    put_data(fields.data_qualifiers, frame, key);
    put_port_classes(passage, key);
    return true;
}

/// Of ICMP for IPv6; 0 for what is something else.
unsigned icmp6_type(const FieldKey &key)
{
    constexpr unsigned code_bits = 8;
    return key.is(FieldHeader::icmp) && key.is(FieldHeader::ip6)
               ? static_cast<unsigned>(key.get(at::type_code)) >> code_bits
               : 0;
}

bool is_neighbor_discovery(const FieldKey &key)
{
    constexpr unsigned first = 133, last = 137;
    const unsigned type = icmp6_type(key);
    return type >= first && type <= last;
}

/// Whether it goes to the members of its VLAN since nothing else is known.
bool is_flooded(const Passage &passage, const FieldKey &key)
{
    const auto &settings = passage.vlan->settings;
    const bool is_ignored = settings != nullptr && (settings->flags & BCM_VLAN_L2_LOOKUP_DISABLE);
    return passage.is_for_many && passage.hop == nullptr && passage.routed == nullptr
           && (is_ignored || key.get(at::destination_hit) == 0);
}

/// What holds of the packet, as far as actions ask.
[[gnu::cold, gnu::noinline]] FieldConditions conditions_of(const Passage &passage, FieldStage stage,
                                                           const FieldKey &key)
{
    using C = FieldCondition;
    FieldConditions found = 0;
    const auto put = [&](C condition, bool holds) { found |= holds ? one_of(condition) : 0; };
    const FieldWord protocols = protocols_of(key);
    const auto is = [protocols](std::initializer_list<int> types) {
        return std::any_of(types.begin(), types.end(),
                           [protocols](int type) { return (protocols >> type & 1) != 0; });
    };
    put(C::arp, is({bcmFieldAppTypeArp}));
    put(C::dhcp, is({bcmFieldAppTypeDhcp4, bcmFieldAppTypeDhcp6}));
    put(C::igmp, is({bcmFieldAppTypeIgmp}));
    put(C::mld, is({bcmFieldAppTypeMld}));
    put(C::neighbor_discovery, is_neighbor_discovery(key));
    put(C::time, is({bcmFieldAppTypePtp, bcmFieldAppTypePtpOverIp4, bcmFieldAppTypePtpOverIp6}));
    if (stage != FieldStage::ingress) {
        return found;
    }
    put(C::moved, passage.source_was_known && !passage.source_was_in_place);
    if (is_flooded(passage, key)) {
        const unsigned char *to = passage.frame.to();
        put(C::flooded, true);
        put(is_broadcast(to) ? C::broadcast : is_group(to) ? C::unknown_multicast : C::unknown_unicast, true);
    }
    return found;
}

/// Policers of entries decide on the way.
FieldVerdict match(Passage &passage, FieldStage stage, int port, FieldKey &key, PolicerDecision &policed)
{
    FieldState &fields = fields_of(passage.sw);
    FieldVerdict verdict(fields.asking_for_conditions != 0 && stage != FieldStage::egress
                             ? conditions_of(passage, stage, key)
                             : FieldConditions{0});
    policed = PolicerDecision::none();
    policed.color = passage.color();
    const auto meet = [&](const FieldInstalled &entry) {
        policed.color = entry.is_color_blind ? bcmColorGreen : policed.color;
        for (const PolicerUse &policer : entry.policers) {
            if (policer.id != 0 && !policed.drops) {
                police(fields.policers, policer, passage.counts.length(), policed);
            }
        }
        return policed.color;
    };
    if (is_traced) {
        match_and_tell(passage, stage, port, key, verdict, meet);
    } else {
        match_fields(fields, stage, port, key, verdict, meet, [](const auto &...) {});
    }
    if (!fields.undecided.empty()) {
        // Who sends copies notes them there.
        passage.treat();
    }
    return verdict;
}

FieldVerdict match(Passage &passage, FieldStage stage, int port, FieldKey &key)
{
    PolicerDecision none;
    return match(passage, stage, port, key, none);
}

/// What is known of where it goes.
void put_destination(const Passage &passage, FieldKey &key)
{
    PortSet ports;
    const TrunkPorts &trunks = trunks_of(passage.sw).ports();
    if (passage.is_for_many) {
        const PortSet &origin = trunks.origins[static_cast<std::size_t>(passage.port)];
        ports = passage.hop == nullptr ? passage.members - origin : passage.members;
    } else if (passage.to.kind == Destination::Kind::port) {
        ports.add(passage.to.id);
        key.put(at::out_port, static_cast<unsigned>(passage.to.id));
        key.has(FieldHeader::out_port);
    } else if (passage.to.kind == Destination::Kind::trunk) {
        key.put(at::out_trunk, static_cast<unsigned>(passage.to.id));
        key.has(FieldHeader::out_trunk);
        const SendingTrunk *trunk = trunks.find(passage.to.id);
        ports = trunk != nullptr ? trunk->senders : PortSet();
    } else if (passage.to.kind == Destination::Kind::discard) {
        key.put(at::drop, 1);
    }
    if (passage.to.kind == Destination::Kind::group) {
        key.put(at::out_group, static_cast<unsigned>(passage.to.id));
        key.has(FieldHeader::out_group);
    }
    ports.each([&](int port) {
        const auto number = static_cast<unsigned>(port);
        key.words[at::out_ports.word + number / 64] |= FieldWord{1} << number % 64;
    });
}

void put_bridging(const Passage &passage, FieldKey &key)
{
    key.put(at::forwarding_vlan, passage.vid);
    key.put(at::tree_state, static_cast<unsigned>(tree_state_by_fields(passage)));
    key.has(FieldHeader::vlan);
    key.put(at::source_hit, passage.source_was_known);
    key.put(at::source_static, passage.source_was_static);
    const L2Table &addresses = l2_of(passage.sw).addresses;
    const std::size_t destination = addresses.find(l2_key(passage.frame.to(), passage.vid));
    key.put(at::destination_hit, destination != L2Table::none);
}

constexpr Destination nowhere = {Destination::Kind::discard, 0, 0};
constexpr Destination the_cpu = {Destination::Kind::port, own_module, cpu_port};

void go_to(Passage &passage, const PortSet &ports)
{
    passage.is_for_many = true;
    passage.members = ports;
    passage.member_index = &bcm_trunk_info_t::mc_index;
}

void go_to(Passage &passage, const Destination &to)
{
    passage.is_for_many = false;
    passage.to = to;
}

/// What is no IP packet stays as it is.
void redirect_to_object(Passage &passage, bcm_if_t object)
{
    const Onward onward = route_by_object(passage, object);
    if (onward != Onward::next) {
        go_to(passage, onward == Onward::over ? nowhere : passage.to);
    }
}

void redirect_to_members(Passage &passage, bcm_vlan_t vid)
{
    VlanTable &vlans = vlans_of(passage.sw);
    go_to(passage, vlans.has(vid) ? PortSet(vlans.at(vid).members) : PortSet());
}

void redirect(Passage &passage, const FieldEffect &effect)
{
    if (effect.kind == FieldEffect::Kind::to_object) {
        redirect_to_object(passage, static_cast<bcm_if_t>(effect.number));
    } else if (effect.kind == FieldEffect::Kind::to_members) {
        redirect_to_members(passage, static_cast<bcm_vlan_t>(effect.number));
    } else if (effect.kind == FieldEffect::Kind::to_ports) {
        go_to(passage, effect.ports);
    } else if (effect.kind == FieldEffect::Kind::to_source) {
        go_to(passage, {Destination::Kind::port, own_module, passage.port});
    } else if (effect.to.kind == Destination::Kind::group) {
        const auto &lines = l2_of(passage.sw).multicast;
        const auto line = lines.find(effect.to.id);
        passage.to = effect.to;
        go_to(passage, line != lines.end() ? PortSet(line->second) : PortSet());
    } else {
        go_to(passage, effect.to);
    }
}

/// Ports besides those where the packet goes, or without some.
void change_ports(Passage &passage, const FieldEffect &effect)
{
    const bool adds = effect.kind == FieldEffect::Kind::also_to_ports;
    PortSet now = passage.is_for_many ? passage.members : PortSet();
    if (!passage.is_for_many && passage.to.kind == Destination::Kind::port) {
        now = PortSet::one(passage.to.id);
    } else if (!passage.is_for_many && passage.to.kind == Destination::Kind::trunk && !adds) {
        return;
    }
    go_to(passage, adds ? now | effect.ports : now - effect.ports);
}

bool goes_to_cpu(const Passage &passage)
{
    return passage.is_for_many ? passage.members.has(cpu_port) : passage.to == the_cpu;
}

/// What the switch itself has for the CPU. Whether the packet then goes nowhere.
bool keep_from_cpu(Passage &passage)
{
    passage.copies.remove(cpu_port);
    passage.cpu_reasons.clear();
    passage.members.remove(cpu_port);
    if (passage.is_for_many || !(passage.to == the_cpu)) {
        return false;
    }
    passage.to = nowhere;
    return true;
}

/// Where it goes, but for the CPU's copies.
void lead(Passage &passage, const FieldVerdict &verdict)
{
    const bool is_kept = verdict.cancels(FieldDecision::switch_to_cpu) && keep_from_cpu(passage);
    if (verdict.of(FieldDecision::trap) != nullptr) {
        go_to(passage, the_cpu);
        return;
    }
    const FieldEffect *const destination = verdict.of(FieldDecision::destination);
    const FieldEffect *const ports = verdict.of(FieldDecision::egress_ports);
    const bool is_lost = is_kept && destination == nullptr && ports == nullptr;
    if (is_lost || verdict.of(FieldDecision::drop) != nullptr) {
        passage.drop(Discard::field_rule);
        go_to(passage, nowhere);
        return;
    }
    if (destination != nullptr) {
        redirect(passage, *destination);
        passage.treat().is_redirected = true;
    }
    if (ports != nullptr) {
        change_ports(passage, *ports);
    }
}

/// The numbers that are decided for the packet.
class Numbers {
public:
    Numbers(const FieldVerdict &verdict, const FieldKey &key) : verdict_(verdict), key_(key) {}

    template <class Number>
    void put(FieldDecision decision, Number &place) const
    {
        const FieldEffect *effect = verdict_.of(decision);
        const auto number = effect != nullptr ? effect->number_for(key_) : std::nullopt;
        if (number) {
            place = static_cast<Number>(*number);
        }
    }

private:
    const FieldVerdict &verdict_;
    const FieldKey &key_;
};

/// Priorities, queues and colour.
void treat(Passage &passage, const FieldVerdict &verdict, const FieldKey &key)
{
    using D = FieldDecision;
    constexpr FieldDecisions decisions =
        FieldDecisions::of(D::priority, D::color, D::unicast_queue, D::multicast_queue, D::cpu_queue,
                           D::outer_priority, D::outer_cfi, D::not_learnt, D::no_arrival_filter,
                           D::no_leaving_filter, D::not_routed, D::not_limited, D::routing_table,
                           D::source_check, D::not_snooped, D::bpdu_passes, D::source_passes,
                           D::not_looked_up, D::not_looked_up_last, D::tree_state, D::may_return,
                           D::trunk_member)
        | class_decisions;
    if (!verdict.has_any(decisions)) {
        return;
    }
    const Numbers numbers(verdict, key);
    // It begins with the priority that the tag has until here.
    Treatment &treatment = passage.treat();
    numbers.put(D::priority, treatment.priority);
    numbers.put(D::color, treatment.color);
    numbers.put(passage.is_for_many ? D::multicast_queue : D::unicast_queue, treatment.queue);
    numbers.put(D::cpu_queue, treatment.cpu_queue);
    for (std::size_t which = 0; which < field_classes; ++which) {
        numbers.put(decision_of(static_cast<FieldClass>(which)), treatment.classes[which]);
    }
    treatment.is_learnt = verdict.of(D::not_learnt) == nullptr;
    treatment.skips_arrival_filter |= verdict.of(D::no_arrival_filter) != nullptr;
    treatment.skips_leaving_filter |= verdict.of(D::no_leaving_filter) != nullptr;
    treatment.is_routed &= verdict.of(D::not_routed) == nullptr;
    treatment.is_limited &= verdict.of(D::not_limited) == nullptr;
    treatment.is_snooped &= verdict.of(D::not_snooped) == nullptr;
    treatment.is_looked_up &= verdict.of(D::not_looked_up) == nullptr;
    treatment.is_looked_up_last &= verdict.of(D::not_looked_up_last) == nullptr;
    treatment.forwards_bpdus |= verdict.of(D::bpdu_passes) != nullptr;
    treatment.source_passes |= verdict.of(D::source_passes) != nullptr;
    treatment.may_return |= verdict.of(D::may_return) != nullptr;
    numbers.put(D::tree_state, treatment.tree_state);
    numbers.put(D::trunk_member, treatment.trunk_member);
    numbers.put(D::routing_table, treatment.vrf);
    numbers.put(D::source_check, treatment.source_check);
    Tag tag;
    tag.set_content(passage.frame.tag);
    numbers.put(D::outer_priority, tag.priority);
    numbers.put(D::outer_cfi, tag.cfi);
    passage.frame.tag = tag.content();
    if (passage.tags) {
        passage.tags->outer.set_content(tag.content());
    }
}

/// What else tags say: the packet leaves as one whose port reads them in its own way.
void change_tags(Passage &passage, const FieldVerdict &verdict, const FieldKey &key)
{
    using D = FieldDecision;
    if (!verdict.has_any(FieldDecisions::of(D::outer_type, D::inner_vlan, D::inner_priority, D::inner_cfi,
                                            D::inner_type))) {
        return;
    }
    passage.treat();
    if (!passage.tags) {
        passage.tags = tags_of(passage);
        passage.frame.untagged_from = passage.tags->payload_from;
        passage.frame.type = number_at(passage.frame.bytes, passage.frame.untagged_from);
    }
    const Numbers numbers(verdict, key);
    Tag &outer = passage.tags->outer, &inner = passage.tags->inner;
    numbers.put(D::outer_type, outer.type);
    if (const FieldEffect *effect = verdict.of(D::inner_vlan)) {
        inner.is_there = effect->kind == FieldEffect::Kind::new_tag
                         || (inner.is_there && effect->kind != FieldEffect::Kind::no_tag);
        numbers.put(D::inner_vlan, inner.vlan);
    }
    numbers.put(D::inner_priority, inner.priority);
    numbers.put(D::inner_cfi, inner.cfi);
    numbers.put(D::inner_type, inner.type);
}

/// What is to be changed beside IP's own: what the packet has.
void put_flow(const Numbers &numbers, const FieldKey &key, ByteView frame, HeaderChanges &changes)
{
    using D = FieldDecision;
    if (key.is(FieldHeader::ether_type)) {
        constexpr std::size_t bytes_of_type = 2;
        changes.type_from = static_cast<std::size_t>(key.behind_type.data - frame.data) - bytes_of_type;
        numbers.put(D::ether_type, changes.ether_type);
    }
    if (key.is(FieldHeader::ip4)) {
        numbers.put(D::source_ip, changes.source_ip);
        numbers.put(D::destination_ip, changes.destination_ip);
    }
    if (key.is(FieldHeader::ip6)) {
        numbers.put(D::flow_label, changes.flow_label);
    }
    changes.is_udp = key.is(FieldHeader::udp);
    if (changes.is_udp || key.is(FieldHeader::tcp)) {
        changes.l4_from = static_cast<std::size_t>(key.behind_ip.data - frame.data);
        numbers.put(D::source_l4_port, changes.source_l4_port);
        numbers.put(D::destination_l4_port, changes.destination_l4_port);
    }
}

/// What is to be changed in headers, from the frame on in which they are.
HeaderChanges changes_of(const FieldVerdict &verdict, const FieldKey &key, ByteView frame)
{
    using D = FieldDecision;
    constexpr unsigned ecn_mask = 3, dscp_mask = 0xfc, precedence_mask = 0xe0;
    constexpr unsigned dscp_shift = 2, precedence_shift = 5;
    HeaderChanges changes;
    if (key.ip != nullptr) {
        changes.ip_from = static_cast<std::size_t>(key.ip - frame.data);
    }
    if (const FieldEffect *effect = verdict.of(D::service)) {
        const bool is_whole = effect->kind != FieldEffect::Kind::new_precedence
                              && effect->kind != FieldEffect::Kind::copied_precedence;
        if (const auto number = effect->number_for(key)) {
            changes.service_mask = is_whole ? dscp_mask : precedence_mask;
            changes.service = *number << (is_whole ? dscp_shift : precedence_shift);
        }
    }
    if (const FieldEffect *effect = verdict.of(D::ecn)) {
        if (const auto number = effect->number_for(key)) {
            changes.service_mask |= ecn_mask;
            changes.service |= *number;
        }
    }
    const Numbers numbers(verdict, key);
    numbers.put(D::ttl, changes.ttl);
    put_flow(numbers, key, frame, changes);
    if (const FieldEffect *effect = verdict.of(D::destination_mac)) {
        changes.to = effect->mac.data();
    }
    if (const FieldEffect *effect = verdict.of(D::source_mac)) {
        changes.from = effect->mac.data();
    }
    return changes;
}

constexpr FieldDecisions header_decisions =
    FieldDecisions::of(FieldDecision::source_ip, FieldDecision::destination_ip, FieldDecision::source_l4_port,
                       FieldDecision::destination_l4_port, FieldDecision::ether_type,
                       FieldDecision::flow_label, FieldDecision::service, FieldDecision::ecn,
                       FieldDecision::ttl, FieldDecision::source_mac, FieldDecision::destination_mac);
constexpr FieldDecisions tag_decisions =
    FieldDecisions::of(FieldDecision::vlan, FieldDecision::outer_priority, FieldDecision::outer_cfi,
                       FieldDecision::outer_type, FieldDecision::inner_vlan, FieldDecision::inner_priority,
                       FieldDecision::inner_cfi, FieldDecision::inner_type);

/// The same when it is known how its copies begin.
void note_changes(Passage &passage, const FieldVerdict &verdict, const FieldKey &key)
{
    if (verdict.has_any(header_decisions)) {
        passage.treat().changes_headers = true;
        passage.treat().changes = changes_of(verdict, key, passage.frame.bytes);
    }
}

/// The decisions about one tag.
struct TagDecisions {
    FieldDecision vlan, priority, cfi, type;
};

void rewrite_tag(const TagDecisions &decisions, const Numbers &numbers, unsigned char *place)
{
    Tag tag;
    tag.type = number_at(place);
    tag.set_content(number_at(place + 2));
    numbers.put(decisions.vlan, tag.vlan);
    numbers.put(decisions.priority, tag.priority);
    numbers.put(decisions.cfi, tag.cfi);
    numbers.put(decisions.type, tag.type);
    put_number(place, tag.type);
    put_number(place + 2, tag.content());
}

/// The copy as the verdict says: what it has is changed, nothing comes or goes.
void rewrite(const FieldVerdict &verdict, const FieldKey &key, ByteView copy, FrameBuffer &frame)
{
    using D = FieldDecision;
    const Numbers numbers(verdict, key);
    frame.fill(copy);
    unsigned char *const bytes = frame.shared();
    const HeaderChanges changes = changes_of(verdict, key, copy);
    if (changes.ip_from != 0) {
        unsigned char *const header = bytes + changes.ip_from;
        change_ip(header, changes, false);
        change_flow(bytes, changes, {header + ip4_checksum_at});
    }
    if (changes.ether_type >= 0) {
        put_number(bytes + changes.type_from, static_cast<unsigned>(changes.ether_type));
    }
    unsigned char *tag = bytes + addresses_bytes;
    if (key.is(FieldHeader::outer_tag)) {
        rewrite_tag({D::vlan, D::outer_priority, D::outer_cfi, D::outer_type}, numbers, tag);
        tag += tag_bytes;
    }
    if (key.is(FieldHeader::inner_tag)) {
        rewrite_tag({D::inner_vlan, D::inner_priority, D::inner_cfi, D::inner_type}, numbers, tag);
    }
    if (changes.to != nullptr) {
        std::memcpy(bytes, changes.to, address_bytes);
    }
    if (changes.from != nullptr) {
        std::memcpy(bytes + address_bytes, changes.from, address_bytes);
    }
}

/// What is decided of samples in one direction.
Sample sample_of(const FieldVerdict &verdict, FieldDecision which, FieldDecision rate)
{
    Sample sample;
    if (verdict.of(which) == nullptr) {
        return sample;
    }
    const FieldEffect *const given = verdict.of(rate), *const to = verdict.of(FieldDecision::sample_to);
    sample.rate = given != nullptr ? static_cast<int>(given->number) : 1;
    sample.destination = to != nullptr ? static_cast<int>(to->number) : 0;
    return sample;
}

void mirror(Passage &passage, const FieldVerdict &verdict)
{
    using D = FieldDecision;
    if (verdict.of(D::sample_in) != nullptr) {
        sample_arrival(passage, sample_of(verdict, D::sample_in, D::sample_rate_in));
    }
    if (verdict.of(D::sample_out) != nullptr) {
        passage.treat().sample_out = sample_of(verdict, D::sample_out, D::sample_rate_out);
    }
    if (const FieldEffect *effect = verdict.of(FieldDecision::mirror_in)) {
        mirror_arrival(passage, static_cast<int>(effect->number));
    }
    if (const FieldEffect *effect = verdict.of(FieldDecision::mirror_out)) {
        passage.treat().mirror_out = static_cast<int>(effect->number);
    }
}

bcm_rx_reason_t reason_of_arp(const FieldKey &key)
{
    const bool is_reply = key.get(at::arp_operation) >> bcmFieldArpOpcodeReply & 1;
    return is_reply ? bcmRxReasonArpReply : bcmRxReasonArp;
}

bcm_rx_reason_t reason_of_igmp(const FieldKey &key)
{
    constexpr unsigned query = 0x11, leave = 0x17, code_bits = 8;
    const unsigned type = static_cast<unsigned>(key.get(at::type_code)) >> code_bits;
    return type == query   ? bcmRxReasonIgmpQuery
           : type == leave ? bcmRxReasonIgmpLeave
                           : bcmRxReasonIgmpReport;
}

bcm_rx_reason_t reason_of_discovery(const FieldKey &key)
{
    static constexpr bcm_rx_reason_t by_type[] = {bcmRxReasonRouterSolicit, bcmRxReasonRouterAdvert,
                                                  bcmRxReasonNeighborSolicit, bcmRxReasonNeighborAdvert,
                                                  bcmRxReasonIcmpRedirect};
    constexpr unsigned first = 133;
    return by_type[icmp6_type(key) - first];
}

/// Why packets of which that holds go to the CPU.
bcm_rx_reason_t reason_of(FieldCondition condition, const Passage &passage, const FieldKey &key)
{
    switch (condition) {
    case FieldCondition::arp:
        return reason_of_arp(key);
    case FieldCondition::dhcp:
        return key.is(FieldHeader::ip6) ? bcmRxReasonDhcp6 : bcmRxReasonDhcp;
    case FieldCondition::igmp:
        return reason_of_igmp(key);
    case FieldCondition::neighbor_discovery:
        return reason_of_discovery(key);
    case FieldCondition::time:
        return bcmRxReasonTimesync;
    case FieldCondition::moved:
        return passage.source_was_static ? bcmRxReasonL2SourceStaticMove : bcmRxReasonL2SourceDynamicMove;
    default:
        return bcmRxReasonFilterMatch;
    }
}

/// Why an entry sends it to the CPU.
bcm_rx_reason_t reason_of(const FieldEffect &effect, const Passage &passage, const FieldKey &key)
{
    if (effect.kind == FieldEffect::Kind::for_reason) {
        return reason_of(effect.condition, passage, key);
    }
    const bool is_given = effect.decision != FieldDecision::destination && effect.number != 0;
    return is_given                                  ? static_cast<bcm_rx_reason_t>(effect.number)
           : effect.decision == FieldDecision::snoop ? bcmRxReasonSnoop
                                                     : bcmRxReasonFilterMatch;
}

/// Copies for the CPU, and what it is told of the packet.
void tell_cpu(Passage &passage, const FieldVerdict &verdict, const FieldKey &key)
{
    using D = FieldDecision;
    const FieldEffect *const destination = goes_to_cpu(passage) ? verdict.of(D::destination) : nullptr;
    const bool copies = verdict.of(D::drop) == nullptr || fields_of(passage.sw).settings.drops_copies == 0;
    const FieldEffect *const snoop = copies ? verdict.of(D::snoop) : nullptr;
    const FieldEffect *const copy = copies ? verdict.of(D::copy_to_cpu) : nullptr;
    if (copy != nullptr || snoop != nullptr) {
        passage.copies.add(cpu_port);
    }
    // Of several entries, the one that matters most is told.
    for (const FieldEffect *by : {destination, snoop, copy, verdict.of(D::trap)}) {
        if (by != nullptr) {
            passage.cpu_reasons.add(reason_of(*by, passage, key));
            passage.treat().cpu_match = by->entry;
        }
    }
    if (verdict.of(D::cpu_match) != nullptr) {
        Numbers(verdict, key).put(D::cpu_match, passage.treat().cpu_match);
    }
    if (const FieldEffect *reason = verdict.of(FieldDecision::cpu_reason)) {
        passage.cpu_reasons.clear();
        passage.cpu_reasons.add(static_cast<bcm_rx_reason_t>(reason->number));
    }
}

/// Whether the entry of the address table leads to where the packet came in.
bool is_in_place(const Passage &passage, std::size_t position)
{
    const Destination &place = trunks_of(passage.sw).ports().places[static_cast<std::size_t>(passage.port)];
    Destination at;
    return position != L2Table::none
           && l2_destination(l2_of(passage.sw).addresses, position, &at) == BCM_E_NONE && at == place;
}

}  // namespace

void remember_source(Passage &passage)
{
    const L2Table &addresses = l2_of(passage.sw).addresses;
    const std::size_t position = addresses.find(l2_key(passage.frame.from(), passage.vid));
    passage.source_was_known = position != L2Table::none;
    passage.source_was_static = position != L2Table::none && (addresses.flags(position) & BCM_L2_STATIC) != 0;
    passage.source_was_in_place = asks_for_findings(fields_of(passage.sw)) && is_in_place(passage, position);
}

bool is_source_learnt(const Passage &passage)
{
    const L2Table &addresses = l2_of(passage.sw).addresses;
    return !passage.source_was_in_place
           && is_in_place(passage, addresses.find(l2_key(passage.frame.from(), passage.vid)));
}

void pass_last_fields(Passage &passage, int port, ByteView copy, LastFields &last)
{
    if (!has_fields(passage.sw, FieldStage::egress)) {
        return;
    }
    FieldKey key;
    start_key(passage, copy, port, key);
    key.put(at::forwarding_vlan, passage.vid);
    key.has(FieldHeader::vlan);
    const auto number = static_cast<unsigned>(port);
    key.put(at::out_port, number);
    key.has(FieldHeader::out_port);
    key.words[at::out_ports.word + number / 64] = FieldWord{1} << number % 64;
    if (look_further(passage, FieldStage::egress, copy, key)) {
        put_results(passage, key);
        put_place({Destination::Kind::port, own_module, port}, key);
        put_replication(passage.copies, port, key);
    }
    const FieldVerdict verdict = match(passage, FieldStage::egress, port, key);
    if (verdict.is_empty()) {
        return;
    }
    last.is_dropped = verdict.of(FieldDecision::drop) != nullptr;
    const Numbers numbers(verdict, key);
    numbers.put(FieldDecision::color, last.color);
    numbers.put(FieldDecision::priority, last.priority);
    numbers.put(FieldDecision::mirror_out, last.mirror_out);
    last.sample = sample_of(verdict, FieldDecision::sample_out, FieldDecision::sample_rate_out);
    if (!last.is_dropped && port != cpu_port && verdict.has_any(header_decisions | tag_decisions)) {
        last.is_changed = true;
        rewrite(verdict, key, copy, last.frame);
    }
}

std::size_t undecided_counters(Switch &sw)
{
    return fields_of(sw).undecided.size();
}

namespace {

[[gnu::cold, gnu::noinline]] void settle(Passage &passage, std::size_t from)
{
    const Departures &left = passage.departures;
    int sent = passage.treatment ? passage.treatment->others_sent : 0;
    bool cpu_sends = passage.treatment && passage.treatment->cpu_sends_other;
    for (std::size_t i = 0; i < left.count; ++i) {
        sent += left.copies[i].port != cpu_port;
        cpu_sends |= left.copies[i].port == cpu_port;
    }
    FieldFates fates = 0;
    const auto put = [&](FieldFate fate, bool is_so) { fates |= is_so ? one_of(fate) : 0; };
    const bool is_forwarded = sent != 0 || (cpu_sends && goes_to_cpu(passage));
    put(FieldFate::forwarded, is_forwarded);
    put(FieldFate::dropped, !is_forwarded);
    put(FieldFate::copied_to_cpu, cpu_sends);
    put(FieldFate::mirrored, passage.is_mirrored);
    put(FieldFate::redirected, is_forwarded && passage.treatment && passage.treatment->is_redirected);
    put(FieldFate::replicated, sent + cpu_sends > 1);
    settle_counters(fields_of(passage.sw), from, fates);
}

}  // namespace

void settle_counters(Passage &passage, std::size_t from)
{
    // Who was told of an address may have detached the unit.
    if (attached(passage.sw.unit) == &passage.sw && undecided_counters(passage.sw) > from) {
        settle(passage, from);
    }
}

Onward look_up_first_fields(Passage &passage, bcm_vlan_t *vid)
{
    *vid = 0;
    if (!has_fields(passage.sw, FieldStage::lookup)) {
        return Onward::next;
    }
    FieldKey key;
    start_key(passage, passage.frame.bytes, passage.port, key);
    look_further(passage, FieldStage::lookup, passage.frame.bytes, key);
    const FieldVerdict verdict = match(passage, FieldStage::lookup, passage.port, key);
    if (verdict.is_empty()) {
        return Onward::next;
    }
    if (verdict.of(FieldDecision::drop) != nullptr) {
        passage.drop(Discard::field_rule);
        return Onward::over;
    }
    treat(passage, verdict, key);
    Numbers(verdict, key).put(FieldDecision::vlan, *vid);
    return Onward::next;
}

Onward look_up_fields(Passage &passage)
{
    const bool is_asked = !passage.treatment || passage.treatment->is_looked_up;
    if (!is_asked || !has_fields(passage.sw, FieldStage::ingress)) {
        return Onward::next;
    }
    FieldKey key;
    start_key(passage, passage.frame.bytes, passage.port, key);
    put_bridging(passage, key);
    put_destination(passage, key);
    if (look_further(passage, FieldStage::ingress, passage.frame.bytes, key)) {
        put_results(passage, key);
        put_place(passage.to, key);
        put_forwarding(passage, key);
    }
    PolicerDecision policed;
    const FieldVerdict verdict = match(passage, FieldStage::ingress, passage.port, key, policed);
    if (policed.by != 0 && !take_policed(passage, policed)) {
        go_to(passage, nowhere);
        return Onward::next;
    }
    if (verdict.is_empty()) {
        return Onward::next;
    }
    lead(passage, verdict);
    treat(passage, verdict, key);
    change_tags(passage, verdict, key);
    note_changes(passage, verdict, key);
    mirror(passage, verdict);
    tell_cpu(passage, verdict, key);
    return Onward::next;
}

}  // namespace sim
