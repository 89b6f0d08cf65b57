#include "chip_layout.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace sim {

namespace {

// In the order of SOC_BLK_*. The numbers of EGQ, IHB, IHP and IQM are those of the unit's control record.
constexpr Block blocks[] = {
    {0, 1},  {1, 1},  {4, 2},  {8, 2},  {12, 2}, {16, 2}, {20, 2}, {24, 2}, {28, 2},
    {32, 2}, {36, 2}, {40, 1}, {41, 1}, {42, 1}, {43, 1}, {44, 1}, {45, 1}, {46, 1},
};
static_assert(std::size(blocks) == SOC_BLK_COUNT, "");

template <class Described>
const Described *named(const Described *(*at)(int), const char *name)
{
    for (int id = 0; at(id) != nullptr; ++id) {
        if (std::strcmp(at(id)->name, name) == 0) {
            return at(id);
        }
    }
    return nullptr;
}

}  // namespace

const Field *Layout::end() const
{
    return std::find_if(std::begin(fields), std::end(fields),
                        [](const Field &field) { return field.length == 0; });
}

const Field *Layout::find(soc_field_t id) const
{
    const Field *found = std::find_if(begin(), end(), [id](const Field &field) { return field.id == id; });
    return found == end() ? nullptr : found;
}

const Register *register_named(const char *name)
{
    return named(register_at, name);
}

const Memory *memory_named(const char *name)
{
    return named(memory_at, name);
}

const Block &block_of(soc_block_types_t type)
{
    return blocks[type];
}

}  // namespace sim
