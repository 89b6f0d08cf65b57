#include "emit.h"

#include <fmt/format.h>

#include <stdexcept>

namespace generator {

namespace {

void replace(std::string &text, const std::string &marker, const std::string &value)
{
    size_t place = text.find(marker);
    if (place == std::string::npos) {
        throw std::runtime_error("the companion's source has no " + marker);
    }
    for (; place != std::string::npos; place = text.find(marker, place + value.size())) {
        text.replace(place, marker.size(), value);
    }
}

}  // namespace

std::string emit_companion(const Model &model, const std::string &module, const std::string &source,
                           const std::string &version)
{
    std::string manifest;
    for (const Family &family : model.families) {
        for (const BoundPointerClass &bound : family.pointer_classes) {
            manifest += fmt::format("{} *\n", bound.name);
        }
        for (const BoundRecord &record : family.records) {
            std::vector<std::string> words = {record.name};
            for (const BoundMember &member : record.members) {
                words.push_back(member.name);
            }
            manifest += fmt::format("{}\n", fmt::join(words, " "));
        }
    }
    std::string text = source;
    replace(text, "@MODULE@", module);
    replace(text, "@NAME@", module.substr(1));
    replace(text, "@VERSION@", version);
    replace(text, "@MANIFEST@\n", manifest);
    return text;
}

}  // namespace generator
