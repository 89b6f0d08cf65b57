/// Records of layer 2 set to their initial values: all members zero, whatever was in them. A null pointer is
/// left alone.
#include "sim_l2.h"

#include <cstring>

namespace {

template <class Record>
void clear(Record *record)
{
    if (record != nullptr) {
        *record = {};
    }
}

}  // namespace

extern "C" {

void sim_bcm_l2_addr_t_init(bcm_l2_addr_t *l2addr, bcm_mac_t mac_addr, bcm_vlan_t vid)
{
    if (l2addr == nullptr) {
        return;
    }
    *l2addr = {};
    if (mac_addr != nullptr) {
        std::memcpy(l2addr->mac, mac_addr, sizeof l2addr->mac);
    }
    l2addr->vid = vid;
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
