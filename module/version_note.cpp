// The module's version in a form that needs no interpreter: `readelf -n` and crash reporters show it. The note is that
// of the "package metadata for executable files", as JSON; Python sees nothing of it.

#include "version.h"

#include <cstdint>
#include <initializer_list>

namespace quorel {

namespace {

constexpr char before[] = R"({"name":"QuorelApiNew","version":")";
constexpr char after[] = R"("})";
constexpr size_t text_size = sizeof before - 1 + sizeof version - 1 + sizeof after;

struct Note {
    uint32_t owner_size = sizeof "FDO";
    uint32_t size = text_size;
    uint32_t type = 0xcafe1a7e;
    char owner[4] = "FDO";
    char text[(text_size + 3) / 4 * 4] = {};
};

constexpr Note make_note()
{
    Note note;
    char *place = note.text;
    for (const char *part : {before, version, after}) {
        while (*part) {
            *place++ = *part++;
        }
    }
    return note;
}

__attribute__((used, section(".note.package"), aligned(4))) constexpr Note note = make_note();

}  // namespace

}  // namespace quorel
