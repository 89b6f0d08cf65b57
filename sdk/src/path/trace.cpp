#include "trace.h"
#include "units_lock.h"

#include "passage.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

namespace sim {

bool is_traced = false;

namespace {

constexpr const char *stage_names[] = {"arrive",  "port",        "vlan",      "tree",  "source",
                                       "route",   "destination", "replicate", "leave", "wire",
                                       "policer", "queue",       "field"};
static_assert(std::size(stage_names) == simStageCount, "every stage has a name");

constexpr const char *drop_names[] = {
    "none",
    "undersize",
    "too_long",
    "control",
    "port_takes_none",
    "tag_type",
    "translation",
    "vlan_unknown",
    "vlan_filter",
    "tree_state",
    "source_address",
    "destination_address",
    "no_destination",
    "no_link",
    "tree_state_to_send",
    "vlan_filter_to_send",
    "too_long_to_send",
    "translation_to_send",
    "storm",
    "ip_header",
    "ip_source",
    "no_route",
    "null_route",
    "unresolved",
    "ttl",
    "mtu",
    "rate_in",
    "storm_limit",
    "policer",
    "queue_full",
    "field_rule",
    "field_rule_to_send",
};
static_assert(std::size(drop_names) == simDropCount, "every reason has a name");

/// What a reason of a discard is to users.
struct Drop {
    sim_stage_t stage;
    sim_drop_t drop;
    const char *text;
};

constexpr std::array<Drop, static_cast<std::size_t>(Discard::count)> drops = {{
    {simStagePort, simDropPortTakesNone, "the port takes no packets"},
    {simStagePort, simDropRateIn, "the port takes no more for now: its rate"},
    {simStagePolicer, simDropPolicer, "a policer drops it"},
    {simStagePort, simDropTagType, "the port takes no packets with such a tag, or without"},
    {simStagePort, simDropTranslation, "no translation, or one that drops: so the port is set"},
    {simStageVlan, simDropVlanUnknown, "there is no such VLAN"},
    {simStageVlan, simDropVlanFilter, "the port filters and is no member of the VLAN"},
    {simStageTree, simDropTreeState, "the port does not forward in the spanning tree group"},
    {simStageSource, simDropSourceAddress, "packets from the source address are not taken here"},
    {simStageDestination, simDropDestinationAddress, "packets to the destination address are discarded"},
    {simStageRoute, simDropIpHeader, "no sound IP header"},
    {simStageRoute, simDropIpSource, "packets from the IP source address are not taken here"},
    {simStageRoute, simDropNoRoute, "no host or route leads to the IP destination address"},
    {simStageRoute, simDropNullRoute, "packets to the IP destination address are discarded"},
    {simStageRoute, simDropUnresolved, "the next hop has no address yet"},
    {simStageRoute, simDropTtl, "the TTL or hop limit is at its end"},
    {simStageRoute, simDropMtu, "longer than the MTU of the interface"},
    {simStageReplicate, simDropNoDestination, "no other port can send it"},
    {simStageDestination, simDropStormLimit, "too many packets of unknown destination: storm control"},
    {simStageDestination, simDropStormLimit, "too many multicast packets: storm control"},
    {simStageDestination, simDropStormLimit, "too many broadcast packets: storm control"},
    {simStageField, simDropFieldRule, "an entry of the field processor drops it"},
    {simStageLeave, simDropNoLink, "the port has no link"},
    {simStageLeave, simDropTreeStateToSend, "the port does not forward in the spanning tree group"},
    {simStageLeave, simDropVlanFilterToSend, "the port filters and is no member of the VLAN"},
    {simStageLeave, simDropTooLongToSend, "longer than the port sends"},
    {simStagePolicer, simDropPolicer, "a policer drops it"},
    {simStageQueue, simDropQueueFull, "its queue is full"},
    {simStageLeave, simDropTranslationToSend, "the port sends nothing that is not translated"},
    {simStageField, simDropFieldRuleToSend, "an entry of the field processor drops it at this port"},
}};

struct Listener {
    sim_trace_listener_t call = nullptr;
    void *datum = nullptr;
};

Listener listener;

struct KeptStep {
    sim_trace_step_t step;
    std::string text;
};

/// What is kept for those who do not listen themselves.
struct TraceLog {
    bool on = false;
    std::vector<KeptStep> steps;
    std::string lines;
};

TraceLog &trace_log()
{
    static TraceLog &kept = *new TraceLog;
    return kept;
}

void tell(sim_trace_step_t step, const char *text)
{
    step.text = text;
    if (trace_log().on) {
        trace_log().steps.push_back({step, text});
    }
    if (listener.call != nullptr) {
        listener.call(&step, listener.datum);
    }
}

void update_is_traced()
{
    is_traced = listener.call != nullptr || trace_log().on;
}

std::string formatted(const char *format, std::va_list arguments)
{
    std::array<char, 512> text;
    std::vsnprintf(text.data(), text.size(), format, arguments);
    return text.data();
}

}  // namespace

void tell_step(const Passage &passage, sim_stage_t stage, int port, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    tell({passage.sw.unit, stage, simDropNone, port, passage.vid, nullptr}, text.c_str());
}

void tell_kept_by_mac(const Passage &passage, sim_drop_t drop)
{
    const char *text = drop == simDropUndersize ? "shorter than 64 bytes"
                       : drop == simDropTooLong ? "longer than the port takes"
                                                : "a control frame, which the MAC keeps";
    tell({passage.sw.unit, simStageArrive, drop, passage.port, 0, nullptr}, text);
}

void tell_drop(const Passage &passage, int port, Discard reason)
{
    const Drop &drop = drops[static_cast<std::size_t>(reason)];
    tell({passage.sw.unit, drop.stage, drop.drop, port, passage.vid, nullptr}, drop.text);
}

void tell_diverted(const Passage &passage, Discard reason)
{
    const Drop &drop = drops[static_cast<std::size_t>(reason)];
    tell_step(passage, drop.stage, passage.port, "%s: to the CPU", drop.text);
}

void tell_at(int unit, sim_stage_t stage, int port, sim_drop_t drop, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    tell({unit, stage, drop, port, 0, nullptr}, text.c_str());
}

}  // namespace sim

