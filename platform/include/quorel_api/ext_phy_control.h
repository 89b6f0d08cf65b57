/*
 * External PHYs from outside, as the platform's PHY drivers use them; for tests. Results are status codes
 * (quorel_api/status.h): statusParam for a number out of range or a null pointer, statusNotFound where no
 * access method is installed, statusFail for any other failure: ext_phy_error() says which. May be called in
 * any thread, with or without Python's lock. Not part of the platform proper.
 */
#ifndef QUOREL_API_EXT_PHY_CONTROL_H
#define QUOREL_API_EXT_PHY_CONTROL_H

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Reads or writes a 16-bit register of an MDIO device, 0 to 31, through the access method installed for the
 * PHY.
 */
int ext_phy_read(int unit, int phy, int managed_phy, unsigned int device, unsigned int address,
                 unsigned int *data);
int ext_phy_write(int unit, int phy, int managed_phy, unsigned int device, unsigned int address,
                  unsigned int data);

/* The text of this thread's last statusFail, "" if there was none. Valid until this thread's next call. */
const char *ext_phy_error(void);

/* Copies the name of the installed access method, and a zero, to the buffer as far as size bytes allow. */
int ext_phy_name(int unit, int phy, int managed_phy, char *buffer, unsigned int size);

/* The version that was last noted by standbyBcm84328VersionIs(), 0 if none. */
int ext_phy_standby_version(int unit, int phy, unsigned int *version);

/* Removes the access method of a PHY. statusOk also if there was none. */
int ext_phy_remove(int unit, int phy, int managed_phy);

#ifdef __cplusplus
}
#endif

#endif
