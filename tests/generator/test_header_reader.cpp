// What headers of other vendors hold: bound as C means it, or refused at its file and line.
#include "emit.h"
#include "one_family.h"

#include <algorithm>

namespace generator {
namespace {

constexpr char header[] = R"(
#ifndef VENDOR_H
#define VENDOR_H
#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <sys/cdefs.h>
#define VENDOR_BEGIN __BEGIN_DECLS
#define VENDOR_ENTER { if (1) {
#define VENDOR_LEAVE } }
#define VENDOR_ONCE do {
#define VENDOR_OPEN (1 + VENDOR_BITS(
#define VENDOR_CLOSE ))
#define VENDOR_EMPTY
#define VENDOR_BITS(n) (1 << (n))
#define VENDOR_ATTRIBUTE __attribute__((aligned(8)))
#define VENDOR_WORD unsigned int
#define VENDOR_VERSION "1.2"
#define VENDOR_SCALE 1.5
#define VENDOR_NOWHERE ((void *)0)
#define VENDOR_CALL vendor_plain
#define __STDC_VENDOR_MACROS 1
#define VENDOR_GONE 5
#undef VENDOR_GONE
#define VENDOR_LOWEST (-2147483647 - 1)
#define VENDOR_HIGHEST 0xffffffffu
#define VENDOR_SIZE sizeof(int)
#define VENDOR_MASK VENDOR_BITS(4) /* of ports */
#define VENDOR_TWICE 1
#undef VENDOR_TWICE
#define VENDOR_TWICE 2
enum { vendorFirst = -1, vendorSame = 7, vendorAlias = vendorSame, vendorTop = 0x80000000u };
#define vendorAlias vendorAlias
#define VENDOR_TOO_WIDE 0x100000000ll
enum vendor_wide_e { vendorTooWide = 0x7fffffffffffffffll };
enum vendor_low_e { vendorTooLow = -2147483649ll };
typedef enum { vendorOff } vendor_mode_t;

typedef unsigned char vendor_mac_t[6], vendor_ip_t[4 /* bytes */];
struct vendor_ahead_s;
typedef struct vendor_ahead_s vendor_ahead_t;
typedef vendor_ahead_t *vendor_handle_t;
typedef vendor_handle_t vendor_alias_t;
typedef struct {
    unsigned short id, rows[2], columns[3][4];
    enum { vendorUp, vendorDown } state;
    union {
        int number;
        struct { unsigned char low; vendor_ip_t *ip; };
    };
    float rates[2];
    signed char level;
    const vendor_ahead_t *ahead;
} vendor_record_t;
union vendor_bare_u { int number; unsigned char bytes[4]; };

typedef struct vendor_refused_s {
    __float128 rate;
} vendor_refused_t;
typedef struct {
    unsigned int ready : 1;
    signed int : 0;
    signed int turn : 5;
    struct { int x; } place[2];
    union { int y; } *other;
    struct vendor_inner_s { enum vendor_depth_e { vendorShallow, vendorDeep = 9 } depth; } inner;
    struct vendor_ahead_s *after;
    const int fixed;
    volatile int busy;
    char label[16];
    unsigned char data[];
} vendor_parts_t;
struct vendor_hidden { int way; };
int vendor_hidden(struct vendor_hidden *hidden);
typedef struct vendor_long_s {
    unsigned long counter;
} vendor_long_t;

int vendor_plain(int unit, vendor_alias_t handle, const vendor_record_t *record, const char *const *names);
int vendor_plain(int, vendor_alias_t, const vendor_record_t *, const char *const *);
extern "C" {
extern int vendor_level;
extern unsigned long vendor_total;
long vendor_long(long a, unsigned long b, signed char c, vendor_mode_t mode, vendor_mode_t *result);
}
static inline int vendor_inline(int a) { return 2 * a; }
static int vendor_static(void) { return 1; }
int vendor_print(const char *format, ...);
int vendor_share(__float128 share, va_list total);
vendor_mode_t (*vendor_choose(int unit))(int);
int vendor_count(int unit, unsigned short *count, unsigned long *total);
uint64_t vendor_bytes(size_t size, unsigned long count, long long offset);
#ifdef __cplusplus
namespace vendor { struct Place { int row; }; int find(int row, Place &place); }
#endif
#endif
)";

class HeaderReaderTest : public OneFamily {
protected:
    HeaderReaderTest() : OneFamily("vendor", header) {}

