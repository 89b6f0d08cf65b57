#include "stages.h"

#include "protocol.h"

namespace sim {

namespace {

[[gnu::noinline]] void copy_if_wanted(Passage &passage, Protocols wanted)
{
    if (passage.treatment && !passage.treatment->is_snooped) {
        return;
    }
    const Protocol protocol = protocol_of(passage.frame);
    if (wanted & one_of(protocol)) {
        passage.copy_to_cpu(protocol_reasons[static_cast<std::size_t>(protocol)]);
    }
}

}  // namespace

Onward copy_protocols(Passage &passage)
{
    const Protocols wanted = l2_of(passage.sw).settings.cpu_protocols;
    if (wanted != 0) {
        copy_if_wanted(passage, wanted);
    }
    return Onward::next;
}

}  // namespace sim
