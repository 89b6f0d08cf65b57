#include "quorel_api/trace.h"

#include "chip_watch.h"
#include "trace_lines.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

constexpr std::size_t captured_max = 1 << 20;
constexpr std::size_t line_max = 1024;

bool capturing, to_log;

std::string &captured()
{
    static std::string &text = *new std::string;
    return text;
}

}  // namespace

bool tracing()
{
    return capturing || to_log;
}

void captureText(const char *text, std::size_t size)
{
    if (capturing) {
        captured().append(text, std::min(size, captured_max - captured().size()));
    }
}

void trace(const char *format, ...)
{
    if (!tracing()) {
        return;
    }
    char line[line_max];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof line - 1, format, arguments);
    va_end(arguments);
    if (length < 0) {
        return;
    }
    std::size_t size = std::min(static_cast<std::size_t>(length), sizeof line - 2);
    line[size++] = '\n';
    captureText(line, size);
    if (to_log) {
        std::fwrite("trace: ", 1, 7, stdout);
        std::fwrite(line, 1, size, stdout);
        std::fflush(stdout);
    }
}

void resetTrace()
{
    capturing = to_log = false;
    captured().clear();
}

void captureTrace(bool enable)
{
    watchChips();
    if (enable) {
        captured().clear();
    }
    capturing = enable;
}

Vey::String8 getTrace()
{
    return captured();
}

void traceToLogIs(bool enable)
{
    watchChips();
    to_log = enable;
}
