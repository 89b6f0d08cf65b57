/// The checksum of Ethernet frames, and of whatever else has the same.
///
/// It is written here since zlib would be the one library, besides the system's, that whoever uses the simulated switch
/// had to have and to link.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sim {

/// CRC-32 of IEEE 802.3; on the wire its lowest byte is the first.
std::uint32_t crc32(const unsigned char *bytes, std::size_t size);

}  // namespace sim
