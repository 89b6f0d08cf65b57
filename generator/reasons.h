// Why functions answer BCM_E_UNAVAIL: what [unavailable] of the interface files says of them.
#pragma once

#include "errors.h"
#include "model.h"

#include <cstddef>
#include <map>
#include <string>

namespace generator {

class Reasons {
public:
    explicit Reasons(const Model &model);

    /// Why the function is unavailable, by the longest pattern of its family that fits; null if none does.
    const std::string *of(const Family &family, const Function &function);

    /// Notes the patterns that told of no function.
    void check(Errors &errors) const;

private:
    struct Reason {
        Entry entry;
        std::size_t told = 0;  ///< of how many functions
    };
    std::map<std::string, std::map<std::string, Reason>> reasons_;  // by family and pattern
};

}  // namespace generator
