/// Fields of register values of any width, and of such registers themselves.
#include "begin.h"
#include "chip.h"
#include "register_access.h"
#include "sim_register.h"

#include <algorithm>

using namespace sim;

namespace {

Words words_at(const uint32 *value)
{
    return words_of(value, SOC_REG_ABOVE_64_MAX_SIZE_U32);
}

uint64 get_field(int unit, soc_reg_t reg, const uint32 *regval, soc_field_t id)
{
    const Field *field = field_in(unit, reg, id);
    return field == nullptr || regval == nullptr ? 0 : low_64(field_of(words_at(regval), *field));
}

void set_field(int unit, soc_reg_t reg, uint32 *regval, soc_field_t id, const Words &value)
{
    const Field *field = field_in(unit, reg, id);
    if (field != nullptr && regval != nullptr) {
        Words words = words_at(regval);
        put_field(words, *field, value);
        std::copy(words.begin(), words.end(), regval);
    }
}

/// The field of the register itself; SOC_E_PARAM if it is longer than that.
int read_field(int unit, soc_reg_t reg, int port, int index, soc_field_t id, int bits_max, Words *value)
{
    Words regval;
    const int rc = get_register(unit, reg, port, index, any_width, &regval);
    if (rc != SOC_E_NONE) {
        return rc;
    }
    const Field *field = field_in(unit, reg, id);
    if (field == nullptr || field->length > bits_max) {
        return SOC_E_PARAM;
    }
    *value = field_of(regval, *field);
    return SOC_E_NONE;
}

int modify_field(int unit, soc_reg_t reg, int port, int index, soc_field_t id, uint64 value)
{
    Words regval;
    const int rc = get_register(unit, reg, port, index, any_width, &regval);
    if (rc != SOC_E_NONE) {
        return rc;
    }
    const Field *field = field_in(unit, reg, id);
    if (field == nullptr || !fits(words_of(value), *field)) {
        return SOC_E_PARAM;
    }
    put_field(regval, *field, words_of(value));
    return set_register(unit, reg, port, index, any_width, regval);
}

template <class Value>
int read_number(int unit, soc_reg_t reg, int port, int index, soc_field_t field, Value *out)
{
    Words value;
    constexpr int bits = 8 * static_cast<int>(sizeof(Value));
    const int rc = begin(unit, chip_runs, given(out)).then([&] {
        return read_field(unit, reg, port, index, field, bits, &value);
    });
    if (rc == SOC_E_NONE) {
        *out = static_cast<Value>(low_64(value));
    }
    return rc;
}

}  // namespace

extern "C" {

void sim_soc_reg_above_64_field_get(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval, soc_field_t field,
                                    soc_reg_above_64_val_t field_val)
{
    if (field_val != nullptr && chip_of(unit) != nullptr) {
        const Field *found = field_in(unit, reg, field);
        const bool known = found != nullptr && regval != nullptr;
        const Words value = known ? field_of(words_at(regval), *found) : Words();
        std::copy(value.begin(), value.end(), field_val);
    }
}

void sim_soc_reg_above_64_field_set(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval, soc_field_t field,
                                    const soc_reg_above_64_val_t value)
{
    if (value != nullptr) {
        set_field(unit, reg, regval, field, words_at(value));
    }
}

uint32 sim_soc_reg_above_64_field32_get(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval,
                                        soc_field_t field)
{
    return static_cast<uint32>(get_field(unit, reg, regval, field));
}

void sim_soc_reg_above_64_field32_set(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval,
                                      soc_field_t field, uint32 value)
{
    set_field(unit, reg, regval, field, words_of(value));
}

uint64 sim_soc_reg_above_64_field64_get(int unit, soc_reg_t reg, soc_reg_above_64_val_t regval,
                                        soc_field_t field)
{
    return get_field(unit, reg, regval, field);
}

int sim_soc_reg_above_64_field_read(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                    soc_reg_above_64_val_t out_field_val)
{
    Words value;
    const int rc = begin(unit, chip_runs, given(out_field_val)).then([&] {
        return read_field(unit, reg, port, index, field, any_width.most, &value);
    });
    if (rc == SOC_E_NONE) {
        std::copy(value.begin(), value.end(), out_field_val);
    }
    return rc;
}

int sim_soc_reg_above_64_field32_read(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                      uint32 *out_field_val)
{
    return read_number(unit, reg, port, index, field, out_field_val);
}

int sim_soc_reg_above_64_field64_read(int unit, soc_reg_t reg, soc_port_t port, int index, soc_field_t field,
                                      uint64 *out_field_val)
{
    return read_number(unit, reg, port, index, field, out_field_val);
}

int sim_soc_reg_above_64_field32_modify(int unit, soc_reg_t reg, soc_port_t port, int index,
                                        soc_field_t field, uint32 value)
{
    return modify_field(unit, reg, port, index, field, value);
}

int sim_soc_reg_above_64_field64_modify(int unit, soc_reg_t reg, soc_port_t port, int index,
                                        soc_field_t field, uint64 value)
{
    return modify_field(unit, reg, port, index, field, value);
}

}  // extern "C"
