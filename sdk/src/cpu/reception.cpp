/// From the CPU port to the callbacks.
#include "begin.h"
#include "cpu.h"

#include "buffers.h"
#include "clock.h"
#include "crc32.h"
#include "marked.h"
#include "trunk.h"

#include <algorithm>
#include <cstring>

namespace sim {

namespace {

constexpr int default_channel = 1;
constexpr int default_chains = 4;

/// What of a packet the callbacks get: bytes, and those of them that are a tag to be left out.
struct Content {
    std::size_t bytes;
    bool strips_tag;
};

Content content_of(const CpuState &cpu, const ReceivedPacket &packet)
{
    const RxControls &controls = cpu.controls;
    const Frame frame({packet.frame.data(), packet.frame.size()});
    const bool strips_tag = controls.strips_tag && frame.is_tagged();
    std::size_t bytes = packet.frame.size() - (strips_tag ? tag_bytes : 0);
    if (controls.truncate_length != 0) {
        bytes = std::min(bytes, static_cast<std::size_t>(controls.truncate_length));
    }
    return {bytes, strips_tag};
}

void copy_content(const ReceivedPacket &packet, bool strips_tag, std::size_t bytes, std::uint8_t *to)
{
    const std::size_t before = strips_tag ? std::min(addresses_bytes, bytes) : bytes;
    std::memcpy(to, packet.frame.data(), before);
    if (bytes > before) {
        std::memcpy(to + before, packet.frame.data() + addresses_bytes + tag_bytes, bytes - before);
    }
}

/// Within the switch.
int priority_of(const CpuCopy &about, const Frame &frame)
{
    return about.priority >= 0 ? about.priority : static_cast<int>(frame.tag >> 13);
}

/// What the record says of the packet, but for its data.
void describe(Switch &sw, const ReceivedPacket &packet, int queue, bcm_pkt_t *pkt)
{
    const CpuCopy &about = packet.about;
    const Frame frame({packet.frame.data(), packet.frame.size()});
    const auto unit = static_cast<uint8>(sw.unit);
    pkt->unit = unit;
    pkt->rx_unit = unit;
    pkt->vlan = about.vid;
    pkt->vlan_pri = static_cast<uint8>(frame.tag >> 13);
    pkt->vlan_cfi = frame.tag >> 12 & 1;
    pkt->prio_int = static_cast<uint8>(priority_of(about, frame));
    pkt->color = about.color;
    pkt->cos = static_cast<uint8>(queue);
    pkt->rx_cpu_cos = pkt->cos;
    pkt->src_mod = own_module;
    pkt->src_port = about.port;
    pkt->rx_port = about.port;
    BCM_GPORT_MODPORT_SET(pkt->src_gport, own_module, about.port);
    const Destination &place = trunks_of(sw).ports().places[static_cast<std::size_t>(about.port)];
    if (place.kind == Destination::Kind::trunk) {
        pkt->src_trunk = place.id;
        pkt->flags |= BCM_PKT_F_TRUNK;
    }
    pkt->dest_mod = own_module;
    pkt->dest_port = cpu_port;
    pkt->opcode = !about.is_for_many         ? BCM_PKT_OPCODE_CPU
                  : is_broadcast(frame.to()) ? BCM_PKT_OPCODE_BC
                  : is_group(frame.to())     ? BCM_PKT_OPCODE_L2MC
                                             : BCM_PKT_OPCODE_BC;
    pkt->rx_untagged = !about.came_tagged;
    if (!frame.is_tagged()) {
        pkt->flags |= BCM_PKT_F_NO_VTAG;
    }
    pkt->rx_reasons = bits_of(about.reasons);
    pkt->rx_reason = about.reasons.empty() ? static_cast<uint32>(bcmRxReasonInvalid) : *about.reasons.begin();
    pkt->rx_matched = about.match;
    pkt->rx_timestamp = static_cast<uint32>(packet.time);
    pkt->rx_timestamp_upper = static_cast<uint32>(packet.time >> 32);
    pkt->timestamp_flags = BCM_PKT_TIMESTAMP_VALID;
}

/// Gives one packet to the callbacks. Any of them may have done anything.
void hand_over(Switch &sw, CpuState &cpu, int queue, const ReceivedPacket &packet)
{
    const int unit = sw.unit;
    const Content content = content_of(cpu, packet);
    const std::size_t checksum = cpu.controls.keeps_checksum ? checksum_bytes : 0;
    // Callbacks may change it before the buffer goes back.
    const bcm_rx_cfg_t config = cpu.config;
    const auto buffer_bytes = static_cast<std::size_t>(config.pkt_size);
    if (content.bytes + checksum > buffer_bytes && (config.flags & BCM_RX_CFG_IGNORE_OVERSIZE)) {
        ++cpu.counts.oversize;
        return;
    }
    void *buffer = nullptr;
    if (take_buffer(config, unit, config.pkt_size, 0, &buffer) != BCM_E_NONE || buffer == nullptr) {
        ++cpu.counts.without_buffer;
        return;
    }
    bcm_pkt_t pkt = {};
    describe(sw, packet, queue, &pkt);
    if (content.strips_tag) {
        pkt.flags |= BCM_PKT_F_NO_VTAG;
    }
    const std::size_t there = std::min(content.bytes, buffer_bytes);
    auto *data = static_cast<std::uint8_t *>(buffer);
    copy_content(packet, content.strips_tag, there, data);
    const std::size_t of_checksum = std::min(checksum, buffer_bytes - there);
    if (of_checksum != 0) {
        const std::uint32_t sum = crc32(data, there);
        std::memcpy(data + there, &sum, of_checksum);
    }
    pkt._pkt_data = {data, static_cast<int>(there + of_checksum)};
    pkt.pkt_data = &pkt._pkt_data;
    pkt.blk_count = 1;
    pkt.alloc_ptr = data;
    pkt.pkt_len = static_cast<uint16>(content.bytes + checksum);
    pkt.tot_len = static_cast<uint16>(there + of_checksum);
    ++cpu.counts.received;
    const bcm_rx_t answer = cpu.callbacks.ask(
        queue, [&](bcm_rx_cb_f function, void *cookie) { return function(unit, &pkt, cookie); });
    if (answer == BCM_RX_NOT_HANDLED) {
        ++cpu.counts.unhandled;
    }
    if (answer != BCM_RX_HANDLED_OWNED) {
        give_buffer(config, unit, buffer);
    }
}

/// The next queue from which a packet may pass, -1 if there is none: by strict priority, or one after the other.
int next_queue(const CpuState &cpu)
{
    const auto may_pass = [&](int queue) {
        const CpuQueue &one = cpu.queues[static_cast<std::size_t>(queue)];
        return !one.waiting.empty() && cpu.config.chan_cfg[one.channel].chains > 0;
    };
    for (int i = 1; i <= cpu_queues; ++i) {
        const int queue = cpu.controls.is_round_robin ? (cpu.last_queue + i) % cpu_queues : cpu_queues - i;
        if (may_pass(queue)) {
            return queue;
        }
    }
    return -1;
}

}  // namespace

bcm_rx_cfg_t default_rx_config()
{
    bcm_rx_cfg_t config = {};
    config.pkt_size = 16 * 1024;
    config.pkts_per_chain = 16;
    config.chan_cfg[default_channel].chains = default_chains;
    config.chan_cfg[default_channel].cos_bmp = 0xffffffff;
    return config;
}

void CpuState::reset()
{
    stop_reception();
    config = default_rx_config();
    controls = {};
    callbacks.clear();
    mapping.clear();
    for (CpuQueue &queue : queues) {
        queue.channel = default_channel;
    }
    last_queue = 0;
    counts = {};
    sent = {};
}

void CpuState::stop_reception()
{
    receives = false;
    for (CpuQueue &queue : queues) {
        queue.waiting.clear();
    }
}

void hand_over(Switch &sw, CpuState &cpu)
{
    if (cpu.hands_over) {
        return;
    }
    const Marked marked(cpu.hands_over);
    for (int queue; cpu.receives && (queue = next_queue(cpu)) >= 0;) {
        std::deque<ReceivedPacket> &waiting = cpu.queues[static_cast<std::size_t>(queue)].waiting;
        const ReceivedPacket packet = std::move(waiting.front());
        waiting.pop_front();
        cpu.last_queue = queue;
        hand_over(sw, cpu, queue, packet);
    }
}

void receive(Switch &sw, const CpuCopy &about, ByteView frame)
{
    CpuState &cpu = cpu_of(sw);
    if (!cpu.receives) {
        return;
    }
    const int mapped = cpu.mapping.queue_of(bits_of(about.reasons), priority_of(about, Frame(frame)));
    const bcm_cos_queue_t queue = about.queue >= 0 ? about.queue : mapped;
    cpu.queues[static_cast<std::size_t>(queue)].waiting.push_back(
        {about, std::vector<unsigned char>(frame.data, frame.data + frame.size), clock_now()});
    hand_over(sw, cpu);
}

void receive_from_path(int unit, const CpuCopy &about, ByteView frame)
{
    begin(unit).then([&](Switch &sw) { receive(sw, about, frame); });
}

}  // namespace sim
