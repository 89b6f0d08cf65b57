/// Reception as software sees it: starting and stopping, callbacks, queues and channels.
#include "begin.h"
#include "buffers.h"
#include "cpu.h"
#include "rule_store.h"
#include "sim_rx.h"

#include <cstdio>
#include <iterator>

using namespace sim;

namespace {

constexpr int pool_packets = 256;

/// BCM_E_UNAVAIL: several buffers for a packet, addresses of CPUs, and functions that come alone.
int check_config(const bcm_rx_cfg_t &config)
{
    constexpr uint32 known = BCM_RX_CFG_IGNORE_OVERSIZE;
    constexpr int checksum_and_header = static_cast<int>(frame_header_bytes + checksum_bytes);
    if (config.pkt_size < checksum_and_header || config.pkt_size > 0xffff || config.pkts_per_chain < 0
        || config.global_pps < 0 || config.max_burst < 0
        || (config.rx_alloc == nullptr) != (config.rx_free == nullptr)) {
        return BCM_E_PARAM;
    }
    for (const bcm_rx_chan_cfg_t &channel : config.chan_cfg) {
        if (channel.chains < 0 || channel.rate_pps < 0) {
            return BCM_E_PARAM;
        }
        if (channel.flags != 0) {
            return BCM_E_UNAVAIL;
        }
    }
    return (config.flags & ~known) || config.num_of_cpu_addresses != 0 ? BCM_E_UNAVAIL : BCM_E_NONE;
}

/// The queues that channels of the configuration serve.
void assign_queues(CpuState &cpu)
{
    for (bcm_rx_chan_t channel = 0; channel < BCM_RX_CHANNELS; ++channel) {
        const uint32 bitmap = cpu.config.chan_cfg[channel].cos_bmp;
        for (std::size_t queue = 0; queue < 32; ++queue) {
            if (bitmap >> queue & 1) {
                cpu.queues[queue].channel = channel;
            }
        }
    }
}

bool is_queue(bcm_cos_queue_t queue)
{
    return queue >= 0 && queue < cpu_queues;
}

bool is_channel(bcm_rx_chan_t channel)
{
    return channel >= 0 && channel < BCM_RX_CHANNELS;
}

int add_callback(int unit, const char *name, const RxCallback &callback, uint32 flags)
{
    return begin(unit, given(name, callback.function)).then([&](Switch &sw) -> int {
        constexpr uint32 known = BCM_RX_CALLBACK_INTERRUPT;
        if ((callback.queue != RxCallback::all_queues && !is_queue(callback.queue)) || (flags & ~known)) {
            return BCM_E_PARAM;
        }
        RxCallback named = callback;
        named.name = name;
        return cpu_of(sw).callbacks.add(named);
    });
}

int remove_callback(int unit, const RxCallback &callback)
{
    return begin(unit, given(callback.function)).then([&](Switch &sw) -> int {
        return callback.queue != RxCallback::all_queues && !is_queue(callback.queue)
                   ? static_cast<int>(BCM_E_PARAM)
                   : cpu_of(sw).callbacks.remove(callback);
    });
}

bool has_unknown(const bcm_rx_reasons_t &mask)
{
    const bcm_rx_reasons_t &known = reasons_known();
    for (std::size_t i = 0; i < std::size(mask.pbits); ++i) {
        if (mask.pbits[i] & ~known.pbits[i]) {
            return true;
        }
    }
    return false;
}

}  // namespace

