// Generates the binding: reads the interface files and the headers that they name, and writes the module's
// generated sources, the development SDK's forwarding functions, the companion and a report.
//
// Which files are written depends on the number of units alone, so a build can name them before any is made, and
// need not look into the interface files. Which files were read is said beside the stamp.

#include "emit.h"
#include "exports.h"
#include "header_reader.h"
#include "output.h"
#include "version.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace generator;

struct Options {
    std::string interface, module, companion, version, output, stamp;
    size_t units = 1;
    bool strict = false;
    std::vector<std::string> headers, include_directories, own_directories, system_directories, flags,
        libraries;
};

constexpr char usage[] =
    "usage: generate (--interface DIR | --header HEADER...) --module NAME --version TEXT --output DIR "
    "[--companion FILE] [--units "
    "NUMBER] [--stamp FILE]"
    " [--strict yes] [--library FILE]... [--include DIR]... [--own-include DIR]... [--system-include DIR]... "
    "[--flag COMPILER_FLAG]...\n"
    "\n"
    "NAME is the extension module's; the companion, made of FILE, is called so without the underscore that "
    "it\n"
    "begins with. The functions of all families are written to as many files as there are units (1), about\n"
    "equal in size. The stamp is written last; FILE.d says, as a rule for make, which files were read. To "
    "the\n"
    "version a digest is added of the headers that were found in the folders of --include, and of the\n"
    "definitions among the flags. What no FILE of --library exports is not bound; without them it is not\n"
    "looked at. --strict yes makes an error of what cannot be bound, whatever the interface says. Without "
    "an\n"
    "interface all is bound that can be of each HEADER, and of what it includes from its own folder.\n"
    "generate --keys says what interface files may hold.\n";

size_t positive(const std::string &text)
{
    const bool is_number =
        !text.empty() && text.size() < 5 && text.find_first_not_of("0123456789") == std::string::npos;
    return is_number ? std::stoul(text) : 0;
}

// What C and Python both take for a name; the companion needs one of its own.
bool is_module_name(const std::string &text)
{
    const char *rest = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    return text.size() > 1 && text[0] == '_' && text.find_first_not_of(rest) == std::string::npos
           && (text[1] < '0' || text[1] > '9');
}

bool parse(int argc, char **argv, Options &options)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        std::string option = argv[i], value = argv[i + 1];
        if (option == "--interface") {
            options.interface = value;
        } else if (option == "--header") {
            options.headers.push_back(value);
        } else if (option == "--module") {
            options.module = value;
        } else if (option == "--companion") {
            options.companion = value;
        } else if (option == "--version") {
            options.version = value;
        } else if (option == "--output") {
            options.output = value;
        } else if (option == "--units") {
            options.units = positive(value);
        } else if (option == "--stamp") {
            options.stamp = value;
        } else if (option == "--strict" && value == "yes") {
            options.strict = true;
        } else if (option == "--library") {
            options.libraries.push_back(value);
        } else if (option == "--include") {
            options.include_directories.push_back(value);
        } else if (option == "--own-include") {
            options.own_directories.push_back(value);
        } else if (option == "--system-include") {
            options.system_directories.push_back(value);
        } else if (option == "--flag") {
            options.flags.push_back(value);
        } else {
            return false;
        }
    }
    return argc % 2 == 1 && options.interface.empty() != options.headers.empty()
           && is_module_name(options.module) && !options.version.empty() && !options.output.empty()
           && options.units > 0;
}

HeaderSource folders_of(const Options &options)
{
    HeaderSource source;
    source.include_directories = options.include_directories;
    source.own_directories = options.own_directories;
    source.system_directories = options.system_directories;
    source.flags = options.flags;
    return source;
}

Interface interface_of(const Options &options, const HeaderSource &folders)
{
    if (options.headers.empty()) {
        return read_interface(options.interface);
    }
    return default_interface(options.headers,
                             [&](const std::string &header) { return headers_below(header, folders); });
}

void write_stamp(const Options &options, std::vector<std::string> inputs,
                 const std::vector<FamilyInterface> &interface)
{
    if (!options.interface.empty()) {
        inputs.push_back(options.interface + "/binding.toml");
    }
    if (!options.companion.empty()) {
        inputs.push_back(options.companion);
    }
    for (const FamilyInterface &family : interface) {
        if (!family.file.empty()) {
            inputs.push_back(family.file);
        }
    }
    inputs.insert(inputs.end(), options.libraries.begin(), options.libraries.end());
    write_if_changed(options.stamp + ".d", make_rule(options.stamp, inputs));
    if (!std::ofstream(options.stamp)) {
        throw std::runtime_error("cannot write " + options.stamp);
    }
}

