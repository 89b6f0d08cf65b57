#include "output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace generator {
namespace {

TEST(Output, IsWrittenOnlyWhenItDiffers)
{
    std::string path = testing::TempDir() + "output_test.txt";
    std::filesystem::remove(path);
    write_if_changed(path, "one");
    auto before = std::filesystem::last_write_time(path) - std::chrono::hours(1);
    std::filesystem::last_write_time(path, before);
    write_if_changed(path, "one");
    EXPECT_EQ(std::filesystem::last_write_time(path), before);
    write_if_changed(path, "two");
    EXPECT_EQ(read_file(path), "two");
    EXPECT_FALSE(std::filesystem::exists(path + ".new"));
    std::filesystem::remove(path);
}

TEST(Output, TextsAreJoinedInOrderAndAboutEqual)
{
    EXPECT_EQ(joined({"aa", "b", "cc", "d"}, 2), (std::vector<std::string>{"aab", "ccd"}));
    EXPECT_EQ(joined({"a", "bbbbbbb", "c"}, 3), (std::vector<std::string>{"abbbbbbb", "", "c"}));
    EXPECT_EQ(joined({"", ""}, 2), (std::vector<std::string>{"", ""}));
}

TEST(Output, RulesNameAnyPath)
{
    EXPECT_EQ(make_rule("a b", {"c#", "$d"}), "a\\ b: \\\n  c\\# \\\n  $$d\n");
}

TEST(Output, LiteralsAreEscaped)
{
    EXPECT_EQ(literal_with_nul("a\"b\\c"), "\"a\\\"b\\\\c\\0\"");
}

}  // namespace
}  // namespace generator
