// Interface files that are wrong: said with file and line, all at once, and nothing is bound by halves.
#include "one_family.h"

#include <algorithm>
#include <string>
#include <vector>

namespace generator {
namespace {

constexpr char header[] = R"(
typedef unsigned char lamp_mac_t[6];
typedef struct lamp_s { int colour; } lamp_t;
#define LAMP_MAX 3
int lamp_set(int unit, lamp_t *lamp, int *level);
int lamp_get(int unit, lamp_t *lamp);
extern int lamp_limit;
)";

class InterfaceTest : public OneFamily {
protected:
    InterfaceTest() : OneFamily("lamp", header) {}

    void write(const std::string &file, const std::string &text)
    {
        write_if_changed(directory_ + "/" + file, text);
    }

    // Without the directory that each of its lines names.
    std::string said(const std::string &interface)
    {
        std::string errors = error_of(interface);
        for (size_t at; (at = errors.find(directory_ + "/")) != std::string::npos;) {
            errors.erase(at, directory_.size() + 1);
        }
        return errors;
    }
};

TEST_F(InterfaceTest, SectionsHaveTheirForm)
{
    // Line 1 lists the header.
    const std::vector<std::pair<const char *, const char *>> faults = {
        {"functions = \"lamp_*\"\n", "lamp.toml:2: a list is wanted here\n"},
        {"\nfunction = []\n", "lamp.toml:3: unknown section 'function'\n"},
        {"functions = [\n\"lamp_*\",\n5]\n", "lamp.toml:4: a string is wanted here\n"},
        {"appended = []\n", "lamp.toml:2: a table is wanted here\n"},
        {"[appended]\n\nlamp_get = [\"lamp\"]\n", "lamp.toml:4: a string is wanted here\n"},
        {"[pointer_classes]\nintp = \"int\"\n", "lamp.toml:3: a table is wanted here\n"},
        {"[pointer_classes]\nintp = { equivalent = true }\n", "lamp.toml:3: 'element' is missing\n"},
        {"[pointer_classes]\nintp = { element = \"int\", equivalent = 1 }\n",
         "lamp.toml:3: true or false is wanted here\n"},
        {"[pointer_classes]\nintp = { element = \"int\", equal = true }\n",
         "lamp.toml:3: unknown key 'equal'\n"},
        {"[typemaps.lamp_mac_t]\nname = \"mac\"\n", "lamp.toml:2: 'header' is missing\n"},
        {"[typemaps.lamp_mac_t]\nheader = \"mac.h\"\nname = \"mac\"\nnames = \"mac\"\n",
         "lamp.toml:5: unknown key 'names'\n"},
        // What is wrong in several places is said of each.
        {"function = []\nrecords = {}\n[appended]\nlamp_get = 1\n",
         "lamp.toml:5: a string is wanted here\nlamp.toml:2: unknown section 'function'\nlamp.toml:3: a list "
         "is wanted here\n"},
    };
    for (const auto &[text, errors] : faults) {
        EXPECT_EQ(said(text), errors) << text;
    }
    for (const char *text :
         {"\nfunctions = [\"lamp_*\"\n", "\nfunctions = []\nfunctions = []\n", "\nlamp lamp\n"}) {
        EXPECT_EQ(said(text).find("lamp.toml:"), 0u) << text << said(text);
    }
}

TEST_F(InterfaceTest, HeadersWithoutAnInterfaceBringWhatIsBelowThem)
{
    std::filesystem::create_directories(directory_ + "/own/in");
    write("own/lamp.h", "#include \"in/part.h\"\n#include \"../lamp.h\"\n#include \"./same.h\"\n");
    write("own/in/part.h", "#include <stddef.h>\n");
    write("own/same.h", "#pragma once\n");
    HeaderSource source;
    source.include_directories = {directory_};
    EXPECT_EQ(headers_below("own/lamp.h", source), (std::vector<std::string>{"own/in/part.h", "own/same.h"}));
    EXPECT_EQ(headers_below("own/gone.h", source), std::vector<std::string>());
    // A folder of the system's that has the library's name is its own.
    std::swap(source.include_directories, source.system_directories);
    EXPECT_EQ(headers_below("own/lamp.h", source).size(), 2u);
    source.system_directories = {directory_ + "/own"};
    EXPECT_EQ(headers_below("lamp.h", source), std::vector<std::string>());

    const Interface interface = default_interface({"a-b.h", "a/b.hh", "c.h"}, [](const std::string &named) {
        return std::vector<std::string>{"c.h", "of_" + named, "d.h"};
    });
    std::vector<std::string> families;
    for (const FamilyInterface &family : interface.families) {
        families.push_back(family.name);
        for (const Entry &entry : family.headers) {
            families.back() += " " + entry.text;
        }
    }
    EXPECT_EQ(families,
              (std::vector<std::string>{"a_b a-b.h of_a-b.h d.h", "a_b_ a/b.hh of_a/b.hh", "c c.h of_c.h"}));
    EXPECT_FALSE(interface.strict);
}

TEST_F(InterfaceTest, EntriesFitWhatTheHeadersDeclare)
{
    EXPECT_EQ(
        said("functions = [\"lamp_*\", \"lump_*\", \"!lamp_off\", \"\"]\nrecords = [\"lamp_s\"]\nconstants = "
             "[\"LAMP_MIN\"]\n"
             "variables = [\"gone\"]\nraises = [\"lamp_off\"]\nopaque_here = [\"lump_t\"]\n"
             "[appended]\nlamp_get = \"lump\"\nlamp_set = \"unit\"\n[in_and_out]\nlamp_set = \"lamp\"\n"
             "[arrays]\nlumps = \"lump_t\"\n[text]\nlump_t = \"lump\"\n"),
        "lamp.toml:7: no header declares the type 'lump_t'\n"
        "lamp.toml:16: no header declares the type 'lump_t'\n"
        "lamp.toml:14: unknown element type 'lump_t'\n"
        "lamp.toml:3: 'lamp_s' fits nothing that its headers declare\n"
        "lamp.toml:2: 'lump_*' fits nothing that its headers declare\n"
        "lamp.toml:2: '!lamp_off' fits nothing that its headers declare\n"
        "lamp.toml:2: '' fits nothing that its headers declare\n"
        "lamp.toml:10: the appended output of 'lamp_set' is not a pointer\n"
        "lamp.toml:12: 'lamp_set': only a pointer to int can be in and out\n"
        "lamp.toml:9: 'lamp_get' has no parameter 'lump'\n"
        "lamp.toml:4: 'LAMP_MIN' fits nothing that its headers declare\n"
        "lamp.toml:5: 'gone' fits nothing that its headers declare\n"
        "lamp.toml:6: 'lamp_off' departs from the pattern, but is not bound\n");
    EXPECT_EQ(said("functions = [\"lamp_*\"]\nchip_fields = [\"LAMP_*f\"]\n"),
              "lamp.toml:3: 'LAMP_*f' fits no enumerator\n");
    // Whoever has made hundreds of mistakes learns of the first.
    std::string missing;
    for (int i = 0; i < 100; ++i) {
        missing += "\"lamp_gone_" + std::to_string(i) + "\",\n";
    }
    std::string errors = said("functions = [" + missing + "]\n");
    EXPECT_EQ(errors.find("lamp.toml:2: 'lamp_gone_0' fits nothing"), 0u) << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 41) << errors;
    EXPECT_NE(errors.find("\nand 60 more\n"), std::string::npos) << errors;
}

