// Compiled with exceptions: the platform throws.
#include "platform_text.h"

#include "quorel_api/shell_command.h"
#include "quorel_api/trace.h"

#include <string>

namespace {

PyObject *string_of(const Vey::String8 &text)
{
    std::string characters(text.data(), text.size());
    return PyString_FromString(characters.c_str());
}

}  // namespace

PyObject *getTraceText()
{
    return string_of(getTrace());
}

PyObject *sdcText(int unit, char *command)
{
    return string_of(sdc(unit, command));
}
