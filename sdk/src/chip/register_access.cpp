#include "register_access.h"

#include "begin.h"
#include "chip_observer.h"
#include "sim_register.h"

#include <algorithm>

using namespace sim;

namespace {

constexpr Widths word_width = {32, 32};
constexpr Widths two_word_width = {33, 64};
constexpr Widths up_to_64 = {32, 64};

void tell_snoop(int unit, Chip &chip, const RegisterPlace &place, uint32 access, Words value)
{
    const auto found = chip.snoops.find(place.reg->id);
    if (chip.in_snoop || found == chip.snoops.end() || (found->second.flags & access) == 0) {
        return;
    }
    const Snoop snoop = found->second;  // the callback may end it
    const Marked marked(chip.in_snoop);
    soc_regaddrinfo_t info = info_of(place);
    snoop.callback(unit, place.reg->id, &info, access, value.data(), snoop.user_data);
}

Words read_and_tell(int unit, Chip &chip, const RegisterPlace &place)
{
    const Words value = chip.read(place);
    tell_read(unit, place, value);
    tell_snoop(unit, chip, place, SOC_REG_SNOOP_READ, value);
    return value;
}

void write_and_tell(int unit, Chip &chip, const RegisterPlace &place, const Words &value)
{
    chip.write(place, value);
    tell_snoop(unit, chip, place, SOC_REG_SNOOP_WRITE, chip.read(place));
}

/// What the stand-in for reads of that width reads; false if there is none.
bool get_by_stand_in(int unit, Chip &chip, const Register &reg, int port, int index, Words *value, int *rc)
{
    const soc_reg_access_t calls = chip.stand_ins;
    const Marked marked(chip.in_stand_in);
    uint32 word = 0;
    uint64 two_words = 0;
    if (reg.bits == 32 && calls.reg32_get != nullptr) {
        *rc = calls.reg32_get(unit, reg.id, port, index, &word);
        *value = words_of(word);
    } else if (reg.bits == 64 && calls.reg64_get != nullptr) {
        *rc = calls.reg64_get(unit, reg.id, port, index, &two_words);
        *value = words_of(two_words);
    } else if (reg.bits > 64 && calls.reg_above64_get != nullptr) {
        *value = {};
        *rc = calls.reg_above64_get(unit, reg.id, port, index, value->data());
    } else {
        return false;
    }
    return true;
}

bool set_by_stand_in(int unit, Chip &chip, const Register &reg, int port, int index, Words value, int *rc)
{
    const soc_reg_access_t calls = chip.stand_ins;
    const Marked marked(chip.in_stand_in);
    if (reg.bits == 32 && calls.reg32_set != nullptr) {
        *rc = calls.reg32_set(unit, reg.id, port, index, value[0]);
    } else if (reg.bits == 64 && calls.reg64_set != nullptr) {
        *rc = calls.reg64_set(unit, reg.id, port, index, low_64(value));
    } else if (reg.bits > 64 && calls.reg_above64_set != nullptr) {
        *rc = calls.reg_above64_set(unit, reg.id, port, index, value.data());
    } else {
        return false;
    }
    return true;
}

/// Where a register of those widths is: SOC_E_PARAM.
auto register_place(soc_reg_t id, int port, int index, Widths widths)
{
    return [=](Switch &, auto next) -> int {
        const Register *reg = register_at(id);
        if (reg == nullptr || reg->bits < widths.least || reg->bits > widths.most) {
            return SOC_E_PARAM;
        }
        RegisterPlace place;
        const int rc = locate(reg, port, index, &place);
        return rc != SOC_E_NONE ? rc : next(place);
    };
}

/// Where that many words of a register are, and the first of them: SOC_E_NOT_FOUND.
auto words_at(uint32 address, std::size_t words)
{
    return [=](Switch &, auto next) -> int {
        RegisterPlace place;
        std::size_t word;
        if (!locate_address(address, &place, &word) || word + words > place.reg->words()) {
            return SOC_E_NOT_FOUND;
        }
        return next(place, word);
    };
}

int read_at(int unit, uint32 address, std::size_t words, uint64 *data)
{
    return begin(unit, running_chip, words_at(address, words))
        .then([&](Chip &chip, const RegisterPlace &place, std::size_t word) {
            const Words value = read_and_tell(unit, chip, place);
            *data = low_64(words_of(&value[word], words));
            return SOC_E_NONE;
        });
}

int write_at(int unit, uint32 address, std::size_t words, uint64 data)
{
    return begin(unit, running_chip, words_at(address, words))
        .then([&](Chip &chip, const RegisterPlace &place, std::size_t word) {
            Words value = chip.read(place);
            const Words written = words_of(data);
            std::copy_n(written.begin(), words, value.begin() + static_cast<std::ptrdiff_t>(word));
            write_and_tell(unit, chip, place, value);
            return SOC_E_NONE;
        });
}

/// Whether the address is that of the register's first word; the number of its words.
int check_address(soc_reg_t reg, uint32 address, std::size_t *words)
{
    RegisterPlace place;
    std::size_t word;
    if (register_at(reg) == nullptr || register_at(reg)->bits > up_to_64.most) {
        return SOC_E_PARAM;
    }
    if (!locate_address(address, &place, &word) || place.reg->id != reg || word != 0) {
        return SOC_E_NOT_FOUND;
    }
    *words = place.reg->words();
    return SOC_E_NONE;
}

template <class Data>
int get_number(int unit, soc_reg_t reg, int port, int index, Widths widths, Data *data)
{
    Words value;
    const int rc = begin(unit, chip_runs, given(data)).then([&] {
        return get_register(unit, reg, port, index, widths, &value);
    });
    if (rc == SOC_E_NONE) {
        *data = static_cast<Data>(low_64(value));
    }
    return rc;
}

}  // namespace

