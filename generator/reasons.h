// Why functions do less than their names say, as the interface files tell by pattern: [unavailable] of those that answer
// BCM_E_UNAVAIL, [unmet] of those that keep what no packet meets.
#pragma once

#include "errors.h"
#include "model.h"

#include <cstddef>
#include <map>
#include <string>

namespace generator {

class Reasons {
public:
    /// `what`: what the functions of the section are, for errors.
    Reasons(const Model &model, EntryTable FamilyInterface::*section, std::string what);

    /// Of the function, by the longest pattern of its family that fits; null if none does.
    const std::string *of(const Family &family, const Function &function);

    /// Notes the patterns that told of no function.
    void check(Errors &errors) const;

private:
    struct Reason {
        Entry entry;
        std::size_t told = 0;  ///< of how many functions
    };
    std::string what_;
    std::map<std::string, std::map<std::string, Reason>> reasons_;  // by family and pattern
};

}  // namespace generator
