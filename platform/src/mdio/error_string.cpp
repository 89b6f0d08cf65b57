#include "quorel_api/internal_phy.h"

#include <iterator>

const char *errorString(int status)
{
    // By the negated code.
    static constexpr const char *texts[] = {
        "no error",
        "internal error",
        "out of memory",
        "no such unit",
        "bad parameter",
        "table empty",
        "table full",
        "not found",
        "exists already",
        "timed out",
        "busy",
        "operation failed",
        "operation disabled",
        "bad identifier",
        "no resources left",
        "not allowed by the configuration",
        "not available",
        "not initialised",
        "no such port",
    };
    if (status > 0 || status <= -static_cast<int>(std::size(texts))) {
        return "unknown error";
    }
    return texts[-status];
}
