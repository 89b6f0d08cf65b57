#include "stages.h"

namespace sim {

namespace {

void to_port(Passage &passage, const PortSet &origin, int port)
{
    // What is routed may leave where it came from.
    if (origin.has(port) && passage.hop == nullptr) {
        passage.drop(Discard::no_destination);
    } else if (!has_link(passage.sw, port)) {
        passage.drop_at(port, Discard::no_link);
    } else if (!passage.is_forwarding(port)) {
        passage.drop_at(port, Discard::stp_state_to_send);
    } else {
        passage.copies.add(port);
    }
}

/// `member`: that is to send; -1 for the one that the trunk chooses.
void to_trunk(Passage &passage, const PortSet &origin, const PortSet &can_send, const SendingTrunk *trunk,
              int member)
{
    const PortSet others = passage.hop == nullptr ? can_send - origin : can_send;
    const PortSet able = trunk != nullptr ? trunk->senders & others : PortSet();
    if (able.empty()) {
        passage.drop(Discard::no_destination);
    } else {
        const Flow flow = {passage.frame, passage.port};
        const int port = member >= 0 ? select_by_index(*trunk->trunk, member, able, flow)
                                     : select_by_criterion(passage.sw, *trunk, able, flow);
        if (is_traced) {
            tell_step(passage, simStageReplicate, port, "chosen of %d members of trunk %d", able.count(),
                      trunk->id);
        }
        passage.copies.add(port);
    }
}

/// Copies to all of the ports that can send; to one of those of a trunk.
void to_many(Passage &passage, const PortSet &origin, const PortSet &can_send, const TrunkPorts &trunks,
             int member)
{
    // What is routed may leave where it came from.
    const PortSet able =
        passage.hop == nullptr ? (passage.members & can_send) - origin : passage.members & can_send;
    PortSet chosen = able - trunks.in_trunks;
    for (const SendingTrunk &trunk : trunks.trunks) {
        const PortSet of_trunk = able & trunk.senders;
        if (!of_trunk.empty()) {
            const bcm_trunk_info_t &info = trunk.trunk->info;
            const bool by_hash = (info.flags & BCM_TRUNK_FLAG_MCAST_HASH)
                                 && passage.member_index == &bcm_trunk_info_t::mc_index;
            const int index = member >= 0 ? member : by_hash ? -1 : info.*passage.member_index;
            const int port = select_by_index(*trunk.trunk, index, of_trunk, {passage.frame, passage.port});
            if (is_traced) {
                tell_step(passage, simStageReplicate, port, "chosen of %d members of trunk %d",
                          of_trunk.count(), trunk.id);
            }
            chosen.add(port);
        }
    }
    if (is_traced) {
        tell_step(passage, simStageReplicate, passage.port,
                  "to %d of %d members; the others cannot send, or it came from there", chosen.count(),
                  passage.members.count());
    }
    if (chosen.empty() && passage.routed == nullptr) {
        passage.drop(Discard::no_destination);
    }
    passage.copies = passage.copies | chosen;
}

[[gnu::always_inline]] inline Onward replicate_from(Passage &passage, const TrunkPorts &trunks,
                                                    const PortSet &from, int member)
{
    if (!passage.is_for_many && passage.to.kind == Destination::Kind::port) {
        to_port(passage, from, passage.to.id);
        return Onward::next;
    }
    const PortSet can_send = linked_ports(passage.sw) & passage.forwarding();
    if (passage.is_for_many) {
        to_many(passage, from, can_send, trunks, member);
        if (passage.routed != nullptr) {
            send_routed_copies(passage);
        }
    } else if (passage.to.kind == Destination::Kind::trunk) {
        const SendingTrunk *trunk = trunks.find(passage.to.id);
        const bool has_none = trunk != nullptr && (trunk->senders & can_send).empty();
        to_trunk(passage, from, can_send, has_none ? trunks.find(trunk->trunk->info.backup_tid) : trunk,
                 member);
    }
    return Onward::next;
}

const PortSet &origin_of(const Passage &passage, const TrunkPorts &trunks)
{
    return trunks.origins[static_cast<std::size_t>(passage.port)];
}

}  // namespace

Onward replicate(Passage &passage)
{
    const TrunkPorts &trunks = trunks_of(passage.sw).ports();
    return replicate_from(passage, trunks, origin_of(passage, trunks), -1);
}

Onward replicate_by_fields(Passage &passage)
{
    if (!passage.treatment) {
        return replicate(passage);
    }
    const Treatment &treatment = *passage.treatment;
    const TrunkPorts &trunks = trunks_of(passage.sw).ports();
    const PortSet &from = origin_of(passage, trunks);
    return replicate_from(passage, trunks, treatment.may_return ? from - PortSet::one(passage.port) : from,
                          treatment.trunk_member);
}

}  // namespace sim
