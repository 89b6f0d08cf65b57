#include "shell_variables.h"

#include "number_text.h"
#include "sim_shell.h"
#include "switch.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace sim {

std::string ShellVariables::value(const std::string &name, int unit) const
{
    int number;
    if (name == "unit") {
        return std::to_string(unit);
    }
    if (read_int(name, &number)) {
        const auto word = static_cast<std::size_t>(number);
        return !file_words_.empty() && word < file_words_.back().size() ? file_words_.back()[word] : "";
    }
    const auto set = sets_.find(current_);
    if (set == sets_.end()) {
        return "";
    }
    const auto found = set->second.find(name);
    return found != set->second.end() ? found->second : "";
}

bool ShellVariables::is_name(const std::string &name)
{
    return !name.empty() && !std::isdigit(static_cast<unsigned char>(name[0])) && name != "unit"
           && std::all_of(name.begin(), name.end(),
                          [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; });
}

bool ShellVariables::set(const std::string &name, const std::string &value)
{
    if (!is_name(name)) {
        return false;
    }
    sets_[current_][name] = value;
    return true;
}

int ShellVariables::swap(int unit)
{
    return std::exchange(current_, unit);
}

ShellVariables &shell_variables()
{
    static ShellVariables &variables = *new ShellVariables;
    return variables;
}

}  // namespace sim

extern "C" void sim_sh_swap_unit_vars(int new_unit)
{
    if (new_unit >= 0 && new_unit < sim::unit_max) {
        sim::shell_variables().swap(new_unit);
    }
}
