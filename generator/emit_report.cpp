#include "emit.h"
#include "output.h"
#include "signature.h"

#include <fmt/format.h>

#include <algorithm>

namespace generator {

std::string kind_of(const Crossing &crossing)
{
    return crossing.typemap ? crossing.typemap->name : conversion_name(crossing.conversion);
}

std::string kind_of(const BoundParameter &parameter)
{
    switch (parameter.direction) {
    case Direction::Out:
        return "appended";
    case Direction::InOut:
        return "in_and_out";
    case Direction::In:
        break;
    }
    return parameter.low_bits ? "low_bits" : kind_of(parameter.crossing);
}

std::string kind_of(const BoundMember &member)
{
    switch (member.storage) {
    case Storage::Array:
        return "array";
    case Storage::Record:
        return "record";
    case Storage::Text:
        return "text";
    case Storage::Bits:
        return "bits";
    case Storage::Scalar:
    case Storage::Opaque:
    case Storage::Pointer:
    case Storage::Mapped:
        break;
    }
    return kind_of(member.crossing);
}

std::string kind_of(const BoundVariable &variable)
{
    if (variable.read_only && variable.kind != VariableKind::UnboundedArray) {
        return "constant";
    }
    switch (variable.kind) {
    case VariableKind::Storage:
        return "storage";
    case VariableKind::UnboundedArray:
        return "unbounded_array";
    case VariableKind::Scalar:
    case VariableKind::String:
    case VariableKind::Pointer:
    case VariableKind::Callback:
        break;
    }
    return kind_of(variable.crossing);
}

namespace {

std::string row(const std::vector<std::string> &texts)
{
    return fmt::format("{}\n", fmt::join(texts, "\t"));
}

const std::string &or_dash(const std::string &text)
{
    static const std::string dash = "-";
    return text.empty() ? dash : text;
}

}  // namespace

std::string emit_report(const Model &model)
{
    std::string text;
    for (const Family &family : model.families) {
        for (const BoundFunction &function : family.functions) {
            auto same_name = [&](const BoundFunction &other) { return other.name == function.name; };
            bool overloaded = std::count_if(family.functions.begin(), family.functions.end(), same_name) > 1;
            std::vector<std::string> line = {overloaded ? "overload" : "function", family.name,
                                             docstring(function), function.of_sdk ? "sdk" : "helper",
                                             kind_of(function.result)};
            for (const BoundParameter &parameter : function.parameters) {
                line.push_back(kind_of(parameter));
                line.push_back(parameter.crossing.text);
                line.push_back(or_dash(parameter.crossing.descriptor));
            }
            text += row(line);
        }
        for (const BoundPointerClass &bound : family.pointer_classes) {
            text +=
                row({"pointer_class", family.name, bound.name, kind_of(bound.element), bound.element.text});
        }
        for (const BoundArray &array : family.arrays) {
            text += row({"array", family.name, array.name, kind_of(array.element), array.element.text});
        }
        for (const BoundRecord &record : family.records) {
            for (const BoundMember &member : record.members) {
                text += row({"member", family.name, record.name, member.name, kind_of(member),
                             member.crossing.text, or_dash(member.crossing.descriptor), record.self.text});
            }
        }
    }
    for (const Constant &constant : model.constants) {
        text += row({"constant", or_dash(constant.enumeration), constant.name});
    }
    for (const BoundVariable &variable : model.variables) {
        text += row({"variable", kind_of(variable), variable.name, variable.crossing.text});
    }
    for (const auto &[name, descriptor] : model.descriptors) {
        text += row({"type", name, or_dash(descriptor.cast_from)});
    }
    return text;
}

std::string emit_outcomes(const Model &model)
{
    std::string text = "what\tname\tplace\toutcome\treason\thint\n";
    for (const Outcome &outcome : model.outcomes) {
        const char *kind = outcome.kind == Outcome::Kind::Bound     ? "bound"
                           : outcome.kind == Outcome::Kind::LeftOut ? "left out"
                                                                    : "refused";
        text += row({outcome.what, outcome.name, outcome.place, kind, or_dash(outcome.reason),
                     or_dash(outcome.hint)});
    }
    return text;
}

std::string emit_layout(const Model &model)
{
    std::string headers, body;
    for (const Family &family : model.families) {
        for (const std::string &header : family.headers) {
            headers += fmt::format("#include <{}>\n", header);
        }
        for (const BoundRecord &record : family.records) {
            if (record.c_name.empty()) {
                continue;
            }
            body += fmt::format("    printf(\"{} %zu\\n\", sizeof({}));\n", record.name, record.c_name);
            for (const BoundMember &member : record.members) {
                if (member.storage == Storage::Bits || !member.sized) {
                    continue;
                }
                body += fmt::format(
                    "    printf(\"{record} {member} %zu %zu\\n\", offsetof({c_name}, {member}), "
                    "sizeof((({c_name} *)0)->{member}));\n",
                    fmt::arg("record", record.name), fmt::arg("member", member.name),
                    fmt::arg("c_name", record.c_name));
            }
        }
    }
    return fmt::format(
        "{}#include <stddef.h>\n#include <stdio.h>\n{}\nint main(void)\n{{\n{}    return 0;\n}}\n",
        banner("Prints the C compiler's view of the records.", "the bound headers"), headers, body);
}

}  // namespace generator
