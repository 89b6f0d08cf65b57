/// Names of switch controls and tunnel types from text.
#include "enumerators.h"
#include "sim_parse.h"

using namespace sim;

namespace {

const Names switch_controls(names_of_bcm_switch_control_e, "bcmSwitch");
const Names tunnel_types(names_of_bcm_tunnel_type_e, "bcmTunnelType");

}  // namespace

extern "C" {

bcm_switch_control_t sim_parse_switch_control(char *str)
{
    return static_cast<bcm_switch_control_t>(switch_controls.value(str != nullptr ? str : ""));
}

bcm_tunnel_type_t sim_parse_tunnel_type(char *str)
{
    return static_cast<bcm_tunnel_type_t>(tunnel_types.value(str != nullptr ? str : ""));
}

}  // extern "C"
