#include "stages.h"

namespace sim {

namespace {

/// Of a packet to an address that bridges keep to themselves.
void add_reasons(Passage &passage)
{
    const unsigned char last = passage.frame.to()[address_bytes - 1];
    const unsigned type = passage.frame.type;
    const bool is_slow = last == 2 && type == type_slow;
    const bcm_rx_reason_t reason = last == 0                         ? bcmRxReasonBpdu
                                   : is_slow                         ? bcmRxReasonSlowProtocol
                                   : last == 3 && type == type_eapol ? bcmRxReasonEapol
                                   : type == type_lldp               ? bcmRxReasonLldp
                                                                     : bcmRxReasonReservedMulticast;
    passage.cpu_reasons.add(reason);
    if (is_slow && passage.frame.bytes.data[passage.frame.untagged_from + 2] == slow_lacp) {
        passage.cpu_reasons.add(bcmRxReasonLacp);
    }
}

[[gnu::always_inline]] inline Onward look_at_tree_in(Passage &passage, int state)
{
    if (is_traced) {
        static constexpr const char *names[] = {"disable", "block", "listen", "learn", "forward"};
        tell_step(passage, simStageTree, passage.port, "in spanning tree group %d: %s", passage.vlan->group,
                  names[state]);
    }
    const unsigned char *to = passage.frame.to();
    const auto passes = [&] {
        return to[address_bytes - 1] == 0 && passage.treatment && passage.treatment->forwards_bpdus;
    };
    if (is_group(to) && state != BCM_STG_STP_DISABLE && is_reserved(to) && !passes()) {
        if (is_traced) {
            tell_step(passage, simStageTree, passage.port, "bridges keep it: to the CPU");
        }
        add_reasons(passage);
        passage.to = {Destination::Kind::port, own_module, cpu_port};
        return Onward::decided;
    }
    if (state < BCM_STG_STP_LEARN) {
        passage.drop(Discard::stp_state);
        return Onward::over;
    }
    return Onward::next;
}

}  // namespace

int tree_state_by_fields(const Passage &passage)
{
    return passage.treatment && passage.treatment->tree_state >= 0 ? passage.treatment->tree_state
                                                                   : passage.tree_state();
}

Onward look_at_tree(Passage &passage)
{
    return look_at_tree_in(passage, passage.tree_state());
}

Onward look_at_tree_by_fields(Passage &passage)
{
    return look_at_tree_in(passage, tree_state_by_fields(passage));
}

}  // namespace sim
