#include "stages.h"

namespace sim {

Onward arrive(Passage &passage)
{
    const bool has_no_error =
        passage.counts.arrived(passage.counters_at(passage.port), passage.own().frame_max);
    const bool is_for_mac = passage.frame.type == type_mac_control && !passage.frame.is_tagged();
    return has_no_error && !is_for_mac ? Onward::next : Onward::over;
}

}  // namespace sim
