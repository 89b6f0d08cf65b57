/*
 * The stand-in's state from outside, for tests. Not part of the platform proper.
 */
#ifndef QUOREL_API_PLATFORM_CONTROL_H
#define QUOREL_API_PLATFORM_CONTROL_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Everything as when the library was loaded, except the chips and the property store. */
void platform_reset(void);

/* A device's PCI address, as "0000:01:00.0", and " mapped" if it is; empty if there is no such device. */
const char *platform_device(int unit);

/* A word of the PCI configuration space as shadowed; offset in bytes. 0 if it is not. */
unsigned int platform_pci_config(int unit, unsigned int offset);

/* The device raises interrupts, bits as in the first CMIC_IRQ_MASK. 1 if it was delivered, or 0. */
int platform_interrupt(int unit, unsigned int bits);

/* Adds size characters to the trace. */
void platform_trace(const char *text, size_t size);

/* The path last set, empty at first. */
const char *platform_copy_engine_constraints_file_path(void);

#ifdef __cplusplus
}
#endif

#endif
