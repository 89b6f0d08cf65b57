/// Walks over all registers.
#include "begin.h"
#include "chip.h"
#include "sim_register.h"

using namespace sim;

extern "C" int sim_soc_reg_iterate(int unit, soc_reg_iter_f do_it, void *data)
{
    return begin(unit, running_chip).then([&](Chip &) {
        if (do_it == nullptr) {
            return static_cast<int>(SOC_E_PARAM);
        }
        for (int id = 0; register_at(id) != nullptr; ++id) {
            RegisterPlace place;
            for (int port = 0; locate(register_at(id), port, 0, &place) == SOC_E_NONE; ++port) {
                for (int index = 0; locate(register_at(id), port, index, &place) == SOC_E_NONE; ++index) {
                    soc_regaddrinfo_t info = info_of(place);
                    int rc = do_it(unit, &info, data);
                    // It may have detached the unit or brought the chip down.
                    rc = rc < 0 ? rc : begin(unit, running_chip).then([](Chip &) {});
                    if (rc < 0) {
                        return rc;
                    }
                }
            }
        }
        return static_cast<int>(SOC_E_NONE);
    });
}
