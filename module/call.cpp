#include "call.h"

namespace quorel {

NewReference raise_argument(const CallRow &row, int index, Status status)
{
    auto argument = static_cast<uint16_t>(row.arguments + index);
    return raise_argument_error(method_name(row.method), index + 1, text_of(argument), status);
}

NewReference raise_arity(uint16_t method, PyObject *args, int expected)
{
    return raise_arity_error(method_name(method), args, expected);
}

}  // namespace quorel
