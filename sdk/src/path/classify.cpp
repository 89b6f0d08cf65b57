#include "stages.h"

#include "field.h"

namespace sim {

namespace {

/// The packet is of the VLAN, as `said` says.
Onward enter(Passage &passage, bcm_vlan_t vid, const char *said)
{
    const Port &own = passage.own();
    passage.vid = vid;
    if (!vlans_of(passage.sw).has(passage.vid)) {
        passage.drop(Discard::vlan_unknown);
        return Onward::over;
    }
    passage.find_vlan();
    if ((own.vlan_filter & BCM_PORT_VLAN_MEMBER_INGRESS)
        && !BCM_PBMP_MEMBER(passage.vlan->members, passage.port)
        && !(passage.treatment && passage.treatment->skips_arrival_filter)) {
        passage.drop(Discard::vlan_filter);
        return Onward::over;
    }
    if (is_traced && !passage.tags) {
        tell_step(passage, simStageVlan, passage.port, "VLAN %d, %s", passage.vid, said);
    }
    return Onward::next;
}

}  // namespace

Onward classify(Passage &passage)
{
    const bcm_vlan_t tagged = passage.frame.vlan();
    return tagged != 0 ? enter(passage, tagged, "of the tag")
                       : enter(passage, passage.own().untagged_vlan, "the port's untagged VLAN");
}

Onward classify_by_fields(Passage &passage)
{
    bcm_vlan_t vid;
    Onward onward = look_up_first_fields(passage, &vid);
    if (onward == Onward::next) {
        onward = vid != 0 ? enter(passage, vid, "by the field processor") : classify(passage);
    }
    if (onward == Onward::next && has_fields(passage.sw, FieldStage::ingress)) {
        remember_source(passage);
    }
    return onward;
}

}  // namespace sim
