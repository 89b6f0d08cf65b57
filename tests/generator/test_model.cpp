// From a small header and interface files to the model, through libclang.
#include "one_family.h"

namespace generator {
namespace {

constexpr char header[] = R"(
#ifndef TINY_H
#define TINY_H
typedef unsigned int uint32;
typedef int tiny_port_t;
typedef unsigned char tiny_mac_t[6];
typedef enum tiny_mode_e { tinyModeOff, tinyModeOn, tinyModeCount } tiny_mode_t;
#define TINY_FLAG 0x4
#define TINY_TEXT "no constant"
#define TINY_LIMIT (TINY_FLAG * 4)
#define TINY_WORDS(bits) (((bits) + 31) / 32)
typedef struct tiny_entry_s {
    uint32 flags;
    tiny_mode_t mode;
    tiny_mac_t mac;
    int ids[TINY_LIMIT + 1];
    struct tiny_entry_s *next;
} tiny_entry_t;
typedef int (*tiny_cb)(int unit, tiny_entry_t *entry, void *user_data);
int tiny_entry_add(int unit, tiny_entry_t *entry);
int tiny_entry_get(int unit, tiny_mac_t mac, tiny_entry_t *entry);
int tiny_walk(int unit, tiny_cb callback, void *user_data);
int tiny_weights(int unit, const int weights[8]);
int tiny_walked(int unit, tiny_cb *callback, int (*weights)[8], int **rows);
typedef void (*tiny_heard_cb)(tiny_mode_t mode, const unsigned char *bytes, int count, const char *text, void *datum);
int tiny_hear(int unit, tiny_heard_cb heard, void *datum);
int tiny_say(int unit, const unsigned char *bytes, unsigned long count, int volume);
int tiny_port(int unit, tiny_port_t *port, const char *, __float128 scale);
#endif
)";

class ModelTest : public OneFamily {
protected:
    ModelTest() : OneFamily("tiny", header) {}
};

constexpr char typemap[] = "[typemaps]\ntiny_mac_t = { header = \"mac.h\", name = \"mac\" }\n";

TEST_F(ModelTest, ParametersKeepTheirDeclaredSpelling)
{
    Model model = build(std::string("functions = [\"tiny_*\", \"!tiny_port\", \"!tiny_hear\", "
                                    "\"!tiny_say\"]\n[appended]\ntiny_entry_get = \"entry\"\n")
                        + typemap);
    const std::vector<BoundFunction> &functions = model.families[0].functions;
    ASSERT_EQ(functions.size(), 5u);
    EXPECT_EQ(functions[0].name, "tiny_entry_add");
    EXPECT_EQ(functions[0].parameters[1].crossing.text, "tiny_entry_t *");
    EXPECT_EQ(functions[0].parameters[1].crossing.descriptor, "_p_tiny_entry_s");
    EXPECT_EQ(functions[1].parameters[1].crossing.conversion, Conversion::Mapped);
    EXPECT_EQ(functions[1].parameters[2].direction, Direction::Out);
    EXPECT_EQ(functions[1].parameters[2].crossing.conversion, Conversion::Value);
    EXPECT_EQ(functions[2].parameters[1].crossing.conversion, Conversion::Callback);
    EXPECT_EQ(functions[2].parameters[1].crossing.text, "tiny_cb");
    EXPECT_EQ(functions[3].parameters[1].crossing.text, "int const [8]");
    EXPECT_EQ(functions[3].parameters[1].crossing.descriptor, "_p_int");
    const Descriptor &callback = model.descriptors.at("_p_f_int_p_tiny_entry_s_p_void__int");
    EXPECT_EQ(callback.spellings, (std::set<std::string>{"int (*)(int,tiny_entry_s *,void *)", "tiny_cb"}));
}

TEST_F(ModelTest, TwoParametersCanBeOneArgument)
{
    Model model = build(
        "functions = [\"tiny_hear\", \"tiny_say\"]\n[bytes]\ntiny_say = \"bytes\"\n"
        "[callables]\ntiny_hear = \"heard\"\n");
    const BoundFunction &hear = model.families[0].functions.at(0), &say = model.families[0].functions.at(1);
    ASSERT_EQ(hear.parameters.size(), 2u);
    EXPECT_EQ(hear.parameters[1].crossing.conversion, Conversion::Callable);
    EXPECT_TRUE(hear.raises);
    ASSERT_EQ(say.parameters.size(), 3u);
    EXPECT_EQ(say.parameters[1].crossing.conversion, Conversion::Bytes);
    EXPECT_EQ(say.parameters[1].second->name, "unsigned long");
    EXPECT_EQ(say.parameters[2].name, "volume");

    const auto say_count = [&](const std::string &bytes) {
        model = build("functions = [\"tiny_hear\", \"tiny_say\"]\n[bytes]\n" + bytes);
        return model.families[0].functions.at(1).parameters.size();
    };
    EXPECT_EQ(say_count("\"*\" = \"heard bytes volume\"\n"), 3u);
    const std::string spared =
        error_of("functions = [\"tiny_say\"]\n[bytes]\n\"*\" = \"bytes\"\ntiny_say = \"\"\n");
    EXPECT_NE(spared.find("tiny.toml:4: bytes.*: '*' fits no function with such bytes"), std::string::npos)
        << spared;
    const std::string errors = error_of(
        "functions = [\"tiny_*\", \"!tiny_port\"]\n[bytes]\ntiny_say = \"volume\"\ntiny_hear = \"heard\"\n"
        "tiny_weights = \"weights\"\n[callables]\ntiny_walk = \"callback\"\ntiny_say = \"bytes\"\n");
    for (const char *error :
         {"tiny.toml:4: bytes.tiny_say: 'volume' of 'tiny_say' is no bytes and their number",
          "tiny.toml:5: bytes.tiny_hear: 'heard' of 'tiny_hear' is no bytes and their number",
          "tiny.toml:6: bytes.tiny_weights: 'weights' of 'tiny_weights' is no bytes and their number",
          "tiny.toml:8: callables.tiny_walk: 'callback' of 'tiny_walk': a Python function can be given",
          "tiny.toml:9: callables.tiny_say: 'bytes' of 'tiny_say' is no function and its datum"}) {
        EXPECT_NE(errors.find(error), std::string::npos) << errors;
    }
}

TEST_F(ModelTest, MembersAreReadInOrderWithTheirKindOfStorage)
{
    Model model = build(std::string("records = [\"tiny_*\"]\n") + typemap);
    const BoundRecord &record = model.families[0].records.at(0);
    EXPECT_EQ(record.name, "tiny_entry_t");
    EXPECT_EQ(record.self.text, "tiny_entry_s *");
    ASSERT_EQ(record.members.size(), 5u);
    EXPECT_EQ(record.members[1].crossing.conversion, Conversion::Int32);
    EXPECT_EQ(record.members[1].declared, "tiny_mode_t");
    EXPECT_EQ(record.members[2].storage, Storage::Mapped);
    EXPECT_EQ(record.members[3].storage, Storage::Array);
    EXPECT_EQ(record.members[3].declared, "int [TINY_LIMIT + 1]");
    EXPECT_EQ(record.members[4].storage, Storage::Pointer);
    EXPECT_EQ(model.descriptors.at("_p_tiny_entry_s").spellings, (std::set<std::string>{"tiny_entry_s *"}));
}

TEST_F(ModelTest, ConstantsAreEnumeratorsAndIntegerMacrosInHeaderOrder)
{
    Model model = build("constants = [\"TINY_*\", \"tinyMode*\"]\n");
    std::vector<std::string> names;
    for (const Constant &constant : model.constants) {
        names.push_back(constant.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"tinyModeOff", "tinyModeOn", "tinyModeCount", "TINY_FLAG",
                                               "TINY_LIMIT"}));
    // The enumeration crosses with its values.
    EXPECT_EQ(model.descriptors.count("_p_tiny_mode_e"), 1u);
}

