/// Settings of a port together, each by the function that gets or sets it alone.
#include "begin.h"
#include "port.h"
#include "sim_port.h"
#include "sim_rate.h"

#include <algorithm>
#include <iterator>

using namespace sim;

namespace {

using Info = bcm_port_info_t;
using Getter = int (*)(int unit, bcm_port_t port, Info &info);
using Setter = int (*)(int unit, bcm_port_t port, const Info &info);

/// The functions for a member that a function of its own gets or sets.
template <auto function, auto member>
int get(int unit, bcm_port_t port, Info &info)
{
    return function(unit, port, &(info.*member));
}

template <auto function, auto member>
int set(int unit, bcm_port_t port, const Info &info)
{
    return function(unit, port, info.*member);
}

/// Speed and duplex are autonegotiation's affair if that is to be on.
template <auto function, auto member>
int set_unless_negotiated(int unit, bcm_port_t port, const Info &info)
{
    const bool negotiated = info.action_mask & BCM_PORT_ATTR_AUTONEG_MASK && info.autoneg;
    return negotiated ? static_cast<int>(BCM_E_NONE) : function(unit, port, info.*member);
}

int get_link_scan(int unit, bcm_port_t port, Info &info)
{
    const int rc = sim_bcm_port_linkscan_get(unit, port, &info.linkscan);
    return rc == BCM_E_INIT ? static_cast<int>(BCM_E_UNAVAIL) : rc;
}

int get_pause_tx(int unit, bcm_port_t port, Info &info)
{
    int rx;
    return sim_bcm_port_pause_get(unit, port, &info.pause_tx, &rx);
}

int get_pause_rx(int unit, bcm_port_t port, Info &info)
{
    int tx;
    return sim_bcm_port_pause_get(unit, port, &tx, &info.pause_rx);
}

int set_pause_tx(int unit, bcm_port_t port, const Info &info)
{
    int tx, rx;
    const int rc = sim_bcm_port_pause_get(unit, port, &tx, &rx);
    return rc == BCM_E_NONE ? sim_bcm_port_pause_set(unit, port, info.pause_tx, rx) : rc;
}

int set_pause_rx(int unit, bcm_port_t port, const Info &info)
{
    int tx, rx;
    const int rc = sim_bcm_port_pause_get(unit, port, &tx, &rx);
    return rc == BCM_E_NONE ? sim_bcm_port_pause_set(unit, port, tx, info.pause_rx) : rc;
}

int get_pause_address(int unit, bcm_port_t port, Info &info)
{
    return sim_bcm_port_pause_addr_get(unit, port, info.pause_mac);
}

int set_pause_address(int unit, bcm_port_t port, const Info &info)
{
    bcm_mac_t address;
    std::copy(std::begin(info.pause_mac), std::end(info.pause_mac), address);
    return sim_bcm_port_pause_addr_set(unit, port, address);
}

int get_local_advert(int unit, bcm_port_t port, Info &info)
{
    const int rc = sim_bcm_port_advert_get(unit, port, &info.local_advert);
    return rc == BCM_E_NONE ? sim_bcm_port_ability_advert_get(unit, port, &info.local_ability) : rc;
}

int get_remote_advert(int unit, bcm_port_t port, Info &info)
{
    const int rc = sim_bcm_port_advert_remote_get(unit, port, &info.remote_advert);
    info.remote_advert_valid = rc == BCM_E_NONE && info.remote_advert != 0;
    return rc == BCM_E_NONE ? sim_bcm_port_ability_remote_get(unit, port, &info.remote_ability) : rc;
}

/// The limit of one kind of packets, and whether it is on.
template <auto getter, int Info::*limit, int Info::*is_on>
int get_rate(int unit, bcm_port_t port, Info &info)
{
    uint32 flags;
    const int rc = getter(unit, port, &(info.*limit), &flags);
    info.*is_on = rc == BCM_E_NONE && flags & BCM_RATE_ENABLE;
    return rc;
}

template <auto setter, int Info::*limit, int Info::*is_on>
int set_rate(int unit, bcm_port_t port, const Info &info)
{
    return setter(unit, port, info.*limit, info.*is_on ? BCM_RATE_ENABLE : 0);
}

/// One bit of action_mask or action_mask2. A null set: it can only be read.
struct Attribute {
    uint32 mask, mask2;
    Getter get;
    Setter set;

