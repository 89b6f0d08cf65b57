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

// Each with the line and the keys to what is wrong.
TEST_F(InterfaceTest, MistakesAreSaidWithTheirSection)
{
    // Line 1 lists the header.
    const std::vector<std::pair<const char *, const char *>> mistakes = {
        {"functions = \"lamp_*\"\n", "2: functions: a list is wanted here"},
        {"\nfunction = []\n", "3: function: there is no such section"},
        {"[function.lamp_get]\na = 1\n", "2: function: there is no such section"},
        {"functions = [\n\"lamp_*\",\n5]\n", "4: functions: a string is wanted here"},
        {"functions = [\"lump_*\"]\n", "2: functions: 'lump_*' fits nothing that its headers declare"},
        {"records = {}\n", "2: records: a list is wanted here"},
        {"records = [\"!lamp_t.size\"]\n", "2: records: '!lamp_t.size' fits nothing"},
        {"constants = [\"LUMP\"]\n", "2: constants: 'LUMP' fits nothing"},
        {"variables = [\"lump\"]\n", "2: variables: 'lump' fits nothing"},
        {"texts = [\"lamp_t.colour\"]\n", "2: texts: 'lamp_t.colour' fits no member"},
        {"null_text = [\"lump\"]\n", "2: null_text: 'lump' fits no function"},
        {"throws = [\"lump\"]\n", "2: throws: 'lump' fits no function"},
        {"raises = [\"lamp_get\"]\n", "2: raises: 'lamp_get' departs from the pattern, but is not bound"},
        {"opaque = [\"lump_t\"]\n", "2: opaque: no header declares the type 'lump_t'"},
        {"chip_fields = [\"LAMP_*f\"]\n", "2: chip_fields: 'LAMP_*f' fits no enumerator"},
        {"named = [\"lump_e\"]\n", "2: named: no header declares the enumeration 'lump_e'"},
        {"appended = []\n", "2: appended: a table is wanted here"},
        {"[appended]\n\nlamp_get = [\"lamp\"]\n", "4: appended.lamp_get: a string is wanted here"},
        {"[appended]\nlump = \"level\"\n", "3: appended.lump: 'lump' departs from the pattern"},
        {"functions = [\"*\"]\n[appended]\nlamp_get = \"lump\"\n",
         "4: appended.lamp_get: 'lamp_get' has no parameter"},
        {"functions = [\"*\"]\n[in_and_out]\nlamp_set = \"unit\"\n",
         "4: in_and_out.lamp_set: 'lamp_set': only a pointer"},
        {"functions = [\"*\"]\n[low_bits]\nlamp_set = \"unit\"\n",
         "4: low_bits.lamp_set: 'unit' of 'lamp_set' has no"},
        {"functions = [\"*\"]\n[bytes]\nlamp_set = \"level\"\n",
         "4: bytes.lamp_set: 'level' of 'lamp_set' is no bytes"},
        {"functions = [\"*\"]\n[callables]\nlamp_set = \"level\"\n",
         "4: callables.lamp_set: 'level' of 'lamp_set' is no"},
        {"functions = [\"*\"]\n[replaced]\nlamp_set = \"lump\"\n",
         "4: replaced.lamp_set: no header declares 'lump'"},
        {"[arrays]\nlumps = \"lump_t\"\n", "3: arrays.lumps: unknown element type 'lump_t'"},
        {"[text]\nlump_t = \"lump\"\n", "3: text.lump_t: no header declares the type 'lump_t'"},
        {"[pointer_classes]\nintp = \"int\"\n", "3: pointer_classes.intp: a table is wanted here"},
        {"[pointer_classes]\nintp = { equivalent = true }\n",
         "3: pointer_classes.intp: 'element' is missing"},
        {"[pointer_classes]\nintp = { element = \"int\", equivalent = 1 }\n",
         "3: pointer_classes.intp.equivalent: true or false is wanted here"},
        {"[pointer_classes]\nintp = { element = \"int\", equal = true }\n",
         "3: pointer_classes.intp.equal: there is no such key"},
        {"[typemaps.lamp_mac_t]\nname = \"mac\"\n", "2: typemaps.lamp_mac_t: 'header' is missing"},
        {"[typemaps.lamp_mac_t]\nheader = \"mac.h\"\nname = \"mac\"\nnames = \"mac\"\n",
         "5: typemaps.lamp_mac_t.names: there is no such key"},
        {"[tables.lamp]\nkey = 3\n", "3: tables.lamp.key: a string is wanted here"},
        // What is no TOML has no keys; the lines before it do.
        {"\nfunctions = [\"lamp_*\"\n[appended]\n", "4: "},
        {"[appended]\nlamp_get = lamp\n", "3: appended.lamp_get: "},
        {"[appended]\n\n[ bytes ]\nlamp lamp\n", "5: bytes: "},
        {"functions = []\nfunctions = []\n", "3: functions: "},
        {"[typemaps.lamp_mac_t]\nname = \"mac\nheader = \"x\"\n", "3: typemaps.lamp_mac_t.name: "},
    };
    for (const auto &[text, error] : mistakes) {
        EXPECT_EQ(said(text).find(std::string("lamp.toml:") + error), 0u) << text << said(text);
    }
    // What is wrong in several places is said of each.
    EXPECT_EQ(said("function = []\nrecords = {}\n[appended]\nlamp_get = 1\n"),
              "lamp.toml:5: appended.lamp_get: a string is wanted here\n"
              "lamp.toml:2: function: there is no such section\n"
              "lamp.toml:3: records: a list is wanted here\n");
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
    write("in.h", "#include \"own/in/part.h\"\n#include \"in/of_it.h\"\n");
    std::filesystem::create_directories(directory_ + "/in");
    write("in/of_it.h", "");
    EXPECT_EQ(headers_below("in.h", source), std::vector<std::string>{"in/of_it.h"});
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
        "lamp.toml:7: opaque_here: no header declares the type 'lump_t'\n"
        "lamp.toml:16: text.lump_t: no header declares the type 'lump_t'\n"
        "lamp.toml:14: arrays.lumps: unknown element type 'lump_t'\n"
        "lamp.toml:3: records: 'lamp_s' fits nothing that its headers declare\n"
        "lamp.toml:2: functions: 'lump_*' fits nothing that its headers declare\n"
        "lamp.toml:2: functions: '!lamp_off' fits nothing that its headers declare\n"
        "lamp.toml:2: functions: '' fits nothing that its headers declare\n"
        "lamp.toml:10: appended.lamp_set: the appended output of 'lamp_set' is not a pointer\n"
        "lamp.toml:12: in_and_out.lamp_set: 'lamp_set': only a pointer to int can be in and out\n"
        "lamp.toml:9: appended.lamp_get: 'lamp_get' has no parameter 'lump'\n"
        "lamp.toml:4: constants: 'LAMP_MIN' fits nothing that its headers declare\n"
        "lamp.toml:5: variables: 'gone' fits nothing that its headers declare\n"
        "lamp.toml:6: raises: 'lamp_off' departs from the pattern, but is not bound\n");
    // Whoever has made hundreds of mistakes learns of the first.
    std::string missing;
    for (int i = 0; i < 100; ++i) {
        missing += "\"lamp_gone_" + std::to_string(i) + "\",\n";
    }
    std::string errors = said("functions = [" + missing + "]\n");
    EXPECT_EQ(errors.find("lamp.toml:2: functions: 'lamp_gone_0' fits nothing"), 0u) << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 41) << errors;
    EXPECT_NE(errors.find("\nand 60 more\n"), std::string::npos) << errors;
}

