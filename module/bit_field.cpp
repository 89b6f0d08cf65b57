#include "bit_field.h"

namespace quorel {

namespace {

// What is left above the field's uppermost bit tells whether a value fits; a shift by all 64 bits is not defined.
Status to_bits(PyObject *object, const BitField &field, uint64_t *value)
{
    if (field.is_signed) {
        int64_t number = 0;
        Status status = to_int64(object, &number);
        if (status == Status::ok && number >> (field.bits - 1) != (number < 0 ? -1 : 0)) {
            status = Status::overflow;
        }
        *value = static_cast<uint64_t>(number);
        return status;
    }
    Status status = to_uint64(object, value);
    if (status == Status::ok && *value >> (field.bits - 1) > 1) {
        status = Status::overflow;
    }
    return status;
}

}  // namespace

NewReference get_bits(const MemberRow &row, PyObject *args, const BitField &field)
{
    HeldPointer self = self_of_getter(row, args);
    if (!self) {
        return nullptr;
    }
    const uint64_t value = field.read(self.at(0));
    return field.is_signed ? from_int64(static_cast<int64_t>(value)) : from_uint64(value);
}

NewReference set_bits(const MemberRow &row, PyObject *args, const BitField &field)
{
    SetterArguments setter = arguments_of_setter(row, args);
    if (setter.failed) {
        return nullptr;
    }
    uint64_t value;
    Status status = to_bits(setter.value, field, &value);
    if (status != Status::ok) {
        return raise_value(row, status);
    }
    if (setter.self) {
        field.write(setter.self.at(0), value);
    }
    return new_none();
}

}  // namespace quorel
