#include "driver_registers.h"

#include "sim_register.h"

#include <soc/field_ids.h>

#include <algorithm>

namespace sim {

namespace {

/// What does not fit is the most that does.
void write_field(int unit, soc_reg_t reg, int port, soc_field_t field, int value)
{
    const int length = sim_soc_reg_field_length(unit, reg, field);
    const auto most = static_cast<int>((uint64{1} << std::min(length, 31)) - 1);
    // A chip that does not run keeps its registers.
    sim_soc_reg_field32_modify(unit, reg, port, field, static_cast<uint32>(std::min(value, most)));
}

}  // namespace

void write_port_registers(int unit, int port, bool enabled, int speed)
{
    write_field(unit, NIF_PORT_CTRLr, port, RX_ENABLEf, enabled);
    write_field(unit, NIF_PORT_CTRLr, port, TX_ENABLEf, enabled);
    write_field(unit, NIF_PORT_CTRLr, port, SPEEDf, speed);
}

void write_ageing_registers(int unit, int seconds)
{
    write_field(unit, IHP_MAC_AGEINGr, REG_PORT_ANY, ENABLEf, seconds > 0);
    write_field(unit, IHP_MAC_AGEINGr, REG_PORT_ANY, AGE_PERIODf, seconds);
}

}  // namespace sim