    // "vendor.h:12: ", the place of the first line with that text, as messages begin.
    std::string place(const std::string &text) const
    {
        const std::string before = std::string(header).substr(0, std::string(header).find(text));
        return directory_ + "/vendor.h:" + std::to_string(std::count(before.begin(), before.end(), '\n') + 1)
               + ": ";
    }

    void expect_errors(const std::string &interface, const std::vector<std::string> &wanted)
    {
        std::string errors = error_of(interface);
        for (const std::string &error : wanted) {
            EXPECT_NE(errors.find(error + "\n"), std::string::npos) << error << "\nis not among\n" << errors;
        }
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), static_cast<long>(wanted.size())) << errors;
    }
};

TEST_F(HeaderReaderTest, ConstantsAreNumbersAndTextsAndNothingElse)
{
    // However many there are that are none, and whatever they open or close.
    EXPECT_NE(error_of("constants = [\"__STDC_*\"]\n").find("'__STDC_*' fits nothing"), std::string::npos);
    Model model = build("constants = [\"VENDOR_*\", \"vendor*\", \"!*TOO_*\", \"!vendorToo*\"]\n");
    std::vector<std::string> names;
    for (const Constant &constant : model.constants) {
        names.push_back(constant.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"VENDOR_LOWEST", "VENDOR_HIGHEST", "VENDOR_SIZE",
                                               "VENDOR_MASK", "VENDOR_TWICE", "vendorFirst", "vendorSame",
                                               "vendorAlias", "vendorTop", "vendorOff", "vendorUp",
                                               "vendorDown", "vendorShallow", "vendorDeep"}));
    EXPECT_EQ(model.constants[8].enumeration, "");
    EXPECT_EQ(model.constants[9].enumeration, "vendor_mode_t");
    EXPECT_EQ(model.constants.back().enumeration, "vendor_depth_e");
    names.clear();
    for (const Constant &constant : build("constants = [\"*\"]\n").values) {
        names.push_back(constant.name + " " + std::to_string(static_cast<int>(constant.kind)));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"VENDOR_VERSION 3", "VENDOR_SCALE 2", "VENDOR_TOO_WIDE 1",
                                               "vendorTooWide 1", "vendorTooLow 1"}));
}

TEST_F(HeaderReaderTest, ManyMacrosThatAreNoIntegersHideNone)
{
    std::string text = "#define MANY_FIRST 1\n";
    for (int i = 0; i < 300; ++i) {
        text += "#define MANY_TEXT_" + std::to_string(i) + " \"text\"\n";
    }
    write_if_changed(directory_ + "/vendor.h", text + "#define MANY_LAST 2\n");
    EXPECT_EQ(build("constants = [\"MANY_*\"]\n").constants.size(), 2u);
}

TEST_F(HeaderReaderTest, MembersHaveTheirOwnBoundsAndTypes)
{
    Model model = build("records = [\"vendor_record_t\", \"vendor_bare_u\"]\n");
    std::vector<std::string> members;
    for (const BoundMember &member : model.families[0].records.at(0).members) {
        members.push_back(member.declared + " " + member.name + " " + member.crossing.descriptor);
    }
    EXPECT_EQ(members,
              (std::vector<std::string>{
                  "unsigned short id ", "unsigned short [2] rows _p_unsigned_short",
                  "unsigned short [3][4] columns _p_a_4__unsigned_short", "int state ", "int number ",
                  "unsigned char low ", "vendor_ip_t * ip _p_a_4__unsigned_char", "float [2] rates _p_float",
                  "signed char level ", "vendor_ahead_t const * ahead _p_vendor_ahead_s"}));
    EXPECT_EQ(model.families[0].records.at(1).c_name, "union vendor_bare_u");
}

TEST_F(HeaderReaderTest, FunctionsAreBoundOnceWhereverTheyStand)
{
    Model model = build(
        "functions = [\"vendor_plain\", \"vendor_long\", \"vendor_inline\", \"vendor_static\", \"find\"]\n"
        "variables = [\"vendor_level\"]\n");
    std::vector<std::string> functions;
    for (const BoundFunction &function : model.families[0].functions) {
        std::string text = function.result.text + " " + function.callee;
        for (const BoundParameter &parameter : function.parameters) {
            text += ", " + parameter.crossing.text + " " + parameter.crossing.descriptor;
        }
        functions.push_back(text);
    }
    const std::string with_records =
        "int vendor_plain, int , vendor_alias_t _p_vendor_ahead_s, vendor_record_t const * "
        "_p_vendor_record_t, "
        "char const *const * _p_p_char";
    const std::string with_numbers =
        "long vendor_long, long , unsigned long , signed char , vendor_mode_t , "
        "vendor_mode_t * _p_vendor_mode_t";
    EXPECT_EQ(functions, (std::vector<std::string>{
                             with_records, with_numbers, "int vendor_inline, int ", "int vendor_static",
                             "int vendor::find, int , vendor::Place & _p_vendor__Place"}));
    EXPECT_EQ(model.variables.size(), 1u);
    // The development SDK defines neither what the header does, nor what it could not pass on.
    std::vector<std::string> defined;
    for (const Function &function : model.families[0].sdk_functions) {
        defined.push_back(function.name);
    }
    EXPECT_EQ(defined,
              (std::vector<std::string>{"vendor_hidden", "vendor_plain", "vendor_long", "vendor_share",
                                        "vendor_choose", "vendor_count", "vendor_bytes", "find"}));
}

