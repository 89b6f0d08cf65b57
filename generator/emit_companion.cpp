#include "emit.h"

#include <stdexcept>

namespace generator {

std::string emit_companion(const Model &model, const std::string &source)
{
    constexpr char marker[] = "@MANIFEST@\n";
    size_t place = source.find(marker);
    if (place == std::string::npos) {
        throw std::runtime_error("the companion's source has no @MANIFEST@ line");
    }
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
    return text.replace(place, sizeof marker - 1, manifest);
}

}  // namespace generator
