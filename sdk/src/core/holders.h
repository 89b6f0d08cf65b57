/// Who holds an object, where nothing else keeps count of them: each has what `hold` gave for as long as it does. An
/// object that goes all the same leaves holds of nothing.
#pragma once

#include <memory>

namespace sim {

using Hold = std::shared_ptr<const void>;

class Holders {
public:
    Hold hold()
    {
        Hold common = common_.lock();
        if (common == nullptr) {
            common = std::make_shared<char>();
            common_ = common;
        }
        return common;
    }

    int count() const { return static_cast<int>(common_.use_count()); }

    /// Whether it is of this object, and not of one that had its id before.
    bool gave(const Hold &hold) const
    {
        return hold != nullptr && !common_.owner_before(hold) && !hold.owner_before(common_);
    }

private:
    std::weak_ptr<const void> common_;
};

}  // namespace sim
