// What is wrong with headers and interface files: collected, so that it is said all at once.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace generator {

class Errors {
public:
    /// How many are said; of more only their number. Who has made more can learn from the first.
    static constexpr std::size_t limit = 40;

    /// `place` as compilers say it: "include/bcm/l2.h:120".
    void add(const std::string &place, const std::string &what);
    std::size_t count() const { return lines_.size(); }

    /// Throws std::runtime_error with a line for each, if there are any.
    void raise_any() const;

private:
    std::vector<std::string> lines_;
};

}  // namespace generator
