// Integers as the platform names them. Python carries them without looking into them.
#pragma once

#include <sys/types.h>  // uint

typedef unsigned int U32;
