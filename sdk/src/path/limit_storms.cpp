#include "stages.h"

namespace sim {

Onward limit_storms(Passage &passage)
{
    if (!passage.own().limits_storms || (passage.treatment && !passage.treatment->is_limited)) {
        return Onward::next;
    }
    const unsigned char *address = passage.frame.to();
    const bool is_for_bridges = passage.to.kind == Destination::Kind::port && is_reserved(address);
    if (is_for_bridges || !(is_group(address) || passage.is_for_many)) {
        return Onward::next;
    }
    const StormControl::Kind kind = !is_group(address)      ? StormControl::unknown_unicast
                                    : is_broadcast(address) ? StormControl::broadcast
                                                            : StormControl::multicast;
    if (storms_at(passage.sw, passage.port).admits(kind, passage.counts.length())) {
        return Onward::next;
    }
    constexpr Discard reasons[] = {Discard::storm_unknown_unicast, Discard::storm_multicast,
                                   Discard::storm_broadcast};
    passage.drop(reasons[kind]);
    return Onward::over;
}

}  // namespace sim
