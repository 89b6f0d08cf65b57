/*
 * Transport: the functions by which packets of a unit are sent and received, so that higher layers can run over
 * something else than the unit's own DMA.
 */
#ifndef BCM_TRANS_H
#define BCM_TRANS_H

#include <bcm/pkt.h>
#include <bcm/rx.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* As bcm_tx_pkt_setup, bcm_tx, bcm_tx_array, bcm_tx_list and bcm_tx_pkt_l2_map. */
typedef int (*bcm_tx_pkt_setup_f)(int unit, bcm_pkt_t *tx_pkt);
typedef int (*bcm_tx_f)(int unit, bcm_pkt_t *tx_pkt, void *cookie);
typedef int (*bcm_tx_array_f)(int unit, bcm_pkt_t **pkt, int count, bcm_pkt_cb_f all_done_cb, void *cookie);
typedef int (*bcm_tx_list_f)(int unit, bcm_pkt_t *pkt, bcm_pkt_cb_f all_done_cb, void *cookie);
typedef int (*bcm_pkt_l2_map_f)(int unit, bcm_pkt_t *pkt, bcm_mac_t dest_mac, bcm_vlan_t vid);

/* As bcm_pkt_alloc, bcm_pkt_free, bcm_rx_register and bcm_rx_unregister. */
typedef int (*bcm_pkt_alloc_f)(int unit, int size, uint32 flags, bcm_pkt_t **pkt_buf);
typedef int (*bcm_pkt_free_f)(int unit, bcm_pkt_t *pkt);
typedef int (*bcm_rx_reg_f)(int unit, const char *name, bcm_rx_cb_f callback, uint8 priority, void *cookie,
                            uint32 flags);
typedef int (*bcm_rx_unreg_f)(int unit, bcm_rx_cb_f callback, uint8 priority);

typedef struct bcm_trans_ptr_s {
    char *tp_name;
    bcm_tx_pkt_setup_f tp_setup_tx;
    bcm_tx_f tp_tx;
    bcm_tx_array_f tp_tx_array;
    bcm_tx_list_f tp_tx_list;
    bcm_pkt_l2_map_f tp_l2_map;
    bcm_pkt_alloc_f tp_pkt_alloc;
    bcm_pkt_free_f tp_pkt_free;
    bcm_rx_alloc_f tp_data_alloc;
    bcm_rx_free_f tp_data_free;
    bcm_rx_reg_f tp_rx_reg;
    bcm_rx_unreg_f tp_rx_unreg;
} bcm_trans_ptr_t;

/* The transport in use, at first the unit's own: all pointers null. */
extern bcm_trans_ptr_t bcm_trans_ptr;

#ifdef __cplusplus
}
#endif

#endif
