/// Commands on the chip's memories, which users call tables.
#include "chip_layout.h"
#include "chip_values.h"
#include "shell.h"
#include "shell_commands.h"
#include "sim_memory.h"
#include "sim_parse.h"

#include <numeric>

namespace sim {

namespace {

struct TableName {
    const Memory *memory;
    unsigned int array;
    int copy;
};

constexpr int all_copies = -1;

bool next_table(int unit, Arguments &args, TableName *table)
{
    std::string word = args.next();
    soc_mem_t id;
    const int rc = sim_parse_memory_name(unit, &id, word.data(), &table->copy, &table->array);
    if (rc == BCM_E_NOT_FOUND) {
        refuse(args, "no table '" + word + "'");
    } else if (rc < 0) {
        refuse(args, "'" + word + "': no such copy or array");
    } else {
        table->memory = memory_at(id);
    }
    return rc >= 0;
}

bool next_index(int unit, Arguments &args, const Memory &memory, int *index)
{
    std::string word = args.next();
    *index = sim_parse_memory_index(unit, memory.id, word.data());
    if (*index < 0) {
        refuse(args, memory.name + (" has no entry '" + word) + "', only 0 to "
                         + std::to_string(memory.entries - 1));
    }
    return *index >= 0;
}

/// "STC_COUNTER[3].1[5]" is entry 5.
std::string entry_name(const TableName &table, int copy, int index)
{
    std::string text = table.memory->name;
    if (table.memory->arrays > 1) {
        text += "[" + std::to_string(table.array) + "]";
    }
    if (block_of(table.memory->block).count > 1) {
        text += copy == all_copies ? ".*" : "." + std::to_string(copy);
    }
    return text + "[" + std::to_string(index) + "]";
}

Entry entry_of(int unit, const TableName &table, int index)
{
    Entry entry = {&table.memory->layout, {table.copy}, all_copies, {}, {}, {}};
    if (table.copy == all_copies) {
        entry.cores.resize(static_cast<std::size_t>(block_of(table.memory->block).count));
        std::iota(entry.cores.begin(), entry.cores.end(), 0);
    }
    entry.name = [table, index](int copy) { return entry_name(table, copy, index); };
    entry.read = [unit, table, index](int copy, Words *value) {
        return soc_mem_array_read(unit, table.memory->id, table.array, copy, index, value->data());
    };
    entry.write = [unit, table, index](int copy, Words value) {
        return soc_mem_array_write(unit, table.memory->id, table.array, copy, index, value.data());
    };
    return entry;
}

cmd_result_t dump(int unit, Arguments &args)
{
    TableName table;
    int first;
    if (!next_table(unit, args, &table) || !next_index(unit, args, *table.memory, &first)) {
        return CMD_USAGE;
    }
    int last = first;
    if (args.left() > 0) {
        const std::string word = args.peek();
        if (!next_index(unit, args, *table.memory, &last)) {
            return CMD_USAGE;
        }
        if (last < first) {
            return refuse(args, "'" + word + "' comes before '" + std::to_string(first) + "'");
        }
    }
    cmd_result_t result = CMD_OK;
    for (int index = first; index <= last && result == CMD_OK; ++index) {
        result = show(args, entry_of(unit, table, index));
    }
    return result;
}

cmd_result_t modify(int unit, Arguments &args)
{
    TableName table;
    int index;
    std::vector<FieldChange> changes;
    if (!next_table(unit, args, &table) || !next_index(unit, args, *table.memory, &index)
        || !next_changes(args, table.memory->name, table.memory->layout, &changes)) {
        return CMD_USAGE;
    }
    return change(args, entry_of(unit, table, index), changes);
}

constexpr Form dump_forms[] = {
    {"", "TABLE FIRST [LAST]", dump, "TABLE is NAME, NAME.1 for a copy, NAME[3] for one of an array"}};
constexpr Form modify_forms[] = {{"", "TABLE INDEX FIELD=VALUE...", modify, ""}};

constexpr Command commands[] = {
    {"dump", "show entries of a table", dump_forms, "dump EGQ_PORT_CONFIG.1 0 3"},
    {"modify", "change fields of a table's entry", modify_forms, "modify EGQ_PORT_CONFIG 3 DEFAULT_VLAN=7"},
};

}  // namespace

const CommandGroup table_commands = {"Tables", commands, true};

}  // namespace sim