    bool is_in(const Info &info) const { return info.action_mask & mask || info.action_mask2 & mask2; }
};

// In the order in which they are set.
constexpr Attribute attributes[] = {
    {BCM_PORT_ATTR_ENABLE_MASK, 0, get<sim_bcm_port_enable_get, &Info::enable>,
     set<sim_bcm_port_enable_set, &Info::enable>},
    {BCM_PORT_ATTR_LINKSTAT_MASK, 0, get<sim_bcm_port_link_status_get, &Info::linkstatus>, nullptr},
    {BCM_PORT_ATTR_SPEED_MAX_MASK, 0, get<sim_bcm_port_speed_max, &Info::speed_max>, nullptr},
    {BCM_PORT_ATTR_SPEED_MASK, 0, get<sim_bcm_port_speed_get, &Info::speed>,
     set_unless_negotiated<sim_bcm_port_speed_set, &Info::speed>},
    {BCM_PORT_ATTR_DUPLEX_MASK, 0, get<sim_bcm_port_duplex_get, &Info::duplex>,
     set_unless_negotiated<sim_bcm_port_duplex_set, &Info::duplex>},
    {BCM_PORT_ATTR_LOCAL_ADVERT_MASK, 0, get_local_advert, set<sim_bcm_port_advert_set, &Info::local_advert>},
    {BCM_PORT_ATTR_AUTONEG_MASK, 0, get<sim_bcm_port_autoneg_get, &Info::autoneg>,
     set<sim_bcm_port_autoneg_set, &Info::autoneg>},
    {BCM_PORT_ATTR_REMOTE_ADVERT_MASK, 0, get_remote_advert, nullptr},
    {BCM_PORT_ATTR_ABILITY_MASK, 0, get<sim_bcm_port_ability_get, &Info::ability>, nullptr},
    {0, BCM_PORT_ATTR2_PORT_ABILITY_MASK, get<sim_bcm_port_ability_local_get, &Info::port_ability>, nullptr},
    {BCM_PORT_ATTR_INTERFACE_MASK, 0, get<sim_bcm_port_interface_get, &Info::interface>,
     set<sim_bcm_port_interface_set, &Info::interface>},
    {BCM_PORT_ATTR_PHY_MASTER_MASK, 0, get<sim_bcm_port_master_get, &Info::phy_master>,
     set<sim_bcm_port_master_set, &Info::phy_master>},
    {BCM_PORT_ATTR_MDIX_MASK, 0, get<sim_bcm_port_mdix_get, &Info::mdix>,
     set<sim_bcm_port_mdix_set, &Info::mdix>},
    {BCM_PORT_ATTR_MDIX_STATUS_MASK, 0, get<sim_bcm_port_mdix_status_get, &Info::mdix_status>, nullptr},
    {BCM_PORT_ATTR_MEDIUM_MASK, 0, get<sim_bcm_port_medium_get, &Info::medium>, nullptr},
    {BCM_PORT_ATTR_LOOPBACK_MASK, 0, get<sim_bcm_port_loopback_get, &Info::loopback>,
     set<sim_bcm_port_loopback_set, &Info::loopback>},
    {0, BCM_PORT_ATTR2_FAULT_MASK, get<sim_bcm_port_fault_get, &Info::fault>, nullptr},
    {BCM_PORT_ATTR_LINKSCAN_MASK, 0, get_link_scan, set<sim_bcm_port_linkscan_set, &Info::linkscan>},

    {BCM_PORT_ATTR_PAUSE_TX_MASK, 0, get_pause_tx, set_pause_tx},
    {BCM_PORT_ATTR_PAUSE_RX_MASK, 0, get_pause_rx, set_pause_rx},
    {BCM_PORT_ATTR_PAUSE_MAC_MASK, 0, get_pause_address, set_pause_address},
    {BCM_PORT_ATTR_FRAME_MAX_MASK, 0, get<sim_bcm_port_frame_max_get, &Info::frame_max>,
     set<sim_bcm_port_frame_max_set, &Info::frame_max>},
    {BCM_PORT_ATTR_ENCAP_MASK, 0, get<sim_bcm_port_encap_get, &Info::encap_mode>,
     set<sim_bcm_port_encap_set, &Info::encap_mode>},

    {BCM_PORT_ATTR_LEARN_MASK, 0, get<sim_bcm_port_learn_get, &Info::learn>,
     set<sim_bcm_port_learn_set, &Info::learn>},
    {BCM_PORT_ATTR_DISCARD_MASK, 0, get<sim_bcm_port_discard_get, &Info::discard>,
     set<sim_bcm_port_discard_set, &Info::discard>},
    {BCM_PORT_ATTR_VLANFILTER_MASK, 0, get<sim_bcm_port_vlan_member_get, &Info::vlanfilter>,
     set<sim_bcm_port_vlan_member_set, &Info::vlanfilter>},
    {BCM_PORT_ATTR_UNTAG_PRI_MASK, 0, get<sim_bcm_port_untagged_priority_get, &Info::untagged_priority>,
     set<sim_bcm_port_untagged_priority_set, &Info::untagged_priority>},
    {BCM_PORT_ATTR_UNTAG_VLAN_MASK, 0, get<sim_bcm_port_untagged_vlan_get, &Info::untagged_vlan>,
     set<sim_bcm_port_untagged_vlan_set, &Info::untagged_vlan>},
    {BCM_PORT_ATTR_STP_STATE_MASK, 0, get<sim_bcm_port_stp_get, &Info::stp_state>,
     set<sim_bcm_port_stp_set, &Info::stp_state>},
    {BCM_PORT_ATTR_PFM_MASK, 0, get<sim_bcm_port_pfm_get, &Info::pfm>, set<sim_bcm_port_pfm_set, &Info::pfm>},
    {BCM_PORT_ATTR_RATE_MCAST_MASK, 0,
     get_rate<sim_bcm_rate_mcast_get, &Info::mcast_limit, &Info::mcast_limit_enable>,
     set_rate<sim_bcm_rate_mcast_set, &Info::mcast_limit, &Info::mcast_limit_enable>},
    {BCM_PORT_ATTR_RATE_BCAST_MASK, 0,
     get_rate<sim_bcm_rate_bcast_get, &Info::bcast_limit, &Info::bcast_limit_enable>,
     set_rate<sim_bcm_rate_bcast_set, &Info::bcast_limit, &Info::bcast_limit_enable>},
    {BCM_PORT_ATTR_RATE_DLFBC_MASK, 0,
     get_rate<sim_bcm_rate_dlf_get, &Info::dlfbc_limit, &Info::dlfbc_limit_enable>,
     set_rate<sim_bcm_rate_dlf_set, &Info::dlfbc_limit, &Info::dlfbc_limit_enable>},
};

constexpr Info all_attributes()
{
    Info info = {};
    for (const Attribute &attribute : attributes) {
        info.action_mask |= attribute.mask;
        info.action_mask2 |= attribute.mask2;
    }
    return info;
}

/// What becomes of attributes that the port has not.
enum class Absent { is_error, is_left_out };

bool is_known(const Info &info)
{
    constexpr Info all = all_attributes();
    return !(info.action_mask & ~all.action_mask) && !(info.action_mask2 & ~all.action_mask2);
}

/// Reads the attributes of both masks, and takes those left out from them.
int read(int unit, bcm_port_t port, Info &info, Absent absent)
{
    for (const Attribute &attribute : attributes) {
        if (!attribute.is_in(info)) {
            continue;
        }
        const int rc = attribute.get(unit, port, info);
        if (rc == BCM_E_UNAVAIL && absent == Absent::is_left_out) {
            info.action_mask &= ~attribute.mask;
            info.action_mask2 &= ~attribute.mask2;
        } else if (rc != BCM_E_NONE) {
            return rc;
        }
    }
    return BCM_E_NONE;
}

int write(int unit, bcm_port_t port, const Info &info, Absent absent)
{
    for (const Attribute &attribute : attributes) {
        if (!attribute.is_in(info) || attribute.set == nullptr) {
            continue;
        }
        const int rc = attribute.set(unit, port, info);
        if (rc != BCM_E_NONE && (rc != BCM_E_UNAVAIL || absent == Absent::is_error)) {
            return rc;
        }
    }
    return BCM_E_NONE;
}

}  // namespace

