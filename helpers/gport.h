// Global port numbers by which scripts know system ports, local ports and LAGs.
#pragma once

/// The gport of a system port; bits of the number above the low 24 are dropped.
int bcm_get_gport_from_sys_port_id(int sys_port_id);

/// The number of the system port that a gport stands for, or -1 for any other gport.
int bcm_get_sys_port_id_from_gport(int gport);

/// "local", "lag", "blackhole" or "unknown". System ports are "unknown" too, as scripts expect.
const char *getGPortType(unsigned long gport);
