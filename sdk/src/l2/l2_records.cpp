/// Records of layer 2 set to their initial values: all members zero but those given, whatever was in them. A
/// null pointer is left alone.
#include "sim_l2.h"
#include "sim_mcast.h"

#include <cstring>

namespace {

template <class Record>
void clear(Record *record)
{
    if (record != nullptr) {
        *record = {};
    }
}

template <class Record>
void clear_but_for(Record *record, const unsigned char *mac, bcm_vlan_t vid)
{
    if (record == nullptr) {
        return;
    }
    *record = {};
    if (mac != nullptr) {
        std::memcpy(record->mac, mac, sizeof record->mac);
    }
    record->vid = vid;
}

}  // namespace

extern "C" {

void sim_bcm_l2_addr_t_init(bcm_l2_addr_t *l2addr, bcm_mac_t mac_addr, bcm_vlan_t vid)
{
    clear_but_for(l2addr, mac_addr, vid);
}

void sim_bcm_mcast_addr_t_init(bcm_mcast_addr_t *mcaddr, bcm_mac_t mac, bcm_vlan_t vid)
{
    clear_but_for(mcaddr, mac, vid);
}

void sim_bcm_l2_addr_distribute_t_init(bcm_l2_addr_distribute_t *addr_distribute)
{
    clear(addr_distribute);
}

void sim_bcm_l2_learn_limit_t_init(bcm_l2_learn_limit_t *limit)
{
    clear(limit);
}

void sim_bcm_l2_cache_addr_t_init(bcm_l2_cache_addr_t *addr)
{
    clear(addr);
}

void sim_bcm_l2_station_t_init(bcm_l2_station_t *addr)
{
    clear(addr);
}

void sim_bcm_l2_egress_t_init(bcm_l2_egress_t *egr)
{
    clear(egr);
}

void sim_bcm_l2_mac_port_t_init(bcm_l2_mac_port_t *mac_port)
{
    clear(mac_port);
}

void sim_bcm_l2_learn_msgs_config_t_init(bcm_l2_learn_msgs_config_t *learn_msgs_config)
{
    clear(learn_msgs_config);
}

void sim_bcm_l2_ring_t_init(bcm_l2_ring_t *l2_ring)
{
    clear(l2_ring);
}

void sim_bcm_l2_auth_addr_t_init(bcm_l2_auth_addr_t *addr)
{
    clear(addr);
}

void sim_bcm_l2_gport_forward_info_t_init(bcm_l2_gport_forward_info_t *info)
{
    clear(info);
}

}  // extern "C"
