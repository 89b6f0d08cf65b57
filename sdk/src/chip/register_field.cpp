/// Fields of register values of up to 64 bits.
#include "chip.h"
#include "register_access.h"
#include "sim_register.h"

using namespace sim;

namespace {

uint64 get_field(int unit, soc_reg_t reg, uint64 regval, soc_field_t id)
{
    const Field *field = field_in(unit, reg, id);
    return field == nullptr ? 0 : low_64(field_of(words_of(regval), *field));
}

template <class Value>
void set_field(int unit, soc_reg_t reg, Value *regval, soc_field_t id, uint64 value)
{
    const Field *field = field_in(unit, reg, id);
    if (field != nullptr && regval != nullptr) {
        Words words = words_of(*regval);
        put_field(words, *field, words_of(value));
        *regval = static_cast<Value>(low_64(words));
    }
}

int validate(int unit, soc_reg_t reg, soc_field_t id, uint64 value)
{
    return begin(unit).then([&] {
        const Field *field = field_in(unit, reg, id);
        return field != nullptr && fits(words_of(value), *field) ? SOC_E_NONE : SOC_E_PARAM;
    });
}

}  // namespace

extern "C" {

uint32 sim_soc_reg_field_get(int unit, soc_reg_t reg, uint32 regval, soc_field_t field)
{
    return static_cast<uint32>(get_field(unit, reg, regval, field));
}

void sim_soc_reg_field_set(int unit, soc_reg_t reg, uint32 *regval, soc_field_t field, uint32 value)
{
    set_field(unit, reg, regval, field, value);
}

int sim_soc_reg_field_length(int unit, soc_reg_t reg, soc_field_t field)
{
    const Field *found = field_in(unit, reg, field);
    return found == nullptr ? 0 : found->length;
}

int sim_soc_reg_field_valid(int unit, soc_reg_t reg, soc_field_t field)
{
    return field_in(unit, reg, field) != nullptr;
}

int sim_soc_reg_field_validate(int unit, soc_reg_t reg, soc_field_t field, uint32 value)
{
    return validate(unit, reg, field, value);
}

int sim_soc_reg_field32_modify(int unit, soc_reg_t reg, soc_port_t port, soc_field_t field, uint32 value)
{
    return sim_soc_reg_fields32_modify(unit, reg, port, 1, &field, &value);
}

int sim_soc_reg_fields32_modify(int unit, soc_reg_t reg, soc_port_t port, int field_count,
                                soc_field_t *fields, uint32 *values)
{
    Words regval;
    const int rc = get_register(unit, reg, port, 0, any_width, &regval);
    if (rc != SOC_E_NONE) {
        return rc;
    }
    if (field_count < 0 || field_count > fields_max || fields == nullptr || values == nullptr) {
        return SOC_E_PARAM;
    }
    for (int i = 0; i < field_count; ++i) {
        if (validate(unit, reg, fields[i], values[i]) != SOC_E_NONE) {
            return SOC_E_PARAM;
        }
        put_field(regval, *field_in(unit, reg, fields[i]), words_of(values[i]));
    }
    return set_register(unit, reg, port, 0, any_width, regval);
}

int sim_soc_reg_signed_field_mask(int unit, soc_reg_t reg, soc_field_t field, int32 value_in,
                                  uint32 *value_out)
{
    return begin(unit, given(value_out)).then([&] {
        const Field *found = field_in(unit, reg, field);
        if (found == nullptr) {
            return SOC_E_PARAM;
        }
        const int64 limit = found->length > 32 ? 1LL << 32 : 1LL << (found->length - 1);
        if (value_in < -limit || value_in >= limit) {
            return SOC_E_PARAM;
        }
        const int length = found->length > 32 ? 32 : found->length;
        *value_out = field_of(words_of(static_cast<uint32>(value_in)), {field, 0, length})[0];
        return SOC_E_NONE;
    });
}

uint64 sim_soc_reg64_field_get(int unit, soc_reg_t reg, uint64 regval, soc_field_t field)
{
    return get_field(unit, reg, regval, field);
}

void sim_soc_reg64_field_set(int unit, soc_reg_t reg, uint64 *regval, soc_field_t field, uint64 value)
{
    set_field(unit, reg, regval, field, value);
}

uint32 sim_soc_reg64_field32_get(int unit, soc_reg_t reg, uint64 regval, soc_field_t field)
{
    return static_cast<uint32>(get_field(unit, reg, regval, field));
}

void sim_soc_reg64_field32_set(int unit, soc_reg_t reg, uint64 *regval, soc_field_t field, uint32 value)
{
    set_field(unit, reg, regval, field, value);
}

int sim_soc_reg64_field_validate(int unit, soc_reg_t reg, soc_field_t field, uint64 value)
{
    return validate(unit, reg, field, value);
}

}  // extern "C"