TEST_F(ModelTest, NamedEnumerationsHaveTheirOwnEnumerators)
{
    Model model = build("named = [\"tiny_mode_e\"]\n");
    EXPECT_EQ(model.families[0].named_enumerations,
              (std::map<std::string, std::vector<std::string>>{
                  {"tiny_mode_e", {"tinyModeOff", "tinyModeOn", "tinyModeCount"}}}));
    std::string errors = error_of("named = [\"tiny_gone_e\"]\n");
    EXPECT_NE(errors.find("no header declares the enumeration 'tiny_gone_e'"), std::string::npos) << errors;
}

TEST_F(ModelTest, EquivalentPointerClassesHaveTwins)
{
    Model model = build(
        "functions = [\"tiny_walk*\", \"tiny_weights\"]\n[pointer_classes]\n"
        "intp = { element = \"int\", equivalent = true }\nuint32p = { element = \"uint32\" }\n");
    EXPECT_EQ(model.descriptors.at("_p_int").cast_from, "_p_intp");
    EXPECT_EQ(model.descriptors.at("_p_unsigned_int").cast_from, "");
    const std::string twin = model.descriptors.at("_p_f_int_p_tiny_entry_s_p_void__int").cast_from;
    EXPECT_EQ(twin, "_p_f_int_p_tiny_entry_s_p_void__intp");
    EXPECT_EQ(model.descriptors.at(twin).spellings,
              (std::set<std::string>{"intp (*)(int,tiny_entry_s *,void *)"}));
    EXPECT_EQ(model.descriptors.at("_p_p_f_int_p_tiny_entry_s_p_void__int").cast_from,
              "_p_p_f_int_p_tiny_entry_s_p_void__intp");
    EXPECT_EQ(model.descriptors.at("_p_a_8__int").cast_from, "_p_a_8__intp");
    EXPECT_EQ(model.descriptors.at("_p_p_int").cast_from, "");
}

TEST_F(ModelTest, AllMistakesAreReportedAtOnce)
{
    std::string errors = error_of(
        "functions = [\"tiny_port\", \"tiny_missing\"]\nopaque = [\"tiny_gone_t\"]\n"
        "[appended]\ntiny_port = \"gone\"\n[replaced]\ntiny_walk = \"tiny_walk_wrapper\"\n");
    EXPECT_NE(errors.find("tiny.toml:3: opaque: no header declares the type 'tiny_gone_t'"),
              std::string::npos)
        << errors;
    EXPECT_NE(errors.find("no conversion for a value of type '__float128'"), std::string::npos) << errors;
    EXPECT_NE(errors.find("'tiny_port' has no parameter 'gone'"), std::string::npos) << errors;
    EXPECT_NE(errors.find("'tiny_missing' fits nothing"), std::string::npos) << errors;
    EXPECT_NE(errors.find("'tiny_walk' departs from the pattern, but is not bound"), std::string::npos)
        << errors;
}

}  // namespace
}  // namespace generator
