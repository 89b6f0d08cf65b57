/* Settings of ports that an application adds to the SDK, for every CPU of a stack to reach. */
#ifndef BCM_CUSTOM_H
#define BCM_CUSTOM_H

#include <bcm/error.h>
#include <bcm/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/* setget of the callback. */
#define BCM_CUSTOM_GET 0
#define BCM_CUSTOM_SET 1

/* The most words that args may have. */
#define BCM_CUSTOM_ARGS_MAX 256

/*
 * Called by port_set and port_get on the CPU that the unit belongs to. args has max_len words; a getter says
 * in *actual_len how many it filled in. type is the application's to define. The result becomes that of the
 * call.
 */
typedef int (*bcm_custom_cb_t)(int unit, bcm_port_t port, int setget, int type, int max_len, uint32 *args,
                               int *actual_len, void *user_data);

/* One callback per unit; a new one replaces it. Without one the other calls give BCM_E_UNAVAIL. */
int bcm_custom_register(int unit, bcm_custom_cb_t func, void *user_data);
int bcm_custom_unregister(int unit);
int bcm_custom_port_set(int unit, bcm_port_t port, int type, int len, uint32 *args);
int bcm_custom_port_get(int unit, bcm_port_t port, int type, int max_len, uint32 *args, int *actual_len);

#ifdef __cplusplus
}
#endif

#endif
