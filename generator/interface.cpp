#include "interface.h"

#include "errors.h"
#include "table_description.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <stdexcept>
#include <variant>

#define TOML_HEADER_ONLY 1
#include <toml++/toml.h>

namespace generator {

namespace {

/// What is wrong in one place. The section that it stands in is not looked at further.
struct Fault {
    std::string place;
    std::string what;
};

std::string place_in(const std::string &file, const toml::source_region &region, const std::string &keys)
{
    return file + ":" + std::to_string(std::max(region.begin.line, toml::source_index(1)))
           + (keys.empty() ? "" : ": " + keys);
}

/// The keys that a line of the file stands under, as far as lines tell that begin with one.
std::string keys_at(const std::string &file, toml::source_index line)
{
    std::ifstream lines(file);
    std::string section, key;
    std::smatch found;
    static const std::regex begins_section(R"(\s*\[+\s*([^\[\]]*[^\[\]\s]).*)"),
        begins_value(R"(\s*([A-Za-z0-9_.-]+|"[^"]*")\s*=.*)");
    for (std::string text; line > 0 && std::getline(lines, text); --line) {
        if (std::regex_match(text, found, begins_section)) {
            section = found[1];
            key.clear();
        } else if (std::regex_match(text, found, begins_value)) {
            key = found[1];
        }
    }
    return section + (section.empty() || key.empty() ? "" : ".") + key;
}

/// Throws a Fault for what is no TOML.
toml::table parse(const std::string &file)
{
    try {
        return toml::parse_file(file);
    } catch (const toml::parse_error &error) {
        throw Fault{place_in(file, error.source(), keys_at(file, error.source().begin.line)),
                    std::string(error.description())};
    }
}

class Reader {
public:
    explicit Reader(std::string file) : file_(std::move(file)) {}

protected:
    /// Where it is, and by which keys: "lamp.toml:4: appended.lamp_get".
    std::string place_of(const toml::node &node) const { return place_in(file_, node.source(), keys_); }

    /// read(key, value) for each value of the table, in which keys_ are the keys to that.
    template <typename Read>
    void each(const toml::table &table, const Read &read)
    {
        const std::string outer = keys_;
        for (auto &&[key, value] : table) {
            keys_ = outer + (outer.empty() ? "" : ".") + std::string(key.str());
            read(std::string(key.str()), value);
        }
        keys_ = outer;
    }

    [[noreturn]] void fail(const toml::node &node, const std::string &what) const
    {
        throw Fault{place_of(node), what};
    }

    Entry text(const toml::node &node) const
    {
        if (!node.is_string()) {
            fail(node, "a string is wanted here");
        }
        return {**node.as_string(), place_of(node)};
    }

    bool truth(const toml::node &node) const
    {
        if (!node.is_boolean()) {
            fail(node, "true or false is wanted here");
        }
        return **node.as_boolean();
    }

    Entries list(const toml::node &node) const
    {
        if (!node.is_array()) {
            fail(node, "a list is wanted here");
        }
        Entries entries;
        for (const toml::node &item : *node.as_array()) {
            entries.push_back(text(item));
        }
        return entries;
    }

    const toml::table &table(const toml::node &node) const
    {
        if (!node.is_table()) {
            fail(node, "a table is wanted here");
        }
        return *node.as_table();
    }

    std::string file_;
    std::string keys_;  ///< to what is being read
};

// What an entry of a section has, by the section.
const std::map<std::string, std::vector<std::string>> entry_keys = {
    {"pointer_classes", {"element", "equivalent"}},
    {"typemaps", {"header", "name"}},
};
constexpr const char *binding_keys[] = {"families", "narrow_long", "strict"};

class FamilyReader : Reader {
public:
    FamilyReader(const std::string &file, const std::string &name) : Reader(file)
    {
        family_.name = name;
        family_.file = file;
    }

    FamilyInterface read(Errors &errors)
    {
        try {
            each(parse(file_), [&](const std::string &key, const toml::node &node) {
                const std::string section = keys_;
                try {
                    read_section(key, node);
                } catch (const Fault &fault) {
                    errors.add(fault.place, fault.what);
                    keys_ = section;
                }
            });
        } catch (const Fault &fault) {
            errors.add(fault.place, fault.what);
        }
        return std::move(family_);
    }