extern "C" {

int sim_bcm_rx_init(int unit)
{
    return begin(unit).then([&](Switch &sw) {
        set_cpu_receiver(unit, nullptr);
        cpu_of(sw).reset();
        rule_store_of(sw).initialise("rx");
    });
}

int sim_bcm_rx_clear(int unit)
{
    return begin(unit).then([&](Switch &sw) {
        set_cpu_receiver(unit, nullptr);
        cpu_of(sw).stop_reception();
        cpu_of(sw).callbacks.clear();
    });
}

int sim_bcm_rx_cfg_init(int unit)
{
    return begin(unit).then([&](Switch &sw) -> int {
        CpuState &cpu = cpu_of(sw);
        if (cpu.receives) {
            return BCM_E_BUSY;
        }
        cpu.config = default_rx_config();
        assign_queues(cpu);
        return BCM_E_NONE;
    });
}

int sim_bcm_rx_cfg_get(int unit, bcm_rx_cfg_t *cfg)
{
    return begin(unit, given(cfg)).then([&](Switch &sw) { *cfg = cpu_of(sw).config; });
}

int sim_bcm_rx_start(int unit, bcm_rx_cfg_t *cfg)
{
    return begin(unit).then([&](Switch &sw) -> int {
        CpuState &cpu = cpu_of(sw);
        if (cpu.receives) {
            return BCM_E_BUSY;
        }
        const bcm_rx_cfg_t config = cfg != nullptr ? *cfg : cpu.config;
        const int rc = check_config(config);
        if (rc != BCM_E_NONE) {
            return rc;
        }
        if (config.rx_alloc == nullptr && !rx_pool().is_set_up()) {
            rx_pool().set_up(pool_packets, static_cast<std::size_t>(config.pkt_size));
        }
        cpu.config = config;
        if (cfg != nullptr) {
            assign_queues(cpu);
        }
        cpu.receives = true;
        set_cpu_receiver(unit, receive_from_path);
        return BCM_E_NONE;
    });
}

// What the configuration of the caller says is of no use here.
int sim_bcm_rx_stop(int unit, bcm_rx_cfg_t *)
{
    return begin(unit).then([&](Switch &sw) {
        set_cpu_receiver(unit, nullptr);
        cpu_of(sw).stop_reception();
    });
}

int sim_bcm_rx_active(int unit)
{
    bool receives = false;
    const int rc = begin(unit).then([&](Switch &sw) { receives = cpu_of(sw).receives; });
    return rc != BCM_E_NONE ? rc : static_cast<int>(receives);
}

int sim_bcm_rx_unit_next_get(int unit, int *unit_next)
{
    return begin(unit, given(unit_next)).then([&]() -> int {
        for (int i = 1; i <= unit_max; ++i) {
            const int next = (unit + i) % unit_max;
            Switch *sw = attached(next);
            if (sw != nullptr && cpu_of(*sw).receives) {
                *unit_next = next;
                return BCM_E_NONE;
            }
        }
        return BCM_E_NOT_FOUND;
    });
}

int sim_bcm_rx_register(int unit, const char *name, bcm_rx_cb_f callback, uint8 priority, void *cookie,
                        uint32 flags)
{
    return add_callback(unit, name, {RxCallback::all_queues, callback, priority, cookie}, flags);
}

int sim_bcm_rx_unregister(int unit, bcm_rx_cb_f callback, uint8 priority)
{
    return remove_callback(unit, {RxCallback::all_queues, callback, priority});
}

int sim_bcm_rx_queue_register(int unit, const char *name, bcm_cos_queue_t cosq, bcm_rx_cb_f callback,
                              uint8 priority, void *cookie, uint32 flags)
{
    return cosq == RxCallback::all_queues
               ? static_cast<int>(BCM_E_PARAM)
               : add_callback(unit, name, {cosq, callback, priority, cookie}, flags);
}

int sim_bcm_rx_queue_unregister(int unit, bcm_cos_queue_t cosq, bcm_rx_cb_f callback, uint8 priority)
{
    return cosq == RxCallback::all_queues ? static_cast<int>(BCM_E_PARAM)
                                          : remove_callback(unit, {cosq, callback, priority});
}

int sim_bcm_rx_queue_max_get(int unit, bcm_cos_queue_t *cosq)
{
    return begin(unit, given(cosq)).then([&]() { *cosq = cpu_queues - 1; });
}

int sim_bcm_rx_queue_packet_count_get(int unit, bcm_cos_queue_t cosq, int *packet_count)
{
    return begin(unit, given(packet_count)).then([&](Switch &sw) -> int {
        if (!is_queue(cosq)) {
            return BCM_E_PARAM;
        }
        *packet_count = static_cast<int>(cpu_of(sw).queues[static_cast<std::size_t>(cosq)].waiting.size());
        return BCM_E_NONE;
    });
}

int sim_bcm_rx_queue_channel_set(int unit, bcm_cos_queue_t queue_id, bcm_rx_chan_t chan_id)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (!is_queue(queue_id) || !is_channel(chan_id)) {
            return BCM_E_PARAM;
        }
        CpuState &cpu = cpu_of(sw);
        cpu.queues[static_cast<std::size_t>(queue_id)].channel = chan_id;
        hand_over(sw, cpu);
        return BCM_E_NONE;
    });
}

