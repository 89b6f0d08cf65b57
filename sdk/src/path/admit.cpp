#include "stages.h"

namespace sim {

Onward admit(Passage &passage)
{
    const int discard = passage.own().discard;
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
