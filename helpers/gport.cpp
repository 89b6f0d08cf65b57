#include "gport.h"

namespace {

constexpr int type_shift = 26;
constexpr int type_local = 1, type_trunk = 3, type_system_port = 27;
constexpr int system_port_mask = 0xffffff;
// Bits that a local port leaves empty; with them it is a port of another module.
constexpr unsigned long local_zero_mask = 0x3e00000;
constexpr unsigned long black_hole = 0x10000000;

}  // namespace

int bcm_get_gport_from_sys_port_id(int sys_port_id)
{
    return (sys_port_id & system_port_mask) | (type_system_port << type_shift);
}

int bcm_get_sys_port_id_from_gport(int gport)
{
    return gport >> type_shift == type_system_port ? gport & system_port_mask : -1;
}

const char *getGPortType(unsigned long gport)
{
    switch (gport >> type_shift) {
    case type_local:
        return gport & local_zero_mask ? "unknown" : "local";
    case type_trunk:
        return "lag";
    default:
        return gport == black_hole ? "blackhole" : "unknown";
    }
}