int sim_bcm_rx_queue_channel_get(int unit, bcm_cos_queue_t queue_id, bcm_rx_chan_t *chan_id)
{
    return begin(unit, given(chan_id)).then([&](Switch &sw) -> int {
        if (!is_queue(queue_id)) {
            return BCM_E_PARAM;
        }
        *chan_id = cpu_of(sw).queues[static_cast<std::size_t>(queue_id)].channel;
        return BCM_E_NONE;
    });
}

int sim_bcm_rx_channels_running(int unit, uint32 *channels)
{
    return begin(unit, given(channels)).then([&](Switch &sw) {
        const CpuState &cpu = cpu_of(sw);
        *channels = 0;
        for (unsigned channel = 0; cpu.receives && channel < BCM_RX_CHANNELS; ++channel) {
            *channels |= cpu.config.chan_cfg[channel].chains > 0 ? 1u << channel : 0;
        }
    });
}

int sim_bcm_rx_cosq_mapping_size_get(int unit, int *size, int *used)
{
    return begin(unit, given(size, used)).then([&](Switch &sw) {
        *size = RxMapping::size;
        *used = cpu_of(sw).mapping.used();
    });
}

// Packets have no types here but one.
int sim_bcm_rx_cosq_mapping_set(int unit, int index, bcm_rx_reasons_t reasons, bcm_rx_reasons_t reasons_mask,
                                uint8 int_prio, uint8 int_prio_mask, uint32, uint32 packet_type_mask,
                                bcm_cos_queue_t cosq)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (index < 0 || index >= RxMapping::size || !is_queue(cosq)) {
            return BCM_E_PARAM;
        }
        if (has_unknown(reasons_mask) || packet_type_mask != 0) {
            return BCM_E_UNAVAIL;
        }
        cpu_of(sw).mapping.put(index, {reasons, reasons_mask, int_prio, int_prio_mask, cosq});
        return BCM_E_NONE;
    });
}

int sim_bcm_rx_cosq_mapping_get(int unit, int index, bcm_rx_reasons_t *reasons,
                                bcm_rx_reasons_t *reasons_mask, uint8 *int_prio, uint8 *int_prio_mask,
                                uint32 *packet_type, uint32 *packet_type_mask, bcm_cos_queue_t *cosq)
{
    return begin(unit,
                 given(reasons, reasons_mask, int_prio, int_prio_mask, packet_type, packet_type_mask, cosq))
        .then([&](Switch &sw) -> int {
            const RxMappingEntry *entry = cpu_of(sw).mapping.find(index);
            if (index < 0 || index >= RxMapping::size) {
                return BCM_E_PARAM;
            }
            if (entry == nullptr) {
                return BCM_E_NOT_FOUND;
            }
            *reasons = entry->reasons;
            *reasons_mask = entry->reasons_mask;
            *int_prio = entry->priority;
            *int_prio_mask = entry->priority_mask;
            *packet_type = 0;
            *packet_type_mask = 0;
            *cosq = entry->queue;
            return BCM_E_NONE;
        });
}

