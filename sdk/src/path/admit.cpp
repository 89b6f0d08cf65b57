#include "stages.h"

namespace sim {

namespace {

[[gnu::cold, gnu::noinline]] bool is_within_rate(Passage &passage)
{
    TokenBucket &bucket = rate_in_at(passage.sw, passage.port).bucket;
    return bucket.take(passage.counts.length() * TokenBucket::bits_per_byte);
}

/// Finds out the VLAN by what the port looks up, and has the frame say so.
Onward assign(Passage &passage)
{
    const Assignment assignment = assign_vlan(passage.sw, passage.port, passage.frame.bytes, *passage.tags);
    if (is_traced) {
        tell_step(passage, simStagePort, passage.port, "VLAN %d %s", passage.tags->outer.vlan, assignment.by);
    }
    if (assignment.is_refused) {
        passage.drop(Discard::translation);
        return Onward::over;
    }
    Frame &frame = passage.frame;
    frame.tag = passage.tags->outer.content();
    frame.untagged_from = passage.tags->payload_from;
    frame.type = number_at(frame.bytes, frame.untagged_from);
    return Onward::next;
}

/// Everything that arrives goes to one port, whatever its addresses, the tree and who is in the VLAN.
Onward force(Passage &passage, int to)
{
    const Onward onward = classify(passage);
    if (onward != Onward::next) {
        return onward;
    }
    copy_in_vlan(passage);
    if (is_traced) {
        tell_step(passage, simStageDestination, passage.port, "forced to port %d", to);
    }
    if (has_link(passage.sw, to)) {
        passage.copies.add(to);
    } else {
        passage.drop_at(to, Discard::no_link);
    }
    return Onward::decided;
}

}  // namespace

Onward admit(Passage &passage)
{
    Port &own = passage.own();
    if (own.limits_rate && !is_within_rate(passage)) {
        passage.drop(Discard::rate_in);
        return Onward::over;
    }
    bool is_tagged = passage.frame.vlan() != 0;
    if (own.reads_tags && reads_tags(passage.sw, passage.port)) {
        passage.tags = read_tags(own.tags, passage.frame.bytes);
        const bool to_customers = own.tags.dtag_mode == BCM_PORT_DTAG_MODE_EXTERNAL;
        is_tagged = to_customers ? passage.tags->inner.is_there : passage.tags->outer.is_there;
    }
    if (own.discard == BCM_PORT_DISCARD_ALL) {
        passage.drop(Discard::port_takes_none);
        return Onward::over;
    }
    if (own.discard == (is_tagged ? BCM_PORT_DISCARD_TAG : BCM_PORT_DISCARD_UNTAG)) {
        passage.drop(Discard::tag_type);
        return Onward::over;
    }
    const Onward onward = passage.tags ? assign(passage) : Onward::next;
    return onward == Onward::next && own.is_forced ? force(passage, own.forced_to) : onward;
}

}  // namespace sim
