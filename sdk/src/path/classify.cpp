#include "stages.h"

namespace sim {

Onward classify(Passage &passage)
{
    const Port &own = passage.own();
    const bcm_vlan_t tagged = passage.frame.vlan();
    passage.vid = tagged != 0 ? tagged : own.untagged_vlan;
    if (!vlans_of(passage.sw).has(passage.vid)) {
        passage.drop(Discard::vlan_unknown);
        return Onward::over;
    }
    passage.find_vlan();
    if ((own.vlan_filter & BCM_PORT_VLAN_MEMBER_INGRESS)
        && !BCM_PBMP_MEMBER(passage.vlan->members, passage.port)) {
        passage.drop(Discard::vlan_filter);
        return Onward::over;
    }
    if (is_traced && !passage.tags) {
        tell_step(passage, simStageVlan, passage.port, "VLAN %d, %s", passage.vid,
                  tagged != 0 ? "of the tag" : "the port's untagged VLAN");
    }
    return Onward::next;
}

}  // namespace sim
