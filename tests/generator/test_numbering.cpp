// Generated rows keep numbers in 16 bits: what is beyond is refused, not cut off.
#include "numbering.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace generator {
namespace {

constexpr unsigned greatest = 0xfffe;  // 0xffff stands for "none"

TEST(Numbering, EndsWhereSixteenBitsDo)
{
    Model model;
    for (unsigned i = 0; i <= greatest; ++i) {
        model.descriptors["_p_" + std::to_string(i)];
    }
    Numbering numbering(model);
    numbering.begin_group("all");
    for (unsigned i = 0; i < greatest; ++i) {
        numbering.method("", "");
        numbering.arguments({{{}, Conversion::Int32, "int" + std::to_string(i), {}, nullptr}});
    }
    EXPECT_EQ(numbering.method("", ""), greatest);
    EXPECT_EQ(numbering.arguments({{{}, Conversion::Int32, "last", {}, nullptr}}), greatest);
    EXPECT_THROW(numbering.method("", ""), std::runtime_error);
    EXPECT_THROW(numbering.arguments({{{}, Conversion::Int32, "more", {}, nullptr}}), std::runtime_error);
    model.descriptors["_p_more"];
    EXPECT_THROW(Numbering{model}, std::runtime_error);
}

TEST(Numbering, EqualSequencesShareTheirPlace)
{
    Numbering numbering{Model()};
    const Crossing number{{}, Conversion::Int32, "int", {}, nullptr},
        text{{}, Conversion::String, "char *", {}, nullptr};
    EXPECT_EQ(numbering.arguments({number, text}), 0u);
    EXPECT_EQ(numbering.arguments({text}), 2u);
    EXPECT_EQ(numbering.arguments({number, text}), 0u);
    EXPECT_EQ(numbering.argument_table().size(), 3u);
}

}  // namespace
}  // namespace generator
