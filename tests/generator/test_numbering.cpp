// Generated rows keep numbers in 16 bits: what is beyond is refused, not cut off.
#include "numbering.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace generator {
namespace {

constexpr unsigned greatest = 0xfffe;  // 0xffff stands for "none"

Crossing number(const std::string &text)
{
    return {Type::builtin("int"), Conversion::Int32, text, {}, nullptr};
}

BoundFunction function(const std::string &name, const std::vector<std::string> &types)
{
    BoundFunction function{name, name, "", number("int"), {}, false, false};
    for (const std::string &type : types) {
        function.parameters.push_back({"a", number(type), Direction::In});
    }
    return function;
}

TEST(Numbering, EndsWhereSixteenBitsDo)
{
    Model types, methods, arguments;
    methods.families.resize(1);
    for (unsigned i = 0; i <= greatest; ++i) {
        const std::string name = "n" + std::to_string(i);
        types.descriptors[name];
        methods.families[0].functions.push_back(function(name, {}));
        arguments.variables.push_back({name, VariableKind::Scalar, false, number(name)});
    }
    EXPECT_EQ(Numbering(types).type(types.descriptors.rbegin()->first), greatest);
    EXPECT_EQ(Numbering(methods).method("n" + std::to_string(greatest)), greatest);
    EXPECT_EQ(Numbering(arguments).arguments({arguments.variables.back().crossing}), greatest);
    types.descriptors["more"];
    methods.families[0].functions.push_back(function("more", {}));
    arguments.variables.push_back({"more", VariableKind::Scalar, false, number("more")});
    for (const Model *model : {&types, &methods, &arguments}) {
        EXPECT_THROW(Numbering{*model}, std::runtime_error);
    }
}

TEST(Numbering, EqualSequencesShareTheirPlace)
{
    Model model;
    model.families.resize(2);
    model.families[0].functions = {function("first", {"int", "long"}), function("second", {"long"})};
    model.families[1].functions = {function("third", {"int", "long"})};
    const Numbering numbering(model);
    EXPECT_EQ(numbering.arguments({number("int"), number("long")}), 0u);
    EXPECT_EQ(numbering.arguments({number("long")}), 2u);
    EXPECT_EQ(numbering.argument_table().size(), 3u);
    EXPECT_EQ(numbering.method("third"), 2u);
}

}  // namespace
}  // namespace generator
