/// Settings of packet input and output as they are at start.
#include <bcm/rx.h>
#include <bcm/rx_pktlist.h>
#include <bcm/trans.h>

[[gnu::visibility("default")]] int bcm_rx_token_check_us = 100000;
[[gnu::visibility("default")]] int bcm_rx_pktlist_count = 128;
[[gnu::visibility("default")]] bcm_trans_ptr_t bcm_trans_ptr;
