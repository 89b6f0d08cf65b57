/// The module of queues: how many, which priority goes to which, and how they take turns.
#include "begin.h"
#include "queue.h"
#include "queue_arguments.h"
#include "rule_store.h"
#include "sim_cosq.h"

#include <algorithm>

using namespace sim;

namespace {

constexpr int weight_max_packets = 127;  // and shares
constexpr int weight_max_bytes = 1 << 20;

int weight_max_of(int mode)
{
    switch (mode) {
    case BCM_COSQ_WEIGHTED_ROUND_ROBIN:
    case BCM_COSQ_WEIGHTED_FAIR_QUEUING:
    case BCM_COSQ_BOUNDED_DELAY:
        return weight_max_packets;
    case BCM_COSQ_DEFICIT_ROUND_ROBIN:
        return weight_max_bytes;
    default:
        return 0;
    }
}

bool is_mode(int mode)
{
    return mode >= BCM_COSQ_STRICT && mode <= BCM_COSQ_BOUNDED_DELAY;
}

bool is_priority(bcm_cos_t priority)
{
    return priority >= 0 && priority < priorities;
}

bool is_queue(const QueueState &state, bcm_cos_queue_t queue)
{
    return queue >= 0 && queue < state.count;
}

void map_priority(Switch &sw, int port, int priority, int queue)
{
    settle(sw, port);  // what has left went to the queue of then
    queues_at(sw, port).queue_of[static_cast<std::size_t>(priority)] = static_cast<std::uint8_t>(queue);
}

bool are_weights(int mode, const int *weights)
{
    const int most = weight_max_of(mode);
    return most == 0 || std::all_of(weights, weights + queues_max, [&](int weight) {
               return weight >= 0 && weight <= most;
           });
}

bool is_schedule(int mode, const int *weights, int delay)
{
    return is_mode(mode) && are_weights(mode, weights) && delay >= 0;
}

void schedule(Switch &sw, int port, int mode, const int *weights, int delay)
{
    PortQueues &own = queues_at(sw, port);
    own.mode = mode;
    own.delay = mode == BCM_COSQ_BOUNDED_DELAY ? delay : 0;
    own.scheduler.forget();
    for (std::size_t i = 0; i < own.queues.size(); ++i) {
        own.queues[i].weight = weight_max_of(mode) != 0 ? weights[i] : 1;
    }
}

void tell(const PortQueues &own, int *mode, int *weights, int *delay)
{
    *mode = own.mode;
    *delay = own.delay;
    std::transform(own.queues.begin(), own.queues.end(), weights,
                   [](const Queue &queue) { return queue.weight; });
}

}  // namespace

extern "C" {

int sim_bcm_cosq_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        queues_of(sw).reset(sw);
        rule_store_of(sw).initialise("cosq");
    });
}

int sim_bcm_cosq_detach(int unit)
{
    return begin(unit, ready<QueueState>).then([](Switch &sw, QueueState &state) {
        state.reset(sw);
        state.initialised = false;
        rule_store_of(sw).detach("cosq");
    });
}

