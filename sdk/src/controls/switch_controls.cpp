/// Controls of the switch as a whole.
#include "begin.h"
#include "chip.h"
#include "controls.h"
#include "l2.h"
#include "l3.h"
#include "mirror.h"
#include "sim_switch.h"
#include "vlan.h"

#include <iterator>

using namespace sim;

namespace {

template <bool L2Settings::*setting>
int get_l2(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = l2_of(sw).settings.*setting; });
}

template <bool L2Settings::*setting>
int set_l2(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) { l2_of(sw).settings.*setting = value != 0; });
}

template <bool L3Settings::*setting>
int get_l3(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = l3_of(sw).settings.*setting; });
}

template <bool L3Settings::*setting>
int set_l3(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) {
        l3_of(sw).settings.*setting = value != 0;
        l3_of(sw).change_addresses();
    });
}

template <bool L3Settings::*setting>
constexpr Tie l3_tie(int control)
{
    return {control, get_l3<setting>, set_l3<setting>};
}

int get_new_state(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = groups_of(sw).state_of_new; });
}

int set_new_state(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (!StgTable::valid_state(value)) {
            return BCM_E_PARAM;
        }
        groups_of(sw).state_of_new = value;
        return BCM_E_NONE;
    });
}

/// What becomes of samples of one direction.
template <Sampling MirrorState::*samples, bool Sampling::*setting>
constexpr Tie sampling_tie(int control)
{
    return {control,
            [](int unit, int, int *value) {
                return begin(unit, given(value)).then([&](Switch &sw) {
                    *value = mirrors_of(sw).*samples.*setting;
                });
            },
            [](int unit, int, int value) {
                return begin(unit).then([&](Switch &sw) { mirrors_of(sw).*samples.*setting = value != 0; });
            }};
}

template <Sampling MirrorState::*samples>
constexpr Tie seed_tie(int control)
{
    return {control,
            [](int unit, int, int *value) {
                return begin(unit, given(value)).then([&](Switch &sw) {
                    *value = (mirrors_of(sw).*samples).seed();
                });
            },
            [](int unit, int, int value) {
                return begin(unit).then([&](Switch &sw) { (mirrors_of(sw).*samples).sow(value); });
            }};
}

int get_sample_length(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) {
        *value = static_cast<int>(mirrors_of(sw).samples_in.bytes);
    });
}

int set_sample_length(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (value < 0) {
            return BCM_E_PARAM;
        }
        MirrorState &mirrors = mirrors_of(sw);
        mirrors.samples_in.bytes = mirrors.samples_out.bytes = static_cast<std::size_t>(value);
        return BCM_E_NONE;
    });
}

constexpr int scan_interval_at_first = 1000000;  // microseconds

int get_scan(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = chip_of(sw).scan_interval() != 0; });
}

int set_scan(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) {
        Chip &chip = chip_of(sw);
        if ((chip.scan_interval() != 0) != (value != 0)) {
            chip.scan_memories_every(value != 0 ? scan_interval_at_first : 0);
        }
    });
}

int get_scan_interval(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) { *value = chip_of(sw).scan_interval(); });
}

/// What is set turns scanning on, as its interval; 0 turns it off.
int set_scan_interval(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) -> int {
        if (value < 0) {
            return BCM_E_PARAM;
        }
        chip_of(sw).scan_memories_every(value);
        return BCM_E_NONE;
    });
}

/// Copies of all of these protocols to the CPU; on if it gets those of each.
template <Protocols protocols>
int get_copies(int unit, int, int *value)
{
    return begin(unit, given(value)).then([&](Switch &sw) {
        *value = (l2_of(sw).settings.cpu_protocols & protocols) == protocols;
    });
}

template <Protocols protocols>
int set_copies(int unit, int, int value)
{
    return begin(unit).then([&](Switch &sw) {
        Protocols &all = l2_of(sw).settings.cpu_protocols;
        all = value != 0 ? all | protocols : all & ~protocols;
    });
}

template <Protocols protocols>
constexpr Tie copies_tie(int control)
{
    return {control, get_copies<protocols>, set_copies<protocols>};
}

constexpr Protocols nd = set_of(Protocol::router_solicit, Protocol::router_advert, Protocol::neighbor_solicit,
                                Protocol::neighbor_advert, Protocol::icmp_redirect);
constexpr Protocols igmp_members = set_of(Protocol::igmp_report, Protocol::igmp_leave);
constexpr Protocols mld_members = set_of(Protocol::mld_report, Protocol::mld_done);

