// Which functions of a small header are found to set, get, enter and remove what.
#include "emit.h"
#include "one_family.h"
#include "rules.h"

#include <stdexcept>

namespace generator {
namespace {

constexpr char header[] = R"(
#ifndef BOX_H
#define BOX_H
typedef int box_port_t;
typedef unsigned char box_mac_t[6];
typedef enum box_wood_e { BOX_OAK = 2, BOX_ASH = -1, BOX_ELM = 4 } box_wood_t;
typedef enum box_size_e { boxSizeSmall, boxSizeLarge, boxSizeCount } box_size_t;
typedef enum box_mark_e { BOX_RED = 1, BOX_BLUE = 2, BOX_WHITE = 4 } box_mark_t;
typedef struct box_lid_s { int hinge; int colour; } box_lid_t;
typedef int (*box_turn_cb)(int unit, int angle, int id, box_lid_t *lid, void *user_data);
typedef int (*box_walk_cb)(int unit, int id, box_lid_t *lid, void *user_data);
int box_speed_set(int unit, box_port_t port, int queue, int low, unsigned high);
int box_speed_get(int unit, box_port_t port, int queue, int *low, unsigned *high);
int box_mac_set(int unit, box_mac_t of, box_mac_t to);
int box_mac_get(int unit, box_mac_t of, box_mac_t to);
int box_cover_set(int unit, box_port_t port, box_lid_t *lid);
int box_cover_get(int unit, box_port_t port, box_lid_t *lid);
int box_cover_delete(int unit, box_port_t port);
int box_cover_delete_all(int unit);
int box_count_set(int unit, int counter, unsigned long long value);
int box_count_get(int unit, int counter, unsigned long long *value);
int box_count_set32(int unit, int counter, unsigned value);
int box_count_get32(int unit, int counter, unsigned *value);
int box_count_sync_get(int unit, int counter, unsigned long long *value);
int box_hinge_set(int unit, box_lid_t *lid);
int box_hinge_get(int unit, box_lid_t *lid);
int box_hinge_delete(int unit, int hinge);
int box_hinge_delete_all(int unit, box_lid_t *lid);
int box_turn_set(int unit, int angle, int id, box_lid_t *lid);
int box_turn_get(int unit, int *angle, int id, box_lid_t *lid);
int box_turn_traverse(int unit, box_turn_cb cb, void *user_data);
int box_lid_create(int unit, unsigned flags, box_lid_t *lid, int *id);
int box_lid_get(int unit, int id, box_lid_t *lid);
int box_lid_find(int unit, box_lid_t *lid, int *id);
int box_lid_destroy(int unit, int id);
int box_lid_traverse(int unit, box_walk_cb cb, void *user_data);
int box_knob_create(int unit, box_lid_t *lid, short *id);
int box_knob_get(int unit, int id, box_lid_t *lid);
int box_knob_destroy(int unit, int id);
int box_place_create(int unit, int colour, box_lid_t *id);
int box_place_get(int unit, box_lid_t id, int *colour);
int box_place_destroy(int unit, box_lid_t id);
int box_lids_set(int unit, int count, box_lid_t *lid_array);
int box_lids_get(int unit, int count, box_lid_t *lid_array);
int box_words_set(int unit, int number, int *words);
int box_words_get(int unit, int number, int *words);
int box_width_set(int unit, int width);
int box_width_get(int unit, short *width);
int box_wood_set(int unit, box_wood_t wood, int value);
int box_wood_get(int unit, box_wood_t wood, int *value);
int box_size_set(int unit, box_size_t size, int value);
int box_size_get(int unit, box_size_t size, int *value);
int box_mark_set(int unit, box_mark_t mark, int value);
int box_mark_get(int unit, box_mark_t mark, int *value);
int box_global_set(int value);
int box_global_get(int *value);
int box_list_add(int unit, int key, int value);
int box_list_get(int unit, int key, int *value);
int box_list_delete(int unit, int key, int value);
#endif
)";

constexpr char entries[] =
    "[key_checks]\nbox_port_t = \"own_port\"\n"
    "[identified_by]\nbox_hinge = \"hinge\"\n[created_with]\nbox_lid = \"BOX_WITH_ID\"\n";

class RulesTest : public OneFamily {
protected:
    RulesTest() : OneFamily("box", header) {}

    Answers find(const std::string &interface) { return find_answers(build(interface)); }

