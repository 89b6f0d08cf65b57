#include "packets.h"

#include "begin.h"
#include "callers_memory.h"
#include "cpu.h"
#include "sim_pkt.h"
#include "sim_rx.h"

#include <algorithm>
#include <map>
#include <memory>

namespace sim {

namespace {

constexpr int bytes_max = static_cast<int>(packet_longest);

/// Those that are to be freed, with their buffers, and arrays of them. Never destroyed, as units are.
std::map<bcm_pkt_t *, std::unique_ptr<uint8[]>> &packets()
{
    static auto &all = *new std::map<bcm_pkt_t *, std::unique_ptr<uint8[]>>;
    return all;
}

struct PacketArray {
    std::unique_ptr<bcm_pkt_t *[]> packets;
    int count;
};

std::map<bcm_pkt_t **, PacketArray> &arrays()
{
    static auto &all = *new std::map<bcm_pkt_t **, PacketArray>;
    return all;
}

void put_lengths(bcm_pkt_t *packet, int bytes)
{
    packet->pkt_len = static_cast<uint16>(bytes);
    packet->tot_len = static_cast<uint16>(bytes);
}

}  // namespace

bcm_pkt_t *new_packet(int bytes, uint32 flags)
{
    auto buffer = std::make_unique<uint8[]>(static_cast<std::size_t>(std::max(bytes, 1)));
    auto packet = std::make_unique<bcm_pkt_t>();
    *packet = {};
    packet->alloc_ptr = buffer.get();
    packet->_pkt_data = {packet->alloc_ptr, bytes};
    packet->pkt_data = &packet->_pkt_data;
    packet->blk_count = 1;
    packet->flags = flags;
    put_lengths(packet.get(), bytes);
    packets().emplace(packet.get(), std::move(buffer));
    return packet.release();
}

int free_packet(bcm_pkt_t *packet)
{
    if (packets().erase(packet) == 0) {
        return BCM_E_PARAM;
    }
    delete packet;
    return BCM_E_NONE;
}

PacketBlocks::PacketBlocks(const bcm_pkt_blk_t *blocks, int count)
{
    if (count < 1 || static_cast<std::size_t>(count) > blocks_.size()
        || !read_callers(blocks, blocks_.data(), static_cast<std::size_t>(count) * sizeof *blocks)) {
        return;
    }
    const auto *last = blocks_.data() + count;
    if (std::all_of<const bcm_pkt_blk_t *>(blocks_.data(), last, [](const bcm_pkt_blk_t &block) {
            return block.len >= 0 && (block.data != nullptr || block.len == 0);
        })) {
        count_ = static_cast<std::size_t>(count);
        for (const bcm_pkt_blk_t &block : *this) {
            bytes_ += static_cast<std::size_t>(block.len);
        }
    }
}

bool gather(const bcm_pkt_t &packet, std::vector<std::uint8_t> *bytes)
{
    const PacketBlocks blocks(packet);
    const std::size_t size = packet.pkt_len != 0 ? packet.pkt_len : blocks.bytes();
    if (!blocks.are_there() || size > blocks.bytes() || size > packet_longest) {
        return false;
    }
    bytes->resize(size);
    std::size_t done = 0;
    for (const bcm_pkt_blk_t &block : blocks) {
        const std::size_t part = std::min(static_cast<std::size_t>(block.len), size - done);
        if (!read_callers(block.data, bytes->data() + done, part)) {
            return false;
        }
        done += part;
    }
    return true;
}

}  // namespace sim

using namespace sim;

namespace {

int alloc(int unit, int size, uint32 flags, bcm_pkt_t **pkt_buf)
{
    return begin(unit, given(pkt_buf)).then([&]() -> int {
        if (size < 0 || size > bytes_max) {
            return BCM_E_PARAM;
        }
        *pkt_buf = new_packet(size, flags);
        return BCM_E_NONE;
    });
}

int free(int unit, bcm_pkt_t *pkt)
{
    return begin(unit, given(pkt)).then([&]() -> int { return free_packet(pkt); });
}

}  // namespace