constexpr Tie ties[] = {
    copies_tie<set_of(Protocol::arp_request)>(bcmSwitchArpRequestToCpu),
    copies_tie<set_of(Protocol::arp_reply)>(bcmSwitchArpReplyToCpu),
    copies_tie<nd>(bcmSwitchNdPktToCpu),
    copies_tie<set_of(Protocol::dhcp)>(bcmSwitchDhcpPktToCpu),
    copies_tie<set_of(Protocol::dhcp6)>(bcmSwitchDhcp6PktToCpu),
    copies_tie<igmp_members | set_of(Protocol::igmp_query)>(bcmSwitchIgmpPktToCpu),
    copies_tie<set_of(Protocol::igmp_query)>(bcmSwitchIgmpQueryToCpu),
    copies_tie<igmp_members>(bcmSwitchIgmpReportLeaveToCpu),
    copies_tie<mld_members | set_of(Protocol::mld_query)>(bcmSwitchMldPktToCpu),
    copies_tie<set_of(Protocol::mld_query)>(bcmSwitchMldQueryToCpu),
    copies_tie<mld_members>(bcmSwitchMldReportDoneToCpu),
    copies_tie<set_of(Protocol::pim)>(bcmSwitchPimPktToCpu),
    copies_tie<set_of(Protocol::rip)>(bcmSwitchRipPktToCpu),
    copies_tie<set_of(Protocol::ospf)>(bcmSwitchOspfPktToCpu),
    copies_tie<set_of(Protocol::bgp)>(bcmSwitchBgpPktToCpu),
    copies_tie<set_of(Protocol::vrrp)>(bcmSwitchVrrpPktToCpu),
    {bcmSwitchUnknownUcastToCpu, get_l2<&L2Settings::unknown_unicast_to_cpu>,
     set_l2<&L2Settings::unknown_unicast_to_cpu>},
    {bcmSwitchUnknownMcastToCpu, get_l2<&L2Settings::unknown_multicast_to_cpu>,
     set_l2<&L2Settings::unknown_multicast_to_cpu>},
    {bcmSwitchL2LearnEnable, get_l2<&L2Settings::learns>, set_l2<&L2Settings::learns>},
    {bcmSwitchL2AgeEnable, get_l2<&L2Settings::ages>, set_l2<&L2Settings::ages>},
    {bcmSwitchStpStateDefault, get_new_state, set_new_state},
    l3_tie<&L3Settings::routes>(bcmSwitchL3RoutingEnable),
    l3_tie<&L3Settings::header_errors_to_cpu>(bcmSwitchL3HeaderErrorToCpu),
    l3_tie<&L3Settings::unknown_to_cpu>(bcmSwitchUnknownL3DestToCpu),
    l3_tie<&L3Settings::expired_to_cpu>(bcmSwitchL3UcTtlErrToCpu),
    l3_tie<&L3Settings::too_long_to_cpu>(bcmSwitchL3UcMtuFailToCpu),
    l3_tie<&L3Settings::unexpected_sources_to_cpu>(bcmSwitchL3UrpfFailToCpu),
    l3_tie<&L3Settings::null_routes_to_cpu>(bcmSwitchL3NullRouteToCpu),
    seed_tie<&MirrorState::samples_in>(bcmSwitchSampleIngressRandomSeed),
    seed_tie<&MirrorState::samples_out>(bcmSwitchSampleEgressRandomSeed),
    sampling_tie<&MirrorState::samples_in, &Sampling::to_mirrors>(bcmSwitchSampleIngressMirror),
    sampling_tie<&MirrorState::samples_out, &Sampling::to_mirrors>(bcmSwitchSampleEgressMirror),
    sampling_tie<&MirrorState::samples_in, &Sampling::to_cpu>(bcmSwitchSampleIngressToCpu),
    sampling_tie<&MirrorState::samples_out, &Sampling::to_cpu>(bcmSwitchSampleEgressToCpu),
    {bcmSwitchSampleHeaderLength, get_sample_length, set_sample_length},
    // Which packets are samples is drawn, whatever they and their queues are.
    {bcmSwitchSampleHashBased, nullptr, nullptr},
    {bcmSwitchSampleLossyOnly, nullptr, nullptr},
    {bcmSwitchMemScanEnable, get_scan, set_scan},
    {bcmSwitchMemScanInterval, get_scan_interval, set_scan_interval},
};
// The last of the enumeration, which does not say how many there are.
constexpr int count = bcmSwitchHashMulticastTable + 1;
constexpr Controls controls = {{"bcm_switch_control", "switch"}, count, std::begin(ties), std::end(ties)};

}  // namespace

extern "C" {

int sim_bcm_switch_control_set(int unit, bcm_switch_control_t type, int arg)
{
    return controls.set(unit, 0, type, arg, {rules::key(type), rules::given(arg)});
}

int sim_bcm_switch_control_get(int unit, bcm_switch_control_t type, int *arg)
{
    return controls.get(unit, 0, type, arg, {rules::key(type), rules::result_at(arg, sizeof *arg)});
}

}  // extern "C"
