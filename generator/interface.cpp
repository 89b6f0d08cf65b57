#include "interface.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

#define TOML_HEADER_ONLY 1
#include <toml++/toml.h>

namespace generator {

namespace {

[[noreturn]] void fail(const std::string &file, const toml::node &node, const std::string &what)
{
    throw std::runtime_error(file + ":" + std::to_string(node.source().begin.line) + ": " + what);
}

// No TOML, or no file to read it from.
std::string described(const toml::parse_error &error, const std::string &file)
{
    return file + ":" + std::to_string(error.source().begin.line) + ": " + std::string(error.description());
}

std::string text_of(const std::string &file, const toml::node &node)
{
    if (!node.is_string()) {
        fail(file, node, "a string is wanted here");
    }
    return **node.as_string();
}

class FamilyReader {
public:
    FamilyReader(const std::string &directory, const std::string &name)
    {
        family_.name = name;
        family_.file = directory + "/" + name + ".toml";
    }

    /// Adds a line to `errors` for each section that is wrong.
    FamilyInterface read(std::string &errors)
    {
        try {
            toml::table table = toml::parse_file(family_.file);
            for (auto &&[key, node] : table) {
                try {
                    read_section(std::string(key.str()), node);
                } catch (const std::runtime_error &error) {
                    errors += error.what() + std::string("\n");
                }
            }
        } catch (const toml::parse_error &error) {
            errors += described(error, family_.file) + "\n";
        }
        return std::move(family_);
    }

private:
    void read_section(const std::string &section, const toml::node &node)
    {
        if (section == "headers") {
            family_.headers = list(node);
        } else if (section == "cxx_headers") {
            family_.cxx_headers = list(node);
        } else if (section == "functions") {
            family_.functions = list(node);
        } else if (section == "records") {
            family_.records = list(node);
        } else if (section == "constants") {
            family_.constants = list(node);
        } else if (section == "variables") {
            family_.variables = list(node);
        } else if (section == "raises") {
            family_.raises = list(node);
        } else if (section == "named") {
            family_.named = list(node);
        } else if (section == "opaque") {
            family_.opaque = list(node);
        } else if (section == "opaque_here") {
            family_.opaque_here = list(node);
        } else if (section == "appended") {
            family_.appended = strings(node);
        } else if (section == "in_and_out") {
            family_.in_and_out = strings(node);
        } else if (section == "replaced") {
            family_.replaced = strings(node);
        } else if (section == "unserved") {
            family_.unserved = list(node);
        } else if (section == "identified_by") {
            family_.identified_by = strings(node);
        } else if (section == "created_with") {
            family_.created_with = strings(node);
        } else if (section == "key_checks") {
            family_.key_checks = strings(node);
        } else if (section == "text") {
            family_.text = strings(node);
        } else if (section == "typemaps") {
            read_typemaps(node);
        } else if (section == "pointer_classes") {
            read_pointer_classes(node);
        } else if (section == "arrays") {
            for (auto &[name, element] : strings(node)) {
                family_.arrays.push_back({name, element});
            }
        } else {
            fail(family_.file, node, "unknown section '" + section + "'");
        }
    }

    const toml::table &table(const toml::node &node)
    {
        if (!node.is_table()) {
            fail(family_.file, node, "a table is wanted here");
        }
        return *node.as_table();
    }

    std::vector<std::string> list(const toml::node &node)
    {
        if (!node.is_array()) {
            fail(family_.file, node, "a list is wanted here");
        }
        std::vector<std::string> texts;
        for (const toml::node &item : *node.as_array()) {
            texts.push_back(text_of(family_.file, item));
        }
        return texts;
    }

    std::map<std::string, std::string> strings(const toml::node &node)
    {
        std::map<std::string, std::string> texts;
        for (auto &&[key, value] : table(node)) {
            texts[std::string(key.str())] = text_of(family_.file, value);
        }
        return texts;
    }

    std::string field(const toml::table &entry, const char *name)
    {
        const toml::node *node = entry.get(name);
        if (!node) {
            fail(family_.file, entry, std::string("'") + name + "' is missing");
        }
        return text_of(family_.file, *node);
    }

    // The table of one entry, which has no other keys than these.
    const toml::table &entry(const toml::node &node, std::initializer_list<const char *> keys)
    {
        for (auto &&[key, value] : table(node)) {
            if (std::count(keys.begin(), keys.end(), key.str()) == 0) {
                fail(family_.file, value, "unknown key '" + std::string(key.str()) + "'");
            }
        }
        return *node.as_table();
    }

    void read_typemaps(const toml::node &node)
    {
        for (auto &&[key, value] : table(node)) {
            const toml::table &typemap = entry(value, {"header", "name"});
            family_.typemaps[std::string(key.str())] = {field(typemap, "header"), field(typemap, "name")};
        }
    }

    void read_pointer_classes(const toml::node &node)
    {
        for (auto &&[key, value] : table(node)) {
            const toml::table &declared = entry(value, {"element", "equivalent"});
            const toml::node *equivalent = declared.get("equivalent");
            if (equivalent && !equivalent->is_boolean()) {
                fail(family_.file, *equivalent, "true or false is wanted here");
            }
            family_.pointer_classes.push_back({std::string(key.str()), field(declared, "element"),
                                               equivalent && **equivalent->as_boolean()});
        }
    }

    FamilyInterface family_;
};

}  // namespace

std::vector<FamilyInterface> read_interface(const std::string &directory)
{
    std::string file = directory + "/binding.toml", errors;
    toml::table binding;
    try {
        binding = toml::parse_file(file);
    } catch (const toml::parse_error &error) {
        throw std::runtime_error(described(error, file));
    }
    for (auto &&[key, node] : binding) {
        if (key.str() != "families") {
            fail(file, node, "unknown key '" + std::string(key.str()) + "'");
        }
    }
    const toml::array *names = binding["families"].as_array();
    if (!names) {
        throw std::runtime_error(file + ": the list 'families' is missing");
    }
    std::vector<FamilyInterface> families;
    for (const toml::node &node : *names) {
        const std::string name = text_of(file, node);
        for (const FamilyInterface &other : families) {
            if (other.name == name) {
                fail(file, node, "the family '" + name + "' is listed twice");
            }
        }
        families.push_back(FamilyReader(directory, name).read(errors));
    }
    if (!errors.empty()) {
        throw std::runtime_error(errors);
    }
    return families;
}

}  // namespace generator