extern "C" {

int sim_bcm_pkt_alloc(int unit, int size, uint32 flags, bcm_pkt_t **pkt_buf)
{
    return alloc(unit, size, flags, pkt_buf);
}

int sim_bcm_pkt_free(int unit, bcm_pkt_t *pkt)
{
    return free(unit, pkt);
}

int sim_bcm_pkt_rx_alloc(int unit, int len, bcm_pkt_t **pkt_buf)
{
    return alloc(unit, len, 0, pkt_buf);
}

int sim_bcm_pkt_rx_free(int unit, bcm_pkt_t *pkt)
{
    return free(unit, pkt);
}

int sim_bcm_pkt_blk_alloc(int unit, int count, int size, uint32 flags, bcm_pkt_t ***packet_array)
{
    return begin(unit, given(packet_array)).then([&]() -> int {
        if (count < 1 || size < 0 || size > bytes_max) {
            return BCM_E_PARAM;
        }
        auto array = std::make_unique<bcm_pkt_t *[]>(static_cast<std::size_t>(count));
        int made = 0;
        try {
            for (; made < count; ++made) {
                array[static_cast<std::size_t>(made)] = new_packet(size, flags);
            }
        } catch (const std::bad_alloc &) {
            std::for_each(array.get(), array.get() + made, free_packet);
            return BCM_E_MEMORY;
        }
        *packet_array = array.get();
        arrays()[*packet_array] = {std::move(array), count};
        return BCM_E_NONE;
    });
}

int sim_bcm_pkt_blk_free(int unit, bcm_pkt_t **pkt, int count)
{
    return begin(unit, given(pkt)).then([&]() -> int {
        const auto is_ours = [](bcm_pkt_t *one) { return packets().count(one) != 0; };
        const auto array = arrays().find(pkt);
        if (array == arrays().end() || array->second.count != count
            || !std::all_of(pkt, pkt + count, is_ours)) {
            return BCM_E_PARAM;
        }
        std::for_each(pkt, pkt + count, free_packet);
        arrays().erase(array);
        return BCM_E_NONE;
    });
}

int sim_bcm_pkt_clear(int unit, bcm_pkt_t *pkt, bcm_pkt_blk_t *blks, int blk_count, uint32 flags,
                      bcm_pkt_t **pkt_buf)
{
    return begin(unit, given(blks, pkt_buf)).then([&]() -> int {
        const PacketBlocks blocks(blks, blk_count);
        if (!blocks.are_there() || blocks.bytes() > packet_longest) {
            return BCM_E_PARAM;
        }
        bcm_pkt_t cleared = {};
        cleared.pkt_data = blks;
        cleared.blk_count = static_cast<uint8>(blk_count);
        put_lengths(&cleared, static_cast<int>(blocks.bytes()));
        cleared.unit = static_cast<uint8>(unit);
        cleared.flags = flags;
        if (pkt == nullptr) {
            auto made = std::make_unique<bcm_pkt_t>(cleared);
            packets().emplace(made.get(), nullptr);
            *pkt_buf = made.release();
            return BCM_E_NONE;
        }
        // The buffer of one that is to be freed stays its own, since nobody else knows it.
        const auto own = packets().find(pkt);
        cleared.alloc_ptr = own != packets().end() ? own->second.get() : nullptr;
        *pkt = cleared;
        *pkt_buf = pkt;
        return BCM_E_NONE;
    });
}

int sim_bcm_pkt_flags_init(int unit, bcm_pkt_t *pkt, uint32 init_flags)
{
    return begin(unit, given(pkt)).then([&]() { pkt->flags = init_flags; });
}

int sim_bcm_pkt_flags_len_setup(int unit, bcm_pkt_t *pkt, int alloc_bytes, int payload_len, uint32 flags)
{
    return begin(unit, given(pkt)).then([&]() -> int {
        if (alloc_bytes < 0 || alloc_bytes > bytes_max || payload_len < 0 || payload_len > alloc_bytes
            || pkt->blk_count != 1 || pkt->pkt_data == nullptr
            || !write_callers(&pkt->pkt_data->len, &alloc_bytes, sizeof alloc_bytes)) {
            return BCM_E_PARAM;
        }
        pkt->flags = flags;
        pkt->pkt_len = static_cast<uint16>(payload_len);
        pkt->tot_len = static_cast<uint16>(alloc_bytes);
        return BCM_E_NONE;
    });
}

int sim_bcm_pkt_memcpy(bcm_pkt_t *pkt, int dest_byte, uint8 *src, int len)
{
    if (pkt == nullptr || src == nullptr || dest_byte < 0 || len < 0) {
        return BCM_E_PARAM;
    }
    const PacketBlocks blocks(*pkt);
    if (!blocks.are_there()
        || static_cast<std::size_t>(dest_byte) + static_cast<std::size_t>(len) > blocks.bytes()) {
        return BCM_E_PARAM;
    }
    for (const bcm_pkt_blk_t &block : blocks) {
        const int copied = std::max(std::min(block.len - dest_byte, len), 0);
        if (copied > 0 && !write_callers(block.data + dest_byte, src, static_cast<std::size_t>(copied))) {
            return BCM_E_PARAM;
        }
        src += copied;
        len -= copied;
        dest_byte = std::max(dest_byte - block.len, 0);
    }
    return BCM_E_NONE;
}

int sim_bcm_pkt_byte_index(bcm_pkt_t *pkt, int n, int *len, int *blk_idx, uint8 **location)
{
    if (pkt == nullptr || len == nullptr || blk_idx == nullptr || location == nullptr || n < 0) {
        return BCM_E_PARAM;
    }
    const PacketBlocks blocks(*pkt);
    for (const bcm_pkt_blk_t &block : blocks) {
        if (n < block.len) {
            *len = block.len - n;
            *blk_idx = static_cast<int>(&block - blocks.begin());
            *location = block.data + n;
            return BCM_E_NONE;
        }
        n -= block.len;
    }
    return BCM_E_PARAM;
}

int sim_bcm_rx_remote_pkt_alloc(int len, bcm_pkt_t **pkt)
{
    const UnitsLock lock;
    if (pkt == nullptr || len < 0 || len > bytes_max) {
        return BCM_E_PARAM;
    }
    *pkt = new_packet(len, 0);
    return BCM_E_NONE;
}

int sim_bcm_rx_remote_pkt_free(bcm_pkt_t *pkt)
{
    const UnitsLock lock;
    return pkt == nullptr ? static_cast<int>(BCM_E_PARAM) : free_packet(pkt);
}

// The packet's copy waits, so that it can be freed when this returns.
int sim_bcm_rx_remote_pkt_enqueue(int unit, bcm_pkt_t *pkt)
{
    return begin(unit, given(pkt)).then([&](Switch &sw) -> int {
        std::vector<std::uint8_t> bytes;
        if (!gather(*pkt, &bytes) || bytes.size() < frame_header_bytes || bytes.size() > frame_longest
            || pkt->src_port < 0 || pkt->src_port > port_max) {
            return BCM_E_PARAM;
        }
        if (!cpu_of(sw).receives) {
            return BCM_E_DISABLED;
        }
        CpuCopy about = CpuCopy::of_nothing_known();
        about.port = pkt->src_port;
        about.vid = pkt->vlan;
        about.came_tagged = pkt->rx_untagged == 0;
        about.match = pkt->rx_matched;
        for (int reason = 0; reason < bcmRxReasonCount; ++reason) {
            if (BCM_RX_REASON_GET(pkt->rx_reasons, reason)) {
                about.reasons.add(static_cast<bcm_rx_reason_t>(reason));
            }
        }
        bytes.resize(std::max(bytes.size(), frame_min - checksum_bytes));
        receive(sw, about, {bytes.data(), bytes.size()});
        return BCM_E_NONE;
    });
}

}  // extern "C"
