/// Commands that list what a chip is made of.
#include "chip_layout.h"
#include "enumerators.h"
#include "shell.h"
#include "shell_commands.h"
#include "destination.h"
#include "sim_parse.h"
#include "sim_register.h"
#include "switch.h"

#include <fnmatch.h>

#include <cstdio>
#include <string>
#include <vector>

namespace sim {

namespace {

const Names block_kinds(names_of_soc_block_types_e, "SOC_BLK_");

void print_row(const Register &reg)
{
    const bool of_port = reg.type == soc_portreg;
    std::printf("%-32s %-5s %-8s %5d %8d %7d\n", reg.name, block_kinds.name(reg.block, true).c_str(),
                soc_regtypenames[reg.type], reg.bits, reg.elements,
                of_port ? port_max + 1 : block_of(reg.block).count);
}

void print_row(const Memory &memory)
{
    std::printf("%-32s %-5s %5d %8d %7d %7d\n", memory.name, block_kinds.name(memory.block, true).c_str(),
                memory.bits, memory.entries, memory.arrays, block_of(memory.block).count);
}

template <class Described>
void print_fields(const Described &described)
{
    for (const Field &field : described.layout) {
        std::printf("%-32s %-24s %4d %7d %7d%s\n", described.name, field_name(field.id), field.bit,
                    field.length, field.id, field.flags & SOCF_RO ? " read-only" : "");
    }
}

template <class Described>
std::vector<const Described *> matching(const Described *(*at)(int), const std::string &pattern)
{
    std::vector<const Described *> found;
    for (int id = 0; const Described *described = at(id); ++id) {
        if (fnmatch(pattern.c_str(), described->name, FNM_CASEFOLD) == 0) {
            found.push_back(described);
        }
    }
    return found;
}

std::string next_pattern(Arguments &args)
{
    return args.left() > 0 ? args.next() : "*";
}

cmd_result_t fail_to_find(const Arguments &args, const char *what, const std::string &pattern)
{
    return fail(args, std::string("no ") + what + " '" + pattern + "'");
}

cmd_result_t listreg(int, Arguments &args)
{
    const std::string pattern = next_pattern(args);
    const auto registers = matching(register_at, pattern);
    if (registers.empty()) {
        return fail_to_find(args, "register", pattern);
    }
    std::printf("%-32s %-5s %-8s %5s %8s %7s\n", "register", "block", "kind", "bits", "elements", "places");
    for (const Register *reg : registers) {
        print_row(*reg);
    }
    return CMD_OK;
}

cmd_result_t listmem(int, Arguments &args)
{
    const std::string pattern = next_pattern(args);
    const auto memories = matching(memory_at, pattern);
    if (memories.empty()) {
        return fail_to_find(args, "table", pattern);
    }
    std::printf("%-32s %-5s %5s %8s %7s %7s\n", "table", "block", "bits", "entries", "arrays", "copies");
    for (const Memory *memory : memories) {
        print_row(*memory);
    }
    return CMD_OK;
}

cmd_result_t fields(int, Arguments &args)
{
    const std::string pattern = next_pattern(args);
    const auto registers = matching(register_at, pattern);
    const auto memories = matching(memory_at, pattern);
    if (registers.empty() && memories.empty()) {
        return fail_to_find(args, "register or table", pattern);
    }
    std::printf("%-32s %-24s %4s %7s %7s\n", "of", "field", "bit", "length", "number");
    for (const Register *reg : registers) {
        print_fields(*reg);
    }
    for (const Memory *memory : memories) {
        print_fields(*memory);
    }
    return CMD_OK;
}

constexpr Form listreg_forms[] = {{"", "[PATTERN]", listreg, ""}};
constexpr Form listmem_forms[] = {{"", "[PATTERN]", listmem, ""}};
constexpr Form fields_forms[] = {
    {"", "[PATTERN]", fields, "the number is the one by which functions know the field"}};

constexpr Command commands[] = {
    {"listreg", "list registers by pattern", listreg_forms, "listreg CMIC_*"},
    {"listmem", "list tables by pattern", listmem_forms, "listmem *VLAN*"},
    {"fields", "list the fields of registers and tables", fields_forms, "fields EGQ_PORT_CONFIG"},
};

}  // namespace

const CommandGroup chip_commands = {"Chip", commands, true};

}  // namespace sim
