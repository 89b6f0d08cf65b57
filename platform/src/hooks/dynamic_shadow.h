// Memories that are read from the shadow.
#pragma once

#include "quorel_api/integers.h"

#include <cstddef>

/// Whether the words belong to such a memory, are in the shadow, and reads are not forced to the hardware;
/// then they are put there.
bool readFromDynamicShadow(int unit, U32 address, U32 *words, std::size_t count);

/// No such memory, and reads not forced.
void forgetDynamicShadows();
