/*
 * The list of received packets that wait for their callbacks.
 */
#ifndef BCM_RX_PKTLIST_H
#define BCM_RX_PKTLIST_H

#ifdef __cplusplus
extern "C" {
#endif

/* Packets in the list, at most. */
extern int bcm_rx_pktlist_count;

#ifdef __cplusplus
}
#endif

#endif
