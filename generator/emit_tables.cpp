#include "emit.h"
#include "output.h"
#include "spelling.h"

namespace generator {

namespace {

std::string joined(const std::set<std::string> &spellings)
{
    std::string text;
    for (const std::string &spelling : spellings) {
        text += (text.empty() ? "" : "|") + spelling;
    }
    return text;
}

std::string groups(const Numbering &numbering)
{
    std::string declarations, rows;
    for (const Numbering::Group &group : numbering.groups()) {
        declarations += "extern const PyCFunction " + group.name + "_functions[];\nextern const char "
                        + group.name + "_docs[];\n";
        rows += "    {" + group.name + "_functions, " + group.name + "_docs, "
                + std::to_string(group.methods.size()) + "},\n";
    }
    return declarations + "\nconst MethodGroup method_groups[] = {\n" + rows
           + "};\nconst size_t method_group_count = " + std::to_string(numbering.groups().size())
           + ";\nconst size_t method_count = " + std::to_string(numbering.method_count()) + ";\n\n";
}

std::string argument_tables(const Numbering &numbering)
{
    std::string rows, texts, starts;
    for (const auto &[type, text] : numbering.argument_table()) {
        rows += "    {" + std::to_string(type) + ", " + std::to_string(text) + "},\n";
    }
    size_t start = 0;
    for (const std::string &text : numbering.texts()) {
        texts += "    " + literal_with_nul(text) + "\n";
        starts += "    " + std::to_string(start) + ",\n";
        start += text.size() + 1;
    }
    return "const Argument arguments[] = {\n" + rows + "};\n\nconst char argument_text[] =\n" + texts
           + "    ;\n\nconst uint32_t argument_text_start[] = {\n" + starts + "};\n\n";
}

std::string type_tables(const Model &model, const Numbering &numbering)
{
    std::string rows, names;
    for (const auto &[name, descriptor] : model.descriptors) {
        std::string from =
            descriptor.cast_from.empty() ? "no_type" : std::to_string(numbering.type(descriptor.cast_from));
        rows += "    {" + from + "},\n";
        names +=
            "    " + literal_with_nul(name) + " " + literal_with_nul(joined(descriptor.spellings)) + "\n";
    }
    std::string count = std::to_string(model.descriptors.size());
    return "const TypeRow type_rows[] = {\n" + rows + "};\n\nconst char type_names[] =\n" + names
           + "    ;\nconst size_t type_count = " + count + ";\nswig_type_info *types[" + count + " + 1];\n\n";
}

}  // namespace

std::string emit_tables(const Numbering &numbering)
{
    return banner("The tables that all families share.", "the interface files and the headers that they name")
           + "#include \"module/tables.h\"\n\nnamespace quorel {\n\n" + groups(numbering)
           + argument_tables(numbering) + "}  // namespace quorel\n";
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
        rows += "    {" + std::to_string(numbering.type(descriptor))
                + ", [](void *value) { delete static_cast<" + type + ">(value); }},\n";
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
        headers.insert(headers.end(), family.headers.begin(), family.headers.end());
    }
    std::string names, values;
    for (const Constant &constant : model.constants) {
        names += "    " + literal_with_nul(constant.name) + "\n";
        values += "    static_cast<int32_t>(" + constant.name + "),\n";
    }
    return banner("Constants, in header order.", "the interface files and the headers that they name")
           + includes(headers, {}) + "\n#include \"module/tables.h\"\n\nnamespace quorel {\n\n"
           + "const char constant_names[] =\n" + names + "    \"\";\n\nconst int32_t constant_values[] = {\n"
           + values + "    0,\n};\nconst size_t constant_count = " + std::to_string(model.constants.size())
           + ";\n\n}  // namespace quorel\n";
}

}  // namespace generator
