/*
 * Sending packets from the CPU.
 *
 * A packet with a call_back, or a list with an all_done_cb, is sent in the background: the call returns at
 * once, the packet stays with the SDK until the callback. Without one the call returns when it has left.
 * BCM_E_PARAM: no packet, no data, a callback that is no function; BCM_E_MEMORY, BCM_E_RESOURCE: no room to queue it.
 */
#ifndef BCM_TX_H
#define BCM_TX_H

#include <bcm/error.h>
#include <bcm/pkt.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* flags of bcm_pkt_t beside those of bcm/pkt.h. */
typedef enum bcm_tx_flag_e {
    BCM_TX_CRC_APPEND = 0x00010000, /* the checksum is added behind the data */
    BCM_TX_CRC_REGEN = 0x00020000,  /* the checksum replaces the last four bytes */
    BCM_TX_CRC_NONE = 0x00040000,   /* the last four bytes are sent as they are */
    BCM_TX_ETHER = 0x00080000,      /* the data is an Ethernet frame, forwarded as one that has arrived */
    BCM_TX_PRIO_INT = 0x00100000,   /* prio_int counts, else it is as cos */
    BCM_TX_NO_PAD = 0x00200000,     /* do not lengthen to the shortest frame */
    BCM_TX_PURGE = 0x00400000       /* drop it at the port: for tests */
} bcm_tx_flag_t;

/* How sure the way through a tunnel between CPUs is. */
typedef enum bcm_cpu_tunnel_mode_e {
    BCM_CPU_TUNNEL_PACKET_NONE = 0,        /* not possible */
    BCM_CPU_TUNNEL_PACKET_DEFAULT,
    BCM_CPU_TUNNEL_PACKET_BEST_EFFORT,
    BCM_CPU_TUNNEL_PACKET_RELIABLE         /* acknowledged and repeated */
} bcm_cpu_tunnel_mode_t;

/* Brings a packet to a unit that another CPU controls; returns BCM_E_NONE or an error. */
typedef int (*bcm_tx_cpu_tunnel_f)(bcm_pkt_t *pkt, int dest_unit, int remote_port, uint32 flags,
                                   bcm_cpu_tunnel_mode_t mode);

int bcm_tx_init(int unit);

/* One packet; cookie goes to its call_back. */
int bcm_tx(int unit, bcm_pkt_t *tx_pkt, void *cookie);

/* count packets, or a list linked by next, in order; all_done_cb is called once, after the last. */
int bcm_tx_array(int unit, bcm_pkt_t **pkt, int count, bcm_pkt_cb_f all_done_cb, void *cookie);
int bcm_tx_list(int unit, bcm_pkt_t *pkt, bcm_pkt_cb_f all_done_cb, void *cookie);

/* Builds the headers that sending needs from the members of tx_pkt. */
int bcm_tx_pkt_setup(int unit, bcm_pkt_t *tx_pkt);

/* Sets dest_port, dest_mod, tx_pbmp and tx_upbmp by what the address table and the VLAN say. */
int bcm_tx_pkt_l2_map(int unit, bcm_pkt_t *pkt, bcm_mac_t dest_mac, bcm_vlan_t vid);

/* The function that sends to units of another CPU; null, as at first: none. */
int bcm_tx_cpu_tunnel_get(bcm_tx_cpu_tunnel_f *f);
int bcm_tx_cpu_tunnel_set(bcm_tx_cpu_tunnel_f f);

/* Sends through that function. BCM_E_UNAVAIL: there is none. */
int bcm_tx_cpu_tunnel(bcm_pkt_t *pkt, int dest_unit, int remote_port, uint32 flags,
                      bcm_cpu_tunnel_mode_t mode);

/* Prints a descriptor of the DMA (_dv of a packet), or the state of sending, to standard output. */
int bcm_tx_dv_dump(int unit, void *dv_p);
int bcm_tx_show(int unit);

#ifdef __cplusplus
}
#endif

#endif
