/// Accepted frames by tag class, as records that the caller keeps.
#include "sim_port.h"

#include <algorithm>
#include <iterator>

extern "C" {

void sim__bcm_dpp_port_tpid_class_acceptable_frame_type_info_t_clear(
    int, _bcm_dpp_port_tpid_class_acceptable_frame_type_info_t *info)
{
    if (info != nullptr) {
        *info = {};
    }
}

// An entry of either record is that of the same tag class.
void sim__bcm_dpp_port_tpid_class_info_t_to_bcm_dpp_port_tpid_class_acceptable_frame_type_info_t(
    int, _bcm_dpp_port_tpid_class_info_t *info,
    _bcm_dpp_port_tpid_class_acceptable_frame_type_info_t *acceptable_frame_type_info)
{
    if (info != nullptr && acceptable_frame_type_info != nullptr) {
        std::copy(std::begin(info->buff), std::end(info->buff), acceptable_frame_type_info->buffer);
    }
}

}  // extern "C"
