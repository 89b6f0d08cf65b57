// Commands of the diagnostic shell for whoever wants their output as text.
#pragma once

#include "vey/string8.h"

/// Runs a line of commands for the unit; what it printed. Empty for null.
Vey::String8 sdc(int unit, char *command);
