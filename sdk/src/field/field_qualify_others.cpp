/// Functions of qualifiers that take more than values: a length, or of what they ask.
#include "field.h"
#include "field_arguments.h"
#include "sim_field.h"

#include <algorithm>
#include <array>

using namespace sim;

extern "C" {

int sim_bcm_field_qualify_L2PayLoad(int unit, bcm_field_entry_t entry, uint32 length, const uint8 *data,
                                    const uint8 *mask)
{
    return set_qualifier(
        unit, {rules::key(entry), rules::key(bcmFieldQualifyL2PayLoad), rules::given_at(data, length),
               rules::given_at(mask, length), rules::within(length, 1, field_places::payload_bytes)});
}

int sim_bcm_field_qualify_L2PayLoad_get(int unit, bcm_field_entry_t entry, uint32 *length, uint8 *data,
                                        uint8 *mask)
{
    return begin(unit, ready<FieldState>, given(length, data, mask)).then([&](FieldState &) -> int {
        std::size_t size = 0;
        const int status = find_qualifier_bytes(unit, entry, bcmFieldQualifyL2PayLoad, &size);
        if (status == BCM_E_NONE) {
            std::array<uint8, field_places::payload_bytes> kept, masks;
            find_qualifier(unit, {rules::key(entry), rules::key(bcmFieldQualifyL2PayLoad),
                                  rules::result_at(kept.data(), size), rules::result_at(masks.data(), size)});
            const auto written = std::min<std::size_t>(*length, size);
            std::copy_n(kept.begin(), written, data);
            std::copy_n(masks.begin(), written, mask);
            *length = static_cast<uint32>(written);
        }
        return status;
    });
}

int sim_bcm_field_qualify_Decap(int unit, bcm_field_entry_t entry, bcm_field_decap_t decap)
{
    return set_qualifier(unit, {rules::key(entry), rules::key(bcmFieldQualifyDecap), rules::given(decap),
                                rules::within(decap, 0, bcmFieldDecapCount - 1)});
}

int sim_bcm_field_qualify_ExactMatchHitStatus(int unit, bcm_field_entry_t entry, int group_pri, uint8 data,
                                              uint8 mask)
{
    return set_qualifier(unit, {rules::key(entry), rules::key(bcmFieldQualifyExactMatchHitStatus),
                                rules::key(group_pri), rules::given(data), rules::given(mask)});
}

int sim_bcm_field_qualify_ExactMatchHitStatus_get(int unit, bcm_field_entry_t entry, int group_pri,
                                                  uint8 *data, uint8 *mask)
{
    return find_qualifier(
        unit, {rules::key(entry), rules::key(bcmFieldQualifyExactMatchHitStatus), rules::key(group_pri),
               rules::result_at(data, sizeof *data), rules::result_at(mask, sizeof *mask)});
}

int sim_bcm_field_qualify_ExactMatchActionClassId(int unit, bcm_field_entry_t entry, int group_pri,
                                                  uint32 data, uint32 mask)
{
    return set_qualifier(unit, {rules::key(entry), rules::key(bcmFieldQualifyExactMatchActionClassId),
                                rules::key(group_pri), rules::given(data), rules::given(mask)});
}

int sim_bcm_field_qualify_ExactMatchActionClassId_get(int unit, bcm_field_entry_t entry, int group_pri,
                                                      uint32 *data, uint32 *mask)
{
    return find_qualifier(
        unit, {rules::key(entry), rules::key(bcmFieldQualifyExactMatchActionClassId), rules::key(group_pri),
               rules::result_at(data, sizeof *data), rules::result_at(mask, sizeof *mask)});
}

int sim_bcm_field_qualify_ExactMatchGroupClassId(int unit, bcm_field_entry_t entry, int group_pri,
                                                 uint32 group)
{
    return set_qualifier(unit, {rules::key(entry), rules::key(bcmFieldQualifyExactMatchGroupClassId),
                                rules::key(group_pri), rules::given(group)});
}

int sim_bcm_field_qualify_ExactMatchGroupClassId_get(int unit, bcm_field_entry_t entry, int group_pri,
                                                     uint32 *group)
{
    return find_qualifier(unit, {rules::key(entry), rules::key(bcmFieldQualifyExactMatchGroupClassId),
                                 rules::key(group_pri), rules::result_at(group, sizeof *group)});
}

int sim_bcm_field_qualify_MixedSrcClassId(int unit, bcm_field_entry_t entry, bcm_pbmp_t pbmp,
                                          bcm_field_src_class_t data, bcm_field_src_class_t mask)
{
    return set_qualifier(unit, {rules::key(entry), rules::key(bcmFieldQualifyMixedSrcClassId),
                                rules::key(pbmp), rules::given(data), rules::given(mask)});
}

int sim_bcm_field_qualify_MixedSrcClassId_get(int unit, bcm_field_entry_t entry, bcm_pbmp_t pbmp,
                                              bcm_field_src_class_t *data, bcm_field_src_class_t *mask)
{
    return find_qualifier(unit,
                          {rules::key(entry), rules::key(bcmFieldQualifyMixedSrcClassId), rules::key(pbmp),
                           rules::result_at(data, sizeof *data), rules::result_at(mask, sizeof *mask)});
}

// A user-defined field is a data qualifier by its other name: both have one bit in sets of qualifiers.
int sim_bcm_field_qualify_udf(int unit, bcm_field_entry_t entry, int udf_id, int length, uint8 *data,
                              uint8 *mask)
{
    const bool is_one = length > 0 && length <= field_data_longest;
    return sim_bcm_field_qualify_data(unit, entry, udf_id, data, mask,
                                      is_one ? static_cast<uint16>(length) : 0);
}

int sim_bcm_field_qualify_udf_get(int unit, bcm_field_entry_t entry, int udf_id, int *length, uint8 *data,
                                  uint8 *mask)
{
    return begin(unit, ready<FieldState>, given(length, data, mask)).then([&](FieldState &) -> int {
        if (*length < 0) {
            return BCM_E_PARAM;
        }
        auto room = static_cast<uint16>(std::min(*length, field_data_longest));
        const int status = sim_bcm_field_qualify_data_get(unit, entry, udf_id, data, mask, &room);
        *length = status == BCM_E_NONE ? room : *length;
        return status;
    });
}

}  // extern "C"
