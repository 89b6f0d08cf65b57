/// A binding of one family, made of one header and what an interface file says of it.
#pragma once

#include "header_reader.h"
#include "interface.h"
#include "model.h"
#include "output.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace generator {

class OneFamily : public testing::Test {
protected:
    OneFamily(std::string name, const char *header) : name_(std::move(name)), header_(header) {}

    void SetUp() override
    {
        directory_ = testing::TempDir() + name_ + "_XXXXXX";
        ASSERT_NE(mkdtemp(directory_.data()), nullptr);
        write_if_changed(directory_ + "/" + name_ + ".h", header_);
        say_of_all("");
    }
    void TearDown() override { std::filesystem::remove_all(directory_); }

    /// What the interface says beside the family's name.
    void say_of_all(const std::string &text)
    {
        write_if_changed(directory_ + "/binding.toml", "families = [\"" + name_ + "\"]\n" + text);
    }

    /// The model with that text in the family's interface file; the header is listed already.
    Model build(const std::string &interface)
    {
        std::string headers;
        for (const std::string &header : more_headers_) {
            headers += ", \"" + header + "\"";
        }
        write_if_changed(directory_ + "/" + name_ + ".toml",
                         "headers = [\"" + name_ + ".h\"" + headers + "]\n" + interface);
        HeaderSource source;
        const Interface whole = read_interface(directory_);
        source.c_headers = whole.families[0].headers;
        source.cxx_headers = whole.families[0].cxx_headers;
        (is_of_system_ ? source.system_directories : source.include_directories) = {directory_};
        declarations_ = read_headers(source);
        declarations_.exports = exports_;
        return build_model(declarations_, whole);
    }

    /// What is said of that text, or "".
    std::string error_of(const std::string &interface)
    {
        try {
            build(interface);
        } catch (const std::runtime_error &error) {
            return error.what();
        }
        return "";
    }

    std::string directory_;
    Declarations declarations_;  ///< of what was built last
    std::vector<std::string> more_headers_;
    bool is_of_system_ = false;  ///< whether the header stands in a folder of the system's
    std::optional<std::set<std::string>> exports_;

private:
    std::string name_;
    const char *header_;
};

}  // namespace generator
