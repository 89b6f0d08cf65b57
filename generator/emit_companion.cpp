#include "emit.h"

#include <stdexcept>

namespace generator {

namespace {

void replace(std::string &text, const std::string &marker, const std::string &value)
{
    size_t place = text.find(marker);
    if (place == std::string::npos) {
        throw std::runtime_error("the companion's source has no " + marker);
    }
    text.replace(place, marker.size(), value);
}

}  // namespace

std::string emit_companion(const Model &model, const std::string &source, const std::string &version)
{
    std::string manifest;
    for (const Family &family : model.families) {
        for (const BoundPointerClass &bound : family.pointer_classes) {
            manifest += bound.name + " *\n";
        }
        for (const BoundRecord &record : family.records) {
            manifest += record.name;
            for (const BoundMember &member : record.members) {
                manifest += " " + member.name;
            }
            manifest += "\n";
        }
    }
    std::string text = source;
    replace(text, "@VERSION@", version);
    replace(text, "@MANIFEST@\n", manifest);
    return text;
}

}  // namespace generator
