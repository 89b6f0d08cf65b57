/// Which bits of a register belong to fields.
#include "chip.h"
#include "sim_register.h"

#include <algorithm>

using namespace sim;

namespace {

Words data_mask(int unit, soc_reg_t id, int flags)
{
    const Register *reg = chip_of(unit) == nullptr ? nullptr : register_at(id);
    return reg == nullptr ? Words() : mask_of(reg->layout, static_cast<uint32>(flags));
}

}  // namespace

extern "C" {

uint32 sim_soc_reg_datamask(int unit, soc_reg_t reg, int flags)
{
    return data_mask(unit, reg, flags)[0];
}

uint64 sim_soc_reg64_datamask(int unit, soc_reg_t reg, int flags)
{
    return low_64(data_mask(unit, reg, flags));
}

void sim_soc_reg_above_64_datamask(int unit, soc_reg_t reg, int flags, soc_reg_above_64_val_t datamask)
{
    if (datamask != nullptr && chip_of(unit) != nullptr) {
        const Words mask = data_mask(unit, reg, flags);
        std::copy(mask.begin(), mask.end(), datamask);
    }
}

}  // extern "C"
