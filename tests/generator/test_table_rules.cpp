// What is answered from tables that an interface file describes.
#include "emit.h"
#include "one_family.h"
#include "rules.h"

#include <stdexcept>

namespace generator {
namespace {

constexpr char header[] = R"(
#ifndef SHELF_H
#define SHELF_H
typedef struct shelf_box_s { unsigned flags; int id; int row; int weight; } shelf_box_t;
typedef int (*shelf_box_cb)(int unit, shelf_box_t *box, void *user_data);
typedef int (*shelf_mark_cb)(int unit, int row, int colour, void *user_data);
int shelf_init(int unit);
int bcm_shelf_init(int unit);
int bcm_shelf_detach(int unit);
int shelf_box_create(int unit, shelf_box_t *box);
int shelf_box_get(int unit, int box, shelf_box_t *info, int *labels);
int shelf_box_set(int unit, int id, shelf_box_t *box);
int shelf_box_find(int unit, shelf_box_t *box, int *id);
int shelf_box_destroy(int unit, int box);
int shelf_box_destroy_all(int unit, int row);
int shelf_box_traverse(int unit, shelf_box_cb cb, void *user_data);
int shelf_label_add(int unit, int box, int place, unsigned long long text);
int shelf_label_get(int unit, int box, int max, int *place_array, unsigned long long *text_array, int *count);
int shelf_label_set(int unit, int box, int count, int *place_array);
int shelf_label_delete(int unit, int box, int place);
int shelf_label_delete_all(int unit, int box);
int shelf_label_move(int unit, int box, int place);
int shelf_mark_add(int unit, int row, int colour);
int shelf_mark_size_get(int unit, int *size, int *used);
int shelf_mark_each(int unit, int row, int count, int *colour_arr, unsigned *depth_arr);
int shelf_watch_add(int unit, shelf_mark_cb cb, void *user_data);
int shelf_watch_set(int unit, int box, shelf_mark_cb cb, void *user_data);
int shelf_ticket_get(int unit, int box, int *ticket);
int shelf_mark_traverse(int unit, shelf_mark_cb cb, void *user_data);
int shelf_paint_red(int unit, int box, int depth);
int shelf_paint_red_get(int unit, int box, int *depth);
int shelf_paint_odd(int unit, int box, int depth);
int shelf_paint_odd_get(int unit, int box, short *depth);
#endif
)";

constexpr char tables[] = R"(functions = ["*shelf_*"]
records = ["shelf_box_t"]
[tables.shelf_box]
record = "shelf_box_t"
key = "id"
id = "id"
with = "GIVEN REPLACED"
search = "shelf_box_find"
first = "100"
capacity = "8"
owns = "shelf_label"
counts = "labels=uses"
ranges = "weight=0..9"
all = "-1"
[tables.shelf_label]
key = "box place"
refers = "box=shelf_box"
[tables.shelf_mark]
key = "row colour"
unique = "colour"
size = "shelf_mark_size_get"
get_each = "shelf_mark_each"
[tables.shelf_watch]
key = "cb user_data"
[tables.shelf_watcher]
key = "box"
set = "shelf_watch_set"
refers = "box=shelf_box"
[tables.shelf_ticket]
key = "ticket"
id = "ticket"
number = "shelf_ticket_get"
[tables.shelf_paint]
key = "box"
each = "shelf_paint_"
)";

class TableRules : public OneFamily {
protected:
    TableRules() : OneFamily("shelf", header) {}

    /// The expression for a function, or why there is none.
    static std::string answer(const Answers &answers, const std::string &name)
    {
        const Answer &found = answers.at(name);
        return found.kind == AnswerKind::ByRule ? emit_rule(found.rule) : found.why;
    }
};

TEST_F(TableRules, ObjectsWithRecords)
{
    const Answers answers = find_answers(build(tables));
    const std::string box = "table_of_shelf_box, unit, ";
    EXPECT_EQ(answer(answers, "shelf_box_create"),
              "rules::create(" + box
                  + "{rules::given_at(box, sizeof *box), "
                    "rules::member_within(box, &shelf_box_t::weight, 0, 9)}, "
                    "{box != nullptr ? &box->id : nullptr, box != nullptr && (box->flags & GIVEN) != 0, "
                    "box != nullptr && (box->flags & REPLACED) != 0})");
    EXPECT_EQ(answer(answers, "shelf_box_get"),
              "rules::find(" + box
                  + "{rules::key_as(&shelf_box_t::id, box), rules::result_at(info, sizeof *info), "
                    "rules::uses(labels)})");
    EXPECT_EQ(answer(answers, "shelf_box_find"),
              "rules::search(" + box
                  + "{rules::given_at(box, sizeof *box)}, id, box != nullptr ? &box->id : nullptr)");
    EXPECT_EQ(answer(answers, "shelf_box_destroy"),
              "rules::remove(" + box + "{rules::key_as(&shelf_box_t::id, box)})");
    EXPECT_EQ(answer(answers, "shelf_box_destroy_all"),
              "rules::clear(" + box + "{rules::matching(offsetof(shelf_box_t, row), row, -1)})");
    EXPECT_EQ(answer(answers, "shelf_box_traverse"),
              "rules::traverse<rules::At<shelf_box_s>>(" + box + "{}, cb, user_data)");
    EXPECT_EQ(
        emit_table("shelf_box", "shelf", answers.at("shelf_box_get").rule.table_text),
        "static constexpr rules::Table table_of_shelf_box{\"shelf_box\", \"shelf\", 100, 8, nullptr, 0, "
        "\"shelf_label\", nullptr, 0};\n");
}

