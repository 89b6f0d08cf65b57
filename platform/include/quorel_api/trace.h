// The trace: what the platform was told to do, and what was read from and written to the chips.
#pragma once

#include "vey/string8.h"

/// Starts with an empty text, or stops and keeps what there is. It holds up to 1 MiB; the rest is lost.
void captureTrace(bool enable);

/// What was captured last, a line for each event.
Vey::String8 getTrace();

/// Has each line of the trace go to the log too, captured or not.
void traceToLogIs(bool enable);
