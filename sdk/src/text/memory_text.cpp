/// Memories and blocks from text.
#include "begin.h"
#include "enumerators.h"
#include "number_text.h"
#include "sim_parse.h"
#include "switch.h"
#include "symbols.h"

#include <cctype>
#include <string_view>

using namespace sim;

namespace {

constexpr int all_copies = -1;
const Names block_kinds(names_of_soc_block_types_e, "SOC_BLK_");

bool is_kind(int kind)
{
    return kind >= 0 && kind < SOC_BLK_COUNT;
}

bool read_below(std::string_view text, int count, int *value)
{
    return read_int(text, value) && *value >= 0 && *value < count;
}

/// A copy; false for text that is none, or text where none is wanted.
bool read_copy(const Memory &memory, std::string_view text, bool wanted, int *copy)
{
    *copy = all_copies;
    if (text.data() == nullptr) {
        return true;
    }
    return wanted && (text == "*" || read_below(text, block_of(memory.block).count, copy));
}

bool read_array(const Memory &memory, std::string_view text, bool wanted, int *array)
{
    *array = 0;
    return text.data() == nullptr || (wanted && read_below(text, memory.arrays, array));
}

/// "min", "max" or a number below count; else -1.
int read_index(const char *text, int count)
{
    if (same_text(trimmed(text), "min")) {
        return 0;
    }
    if (same_text(trimmed(text), "max")) {
        return count - 1;
    }
    int index;
    return read_below(text, count, &index) ? index : -1;
}

/// Takes the letters off the front.
std::string_view take_letters(std::string_view *text)
{
    std::size_t count = 0;
    while (count < text->size() && std::isalpha(static_cast<unsigned char>((*text)[count]))) {
        ++count;
    }
    const std::string_view letters = text->substr(0, count);
    text->remove_prefix(count);
    return letters;
}

}  // namespace

extern "C" {

int sim_parse_memory_name(int unit, soc_mem_t *result, char *str, int *copyno, unsigned int *array_index)
{
    return begin(unit, given(result, str)).then([&]() -> int {
        Reference reference;
        if (!split_reference(str, &reference)) {
            return BCM_E_PARAM;
        }
        const Memory *memory = memory_symbol(reference.name);
        if (memory == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        int copy, array;
        if (!read_copy(*memory, reference.place, copyno != nullptr, &copy)
            || !read_array(*memory, reference.element, array_index != nullptr, &array)) {
            return BCM_E_PARAM;
        }
        *result = memory->id;
        if (copyno != nullptr) {
            *copyno = copy;
        }
        if (array_index != nullptr) {
            *array_index = static_cast<unsigned int>(array);
        }
        return BCM_E_NONE;
    });
}

int sim_parse_memory_index(int unit, soc_mem_t mem, char *val_str)
{
    return begin(unit, given(val_str)).then([&]() -> int {
        const Memory *memory = memory_at(mem);
        if (memory == nullptr) {
            return BCM_E_NOT_FOUND;
        }
        const int index = read_index(val_str, memory->entries);
        return index >= 0 ? index : static_cast<int>(BCM_E_PARAM);
    });
}

unsigned int sim_parse_memory_array_index(int unit, soc_mem_t mem, char *val_str)
{
    const Memory *memory = memory_at(mem);
    const bool known = attached(unit) != nullptr && memory != nullptr && val_str != nullptr;
    return static_cast<unsigned int>(known ? read_index(val_str, memory->arrays) : -1);
}

int sim_parse_block_range(int unit, soc_block_types_t regtype, char *s, int *min, int *max,
                          soc_block_types_t mask)
{
    return begin(unit, given(s, min, max)).then([&]() -> int {
        std::string_view text = trimmed(s);
        int kind = regtype;
        if (!same_text(text, "all")) {
            const std::string_view name = take_letters(&text);
            kind = name.empty() ? kind : block_kinds.value(name);
            if (!is_kind(kind)) {
                return name.empty() ? BCM_E_PARAM : BCM_E_NOT_FOUND;
            }
            if (kind != regtype && kind != mask) {
                return BCM_E_PARAM;
            }
            if (text.empty() && !name.empty()) {
                text = "*";
            }
        }
        if (!is_kind(kind)) {
            return BCM_E_PARAM;
        }
        const Block &block = block_of(static_cast<soc_block_types_t>(kind));
        int first, last;
        if (!read_range(text, 0, block.count - 1, &first, &last)) {
            return BCM_E_PARAM;
        }
        *min = block.first + first;
        *max = block.first + last;
        return BCM_E_NONE;
    });
}

}  // extern "C"
