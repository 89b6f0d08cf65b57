/// What the chip is made of, as data: blocks, registers, memories and their fields.
///
/// An address has the block in bits 31 to 26. Then a register's has its port from bit 16 on, and its word; a
/// memory's has 1 in bit 25, and its word.
#pragma once

#include <soc/memory.h>
#include <soc/register.h>

#include <cstddef>

namespace sim {

constexpr int fields_max = 8;

struct Field {
    soc_field_t id;
    int bit;
    int length;  ///< 0: no field
    uint32 flags = 0;
};

/// The fields of a register or memory entry; those after the last have no length.
struct Layout {
    Field fields[fields_max];

    const Field *find(soc_field_t id) const;
    const Field *begin() const { return fields; }
    const Field *end() const;
};

struct Register {
    soc_reg_t id;
    const char *name;
    soc_block_types_t block;
    soc_regtype_t type;
    uint32 offset;
    int elements;
    int bits;      ///< a multiple of 32
    uint64 reset;  ///< higher bits are 0
    Layout layout;

    std::size_t words() const { return static_cast<std::size_t>(bits / 32); }
};

struct Memory {
    soc_mem_t id;
    const char *name;
    soc_block_types_t block;
    uint32 offset;
    int entries;
    int arrays;
    int bits;  ///< a multiple of 32
    Layout layout;

    std::size_t words() const { return static_cast<std::size_t>(bits / 32); }
};

/// A kind of block: its blocks have consecutive numbers; if there are several, one per core, the number after
/// theirs reaches all.
struct Block {
    int first;
    int count;

    bool has_broadcast() const { return count > 1; }
    int broadcast() const { return first + count; }
};

/// Each gives null for what is not on the chip; any number may be asked for.
const Register *register_at(int id);
const Memory *memory_at(int id);
const char *field_name(int id);
const Register *register_named(const char *name);
const Memory *memory_named(const char *name);

const Block &block_of(soc_block_types_t type);

}  // namespace sim
