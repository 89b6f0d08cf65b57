// Generates the binding: reads the interface files and the headers that they name, and writes the module's
// generated sources, the development SDK's forwarding functions, the companion and a report.

#include "emit.h"
#include "header_reader.h"
#include "output.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace generator;

struct Options {
    std::string interface, companion, output;
    std::vector<std::string> include_directories, system_directories, flags;
};

constexpr char usage[] =
    "usage: generate --interface DIR --companion FILE --output DIR [--include DIR]... [--system-include "
    "DIR]... [--flag COMPILER_FLAG]...\n";

bool parse(int argc, char **argv, Options &options)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        std::string option = argv[i], value = argv[i + 1];
        if (option == "--interface") {
            options.interface = value;
        } else if (option == "--companion") {
            options.companion = value;
        } else if (option == "--output") {
            options.output = value;
        } else if (option == "--include") {
            options.include_directories.push_back(value);
        } else if (option == "--system-include") {
            options.system_directories.push_back(value);
        } else if (option == "--flag") {
            options.flags.push_back(value);
        } else {
            return false;
        }
    }
    return argc % 2 == 1 && !options.interface.empty() && !options.companion.empty()
           && !options.output.empty();
}

HeaderSource headers_of(const std::vector<FamilyInterface> &interface, const Options &options)
{
    HeaderSource source;
    for (const FamilyInterface &family : interface) {
        source.c_headers.insert(source.c_headers.end(), family.headers.begin(), family.headers.end());
        source.cxx_headers.insert(source.cxx_headers.end(), family.cxx_headers.begin(),
                                  family.cxx_headers.end());
    }
    source.include_directories = options.include_directories;
    source.system_directories = options.system_directories;
    source.flags = options.flags;
    return source;
}

void generate(const Options &options)
{
    std::vector<FamilyInterface> interface = read_interface(options.interface);
    Declarations declarations = read_headers(headers_of(interface, options));
    Model model = build_model(declarations, std::move(interface));

    auto write = [&](const std::string &name, const std::string &text) {
        write_if_changed(options.output + "/" + name, text);
    };
    const Rules rules = find_rules(model);
    Numbering numbering(model);
    Shapes shapes;
    for (const Family &family : model.families) {
        write("records_" + family.name + ".cpp", emit_records(family, numbering));
        write("calls_" + family.name + ".cpp", emit_calls(family, numbering, shapes));
        write("sdk_" + family.name + ".cpp", emit_sdk_calls(family, rules));
    }
    write("variables.cpp", emit_variables(model, numbering));
    write("shapes.h", emit_shape_declarations(model, shapes));
    write("shapes.cpp", emit_shape_definitions(shapes));
    write("tables.cpp", emit_tables(model, numbering));
    write("destructors.cpp", emit_destructors(model, numbering));
    write("constants.cpp", emit_constants(model));
    write("sim.h", emit_simulator_header(model));
    write("rules.tsv", emit_rules(model, rules));
    write("binding.tsv", emit_report(model));
    write("layout.c", emit_layout(model));
    write("QuorelApiNew.py", emit_companion(model, read_file(options.companion)));
}

}  // namespace

int main(int argc, char **argv)
{
    Options options;
    if (!parse(argc, argv, options)) {
        std::fputs(usage, stderr);
        return 2;
    }
    try {
        generate(options);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "generate: %s\n", error.what());
        return 1;
    }
    return 0;
}
