/// The state of one simulated chip below the switch's tables: what its registers and memories hold.
#pragma once

#include "chip_address.h"
#include "chip_words.h"

#include <map>
#include <unordered_map>

namespace sim {

/// Who is told of accesses to a register.
struct Snoop {
    uint32 flags;
    soc_reg_snoop_cb_t callback;
    void *user_data;
};

class Chip {
public:
    Words read(const RegisterPlace &place) const;
    Words read(const MemoryPlace &place) const;

    /// Read-only fields stay as they are, bits without a field 0.
    void write(const RegisterPlace &place, const Words &value);
    void write(const MemoryPlace &place, const Words &value);

    /// All registers and memories.
    void reset() { changed_.clear(); }

    int unit = -1;  ///< as which it is attached
    bool running = true;
    soc_reg_access_t stand_ins = {};
    std::map<int, Snoop> snoops;  ///< by register
    bool in_stand_in = false;
    bool in_snoop = false;

private:
    Words stored(uint32 address, std::size_t count, const Words &after_reset) const;
    void store(uint32 address, std::size_t count, const Words &value);

    std::unordered_map<uint32, uint32> changed_;  ///< words since the reset, by address
};

/// The chip of that unit, running or not; null if no such unit is attached.
Chip *chip_of(int unit);

/// Registers and memories of the unit's chip as when it is attached.
void renew_chip(int unit);

/// The unit is detached: the next one finds a chip that runs and of which nobody is told.
void leave_chip(int unit);

/// body(Chip &) on a chip that runs; SOC_E_UNIT, SOC_E_INIT.
template <class Body>
int on_chip(int unit, Body body)
{
    Chip *chip = chip_of(unit);
    if (chip == nullptr) {
        return SOC_E_UNIT;
    }
    return chip->running ? static_cast<int>(body(*chip)) : static_cast<int>(SOC_E_INIT);
}

/// body() with such a chip and a pointer; also SOC_E_PARAM.
template <class Body>
int on_chip_with(int unit, const void *pointer, Body body)
{
    return on_chip(unit, [&](Chip &) { return pointer == nullptr ? static_cast<int>(SOC_E_PARAM) : body(); });
}

/// Has the flag set while it lives.
class Marked {
public:
    explicit Marked(bool &flag) : flag_(flag) { flag_ = true; }
    ~Marked() { flag_ = false; }
    Marked(const Marked &) = delete;
    Marked &operator=(const Marked &) = delete;

private:
    bool &flag_;
};

/// The description of a register's field on that unit; null if there is none.
const Field *field_in(int unit, soc_reg_t reg, soc_field_t field);

}  // namespace sim