TEST_F(HeaderReaderTest, WhatCannotBeBoundIsSaidAllAtOnceWithItsPlace)
{
    const std::string member = "vendor_refused_t.";
    std::vector<std::string> errors = {
        place("__float128 rate;") + member + "rate: no conversion for a value of type '__float128'",
        place("int vendor_print") + "vendor_print: a variable number of arguments cannot be passed on",
        place("int vendor_share") + "vendor_share: no conversion for a value of type '__float128'",
        place("int vendor_share") + "vendor_share: no conversion for a value of type 'va_list'",
    };
    say_of_all("narrow_long = true\n");
    if (sizeof(long) != 4) {
        const std::string size = ": 'unsigned long' has 8 bytes on this host, and crosses as 4";
        errors.push_back(place("unsigned long counter") + "vendor_long_t.counter" + size);
        errors.push_back(place("extern unsigned long") + "vendor_total" + size);
    }
    expect_errors(
        "functions = [\"vendor_*\", \"!vendor_hidden\"]\nrecords = [\"vendor_*\"]\nvariables = "
        "[\"vendor_total\"]\n",
        errors);
    if (sizeof(long) != 4) {
        expect_errors("functions = [\"vendor_count\"]\n[appended]\nvendor_count = \"count total\"\n",
                      {directory_
                       + "/vendor.toml:4: appended.vendor_count: the appended output of 'vendor_count' has "
                         "no fixed size"});
    }
    expect_errors("records = [\"Place\"]\n",
                  {directory_ + "/vendor.toml:2: records: 'Place' fits nothing that its headers declare"});
}

TEST_F(HeaderReaderTest, OnlyTheSdksOwnLongsAreNarrow)
{
    const std::string functions = "functions = [\"vendor_bytes\"]\n";
    auto crossings = [](const Model &model) {
        const BoundFunction &function = model.families[0].functions.at(0);
        std::vector<Conversion> found = {function.result.conversion};
        for (const BoundParameter &parameter : function.parameters) {
            found.push_back(parameter.crossing.conversion);
        }
        return found;
    };
    const Conversion word = sizeof(long) == 4 ? Conversion::UInt32 : Conversion::UInt64;
    EXPECT_EQ(crossings(build(functions)),
              (std::vector<Conversion>{Conversion::UInt64, word, word, Conversion::Int64}));
    say_of_all("narrow_long = true\n");
    EXPECT_EQ(crossings(build(functions)),
              (std::vector<Conversion>{Conversion::UInt64, word, Conversion::UInt32, Conversion::Int64}));
}

TEST_F(HeaderReaderTest, AHeaderIsTheFileThatItsPathLeadsTo)
{
    std::filesystem::create_directory(directory_ + "/other");
    std::filesystem::create_symlink("below.h", directory_ + "/link.h");
    write_if_changed(directory_ + "/other/below.h", "int vendor_other(void);\n");
    write_if_changed(directory_ + "/below.h", "#pragma once\nint vendor_below(void);\n");
    for (const char *path : {"below.h", "./below.h", "other/../below.h", "link.h"}) {
        write_if_changed(directory_ + "/vendor.h",
                         "#include \"other/below.h\"\n#include \"" + std::string(path) + "\"\n");
        Model model = build("functions = [\"*\"]\ncxx_headers = [\"below.h\"]\n");
        ASSERT_EQ(model.families[0].functions.size(), 1u) << path;
        EXPECT_EQ(model.families[0].functions[0].name, "vendor_below");
    }
}

