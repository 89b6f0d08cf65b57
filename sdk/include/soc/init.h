/*
 * Start and stop of a chip. All are status codes: SOC_E_UNIT, SOC_E_INIT.
 */
#ifndef SOC_INIT_H
#define SOC_INIT_H

#ifdef __cplusplus
extern "C" {
#endif

/* Takes the PCI device of that number into use, from 0; SOC_E_NOT_FOUND if there is none. */
int sysconf_attach(int pci_device_n);

/* Brings the chip up: registers and memories as after a reset, and then the settings of soc_misc_init(). */
int soc_init(int unit);

/* Registers and memories of a chip that is up take their values after a reset. */
int soc_reset_init(int unit);

/* The settings without which no packet passes: interfaces of ports, fabric transmission, link scan. */
int soc_misc_init(int unit);

/* Takes the chip down: until soc_init() nothing of it can be reached. Snoops and stand-ins are forgotten. */
int soc_deinit(int unit);

#ifdef __cplusplus
}
#endif

#endif
