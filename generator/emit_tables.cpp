#include "cxx_words.h"
#include "emit.h"
#include "output.h"
#include "spelling.h"

#include <fmt/format.h>

namespace generator {

namespace {

std::string cxx_name_of(const Constant &constant)
{
    return constant.is_macro ? constant.name : constant.scope + name_in_cxx(constant.name);
}

std::string module_names(const std::string &module)
{
    return fmt::format(
        "const char module_name[] = \"{0}\";\n"
        "const char proxy_type_name[] = \"{0}._Proxy\";\n"
        "const char member_descriptor_type_name[] = \"{0}.property\";\n\n",
        module);
}

std::string groups(const Numbering &numbering)
{
    std::string declarations, rows;
    for (const Numbering::Group &group : numbering.groups()) {
        declarations += fmt::format(
            "void {0}_enter(PyMethodDef *);\n"
            "extern const char {0}_docs[];\n",
            group.name);
        rows += fmt::format("    {{{0}_enter, {0}_docs, {1}}},\n", group.name, group.methods.size());
    }
    return fmt::format(
        "{}\n"
        "const MethodGroup method_groups[] = {{\n{}}};\n"
        "const size_t method_group_count = {};\n"
        "const size_t method_count = {};\n\n",
        declarations, rows, numbering.groups().size(), numbering.method_count());
}

std::string argument_tables(const Numbering &numbering)
{
    std::string rows, texts, starts;
    for (const auto &[type, text] : numbering.argument_table()) {
        rows += fmt::format("    {{{}, {}}},\n", type, text);
    }
    size_t start = 0;
    for (const std::string &text : numbering.texts()) {
        texts += fmt::format("    {}\n", literal_with_nul(text));
        starts += fmt::format("    {},\n", start);
        start += text.size() + 1;
    }
    return fmt::format(
        "const Argument arguments[] = {{\n{}}};\n\n"
        "const char argument_text[] =\n{}    ;\n\n"
        "const uint32_t argument_text_start[] = {{\n{}}};\n\n",
        rows, texts, starts);
}

std::string type_tables(const Model &model, const Numbering &numbering)
{
    std::string rows, names;
    for (const auto &[name, descriptor] : model.descriptors) {
        rows += descriptor.cast_from.empty()
                    ? "    {no_type},\n"
                    : fmt::format("    {{{}}},\n", numbering.type(descriptor.cast_from));
        const std::string spellings = fmt::format("{}", fmt::join(descriptor.spellings, "|"));
        names += fmt::format("    {} {}\n", literal_with_nul(name), literal_with_nul(spellings));
    }
    return fmt::format(
        "const TypeRow type_rows[] = {{\n{}}};\n\n"
        "const char type_names[] =\n{}    ;\n"
        "const size_t type_count = {count};\n"
        "swig_type_info *types[{count} + 1];\n\n",
        rows, names, fmt::arg("count", model.descriptors.size()));
}

}  // namespace

std::string emit_tables(const Numbering &numbering, const std::string &module)
{
    return banner("The tables that all families share.", "the interface files and the headers that they name")
           + "#include \"module/startup.h\"\n#include \"module/tables.h\"\n\nnamespace quorel {\n\n"
           + module_names(module) + groups(numbering) + argument_tables(numbering)
           + "}  // namespace quorel\n\n"
           + fmt::format(
               "extern \"C\" __attribute__((visibility(\"default\"))) void init{0}();\n\n"
               "void init{0}()\n{{\n    quorel::import();\n}}\n",
               module);
}

std::string emit_types(const Model &model, const Numbering &numbering)
{
    return banner("The type descriptors.", "the interface files and the headers that they name")
           + "#include \"module/type_table.h\"\n\nnamespace quorel {\n\n" + type_tables(model, numbering)
           + "}  // namespace quorel\n";
}

std::string emit_destructors(const Model &model, const Numbering &numbering)
{
    std::set<std::string> headers;
    std::map<std::string, std::string> classes;
    for (const Family &family : model.families) {
        for (const BoundFunction &function : family.functions) {
            if (function.result.conversion == Conversion::Value && is_class(function.result.type)) {
                headers.insert(family.cxx_headers.begin(), family.cxx_headers.end());
                classes[function.result.descriptor] = spell(Type::pointer_to(function.result.type));
            }
        }
    }
    std::string rows;
    for (const auto &[descriptor, type] : classes) {
        rows += fmt::format("    {{{}, [](void *value) {{ delete static_cast<{}>(value); }}}},\n",
                            numbering.type(descriptor), type);
    }
    return banner("How values of C++ classes are deleted.",
                  "the interface files and the headers that they name")
           + includes({}, {headers.begin(), headers.end()})
           + "\n#include \"module/tables.h\"\n\nnamespace quorel {\n\n"
           + "const DestructorRow destructors[] = {\n" + rows + "    {no_type, nullptr},\n};\n"
           + "const size_t destructor_count = " + std::to_string(classes.size())
           + ";\n\n}  // namespace quorel\n";
}

std::string emit_constants(const Model &model)
{
    std::vector<std::string> headers;
    for (const Family &family : model.families) {
        headers.insert(headers.end(), family.included.begin(), family.included.end());
    }
    std::string names, values;
    for (const Constant &constant : model.constants) {
        names += "    " + literal_with_nul(constant.name) + "\n";
        values += "    static_cast<int32_t>(" + cxx_name_of(constant) + "),\n";
    }
    return banner("Constants, in header order.", "the interface files and the headers that they name")
           + includes(headers, {}) + "\n#include \"module/tables.h\"\n\nnamespace quorel {\n\n"
           + "const char constant_names[] =\n" + names + "    \"\";\n\nconst int32_t constant_values[] = {\n"
           + values + "    0,\n};\nconst size_t constant_count = " + std::to_string(model.constants.size())
           + ";\n\n}  // namespace quorel\n";
}

std::string emit_values(const Model &model)
{
    std::vector<std::string> headers;
    for (const Family &family : model.families) {
        headers.insert(headers.end(), family.included.begin(), family.included.end());
    }
    std::string rows;
    for (const Constant &constant : model.values) {
        const char *converter = constant.kind == Constant::Kind::Real   ? "from_double"
                                : constant.kind == Constant::Kind::Text ? "from_string"
                                                                        : "from_wide";
        rows += fmt::format("    {{\"{}\", [] {{ return {}({}); }}}},\n", constant.name, converter,
                            cxx_name_of(constant));
    }
    return banner("Constants that are no integers of 32 bits, in header order.",
                  "the interface files and the headers that they name")
           + includes(headers, {}) + "\n#include \"module/convert.h\"\n\nnamespace quorel {\n\n"
           + "const ValueRow value_rows[] = {\n" + rows
           + "    {nullptr, nullptr},\n};\nconst size_t value_count = " + std::to_string(model.values.size())
           + ";\n\n}  // namespace quorel\n";
}

}  // namespace generator
