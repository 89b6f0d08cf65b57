#include "output.h"

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace generator {

std::string read_file(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void write_if_changed(const std::string &path, const std::string &text)
{
    if (std::ifstream(path).good() && read_file(path) == text) {
        return;
    }
    std::string temporary = path + ".new";
    {
        std::ofstream file(temporary, std::ios::binary);
        file << text;
        if (!file.flush()) {
            throw std::runtime_error("cannot write " + temporary);
        }
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        std::remove(temporary.c_str());
        throw std::runtime_error("cannot write " + path);
    }
}

std::string banner(const std::string &subject, const std::string &inputs)
{
    return "// " + subject + "\n// Generated from " + inputs + ". Do not edit.\n\n";
}

std::vector<std::string> joined(const std::vector<std::string> &texts, size_t count)
{
    size_t total = 0, before = 0;
    for (const std::string &text : texts) {
        total += text.size();
    }
    std::vector<std::string> units(count);
    for (const std::string &text : texts) {
        units[total == 0 ? 0 : before * count / total] += text;
        before += text.size();
    }
    return units;
}

std::string make_rule(const std::string &target, const std::vector<std::string> &inputs)
{
    auto escaped = [](const std::string &path) {
        std::string text;
        for (char c : path) {
            text += c == ' ' || c == '#' ? std::string("\\") + c : c == '$' ? "$$" : std::string(1, c);
        }
        return text;
    };
    std::string rule = escaped(target) + ":";
    for (const std::string &input : inputs) {
        rule += " \\\n  " + escaped(input);
    }
    return rule + "\n";
}

std::string literal_with_nul(const std::string &text)
{
    std::string literal = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\') {
            literal += '\\';
        }
        if (c == '\n') {
            literal += "\\n";
        } else {
            literal += c;
        }
    }
    return literal + "\\0\"";
}

}  // namespace generator
