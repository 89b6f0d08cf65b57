/// Registers and memories by name, and what may follow a name: an element in brackets, a place after a dot.
#pragma once

#include "chip_layout.h"

#include <string_view>

namespace sim {

/// Null for an unknown name. Case does not matter, nor whether the identifier's last letter is there.
const Register *register_symbol(std::string_view name);
const Memory *memory_symbol(std::string_view name);

/// "NAME[element].place" or "NAME.place[element]"; what is not there is empty and has no data().
struct Reference {
    std::string_view name, element, place;
};

/// False for other text.
bool split_reference(std::string_view text, Reference *reference);

}  // namespace sim
