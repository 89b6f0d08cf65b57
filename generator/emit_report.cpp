#include "emit.h"
#include "output.h"
#include "signature.h"

#include <algorithm>

namespace generator {

namespace {

std::string kind_of(const Crossing &crossing)
{
    switch (crossing.conversion) {
    case Conversion::Int32:
    case Conversion::UInt32:
    case Conversion::Int8:
    case Conversion::UInt8:
    case Conversion::UInt16:
    case Conversion::UInt64:
    case Conversion::Bool:
    case Conversion::String:
        return scalar_name(crossing.conversion);
    case Conversion::Pointer:
        return "pointer";
    case Conversion::AnyPointer:
        return "any_pointer";
    case Conversion::Value:
        return "value";
    case Conversion::Callback:
        return "callback";
    case Conversion::NullableString:
        return "nullable_string";
    case Conversion::Mapped:
        return crossing.typemap->name;
    case Conversion::Object:
        return "object";
    case Conversion::Nothing:
        return "nothing";
    }
    return "";
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
    switch (variable.kind) {
    case VariableKind::Constant:
        return "constant";
    case VariableKind::Storage:
        return "storage";
    case VariableKind::UnboundedArray:
        return "unbounded_array";
    case VariableKind::Scalar:
    case VariableKind::String:
    case VariableKind::Pointer:
        break;
    }
    return kind_of(variable.crossing);
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
                             member.crossing.text,
                             member.crossing.descriptor.empty() ? "-" : member.crossing.descriptor,
                             record.self.text});
            }
        }
    }
    for (const Constant &constant : model.constants) {
        text += row({"constant", constant.enumeration.empty() ? "-" : constant.enumeration, constant.name});
    }
    for (const BoundVariable &variable : model.variables) {
        text += row({"variable", kind_of(variable), variable.name, variable.crossing.text});
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
