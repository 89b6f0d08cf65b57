// Which comment tells of which declaration, and what it says.
#include "comments.h"
#include "one_family.h"

#include <algorithm>

namespace generator {
namespace {

constexpr char header[] = R"(/*
 * Copyright: nobody's.
 */
/* Lamps, and what switches them. */
#ifndef LAMP_H
#define LAMP_H

/* Brightness. */
#define LAMP_DARK 0
#define LAMP_BRIGHT 7 /* the most */

#define LAMP_ALONE 1

/*************************************************
 * How a lamp
 *   may shine.
 *************************************************/
typedef enum lamp_mode_e {
    /* The plain ones. */
    lampModeOff,
    lampModeOn, /* since
                 * it was switched */
    lampModeLeft, lampModeRight /* one side */,

    // What moves,
    // in two lines.
    lampModeBlink
} lamp_mode_t;

/* A lamp. */
typedef struct lamp_s {
    int id;                // a number,
                           // from 0
    int low, high;         /* of a range */
    /* Where it hangs. */
    int room;
    int place;             /* in the room */

    union { int watts; };  /* power */
} lamp_t; /* not a lantern */

typedef int (*lamp_cb)(int unit, lamp_t *lamp, void *); /* called in the dark */
typedef unsigned int lamp_id_t;

/* Whether there is light. */
extern int lamp_light, /* anywhere */ lamp_lights;

/* Lamps by number.
 * BCM_E_NOT_FOUND: there is none. */
int lamp_get(int unit, /* of the house */ int id, lamp_t *lamp);
int lamp_set(int unit, int id, lamp_t *lamp)
    __attribute__((visibility("default"))); /* switches it */
/*-------------------------------------------*/
int lamp_plain(int unit);

/**
 * \brief Visits @c all lamps.
 *
 * @param[in] unit   the house
 * @param cb  what is called
 *            with each
 *
 * @retval LAMP_DARK  if there is none
 * \return a status
 */

int lamp_walk(int unit, lamp_cb cb);
int lamp_count(int unit); ///< How many.
int lamp_rooms(int unit);
/**< Likewise for rooms. */

int lamp_last(int unit);
#endif /* LAMP_H */
)";

class CommentsTest : public OneFamily {
protected:
    CommentsTest() : OneFamily("lamp", header) {}

    Declarations read(const char *text = header)
    {
        write_if_changed(directory_ + "/lamp.h", text);
        HeaderSource source;
        source.c_headers = {{"lamp.h", "lamp.toml:1"}};
        source.include_directories = {directory_};
        return read_headers(source);
    }

    template <typename Declared>
    static const Comment &comment_of(const std::vector<Declared> &declarations, const std::string &name)
    {
        static const Comment nowhere{"not declared", 0, "not declared"};
        auto found = std::find_if(declarations.begin(), declarations.end(),
                                  [&](const Declared &declared) { return declared.name == name; });
        EXPECT_NE(found, declarations.end()) << name;
        return found == declarations.end() ? nowhere : found->comment;
    }

