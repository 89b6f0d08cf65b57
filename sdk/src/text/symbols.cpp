#include "symbols.h"

#include "number_text.h"
#include "sim_parse.h"

#include <algorithm>
#include <map>
#include <string>

namespace sim {

namespace {

constexpr char register_suffix = 'R', memory_suffix = 'M';

struct Symbols {
    std::map<std::string, const Register *> registers;
    std::map<std::string, const Memory *> memories;
};

std::string upper_case(std::string_view text)
{
    std::string upper(text);
    for (char &c : upper) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c & ~0x20) : c;
    }
    return upper;
}

Symbols all_symbols()
{
    Symbols symbols;
    for (int id = 0; register_at(id) != nullptr; ++id) {
        symbols.registers[upper_case(register_at(id)->name)] = register_at(id);
    }
    for (int id = 0; memory_at(id) != nullptr; ++id) {
        symbols.memories[upper_case(memory_at(id)->name)] = memory_at(id);
    }
    return symbols;
}

Symbols &symbols()
{
    static Symbols &table = *new Symbols(all_symbols());
    return table;
}

template <class Described>
const Described *find(const std::map<std::string, const Described *> &table, std::string_view name,
                      char suffix)
{
    std::string key = upper_case(name);
    auto found = table.find(key);
    if (found == table.end() && !key.empty() && key.back() == suffix) {
        key.pop_back();
        found = table.find(key);
    }
    return found == table.end() ? nullptr : found->second;
}

}  // namespace

const Register *register_symbol(std::string_view name)
{
    return find(symbols().registers, name, register_suffix);
}

const Memory *memory_symbol(std::string_view name)
{
    return find(symbols().memories, name, memory_suffix);
}

bool split_reference(std::string_view text, Reference *reference)
{
    text = trimmed(text);
    *reference = {text.substr(0, text.find_first_of("[.")), {}, {}};
    text.remove_prefix(reference->name.size());
    while (!text.empty()) {
        const bool in_brackets = text.front() == '[';
        std::string_view &part = in_brackets ? reference->element : reference->place;
        const std::size_t next = std::min(text.find_first_of("[.", 1), text.size());
        const std::size_t end = in_brackets ? text.find(']') : next;
        if (part.data() != nullptr || end == std::string_view::npos || end == 1
            || (!in_brackets && text.front() != '.')) {
            return false;
        }
        part = text.substr(1, end - 1);
        text.remove_prefix(end + in_brackets);
    }
    return !reference->name.empty();
}

}  // namespace sim

extern "C" void sim_init_symtab(void)
{
    sim::symbols() = sim::all_symbols();
}
