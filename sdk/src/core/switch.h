/// The state of one simulated switch. It is not locked: one thread at a time may call the SDK.
#pragma once

#include "destination.h"
#include "l2_state.h"
#include "lag_members.h"
#include "linkscan.h"
#include "port_counters.h"
#include "rule_store.h"
#include "stg_table.h"
#include "trunk_table.h"
#include "vlan_table.h"

#include <bcm/port.h>

#include <array>
#include <map>

namespace sim {

constexpr int front_speed_max = 100000;  // Mbit/s
constexpr int cpu_speed_max = 10000;

constexpr int frame_max_default = 9216;  // bytes, with checksum

constexpr int multicast_lines = 8192;

struct Port {
    bool enabled = true;
    int speed_max = front_speed_max;
    int speed = front_speed_max;  // of a port without PHY
    bool pause_tx = false;
    bool pause_rx = false;
    std::array<unsigned char, 6> pause_address = {};
    bcm_vlan_t untagged_vlan = BCM_VLAN_DEFAULT;
    uint32 learn = BCM_PORT_LEARN_ARL | BCM_PORT_LEARN_FWD;
    int frame_max = frame_max_default;
    int discard = BCM_PORT_DISCARD_NONE;
    uint32 vlan_filter = 0;  // BCM_PORT_VLAN_MEMBER_*
};

struct Switch {
    explicit Switch(int unit_number);

    /// Settings of ports as they are when new.
    void reset_ports();

    int unit;
    std::array<Port, port_max + 1> ports;
    std::array<PortCounters, port_max + 1> counters;
    VlanTable vlans;
    StgTable groups;
    TrunkTable trunks;
    LagMembers lags;
    L2State l2;
    std::map<int, bcm_pbmp_t> multicast;  // sets of ports by line
    LinkScan links;
    RuleStore by_rule;
};

/// All ports but the CPU's.
bcm_pbmp_t front_ports();

/// Units are 0..unit_max - 1. Unit 0 is attached from the start.
constexpr int unit_max = 16;

/// The switch attached as that unit, or null.
Switch *attached(int unit);

/// Attaches a switch as it is when new, in place of one that was there. False if there can be no such unit.
bool attach(int unit);
/// False if none is attached.
bool detach(int unit);

/// While there is one, a switch that is detached or replaced stays in memory, with empty address tables: a
/// callback may do that to the switch whose function calls it.
class SwitchesInUse {
public:
    SwitchesInUse();
    ~SwitchesInUse();
    SwitchesInUse(const SwitchesInUse &) = delete;
    SwitchesInUse &operator=(const SwitchesInUse &) = delete;
};

}  // namespace sim
