#include "policer.h"
#include "stages.h"

namespace sim {

bool take_policed(Passage &passage, const PolicerDecision &decision)
{
    if (is_traced && decision.by != 0) {
        static constexpr const char *color_names[] = {"green", "yellow", "red"};
        tell_step(passage, simStagePolicer, passage.port, "policer %d: %s%s", decision.by,
                  color_names[decision.color], decision.copies_to_cpu ? ", with a copy to the CPU" : "");
    }
    Treatment &treatment = passage.treat();
    treatment.color = decision.color;
    treatment.priority = decision.priority >= 0 ? decision.priority : treatment.priority;
    if (decision.queue >= 0) {
        treatment.queue = treatment.cpu_queue = decision.queue;
    }
    if (decision.copies_to_cpu) {
        passage.copies.add(cpu_port);
    }
    if (decision.drops) {
        passage.drop(Discard::policer);
    }
    return !decision.drops;
}

Onward police_arrival(Passage &passage)
{
    if (!passage.own().polices_in) {
        return Onward::next;
    }
    PolicerDecision decision = PolicerDecision::none();
    decision.color = passage.color();
    police(passage.sw, PolicerSide::in, passage.port, passage.vid, passage.counts.length(), decision);
    if (take_policed(passage, decision)) {
        return Onward::next;
    }
    // Nothing leads anywhere but the CPU.
    return decision.copies_to_cpu ? Onward::decided : Onward::over;
}

}  // namespace sim