    static std::vector<std::string> keys()
    {
        std::vector<std::string> keys;
        for (const auto &[section, target] : sections()) {
            keys.push_back(section);
            auto of_entry = entry_keys.find(section);
            for (const std::string &key :
                 of_entry == entry_keys.end() ? std::vector<std::string>() : of_entry->second) {
                keys.push_back(section + "." + key);
            }
        }
        return keys;
    }

private:
    using List = Entries FamilyInterface::*;
    using Table = EntryTable FamilyInterface::*;
    using Special = void (FamilyReader::*)(const toml::node &);

    static const std::map<std::string, std::variant<List, Table, Special>> &sections()
    {
        static const std::map<std::string, std::variant<List, Table, Special>> sections = {
            {"headers", &FamilyInterface::headers},
            {"cxx_headers", &FamilyInterface::cxx_headers},
            {"functions", &FamilyInterface::functions},
            {"records", &FamilyInterface::records},
            {"constants", &FamilyInterface::constants},
            {"variables", &FamilyInterface::variables},
            {"opaque", &FamilyInterface::opaque},
            {"opaque_here", &FamilyInterface::opaque_here},
            {"named", &FamilyInterface::named},
            {"chip_registers", &FamilyInterface::chip_registers},
            {"chip_memories", &FamilyInterface::chip_memories},
            {"chip_fields", &FamilyInterface::chip_fields},
            {"typemaps", &FamilyReader::read_typemaps},
            {"pointer_classes", &FamilyReader::read_pointer_classes},
            {"arrays", &FamilyInterface::arrays},
            {"appended", &FamilyInterface::appended},
            {"in_and_out", &FamilyInterface::in_and_out},
            {"low_bits", &FamilyInterface::low_bits},
            {"bytes", &FamilyInterface::bytes},
            {"callables", &FamilyInterface::callables},
            {"null_text", &FamilyInterface::null_text},
            {"variadic", &FamilyInterface::variadic},
            {"texts", &FamilyInterface::texts},
            {"replaced", &FamilyInterface::replaced},
            {"raises", &FamilyInterface::raises},
            {"throws", &FamilyInterface::throws},
            {"text", &FamilyInterface::text},
            {"unserved", &FamilyInterface::unserved},
            {"unavailable", &FamilyInterface::unavailable},
            {"unmet", &FamilyInterface::unmet},
            {"identified_by", &FamilyInterface::identified_by},
            {"created_with", &FamilyInterface::created_with},
            {"key_checks", &FamilyInterface::key_checks},
            {"tables", &FamilyReader::read_tables},
        };
        return sections;
    }

    void read_section(const std::string &name, const toml::node &node)
    {
        auto section = sections().find(name);
        if (section == sections().end()) {
            fail(node, "there is no such section");
        }
        std::visit([&](auto target) { read(target, node); }, section->second);
    }

    void read(List target, const toml::node &node) { family_.*target = list(node); }
    void read(Special reader, const toml::node &node) { (this->*reader)(node); }
    void read(Table target, const toml::node &node)
    {
        each(table(node),
             [&](const std::string &key, const toml::node &value) { (family_.*target)[key] = text(value); });
    }

    // How the fields of an entry are read.
    using Fields = std::map<std::string, std::function<void(const toml::node &)>>;

    // Reads an entry of a section; `needed` are fields without which there is none.
    void read_entry(const toml::node &node, const std::vector<std::string> &needed, const Fields &fields)
    {
        const toml::table &entry = table(node);
        each(entry, [&](const std::string &key, const toml::node &value) {
            auto field = fields.find(key);
            if (field == fields.end()) {
                fail(value, "there is no such key");
            }
            field->second(value);
        });
        for (const std::string &key : needed) {
            if (!entry.contains(key)) {
                fail(node, "'" + key + "' is missing");
            }
        }
    }

    void read_typemaps(const toml::node &node)
    {
        each(table(node), [&](const std::string &name, const toml::node &value) {
            Typemap &typemap = family_.typemaps[name];
            typemap.place = place_of(value);
            read_entry(value, {"header", "name"},
                       {{"header", [&](const toml::node &field) { typemap.header = text(field).text; }},
                        {"name", [&](const toml::node &field) { typemap.name = text(field).text; }}});
        });
    }

