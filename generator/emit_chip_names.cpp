#include "emit.h"
#include "output.h"
#include "spelling.h"

#include <fmt/format.h>

namespace generator {

std::string emit_chip_names(const Model &model)
{
    std::vector<std::string> headers;
    for (const Family &family : model.families) {
        headers.insert(headers.end(), family.included.begin(), family.included.end());
    }
    std::string counts, names, numbers;
    for (const std::vector<std::string> *enumerators :
         {&model.chip_registers, &model.chip_memories, &model.chip_fields}) {
        counts += fmt::format("{}{}", counts.empty() ? "" : ", ", enumerators->size());
        for (const std::string &enumerator : *enumerators) {
            // The last letter says what it is the name of.
            names += fmt::format("    {}\n", literal_with_nul(enumerator.substr(0, enumerator.size() - 1)));
            numbers += fmt::format("    static_cast<int32_t>({}),\n", enumerator);
        }
    }
    return banner("The names of the chip's registers, memories and fields.",
                  "the interface files and the headers that they name")
           + includes(headers, {}) + "\n#include \"quorel/extension/chip_names.h\"\n\nnamespace quorel {\n\n"
           + fmt::format(
               "const size_t chip_name_counts[] = {{{}}};\n\n"
               "const char chip_name_text[] =\n{}    \"\";\n\n"
               "const int32_t chip_numbers[] = {{\n{}    0,\n}};\n\n",
               counts, names, numbers)
           + "}  // namespace quorel\n";
}

}  // namespace generator
