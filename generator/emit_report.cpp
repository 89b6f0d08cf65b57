#include "emit.h"
#include "output.h"

#include <algorithm>

namespace generator {

namespace {

std::string kind_of(const Crossing &crossing)
{
    std::string scalar = scalar_name(crossing.conversion);
    if (!scalar.empty()) {
        return scalar;
    }
    switch (crossing.conversion) {
    case Conversion::Pointer:
        return "pointer";
    case Conversion::AnyPointer:
        return "any_pointer";
    case Conversion::Value:
        return "value";
    case Conversion::Callback:
        return "callback";
    case Conversion::Mapped:
        return crossing.typemap->name;
    case Conversion::Object:
        return "object";
    default:
        return "nothing";
    }
}

std::string kind_of(const BoundParameter &parameter)
{
    switch (parameter.direction) {
    case Direction::Out:
        return "appended";
    case Direction::InOut:
        return "in_and_out";
    default:
        return kind_of(parameter.crossing);
    }
}

std::string kind_of(const BoundMember &member)
{
    switch (member.storage) {
    case Storage::Array:
        return "array";
    case Storage::Record:
        return "record";
    default:
        return kind_of(member.crossing);
    }
}

std::string row(const std::vector<std::string> &texts)
{
    std::string line;
    for (const std::string &text : texts) {
        line += (line.empty() ? "" : "\t") + text;
    }
    return line + "\n";
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
                line.push_back(parameter.crossing.descriptor.empty() ? "-" : parameter.crossing.descriptor);
            }
            text += row(line);
        }
        for (const BoundRecord &record : family.records) {
            for (const BoundMember &member : record.members) {
                text += row({"member", family.name, record.name, member.name, kind_of(member),
                             member.crossing.text,
                             member.crossing.descriptor.empty() ? "-" : member.crossing.descriptor,
                             record.self.text});
            }
        }
    }
    for (const auto &[name, descriptor] : model.descriptors) {
        text += row({"type", name, descriptor.cast_from.empty() ? "-" : descriptor.cast_from});
    }
    return text;
}

std::string emit_layout(const Model &model)
{
    std::string text = banner("Prints the C compiler's view of the records.", "the bound headers")
                       + "#include <stddef.h>\n#include <stdio.h>\n";
    std::string body;
    for (const Family &family : model.families) {
        for (const std::string &header : family.headers) {
            text += "#include <" + header + ">\n";
        }
        for (const BoundRecord &record : family.records) {
            body += "    printf(\"" + record.name + " %zu\\n\", sizeof(" + record.c_name + "));\n";
            for (const BoundMember &member : record.members) {
                body += "    printf(\"" + record.name + " " + member.name + " %zu %zu\\n\", offsetof("
                        + record.c_name + ", " + member.name + "), sizeof(((" + record.c_name + " *)0)->"
                        + member.name + "));\n";
            }
        }
    }
    return text + "\nint main(void)\n{\n" + body + "    return 0;\n}\n";
}

}  // namespace generator
