#include "reasons.h"

#include <fnmatch.h>

#include <utility>

namespace generator {

Reasons::Reasons(const Model &model, EntryTable FamilyInterface::*section, std::string what)
    : what_(std::move(what))
{
    for (const FamilyInterface &family : model.interface) {
        for (const auto &[pattern, entry] : family.*section) {
            reasons_[family.name][pattern] = {entry};
        }
    }
}

const std::string *Reasons::of(const Family &family, const Function &function)
{
    Reason *longest = nullptr;
    std::size_t length = 0;
    for (auto &[pattern, reason] : reasons_[family.name]) {
        if (pattern.size() > length && fnmatch(pattern.c_str(), function.name.c_str(), 0) == 0) {
            longest = &reason;
            length = pattern.size();
        }
    }
    if (!longest) {
        return nullptr;
    }
    ++longest->told;
    return &longest->entry.text;
}

void Reasons::check(Errors &errors) const
{
    for (const auto &[family, reasons] : reasons_) {
        for (const auto &[pattern, reason] : reasons) {
            if (reason.told == 0) {
                errors.add(reason.entry.place, "no function that is " + what_ + " fits '" + pattern + "'");
            }
        }
    }
}

}  // namespace generator
