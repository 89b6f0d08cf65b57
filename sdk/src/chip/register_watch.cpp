/// Who is told of accesses to registers, and who carries them out instead.
#include "begin.h"
#include "chip.h"
#include "sim_register.h"

using namespace sim;

extern "C" {

void sim_soc_reg_snoop_register(int unit, soc_reg_t reg, uint32 flags, soc_reg_snoop_cb_t snoop_cb,
                                void *user_data)
{
    begin(unit, running_chip).then([&](Chip &chip) {
        if (snoop_cb != nullptr && register_at(reg) != nullptr) {
            chip.snoops[reg] = {flags, snoop_cb, user_data};
        }
        return SOC_E_NONE;
    });
}

void sim_soc_reg_snoop_unregister(int unit, soc_reg_t reg)
{
    begin(unit, running_chip).then([&](Chip &chip) {
        chip.snoops.erase(reg);
        return SOC_E_NONE;
    });
}

int sim_soc_reg_access_func_register(int unit, soc_reg_access_t *reg_access)
{
    return begin(unit, running_chip).then([&](Chip &chip) {
        if (reg_access == nullptr) {
            return SOC_E_PARAM;
        }
        chip.stand_ins = *reg_access;
        return SOC_E_NONE;
    });
}

}  // extern "C"
