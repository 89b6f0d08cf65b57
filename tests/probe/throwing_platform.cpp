// Hooks of the platform that throw. To be preloaded: they stand before the platform's own.
#include "quorel_api/chip_memory.h"
#include "quorel_api/devices.h"
#include "quorel_api/logging.h"
#include "quorel_api/shell_command.h"
#include "quorel_api/trace.h"
#include "vey/exception.h"

#include <new>

void captureTrace(bool)
{
    throw Vey::RangeException("more than can be captured");
}

Vey::String8 getTrace()
{
    throw Vey::ErrnoException("nothing was captured", 5);
}

void traceToLogIs(bool)
{
    throw 7;
}

void setSandAgentName(char *)
{
    throw std::bad_alloc();
}

int getNumDevices()
{
    throw Vey::InternalException("no list of devices");
}

Vey::String8 sdc(int, char *)
{
    throw Vey::InternalException("no shell");
}

Hardware::ChipMemory::Ptr QuorelApi::findChipMemory(int, int, int)
{
    throw Vey::RangeException("no such memory");
}
