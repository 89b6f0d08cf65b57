#include "chip_start.h"

#include "begin.h"
#include "chip_state.h"
#include "events.h"
#include "port_database.h"
#include "sim_chip.h"

#include <soc/init.h>

using namespace sim;

namespace {

constexpr int pci_devices = 1;

void set_field(Chip &chip, soc_reg_t reg, soc_field_t field, uint64 value)
{
    RegisterPlace place;
    locate(register_at(reg), REG_PORT_ANY, 0, &place);
    Words words = chip.read(place);
    put_field(words, *place.reg->layout.find(field), words_of(value));
    chip.write(place, words);
}

}  // namespace

namespace sim {

void configure(Chip &chip)
{
    map_ports_to_interfaces(chip);
    set_field(chip, FTX_TRANSMIT_ENABLEr, ENABLEf, 1);
    set_field(chip, CMIC_MISC_CONTROLr, LINK_SCAN_ENABLEf, 1);
}

}  // namespace sim

extern "C" {

int sim_sysconf_attach(int pci_device_n)
{
    return pci_device_n >= 0 && pci_device_n < pci_devices ? SOC_E_NONE : SOC_E_NOT_FOUND;
}

int sim_soc_init(int unit)
{
    return begin(unit).then([](Switch &sw) {
        Chip &chip = chip_of(sw);
        chip.running = true;
        chip.reset();
        reset_port_state(chip.unit);
        configure(chip);
    });
}

int sim_soc_reset_init(int unit)
{
    return begin(unit, running_chip).then([](Switch &sw, Chip &chip) {
        chip.reset();
        reset_port_state(chip.unit);
        raise(sw, {bcmSwitchEventDeviceReset});
        return SOC_E_NONE;
    });
}

int sim_soc_misc_init(int unit)
{
    return begin(unit, running_chip).then([](Chip &chip) {
        configure(chip);
        return SOC_E_NONE;
    });
}

int sim_soc_deinit(int unit)
{
    return begin(unit, running_chip).then([](Chip &chip) {
        chip.running = false;
        chip.reset();
        chip.stand_ins = {};
        chip.snoops.clear();
        return SOC_E_NONE;
    });
}

}  // extern "C"
