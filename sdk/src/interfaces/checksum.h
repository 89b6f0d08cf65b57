/// The checksum that a sender left to its hardware, which is not there.
#pragma once

#include <cstddef>

namespace sim {

/// Of a TCP segment or UDP datagram in the frame, whose checksum field has the sum of the pseudo header so far;
/// nothing happens to other frames.
void complete_checksum(unsigned char *frame, std::size_t length);

}  // namespace sim
