/// What the driver writes into the chip's registers when settings change. A register that somebody else
/// writes to keeps that until the next change; the setting itself does not follow.
#pragma once

namespace sim {

/// Whether the port is enabled, and its speed: NIF_PORT_CTRL.
void write_port_registers(int unit, int port, bool enabled, int speed);

/// Seconds until addresses age out, 0 for never: IHP_MAC_AGEING of both cores.
void write_ageing_registers(int unit, int seconds);

}  // namespace sim
