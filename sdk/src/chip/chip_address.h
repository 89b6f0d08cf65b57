/// Where registers and memory entries are: from what callers name to addresses and back.
#pragma once

#include "chip_layout.h"

namespace sim {

/// One instance of a register. A block that is the broadcast number of its kind stands for all of that kind.
struct RegisterPlace {
    const Register *reg;
    int block;
    int port;  ///< REG_PORT_ANY unless the register is one of a port
    int index;

    bool is_broadcast() const;
    /// The same in the first block, if it stands for all.
    RegisterPlace to_read() const;
    uint32 address() const;  ///< of the first word
};

/// SOC_E_NONE, SOC_E_PARAM (null, index), SOC_E_PORT.
int locate(const Register *reg, int port, int index, RegisterPlace *place);

/// The register that has a word at the address, and which of its words that is; false if there is none.
bool locate_address(uint32 address, RegisterPlace *place, std::size_t *word);

struct MemoryPlace {
    const Memory *memory;
    int block;
    int array;
    int index;

    bool is_broadcast() const;
    MemoryPlace to_read() const;
    uint32 address() const;
};

/// SOC_E_NONE, SOC_E_PARAM.
int locate(const Memory *memory, unsigned int array, int copy, int index, MemoryPlace *place);

soc_regaddrinfo_t info_of(const RegisterPlace &place);

/// What callers get for an address at which there is no register.
soc_regaddrinfo_t info_of_nothing(uint32 address);

}  // namespace sim