TEST_F(TableRules, EntriesAndArrays)
{
    const Answers answers = find_answers(build(tables));
    const std::string label = "table_of_shelf_label, unit, ";
    EXPECT_EQ(answer(answers, "shelf_label_add"),
              "rules::add(" + label + "{rules::key(box), rules::key(place), rules::given(text)})");
    EXPECT_EQ(answer(answers, "shelf_label_get"),
              "rules::list(" + label + "{rules::key(box)}, max, {place_array, text_array}, count)");
    EXPECT_EQ(answer(answers, "shelf_label_set"),
              "rules::replace_all(" + label + "{rules::key(box)}, count, {place_array}, false)");
    EXPECT_EQ(answer(answers, "shelf_label_delete_all"), "rules::clear(" + label + "{rules::key(box)})");
    EXPECT_EQ(answer(answers, "shelf_label_move"), "its name tells no operation of a rule");
    EXPECT_EQ(answer(answers, "shelf_mark_traverse"),
              "rules::traverse<int, int>(table_of_shelf_mark, unit, {}, cb, user_data, true)");
    EXPECT_EQ(answers.at("shelf_label_add").rule.table_text.references,
              "static constexpr rules::Reference references_of_shelf_label[] = "
              "{{{true, 0, sizeof(int)}, \"shelf_box\", nullptr}};\n");
    EXPECT_EQ(answer(answers, "shelf_paint_red"),
              "rules::set(table_of_shelf_paint, unit, {rules::key(box), rules::key_at(\"red\", 3), "
              "rules::given(depth)})");
    EXPECT_EQ(answer(answers, "shelf_paint_red_get"),
              "rules::find(table_of_shelf_paint, unit, {rules::key(box), rules::key_at(\"red\", 3), "
              "rules::result_at(depth, sizeof *depth)})");
    EXPECT_EQ(answer(answers, "shelf_paint_odd"), "shelf_paint_odd_get does not mirror it");
}

TEST_F(TableRules, CallbacksNumbersAndWhatIsUnique)
{
    const Answers answers = find_answers(build(tables));
    EXPECT_EQ(answer(answers, "shelf_watch_add"),
              "rules::add(table_of_shelf_watch, unit, {rules::callback(cb), rules::key(user_data)})");
    EXPECT_EQ(answer(answers, "shelf_watch_set"),
              "rules::set(table_of_shelf_watcher, unit, {rules::key(box), rules::given_callback(cb), "
              "rules::given(user_data)})");
    EXPECT_EQ(answer(answers, "shelf_ticket_get"),
              "rules::number(table_of_shelf_ticket, unit, {rules::given(box), "
              "rules::given_at(\"shelf_ticket_get\", sizeof \"shelf_ticket_get\")}, {ticket, false, false})");
    EXPECT_EQ(answer(answers, "shelf_mark_size_get"),
              "rules::size(table_of_shelf_mark, unit, {}, size, used)");
    EXPECT_EQ(
        answer(answers, "shelf_mark_each"),
        "rules::get_each(table_of_shelf_mark, unit, {rules::key(row)}, count, {colour_arr, depth_arr})");
    const TableText &text = answers.at("shelf_mark_add").rule.table_text;
    EXPECT_EQ(
        text.references,
        "static constexpr rules::Part unique_of_shelf_mark[] = {{true, 0 + sizeof(int), sizeof(int)}};\n");
    EXPECT_EQ(text.arguments, ", 1, INT_MAX, nullptr, 0, \"\", unique_of_shelf_mark, 1");
}

TEST_F(TableRules, RecordsThatARoomKeeps)
{
    const Model model = build(tables + std::string("named = \"shelfPaint\"\nkept_by = \"paint\"\n"));
    const Answers answers = find_answers(model);
    EXPECT_EQ(answer(answers, "shelf_paint_red"),
              "sim::set_paint(unit, {rules::key(box), rules::key(shelfPaintred), rules::given(depth)})");
    EXPECT_EQ(answer(answers, "shelf_paint_red_get"),
              "sim::find_paint(unit, {rules::key(box), rules::key(shelfPaintred), "
              "rules::result_at(depth, sizeof *depth)})");
    const std::string calls = emit_sdk_calls(model.families.front(), answers);
    EXPECT_NE(calls.find("table_of_shelf_box"), std::string::npos);
    EXPECT_EQ(calls.find("table_of_shelf_paint"), std::string::npos);
}

TEST_F(TableRules, Modules)
{
    const Answers answers = find_answers(build(tables));
    EXPECT_EQ(answer(answers, "bcm_shelf_init"), "rules::initialise(\"shelf\", unit)");
    EXPECT_EQ(answer(answers, "bcm_shelf_detach"), "rules::detach(\"shelf\", unit)");
    EXPECT_EQ(answers.at("shelf_init").kind, AnswerKind::Unfit);
}

TEST_F(TableRules, WhatIsWrongIsSaidByPlace)
{
    const Model model = build(
        "functions = [\"shelf_*\"]\n[tables.shelf_box]\nkey = \"row id\"\nid = \"row\"\n"
        "record = \"shelf_gone_t\"\ncolour = \"red\"\n[tables.shelf_none]\nkey = \"id\"\n");
    try {
        find_answers(model);
        FAIL();
    } catch (const std::runtime_error &error) {
        const std::string said = error.what();
        for (const char *what : {"shelf.toml:7: tables.shelf_box.colour: there is no such key\n",
                                 "no record 'shelf_gone_t' is bound\n", "the id is not the last key\n",
                                 "no function of the development SDK works on the table 'shelf_none'\n"}) {
            EXPECT_NE(said.find(what), std::string::npos) << said;
        }
    }
}

}  // namespace
}  // namespace generator