void generate(const Options &options)
{
    HeaderSource source = folders_of(options);
    Interface interface = interface_of(options, source);
    interface.strict = interface.strict || options.strict;
    for (const FamilyInterface &family : interface.families) {
        source.c_headers.insert(source.c_headers.end(), family.headers.begin(), family.headers.end());
        source.cxx_headers.insert(source.cxx_headers.end(), family.cxx_headers.begin(),
                                  family.cxx_headers.end());
    }
    Declarations declarations = read_headers(source);
    const std::string version = version_of(options.version, declarations.files, source);
    if (!options.libraries.empty()) {
        declarations.exports = exports_of(options.libraries);
    }
    Model model = build_model(declarations, interface);

    auto write = [&](const std::string &name, const std::string &text) {
        write_if_changed(options.output + "/" + name, text);
    };
    const Answers answers = find_answers(model);
    const Numbering numbering(model);
    const Shapes shapes = shapes_of(model);
    std::vector<std::string> bindings, throwing_bindings, sdk_calls;
    for (const Family &family : model.families) {
        std::vector<std::string> &of_its_kind = throws(family) ? throwing_bindings : bindings;
        of_its_kind.push_back(emit_records(family, numbering));
        of_its_kind.push_back(emit_calls(family, numbering, model.cxx_names));
        sdk_calls.push_back(emit_sdk_calls(family, answers));
        write("sim_" + family.name + ".h", emit_simulator_header(family));
    }
    // Reading the headers takes longer than compiling a family, so one file serves many of them.
    const std::vector<std::string> binding_units = joined(bindings, options.units);
    const std::vector<std::string> sdk_units = joined(sdk_calls, options.units);
    for (size_t i = 0; i < options.units; ++i) {
        write("families_" + std::to_string(i + 1) + ".cpp", binding_units[i]);
        write("sdk_" + std::to_string(i + 1) + ".cpp", sdk_units[i]);
    }
    write("families_throwing.cpp", joined(throwing_bindings, 1).front());
    if (!declarations.common_header.empty()) {
        write(common_header, declarations.common_header);
    }
    write("variables.cpp", emit_variables(model, numbering));
    write("shapes.h", emit_shape_declarations(model, shapes));
    write("shapes.cpp", emit_shape_definitions(shapes));
    write("tables.cpp", emit_tables(numbering, options.module));
    write("types.cpp", emit_types(model, numbering));
    const Index index = emit_index(model, declarations, numbering);
    write("index.cpp", index.tables);
    write("callback_slots.cpp", index.callbacks);
    write("chip_names.cpp", emit_chip_names(model));
    write("names.cpp", emit_names(model, declarations));
    write("destructors.cpp", emit_destructors(model, numbering));
    write("constants.cpp", emit_constants(model));
    write("values.cpp", emit_values(model));
    write("rules.tsv", emit_rules(model, answers));
    write("binding.tsv", emit_report(model));
    write("report.tsv", emit_outcomes(model));
    write("reference.tsv", emit_reference(model, declarations));
    std::filesystem::create_directories(options.output + "/stubs/" + options.module + "_stubs");
    for (const auto &[path, text] : emit_stubs(model, declarations, options.module)) {
        if (path != options.module.substr(1) + ".pyi" || !options.companion.empty()) {
            write("stubs/" + path, text);
        }
    }
    write("layout.c", emit_layout(model));
    write("version.h", emit_version(version));
    if (!options.companion.empty()) {
        write(options.module.substr(1) + ".py",
              emit_companion(model, options.module, read_file(options.companion), version));
    }
    if (!options.stamp.empty()) {
        write_stamp(options, declarations.files, interface.families);
    }
}

}  // namespace

int main(int argc, char **argv)
{
    Options options;
    if (argc == 2 && std::string(argv[1]) == "--keys") {
        for (const std::string &key : interface_keys()) {
            std::puts(key.c_str());
        }
        return 0;
    }
    if (!parse(argc, argv, options)) {
        std::fputs(usage, stderr);
        return 2;
    }
    try {
        generate(options);
    } catch (const std::exception &error) {
        const std::string what = error.what();
        std::fprintf(stderr, "generate: %s%s", what.c_str(), what.back() == '\n' ? "" : "\n");
        return 1;
    }
    return 0;
}
