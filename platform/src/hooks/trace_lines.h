// Adding to the trace and to the log.
#pragma once

#include <cstddef>

/// Whether the trace goes anywhere; what is made only for the trace need not be made otherwise.
bool tracing();

/// A line of the trace, as printf() would write it, without its end.
void trace(const char *format, ...) __attribute__((format(printf, 1, 2)));

/// Characters of the captured text, as they are.
void captureText(const char *text, std::size_t size);

/// A message of severity error of the platform's own.
void logProblem(const char *format, ...) __attribute__((format(printf, 1, 2)));

/// The state of the files in question as when the library was loaded.
void resetTrace();
void resetLog();
