// Bringing the chips up, and what they are configured with before. Results are the SDK's status codes.
#pragma once

#include "quorel_api/port_map.h"

/// Starts the property store and has the SDK attach and initialise each device of the list that is mapped and
/// not attached yet.
int BelvokBasicInit();

/// The same, then starts every such device anew, and on unit 0 gives port 1 the first record's wiring, port 2
/// the second's, and so on: a port gets its speed and is enabled, and SOC properties say how it is wired:
/// "port_map_<port>=core.lane", and numbers in phy_tx_lane_<port>, phy_rx_lane_, phy_tx_polarity_flip_,
/// phy_rx_polarity_flip_, xcvr_lane_, and if it has a PHY ext_phy_type_, ext_phy_mdio_addr_,
/// ext_phy_tx_polarity_flip_, ext_phy_rx_polarity_flip_. Those that do not apply are not set afterwards.
/// Ports without a record are disabled, unless there is none at all (numPorts 0, where portMap may be null):
/// then the ports are as after a start. BCM_E_PARAM, with nothing done, for a negative number, more records
/// than ports, a null pointer with a number, a record out of range, and two records with one lane. numPorts
/// records are read, not looked for.
int BelvokInit(tridentPortMap_t *portMap, int numPorts);

/// Sets SOC properties as the lines "name=value" of a file say; "#" begins a comment line. They go to the
/// SDK's property store all or, with a message in the log, none.
void QuorelApiSetSocProperties(const char *fname);

/// Where the constraints of the copy engine are told. Null: nowhere.
void setCopyEngineConstraintsFilePath(const char *filePath);

/// Whether a unit pairs queues by the newer algorithm: 1 if the SOC property "fqp_pqp_new_algo_enable", with
/// ".<unit>" behind or else without, says a number other than 0; else 0. BCM_E_UNIT.
int belvok_soc_jer_fqp_pqp_new_algo_enable_get(int unit);