    // The call that answers a function, or "".
    static std::string answer(const Answers &answers, const std::string &function)
    {
        const Answer &found = answers.at(function);
        return found.kind == AnswerKind::ByRule ? emit_rule(found.rule) : "";
    }
};

TEST_F(RulesTest, GettersMirrorTheirSetters)
{
    Answers answers = find(entries);
    EXPECT_EQ(
        answer(answers, "box_speed_set"),
        R"(rules::set(table_of_box_speed, unit, {rules::own_port(port), rules::key(queue), rules::given(low), )"
        R"(rules::given(high)}))");
    EXPECT_EQ(answer(answers, "box_speed_get"),
              R"(rules::get(table_of_box_speed, unit, {rules::own_port(port), rules::key(queue), )"
              R"(rules::result_at(low, sizeof *low), rules::result_at(high, sizeof *high)}))");
    EXPECT_EQ(
        answer(answers, "box_mac_get"),
        R"(rules::get(table_of_box_mac, unit, {rules::key_at(of, sizeof(box_mac_t)), rules::result_at(to, )"
        R"(sizeof(box_mac_t))}))");
    EXPECT_EQ(answer(answers, "box_count_set32"),
              R"(rules::set(table_of_box_count, unit, {rules::key(counter), rules::given(value)}))");
    EXPECT_EQ(answer(answers, "box_count_sync_get"), answer(answers, "box_count_get"));
}

TEST_F(RulesTest, EnumerationsHaveBoundsUnlessTheyAreFlags)
{
    Answers answers = find(entries);
    EXPECT_EQ(
        answer(answers, "box_wood_set"),
        R"(rules::set(table_of_box_wood, unit, {rules::key(wood), rules::within(wood, BOX_ASH, BOX_ELM), )"
        R"(rules::given(value)}))");
    EXPECT_EQ(answer(answers, "box_size_set"),
              R"(rules::set(table_of_box_size, unit, {rules::key(size), rules::within(size, boxSizeSmall, )"
              R"(boxSizeLarge), rules::given(value)}))");
    EXPECT_EQ(answer(answers, "box_mark_set"),
              R"(rules::set(table_of_box_mark, unit, {rules::key(mark), rules::given(value)}))");
}

TEST_F(RulesTest, RecordsThatCanBeRemovedAreFoundOrNot)
{
    Answers answers = find(entries);
    EXPECT_EQ(
        answer(answers, "box_cover_get"),
        R"(rules::find(table_of_box_cover, unit, {rules::own_port(port), rules::result_at(lid, sizeof *lid)}))");
    EXPECT_EQ(answer(answers, "box_cover_delete"),
              R"(rules::remove(table_of_box_cover, unit, {rules::own_port(port)}))");
    EXPECT_EQ(answer(answers, "box_cover_delete_all"), R"(rules::clear(table_of_box_cover, unit, {}))");
    EXPECT_EQ(
        answer(answers, "box_hinge_get"),
        R"(rules::find(table_of_box_hinge, unit, {rules::member(lid, &box_lid_s::hinge), rules::result_at(lid, )"
        R"(sizeof *lid)}))");
    EXPECT_EQ(answer(answers, "box_hinge_delete"),
              R"(rules::remove(table_of_box_hinge, unit, {rules::key_as(&box_lid_s::hinge, hinge)}))");
    // What of the record says which ones to remove is not known.
    EXPECT_EQ(answer(answers, "box_hinge_delete_all"), "");
    // Callbacks are handed keys before values.
    EXPECT_NE(answer(answers, "box_turn_get"), "");
    EXPECT_EQ(answer(answers, "box_turn_traverse"), "");
}

TEST_F(RulesTest, ObjectsHaveIds)
{
    Answers answers = find(entries);
    EXPECT_EQ(answer(answers, "box_lid_create"),
              R"(rules::create(table_of_box_lid, unit, {rules::given_at(lid, sizeof *lid)}, {id, )"
              R"((flags & BOX_WITH_ID) != 0}))");
    EXPECT_EQ(answer(answers, "box_lid_get"),
              R"(rules::find(table_of_box_lid, unit, {rules::key(id), rules::result_at(lid, sizeof *lid)}))");
    EXPECT_EQ(answer(answers, "box_lid_find"),
              R"(rules::search(table_of_box_lid, unit, {rules::given_at(lid, sizeof *lid)}, {id}))");
    EXPECT_EQ(answer(answers, "box_lid_traverse"),
              R"(rules::traverse<int, rules::At<box_lid_s>>(table_of_box_lid, unit, {}, cb, user_data))");
}

TEST_F(RulesTest, IdsAreNumbersOfOneType)
{
    const std::string created = "[created_with]\nbox_lid = \"BOX_WITH_ID\"\n";
    EXPECT_NE(answer(find(created), "box_lid_create"), "");
    for (const char *table : {"box_knob", "box_place"}) {
        std::string errors;
        try {
            find(created + table + " = \"\"\n");
        } catch (const std::runtime_error &error) {
            errors = error.what();
        }
        EXPECT_NE(errors.find(std::string("no rule of the development SDK uses '") + table),
                  std::string::npos)
            << errors;
    }
}

TEST_F(RulesTest, WhatIsNotPlainIsLeftAlone)
{
    Answers answers = find(entries);
    for (const char *name :
         {"box_lids_set", "box_words_get", "box_width_set", "box_global_get", "box_list_add"}) {
        EXPECT_EQ(answer(answers, name), "") << name;
    }
    answers =
        find(std::string("unserved = [\"box_speed_get\"]\n") + "[key_checks]\nbox_port_t = \"own_port\"\n");
    EXPECT_EQ(answer(answers, "box_speed_set"), "");
    // What identifies the records, and how ids are chosen, is not guessed.
    EXPECT_EQ(answer(answers, "box_hinge_get"), "");
    EXPECT_EQ(answer(answers, "box_lid_get"), "");
}

TEST_F(RulesTest, WhatIsNotServedSaysWhy)
{
    Answers answers =
        find(std::string("unserved = [\"box_global_set\"]\n[unavailable]\n\"box_g*\" = \"nothing turns\"\n"
                         "\"box_global_set\" = \"is no box\"\n")
             + entries);
    const std::map<std::string, std::string> reasons = {
        {"box_lids_set", "'lid_array' is of as many objects as another argument says"},
        {"box_width_get", "'width' of its getter mirrors nothing"},
        {"box_words_set", "'words' of its getter mirrors nothing"},
        {"box_list_get", "box_list_delete takes other things than keys"},
        {"box_knob_get", "how an id is chosen is not told (created_with)"},
        {"box_turn_traverse", "does not go with what box_turn_get gets"},
        {"box_global_get", "nothing turns"},
        {"box_global_set", "is no box"},
    };
    for (const auto &[name, why] : reasons) {
        EXPECT_EQ(answers.at(name).why, why) << name;
    }
    EXPECT_EQ(answers.at("box_speed_get").why, "mirrors box_speed_set");
    answers = find(std::string("[unmet]\n\"box_speed*\" = \"boxes stand\"\n") + entries);
    EXPECT_EQ(answers.at("box_speed_get").why, "kept, met by no packet: boxes stand");
    EXPECT_EQ(answers.at("box_speed_get").kind, AnswerKind::ByRule);
    EXPECT_EQ(find("[key_checks]\nbox_port_t = \"own_port\"\n").at("box_hinge_set").why,
              "which members of its record are keys is not told (identified_by)");
}

TEST_F(RulesTest, EntriesThatFitNothingAreErrors)
{
    std::string errors;
    try {
        find(
            "unserved = [\"box_gone_set\"]\n[unavailable]\n\"box_speed_*\" = "
            "\"served\"\n[unmet]\n\"box_gone_*\" = \"gone\"\n[identified_by]\nbox_lids = "
            "\"hinge\"\n[key_checks]\nbox_mac_t = "
            "\"key\"\n");
    } catch (const std::runtime_error &error) {
        errors = error.what();
    }
    EXPECT_NE(errors.find("box.toml:2: unserved: no header declares 'box_gone_set'"), std::string::npos)
        << errors;
    EXPECT_NE(errors.find("no function that is unavailable fits 'box_speed_*'"), std::string::npos) << errors;
    EXPECT_NE(errors.find("no function that is kept fits 'box_gone_*'"), std::string::npos) << errors;
    EXPECT_NE(errors.find("no rule of the development SDK uses 'box_lids'"), std::string::npos) << errors;
    EXPECT_NE(errors.find("uses 'box_mac_t'"), std::string::npos) << errors;
}

}  // namespace
}  // namespace generator
