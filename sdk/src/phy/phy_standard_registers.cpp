#include "phy_standard_registers.h"

#include "phy_controls.h"
#include "phy_settings.h"
#include "phy_tables.h"

#include <soc/phy_access.h>
#include <soc/phy_values.h>

#include <algorithm>
#include <iterator>

namespace sim {

namespace {

// Bits of the control registers; speed selection stands in rates[].
constexpr unsigned do_reset = 1 << 15, loop = 1 << 14, negotiate = 1 << 12, power_down = 1 << 11,
                   restart = 1 << 9, full_duplex = 1 << 8, pma_loop = 1 << 0;
constexpr unsigned speed_selection = 1 << 13 | 1 << 6 | 0xf << 2;

// Bits of the status registers.
constexpr unsigned extended_status = 1 << 8, negotiated = 1 << 5, fault = 1 << 4, can_negotiate = 1 << 3,
                   link_status = 1 << 2, extended_registers = 1 << 0;
constexpr unsigned pma_fault = 1 << 7, can_power_down = 1 << 1, partner_negotiates = 1 << 0;
constexpr unsigned pcs_receives = 1 << 12, pcs_block_lock = 1 << 0;

// Bits of the pages by which PHYs negotiate.
constexpr unsigned ethernet_page = 1, acknowledged = 1 << 14, symmetric_pause = 1 << 10,
                   asymmetric_pause = 1 << 11;
constexpr unsigned manual_clock = 1 << 12, clock_master = 1 << 11;
constexpr unsigned local_receiver = 1 << 13, remote_receiver = 1 << 12;

/// A mode, and its bit in some register.
struct ModeBit {
    soc_port_mode_t mode;
    unsigned bit;
};

constexpr ModeBit ability_bits[] = {{_SHR_PM_100MB_FD, 1 << 14},
                                    {_SHR_PM_100MB_HD, 1 << 13},
                                    {_SHR_PM_10MB_FD, 1 << 12},
                                    {_SHR_PM_10MB_HD, 1 << 11}};
constexpr ModeBit base_bits[] = {{_SHR_PM_10MB_HD, 1 << 5},
                                 {_SHR_PM_10MB_FD, 1 << 6},
                                 {_SHR_PM_100MB_HD, 1 << 7},
                                 {_SHR_PM_100MB_FD, 1 << 8}};
constexpr ModeBit gigabit_bits[] = {{_SHR_PM_1000MB_HD, 1 << 8}, {_SHR_PM_1000MB_FD, 1 << 9}};
constexpr ModeBit gigabit_partner_bits[] = {{_SHR_PM_1000MB_HD, 1 << 10}, {_SHR_PM_1000MB_FD, 1 << 11}};
constexpr ModeBit gigabit_ability_bits[] = {{_SHR_PM_1000MB_HD, 1 << 12}, {_SHR_PM_1000MB_FD, 1 << 13}};
constexpr ModeBit ten_gigabit_bits[] = {{_SHR_PM_10GB_FD, 1 << 12}};
constexpr ModeBit ten_gigabit_partner_bits[] = {{_SHR_PM_10GB_FD, 1 << 11}};
constexpr ModeBit technology_bits[] = {{_SHR_PM_1000MB_FD, 1 << 5},
                                       {_SHR_PM_10GB_FD, 1 << 7},
                                       {_SHR_PM_40GB_FD, 1 << 9},
                                       {_SHR_PM_100GB_FD, 1 << 13}};

template <std::size_t Size>
unsigned bits_of(const ModeBit (&table)[Size], soc_port_mode_t modes)
{
    unsigned bits = 0;
    for (const ModeBit &one : table) {
        bits |= modes & one.mode ? one.bit : 0;
    }
    return bits;
}

unsigned pause_bits(soc_port_mode_t modes)
{
    const bool sends = modes & _SHR_PM_PAUSE_TX, obeys = modes & _SHR_PM_PAUSE_RX;
    return (obeys ? symmetric_pause : 0) | (sends != obeys ? asymmetric_pause : 0);
}

soc_port_mode_t pause_of(unsigned bits)
{
    const bool obeys = bits & symmetric_pause;
    const bool sends = obeys != static_cast<bool>(bits & asymmetric_pause);
    return (sends ? _SHR_PM_PAUSE_TX : 0u) | (obeys ? _SHR_PM_PAUSE_RX : 0u);
}

soc_phy_config_t &settings_of(const PhyPort &port, Phy &phy)
{
    return phy.settings(port.cable);
}

/// Advertises those of the table's modes whose bits are set, and of them what the PHY can do.
template <std::size_t Size>
void advertise(PhyPort &port, Phy &phy, const ModeBit (&table)[Size], unsigned bits, soc_port_mode_t more,
               soc_port_mode_t mask)
{
    for (const ModeBit &one : table) {
        mask |= one.mode;
        more |= bits & one.bit ? one.mode : 0;
    }
    const soc_port_mode_t before = settings_of(port, phy).autoneg_advert;
    set_advert(port, phy, ((before & ~mask) | more) & phy.modes(port.cable));
}

/// The link, shown as lost once if it was lost since the last read.
bool latched_link(PhyPort &port, Phy &phy)
{
    const bool up = link_of(port, phy).up();
    const bool shown = up && !phy.link_lost;
    phy.link_lost = !up;
    return shown;
}

unsigned selection_of(PhyPort &port, Phy &phy)
{
    const Rate *rate = rate_of(settings_of(port, phy).force_speed);
    return rate == nullptr ? 0 : rate->selection;
}

void select_speed(PhyPort &port, Phy &phy, unsigned value)
{
    for (const Rate &rate : rates) {
        if (rate.selection == (value & speed_selection)) {
            set_speed(port, phy, rate.speed);
        }
    }
}

void switch_negotiation(PhyPort &port, Phy &phy, unsigned value)
{
    const int on = (value & negotiate) != 0;
    if (on != settings_of(port, phy).autoneg_enable) {
        set_autonegotiation(port, phy, on);
    }
    phy.link_lost = phy.link_lost || (on && value & restart);
}

/// False if the PHY has been reset instead.
bool begin_control(Phy &phy, unsigned value)
{
    if (value & do_reset) {
        phy.reset();
        return false;
    }
    phy.enabled = !(value & power_down);
    return true;
}

uint16 read_control(PhyPort &port, Phy &phy)
{
    const soc_phy_config_t &settings = settings_of(port, phy);
    return static_cast<uint16>((phy.line.loopback ? loop : 0) | (settings.autoneg_enable ? negotiate : 0)
                               | (phy.enabled ? 0 : power_down) | (settings.force_duplex ? full_duplex : 0)
                               | selection_of(port, phy));
}

void write_control(PhyPort &port, Phy &phy, uint16 value)
{
    if (begin_control(phy, value)) {
        phy.line.loopback = value & loop;
        select_speed(port, phy, value);
        set_duplex(port, phy, (value & full_duplex) != 0);
        switch_negotiation(port, phy, value);
    }
}

uint16 read_status(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>(bits_of(ability_bits, phy.modes(port.cable)) | extended_status
                               | (has_negotiated(port, phy) ? negotiated : 0)
                               | (has_fault(port, phy) ? fault : 0) | can_negotiate
                               | (latched_link(port, phy) ? link_status : 0) | extended_registers);
}

uint16 read_id0(PhyPort &, Phy &phy)
{
    return identifier_of(phy.kind).first;
}

uint16 read_id1(PhyPort &, Phy &phy)
{
    return identifier_of(phy.kind).second;
}

uint16 read_advert(PhyPort &port, Phy &phy)
{
    const soc_port_mode_t modes = settings_of(port, phy).autoneg_advert;
    return static_cast<uint16>(ethernet_page | bits_of(base_bits, modes) | pause_bits(modes));
}

void write_advert(PhyPort &port, Phy &phy, uint16 value)
{
    advertise(port, phy, base_bits, value, pause_of(value), pause_modes);
}

uint16 read_partner(PhyPort &port, Phy &phy)
{
    const soc_port_mode_t modes = partner_modes(port, phy);
    return static_cast<uint16>(
        modes == 0 ? 0 : ethernet_page | acknowledged | bits_of(base_bits, modes) | pause_bits(modes));
}

uint16 read_expansion(PhyPort &port, Phy &phy)
{
    return has_negotiated(port, phy) ? partner_negotiates : 0;
}

uint16 read_gigabit_control(PhyPort &port, Phy &phy)
{
    const soc_phy_config_t &settings = settings_of(port, phy);
    const bool manual = settings.master == SOC_PHY_MS_MASTER || settings.master == SOC_PHY_MS_SLAVE;
    return static_cast<uint16>(bits_of(gigabit_bits, settings.autoneg_advert) | (manual ? manual_clock : 0)
                               | (settings.master == SOC_PHY_MS_MASTER ? clock_master : 0));
}

void write_gigabit_control(PhyPort &port, Phy &phy, uint16 value)
{
    advertise(port, phy, gigabit_bits, value, 0, 0);
    const int forced = value & clock_master ? SOC_PHY_MS_MASTER : SOC_PHY_MS_SLAVE;
    settings_of(port, phy).master = value & manual_clock ? forced : static_cast<int>(SOC_PHY_MS_AUTO);
}

uint16 read_gigabit_status(PhyPort &port, Phy &phy)
{
    const bool receives = link_of(port, phy).up();
    return static_cast<uint16>(bits_of(gigabit_partner_bits, partner_modes(port, phy))
                               | (receives ? local_receiver | remote_receiver : 0));
}

uint16 read_extended_status(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>(bits_of(gigabit_ability_bits, phy.modes(port.cable)));
}

uint16 read_pma_control(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>((phy.line.loopback ? pma_loop : 0) | (phy.enabled ? 0 : power_down)
                               | selection_of(port, phy));
}

void write_pma_control(PhyPort &port, Phy &phy, uint16 value)
{
    if (begin_control(phy, value)) {
        phy.line.loopback = value & pma_loop;
        select_speed(port, phy, value);
    }
}

uint16 read_device_status(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>((has_fault(port, phy) ? pma_fault : 0)
                               | (latched_link(port, phy) ? link_status : 0) | can_power_down);
}

uint16 read_pcs_control(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>((phy.line.loopback ? loop : 0) | (phy.enabled ? 0 : power_down)
                               | selection_of(port, phy));
}

void write_pcs_control(PhyPort &port, Phy &phy, uint16 value)
{
    if (begin_control(phy, value)) {
        phy.line.loopback = value & loop;
        select_speed(port, phy, value);
    }
}

uint16 read_pcs_receiver(PhyPort &port, Phy &phy)
{
    return link_of(port, phy).up() ? pcs_receives | pcs_block_lock : 0;
}

uint16 read_system_control(PhyPort &, Phy &phy)
{
    return phy.system.loopback ? loop : 0;
}

void write_system_control(PhyPort &, Phy &phy, uint16 value)
{
    phy.system.loopback = value & loop;
}

uint16 read_negotiation_control(PhyPort &port, Phy &phy)
{
    return settings_of(port, phy).autoneg_enable ? negotiate : 0;
}

void write_negotiation_control(PhyPort &port, Phy &phy, uint16 value)
{
    if (value & do_reset) {
        phy.reset();
    } else {
        switch_negotiation(port, phy, value);
    }
}

uint16 read_negotiation_status(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>((has_negotiated(port, phy) ? negotiated | partner_negotiates : 0)
                               | can_negotiate | (latched_link(port, phy) ? link_status : 0));
}

uint16 read_technologies(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>(bits_of(technology_bits, settings_of(port, phy).autoneg_advert));
}

void write_technologies(PhyPort &port, Phy &phy, uint16 value)
{
    advertise(port, phy, technology_bits, value, 0, 0);
}

uint16 read_partner_technologies(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>(bits_of(technology_bits, partner_modes(port, phy)));
}

uint16 read_ten_gigabit_control(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>(bits_of(ten_gigabit_bits, settings_of(port, phy).autoneg_advert));
}

void write_ten_gigabit_control(PhyPort &port, Phy &phy, uint16 value)
{
    advertise(port, phy, ten_gigabit_bits, value, 0, 0);
}

uint16 read_ten_gigabit_status(PhyPort &port, Phy &phy)
{
    return static_cast<uint16>(bits_of(ten_gigabit_partner_bits, partner_modes(port, phy)));
}

constexpr int clause22 = 0;

constexpr RegisterView views[] = {
    {clause22, SOC_PHY_REGISTER_CONTROL, read_control, write_control},
    {clause22, SOC_PHY_REGISTER_STATUS, read_status, nullptr},
    {clause22, SOC_PHY_REGISTER_ID0, read_id0, nullptr},
    {clause22, SOC_PHY_REGISTER_ID1, read_id1, nullptr},
    {clause22, SOC_PHY_REGISTER_AN_ADVERT, read_advert, write_advert},
    {clause22, SOC_PHY_REGISTER_AN_PARTNER, read_partner, nullptr},
    {clause22, SOC_PHY_REGISTER_AN_EXPANSION, read_expansion, nullptr},
    {clause22, SOC_PHY_REGISTER_GIGABIT_CONTROL, read_gigabit_control, write_gigabit_control},
    {clause22, SOC_PHY_REGISTER_GIGABIT_STATUS, read_gigabit_status, nullptr},
    {clause22, SOC_PHY_REGISTER_EXTENDED_STATUS, read_extended_status, nullptr},

    {SOC_PHY_DEVICE_PMA_PMD, 0, read_pma_control, write_pma_control},
    {SOC_PHY_DEVICE_PMA_PMD, 1, read_device_status, nullptr},
    {SOC_PHY_DEVICE_PMA_PMD, 2, read_id0, nullptr},
    {SOC_PHY_DEVICE_PMA_PMD, 3, read_id1, nullptr},

    {SOC_PHY_DEVICE_PCS, 0, read_pcs_control, write_pcs_control},
    {SOC_PHY_DEVICE_PCS, 1, read_device_status, nullptr},
    {SOC_PHY_DEVICE_PCS, 2, read_id0, nullptr},
    {SOC_PHY_DEVICE_PCS, 3, read_id1, nullptr},
    {SOC_PHY_DEVICE_PCS, 32, read_pcs_receiver, nullptr},

    {SOC_PHY_DEVICE_PHY_XS, 0, read_system_control, write_system_control},
    {SOC_PHY_DEVICE_PHY_XS, 2, read_id0, nullptr},
    {SOC_PHY_DEVICE_PHY_XS, 3, read_id1, nullptr},

    {SOC_PHY_DEVICE_AN, 0, read_negotiation_control, write_negotiation_control},
    {SOC_PHY_DEVICE_AN, 1, read_negotiation_status, nullptr},
    {SOC_PHY_DEVICE_AN, 2, read_id0, nullptr},
    {SOC_PHY_DEVICE_AN, 3, read_id1, nullptr},
    {SOC_PHY_DEVICE_AN, 16, read_advert, write_advert},
    {SOC_PHY_DEVICE_AN, 17, read_technologies, write_technologies},
    {SOC_PHY_DEVICE_AN, 19, read_partner, nullptr},
    {SOC_PHY_DEVICE_AN, 20, read_partner_technologies, nullptr},
    {SOC_PHY_DEVICE_AN, 32, read_ten_gigabit_control, write_ten_gigabit_control},
    {SOC_PHY_DEVICE_AN, 33, read_ten_gigabit_status, nullptr},
};

}  // namespace

const RegisterView *standard_register(const RegisterAddress &address)
{
    const RegisterView *found =
        std::find_if(std::begin(views), std::end(views), [&](const RegisterView &view) {
            return view.device == address.device && view.number == address.number;
        });
    return found == std::end(views) ? nullptr : found;
}

}  // namespace sim
