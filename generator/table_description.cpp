#include "table_description.h"

#include "argument_type.h"
#include "spelling.h"
#include "words.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace generator {

namespace {

struct Ending {
    const char *text, *operation;
};

// Longer ones first.
constexpr Ending endings[] = {
    {"_attach_get", "find"},   {"_delete_all", "clear"}, {"_destroy_all", "clear"}, {"_remove_all", "clear"},
    {"_detach_all", "clear"},  {"_clear_all", "clear"},  {"_multi_get", "list"},    {"_get_all", "list"},
    {"_traverse", "traverse"}, {"_destroy", "remove"},   {"_attach", "set"},        {"_create", "add"},
    {"_delete", "remove"},     {"_detach", "remove"},    {"_remove", "remove"},     {"_clear", "remove"},
    {"_find", "find"},         {"_add", "add"},          {"_set", "set"},           {"_get", "find"},
};

constexpr const char *operations[] = {"create", "add",         "set",      "modify",   "find",
                                      "get",    "search",      "number",   "remove",   "clear",
                                      "list",   "replace_all", "get_each", "traverse", "size"};

constexpr const char *other_fields[] = {
    "key",    "record", "id",  "with",   "replace", "first", "capacity", "refers", "owns",      "counts",
    "ranges", "also",   "all", "values", "each",    "named", "kept_by",  "unique", "unchecked", "object"};

}  // namespace

std::vector<std::string> table_keys()
{
    std::vector<std::string> keys(std::begin(operations), std::end(operations));
    keys.insert(keys.end(), std::begin(other_fields), std::end(other_fields));
    return keys;
}

TableDescription::TableDescription(const Model &model, const Family &family, std::string name,
                                   const TableEntry &entry)
    : family_(family),
      name_(std::move(name)),
      entry_(entry),
      keys_(words(field("key"))),
      record_(field("record")),
      id_(field("id"))
{
    for (const Family &any : model.families) {
        for (const BoundRecord &record : any.records) {
            if (record.name == record_) {
                for (const BoundMember &member : record.members) {
                    members_[member.name] = member.crossing.type;
                }
            }
        }
    }
}

std::string TableDescription::field(const char *name) const
{
    const auto found = entry_.fields.find(name);
    return found == entry_.fields.end() ? "" : found->second.text;
}

TypePtr TableDescription::member(const std::string &name) const
{
    const auto found = members_.find(name);
    return found == members_.end() ? nullptr : found->second;
}

bool TableDescription::is_record(const Parameter &parameter) const
{
    const TypePtr target = pointee(parameter.type);
    return target && is_record_pointer(parameter.type)
           && typedef_name(Type::without_const(target_of(parameter.type))) == record_;
}

std::string TableDescription::operation_of(const Function &function) const
{
    for (const char *operation : operations) {
        if (has(words(field(operation)), function.name)) {
            return operation;
        }
    }
    const std::string each = field("each");
    if (!each.empty()) {
        const bool is_one = function.name.compare(0, each.size(), each) == 0 && function.name != each;
        return !is_one ? "" : ends_with(function.name, "_get") ? "find" : "set";
    }
    std::vector<std::string> beginnings = words(field("also"));
    beginnings.push_back(name_);
    for (const Ending &ending : endings) {
        for (const std::string &beginning : beginnings) {
            if (function.name == beginning + ending.text) {
                return usual(ending.operation, function);
            }
        }
    }
    return "";
}

std::string TableDescription::usual(const std::string &operation, const Function &function) const
{
    const bool array =
        std::any_of(function.parameters.begin(), function.parameters.end(),
                    [](const Parameter &one) { return pointee(one.type) && names_an_array(one.name); });
    if (operation == "add" && !id_.empty()) {
        return "create";
    }
    if (operation == "set") {
        return array ? "replace_all" : id_.empty() ? "set" : "modify";
    }
    return operation == "find" && array ? "list" : operation;
}

TableText TableDescription::text() const
{
    TableText text;
    std::vector<std::string> references;
    for (const std::string &word : words(field("refers"))) {
        references.push_back(reference(word));
    }
    std::vector<std::string> parts;
    for (const std::string &part : words(field("unique"))) {
        parts.push_back(place(part));
    }
    const std::string name = "references_of_" + name_, unique = "unique_of_" + name_;
    if (!references.empty()) {
        text.references = fmt::format("static constexpr rules::Reference {}[] = {{{}}};\n", name,
                                      fmt::join(references, ", "));
    }
    if (!parts.empty()) {
        text.references +=
            fmt::format("static constexpr rules::Part {}[] = {{{}}};\n", unique, fmt::join(parts, ", "));
    }
    text.arguments = fmt::format(
        ", {}, {}, {}, {}, \"{}\", {}, {}{}", field("first").empty() ? "1" : field("first"),
        field("capacity").empty() ? "INT_MAX" : field("capacity"), references.empty() ? "nullptr" : name,
        references.size(), field("owns"), parts.empty() ? "nullptr" : unique, parts.size(),
        field("object").empty() ? "" : ", " + field("object"));
    return text;
}

std::string TableDescription::reference(const std::string &word) const
{
    const auto [part, to] = divided(word);
    const bool of_room = to.front() == '!';
    return fmt::format("{{{}, \"{}\", {}}}", place(part), of_room ? "" : to,
                       of_room ? "sim::" + to.substr(1) : "nullptr");
}

// Where parts of a record that follow each other are: in the key or the value, from which byte on, how large.
std::string TableDescription::place(const std::string &parts) const
{
    const std::size_t plus = parts.find('+');
    const std::string part = parts.substr(0, plus);
    std::string offset = "0";
    const bool in_key = has(keys_, part);
    if (in_key) {
        for (const std::string &key : keys_) {
            if (key == part) {
                break;
            }
            offset += " + " + size_by_name(key);
        }
    } else if (member(part)) {
        offset = fmt::format("offsetof({}, {})", record_, part);
    }
    std::string size = size_by_name(part);
    for (std::size_t begin = plus; begin != std::string::npos; begin = parts.find('+', begin + 1)) {
        size += " + " + size_by_name(parts.substr(begin + 1, parts.find('+', begin + 1) - begin - 1));
    }
    return fmt::format("{{{}, {}, {}}}", in_key, offset, size);
}

// The size of a key or value, by the member or the first parameter that has its name.
std::string TableDescription::size_by_name(const std::string &name) const
{
    if (member(name)) {
        return fmt::format("sizeof({}::{})", record_, name);
    }
    for (const Function &function : family_.sdk_functions) {
        if (!operation_of(function).empty()) {
            for (const Parameter &parameter : function.parameters) {
                if (parameter.name == name) {
                    const TypePtr target = pointee(parameter.type);
                    return fmt::format("sizeof({})", spell_declared(target ? target : parameter.type));
                }
            }
        }
    }
    return "sizeof(int)";
}

void TableDescription::check(Errors &errors) const
{
    const std::vector<std::string> known = table_keys();
    for (const auto &[key, field] : entry_.fields) {
        if (std::count(known.begin(), known.end(), key) == 0) {
            errors.add(field.place, "there is no such key");
        }
    }
    if (!record_.empty() && members_.empty()) {
        errors.add(entry_.place, "no record '" + record_ + "' is bound");
    }
    if (!id_.empty() && (keys_.empty() || keys_.back() != id_)) {
        errors.add(entry_.place, "the id is not the last key");
    }
}

}  // namespace generator
