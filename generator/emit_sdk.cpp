#include "emit.h"
#include "output.h"
#include "spelling.h"

namespace generator {

namespace {

std::string parameter_list(const Function &function)
{
    std::string text;
    for (const Parameter &parameter : function.parameters)
        text += (text.empty() ? "" : ", ") + declare(parameter.type, parameter.name);
    return text.empty() ? "void" : text;
}

std::string prototype(const Function &function, const std::string &prefix)
{
    return declare(function.result, prefix + function.name + "(" + parameter_list(function) + ")");
}

std::string recording(const Parameter &parameter)
{
    TypePtr type = resolve_array_typedef(parameter.type);
    if (type->kind == Type::Kind::Array && !type->extent.empty())
        return "        call.array(" + parameter.name + ", sizeof(" + declare(type, "") + "));\n";
    return "        call.value(" + parameter.name + ");\n";
}

std::string forwarder(const Function &function)
{
    std::string names, records;
    for (const Parameter &parameter : function.parameters) {
        names += (names.empty() ? "" : ", ") + parameter.name;
        records += recording(parameter);
    }
    std::string keyword = spell(function.result) == "void" ? "" : "return ";
    return prototype(function, "") + "\n{\n    if (record::on) {\n        record::Call call(\"" + function.name +
           "\");\n" + records + "    }\n    " + keyword + "sim_" + function.name + "(" + names + ");\n}\n";
}

// What a function answers that nobody has implemented.
std::string fallback(const Function &function)
{
    TypePtr result = function.result;
    while (result->kind == Type::Kind::Typedef)
        result = result->target;
    std::string body;
    if (result->kind == Type::Kind::Pointer)
        body = " return nullptr; ";
    else if (spell(result) == "int")
        body = " return BCM_E_UNAVAIL; ";
    else if (spell(result) != "void")
        body = " return {}; ";
    std::string unnamed;
    for (const Parameter &parameter : function.parameters)
        unnamed += (unnamed.empty() ? "" : ", ") + spell(parameter.type);
    return "__attribute__((weak)) " +
           declare(function.result, "sim_" + function.name + "(" + (unnamed.empty() ? "void" : unnamed) + ")") + " {" +
           body + "}\n\n";
}

std::string enumerator_table(const std::string &tag, const std::vector<std::string> &enumerators)
{
    std::string rows;
    for (const std::string &name : enumerators)
        rows += "    {\"" + name + "\", " + name + "},\n";
    return "static const sim::Enumerator table_of_" + tag + "[] = {\n" + rows + "};\nconst sim::Enumerators sim::names_of_" +
           tag + " = {std::begin(table_of_" + tag + "), std::end(table_of_" + tag + ")};\n\n";
}

}  // namespace

std::string emit_simulator_header(const Model &model)
{
    std::string text = banner("The functions by which the simulator answers the SDK's calls.", "the SDK's headers") +
                       "#pragma once\n\n";
    std::string prototypes, names;
    std::vector<std::string> headers;
    for (const Family &family : model.families) {
        headers.insert(headers.end(), family.headers.begin(), family.headers.end());
        for (const Function &function : family.sdk_functions)
            prototypes += prototype(function, "sim_") + ";\n";
        for (const auto &entry : family.named_enumerations)
            names += "extern const Enumerators names_of_" + entry.first + ";\n";
    }
    return text + "#include \"enumerators.h\"\n\n" + includes(headers, {}) + "\nextern \"C\" {\n\n" + prototypes +
           "\n}\n\nnamespace sim {\n\n" + names + "\n}\n";
}

std::string emit_sdk_calls(const Family &family)
{
    std::string text = banner("Public functions of the family '" + family.name + "': record the call, ask the simulator.",
                              "interface/" + family.name + ".toml and the headers that it names") +
                       "#include \"sim.h\"\n\n#include \"record.h\"\n\n#include <iterator>\n\nextern \"C\" {\n\n";
    for (const Function &function : family.sdk_functions)
        text += forwarder(function) + fallback(function);
    text += "}\n\n";
    for (const auto &[tag, enumerators] : family.named_enumerations)
        text += enumerator_table(tag, enumerators);
    return text;
}

}  // namespace generator