extern "C" {

void sim_bcm_port_info_t_init(bcm_port_info_t *info)
{
    if (info != nullptr) {
        *info = {};
    }
}

int sim_bcm_port_info_get(int unit, bcm_port_t port, bcm_port_info_t *info)
{
    return begin(unit, given(info), own_port(port)).then([&](int own) {
        Info found = all_attributes();
        const int rc = read(unit, own, found, Absent::is_left_out);
        if (rc == BCM_E_NONE) {
            *info = found;
        }
        return rc;
    });
}

int sim_bcm_port_info_set(int unit, bcm_port_t port, bcm_port_info_t *info)
{
    return begin(unit, given(info), own_port(port)).then([&](int own) {
        Info all = *info;
        all.action_mask = all_attributes().action_mask;
        all.action_mask2 = all_attributes().action_mask2;
        return write(unit, own, all, Absent::is_left_out);
    });
}

int sim_bcm_port_selective_get(int unit, bcm_port_t port, bcm_port_info_t *info)
{
    return begin(unit, given(info), own_port(port)).then([&](int own) {
        Info found = *info;
        if (!is_known(found)) {
            return static_cast<int>(BCM_E_PARAM);
        }
        const int rc = read(unit, own, found, Absent::is_error);
        if (rc == BCM_E_NONE) {
            *info = found;
        }
        return rc;
    });
}

int sim_bcm_port_selective_set(int unit, bcm_port_t port, bcm_port_info_t *info)
{
    return begin(unit, given(info), own_port(port)).then([&](int own) {
        const Info wanted = *info;
        return is_known(wanted) ? write(unit, own, wanted, Absent::is_error) : static_cast<int>(BCM_E_PARAM);
    });
}

int sim_bcm_port_info_save(int unit, bcm_port_t port, bcm_port_info_t *info)
{
    return sim_bcm_port_info_get(unit, port, info);
}

int sim_bcm_port_info_restore(int unit, bcm_port_t port, bcm_port_info_t *info)
{
    return begin(unit, given(info), own_port(port)).then([&](int own) {
        const Info saved = *info;
        return is_known(saved) ? write(unit, own, saved, Absent::is_left_out) : static_cast<int>(BCM_E_PARAM);
    });
}

}  // extern "C"
