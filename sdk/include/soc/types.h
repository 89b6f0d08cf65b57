/* Types that the chip level shares. */
#ifndef SOC_TYPES_H
#define SOC_TYPES_H

#include <sal/types.h>

typedef int soc_port_t;     /* physical port of a unit */
typedef uint32 sal_usecs_t; /* microseconds */

#endif
