/// The room of the chip: what its registers and memories hold, and who is told of accesses.
///
/// The chip is the unit's hardware: it stays when the unit is detached.
#pragma once

#include "begin.h"
#include "chip_address.h"
#include "chip_runs.h"
#include "chip_words.h"
#include "marked.h"

#include <map>
#include <memory>
#include <unordered_map>

namespace sim {

/// Who is told of accesses to a register.
struct Snoop {
    uint32 flags;
    soc_reg_snoop_cb_t callback;
    void *user_data;
};

class Chip : public RoomState {
public:
    static constexpr Room room = Room::chip;

    explicit Chip(Switch &sw);

    Words read(const RegisterPlace &place) const;
    Words read(const MemoryPlace &place) const;

    /// Read-only fields stay as they are, bits without a field 0.
    void write(const RegisterPlace &place, const Words &value);
    void write(const MemoryPlace &place, const Words &value);

    /// All registers and memories.
    void reset();

    /// A bit of the entry turns over, until the entry is written or corrected.
    void damage(const MemoryPlace &place);
    void correct(const MemoryPlace &place) { damaged_.erase(place.to_read().address()); }
    bool is_damaged(const MemoryPlace &place) const;

    /// Looks at all entries, again and again, after so many microseconds each time; 0: not.
    void scan_memories_every(int microseconds);
    int scan_interval() const { return scan_interval_; }

    /// Registers and memories as when it is attached; who is told of accesses stays.
    void start(Switch &) override;
    /// The next unit finds a chip that runs and of which nobody is told.
    void stop(Switch &) override;
    void forget_functions(Switch &) override
    {
        stand_ins = {};
        snoops.clear();
    }

    const int unit;
    bool running = true;
    soc_reg_access_t stand_ins = {};
    std::map<int, Snoop> snoops;  ///< by register
    bool in_stand_in = false;
    bool in_snoop = false;

private:
    Words stored(uint32 address, std::size_t count, const Words &after_reset) const;
    void store(uint32 address, std::size_t count, const Words &value);

    void scan_damaged();

    std::unordered_map<uint32, uint32> changed_;  ///< words since the reset, by address
    std::map<uint32, MemoryPlace> damaged_;       ///< by address
    int scan_interval_ = 0;
    std::unique_ptr<Timer> scan_;  ///< null if there never was one
};

inline Chip &chip_of(Switch &sw)
{
    return sw.of<Chip>();
}

/// The chip of that unit, running or not; null if no such unit is attached.
Chip *chip_of(int unit);

/// Somebody has looked at the entry: if it is damaged, the unit tells, and corrects it if it is to.
void notice_damage(Switch &sw, const MemoryPlace &place);

/// The chip, which has to run: SOC_E_INIT.
constexpr auto running_chip = [](Switch &sw, auto next) -> int {
    Chip &chip = chip_of(sw);
    return chip.running ? next(chip) : static_cast<int>(SOC_E_INIT);
};

/// The description of a register's field on that unit; null if there is none.
const Field *field_in(int unit, soc_reg_t reg, soc_field_t field);

}  // namespace sim
