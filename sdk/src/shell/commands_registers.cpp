/// Commands on the chip's registers.
#include "chip_layout.h"
#include "chip_values.h"
#include "register_text.h"
#include "shell.h"
#include "shell_commands.h"
#include "sim_register.h"

#include <bcm/error.h>

#include <cstring>
#include <numeric>

namespace sim {

namespace {

/// The registers that the next word names, at least one; all of them are of one kind.
bool next_registers(int unit, Arguments &args, Registers *registers)
{
    const std::string word = args.next();
    const int rc = read_registers(unit, word, registers);
    if (rc == BCM_E_NOT_FOUND) {
        refuse(args, "no register '" + word + "'");
    } else if (rc == BCM_E_PORT) {
        refuse(args, "'" + word + "': no such port or core");
    } else if (rc < 0) {
        refuse(args, "'" + word + "' is no register");
    }
    return rc >= 0;
}

std::string register_name(int unit, soc_regaddrinfo_t info)
{
    char text[128] = "";
    soc_reg_sprint_addr(unit, text, &info);
    return text;
}

/// The register at a place, its cores one by one if the place stands for all.
Entry entry_of(int unit, const soc_regaddrinfo_t &info)
{
    const Register &reg = *register_at(info.reg);
    const Block &block = block_of(reg.block);
    const bool of_core = reg.type != soc_portreg && block.has_broadcast();
    Entry entry = {&reg.layout, {info.port}, REG_PORT_ANY, {}, {}, {}};
    if (of_core && info.block == block.broadcast()) {
        entry.cores.resize(static_cast<std::size_t>(block.count));
        std::iota(entry.cores.begin(), entry.cores.end(), 0);
    } else if (of_core) {
        entry.cores = {info.block - block.first};
    }
    entry.name = [unit, info, of_core, block](int core) {
        soc_regaddrinfo_t there = info;
        if (of_core) {
            there.block = core == REG_PORT_ANY ? block.broadcast() : block.first + core;
        }
        const std::string name = register_name(unit, there);
        return name.empty() ? register_at(info.reg)->name : name;
    };
    entry.read = [unit, info](int core, Words *value) {
        return soc_reg_above_64_get(unit, info.reg, core, info.idx, value->data());
    };
    entry.write = [unit, info](int core, Words value) {
        return soc_reg_above_64_set(unit, info.reg, core, info.idx, value.data());
    };
    return entry;
}

cmd_result_t getreg(int unit, Arguments &args)
{
    Registers registers;
    if (!next_registers(unit, args, &registers)) {
        return CMD_USAGE;
    }
    cmd_result_t result = CMD_OK;
    for (auto info = registers.begin(); info != registers.end() && result == CMD_OK; ++info) {
        result = show(args, entry_of(unit, *info));
    }
    return result;
}

/// Each of them is written once, even if it stands for all cores.
cmd_result_t write_whole(int unit, const Arguments &args, const Registers &registers, Words value)
{
    for (const soc_regaddrinfo_t &info : registers) {
        const Entry entry = entry_of(unit, info);
        const int core = entry.cores.size() > 1 ? entry.all : entry.cores.front();
        const int rc = entry.write(core, value);
        if (rc < 0) {
            return done_or_fail(args, entry.name(core), rc);
        }
    }
    return CMD_OK;
}

cmd_result_t setreg(int unit, Arguments &args)
{
    Registers registers;
    if (!next_registers(unit, args, &registers)) {
        return CMD_USAGE;
    }
    const Register &reg = *register_at(registers.front().reg);
    if (std::strchr(args.peek(), '=') == nullptr) {
        if (mask_of(reg.layout, SOCF_RO) == Words{}) {
            return refuse(args, reg.name + std::string(" is read-only"));
        }
        Words value;
        if (!read_value(args, args.next(), reg.name, reg.bits, &value)) {
            return CMD_USAGE;
        }
        if (args.left() > 0) {
            return refuse(args, "'" + std::string(args.next()) + "' is one word too many");
        }
        return write_whole(unit, args, registers, value);
    }
    std::vector<FieldChange> changes;
    if (!next_changes(args, reg.name, reg.layout, &changes)) {
        return CMD_USAGE;
    }
    cmd_result_t result = CMD_OK;
    for (auto info = registers.begin(); info != registers.end() && result == CMD_OK; ++info) {
        result = change(args, entry_of(unit, *info), changes);
    }
    return result;
}

constexpr Form getreg_forms[] = {
    {"", "REGISTER", getreg, "such as NAME, NAME[0-3], NAME.ce0-ce3, NAME.1 for a core, or an address"}};
constexpr Form setreg_forms[] = {
    {"", "REGISTER VALUE|FIELD=VALUE...", setreg, "write all of it, or some of its fields"}};

constexpr Command commands[] = {
    {"getreg", "show registers and their fields", getreg_forms, "getreg EGQ_PORT_PROFILE[6-7].1"},
    {"setreg", "write registers, or some of their fields", setreg_forms,
     "setreg EGQ_AGEING_CTRL AGE_PERIOD=100 ENABLE=1"},
};

}  // namespace

const CommandGroup register_commands = {"Registers", commands, true};

}  // namespace sim
