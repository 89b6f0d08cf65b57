/// Groups and entries printed for people.
#include "enumerators.h"
#include "field.h"
#include "sim_field.h"
#include "sim_parse.h"

#include <cstdio>
#include <string>

using namespace sim;

namespace {

const Names stat_names(names_of_bcm_field_stat_e, "bcmFieldStat");

std::string hexadecimal(const std::string &bytes)
{
    std::string text;
    for (const char byte : bytes) {
        std::array<char, 3> digits;
        std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned char>(byte));
        text += digits.data();
    }
    return text;
}

/// Lines that all begin alike.
class Lines {
public:
    explicit Lines(const char *prefix) : prefix_(prefix) {}

    void print(int depth, const std::string &text) const
    {
        std::printf("%s%*s%s\n", prefix_, 2 * depth, "", text.c_str());
    }

private:
    const char *const prefix_;
};

const char *stage_name(FieldStage stage)
{
    return stage == FieldStage::lookup ? "lookup" : stage == FieldStage::ingress ? "ingress" : "egress";
}

/// A number as the caller has it in memory, or bytes.
std::string value_text(const std::string &bytes)
{
    const bool is_number = bytes.size() <= sizeof(std::uint64_t) && (bytes.size() & (bytes.size() - 1)) == 0;
    return hexadecimal(is_number ? std::string(bytes.rbegin(), bytes.rend()) : bytes);
}

std::string values_text(const FieldValues &values)
{
    std::string text;
    const std::size_t size = values.count != 0 ? values.bytes.size() / values.count : 0;
    for (std::size_t from = 0; size != 0 && from + size <= values.bytes.size(); from += size) {
        text += " 0x" + value_text(values.bytes.substr(from, size));
    }
    return text;
}

std::string action_text(int action, const FieldAction &given)
{
    std::string text = "action " + field_action_name(action);
    if (!given.pieces.empty()) {
        return text + " of " + std::to_string(given.pieces.size()) + " pieces and "
               + std::to_string(given.parameters[0]);
    }
    if (given.has_mac) {
        return text + " 0x" + hexadecimal({given.mac.begin(), given.mac.end()});
    }
    if (given.has_ports) {
        text += " ports";
        PortSet(given.ports).each([&](int port) { text += " " + std::to_string(port); });
        return text;
    }
    for (const uint32 parameter : given.parameters) {
        text += " " + std::to_string(parameter);
    }
    return text;
}

std::string stat_text(int id, const FieldStat &stat)
{
    std::string text = "counters " + std::to_string(id) + ":";
    for (const FieldCounter &counter : stat.counters) {
        text += " " + stat_names.name(counter.kind, true) + " " + std::to_string(counter.value);
    }
    return text;
}

void print_entry(const FieldState &state, const Lines &lines, bcm_field_entry_t id, const FieldEntry &entry)
{
    lines.print(1, "entry " + std::to_string(id) + ": priority " + std::to_string(entry.priority)
                       + (entry.installed != nullptr ? ", installed" : ", not installed")
                       + (entry.is_enabled ? "" : ", disabled"));
    for (const auto &[subject, values] : entry.qualifiers) {
        const std::string of = subject.of.empty() ? "" : " of 0x" + hexadecimal(subject.of);
        lines.print(2, field_qualifier_name(subject.qualifier) + of + values_text(values));
    }
    for (const auto &[key, inverted] : entry.ranges) {
        lines.print(2, field_qualifier_name(key.first) + (inverted != 0 ? " not in" : " in") + " range "
                           + std::to_string(key.second));
    }
    for (const auto &[qualifier, data] : entry.data) {
        lines.print(2, "data qualifier " + std::to_string(qualifier) + " 0x" + hexadecimal(data.value) + " 0x"
                           + hexadecimal(data.mask));
    }
    for (const auto &[action, given] : entry.actions) {
        lines.print(2, action_text(action, given));
    }
    for (const int stat : entry.stats) {
        if (stat != 0) {
            lines.print(2, stat_text(stat, state.stats.at(stat)));
        }
    }
    for (std::size_t level = 0; level < entry.policers.size(); ++level) {
        if (entry.policers[level].id != 0) {
            lines.print(2, "policer " + std::to_string(entry.policers[level].id) + " of level "
                               + std::to_string(level));
        }
    }
}

std::string names_of(const bcm_field_qset_t &qset)
{
    std::string text;
    for (int qualifier = 0; qualifier < bcmFieldQualifyCount; ++qualifier) {
        if (has_qualifier(qset, qualifier)) {
            text += " " + field_qualifier_name(qualifier);
        }
    }
    return text;
}

void print_group(const FieldState &state, const Lines &lines, bcm_field_group_t id, const FieldGroup &group)
{
    lines.print(0, "group " + std::to_string(id) + ": " + stage_name(group.stage) + ", priority "
                       + std::to_string(group.priority) + ", " + std::to_string(group.installed) + " of "
                       + std::to_string(group.entries.size()) + " entries installed"
                       + (group.is_enabled ? "" : ", disabled"));
    lines.print(1, "qualifiers" + names_of(group.qset));
    for (const auto &[entry, found] : group.entries) {
        print_entry(state, lines, entry, *found);
    }
}

}  // namespace

extern "C" {

int sim_bcm_field_show(int unit, const char *pfx)
{
    return begin(unit, ready<FieldState>, given(pfx)).then([&](FieldState &state) {
        const Lines lines(pfx);
        for (const auto &[id, group] : state.groups) {
            print_group(state, lines, id, group);
        }
        for (const auto &[id, range] : state.ranges) {
            std::string text = "range " + std::to_string(id) + ":";
            for (const FieldRange::Piece &piece : range.pieces) {
                text += " " + std::to_string(piece.low) + ".." + std::to_string(piece.high);
            }
            lines.print(0, text);
        }
        for (const auto &[id, stat] : state.stats) {
            lines.print(0, stat_text(id, stat));
        }
    });
}

int sim_bcm_field_group_dump(int unit, bcm_field_group_t group)
{
    return begin(unit, ready<FieldState>, field_group(group))
        .then(
            [&](FieldState &state, const FieldGroup &found) { print_group(state, Lines(""), group, found); });
}

int sim_bcm_field_entry_dump(int unit, bcm_field_entry_t entry)
{
    return begin(unit, ready<FieldState>, field_entry(entry))
        .then(
            [&](FieldState &state, const FieldEntry &found) { print_entry(state, Lines(""), entry, found); });
}

}  // extern "C"
