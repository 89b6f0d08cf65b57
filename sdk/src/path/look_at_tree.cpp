#include "stages.h"

namespace sim {

Onward look_at_tree(Passage &passage)
{
    const int state = passage.tree_state();
    if (state != BCM_STG_STP_DISABLE && is_reserved(passage.frame.to())) {
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
