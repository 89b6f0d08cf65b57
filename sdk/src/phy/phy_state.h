/// The state of one port's PHYs: the SerDes in the chip and, on some ports, a copper PHY behind it.
#pragma once

#include "handler_list.h"
#include "phy_kind.h"

#include <soc/phy_control.h>

#include <array>
#include <map>
#include <optional>
#include <vector>

namespace sim {

struct CablePair {
    _shr_port_cable_state_t state;
    int metres;  ///< to the fault or the end
};

/// The port of some unit at the other end of a cable.
struct CableEnd {
    int unit;
    int port;
};

/// What is plugged into the port.
struct Cable {
    Cable(uint32 plugged, int length);

    /// The one that is there at the start.
    static Cable at_start(int port);

    uint32 media;  ///< bit n for _shr_port_medium_t n: several in a port with several sockets
    int metres;
    std::array<CablePair, _SHR_PORT_CABLE_PAIRS> pairs;
    std::optional<CableEnd>
        partner;  ///< without: one that is always ready and can do all that the medium allows

    /// Whether the pairs that a speed needs are whole.
    bool carries(int speed) const;
};

/// One side of a PHY: towards the line or towards the MAC.
struct PhySide {
    bool loopback = false;
    bool autonegotiation = false;  ///< of the side towards the MAC; the line's depends on the medium

    /// By lane and address, those that have been written since the reset.
    std::map<std::pair<int, uint32>, uint16> registers;
    std::map<std::pair<int, int>, uint32> controls;  ///< by lane and selector, likewise

    /// Halves of controls by lane and address: read with the other half, or written and waiting for it.
    std::map<std::pair<int, uint32>, uint16> halves_read, halves_written;
};

class Phy {
public:
    explicit Phy(const PhyKind &phy_kind);

    /// Everything but the program memory as after power-on.
    void reset();

    const PhyKind &kind;
    PhySide line, system;
    bool enabled;
    uint32 stopped;  ///< reasons why it passes no traffic
    int speed_max;
    soc_port_if_t interface;
    std::map<soc_port_medium_t, soc_phy_config_t> media;
    uint32 lane_mask;
    bool link_up = false;         ///< when it was last looked at
    uint32 link_changes = 0;      ///< since they were read
    bool link_lost;               ///< since the status register was read; the register shows it once
    std::vector<uint8> firmware;  ///< outlives a reset
    bool firmware_started = false;

    PhySide &side(bool towards_mac) { return towards_mac ? system : line; }

    /// The medium in use among those plugged in; the preferred one if none is.
    soc_port_medium_t medium(uint32 plugged) const;

    /// Settings of the medium in use.
    soc_phy_config_t &settings(const Cable &cable) { return media.at(medium(cable.media)); }
    const soc_phy_config_t &settings(const Cable &cable) const { return media.at(medium(cable.media)); }

    const MediumAbility &ability(const Cable &cable) const { return *kind.over(medium(cable.media)); }

    /// Modes that it can advertise now.
    soc_port_mode_t modes(const Cable &cable) const;

    bool can_be_forced_to(const Cable &cable, int speed) const
    {
        return speed <= speed_max && can_do(ability(cable), speed, true);
    }

    /// What the lanes in use carry together.
    int lanes_speed() const;
};

struct ResetFunction {
    soc_port_phy_reset_cb_t callback = nullptr;
    void *user_data = nullptr;
};

class PhyPort {
public:
    explicit PhyPort(int port);

    /// As it is when new, but for the cable in it. What calls back at the moment goes on.
    void restart();

    int number;
    Cable cable;
    std::optional<Phy> serdes, copper;
    bool probed, initialised;
    bool mac_loopback;   ///< the MAC hears itself
    bool was_down;       ///< since that was read
    bool reported_link;  ///< as the driver was last told
    ResetFunction own_reset, default_reset;
    bool in_reset = false;
    HandlerList<Callback<soc_port_medium_status_cb_t>> watchers;
    soc_port_medium_t reported_medium;  ///< to the watchers
    bool in_report = false;
    bool in_link_scan = false;

    /// What is in use at the socket, SOC_PHY_MEDIUM_NONE if nothing is.
    soc_port_medium_t medium_in_use() const;

    /// The one at the port's socket; only of a port that has one.
    Phy &outer() { return copper ? *copper : *serdes; }
    const Phy &outer() const { return copper ? *copper : *serdes; }

    void reset_phys();
};

}  // namespace sim