int sim_bcm_cosq_config_set(int unit, int numq)
{
    return begin(unit, ready<QueueState>).then([&](Switch &sw, QueueState &state) -> int {
        if (numq < 1 || numq > queues_max) {
            return BCM_E_PARAM;
        }
        state.count = numq;
        for (int priority = 0; priority < priorities; ++priority) {
            const int queue = priority * numq / priorities;
            state.queue_of[static_cast<std::size_t>(priority)] = static_cast<std::uint8_t>(queue);
            for (int port = 0; port <= port_max; ++port) {
                map_priority(sw, port, priority, queue);
            }
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_cosq_config_get(int unit, int *numq)
{
    return begin(unit, ready<QueueState>, given(numq)).then([&](QueueState &state) { *numq = state.count; });
}

int sim_bcm_cosq_mapping_set(int unit, bcm_cos_t priority, bcm_cos_queue_t cosq)
{
    return begin(unit, ready<QueueState>).then([&](Switch &sw, QueueState &state) -> int {
        if (!is_priority(priority) || !is_queue(state, cosq)) {
            return BCM_E_PARAM;
        }
        state.queue_of[static_cast<std::size_t>(priority)] = static_cast<std::uint8_t>(cosq);
        for (int port = 0; port <= port_max; ++port) {
            map_priority(sw, port, priority, cosq);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_cosq_mapping_get(int unit, bcm_cos_t priority, bcm_cos_queue_t *cosq)
{
    return begin(unit, ready<QueueState>, given(cosq)).then([&](QueueState &state) -> int {
        if (!is_priority(priority)) {
            return BCM_E_PARAM;
        }
        *cosq = state.queue_of[static_cast<std::size_t>(priority)];
        return BCM_E_NONE;
    });
}

int sim_bcm_cosq_port_mapping_set(int unit, bcm_port_t port, bcm_cos_t priority, bcm_cos_queue_t cosq)
{
    return sim_bcm_cosq_port_mapping_multi_set(unit, port, 1, &priority, &cosq);
}

int sim_bcm_cosq_port_mapping_get(int unit, bcm_port_t port, bcm_cos_t priority, bcm_cos_queue_t *cosq)
{
    return begin(unit, ready<QueueState>, given(cosq), own_port(port))
        .then([&](Switch &sw, QueueState &, int own) -> int {
            if (!is_priority(priority)) {
                return BCM_E_PARAM;
            }
            *cosq = queues_at(sw, own).queue_of[static_cast<std::size_t>(priority)];
            return BCM_E_NONE;
        });
}

int sim_bcm_cosq_port_mapping_multi_set(int unit, bcm_port_t port, int array_count, bcm_cos_t *priority_array,
                                        bcm_cos_queue_t *cosq_array)
{
    return begin(unit, ready<QueueState>, own_port(port))
        .then([&](Switch &sw, QueueState &state, int own) -> int {
            if (array_count < 0
                || (array_count != 0 && (priority_array == nullptr || cosq_array == nullptr))) {
                return BCM_E_PARAM;
            }
            for (int i = 0; i < array_count; ++i) {
                if (!is_priority(priority_array[i]) || !is_queue(state, cosq_array[i])) {
                    return BCM_E_PARAM;
                }
            }
            for (int i = 0; i < array_count; ++i) {
                map_priority(sw, own, priority_array[i], cosq_array[i]);
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_cosq_port_mapping_multi_get(int unit, bcm_port_t port, int array_max, bcm_cos_t *priority_array,
                                        bcm_cos_queue_t *cosq_array, int *array_count)
{
    return begin(unit, ready<QueueState>, given(array_count), own_port(port))
        .then([&](Switch &sw, QueueState &, int own) -> int {
            if (array_max < 0 || (array_max != 0 && (priority_array == nullptr || cosq_array == nullptr))) {
                return BCM_E_PARAM;
            }
            *array_count = std::min(array_max, priorities);
            for (int i = 0; i < *array_count; ++i) {
                priority_array[i] = i;
                cosq_array[i] = queues_at(sw, own).queue_of[static_cast<std::size_t>(i)];
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_cosq_sched_set(int unit, int mode, const int weights[8], int delay)
{
    return begin(unit, ready<QueueState>, given(weights)).then([&](Switch &sw, QueueState &) -> int {
        if (!is_schedule(mode, weights, delay)) {
            return BCM_E_PARAM;
        }
        for (int port = 0; port <= port_max; ++port) {
            schedule(sw, port, mode, weights, delay);
        }
        return BCM_E_NONE;
    });
}

int sim_bcm_cosq_sched_get(int unit, int *mode, int weights[8], int *delay)
{
    return begin(unit, ready<QueueState>, given(mode, weights, delay)).then([&](QueueState &state) {
        tell(state.ports[cpu_port], mode, weights, delay);
    });
}

int sim_bcm_cosq_sched_weight_max_get(int unit, int mode, int *weight_max)
{
    return begin(unit, ready<QueueState>, given(weight_max)).then([&](QueueState &) -> int {
        if (!is_mode(mode)) {
            return BCM_E_PARAM;
        }
        *weight_max = weight_max_of(mode);
        return BCM_E_NONE;
    });
}

int sim_bcm_cosq_port_sched_set(int unit, bcm_pbmp_t pbm, int mode, const int weights[8], int delay)
{
    return begin(unit, ready<QueueState>, given(weights)).then([&](Switch &sw, QueueState &) -> int {
        if (!is_schedule(mode, weights, delay)) {
            return BCM_E_PARAM;
        }
        PortSet(pbm).each([&](int port) { schedule(sw, port, mode, weights, delay); });
        return BCM_E_NONE;
    });
}

int sim_bcm_cosq_port_sched_get(int unit, bcm_pbmp_t pbm, int *mode, int weights[8], int *delay)
{
    return begin(unit, ready<QueueState>, given(mode, weights, delay)).then([&](QueueState &state) -> int {
        const PortSet ports(pbm);
        if (ports.empty()) {
            return BCM_E_PARAM;
        }
        tell(state.ports[static_cast<std::size_t>(ports.lowest())], mode, weights, delay);
        return BCM_E_NONE;
    });
}

int sim_bcm_cosq_gport_sched_set(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int mode, int weight)
{
    return begin(unit, ready<QueueState>, queues(gport, cosq))
        .then([&](QueueState &, const QueueRange &range) -> int {
            if (!is_mode(mode) || weight < 0 || weight > weight_max_of(mode)) {
                return BCM_E_PARAM;
            }
            // One that is strict stands beside the others as an input of the same scheduler.
            PortQueues &own = *range.port;
            if (own.mode == BCM_COSQ_STRICT) {
                for (Queue &queue : own.queues) {
                    queue.weight = BCM_COSQ_WEIGHT_STRICT;
                }
            }
            if (mode != BCM_COSQ_STRICT) {
                own.mode = mode;
            }
            own.scheduler.forget();
            for (Queue &queue : range) {
                queue.weight = mode == BCM_COSQ_STRICT        ? BCM_COSQ_WEIGHT_STRICT
                               : mode == BCM_COSQ_ROUND_ROBIN ? 1
                                                              : weight;
            }
            return BCM_E_NONE;
        });
}

int sim_bcm_cosq_gport_sched_get(int unit, bcm_gport_t gport, bcm_cos_queue_t cosq, int *mode, int *weight)
{
    return begin(unit, ready<QueueState>, given(mode, weight), queues(gport, cosq))
        .then([&](QueueState &, const QueueRange &range) {
            const bool is_strict =
                range.port->mode == BCM_COSQ_STRICT || range.begin()->weight == BCM_COSQ_WEIGHT_STRICT;
            *mode = is_strict ? static_cast<int>(BCM_COSQ_STRICT) : range.port->mode;
            *weight = is_strict ? 0 : range.begin()->weight;
        });
}

}  // extern "C"
