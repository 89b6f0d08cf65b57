#include "policer.h"

#include "port.h"

#include <algorithm>

namespace sim {

namespace {

class Count {
public:
    Count(Policer &policer, std::size_t length) : policer_(policer), length_(length) {}

    void operator()(bcm_policer_stat_t packets)
    {
        // The bytes of a kind stand behind its packets.
        ++policer_.counters[packets];
        policer_.counters[static_cast<std::size_t>(packets) + 1] += length_;
    }

private:
    Policer &policer_;
    std::size_t length_;
};

void count(Policer &policer, std::size_t length, bcm_color_t came, bcm_color_t color, bool is_dropped)
{
    if (!policer.counts) {
        return;
    }
    Count count(policer, length);
    count(bcmPolicerStatPackets);
    count(color == bcmColorGreen    ? bcmPolicerStatGreenPackets
          : color == bcmColorYellow ? bcmPolicerStatYellowPackets
                                    : bcmPolicerStatRedPackets);
    if (color != bcmColorGreen) {
        count(bcmPolicerStatNotGreenPackets);
    }
    if (color != bcmColorRed) {
        count(bcmPolicerStatNotRedPackets);
    }
    count(is_dropped ? bcmPolicerStatDroppedPackets : bcmPolicerStatAcceptedPackets);
    if (came == bcmColorGreen && color == bcmColorYellow) {
        count(bcmPolicerStatGreenToYellowPackets);
    } else if (came == bcmColorGreen && color == bcmColorRed) {
        count(bcmPolicerStatGreenToRedPackets);
    } else if (came == bcmColorYellow && color == bcmColorRed) {
        count(bcmPolicerStatYellowToRedPackets);
    }
}

/// Bytes that meters count of a packet.
std::size_t metered_length(const Policers &state, const Policer &policer, std::size_t length)
{
    constexpr long preamble_and_gap = 20, checksum = 4;
    long bytes = static_cast<long>(length) + state.length_adjust + policer.config.pkt_length_adjust;
    if (state.length_of == bcmPolicerPacketLengthPayload) {
        bytes -= checksum;
    } else if (state.length_of == bcmPolicerPacketLengthWithPreamble) {
        bytes += preamble_and_gap;
    }
    return static_cast<std::size_t>(std::max(bytes, 0L));
}

void act(const PolicerActions &actions, bcm_color_t color, PolicerDecision &decision)
{
    for (const auto &[what, parameters] : actions) {
        if (what.first != color) {
            continue;
        }
        switch (what.second) {
        case bcmPolicerActionDrop:
            decision.drops = true;
            break;
        case bcmPolicerActionDropPrecedence:
            decision.color = static_cast<bcm_color_t>(parameters.first);
            break;
        case bcmPolicerActionCopyToCpu:
            decision.copies_to_cpu = true;
            break;
        case bcmPolicerActionTrapToCpu:
            decision.copies_to_cpu = decision.drops = true;
            break;
        case bcmPolicerActionIntPrioNew:
            decision.priority = static_cast<int>(parameters.first);
            break;
        case bcmPolicerActionCosqNew:
            decision.queue = static_cast<int>(parameters.first);
            break;
        default:
            break;
        }
    }
}

void police(Policers &state, Policer &policer, bcm_policer_t id, std::size_t length,
            PolicerDecision &decision)
{
    const bcm_color_t came = decision.color;
    const bcm_color_t color = policer.meter.color(came, metered_length(state, policer, length));
    decision.color = color;
    decision.drops |= color == bcmColorRed && (policer.config.flags & BCM_POLICER_DROP_RED);
    const auto actions = state.actions.find(static_cast<uint32>(policer.config.action_id));
    if (actions != state.actions.end()) {
        act(actions->second, color, decision);
    }
    decision.by = id;
    count(policer, length, came, color, decision.drops);
}

}  // namespace

Policer *Policers::find(bcm_policer_t id)
{
    const auto found = policers.find(id);
    return found != policers.end() ? &found->second : nullptr;
}

PolicerUse Policers::use(bcm_policer_t id)
{
    Policer *policer = find(id);
    return policer != nullptr ? PolicerUse{id, policer->holders.hold()} : PolicerUse();
}

void Policers::take_away(PolicerSide side, const PolicerPlace &place)
{
    auto &of_side = places[static_cast<std::size_t>(side)];
    const auto found = of_side.find(place);
    if (found != of_side.end()) {
        --policers.at(found->second).uses;
        of_side.erase(found);
    }
}

void update_policing(Switch &sw)
{
    const Policers &state = policers_of(sw);
    const auto places = [&](PolicerSide side) {
        PortSet ports;
        for (const auto &each : state.places[static_cast<std::size_t>(side)]) {
            ports = ports | (each.first.port >= 0 ? PortSet::one(each.first.port) : PortSet::all());
        }
        return ports;
    };
    auto &ports = sw.of<PortState>();
    const PortSet arriving = places(PolicerSide::in);
    for (int port = 0; port <= port_max; ++port) {
        port_of(sw, port).polices_in = arriving.has(port);
    }
    ports.polices_out = places(PolicerSide::out);
    ports.update_special_out();
}

void police(Policers &state, const PolicerUse &use, std::size_t length, PolicerDecision &decision)
{
    Policer *policer = state.find(use.id);
    if (policer != nullptr && policer->holders.gave(use.hold) && state.is_on) {
        police(state, *policer, use.id, length, decision);
    }
}

void police(Switch &sw, PolicerSide side, int port, bcm_vlan_t vlan, std::size_t length,
            PolicerDecision &decision)
{
    PolicerState &state = policers_of(sw);
    if (!state.is_on) {
        return;
    }
    const auto &places = state.places[static_cast<std::size_t>(side)];
    for (const PolicerPlace &place :
         {PolicerPlace{port, vlan}, PolicerPlace{-1, vlan}, PolicerPlace{port, 0}}) {
        const auto found = places.find(place);
        if (found != places.end() && !decision.drops) {
            police(state, state.policers.at(found->second), found->second, length, decision);
        }
    }
}

}  // namespace sim
