#include "stages.h"

#include "field.h"

namespace sim {

namespace {

namespace at = field_places;

void tell_match(const Passage &passage, bcm_field_group_t group, const FieldInstalled &entry)
{
    std::string does;
    for (const auto &[action, given] : entry.content.actions) {
        does += (does.empty() ? ": " : ", ") + field_action_name(action);
    }
    tell_step(passage, simStageField, passage.port, "entry %u of group %d, priority %d, matches%s",
              entry.entry, group, entry.priority, does.c_str());
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
[[gnu::cold, gnu::noinline]] void match_and_tell(const Passage &passage, FieldStage stage, int port,
                                                 FieldKey &key, FieldVerdict &verdict)
{
    FieldState &state = fields_of(passage.sw);
    match_fields(state, stage, port, key, verdict,
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

FieldVerdict match(Passage &passage, FieldStage stage, int port, FieldKey &key)
{
    FieldVerdict verdict;
    if (is_traced) {
        match_and_tell(passage, stage, port, key, verdict);
    } else {
        match_fields(fields_of(passage.sw), stage, port, key, verdict, [](const auto &...) {});
    }
    return verdict;
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
    key.put(at::tree_state, static_cast<unsigned>(passage.tree_state()));
    key.has(FieldHeader::vlan);
    key.put(at::source_hit, passage.source_was_known);
    key.put(at::source_static, passage.source_was_static);
    const L2Table &addresses = l2_of(passage.sw).addresses;
    const std::size_t destination = addresses.find(l2_key(passage.frame.to(), passage.vid));
    key.put(at::destination_hit, destination != L2Table::none);
}

void go_to(Passage &passage, const PortSet &ports)
{
    passage.is_for_many = true;
    passage.members = ports;
    passage.member_index = &bcm_trunk_info_t::mc_index;
}

void redirect(Passage &passage, const FieldEffect &effect)
{
    if (effect.kind == FieldEffect::Kind::to_ports) {
        go_to(passage, effect.ports);
    } else if (effect.kind == FieldEffect::Kind::to_destination
               && effect.to.kind == Destination::Kind::group) {
        const auto &lines = l2_of(passage.sw).multicast;
        const auto line = lines.find(effect.to.id);
        passage.to = effect.to;
        go_to(passage, line != lines.end() ? PortSet(line->second) : PortSet());
    } else if (effect.kind == FieldEffect::Kind::to_destination) {
        passage.is_for_many = false;
        passage.to = effect.to;
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

}  // namespace

void remember_source(Passage &passage)
{
    const L2Table &addresses = l2_of(passage.sw).addresses;
    const std::size_t position = addresses.find(l2_key(passage.frame.from(), passage.vid));
    passage.source_was_known = position != L2Table::none;
    passage.source_was_static = position != L2Table::none && (addresses.flags(position) & BCM_L2_STATIC) != 0;
}

bool pass_last_fields(Passage &passage, int port, ByteView copy)
{
    if (!has_fields(passage.sw, FieldStage::egress)) {
        return true;
    }
    FieldKey key;
    start_key(passage, copy, port, key);
    key.put(at::forwarding_vlan, passage.vid);
    key.has(FieldHeader::vlan);
    const auto number = static_cast<unsigned>(port);
    key.put(at::out_port, number);
    key.has(FieldHeader::out_port);
    key.words[at::out_ports.word + number / 64] = FieldWord{1} << number % 64;
    return !match(passage, FieldStage::egress, port, key).is(FieldDecision::drop, FieldEffect::Kind::drop);
}

Onward look_up_first_fields(Passage &passage, bcm_vlan_t *vid)
{
    *vid = 0;
    if (!has_fields(passage.sw, FieldStage::lookup)) {
        return Onward::next;
    }
    FieldKey key;
    start_key(passage, passage.frame.bytes, passage.port, key);
    const FieldVerdict verdict = match(passage, FieldStage::lookup, passage.port, key);
    if (verdict.is(FieldDecision::drop, FieldEffect::Kind::drop)) {
        passage.drop(Discard::field_rule);
        return Onward::over;
    }
    if (verdict.is(FieldDecision::vlan, FieldEffect::Kind::vlan)) {
        *vid = static_cast<bcm_vlan_t>(verdict.of(FieldDecision::vlan)->number);
    }
    return Onward::next;
}

Onward look_up_fields(Passage &passage)
{
    if (!has_fields(passage.sw, FieldStage::ingress)) {
        return Onward::next;
    }
    FieldKey key;
    start_key(passage, passage.frame.bytes, passage.port, key);
    put_bridging(passage, key);
    put_destination(passage, key);
    const FieldVerdict verdict = match(passage, FieldStage::ingress, passage.port, key);
    if (const FieldEffect *effect = verdict.of(FieldDecision::destination)) {
        redirect(passage, *effect);
    }
    if (const FieldEffect *effect = verdict.of(FieldDecision::egress_ports)) {
        change_ports(passage, *effect);
    }
    if (verdict.is(FieldDecision::copy_to_cpu, FieldEffect::Kind::copy_to_cpu)) {
        passage.copy_to_cpu(bcmRxReasonFilterMatch);
    }
    if (verdict.is(FieldDecision::drop, FieldEffect::Kind::drop)) {
        passage.drop(Discard::field_rule);
        passage.is_for_many = false;
        passage.to = {Destination::Kind::discard, 0, 0};
    }
    return Onward::next;
}

}  // namespace sim
