#include "quorel_api/shell_command.h"

#include "trace_lines.h"

#include <string>

extern "C" {
#include <appl/platform_shell.h>
#include <sim/console.h>
}

Vey::String8 sdc(int unit, char *command)
{
    if (!command) {
        return {};
    }
    trace("sdc(%d, %s)", unit, command);
    if (sim_console_capture_begin() != 0) {
        return {};
    }
    belvok_sh_process_command(unit, command);
    std::size_t size = 0;
    const char *text = sim_console_capture_end(&size);
    return text ? Vey::String8(std::string(text, size)) : Vey::String8();
}