    void read_tables(const toml::node &node)
    {
        each(table(node), [&](const std::string &name, const toml::node &value) {
            TableEntry &entry = family_.tables[name];
            entry.place = place_of(value);
            each(table(value),
                 [&](const std::string &key, const toml::node &field) { entry.fields[key] = text(field); });
        });
    }

    void read_pointer_classes(const toml::node &node)
    {
        each(table(node), [&](const std::string &name, const toml::node &value) {
            PointerClass declared;
            declared.name = name;
            read_entry(
                value, {"element"},
                {{"element", [&](const toml::node &field) { declared.element = text(field); }},
                 {"equivalent", [&](const toml::node &field) { declared.equivalent = truth(field); }}});
            family_.pointer_classes.push_back(declared);
        });
    }

    FamilyInterface family_;
};

class BindingReader : Reader {
public:
    explicit BindingReader(const std::string &directory)
        : Reader(directory + "/binding.toml"), directory_(directory)
    {
    }

    Interface read(Errors &errors)
    {
        const toml::table binding = parse(file_);
        Interface interface;
        std::vector<FamilyInterface> &families = interface.families;
        Entries names;
        each(binding, [&](const std::string &key, const toml::node &node) {
            if (key == "families") {
                names = list(node);
            } else if (key == "strict") {
                interface.strict = truth(node);
            } else if (key == "narrow_long") {
                interface.narrow_long = truth(node);
            } else {
                fail(node, "there is no such key");
            }
        });
        if (!binding.contains("families")) {
            fail(binding, "the list 'families' is missing");
        }
        for (const auto &[name, place] : names) {
            const std::string file = directory_ + "/" + name + ".toml";
            auto same = [&name = name](const FamilyInterface &other) { return other.name == name; };
            if (std::any_of(families.begin(), families.end(), same)) {
                throw Fault{place, "the family '" + name + "' is listed twice"};
            }
            if (!std::filesystem::is_regular_file(file)) {
                errors.add(place, "the family '" + name + "' has no file " + file);
                continue;
            }
            families.push_back(FamilyReader(file, name).read(errors));
        }
        return interface;
    }

private:
    std::string directory_;
};

}  // namespace

std::vector<std::string> texts(const Entries &entries)
{
    std::vector<std::string> texts;
    for (const Entry &entry : entries) {
        texts.push_back(entry.text);
    }
    return texts;
}

std::vector<std::string> interface_keys()
{
    std::vector<std::string> keys = FamilyReader::keys();
    for (const char *key : binding_keys) {
        keys.push_back(std::string("binding.toml: ") + key);
    }
    for (const std::string &key : table_keys()) {
        keys.push_back("tables." + key);
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

Interface read_interface(const std::string &directory)
{
    Errors errors;
    Interface interface;
    try {
        interface = BindingReader(directory).read(errors);
    } catch (const Fault &fault) {
        errors.add(fault.place, fault.what);
    }
    errors.raise_any();
    return interface;
}

Interface default_interface(const std::vector<std::string> &headers,
                            const std::function<std::vector<std::string>(const std::string &)> &below)
{
    Interface interface;
    interface.strict = false;
    std::set<std::string> listed(headers.begin(), headers.end()), names;
    for (const std::string &header : headers) {
        // A family's name is part of names in C.
        std::string name = header.substr(0, header.rfind('.'));
        std::replace_if(
            name.begin(), name.end(), [](unsigned char c) { return c > 127 || !std::isalnum(c); }, '_');
        while (!names.insert(name).second) {
            name += '_';
        }
        FamilyInterface family;
        family.name = name;
        auto entry = [&](const std::string &text) { return Entry{text, "the header " + header}; };
        family.headers = {entry(header)};
        for (const std::string &other : below(header)) {
            if (listed.insert(other).second) {
                family.headers.push_back(entry(other));
            }
        }
        family.functions = family.records = family.constants = family.variables = family.texts = {entry("*")};
        interface.families.push_back(std::move(family));
    }
    return interface;
}

}  // namespace generator