    template <typename Declared>
    static void expect(const std::vector<Declared> &declarations, const std::string &name,
                       const std::string &above, const std::string &beside = "")
    {
        const Comment &comment = comment_of(declarations, name);
        EXPECT_EQ(comment.above, above) << name;
        EXPECT_EQ(comment.beside, beside) << name;
    }
};

TEST_F(CommentsTest, WhatStandsAboveTellsOfAllUpToAnEmptyLine)
{
    const Declarations declarations = read();
    expect(declarations.functions, "lamp_get", "Lamps by number.\nBCM_E_NOT_FOUND: there is none.");
    expect(declarations.functions, "lamp_set", "Lamps by number.\nBCM_E_NOT_FOUND: there is none.",
           "switches it");
    EXPECT_EQ(comment_of(declarations.functions, "lamp_get").line,
              comment_of(declarations.functions, "lamp_set").line);
    expect(declarations.functions, "lamp_plain", "");
    expect(declarations.constants, "LAMP_DARK", "Brightness.");
    expect(declarations.constants, "LAMP_BRIGHT", "Brightness.", "the most");
    expect(declarations.constants, "LAMP_ALONE", "");
    expect(declarations.variables, "lamp_light", "Whether there is light.", "anywhere");
    expect(declarations.variables, "lamp_lights", "Whether there is light.");
    EXPECT_EQ(declarations.file_comments.at(declarations.functions[0].header),
              "Lamps, and what switches them.");
}

TEST_F(CommentsTest, MembersAndEnumeratorsHaveTheirOwnBesideThoseOfTheirGroup)
{
    const Declarations declarations = read();
    expect(declarations.constants, "lampModeOff", "The plain ones.");
    expect(declarations.constants, "lampModeOn", "The plain ones.", "since\nit was switched");
    expect(declarations.constants, "lampModeLeft", "The plain ones.");
    expect(declarations.constants, "lampModeRight", "The plain ones.", "one side");
    expect(declarations.constants, "lampModeBlink", "What moves,\nin two lines.");

    ASSERT_EQ(declarations.records.size(), 1u);
    expect(declarations.records, "lamp_t", "A lamp.", "not a lantern");
    const std::vector<Member> &members = declarations.records[0].members;
    expect(members, "id", "", "a number,\nfrom 0");
    expect(members, "low", "", "of a range");
    expect(members, "high", "", "of a range");
    expect(members, "room", "Where it hangs.");
    expect(members, "place", "Where it hangs.", "in the room");
    expect(members, "watts", "");
}

TEST_F(CommentsTest, TypesHaveTheirNamesAndParameters)
{
    const Declarations declarations = read();
    expect(declarations.named_types, "lamp_mode_t", "How a lamp\n  may shine.");
    expect(declarations.named_types, "lamp_cb", "", "called in the dark");
    expect(declarations.named_types, "lamp_id_t", "");
    ASSERT_EQ(declarations.named_types.size(), 3u);
    EXPECT_EQ(declarations.named_types[0].type->name, "lamp_mode_e");
    std::vector<std::string> names;
    for (const Parameter &parameter : declarations.named_types[1].parameters) {
        names.push_back(parameter.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"unit", "lamp", "arg3"}));
}

TEST_F(CommentsTest, CommentsForDocumentationToolsSayTheSame)
{
    const Declarations declarations = read();
    expect(declarations.functions, "lamp_walk",
           "Visits all lamps.\n\nunit [in]: the house\ncb: what is called\n           with each\n\n"
           "LAMP_DARK: if there is none\nReturns: a status");
    expect(declarations.functions, "lamp_count", comment_of(declarations.functions, "lamp_walk").above,
           "How many.");
    expect(declarations.functions, "lamp_rooms", comment_of(declarations.functions, "lamp_walk").above,
           "Likewise for rooms.");
    expect(declarations.functions, "lamp_last", "");
    EXPECT_EQ(text_of_comment("/** \\ingroup lamps\n * \\deprecated use @ref lamp_get\n */"),
              "deprecated: use lamp_get");
    EXPECT_EQ(text_of_comment("/* 'a' costs 3 @ 4 \\param */"), "'a' costs 3 @ 4 \\param");
}

TEST_F(CommentsTest, WhatIsNoCommentIsNone)
{
    for (const char *empty : {"/**/", "/***/", "/* */", "//", "///", "/*------*/", "/**\n *\n */"}) {
        EXPECT_EQ(text_of_comment(empty), "") << empty;
    }
    const Declarations declarations = read(
        "#define LAMP_TEXT \"/* no comment */\"\nint lamp_a(int x); int lamp_b(int x); /* b */\r\n\r\n"
        "/* c,\r\n   in two lines */\r\nint lamp_c(int x);");
    expect(declarations.functions, "lamp_a", "");
    expect(declarations.functions, "lamp_b", "", "b");
    expect(declarations.functions, "lamp_c", "c,\nin two lines");
    EXPECT_EQ(declarations.file_comments.at(declarations.functions[0].header), "");
}

}  // namespace
}  // namespace generator
