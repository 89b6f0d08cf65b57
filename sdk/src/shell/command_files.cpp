#include "command_files.h"

#include "config.h"
#include "shell.h"
#include "shell_variables.h"
#include "sim_shell.h"
#include "switch.h"
#include "whole_file.h"

#include <bcm/error.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

namespace {

constexpr int files_within_each_other_max = 16;
constexpr const char *file_name_end = ".soc";

std::map<int, std::string> own_files;

/// How deep command files are now. sh_rcload_depth shows it, but may be set by anybody.
int depth;

class InFile {
public:
    explicit InFile(std::vector<std::string> words)
    {
        shell_variables().enter_file(std::move(words));
        sh_rcload_depth = ++depth;
    }
    ~InFile()
    {
        sh_rcload_depth = --depth;
        shell_variables().leave_file();
    }
    InFile(const InFile &) = delete;
    InFile &operator=(const InFile &) = delete;
};

std::vector<std::string> words_of(args_t *args, const char *file)
{
    std::vector<std::string> words = {file};
    Arguments given(args);
    while (const char *word = given.next()) {
        words.emplace_back(word);
    }
    return words;
}

/// Takes a line, with those that a '\' at its end joins to it, from the text.
std::string take_line(std::string_view *text, int *lines)
{
    std::string line;
    bool goes_on = true;
    while (goes_on && !text->empty()) {
        std::string_view part = text->substr(0, text->find('\n'));
        text->remove_prefix(part.size() < text->size() ? part.size() + 1 : part.size());
        ++*lines;
        if (!part.empty() && part.back() == '\r') {
            part.remove_suffix(1);
        }
        goes_on = !part.empty() && part.back() == '\\';
        line += goes_on ? part.substr(0, part.size() - 1) : part;
    }
    return line;
}

cmd_result_t run_text(int unit, const char *name, std::string_view text)
{
    int number = 0;
    while (!text.empty()) {
        const int first = number + 1;
        const std::string line = take_line(&text, &number);
        const cmd_result_t result = run_line(unit, line);
        if (result == CMD_EXIT) {
            return CMD_OK;
        }
        const bool ends = last_failure_was_a_test() ? sh_set_rctest != 0 : sh_set_rcerror != 0;
        if (result == CMD_INTR || (result != CMD_OK && ends)) {
            std::printf("%s:%d: %s\n", name, first, result_name(result));
            return result;
        }
    }
    return CMD_OK;
}

std::string with_end(const std::string &name)
{
    const std::string_view end = file_name_end;
    const std::size_t rest = name.size() - std::min(name.size(), end.size());
    return std::string_view(name).substr(rest) == end ? name : name + file_name_end;
}

/// Null if the unit has none, own or by property.
const std::string *command_file(int unit)
{
    const auto own = own_files.find(unit);
    return own != own_files.end() ? &own->second : property(unit, "rcload");
}

}  // namespace

void forget_command_file(int unit)
{
    own_files.erase(unit);
}

}  // namespace sim

using namespace sim;

extern "C" {

cmd_result_t sim_sh_rcload_file(int u, args_t *args, char *f, int add_rc)
{
    if (f == nullptr || *f == '\0') {
        return CMD_USAGE;
    }
    if (!sh_set_rcload) {
        std::printf("rcload: command files are not to be read\n");
        return CMD_FAIL;
    }
    if (depth >= files_within_each_other_max) {
        std::printf("rcload: more than %d command files within each other\n", files_within_each_other_max);
        return CMD_FAIL;
    }
    const std::string name = add_rc ? with_end(f) : f;
    std::string text;
    if (read_file(name, &text) != BCM_E_NONE) {
        std::printf("rcload: %s cannot be read\n", name.c_str());
        return CMD_FAIL;
    }
    if (text.find('\0') != std::string::npos) {
        std::printf("rcload: %s is no file of commands: it is not text\n", name.c_str());
        return CMD_FAIL;
    }
    const InFile in_file(words_of(args, name.c_str()));
    return run_text(u, name.c_str(), text);
}

int sim_diag_rc_load(int unit)
{
    if (attached(unit) == nullptr) {
        return BCM_E_UNIT;
    }
    const std::string *file = command_file(unit);
    if (file == nullptr || file->empty()) {
        return BCM_E_NONE;
    }
    if (!sh_set_rcload) {
        return BCM_E_DISABLED;
    }
    std::string name = *file, text;
    if (read_file(name, &text) != BCM_E_NONE) {
        return BCM_E_NOT_FOUND;
    }
    return sim_sh_rcload_file(unit, nullptr, name.data(), 0) == CMD_OK ? BCM_E_NONE : BCM_E_FAIL;
}

void sim_diag_rc_set(int unit, const char *fname)
{
    if (unit < 0 || unit >= unit_max) {
        return;
    }
    if (fname == nullptr || *fname == '\0') {
        forget_command_file(unit);
    } else {
        own_files[unit] = fname;
    }
}

void sim_diag_rc_get(int unit, const char **fname)
{
    if (fname != nullptr) {
        const std::string *file = command_file(unit);
        *fname = file != nullptr ? file->c_str() : nullptr;
    }
}

}  // extern "C"