TEST_F(InterfaceTest, ElementsAreWhatTheRuntimeKnows)
{
    const std::string typemap = "[typemaps.lamp_mac_t]\nheader = \"mac.h\"\nname = \"mac\"\n";
    EXPECT_EQ(said(typemap
                   + "[pointer_classes]\nmacp = { element = \"lamp_mac_t\" }\n"
                     "[arrays]\nints = \"int\"\nmacs = \"lamp_mac_t\"\n"),
              "lamp.toml:6: pointer_classes.macp.element: 'macp': elements of type 'unsigned char [6]' "
              "cannot be bound\n"
              "lamp.toml:8: arrays.ints: 'ints': elements of type 'int' cannot be bound\n"
              "lamp.toml:9: arrays.macs: 'macs': elements of type 'unsigned char [6]' cannot be bound\n");
    EXPECT_EQ(said("[pointer_classes]\nlampp = { element = \"lamp_t\" }\nboolp = { element = \"bool\" }\n"
                   "[arrays]\nlamps = \"lamp_t\"\n"),
              "");
}

TEST_F(InterfaceTest, FamiliesAreListedOnceAndShareNoNames)
{
    for (const auto &[text, error] : std::vector<std::pair<const char *, const char *>>{
             {"family = [\"lamp\"]\n", "binding.toml:1: family: there is no such key"},
             {"", "binding.toml:1: the list 'families' is missing"},
             {"\nfamilies = \"lamp\"\n", "binding.toml:2: families: a list is wanted here"},
             {"families = [\"lamp\",\n\"lamp\"]\n",
              "binding.toml:2: families: the family 'lamp' is listed twice"},
             {"families = [\"lamp\", 5]\n", "binding.toml:1: families: a string is wanted here"},
             {"families = [\n", "binding.toml:"}}) {
        write("binding.toml", text);
        EXPECT_EQ(said("").find(error), 0u) << text << said("");
    }
    write("binding.toml", "families = [\"lamp\", \"gone\", \"bulb\"]\n");
    write("bulb.toml", "header = []\n");
    std::string errors = said("functions = 1\n");
    for (const char *error :
         {"lamp.toml:2: functions: a list", "binding.toml:1: families: the family 'gone' has no file",
          "bulb.toml:1: header: there is no such section"}) {
        EXPECT_NE(errors.find(error), std::string::npos) << errors;
    }

    write("binding.toml", "families = [\"lamp\", \"bulb\"]\n");
    write("bulb.toml",
          "headers = [\"lamp.h\"]\nfunctions = [\"*_get\"]\nrecords = [\"*\"]\nconstants = [\"LAMP_*\"]\n"
          "variables = [\"*\"]\n[arrays]\nlamps = \"unsigned int\"\n");
    EXPECT_EQ(said("functions = [\"*\"]\nrecords = [\"*\"]\nconstants = [\"*\"]\n"
                   "variables = [\"lamp_limit\"]\n[arrays]\nlamps = \"unsigned int\"\n"),
              "bulb.toml:7: arrays.lamps: 'lamps' is bound at lamp.toml:7 too\n"
              "bulb.toml:3: records: 'lamp_t' is bound at lamp.toml:3 too\n"
              "bulb.toml:2: functions: 'lamp_get' is bound at lamp.toml:2 too\n"
              "bulb.toml:4: constants: 'LAMP_MAX' is bound at lamp.toml:4 too\n"
              "bulb.toml:5: variables: 'variable lamp_limit' is bound at lamp.toml:5 too\n");
    EXPECT_EQ(said("functions = [\"*_set\"]\n"), "");
}

}  // namespace
}  // namespace generator
