#include "port_counters.h"

#include <cstdint>

namespace sim {

namespace {

using F = FrameCounter;

/// A set of counters: bit n for the counter at place n.
struct CounterSet {
    static constexpr std::size_t word_bits = 64;

    constexpr bool has(std::size_t place) const { return words[place / word_bits] >> place % word_bits & 1; }

    std::array<std::uint64_t, (counters_of_a_port + word_bits - 1) / word_bits> words = {};
};

constexpr CounterSet operator|(const CounterSet &a, const CounterSet &b)
{
    CounterSet both = {};
    for (std::size_t i = 0; i < both.words.size(); ++i) {
        both.words[i] = a.words[i] | b.words[i];
    }
    return both;
}

constexpr CounterSet bit(std::size_t place)
{
    CounterSet one = {};
    one.words[place / CounterSet::word_bits] = std::uint64_t{1} << place % CounterSet::word_bits;
    return one;
}

template <class... Counters>
constexpr CounterSet received(Counters... counters)
{
    return (bit(place(Direction::received, counters)) | ...);
}

template <class... Counters>
constexpr CounterSet sent(Counters... counters)
{
    return (bit(place(Direction::sent, counters)) | ...);
}

template <class... Counters>
constexpr CounterSet both(Counters... counters)
{
    return received(counters...) | sent(counters...);
}

template <class... Reasons>
constexpr CounterSet dropped(Reasons... reasons)
{
    return (bit(place(reasons)) | ...);
}

/// All counters from one up to another, without that.
constexpr CounterSet between(std::size_t from, std::size_t to)
{
    CounterSet set = {};
    for (std::size_t place = from; place < to; ++place) {
        set = set | bit(place);
    }
    return set;
}

constexpr CounterSet received_good = received(F::unicast, F::multicast, F::broadcast);
constexpr CounterSet sent_good = sent(F::unicast, F::multicast, F::broadcast);
constexpr CounterSet received_bad = received(F::undersize, F::too_long);
constexpr CounterSet sent_bad = sent(F::undersize, F::too_long);
constexpr CounterSet arrivals_dropped = between(place(Discard{}), place(first_discard_to_send));
constexpr CounterSet departures_dropped = between(place(first_discard_to_send), counters_of_a_port);

struct Sum {
    bcm_stat_val_t type;
    CounterSet of;
};

/// The statistics that packets move. The octets and packets of EtherStats are those of both directions.
constexpr Sum sums[] = {
    {snmpIfInOctets, received(F::octets)},
    {snmpIfInUcastPkts, received(F::unicast)},
    {snmpIfInNUcastPkts, received(F::multicast, F::broadcast)},
    {snmpIfInDiscards, arrivals_dropped},
    {snmpIfInErrors, received_bad},
    {snmpIfOutOctets, sent(F::octets)},
    {snmpIfOutUcastPkts, sent(F::unicast)},
    {snmpIfOutNUcastPkts, sent(F::multicast, F::broadcast)},
    {snmpIfOutDiscards, departures_dropped},
    {snmpIfInMulticastPkts, received(F::multicast)},
    {snmpIfInBroadcastPkts, received(F::broadcast)},
    {snmpIfOutMulticastPkts, sent(F::multicast)},
    {snmpIfOutBroadcastPkts, sent(F::broadcast)},
    {snmpIfHCInOctets, received(F::octets)},
    {snmpIfHCInUcastPkts, received(F::unicast)},
    {snmpIfHCInMulticastPkts, received(F::multicast)},
    {snmpIfHCInBroadcastPkts, received(F::broadcast)},
    {snmpIfHCOutOctets, sent(F::octets)},
    {snmpIfHCOutUcastPkts, sent(F::unicast)},
    {snmpIfHCOutMulticastPkts, sent(F::multicast)},
    {snmpIfHCOutBroadcastPkts, sent(F::broadcast)},

    {snmpDot1dBasePortMtuExceededDiscards, received(F::too_long) | dropped(Discard::too_long_to_send)},
    {snmpDot1dTpPortInFrames, received_good},
    {snmpDot1dTpPortOutFrames, sent_good},
    {snmpDot1dTpPortInDiscards, arrivals_dropped},
    {snmpDot1dTpHCPortInFrames, received_good},
    {snmpDot1dTpHCPortOutFrames, sent_good},
    {snmpDot1dTpHCPortInDiscards, arrivals_dropped},

    {snmpEtherStatsMulticastPkts, both(F::multicast)},
    {snmpEtherStatsBroadcastPkts, both(F::broadcast)},
    {snmpEtherStatsUndersizePkts, both(F::undersize)},
    {snmpEtherStatsPkts64Octets, both(F::size_64)},
    {snmpEtherStatsPkts65to127Octets, both(F::size_65)},
    {snmpEtherStatsPkts128to255Octets, both(F::size_128)},
    {snmpEtherStatsPkts256to511Octets, both(F::size_256)},
    {snmpEtherStatsPkts512to1023Octets, both(F::size_512)},
    {snmpEtherStatsPkts1024to1518Octets, both(F::size_1024)},
    {snmpEtherStatsOversizePkts, both(F::size_1519, F::size_1523, F::size_2048, F::size_4096, F::size_9217)},
    {snmpEtherStatsOctets, both(F::octets)},
    {snmpEtherStatsPkts, received_good | received_bad | sent_good | sent_bad},
    {snmpEtherStatsTXNoErrors, sent_good},
    {snmpEtherStatsRXNoErrors, received_good},
    {snmpDot3StatsFrameTooLongs, received(F::too_long)},
    {snmpDot3ControlInUnknownOpcodes, received(F::unknown_control)},
    {snmpDot3InPauseFrames, received(F::pause)},
    {snmpBcmRxPFCControlFrame, received(F::priority_pause)},

    {snmpBcmReceivedPkts64Octets, received(F::size_64)},
    {snmpBcmReceivedPkts65to127Octets, received(F::size_65)},
    {snmpBcmReceivedPkts128to255Octets, received(F::size_128)},
    {snmpBcmReceivedPkts256to511Octets, received(F::size_256)},
    {snmpBcmReceivedPkts512to1023Octets, received(F::size_512)},
    {snmpBcmReceivedPkts1024to1518Octets, received(F::size_1024)},
    {snmpBcmReceivedPkts1519to2047Octets, received(F::size_1519, F::size_1523)},
    {snmpBcmReceivedPkts2048to4095Octets, received(F::size_2048)},
    {snmpBcmReceivedPkts4096to9216Octets, received(F::size_4096)},
    {snmpBcmReceivedPkts9217to16383Octets, received(F::size_9217)},
    {snmpBcmReceivedUndersizePkts, received(F::undersize)},
    {snmpBcmReceivedOversizePkts,
     received(F::size_1519, F::size_1523, F::size_2048, F::size_4096, F::size_9217)},
    {snmpBcmTransmittedPkts64Octets, sent(F::size_64)},
    {snmpBcmTransmittedPkts65to127Octets, sent(F::size_65)},
    {snmpBcmTransmittedPkts128to255Octets, sent(F::size_128)},
    {snmpBcmTransmittedPkts256to511Octets, sent(F::size_256)},
    {snmpBcmTransmittedPkts512to1023Octets, sent(F::size_512)},
    {snmpBcmTransmittedPkts1024to1518Octets, sent(F::size_1024)},
    {snmpBcmTransmittedPkts1519to2047Octets, sent(F::size_1519, F::size_1523)},
    {snmpBcmTransmittedPkts2048to4095Octets, sent(F::size_2048)},
    {snmpBcmTransmittedPkts4096to9216Octets, sent(F::size_4096)},
    {snmpBcmTransmittedPkts9217to16383Octets, sent(F::size_9217)},
    {snmpBcmTransmittedUndersizePkts, sent(F::undersize)},
    {snmpBcmTransmittedOversizePkts,
     sent(F::size_1519, F::size_1523, F::size_2048, F::size_4096, F::size_9217)},
    {snmpBcmEtherStatsPkts1519to1522Octets, both(F::size_1519)},
    {snmpBcmEtherStatsPkts1522to2047Octets, both(F::size_1523)},
    {snmpBcmEtherStatsPkts2048to4095Octets, both(F::size_2048)},
    {snmpBcmEtherStatsPkts4096to9216Octets, both(F::size_4096)},
    {snmpBcmEtherStatsPkts9217to16383Octets, both(F::size_9217)},
    {snmpBcmRxVlanTagFrame, received(F::single_tagged, F::double_tagged)},
    {snmpBcmRxDoubleVlanTagFrame, received(F::double_tagged)},
    {snmpBcmTxVlanTagFrame, sent(F::single_tagged, F::double_tagged)},
    {snmpBcmTxDoubleVlanTagFrame, sent(F::double_tagged)},

    {snmpBcmRxPolicerDiscards, dropped(Discard::policer)},
    {snmpBcmRxPolicyDiscards, dropped(Discard::port_takes_none)},
    {snmpBcmRxVlanFilterDiscards, dropped(Discard::vlan_filter)},
    {snmpBcmRxVlanUnknownDiscards, dropped(Discard::vlan_unknown)},
    {snmpBcmRxTagTypeDiscards, dropped(Discard::tag_type)},
    {snmpBcmRxStormUnknownUcastDiscards, dropped(Discard::storm_unknown_unicast)},
    {snmpBcmRxStormMulticastDiscards, dropped(Discard::storm_multicast)},
    {snmpBcmRxStormBroadcastDiscards, dropped(Discard::storm_broadcast)},
    {snmpBcmRxStpStateDiscards, dropped(Discard::stp_state)},
    {snmpBcmRxSourceMacDiscards, dropped(Discard::source_address)},
    {snmpBcmRxDestMacDiscards, dropped(Discard::destination_address)},
    {snmpBcmTxVlanFilterDiscards, dropped(Discard::vlan_filter_to_send)},
};

/// The same by type.
constexpr std::array<CounterSet, snmpValCount> counters_by_type()
{
    std::array<CounterSet, snmpValCount> by_type = {};
    for (const Sum &sum : sums) {
        by_type[sum.type] = sum.of;
    }
    return by_type;
}

uint64 total(const PortCounters &counters, bcm_stat_val_t type)
{
    static constexpr auto by_type = counters_by_type();
    uint64 value = 0;
    for (std::size_t i = 0; i < counters.counts.size(); ++i) {
        value += by_type[type].has(i) ? counters.counts[i] : 0;
    }
    return value;
}

struct SizeRange {
    std::size_t from;
    FrameCounter counter;
};

/// Each reaches up to the next.
constexpr SizeRange size_ranges[] = {
    {0, F::undersize},    {64, F::size_64},     {65, F::size_65},     {128, F::size_128},
    {256, F::size_256},   {512, F::size_512},   {1024, F::size_1024}, {1519, F::size_1519},
    {1523, F::size_1523}, {2048, F::size_2048}, {4096, F::size_4096}, {9217, F::size_9217},
};

FrameCounter size_counter(std::size_t length)
{
    // Most frames are of the smallest size.
    if (length == frame_min) {
        return F::size_64;
    }
    FrameCounter counter = {};
    for (const SizeRange &range : size_ranges) {
        if (length < range.from) {
            break;
        }
        counter = range.counter;
    }
    return counter;
}

FrameCounter address_counter(const unsigned char *to)
{
    return !is_group(to) ? F::unicast : is_broadcast(to) ? F::broadcast : F::multicast;
}

FrameCounter type_counter(ByteView frame)
{
    const unsigned type = number_at(frame.data + addresses_bytes);
    if (type == type_vlan) {
        return number_at(frame, addresses_bytes + tag_bytes) == type_vlan ? F::double_tagged
                                                                          : F::single_tagged;
    }
    if (type == type_mac_control) {
        constexpr unsigned pause = 0x0001, priority_pause = 0x0101;
        const unsigned opcode = number_at(frame, frame_header_bytes);
        return opcode == pause ? F::pause : opcode == priority_pause ? F::priority_pause : F::unknown_control;
    }
    return F::untagged;
}

}  // namespace

FrameCounts::FrameCounts(ByteView frame)
    : length_(static_cast<std::uint32_t>(length_with_checksum(frame))),
      size_(size_counter(length_)),
      addresses_(address_counter(frame.data)),
      type_(type_counter(frame))
{
}

void FrameCounts::readdress(const unsigned char *to)
{
    addresses_ = address_counter(to);
}

bool FrameCounts::arrived_with_error(PortCounters &counters, bool is_too_long) const
{
    counters.counts[place(Direction::received, F::octets)] += length_;
    ++counters.counts[place(Direction::received, size_)];
    if (is_too_long) {
        ++counters.counts[place(Direction::received, F::too_long)];
    }
    return false;
}

uint64 packets_sent(const PortCounters &counters)
{
    uint64 packets = counters.packets_sent_before;
    for (const F counter : {F::unicast, F::multicast, F::broadcast}) {
        packets += counters.counts[place(Direction::sent, counter)];
    }
    return packets;
}

uint64 octets_sent(const PortCounters &counters)
{
    return counters.octets_sent_before + counters.counts[place(Direction::sent, F::octets)];
}

void PortCounters::clear()
{
    packets_sent_before = packets_sent(*this);
    octets_sent_before = octets_sent(*this);
    counts = {};
    zero_at.clear();
}

uint64 statistic(const PortCounters &counters, bcm_stat_val_t type)
{
    const auto base = counters.zero_at.find(type);
    return total(counters, type) - (base != counters.zero_at.end() ? base->second : 0);
}

void set_statistic(PortCounters &counters, bcm_stat_val_t type, uint64 value)
{
    counters.zero_at[type] = total(counters, type) - value;
}

}  // namespace sim
