/// The room of the CPU: the packets that it is given and those that it sends.
///
/// What comes to the CPU port of a unit that receives is put into one of its queues and handed to the callbacks in the
/// call that brought it, one packet after the other: there is no thread, and a callback is never called within
/// another.
#pragma once

#include "path.h"
#include "rx_callbacks.h"
#include "rx_mapping.h"
#include "switch.h"

#include <bcm/rx.h>

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <vector>

namespace sim {

constexpr int cpu_queues = 48;

/// A packet that waits for the callbacks.
struct ReceivedPacket {
    CpuCopy about;
    std::vector<unsigned char> frame;
    std::uint64_t time;  ///< of its arrival, nanoseconds
};

struct CpuQueue {
    bcm_rx_chan_t channel;
    std::deque<ReceivedPacket> waiting;
};

/// What can be set by bcm_rx_control.
struct RxControls {
    bool keeps_checksum = false;
    bool strips_tag = false;
    bool is_round_robin = false;
    int truncate_length = 0;  ///< bytes, 0 for whole packets
};

struct RxCounts {
    std::uint64_t received = 0;
    std::uint64_t unhandled = 0;
    std::uint64_t without_buffer = 0;
    std::uint64_t oversize = 0;
};

struct TxCounts {
    std::uint64_t forwarded = 0;
    std::uint64_t to_ports = 0;
    std::uint64_t refused = 0;
};

struct CpuState : RoomState {
    static constexpr Room room = Room::cpu;

    CpuState() { reset(); }

    void start(Switch &sw) override { set_cpu_receiver(sw.unit, nullptr); }
    void stop(Switch &sw) override { set_cpu_receiver(sw.unit, nullptr); }
    void forget_functions(Switch &sw) override
    {
        stop_reception();
        callbacks.clear();
        set_cpu_receiver(sw.unit, nullptr);
    }
    void retire() override { reset(); }

    /// As it is when new: no reception, no callbacks.
    void reset();

    /// The packets that wait are lost.
    void stop_reception();

    bool receives;
    bcm_rx_cfg_t config;
    RxControls controls;
    RxCallbacks callbacks;
    RxMapping mapping;
    std::array<CpuQueue, cpu_queues> queues;
    int last_queue;  ///< that was served
    bool hands_over = false;
    RxCounts counts;
    TxCounts sent;
};

inline CpuState &cpu_of(Switch &sw)
{
    return sw.of<CpuState>();
}

/// The configuration with which reception starts if none is given.
bcm_rx_cfg_t default_rx_config();

/// Hands over what waits, until nothing does or nothing more may pass.
void hand_over(Switch &sw, CpuState &cpu);

/// A packet as if it had come to the unit's CPU port: into its queue, and further.
void receive(Switch &sw, const CpuCopy &about, ByteView frame);

/// Takes what the CPU ports of units are given.
void receive_from_path(int unit, const CpuCopy &about, ByteView frame);

}  // namespace sim
