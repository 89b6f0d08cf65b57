/// Commands on the chip's registers and memories.
#include "chip_layout.h"
#include "number_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "sim_memory.h"
#include "sim_register.h"

#include <soc/control.h>

#include <fnmatch.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

namespace sim {

namespace {

constexpr int words_max = SOC_REG_ABOVE_64_MAX_SIZE_U32;

/// A value of any width, least significant word first.
struct Wide {
    soc_reg_above_64_val_t words = {};

    bool bit(int number) const { return words[number / 32] >> number % 32 & 1; }
    void set_bit(int number) { words[number / 32] |= uint32{1} << number % 32; }
};

Wide field_of(const Wide &value, const Field &field)
{
    Wide part;
    for (int i = 0; i < field.length; ++i) {
        if (value.bit(field.bit + i)) {
            part.set_bit(i);
        }
    }
    return part;
}

std::string hexadecimal(const Wide &value)
{
    std::string text;
    for (int word = words_max - 1; word >= 0; --word) {
        if (!text.empty() || value.words[word] != 0 || word == 0) {
            char digits[12];
            std::snprintf(digits, sizeof digits, text.empty() ? "%x" : "%08x", value.words[word]);
            text += digits;
        }
    }
    return "0x" + text;
}

/// An integer, or hexadecimal digits after 0x as many as the widest register has.
bool read_wide(const std::string &text, Wide *value)
{
    int64 number;
    if (read_integer(text, &number) && number >= 0) {
        value->words[0] = static_cast<uint32>(number);
        value->words[1] = static_cast<uint32>(number >> 32);
        return true;
    }
    if (text.size() < 3 || text.size() > 2 + 8 * words_max || text.compare(0, 2, "0x") != 0) {
        return false;
    }
    for (std::size_t i = 2; i < text.size(); ++i) {
        const char c = text[i];
        if (!std::isxdigit(static_cast<unsigned char>(c))) {
            return false;
        }
        const int digit = std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : (c | 0x20) - 'a' + 10;
        const std::size_t place = 4 * (text.size() - 1 - i);
        value->words[place / 32] |= static_cast<uint32>(digit) << place % 32;
    }
    return true;
}

bool fits(const Wide &value, int bits)
{
    for (int i = bits; i < 32 * words_max; ++i) {
        if (value.bit(i)) {
            return false;
        }
    }
    return true;
}

void print_fields(const Layout &layout, const Wide &value)
{
    for (const Field &field : layout) {
        std::printf("    %-24s %s\n", field_name(field.id), hexadecimal(field_of(value, field)).c_str());
    }
}

const Field *find_field(const Layout &layout, const std::string &name)
{
    for (const Field &field : layout) {
        if (name == field_name(field.id)) {
            return &field;
        }
    }
    return nullptr;
}

/// Sets a field; false if it is none or the value does not fit.
bool set_field(const Layout &layout, const std::string &name, const std::string &text, Wide *value)
{
    const Field *field = find_field(layout, name);
    Wide part;
    if (field == nullptr || !read_wide(text, &part) || !fits(part, field->length)) {
        return false;
    }
    for (int i = 0; i < field->length; ++i) {
        const int place = field->bit + i;
        value->words[place / 32] &= ~(uint32{1} << place % 32);
        if (part.bit(i)) {
            value->set_bit(place);
        }
    }
    return true;
}

/// Sets fields as the words "FIELD=VALUE" that are left say. False at the first that cannot be done.
bool set_fields(const Layout &layout, Arguments *args, Wide *value)
{
    while (args->left() > 0) {
        std::string name, text;
        if (!args->next_setting(&name, &text) || !set_field(layout, name, text, value)) {
            return false;
        }
    }
    return true;
}

struct RegisterName {
    const Register *reg = nullptr;
    int port = REG_PORT_ANY;
    int index = 0;
};

/// Reads NAME, with .PORT, [INDEX] or both behind it in either order.
bool read_register_name(std::string text, RegisterName *name)
{
    const std::size_t bracket = text.find('[');
    if (bracket != std::string::npos) {
        const std::size_t end = text.find(']', bracket);
        const bool last = end != std::string::npos && (end + 1 == text.size() || text[end + 1] == '.');
        if (!last || !read_int(std::string_view(text).substr(bracket + 1, end - bracket - 1), &name->index)) {
            return false;
        }
        text.erase(bracket, end + 1 - bracket);
    }
    const std::size_t dot = text.find('.');
    if (dot != std::string::npos) {
        const std::string_view port = std::string_view(text).substr(dot + 1);
        if (port != "*" && !read_int(port, &name->port)) {
            return false;
        }
        text.erase(dot);
    }
    name->reg = register_named(text.c_str());
    return name->reg != nullptr;
}

int read(int unit, const RegisterName &name, Wide *value)
{
    return soc_reg_above_64_get(unit, name.reg->id, name.port, name.index, value->words);
}

cmd_result_t listreg(int, args_t *a)
{
    Arguments args(a);
    const std::string pattern = args.left() > 0 ? args.next() : "*";
    if (args.left() != 0) {
        return CMD_USAGE;
    }
    bool any = false;
    for (int id = 0; const Register *reg = register_at(id); ++id) {
        if (fnmatch(pattern.c_str(), reg->name, 0) == 0) {
            any = true;
            std::printf("%-32s %3d bits, %d of them\n", reg->name, reg->bits, reg->elements);
        }
    }
    return any ? CMD_OK : fail(args, "no such register");
}

cmd_result_t getreg(int unit, args_t *a)
{
    Arguments args(a);
    RegisterName name;
    if (args.left() != 1) {
        return CMD_USAGE;
    }
    const std::string text = args.next();
    if (!read_register_name(text, &name)) {
        return fail(args, "no register " + text);
    }
    Wide value;
    const int rc = read(unit, name, &value);
    if (rc < 0) {
        return done_or_fail(args, text, rc);
    }
    std::printf("%s = %s\n", text.c_str(), hexadecimal(value).c_str());
    print_fields(name.reg->layout, value);
    return CMD_OK;
}

cmd_result_t setreg(int unit, args_t *a)
{
    Arguments args(a);
    RegisterName name;
    if (args.left() < 2) {
        return CMD_USAGE;
    }
    const std::string text = args.next();
    if (!read_register_name(text, &name)) {
        return fail(args, "no register " + text);
    }
    Wide value;
    if (std::strchr(args.peek(), '=') == nullptr) {
        if (!read_wide(args.next(), &value) || args.left() != 0 || !fits(value, name.reg->bits)) {
            return CMD_USAGE;
        }
    } else {
        const int rc = read(unit, name, &value);
        if (rc < 0) {
            return done_or_fail(args, text, rc);
        }
        if (!set_fields(name.reg->layout, &args, &value)) {
            return fail(args, "no such field, or the value does not fit");
        }
    }
    return done_or_fail(args, text,
                        soc_reg_above_64_set(unit, name.reg->id, name.port, name.index, value.words));
}

/// Reads the words TABLE INDEX; COPY stands behind the table's name after a dot.
bool next_entry(Arguments *args, const Memory **memory, int *copy, int *index)
{
    std::string name = args->left() > 1 ? args->next() : "";
    const std::size_t dot = name.find('.');
    *copy = SOC_CORE_BROADCAST;
    if (dot != std::string::npos) {
        if (!read_int(std::string_view(name).substr(dot + 1), copy)) {
            return false;
        }
        name.erase(dot);
    }
    *memory = memory_named(name.c_str());
    return *memory != nullptr && args->next_integer(index);
}

cmd_result_t dump(int unit, args_t *a)
{
    Arguments args(a);
    const Memory *memory;
    int copy, first;
    if (!next_entry(&args, &memory, &copy, &first)) {
        return CMD_USAGE;
    }
    int last = first;
    if ((args.left() > 0 && !args.next_integer(&last)) || args.left() != 0 || last < first
        || last >= memory->entries) {
        return CMD_USAGE;
    }
    for (int index = first; index <= last; ++index) {
        Wide entry;
        const int rc = soc_mem_read(unit, memory->id, copy, index, entry.words);
        if (rc < 0) {
            return done_or_fail(args, memory->name, rc);
        }
        std::printf("%s[%d] = %s\n", memory->name, index, hexadecimal(entry).c_str());
        print_fields(memory->layout, entry);
    }
    return CMD_OK;
}

cmd_result_t modify(int unit, args_t *a)
{
    Arguments args(a);
    const Memory *memory;
    int copy, index;
    if (!next_entry(&args, &memory, &copy, &index) || args.left() == 0) {
        return CMD_USAGE;
    }
    Wide entry;
    int rc = soc_mem_read(unit, memory->id, copy, index, entry.words);
    if (rc >= 0) {
        if (!set_fields(memory->layout, &args, &entry)) {
            return fail(args, "no such field, or the value does not fit");
        }
        rc = soc_mem_write(unit, memory->id, copy, index, entry.words);
    }
    return done_or_fail(args, memory->name, rc);
}

constexpr cmd_t commands[] = {
    command("listreg", listreg, "[PATTERN]", "list registers"),
    command("getreg", getreg, "NAME[.PORT][[INDEX]]", "show a register and its fields"),
    command("setreg", setreg, "NAME[.PORT][[INDEX]] VALUE | FIELD=VALUE...",
            "write a register, or some of its fields"),
    command("dump", dump, "TABLE[.COPY] FIRST [LAST]", "show entries of a table"),
    command("modify", modify, "TABLE[.COPY] INDEX FIELD=VALUE...", "change fields of a table's entry"),
};

}  // namespace

const CommandGroup chip_commands = {"Chip", commands, std::size(commands), true};

}  // namespace sim
