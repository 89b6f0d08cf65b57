#include "field.h"
#include "policer.h"
#include "queue.h"
#include "stages.h"

#include "sim_rx.h"

#include <cstring>
#include <optional>
#include <string>
#include <utility>

namespace sim {

namespace {

const Names reason_names(names_of_bcm_rx_reason_e, "bcmRxReason");

[[gnu::cold]] void tell_copy(const Passage &passage, int port, bool tagged, std::size_t length)
{
    if (tagged) {
        tell_step(passage, simStageLeave, port, "%zu bytes, with a tag of VLAN %d", length, passage.vid);
    } else {
        tell_step(passage, simStageLeave, port, "%zu bytes, without tag", length);
    }
}

/// Whether one of the unit's ports is in the bitmap.
bool is_in(const bcm_pbmp_t &ports, int port)
{
    return ports.pbits[static_cast<unsigned>(port) / 32] >> (static_cast<unsigned>(port) % 32) & 1;
}

/// How a copy leaves, or does not.
enum class Leaving : std::uint8_t { not_at_all, as_head_says, by_itself };

/// What ports do before they send that only some do: the field processor's last word, policing, waiting and copies.
/// What the field processor changes is a frame of its own.
Leaving leaves_now(Passage &passage, int port, std::uint8_t number, const FrameCounts &counts)
{
    const PortState &ports = passage.sw.of<PortState>();
    const Head &head = passage.departures.heads[number];
    LastFields last;
    last.color = passage.color();
    last.priority = passage.priority();
    if (ports.matches_out.has(port) && (!passage.treatment || passage.treatment->is_looked_up_last)) {
        pass_last_fields(passage, port, passage.departures.frame.written(head), last);
        if (last.is_dropped) {
            passage.drop_at(port, Discard::field_rule_to_send);
            return Leaving::not_at_all;
        }
    }
    const auto sent = [&] {
        return last.is_changed ? last.frame.bytes() : passage.departures.frame.written(head);
    };
    PolicerDecision decision = PolicerDecision::none();
    decision.color = last.color;
    if (ports.polices_out.has(port)) {
        police(passage.sw, PolicerSide::out, port, passage.vid, counts.length(), decision);
        if (decision.drops) {
            passage.drop_at(port, Discard::policer_to_send);
            return Leaving::not_at_all;
        }
    }
    const auto priority =
        static_cast<std::size_t>(decision.priority >= 0 ? decision.priority : last.priority);
    const int chosen =
        decision.queue < 0 && passage.treatment ? passage.treatment->queue_at(port) : decision.queue;
    const int queue = chosen >= 0 ? chosen : queues_at(passage.sw, port).queue_of[priority];
    const Queueing becomes = ports.queues_out.has(port)
                                 ? enqueue(passage.sw, port, queue, decision.color, sent())
                                 : Queueing::leaves;
    if (becomes == Queueing::dropped) {
        passage.drop_at(port, Discard::queue_full);
        return Leaving::not_at_all;
    }
    if (ports.copies_out.has(port)) {
        copy_departure(passage, port, sent());
    }
    const int of_packet = passage.treatment ? passage.treatment->mirror_out : 0;
    for (const int destination : {of_packet, last.mirror_out}) {
        if (destination != 0 && port != cpu_port) {
            mirror_departure(passage, port, sent(), destination);
        }
    }
    if (port != cpu_port) {
        const Sample sample_of_packet = passage.treatment ? passage.treatment->sample_out : Sample();
        for (const Sample &sample : {sample_of_packet, last.sample}) {
            if (sample.rate != 0) {
                sample_departure(passage, port, sent(), sample);
            }
        }
    }
    if (becomes == Queueing::waits) {
        if (is_traced) {
            tell_step(passage, simStageQueue, port, "waits in queue %d", queue);
        }
        return Leaving::by_itself;
    }
    count_departure(passage.sw, port, queue, decision.color, counts.length());
    if (last.is_changed) {
        FrameCounts(last.frame.bytes()).sent(passage.counters_at(port));
        passage.departures.add(port, std::move(last.frame));
    }
    return last.is_changed ? Leaving::by_itself : Leaving::as_head_says;
}

/// The same, with what the field processor counts by it. Whether it leaves as the head says.
[[gnu::cold, gnu::noinline]] bool may_leave_now(Passage &passage, int port, std::uint8_t number,
                                                const FrameCounts &counts)
{
    const std::size_t undecided = undecided_counters(passage.sw);
    const bool was_mirrored = std::exchange(passage.is_mirrored, false);
    const Leaving leaving = leaves_now(passage, port, number, counts);
    if (undecided_counters(passage.sw) > undecided) {
        const bool is_sent = leaving != Leaving::not_at_all;
        settle_counters(
            fields_of(passage.sw), undecided,
            static_cast<FieldFates>(one_of(is_sent ? FieldFate::forwarded : FieldFate::dropped)
                                    | (is_sent && port == cpu_port ? one_of(FieldFate::copied_to_cpu) : 0)
                                    | (passage.is_mirrored ? one_of(FieldFate::mirrored) : 0)));
    }
    passage.is_mirrored |= was_mirrored;
    if (leaving == Leaving::by_itself && passage.treatment) {
        passage.treatment->note_other(port);
    }
    return leaving == Leaving::as_head_says;
}

[[gnu::cold]] void tell_retagged(const Passage &passage, int port, const PacketTags &tags, std::size_t length)
{
    const Tag &outer = tags.outer, &inner = tags.inner;
    if (outer.is_there && inner.is_there) {
        tell_step(passage, simStageLeave, port, "%zu bytes, with tags of VLANs %d (0x%04x) and %d (0x%04x)",
                  length, outer.vlan, outer.type, inner.vlan, inner.type);
    } else if (outer.is_there || inner.is_there) {
        const Tag &only = outer.is_there ? outer : inner;
        tell_step(passage, simStageLeave, port, "%zu bytes, with a tag of VLAN %d (0x%04x)", length,
                  only.vlan, only.type);
    } else {
        tell_step(passage, simStageLeave, port, "%zu bytes, without tag", length);
    }
}

/// Nothing keeps the copy, which begins with that head, from leaving. Of those with other tags it is told elsewhere.
void count_and_add(Passage &passage, int port, std::uint8_t head, bool tagged, const FrameCounts &counts)
{
    counts.sent(passage.counters_at(port));
    if (is_traced && head < 2) {
        tell_copy(passage, port, tagged, counts.length());
    }
    Departures &left = passage.departures;
    left.copies[left.count++] = {static_cast<std::uint8_t>(port), head};
}

/// Checks a copy and sends it.
void send(Passage &passage, int port, std::uint8_t head, const FrameCounts &counts, bool is_plain)
{
    const Port &own = port_of(passage.sw, port);
    const bool is_filtered =
        (own.vlan_filter & BCM_PORT_VLAN_MEMBER_EGRESS) && !is_in(passage.vlan->members, port);
    if (is_filtered && !(passage.treatment && passage.treatment->skips_leaving_filter)) {
        passage.drop_at(port, Discard::vlan_filter_to_send);
    } else if (counts.length() > static_cast<std::size_t>(own.frame_max)) {
        passage.drop_at(port, Discard::too_long_to_send);
    } else if (is_plain || may_leave_now(passage, port, head, counts)) {
        count_and_add(passage, port, head, head, counts);
    }
}

/// The beginning of a copy with those tags in place of all that there were.
std::uint8_t add_head(Passage &passage, const PacketTags &tags)
{
    Departures &left = passage.departures;
    Head &untagged = left.heads[0], &head = left.heads[left.head_count];
    const std::size_t replaced = untagged.replaces() + tags.payload_from - passage.frame.untagged_from;
    const std::size_t there = (tags.outer.is_there + tags.inner.is_there) * tag_bytes;
    head.start(replaced, untagged.size() + there);
    unsigned char *next = head.bytes();
    std::memcpy(next, untagged.bytes(), addresses_bytes);
    next += addresses_bytes;
    for (const Tag *tag : {&tags.outer, &tags.inner}) {
        if (tag->is_there) {
            put_number(next, tag->type);
            put_number(next + 2, tag->content());
            next += tag_bytes;
        }
    }
    std::memcpy(next, untagged.bytes() + addresses_bytes, untagged.size() - addresses_bytes);
    return left.head_count++;
}

/// A copy with these tags and no others.
void send_with_tags(Passage &passage, int port, const PacketTags &tags)
{
    const std::uint8_t head = add_head(passage, tags);
    const FrameCounts counts(passage.departures.frame.written(passage.departures.heads[head]));
    if (is_traced) {
        tell_retagged(passage, port, tags, counts.length());
    }
    send(passage, port, head, counts, false);
}

/// The same as below, where some of the copies leave with other tags. All of them replace as much of the frame, so that
/// none needs what another overwrites.
[[gnu::noinline]] Onward leave_with_changes(Passage &passage, const PortSet &changing)
{
    const PacketTags found = tags_of(passage);
    passage.copies.each([&](int port) {
        const bool is_untagged = is_in(passage.vlan->untagged, port);
        PacketTags tags = found;
        if (changing.has(port)) {
            writes_tags(passage.sw, port);
        }
        if (leave_with_tags(passage.sw, port, is_untagged, tags)) {
            send_with_tags(passage, port, tags);
        } else {
            passage.drop_at(port, Discard::translation_to_send);
        }
    });
    return Onward::over;
}

/// Why the CPU gets a copy that nothing but the destination address sends there.
bcm_rx_reason_t reason_of_destination(Passage &passage)
{
    const unsigned char *address = passage.frame.to();
    const bool is_known = !passage.is_for_many || is_broadcast(address)
                          || l2_of(passage.sw).addresses.find(l2_key(address, passage.vid)) != L2Table::none;
    return is_known            ? bcmRxReasonControl
           : is_group(address) ? bcmRxReasonMulticastMiss
                               : bcmRxReasonL2DestMiss;
}

/// The CPU's copies do not depend on a link until here.
[[gnu::cold]] void look_at_cpu(Passage &passage)
{
    if (!has_link(passage.sw, cpu_port)) {
        passage.drop_at(cpu_port, Discard::no_link);
        passage.copies.remove(cpu_port);
        return;
    }
    if (passage.cpu_reasons.empty()) {
        passage.cpu_reasons.add(reason_of_destination(passage));
    }
    if (is_traced) {
        std::string reasons;
        for (const std::uint8_t reason : passage.cpu_reasons) {
            reasons += (reasons.empty() ? "" : ", ") + reason_names.name(reason, true);
        }
        tell_step(passage, simStageLeave, cpu_port, "to the CPU: %s", reasons.c_str());
    }
    const bool is_treated = passage.treatment.has_value();
    passage.departures.cpu_copy = {passage.port,
                                   passage.vid,
                                   passage.frame.is_tagged(),
                                   passage.is_for_many,
                                   passage.cpu_reasons,
                                   passage.priority(),
                                   passage.color(),
                                   is_treated ? passage.treatment->cpu_queue : -1,
                                   is_treated ? passage.treatment->cpu_match : 0};
}

}  // namespace

PacketTags tags_of(Passage &passage)
{
    PacketTags tags = passage.tags ? *passage.tags : read_tags(passage.own().tags, passage.frame.bytes);
    if (!passage.tags) {
        tags.outer.set_content(passage.frame.tag);
        tags.outer.type = 0;
    }
    tags.outer.is_there = true;
    tags.outer.vlan = passage.vid;
    if (passage.treatment) {
        tags.priority = passage.priority();
        tags.color = passage.color();
    }
    // A router takes packets out of their tags.
    tags.inner.is_there = tags.inner.is_there && passage.hop == nullptr;
    return tags;
}

Onward leave(Passage &passage)
{
    if (passage.copies.has(cpu_port)) {
        look_at_cpu(passage);
    }
    const auto &ports = passage.sw.of<PortState>();
    if (!passage.is_plain) {
        const PortSet changing = passage.tags ? passage.copies : passage.copies & ports.tag_writers;
        if (!changing.empty()) {
            return leave_with_changes(passage, changing);
        }
    }
    const bool is_plain = passage.is_plain && passage.frame.tag >> 13 == 0;
    const bool came_tagged = passage.frame.is_tagged();
    std::optional<FrameCounts> changed;
    passage.copies.each([&](int port) {
        const bool tagged = !is_in(passage.vlan->untagged, port);
        // What leaves as it came counts as it did.
        const FrameCounts *counts = &passage.counts;
        if (tagged != came_tagged) {
            if (!changed) {
                changed.emplace(passage.departures.frame.written(passage.departures.heads[tagged]));
            }
            counts = &*changed;
        }
        send(passage, port, tagged, *counts, is_plain);
    });
    return Onward::over;
}

void send_through(Passage &passage, const PortSet &ports, const PortSet &without_tag)
{
    Departures &left = passage.departures;
    const Frame &frame = passage.frame;
    left.heads[0].start(frame.untagged_from, addresses_bytes);
    left.heads[1].start(frame.untagged_from, frame.untagged_from);
    left.head_count = 2;
    for (std::size_t i = 0; i < left.head_count; ++i) {
        std::memcpy(left.heads[i].bytes(), frame.bytes.data, left.heads[i].size());
    }
    ports.each([&](int port) {
        const bool as_it_is = !without_tag.has(port);
        const FrameCounts counts(left.frame.written(left.heads[as_it_is]));
        if (!has_link(passage.sw, port)) {
            passage.drop_at(port, Discard::no_link);
        } else if (counts.length() > static_cast<std::size_t>(port_of(passage.sw, port).frame_max)) {
            passage.drop_at(port, Discard::too_long_to_send);
        } else {
            if (port == cpu_port) {
                passage.cpu_reasons.add(bcmRxReasonLocalCpu);
                left.cpu_copy = CpuCopy::of_nothing_known();
                left.cpu_copy.vid = passage.vid;
                left.cpu_copy.came_tagged = frame.is_tagged();
                left.cpu_copy.reasons = passage.cpu_reasons;
            }
            count_and_add(passage, port, as_it_is, as_it_is && frame.is_tagged(), counts);
        }
    });
}

}  // namespace sim
