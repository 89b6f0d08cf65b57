#include "version.h"

#include "output.h"

#include <fmt/format.h>

#include <cstdint>
#include <filesystem>
#include <map>

namespace generator {

namespace {

// FNV-1a. It tells builds from one another; it guards against nobody.
class Digest {
public:
    /// Texts are told apart: "ab", "c" is not "a", "bc".
    void add(const std::string &text)
    {
        for (char c : text) {
            add(c);
        }
        add('\0');
    }
    std::string text() const { return fmt::format("{:016x}", value_); }

private:
    void add(char c) { value_ = (value_ ^ static_cast<unsigned char>(c)) * 0x100000001b3u; }

    uint64_t value_ = 0xcbf29ce484222325u;
};

}  // namespace

std::string version_of(const std::string &project, const std::vector<std::string> &files,
                       const HeaderSource &source)
{
    Digest digest;
    for (const std::string &flag : source.flags) {
        if (flag.compare(0, 2, "-D") == 0) {
            digest.add(flag);
        }
    }
    std::map<std::string, std::string> headers;
    for (const std::string &directory : source.include_directories) {
        const std::filesystem::path root = std::filesystem::canonical(directory);
        for (const std::string &file : files) {
            const std::string name = std::filesystem::path(file).lexically_relative(root);
            if (name.compare(0, 2, "..") != 0) {
                headers.emplace(name, file);
            }
        }
    }
    for (const auto &[name, file] : headers) {
        digest.add(name);
        digest.add(read_file(file));
    }
    return project + "+sdk." + digest.text();
}

std::string emit_version(const std::string &version)
{
    return "// What this build was made of.\n"
           "// Generated from the headers. Do not edit.\n\n"
           "#pragma once\n\n"
           "namespace quorel {\n\n"
           "inline constexpr char version[] = \""
           + version + "\";\n\n}  // namespace quorel\n";
}

}  // namespace generator