TEST_F(InterfaceTest, ElementsAreWhatTheRuntimeKnows)
{
    const std::string typemap = "[typemaps.lamp_mac_t]\nheader = \"mac.h\"\nname = \"mac\"\n";
    EXPECT_EQ(said(typemap
                   + "[pointer_classes]\nmacp = { element = \"lamp_mac_t\" }\n"
                     "[arrays]\nints = \"int\"\nmacs = \"lamp_mac_t\"\n"),
              "lamp.toml:6: 'macp': elements of type 'unsigned char [6]' cannot be bound\n"
              "lamp.toml:8: 'ints': elements of type 'int' cannot be bound\n"
              "lamp.toml:9: 'macs': elements of type 'unsigned char [6]' cannot be bound\n");
    EXPECT_EQ(said("[pointer_classes]\nlampp = { element = \"lamp_t\" }\nboolp = { element = \"bool\" }\n"
                   "[arrays]\nlamps = \"lamp_t\"\n"),
              "");
}

TEST_F(InterfaceTest, FamiliesAreListedOnceAndShareNoNames)
{
    for (const auto &[text, error] : std::vector<std::pair<const char *, const char *>>{
             {"family = [\"lamp\"]\n", "binding.toml:1: unknown key 'family'"},
             {"", "binding.toml:1: the list 'families' is missing"},
             {"\nfamilies = \"lamp\"\n", "binding.toml:2: a list is wanted here"},
             {"families = [\"lamp\",\n\"lamp\"]\n", "binding.toml:2: the family 'lamp' is listed twice"},
             {"families = [\"lamp\", 5]\n", "binding.toml:1: a string is wanted here"},
             {"families = [\n", "binding.toml:"}}) {
        write("binding.toml", text);
        EXPECT_EQ(said("").find(error), 0u) << text << said("");
    }
    write("binding.toml", "families = [\"lamp\", \"gone\", \"bulb\"]\n");
    write("bulb.toml", "header = []\n");
    std::string errors = said("functions = 1\n");
    for (const char *error : {"lamp.toml:2: a list", "binding.toml:1: the family 'gone' has no file",
                              "bulb.toml:1: unknown section 'header'"}) {
        EXPECT_NE(errors.find(error), std::string::npos) << errors;
    }

    write("binding.toml", "families = [\"lamp\", \"bulb\"]\n");
    write("bulb.toml",
          "headers = [\"lamp.h\"]\nfunctions = [\"*_get\"]\nrecords = [\"*\"]\nconstants = [\"LAMP_*\"]\n"
          "variables = [\"*\"]\n[arrays]\nlamps = \"unsigned int\"\n");
    EXPECT_EQ(said("functions = [\"*\"]\nrecords = [\"*\"]\nconstants = [\"*\"]\n"
                   "variables = [\"lamp_limit\"]\n[arrays]\nlamps = \"unsigned int\"\n"),
              "bulb.toml:7: 'lamps' is bound at lamp.toml:7 too\n"
              "bulb.toml:3: 'lamp_t' is bound at lamp.toml:3 too\n"
              "bulb.toml:2: 'lamp_get' is bound at lamp.toml:2 too\n"
              "bulb.toml:4: 'LAMP_MAX' is bound at lamp.toml:4 too\n"
              "bulb.toml:5: 'variable lamp_limit' is bound at lamp.toml:5 too\n");
    EXPECT_EQ(said("functions = [\"*_set\"]\n"), "");
}

}  // namespace
}  // namespace generator
