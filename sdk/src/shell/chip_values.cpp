#include "chip_values.h"

#include "number_text.h"
#include "shell.h"
#include "shell_values.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace sim {

namespace {

std::string hexadecimal(const Words &value)
{
    std::string text;
    for (auto word = value.rbegin(); word != value.rend(); ++word) {
        if (!text.empty() || *word != 0 || word + 1 == value.rend()) {
            char digits[12];
            std::snprintf(digits, sizeof digits, text.empty() ? "%x" : "%08x", *word);
            text += digits;
        }
    }
    return "0x" + text;
}

std::string bits_text(int bits)
{
    return std::to_string(bits) + (bits == 1 ? " bit" : " bits");
}

const Field *field_named(const Layout &layout, const std::string &name)
{
    const Field *found = std::find_if(layout.begin(), layout.end(), [&](const Field &field) {
        return same_text(name, field_name(field.id));
    });
    return found == layout.end() ? nullptr : found;
}

void print(const std::string &name, const Layout &layout, const Words &value)
{
    std::printf("%s = %s\n", name.c_str(), hexadecimal(value).c_str());
    for (const Field &field : layout) {
        std::printf("    %-24s %s\n", field_name(field.id), hexadecimal(field_of(value, field)).c_str());
    }
}

}  // namespace

bool read_value(const Arguments &args, const std::string &word, const std::string &owner, int bits,
                Words *value)
{
    const Field whole = {0, 0, bits};
    *value = {};
    const NumberStatus status = read_number(word, value->data(), static_cast<int>(value->size()));
    if (status == NumberStatus::malformed || word.find('-') != std::string::npos) {
        refuse(args, "'" + word + "' is no value");
        return false;
    }
    if (status == NumberStatus::too_large || !fits(*value, whole)) {
        refuse(args, owner + " has " + bits_text(bits) + ": '" + word + "' does not fit");
        return false;
    }
    return true;
}

bool next_changes(Arguments &args, const std::string &owner, const Layout &layout,
                  std::vector<FieldChange> *changes)
{
    while (args.left() > 0) {
        std::string name, text;
        if (!next_setting(args, &name, &text)) {
            return false;
        }
        FieldChange change = {field_named(layout, name), {}};
        if (change.field == nullptr) {
            refuse(args, owner + " has no field '" + name + "'");
            return false;
        }
        if (change.field->flags & SOCF_RO) {
            refuse(args, name + " is read-only");
            return false;
        }
        if (!read_value(args, text, field_name(change.field->id), change.field->length, &change.value)) {
            return false;
        }
        changes->push_back(change);
    }
    return true;
}

cmd_result_t show(const Arguments &args, const Entry &entry)
{
    std::vector<Words> values;
    for (const int core : entry.cores) {
        Words value = {};
        const int rc = entry.read(core, &value);
        if (rc < 0) {
            return done_or_fail(args, entry.name(core), rc);
        }
        values.push_back(value);
    }
    if (std::equal(values.begin() + 1, values.end(), values.begin())) {
        print(entry.name(entry.cores.size() > 1 ? entry.all : entry.cores.front()), *entry.layout,
              values.front());
        return CMD_OK;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        print(entry.name(entry.cores[i]), *entry.layout, values[i]);
    }
    return CMD_OK;
}

cmd_result_t change(const Arguments &args, const Entry &entry, const std::vector<FieldChange> &changes)
{
    for (const int core : entry.cores) {
        Words value = {};
        int rc = entry.read(core, &value);
        if (rc >= 0) {
            for (const FieldChange &change : changes) {
                put_field(value, *change.field, change.value);
            }
            rc = entry.write(core, value);
        }
        if (rc < 0) {
            return done_or_fail(args, entry.name(core), rc);
        }
    }
    return CMD_OK;
}

}  // namespace sim
