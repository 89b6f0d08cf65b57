// Type names are contract: users see them in messages, docstrings and repr.
#include "spelling.h"

#include <gtest/gtest.h>

namespace generator {
namespace {

TypePtr integer()
{
    return Type::builtin("int");
}

TypePtr vlan()
{
    return Type::typedef_of("bcm_vlan_t", Type::builtin("unsigned short"));
}

TypePtr address()
{
    return Type::typedef_of("bcm_l2_addr_t", Type::record("bcm_l2_addr_s"));
}

TypePtr traverse_callback()
{
    TypePtr pointer = Type::pointer_to(Type::builtin("void"));
    TypePtr function = Type::function(integer(), {integer(), Type::pointer_to(address()), pointer});
    return Type::typedef_of("bcm_l2_traverse_cb", Type::pointer_to(function));
}

TypePtr ip6()
{
    return Type::typedef_of("bcm_ip6_t", Type::array_of(Type::builtin("unsigned char"), "16"));
}

TypePtr resolved(const TypePtr &type)
{
    return resolve(type, [](const std::string &) { return false; });
}

TEST(Spelling, QualifiersStandAfterWhatTheyQualify)
{
    EXPECT_EQ(spell(Type::pointer_to(Type::constant(Type::builtin("char")))), "char const *");
    EXPECT_EQ(spell(Type::array_of(Type::constant(integer()), "8")), "int const [8]");
    EXPECT_EQ(spell(Type::constant(Type::pointer_to(integer()))), "int *const");
}

TEST(Spelling, OneSpaceBeforeARunOfMarks)
{
    EXPECT_EQ(spell(Type::pointer_to(vlan())), "bcm_vlan_t *");
    EXPECT_EQ(spell(Type::pointer_to(Type::pointer_to(address()))), "bcm_l2_addr_t **");
    EXPECT_EQ(spell(Type::reference_to(address())), "bcm_l2_addr_t &");
    EXPECT_EQ(spell(Type::array_of(Type::pointer_to(Type::builtin("char")), "")), "char *[]");
    EXPECT_EQ(spell(Type::pointer_to(Type::array_of(Type::builtin("unsigned char"), "16"))),
              "unsigned char (*)[16]");
}

TEST(Spelling, TypedefsOfArraysAreResolvedInMessagesOnly)
{
    TypePtr words = Type::typedef_of("uint32", Type::builtin("unsigned int"));
    TypePtr value = Type::typedef_of("soc_value_t", Type::array_of(words, "20"));
    EXPECT_EQ(spell(ip6()), "unsigned char [16]");
    EXPECT_EQ(spell(value), "unsigned int [20]");
    EXPECT_EQ(spell_declared(ip6()), "bcm_ip6_t");
    EXPECT_EQ(spell(Type::pointer_to(ip6())), "bcm_ip6_t *");
    EXPECT_EQ(spell(Type::array_of(words, "20")), "uint32 [20]");
    // The elements of a constant array are constant.
    EXPECT_EQ(spell(Type::constant(ip6())), "unsigned char const [16]");
    EXPECT_EQ(spell_declared(Type::constant(ip6())), "bcm_ip6_t const");
    EXPECT_EQ(spell(resolved(Type::pointer_to(Type::constant(ip6())))), "unsigned char const (*)[16]");
}

TEST(Spelling, CallbacksAreKnownByTheirSignature)
{
    EXPECT_EQ(spell(traverse_callback()), "bcm_l2_traverse_cb");
    EXPECT_EQ(spell(resolved(traverse_callback())), "int (*)(int,bcm_l2_addr_s *,void *)");
    EXPECT_EQ(declare(resolved(traverse_callback()), "callback"),
              "int (*callback)(int,bcm_l2_addr_s *,void *)");
}

TEST(Mangling, NamesTheResolvedType)
{
    EXPECT_EQ(mangle(resolved(Type::pointer_to(address()))), "_p_bcm_l2_addr_s");
    EXPECT_EQ(mangle(resolved(Type::pointer_to(vlan()))), "_p_unsigned_short");
    EXPECT_EQ(mangle(resolved(Type::pointer_to(ip6()))), "_p_a_16__unsigned_char");
    EXPECT_EQ(mangle(resolved(Type::pointer_to(Type::pointer_to(address())))), "_p_p_bcm_l2_addr_s");
    EXPECT_EQ(mangle(resolved(traverse_callback())), "_p_f_int_p_bcm_l2_addr_s_p_void__int");
    EXPECT_EQ(mangle(Type::pointer_to(Type::function(integer(), {}))), "_p_f_void__int");
    EXPECT_EQ(mangle(Type::pointer_to(Type::record("Hardware::ChipMemory::Ptr"))),
              "_p_Hardware__ChipMemory__Ptr");
}

TEST(Mangling, QualifiersOfWhatIsPointedToDoNotCount)
{
    TypePtr text = Type::pointer_to(Type::constant(Type::builtin("char")));
    EXPECT_EQ(mangle(text), "_p_char");
    EXPECT_EQ(mangle(Type::pointer_to(Type::function(integer(), {text}))), "_p_f_p_q_const__char__int");
}

TEST(Resolving, AnOpaqueTypeIsATypeOfItsOwn)
{
    TypePtr bitmap =
        Type::typedef_of("bcm_pbmp_t", Type::typedef_of("_shr_pbmp_t", Type::record("_shr_pbmp")));
    auto opaque = [](const std::string &name) { return name == "_shr_pbmp_t"; };
    EXPECT_EQ(mangle(resolve(Type::pointer_to(bitmap), opaque)), "_p__shr_pbmp_t");
    EXPECT_EQ(mangle(resolved(Type::pointer_to(bitmap))), "_p__shr_pbmp");
}

}  // namespace
}  // namespace generator