TEST_F(HeaderReaderTest, AListedHeaderIsBoundInTheSystemsFoldersToo)
{
    is_of_system_ = true;
    write_if_changed(directory_ + "/vendor.h",
                     "#include <stdint.h>\n#define VENDOR_SIX 6\nuint64_t vendor_a(uint64_t b);\n");
    Model model = build("functions = [\"*\"]\nconstants = [\"*\"]\n");
    EXPECT_EQ(model.families[0].functions.size(), 1u);
    EXPECT_EQ(model.constants.size(), 1u);
}

TEST_F(HeaderReaderTest, WhatStandsWithinARecordIsNamedAsCAndCxxDo)
{
    Model model = build(
        "records = [\"vendor_parts_t*\", \"vendor_inner_s\", \"vendor_hidden\"]\n"
        "constants = [\"vendorShallow\", \"vendorDeep\"]\ntexts = [\"*.label\"]\n");
    std::vector<std::string> names;
    for (const BoundRecord &record : model.families[0].records) {
        names.push_back(record.name + " " + record.cxx_name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{
                         "vendor_parts_t_place std::remove_extent_t<decltype(vendor_parts_t::place)>",
                         "vendor_parts_t_other std::remove_pointer_t<decltype(vendor_parts_t::other)>",
                         "vendor_inner_s vendor_parts_t::vendor_inner_s", "vendor_parts_t vendor_parts_t",
                         "vendor_hidden struct vendor_hidden"}));
    EXPECT_EQ(model.constants.at(1).scope, "vendor_parts_t::vendor_inner_s::");
    EXPECT_EQ(model.cxx_names.count("vendor_ahead_s"), 0u);
    std::vector<std::string> members;
    for (const BoundMember &member : model.families[0].records[3].members) {
        members.push_back(
            member.name + " " + std::to_string(static_cast<int>(member.storage))
            + (member.bits ? " bits" + std::to_string(member.is_signed ? -member.bits : member.bits) : "")
            + (member.read_only ? " read only" : ""));
    }
    EXPECT_EQ(members, (std::vector<std::string>{"ready 7 bits1", "turn 7 bits-5", "place 1", "other 4",
                                                 "inner 2", "after 4", "fixed 0 read only", "busy 0",
                                                 "label 6", "data 1 read only"}));
}

TEST_F(HeaderReaderTest, WhatCannotBeBoundIsLeftOutAndSaid)
{
    say_of_all("strict = false\n");
    exports_ = {"vendor_plain", "vendor_print", "vendor_share"};
    Model model = build(
        "functions = [\"vendor_p*\", \"vendor_share\", \"vendor_choose\", \"vendor_inline\"]\n"
        "records = [\"vendor_refused_t\", \"vendor_record_t\", \"!vendor_record_t.r*s\"]\n");
    EXPECT_EQ(model.families[0].functions.size(), 2u);
    EXPECT_EQ(model.families[0].records.at(0).members.size(), 8u);
    EXPECT_EQ(model.families[0].records.at(1).members.size(), 0u);
    std::vector<std::string> said;
    for (const Outcome &outcome : model.outcomes) {
        if (outcome.kind != Outcome::Kind::Bound && outcome.reason != "no pattern wants it") {
            said.push_back(directory_ + "/" + outcome.place + ": " + outcome.name + ": " + outcome.reason);
        }
    }
    EXPECT_EQ(
        said,
        (std::vector<std::string>{
            place("unsigned short id, rows[2]") + "vendor_record_t.rows: left out",
            place("float rates[2]") + "vendor_record_t.rates: left out",
            place("__float128 rate;")
                + "vendor_refused_t.rate: no conversion for a value of type '__float128'",
            place("int vendor_print") + "vendor_print: a variable number of arguments cannot be passed on",
            place("int vendor_share") + "vendor_share: no conversion for a value of type '__float128'",
            place("vendor_choose") + "vendor_choose: no library exports 'vendor_choose'"}));
}