namespace sim {

int get_register(int unit, soc_reg_t reg, int port, int index, Widths widths, Words *value)
{
    return begin(unit, running_chip, register_place(reg, port, index, widths))
        .then([&](Chip &chip, const RegisterPlace &place) {
            int rc = SOC_E_NONE;
            if (chip.in_stand_in || !get_by_stand_in(unit, chip, *place.reg, port, index, value, &rc)) {
                *value = read_and_tell(unit, chip, place);
            }
            return rc;
        });
}

int set_register(int unit, soc_reg_t reg, int port, int index, Widths widths, const Words &value)
{
    return begin(unit, running_chip, register_place(reg, port, index, widths))
        .then([&](Chip &chip, const RegisterPlace &place) {
            int rc = SOC_E_NONE;
            if (chip.in_stand_in || !set_by_stand_in(unit, chip, *place.reg, port, index, value, &rc)) {
                write_and_tell(unit, chip, place, value);
            }
            return rc;
        });
}

}  // namespace sim

extern "C" {

int sim_soc_reg32_read(int unit, uint32 addr, uint32 *data)
{
    uint64 value;
    const int rc = begin(unit, chip_runs, given(data)).then([&] { return read_at(unit, addr, 1, &value); });
    if (rc == SOC_E_NONE) {
        *data = static_cast<uint32>(value);
    }
    return rc;
}

int sim_soc_reg32_write(int unit, uint32 addr, uint32 data)
{
    return write_at(unit, addr, 1, data);
}

int sim_soc_reg64_read(int unit, uint32 addr, uint64 *data)
{
    return begin(unit, chip_runs, given(data)).then([&] { return read_at(unit, addr, 2, data); });
}

int sim_soc_reg64_write(int unit, uint32 addr, uint64 data)
{
    return write_at(unit, addr, 2, data);
}

int sim_soc_reg_read(int unit, soc_reg_t reg, uint32 addr, uint64 *data)
{
    return begin(unit, chip_runs, given(data)).then([&] {
        std::size_t words;
        const int rc = check_address(reg, addr, &words);
        return rc != SOC_E_NONE ? rc : read_at(unit, addr, words, data);
    });
}

int sim_soc_reg_write(int unit, soc_reg_t reg, uint32 addr, uint64 data)
{
    return begin(unit, running_chip).then([&](Chip &) {
        std::size_t words;
        const int rc = check_address(reg, addr, &words);
        return rc != SOC_E_NONE ? rc : write_at(unit, addr, words, data);
    });
}

int sim_soc_reg32_get(int unit, soc_reg_t reg, int port, int index, uint32 *data)
{
    return get_number(unit, reg, port, index, word_width, data);
}

int sim_soc_reg32_set(int unit, soc_reg_t reg, int port, int index, uint32 data)
{
    return set_register(unit, reg, port, index, word_width, words_of(data));
}

int sim_soc_reg64_get(int unit, soc_reg_t reg, int port, int index, uint64 *data)
{
    return get_number(unit, reg, port, index, two_word_width, data);
}

int sim_soc_reg64_set(int unit, soc_reg_t reg, int port, int index, uint64 data)
{
    return set_register(unit, reg, port, index, two_word_width, words_of(data));
}

int sim_soc_reg_get(int unit, soc_reg_t reg, int port, int index, uint64 *data)
{
    return get_number(unit, reg, port, index, up_to_64, data);
}

int sim_soc_reg_set(int unit, soc_reg_t reg, int port, int index, uint64 data)
{
    return set_register(unit, reg, port, index, up_to_64, words_of(data));
}

int sim_soc_reg_above_64_get(int unit, soc_reg_t reg, int port, int index, soc_reg_above_64_val_t data)
{
    Words value;
    const int rc = begin(unit, chip_runs, given(data)).then([&] {
        return get_register(unit, reg, port, index, any_width, &value);
    });
    if (rc == SOC_E_NONE) {
        std::copy(value.begin(), value.end(), data);
    }
    return rc;
}

int sim_soc_reg_above_64_set(int unit, soc_reg_t reg, int port, int index, soc_reg_above_64_val_t data)
{
    return begin(unit, chip_runs, given(data)).then([&] {
        return set_register(unit, reg, port, index, any_width, words_of(data, SOC_REG_ABOVE_64_MAX_SIZE_U32));
    });
}

}  // extern "C"
