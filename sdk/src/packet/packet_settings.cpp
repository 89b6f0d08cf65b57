/// Settings of packet input and output as they are at start.
#include <bcm/rx.h>
#include <bcm/rx_pktlist.h>
#include <bcm/trans.h>

int bcm_rx_token_check_us = 100000;
int bcm_rx_pktlist_count = 128;
bcm_trans_ptr_t bcm_trans_ptr;
