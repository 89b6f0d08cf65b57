// The hash of names in the tables that the generator writes; it and this extension have to agree.
#pragma once

#include <cstdint>
#include <string_view>

namespace quorel {

/// FNV-1a.
constexpr uint32_t name_hash(std::string_view name)
{
    uint32_t hash = 2166136261u;
    for (char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    }
    return hash;
}

}  // namespace quorel
