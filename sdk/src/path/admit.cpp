#include "stages.h"

namespace sim {

namespace {

[[gnu::cold, gnu::noinline]] bool is_within_rate(Passage &passage)
{
    TokenBucket &bucket = rate_in_at(passage.sw, passage.port).bucket;
    return bucket.take(passage.counts.length() * TokenBucket::bits_per_byte);
}

}  // namespace

Onward admit(Passage &passage)
{
    const Port &own = passage.own();
    if (own.limits_rate && !is_within_rate(passage)) {
        passage.drop(Discard::rate_in);
        return Onward::over;
    }
    const int discard = own.discard;
    const bool is_tagged = passage.frame.vlan() != 0;
    if (discard == BCM_PORT_DISCARD_ALL) {
        passage.drop(Discard::port_takes_none);
        return Onward::over;
    }
    if (discard == (is_tagged ? BCM_PORT_DISCARD_TAG : BCM_PORT_DISCARD_UNTAG)) {
        passage.drop(Discard::tag_type);
        return Onward::over;
    }
    return Onward::next;
}

}  // namespace sim
