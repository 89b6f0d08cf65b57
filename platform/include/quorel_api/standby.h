// What a standby supervisor goes by while the devices belong to the active one.
#pragma once

#include "quorel_api/integers.h"

/// While it is on, the values below stand for the devices found, each where it was set.
void standbySupIs(bool);

/// Of a unit from 0 to 15, whether there is such a device or not.
void standbyDevIdIs(int unit, U32);
void standbyRevIdIs(int unit, U32);
void standbyNumDevicesIs(U32);
