/// A binding of one family, made of one header and what an interface file says of it.
#pragma once

#include "header_reader.h"
#include "interface.h"
#include "model.h"
#include "output.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>

namespace generator {

class OneFamily : public testing::Test {
protected:
    OneFamily(std::string name, const char *header) : name_(std::move(name)), header_(header) {}

    void SetUp() override
    {
        directory_ = testing::TempDir() + name_ + "_XXXXXX";
        ASSERT_NE(mkdtemp(directory_.data()), nullptr);
        write_if_changed(directory_ + "/" + name_ + ".h", header_);
        write_if_changed(directory_ + "/binding.toml", "families = [\"" + name_ + "\"]\n");
    }
    void TearDown() override { std::filesystem::remove_all(directory_); }

    /// The model with that text in the family's interface file; the header is listed already.
    Model build(const std::string &interface)
    {
        const std::string header = name_ + ".h";
        write_if_changed(directory_ + "/" + name_ + ".toml", "headers = [\"" + header + "\"]\n" + interface);
        HeaderSource source;
        source.c_headers = {{header, directory_ + "/" + name_ + ".toml:1"}};
        source.include_directories = {directory_};
        return build_model(read_headers(source), read_interface(directory_));
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

private:
    std::string name_;
    const char *header_;
};

}  // namespace generator