// Names of things in C, which generated C++ has others for.
TEST_F(HeaderReaderTest, WordsOfCxxAreNames)
{
    write_if_changed(directory_ + "/vendor.h",
                     "#include <stdlib.h>\n"
                     "#define mutable const\n"
                     "#define VENDOR_SIZE sizeof(int)\n"
                     "struct class { int new; struct { int x; } private; const int this; };\n"
                     "typedef enum { false, true = 4 } bool;\n"
                     "int delete(struct class *template, mutable int *bool_of_c);\n"
                     "int operator(void) __asm__(\"vendor_operator\");\n"
                     "static inline bool throw(bool and) { return and; }\n"
                     "extern int namespace;\n");
    const Model model = build(
        "functions = [\"*\"]\nrecords = [\"*\", \"!class.this\"]\nconstants = [\"*\"]\nvariables = "
        "[\"*\"]\n");
    const Family &family = model.families[0];
    std::string names = family.records.back().name;
    for (const BoundMember &member : family.records.back().members) {
        names += " " + member.name;
    }
    for (const BoundFunction &function : family.functions) {
        names += " " + function.name;
    }
    for (const Constant &constant : model.constants) {
        names += " " + constant.name;
    }
    EXPECT_EQ(names + " " + model.variables[0].name,
              "class new private delete operator throw VENDOR_SIZE false true namespace");
    EXPECT_EQ(family.functions[0].parameters[0].name + family.functions[0].parameters[0].crossing.text,
              "templateclass *");
    const std::string emitted = emit_records(family, Numbering(model))
                                + emit_calls(family, Numbering(model), model.cxx_names)
                                + emit_constants(model) + emit_variables(model, Numbering(model));
    for (const char *text :
         {"#include \"headers_of_c.h\"", "offsetof(class_of_c, private_of_c)", "&namespace_of_c",
          " delete_of_c(static_cast<class_of_c *>(a0), ", "(false_of_c)", "(VENDOR_SIZE)"}) {
        EXPECT_NE(emitted.find(text), std::string::npos) << text;
    }
    // The library has them by their own names.
    EXPECT_NE(declarations_.common_header.find("delete_of_c __asm__(\"delete\")"), std::string::npos);
    EXPECT_EQ(declarations_.common_header.find("operator_of_c __asm__"), std::string::npos);
    EXPECT_EQ(declarations_.common_header.find("throw_of_c __asm__"), std::string::npos);
    EXPECT_EQ(declarations_.common_header.find("#define mutable"), std::string::npos);
    expect_errors(
        "records = [\"*\"]\n",
        {directory_ + "/vendor.h:4: class.this: 'this' of an object says which memory it stands for"});
}

TEST_F(HeaderReaderTest, HeadersWithoutAGuardAreReadOnce)
{
    write_if_changed(directory_ + "/vendor.h",
                     "#include \"part.h\"\ntypedef struct { vendor_part_t part; } vendor_t;\n");
    write_if_changed(directory_ + "/part.h", "typedef struct { int x; } vendor_part_t;\n");
    more_headers_ = {"part.h"};
    const Model model = build("records = [\"*\"]\n");
    EXPECT_EQ(model.families[0].records.size(), 2u);
    EXPECT_EQ(model.families[0].included, std::vector<std::string>{"headers_of_c.h"});
    EXPECT_EQ(declarations_.common_header, "#pragma once\nextern \"C\" {\n#include <vendor.h>\n}\n");
    for (const char *file : {"vendor.h", "part.h"}) {
        const std::string path = directory_ + "/" + file;
        write_if_changed(path, "#pragma once\n" + read_file(path));
    }
    EXPECT_EQ(build("records = [\"*\"]\n").families[0].included,
              (std::vector<std::string>{"vendor.h", "part.h"}));
    EXPECT_EQ(declarations_.common_header, "");
}

TEST_F(HeaderReaderTest, HeadersThatDoNotCompileAreNoBinding)
{
    write_if_changed(directory_ + "/vendor.h",
                     "int vendor_a(vendor_gone_t *gone);\n#include \"vendor_gone.h\"\nint vendor_b(;\n");
    expect_errors(
        "functions = [\"*\"]\n",
        {directory_ + "/vendor.h:1:14: error: unknown type name 'vendor_gone_t'",
         directory_ + "/vendor.h:2:10: error: 'vendor_gone.h' file not found",
         directory_ + "/vendor.h:3:14: error: expected expression",
         directory_ + "/vendor.toml:1: headers: 'vendor.h': expected ';' after top level declarator",
         directory_ + "/vendor.toml:1: headers: 'vendor.h': expected '}'"});
    // What is left open shows behind the header only.
    for (const char *text : {"struct vendor_open_s {\nint x;\n", "extern \"C\" {\n", "}\n"}) {
        write_if_changed(directory_ + "/vendor.h", text);
        std::string errors = error_of("functions = [\"*\"]\n");
        EXPECT_EQ(errors.find(directory_ + "/vendor."), 0u) << text << errors;
        EXPECT_EQ(errors.find("bound_headers"), std::string::npos) << text << errors;
    }
    std::filesystem::remove(directory_ + "/vendor.h");
    expect_errors("functions = [\"*\"]\n",
                  {directory_ + "/vendor.toml:1: headers: 'vendor.h': 'vendor.h' file not found"});
}

}  // namespace
}  // namespace generator