using namespace sim;

extern "C" {

const char *sim_stage_name(int stage)
{
    return stage >= 0 && stage < simStageCount ? stage_names[stage] : "?";
}

const char *sim_drop_name(int drop)
{
    return drop >= 0 && drop < simDropCount ? drop_names[drop] : "?";
}

void sim_trace_listen(sim_trace_listener_t call, void *datum)
{
    const sim::UnitsLock lock;
    listener = {call, datum};
    update_is_traced();
}

void sim_trace_begin(void)
{
    const sim::UnitsLock lock;
    trace_log().steps.clear();
    trace_log().on = true;
    update_is_traced();
}

void sim_trace_end(void)
{
    const sim::UnitsLock lock;
    trace_log().on = false;
    update_is_traced();
}

int sim_trace_count(void)
{
    const sim::UnitsLock lock;
    return static_cast<int>(trace_log().steps.size());
}

int sim_trace_step(int index, sim_trace_step_t *step)
{
    const sim::UnitsLock lock;
    if (step == nullptr) {
        return BCM_E_PARAM;
    }
    if (index < 0 || index >= sim_trace_count()) {
        return BCM_E_NOT_FOUND;
    }
    const KeptStep &kept = trace_log().steps[static_cast<std::size_t>(index)];
    *step = kept.step;
    step->text = kept.text.c_str();
    return BCM_E_NONE;
}

const char *sim_trace_text(void)
{
    const sim::UnitsLock lock;
    std::string &lines = trace_log().lines;
    lines.clear();
    for (const KeptStep &kept : trace_log().steps) {
        std::array<char, 64> place;
        std::snprintf(place.data(), place.size(), "unit %d port %d %s: ", kept.step.unit, kept.step.port,
                      sim_stage_name(kept.step.stage));
        lines += place.data() + kept.text;
        if (kept.step.drop != simDropNone) {
            lines += std::string(" [") + sim_drop_name(kept.step.drop) + "]";
        }
        lines += '\n';
    }
    return lines.c_str();
}

}  // extern "C"
