#include "policer.h"
#include "stages.h"

namespace sim {

Onward police_arrival(Passage &passage)
{
    if (!passage.own().polices_in) {
        return Onward::next;
    }
    PolicerDecision &decision = passage.departures.policed;
    decision = PolicerDecision::none();
    police(passage.sw, PolicerSide::in, passage.port, passage.vid, passage.counts.length(), decision);
    if (is_traced && decision.by != 0) {
        static constexpr const char *color_names[] = {"green", "yellow", "red"};
        tell_step(passage, simStagePolicer, passage.port, "policer %d: %s%s", decision.by,
                  color_names[decision.color], decision.copies_to_cpu ? ", with a copy to the CPU" : "");
    }
    passage.policed = &decision;
    if (decision.copies_to_cpu) {
        passage.copies.add(cpu_port);
    }
    if (!decision.drops) {
        return Onward::next;
    }
    passage.drop(Discard::policer);
    // Nothing leads anywhere but the CPU.
    return decision.copies_to_cpu ? Onward::decided : Onward::over;
}

}  // namespace sim
