/// Packets of the CPU as blocks of bytes.
#pragma once

#include <bcm/pkt.h>

#include <cstdint>
#include <vector>

namespace sim {

/// A packet that bcm_pkt_free or the like has to free, with one block of so many bytes; null without memory.
bcm_pkt_t *new_packet(int bytes, uint32 flags);

/// BCM_E_PARAM: none of those that new_packet has made, or freed already.
int free_packet(bcm_pkt_t *packet);

/// Whether there are blocks, none of them without memory or of a length below 0.
bool has_blocks(const bcm_pkt_t &packet);

/// Bytes of all blocks.
std::size_t block_bytes(const bcm_pkt_t &packet);

/// The first pkt_len bytes of the blocks, or all if it is 0. False if there are not as many.
bool gather(const bcm_pkt_t &packet, std::vector<std::uint8_t> *bytes);

}  // namespace sim