int sim_bcm_rx_cosq_mapping_delete(int unit, int index)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (index < 0 || index >= RxMapping::size) {
            return BCM_E_PARAM;
        }
        return cpu_of(sw).mapping.erase(index) ? BCM_E_NONE : BCM_E_NOT_FOUND;
    });
}

int sim_bcm_rx_cosq_mapping_reasons_get(int unit, bcm_rx_reasons_t *reasons)
{
    return begin(unit, given(reasons)).then([&]() { *reasons = reasons_known(); });
}

int sim_bcm_rx_reasons_get(int unit, bcm_rx_reasons_t *reasons)
{
    return begin(unit, given(reasons)).then([&]() { *reasons = reasons_known(); });
}

int sim_bcm_rx_control_set(int unit, bcm_rx_control_t type, int arg)
{
    return begin(unit).then([&](Switch &sw) -> int {
        RxControls &controls = cpu_of(sw).controls;
        if (arg < 0 || type < 0 || type >= bcmRxControlCount) {
            return BCM_E_PARAM;
        }
        switch (type) {
        case bcmRxControlCrcKeep:
            controls.keeps_checksum = arg != 0;
            return BCM_E_NONE;
        case bcmRxControlVlanTagStrip:
            controls.strips_tag = arg != 0;
            return BCM_E_NONE;
        case bcmRxControlTruncateLength:
            controls.truncate_length = arg;
            return BCM_E_NONE;
        case bcmRxControlQueueScheduling:
            controls.is_round_robin = arg != 0;
            return BCM_E_NONE;
        default:
            return BCM_E_UNAVAIL;
        }
    });
}

int sim_bcm_rx_control_get(int unit, bcm_rx_control_t type, int *arg)
{
    return begin(unit, given(arg)).then([&](Switch &sw) -> int {
        const RxControls &controls = cpu_of(sw).controls;
        if (type < 0 || type >= bcmRxControlCount) {
            return BCM_E_PARAM;
        }
        switch (type) {
        case bcmRxControlCrcKeep:
            *arg = controls.keeps_checksum;
            return BCM_E_NONE;
        case bcmRxControlVlanTagStrip:
            *arg = controls.strips_tag;
            return BCM_E_NONE;
        case bcmRxControlTruncateLength:
            *arg = controls.truncate_length;
            return BCM_E_NONE;
        case bcmRxControlQueueScheduling:
            *arg = controls.is_round_robin;
            return BCM_E_NONE;
        default:
            return BCM_E_UNAVAIL;
        }
    });
}

int sim_bcm_rx_show(int unit)
{
    return begin(unit).then([&](Switch &sw) {
        const CpuState &cpu = cpu_of(sw);
        const auto number = [](std::uint64_t count) { return static_cast<unsigned long long>(count); };
        std::printf("reception of unit %d: %s, buffers of %d bytes\n", unit,
                    cpu.receives ? "runs" : "stopped", cpu.config.pkt_size);
        std::printf(
            "packets: %llu handed over, %llu of them not handled; lost: %llu without buffer, %llu oversize\n",
            number(cpu.counts.received), number(cpu.counts.unhandled), number(cpu.counts.without_buffer),
            number(cpu.counts.oversize));
        for (const RxCallback &callback : cpu.callbacks.all()) {
            std::printf("callback '%s' at priority %d", callback.name.c_str(), callback.priority);
            if (callback.queue != RxCallback::all_queues) {
                std::printf(", queue %d", callback.queue);
            }
            std::printf("\n");
        }
        for (std::size_t queue = 0; queue < cpu.queues.size(); ++queue) {
            if (!cpu.queues[queue].waiting.empty()) {
                std::printf("queue %zu: %zu packets wait\n", queue, cpu.queues[queue].waiting.size());
            }
        }
    });
}

}  // extern "C"
