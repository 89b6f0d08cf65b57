#include "stages.h"

namespace sim {

namespace {

[[gnu::cold]] void tell_source(const Passage &passage, const L2Arrival &arrival)
{
    const char *what = arrival.was_in_place               ? "known here"
                       : arrival.status == BCM_E_NONE     ? "learnt here, or moved"
                       : arrival.status == BCM_E_DISABLED ? "not known here, and not to be learnt"
                       : arrival.status == BCM_E_EXISTS   ? "held elsewhere"
                       : arrival.status == BCM_E_RESOURCE ? "not known here, and a learn limit is reached"
                                                          : "not known here, and the table is full";
    tell_step(passage, simStageSource, passage.port, "%s is %s", MacText(passage.frame.from()).text(), what);
}

/// Whether the address was known there or may be new, and its entry does not refuse it.
bool is_accepted(Passage &passage)
{
    const unsigned char *from = passage.frame.from();
    if (is_group(from)) {
        return false;
    }
    const L2Arrival arrival =
        l2_arrive(passage.sw, passage.port, from, passage.vid, length_with_checksum(passage.frame.bytes));
    if (is_traced) {
        tell_source(passage, arrival);
    }
    if (arrival.was_in_place) {
        return !(arrival.flags & BCM_L2_DISCARD_SRC);
    }
    // Who was told of the address may have done anything.
    if (attached(passage.sw.unit) != &passage.sw || !(passage.own().learn & BCM_PORT_LEARN_FWD)) {
        return false;
    }
    passage.find_vlan();
    const L2Table &addresses = l2_of(passage.sw).addresses;
    const std::size_t position = addresses.find(l2_key(from, passage.vid));
    return position == L2Table::none || !(addresses.flags(position) & BCM_L2_DISCARD_SRC);
}

/// The same of an address that is not to be learnt here: nothing but its entry refuses it.
bool is_accepted_unlearnt(const Passage &passage)
{
    const unsigned char *from = passage.frame.from();
    const L2Table &addresses = l2_of(passage.sw).addresses;
    const std::size_t position = addresses.find(l2_key(from, passage.vid));
    if (is_traced) {
        tell_step(passage, simStageSource, passage.port, "%s is not to be learnt", MacText(from).text());
    }
    return !is_group(from)
           && (position == L2Table::none || !(addresses.flags(position) & BCM_L2_DISCARD_SRC));
}

/// The field processor has let the packet pass whatever its source is, and the unit is still there.
bool may_pass(Passage &passage)
{
    if (!passage.treatment->source_passes || attached(passage.sw.unit) != &passage.sw) {
        return false;
    }
    passage.find_vlan();
    return true;
}

Onward go_on_if(Passage &passage, int state, bool is_accepted)
{
    if (!is_accepted) {
        passage.drop(Discard::source_address);
        return Onward::over;
    }
    if (state != BCM_STG_STP_FORWARD) {
        passage.drop(Discard::stp_state);
        return Onward::over;
    }
    return Onward::next;
}

}  // namespace

Onward look_at_source(Passage &passage)
{
    const int state = passage.tree_state();
    return go_on_if(passage, state, is_accepted(passage));
}

Onward look_at_source_by_fields(Passage &passage)
{
    if (!passage.treatment) {
        return look_at_source(passage);
    }
    const int state = tree_state_by_fields(passage);
    const bool is_wanted =
        passage.treatment->is_learnt ? is_accepted(passage) : is_accepted_unlearnt(passage);
    return go_on_if(passage, state, is_wanted || may_pass(passage));
}

}  // namespace sim
