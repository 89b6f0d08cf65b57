/*
 * The descriptor of the bus that the chips are on: how whoever holds it reaches their hardware.
 */
#ifndef SOC_BUS_DEVICE_H
#define SOC_BUS_DEVICE_H

#include <sal/types.h>

#ifdef __cplusplus
extern "C" {
#endif

/*
 * dev is the device's unit number; addresses are those of soc_reg_addr(), offsets are bytes into PCI
 * configuration space, multiples of 4. A call that is null is one that the bus does not offer.
 */
typedef struct ibde_s {
    const char *name;
    uint32 (*read)(int dev, uint32 addr);
    int (*write)(int dev, uint32 addr, uint32 data); /* a status */
    uint32 (*pci_conf_read)(int dev, uint32 offset);
    int (*pci_conf_write)(int dev, uint32 offset, uint32 data); /* a status */
} ibde_t;

#ifdef __cplusplus
}
#endif

#endif
