/// Packets of the CPU as blocks of bytes.
///
/// Records of packets are the callers' own, with pointers to more of their memory. What these say wrongly is refused.
#pragma once

#include <bcm/pkt.h>

#include <array>
#include <cstdint>
#include <vector>

namespace sim {

constexpr std::size_t packet_longest = 0xffff;  ///< bytes; pkt_len can say no more

/// A packet that bcm_pkt_free or the like has to free, with one block of so many bytes; null without memory.
bcm_pkt_t *new_packet(int bytes, uint32 flags);

/// BCM_E_PARAM: none of those that new_packet has made, or freed already.
int free_packet(bcm_pkt_t *packet);

/// The blocks of a packet.
class PacketBlocks {
public:
    PacketBlocks(const bcm_pkt_blk_t *blocks, int count);
    explicit PacketBlocks(const bcm_pkt_t &packet) : PacketBlocks(packet.pkt_data, packet.blk_count) {}

    /// Whether there are any, none of them without memory or of a length below 0.
    bool are_there() const { return count_ != 0; }

    /// Bytes of all.
    std::size_t bytes() const { return bytes_; }

    const bcm_pkt_blk_t *begin() const { return blocks_.data(); }
    const bcm_pkt_blk_t *end() const { return blocks_.data() + count_; }

private:
    std::array<bcm_pkt_blk_t, 0xff> blocks_;
    std::size_t count_ = 0, bytes_ = 0;
};

/// The first pkt_len bytes of the blocks, or all if it is 0. False if there are not as many, or none.
bool gather(const bcm_pkt_t &packet, std::vector<std::uint8_t> *bytes);

}  // namespace sim
