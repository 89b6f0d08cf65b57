#include "stages.h"

#include <cstring>

namespace sim {

Onward edit(Passage &passage)
{
    if (passage.copies.empty()) {
        return Onward::over;
    }
    auto &[untagged, tagged] = passage.departures.heads;
    const Frame &frame = passage.frame;
    untagged.start(frame.untagged_from, addresses_bytes);
    std::memcpy(untagged.bytes(), frame.bytes.data, addresses_bytes);
    tagged.start(frame.untagged_from, addresses_bytes + tag_bytes);
    std::memcpy(tagged.bytes(), frame.bytes.data, addresses_bytes);
    put_number(tagged.bytes() + addresses_bytes, type_vlan);
    put_number(tagged.bytes() + addresses_bytes + 2, frame.tag_of(passage.vid));
    return Onward::next;
}

}  // namespace sim
