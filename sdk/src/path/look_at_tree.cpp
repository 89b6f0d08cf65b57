#include "stages.h"

namespace sim {

Onward look_at_tree(Passage &passage)
{
    const int state = passage.tree_state();
    if (is_traced) {
        static constexpr const char *names[] = {"disable", "block", "listen", "learn", "forward"};
        tell_step(passage, simStageTree, passage.port, "in spanning tree group %d: %s", passage.vlan->group,
                  names[state]);
    }
    if (state != BCM_STG_STP_DISABLE && is_reserved(passage.frame.to())) {
        if (is_traced) {
            tell_step(passage, simStageTree, passage.port, "bridges keep it: to the CPU");
        }
        passage.to = {Destination::Kind::port, own_module, cpu_port};
        return Onward::decided;
    }
    if (state < BCM_STG_STP_LEARN) {
        passage.drop(Discard::stp_state);
        return Onward::over;
    }
    return Onward::next;
}

}  // namespace sim
